// What the converter programs of Utils/ share: the Windows paths of their arguments mapped
// through the drive table, and the real program run as a child that dies with them.
//
// A converter receives the arguments of the Windows command line the kernel wrote, already
// split by the Windows rules (the platform layer starts it so), each as UTF-8 bytes.
#ifndef CONVERTERS_CONVERTER_SUPPORT_H_
#define CONVERTERS_CONVERTER_SUPPORT_H_

#include <string>
#include <vector>

namespace converters {

// Exit status of a converter whose command line it refuses.
inline constexpr int kExitBadCommandLine = 2;
// Exit status of a converter that couldn't do its work.
inline constexpr int kExitFailed = 1;

// True if the argument has the form of a path on a drive: "X:\...", "X:/...", "X:" alone,
// or any of them behind the long-path prefix "\\?\".
bool isDrivePath(const std::string& arg);

// The POSIX path of a Windows path through the drive table in force; false when no drive
// holds it.
bool mapPath(const std::string& windows_path, std::string* posix_path);

// The root folder of the drive of a Windows path; empty when no drive holds it.
std::string driveRootOf(const std::string& windows_path);

// Writes "PROGRAM: TEXT" on the standard error stream and gives `status` back.
int fail(const char* program, const std::string& text, int status = kExitFailed);

// Runs the real program `name` (looked up in PATH) with `args`, without a shell, and gives
// its exit status (128 + the signal when a signal ended it). The program dies with this
// process, so ending the converter ends the conversion. It runs with a temporary folder of
// its own (TMPDIR), removed afterwards, so that its scratch files and what it allows itself
// to write there stay apart from everybody else's. The variables named in `drop_env` are
// taken out of its environment. -1 when it couldn't be started.
int runTool(const char* program, const std::string& name, const std::vector<std::string>& args,
            const std::vector<std::string>& drop_env = {});

}  // namespace converters

#endif  // CONVERTERS_CONVERTER_SUPPORT_H_

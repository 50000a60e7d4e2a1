// The commands of the host program, one function each. Each takes the words after its name
// and gives the exit status: 0 all done, 1 something failed, 2 a wrong call.
#ifndef HOST_COMMANDS_H_
#define HOST_COMMANDS_H_

#include <cstdint>
#include <string>
#include <vector>

using Args = std::vector<std::string>;

inline constexpr int kExitOk = 0;
inline constexpr int kExitFailed = 1;
inline constexpr int kExitUsage = 2;
inline constexpr int kExitInterrupted = 130;

int runSniff(const Args& args);
int runPreview(const Args& args);
int runErrors(const Args& args);
int runConfig(const Args& args);
int runWhere(const Args& args);
int runZoom(const Args& args);
int runCut(const Args& args);

// A size "WIDTHxHEIGHT", both above 0; false for anything else.
bool parseSize(const std::string& text, uint32_t* width, uint32_t* height);

// The error table's message of a code; empty for 0.
std::string messageOf(int code);

// Prints "pellix: " and the text on the standard error stream, with the hint to --help, and
// gives kExitUsage.
int usageError(const std::string& text);

#endif  // HOST_COMMANDS_H_

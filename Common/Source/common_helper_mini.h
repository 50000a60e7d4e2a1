// Small folder helpers on Windows-form paths: the program's folder, drive roots, parents,
// the tools folder and folder creation.
#ifndef COMMON_SOURCE_COMMON_HELPER_MINI_H_
#define COMMON_SOURCE_COMMON_HELPER_MINI_H_

#include <string>

// Folder of the running program (the host, not a module), without a closing '\'.
std::wstring getExeDir();

// Drive root of a path by its text: "C" -> "C:\", "C:" -> "C:\", "C:\x" -> "C:\". Empty for
// empty input and for text without a root.
std::wstring getDriveRoot(const std::wstring& path);

// Folder of the helper tools, with a closing '\': beside the program's folder when that
// folder is named x64 (in any case), otherwise inside it. The text isn't normalised.
std::wstring getUtilsDir();

// The same rule for a given program folder.
std::wstring utilsDirOf(const std::wstring& program_folder);

// The path cut at its last '\'; a closing '\' is cut first. Empty without any '\'.
std::wstring getParentDir(const std::wstring& path);

namespace common_hepler {

// True if the folder exists afterwards: makes it with every missing level above it. False
// at once, with nothing made, when its drive doesn't exist.
bool createDirIfNotExist(const std::wstring& path);

// The same, telling a fault to the standard error stream rather than the log; it serves the
// probe that runs before anything else may be ready.
bool createDirIfNotExistQuiet(const std::wstring& path);

}  // namespace common_hepler

#endif  // COMMON_SOURCE_COMMON_HELPER_MINI_H_

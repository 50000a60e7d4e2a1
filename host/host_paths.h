// The host's edge between the POSIX paths a user types and the Windows-form paths the kernel
// takes, through the drive table of the platform layer.
#ifndef HOST_HOST_PATHS_H_
#define HOST_HOST_PATHS_H_

#include <string>

// `path` made absolute against the current folder, "." and ".." resolved by text.
std::string absolutePosixPath(const std::string& path);

// The Windows form of a POSIX path; false when no drive holds it.
bool toKernelPath(const std::string& posix_path, std::wstring* windows_path);

// A path as the user typed it, for the kernel: taken as it stands when it is in Windows form
// already (a drive letter, or a leading "\\"), otherwise mapped like toKernelPath.
bool kernelPathOfArgument(const std::string& argument, std::wstring* windows_path);

// The POSIX form of a path the kernel gave; the text itself (as UTF-8) when no drive holds
// it, so that nothing the kernel said is lost.
std::string fromKernelPath(const std::wstring& windows_path);

#endif  // HOST_HOST_PATHS_H_

#include "host/host_paths.h"

#include <limits.h>
#include <unistd.h>

#include <cctype>

#include "platform/env.h"

std::string absolutePosixPath(const std::string& path) {
  if (!path.empty() && path[0] == '/') return platform::NormalizePosixPath(path);
  char cwd[PATH_MAX];
  if (::getcwd(cwd, sizeof(cwd)) == nullptr) return platform::NormalizePosixPath("/" + path);
  return platform::NormalizePosixPath(std::string(cwd) + "/" + path);
}

bool toKernelPath(const std::string& posix_path, std::wstring* windows_path) {
  return platform::Env::Default()->ToWindowsPath(absolutePosixPath(posix_path), windows_path);
}

bool kernelPathOfArgument(const std::string& argument, std::wstring* windows_path) {
  const bool drive_form = argument.size() >= 2 && argument[1] == ':' &&
                          std::isalpha(static_cast<unsigned char>(argument[0]));
  if (drive_form || argument.rfind("\\\\", 0) == 0) {
    *windows_path = platform::FileNameToUtf16(argument);
    return true;
  }
  return toKernelPath(argument, windows_path);
}

std::string fromKernelPath(const std::wstring& windows_path) {
  std::string posix;
  if (platform::Env::Default()->ToPosixPath(windows_path, &posix)) return posix;
  return platform::Utf16ToFileName(windows_path);
}

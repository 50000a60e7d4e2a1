// Path checks: the long-path prefix, existence and file sizes.
#ifndef COMMON_SOURCE_FILECHECKUTILS_H_
#define COMMON_SOURCE_FILECHECKUTILS_H_

#include <cstdint>
#include <string>

// The prefix that lifts the path limit of platform calls, and the limit itself: a path is
// long from this many units on.
inline constexpr char kLongPathPrefix[] = "\\\\?\\";
inline constexpr size_t kPathLimit = 260;

class FileCheckUtils {
 public:
  // True if the path begins with "\\?\".
  static bool isHasLongPathPrefix(const std::string& path);

  // The path with "\\?\" in front when it has 260 bytes or more and no prefix yet.
  static std::string addLongPathPrefix(const std::string& path);

  // The same for a wide path, counted in its UTF-8 bytes.
  static std::wstring addLongPathPrefix(const std::wstring& path);

  // The path without a leading "\\?\".
  static std::string removeLongPathPrefix(const std::string& path);

  // True if something is at the path (a narrow path in the platform's narrow encoding).
  static bool isExists(const std::string& path);

  // True if something is at the path. False for the empty path.
  static bool isExists(const std::wstring& path);

  // The size of a file in bytes; 0 if it can't be had (the log tells that from an empty
  // file).
  static uint64_t getFileSize(const std::wstring& path);
};

// The size of a file by opening it; 0 if it can't be had. The fallback of getFileSize.
uint64_t getFileSizeByHandle(const std::wstring& path);

// The size that the file's folder entry gives; 0 if there is no entry.
uint64_t getFileSizeByFind(const std::wstring& path);

#endif  // COMMON_SOURCE_FILECHECKUTILS_H_

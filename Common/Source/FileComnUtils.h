// File and folder housekeeping: the drive lists by type, deleting a tree, deleting a file.
#ifndef COMMON_SOURCE_FILECOMNUTILS_H_
#define COMMON_SOURCE_FILECOMNUTILS_H_

#include <map>
#include <string>
#include <vector>

class FileCommUtils {
 public:
  // Drive type numbers as the lists use them.
  static constexpr int kRemovable = 2;
  static constexpr int kFixed = 3;
  static constexpr int kRemote = 4;

  // Fills `disks` with the drive names ("C:", no '\') of the fixed, removable and remote
  // drives, in letter order, under their type numbers; all three keys are always there.
  static void getDiskInfo(std::map<int, std::vector<std::wstring>>& disks);

  // Removes a folder and everything in it; true if the folder itself went. Names inside are
  // joined with "//". The empty path is true and touches nothing.
  static bool deleteFolder(const std::wstring& path);

  // True if a file was at the path and was deleted.
  static bool deleteFile(const std::wstring& path);
};

#endif  // COMMON_SOURCE_FILECOMNUTILS_H_

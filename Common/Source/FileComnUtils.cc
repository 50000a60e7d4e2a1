#include "Common/Source/FileComnUtils.h"

#include <glog/logging.h>

#include "Common/Source/FileCheckUtils.h"
#include "Common/Source/text_forms.h"
#include "platform/env.h"

void FileCommUtils::getDiskInfo(std::map<int, std::vector<std::wstring>>& disks) {
  disks.clear();
  std::map<int, std::vector<std::wstring>> by_type;
  for (const platform::DriveInfo& drive : platform::Env::Default()->GetDrives()) {
    const int type = static_cast<int>(drive.type);
    if (type < 1 || type > 6) {
      LOG(ERROR) << "FileCommUtils::getDiskInfo" << " invalid DriveType:" << type;
      continue;
    }
    by_type[type].push_back(std::wstring{drive.letter, L':'});
  }
  for (int type : {kFixed, kRemovable, kRemote}) disks[type] = by_type[type];
}

bool FileCommUtils::deleteFolder(const std::wstring& path) {
  LOG(ERROR) << "FileCommUtils::deleteFolder" << " del_folder:" << wsToUtf8(path);
  if (path.empty()) return true;
  platform::Env* env = platform::Env::Default();
  // The listing is asked for with the pattern "<path>//*.*" in a buffer of 260 characters;
  // a pattern that doesn't fit names no listing, and the folder then can't go.
  const std::wstring pattern = path + L"//*.*";
  std::vector<platform::DirEntry> entries;
  if (pattern.size() < kPathLimit && env->ListFolder(path, &entries).ok()) {
    for (const platform::DirEntry& entry : entries) {
      const std::wstring full = path + L"//" + entry.name;
      if (entry.is_folder) {
        deleteFolder(full);
      } else {
        env->DeleteFile(full);
      }
    }
  }
  return env->RemoveFolder(path).ok();
}

bool FileCommUtils::deleteFile(const std::wstring& path) {
  if (path.empty() || !FileCheckUtils::isExists(path)) return false;
  LOG(ERROR) << "FileCommUtils::deleteFile" << " has del" << wsToUtf8(path);
  return platform::Env::Default()->DeleteFile(path).ok();
}

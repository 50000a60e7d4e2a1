#include "Common/includes/sys_utils.h"

#include <glog/logging.h>

#include "Common/Source/FileComnUtils.h"
#include "Common/Source/common_helper_mini.h"
#include "platform/env.h"

bool SystemUtils::isDiskRW_OK(const std::wstring& disk_root) {
  if (disk_root.empty()) {
    LOG(ERROR) << "SystemUtils::isDiskRW_OK" << " disk_root is empty";
    return false;
  }
  std::wstring drive = disk_root;
  if (drive.size() == 1) drive += L':';
  if (drive.size() > 2) drive.resize(2);
  const std::wstring folder =
      drive + L"\\tmp_kvn_" + std::to_wstring(platform::Env::Default()->NowSeconds());
  if (!common_hepler::createDirIfNotExist(folder)) return false;
  return FileCommUtils::deleteFolder(folder);
}

// The preview root of ConfigDB: stored by volume, used by drive letter, chosen on a fresh
// installation by a recorded write test, and marked on disk.
#include <glog/logging.h>

#include <atomic>
#include <map>

#include "Common/Source/FileCheckUtils.h"
#include "Common/Source/FileComnUtils.h"
#include "Common/Source/common_helper_mini.h"
#include "Common/Source/config/cfg_ui.h"
#include "Common/Source/config_db.h"
#include "Common/Source/text_forms.h"
#include "Common/includes/common_texts.h"
#include "Common/includes/config_key_names.h"
#include "Common/includes/sys_utils.h"
#include "device/DeviceCommUtils.h"
#include "platform/env.h"

namespace common_hepler {

namespace {

constexpr char kFromDB[] = "common_hepler::ConfigDB::getThumbFileBasePathFromDB";
constexpr char kSetRoot[] = "common_hepler::ConfigDB::setThumbFileBasePath";

std::wstring defaultPreviewRoot() {
  return getDefaultPreviewDisk() + L"\\" + utf8ToWs(cfg_names::k_KorvanePreview);
}

std::wstring withDoubledApostrophes(const std::wstring& text) {
  std::wstring out;
  for (wchar_t c : text) {
    out.push_back(c);
    if (c == L'\'') out.push_back(L'\'');
  }
  return out;
}

// Writes the marker into `root` unless it is there, by way of a temporary name.
void writeMarkerInto(const std::wstring& root) {
  createDirIfNotExist(root);
  const std::wstring marker = root + L"\\" + common_texts::kPreviewFolderMarker + L".txt";
  if (FileCheckUtils::isExists(marker)) return;
  platform::Env* env = platform::Env::Default();
  const std::wstring partial = marker + L".partial";
  if (!env->WriteFile(partial, wsToUtf8(common_texts::kPreviewFolderMarker)).ok() ||
      !env->RenameFile(partial, marker).ok()) {
    env->DeleteFile(partial);
  }
}

}  // namespace

std::wstring ConfigDB::getThumbFileBasePath() {
  {
    std::lock_guard<std::mutex> lock(thumb_base_path_mutex_);
    if (!thumb_base_path_.empty()) return thumb_base_path_;
  }
  return getThumbFileBasePathFromDB();
}

std::wstring ConfigDB::getThumbFileBasePathFromDB() {
  std::string stored;
  std::wstring drive_path;
  bool migrate = false;
  {
    std::lock_guard<std::mutex> lock(thumb_base_path_mutex_);
    if (!queryValue(cfg_names::k_thumb_base_path, stored)) {
      thumb_base_path_ = defaultPreviewRoot();
    } else {
      const std::wstring value = utf8ToWs(stored);
      DeviceCommUtils::initVolSerial(false);
      LOG(INFO) << kFromDB << " thumb_base_path:" << stored;
      std::wstring serial_path;
      if (DeviceCommUtils::isSerialPath(value)) {
        serial_path = value;
      } else {
        serial_path = DeviceCommUtils::getSerialPathByDrive(value, true);
        migrate = serial_path != value;
      }
      LOG(INFO) << kFromDB << " serial_path:" << wsToUtf8(serial_path);
      if (!serial_path.empty()) {
        drive_path = DeviceCommUtils::getDrivePathBySerial(serial_path, true);
        LOG(INFO) << kFromDB << " drive_path:" << wsToUtf8(drive_path);
      }
      if (!drive_path.empty()) {
        thumb_base_path_ = drive_path;
      } else {
        LOG(INFO) << kFromDB << " no drive holds serial_path:" << wsToUtf8(serial_path);
        thumb_base_path_ = defaultPreviewRoot();
        migrate = false;
        LOG(ERROR) << kFromDB << "will be default, for invalid thumbBasePath:" << stored;
      }
    }
  }
  if (migrate) {
    LOG(ERROR) << kFromDB << " not err, but old_preview_dir:" << stored
               << ", new_preview_dir:" << wsToUtf8(drive_path);
    setThumbFileBasePath(kFromDB, drive_path);
  }
  std::lock_guard<std::mutex> lock(thumb_base_path_mutex_);
  return thumb_base_path_;
}

bool ConfigDB::setThumbFileBasePath(const std::string& caller, const std::wstring& dir) {
  if (dir.empty()) return false;
  DeviceCommUtils::initVolSerial(false);
  LOG(ERROR) << kSetRoot << " " << wsToUtf8(dir) << " by " << caller;
  bool saved = false;
  {
    std::lock_guard<std::mutex> lock(thumb_base_path_mutex_);
    std::wstring text = DeviceCommUtils::isSerialPath(dir)
                            ? dir
                            : DeviceCommUtils::getSerialPathByDrive(dir, false);
    const std::string preview_dir_u8 = wsToUtf8(withDoubledApostrophes(text));
    if (preview_dir_u8.empty()) {
      LOG(ERROR) << kSetRoot << " skip for preview_dir_u8:" << preview_dir_u8
                 << ", input_dir:" << wsToUtf8(dir);
      return false;
    }
    LOG(ERROR) << kSetRoot << " not err but preview_dir:" << preview_dir_u8;
    saved = saveValue(cfg_names::k_thumb_base_path, preview_dir_u8);
    thumb_base_path_ = dir;
  }
  writeMarkerInto(getThumbFileBasePath());
  return saved;
}

std::wstring checekDiskRwValidity(const std::wstring& next_disk_path,
                                  const std::wstring& first_disk_path) {
  static std::atomic<int> s_flag{[] {
    std::shared_ptr<CfgUI> ui = ConfigDB::getInstance()->getUICfg();
    return ui ? ui->getDiskRwFlag() : 0;
  }()};
  const int flag = s_flag.load();
  if (flag == 1) return first_disk_path;
  if (flag == 2) return next_disk_path;
  std::shared_ptr<ConfigDB> db = ConfigDB::getInstance();
  std::shared_ptr<CfgUI> ui = db->getUICfg();
  std::string ignored;
  if (db->queryValue(cfg_names::k_thumb_base_path, ignored) &&
      db->queryValue(cfg_names::k_download_path, ignored)) {
    // Not a fresh installation: the second disk served before, so it serves now.
    s_flag.store(2);
    if (ui) ui->setDiskRwFlag(2);
    return next_disk_path;
  }
  // Recorded before the disk is touched: a process that dies or hangs in the test leaves 1,
  // and the next one goes straight to the first disk.
  if (ui) ui->setDiskRwFlag(1);
  if (!SystemUtils::isDiskRW_OK(next_disk_path)) {
    LOG(ERROR) << "common_hepler::checekDiskRwValidity"
               << " isDiskRW_OK failed, but run here, next_disk_path:" << wsToUtf8(next_disk_path);
    return first_disk_path;
  }
  s_flag.store(2);
  if (ui) ui->setDiskRwFlag(2);
  return next_disk_path;
}

std::wstring getDefaultPreviewDisk() {
  std::map<int, std::vector<std::wstring>> disks;
  FileCommUtils::getDiskInfo(disks);
  const std::vector<std::wstring>& fixed = disks[FileCommUtils::kFixed];
  if (fixed.empty()) {
    LOG(ERROR) << "common_hepler::getDefaultPreviewDisk" << " no fixed disk";
    return std::wstring();
  }
  if (fixed.size() >= 2) return checekDiskRwValidity(fixed[1], fixed[0]);
  return fixed[0];
}

void writeThumbDirMarker() { writeMarkerInto(ConfigDB::getInstance()->getThumbFileBasePath()); }

}  // namespace common_hepler

// common_hepler::ConfigDB: the one object through which the kernel reaches its settings. It
// opens the settings table in the per-user data folder, reads and writes single keys, hands
// out the settings caches, and owns the preview root: the folder under which every preview
// lies, kept in the table by volume rather than by drive letter so that it follows a disk that
// comes back under another letter.
#ifndef COMMON_SOURCE_CONFIG_DB_H_
#define COMMON_SOURCE_CONFIG_DB_H_

#include <memory>
#include <mutex>
#include <string>
#include <utility>
#include <vector>

#include "Common/includes/config_db_helper.h"

struct sqlite3;
class CfgServ;
class CfgScan;
class CfgUI;

namespace common_hepler {

class ConfigDB {
 public:
  // The process's object comes from getInstance; a test may make its own over a file of its
  // own with openDB.
  ConfigDB();
  ~ConfigDB();
  ConfigDB(const ConfigDB&) = delete;
  ConfigDB& operator=(const ConfigDB&) = delete;

  // The process's object, made and opened at the first call, whichever thread comes first.
  static std::shared_ptr<ConfigDB> getInstance();

  // Opens the database file (a Windows-form path) and makes sure the table is there. False
  // when the file can't be opened, or when SQLite can't share one connection between threads.
  bool openDB(const std::wstring& path);
  void closeDB();

  // The value stored under `key`; false, with `value` untouched, when there is none. A key or
  // value whose apostrophes are not all doubled is refused (false and a log line): texts go
  // into the statements as they stand.
  bool queryValue(const std::string& key, std::string& value);
  // Stores `value` under `key`, replacing every row of that key or adding one.
  bool saveValue(const std::string& key, const std::string& value);
  // Every row of the table in its order, a missing value as the empty text.
  bool listValues(std::vector<std::pair<std::string, std::string>>& rows);

  std::shared_ptr<ConfigDBHelper> getDBHelper() const { return db_helper_; }
  std::shared_ptr<CfgServ> getServCfg();
  std::shared_ptr<CfgScan> getScanCfg();
  std::shared_ptr<CfgUI> getUICfg();

  // The extension of preview files without a dot ("jpg" unless the table says otherwise),
  // read once.
  std::wstring getThumbType();

  // The preview root in drive form: the cached one, or worked out from the table at the
  // first call.
  std::wstring getThumbFileBasePath();
  // Works the preview root out anew from the table and refreshes the cache: a stored root in
  // drive form is rewritten in serial form, a root whose volume is missing gives the default
  // root for this read and stays stored.
  std::wstring getThumbFileBasePathFromDB();
  // Sets the preview root (a drive path) and stores it in serial form. `caller` only goes
  // into the log.
  bool setThumbFileBasePath(const std::string& caller, const std::wstring& dir);

 private:
  sqlite3* db_ = nullptr;
  std::shared_ptr<ConfigDBHelper> db_helper_;

  std::mutex thumb_base_path_mutex_;  // the preview root lock; not recursive
  std::wstring thumb_base_path_;

  std::mutex cache_mutex_;  // the settings caches and thumb_type_
  std::wstring thumb_type_;
  std::shared_ptr<CfgServ> cfg_serv_;
  std::shared_ptr<CfgScan> cfg_scan_;
  std::shared_ptr<CfgUI> cfg_ui_;

  static std::shared_ptr<ConfigDB> s_p_instance_;
};

// The product's per-user and all-users data folders (the system's folder and "\Korvane").
// Nothing is created.
std::wstring getLocalDataDir();
std::wstring getCommonDataDir();

// The pieces between commas, empty ones left out, untrimmed.
std::vector<std::string> splitByComma(const std::string& text);

// The disk for a preview root when none is stored: the second fixed disk if a write test
// there passes (or this isn't a fresh installation), else the first. How far the test got is
// recorded in the table before it runs, so a process that dies in it isn't followed by
// another test.
std::wstring checekDiskRwValidity(const std::wstring& next_disk_path,
                                  const std::wstring& first_disk_path);
// The default disk ("D:"): the second fixed disk when it passes, else the first; empty when
// there is no fixed disk.
std::wstring getDefaultPreviewDisk();

// Writes the file that warns against deleting the preview root into it, unless it is there.
void writeThumbDirMarker();

}  // namespace common_hepler

#endif  // COMMON_SOURCE_CONFIG_DB_H_

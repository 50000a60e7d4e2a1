// The settings table: the connection, single-key reads and writes, the settings caches.
#include "Common/Source/config_db.h"

#include <glog/logging.h>
#include <sqlite3.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>

#include "Common/Source/common_helper_mini.h"
#include "Common/Source/config/cfg_scan.h"
#include "Common/Source/config/cfg_serv.h"
#include "Common/Source/config/cfg_ui.h"
#include "Common/Source/text_forms.h"
#include "Common/includes/common_texts.h"
#include "Common/includes/config_key_names.h"
#include "platform/env.h"

namespace common_hepler {

std::shared_ptr<ConfigDB> ConfigDB::s_p_instance_;

namespace {

constexpr int kBusyTimeoutMs = 10000;
// The system's special-folder call fills a buffer of this many wide characters.
constexpr size_t kSpecialFolderBuffer = 260;

// Statements get their texts put in as they stand. A text is safe there only when every
// apostrophe in it is doubled (so no literal can end early) and it holds no NUL (which would
// cut the statement short).
bool isQuotedSafely(const std::string& text) {
  for (size_t i = 0; i < text.size(); ++i) {
    if (text[i] == '\0') return false;
    if (text[i] == '\'') {
      if (i + 1 == text.size() || text[i + 1] != '\'') return false;
      ++i;
    }
  }
  return true;
}

// One connection is shared by every thread without a lock of ours, which only SQLite's
// serialised mode allows. A library built without threads is refused; one whose default is
// multi-threaded is switched to serialised before it starts.
bool sqliteCanBeShared() {
  static const bool s_can = [] {
    if (sqlite3_threadsafe() == 0) return false;
    if (sqlite3_threadsafe() == 2) sqlite3_config(SQLITE_CONFIG_SERIALIZED);
    return true;
  }();
  return s_can;
}

// Formats a statement into a zeroed buffer of `size` bytes; false when it doesn't fit, so
// that a cut statement never runs.
bool formatInto(char* buffer, size_t size, const char* format, const std::string& key) {
  std::memset(buffer, 0, size);
  const int n = std::snprintf(buffer, size, format, key.c_str());
  return n >= 0 && static_cast<size_t>(n) < size;
}

// Runs a query by sqlite3_get_table and gives its first data cell, the one behind the header
// cell. False when the query failed, found no row, or the cell is NULL (which only other
// writers make; it reads as no value).
bool firstCell(sqlite3* db, const char* sql, std::string* cell) {
  char** table = nullptr;
  int rows = 0, columns = 0;
  char* error = nullptr;
  const int rc = sqlite3_get_table(db, sql, &table, &rows, &columns, &error);
  const bool found = rc == SQLITE_OK && rows != 0 && columns != 0 && table[1] != nullptr;
  if (found) *cell = table[1];
  sqlite3_free_table(table);
  sqlite3_free(error);
  return found;
}

}  // namespace

ConfigDB::ConfigDB() : db_helper_(std::make_shared<ConfigDBHelper>(this)) {}

ConfigDB::~ConfigDB() { closeDB(); }

std::shared_ptr<ConfigDB> ConfigDB::getInstance() {
  static std::once_flag s_made;
  std::call_once(s_made, [] {
    s_p_instance_ = std::make_shared<ConfigDB>();
    std::wstring path = getLocalDataDir() + common_texts::kUsersPiece;
    createDirIfNotExist(path);
    path += L"\\";
    path += utf8ToWs(cfg_names::k_localdata_dat);
    s_p_instance_->openDB(path);
  });
  return s_p_instance_;
}

bool ConfigDB::openDB(const std::wstring& path) {
  static const char* const kCreate =
      "CREATE TABLE config(UserID VARCHAR, key VARCHAR, value VARCHAR);";
  if (db_ != nullptr) closeDB();
  if (!db_helper_) db_helper_ = std::make_shared<ConfigDBHelper>(this);
  if (!sqliteCanBeShared()) {
    LOG(ERROR) << "common_hepler::ConfigDB::openDB"
               << " sqlite has no thread support, not opened:" << wsToUtf8(path);
    return false;
  }
  std::string file;
  if (!platform::Env::Default()->ToPosixPath(path, &file)) return false;
  sqlite3* db = nullptr;
  if (sqlite3_open(file.c_str(), &db) != SQLITE_OK) {
    sqlite3_close(db);
    return false;
  }
  // A connection that isn't serialised has no mutex of its own.
  if (sqlite3_db_mutex(db) == nullptr) {
    sqlite3_close(db);
    LOG(ERROR) << "common_hepler::ConfigDB::openDB"
               << " sqlite is not in serialized mode, not opened:" << wsToUtf8(path);
    return false;
  }
  sqlite3_busy_timeout(db, kBusyTimeoutMs);
  // Fails on a file that has the table already, which is the usual case.
  sqlite3_exec(db, kCreate, nullptr, nullptr, nullptr);
  db_ = db;
  return true;
}

void ConfigDB::closeDB() {
  if (db_ != nullptr) sqlite3_close(db_);
  db_ = nullptr;
  db_helper_.reset();
}

bool ConfigDB::queryValue(const std::string& key, std::string& value) {
  static const char* const kSelect = "SELECT value FROM config WHERE key = '%s'";
  if (!isQuotedSafely(key)) {
    LOG(ERROR) << "common_hepler::ConfigDB::queryValue" << " refused, apostrophe not doubled in key:"
               << key;
    return false;
  }
  char sql[2048];
  if (!formatInto(sql, sizeof(sql), kSelect, key)) {
    LOG(ERROR) << "common_hepler::ConfigDB::queryValue" << " refused, key too long:" << key.size();
    return false;
  }
  return db_ != nullptr && firstCell(db_, sql, &value);
}

bool ConfigDB::saveValue(const std::string& key, const std::string& value) {
  static const char* const kCount = "SELECT COUNT(*) FROM config WHERE key = '%s'";
  static const char* const kUpdate = "UPDATE config SET value='%s' WHERE key='%s'";
  static const char* const kInsert = "INSERT INTO config (key, value) VALUES ('%s', '%s')";
  if (!isQuotedSafely(key) || !isQuotedSafely(value)) {
    LOG(ERROR) << "common_hepler::ConfigDB::saveValue"
               << " refused, apostrophe not doubled, key:" << key << ", value:" << value;
    return false;
  }
  char sql[1024];
  if (!formatInto(sql, sizeof(sql), kCount, key)) {
    LOG(ERROR) << "common_hepler::ConfigDB::saveValue" << " refused, key too long:" << key.size();
    return false;
  }
  if (db_ == nullptr) return false;
  // A failed count goes on as an INSERT.
  std::string count;
  const bool exists = firstCell(db_, sql, &count) && std::atoi(count.c_str()) != 0;
  const std::string statement = exists ? formatText(kUpdate, value.c_str(), key.c_str())
                                       : formatText(kInsert, key.c_str(), value.c_str());
  return sqlite3_exec(db_, statement.c_str(), nullptr, nullptr, nullptr) == SQLITE_OK;
}

bool ConfigDB::listValues(std::vector<std::pair<std::string, std::string>>& rows) {
  rows.clear();
  if (db_ == nullptr) return false;
  char** table = nullptr;
  int count = 0, columns = 0;
  char* error = nullptr;
  const int rc =
      sqlite3_get_table(db_, "SELECT key, value FROM config", &table, &count, &columns, &error);
  if (rc == SQLITE_OK && columns == 2) {
    for (int r = 1; r <= count; ++r) {
      const char* key = table[r * 2];
      const char* value = table[r * 2 + 1];
      rows.emplace_back(key != nullptr ? key : "", value != nullptr ? value : "");
    }
  }
  sqlite3_free_table(table);
  sqlite3_free(error);
  return rc == SQLITE_OK;
}

std::shared_ptr<CfgServ> ConfigDB::getServCfg() {
  std::lock_guard<std::mutex> lock(cache_mutex_);
  if (!cfg_serv_) cfg_serv_ = std::make_shared<CfgServ>(db_helper_);
  if (!cfg_serv_) LOG(ERROR) << "common_hepler::ConfigDB::getServCfg" << " cfg_serv_ create failed";
  return cfg_serv_;
}

std::shared_ptr<CfgScan> ConfigDB::getScanCfg() {
  std::lock_guard<std::mutex> lock(cache_mutex_);
  if (!cfg_scan_) cfg_scan_ = std::make_shared<CfgScan>(db_helper_);
  if (!cfg_scan_) LOG(ERROR) << "common_hepler::ConfigDB::getScanCfg" << " cfg_scan_ create failed";
  return cfg_scan_;
}

std::shared_ptr<CfgUI> ConfigDB::getUICfg() {
  std::lock_guard<std::mutex> lock(cache_mutex_);
  if (!cfg_ui_) cfg_ui_ = std::make_shared<CfgUI>(db_helper_);
  if (!cfg_ui_) LOG(ERROR) << "common_hepler::ConfigDB::getUICfg" << " cfg_ui_ create failed";
  return cfg_ui_;
}

std::wstring ConfigDB::getThumbType() {
  std::lock_guard<std::mutex> lock(cache_mutex_);
  if (!thumb_type_.empty()) return thumb_type_;
  std::string value;
  thumb_type_ = queryValue(cfg_names::k_thumb_type, value) ? utf8ToWs(value) : L"jpg";
  return thumb_type_;
}

std::wstring getLocalDataDir() {
  std::wstring folder = platform::Env::Default()->GetUserDataFolder();
  if (folder.size() >= kSpecialFolderBuffer) folder.clear();
  return folder + common_texts::kProductFolderPiece;
}

std::wstring getCommonDataDir() {
  std::wstring folder = platform::Env::Default()->GetCommonDataFolder();
  if (folder.size() >= kSpecialFolderBuffer) folder.clear();
  return folder + common_texts::kProductFolderPiece;
}

std::vector<std::string> splitByComma(const std::string& text) {
  std::vector<std::string> pieces;
  size_t start = 0;
  size_t comma;
  while ((comma = text.find(',', start)) != std::string::npos) {
    if (comma > start) pieces.push_back(text.substr(start, comma - start));
    start = comma + 1;
  }
  if (start < text.size()) pieces.push_back(text.substr(start));
  return pieces;
}

}  // namespace common_hepler

#include "testing/settings_file.h"

#include <gtest/gtest.h>
#include <sqlite3.h>

namespace pellix_test {

namespace {

using Table = std::vector<std::vector<std::optional<std::string>>>;

Table query(const std::string& path, const std::string& sql) {
  Table table;
  sqlite3* db = nullptr;
  if (sqlite3_open_v2(path.c_str(), &db, SQLITE_OPEN_READONLY, nullptr) != SQLITE_OK) {
    ADD_FAILURE() << "cannot open " << path << ": " << sqlite3_errmsg(db);
    sqlite3_close(db);
    return table;
  }
  sqlite3_busy_timeout(db, 10000);
  sqlite3_stmt* stmt = nullptr;
  if (sqlite3_prepare_v2(db, sql.c_str(), -1, &stmt, nullptr) != SQLITE_OK) {
    ADD_FAILURE() << sql << ": " << sqlite3_errmsg(db);
  } else {
    while (sqlite3_step(stmt) == SQLITE_ROW) {
      std::vector<std::optional<std::string>> row;
      for (int c = 0; c < sqlite3_column_count(stmt); ++c) {
        const unsigned char* text = sqlite3_column_text(stmt, c);
        row.push_back(text == nullptr ? std::nullopt
                                      : std::optional<std::string>(
                                            reinterpret_cast<const char*>(text)));
      }
      table.push_back(row);
    }
  }
  sqlite3_finalize(stmt);
  sqlite3_close(db);
  return table;
}

}  // namespace

void SettingsFile::exec(const std::string& sql) const {
  sqlite3* db = nullptr;
  ASSERT_EQ(sqlite3_open(path_.c_str(), &db), SQLITE_OK) << path_;
  sqlite3_busy_timeout(db, 10000);
  char* error = nullptr;
  const int rc = sqlite3_exec(db, sql.c_str(), nullptr, nullptr, &error);
  EXPECT_EQ(rc, SQLITE_OK) << sql << ": " << (error != nullptr ? error : "");
  sqlite3_free(error);
  sqlite3_close(db);
}

void SettingsFile::createWithHistory() const {
  exec(
      "CREATE TABLE config(UserID VARCHAR, key VARCHAR, value VARCHAR);"
      "CREATE TABLE history(n INTEGER PRIMARY KEY, key VARCHAR, value VARCHAR);"
      "CREATE TRIGGER on_insert AFTER INSERT ON config BEGIN "
      "  INSERT INTO history(key, value) VALUES (new.key, new.value); END;"
      "CREATE TRIGGER on_update AFTER UPDATE ON config BEGIN "
      "  INSERT INTO history(key, value) VALUES (new.key, new.value); END;");
}

std::vector<SettingsRow> SettingsFile::rows() const {
  std::vector<SettingsRow> rows;
  for (const auto& r : query(path_, "SELECT UserID, key, value FROM config ORDER BY rowid")) {
    rows.push_back({r[0], r[1].value_or(""), r[2]});
  }
  return rows;
}

std::vector<std::pair<std::string, std::string>> SettingsFile::history() const {
  std::vector<std::pair<std::string, std::string>> events;
  for (const auto& r : query(path_, "SELECT key, value FROM history ORDER BY n")) {
    events.emplace_back(r[0].value_or(""), r[1].value_or(""));
  }
  return events;
}

std::optional<std::string> SettingsFile::value(const std::string& key) const {
  for (const SettingsRow& row : rows()) {
    if (row.key == key) return row.value;
  }
  return std::nullopt;
}

}  // namespace pellix_test

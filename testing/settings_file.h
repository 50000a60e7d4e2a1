// A settings database file as the tests look into it: straight through SQLite, beside the
// code under test, to see what really stands in the table.
#ifndef TESTING_SETTINGS_FILE_H_
#define TESTING_SETTINGS_FILE_H_

#include <optional>
#include <string>
#include <vector>

namespace pellix_test {

struct SettingsRow {
  std::optional<std::string> user_id;
  std::string key;
  std::optional<std::string> value;
};

class SettingsFile {
 public:
  explicit SettingsFile(std::string path) : path_(std::move(path)) {}

  const std::string& path() const { return path_; }

  // Runs statements on the file (making it if needed); fails the test on an error.
  void exec(const std::string& sql) const;

  // Makes the table as the kernel does, and a history table that a trigger fills with every
  // key and value written to the table, in order.
  void createWithHistory() const;

  // Every row of the table in its order; every (key, value) the history caught.
  std::vector<SettingsRow> rows() const;
  std::vector<std::pair<std::string, std::string>> history() const;

  // The first value of `key`, or nothing when there is no row.
  std::optional<std::string> value(const std::string& key) const;

 private:
  std::string path_;
};

}  // namespace pellix_test

#endif  // TESTING_SETTINGS_FILE_H_

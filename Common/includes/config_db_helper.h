// ConfigDBHelper: the typed front of the settings table. It checks its arguments, reads and
// writes one key through the ConfigDB that owns the connection, and turns text into the wanted
// type. Settings classes hold it and never touch the connection.
#ifndef COMMON_INCLUDES_CONFIG_DB_HELPER_H_
#define COMMON_INCLUDES_CONFIG_DB_HELPER_H_

#include <string>

namespace common_hepler {
class ConfigDB;
}

class ConfigDBHelper {
 public:
  // `db` owns this helper and outlives it; it isn't owned here.
  explicit ConfigDBHelper(common_hepler::ConfigDB* db) : db_(db) {}

  // False, with a log line, when there is no ConfigDB.
  bool checkDB();

  // The value of `key` as text, int or bool; `default_value` when the key is empty, missing,
  // stored as an empty text, or the table can't be read. Numbers follow atoi: leading blanks,
  // a sign and leading digits count and the rest is ignored ("12abc" is 12, "abc" is 0); a
  // bool is true when that number isn't 0.
  template <typename T>
  T getValue(const std::string& key, T default_value);
  std::string getValue(const std::string& key, const char* default_value) {
    return getValue<std::string>(key, std::string(default_value));
  }

  // Stores the text (or the int in decimal) under `key`, replacing what was there. The text
  // is put into the statement as it stands: an apostrophe in it must come doubled.
  bool setValue(const std::string& key, const std::string& value);
  bool setValue(const std::string& key, const char* value) {
    return setValue(key, std::string(value));
  }
  bool setValue(const std::string& key, int value);

 private:
  common_hepler::ConfigDB* db_;
};

extern template std::string ConfigDBHelper::getValue<std::string>(const std::string&,
                                                                  std::string);
extern template int ConfigDBHelper::getValue<int>(const std::string&, int);
extern template bool ConfigDBHelper::getValue<bool>(const std::string&, bool);

#endif  // COMMON_INCLUDES_CONFIG_DB_HELPER_H_

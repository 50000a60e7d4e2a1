#include "Common/includes/config_db_helper.h"

#include <glog/logging.h>

#include <cstdlib>
#include <type_traits>

#include "Common/Source/config_db.h"

bool ConfigDBHelper::checkDB() {
  if (db_ == nullptr) {
    LOG(ERROR) << "ConfigDBHelper::checkDB" << " db_ is null";
    return false;
  }
  return true;
}

template <typename T>
T ConfigDBHelper::getValue(const std::string& key, T default_value) {
  if (key.empty()) {
    LOG(ERROR) << "ConfigDBHelper::getValue" << " key is empty";
    return default_value;
  }
  if (!checkDB()) return default_value;
  std::string text;
  if (!db_->queryValue(key, text) || text.empty()) return default_value;
  if constexpr (std::is_same_v<T, std::string>) {
    return text;
  } else if constexpr (std::is_same_v<T, bool>) {
    return std::atoi(text.c_str()) != 0;
  } else {
    return std::atoi(text.c_str());
  }
}

template std::string ConfigDBHelper::getValue<std::string>(const std::string&, std::string);
template int ConfigDBHelper::getValue<int>(const std::string&, int);
template bool ConfigDBHelper::getValue<bool>(const std::string&, bool);

bool ConfigDBHelper::setValue(const std::string& key, const std::string& value) {
  if (!checkDB()) return false;
  return db_->saveValue(key, value);
}

bool ConfigDBHelper::setValue(const std::string& key, int value) {
  if (!checkDB()) return false;
  return db_->saveValue(key, std::to_string(value));
}

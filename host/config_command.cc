// pellix config get KEY | set KEY VALUE | list: the kernel's settings table, read and written
// through the kernel's own settings code.
#include <cstdio>

#include "Common/Source/config_db.h"
#include "Common/includes/config_key_names.h"
#include "host/commands.h"
#include "host/host_paths.h"

namespace {

using common_hepler::ConfigDB;

int get(const std::string& key) {
  std::string value;
  if (!ConfigDB::getInstance()->queryValue(key, value)) {
    std::fprintf(stderr, "pellix: no value for %s\n", key.c_str());
    return kExitFailed;
  }
  std::printf("%s\n", value.c_str());
  return kExitOk;
}

// The preview root is a folder: it goes through the kernel's own writer, which stores it by
// volume and marks the folder. Any other value is stored as it stands, so an apostrophe in it
// is written doubled, as in the table's own statements.
int set(const std::string& key, const std::string& value) {
  std::shared_ptr<ConfigDB> db = ConfigDB::getInstance();
  bool stored = false;
  if (key == cfg_names::k_thumb_base_path) {
    std::wstring folder;
    if (!kernelPathOfArgument(value, &folder)) return usageError("no drive holds " + value);
    stored = db->setThumbFileBasePath("pellix config set", folder);
  } else {
    stored = db->getDBHelper() && db->getDBHelper()->setValue(key, value);
  }
  if (!stored) {
    std::fprintf(stderr, "pellix: %s was not stored\n", key.c_str());
    return kExitFailed;
  }
  return kExitOk;
}

int list() {
  std::vector<std::pair<std::string, std::string>> rows;
  if (!ConfigDB::getInstance()->listValues(rows)) {
    std::fprintf(stderr, "pellix: the settings table can't be read\n");
    return kExitFailed;
  }
  for (const auto& [key, value] : rows) std::printf("%s\t%s\n", key.c_str(), value.c_str());
  return kExitOk;
}

}  // namespace

int runConfig(const Args& args) {
  if (args.size() == 2 && args[0] == "get") return get(args[1]);
  if (args.size() == 3 && args[0] == "set") return set(args[1], args[2]);
  if (args.size() == 1 && args[0] == "list") return list();
  return usageError("config wants get KEY, set KEY VALUE or list");
}

// A test program that the settings tests copy beside a drive table of their own, for what the
// host program doesn't do: many writes in a row, and the driver's refresh of the preview root
// after a drive was re-pointed.
//
//   settings_probe write-many PREFIX COUNT     stores PREFIX0..PREFIX<COUNT-1>, 1 if any failed
//   settings_probe refresh-root LETTER TARGET  prints the preview root, points the drive
//                                              LETTER ("e:") at TARGET, has the driver
//                                              refresh the root, and prints it again
#include <glog/logging.h>
#include <limits.h>
#include <unistd.h>

#include <cstdio>
#include <filesystem>
#include <string>

#include "Common/Source/config_db.h"
#include "Common/Source/text_forms.h"
#include "PellixKernel/PellixDriver.h"

namespace {

std::string programFolder() {
  char buf[PATH_MAX];
  const ssize_t n = ::readlink("/proc/self/exe", buf, sizeof(buf) - 1);
  const std::string self(buf, n > 0 ? static_cast<size_t>(n) : 0);
  return self.substr(0, self.rfind('/'));
}

}  // namespace

int main(int argc, char** argv) {
  FLAGS_logtostderr = true;
  google::InitGoogleLogging(argv[0]);
  if (argc != 4) return 2;
  const std::string command = argv[1];
  auto db = common_hepler::ConfigDB::getInstance();
  if (command == "write-many") {
    int failed = 0;
    for (int i = 0; i < std::stoi(argv[3]); ++i) {
      failed += db->getDBHelper()->setValue(argv[2] + std::to_string(i), i) ? 0 : 1;
    }
    return failed == 0 ? 0 : 1;
  }
  if (command == "refresh-root") {
    std::printf("%s\n", wsToUtf8(db->getThumbFileBasePath()).c_str());
    const std::string link = programFolder() + "/dosdevices/" + argv[2];
    std::filesystem::remove(link);
    std::filesystem::create_directory_symlink(argv[3], link);
    CPellixDriver driver;
    driver.refreshThumbBasePath();
    std::printf("%s\n", wsToUtf8(db->getThumbFileBasePath()).c_str());
    return 0;
  }
  return 2;
}

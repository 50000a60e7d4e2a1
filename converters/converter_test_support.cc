#include "converters/converter_test_support.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <cstdlib>
#include <sstream>

#include "Common/Source/ProcessUtils.h"
#include "platform/windows_path.h"

namespace converter_test {

TestDrives::TestDrives() {
  d_ = tmp_.mkdir("disk d $(touch x);'q'");
  e_ = tmp_.mkdir("disk e 图");
  const std::string table = tmp_.mkdir("dosdevices");
  EXPECT_EQ(::symlink(d_.c_str(), (table + "/d:").c_str()), 0);
  EXPECT_EQ(::symlink(e_.c_str(), (table + "/e:").c_str()), 0);
  const std::string utils = pellix_test::stageBin() + "/Utils";
  EXPECT_EQ(::symlink(utils.c_str(), (table + "/s:").c_str()), 0);
  ::setenv("PELLIX_DRIVE_TABLE", table.c_str(), 1);
}

TestDrives::~TestDrives() { ::unsetenv("PELLIX_DRIVE_TABLE"); }

std::wstring converterPath(const std::wstring& name_in_utils) { return L"S:\\" + name_in_utils; }

platform::ProcessExit runLikeTheKernel(const std::wstring& exe, const std::wstring& line) {
  platform::Env* env = platform::Env::Default();
  platform::ProcessHandle process = ProcessCommUtils::runExeInSilence(exe, line, 120000);
  platform::ProcessExit exit;
  EXPECT_NE(process, nullptr) << platform::Utf16ToFileName(exe);
  EXPECT_TRUE(env->GetProcessExit(process, &exit))
      << "still running: " << platform::Utf16ToFileName(line);
  env->CloseProcess(process);
  return exit;
}

std::string makePpm(int width, int height, const std::function<Rgb(int x, int y)>& colour) {
  std::string bytes = "P6\n" + std::to_string(width) + " " + std::to_string(height) + "\n255\n";
  for (int y = 0; y < height; ++y) {
    for (int x = 0; x < width; ++x) {
      for (int c : colour(x, y)) bytes.push_back(static_cast<char>(c));
    }
  }
  return bytes;
}

Rgb Picture::at(int x, int y) const {
  const size_t i =
      (static_cast<size_t>(y) * static_cast<size_t>(width) + static_cast<size_t>(x)) * 3;
  if (i + 2 >= rgb.size()) return {-1, -1, -1};
  return {static_cast<unsigned char>(rgb[i]), static_cast<unsigned char>(rgb[i + 1]),
          static_cast<unsigned char>(rgb[i + 2])};
}

Picture readPicture(const std::string& path) {
  Picture picture;
  const pellix_test::RunResult id =
      pellix_test::run({"/usr/bin/gm", "identify", "-format", "%m", path});
  std::istringstream(id.out) >> picture.format;
  const pellix_test::RunResult ppm = pellix_test::run({"/usr/bin/gm", "convert", path, "ppm:-"});
  std::istringstream header(ppm.out);
  std::string magic;
  int max = 0;
  header >> magic >> picture.width >> picture.height >> max;
  if (magic != "P6" || max != 255) {
    ADD_FAILURE() << "gm can't read " << path << ": " << ppm.err;
    return Picture();
  }
  const size_t start = static_cast<size_t>(header.tellg()) + 1;
  picture.rgb = ppm.out.substr(start);
  return picture;
}

bool near(const Rgb& a, const Rgb& b, int tolerance) {
  for (int i = 0; i < 3; ++i) {
    if (std::abs(a[i] - b[i]) > tolerance) return false;
  }
  return true;
}

std::string show(const Rgb& c) {
  return "(" + std::to_string(c[0]) + "," + std::to_string(c[1]) + "," + std::to_string(c[2]) + ")";
}

}  // namespace converter_test

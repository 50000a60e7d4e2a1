// pcx2jpgcmd.exe on PCX files that the tests write byte by byte, run with the kernel's command
// line; what it writes is read back through real GraphicsMagick.
#include <gtest/gtest.h>

#include <functional>
#include <string>

#include "Common/Source/text_forms.h"
#include "converters/converter_test_support.h"
#include "testing/test_support.h"

namespace converter_test {
namespace {

using pellix_test::fileExists;
using pellix_test::writeFile;

const std::wstring kPcx = L"pcx2jpgcmd.exe";

// The kernel's line: the source, and the folder the picture goes to.
std::wstring pcxLine(const std::wstring& src, const std::wstring& folder) {
  return L" -i \"" + src + L"\" -o \"" + folder + L"\"";
}

const Rgb kWarm = {200, 30, 40};
const Rgb kCool = {30, 180, 60};
const Rgb kYellow = {250, 200, 0};
const Rgb kBlue = {0, 60, 200};

std::string palette() {
  std::string p(768, '\0');
  for (int i = 0; i < 256; ++i) {
    for (int c = 0; c < 3; ++c)
      p[static_cast<size_t>(i * 3 + c)] = static_cast<char>((i * 7 + c * 50) % 256);
  }
  for (int c = 0; c < 3; ++c) {
    p[static_cast<size_t>(5 * 3 + c)] = static_cast<char>(kWarm[static_cast<size_t>(c)]);
    p[static_cast<size_t>(200 * 3 + c)] = static_cast<char>(kCool[static_cast<size_t>(c)]);
  }
  return p;
}

TEST(Pcx2JpgExeTest, ThreeKindsOfPcxComeOutUnderTheNameTheRouteWorksOut) {
  TestDrives drives;
  drives.tmp().mkdir("disk e 图/previews");
  struct Case {
    std::string name;
    std::string bytes;
    int width, height;
    Rgb left, right;
    std::string out;
  } cases[] = {
      {"scan 1 $(touch x);图.PCX",
       makePcx(1, 1, 33, 20, [](int x, int, int) { return x < 16 ? 0 : 1; }), 33, 20, Rgb{0, 0, 0},
       Rgb{255, 255, 255}, "scan 1 $(touch x);图.jpg"},
      {"palette.8.pcx",
       makePcx(
           8, 1, 40, 30, [](int x, int, int) { return x < 20 ? 5 : 200; }, palette()),
       40, 30, kWarm, kCool, "palette.8.jpg"},
      {"true colour 'q'.Pcx",
       makePcx(8, 3, 41, 25,
               [](int x, int, int plane) {
                 return (x < 20 ? kYellow : kBlue)[static_cast<size_t>(plane)];
               }),
       41, 25, kYellow, kBlue, "true colour 'q'.jpg"},
  };
  for (const Case& c : cases) {
    writeFile(drives.d() + "/in/" + c.name, c.bytes);
    const platform::ProcessExit exit = runLikeTheKernel(
        converterPath(kPcx), pcxLine(L"D:\\in\\" + utf8ToWs(c.name), L"E:\\previews"));
    EXPECT_EQ(exit.code, 0) << "row: " << c.name;
    const Picture p = readPicture(drives.e() + "/previews/" + c.out);
    EXPECT_EQ(p.format, "JPEG") << "row: " << c.name;
    EXPECT_EQ(p.width, c.width) << "row: " << c.name;
    EXPECT_EQ(p.height, c.height) << "row: " << c.name;
    EXPECT_TRUE(near(p.at(3, c.height / 2), c.left)) << "row: " << c.name << show(p.at(3, 10));
    EXPECT_TRUE(near(p.at(c.width - 3, c.height / 2), c.right))
        << "row: " << c.name << show(p.at(c.width - 3, 10));
  }
  EXPECT_FALSE(fileExists(drives.d() + "/in/x"));
}

TEST(Pcx2JpgExeTest, BadFilesAndLinesEndWithACodeAndLeaveNothing) {
  TestDrives drives;
  const std::string good =
      makePcx(8, 3, 64, 64, [](int x, int y, int plane) { return (x * 3 + y * 5 + plane) % 256; });
  std::string lying = good.substr(0, 200);
  put16(&lying, 8, 29999);
  put16(&lying, 10, 29999);
  std::string huge = good;
  put16(&huge, 8, 59999);
  put16(&huge, 10, 59999);
  std::string bad_depth = good;
  bad_depth[3] = 7;
  struct Case {
    const char* why;
    std::string bytes;  // written as D:\in\src.pcx unless empty
    std::wstring line;
    int code;
  } cases[] = {
      {"a header that claims more than its data", lying, L"", 1},
      {"a header beyond the pixel limit", huge, L"", 1},
      {"data cut in the middle", good.substr(0, good.size() / 3), L"", 1},
      {"a bit depth that doesn't exist", bad_depth, L"", 1},
      {"text", std::string(300, 't'), L"", 1},
      {"an empty file", std::string(), L"", 1},
      {"a missing file", std::string(), pcxLine(L"D:\\in\\missing.pcx", L"E:\\out"), 1},
      {"no folder", std::string(), L" -i \"D:\\in\\src.pcx\"", 2},
      {"a stray argument", std::string(), pcxLine(L"D:\\in\\src.pcx", L"E:\\out") + L" x", 2},
      {"a source no drive holds", std::string(), pcxLine(L"Q:\\src.pcx", L"E:\\out"), 2},
      {"a folder no drive holds", std::string(), pcxLine(L"D:\\in\\src.pcx", L"Q:\\out"), 2},
  };
  drives.tmp().mkdir("disk e 图/out");
  for (const Case& c : cases) {
    writeFile(drives.d() + "/in/src.pcx", c.bytes);
    const std::wstring line = c.line.empty() ? pcxLine(L"D:\\in\\src.pcx", L"E:\\out") : c.line;
    EXPECT_EQ(runLikeTheKernel(converterPath(kPcx), line).code, c.code) << "row: " << c.why;
    EXPECT_TRUE(pellix_test::readFile(drives.e() + "/out/src.jpg").empty()) << "row: " << c.why;
  }
  // Nothing at all was left in the folder, not even a temporary file.
  EXPECT_EQ(pellix_test::run({"/usr/bin/find", drives.e() + "/out", "-mindepth", "1"}).out, "");
}

}  // namespace
}  // namespace converter_test

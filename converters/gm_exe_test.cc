// gm.exe with the real GraphicsMagick, run with the kernel's command lines on pictures the
// tests make.
#include <gtest/gtest.h>

#include <filesystem>
#include <string>

#include "Common/Source/text_forms.h"
#include "converters/converter_test_support.h"
#include "testing/test_support.h"

namespace converter_test {
namespace {

using pellix_test::fileExists;
using pellix_test::writeFile;

// The kernel's two lines for GraphicsMagick.
std::wstring plainLine(int w, int h, const std::wstring& src, const std::wstring& dst) {
  const std::wstring size = std::to_wstring(w) + L"x" + std::to_wstring(h);
  return L" convert -size " + size + L" \"" + src + L"\" -resize " + size + L" +profile \"*\" \"" +
         dst + L"\"";
}
std::wstring whiteLine(int w, int h, const std::wstring& src, const std::wstring& dst) {
  const std::wstring size = std::to_wstring(w) + L"x" + std::to_wstring(h);
  return L" convert -size " + size + L" \"" + src +
         L"\" -flatten -colorspace Gray -negate -resize " + size + L" +profile \"*\" \"" + dst +
         L"\"";
}

const Rgb kRed = {220, 20, 30};
const Rgb kBlue = {20, 40, 230};

TEST(GmExeTest, ScalesAPictureWithOddNamesOnBothDrives) {
  TestDrives drives;
  const std::string name = "图 a'b $(touch x); c.ppm";
  writeFile(drives.d() + "/in 100%/" + name,
            makePpm(120, 80, [](int x, int) { return x < 60 ? kRed : kBlue; }));
  const std::wstring src = L"D:\\in 100%\\" + utf8ToWs(name);
  const std::wstring dst = L"E:\\out\\" + utf8ToWs(name) + L".1.jpg";
  drives.tmp().mkdir("disk e 图/out");

  const platform::ProcessExit exit =
      runLikeTheKernel(converterPath(L"GM\\gm.exe"), plainLine(60, 60, src, dst));
  EXPECT_EQ(exit.code, 0);
  const Picture out = readPicture(drives.e() + "/out/" + name + ".1.jpg");
  EXPECT_EQ(out.format, "JPEG");
  EXPECT_EQ(out.width, 60);
  EXPECT_EQ(out.height, 40);
  EXPECT_TRUE(near(out.at(10, 20), kRed)) << show(out.at(10, 20));
  EXPECT_TRUE(near(out.at(50, 20), kBlue)) << show(out.at(50, 20));
  EXPECT_FALSE(fileExists(drives.d() + "/in 100%/x"));
  EXPECT_FALSE(fileExists("x"));
}

TEST(GmExeTest, TheLineForWhitePicturesNegatesThem) {
  TestDrives drives;
  const std::string ppm = drives.d() + "/white.ppm";
  writeFile(ppm, makePpm(40, 40, [](int, int) { return Rgb{255, 255, 255}; }));
  ASSERT_EQ(pellix_test::run({"/usr/bin/gm", "convert", ppm, drives.d() + "/white.tif"}).status, 0);

  const platform::ProcessExit exit = runLikeTheKernel(
      converterPath(L"GM\\gm.exe"), whiteLine(20, 20, L"D:\\white.tif", L"E:\\white.tif.1.jpg"));
  EXPECT_EQ(exit.code, 0);
  const Picture out = readPicture(drives.e() + "/white.tif.1.jpg");
  EXPECT_EQ(out.width, 20);
  EXPECT_TRUE(near(out.at(10, 10), Rgb{0, 0, 0}, 10)) << show(out.at(10, 10));
}

TEST(GmExeTest, FailuresEndWithACodeAndNoPicture) {
  TestDrives drives;
  writeFile(drives.d() + "/not a picture.jpg", "plain text, no picture at all");
  // A GIF screen of 70x70 and nothing after it: gm opens its output before it fails.
  writeFile(drives.d() + "/header only.gif", std::string("GIF87aF\0F\0\r\n\x1a\n\n", 15));
  struct Case {
    const char* why;
    std::wstring line;
    int code;
  } cases[] = {
      {"no drive holds the source", plainLine(20, 20, L"Q:\\a.ppm", L"E:\\a.jpg"), 2},
      {"no drive holds the output", plainLine(20, 20, L"D:\\not a picture.jpg", L"Q:\\a.jpg"), 2},
      {"gm can't read the source", plainLine(20, 20, L"D:\\not a picture.jpg", L"E:\\a.jpg"), 1},
      {"the source is missing", plainLine(20, 20, L"D:\\missing.ppm", L"E:\\a.jpg"), 1},
      {"gm fails half-way", plainLine(20, 20, L"D:\\header only.gif", L"E:\\a.jpg"), 1},
  };
  for (const Case& c : cases) {
    const platform::ProcessExit exit = runLikeTheKernel(converterPath(L"GM\\gm.exe"), c.line);
    EXPECT_EQ(exit.code, c.code) << "row: " << c.why;
    EXPECT_TRUE(std::filesystem::is_empty(drives.e())) << "row: " << c.why;
  }
}

}  // namespace
}  // namespace converter_test

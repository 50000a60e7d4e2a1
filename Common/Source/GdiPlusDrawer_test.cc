// The drawer as the raster route uses it: the encoder word from a name and a pixel format,
// encoders by MIME type, and real files drawn and saved.
#include "Common/Source/GdiPlusDrawer.h"

#include <gtest/gtest.h>

#include "testing/test_images.h"
#include "testing/test_support.h"

namespace {

using pellix_test::bgrAt;
using pellix_test::LogCapture;
using pellix_test::plainImage;
using pellix_test::readFile;
using pellix_test::TempDir;
using pellix_test::windowsPath;

TEST(GdiPlusDrawerTest, EncoderWordFollowsNameAndAlpha) {
  struct Row {
    std::wstring path;
    platform::PixelFormat source;
    std::wstring word;
  };
  const Row rows[] = {
      {L"C:\\out\\x.png", platform::kPixelFormat32bppARGB, L"png"},
      {L"C:\\out\\x.PNG", platform::kPixelFormat64bppARGB, L"png"},
      {L"C:\\out\\x.png", platform::kPixelFormat24bppRGB, L"jpeg"},
      {L"C:\\out\\x.bmp", platform::kPixelFormat24bppRGB, L"jpeg"},
      {L"C:\\out\\x.bmp", platform::kPixelFormat32bppARGB, L"bmp"},
      {L"C:\\out\\x.JPG", platform::kPixelFormat32bppARGB, L"jpeg"},
      {L"C:\\out\\x.jpg", platform::kPixelFormat8bppIndexed, L"jpeg"},
      {L"C:\\out\\x.tif", platform::kPixelFormat32bppARGB, L"tiff"},
      {L"C:\\out\\x.tif", platform::kPixelFormat48bppRGB, L"jpeg"},
      {L"C:\\out\\x.gif", platform::kPixelFormat32bppARGB, L"gif"},
      {L"C:\\out\\x.webp", platform::kPixelFormat32bppARGB, L"webp"},
      {L"C:\\out\\x.png", platform::kPixelFormat32bppCMYK, L"jpeg"},
      {L"C:\\dir.v2\\NoExt", platform::kPixelFormat32bppARGB, L"v2\\noext"},
      {L"C:\\out\\NoExt", platform::kPixelFormat32bppARGB, L"c:\\out\\noext"},
  };
  for (const Row& row : rows) {
    EXPECT_EQ(encoderWordFor(row.path, bitmapFormatOf(row.source)), row.word)
        << "path " << std::string(row.path.begin(), row.path.end()) << ", format " << std::hex
        << row.source;
  }
  EXPECT_EQ(bitmapFormatOf(platform::kPixelFormat32bppCMYK), platform::kPixelFormat32bppRGB);
  EXPECT_EQ(bitmapFormatOf(platform::kPixelFormat48bppRGB), platform::kPixelFormat48bppRGB);
}

TEST(GdiPlusDrawerTest, EncodersByExactMimeType) {
  GdiPlusDrawer& drawer = GdiPlusDrawer::getInstance();
  EXPECT_EQ(&drawer, &GdiPlusDrawer::getInstance());
  const auto encoders = platform::Env::Default()->GetImageEncoders();
  const std::pair<std::wstring, int> rows[] = {
      {L"image/bmp", 0},  {L"image/jpeg", 1}, {L"image/gif", 2},  {L"image/tiff", 3},
      {L"image/png", 4},  {L"image/webp", -1}, {L"IMAGE/PNG", -1}, {L"image/jpg", -1},
      {L"", -1},
  };
  for (const auto& [mime, index] : rows) {
    platform::EncoderId clsid;
    EXPECT_EQ(drawer.getEncoderClsid(mime, &clsid), index)
        << std::string(mime.begin(), mime.end());
    if (index >= 0) {
      EXPECT_TRUE(clsid == encoders[static_cast<size_t>(index)].clsid);
    }
  }
}

class GdiPlusDrawerSaveTest : public testing::Test {
 protected:
  void SetUp() override { token_ = platform::Env::Default()->StartImaging(); }
  void TearDown() override { platform::Env::Default()->StopImaging(token_); }

  std::shared_ptr<platform::Image> load(const std::string& path) {
    platform::Status s;
    auto image = platform::Env::Default()->LoadImage(windowsPath(path), &s);
    EXPECT_NE(image, nullptr) << path << ": " << s.message;
    return image;
  }
  // Loads `source`, saves it at width x height to `name` and gives the file's bytes.
  std::string save(const std::string& source, int width, int height, const std::string& name) {
    GdiPlusDrawer::getInstance().zoomImageAndSave(load(source), width, height,
                                                  windowsPath(tmp_.path()) + L"\\" +
                                                      std::wstring(name.begin(), name.end()));
    return readFile(tmp_.path() + "/" + name);
  }

  uintptr_t token_ = 0;
  TempDir tmp_;
};

TEST_F(GdiPlusDrawerSaveTest, FormatFollowsNameAndAlpha) {
  const std::string alpha = tmp_.path() + "/alpha.png";
  pellix_test::gm({"convert", "-size", "20x10", "xc:none", "-fill", "red", "-draw",
                   "rectangle 0,0 9,9", "-type", "TrueColorMatte", "-depth", "8", alpha});
  const std::string bmp24 = plainImage(tmp_.path() + "/plain.bmp", 20, 10, "red",
                                       {"-type", "TrueColor"});
  struct Row {
    std::string source;
    std::string name;
    std::string mark;
  };
  const Row rows[] = {
      {alpha, "a.png", "\x89PNG"},        {alpha, "a.gif", "GIF8"},
      {alpha, "a.TIF", "II*"},            {alpha, "a.bmp", "BM"},
      {alpha, "a.jpg", "\xFF\xD8\xFF"},   {bmp24, "b.bmp", "\xFF\xD8\xFF"},
      {bmp24, "b.png", "\xFF\xD8\xFF"},   {bmp24, "b.webp", "\xFF\xD8\xFF"},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(row.name);
    const std::string bytes = save(row.source, 40, 20, row.name);
    EXPECT_EQ(bytes.rfind(row.mark, 0), 0u);
  }
  const cv::Mat png = pellix_test::pixelsOf(tmp_.path() + "/a.png");
  ASSERT_EQ(png.size(), cv::Size(40, 20));
  EXPECT_EQ(bgrAt(png, 4, 10), cv::Vec3b(0, 0, 255));
  EXPECT_EQ(bgrAt(png, 36, 10), cv::Vec3b(255, 255, 255)) << "white where it was transparent";
}

TEST_F(GdiPlusDrawerSaveTest, NothingWrittenWithoutAnEncoderOrAPath) {
  const std::string alpha = plainImage(tmp_.path() + "/alpha.png", 8, 8, "#FF000080",
                                       {"-type", "TrueColorMatte", "-depth", "8"});
  LogCapture log;
  EXPECT_TRUE(save(alpha, 8, 8, "a.webp").empty()) << "no encoder for image/webp";
  EXPECT_FALSE(pellix_test::fileExists(tmp_.path() + "/a.webp"));
  EXPECT_EQ(log.count("GdiPlusDrawer::zoomImageAndSave"), 0) << "nothing reported";
  GdiPlusDrawer::getInstance().zoomImageAndSave(load(alpha), 8, 8, L"");
  EXPECT_EQ(log.count("GdiPlusDrawer::zoomImageAndSave wsPath is empty"), 1);
}

TEST_F(GdiPlusDrawerSaveTest, CmykBecomesRgbAndJpeg) {
  const std::string cmyk = plainImage(tmp_.path() + "/cmyk.jpg", 16, 16, "cyan",
                                      {"-colorspace", "CMYK"});
  auto bitmap = GdiPlusDrawer::getInstance().zoomImage(load(cmyk), 8, 4);
  ASSERT_NE(bitmap, nullptr);
  EXPECT_EQ(bitmap->GetPixelFormat(), platform::kPixelFormat32bppRGB);
  EXPECT_EQ(bitmap->Width(), 8u);
  EXPECT_EQ(bitmap->Height(), 4u);
  EXPECT_EQ(save(cmyk, 8, 8, "c.png").rfind("\xFF\xD8\xFF", 0), 0u);
  const cv::Vec3b bgr = bgrAt(pellix_test::pixelsOf(tmp_.path() + "/c.png"), 4, 4);
  EXPECT_LT(bgr[2], 60);
  EXPECT_GT(bgr[0], 180);
}

TEST_F(GdiPlusDrawerSaveTest, ADamagedSourceKeepsTheOldFile) {
  pellix_test::gm({"convert", "-size", "200x200", "plasma:", tmp_.path() + "/photo.jpg"});
  const std::string whole = readFile(tmp_.path() + "/photo.jpg");
  const std::string cut = tmp_.write("cut.jpg", whole.substr(0, whole.size() / 3));
  tmp_.write("out.jpg", "older preview");
  EXPECT_EQ(save(cut, 50, 50, "out.jpg"), "older preview");
  EXPECT_EQ(GdiPlusDrawer::getInstance().zoomImage(load(cut), 50, 50), nullptr);
}

}  // namespace

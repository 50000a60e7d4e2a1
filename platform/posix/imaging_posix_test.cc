// The imaging services as the kernel meets them: start and stop, files of every kind made by
// the tests, the scaled draw onto white, and exactly five encoders.
#include <gtest/gtest.h>

#include <opencv2/imgcodecs.hpp>

#include "platform/env.h"
#include "testing/test_images.h"
#include "testing/test_support.h"

namespace {

using pellix_test::bgrAt;
using pellix_test::gm;
using pellix_test::plainImage;
using pellix_test::TempDir;
using pellix_test::windowsPath;
using platform::PixelFormat;

class ImagingTest : public testing::Test {
 protected:
  void SetUp() override {
    token_ = env_->StartImaging();
    ASSERT_NE(token_, 0u);
  }
  void TearDown() override { env_->StopImaging(token_); }

  std::shared_ptr<platform::Image> load(const std::string& posix_path, platform::Status* s) {
    return env_->LoadImage(windowsPath(posix_path), s);
  }
  // Draws the file at width x height in `format` and gives the PNG encoding's pixels.
  cv::Mat drawn(const std::string& posix_path, int width, int height, PixelFormat format) {
    platform::Status s;
    auto image = load(posix_path, &s);
    EXPECT_NE(image, nullptr) << s.message;
    if (image == nullptr) return cv::Mat();
    auto bitmap = env_->DrawImageOnWhite(*image, width, height, format, &s);
    EXPECT_NE(bitmap, nullptr) << s.message;
    if (bitmap == nullptr) return cv::Mat();
    std::string png;
    EXPECT_TRUE(env_->EncodeImage(*bitmap, env_->GetImageEncoders()[4].clsid, &png).ok());
    return cv::imdecode(std::vector<uchar>(png.begin(), png.end()), cv::IMREAD_UNCHANGED);
  }

  platform::Env* env_ = platform::Env::Default();
  uintptr_t token_ = 0;
  TempDir tmp_;
};

TEST_F(ImagingTest, StopsAndStartsAgainInOneProcess) {
  const std::string jpg = plainImage(tmp_.path() + "/a.jpg", 8, 6, "red");
  platform::Status s;
  const uintptr_t second = env_->StartImaging();
  EXPECT_NE(second, token_);
  env_->StopImaging(token_);
  EXPECT_NE(load(jpg, &s), nullptr) << "another user is still live";
  env_->StopImaging(second);
  env_->StopImaging(second);
  EXPECT_EQ(load(jpg, &s), nullptr) << "no live user";
  EXPECT_FALSE(s.ok());
  token_ = env_->StartImaging();
  ASSERT_NE(token_, 0u);
  auto image = load(jpg, &s);
  ASSERT_NE(image, nullptr) << s.message;
  EXPECT_NE(env_->DrawImageOnWhite(*image, 4, 3, image->GetPixelFormat(), &s), nullptr)
      << s.message;
}

TEST_F(ImagingTest, LoadsEachKindWithItsSizeAndPixelFormat) {
  const std::string dir = tmp_.path();
  plainImage(dir + "/source.png", 40, 30, "#FF000080", {"-type", "TrueColorMatte", "-depth", "8"});
  struct Row {
    std::string name;
    std::vector<std::string> extra;  // gm options, or {"vips"} to convert source.png with vips
    PixelFormat format;
  };
  const std::vector<Row> rows = {
      {"rgb.jpg", {}, platform::kPixelFormat24bppRGB},
      {"grey.png", {"-type", "Grayscale", "-depth", "8"}, platform::kPixelFormat8bppIndexed},
      {"grey16.png", {"-type", "Grayscale", "-depth", "16"}, platform::kPixelFormat16bppGrayScale},
      {"alpha.png", {"-type", "TrueColorMatte", "-depth", "8"}, platform::kPixelFormat32bppARGB},
      {"deep.png", {"-type", "TrueColor", "-depth", "16"}, platform::kPixelFormat48bppRGB},
      {"deep_alpha.png", {"-type", "TrueColorMatte", "-depth", "16"},
       platform::kPixelFormat64bppARGB},
      {"cmyk.jpg", {"-colorspace", "CMYK"}, platform::kPixelFormat32bppCMYK},
      {"lzw.tif", {"-compress", "LZW"}, platform::kPixelFormat24bppRGB},
      {"rgb.bmp", {"-type", "TrueColor"}, platform::kPixelFormat24bppRGB},
      {"plain.gif", {}, platform::kPixelFormat24bppRGB},
      {"alpha.webp", {"vips"}, platform::kPixelFormat32bppARGB},
      {"alpha.jp2", {"vips"}, platform::kPixelFormat32bppARGB},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(row.name);
    const std::string path = dir + "/" + row.name;
    if (row.extra == std::vector<std::string>{"vips"}) {
      pellix_test::vipsTool({"copy", dir + "/source.png", path});
    } else {
      plainImage(path, 40, 30, "red", row.extra);
    }
    platform::Status s;
    auto image = load(path, &s);
    ASSERT_NE(image, nullptr) << s.message;
    EXPECT_EQ(image->Width(), 40u);
    EXPECT_EQ(image->Height(), 30u);
    EXPECT_EQ(image->GetPixelFormat(), row.format) << std::hex << image->GetPixelFormat();
  }
  // The content decides, not the name.
  pellix_test::copyFile(dir + "/alpha.png", dir + "/png_inside.jpg");
  platform::Status s;
  auto image = load(dir + "/png_inside.jpg", &s);
  ASSERT_NE(image, nullptr) << s.message;
  EXPECT_EQ(image->GetPixelFormat(), platform::kPixelFormat32bppARGB);
}

TEST_F(ImagingTest, RefusesWhatIsNoRasterImage) {
  const std::string dir = tmp_.path();
  struct Row {
    std::string name;
    std::string bytes;
    platform::ErrorKind kind;
  };
  const std::vector<Row> rows = {
      {"empty.jpg", "", platform::ErrorKind::kOther},
      {"text.png", "just some words, no pixels\n", platform::ErrorKind::kOther},
      {"doc.jpg", "%PDF-1.4\n1 0 obj\n<< >>\nendobj\ntrailer\n<< >>\n%%EOF\n",
       platform::ErrorKind::kOther},
      {"drawing.png", "<svg xmlns=\"http://www.w3.org/2000/svg\" width=\"10\" height=\"10\"/>",
       platform::ErrorKind::kOther},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(row.name);
    platform::Status s;
    EXPECT_EQ(load(tmp_.write(row.name, row.bytes), &s), nullptr);
    EXPECT_EQ(s.kind, row.kind) << s.message;
  }
  platform::Status s;
  EXPECT_EQ(load(dir + "/missing.jpg", &s), nullptr);
  EXPECT_EQ(s.kind, platform::ErrorKind::kNotFound);
}

TEST_F(ImagingTest, DrawsScaledOntoWhite) {
  // Left half opaque red, right half transparent.
  const std::string path = tmp_.path() + "/half.png";
  gm({"convert", "-size", "20x10", "xc:none", "-fill", "red", "-draw", "rectangle 0,0 9,9",
      "-type", "TrueColorMatte", "-depth", "8", path});
  const cv::Mat keep = drawn(path, 40, 20, platform::kPixelFormat32bppARGB);
  ASSERT_EQ(keep.cols, 40);
  ASSERT_EQ(keep.rows, 20);
  ASSERT_EQ(keep.channels(), 4) << "a format with alpha keeps its channel";
  EXPECT_EQ(keep.at<cv::Vec4b>(10, 4), cv::Vec4b(0, 0, 255, 255));
  EXPECT_EQ(keep.at<cv::Vec4b>(10, 35), cv::Vec4b(255, 255, 255, 255)) << "opaque white";
  const cv::Mat flat = drawn(path, 7, 30, platform::kPixelFormat24bppRGB);
  ASSERT_EQ(flat.channels(), 3);
  EXPECT_EQ(flat.size(), cv::Size(7, 30)) << "stretched to the size asked for";
  const cv::Vec3b edge = bgrAt(flat, 6, 15);
  EXPECT_GE(std::min({edge[0], edge[1], edge[2]}), 245) << "white, up to the filter's reach";
}

TEST_F(ImagingTest, CmykComesOutInItsColours) {
  const std::string dir = tmp_.path();
  // Full cyan ink, without a profile and with libvips' standard CMYK profile embedded.
  plainImage(dir + "/plain_cmyk.jpg", 16, 16, "cyan", {"-colorspace", "CMYK"});
  plainImage(dir + "/orange.png", 4, 4, "#FF8000");
  pellix_test::vipsTool({"icc_transform", dir + "/orange.png", dir + "/carrier.jpg", "cmyk"});
  gm({"convert", dir + "/carrier.jpg", "ICC:" + dir + "/cmyk.icc"});
  plainImage(dir + "/profiled_cmyk.jpg", 16, 16, "cyan",
             {"-colorspace", "CMYK", "-profile", dir + "/cmyk.icc"});
  for (const std::string name : {"plain_cmyk.jpg", "profiled_cmyk.jpg"}) {
    SCOPED_TRACE(name);
    const cv::Mat rgb = drawn(dir + "/" + name, 8, 8, platform::kPixelFormat32bppRGB);
    ASSERT_FALSE(rgb.empty());
    const cv::Vec3b bgr = bgrAt(rgb, 4, 4);
    EXPECT_LT(bgr[2], 60) << "little red in cyan ink";
    EXPECT_GT(bgr[0], 180);
    EXPECT_GT(bgr[0] - bgr[1], 40) << "printed cyan, not the screen's (0, 255, 255)";
  }
}

TEST_F(ImagingTest, DamagedFilesFailAtTheDraw) {
  const std::string dir = tmp_.path();
  gm({"convert", "-size", "300x200", "plasma:", "-quality", "90", dir + "/photo.jpg"});
  const std::string whole = pellix_test::readFile(dir + "/photo.jpg");
  tmp_.write("cut.jpg", whole.substr(0, whole.size() / 2));
  tmp_.write("lying.png", pellix_test::pngClaiming(100000, 100000));
  for (const std::string name : {"cut.jpg", "lying.png"}) {
    SCOPED_TRACE(name);
    platform::Status s;
    auto image = load(dir + "/" + name, &s);
    ASSERT_NE(image, nullptr) << "the header is whole: " << s.message;
    EXPECT_EQ(env_->DrawImageOnWhite(*image, 80, 80, image->GetPixelFormat(), &s), nullptr);
    EXPECT_FALSE(s.ok());
    EXPECT_FALSE(s.message.empty());
  }
  platform::Status s;
  auto image = load(dir + "/photo.jpg", &s);
  ASSERT_NE(image, nullptr);
  EXPECT_EQ(env_->DrawImageOnWhite(*image, 0, 10, image->GetPixelFormat(), &s), nullptr);
}

TEST_F(ImagingTest, ExactlyFiveEncoders) {
  const std::vector<platform::ImageEncoderInfo> encoders = env_->GetImageEncoders();
  ASSERT_EQ(encoders.size(), 5u);
  const std::vector<std::wstring> mimes = {L"image/bmp", L"image/jpeg", L"image/gif",
                                           L"image/tiff", L"image/png"};
  const std::vector<std::string> marks = {"BM", "\xFF\xD8\xFF", "GIF8", "II*", "\x89PNG"};
  const std::string source = plainImage(tmp_.path() + "/s.png", 30, 20, "#0000FF80",
                                        {"-type", "TrueColorMatte", "-depth", "8"});
  platform::Status s;
  auto image = load(source, &s);
  ASSERT_NE(image, nullptr);
  auto bitmap = env_->DrawImageOnWhite(*image, 15, 10, platform::kPixelFormat32bppARGB, &s);
  ASSERT_NE(bitmap, nullptr) << s.message;
  for (size_t i = 0; i < encoders.size(); ++i) {
    SCOPED_TRACE(i);
    EXPECT_EQ(encoders[i].mime_type, mimes[i]);
    for (size_t j = 0; j < i; ++j) EXPECT_FALSE(encoders[i].clsid == encoders[j].clsid);
    std::string bytes;
    ASSERT_TRUE(env_->EncodeImage(*bitmap, encoders[i].clsid, &bytes).ok());
    EXPECT_EQ(bytes.rfind(marks[i], 0), 0u) << "the format asked for";
    // Round trip: the file loads again at the same size.
    auto again = load(tmp_.write("out" + std::to_string(i), bytes), &s);
    ASSERT_NE(again, nullptr) << s.message;
    EXPECT_EQ(again->Width(), 15u);
    EXPECT_EQ(again->Height(), 10u);
  }
  platform::EncoderId webp = encoders[4].clsid;
  webp.data1 = 0x557CF407;
  std::string bytes = "stale";
  EXPECT_FALSE(env_->EncodeImage(*bitmap, webp, &bytes).ok()) << "no other encoder exists";
  EXPECT_TRUE(bytes.empty());
}

}  // namespace

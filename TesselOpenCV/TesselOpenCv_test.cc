// The image module as the raster route reaches it: TesselOpenCV.dll from the install tree,
// interface 114, over files of every kind made here, broken ones included.
#include <gtest/gtest.h>

#include <opencv2/imgcodecs.hpp>
#include <opencv2/imgproc.hpp>

#include "TesselOpenCV/mat_file.h"
#include "outside/ITesselOpenCV.h"
#include "testing/staged_module.h"
#include "testing/test_images.h"
#include "testing/test_support.h"

namespace {

using pellix_test::LogCapture;
using pellix_test::readFile;
using pellix_test::TempDir;
using pellix_test::windowsPath;

// A white logo on transparency: a white disc and a light grey bar, the rest clear.
cv::Mat whiteLogo(int depth = CV_8U) {
  cv::Mat logo(60, 80, CV_8UC4, cv::Scalar(0, 0, 0, 0));
  cv::circle(logo, cv::Point(30, 30), 20, cv::Scalar(255, 255, 255, 255), cv::FILLED);
  cv::rectangle(logo, cv::Rect(55, 10, 15, 40), cv::Scalar(235, 235, 235, 255), cv::FILLED);
  if (depth == CV_16U) logo.convertTo(logo, CV_16U, 257.0);
  return logo;
}

class TesselOpenCvTest : public testing::Test {
 protected:
  std::wstring path(const std::string& name) { return windowsPath(tmp_.path() + "/" + name); }
  std::string write(const std::string& name, const cv::Mat& image,
                    const std::vector<int>& params = {}) {
    const std::string file = tmp_.path() + "/" + name;
    EXPECT_TRUE(cv::imwrite(file, image, params)) << name;
    return file;
  }

  pellix_test::StagedModule module_{"TesselOpenCV.dll"};
  ITesselOpenCV* images_ = module_.take<ITesselOpenCV>(kTesselOpenCvInterfaceId);
  TempDir tmp_;
};

TEST_F(TesselOpenCvTest, FollowsTheModuleContract) {
  ASSERT_NE(images_, nullptr);
  module_.expectContract(114, {100, 104}, images_);
}

TEST_F(TesselOpenCvTest, ReadsEachKindWithItsFlags) {
  const cv::Mat bgr(30, 40, CV_8UC3, cv::Scalar(20, 120, 220));
  const cv::Mat deep(30, 40, CV_16UC3, cv::Scalar(1000, 30000, 60000));
  write("a.jpg", bgr);
  write("a.png", whiteLogo());
  write("deep.png", deep);
  write("deep.tif", deep);
  write("a.bmp", bgr);
  write("a.webp", bgr);
  write("jp2_source.png", bgr);
  pellix_test::vipsTool({"copy", tmp_.path() + "/jp2_source.png", tmp_.path() + "/a.jp2"});
  write("one.png", cv::Mat(1, 1, CV_8UC3, cv::Scalar(1, 2, 3)));
  pellix_test::copyFile(tmp_.path() + "/a.png", tmp_.path() + "/png_inside.jpg");
  struct Row {
    std::string name;
    int flags;
    int type;  // OpenCV's element type of the result
    cv::Size size;
  };
  const Row rows[] = {
      {"a.jpg", -1, CV_8UC3, {40, 30}},          {"a.png", -1, CV_8UC4, {80, 60}},
      {"a.png", 1, CV_8UC3, {80, 60}},           {"deep.png", -1, CV_16UC3, {40, 30}},
      {"deep.png", 1, CV_8UC3, {40, 30}},        {"deep.tif", -1, CV_16UC3, {40, 30}},
      {"a.bmp", -1, CV_8UC3, {40, 30}},          {"a.webp", 1, CV_8UC3, {40, 30}},
      {"a.jp2", 1, CV_8UC3, {40, 30}},           {"one.png", -1, CV_8UC3, {1, 1}},
      {"png_inside.jpg", -1, CV_8UC4, {80, 60}},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(row.name + " flags " + std::to_string(row.flags));
    cv::Mat image;
    ASSERT_EQ(images_->readImage(path(row.name), row.flags, image), 0);
    EXPECT_EQ(image.type(), row.type);
    EXPECT_EQ(image.size(), row.size);
  }
}

// The picture with a whole JPEG carried in an APP1 segment before its own segments.
std::string withThumbnail(const std::string& jpeg, const std::string& thumbnail) {
  const std::string body = std::string("Exif\0\0", 6) + thumbnail;
  const size_t length = body.size() + 2;
  return jpeg.substr(0, 2) + "\xFF\xE1" + static_cast<char>(length >> 8) +
         static_cast<char>(length & 0xFF) + body + jpeg.substr(2);
}

TEST_F(TesselOpenCvTest, AWholePictureFollowedByMoreDataIsDecoded) {
  // A file that carries a second picture after the first (a gain map), itself cut short.
  const std::string jpeg =
      readFile(write("good.jpg", cv::Mat(200, 300, CV_8UC3, cv::Scalar(9, 99, 199))));
  pellix_test::writeFile(tmp_.path() + "/two.jpg", jpeg + jpeg.substr(0, jpeg.size() / 2));
  cv::Mat image;
  ASSERT_EQ(images_->readImage(path("two.jpg"), 1, image), 0);
  EXPECT_EQ(image.size(), cv::Size(300, 200));
}

TEST_F(TesselOpenCvTest, BadFilesGetTheirCodeAndALogLine) {
  const std::string jpeg =
      readFile(write("good.jpg", cv::Mat(200, 300, CV_8UC3, cv::Scalar(9, 99, 199))));
  const std::string png = readFile(write("good.png", whiteLogo()));
  pellix_test::plainImage(tmp_.path() + "/anim.gif", 10, 10, "red");
  struct Row {
    std::string name;
    std::string bytes;
    std::string log;
  };
  const Row rows[] = {
      {"empty.jpg", "", "no image header of a known format"},
      {"words.png", "nothing but words", "no image header of a known format"},
      {"head.jpg", jpeg.substr(0, 100), "can't decode file:"},
      {"cut.jpg", jpeg.substr(0, jpeg.size() / 2), "the JPEG data ends before its end marker"},
      // The whole thumbnail inside APP1 doesn't make up for the cut picture after it.
      {"cut-with-thumbnail.jpg", withThumbnail(jpeg, jpeg).substr(0, jpeg.size() * 3 / 2),
       "the JPEG data ends before its end marker"},
      {"cut.png", png.substr(0, png.size() / 2), "can't decode file:"},
      {"lying.png", pellix_test::pngClaiming(100000, 100000), "declared size 100000x100000"},
      {"large.png", pellix_test::pngClaiming(20000, 20000), "declared size 20000x20000"},
      // Within the pixel limit: the decoder starts, and finds one row where 16000 should be.
      {"short.png", pellix_test::pngClaiming(16000, 16000), "can't decode file:"},
      {"anim.gif", readFile(tmp_.path() + "/anim.gif"), "no image header of a known format"},
  };
  const long before = pellix_test::peakMemoryKib();
  for (const Row& row : rows) {
    SCOPED_TRACE(row.name);
    pellix_test::writeFile(tmp_.path() + "/" + row.name, row.bytes);
    LogCapture log;
    cv::Mat image(2, 2, CV_8UC3);
    EXPECT_EQ(images_->readImage(path(row.name), -1, image), 2280);
    EXPECT_TRUE(image.empty());
    EXPECT_EQ(log.count("TesselOpenCv::readImage"), 1);
    EXPECT_EQ(log.count(row.log), 1);
  }
  // A size the header merely declares is never paid for: 16000 by 16000 four-channel pixels
  // would be a GiB.
  EXPECT_LT(pellix_test::peakMemoryKib() - before, 256 * 1024);

  LogCapture log;
  cv::Mat image;
  EXPECT_EQ(images_->readImage(path("absent.png"), 1, image), 2201);
  EXPECT_EQ(log.count("TesselOpenCv::readImage file not found:"), 1);
}

TEST_F(TesselOpenCvTest, DeepImagesGetHalfThePixelsAtTheirOwnDepth) {
  // A 16-bit header of 12000 by 12000: within the limit for an 8-bit decode, beyond it for
  // one that keeps 16 bits a sample.
  std::string deep = pellix_test::pngClaiming(12000, 12000);
  deep[24] = 16;
  const ImageHead head = readImageHead(deep);
  ASSERT_TRUE(head.deep);
  EXPECT_EQ(maxPixelsFor(head, cv::IMREAD_UNCHANGED), kMaxDecodedPixels / 2);
  EXPECT_EQ(maxPixelsFor(head, cv::IMREAD_COLOR), kMaxDecodedPixels);
  cv::Mat image;
  std::string why;
  EXPECT_EQ(decodeMat(deep, head, cv::IMREAD_UNCHANGED, &image, &why), MatStatus::kTooLarge);
  EXPECT_NE(decodeMat(deep, head, cv::IMREAD_COLOR, &image, &why), MatStatus::kTooLarge);
}

TEST_F(TesselOpenCvTest, CmykJpegIsLeftToTheColourManagedDecoder) {
  const std::string src = pellix_test::plainImage(tmp_.path() + "/src.png", 40, 30, "#FF8000");
  pellix_test::gm({"convert", src, "-colorspace", "CMYK", tmp_.path() + "/cmyk.jpg"});
  LogCapture log;
  cv::Mat image;
  EXPECT_EQ(images_->readImage(path("cmyk.jpg"), 1, image), 2280);
  EXPECT_EQ(log.count("not err, cmyk jpeg goes to the colour-managed decoder"), 1);
}

TEST_F(TesselOpenCvTest, AlphaIsWhatThePixelsSay) {
  cv::Mat almost = cv::Mat(8, 8, CV_8UC4, cv::Scalar(1, 2, 3, 255));
  almost.at<cv::Vec4b>(7, 7)[3] = 254;
  cv::Mat deep_opaque(8, 8, CV_16UC4, cv::Scalar(1, 2, 3, 65535));
  cv::Mat deep_clear = deep_opaque.clone();
  deep_clear.at<cv::Vec4w>(0, 0)[3] = 0;
  struct Row {
    const char* name;
    cv::Mat image;
    bool alpha;
  };
  const Row rows[] = {
      {"colour", cv::Mat(8, 8, CV_8UC3, cv::Scalar(1, 2, 3)), false},
      {"grey", cv::Mat(8, 8, CV_8UC1, cv::Scalar(7)), false},
      {"opaque alpha", cv::Mat(8, 8, CV_8UC4, cv::Scalar(1, 2, 3, 255)), false},
      {"one pixel of 254", almost, true},
      {"16-bit opaque", deep_opaque, false},
      {"16-bit with a clear pixel", deep_clear, true},
      {"logo", whiteLogo(), true},
      {"empty", cv::Mat(), false},
  };
  for (const Row& row : rows) {
    EXPECT_EQ(images_->hasAlpha(row.image, L"png"), row.alpha) << row.name;
    EXPECT_EQ(images_->hasAlpha(row.image, L"jpg"), row.alpha) << row.name << ": the pixels decide";
  }
}

TEST_F(TesselOpenCvTest, TellsLightArtworkOnTransparency) {
  cv::Mat coloured = whiteLogo();
  cv::circle(coloured, cv::Point(30, 30), 20, cv::Scalar(200, 30, 30, 255), cv::FILLED);
  // Light pixels that are barely visible don't count as artwork; dark ones at alpha 10 don't
  // count against it either.
  cv::Mat faint = whiteLogo();
  cv::rectangle(faint, cv::Rect(0, 0, 80, 5), cv::Scalar(0, 0, 0, 10), cv::FILLED);
  cv::Mat mostly = whiteLogo();  // 6 of 100 visible pixels dark: 94 %, below 95 %
  mostly.setTo(cv::Scalar(0, 0, 0, 0));
  mostly(cv::Rect(0, 0, 10, 10)).setTo(cv::Scalar(255, 255, 255, 255));
  mostly(cv::Rect(0, 0, 6, 1)).setTo(cv::Scalar(0, 0, 0, 255));
  cv::Mat enough = mostly.clone();  // 5 of 100: 95 %
  enough(cv::Rect(5, 0, 1, 1)).setTo(cv::Scalar(255, 255, 255, 255));
  struct Row {
    const char* name;
    cv::Mat image;
    bool white;
  };
  const Row rows[] = {
      {"white logo", whiteLogo(), true},
      {"16-bit white logo", whiteLogo(CV_16U), true},
      {"coloured logo", coloured, false},
      {"faint dark edge", faint, true},
      {"94 percent light", mostly, false},
      {"95 percent light", enough, true},
      {"nothing visible", cv::Mat(8, 8, CV_8UC4, cv::Scalar(255, 255, 255, 0)), false},
      {"no alpha", cv::Mat(8, 8, CV_8UC3, cv::Scalar(255, 255, 255)), false},
  };
  for (const Row& row : rows) {
    EXPECT_EQ(images_->isAlphaWhite(row.image, 220, 15, 0.95f), row.white) << row.name;
  }
}

TEST_F(TesselOpenCvTest, LightArtworkStaysVisible) {
  for (int depth : {CV_8U, CV_16U}) {
    SCOPED_TRACE(depth == CV_8U ? "8-bit" : "16-bit");
    const cv::Mat logo = whiteLogo(depth);
    const cv::Mat dark = images_->renderAlphaWhite(logo, 1);
    ASSERT_EQ(dark.type(), CV_8UC3);
    ASSERT_EQ(dark.size(), logo.size());
    EXPECT_EQ(pellix_test::bgrAt(dark, 30, 30), cv::Vec3b(255, 255, 255)) << "the disc";
    EXPECT_EQ(pellix_test::bgrAt(dark, 60, 30), cv::Vec3b(235, 235, 235)) << "the bar";
    EXPECT_EQ(pellix_test::bgrAt(dark, 2, 2), cv::Vec3b(64, 64, 64)) << "the ground";
    const cv::Mat inverted = images_->renderAlphaWhite(logo, 2);
    EXPECT_EQ(pellix_test::bgrAt(inverted, 30, 30), cv::Vec3b(0, 0, 0));
    EXPECT_EQ(pellix_test::bgrAt(inverted, 2, 2), cv::Vec3b(255, 255, 255));
  }
  // Half-transparent white over the dark ground lies halfway between the two.
  const cv::Mat half(1, 1, CV_8UC4, cv::Scalar(255, 255, 255, 128));
  const cv::Vec3b mixed = pellix_test::bgrAt(images_->renderAlphaWhite(half, 1), 0, 0);
  EXPECT_NEAR(mixed[0], 64 + (255 - 64) * 128 / 255, 1);
  EXPECT_TRUE(images_->renderAlphaWhite(cv::Mat(4, 4, CV_8UC3), 1).empty());
}

TEST_F(TesselOpenCvTest, WritesByTheExtension) {
  const cv::Mat bgr(30, 40, CV_8UC3, cv::Scalar(20, 120, 220));
  cv::Mat deep;
  bgr.convertTo(deep, CV_16U, 257.0);
  std::vector<uchar> at_quality;
  cv::imencode(".jpg", bgr, at_quality, {cv::IMWRITE_JPEG_QUALITY, 90});
  struct Row {
    std::string name;
    cv::Mat image;
    int depth;  // of the file read back unchanged
  };
  const Row rows[] = {
      {"a.png", bgr, CV_8U},  {"deep.png", deep, CV_16U}, {"deep.jpg", deep, CV_8U},
      {"a.JPG", bgr, CV_8U},  {"a.jfif", bgr, CV_8U},     {"a.bmp", bgr, CV_8U},
      {"a.webp", bgr, CV_8U}, {"a.tif", bgr, CV_8U},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(row.name);
    ASSERT_EQ(images_->writeImage(path(row.name), row.image), 0);
    const cv::Mat back = cv::imread(tmp_.path() + "/" + row.name, cv::IMREAD_UNCHANGED);
    ASSERT_FALSE(back.empty());
    EXPECT_EQ(back.depth(), row.depth);
    EXPECT_EQ(back.size(), bgr.size());
  }
  EXPECT_EQ(readFile(tmp_.path() + "/a.JPG"), std::string(at_quality.begin(), at_quality.end()))
      << "JPEG at quality 90";
  EXPECT_EQ(cv::norm(cv::imread(tmp_.path() + "/a.png"), bgr, cv::NORM_INF), 0.0);

  struct Bad {
    std::string name;
    cv::Mat image;
  };
  const Bad bad[] = {
      {"no_extension", bgr},         {"a.gif", bgr}, {"a.xyz", bgr}, {"empty.png", cv::Mat()},
      {"missing/folder/a.png", bgr},
  };
  for (const Bad& row : bad) {
    SCOPED_TRACE(row.name);
    LogCapture log;
    EXPECT_EQ(images_->writeImage(path(row.name), row.image), 2205);
    EXPECT_EQ(log.count("TesselOpenCv::writeImage can't write file:"), 1);
    EXPECT_FALSE(pellix_test::fileExists(tmp_.path() + "/" + row.name));
  }
}

}  // namespace

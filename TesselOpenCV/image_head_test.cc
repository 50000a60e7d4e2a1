// Header reading over images that real encoders made (OpenCV, GraphicsMagick, libvips): the
// size of every format, and never a wrong size from a header that is cut short.
#include "TesselOpenCV/image_head.h"

#include <gtest/gtest.h>

#include <opencv2/imgcodecs.hpp>

#include "testing/test_images.h"
#include "testing/test_support.h"

namespace {

using pellix_test::readFile;
using pellix_test::TempDir;

struct Sample {
  std::string name;
  std::string bytes;
  ImageFormat format;
  bool cmyk = false;
  bool deep = false;
  int orientation = 1;
};

std::string encoded(const std::string& ext, const cv::Mat& image, std::vector<int> params = {}) {
  std::vector<uchar> out;
  EXPECT_TRUE(cv::imencode(ext, image, out, params)) << ext;
  return std::string(out.begin(), out.end());
}

// Images of 37 by 23 pixels in every format and flavour the header reader knows.
std::vector<Sample> samples(const TempDir& tmp) {
  const cv::Mat bgr(23, 37, CV_8UC3, cv::Scalar(10, 200, 30));
  const cv::Mat bgra(23, 37, CV_8UC4, cv::Scalar(10, 200, 30, 128));
  const std::string dir = tmp.path();
  std::vector<Sample> out = {
      {"jpeg", encoded(".jpg", bgr), ImageFormat::kJpeg},
      {"progressive jpeg", encoded(".jpg", bgr, {cv::IMWRITE_JPEG_PROGRESSIVE, 1}),
       ImageFormat::kJpeg},
      {"png", encoded(".png", bgra), ImageFormat::kPng},
      {"bmp", encoded(".bmp", bgr), ImageFormat::kBmp},
      {"tiff", encoded(".tif", bgr), ImageFormat::kTiff},
      {"lossy webp", encoded(".webp", bgr, {cv::IMWRITE_WEBP_QUALITY, 80}), ImageFormat::kWebp},
      {"lossless webp", encoded(".webp", bgr, {cv::IMWRITE_WEBP_QUALITY, 101}), ImageFormat::kWebp},
  };
  const cv::Mat deep(23, 37, CV_16UC3, cv::Scalar(1000, 30000, 60000));
  pellix_test::plainImage(dir + "/src.png", 37, 23, "#FF8000");
  pellix_test::gm({"convert", dir + "/src.png", "-colorspace", "CMYK", dir + "/cmyk.jpg"});
  pellix_test::gm({"convert", dir + "/src.png", "-endian", "MSB", dir + "/mm.tif"});
  pellix_test::gm({"convert", dir + "/src.png", "BMP2:" + dir + "/os2.bmp"});
  pellix_test::gm({"convert", dir + "/src.png", "-flip", dir + "/top_down.bmp"});
  pellix_test::vipsTool({"copy", dir + "/src.png", dir + "/vp8x.webp"});
  // OpenCV's own JPEG 2000 encoder refuses images this small.
  pellix_test::vipsTool({"copy", dir + "/src.png", dir + "/a.jp2"});
  pellix_test::writeFile(dir + "/deep.png", encoded(".png", deep));
  pellix_test::vipsTool({"copy", dir + "/deep.png", dir + "/deep.jp2"});
  out.push_back({"16-bit png", encoded(".png", deep), ImageFormat::kPng, false, true});
  out.push_back({"16-bit tiff", encoded(".tif", deep), ImageFormat::kTiff, false, true});
  out.push_back({"jp2", readFile(dir + "/a.jp2"), ImageFormat::kJpeg2000});
  out.push_back({"16-bit jp2", readFile(dir + "/deep.jp2"), ImageFormat::kJpeg2000, false, true});
  out.push_back({"jpeg turned by exif", pellix_test::withExifOrientation(encoded(".jpg", bgr), 6),
                 ImageFormat::kJpeg, false, false, 6});
  out.push_back({"png turned by exif", pellix_test::withExifOrientation(encoded(".png", bgr), 8),
                 ImageFormat::kPng, false, false, 8});
  out.push_back({"jpeg with exif orientation 1",
                 pellix_test::withExifOrientation(encoded(".jpg", bgr), 1), ImageFormat::kJpeg});
  out.push_back({"cmyk jpeg", readFile(dir + "/cmyk.jpg"), ImageFormat::kJpeg, true});
  out.push_back({"big-endian tiff", readFile(dir + "/mm.tif"), ImageFormat::kTiff});
  out.push_back({"os/2 bmp", readFile(dir + "/os2.bmp"), ImageFormat::kBmp});
  // libvips writes EXIF data into it, whose orientation isn't read from WebP.
  out.push_back(
      {"extended webp", readFile(dir + "/vp8x.webp"), ImageFormat::kWebp, false, false, 0});
  const std::string jp2 = readFile(dir + "/a.jp2");
  out.push_back(
      {"j2k code stream", jp2.substr(jp2.find("\xFF\x4F\xFF\x51")), ImageFormat::kJpeg2000});
  return out;
}

TEST(ImageHeadTest, ReadsTheSizeOfEveryFormat) {
  TempDir tmp;
  for (const Sample& s : samples(tmp)) {
    SCOPED_TRACE(s.name);
    const ImageHead head = readImageHead(s.bytes);
    EXPECT_EQ(head.format, s.format);
    EXPECT_EQ(head.width, 37u);
    EXPECT_EQ(head.height, 23u);
    EXPECT_EQ(head.cmyk, s.cmyk);
    EXPECT_EQ(head.deep, s.deep);
    EXPECT_EQ(head.orientation, s.orientation);
  }
}

TEST(ImageHeadTest, ACutHeaderGivesNoSizeRatherThanAWrongOne) {
  TempDir tmp;
  for (const Sample& s : samples(tmp)) {
    SCOPED_TRACE(s.name);
    size_t first_known = 0;
    for (size_t length = 0; length <= std::min<size_t>(s.bytes.size(), 4096); ++length) {
      const ImageHead head = readImageHead(s.bytes.substr(0, length));
      if (head.format == ImageFormat::kUnknown) continue;
      if (first_known == 0) first_known = length;
      ASSERT_EQ(head.width, 37u) << "at length " << length;
      ASSERT_EQ(head.height, 23u) << "at length " << length;
    }
    EXPECT_GT(first_known, 0u) << "the header is read at some length";
    EXPECT_EQ(readImageHead(s.bytes.substr(0, 3)).format, ImageFormat::kUnknown);
  }
}

TEST(ImageHeadTest, OrientationIsUnknownWhereTheExifCantBeRead) {
  const cv::Mat bgr(23, 37, CV_8UC3, cv::Scalar(10, 200, 30));
  const std::string plain = encoded(".png", bgr);
  const std::string png = pellix_test::withExifOrientation(plain, 6);
  const std::string jpeg = pellix_test::withExifOrientation(encoded(".jpg", bgr), 6);
  std::string broken_exif = jpeg;
  broken_exif.replace(broken_exif.find("II*"), 3, "XX*");
  struct Row {
    const char* name;
    std::string bytes;
    ImageFormat format;
    int orientation;
  };
  const Row rows[] = {
      {"png cut before its pixel data", plain.substr(0, plain.find("IDAT") - 4), ImageFormat::kPng,
       0},
      {"png cut inside eXIf", png.substr(0, png.find("eXIf") + 10), ImageFormat::kPng, 0},
      {"exif that isn't a TIFF structure", broken_exif, ImageFormat::kJpeg, 0},
      {"png without eXIf", plain, ImageFormat::kPng, 1},
  };
  for (const Row& row : rows) {
    const ImageHead head = readImageHead(row.bytes);
    EXPECT_EQ(head.format, row.format) << row.name;
    EXPECT_EQ(head.width, 37u) << row.name;
    EXPECT_EQ(head.orientation, row.orientation) << row.name;
  }
}

TEST(ImageHeadTest, TellsWhatADeclaredSizeIsAndWhatIsNoImage) {
  const ImageHead lying = readImageHead(pellix_test::pngClaiming(100000, 100000));
  EXPECT_EQ(lying.format, ImageFormat::kPng);
  EXPECT_EQ(lying.width, 100000u);
  EXPECT_EQ(lying.height, 100000u);
  for (const std::string& bytes :
       {std::string(), std::string("GIF89a\x10\0\x10\0", 10), std::string("%PDF-1.4\n"),
        std::string("8BPS\0\x01"), std::string("\xFF\xD8\xFF\xD9", 4),
        std::string("\xFF\xD8\xFF\xE0\0\x01", 6)}) {
    EXPECT_EQ(readImageHead(bytes).format, ImageFormat::kUnknown) << bytes;
  }
}

}  // namespace

// The raster route in a host program with TesselOpenCV.dll beside it: where previews go, the
// order of the engines, the fit rule, alpha on white, white artwork kept visible, and one
// decode where one is enough. Every image is made here.
#include "PellixKernel/MagicImage.h"

#include <gtest/gtest.h>

#include <cstdio>

#include <opencv2/imgcodecs.hpp>
#include <opencv2/imgproc.hpp>

#include "Common/Source/ThumbNailCommUtils.h"
#include "Common/Source/config_db.h"
#include "Common/Source/text_forms.h"
#include "PellixKernel/single_decode.h"
#include "platform/env.h"
#include "tessel_dll/tessel_dll_loader.h"
#include "testing/test_images.h"
#include "testing/test_support.h"

struct MagicImageTestAccess {
  static cv::Mat composeOnWhite(MagicImage& magic, const cv::Mat& mat) {
    return magic.composeOnWhite(mat);
  }
};

namespace {

using pellix_test::bgrAt;
using pellix_test::LogCapture;
using pellix_test::TempDir;
using pellix_test::windowsPath;

// The process's own home, with the preview root in it, and the image module loaded from the
// folder of this program.
class MagicImageTest : public testing::Test {
 protected:
  static void SetUpTestSuite() {
    pellix_test::useOwnHome();
    ASSERT_TRUE(
        common_hepler::ConfigDB::getInstance()->setThumbFileBasePath("test", L"C:\\Previews"));
    ASSERT_TRUE(TesselDllLoader::loadOpencvDll()) << "TesselOpenCV.dll beside the test";
  }

  std::string file(const std::string& name) const { return tmp_.path() + "/" + name; }
  std::wstring wide(const std::string& name) const { return windowsPath(file(name)); }
  std::string write(const std::string& name, const cv::Mat& image) const {
    EXPECT_TRUE(cv::imwrite(file(name), image)) << name;
    return file(name);
  }

  TempDir tmp_;
  MagicImage magic_{nullptr};
};

// A photograph-like image: smooth gradients and some edges, so that encoders have work.
cv::Mat photo(int cols, int rows) {
  cv::Mat image(rows, cols, CV_8UC3);
  for (int y = 0; y < rows; ++y) {
    for (int x = 0; x < cols; ++x) {
      image.at<cv::Vec3b>(y, x) =
          cv::Vec3b(static_cast<uchar>(x * 255 / cols), static_cast<uchar>(y * 255 / rows),
                    static_cast<uchar>((x + y) % 256));
    }
  }
  cv::circle(image, cv::Point(cols / 2, rows / 2), std::min(cols, rows) / 4,
             cv::Scalar(20, 30, 200), cv::FILLED);
  return image;
}

// White artwork on transparency: a white disc, the rest clear.
cv::Mat whiteLogo() {
  cv::Mat logo(200, 300, CV_8UC4, cv::Scalar(0, 0, 0, 0));
  cv::circle(logo, cv::Point(150, 100), 60, cv::Scalar(255, 255, 255, 255), cv::FILLED);
  return logo;
}

TEST(FitWithinTest, ShrinksToFitAndNeverGrows) {
  struct Row {
    uint32_t image_w, image_h, want_w, want_h, w, h;
  };
  const Row rows[] = {
      {4000, 1000, 800, 800, 800, 200},
      {1000, 4000, 800, 800, 200, 800},
      {100, 100, 800, 800, 100, 100},
      {801, 800, 800, 800, 800, 799},
      {3000, 2000, 800, 600, 800, 533},
      {2000, 3000, 800, 600, 400, 600},
      {0, 100, 800, 800, 0, 0},
      {100, 100, 0, 800, 0, 0},
      {100, 100, 800, 0, 0, 0},
      {5000, 1, 800, 800, 800, 0},
      {1000, 500000, 10000, 10000, 20, 10000},  // the product passes 32 bits
  };
  for (const Row& r : rows) {
    const auto [w, h] = fitWithin(r.image_w, r.image_h, r.want_w, r.want_h);
    EXPECT_EQ(w, r.w) << r.image_w << "x" << r.image_h << " in " << r.want_w << "x" << r.want_h;
    EXPECT_EQ(h, r.h) << r.image_w << "x" << r.image_h << " in " << r.want_w << "x" << r.want_h;
  }
}

TEST_F(MagicImageTest, PreviewPathsByTheirCase) {
  write("a.jpg", photo(300, 200));
  const std::wstring dst = windowsPath(tmp_.mkdir("out"));
  const std::wstring mid = windowsPath(tmp_.mkdir("deep/mid"));
  // A destination folder long enough that a preview's path in it reaches 260 units.
  const std::wstring long_dst =
      windowsPath(tmp_.mkdir(std::string(120, 'x') + "/" + std::string(120, 'y')));
  const std::wstring long_mid =
      windowsPath(tmp_.mkdir(std::string(120, 'm') + "/mid/" + std::string(120, 'y')));
  const std::wstring src = wide("a.jpg");
  const std::wstring long_tree = ThumbNailCommUtils::getLongPathThumb(src);
  struct Row {
    const char* name;
    std::wstring dst;
    bool keep_name;
    std::wstring out;
  };
  const Row rows[] = {
      {"regular name", dst, false, dst + L"\\a.jpg.1.jpg"},
      {"own name", dst, true, dst + L"\\a.jpg"},
      {"long, under mid", long_mid, false, long_tree},
      {"long elsewhere", long_dst, false, long_dst + L"\\a.jpg.1.jpg"},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(row.name);
    LogCapture log;
    std::wstring out;
    EXPECT_EQ(magic_.getView(src, 100, 100, true, row.keep_name, row.dst, out, false), 0);
    EXPECT_EQ(out, row.out);
    EXPECT_TRUE(platform::Env::Default()->PathExists(out));
    EXPECT_EQ(log.count("MagicImage::getView should not be called when image_dst_path:"),
              row.dst == long_dst ? 1 : 0);
  }

  // A preview in the long-path tree gets its sibling in the other size folder, whatever the
  // name and time options say.
  std::wstring out;
  ASSERT_EQ(magic_.getView(long_tree, 50, 50, true, true, mid, out, true), 0);
  EXPECT_EQ(out, ThumbNailCommUtils::getMidMinSibling(long_tree));
  EXPECT_NE(out.find(L"\\min\\"), std::wstring::npos);

  // The time goes before the extension.
  const int64_t before = platform::Env::Default()->NowSeconds();
  ASSERT_EQ(magic_.getView(src, 100, 100, true, false, dst, out, true), 0);
  const int64_t after = platform::Env::Default()->NowSeconds();
  const std::wstring prefix = dst + L"\\a.jpg.1";
  ASSERT_EQ(out.substr(0, prefix.size()), prefix);
  ASSERT_EQ(out.substr(out.size() - 4), L".jpg");
  const int64_t stamp = std::stoll(out.substr(prefix.size(), out.size() - prefix.size() - 4));
  EXPECT_GE(stamp, before);
  EXPECT_LE(stamp, after);

  // Refusals come before the path is worked out.
  out = L"untouched";
  EXPECT_EQ(magic_.getView(wide("absent.jpg"), 100, 100, true, false, dst, out, false), 2201);
  EXPECT_EQ(magic_.getView(src, 100, 100, true, false, L"", out, false), 2225);
  EXPECT_EQ(out, L"untouched");
}

TEST_F(MagicImageTest, EachEngineInItsTurn) {
  write("photo.JPG", photo(4000, 1000));
  write("photo.tif", photo(400, 100));
  pellix_test::plainImage(file("plain.gif"), 400, 100, "#3366CC");
  write("broken.jpg", photo(40, 10));
  pellix_test::writeFile(file("broken.jpg"),
                         pellix_test::readFile(file("broken.jpg")).substr(0, 200));
  pellix_test::copyFile(file("photo.tif"), file("tiff_inside.png"));
  struct Row {
    const char* name;
    uint32_t width, height;
    bool keep_ratio;
    int code;
    cv::Size size;            // of the preview; empty when none is made
    const char* module_line;  // a line of the image module that shows it was asked
    bool by_magic;            // the "not err" line of the last resort
  };
  const Row rows[] = {
      {"photo.JPG", 800, 800, true, 0, {800, 200}, nullptr, false},
      {"photo.JPG", 300, 300, false, 0, {300, 300}, nullptr, false},
      {"photo.tif", 800, 800, true, 0, {400, 100}, nullptr, false},
      {"plain.gif", 200, 200, true, 0, {200, 50}, nullptr, false},
      {"tiff_inside.png", 200, 200, true, 0, {200, 50}, nullptr, false},
      {"broken.jpg", 800, 800, true, 1002, {}, "TesselOpenCv::readImage", true},
      {"photo.JPG", 10001, 100, true, 1002, {}, nullptr, true},
      {"photo.JPG", 0, 100, true, 1002, {}, nullptr, true},
      {"photo.JPG", 10000, 10000, true, 0, {4000, 1000}, nullptr, false},
  };
  const std::wstring dst = windowsPath(tmp_.mkdir("out"));
  for (const Row& row : rows) {
    SCOPED_TRACE(std::string(row.name) + " at " + std::to_string(row.width) + "x" +
                 std::to_string(row.height));
    LogCapture log;
    std::wstring out;
    EXPECT_EQ(magic_.getView(wide(row.name), row.width, row.height, row.keep_ratio, false, dst, out,
                             false),
              row.code);
    const cv::Mat made = cv::imread(pellix_test::posixPath(out));
    EXPECT_EQ(made.size(), row.size);
    if (row.module_line != nullptr) {
      EXPECT_GE(log.count(row.module_line), 1);
    }
    EXPECT_EQ(log.count("MagicImage::getView not err, but do by magic, path:"),
              row.by_magic ? 1 : 0);
    std::remove(pellix_test::posixPath(out).c_str());
  }
}

TEST_F(MagicImageTest, ZoomRefusesATargetWithoutArea) {
  write("a.jpg", photo(100, 50));
  pellix_test::plainImage(file("a.gif"), 100, 50, "red");
  for (const char* name : {"a.jpg", "a.gif"}) {
    for (bool keep_ratio : {true, false}) {
      SCOPED_TRACE(std::string(name) + (keep_ratio ? " keeping ratio" : " stretched"));
      LogCapture log;
      EXPECT_EQ(magic_.zoomJpg(wide(name), 0, 100, keep_ratio, wide("out.jpg")), 2202);
      EXPECT_FALSE(pellix_test::fileExists(file("out.jpg")));
    }
  }
}

TEST_F(MagicImageTest, ZoomsInPlaceAndReplacesWhatWasThere) {
  write("a.png", photo(600, 300));
  ASSERT_EQ(magic_.zoomJpg(wide("a.png"), 100, 100, true, wide("a.png")), 0);
  EXPECT_EQ(cv::imread(file("a.png")).size(), cv::Size(100, 50));
  pellix_test::plainImage(file("b.gif"), 300, 300, "green");
  ASSERT_EQ(magic_.zoomJpg(wide("b.gif"), 30, 30, true, wide("b.gif")), 0);
  EXPECT_EQ(cv::imread(file("b.gif")).size(), cv::Size(30, 30));
  // A new folder is made; an old file at the destination is replaced.
  ASSERT_EQ(magic_.zoomJpg(wide("a.png"), 20, 20, true, wide("new/folder/c.jpg")), 0);
  ASSERT_EQ(magic_.zoomJpg(wide("b.gif"), 20, 20, true, wide("new/folder/c.jpg")), 0);
  EXPECT_NEAR(pellix_test::bgrAt(cv::imread(file("new/folder/c.jpg")), 10, 10)[1], 128, 3)
      << "the green one";
}

TEST_F(MagicImageTest, TransparencyGoesOnWhite) {
  // Alpha 0, 255 and the steps between, over a colour whose every channel differs.
  cv::Mat clear(1, 6, CV_8UC4);
  const uchar alphas[] = {0, 255, 128, 1, 254, 64};
  for (int x = 0; x < 6; ++x) clear.at<cv::Vec4b>(0, x) = cv::Vec4b(10, 100, 250, alphas[x]);
  const cv::Mat flat = MagicImageTestAccess::composeOnWhite(magic_, clear);
  ASSERT_EQ(flat.type(), CV_8UC3);
  for (int x = 0; x < 6; ++x) {
    const float f = alphas[x] / 255.0f;
    const int back = static_cast<int>((1.0f - f) * 255.0f);
    for (int c = 0; c < 3; ++c) {
      const int src = clear.at<cv::Vec4b>(0, x)[c];
      const int want = std::min(255, static_cast<int>(src * f + static_cast<float>(back)));
      EXPECT_EQ(flat.at<cv::Vec3b>(0, x)[c], want)
          << "alpha " << int(alphas[x]) << " channel " << c;
    }
  }
  EXPECT_EQ(flat.at<cv::Vec3b>(0, 0), cv::Vec3b(255, 255, 255));
  EXPECT_EQ(flat.at<cv::Vec3b>(0, 1), cv::Vec3b(10, 100, 250));

  // Through the route: a red mark on transparency comes out on white.
  cv::Mat mark(100, 100, CV_8UC4, cv::Scalar(0, 0, 0, 0));
  cv::rectangle(mark, cv::Rect(25, 25, 50, 50), cv::Scalar(0, 0, 255, 255), cv::FILLED);
  write("mark.png", mark);
  ASSERT_EQ(magic_.zoomJpg(wide("mark.png"), 100, 100, true, wide("mark.jpg")), 0);
  const cv::Mat made = cv::imread(file("mark.jpg"));
  EXPECT_LE(cv::norm(bgrAt(made, 5, 5), cv::Vec3b(255, 255, 255), cv::NORM_INF), 3);
  EXPECT_LE(cv::norm(bgrAt(made, 50, 50), cv::Vec3b(0, 0, 255), cv::NORM_INF), 3);
}

TEST_F(MagicImageTest, TransparencyIsFlattenedToTheSamePixelsWithoutAFlatCopy) {
  // Every alpha over every colour; a PNG preview keeps the pixels exact.
  cv::Mat art(301, 457, CV_8UC4);
  cv::randu(art, cv::Scalar::all(0), cv::Scalar::all(256));
  write("art.png", art);
  const cv::Mat flat = MagicImageTestAccess::composeOnWhite(magic_, art);
  for (const cv::Size want : {cv::Size(120, 80), cv::Size(457, 301)}) {
    SCOPED_TRACE(want);
    ASSERT_EQ(magic_.zoomJpg(wide("art.png"), want.width, want.height, false, wide("flat.png")), 0);
    cv::Mat expected;
    cv::resize(flat, expected, want, 0, 0, cv::INTER_AREA);
    const cv::Mat made = cv::imread(file("flat.png"), cv::IMREAD_UNCHANGED);
    ASSERT_EQ(made.type(), CV_8UC3);
    EXPECT_EQ(cv::norm(made, expected, cv::NORM_INF), 0);
  }
}

TEST_F(MagicImageTest, WhiteArtworkStaysVisible) {
  write("logo.png", whiteLogo());
  const std::wstring dst = windowsPath(tmp_.mkdir("out"));
  std::wstring out;
  ASSERT_EQ(magic_.getView(wide("logo.png"), 150, 150, true, false, dst, out, false), 0);
  const cv::Mat made = cv::imread(pellix_test::posixPath(out));
  ASSERT_EQ(made.size(), cv::Size(150, 100));
  const cv::Vec3b disc = bgrAt(made, 75, 50), ground = bgrAt(made, 5, 5);
  EXPECT_GE(disc[0], 245);
  EXPECT_LE(ground[0], 80) << "a dark ground, so that the white disc shows";
}

TEST_F(MagicImageTest, WithoutTheImageModuleEveryTypeTakesTheImagingServices) {
  write("a.jpg", photo(400, 200));
  write("logo.png", whiteLogo());
  ITesselOpenCV* module = TesselDllLoader::s_p_tessel_opencv_;
  TesselDllLoader::s_p_tessel_opencv_ = nullptr;
  LogCapture log;
  const int jpg = magic_.zoomJpg(wide("a.jpg"), 100, 100, true, wide("a_small.jpg"));
  const int png = magic_.zoomJpg(wide("logo.png"), 150, 150, true, wide("logo_small.jpg"));
  TesselDllLoader::s_p_tessel_opencv_ = module;
  EXPECT_EQ(jpg, 0);
  EXPECT_EQ(png, 0);
  EXPECT_EQ(cv::imread(file("a_small.jpg")).size(), cv::Size(100, 50));
  // The imaging services flatten on white: the white logo is lost there.
  EXPECT_GE(bgrAt(cv::imread(file("logo_small.jpg")), 5, 5)[0], 250);
  EXPECT_TRUE(log.lines().empty()) << "quietly: " << log.lines().front();
}

TEST_F(MagicImageTest, SettingsNameTheOpenCvTypesInAnyCase) {
  ASSERT_TRUE(
      common_hepler::ConfigDB::getInstance()->getDBHelper()->setValue("opencv_typ", "PNG,Gif"));
  MagicImage magic(nullptr);
  ASSERT_TRUE(common_hepler::ConfigDB::getInstance()->getDBHelper()->setValue(
      "opencv_typ", "jpg,jpeg,bmp,png,jfif,webp"));
  // A white logo: only OpenCV's branch keeps it visible, so the ground tells who drew it.
  write("logo.png", whiteLogo());
  pellix_test::copyFile(file("logo.png"), file("logo.jpg"));
  ASSERT_EQ(magic.zoomJpg(wide("logo.png"), 150, 150, true, wide("by_png.jpg")), 0);
  ASSERT_EQ(magic.zoomJpg(wide("logo.jpg"), 150, 150, true, wide("by_jpg.jpg")), 0);
  EXPECT_LE(bgrAt(cv::imread(file("by_png.jpg")), 5, 5)[0], 80) << "png is an OpenCV type";
  EXPECT_GE(bgrAt(cv::imread(file("by_jpg.jpg")), 5, 5)[0], 250) << "jpg no longer is";
}

// The one decode must give what the second would have: the same pixels, exactly.
TEST_F(MagicImageTest, OneDecodeGivesWhatTwoWouldGive) {
  ITesselOpenCV* images = TesselDllLoader::s_p_tessel_opencv_;
  const cv::Mat colour = photo(64, 48);
  cv::Mat grey, opaque;
  cv::cvtColor(colour, grey, cv::COLOR_BGR2GRAY);
  cv::cvtColor(colour, opaque, cv::COLOR_BGR2BGRA);
  cv::Mat deep;
  colour.convertTo(deep, CV_16U, 257.0);
  std::vector<uchar> jpeg, png;
  cv::imencode(".jpg", colour, jpeg);
  cv::imencode(".png", colour, png);
  pellix_test::writeFile(file("turned.jpg"), pellix_test::withExifOrientation(
                                                 std::string(jpeg.begin(), jpeg.end()), 6));
  pellix_test::writeFile(file("turned.png"),
                         pellix_test::withExifOrientation(std::string(png.begin(), png.end()), 8));
  pellix_test::writeFile(file("upright.jpg"), pellix_test::withExifOrientation(
                                                  std::string(jpeg.begin(), jpeg.end()), 1));
  write("colour.jpg", colour);
  write("grey.jpg", grey);
  write("colour.png", colour);
  write("grey.png", grey);
  write("opaque.png", opaque);
  write("deep.png", deep);
  write("colour.bmp", colour);
  write("grey.bmp", grey);
  write("colour.webp", colour);
  write("colour.tif", colour);
  pellix_test::plainImage(file("palette.png"), 64, 48, "#12AB34", {"-type", "Palette"});
  pellix_test::plainImage(file("grey_alpha.png"), 64, 48, "#808080",
                          {"-type", "GrayscaleMatte", "-depth", "8"});
  pellix_test::plainImage(file("deep_grey_alpha.png"), 64, 48, "#808080",
                          {"-type", "GrayscaleMatte", "-depth", "16"});
  struct Row {
    const char* name;
    bool once;
  };
  const Row rows[] = {
      {"colour.jpg", true},  {"grey.jpg", true},
      {"upright.jpg", true}, {"colour.png", true},
      {"grey.png", true},    {"opaque.png", true},
      {"palette.png", true}, {"grey_alpha.png", true},
      {"colour.bmp", true},  {"grey.bmp", true},
      {"colour.webp", true}, {"turned.jpg", false},
      {"turned.png", false}, {"deep.png", false},
      {"colour.tif", false}, {"deep_grey_alpha.png", false},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(row.name);
    cv::Mat decoded, once, twice;
    ASSERT_EQ(images->readImage(wide(row.name), -1, decoded), 0);
    ASSERT_FALSE(images->hasAlpha(decoded, L"")) << "a file without transparency";
    ASSERT_EQ(images->readImage(wide(row.name), 1, twice), 0);
    const bool reused = colourFromUnchangedDecode(readImageHeadOf(wide(row.name)), decoded, &once);
    EXPECT_EQ(reused, row.once);
    if (!reused) continue;
    ASSERT_EQ(once.type(), twice.type());
    ASSERT_EQ(once.size(), twice.size());
    EXPECT_EQ(cv::norm(once, twice, cv::NORM_INF), 0.0);
  }
}

}  // namespace

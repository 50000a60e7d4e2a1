// The driver's raster operations in a host program with the image module beside it: getView,
// getZoomView and zoomJpg handing raster files to MagicImage, and cutImage.
#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include <opencv2/imgcodecs.hpp>
#include <opencv2/imgproc.hpp>

#include "Common/Source/config_db.h"
#include "Common/Source/text_forms.h"
#include "PellixKernel/PellixDriver.h"
#include "testing/test_images.h"
#include "testing/test_support.h"

namespace {

using pellix_test::LogCapture;
using pellix_test::TempDir;
using pellix_test::windowsPath;

// Each pixel different from its neighbours, so that a cut at the wrong place shows.
cv::Mat numbered(int cols, int rows) {
  cv::Mat image(rows, cols, CV_8UC3);
  for (int y = 0; y < rows; ++y) {
    for (int x = 0; x < cols; ++x) {
      image.at<cv::Vec3b>(y, x) = cv::Vec3b(static_cast<uchar>(x), static_cast<uchar>(y),
                                            static_cast<uchar>((x / 256) * 16 + y / 256));
    }
  }
  return image;
}

class DriverRasterTest : public testing::Test {
 protected:
  static void SetUpTestSuite() {
    ASSERT_TRUE(
        common_hepler::ConfigDB::getInstance()->setThumbFileBasePath("test", L"C:\\Previews"));
  }
  std::string file(const std::string& name) const { return tmp_.path() + "/" + name; }
  std::wstring wide(const std::string& name) const { return windowsPath(file(name)); }
  // The narrow form the driver's cut takes: the Windows form in UTF-8.
  std::string narrow(const std::string& name) const { return wsToUtf8(wide(name)); }

  TempDir tmp_;
  CPellixDriver driver_;
};

TEST_F(DriverRasterTest, RasterFilesGoToMagicImage) {
  ASSERT_TRUE(cv::imwrite(file("a.jpg"), numbered(600, 300)));
  const std::wstring out = windowsPath(tmp_.mkdir("out"));
  std::vector<std::wstring> previews = {L"left over"};
  ASSERT_EQ(driver_.getView(wide("a.jpg"), 200, 200, true, out, previews, false, 0), 0);
  ASSERT_EQ(previews, std::vector<std::wstring>{out + L"\\a.jpg.1.jpg"});
  EXPECT_EQ(cv::imread(pellix_test::posixPath(previews[0])).size(), cv::Size(200, 100));

  // A failure keeps the path where the preview would have been.
  pellix_test::writeFile(file("cut.png"), pellix_test::readFile(file("a.jpg")).substr(0, 300));
  pellix_test::copyFile(file("cut.png"), file("cut.gif"));
  LogCapture log;
  EXPECT_EQ(driver_.getView(wide("cut.gif"), 200, 200, true, out, previews, false, 0), 1002);
  EXPECT_EQ(previews, std::vector<std::wstring>{out + L"\\cut.gif.1.jpg"});
  EXPECT_EQ(log.count("MagicImage::getView not err, but do by magic"), 1);

  std::wstring zoomed;
  ASSERT_EQ(driver_.getZoomView(wide("a.jpg"), 60, 60, true, out, zoomed), 0);
  EXPECT_EQ(zoomed, out + L"\\a.jpg");
  EXPECT_EQ(cv::imread(pellix_test::posixPath(zoomed)).size(), cv::Size(60, 30));

  ASSERT_EQ(driver_.zoomJpg(wide("a.jpg"), 90, 90, wide("named.png")), 0);
  EXPECT_EQ(cv::imread(file("named.png")).size(), cv::Size(90, 45));

  // What isn't a raster image isn't zoomed; a missing one with an image's name fails in the
  // route.
  pellix_test::writeFile(file("a.psd"), std::string("8BPS\0\x01", 6) + std::string(40, '\0'));
  EXPECT_EQ(driver_.getZoomView(wide("a.psd"), 60, 60, true, out, zoomed), 2227);
  EXPECT_EQ(driver_.zoomJpg(wide("a.psd"), 60, 60, wide("x.jpg")), 2227);
  EXPECT_EQ(driver_.zoomJpg(wide("absent.jpg"), 60, 60, wide("x.jpg")), 1002);
  EXPECT_FALSE(pellix_test::fileExists(file("x.jpg")));
}

TEST_F(DriverRasterTest, CutsAtTheFilesOwnPixels) {
  const cv::Mat big = numbered(4000, 2000);
  const cv::Mat small = numbered(300, 200);
  ASSERT_TRUE(cv::imwrite(file("big.png"), big));
  ASSERT_TRUE(cv::imwrite(file("small.png"), small));
  cv::Mat clear(50, 60, CV_8UC4, cv::Scalar(10, 20, 30, 0));
  ASSERT_TRUE(cv::imwrite(file("clear.png"), clear));
  struct Row {
    const char* name;
    const char* src;
    ImageRange range;
    int view_max;
    cv::Rect expected;  // in the source's pixels
  };
  const Row rows[] = {
      // A view of 800 on an image of 4000: the factor is 5.
      {"scaled by 5", "big.png", {10, 10, 110, 60}, 800, {50, 50, 500, 250}},
      // A factor of 2.5: the origin scales by 2.5, the size by 2.
      {"scaled by 2.5", "big.png", {10, 10, 110, 60}, 1600, {25, 25, 200, 100}},
      {"no view", "big.png", {10, 10, 110, 60}, 0, {10, 10, 100, 50}},
      {"negative view", "big.png", {10, 10, 110, 60}, -3, {10, 10, 100, 50}},
      {"image within the view", "small.png", {1.9f, 2.5f, 41.2f, 22.9f}, 300, {1, 2, 39, 20}},
      {"the whole image", "small.png", {0, 0, 300, 200}, 0, {0, 0, 300, 200}},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(row.name);
    ASSERT_EQ(driver_.cutImage(narrow(row.src), std::make_shared<ImageRange>(row.range),
                               narrow("cut.png"), row.view_max),
              0);
    const cv::Mat source = std::string(row.src) == "big.png" ? big : small;
    const cv::Mat cut = cv::imread(file("cut.png"), cv::IMREAD_UNCHANGED);
    ASSERT_EQ(cut.size(), row.expected.size());
    EXPECT_EQ(cv::norm(cut, source(row.expected), cv::NORM_INF), 0.0);
  }
  ASSERT_EQ(
      driver_.cutImage(narrow("clear.png"), std::make_shared<ImageRange>(ImageRange{0, 0, 6, 5}),
                       narrow("clear_cut.png"), 0),
      0);
  EXPECT_EQ(cv::imread(file("clear_cut.png"), cv::IMREAD_UNCHANGED).channels(), 3)
      << "read with three channels: transparency is lost";
}

TEST_F(DriverRasterTest, CutRefusesWhatItCantCut) {
  ASSERT_TRUE(cv::imwrite(file("a.png"), numbered(300, 200)));
  pellix_test::writeFile(file("broken.png"), "\x89PNG\r\n\x1A\n nothing more");
  const float nan = std::numeric_limits<float>::quiet_NaN();
  const float huge = 3e38f;
  struct Row {
    const char* name;
    std::string src;
    std::shared_ptr<ImageRange> range;
    int view_max;
    std::string dst;
    int code;
    const char* log;
  };
  const auto r = [](float l, float t, float rt, float b) {
    return std::make_shared<ImageRange>(ImageRange{l, t, rt, b});
  };
  const Row rows[] = {
      {"no rectangle", "a.png", nullptr, 0, "c.png", 1002, " p_img_range is null"},
      {"right on left", "a.png", r(5, 5, 5, 50), 0, "c.png", 1002,
       " invalid dstRows:45, dstCols:0"},
      {"0.9 wide", "a.png", r(5, 5, 5.9f, 50), 0, "c.png", 1002, " invalid dstRows:45, dstCols:0"},
      {"inverted", "a.png", r(50, 50, 5, 5), 0, "c.png", 1002, " invalid dstRows:-45"},
      {"not a number", "a.png", r(nan, 0, 10, 10), 0, "c.png", 1002,
       " invalid dstRows:10, dstCols:0"},
      {"beyond the right", "a.png", r(250, 0, 350, 10), 0, "c.png", 1002, " rect beyond the image"},
      {"beyond the bottom", "a.png", r(0, 150, 10, 250), 0, "c.png", 1002,
       " rect beyond the image"},
      {"left of the image", "a.png", r(-5, 0, 10, 10), 0, "c.png", 1002, " rect beyond the image"},
      {"scaled beyond", "a.png", r(0, 0, 101, 10), 100, "c.png", 1002, " rect beyond the image"},
      {"out of every range", "a.png", r(-huge, -huge, huge, huge), 0, "c.png", 1002,
       " rect beyond the image"},
      {"no image", "broken.png", r(0, 0, 10, 10), 0, "c.png", 1000, nullptr},
      {"missing", "absent.png", r(0, 0, 10, 10), 0, "c.png", 1000, nullptr},
      {"no format", "a.png", r(0, 0, 10, 10), 0, "c", 1000, nullptr},
      {"no folder", "a.png", r(0, 0, 10, 10), 0, "no/such/c.png", 1000, nullptr},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(row.name);
    LogCapture log;
    EXPECT_EQ(driver_.cutImage(narrow(row.src), row.range, narrow(row.dst), row.view_max),
              row.code);
    if (row.log != nullptr) {
      EXPECT_EQ(log.count(std::string("CPellixDriver::cutImage") + row.log), 1);
    } else {
      EXPECT_EQ(log.count("CPellixDriver::cutImage"), 0);
    }
    EXPECT_FALSE(pellix_test::fileExists(file(row.dst)));
  }
}

}  // namespace

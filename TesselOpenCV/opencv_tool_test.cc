// OpenCvTool over images made here: the slices of every shape, and the white test with what
// its small probe sees and what it can't.
#include "TesselOpenCV/opencv_tool.h"

#include <gtest/gtest.h>

#include <opencv2/imgcodecs.hpp>
#include <opencv2/imgproc.hpp>

#include "testing/test_images.h"
#include "testing/test_support.h"

namespace {

using pellix_test::LogCapture;

std::string encoded(const std::string& ext, const cv::Mat& image) {
  std::vector<uchar> out;
  EXPECT_TRUE(cv::imencode(ext, image, out));
  return std::string(out.begin(), out.end());
}

TEST(OpenCvToolTest, SlicesAlongTheLongSide) {
  struct Row {
    int cols, rows;
    std::vector<cv::Rect> tiles;  // after the whole image
  };
  const Row table[] = {
      {100, 250, {{0, 0, 100, 100}, {0, 100, 100, 100}, {0, 200, 100, 50}}},
      {100, 140, {}},
      {100, 150, {}},
      {100, 151, {{0, 0, 100, 100}, {0, 100, 100, 51}}},
      {300, 100, {{0, 0, 100, 100}, {100, 0, 100, 100}, {200, 0, 100, 100}}},
      {64, 64, {}},
      {1, 5, {{0, 0, 1, 1}, {0, 1, 1, 1}, {0, 2, 1, 1}, {0, 3, 1, 1}, {0, 4, 1, 1}}},
  };
  for (const Row& row : table) {
    SCOPED_TRACE(std::to_string(row.cols) + "x" + std::to_string(row.rows));
    const cv::Mat src(row.rows, row.cols, CV_8UC1, cv::Scalar(255));
    std::vector<cv::Mat> slices{cv::Mat()};
    OpenCvTool::sliceImage(src, slices);
    ASSERT_EQ(slices.size(), row.tiles.size() + 1);
    EXPECT_EQ(slices[0].data, src.data);
    EXPECT_EQ(slices[0].size(), src.size());
    for (size_t i = 0; i < row.tiles.size(); ++i) {
      const cv::Rect& r = row.tiles[i];
      EXPECT_EQ(slices[i + 1].size(), r.size()) << "tile " << i;
      EXPECT_EQ(slices[i + 1].data, src.ptr(r.y) + r.x) << "a view, not a copy: tile " << i;
    }
  }
  std::vector<cv::Mat> slices{cv::Mat()};
  OpenCvTool::sliceImage(cv::Mat(), slices);
  EXPECT_TRUE(slices.empty());
}

TEST(OpenCvToolTest, WhiteIsWhatTheProbeSeesAsWhite) {
  const cv::Mat white(1024, 1024, CV_8UC3, cv::Scalar(255, 255, 255));
  cv::Mat dot = white.clone();
  dot.at<cv::Vec3b>(0, 0) = cv::Vec3b(0, 0, 0);  // between the probe's samples
  cv::Mat stripe = white.clone();
  cv::rectangle(stripe, cv::Rect(0, 500, 1024, 40), cv::Scalar(0, 0, 0), cv::FILLED);
  // A dark band that the probe of the whole image passes over; the first tile sees it.
  cv::Mat tall(1000, 100, CV_8UC3, cv::Scalar(255, 255, 255));
  cv::rectangle(tall, cv::Rect(0, 3, 100, 2), cv::Scalar(0, 0, 0), cv::FILLED);
  cv::Mat tall_probe;
  cv::resize(tall, tall_probe, cv::Size(32, 32), 0, 0, cv::INTER_LINEAR);
  ASSERT_EQ(cv::countNonZero(tall_probe.reshape(1) < 255), 0) << "the whole image looks white";

  struct Row {
    const char* name;
    std::string bytes;
    bool white;
  };
  const Row rows[] = {
      {"no bytes", "", true},
      {"white jpeg", encoded(".jpg", white), true},
      {"grey 254", encoded(".png", cv::Mat(64, 64, CV_8UC1, cv::Scalar(254))), false},
      {"a dot between samples", encoded(".png", dot), true},
      {"a stripe", encoded(".png", stripe), false},
      {"a band in the first tile", encoded(".png", tall), false},
  };
  for (const Row& row : rows) {
    EXPECT_EQ(OpenCvTool::isAllWhiteJpg(row.bytes), row.white) << row.name;
  }
}

TEST(OpenCvToolTest, BytesThatDontDecodeAreNotWhite) {
  const std::string jpeg = encoded(".jpg", cv::Mat(64, 64, CV_8UC3, cv::Scalar(255, 255, 255)));
  for (const std::string& bytes : {std::string("not an image"), jpeg.substr(0, 20),
                                   pellix_test::pngClaiming(100000, 100000)}) {
    LogCapture log;
    EXPECT_FALSE(OpenCvTool::isAllWhiteJpg(bytes));
    EXPECT_EQ(log.count("OpenCvTool::isAllWhiteJpg get mat failed!"), 1);
  }
}

}  // namespace

#include "TesselOpenCV/opencv_tool.h"

#include <glog/logging.h>

#include <algorithm>

#include <opencv2/imgcodecs.hpp>
#include <opencv2/imgproc.hpp>

#include "TesselOpenCV/mat_file.h"

namespace {

constexpr float kSliceRatio = 1.5f;
constexpr int kProbeSize = 32;
constexpr uchar kWhite = 255;

}  // namespace

void OpenCvTool::sliceImage(const cv::Mat& src, std::vector<cv::Mat>& slices) {
  slices.clear();
  if (src.empty()) return;
  slices.push_back(src);
  const int short_side = std::min(src.rows, src.cols);
  const int long_side = std::max(src.rows, src.cols);
  if (static_cast<float>(long_side) / static_cast<float>(short_side) <= kSliceRatio) return;
  const int tiles = (long_side + short_side - 1) / short_side;
  try {
    for (int i = 0; i < tiles; ++i) {
      const int offset = i * short_side;
      const int length = offset + short_side < long_side ? short_side : long_side - offset;
      const cv::Rect rect = src.cols < src.rows ? cv::Rect(0, offset, short_side, length)
                                                : cv::Rect(offset, 0, length, short_side);
      slices.push_back(cv::Mat(src, rect));
    }
  } catch (const std::exception&) {
    LOG(ERROR) << "OpenCvTool::sliceImage"
               << " opencv fault";
  }
}

bool OpenCvTool::isAllWhiteJpg(const std::string& jpg_bytes) {
  if (jpg_bytes.empty()) return true;
  cv::Mat image;
  std::string why;
  const MatStatus decoded =
      decodeMat(jpg_bytes, readImageHead(jpg_bytes), cv::IMREAD_GRAYSCALE, &image, &why);
  if (decoded == MatStatus::kFault) {
    LOG(ERROR) << "OpenCvTool::isAllWhiteJpg"
               << " opencv fault";
    return false;
  }
  if (decoded != MatStatus::kOk) {
    LOG(ERROR) << "OpenCvTool::isAllWhiteJpg"
               << " get mat failed!";
    return false;
  }
  try {
    std::vector<cv::Mat> slices;
    sliceImage(image, slices);
    for (const cv::Mat& slice : slices) {
      cv::Mat probe;
      cv::resize(slice, probe, cv::Size(kProbeSize, kProbeSize), 0, 0, cv::INTER_LINEAR);
      for (int y = 0; y < probe.rows; ++y) {
        const uchar* row = probe.ptr<uchar>(y);
        for (int x = 0; x < probe.cols; ++x) {
          if (row[x] < kWhite) return false;
        }
      }
    }
  } catch (const std::exception&) {
    LOG(ERROR) << "OpenCvTool::isAllWhiteJpg"
               << " opencv fault";
    return false;
  }
  return true;
}

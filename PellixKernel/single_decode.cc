#include "PellixKernel/single_decode.h"

#include <opencv2/core.hpp>
#include <opencv2/imgproc.hpp>

#include "platform/env.h"

namespace {

// The decoders whose colour decode differs from the unchanged one only by the channel
// conversion and the EXIF orientation. TIFF and JPEG 2000 are decoded again: their readers
// have other differences between the two modes (depth, planar layouts, orientation tags).
bool singleDecodeFormat(ImageFormat format) {
  return format == ImageFormat::kJpeg || format == ImageFormat::kPng ||
         format == ImageFormat::kBmp || format == ImageFormat::kWebp;
}

// Each row's blue, green and red moved to the front of the row in place: the output of pixel
// x lies at 3x, before or on its input at 4x, so a left-to-right pass reads every input
// before it is overwritten. The result shares `bgra`'s rows and keeps its row stride.
cv::Mat dropAlphaInPlace(cv::Mat& bgra) {
  cv::parallel_for_(cv::Range(0, bgra.rows), [&](const cv::Range& rows) {
    for (int y = rows.start; y < rows.end; ++y) {
      uchar* row = bgra.ptr<uchar>(y);
      for (int x = 0; x < bgra.cols; ++x) {
        row[3 * x] = row[4 * x];
        row[3 * x + 1] = row[4 * x + 1];
        row[3 * x + 2] = row[4 * x + 2];
      }
    }
  });
  return cv::Mat(bgra.rows, bgra.cols, CV_8UC3, bgra.data, bgra.step[0]);
}

}  // namespace

ImageHead readImageHeadOf(const std::wstring& path) {
  std::string bytes;
  if (!platform::Env::Default()->ReadFile(path, 0, kImageHeadBytes, &bytes).ok()) {
    return ImageHead();
  }
  return readImageHead(bytes);
}

bool colourFromUnchangedDecode(const ImageHead& head, cv::Mat& decoded, cv::Mat* colour) {
  if (!singleDecodeFormat(head.format) || head.orientation != 1 || head.deep || head.cmyk ||
      decoded.empty() || decoded.depth() != CV_8U) {
    return false;
  }
  switch (decoded.channels()) {
    case 3:
      *colour = decoded;
      return true;
    case 4:
      *colour = dropAlphaInPlace(decoded);
      return true;
    case 1:
      cv::cvtColor(decoded, *colour, cv::COLOR_GRAY2BGR);
      return true;
    default:
      return false;
  }
}

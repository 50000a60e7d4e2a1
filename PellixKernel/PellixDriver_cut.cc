// CPellixDriver::cutImage: a rectangle of the host's reduced view of an image, cut out of the
// image file at its own pixels and saved.
#include <glog/logging.h>

#include <climits>
#include <cmath>

#include <opencv2/core.hpp>
#include <opencv2/imgcodecs.hpp>

#include "PellixKernel/PellixDriver.h"
#include "TesselOpenCV/mat_file.h"
#include "errors/result_codes.h"
#include "platform/env.h"

namespace {

// A float truncated to an int; values beyond int's range are held at its ends, NaN is 0.
int64_t truncated(float value) {
  if (std::isnan(value)) return 0;
  if (value >= static_cast<float>(INT_MAX)) return INT_MAX;
  if (value <= static_cast<float>(INT_MIN)) return INT_MIN;
  return static_cast<int64_t>(value);
}

}  // namespace

int CPellixDriver::cutImage(const std::string& src, std::shared_ptr<ImageRange> p_img_range,
                            const std::string& dst, int view_max) {
  if (!p_img_range) {
    LOG(ERROR) << "CPellixDriver::cutImage"
               << " p_img_range is null";
    return codes::kBadArgument;
  }
  // The narrow paths are read and written through the platform, which maps them; the image
  // is read with three channels whatever the file holds.
  platform::Env* env = platform::Env::Default();
  cv::Mat image;
  std::string why;
  if (readMatFile(env->WidenNarrowPath(src), cv::IMREAD_COLOR, &image, &why) != MatStatus::kOk) {
    return codes::kFileReadWrite;
  }
  const ImageRange range = *p_img_range;
  p_img_range.reset();
  int64_t dst_rows = truncated(range.bottom - range.top);
  int64_t dst_cols = truncated(range.right - range.left);
  if (dst_rows <= 0 || dst_cols <= 0) {
    LOG(ERROR) << "CPellixDriver::cutImage"
               << " invalid dstRows:" << dst_rows << ", dstCols:" << dst_cols;
    return codes::kBadArgument;
  }
  float left = range.left, top = range.top;
  if (view_max >= 1 && (image.rows > view_max || image.cols > view_max)) {
    // The size scales by the whole factor, the origin by the exact one.
    const float factor =
        static_cast<float>(std::max(image.rows, image.cols)) / static_cast<float>(view_max);
    dst_rows *= static_cast<int64_t>(factor);
    dst_cols *= static_cast<int64_t>(factor);
    left *= factor;
    top *= factor;
  }
  const int64_t x = truncated(left), y = truncated(top);
  if (x < 0 || y < 0 || x + dst_cols > image.cols || y + dst_rows > image.rows) {
    LOG(ERROR) << "CPellixDriver::cutImage"
               << " rect beyond the image, x:" << x << ", y:" << y << ", dstCols:" << dst_cols
               << ", dstRows:" << dst_rows << ", cols:" << image.cols << ", rows:" << image.rows;
    return codes::kBadArgument;
  }
  cv::Mat cut;
  cv::Mat(image, cv::Rect(static_cast<int>(x), static_cast<int>(y), static_cast<int>(dst_cols),
                          static_cast<int>(dst_rows)))
      .copyTo(cut);
  const std::wstring target = env->WidenNarrowPath(dst);
  return writeMatFile(target, extensionOf(target), cut, {}, &why) ? codes::kOk
                                                                  : codes::kFileReadWrite;
}

// MagicImage: the raster route. Works out where a raster file's preview goes and makes it
// there, zoomed, with OpenCV (for the extensions the settings name), then the imaging
// services, then GraphicsMagick's program as the last resort.
#ifndef PELLIXKERNEL_MAGICIMAGE_H_
#define PELLIXKERNEL_MAGICIMAGE_H_

#include <cstdint>
#include <memory>
#include <set>
#include <string>
#include <utility>

#include <opencv2/core/mat.hpp>

#include "platform/env.h"

class CPellixDriver;
class MultiImage;

// Orders wide texts as the Windows comparison without regard to case does.
struct WideLessNoCase {
  bool operator()(const std::wstring& a, const std::wstring& b) const;
};

// The size an image of `image_width` x `image_height` takes to fit within `want_width` x
// `want_height` with its proportions: it shrinks and never grows. (0, 0) when any of the four
// is 0. Integer arithmetic with truncating division.
std::pair<uint32_t, uint32_t> fitWithin(uint32_t image_width, uint32_t image_height,
                                        uint32_t want_width, uint32_t want_height);

class MagicImage {
 public:
  // Requests above this width or height go to GraphicsMagick's program first.
  static constexpr uint32_t kMaxDirectSize = 10000;

  explicit MagicImage(MultiImage* multi_image);
  MagicImage(const MagicImage&) = delete;
  MagicImage& operator=(const MagicImage&) = delete;

  // Makes the preview of the raster file at `path` at width x height and gives its path in
  // `out_path`, set before any imaging starts so that it holds the path after a failure too.
  // With `keep_name` the preview keeps the source's file name in `image_dst_path`; without
  // it, it gets the regular preview name. `time_suffix` puts the current time before the
  // extension.
  int getView(const std::wstring& path, uint32_t width, uint32_t height, bool keep_ratio,
              bool keep_name, const std::wstring& image_dst_path, std::wstring& out_path,
              bool time_suffix);

  // Makes the image at `dst` from the raster file at `path`, zoomed to width x height;
  // `path` and `dst` may be the same.
  int zoomJpg(const std::wstring& path, uint32_t width, uint32_t height, bool keep_ratio,
              const std::wstring& dst);

  CPellixDriver* driver_ = nullptr;  // set by the driver; not used here

 private:
  friend struct MagicImageTestAccess;

  int _zoomByOpenCV(const std::wstring& path, uint32_t width, uint32_t height, bool keep_ratio,
                    const std::wstring& dst);
  int _zoomByGdi(std::shared_ptr<platform::Image> image, uint32_t width, uint32_t height,
                 bool keep_ratio, const std::wstring& dst);
  void saveFile(std::shared_ptr<platform::Image> image, const std::wstring& dst);
  // The size rule of the OpenCV branch: 0 and the target in `target`, or 2202.
  int _resizeImg(const cv::Mat& mat, uint32_t width, uint32_t height, bool keep_ratio,
                 cv::Size* target);
  // Clears the way for a new file at `dst`: the old file goes, or its folder is made.
  void prepareDst(const std::wstring& dst);
  // An 8-bit image with alpha as its fourth channel, on opaque white.
  cv::Mat composeOnWhite(const cv::Mat& mat);

  MultiImage* multi_image_ = nullptr;
  std::set<std::wstring, WideLessNoCase> opencv_types_;
};

#endif  // PELLIXKERNEL_MAGICIMAGE_H_

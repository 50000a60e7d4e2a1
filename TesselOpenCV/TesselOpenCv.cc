#include "TesselOpenCV/TesselOpenCv.h"

#include <glog/logging.h>

#include <cmath>
#include <cstdint>
#include <string>
#include <vector>

#include <opencv2/imgcodecs.hpp>

#include "Common/Source/text_forms.h"
#include "TesselOpenCV/mat_file.h"
#include "errors/result_codes.h"

namespace {

// The grey of the ground that light artwork is shown on: dark enough for white and light
// tints to stand out, neutral so that it doesn't tint them.
constexpr float kDarkGround = 64.0f;
constexpr int kInvertedOnWhite = 2;
constexpr int kJpegQuality = 90;
constexpr int kWebpQuality = 90;

// The largest value of a channel of `depth`; 0 for the depths not handled here.
double channelMax(int depth) {
  switch (depth) {
    case CV_8U:
      return 255.0;
    case CV_16U:
      return 65535.0;
    case CV_32F:
      return 1.0;
    default:
      return 0.0;
  }
}

template <typename T>
bool anyBelow(const cv::Mat& image, double opaque) {
  for (int y = 0; y < image.rows; ++y) {
    const T* px = image.ptr<T>(y);
    for (int x = 0; x < image.cols; ++x, px += 4) {
      if (px[3] < opaque) return true;
    }
  }
  return false;
}

template <typename T>
bool lightShareReached(const cv::Mat& image, double white, double visible_alpha, float share) {
  uint64_t visible = 0, light = 0;
  for (int y = 0; y < image.rows; ++y) {
    const T* px = image.ptr<T>(y);
    for (int x = 0; x < image.cols; ++x, px += 4) {
      if (px[3] <= visible_alpha) continue;
      ++visible;
      if (px[0] >= white && px[1] >= white && px[2] >= white) ++light;
    }
  }
  return visible > 0 && static_cast<double>(light) >= static_cast<double>(share) * visible;
}

// Each pixel over `ground`, its colour inverted first when `invert`.
template <typename T>
void composeOver(const cv::Mat& image, float ground, bool invert, cv::Mat& out) {
  const float scale = 255.0f / static_cast<float>(channelMax(image.depth()));
  for (int y = 0; y < image.rows; ++y) {
    const T* px = image.ptr<T>(y);
    uchar* dst = out.ptr<uchar>(y);
    for (int x = 0; x < image.cols; ++x, px += 4, dst += 3) {
      const float a = static_cast<float>(px[3]) * scale / 255.0f;
      for (int c = 0; c < 3; ++c) {
        float v = static_cast<float>(px[c]) * scale;
        if (invert) v = 255.0f - v;
        dst[c] = cv::saturate_cast<uchar>(v * a + ground * (1.0f - a));
      }
    }
  }
}

template <typename Fn>
auto byDepth(const cv::Mat& image, Fn&& fn) {
  switch (image.depth()) {
    case CV_8U:
      return fn(uchar{});
    case CV_16U:
      return fn(uint16_t{});
    default:
      return fn(float{});
  }
}

bool hasAlphaChannel(const cv::Mat& image) {
  return !image.empty() && image.channels() == 4 && channelMax(image.depth()) > 0;
}

}  // namespace

bool TesselOpenCv::isAlphaWhite(const cv::Mat& image, int white_level, int alpha_level,
                                float share) {
  if (!hasAlphaChannel(image)) return false;
  const double scale = channelMax(image.depth()) / 255.0;
  return byDepth(image, [&](auto sample) {
    return lightShareReached<decltype(sample)>(image, white_level * scale, alpha_level * scale,
                                               share);
  });
}

cv::Mat TesselOpenCv::renderAlphaWhite(const cv::Mat& image, int mode) {
  if (!hasAlphaChannel(image)) return cv::Mat();
  const bool invert = mode == kInvertedOnWhite;
  cv::Mat out(image.rows, image.cols, CV_8UC3);
  byDepth(image, [&](auto sample) {
    composeOver<decltype(sample)>(image, invert ? 255.0f : kDarkGround, invert, out);
    return 0;
  });
  return out;
}

bool TesselOpenCv::hasAlpha(const cv::Mat& image, const std::wstring& ext) {
  (void)ext;
  if (!hasAlphaChannel(image)) return false;
  const double opaque = channelMax(image.depth());
  return byDepth(image, [&](auto sample) { return anyBelow<decltype(sample)>(image, opaque); });
}

int TesselOpenCv::readImage(const std::wstring& path, int flags, cv::Mat& image) {
  image.release();
  std::string bytes, why;
  const MatStatus read = readImageFile(path, &bytes, &why);
  if (read == MatStatus::kMissing) {
    LOG(ERROR) << "TesselOpenCv::readImage"
               << " file not found:" << wsToUtf8(path);
    return codes::kSourceMissing;
  }
  if (read != MatStatus::kOk) {
    LOG(ERROR) << "TesselOpenCv::readImage"
               << " can't read file:" << wsToUtf8(path) << ", " << why;
    return codes::kOpenCvReadFailed;
  }
  const ImageHead head = readImageHead(bytes);
  if (head.cmyk) {
    LOG(ERROR) << "TesselOpenCv::readImage"
               << " not err, cmyk jpeg goes to the colour-managed decoder, file:" << wsToUtf8(path);
    return codes::kOpenCvReadFailed;
  }
  if (decodeMat(bytes, head, flags, &image, &why) != MatStatus::kOk) {
    LOG(ERROR) << "TesselOpenCv::readImage"
               << " can't decode file:" << wsToUtf8(path) << ", " << why;
    return codes::kOpenCvReadFailed;
  }
  return codes::kOk;
}

int TesselOpenCv::writeImage(const std::wstring& path, const cv::Mat& image) {
  std::string extension = extensionOf(path);
  if (extension == ".jfif") extension = ".jpg";
  cv::Mat out = image;
  const bool eight_bit_format = extension == ".jpg" || extension == ".jpeg" ||
                                extension == ".jpe" || extension == ".bmp" || extension == ".webp";
  if (eight_bit_format && !image.empty() && image.depth() != CV_8U &&
      channelMax(image.depth()) > 0) {
    image.convertTo(out, CV_8U, 255.0 / channelMax(image.depth()));
  }
  const std::vector<int> params = {cv::IMWRITE_JPEG_QUALITY, kJpegQuality, cv::IMWRITE_WEBP_QUALITY,
                                   kWebpQuality};
  std::string why;
  if (!writeMatFile(path, extension, out, params, &why)) {
    LOG(ERROR) << "TesselOpenCv::writeImage"
               << " can't write file:" << wsToUtf8(path) << ", " << why;
    return codes::kPreviewNotAccessible;
  }
  return codes::kOk;
}

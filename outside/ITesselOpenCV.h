// ITesselOpenCV: interface 114 of TesselOpenCV.dll, the image module, as the raster route
// calls it. Images are OpenCV matrices in OpenCV's channel order (BGR, BGRA).
#ifndef OUTSIDE_ITESSELOPENCV_H_
#define OUTSIDE_ITESSELOPENCV_H_

#include <string>

#include <opencv2/core/mat.hpp>

inline constexpr int kTesselOpenCvInterfaceId = 114;

struct ITesselOpenCV {
  // Whether `image` is light artwork on transparency that would vanish on white: of its
  // visible pixels (alpha above `alpha_level`), the share whose every colour channel is at
  // least `white_level` reaches `share`. Levels are 8-bit values.
  virtual bool isAlphaWhite(const cv::Mat& image, int white_level, int alpha_level,
                            float share) = 0;

  // `image` without its alpha, drawn so that light artwork stays visible: `mode` 1 on a dark
  // neutral ground, 2 in inverted colours on white. A three-channel 8-bit image; empty when
  // `image` has no alpha channel.
  virtual cv::Mat renderAlphaWhite(const cv::Mat& image, int mode) = 0;

  // Whether `image` has a fourth channel that isn't opaque everywhere. `ext` (the file's
  // extension without a dot) doesn't change the answer: the pixels decide.
  virtual bool hasAlpha(const cv::Mat& image, const std::wstring& ext) = 0;

  // Decodes the file at `path` with OpenCV's read flags (-1 unchanged, 1 colour). 0 and the
  // image; 2201 when the file is missing; 2280 when it can't be read or decoded.
  virtual int readImage(const std::wstring& path, int flags, cv::Mat& image) = 0;

  // Encodes `image` in the format of the path's extension and writes it whole. 0, or 2205
  // when it can't be encoded or written.
  virtual int writeImage(const std::wstring& path, const cv::Mat& image) = 0;

  virtual ~ITesselOpenCV() = default;
};

#endif  // OUTSIDE_ITESSELOPENCV_H_

// TesselOpenCv: the image module, interface 114 of TesselOpenCV.dll, on OpenCV: reading and
// writing image files, and telling and showing light artwork on transparency.
#ifndef TESSELOPENCV_TESSELOPENCV_H_
#define TESSELOPENCV_TESSELOPENCV_H_

#include "outside/ITesselOpenCV.h"

class TesselOpenCv final : public ITesselOpenCV {
 public:
  bool isAlphaWhite(const cv::Mat& image, int white_level, int alpha_level, float share) override;
  cv::Mat renderAlphaWhite(const cv::Mat& image, int mode) override;
  bool hasAlpha(const cv::Mat& image, const std::wstring& ext) override;
  // Also 2280 for a CMYK JPEG, whose colours need the colour-managed decoder of the imaging
  // services.
  int readImage(const std::wstring& path, int flags, cv::Mat& image) override;
  // JPEG and WebP at quality 90; a deeper image is brought to 8 bits for the formats that
  // hold no more.
  int writeImage(const std::wstring& path, const cv::Mat& image) override;
};

#endif  // TESSELOPENCV_TESSELOPENCV_H_

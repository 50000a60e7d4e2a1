// Images as OpenCV matrices to and from files, through the platform's file calls (so any
// Windows-form path works) and with a guard: a size the header merely declares never makes
// the decoder allocate more than kMaxDecodedPixels pixels.
#ifndef TESSELOPENCV_MAT_FILE_H_
#define TESSELOPENCV_MAT_FILE_H_

#include <cstdint>
#include <string>
#include <vector>

#include <opencv2/core/mat.hpp>

#include "TesselOpenCV/image_head.h"

// The most pixels an image may declare to be decoded here: 2^28, 16384 by 16384, which is
// 1 GiB at four 8-bit channels. An image of deeper samples decoded at its own depth gets half
// as many, so that no decode here asks for more than 1 GiB. Larger images are left to the
// decoders that shrink while they read.
inline constexpr uint64_t kMaxDecodedPixels = uint64_t{1} << 28;

// The most pixels that `head` may declare for a decode with OpenCV's read `flags`.
uint64_t maxPixelsFor(const ImageHead& head, int flags);

enum class MatStatus {
  kOk,
  kMissing,        // no file at the path
  kUnreadable,     // the file can't be read
  kUnknownFormat,  // no header of a format read here
  kTooLarge,       // the header declares more than kMaxDecodedPixels
  kUndecodable,    // the decoder gave nothing
  kFault,          // OpenCV raised an exception
};

// The whole file into `bytes`: kOk, kMissing or kUnreadable, with `why` for a log line.
MatStatus readImageFile(const std::wstring& path, std::string* bytes, std::string* why);

// Decodes `bytes`, whose header is `head`, with OpenCV's read `flags` into `image`, after
// checking the declared size. No exception leaves it.
MatStatus decodeMat(const std::string& bytes, const ImageHead& head, int flags, cv::Mat* image,
                    std::string* why);

// readImageFile, then decodeMat.
MatStatus readMatFile(const std::wstring& path, int flags, cv::Mat* image, std::string* why);

// The extension of the path's file name, dot included, in lower case; empty without one.
std::string extensionOf(const std::wstring& path);

// Encodes `image` with OpenCV's encoder of `extension` (".jpg") and its write `params`, and
// writes it whole to `path` through a temporary name. False with `why` when it can't; no
// exception leaves it.
bool writeMatFile(const std::wstring& path, const std::string& extension, const cv::Mat& image,
                  const std::vector<int>& params, std::string* why);

#endif  // TESSELOPENCV_MAT_FILE_H_

#include "TesselOpenCV/mat_file.h"

#include <cctype>
#include <climits>

#include <opencv2/imgcodecs.hpp>

#include "Common/Source/file_replace.h"
#include "Common/Source/text_forms.h"
#include "platform/env.h"

MatStatus readImageFile(const std::wstring& path, std::string* bytes, std::string* why) {
  const platform::Status s = platform::Env::Default()->ReadWholeFile(path, bytes);
  if (s.ok()) return MatStatus::kOk;
  *why = s.message;
  return s.kind == platform::ErrorKind::kNotFound ? MatStatus::kMissing : MatStatus::kUnreadable;
}

namespace {

// Whether the end marker follows the image's first scan. The segments before that scan are
// walked by their lengths, so an embedded thumbnail (inside APP1) is stepped over; scan data
// never holds the marker (a 0xFF byte there is followed by 0x00 or a restart number), so its
// absence after the first scan means the file was cut. What follows the marker (padding, the
// second picture of a file that carries a gain map) doesn't matter.
bool endsWithJpegEnd(const std::string& bytes) {
  size_t at = 2;  // after the start marker
  while (at + 4 <= bytes.size()) {
    if (static_cast<unsigned char>(bytes[at]) != 0xFF) return false;
    const unsigned char marker = static_cast<unsigned char>(bytes[at + 1]);
    if (marker == 0xFF) {  // fill byte before a marker
      ++at;
      continue;
    }
    const size_t length = (static_cast<unsigned char>(bytes[at + 2]) << 8) |
                          static_cast<unsigned char>(bytes[at + 3]);
    if (marker == 0xDA) return bytes.find("\xFF\xD9", at + 2 + length) != std::string::npos;
    at += 2 + length;
  }
  return false;
}

}  // namespace

uint64_t maxPixelsFor(const ImageHead& head, int flags) {
  const bool keeps_depth = (flags & cv::IMREAD_ANYDEPTH) != 0;
  return head.deep && keeps_depth ? kMaxDecodedPixels / 2 : kMaxDecodedPixels;
}

MatStatus decodeMat(const std::string& bytes, const ImageHead& head, int flags, cv::Mat* image,
                    std::string* why) {
  image->release();
  if (head.format == ImageFormat::kUnknown || bytes.size() > INT_MAX) {
    *why = "no image header of a known format";
    return MatStatus::kUnknownFormat;
  }
  const uint64_t limit = maxPixelsFor(head, flags);
  if (head.width == 0 || head.height == 0 || head.width > limit ||
      head.width * head.height > limit) {
    *why = "declared size " + std::to_string(head.width) + "x" + std::to_string(head.height) +
           " is beyond what is decoded here";
    return MatStatus::kTooLarge;
  }
  // The JPEG decoder fills what a cut file lacks with grey and says so only in a warning; a
  // cut file is a failure here, as it is for the other decoders.
  if (head.format == ImageFormat::kJpeg && !endsWithJpegEnd(bytes)) {
    *why = "the JPEG data ends before its end marker";
    return MatStatus::kUndecodable;
  }
  try {
    const cv::Mat encoded(1, static_cast<int>(bytes.size()), CV_8UC1,
                          const_cast<char*>(bytes.data()));
    *image = cv::imdecode(encoded, flags);
  } catch (const std::exception& e) {
    *why = e.what();
    image->release();
    return MatStatus::kFault;
  }
  if (image->empty()) {
    *why = "the decoder gave no pixels";
    return MatStatus::kUndecodable;
  }
  return MatStatus::kOk;
}

MatStatus readMatFile(const std::wstring& path, int flags, cv::Mat* image, std::string* why) {
  std::string bytes;
  const MatStatus read = readImageFile(path, &bytes, why);
  if (read != MatStatus::kOk) return read;
  return decodeMat(bytes, readImageHead(bytes), flags, image, why);
}

std::string extensionOf(const std::wstring& path) {
  const size_t dot = path.rfind(L'.');
  const size_t separator = path.find_last_of(L"\\/");
  if (dot == std::wstring::npos || (separator != std::wstring::npos && dot < separator)) {
    return std::string();
  }
  std::string extension = wsToUtf8(path.substr(dot));
  for (char& c : extension) c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
  return extension;
}

bool writeMatFile(const std::wstring& path, const std::string& extension, const cv::Mat& image,
                  const std::vector<int>& params, std::string* why) {
  if (extension.empty()) {
    *why = "no format: the path has no extension";
    return false;
  }
  if (image.empty()) {
    *why = "the image is empty";
    return false;
  }
  std::vector<uchar> encoded;
  try {
    if (!cv::imencode(extension, image, encoded, params)) {
      *why = "the encoder refused the image";
      return false;
    }
  } catch (const std::exception& e) {
    *why = e.what();
    return false;
  }
  const platform::Status s = replaceFileContent(path, std::string(encoded.begin(), encoded.end()));
  if (!s.ok()) *why = s.message;
  return s.ok();
}

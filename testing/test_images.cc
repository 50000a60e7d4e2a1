#include "testing/test_images.h"

#include <gtest/gtest.h>

#include <opencv2/imgcodecs.hpp>

#include "testing/test_support.h"

namespace pellix_test {
namespace {

void runTool(const std::string& tool, const std::vector<std::string>& args) {
  std::vector<std::string> argv = {tool};
  argv.insert(argv.end(), args.begin(), args.end());
  const RunResult r = run(argv);
  ASSERT_EQ(r.status, 0) << tool << " failed: " << r.err;
}

uint32_t crc32Of(const std::string& bytes) {
  uint32_t crc = 0xFFFFFFFFu;
  for (unsigned char b : bytes) {
    crc ^= b;
    for (int k = 0; k < 8; ++k) crc = (crc >> 1) ^ (0xEDB88320u & (0u - (crc & 1u)));
  }
  return ~crc;
}

std::string bigEndian(uint32_t v) {
  return {static_cast<char>(v >> 24), static_cast<char>(v >> 16), static_cast<char>(v >> 8),
          static_cast<char>(v)};
}

std::string pngChunk(const std::string& type, const std::string& data) {
  return bigEndian(static_cast<uint32_t>(data.size())) + type + data +
         bigEndian(crc32Of(type + data));
}

}  // namespace

void gm(const std::vector<std::string>& args) { runTool("/usr/bin/gm", args); }

void vipsTool(const std::vector<std::string>& args) { runTool("/usr/bin/vips", args); }

std::string plainImage(const std::string& path, int width, int height, const std::string& colour,
                       const std::vector<std::string>& extra) {
  std::vector<std::string> args = {
      "convert", "-size", std::to_string(width) + "x" + std::to_string(height), "xc:" + colour};
  args.insert(args.end(), extra.begin(), extra.end());
  args.push_back(path);
  gm(args);
  return path;
}

std::string pngClaiming(uint32_t width, uint32_t height) {
  const std::string header =
      bigEndian(width) + bigEndian(height) + std::string("\x08\x06\0\0\0", 5);
  // One stored deflate block of 16 bytes: a filter byte and white pixels, then its Adler-32.
  std::string row = std::string(1, '\0') + std::string(15, '\xFF');
  uint32_t a = 1, b = 0;
  for (unsigned char c : row) {
    a = (a + c) % 65521;
    b = (b + a) % 65521;
  }
  const std::string zlib =
      std::string("\x78\x01\x01\x10\x00\xEF\xFF", 7) + row + bigEndian((b << 16) | a);
  return std::string("\x89PNG\r\n\x1A\n", 8) + pngChunk("IHDR", header) + pngChunk("IDAT", zlib) +
         pngChunk("IEND", "");
}

std::string withExifOrientation(const std::string& encoded, int orientation) {
  // A little-endian TIFF structure with one entry: tag 274, SHORT, one value.
  std::string exif("II*\0\x08\0\0\0\x01\0\x12\x01\x03\0\x01\0\0\0", 18);
  exif += std::string{static_cast<char>(orientation), '\0', '\0', '\0'};
  exif += std::string(4, '\0');
  if (encoded.compare(0, 2, "\xFF\xD8") == 0) {
    const std::string payload = std::string("Exif\0\0", 6) + exif;
    const size_t length = payload.size() + 2;
    const std::string segment = std::string("\xFF\xE1", 2) + static_cast<char>(length >> 8) +
                                static_cast<char>(length & 0xFF) + payload;
    return encoded.substr(0, 2) + segment + encoded.substr(2);
  }
  const size_t after_header = 8 + 12 + 13;  // signature, then IHDR with its 13 bytes
  return encoded.substr(0, after_header) + pngChunk("eXIf", exif) + encoded.substr(after_header);
}

cv::Mat pixelsOf(const std::string& path, int flags) { return cv::imread(path, flags); }

cv::Vec3b bgrAt(const cv::Mat& image, int x, int y) { return image.at<cv::Vec3b>(y, x); }

}  // namespace pellix_test

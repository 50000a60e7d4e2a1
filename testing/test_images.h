// Images that tests make for themselves: through GraphicsMagick's and libvips' programs, and
// PNG files written byte by byte; and the pixels of a file, for checks.
#ifndef TESTING_TEST_IMAGES_H_
#define TESTING_TEST_IMAGES_H_

#include <cstdint>
#include <string>
#include <vector>

#include <opencv2/core.hpp>

namespace pellix_test {

// Runs `gm ARGS...`; fails the test when it fails.
void gm(const std::vector<std::string>& args);

// Runs `vips ARGS...`; fails the test when it fails.
void vipsTool(const std::vector<std::string>& args);

// `gm convert -size WxH xc:COLOUR [EXTRA...] PATH`: a plain image, gives `path`.
std::string plainImage(const std::string& path, int width, int height, const std::string& colour,
                       const std::vector<std::string>& extra = {});

// The bytes of a PNG file whose header claims width x height of 8-bit RGBA while its data
// holds a single row's worth of bytes at most.
std::string pngClaiming(uint32_t width, uint32_t height);

// `encoded` (a JPEG or a PNG) with EXIF data declaring `orientation`: an APP1 segment after
// the start of a JPEG, an eXIf chunk after the header of a PNG.
std::string withExifOrientation(const std::string& encoded, int orientation);

// The file's pixels as OpenCV decodes them with `flags`; empty when it can't.
cv::Mat pixelsOf(const std::string& path, int flags = 1 /* colour */);

// The BGR pixel at (x, y) of a three-channel 8-bit image.
cv::Vec3b bgrAt(const cv::Mat& image, int x, int y);

}  // namespace pellix_test

#endif  // TESTING_TEST_IMAGES_H_

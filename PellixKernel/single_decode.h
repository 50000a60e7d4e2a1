// Decoding a raster file once where once is enough: the colour image that a second decode
// with the colour flag would give, made from the unchanged decode when that already holds it.
#ifndef PELLIXKERNEL_SINGLE_DECODE_H_
#define PELLIXKERNEL_SINGLE_DECODE_H_

#include <string>

#include <opencv2/core/mat.hpp>

#include "TesselOpenCV/image_head.h"

// How much of a file's beginning tells its header facts, EXIF data included.
inline constexpr size_t kImageHeadBytes = 256 * 1024;

// The header facts of the file at `path` from its first kImageHeadBytes; kUnknown when it
// can't be read.
ImageHead readImageHeadOf(const std::wstring& path);

// Gives in `colour` the three-channel 8-bit image that the colour decode of the file would
// give, made from `decoded` (its unchanged decode, without transparency) when the two are
// bound to be equal: an 8-bit image of 1, 3 or 4 channels, from JPEG, PNG, BMP or WebP, with
// no EXIF orientation that the colour decode would apply. False, with `colour` untouched,
// when the file must be decoded again. `colour` may share `decoded`'s pixels, so `decoded`
// must outlive it.
bool colourFromUnchangedDecode(const ImageHead& head, cv::Mat& decoded, cv::Mat* colour);

#endif  // PELLIXKERNEL_SINGLE_DECODE_H_

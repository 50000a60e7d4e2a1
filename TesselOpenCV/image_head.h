// What an encoded image's header declares: its format, its size, whether its samples are
// deeper than 8 bits, its EXIF orientation and, for JPEG, whether it holds CMYK. Read from
// the bytes alone, so that a size can be judged before anything is allocated for the pixels.
#ifndef TESSELOPENCV_IMAGE_HEAD_H_
#define TESSELOPENCV_IMAGE_HEAD_H_

#include <cstdint>
#include <string>

enum class ImageFormat { kUnknown, kJpeg, kPng, kBmp, kTiff, kWebp, kJpeg2000 };

struct ImageHead {
  ImageFormat format = ImageFormat::kUnknown;
  uint64_t width = 0;
  uint64_t height = 0;
  bool cmyk = false;  // a JPEG of four components (CMYK or YCCK)
  bool deep = false;  // more than 8 bits a sample (PNG, TIFF, JPEG 2000)
  // The EXIF orientation that a decoder turning the image upright would apply: 1 when the
  // file declares none (or declares 1), 2 to 8 as declared, 0 when it carries EXIF data
  // whose orientation can't be read. Read for JPEG (APP1), PNG (eXIf before the pixel data)
  // and WebP (its EXIF chunk marks 0); other formats give 1.
  int orientation = 1;
};

// The header facts of JPEG, PNG, BMP, TIFF (the first image), WebP and JPEG 2000 (the JP2
// file and the bare code stream). kUnknown for any other content, and for a header that is
// cut short before it tells the size. The bytes may be only the file's beginning.
ImageHead readImageHead(const std::string& bytes);

#endif  // TESSELOPENCV_IMAGE_HEAD_H_

// GdiPlusDrawer: draws an image at a new size on a white ground, and writes it with the
// encoder that the file's name and the image's pixel format call for.
#ifndef COMMON_SOURCE_GDIPLUSDRAWER_H_
#define COMMON_SOURCE_GDIPLUSDRAWER_H_

#include <cstdint>
#include <memory>
#include <string>

#include "platform/env.h"

class GdiPlusDrawer {
 public:
  // The one drawer of the process. It holds no data; the imaging services must be started
  // before its first call and stay up until its last.
  static GdiPlusDrawer& getInstance();

  // `image` drawn into a new image of width x height on opaque white, in the source's pixel
  // format (CMYK becomes 32-bit RGB). Null when the source can't be drawn.
  std::shared_ptr<platform::Image> zoomImage(std::shared_ptr<platform::Image> image,
                                             uint32_t width, uint32_t height);

  // Draws as zoomImage does and writes the result to `wsPath` with the encoder of
  // encoderWordFor. Nothing is reported: a draw or an encoder that fails leaves no file.
  void zoomImageAndSave(std::shared_ptr<platform::Image> image, int width, int height,
                        const std::wstring& wsPath);

  // The index of the encoder whose MIME type is exactly `mime_type`, with its class
  // identifier in `clsid`; -1 when there is none.
  int getEncoderClsid(const std::wstring& mime_type, platform::EncoderId* clsid);

 private:
  GdiPlusDrawer() = default;
};

// The pixel format of a bitmap drawn from a source of `source_format`: CMYK can't be drawn
// on, so it becomes 32-bit RGB; every other format stays.
platform::PixelFormat bitmapFormatOf(platform::PixelFormat source_format);

// The word of the MIME type "image/<word>" that a bitmap of `format` is written with to
// `path`: the text after the path's last dot in lower case (the whole path without a dot),
// "jpg" read as "jpeg" and "tif" as "tiff"; and "jpeg" for any format without alpha, whatever
// the name says.
std::wstring encoderWordFor(const std::wstring& path, platform::PixelFormat format);

#endif  // COMMON_SOURCE_GDIPLUSDRAWER_H_

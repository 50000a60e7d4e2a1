#include "TesselOpenCV/image_head.h"

#include <algorithm>

namespace {

// Bounds-checked numbers from the bytes; `ok` turns false at the first read past the end.
class ByteReader {
 public:
  explicit ByteReader(const std::string& bytes) : bytes_(bytes) {}

  bool ok() const { return ok_; }
  size_t size() const { return bytes_.size(); }

  uint64_t big(size_t at, size_t count) {
    if (!has(at, count)) return 0;
    uint64_t v = 0;
    for (size_t i = 0; i < count; ++i) v = (v << 8) | byte(at + i);
    return v;
  }
  uint64_t little(size_t at, size_t count) {
    if (!has(at, count)) return 0;
    uint64_t v = 0;
    for (size_t i = count; i > 0; --i) v = (v << 8) | byte(at + i - 1);
    return v;
  }
  uint64_t number(size_t at, size_t count, bool little_endian) {
    return little_endian ? little(at, count) : big(at, count);
  }
  bool textAt(size_t at, const char* text, size_t count) {
    return at <= bytes_.size() && bytes_.size() - at >= count &&
           bytes_.compare(at, count, text, count) == 0;
  }

 private:
  bool has(size_t at, size_t count) {
    if (at > bytes_.size() || bytes_.size() - at < count) ok_ = false;
    return ok_;
  }
  uint64_t byte(size_t at) const { return static_cast<unsigned char>(bytes_[at]); }

  const std::string& bytes_;
  bool ok_ = true;
};

ImageHead sized(ImageFormat format, uint64_t width, uint64_t height, ByteReader& r) {
  ImageHead head;
  if (!r.ok()) return head;
  head.format = format;
  head.width = width;
  head.height = height;
  return head;
}

// The orientation tag (274) of the first image of the TIFF structure that EXIF data is: 1
// when it has none, 0 when the structure can't be read.
int exifOrientation(const std::string& exif) {
  ByteReader r(exif);
  bool little_endian;
  if (r.textAt(0, "II*\0", 4)) {
    little_endian = true;
  } else if (r.textAt(0, "MM\0*", 4)) {
    little_endian = false;
  } else {
    return 0;
  }
  const size_t ifd = static_cast<size_t>(r.number(4, 4, little_endian));
  const uint64_t entries = r.number(ifd, 2, little_endian);
  for (uint64_t i = 0; i < entries && r.ok(); ++i) {
    const size_t entry = ifd + 2 + static_cast<size_t>(i) * 12;
    if (r.number(entry, 2, little_endian) != 274) continue;
    const uint64_t value = r.number(entry + 8, 2, little_endian);
    if (!r.ok()) return 0;
    // Values outside 2 to 8 turn nothing.
    return value >= 2 && value <= 8 ? static_cast<int>(value) : 1;
  }
  return r.ok() ? 1 : 0;
}

bool isStartOfFrame(uint64_t marker) {
  return marker >= 0xC0 && marker <= 0xCF && marker != 0xC4 && marker != 0xC8 && marker != 0xCC;
}

ImageHead jpegHead(ByteReader& r, const std::string& bytes) {
  size_t at = 2;
  int orientation = 1;
  bool exif_seen = false;
  while (r.ok()) {
    if (r.big(at, 1) != 0xFF) return ImageHead();
    while (r.ok() && r.big(at + 1, 1) == 0xFF) ++at;  // fill bytes
    const uint64_t marker = r.big(at + 1, 1);
    at += 2;
    if (marker == 0x01 || (marker >= 0xD0 && marker <= 0xD8)) continue;  // no length
    if (marker == 0xD9 || marker == 0xDA) return ImageHead();            // data before any frame
    const uint64_t length = r.big(at, 2);
    if (isStartOfFrame(marker)) {
      ImageHead head = sized(ImageFormat::kJpeg, r.big(at + 5, 2), r.big(at + 3, 2), r);
      head.cmyk = r.big(at + 7, 1) == 4 && r.ok();
      head.deep = r.big(at + 2, 1) > 8 && r.ok();
      head.orientation = orientation;
      return head;
    }
    if (length < 2) return ImageHead();
    // The first APP1 that holds EXIF data carries the orientation.
    if (marker == 0xE1 && !exif_seen && length >= 8 && r.textAt(at + 2, "Exif\0\0", 6)) {
      exif_seen = true;
      const size_t end = std::min(bytes.size(), at + static_cast<size_t>(length));
      orientation = at + 8 < end ? exifOrientation(bytes.substr(at + 8, end - at - 8)) : 0;
    }
    at += static_cast<size_t>(length);
  }
  return ImageHead();
}

ImageHead bmpHead(ByteReader& r) {
  const uint64_t info_size = r.little(14, 4);
  if (info_size == 12) return sized(ImageFormat::kBmp, r.little(18, 2), r.little(20, 2), r);
  const auto height = static_cast<int32_t>(static_cast<uint32_t>(r.little(22, 4)));
  const uint64_t rows = height < 0 ? 0 - static_cast<int64_t>(height) : height;
  return sized(ImageFormat::kBmp, r.little(18, 4), rows, r);
}

ImageHead tiffHead(ByteReader& r, bool little_endian) {
  const size_t ifd = static_cast<size_t>(r.number(4, 4, little_endian));
  const uint64_t entries = r.number(ifd, 2, little_endian);
  uint64_t width = 0, height = 0, bits = 0;
  for (uint64_t i = 0; i < entries && r.ok(); ++i) {
    const size_t entry = ifd + 2 + static_cast<size_t>(i) * 12;
    const uint64_t tag = r.number(entry, 2, little_endian);
    const uint64_t type = r.number(entry + 2, 2, little_endian);
    const uint64_t count = r.number(entry + 4, 4, little_endian);
    const uint64_t value =
        type == 3 ? r.number(entry + 8, 2, little_endian) : r.number(entry + 8, 4, little_endian);
    if (tag == 256) width = value;
    if (tag == 257) height = value;
    if (tag == 258) {
      // More than two short values stand elsewhere; the first sample's depth is enough.
      ByteReader elsewhere = r;
      bits = type == 3 && count > 2
                 ? elsewhere.number(static_cast<size_t>(r.number(entry + 8, 4, little_endian)), 2,
                                    little_endian)
                 : value;
    }
  }
  if (width == 0 || height == 0) return ImageHead();
  ImageHead head = sized(ImageFormat::kTiff, width, height, r);
  head.deep = bits > 8;
  return head;
}

ImageHead webpHead(ByteReader& r) {
  if (r.textAt(12, "VP8 ", 4)) {
    if (r.big(23, 3) != 0x9D012A) return ImageHead();
    return sized(ImageFormat::kWebp, r.little(26, 2) & 0x3FFF, r.little(28, 2) & 0x3FFF, r);
  }
  if (r.textAt(12, "VP8L", 4)) {
    const uint64_t bits = r.little(21, 4);
    return sized(ImageFormat::kWebp, (bits & 0x3FFF) + 1, ((bits >> 14) & 0x3FFF) + 1, r);
  }
  if (r.textAt(12, "VP8X", 4)) {
    ImageHead head = sized(ImageFormat::kWebp, r.little(24, 3) + 1, r.little(27, 3) + 1, r);
    // The flag of an EXIF chunk, which is not read here.
    if (r.big(20, 1) & 0x08) head.orientation = 0;
    return head;
  }
  return ImageHead();
}

// The size that the code stream's SIZ segment gives, which follows its SOC marker.
ImageHead codeStreamHead(ByteReader& r, size_t at) {
  if (r.big(at, 4) != 0xFF4FFF51) return ImageHead();
  const uint64_t x = r.big(at + 8, 4), y = r.big(at + 12, 4);
  const uint64_t x0 = r.big(at + 16, 4), y0 = r.big(at + 20, 4);
  if (x <= x0 || y <= y0) return ImageHead();
  ImageHead head = sized(ImageFormat::kJpeg2000, x - x0, y - y0, r);
  head.deep = (r.big(at + 42, 1) & 0x7F) + 1 > 8 && r.ok();
  return head;
}

// The boxes from `at` to `end`: the payload's offset and end of the first of `type`.
bool findBox(ByteReader& r, size_t at, size_t end, const char* type, size_t* payload,
             size_t* payload_end) {
  while (at < end && r.ok()) {
    uint64_t length = r.big(at, 4);
    size_t header = 8;
    if (length == 1) {
      length = r.big(at + 8, 8);
      header = 16;
    } else if (length == 0) {
      length = end - at;
    }
    if (length < header || length > end - at) return false;
    if (r.textAt(at + 4, type, 4)) {
      *payload = at + header;
      *payload_end = at + static_cast<size_t>(length);
      return r.ok();
    }
    at += static_cast<size_t>(length);
  }
  return false;
}

ImageHead jp2Head(ByteReader& r) {
  size_t header = 0, header_end = 0, ihdr = 0, ihdr_end = 0;
  if (!findBox(r, 0, r.size(), "jp2h", &header, &header_end) ||
      !findBox(r, header, header_end, "ihdr", &ihdr, &ihdr_end)) {
    return ImageHead();
  }
  ImageHead head = sized(ImageFormat::kJpeg2000, r.big(ihdr + 4, 4), r.big(ihdr, 4), r);
  head.deep = (r.big(ihdr + 10, 1) & 0x7F) + 1 > 8 && r.ok();
  return head;
}

// A PNG's header: size and depth from IHDR, and the orientation of an eXIf chunk that comes
// before the pixel data (where decoders look for it). Bytes that end before the pixel data
// leave the orientation unknown.
ImageHead pngHead(ByteReader& r, const std::string& bytes) {
  ImageHead head = sized(ImageFormat::kPng, r.big(16, 4), r.big(20, 4), r);
  if (head.format == ImageFormat::kUnknown) return head;
  head.deep = r.big(24, 1) == 16;
  ByteReader chunks(bytes);
  size_t at = 8;
  head.orientation = 0;
  while (chunks.ok()) {
    const uint64_t length = chunks.big(at, 4);
    if (!chunks.ok() || chunks.textAt(at + 4, "IDAT", 4)) {
      if (chunks.ok()) head.orientation = 1;
      break;
    }
    if (chunks.textAt(at + 4, "eXIf", 4)) {
      if (length <= bytes.size() - at - 8) {
        head.orientation = exifOrientation(bytes.substr(at + 8, static_cast<size_t>(length)));
      }
      break;
    }
    if (length > bytes.size()) break;
    at += 12 + static_cast<size_t>(length);
  }
  return head;
}

}  // namespace

ImageHead readImageHead(const std::string& bytes) {
  ByteReader r(bytes);
  if (r.big(0, 2) == 0xFFD8) return jpegHead(r, bytes);
  if (r.textAt(0, "\x89PNG\r\n\x1A\n", 8) && r.textAt(12, "IHDR", 4)) return pngHead(r, bytes);
  if (r.textAt(0, "BM", 2)) return bmpHead(r);
  if (r.textAt(0, "II*\0", 4)) return tiffHead(r, true);
  if (r.textAt(0, "MM\0*", 4)) return tiffHead(r, false);
  if (r.textAt(0, "RIFF", 4) && r.textAt(8, "WEBP", 4)) return webpHead(r);
  if (r.textAt(0, "\0\0\0\x0CjP  \r\n\x87\n", 12)) return jp2Head(r);
  if (r.big(0, 2) == 0xFF4F) return codeStreamHead(r, 0);
  return ImageHead();
}

#include "TesselKernel/psd_header.h"

namespace {

uint32_t bigEndianAt(const std::string& bytes, size_t at, size_t count) {
  uint32_t v = 0;
  for (size_t i = 0; i < count; ++i) v = (v << 8) | static_cast<unsigned char>(bytes[at + i]);
  return v;
}

}  // namespace

bool hasPsdMark(const std::string& head) { return head.rfind("8BPS", 0) == 0; }

bool parsePsdHeader(const std::string& head, PsdHeader* header) {
  if (head.size() < kPsdHeaderSize || !hasPsdMark(head)) return false;
  PsdHeader h;
  h.version = static_cast<uint16_t>(bigEndianAt(head, 4, 2));
  h.channels = static_cast<uint16_t>(bigEndianAt(head, 12, 2));
  h.height = bigEndianAt(head, 14, 4);
  h.width = bigEndianAt(head, 18, 4);
  h.depth = static_cast<uint16_t>(bigEndianAt(head, 22, 2));
  h.color_mode = static_cast<uint16_t>(bigEndianAt(head, 24, 2));
  // The limits of the format: 30000 pixels a side for PSD, 300000 for PSB.
  const uint32_t max_side = h.version == 2 ? 300000 : 30000;
  const bool valid = (h.version == 1 || h.version == 2) && h.channels >= 1 &&
                     h.channels <= 56 && h.width >= 1 && h.width <= max_side &&
                     h.height >= 1 && h.height <= max_side &&
                     (h.depth == 1 || h.depth == 8 || h.depth == 16 || h.depth == 32) &&
                     !psdColorModeName(h.color_mode).empty();
  if (valid) *header = h;
  return valid;
}

std::string psdColorModeName(uint16_t color_mode) {
  switch (color_mode) {
    case 0:
      return "Bitmap";
    case 1:
      return "Grayscale";
    case 2:
      return "Indexed";
    case 3:
      return "RGB";
    case 4:
      return "CMYK";
    case 7:
      return "Multichannel";
    case 8:
      return "Duotone";
    case 9:
      return "Lab";
    default:
      return std::string();
  }
}

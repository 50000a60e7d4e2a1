// The facts that the fixed header of a PSD or PSB file gives: version, channels, size, bit
// depth and colour mode.
#ifndef TESSELKERNEL_PSD_HEADER_H_
#define TESSELKERNEL_PSD_HEADER_H_

#include <cstddef>
#include <cstdint>
#include <string>

// The header's length in bytes.
inline constexpr size_t kPsdHeaderSize = 26;

struct PsdHeader {
  uint16_t version = 0;  // 1 PSD, 2 PSB (large document)
  uint16_t channels = 0;
  uint32_t height = 0;
  uint32_t width = 0;
  uint16_t depth = 0;  // bits per channel
  uint16_t color_mode = 0;
};

// Whether `head` begins with the mark "8BPS".
bool hasPsdMark(const std::string& head);

// Reads the header from the file's first bytes; false when they are too few or hold values
// no PSD or PSB file has.
bool parsePsdHeader(const std::string& head, PsdHeader* header);

// The name of a colour mode: "Bitmap", "Grayscale", "Indexed", "RGB", "CMYK",
// "Multichannel", "Duotone" or "Lab"; empty for a number that is none of them.
std::string psdColorModeName(uint16_t color_mode);

#endif  // TESSELKERNEL_PSD_HEADER_H_

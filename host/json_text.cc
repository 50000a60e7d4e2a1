#include "host/json_text.h"

#include <cstdio>

namespace {

// The length of a well-formed UTF-8 sequence starting at `i`, or 0.
size_t sequenceLength(const std::string& s, size_t i) {
  const auto b = static_cast<unsigned char>(s[i]);
  size_t len = (b & 0xE0) == 0xC0 ? 2 : (b & 0xF0) == 0xE0 ? 3 : (b & 0xF8) == 0xF0 ? 4 : 0;
  if (len == 0 || i + len > s.size() || (len == 2 && b < 0xC2)) return 0;
  for (size_t k = 1; k < len; ++k) {
    if ((static_cast<unsigned char>(s[i + k]) & 0xC0) != 0x80) return 0;
  }
  return len;
}

}  // namespace

std::string jsonString(const std::string& utf8) {
  std::string out = "\"";
  for (size_t i = 0; i < utf8.size();) {
    const auto c = static_cast<unsigned char>(utf8[i]);
    char esc[8];
    if (c == '"' || c == '\\') {
      out += '\\';
      out += static_cast<char>(c);
    } else if (c == '\n') {
      out += "\\n";
    } else if (c == '\t') {
      out += "\\t";
    } else if (c == '\r') {
      out += "\\r";
    } else if (c < 0x20) {
      std::snprintf(esc, sizeof(esc), "\\u%04x", c);
      out += esc;
    } else if (c >= 0x80) {
      const size_t len = sequenceLength(utf8, i);
      if (len == 0) {
        std::snprintf(esc, sizeof(esc), "\\u%04x", c);
        out += esc;
      } else {
        out.append(utf8, i, len);
        i += len;
        continue;
      }
    } else {
      out += static_cast<char>(c);
    }
    ++i;
  }
  return out + "\"";
}

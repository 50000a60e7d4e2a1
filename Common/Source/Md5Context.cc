#include "Common/Source/Md5Context.h"

#include <array>
#include <cmath>
#include <cstring>

namespace {

// The sine table of RFC 1321: entry i is the integer part of 2^32 * |sin(i + 1)|.
const std::array<uint32_t, 64>& sineTable() {
  static const std::array<uint32_t, 64> table = [] {
    std::array<uint32_t, 64> t{};
    for (int i = 0; i < 64; ++i) {
      t[static_cast<size_t>(i)] =
          static_cast<uint32_t>(std::floor(std::fabs(std::sin(i + 1.0)) * 4294967296.0));
    }
    return t;
  }();
  return table;
}

constexpr int kShifts[4][4] = {{7, 12, 17, 22}, {5, 9, 14, 20}, {4, 11, 16, 23}, {6, 10, 15, 21}};

uint32_t rotateLeft(uint32_t x, int n) { return (x << n) | (x >> (32 - n)); }

}  // namespace

Md5Context::Md5Context()
    : state_{0x67452301u, 0xefcdab89u, 0x98badcfeu, 0x10325476u}, count_{0, 0}, buffer_{} {}

void Md5Context::transform(const uint8_t block[64]) {
  uint32_t x[16];
  for (int i = 0; i < 16; ++i) {
    x[i] = static_cast<uint32_t>(block[i * 4]) | (static_cast<uint32_t>(block[i * 4 + 1]) << 8) |
           (static_cast<uint32_t>(block[i * 4 + 2]) << 16) |
           (static_cast<uint32_t>(block[i * 4 + 3]) << 24);
  }
  const auto& k = sineTable();
  uint32_t a = state_[0], b = state_[1], c = state_[2], d = state_[3];
  for (int i = 0; i < 64; ++i) {
    const int round = i / 16;
    uint32_t f;
    int g;
    switch (round) {
      case 0:
        f = (b & c) | (~b & d);
        g = i;
        break;
      case 1:
        f = (d & b) | (~d & c);
        g = (5 * i + 1) % 16;
        break;
      case 2:
        f = b ^ c ^ d;
        g = (3 * i + 5) % 16;
        break;
      default:
        f = c ^ (b | ~d);
        g = (7 * i) % 16;
        break;
    }
    const uint32_t next = b + rotateLeft(a + f + k[static_cast<size_t>(i)] + x[g],
                                         kShifts[round][i % 4]);
    a = d;
    d = c;
    c = b;
    b = next;
  }
  state_[0] += a;
  state_[1] += b;
  state_[2] += c;
  state_[3] += d;
}

void Md5Context::update(const void* bytes, size_t length) {
  const auto* input = static_cast<const uint8_t*>(bytes);
  size_t index = (count_[0] >> 3) & 0x3F;
  const uint64_t bits = static_cast<uint64_t>(length) << 3;
  const uint32_t low = count_[0];
  count_[0] += static_cast<uint32_t>(bits);
  if (count_[0] < low) ++count_[1];
  count_[1] += static_cast<uint32_t>(bits >> 32);

  size_t done = 0;
  const size_t room = 64 - index;
  if (length >= room) {
    std::memcpy(&buffer_[index], input, room);
    transform(buffer_);
    for (done = room; done + 63 < length; done += 64) transform(&input[done]);
    index = 0;
  }
  if (length > done) std::memcpy(&buffer_[index], &input[done], length - done);
}

std::string Md5Context::hexDigest() const {
  Md5Context copy = *this;  // padding is fed to a copy, so this context goes on unchanged
  uint8_t length_bytes[8];
  for (int i = 0; i < 8; ++i) {
    length_bytes[i] = static_cast<uint8_t>(count_[i / 4] >> ((i % 4) * 8));
  }
  const size_t index = (count_[0] >> 3) & 0x3F;
  const size_t pad = index < 56 ? 56 - index : 120 - index;
  static const uint8_t kPadding[64] = {0x80};
  copy.update(kPadding, pad);
  copy.update(length_bytes, 8);

  static const char kDigits[] = "0123456789abcdef";
  std::string hex;
  hex.reserve(32);
  for (uint32_t word : copy.state_) {
    for (int i = 0; i < 4; ++i) {
      const auto byte = static_cast<uint8_t>(word >> (i * 8));
      hex.push_back(kDigits[byte >> 4]);
      hex.push_back(kDigits[byte & 0x0F]);
    }
  }
  return hex;
}

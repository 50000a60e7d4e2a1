// MD5 (RFC 1321) over bytes fed in pieces, with a digest that can be taken at any point.
#ifndef COMMON_SOURCE_MD5CONTEXT_H_
#define COMMON_SOURCE_MD5CONTEXT_H_

#include <cstddef>
#include <cstdint>
#include <string>

class Md5Context {
 public:
  Md5Context();

  // Feeds `length` bytes; may be called any number of times.
  void update(const void* bytes, size_t length);

  // The digest of everything fed so far as 32 lower-case hexadecimal digits. The running
  // state is left as it was, so feeding can go on afterwards.
  std::string hexDigest() const;

 private:
  void transform(const uint8_t block[64]);

  uint32_t state_[4];
  uint32_t count_[2];  // number of bits fed, low word first
  uint8_t buffer_[64];
};

#endif  // COMMON_SOURCE_MD5CONTEXT_H_

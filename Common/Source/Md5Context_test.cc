#include "Common/Source/Md5Context.h"

#include <gtest/gtest.h>

namespace {

std::string md5(const std::string& text) {
  Md5Context ctx;
  ctx.update(text.data(), text.size());
  return ctx.hexDigest();
}

TEST(Md5ContextTest, Rfc1321TestSuite) {
  struct Case {
    const char* input;
    const char* digest;
  } cases[] = {
      {"", "d41d8cd98f00b204e9800998ecf8427e"},
      {"a", "0cc175b9c0f1b6a831c399e269772661"},
      {"abc", "900150983cd24fb0d6963f7d28e17f72"},
      {"message digest", "f96b697d7cb7938d525a2f31aaf161d0"},
      {"abcdefghijklmnopqrstuvwxyz", "c3fcd3d76192e4007dfb496cca67e13b"},
      {"ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789",
       "d174ab98d277d9f5a5611c2c9f419d9f"},
      {"1234567890123456789012345678901234567890"
       "1234567890123456789012345678901234567890",
       "57edf4a22be3c955ac49da2e2107b67a"},
  };
  for (const Case& c : cases) EXPECT_EQ(md5(c.input), c.digest) << "row: \"" << c.input << "\"";
}

TEST(Md5ContextTest, PiecesAndInterleavedDigestsGiveTheSameResult) {
  const std::string text(1000, 'q');
  for (size_t piece : {1u, 7u, 63u, 64u, 65u, 999u}) {
    Md5Context ctx;
    for (size_t at = 0; at < text.size(); at += piece) {
      ctx.update(text.data() + at, std::min(piece, text.size() - at));
      ctx.hexDigest();  // taking a digest must not disturb the running state
    }
    EXPECT_EQ(ctx.hexDigest(), md5(text)) << "piece: " << piece;
  }
}

}  // namespace

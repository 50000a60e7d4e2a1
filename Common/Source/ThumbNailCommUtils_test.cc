// Preview paths worked out again from source paths, and thumbnails written from Base64 text.
// The process has a home folder of its own: C: is that folder, Z: the root of the file system.
#include "Common/Source/ThumbNailCommUtils.h"

#include <gtest/gtest.h>

#include <random>

#include "Common/Source/Md5Context.h"
#include "Common/Source/config_db.h"
#include "Common/Source/text_forms.h"
#include "device/DeviceCommUtils.h"
#include "testing/test_support.h"

namespace {

using pellix_test::TempDir;
using U = ThumbNailCommUtils;

std::string u8(const std::wstring& w) { return wsToUtf8(w); }

// The preview root of this process: a folder in its own home, set once.
const std::wstring& previewRoot() {
  static const std::wstring root = [] {
    pellix_test::useOwnHome();
    const std::wstring dir = L"C:\\Previews";
    EXPECT_TRUE(common_hepler::ConfigDB::getInstance()->setThumbFileBasePath("test", dir));
    return dir;
  }();
  return root;
}

// Every test of paths runs with the preview root of this process set, so that nothing looks
// for a default disk.
class PreviewPathTest : public testing::Test {
 protected:
  void SetUp() override { previewRoot(); }
};

TEST_F(PreviewPathTest, RegularPathsAndPages) {
  EXPECT_EQ(U::getThumbPath(L"D:\\Design\\Spring\\Logo.PSD", L"E:\\Thumbs\\mid"),
            L"E:\\Thumbs\\mid\\Logo.PSD.1.jpg");
  EXPECT_EQ(U::getThumbPath(L"Logo.PSD", L"E:\\t"), L"E:\\t\\.1.jpg") << "no '\\', no name";
  EXPECT_EQ(U::getThumbPath(L"", L"E:\\t"), L"");
  EXPECT_EQ(U::getThumbPath(L"D:\\a.psd", L""), L"");

  struct Case {
    const wchar_t* path;
    uint16_t page;
    const wchar_t* with_page;
    const wchar_t* page_of_path;
  } cases[] = {
      {L"E:\\Thumbs\\mid\\Logo.PSD.1.jpg", 3, L"E:\\Thumbs\\mid\\Logo.PSD.3.jpg", L"1"},
      {L"E:\\t\\a.psd.10.png", 65535, L"E:\\t\\a.psd.65535.png", L"10"},
      {L"abc.jpg", 2, L"", L"abc"},
      {L"E:\\v1.2\\abc.jpg", 2, L"E:\\v1.2.jpg", L"2\\abc"},
      {L"abc", 2, L"", L""},
      {L"", 2, L"", L""},
  };
  for (const Case& c : cases) {
    EXPECT_EQ(U::setThumbPage(c.path, c.page), c.with_page) << "row: " << u8(c.path);
    EXPECT_EQ(U::getThumbPage(c.path), c.page_of_path) << "row: " << u8(c.path);
  }
  EXPECT_EQ(U::getThumbPage(U::setThumbPage(L"E:\\t\\Logo.PSD.1.jpg", 7)), L"7");

  EXPECT_EQ(U::getFileNameOf(L"D:\\a\\b.psd"), L"b.psd");
  EXPECT_EQ(U::getFileNameOf(L"D:/a/b.psd"), L"");
  EXPECT_EQ(U::getFileNameOf(L"D:\\a\\"), L"");
  EXPECT_EQ(U::insertBeforeExt(L"D:\\a\\b.psd.1.jpg", L"1700000000"),
            L"D:\\a\\b.psd.11700000000.jpg");
  EXPECT_EQ(U::insertBeforeExt(L"D:\\a\\b", L"_x"), L"D:\\a\\b");
}

TEST_F(PreviewPathTest, LongPathPreviewsNameTheVolumeAndTheFoldedPath) {
  const std::wstring& root = previewRoot();
  const std::wstring serial_c = DeviceCommUtils::getVolSerial(L"C:\\");
  const std::wstring serial_z = DeviceCommUtils::getVolSerial(L"Z:\\");
  ASSERT_FALSE(serial_c.empty());
  ASSERT_NE(serial_c, serial_z);
  const std::wstring tree = root + L"\\KvnLongPath\\";
  EXPECT_EQ(U::getLongPathThumb(L"\\\\?\\C:\\Design\\Spring\\Logo.PSD"),
            tree + serial_c + L"\\mid\\b433355feaba314a9778676a6c8eb550.jpg");
  struct Same {
    const wchar_t* a;
    const wchar_t* b;
  } same[] = {
      {L"\\\\?\\C:\\A\\b.psd", L"C:\\A\\b.psd"},
      {L"C:\\A\\b.PSD", L"c:\\a\\B.psd"},
      {L"Z:\\A\\b.psd", L"z:\\A\\B.PSD"},
  };
  for (const Same& s : same) {
    EXPECT_EQ(U::getLongPathThumb(s.a), U::getLongPathThumb(s.b)) << "row: " << u8(s.a);
  }
  const std::wstring on_c = U::getLongPathThumb(L"C:\\A\\b.psd");
  const std::wstring on_z = U::getLongPathThumb(L"Z:\\A\\b.psd");
  EXPECT_EQ(on_z, tree + serial_z + on_c.substr(tree.size() + serial_c.size()))
      << "two drives differ only in the volume segment";
  EXPECT_EQ(U::getLongPathThumb(L"C:/A/b.psd"), tree + serial_c + L"\\mid\\.jpg")
      << "without '\\' the digest is empty";
  EXPECT_EQ(U::getLongPathThumb(L"\\\\server\\share\\a.psd"),
            tree + L"\\mid\\" + utf8ToWs(U::getPathMd5("\\server\\share\\a.psd")) + L".jpg")
      << "no drive, no serial; the digest keeps the first '\\'";
  EXPECT_EQ(U::getLongPathThumb(L""), L"");
  EXPECT_TRUE(pellix_test::fileExists(pellix_test::useOwnHome() + "/Previews/" +
                                      "注意_Korvane预览图文件夹,请勿删除!.txt"))
      << "setting the root marks it";
}

TEST_F(PreviewPathTest, DigestsFoldAsciiOnlyAndHashUtf8Bytes) {
  EXPECT_EQ(U::getPathMd5("Design\\Spring\\Logo.PSD"), "b433355feaba314a9778676a6c8eb550");
  EXPECT_EQ(U::getPathMd5(""), "");
  EXPECT_EQ(U::getPathMd5("ÄB\\图"), U::getPathMd5("Äb\\图"));
  EXPECT_NE(U::getPathMd5("ÄB\\图"), U::getPathMd5("äb\\图")) << "non-ASCII isn't folded";
  Md5Context md5;
  const std::string bytes = "a\\\xE5\x9B\xBE";  // a\图 in UTF-8
  md5.update(bytes.data(), bytes.size());
  EXPECT_EQ(U::getPathMd5(wsToUtf8(L"A\\图")), md5.hexDigest());
  // A character above U+FFFF goes in as its two surrogates, three bytes each.
  const std::wstring pair = {0xD83D, 0xDE00};
  Md5Context md5_pair;
  md5_pair.update("\xED\xA0\xBD\xED\xB8\x80", 6);
  EXPECT_EQ(U::getPathMd5(wsToUtf8(pair)), md5_pair.hexDigest());
}

TEST_F(PreviewPathTest, TheTreeAndTheSizeFolders) {
  struct Tree {
    const wchar_t* path;
    bool in_tree;
  } trees[] = {
      {L"E:\\KorvanePreview\\KvnLongPath\\S\\mid\\x.jpg", true},
      {L"E:\\p\\KVNLONGPATH\\x.jpg", true},
      {L"E:\\p\\kvnLongPath\\x.jpg", true},
      {L"E:\\p\\KvnLongPath", false},
      {L"E:/p/KvnLongPath/x.jpg", false},
      {L"", false},
  };
  for (const Tree& t : trees) {
    EXPECT_EQ(U::isLongPathThumb(t.path), t.in_tree) << "row: " << u8(t.path);
  }
  struct Sibling {
    const wchar_t* path;
    const wchar_t* sibling;
  } siblings[] = {
      {L"E:\\P\\KvnLongPath\\S\\mid\\d.jpg", L"E:\\P\\KvnLongPath\\S\\min\\d.jpg"},
      {L"E:\\P\\KvnLongPath\\S\\min\\d.jpg", L"E:\\P\\KvnLongPath\\S\\mid\\d.jpg"},
      {L"mid\\a.jpg", L"min\\a.jpg"},
      {L"E:\\x\\\\mid\\\\a.jpg", L"E:\\x\\min\\a.jpg"},
      {L"E:/x/mid/a.jpg", L"E:/x/min\\a.jpg"},
      {L"a.jpg", L"a.jpg"},
      {L"X:\\p\\other\\a.jpg", L"X:\\p\\other\\a.jpg"},
      {L"X:\\p\\MID\\a.jpg", L"X:\\p\\MID\\a.jpg"},
      {L"\\a.jpg", L"\\a.jpg"},
      {L"", L""},
  };
  for (const Sibling& s : siblings) {
    EXPECT_EQ(U::getMidMinSibling(s.path), s.sibling) << "row: " << u8(s.path);
  }
  const std::wstring mid = U::getLongPathThumb(L"C:\\A\\b.psd");
  EXPECT_EQ(U::getMidMinSibling(U::getMidMinSibling(mid)), mid);
  EXPECT_EQ(U::setThumbPage(mid, 2), L"") << "a long-path preview has no page field";
}

// Base64 of the standard alphabet with '=' padding, made here for the round trips.
std::string toBase64(const std::string& bytes) {
  static const char kDigits[] = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
  std::string out;
  for (size_t i = 0; i < bytes.size(); i += 3) {
    uint32_t v = static_cast<uint8_t>(bytes[i]) << 16;
    if (i + 1 < bytes.size()) v |= static_cast<uint8_t>(bytes[i + 1]) << 8;
    if (i + 2 < bytes.size()) v |= static_cast<uint8_t>(bytes[i + 2]);
    out += kDigits[(v >> 18) & 63];
    out += kDigits[(v >> 12) & 63];
    out += i + 1 < bytes.size() ? kDigits[(v >> 6) & 63] : '=';
    out += i + 2 < bytes.size() ? kDigits[v & 63] : '=';
  }
  return out;
}

// Decodes exactly `text`'s characters from a buffer of that size, so that a read past the
// end is caught by the address checker.
std::string decode(const std::string& text, uint32_t* count = nullptr) {
  std::vector<char> exact(text.begin(), text.end());
  std::string out;
  uint32_t n = 0;
  decodeBase64(exact.data(), static_cast<int32_t>(exact.size()), out, n);
  if (count != nullptr) *count = n;
  EXPECT_EQ(n, out.size());
  return out;
}

TEST(DecodeBase64Test, GroupsPaddingLineBreaksAndTheEndOfTheData) {
  struct Case {
    std::string text, bytes;
  } cases[] = {
      {"TWFu", "Man"},
      {"TWE=", "Ma"},
      {"TQ==", "M"},
      // '=' ends a group, not the text: the count goes on from the '='.
      {"TQ==TWFu", std::string("M\x00\x04\xD6", 4)},
      {"TWFu\r\nTWFu\nTWE=", "ManManMa"},
      {"TW", "M"},  // cut off: only what the characters carry
      {"TWF", "Ma"},
      {"T", ""},
      {"", ""},
      {"\r\n", ""},
      {std::string("TW\xFF\x80", 4), std::string("M\x60\x00", 3)},  // outside the table: 0
      {"T!Fu", std::string("\x4c\x01\x6e", 3)},
  };
  for (const Case& c : cases) {
    EXPECT_TRUE(decode(c.text) == c.bytes) << "row: " << c.text;
  }
  uint32_t count = 0;
  std::string out;
  decodeBase64(nullptr, 0, out, count);
  decodeBase64("TWFu", -4, out, count);
  EXPECT_EQ(count, 0u);
}

TEST(DecodeBase64Test, RoundTripsAnyBytesWithLineBreaksBetweenGroups) {
  std::mt19937 random(7);
  for (size_t size : {0u, 1u, 2u, 3u, 57u, 1000u, 4099u}) {
    std::string bytes(size, '\0');
    for (char& b : bytes) b = static_cast<char>(random() & 0xFF);
    const std::string plain = toBase64(bytes);
    std::string wrapped;
    for (size_t i = 0; i < plain.size(); i += 76) {
      wrapped += (i == 0 ? "" : i % 152 == 0 ? "\n" : "\r\n") + plain.substr(i, 76);
    }
    EXPECT_TRUE(decode(plain) == bytes) << "size " << size;
    EXPECT_TRUE(decode(wrapped) == bytes) << "size " << size << " with line breaks";
  }
}

TEST(SaveThumbNailTest, WritesTheBytesMakingFoldersAndReplacingOldOnes) {
  TempDir tmp;
  const std::string file = tmp.path() + "/a/b/c/thumb.psd.2.jpg";
  const std::wstring path = pellix_test::windowsPath(tmp.path()) + L"\\a\\b\\c\\thumb.psd.2.jpg";
  const std::string long_bytes(5000, '\x7f'), short_bytes = "\xff\xd8\xff";
  U::saveThumbNail(path, toBase64(long_bytes));
  EXPECT_TRUE(pellix_test::readFile(file) == long_bytes);
  U::saveThumbNail(path, toBase64(short_bytes));
  EXPECT_TRUE(pellix_test::readFile(file) == short_bytes) << "only the later bytes";
  EXPECT_FALSE(pellix_test::fileExists(file + ".partial"));
}

TEST(SaveThumbNailTest, NothingToWriteIsToldOnTheStandardOutput) {
  TempDir tmp;
  const std::string blocker = tmp.write("blocker", "a file where a folder should be");
  const std::wstring dir = pellix_test::windowsPath(tmp.path());
  struct Case {
    std::wstring path;
    std::string image;
    const char* told;
  } cases[] = {
      {L"", "TWFu", "ThumbNailCommUtils::saveThumbNail thumbnail path is empty\n"},
      {dir + L"\\x.jpg", "", "ThumbNailCommUtils::saveThumbNail thumbnail image is empty\n"},
      {dir + L"\\blocker\\sub\\x.jpg", "TWFu",
       "ThumbNailCommUtils::saveThumbNail create_directories failed, folder:"},
  };
  for (const Case& c : cases) {
    testing::internal::CaptureStdout();
    U::saveThumbNail(c.path, c.image);
    const std::string told = testing::internal::GetCapturedStdout();
    EXPECT_EQ(told.rfind(c.told, 0), 0u) << told;
  }
  EXPECT_FALSE(pellix_test::fileExists(tmp.path() + "/x.jpg"));
  EXPECT_EQ(pellix_test::readFile(blocker), "a file where a folder should be");
}

}  // namespace

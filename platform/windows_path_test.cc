#include "platform/windows_path.h"

#include <gtest/gtest.h>

namespace platform {
namespace {

const std::vector<DriveRoot> kDrives = {
    {L'C', "/home/ann"}, {L'D', "/mnt/data"}, {L'E', "/mnt/data/inner"}, {L'Z', "/"}};

TEST(WindowsToPosixTest, MapsThroughTheDriveTable) {
  struct Case {
    const wchar_t* windows;
    bool ok;
    const char* posix;
  } cases[] = {
      {L"C:\\designs\\logo.psd", true, "/home/ann/designs/logo.psd"},
      {L"c:\\designs\\logo.psd", true, "/home/ann/designs/logo.psd"},
      {L"C:/designs/logo.psd", true, "/home/ann/designs/logo.psd"},
      {L"C:\\", true, "/home/ann"},
      {L"C:", true, "/home/ann"},
      {L"C:\\a\\\\b\\", true, "/home/ann/a/b"},
      {L"D:\\a//b", true, "/mnt/data/a/b"},
      {L"\\\\?\\D:\\long\\name.jpg", true, "/mnt/data/long/name.jpg"},
      {L"D:\\App\\x64\\..\\Utils\\gm.exe", true, "/mnt/data/App/Utils/gm.exe"},
      {L"D:\\.\\a\\.\\b", true, "/mnt/data/a/b"},
      {L"D:\\..\\..\\etc", true, "/mnt/data/etc"},
      {L"Z:\\etc\\hosts", true, "/etc/hosts"},
      {L"Z:\\", true, "/"},
      {L"Y:\\nothing", false, ""},
      {L"\\\\server\\share\\a", false, ""},
      {L"\\\\?\\UNC\\server\\share\\a", false, ""},
      {L"\\\\.\\C:\\a", false, ""},
      {L"relative\\a", false, ""},
      {L"\\rooted\\a", false, ""},
      {L"", false, ""},
      {L"1:\\a", false, ""},
  };
  for (const Case& c : cases) {
    std::string posix;
    bool ok = WindowsToPosix(c.windows, kDrives, &posix);
    EXPECT_EQ(ok, c.ok) << "row: " << Utf16ToFileName(c.windows);
    if (ok && c.ok) {
      EXPECT_EQ(posix, c.posix) << "row: " << Utf16ToFileName(c.windows);
    }
  }
}

TEST(WindowsToPosixTest, RefusesTextWithANul) {
  std::string posix;
  EXPECT_FALSE(WindowsToPosix(std::wstring(L"C:\\a\0b", 6), kDrives, &posix));
}

TEST(PosixToWindowsTest, LongestRootWins) {
  struct Case {
    const char* posix;
    bool ok;
    const wchar_t* windows;
  } cases[] = {
      {"/home/ann/designs/logo.psd", true, L"C:\\designs\\logo.psd"},
      {"/home/ann", true, L"C:\\"},
      {"/home/anna/x", true, L"Z:\\home\\anna\\x"},
      {"/mnt/data/inner/x.png", true, L"E:\\x.png"},
      {"/mnt/data/innerx.png", true, L"D:\\innerx.png"},
      {"/mnt/data/./a/../b", true, L"D:\\b"},
      {"//etc//hosts", true, L"Z:\\etc\\hosts"},
      {"/", true, L"Z:\\"},
      {"relative/a", false, L""},
      {"", false, L""},
  };
  for (const Case& c : cases) {
    std::wstring windows;
    bool ok = PosixToWindows(c.posix, kDrives, &windows);
    EXPECT_EQ(ok, c.ok) << "row: " << c.posix;
    if (ok && c.ok) {
      EXPECT_EQ(windows, c.windows) << "row: " << c.posix;
    }
  }
}

TEST(PosixToWindowsTest, NoDriveHoldsAPathOutsideAllRoots) {
  std::wstring windows;
  EXPECT_FALSE(PosixToWindows("/srv/x", {{L'C', "/home/ann"}}, &windows));
}

TEST(FileNameTextTest, RoundTripsEveryName) {
  const std::string names[] = {
      "plain.jpg",
      "\xE6\xA0\xA1\xE9\xAA\x8C.psd",      // 校验
      "\xF0\x9F\x98\x80 smile.png",        // U+1F600, a surrogate pair in wide text
      "bad\xFF\xFE" "bytes",                // not UTF-8 at all
      "cut\xE6\xA0",                       // a truncated sequence
      "\xC0\xAF overlong",                 // an overlong '/'
      "\xED\xA0\x80 encoded surrogate",    // an encoded surrogate isn't well-formed UTF-8
  };
  for (const std::string& name : names) {
    EXPECT_EQ(Utf16ToFileName(FileNameToUtf16(name)), name) << "row: " << name;
  }
}

TEST(FileNameTextTest, DecodesWellFormedTextToUtf16Units) {
  EXPECT_EQ(FileNameToUtf16("\xE6\xA0\xA1"), std::wstring(1, 0x6821));
  EXPECT_EQ(FileNameToUtf16("\xF0\x9F\x98\x80"), (std::wstring{wchar_t(0xD83D), wchar_t(0xDE00)}));
  EXPECT_EQ(FileNameToUtf16("\xFF"), std::wstring(1, 0xDCFF));
  // A code point held whole (as a host using 32-bit wide text might) maps like its pair.
  EXPECT_EQ(Utf16ToFileName(std::wstring(1, 0x1F600)), "\xF0\x9F\x98\x80");
}

}  // namespace
}  // namespace platform

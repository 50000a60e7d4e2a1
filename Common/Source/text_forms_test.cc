#include "Common/Source/text_forms.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "Common/Source/common_helper_mini.h"
#include "platform/env.h"
#include "testing/test_support.h"

namespace {

TEST(Utf8FormTest, EachUtf16UnitIsEncodedByItself) {
  // U+1F600 is the pair D83D DE00: two three-byte sequences, six bytes.
  const std::wstring smile{wchar_t(0xD83D), wchar_t(0xDE00)};
  EXPECT_EQ(wsToUtf8(smile), "\xED\xA0\xBD\xED\xB8\x80");
  EXPECT_EQ(wsToUtf8(std::wstring(1, 0x1F600)), "\xED\xA0\xBD\xED\xB8\x80");
  EXPECT_EQ(wsToUtf8(L"a\u00e9\u6821"), "a\xC3\xA9\xE6\xA0\xA1");
  EXPECT_EQ(wsToUtf8(L""), "");
}

TEST(Utf8FormTest, ReadingBackRestoresWhatWasWritten) {
  const std::wstring texts[] = {L"D:\\设计\\logo.psd", std::wstring{wchar_t(0xD83D), wchar_t(0xDE00)},
                                std::wstring(1, 0xDC80), L""};
  for (const std::wstring& t : texts) EXPECT_EQ(utf8ToWs(wsToUtf8(t)), t);
  // A four-byte form keeps the low 16 bits of its code point.
  EXPECT_EQ(utf8ToWs("\xF0\x9F\x98\x80"), std::wstring(1, 0xF600));
}

TEST(Utf8FormTest, MalformedInputGivesEmptyTextAndOneLineOnStderr) {
  for (const std::string bad : {"ok\xE6\xA0", "\xC0\xAF", "\xFF", "\x80"}) {
    testing::internal::CaptureStderr();
    EXPECT_EQ(utf8ToWs(bad), L"") << "row: " << bad;
    const std::string err = testing::internal::GetCapturedStderr();
    EXPECT_EQ(err.rfind("Exception caught: ", 0), 0u) << err;
    EXPECT_EQ(std::count(err.begin(), err.end(), '\n'), 1);
  }
}

TEST(CodeConvTest, RoundTripsThroughTheDefaultLocale) {
  const std::wstring path = L"D:\\设计\\标志 1.psd";
  const std::string narrow = CodeConv::ws2s(path);
  EXPECT_EQ(narrow, wsToUtf8(path));  // this platform's narrow text is UTF-8
  EXPECT_EQ(CodeConv::s2ws(narrow), path);
  const std::wstring smile{wchar_t(0xD83D), wchar_t(0xDE00)};
  EXPECT_EQ(CodeConv::ws2s(smile), "\xF0\x9F\x98\x80");  // the pair is one character here
  EXPECT_EQ(CodeConv::s2ws("\xF0\x9F\x98\x80"), smile);
  EXPECT_EQ(CodeConv::ws2s(L""), "");
}

TEST(CodeConvTest, UnconvertibleTextIsEmptyWithAMessage) {
  testing::internal::CaptureStdout();
  EXPECT_EQ(CodeConv::ws2s(std::wstring(1, 0xD800)), "");  // a lone surrogate
  EXPECT_EQ(testing::internal::GetCapturedStdout(), "convert error!\n");
  testing::internal::CaptureStdout();
  EXPECT_EQ(CodeConv::s2ws("\xFF\xFE"), L"");
  EXPECT_NE(testing::internal::GetCapturedStdout().find("CodeConv::s2ws"), std::string::npos);
}

TEST(NarrowPathTest, ProbeFindsUtf8AndLeavesItsFolder) {
  EXPECT_TRUE(isNarrowPathUtf8());
  EXPECT_TRUE(platform::Env::Default()->IsFolder(getExeDir() + L"\\校验"));
  std::string out;
  EXPECT_TRUE(wsToNarrowPath(L"C:\\标志.psd", out));
  EXPECT_EQ(out, "C:\\\xE6\xA0\x87\xE5\xBF\x97.psd");
  EXPECT_EQ(wsToNarrowPath(L"C:\\a.psd"), "C:\\a.psd");
}

TEST(FormatTextTest, FormatsLikePrintf) {
  EXPECT_EQ(formatText("%s-%d", "page", 3), "page-3");
  const char* no_format = nullptr;
  EXPECT_EQ(formatText(no_format), "");
  EXPECT_EQ(formatText("%s", ""), "");
  EXPECT_EQ(formatText("%0300d", 7).size(), 300u);
}

}  // namespace

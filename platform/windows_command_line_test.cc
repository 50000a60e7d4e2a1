#include "platform/windows_command_line.h"

#include <gtest/gtest.h>

#include <random>

#include "platform/windows_path.h"
#include "testing/test_support.h"

namespace platform {
namespace {

std::string Show(const std::vector<std::wstring>& args) {
  std::string text;
  for (const std::wstring& a : args) text += "[" + Utf16ToFileName(a) + "]";
  return text;
}

TEST(SplitWindowsArgumentsTest, QuotesBackslashesAndBlanks) {
  struct Case {
    const wchar_t* line;
    std::vector<std::wstring> args;
  } cases[] = {
      {L"", {}},
      {L"   \t ", {}},
      {L"a b\tc", {L"a", L"b", L"c"}},
      {L"  a   b  ", {L"a", L"b"}},
      {L"\"a b c\" d e", {L"a b c", L"d", L"e"}},
      {L"\"ab\\\"c\" \"\\\\\" d", {L"ab\"c", L"\\", L"d"}},
      {L"a\\\\\\b d\"e f\"g h", {L"a\\\\\\b", L"de fg", L"h"}},
      {L"a\\\\\\\"b c d", {L"a\\\"b", L"c", L"d"}},
      {L"a\\\\\\\\\"b c\" d e", {L"a\\\\b c", L"d", L"e"}},
      // A doubled quote inside quotes is one quote and ends the quoted part.
      {L"a\"b\"\" c d", {L"ab\"", L"c", L"d"}},
      {L"\"a\"\"b c\"", {L"a\"b", L"c"}},
      {L"\"\"\"a b\"", {L"\"a", L"b"}},
      {L"\"\"\"\"a b\"", {L"\"a b"}},
      // Outside quotes a pair of quotes opens and closes: an empty argument.
      {L"a \"\" b", {L"a", L"", L"b"}},
      {L"\"\"", {L""}},
      {L"\"unclosed arg", {L"unclosed arg"}},
      // Backslashes are plain characters unless quotes follow them.
      {L"C:\\a\\b\\ D:\\", {L"C:\\a\\b\\", L"D:\\"}},
      {L"\"C:\\dir with blank\\\\\" x", {L"C:\\dir with blank\\", L"x"}},
      {L"\"C:\\dir with blank\\\" x", {L"C:\\dir with blank\" x"}},
      {L"x\\\\", {L"x\\\\"}},
      // Newlines are not separators.
      {L"a\nb c", {L"a\nb", L"c"}},
      // The kernel's own lines: a percent sign doubled for the converter stays as written.
      {L" -sOutputFile=\"E:\\100%%\\a.pdf.%d.jpg\" \"D:\\a b.pdf\"",
       {L"-sOutputFile=E:\\100%%\\a.pdf.%d.jpg", L"D:\\a b.pdf"}},
      {L" convert -size 800x600 \"D:\\图 1.tif\" +profile \"*\" \"E:\\o.jpg\"",
       {L"convert", L"-size", L"800x600", L"D:\\图 1.tif", L"+profile", L"*", L"E:\\o.jpg"}},
  };
  for (const Case& c : cases) {
    EXPECT_EQ(Show(SplitWindowsArguments(c.line)), Show(c.args))
        << "row: " << Utf16ToFileName(c.line);
  }
}

TEST(SplitWindowsCommandLineTest, TheProgramNameHasItsOwnRules) {
  struct Case {
    const wchar_t* line;
    std::vector<std::wstring> args;
  } cases[] = {
      {L"", {}},
      {L"prog", {L"prog"}},
      {L"prog a b", {L"prog", L"a", L"b"}},
      {L"\"C:\\Program Files\\gm.exe\" a", {L"C:\\Program Files\\gm.exe", L"a"}},
      // Backslashes before a quote don't escape it in the program's name.
      {L"\"C:\\a\\\" b c", {L"C:\\a\\", L"b", L"c"}},
      // Without quotes the name ends at the first blank; a quote in it is a character.
      {L"C:\\x\"y z", {L"C:\\x\"y", L"z"}},
      {L"C:\\a\\b.exe \"x y\"", {L"C:\\a\\b.exe", L"x y"}},
      // What follows the closing quote at once begins the next argument.
      {L"\"C:\\a.exe\"b c", {L"C:\\a.exe", L"b", L"c"}},
      {L"\"unclosed name", {L"unclosed name"}},
      {L"\"\" a", {L"", L"a"}},
      // A line that begins with a blank has an empty program name.
      {L" a b", {L"", L"a", L"b"}},
      {L"prog\t\t", {L"prog"}},
  };
  for (const Case& c : cases) {
    EXPECT_EQ(Show(SplitWindowsCommandLine(c.line)), Show(c.args))
        << "row: " << Utf16ToFileName(c.line);
  }
}

TEST(SplitWindowsArgumentsTest, QuotedArgumentsComeBackWhole) {
  const std::wstring alphabet = L"a \t\"\\图$;()'%*";
  std::mt19937 random(20261123);
  for (int round = 0; round < 2000; ++round) {
    std::vector<std::wstring> args(1 + random() % 4);
    for (std::wstring& a : args) {
      const size_t length = random() % 8;
      for (size_t i = 0; i < length; ++i) a.push_back(alphabet[random() % alphabet.size()]);
    }
    std::wstring line;
    for (const std::wstring& a : args) line += L" " + pellix_test::quoteWindowsArgument(a);
    ASSERT_EQ(Show(SplitWindowsArguments(line)), Show(args)) << "line: " << Utf16ToFileName(line);
    ASSERT_EQ(Show(SplitWindowsCommandLine(L"\"C:\\p q\\x.exe\"" + line)),
              "[C:\\p q\\x.exe]" + Show(args))
        << "line: " << Utf16ToFileName(line);
  }
}

}  // namespace
}  // namespace platform

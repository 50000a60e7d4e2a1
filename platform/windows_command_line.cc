#include "platform/windows_command_line.h"

namespace platform {
namespace {

bool IsBlank(wchar_t c) { return c == L' ' || c == L'\t'; }

}  // namespace

std::vector<std::wstring> SplitWindowsArguments(const std::wstring& arguments) {
  std::vector<std::wstring> args;
  std::wstring current;
  bool started = false;  // `current` is an argument, even if an empty one
  bool in_quotes = false;
  size_t backslashes = 0;  // backslashes seen but not yet written

  const size_t n = arguments.size();
  for (size_t i = 0; i < n; ++i) {
    const wchar_t c = arguments[i];
    if (c == L'\\') {
      ++backslashes;
      started = true;
      continue;
    }
    if (c == L'"') {
      current.append(backslashes / 2, L'\\');
      const bool escaped = backslashes % 2 == 1;
      backslashes = 0;
      started = true;
      if (escaped) {
        current.push_back(L'"');
      } else if (in_quotes && i + 1 < n && arguments[i + 1] == L'"') {
        // A doubled quote inside quotes: one quote character, and the quoted part ends.
        current.push_back(L'"');
        ++i;
        in_quotes = false;
      } else {
        in_quotes = !in_quotes;
      }
      continue;
    }
    current.append(backslashes, L'\\');
    backslashes = 0;
    if (IsBlank(c) && !in_quotes) {
      if (started) args.push_back(current);
      current.clear();
      started = false;
      continue;
    }
    current.push_back(c);
    started = true;
  }
  current.append(backslashes, L'\\');
  if (started) args.push_back(current);
  return args;
}

std::vector<std::wstring> SplitWindowsCommandLine(const std::wstring& line) {
  if (line.empty()) return {};
  size_t i = 0;
  std::wstring program;
  if (line[0] == L'"') {
    const size_t close = line.find(L'"', 1);
    program = line.substr(1, close == std::wstring::npos ? std::wstring::npos : close - 1);
    i = close == std::wstring::npos ? line.size() : close + 1;
  } else {
    while (i < line.size() && !IsBlank(line[i])) ++i;
    program = line.substr(0, i);
  }
  std::vector<std::wstring> args = SplitWindowsArguments(line.substr(i));
  args.insert(args.begin(), program);
  return args;
}

}  // namespace platform

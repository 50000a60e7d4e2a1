#include "platform/windows_path.h"

#include <cstdint>

namespace platform {
namespace {

constexpr char32_t kEscapeBase = 0xDC00;  // lone surrogates U+DC80..U+DCFF carry raw bytes

void AppendUtf8(char32_t cp, std::string* out) {
  if (cp < 0x80) {
    out->push_back(static_cast<char>(cp));
  } else if (cp < 0x800) {
    out->push_back(static_cast<char>(0xC0 | (cp >> 6)));
    out->push_back(static_cast<char>(0x80 | (cp & 0x3F)));
  } else if (cp < 0x10000) {
    out->push_back(static_cast<char>(0xE0 | (cp >> 12)));
    out->push_back(static_cast<char>(0x80 | ((cp >> 6) & 0x3F)));
    out->push_back(static_cast<char>(0x80 | (cp & 0x3F)));
  } else {
    out->push_back(static_cast<char>(0xF0 | (cp >> 18)));
    out->push_back(static_cast<char>(0x80 | ((cp >> 12) & 0x3F)));
    out->push_back(static_cast<char>(0x80 | ((cp >> 6) & 0x3F)));
    out->push_back(static_cast<char>(0x80 | (cp & 0x3F)));
  }
}

bool IsHighSurrogate(char32_t u) { return u >= 0xD800 && u <= 0xDBFF; }
bool IsLowSurrogate(char32_t u) { return u >= 0xDC00 && u <= 0xDFFF; }
bool IsSeparator(wchar_t c) { return c == L'\\' || c == L'/'; }

wchar_t UpperLetter(wchar_t c) {
  if (c >= L'a' && c <= L'z') return static_cast<wchar_t>(c - L'a' + L'A');
  return c;
}

// Splits `text` at any of the separators, dropping empty parts and "." and resolving ".."
// against what came before (never above the root).
template <typename Str, typename IsSep>
std::vector<Str> ResolveParts(const Str& text, IsSep is_sep) {
  std::vector<Str> parts;
  size_t start = 0;
  while (start <= text.size()) {
    size_t end = start;
    while (end < text.size() && !is_sep(text[end])) ++end;
    Str part = text.substr(start, end - start);
    if (part.size() == 2 && part[0] == '.' && part[1] == '.') {
      if (!parts.empty()) parts.pop_back();
    } else if (!part.empty() && !(part.size() == 1 && part[0] == '.')) {
      parts.push_back(part);
    }
    start = end + 1;
  }
  return parts;
}

}  // namespace

std::string Utf16ToFileName(const std::wstring& text) {
  std::string out;
  out.reserve(text.size());
  for (size_t i = 0; i < text.size(); ++i) {
    char32_t u = static_cast<char32_t>(text[i]);
    if (IsHighSurrogate(u) && i + 1 < text.size() &&
        IsLowSurrogate(static_cast<char32_t>(text[i + 1]))) {
      char32_t low = static_cast<char32_t>(text[++i]);
      AppendUtf8(0x10000 + ((u - 0xD800) << 10) + (low - 0xDC00), &out);
    } else if (u >= kEscapeBase + 0x80 && u <= kEscapeBase + 0xFF) {
      out.push_back(static_cast<char>(u - kEscapeBase));
    } else if (u > 0x10FFFF) {
      AppendUtf8(0xFFFD, &out);
    } else {
      AppendUtf8(u, &out);
    }
  }
  return out;
}

std::wstring FileNameToUtf16(const std::string& name) {
  std::wstring out;
  out.reserve(name.size());
  const auto* s = reinterpret_cast<const unsigned char*>(name.data());
  const size_t n = name.size();
  size_t i = 0;
  while (i < n) {
    unsigned char b = s[i];
    if (b < 0x80) {
      out.push_back(static_cast<wchar_t>(b));
      ++i;
      continue;
    }
    size_t len = 0;
    char32_t cp = 0;
    char32_t min = 0;
    if ((b & 0xE0) == 0xC0) {
      len = 2, cp = b & 0x1F, min = 0x80;
    } else if ((b & 0xF0) == 0xE0) {
      len = 3, cp = b & 0x0F, min = 0x800;
    } else if ((b & 0xF8) == 0xF0) {
      len = 4, cp = b & 0x07, min = 0x10000;
    }
    bool ok = len != 0 && i + len <= n;
    for (size_t k = 1; ok && k < len; ++k) {
      if ((s[i + k] & 0xC0) != 0x80) ok = false;
      cp = (cp << 6) | (s[i + k] & 0x3F);
    }
    // Overlong forms, values beyond Unicode and encoded surrogates aren't well-formed.
    if (ok && (cp < min || cp > 0x10FFFF || (cp >= 0xD800 && cp <= 0xDFFF))) ok = false;
    if (!ok) {
      out.push_back(static_cast<wchar_t>(kEscapeBase + b));
      ++i;
      continue;
    }
    if (cp >= 0x10000) {
      cp -= 0x10000;
      out.push_back(static_cast<wchar_t>(0xD800 + (cp >> 10)));
      out.push_back(static_cast<wchar_t>(0xDC00 + (cp & 0x3FF)));
    } else {
      out.push_back(static_cast<wchar_t>(cp));
    }
    i += len;
  }
  return out;
}

std::wstring StripLongPathPrefix(const std::wstring& path) {
  if (path.size() >= 4 && path.compare(0, 4, L"\\\\?\\") == 0) return path.substr(4);
  return path;
}

bool WindowsToPosix(const std::wstring& windows_path, const std::vector<DriveRoot>& drives,
                    std::string* posix_path) {
  if (windows_path.find(L'\0') != std::wstring::npos) return false;
  std::wstring path = StripLongPathPrefix(windows_path);
  // UNC ("\\server\share", "\\?\UNC\...") and device paths ("\\.\") have no drive here.
  if (path.size() < 2 || path[1] != L':') return false;
  wchar_t letter = UpperLetter(path[0]);
  if (letter < L'A' || letter > L'Z') return false;
  const DriveRoot* drive = nullptr;
  for (const DriveRoot& d : drives) {
    if (d.letter == letter) drive = &d;
  }
  if (drive == nullptr) return false;

  std::string out = drive->posix_root;
  for (const std::wstring& part : ResolveParts(path.substr(2), IsSeparator)) {
    if (out.empty() || out.back() != '/') out.push_back('/');
    out += Utf16ToFileName(part);
  }
  if (out.empty()) out.push_back('/');
  *posix_path = out;
  return true;
}

std::string NormalizePosixPath(const std::string& path) {
  std::string out;
  for (const std::string& part : ResolveParts(path, [](char c) { return c == '/'; })) {
    out += '/';
    out += part;
  }
  return out.empty() ? "/" : out;
}

bool PosixToWindows(const std::string& posix_path, const std::vector<DriveRoot>& drives,
                    std::wstring* windows_path) {
  if (posix_path.empty() || posix_path[0] != '/') return false;
  const std::string path = NormalizePosixPath(posix_path);
  const DriveRoot* best = nullptr;
  size_t best_len = 0;
  for (const DriveRoot& d : drives) {
    const std::string root = NormalizePosixPath(d.posix_root);
    bool holds = root == "/" ||
                 (path.compare(0, root.size(), root) == 0 &&
                  (path.size() == root.size() || path[root.size()] == '/'));
    size_t len = root == "/" ? 0 : root.size();
    if (holds && (best == nullptr || len > best_len)) best = &d, best_len = len;
  }
  if (best == nullptr) return false;
  std::wstring out;
  out.push_back(best->letter);
  out += L":\\";
  std::string rest = path.substr(best_len);
  if (!rest.empty() && rest[0] == '/') rest.erase(0, 1);
  std::wstring wide_rest = FileNameToUtf16(rest);
  for (wchar_t& c : wide_rest) {
    if (c == L'/') c = L'\\';
  }
  *windows_path = out + wide_rest;
  return true;
}

}  // namespace platform

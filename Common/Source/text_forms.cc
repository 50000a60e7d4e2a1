#include "Common/Source/text_forms.h"

#include <atomic>
#include <cstdarg>
#include <cstdio>
#include <iostream>
#include <locale>
#include <stdexcept>
#include <vector>

#include "Common/Source/common_helper_mini.h"
#include "platform/env.h"

namespace {

// Wide text as code points, surrogate pairs joined, for the locale's conversion facet.
std::wstring toCodePoints(const std::wstring& units) {
  std::wstring out;
  out.reserve(units.size());
  for (size_t i = 0; i < units.size(); ++i) {
    wchar_t u = units[i];
    if (u >= 0xD800 && u <= 0xDBFF && i + 1 < units.size() && units[i + 1] >= 0xDC00 &&
        units[i + 1] <= 0xDFFF) {
      out.push_back(static_cast<wchar_t>(0x10000 + ((u - 0xD800) << 10) + (units[i + 1] - 0xDC00)));
      ++i;
    } else {
      out.push_back(u);
    }
  }
  return out;
}

// Code points as UTF-16 units, one per wchar_t.
std::wstring toUnits(const std::wstring& code_points) {
  std::wstring out;
  out.reserve(code_points.size());
  for (wchar_t c : code_points) {
    auto cp = static_cast<unsigned long>(c);
    if (cp >= 0x10000 && cp <= 0x10FFFF) {
      cp -= 0x10000;
      out.push_back(static_cast<wchar_t>(0xD800 + (cp >> 10)));
      out.push_back(static_cast<wchar_t>(0xDC00 + (cp & 0x3FF)));
    } else {
      out.push_back(c);
    }
  }
  return out;
}

// The user's default locale. Where the environment names none (the "C" locale), file names
// and text on this platform are UTF-8 all the same, so that is the encoding taken.
std::locale defaultLocale() {
  std::locale loc = std::locale("");
  if (loc.name() == "C" || loc.name() == "POSIX") {
    try {
      loc = std::locale("C.UTF-8");
    } catch (const std::runtime_error&) {
    }
  }
  return loc;
}

using WideFacet = std::codecvt<wchar_t, char, std::mbstate_t>;

void appendUnitAsUtf8(unsigned u, std::string* out) {
  if (u < 0x80) {
    out->push_back(static_cast<char>(u));
  } else if (u < 0x800) {
    out->push_back(static_cast<char>(0xC0 | (u >> 6)));
    out->push_back(static_cast<char>(0x80 | (u & 0x3F)));
  } else {
    out->push_back(static_cast<char>(0xE0 | (u >> 12)));
    out->push_back(static_cast<char>(0x80 | ((u >> 6) & 0x3F)));
    out->push_back(static_cast<char>(0x80 | (u & 0x3F)));
  }
}

std::wstring decodeUtf8Units(const std::string& text) {
  std::wstring out;
  out.reserve(text.size());
  const auto* s = reinterpret_cast<const unsigned char*>(text.data());
  const size_t n = text.size();
  for (size_t i = 0; i < n;) {
    unsigned char b = s[i];
    size_t len = b < 0x80 ? 1 : (b & 0xE0) == 0xC0 ? 2 : (b & 0xF0) == 0xE0 ? 3
                            : (b & 0xF8) == 0xF0   ? 4
                                                   : 0;
    if (len == 0 || i + len > n) throw std::range_error("utf8ToWs: bad UTF-8 sequence");
    unsigned long cp = len == 1 ? b : len == 2 ? (b & 0x1Fu) : len == 3 ? (b & 0x0Fu) : (b & 0x07u);
    for (size_t k = 1; k < len; ++k) {
      if ((s[i + k] & 0xC0) != 0x80) throw std::range_error("utf8ToWs: bad UTF-8 sequence");
      cp = (cp << 6) | (s[i + k] & 0x3Fu);
    }
    static const unsigned long kMin[] = {0, 0, 0x80, 0x800, 0x10000};
    if (cp < kMin[len] || cp > 0x10FFFF) throw std::range_error("utf8ToWs: bad UTF-8 sequence");
    out.push_back(static_cast<wchar_t>(cp & 0xFFFF));
    i += len;
  }
  return out;
}

}  // namespace

std::string wsToUtf8(const std::wstring& wide) {
  std::string out;
  out.reserve(wide.size() * 3);
  for (wchar_t c : wide) {
    auto u = static_cast<unsigned long>(c);
    if (u > 0xFFFF) {
      // Held as a code point rather than as units: encode the two units it stands for.
      u -= 0x10000;
      appendUnitAsUtf8(static_cast<unsigned>(0xD800 + ((u >> 10) & 0x3FF)), &out);
      appendUnitAsUtf8(static_cast<unsigned>(0xDC00 + (u & 0x3FF)), &out);
    } else {
      appendUnitAsUtf8(static_cast<unsigned>(u), &out);
    }
  }
  return out;
}

std::wstring utf8ToWs(const std::string& text) {
  try {
    return decodeUtf8Units(text);
  } catch (const std::exception& e) {
    std::cerr << "Exception caught: " << e.what() << std::endl;
  } catch (...) {
    std::cerr << "Unknown exception caught!" << std::endl;
  }
  return std::wstring();
}

std::string CodeConv::ws2s(const std::wstring& wide) {
  if (wide.empty()) return std::string();
  try {
    const std::locale loc = defaultLocale();
    const auto& facet = std::use_facet<WideFacet>(loc);
    const std::wstring points = toCodePoints(wide);
    std::vector<char> buf(points.size() * 4 + 4, '\0');
    std::mbstate_t state{};
    const wchar_t* from_next = nullptr;
    char* to_next = nullptr;
    auto result = facet.out(state, points.data(), points.data() + points.size(), from_next,
                            buf.data(), buf.data() + buf.size(), to_next);
    if (result != WideFacet::ok) {
      std::cout << "convert error!\n";
      return std::string();
    }
    return std::string(buf.data());
  } catch (const std::exception& e) {
    std::cout << "CodeConv::ws2s" << " exception:" << e.what() << std::endl;
  }
  return std::string();
}

std::wstring CodeConv::s2ws(const std::string& text) {
  if (text.empty()) return std::wstring();
  try {
    const std::locale loc = defaultLocale();
    const auto& facet = std::use_facet<WideFacet>(loc);
    std::vector<wchar_t> buf(text.size() + 1, L'\0');
    std::mbstate_t state{};
    const char* from_next = nullptr;
    wchar_t* to_next = nullptr;
    auto result = facet.in(state, text.data(), text.data() + text.size(), from_next, buf.data(),
                           buf.data() + buf.size(), to_next);
    if (result != WideFacet::ok) {
      std::printf("%s %d called convert error!\n", "CodeConv::s2ws", __LINE__);
      return std::wstring();
    }
    return toUnits(std::wstring(buf.data()));
  } catch (const std::exception& e) {
    std::cout << "CodeConv::s2ws" << " exception:" << e.what() << std::endl;
  }
  return std::wstring();
}

bool isNarrowPathUtf8() {
  static std::atomic<bool> probed{false};
  static std::atomic<bool> result{false};
  if (probed.load()) return result.load();
  const std::wstring probe_dir = getExeDir() + L"\\校验";
  common_hepler::createDirIfNotExistQuiet(probe_dir);
  const std::string probe_u8 = wsToUtf8(probe_dir);
  platform::Env* env = platform::Env::Default();
  result.store(env->PathExists(probe_dir) && env->PathExists(env->WidenNarrowPath(probe_u8)));
  probed.store(true);
  return result.load();
}

bool wsToNarrowPath(const std::wstring& wide, std::string& out) {
  if (isNarrowPathUtf8()) {
    out = wsToUtf8(wide);
    return true;
  }
  out.clear();
  try {
    return platform::Env::Default()->WideToCodePage(wide, 936, &out);
  } catch (const std::exception& e) {
    std::cout << "Exception:" << e.what() << std::endl;
  }
  return false;
}

std::string wsToNarrowPath(const std::wstring& wide) {
  std::string out;
  if (!wsToNarrowPath(wide, out)) std::cout << " failed for " << wsToUtf8(wide) << std::endl;
  return out;
}

std::string formatText(const char* format, ...) {
  if (format == nullptr) return std::string();
  va_list args;
  va_start(args, format);
  va_list copy;
  va_copy(copy, args);
  int len = std::vsnprintf(nullptr, 0, format, copy);
  va_end(copy);
  std::string out;
  if (len > 0) {
    std::vector<char> buf(static_cast<size_t>(len) + 1, '\0');
    if (std::vsnprintf(buf.data(), buf.size(), format, args) > 0) out = buf.data();
  }
  va_end(args);
  return out;
}

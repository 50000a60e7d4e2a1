// Conversions between the kernel's three text forms: wide text (UTF-16 code units, one per
// wchar_t), UTF-8 for the database, logs and digests, and narrow text for narrow file calls.
#ifndef COMMON_SOURCE_TEXT_FORMS_H_
#define COMMON_SOURCE_TEXT_FORMS_H_

#include <string>

// Each 16-bit unit on its own as one to three bytes; surrogates aren't paired, so a
// character above U+FFFF gives two three-byte sequences. Can't fail.
std::string wsToUtf8(const std::wstring& wide);

// The reverse of wsToUtf8: restores exactly what it made. A four-byte sequence keeps the low
// 16 bits of its code point. Malformed input gives the empty string and one line on the
// standard error stream.
std::wstring utf8ToWs(const std::string& text);

// Conversions through the user's default locale.
class CodeConv {
 public:
  // Wide text to narrow text of the default locale; empty on failure.
  static std::string ws2s(const std::wstring& wide);
  // Narrow text of the default locale to wide text; empty on failure.
  static std::wstring s2ws(const std::string& text);
};

// Whether narrow file calls read their argument as UTF-8: probed once a process by making
// the folder "校验" beside the host program and looking for it by both names.
bool isNarrowPathUtf8();

// A narrow form of a path that narrow file calls accept: UTF-8 where they read UTF-8,
// otherwise code page 936. False when the path can't be converted.
bool wsToNarrowPath(const std::wstring& wide, std::string& out);

// The same; on failure it tells the standard output and gives what was converted.
std::string wsToNarrowPath(const std::wstring& wide);

// printf into a string; empty for a null format or a failed one.
std::string formatText(const char* format, ...) __attribute__((format(printf, 1, 2)));

#endif  // COMMON_SOURCE_TEXT_FORMS_H_

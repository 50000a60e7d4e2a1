// Thumbnail saving: Base64 text a document carries, written out as a preview file.
#include <array>
#include <iostream>

#include "Common/Source/ThumbNailCommUtils.h"
#include "Common/Source/common_helper_mini.h"
#include "Common/Source/text_forms.h"
#include "platform/env.h"

namespace {

// Values of the characters up to 'z'; everything outside the alphabet, '=' included, is 0.
constexpr std::array<uint8_t, 123> kBase64Values = [] {
  std::array<uint8_t, 123> table{};
  for (int c = 'A'; c <= 'Z'; ++c) table[c] = static_cast<uint8_t>(c - 'A');
  for (int c = 'a'; c <= 'z'; ++c) table[c] = static_cast<uint8_t>(c - 'a' + 26);
  for (int c = '0'; c <= '9'; ++c) table[c] = static_cast<uint8_t>(c - '0' + 52);
  table['+'] = 62;
  table['/'] = 63;
  return table;
}();

uint32_t valueOf(char c) {
  const auto code = static_cast<unsigned char>(c);
  return code < kBase64Values.size() ? kBase64Values[code] : 0;
}

void tell(const char* text, const std::wstring& path) {
  std::cout << "ThumbNailCommUtils::saveThumbNail" << text << wsToUtf8(path) << std::endl;
}

}  // namespace

void decodeBase64(const char* data, int32_t length, std::string& out_text, uint32_t& out_count) {
  out_text.clear();
  if (data == nullptr || length < 1) return;
  const char* p = data;
  const char* const end = data + length;
  int64_t i = 0;
  while (p < end) {
    if (*p == '\r' || *p == '\n') {
      ++p;
      ++i;
    } else {
      // A group cut off by the end of the data gives the bytes its characters carry.
      if (end - p < 2) return;
      uint32_t v = (valueOf(p[0]) << 18) + (valueOf(p[1]) << 12);
      p += 2;
      out_text.push_back(static_cast<char>((v >> 16) & 0xFF));
      ++out_count;
      if (p < end && *p != '=') {
        v += valueOf(*p++) << 6;
        out_text.push_back(static_cast<char>((v >> 8) & 0xFF));
        ++out_count;
        if (p < end && *p != '=') {
          out_text.push_back(static_cast<char>((v + valueOf(*p++)) & 0xFF));
          ++out_count;
        }
      }
      i += 4;
    }
    if (i >= length) return;
  }
}

void ThumbNailCommUtils::saveThumbNail(const std::wstring& path, const std::string& image) {
  if (path.empty()) {
    std::cout << "ThumbNailCommUtils::saveThumbNail" << " thumbnail path is empty" << std::endl;
    return;
  }
  if (image.empty()) {
    std::cout << "ThumbNailCommUtils::saveThumbNail" << " thumbnail image is empty" << std::endl;
    return;
  }
  platform::Env* env = platform::Env::Default();
  size_t cut = path.find_last_of(L"\\/");
  while (cut != std::wstring::npos && cut > 0 && (path[cut - 1] == L'\\' || path[cut - 1] == L'/'))
    --cut;
  const std::wstring folder = cut == std::wstring::npos ? std::wstring() : path.substr(0, cut);
  if (!folder.empty() && !env->IsFolder(folder) && !common_hepler::createDirIfNotExist(folder)) {
    tell(" create_directories failed, folder:", folder);
    return;
  }
  std::string bytes;
  uint32_t count = 0;
  decodeBase64(image.data(), static_cast<int32_t>(static_cast<uint32_t>(image.size())), bytes,
               count);
  bytes.resize(count);
  const std::wstring partial = path + L".partial";
  if (!env->WriteFile(partial, bytes).ok() || !env->RenameFile(partial, path).ok()) {
    env->DeleteFile(partial);
  }
}

// Preview paths: the regular scheme, the long-path tree, sizes and pages.
#include "Common/Source/ThumbNailCommUtils.h"

#include <cwctype>
#include <memory>
#include <mutex>

#include "Common/Source/FileCheckUtils.h"
#include "Common/Source/Md5Context.h"
#include "Common/Source/config_db.h"
#include "Common/Source/text_forms.h"
#include "device/DeviceCommUtils.h"

namespace {

constexpr wchar_t kLongPathMarker[] = L"\\KvnLongPath\\";
constexpr wchar_t kLongPathMarkerFolded[] = L"\\kvnlongpath\\";

bool isSeparator(wchar_t c) { return c == L'\\' || c == L'/'; }

std::wstring folded(const std::wstring& text) {
  std::wstring out = text;
  for (wchar_t& c : out) c = static_cast<wchar_t>(std::towlower(static_cast<wint_t>(c)));
  return out;
}

// What getLongPathThumb keeps for the life of the process: the settings, the preview type
// read once, and the serial of the drive asked for last.
struct LongPathState {
  std::shared_ptr<common_hepler::ConfigDB> config;
  std::wstring thumb_type;
  std::mutex serial_mutex;
  std::wstring serial;
  std::wstring drive;
};

LongPathState& longPathState() {
  static LongPathState* s_state = [] {
    auto* state = new LongPathState;
    state->config = common_hepler::ConfigDB::getInstance();
    state->thumb_type = state->config->getThumbType();
    return state;
  }();
  return *s_state;
}

}  // namespace

std::wstring ThumbNailCommUtils::getThumbPath(const std::wstring& source_path,
                                              const std::wstring& dst_folder) {
  if (source_path.empty() || dst_folder.empty()) return std::wstring();
  const std::wstring thumb_type = common_hepler::ConfigDB::getInstance()->getThumbType();
  return dst_folder + L"\\" + getFileNameOf(source_path) + L".1." + thumb_type;
}

std::wstring ThumbNailCommUtils::getLongPathThumb(const std::wstring& source_path) {
  const std::wstring path =
      utf8ToWs(FileCheckUtils::removeLongPathPrefix(wsToUtf8(source_path)));
  LongPathState& state = longPathState();
  if (path.empty() || state.thumb_type.empty()) return std::wstring();
  const std::wstring root = state.config->getThumbFileBasePath();
  const size_t cut = path.find(L'\\');
  const std::wstring drive = cut == std::wstring::npos ? path : path.substr(0, cut);
  const std::wstring rest = cut == std::wstring::npos ? std::wstring() : path.substr(cut + 1);
  std::wstring serial;
  {
    std::lock_guard<std::mutex> lock(state.serial_mutex);
    if (state.serial.empty() || folded(state.drive) != folded(drive)) {
      state.serial = DeviceCommUtils::getVolSerial(path);
      state.drive = drive;
    }
    serial = state.serial;
  }
  return root + kLongPathMarker + serial + L"\\mid\\" + utf8ToWs(getPathMd5(wsToUtf8(rest))) +
         L".jpg";
}

bool ThumbNailCommUtils::isLongPathThumb(const std::wstring& path) {
  if (path.find(kLongPathMarker) != std::wstring::npos) return true;
  return folded(path).find(kLongPathMarkerFolded) != std::wstring::npos;
}

std::wstring ThumbNailCommUtils::getMidMinSibling(const std::wstring& path) {
  size_t last = path.size();
  while (last > 0 && !isSeparator(path[last - 1])) --last;
  if (last == 0) return path;  // no parent
  const std::wstring file = path.substr(last);
  size_t parent_end = last - 1;
  while (parent_end > 0 && isSeparator(path[parent_end - 1])) --parent_end;
  if (parent_end == 0) return path;  // the parent is a bare root
  const std::wstring parent = path.substr(0, parent_end);
  size_t name_start = parent.size();
  while (name_start > 0 && !isSeparator(parent[name_start - 1])) --name_start;
  const std::wstring name = parent.substr(name_start);
  std::wstring other;
  if (name == L"mid") {
    other = L"min";
  } else if (name == L"min") {
    other = L"mid";
  } else {
    return path;
  }
  size_t grand_end = name_start;
  while (grand_end > 1 && isSeparator(parent[grand_end - 1]) &&
         isSeparator(parent[grand_end - 2])) {
    --grand_end;
  }
  return parent.substr(0, grand_end) + other + L"\\" + file;
}

std::wstring ThumbNailCommUtils::setThumbPage(const std::wstring& path, uint16_t page) {
  const size_t last = path.rfind(L'.');
  if (path.empty() || last == std::wstring::npos) return std::wstring();
  const std::wstring ext = path.substr(last + 1);
  const std::wstring stem = path.substr(0, last);
  const size_t page_dot = stem.rfind(L'.');
  if (page_dot == std::wstring::npos) return std::wstring();
  return stem.substr(0, page_dot) + L"." + std::to_wstring(page) + L"." + ext;
}

std::wstring ThumbNailCommUtils::getThumbPage(const std::wstring& path) {
  const size_t last = path.rfind(L'.');
  if (path.empty() || last == std::wstring::npos) return std::wstring();
  const std::wstring front = path.substr(0, last);
  const size_t dot = front.rfind(L'.');
  return dot == std::wstring::npos ? front : front.substr(dot + 1);
}

std::string ThumbNailCommUtils::getPathMd5(const std::string& text) {
  if (text.empty()) return std::string();
  std::string lower = text;
  for (char& c : lower) {
    if (c >= 'A' && c <= 'Z') c = static_cast<char>(c - 'A' + 'a');
  }
  Md5Context md5;
  md5.update(lower.data(), lower.size());
  return md5.hexDigest();
}

std::wstring ThumbNailCommUtils::getFileNameOf(const std::wstring& path) {
  const size_t cut = path.rfind(L'\\');
  if (path.empty() || cut == std::wstring::npos) return std::wstring();
  return path.substr(cut + 1);
}

std::wstring ThumbNailCommUtils::insertBeforeExt(const std::wstring& path,
                                                 const std::wstring& text) {
  const size_t dot = path.rfind(L'.');
  if (dot == std::wstring::npos) return path;
  return path.substr(0, dot) + text + path.substr(dot);
}

#include "device/DeviceCommUtils.h"

#include <cinttypes>
#include <cstdio>
#include <cwctype>
#include <mutex>
#include <vector>

#include "platform/env.h"

namespace {

constexpr wchar_t kSerialPrefix[] = L"\\\\?\\Volume{";
constexpr size_t kSerialPrefixLength = sizeof(kSerialPrefix) / sizeof(wchar_t) - 1;

struct DriveSerial {
  wchar_t letter;
  std::wstring serial;
};

// The table that initVolSerial takes, shared by every thread of the process.
std::mutex g_table_mutex;
std::vector<DriveSerial> g_table;
bool g_table_taken = false;

std::wstring serialOf(const platform::VolumeIdentity& id) {
  char text[48];
  std::snprintf(text, sizeof(text), "%016" PRIX64 "-%" PRIX64, id.file_system_id,
                id.root_folder_id);
  return std::wstring(text, text + std::char_traits<char>::length(text));
}

std::wstring serialOfDrive(wchar_t letter) {
  platform::VolumeIdentity id;
  if (!platform::Env::Default()->GetVolumeIdentity(letter, &id)) return std::wstring();
  return serialOf(id);
}

void takeTableLocked() {
  std::vector<DriveSerial> table;
  platform::Env* env = platform::Env::Default();
  for (const platform::DriveRoot& drive : env->GetDriveTable()) {
    std::wstring serial = serialOfDrive(drive.letter);
    if (!serial.empty()) table.push_back({drive.letter, serial});
  }
  g_table = std::move(table);
  g_table_taken = true;
}

bool isSeparator(wchar_t c) { return c == L'\\' || c == L'/'; }

// The rest of a path behind its root, with '\' between its parts and no leading one.
std::wstring restWithBackslashes(const std::wstring& rest) {
  std::wstring out = rest;
  for (wchar_t& c : out) {
    if (c == L'/') c = L'\\';
  }
  size_t start = 0;
  while (start < out.size() && out[start] == L'\\') ++start;
  return out.substr(start);
}

// Splits a drive path into its upper-case letter and the rest behind "X:\". False for
// anything else: no drive letter, or a letter not followed by a separator or the end.
bool splitDrivePath(const std::wstring& path, wchar_t* letter, std::wstring* rest) {
  std::wstring p = path;
  if (p.compare(0, 4, L"\\\\?\\") == 0) p = p.substr(4);
  if (p.size() < 2 || p[1] != L':' || !std::iswalpha(static_cast<wint_t>(p[0]))) return false;
  if (p.size() > 2 && !isSeparator(p[2])) return false;
  *letter = static_cast<wchar_t>(std::towupper(static_cast<wint_t>(p[0])));
  if (*letter < L'A' || *letter > L'Z') return false;
  *rest = restWithBackslashes(p.substr(2));
  return true;
}

// Splits a serial path into its serial and the rest behind "}\".
bool splitSerialPath(const std::wstring& path, std::wstring* serial, std::wstring* rest) {
  if (path.size() <= kSerialPrefixLength) return false;
  for (size_t i = 0; i < kSerialPrefixLength; ++i) {
    if (std::towlower(static_cast<wint_t>(path[i])) !=
        std::towlower(static_cast<wint_t>(kSerialPrefix[i]))) {
      return false;
    }
  }
  const size_t close = path.find(L'}', kSerialPrefixLength);
  if (close == std::wstring::npos || close == kSerialPrefixLength) return false;
  if (close + 1 < path.size() && !isSeparator(path[close + 1])) return false;
  const std::wstring s = path.substr(kSerialPrefixLength, close - kSerialPrefixLength);
  for (wchar_t c : s) {
    if (!std::iswxdigit(static_cast<wint_t>(c)) && c != L'-') return false;
  }
  *serial = s;
  *rest = restWithBackslashes(path.substr(close + 1));
  return true;
}

// Looks in the table under its lock; with `look_again` a miss takes the table anew once.
template <typename Match>
const DriveSerial* findInTable(bool look_again, Match match) {
  for (int attempt = 0; attempt < 2; ++attempt) {
    for (const DriveSerial& row : g_table) {
      if (match(row)) return &row;
    }
    if (!look_again) break;
    takeTableLocked();
  }
  return nullptr;
}

bool sameSerial(const std::wstring& a, const std::wstring& b) {
  if (a.size() != b.size()) return false;
  for (size_t i = 0; i < a.size(); ++i) {
    if (std::towupper(static_cast<wint_t>(a[i])) != std::towupper(static_cast<wint_t>(b[i]))) {
      return false;
    }
  }
  return true;
}

}  // namespace

void DeviceCommUtils::initVolSerial(bool only_once) {
  std::lock_guard<std::mutex> lock(g_table_mutex);
  if (only_once && g_table_taken) return;
  takeTableLocked();
}

bool DeviceCommUtils::isSerialPath(const std::wstring& path) {
  std::wstring serial, rest;
  return splitSerialPath(path, &serial, &rest);
}

std::wstring DeviceCommUtils::getSerialPathByDrive(const std::wstring& path, bool look_again) {
  if (isSerialPath(path)) return path;
  wchar_t letter = 0;
  std::wstring rest;
  if (!splitDrivePath(path, &letter, &rest)) return std::wstring();
  std::lock_guard<std::mutex> lock(g_table_mutex);
  const DriveSerial* row =
      findInTable(look_again, [letter](const DriveSerial& r) { return r.letter == letter; });
  if (row == nullptr) return std::wstring();
  return kSerialPrefix + row->serial + L"}\\" + rest;
}

std::wstring DeviceCommUtils::getDrivePathBySerial(const std::wstring& path, bool look_again) {
  std::wstring serial, rest;
  if (!splitSerialPath(path, &serial, &rest)) return std::wstring();
  std::lock_guard<std::mutex> lock(g_table_mutex);
  const DriveSerial* row = findInTable(
      look_again, [&serial](const DriveSerial& r) { return sameSerial(r.serial, serial); });
  if (row == nullptr) return std::wstring();
  return std::wstring{row->letter, L':', L'\\'} + rest;
}

std::wstring DeviceCommUtils::getVolSerial(const std::wstring& path) {
  wchar_t letter = 0;
  std::wstring rest;
  if (!splitDrivePath(path, &letter, &rest)) return std::wstring();
  return serialOfDrive(letter);
}

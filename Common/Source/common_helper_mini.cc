#include "Common/Source/common_helper_mini.h"

#include <glog/logging.h>

#include <cwctype>
#include <iostream>
#include <vector>

#include "Common/Source/FileCheckUtils.h"
#include "Common/Source/text_forms.h"
#include "platform/env.h"

namespace {

bool isSeparator(wchar_t c) { return c == L'\\' || c == L'/'; }

// Makes `path` and every missing level above it, as std::filesystem::create_directories
// does: true when the last level was made here, false with `fault` set when a level could
// not be made.
bool makeFolderTree(const std::wstring& path, size_t root_length, platform::Status* fault) {
  platform::Env* env = platform::Env::Default();
  bool created = false;
  size_t pos = root_length;
  while (pos < path.size()) {
    size_t end = pos;
    while (end < path.size() && !isSeparator(path[end])) ++end;
    if (end > pos) {
      const std::wstring level = path.substr(0, end);
      if (env->IsFolder(level)) {
        created = false;
      } else {
        platform::Status s = env->CreateFolder(level);
        if (!s.ok() && !(s.kind == platform::ErrorKind::kExists && env->IsFolder(level))) {
          *fault = s;
          return false;
        }
        created = s.ok();
      }
    }
    pos = end + 1;
  }
  return created;
}

enum class FaultReport { kLog, kStandardError };

bool createDirTree(const std::wstring& path, FaultReport report) {
  const std::wstring root = getDriveRoot(path);
  if (root.empty() || !FileCheckUtils::isExists(root)) return false;
  platform::Env* env = platform::Env::Default();
  if (env->PathExists(path)) return true;
  platform::Status fault;
  bool created = makeFolderTree(path, root.size(), &fault);
  if (fault.ok()) return created;
  if (report == FaultReport::kLog) {
    LOG(ERROR) << "common_hepler::createDirIfNotExist" << " fault for dir_name:" << wsToUtf8(path)
               << ", " << fault.message;
  } else {
    std::cerr << " fault for dir_name:" << wsToUtf8(path) << std::endl;
  }
  if (!env->PathExists(path)) return env->CreateFolder(path).ok();
  return true;
}

}  // namespace

std::wstring getExeDir() {
  std::wstring program = platform::Env::Default()->GetProgramPath();
  size_t cut = program.rfind(L'\\');
  return cut == std::wstring::npos ? std::wstring() : program.substr(0, cut);
}

std::wstring getDriveRoot(const std::wstring& path) {
  if (path.empty()) return std::wstring();
  if (path.size() == 1) return path + L":\\";
  std::wstring prefix;
  std::wstring rest = path;
  if (rest.compare(0, 4, L"\\\\?\\") == 0) {
    prefix = rest.substr(0, 4);
    rest = rest.substr(4);
  }
  std::wstring root;
  if (rest.size() >= 2 && rest[1] == L':') {
    root = rest.substr(0, 2);
    if (rest.size() > 2 && isSeparator(rest[2])) root.push_back(rest[2]);
  } else if (!rest.empty() && isSeparator(rest[0])) {
    root = rest.substr(0, 1);
  } else {
    return std::wstring();
  }
  if (root.size() < 3) root.push_back(L'\\');
  return prefix + root;
}

std::wstring getUtilsDir() { return utilsDirOf(getExeDir()); }

std::wstring utilsDirOf(const std::wstring& folder) {
  size_t cut = folder.rfind(L'\\');
  std::wstring last = cut == std::wstring::npos ? folder : folder.substr(cut + 1);
  for (wchar_t& c : last) c = static_cast<wchar_t>(towlower(static_cast<wint_t>(c)));
  return last == L"x64" ? folder + L"\\..\\Utils\\" : folder + L"\\Utils\\";
}

std::wstring getParentDir(const std::wstring& path) {
  size_t cut = path.rfind(L'\\');
  if (path.empty() || cut == std::wstring::npos) return std::wstring();
  std::wstring parent = path.substr(0, cut);
  if (cut == path.size() - 1) {
    size_t again = parent.rfind(L'\\');
    if (again != std::wstring::npos) parent = parent.substr(0, again);
  }
  return parent;
}

namespace common_hepler {

bool createDirIfNotExist(const std::wstring& path) {
  return createDirTree(path, FaultReport::kLog);
}

bool createDirIfNotExistQuiet(const std::wstring& path) {
  return createDirTree(path, FaultReport::kStandardError);
}

}  // namespace common_hepler

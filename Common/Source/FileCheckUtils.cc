#include "Common/Source/FileCheckUtils.h"

#include <glog/logging.h>

#include <atomic>
#include <regex>

#include "Common/Source/text_forms.h"
#include "platform/env.h"

bool FileCheckUtils::isHasLongPathPrefix(const std::string& path) {
  try {
    static const std::regex kPrefix("^\\\\\\\\\\?\\\\", std::regex::ECMAScript);
    return std::regex_search(path, kPrefix);
  } catch (const std::regex_error&) {
    LOG(ERROR) << "FileCheckUtils::isHasLongPathPrefix" << " chk file_path failed, file_path:"
               << path;
  }
  return false;
}

std::string FileCheckUtils::addLongPathPrefix(const std::string& path) {
  std::string copy = path;
  if (copy.size() < kPathLimit) return copy;
  if (isHasLongPathPrefix(copy)) return copy;
  return kLongPathPrefix + copy;
}

std::wstring FileCheckUtils::addLongPathPrefix(const std::wstring& path) {
  return utf8ToWs(addLongPathPrefix(wsToUtf8(path)));
}

std::string FileCheckUtils::removeLongPathPrefix(const std::string& path) {
  std::string copy = path;
  if (!isHasLongPathPrefix(copy)) return copy;
  size_t at = copy.find(kLongPathPrefix);
  if (at == std::string::npos) return copy;
  return copy.substr(at + sizeof(kLongPathPrefix) - 1);
}

bool FileCheckUtils::isExists(const std::string& path) {
  if (path.empty()) return false;
  try {
    platform::Env* env = platform::Env::Default();
    return env->PathExists(
        env->WidenNarrowPath(path.size() < kPathLimit ? path : addLongPathPrefix(path)));
  } catch (...) {
    LOG(ERROR) << "FileCheckUtils::isExists" << " fault for file:" << path;
  }
  return false;
}

bool FileCheckUtils::isExists(const std::wstring& path) {
  if (path.empty()) return false;
  try {
    platform::Env* env = platform::Env::Default();
    return env->PathExists(path.size() < kPathLimit ? path : addLongPathPrefix(path));
  } catch (...) {
    LOG(ERROR) << "FileCheckUtils::isExists" << " fault, file:" << wsToUtf8(path);
  }
  return false;
}

uint64_t FileCheckUtils::getFileSize(const std::wstring& path) {
  static std::atomic<bool> s_logged_failure{false};
  uint64_t size = 0;
  platform::Status s = platform::Env::Default()->GetFileSize(addLongPathPrefix(path), &size);
  if (s.ok()) return size;
  if (!s_logged_failure.exchange(true)) {
    LOG(ERROR) << "FileCheckUtils::getFileSize" << " failed :" << wsToUtf8(path)
               << ", lastError:" << s.os_code << ", CRTError: " << s.message;
  }
  return getFileSizeByHandle(path);
}

uint64_t getFileSizeByHandle(const std::wstring& path) {
  if (path.empty()) return 0;
  std::string head;
  platform::Env* env = platform::Env::Default();
  const std::wstring full = FileCheckUtils::addLongPathPrefix(path);
  // Opening the file (and reading nothing) is what proves that it can be had by a handle.
  platform::Status s = env->ReadFile(full, 0, 0, &head);
  uint64_t size = 0;
  if (s.ok()) s = env->GetFileSize(full, &size);
  if (!s.ok()) {
    LOG(ERROR) << "CreateFileW failed. Error: " << s.os_code;
    return 0;
  }
  return size;
}

uint64_t getFileSizeByFind(const std::wstring& path) {
  if (path.empty()) return 0;
  uint64_t size = 0;
  if (!platform::Env::Default()->GetFileSize(FileCheckUtils::addLongPathPrefix(path), &size).ok()) {
    return 0;
  }
  return size;
}

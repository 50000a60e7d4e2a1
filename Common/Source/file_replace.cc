#include "Common/Source/file_replace.h"

#include <atomic>

platform::Status replaceFileContent(const std::wstring& path, const std::string& bytes) {
  static std::atomic<unsigned> s_serial{0};
  platform::Env* env = platform::Env::Default();
  // Unique among the writers of this process (the serial) and of others (the clock).
  const std::wstring temporary = path + L"." + std::to_wstring(env->NowMicros()) + L"-" +
                                 std::to_wstring(s_serial.fetch_add(1)) + L".part";
  platform::Status s = env->WriteFile(temporary, bytes);
  if (s.ok()) s = env->RenameFile(temporary, path);
  if (!s.ok()) env->DeleteFile(temporary);
  return s;
}

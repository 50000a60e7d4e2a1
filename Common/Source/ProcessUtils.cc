#include "Common/Source/ProcessUtils.h"

#include <glog/logging.h>

#include <cwctype>
#include <vector>

#include "Common/Source/text_forms.h"

namespace {

// Equal without regard to case, one text unit against the other.
bool sameNameIgnoringCase(const std::wstring& a, const std::wstring& b) {
  if (a.size() != b.size()) return false;
  for (size_t i = 0; i < a.size(); ++i) {
    if (std::towlower(static_cast<wint_t>(a[i])) != std::towlower(static_cast<wint_t>(b[i]))) {
      return false;
    }
  }
  return true;
}

}  // namespace

platform::ProcessHandle ProcessCommUtils::runExeInSilence(const std::wstring& exe_path,
                                                          const std::wstring& params,
                                                          uint32_t wait_milli_sec) {
  platform::Env* env = platform::Env::Default();
  // The child is started without error boxes of its own: no terminal and no core dump. A
  // failed start shows in the wait, as a wait on no process.
  platform::ProcessHandle process = env->StartProcess(exe_path, params, nullptr);
  switch (env->WaitForProcess(process, wait_milli_sec)) {
    case platform::WaitResult::kFinished:
      LOG(INFO) << "ProcessCommUtils::runExeInSilence"
                << " exe has run finish";
      break;
    case platform::WaitResult::kTimedOut:
      LOG(INFO) << "ProcessCommUtils::runExeInSilence"
                << " wait timeout, wait_milli_sec:" << wait_milli_sec << " for exe run finish";
      break;
    case platform::WaitResult::kFailed:
      LOG(ERROR) << "ProcessCommUtils::runExeInSilence"
                 << " failed for cmd:" << wsToUtf8(exe_path);
      break;
  }
  return process;
}

bool isProcessRunning(const std::wstring& name) {
  if (name.empty()) return false;
  for (const platform::ProcessEntry& entry : platform::Env::Default()->ListProcesses()) {
    if (sameNameIgnoringCase(entry.program_name, name)) return true;
  }
  return false;
}

bool killProcessByName(const std::wstring& name) {
  if (name.empty()) return true;
  platform::Env* env = platform::Env::Default();
  bool all_stopped = true;
  for (const platform::ProcessEntry& entry : env->ListProcesses()) {
    if (!sameNameIgnoringCase(entry.program_name, name)) continue;
    const platform::Status status = env->KillProcess(entry);
    // A process that ended by itself in the meantime is not left to stop.
    if (!status.ok() && status.kind != platform::ErrorKind::kNotFound) all_stopped = false;
  }
  return all_stopped;
}

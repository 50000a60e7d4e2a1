// Child processes of the kernel: a converter started hidden, and processes found and ended
// by the file name of their program.
#ifndef COMMON_SOURCE_PROCESSUTILS_H_
#define COMMON_SOURCE_PROCESSUTILS_H_

#include <cstdint>
#include <string>

#include "platform/env.h"

class ProcessCommUtils {
 public:
  // Starts `exe_path` with the command line `params` (quoted by the caller as a Windows
  // program expects) hidden, and waits up to `wait_milli_sec` for it to end; 0 doesn't wait.
  // The handle belongs to the caller, who closes it with Env::CloseProcess; it is null when
  // the program couldn't be started. A child still running after the wait goes on running.
  static platform::ProcessHandle runExeInSilence(const std::wstring& exe_path,
                                                 const std::wstring& params,
                                                 uint32_t wait_milli_sec);
};

// True if a process runs whose program file is named `name` (a bare file name such as
// "gm.exe"), compared without regard to case. A path or a part of a name never matches.
bool isProcessRunning(const std::wstring& name);

// Ends every process whose program file is named `name`, whoever started it. True if no
// process was left to stop or all were stopped.
bool killProcessByName(const std::wstring& name);

#endif  // COMMON_SOURCE_PROCESSUTILS_H_

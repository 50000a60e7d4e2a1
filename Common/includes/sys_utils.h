// SystemUtils: questions about the system the kernel runs on.
#ifndef COMMON_INCLUDES_SYS_UTILS_H_
#define COMMON_INCLUDES_SYS_UTILS_H_

#include <string>

class SystemUtils {
 public:
  // True when a folder can be made and removed again at the root of the disk: "D", "D:" and
  // any longer path on D: all test D:.
  static bool isDiskRW_OK(const std::wstring& disk_root);
};

#endif  // COMMON_INCLUDES_SYS_UTILS_H_

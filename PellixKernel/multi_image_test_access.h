// The tests' way to the private members of MultiImage and of the driver that owns it. Only
// tests include this header.
#ifndef PELLIXKERNEL_MULTI_IMAGE_TEST_ACCESS_H_
#define PELLIXKERNEL_MULTI_IMAGE_TEST_ACCESS_H_

#include <map>
#include <string>

#include "PellixKernel/MultiImage.h"
#include "PellixKernel/PellixDriver.h"

struct MultiImageTestAccess {
  static bool waitChild(MultiImage& m, platform::ProcessHandle process, const std::wstring& tool,
                        const std::wstring& out_path, bool* timed_out) {
    return m._waitChild(process, tool, out_path, MultiImage::kToolTimeLimitSeconds, timed_out);
  }
  static bool waitStop(MultiImage& m, int milliseconds) { return m._waitStop(milliseconds); }
  static int checkPaths(MultiImage& m, const std::wstring& src, const std::wstring& dst) {
    return m._checkPaths(src, dst, true);
  }
  // Every route's time limit becomes `seconds`.
  static void shortenTimeLimit(MultiImage& m, double seconds) {
    m.time_limit_for_tests_s_ = seconds;
  }
  // The tools are looked for in `utils` (a Windows path) and its subfolders.
  static void useUtilsFolder(MultiImage& m, const std::wstring& utils) {
    for (auto& [key, folder] : m.tool_dirs_) {
      folder = key == L"GM" ? utils + L"\\GM" : key == L"INK" ? utils + L"\\ink" : utils;
    }
  }
  static const std::map<std::wstring, std::wstring>& toolDirs(const MultiImage& m) {
    return m.tool_dirs_;
  }
  static void setMetaDataHandler(MultiImage& m, MultiImage::MetaDataHandler handler) {
    m.meta_data_handler_ = std::move(handler);
  }
  static int pageCount(const MultiImage& m) { return m.multi_page_count_; }
  static int height(const MultiImage& m) { return m.height_; }
  static int width(const MultiImage& m) { return m.width_; }
};

struct DriverTestAccess {
  static MultiImage& multiImage(CPellixDriver& driver) { return *driver.multi_image_; }
};

#endif  // PELLIXKERNEL_MULTI_IMAGE_TEST_ACCESS_H_

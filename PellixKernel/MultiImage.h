// MultiImage: previews of the document types that the kernel doesn't decode itself, each made
// by a route that runs an outside converter as a hidden child process and watches it with a
// stop flag, a time limit and the settling of its output.
#ifndef PELLIXKERNEL_MULTIIMAGE_H_
#define PELLIXKERNEL_MULTIIMAGE_H_

#include <atomic>
#include <condition_variable>
#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <mutex>
#include <set>
#include <string>

#include "outside/MetaDataValues.h"
#include "pellix/IPellix.h"
#include "platform/env.h"

class pellix_client_rpc;

// The file names of the converters; a tool is tested and killed by this name alone.
inline constexpr wchar_t kToolGm[] = L"gm.exe";
inline constexpr wchar_t kToolPsd2Jpg[] = L"psd2jpg.exe";
inline constexpr wchar_t kToolPcx2Jpg[] = L"pcx2jpgcmd.exe";
inline constexpr wchar_t kToolGswin[] = L"gswin32c.exe";
inline constexpr wchar_t kToolInkscape[] = L"inkscape.exe";
inline constexpr wchar_t kToolJc[] = L"ex9000.exe";

class MultiImage {
 public:
  // The wanted size of a document route: height first.
  struct Size {
    int32_t height = 0;
    int32_t width = 0;
  };

  // How the routes reach the metadata kernel: path, record to fill, whether thumbnails are
  // wanted. Its result isn't looked at.
  using MetaDataHandler = std::function<int(const std::wstring&, MetaDataValues&, bool)>;

  // The longest run a converter gets before it is no longer waited for.
  static constexpr int kToolTimeLimitSeconds = 600;

  explicit MultiImage(IPellix* driver);
  ~MultiImage();
  MultiImage(const MultiImage&) = delete;
  MultiImage& operator=(const MultiImage&) = delete;

  // Makes the previews of `src` at `dst` (page 1; later pages beside it) by the route of
  // `file_type`. 0 or a result code; a type without a route gives 0 and makes nothing.
  int getViewByCmd(const std::wstring& src, int file_type, const Size& size,
                   const std::wstring& dst);

  // Converts `src` to `dst` at the size with GraphicsMagick; a TIFF that comes out white
  // all over is made again flattened, grey and negated. 0 or a result code.
  int getViewByGMExe(const std::wstring& src, const std::wstring& dst, unsigned width,
                     unsigned height);

  // Ends the stray converters of the document routes. True if neither the preview server
  // nor the JC program was running.
  static bool stopTools();

 private:
  friend class CPellixDriver;       // sets the metadata handler, reads the page count, stops
  friend struct MultiImageTestAccess;  // the tests' way to the private members

  // 2203 for an empty path, 2201 for a missing source; with `make_dst_folder` the folder of
  // `dst` is made (a failure there isn't reported). 0 otherwise.
  int _checkPaths(const std::wstring& src, const std::wstring& dst, bool make_dst_folder);

  // Watches a converter until it ends, its time limit passes or a stop comes; then waits for
  // its output to stop growing and decides by the output alone. Owns and closes `process`,
  // and ends every process of `tool_name` before it returns.
  bool _waitChild(platform::ProcessHandle process, std::wstring tool_name,
                  const std::wstring& out_path, int timeout_s, bool* timed_out);

  // Sleeps up to `milliseconds`, cut short by a stop request, which it consumes. Whether
  // there was one.
  bool _waitStop(int milliseconds);

  // The routes of the document types.
  int _getViewPDF_AI(const std::wstring& src, const std::wstring& dst);
  int _getViewPCX(const std::wstring& src, const std::wstring& dst);

  // One run of gm.exe with `command`, watched on `dst`: 0 or 2229.
  int _runGM(const std::wstring& tool, const std::wstring& command, const std::wstring& dst);

  // Logs the line after `label`, runs it (unless it is too long) and logs a failure.
  int _runGMLine(const std::wstring& tool, const std::wstring& line, const char* label,
                 const std::wstring& src, const std::wstring& dst);

  // The extension of a path (the text after its last dot), in lower case.
  static std::wstring _lowerExtension(const std::wstring& path);

  // Seconds of the steady clock since `start_micros`.
  static double _secondsSince(uint64_t start_micros);

  // The full path of a tool: its folder, '\', its file name.
  std::wstring _toolPath(const std::wstring& key, const std::wstring& file_name) const;

  IPellix* driver_;
  std::set<std::wstring> pdf_ai_types_;
  std::set<std::wstring> jc_types_;
  MetaDataHandler meta_data_handler_;
  int32_t height_ = 800;
  int32_t width_ = 800;
  int32_t multi_page_count_ = 1;
  std::atomic<bool> stop_requested_{false};
  std::mutex stop_mutex_;
  std::condition_variable stop_cond_;
  std::map<std::wstring, std::wstring> tool_dirs_;
  std::wstring last_tmp_cdr_;
  std::shared_ptr<pellix_client_rpc> rpc_client_;
  int64_t n_easy_psd_size_threshold_ = 0;

  // Set only by tests: a time limit in seconds that stands in for every route's own.
  double time_limit_for_tests_s_ = 0;
};

#endif  // PELLIXKERNEL_MULTIIMAGE_H_

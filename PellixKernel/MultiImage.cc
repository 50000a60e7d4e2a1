#include "PellixKernel/MultiImage.h"

#include <glog/logging.h>

#include <chrono>

#include "Common/Source/FileCheckUtils.h"
#include "Common/Source/ProcessUtils.h"
#include "Common/Source/common_helper_mini.h"
#include "Common/Source/text_forms.h"
#include "PellixKernel/file_type_sniff.h"
#include "errors/result_codes.h"

namespace {

// One tick of the watch on a converter: the wait on the process, then the wait on the flag.
constexpr uint32_t kTickMs = 100;
// The settling reads the output's length this often.
constexpr int kSettleMs = 200;
// After a stop the tool gets this many pauses of kTickMs to disappear.
constexpr int kStopPauses = 5;

// A route that this build doesn't carry yet is refused as a missing preview module.
int routeNotBuilt(const std::wstring& src, int file_type) {
  LOG(ERROR) << "MultiImage::getViewByCmd"
             << " route is not available, file_type:" << file_type
             << ", src_path:" << wsToUtf8(src) << ", err_code:" << codes::kPreviewModuleFailed;
  return codes::kPreviewModuleFailed;
}

}  // namespace

MultiImage::MultiImage(IPellix* driver) : driver_(driver) {
  std::wstring utils_path = getUtilsDir();
  if (utils_path.size() > 1 && utils_path.back() == L'\\') utils_path.pop_back();
  LOG(INFO) << "MultiImage::MultiImage"
            << " UtilsPath:" << wsToUtf8(utils_path);
  tool_dirs_[L"PCX2JPG"] = utils_path;
  tool_dirs_[L"PSD2JPG"] = utils_path;
  tool_dirs_[L"GSWIN"] = utils_path;
  tool_dirs_[L"INK"] = utils_path + L"\\ink";
  tool_dirs_[L"JCH"] = utils_path;
  tool_dirs_[L"GM"] = utils_path + L"\\GM";
}

// The preview server and the tools aren't tied to the object: nothing is stopped here.
MultiImage::~MultiImage() = default;

std::wstring MultiImage::_toolPath(const std::wstring& key, const std::wstring& file_name) const {
  const auto it = tool_dirs_.find(key);
  return (it != tool_dirs_.end() ? it->second : std::wstring()) + L"\\" + file_name;
}

int MultiImage::getViewByCmd(const std::wstring& src, int file_type, const Size& size,
                             const std::wstring& dst) {
  if (src.empty() || dst.empty()) return codes::kPathNotUsable;
  if (!FileCheckUtils::isExists(src)) return codes::kSourceMissing;
  common_hepler::createDirIfNotExist(getParentDir(dst));
  multi_page_count_ = 1;
  // A request without a complete size works with the size of the one before it.
  if (size.height != 0 && size.width != 0) {
    height_ = size.height;
    width_ = size.width;
  }
  switch (file_type) {
    case FT_IMAGE:
      LOG(ERROR) << "MultiImage::getViewByCmd"
                 << " do use MagicImage::getViewByGDI first";
      return codes::kUnknownFormat;
    case FT_AI:
    case FT_PDF:
      return _getViewPDF_AI(src, dst);
    case FT_PCX:
      return _getViewPCX(src, dst);
    case FT_PSD:
    case FT_CDR_ZIP:
    case FT_CDR_RIFF:
    case FT_JC:
      return routeNotBuilt(src, file_type);
    default:
      return codes::kOk;
  }
}

std::wstring MultiImage::_lowerExtension(const std::wstring& path) {
  const size_t dot = path.rfind(L'.');
  std::wstring ext = dot == std::wstring::npos ? std::wstring() : path.substr(dot + 1);
  for (wchar_t& c : ext) {
    if (c >= L'A' && c <= L'Z') c = static_cast<wchar_t>(c - L'A' + L'a');
  }
  return ext;
}

double MultiImage::_secondsSince(uint64_t start_micros) {
  return static_cast<double>(platform::Env::Default()->NowMicros() - start_micros) / 1e6;
}

int MultiImage::_checkPaths(const std::wstring& src, const std::wstring& dst,
                            bool make_dst_folder) {
  if (src.empty() || dst.empty()) return codes::kPathNotUsable;
  if (!FileCheckUtils::isExists(src)) return codes::kSourceMissing;
  if (make_dst_folder) common_hepler::createDirIfNotExist(getParentDir(dst));
  return codes::kOk;
}

bool MultiImage::_waitStop(int milliseconds) {
  {
    std::unique_lock<std::mutex> lock(stop_mutex_);
    stop_cond_.wait_for(lock, std::chrono::milliseconds(milliseconds),
                        [this] { return stop_requested_.load(); });
  }
  // The first wait that sees a request consumes it.
  return stop_requested_.exchange(false);
}

bool MultiImage::_waitChild(platform::ProcessHandle process, std::wstring tool_name,
                            const std::wstring& out_path, int timeout_s, bool* timed_out) {
  *timed_out = false;
  // A tool that never started leaves the decision to the route's own look at the output.
  if (process == nullptr) return true;
  platform::Env* env = platform::Env::Default();
  const double limit_s = time_limit_for_tests_s_ > 0 ? time_limit_for_tests_s_ : timeout_s;
  const uint64_t start = env->NowMicros();

  if (env->WaitForProcess(process, 0) != platform::WaitResult::kFinished) {
    for (;;) {
      const bool ended = env->WaitForProcess(process, kTickMs) == platform::WaitResult::kFinished;
      if (_waitStop(kTickMs)) {
        if (isProcessRunning(tool_name)) killProcessByName(tool_name);
        for (int i = 0; i < kStopPauses && isProcessRunning(tool_name); ++i) {
          env->SleepForMicroseconds(kTickMs * 1000);
        }
        env->DeleteFile(out_path);
        break;
      }
      // An overrun isn't killed yet: an output it left may still count.
      if (_secondsSince(start) > limit_s) {
        *timed_out = true;
        break;
      }
      if (ended) break;
    }
  }

  // The output counts once its length stops changing, however long it keeps growing.
  if (FileCheckUtils::isExists(out_path)) {
    uint64_t size = getFileSizeByHandle(out_path);
    for (;;) {
      if (_waitStop(kSettleMs)) {
        env->CloseProcess(process);
        return false;
      }
      const uint64_t now = FileCheckUtils::isExists(out_path) ? getFileSizeByHandle(out_path) : 0;
      if (now == size) break;
      size = now;
    }
  }

  const bool ok = FileCheckUtils::isExists(out_path) && getFileSizeByHandle(out_path) > 0;
  if (ok) *timed_out = false;
  env->CloseProcess(process);
  // Whatever of that name still runs ends here: an overrun, or any other run of the tool.
  if (isProcessRunning(tool_name)) killProcessByName(tool_name);
  return ok;
}

bool MultiImage::stopTools() {
  for (const wchar_t* name : {kToolPsd2Jpg, kToolGswin, kToolInkscape}) {
    if (isProcessRunning(name)) killProcessByName(name);
  }
  const bool server_running = isProcessRunning(L"pellix_rpc_server.exe");
  const bool jc_running = isProcessRunning(kToolJc);
  if (!server_running && !jc_running) return true;
  if (jc_running) killProcessByName(kToolJc);
  return false;
}

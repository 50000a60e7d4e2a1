// The last resort of the raster route: GraphicsMagick's gm.exe converts the source to the
// preview at the wanted size.
#include <glog/logging.h>

#include "Common/Source/FileCheckUtils.h"
#include "Common/Source/ProcessUtils.h"
#include "Common/Source/text_forms.h"
#include "PellixKernel/MultiImage.h"
#include "errors/result_codes.h"

namespace {

// The longest command line gm.exe is given, in text units.
constexpr size_t kGmLineLimit = 1024;

// ` convert -size WxH "SRC"` OPTIONS ` -resize WxH +profile "*" "DST"`.
std::wstring gmLine(const std::wstring& src, const std::wstring& dst, unsigned width,
                    unsigned height, const wchar_t* options) {
  const std::wstring size =
      std::to_wstring(static_cast<int>(width)) + L"x" + std::to_wstring(static_cast<int>(height));
  return L" convert -size " + size + L" \"" + src + L"\"" + options + L" -resize " + size +
         L" +profile \"*\" \"" + dst + L"\"";
}

}  // namespace

int MultiImage::_runGM(const std::wstring& tool, const std::wstring& command,
                       const std::wstring& dst) {
  bool timed_out = false;
  return _waitChild(ProcessCommUtils::runExeInSilence(tool, command, 0), kToolGm, dst,
                    kToolTimeLimitSeconds, &timed_out)
             ? codes::kOk
             : codes::kNoPreviewPossible;
}

int MultiImage::getViewByGMExe(const std::wstring& src, const std::wstring& dst,
                               unsigned width, unsigned height) {
  const int checked = _checkPaths(src, dst, true);
  if (checked != codes::kOk) return checked;
  const std::wstring tool = _toolPath(L"GM", kToolGm);
  if (!FileCheckUtils::isExists(tool)) return codes::kGraphicsMagickFailed;
  const uint64_t start = platform::Env::Default()->NowMicros();

  const std::wstring line = gmLine(src, dst, width, height, L"");
  LOG(INFO) << "MultiImage::getViewByGMExe"
            << " gm_cmd:" << wsToUtf8(line);
  // A line beyond the limit would have been cut short: it isn't run at all.
  const int result = line.size() < kGmLineLimit ? _runGM(tool, line, dst) : codes::kNoPreviewPossible;
  if (result != codes::kOk) {
    LOG(ERROR) << "MultiImage::getViewByGMExe"
               << " failed, src_path:" << wsToUtf8(src) << " error:" << result;
    return result;
  }
  LOG(INFO) << "MultiImage::getViewByGMExe"
            << " cost seconds:" << _secondsSince(start);
  return codes::kOk;
}

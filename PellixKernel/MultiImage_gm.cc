// The last resort of the raster route: GraphicsMagick's gm.exe converts the source to the
// preview at the wanted size, and a TIFF that comes out white is made again, negated.
#include <glog/logging.h>

#include "Common/Source/FileCheckUtils.h"
#include "Common/Source/ProcessUtils.h"
#include "Common/Source/text_forms.h"
#include "PellixKernel/MultiImage.h"
#include "TesselOpenCV/opencv_tool.h"
#include "errors/result_codes.h"

namespace {

// The longest command line gm.exe is given, in text units.
constexpr size_t kGmLineLimit = 1024;

// The options that make a white picture visible: flattened, grey and negated.
constexpr wchar_t kForWhite[] = L" -flatten -colorspace Gray -negate";

// ` convert -size WxH "SRC"` OPTIONS ` -resize WxH +profile "*" "DST"`.
std::wstring gmLine(const std::wstring& src, const std::wstring& dst, unsigned width,
                    unsigned height, const wchar_t* options) {
  const std::wstring size =
      std::to_wstring(static_cast<int>(width)) + L"x" + std::to_wstring(static_cast<int>(height));
  return L" convert -size " + size + L" \"" + src + L"\"" + options + L" -resize " + size +
         L" +profile \"*\" \"" + dst + L"\"";
}

}  // namespace

int MultiImage::_runGMLine(const std::wstring& tool, const std::wstring& line,
                           const char* label, const std::wstring& src, const std::wstring& dst) {
  LOG(INFO) << "MultiImage::getViewByGMExe" << label << wsToUtf8(line);
  // A line beyond the limit would have been cut short: it isn't run at all.
  const int result =
      line.size() < kGmLineLimit ? _runGM(tool, line, dst) : codes::kNoPreviewPossible;
  if (result != codes::kOk) {
    LOG(ERROR) << "MultiImage::getViewByGMExe"
               << " failed, src_path:" << wsToUtf8(src) << " error:" << result;
  }
  return result;
}

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

  int result = _runGMLine(tool, gmLine(src, dst, width, height, L""), " gm_cmd:", src, dst);
  if (result != codes::kOk) return result;

  // A TIFF (by its name) whose picture comes out white all over is made again, flattened,
  // grey and negated; once only, whatever that gives.
  const std::wstring ext = _lowerExtension(src);
  if (ext == L"tif" || ext == L"tiff") {
    if (!FileCheckUtils::isExists(dst)) return codes::kFileGone;
    std::string bytes;
    if (!platform::Env::Default()->ReadWholeFile(dst, &bytes).ok()) bytes.clear();
    if (OpenCvTool::isAllWhiteJpg(bytes)) {
      result = _runGMLine(tool, gmLine(src, dst, width, height, kForWhite),
                          " gm_cmd(for white):", src, dst);
      if (result != codes::kOk) return result;
    }
  }
  LOG(INFO) << "MultiImage::getViewByGMExe"
            << " cost seconds:" << _secondsSince(start);
  return codes::kOk;
}

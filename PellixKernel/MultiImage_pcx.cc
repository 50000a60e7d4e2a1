// The route of PCX files: pcx2jpgcmd.exe decodes the file into the preview's folder under a
// name worked out here, and the driver zooms that image to the preview.
#include <glog/logging.h>

#include "Common/Source/FileCheckUtils.h"
#include "Common/Source/FileComnUtils.h"
#include "Common/Source/ProcessUtils.h"
#include "Common/Source/ThumbNailCommUtils.h"
#include "Common/Source/common_helper_mini.h"
#include "Common/Source/text_forms.h"
#include "PellixKernel/MultiImage.h"
#include "errors/result_codes.h"

int MultiImage::_getViewPCX(const std::wstring& src, const std::wstring& dst) {
  if (_lowerExtension(src) != L"pcx") return codes::kWrongFileType;
  const uint64_t start = platform::Env::Default()->NowMicros();
  const std::wstring tool = _toolPath(L"PCX2JPG", kToolPcx2Jpg);
  if (!FileCheckUtils::isExists(tool)) return codes::kPsdEngineFailed;

  // The tool is told the folder only; it writes the source's name with the preview's type.
  const std::wstring dst_folder = getParentDir(dst);
  const std::wstring src_name = ThumbNailCommUtils::getFileNameOf(src);
  const std::wstring tool_out = dst_folder + L"\\" + src_name.substr(0, src_name.rfind(L'.')) +
                                L"." + dst.substr(dst.rfind(L'.') + 1);
  const std::wstring line = L" -i \"" + src + L"\" -o \"" + dst_folder + L"\"";

  bool timed_out = false;
  if (!_waitChild(ProcessCommUtils::runExeInSilence(tool, line, 0), kToolPcx2Jpg, tool_out,
                  kToolTimeLimitSeconds, &timed_out)) {
    LOG(ERROR) << "MultiImage::_getViewPCX"
               << " failed, src_pathL" << wsToUtf8(src) << " error:"
               << codes::kNoPreviewPossible;
    return codes::kNoPreviewPossible;
  }
  LOG(INFO) << "MultiImage::_getViewPCX"
            << " cost seconds:" << _secondsSince(start);
  const int result =
      driver_ == nullptr
          ? codes::kPreviewModuleFailed
          : driver_->zoomJpg(tool_out, static_cast<uint32_t>(width_),
                             static_cast<uint32_t>(height_), dst);
  FileCommUtils::deleteFile(tool_out);
  return result;
}

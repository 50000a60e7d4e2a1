// The route of PDF, AI and EPS files: Ghostscript renders up to ten pages at 200 dpi, the
// first page is zoomed at once and the others are left to the driver; an AI file that
// Ghostscript can't render falls back on the thumbnails it carries.
#include <glog/logging.h>

#include <cstdlib>

#include "Common/Source/FileCheckUtils.h"
#include "Common/Source/FileComnUtils.h"
#include "Common/Source/ProcessUtils.h"
#include "Common/Source/ThumbNailCommUtils.h"
#include "Common/Source/text_forms.h"
#include "PellixKernel/MultiImage.h"
#include "errors/result_codes.h"

namespace {

// A document of more pages gets previews of its first ten.
constexpr unsigned kMaxPages = 10;

// The heads of the argument lines; the output name, `" "`, the source and a quote follow.
// The multi-page head is cut where its page count goes.
constexpr wchar_t kMultiPageHead[] =
    L" -dSAFER -dBATCH -dNOPAUSE -sDEVICE=jpeg -dGraphicsAlphaBits=1 -dTextAlphaBits=1 "
    L"-dFirstPage=1 -dLastPage=";
constexpr wchar_t kMultiPageTail[] = L" -r200 -sOutputFile=\"";
constexpr wchar_t kSinglePageHead[] =
    L" -q -dNOSAFER -dBATCH -dNOPAUSE -sDEVICE=jpeg -dEPSCrop -dGraphicsAlphaBits=1 "
    L"-dTextAlphaBits=1 -dFirstPage=1 -dLastPage=1 -r200 -sOutputFile=\"";
constexpr wchar_t kEpsHead[] =
    L" -q -dNOSAFER -dBATCH -dNOPAUSE -sDEVICE=jpeg -dEPSCrop -dGraphicsAlphaBits=1 "
    L"-dTextAlphaBits=1 -r200 -sOutputFile=\"";

// Ghostscript reads its output name as a pattern, in which "%%" is a '%'.
std::wstring doublePercent(const std::wstring& path) {
  std::wstring out;
  for (wchar_t c : path) {
    if (c == L'%') out.push_back(L'%');
    out.push_back(c);
  }
  return out;
}

// The output name with its page field (the second-last dot field of a preview path) made
// Ghostscript's page number; Ghostscript then writes page 1 on the preview path itself.
std::wstring pageMask(const std::wstring& output) {
  const size_t last = output.rfind(L'.');
  const std::wstring rest = last == std::wstring::npos ? output : output.substr(0, last);
  const size_t field = rest.rfind(L'.');
  if (field == std::wstring::npos) return rest;
  return rest.substr(0, field) + L".%d." + output.substr(last + 1);
}

}  // namespace

int MultiImage::_getViewPDF_AI(const std::wstring& src, const std::wstring& dst) {
  const int checked = _checkPaths(src, dst, true);
  if (checked != codes::kOk) return checked;
  const std::wstring ext = _lowerExtension(src);
  if (pdf_ai_types_.empty()) pdf_ai_types_ = {L"pdf", L"ai", L"eps"};
  if (pdf_ai_types_.count(ext) == 0) return codes::kWrongFileType;
  const std::wstring tool = _toolPath(L"GSWIN", kToolGswin);
  if (!FileCheckUtils::isExists(tool)) return codes::kPdfEngineFailed;

  MetaDataValues values;
  if (!meta_data_handler_) return codes::kMetaModuleFailed;
  values.page_count.clear();
  meta_data_handler_(src, values, false);
  // No number reads as one page; any other, taken unsigned, is capped (a negative too).
  const int counted = std::atoi(values.page_count.c_str());
  const unsigned pages =
      counted == 0 ? 1 : std::min(static_cast<unsigned>(counted), kMaxPages);

  const std::wstring output = doublePercent(dst);
  std::wstring line;
  if (pages >= 2) {
    line = kMultiPageHead + std::to_wstring(pages) + kMultiPageTail + pageMask(output);
    multi_page_count_ = static_cast<int32_t>(pages);
  } else {
    line = kSinglePageHead + output;
  }
  if (ext == L"eps") line = kEpsHead + output;
  line += L"\" \"" + src + L"\"";
  LOG(INFO) << "MultiImage::_getViewPDF_AI"
            << " cmd: " << wsToUtf8(tool + line);

  const uint64_t start = platform::Env::Default()->NowMicros();
  bool timed_out = false;
  if (_waitChild(ProcessCommUtils::runExeInSilence(tool, line, 0), kToolGswin, dst,
                 kToolTimeLimitSeconds, &timed_out)) {
    LOG(INFO) << "MultiImage::_getViewPDF_AI"
              << " cost seconds:" << _secondsSince(start);
    // Ghostscript's page is far bigger than a preview: it is zoomed from a name of its own.
    const std::wstring big = dst + L"big.jpg";
    if (!platform::Env::Default()->RenameFile(dst, big).ok()) return codes::kOk;
    LOG(ERROR) << "MultiImage::_getViewPDF_AI"
               << " not err, but zoom big_jpg:" << wsToUtf8(big);
    const int result = driver_ == nullptr
                           ? codes::kPreviewModuleFailed
                           : driver_->zoomJpg(big, static_cast<uint32_t>(width_),
                                              static_cast<uint32_t>(height_), dst);
    FileCommUtils::deleteFile(big);
    return result;
  }

  LOG(ERROR) << "MultiImage::_getViewPDF_AI"
             << " failed, src_path:" << wsToUtf8(src) << " error:" << codes::kPreviewFailed;
  if (ext != L"ai") return codes::kPreviewFailed;
  // An AI file carries a thumbnail of each page; they stand in for the pages, and the route
  // still reports that Ghostscript failed.
  values.thumbnails.clear();
  meta_data_handler_(src, values, true);
  if (values.thumbnails.empty()) return codes::kAiWithoutPdf;
  for (size_t i = 0; i < values.thumbnails.size(); ++i) {
    ThumbNailCommUtils::saveThumbNail(
        ThumbNailCommUtils::setThumbPage(dst, static_cast<uint16_t>(i + 1)), values.thumbnails[i]);
  }
  return codes::kPreviewFailed;
}

#include "PellixKernel/MagicImage.h"

#include <glog/logging.h>

#include <algorithm>
#include <cwctype>

#include <opencv2/core.hpp>
#include <opencv2/imgproc.hpp>

#include "Common/Source/FileCheckUtils.h"
#include "Common/Source/FileComnUtils.h"
#include "Common/Source/GdiPlusDrawer.h"
#include "Common/Source/ThumbNailCommUtils.h"
#include "Common/Source/common_helper_mini.h"
#include "Common/Source/config/cfg_scan.h"
#include "Common/Source/config_db.h"
#include "Common/Source/text_forms.h"
#include "PellixKernel/MultiImage.h"
#include "PellixKernel/single_decode.h"
#include "errors/result_codes.h"
#include "tessel_dll/tessel_dll_loader.h"

namespace {

constexpr int kReadUnchanged = -1;  // cv::IMREAD_UNCHANGED
constexpr int kReadColour = 1;      // cv::IMREAD_COLOR

// The text after the last dot of the path; empty without a dot.
std::wstring extensionOf(const std::wstring& path) {
  const size_t dot = path.rfind(L'.');
  return dot == std::wstring::npos ? std::wstring() : path.substr(dot + 1);
}

// The number that GDI+ would give for a failed load, for the log: FileNotFound, Win32Error
// for a file it may not open, UnknownImageFormat for the rest.
int gdiStatusOf(const platform::Status& status) {
  switch (status.kind) {
    case platform::ErrorKind::kNotFound:
      return 10;
    case platform::ErrorKind::kAccessDenied:
      return 7;
    default:
      return 13;
  }
}

// Puts each pixel of an 8-bit image with alpha on opaque white, in single-precision floats:
// the colour times alpha/255, plus (1 - alpha/255) x 255 truncated, truncated and limited to
// 255. `out` has three channels, or four to flatten in place (its alpha is left alone):
// every colour byte depends only on itself and the pixel's alpha.
void flattenOnWhite(const cv::Mat& in, cv::Mat& out) {
  const int step = out.channels();
  cv::parallel_for_(cv::Range(0, in.rows), [&](const cv::Range& rows) {
    for (int y = rows.start; y < rows.end; ++y) {
      const uchar* src = in.ptr<uchar>(y);
      uchar* dst = out.ptr<uchar>(y);
      for (int x = 0; x < in.cols; ++x, src += 4, dst += step) {
        const uchar a = src[3];
        if (a == 255) {
          dst[0] = src[0], dst[1] = src[1], dst[2] = src[2];
          continue;
        }
        const float f = static_cast<float>(a) / 255.0f;
        const float back = static_cast<float>(static_cast<int>((1.0f - f) * 255.0f));
        for (int c = 0; c < 3; ++c) {
          const int v = a == 0 ? 255 : static_cast<int>(static_cast<float>(src[c]) * f + back);
          dst[c] = static_cast<uchar>(std::min(v, 255));
        }
      }
    }
  });
}

}  // namespace

bool WideLessNoCase::operator()(const std::wstring& a, const std::wstring& b) const {
  return std::lexicographical_compare(
      a.begin(), a.end(), b.begin(), b.end(), [](wchar_t x, wchar_t y) {
        return std::towlower(static_cast<wint_t>(x)) < std::towlower(static_cast<wint_t>(y));
      });
}

std::pair<uint32_t, uint32_t> fitWithin(uint32_t image_width, uint32_t image_height,
                                        uint32_t want_width, uint32_t want_height) {
  if (image_width == 0 || image_height == 0 || want_width == 0 || want_height == 0) {
    return {0, 0};
  }
  // Products in 64 bits: a tall image asked for at a large size would overflow 32.
  uint64_t w = image_width, h = image_height;
  if (w > want_width) {
    h = want_width * h / w;
    w = want_width;
  }
  if (h > want_height) {
    w = w * want_height / h;
    h = want_height;
  }
  return {static_cast<uint32_t>(w), static_cast<uint32_t>(h)};
}

MagicImage::MagicImage(MultiImage* multi_image) : multi_image_(multi_image) {
  const std::string types = common_hepler::ConfigDB::getInstance()->getScanCfg()->getOpencvTyp();
  size_t from = 0;
  while (true) {
    const size_t comma = types.find(',', from);
    opencv_types_.insert(utf8ToWs(types.substr(from, comma - from)));
    if (comma == std::string::npos) break;
    from = comma + 1;
  }
}

int MagicImage::getView(const std::wstring& path, uint32_t width, uint32_t height, bool keep_ratio,
                        bool keep_name, const std::wstring& image_dst_path, std::wstring& out_path,
                        bool time_suffix) {
  if (!FileCheckUtils::isExists(path)) return codes::kSourceMissing;
  if (image_dst_path.empty()) return codes::kNoPreviewFolder;
  const bool too_big = width > kMaxDirectSize || height > kMaxDirectSize;

  if (ThumbNailCommUtils::isLongPathThumb(path)) {
    // A preview in the long-path tree gets its sibling of the other size beside it.
    out_path = ThumbNailCommUtils::getMidMinSibling(path);
  } else {
    out_path = keep_name ? image_dst_path + L"\\" + ThumbNailCommUtils::getFileNameOf(path)
                         : ThumbNailCommUtils::getThumbPath(path, image_dst_path);
    if (time_suffix) {
      out_path = ThumbNailCommUtils::insertBeforeExt(
          out_path, std::to_wstring(platform::Env::Default()->NowSeconds()));
    }
    if (out_path.size() >= kPathLimit) {
      if (image_dst_path.find(L"\\mid\\") != std::wstring::npos) {
        out_path = ThumbNailCommUtils::getLongPathThumb(path);
      } else {
        LOG(ERROR) << "MagicImage::getView"
                   << " should not be called when image_dst_path:" << wsToUtf8(out_path);
      }
    }
  }

  if (!too_big && zoomJpg(path, width, height, keep_ratio, out_path) == codes::kOk) {
    return codes::kOk;
  }
  LOG(ERROR) << "MagicImage::getView"
             << " not err, but do by magic, path:" << wsToUtf8(path) << ", width:" << width
             << ", height:" << height;
  if (multi_image_ == nullptr) return codes::kBadArgument;
  // GraphicsMagick's program has the last word; what it made is zoomed in place.
  const int r = multi_image_->getViewByGMExe(path, out_path, width, height);
  if (r != codes::kOk) return r;
  return zoomJpg(out_path, width, height, keep_ratio, out_path);
}

int MagicImage::zoomJpg(const std::wstring& path, uint32_t width, uint32_t height, bool keep_ratio,
                        const std::wstring& dst) {
  if (opencv_types_.count(extensionOf(path)) != 0 &&
      _zoomByOpenCV(path, width, height, keep_ratio, dst) == codes::kOk) {
    return codes::kOk;
  }
  platform::Status status;
  std::shared_ptr<platform::Image> image = platform::Env::Default()->LoadImage(path, &status);
  if (!status.ok()) {
    LOG(ERROR) << "MagicImage::zoomJpg"
               << " invalid Gdiplus::Status:" << gdiStatusOf(status)
               << " at read file:" << wsToUtf8(path);
    return codes::kBadArgument;
  }
  if (image == nullptr) return codes::kPreviewNotAccessible;
  return _zoomByGdi(std::move(image), width, height, keep_ratio, dst);
}

int MagicImage::_zoomByOpenCV(const std::wstring& path, uint32_t width, uint32_t height,
                              bool keep_ratio, const std::wstring& dst) {
  ITesselOpenCV* images = TesselDllLoader::getTesselOpenCv("MagicImage::_zoomByOpenCV");
  if (images == nullptr) return codes::kImageModuleMissing;
  // `decoded` owns the pixels; `mat` is what the steps below work on, and may share them.
  cv::Mat decoded;
  int code = images->readImage(path, kReadUnchanged, decoded);
  if (code != codes::kOk) return code;
  const std::wstring ext = extensionOf(path);
  static const std::shared_ptr<CfgScan> s_cfg_scan =
      common_hepler::ConfigDB::getInstance()->getScanCfg();
  const AlphaWhitePngCfg& alpha_cfg = s_cfg_scan->getAlphaWhitePngCfg();

  cv::Mat mat;
  cv::Size target;
  if (images->hasAlpha(decoded, ext)) {
    if (images->isAlphaWhite(decoded, alpha_cfg.second, alpha_cfg.third, alpha_cfg.fourth)) {
      mat = images->renderAlphaWhite(decoded, alpha_cfg.mode);
    } else {
      if (decoded.depth() != CV_8U) decoded.convertTo(decoded, CV_8U, 1.0 / 257.0);
      // Flattened in the decoded buffer and brought to three channels only at the wanted
      // size: the same pixels as composeOnWhite then the resize, without a second full-size
      // image.
      flattenOnWhite(decoded, decoded);
      mat = decoded;
    }
    decoded.release();
    if (mat.empty()) code = codes::kOpenCvReadFailed;
  } else if (decoded.depth() != CV_8U ||
             !colourFromUnchangedDecode(readImageHeadOf(path), decoded, &mat)) {
    // The colour decode would turn or convert what this one holds: decode anew. A deep
    // image never can be reused, so its header isn't even read.
    decoded.release();
    code = images->readImage(path, kReadColour, mat);
    if (code == codes::kOk && mat.empty()) code = codes::kEmptyImage;
  }
  if (code == codes::kOk) code = _resizeImg(mat, width, height, keep_ratio, &target);
  if (code == codes::kOk) {
    if (target != mat.size()) cv::resize(mat, mat, target, 0, 0, cv::INTER_AREA);
    if (mat.channels() == 4) cv::cvtColor(mat, mat, cv::COLOR_BGRA2BGR);
    prepareDst(dst);
    code = images->writeImage(dst, mat);
    if (code == codes::kOk) return codes::kOk;
    LOG(ERROR) << "MagicImage::_zoomByOpenCV"
               << " save file err, file:" << wsToUtf8(dst);
  }
  LOG(ERROR) << "MagicImage::_zoomByOpenCV"
             << " failed to process " << wsToUtf8(dst);
  return code;
}

int MagicImage::_resizeImg(const cv::Mat& mat, uint32_t width, uint32_t height, bool keep_ratio,
                           cv::Size* target) {
  if (keep_ratio) {
    std::tie(width, height) =
        fitWithin(static_cast<uint32_t>(mat.cols), static_cast<uint32_t>(mat.rows), width, height);
  }
  if (width == 0 || height == 0) {
    LOG(ERROR) << "MagicImage::_resizeImg"
               << " width or height is 0";
    return codes::kContentTooSmall;
  }
  *target = cv::Size(static_cast<int>(width), static_cast<int>(height));
  return codes::kOk;
}

int MagicImage::_zoomByGdi(std::shared_ptr<platform::Image> image, uint32_t width, uint32_t height,
                           bool keep_ratio, const std::wstring& dst) {
  if (image == nullptr) return codes::kPreviewNotAccessible;
  if (keep_ratio) {
    std::tie(width, height) = fitWithin(image->Width(), image->Height(), width, height);
  }
  if (width == 0 || height == 0) {
    LOG(INFO) << "MagicImage::_zoomByGdi"
              << " :"
              << "width or height is 0";
    return codes::kContentTooSmall;
  }
  std::shared_ptr<platform::Image> bitmap =
      GdiPlusDrawer::getInstance().zoomImage(std::move(image), width, height);
  // The imaging services decode in full at the draw: a damaged file leaves no bitmap, which
  // is no image object to save.
  if (bitmap == nullptr) return codes::kPreviewNotAccessible;
  saveFile(std::move(bitmap), dst);
  return codes::kOk;
}

void MagicImage::saveFile(std::shared_ptr<platform::Image> image, const std::wstring& dst) {
  if (image == nullptr) {
    LOG(ERROR) << "MagicImage::saveFile"
               << " image_handle is null";
    return;
  }
  if (dst.empty()) {
    LOG(ERROR) << "MagicImage::saveFile"
               << " dst is empty";
    return;
  }
  prepareDst(dst);
  const int width = static_cast<int>(image->Width());
  const int height = static_cast<int>(image->Height());
  GdiPlusDrawer::getInstance().zoomImageAndSave(std::move(image), width, height, dst);
}

void MagicImage::prepareDst(const std::wstring& dst) {
  if (dst.empty()) return;
  if (FileCheckUtils::isExists(dst)) {
    FileCommUtils::deleteFile(dst);
  } else {
    common_hepler::createDirIfNotExist(getParentDir(dst));
  }
}

cv::Mat MagicImage::composeOnWhite(const cv::Mat& mat) {
  cv::Mat out(mat.rows, mat.cols, CV_8UC3);
  flattenOnWhite(mat, out);
  return out;
}

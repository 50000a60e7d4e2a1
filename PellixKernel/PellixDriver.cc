#include "PellixKernel/PellixDriver.h"

#include <glog/logging.h>

#include "Common/Source/FileCheckUtils.h"
#include "Common/Source/config_db.h"
#include "Common/Source/text_forms.h"
#include "PellixKernel/MagicImage.h"
#include "PellixKernel/file_type_sniff.h"
#include "errors/result_codes.h"
#include "platform/env.h"
#include "tessel_dll/kernel_library.h"
#include "tessel_dll/tessel_dll_loader.h"

CPellixDriver* CPellixDriver::s_p_instance_ = nullptr;
ITesselKernel* CPellixDriver::s_p_meta_data_ = nullptr;

namespace {

bool isSpecialType(int file_type) {
  switch (file_type) {
    case FT_AI:
    case FT_PSD:
    case FT_CDR_ZIP:
    case FT_CDR_RIFF:
    case FT_PDF:
    case FT_JC:
    case FT_PCX:
      return true;
    default:
      return false;
  }
}

// A request whose route this build doesn't carry is answered with the code of a missing
// preview module, and said so in the log.
int routeMissing(const char* caller, const char* route, const std::wstring& path) {
  LOG(ERROR) << caller << " " << route << " is not available, src_image:" << wsToUtf8(path)
             << ", err_code:" << codes::kPreviewModuleFailed;
  return codes::kPreviewModuleFailed;
}

}  // namespace

// The siblings are optional: without one the driver serves what it can.
CPellixDriver::CPellixDriver() {
  LOG(INFO) << "CPellixDriver::CPellixDriver" << " start";
  if (LoadKernelLibrary(kTesselKernelDll) == kLibraryOk) {
    void* meta_data = nullptr;
    if (AccquireInterface(kTesselKernelInterfaceId, &meta_data) == kLibraryOk) {
      s_p_meta_data_ = static_cast<ITesselKernel*>(meta_data);
    }
    if (s_p_meta_data_ != nullptr) {
      LOG(INFO) << "CPellixDriver::CPellixDriver" << " OK";
    } else {
      LOG(ERROR) << "CPellixDriver::CPellixDriver" << " AccquireInterface["
                 << kTesselKernelInterfaceId << "] failed.";
    }
  } else {
    LOG(ERROR) << "CPellixDriver::CPellixDriver" << " LoadKernelLibrary[" << kTesselKernelDll
               << "] failed";
  }
  if (!TesselDllLoader::loadOpencvDll()) {
    LOG(ERROR) << "CPellixDriver::CPellixDriver" << " load " << kTesselOpenCvDll << "failed";
  }
  // The document routes' MultiImage isn't carried yet; the raster route goes without it.
  magic_image_ = new MagicImage(multi_image_);
  magic_image_->driver_ = this;
}

// Not the mirror of the start: the imaging services stop before the image module goes.
CPellixDriver::~CPellixDriver() {
  delete magic_image_;
  magic_image_ = nullptr;
  if (s_p_meta_data_ != nullptr) {
    ReleaseInterface(kTesselKernelInterfaceId);
    FreeKernelLibrary(kTesselKernelDll);
    s_p_meta_data_ = nullptr;
  }
  platform::Env::Default()->StopImaging(g_gdiplus_token);
  g_gdiplus_token = 0;
  if (TesselDllLoader::s_p_tessel_opencv_ != nullptr) {
    ReleaseInterface(kTesselOpenCvInterfaceId);
    FreeKernelLibrary(kTesselOpenCvDll);
    TesselDllLoader::s_p_tessel_opencv_ = nullptr;
  }
}

int CPellixDriver::getView(const std::wstring& src_image, uint32_t width, uint32_t height,
                           bool keep_ratio, const std::wstring& image_dst_path,
                           std::vector<std::wstring>& previews, bool time_suffix,
                           uint32_t reserved) {
  previews.clear();
  if (!FileCheckUtils::isExists(src_image)) return codes::kSourceMissing;
  if (image_dst_path.empty()) return codes::kNoPreviewFolder;
  const std::wstring path = FileCheckUtils::addLongPathPrefix(src_image);
  const int file_type = sniffFileType(path);
  if (file_type == FT_UNKNOWN) {
    const size_t dot = src_image.rfind(L'.');
    const bool has_extension = dot != std::wstring::npos && dot + 1 < src_image.size();
    return has_extension ? codes::kUnknownFormat : codes::kNoExtension;
  }
  if (isSpecialType(file_type)) {
    ViewRequest request;
    request.keep_ratio = keep_ratio;
    request.reserved = reserved;
    request.height = height;
    request.width = width;
    request.file_type = file_type;
    request.src_image = src_image;
    request.image_dst_path = image_dst_path;
    return _getSpecailTypeView(request, previews);
  }
  std::wstring out_path;
  const int code = magic_image_->getView(path, width, height, keep_ratio, false, image_dst_path,
                                         out_path, time_suffix);
  previews.push_back(out_path);
  return code;
}

int CPellixDriver::getZoomView(const std::wstring& src_image, uint32_t width, uint32_t height,
                               bool keep_ratio, const std::wstring& image_dst_path,
                               std::wstring& out_path) {
  if (!FileCheckUtils::isExists(src_image)) return codes::kSourceMissing;
  if (image_dst_path.empty()) return codes::kNoPreviewFolder;
  if (sniffFileType(src_image) != FT_IMAGE) return codes::kNotZoomable;
  return magic_image_->getView(src_image, width, height, keep_ratio, true, image_dst_path,
                               out_path, false);
}

int CPellixDriver::zoomJpg(const std::wstring& src_image, uint32_t width, uint32_t height,
                           const std::wstring& out_path) {
  if (sniffFileType(src_image) != FT_IMAGE) return codes::kNotZoomable;
  return magic_image_->zoomJpg(src_image, width, height, true, out_path);
}

bool CPellixDriver::startJCHEngine() { return false; }

bool CPellixDriver::stopTools() { return false; }

void CPellixDriver::setStopFlag(bool stop) { (void)stop; }

void CPellixDriver::reserved7() {}

void CPellixDriver::refreshThumbBasePath() {
  // Only the re-read counts: it refreshes the preview root that every later request uses.
  common_hepler::ConfigDB::getInstance()->getThumbFileBasePathFromDB();
}

int CPellixDriver::readMetaData(const std::wstring& path, MetaDataValues& values,
                                bool want_thumbnails) {
  const std::string narrow = CodeConv::ws2s(path);
  if (narrow.empty()) return codes::kPathNotUsable;
  if (!FileCheckUtils::isExists(narrow)) return codes::kSourceMissing;
  if (s_p_meta_data_ == nullptr) return codes::kMetaModuleFailed;
  return s_p_meta_data_->read(narrow.c_str(), values, want_thumbnails);
}

int CPellixDriver::_getSpecailTypeView(const ViewRequest& request,
                                       std::vector<std::wstring>& previews) {
  (void)previews;
  return routeMissing("CPellixDriver::_getSpecailTypeView", "document route",
                      request.src_image);
}

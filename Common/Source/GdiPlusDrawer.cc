#include "Common/Source/GdiPlusDrawer.h"

#include <glog/logging.h>

#include <cwctype>
#include <vector>

#include "Common/Source/file_replace.h"

GdiPlusDrawer& GdiPlusDrawer::getInstance() {
  static GdiPlusDrawer s_drawer;
  return s_drawer;
}

platform::PixelFormat bitmapFormatOf(platform::PixelFormat source_format) {
  return source_format == platform::kPixelFormat32bppCMYK ? platform::kPixelFormat32bppRGB
                                                           : source_format;
}

std::wstring encoderWordFor(const std::wstring& path, platform::PixelFormat format) {
  const size_t dot = path.rfind(L'.');
  std::wstring word = dot == std::wstring::npos ? path : path.substr(dot + 1);
  for (wchar_t& c : word) c = static_cast<wchar_t>(std::towlower(static_cast<wint_t>(c)));
  if (word == L"jpg") word = L"jpeg";
  if (word == L"tif") word = L"tiff";
  if ((format & platform::kPixelFormatAlpha) == 0) word = L"jpeg";
  return word;
}

std::shared_ptr<platform::Image> GdiPlusDrawer::zoomImage(std::shared_ptr<platform::Image> image,
                                                          uint32_t width, uint32_t height) {
  if (image == nullptr) return nullptr;
  platform::Status status;
  return platform::Env::Default()->DrawImageOnWhite(
      *image, width, height, bitmapFormatOf(image->GetPixelFormat()), &status);
}

void GdiPlusDrawer::zoomImageAndSave(std::shared_ptr<platform::Image> image, int width,
                                     int height, const std::wstring& wsPath) {
  if (wsPath.empty()) {
    LOG(ERROR) << "GdiPlusDrawer::zoomImageAndSave" << " wsPath is empty";
    return;
  }
  if (image == nullptr || width <= 0 || height <= 0) return;
  std::shared_ptr<platform::Image> bitmap =
      zoomImage(image, static_cast<uint32_t>(width), static_cast<uint32_t>(height));
  const std::wstring word =
      encoderWordFor(wsPath, bitmapFormatOf(image->GetPixelFormat()));
  platform::EncoderId clsid;
  const int encoder = getEncoderClsid(L"image/" + word, &clsid);
  image.reset();
  if (bitmap == nullptr || encoder < 0) return;
  std::string bytes;
  if (platform::Env::Default()->EncodeImage(*bitmap, clsid, &bytes).ok()) {
    replaceFileContent(wsPath, bytes);
  }
}

int GdiPlusDrawer::getEncoderClsid(const std::wstring& mime_type, platform::EncoderId* clsid) {
  const std::vector<platform::ImageEncoderInfo> encoders =
      platform::Env::Default()->GetImageEncoders();
  for (size_t i = 0; i < encoders.size(); ++i) {
    if (encoders[i].mime_type == mime_type) {
      *clsid = encoders[i].clsid;
      return static_cast<int>(i);
    }
  }
  return -1;
}

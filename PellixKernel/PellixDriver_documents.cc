// The driver's document route: the preview path of a request, its route through MultiImage,
// and the pages the route left, zoomed in place to the wanted size.
#include <glog/logging.h>

#include "Common/Source/FileCheckUtils.h"
#include "Common/Source/ThumbNailCommUtils.h"
#include "Common/Source/text_forms.h"
#include "PellixKernel/MultiImage.h"
#include "PellixKernel/PellixDriver.h"
#include "errors/result_codes.h"

int CPellixDriver::_getSpecailTypeView(const ViewRequest& request,
                                       std::vector<std::wstring>& previews) {
  std::wstring image_dst_one_path =
      ThumbNailCommUtils::getThumbPath(request.src_image, request.image_dst_path);
  // A preview path too long for the platform moves to the long-path tree.
  const bool long_path = image_dst_one_path.size() >= kPathLimit;
  if (long_path) {
    image_dst_one_path = ThumbNailCommUtils::getLongPathThumb(request.src_image);
    if (!ThumbNailCommUtils::isLongPathThumb(image_dst_one_path)) {
      LOG(ERROR) << "CPellixDriver::_getSpecailTypeView"
                 << "image_dst_one_path is invalid, image_dst_one_path:"
                 << wsToUtf8(image_dst_one_path) << ", err_code:" << codes::kBadPreviewParameters;
      return codes::kBadPreviewParameters;
    }
  }
  MultiImage::Size size;
  size.height = static_cast<int32_t>(request.height);
  size.width = static_cast<int32_t>(request.width);
  const int result =
      multi_image_->getViewByCmd(request.src_image, request.file_type, size, image_dst_one_path);
  if (result != codes::kOk) {
    LOG(ERROR) << "CPellixDriver::_getSpecailTypeView"
               << " create view failed, err_code:" << result
               << ", src_image;" << wsToUtf8(request.src_image)
               << ", dst_preview_path:" << wsToUtf8(image_dst_one_path);
    return result;
  }
  // The long-path tree holds one preview a source, at the size the route made it.
  if (long_path) {
    if (FileCheckUtils::isExists(image_dst_one_path)) previews.push_back(image_dst_one_path);
    return codes::kOk;
  }
  return _collectMultiPreviewThenZoom(request.width, request.height, request.keep_ratio,
                                      request.image_dst_path, image_dst_one_path, previews);
}

int CPellixDriver::_collectMultiPreviewThenZoom(uint32_t width, uint32_t height,
                                                bool keep_ratio,
                                                const std::wstring& image_dst_path,
                                                const std::wstring& image_dst_one_path,
                                                std::vector<std::wstring>& previews) {
  // A page missing is logged and left out: the host gets the pages there are.
  for (int32_t page = 1; page <= multi_image_->multi_page_count_; ++page) {
    const std::wstring thumb_path =
        ThumbNailCommUtils::setThumbPage(image_dst_one_path, static_cast<uint16_t>(page));
    if (thumb_path.empty()) {
      LOG(ERROR) << "CPellixDriver::_collectMultiPreviewThenZoom"
                 << " thumb_path is empty";
      continue;
    }
    if (FileCheckUtils::isExists(thumb_path)) {
      previews.push_back(thumb_path);
    } else {
      LOG(ERROR) << "CPellixDriver::_collectMultiPreviewThenZoom"
                 << " thumb_path is not exist, thumb_path:" << wsToUtf8(thumb_path);
    }
  }
  // Each page lies in the destination folder under its own name, so zooming it into that
  // folder replaces it and the list stays true.
  std::wstring scratch;
  for (const std::wstring& page : previews) {
    const int result = getZoomView(page, width, height, keep_ratio, image_dst_path, scratch);
    if (result != codes::kOk) return result;
  }
  return codes::kOk;
}

// One request on the document route, built on the stack by getView.
#ifndef PELLIXKERNEL_VIEWREQUEST_H_
#define PELLIXKERNEL_VIEWREQUEST_H_

#include <cstdint>
#include <string>

struct ViewRequest {
  bool keep_ratio = true;
  uint32_t reserved = 0;  // the host's last argument, carried along and read by no route
  uint32_t height = 0;
  uint32_t width = 0;
  int32_t file_type = 0;
  std::wstring src_image;       // exactly as the host gave it
  std::wstring image_dst_path;  // the destination folder
};

#endif  // PELLIXKERNEL_VIEWREQUEST_H_

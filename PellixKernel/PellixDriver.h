// CPellixDriver: the one implementation of IPellix. It checks requests, identifies the file
// and hands it to the raster route or to a document route.
#ifndef PELLIXKERNEL_PELLIXDRIVER_H_
#define PELLIXKERNEL_PELLIXDRIVER_H_

#include <memory>
#include <string>
#include <vector>

#include "PellixKernel/ViewRequest.h"
#include "outside/ITesselKernel.h"
#include "pellix/IPellix.h"

class MagicImage;
class MultiImage;

class CPellixDriver : public IPellix {
 public:
  CPellixDriver();
  ~CPellixDriver() override;
  CPellixDriver(const CPellixDriver&) = delete;
  CPellixDriver& operator=(const CPellixDriver&) = delete;

  // The process's driver; null before the first Accquire and after Release.
  static CPellixDriver* s_p_instance_;

  // Interface 100 of TesselKernel.dll; null when that library or interface is missing.
  static ITesselKernel* s_p_meta_data_;

  int getView(const std::wstring& src_image, uint32_t width, uint32_t height, bool keep_ratio,
              const std::wstring& image_dst_path, std::vector<std::wstring>& previews,
              bool time_suffix, uint32_t reserved) override;
  int getZoomView(const std::wstring& src_image, uint32_t width, uint32_t height,
                  bool keep_ratio, const std::wstring& image_dst_path,
                  std::wstring& out_path) override;
  int zoomJpg(const std::wstring& src_image, uint32_t width, uint32_t height,
              const std::wstring& out_path) override;
  int cutImage(const std::string& src, std::shared_ptr<ImageRange> p_img_range,
               const std::string& dst, int view_max) override;
  bool startJCHEngine() override;
  bool stopTools() override;
  void setStopFlag(bool stop) override;
  void reserved7() override;
  void refreshThumbBasePath() override;

 private:
  friend struct DriverTestAccess;  // the tests' way to the private members

  int _getSpecailTypeView(const ViewRequest& request, std::vector<std::wstring>& previews);

  // The document routes' one way to the metadata kernel: reads the facts of the file at
  // `path` into `values`. 2203 for a path without a narrow form, 2201 for a missing file,
  // 2210 without the metadata kernel (the record untouched), otherwise the kernel's code.
  int readMetaData(const std::wstring& path, MetaDataValues& values, bool want_thumbnails);

  MagicImage* magic_image_ = nullptr;  // raster route; made last, destroyed first
  MultiImage* multi_image_ = nullptr;  // document routes; made before magic_image_
};

#endif  // PELLIXKERNEL_PELLIXDRIVER_H_

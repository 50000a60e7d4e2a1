// The one interface of the preview kernel, as a host sees it: IPellix with its ten virtual
// operations in their fixed order, and the three exports that hand it out.
//
// A host needs nothing but this header: load PellixKernel.dll, look up the exports by name,
// call Accquire(kPellixInterfaceId, &p) and, at the end, Release(kPellixInterfaceId).
// Paths are wide text of UTF-16 code units (one per wchar_t) in Windows form.
#ifndef PELLIX_IPELLIX_H_
#define PELLIX_IPELLIX_H_

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

// The number of the interface IPellix.
inline constexpr int kPellixInterfaceId = 104;

// A rectangle of a host's view of an image, for cutImage.
struct ImageRange {
  float left;
  float top;
  float right;
  float bottom;
};

struct IPellix {
  // Identifies the file and makes its previews in `image_dst_path`; `previews` receives the
  // files made. 0 or a result code.
  virtual int getView(const std::wstring& src_image, uint32_t width, uint32_t height,
                      bool keep_ratio, const std::wstring& image_dst_path,
                      std::vector<std::wstring>& previews, bool time_suffix,
                      uint32_t reserved) = 0;

  // Zooms an existing raster image into a folder under its own file name.
  virtual int getZoomView(const std::wstring& src_image, uint32_t width, uint32_t height,
                          bool keep_ratio, const std::wstring& image_dst_path,
                          std::wstring& out_path) = 0;

  // Zooms an existing raster image to one named file, keeping its proportions.
  virtual int zoomJpg(const std::wstring& src_image, uint32_t width, uint32_t height,
                      const std::wstring& out_path) = 0;

  // Cuts a rectangle (in view pixels of a view whose longest side is `view_max`) out of an
  // image and saves it. Paths are 8-bit text.
  virtual int cutImage(const std::string& src, std::shared_ptr<ImageRange> p_img_range,
                       const std::string& dst, int view_max) = 0;

  // Boots the preview server.
  virtual bool startJCHEngine() = 0;

  // Ends the converter processes.
  virtual bool stopTools() = 0;

  // Asks a running conversion to stop; the one operation that may come from another thread.
  virtual void setStopFlag(bool stop) = 0;

  // Does nothing.
  virtual void reserved7() = 0;

  // Reads the preview root anew from the settings.
  virtual void refreshThumbBasePath() = 0;

  virtual ~IPellix() = default;
};

// The exports, with C linkage.
using PellixAccquireFn = int (*)(int id, void** out);
using PellixReleaseFn = int (*)(int id);
using PellixHaveInterfaceFn = bool (*)(int id);

#endif  // PELLIX_IPELLIX_H_

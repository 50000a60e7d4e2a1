#include "tessel_dll/tessel_dll_loader.h"

#include <glog/logging.h>

#include "Common/Source/GdiPlusDrawer.h"
#include "platform/env.h"
#include "tessel_dll/kernel_library.h"

uintptr_t g_gdiplus_token = 0;

ITesselOpenCV* TesselDllLoader::s_p_tessel_opencv_ = nullptr;

bool TesselDllLoader::loadOpencvDll() {
  GdiPlusDrawer::getInstance();
  g_gdiplus_token = platform::Env::Default()->StartImaging();
  if (s_p_tessel_opencv_ != nullptr) return true;
  if (LoadKernelLibrary(kTesselOpenCvDll) == kLibraryOk) {
    void* image_module = nullptr;
    if (AccquireInterface(kTesselOpenCvInterfaceId, &image_module) == kLibraryOk) {
      s_p_tessel_opencv_ = static_cast<ITesselOpenCV*>(image_module);
    }
  }
  if (s_p_tessel_opencv_ == nullptr) {
    LOG(ERROR) << "TesselDllLoader::loadOpencvDll" << " s_p_tessel_opencv_ is null";
    return false;
  }
  return true;
}

ITesselOpenCV* TesselDllLoader::getTesselOpenCv(std::string caller) {
  (void)caller;
  return s_p_tessel_opencv_;
}

// TesselDllLoader: starts the imaging services and keeps the image module's interface for
// the raster route; and the file names of the kernel's two sibling modules.
#ifndef TESSEL_DLL_TESSEL_DLL_LOADER_H_
#define TESSEL_DLL_TESSEL_DLL_LOADER_H_

#include <cstdint>
#include <string>

#include "outside/ITesselOpenCV.h"

// One constant each, so that every load and free of a library passes the same pointer.
inline constexpr char kTesselKernelDll[] = "TesselKernel.dll";
inline constexpr char kTesselOpenCvDll[] = "TesselOpenCV.dll";

// What the imaging start gave loadOpencvDll; the driver stops the imaging services with it.
extern uintptr_t g_gdiplus_token;

class TesselDllLoader {
 public:
  // Starts the imaging services (whatever else happens), then loads TesselOpenCV.dll and
  // takes its interface 114 unless that is had already. False when there is no interface.
  static bool loadOpencvDll();

  // The image module's interface; null when it couldn't be had. `caller` names the asking
  // function, for the reader of the code.
  static ITesselOpenCV* getTesselOpenCv(std::string caller);

  // Interface 114 of TesselOpenCV.dll; null when it couldn't be had.
  static ITesselOpenCV* s_p_tessel_opencv_;
};

#endif  // TESSEL_DLL_TESSEL_DLL_LOADER_H_

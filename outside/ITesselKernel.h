// ITesselKernel: interface 100 of TesselKernel.dll, the metadata kernel, as the kernel calls
// it.
#ifndef OUTSIDE_ITESSELKERNEL_H_
#define OUTSIDE_ITESSELKERNEL_H_

#include "outside/MetaDataValues.h"

inline constexpr int kTesselKernelInterfaceId = 100;

struct ITesselKernel {
  // Reads the facts of the file at `path` (a narrow path, as the platform's narrow file calls
  // take it) into `values`, and with `want_thumbnails` its page images too. Fields it can't
  // fill keep their values. 0 or a result code; nothing is thrown.
  virtual int read(const char* path, MetaDataValues& values, bool want_thumbnails) = 0;

  virtual ~ITesselKernel() = default;
};

#endif  // OUTSIDE_ITESSELKERNEL_H_

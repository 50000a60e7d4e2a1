// TesselKernel: the metadata kernel, interface 100 of TesselKernel.dll. It reads what the
// fixed header of a PSD or PSB file says; other formats leave the record as it was.
#ifndef TESSELKERNEL_TESSELKERNEL_H_
#define TESSELKERNEL_TESSELKERNEL_H_

#include "outside/ITesselKernel.h"

class TesselKernel final : public ITesselKernel {
 public:
  // 0 with color_mode, page_count "1", width, height, bit_depth and doc_version ("1" PSD,
  // "2" PSB) filled for a PSD file; 2201 for a file that isn't there, 1000 for one that
  // can't be read, 2232 for a PSD whose header is broken, 2204 for any other format.
  int read(const char* path, MetaDataValues& values, bool want_thumbnails) override;
};

#endif  // TESSELKERNEL_TESSELKERNEL_H_

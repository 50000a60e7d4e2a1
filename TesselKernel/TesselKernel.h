// TesselKernel: the metadata kernel, interface 100 of TesselKernel.dll. It reads what the
// fixed header of a PSD or PSB file says, the page count of PDF, AI and EPS files and the
// page thumbnails of an AI file; other formats leave the record as it was.
#ifndef TESSELKERNEL_TESSELKERNEL_H_
#define TESSELKERNEL_TESSELKERNEL_H_

#include <string>

#include "outside/ITesselKernel.h"

class TesselKernel final : public ITesselKernel {
 public:
  // 0 with color_mode, page_count "1", width, height, bit_depth and doc_version ("1" PSD,
  // "2" PSB) filled for a PSD file; 2201 for a file that isn't there, 1000 for one that
  // can't be read, 2232 for a PSD whose header is broken, 2204 for any other format.
  // For a PDF or AI file: page_count and doc_version (the PDF version) through qpdf, and
  // with `want_thumbnails` the Base64 page images of its XMP metadata; for PostScript (EPS)
  // page_count "1". 0 when anything was read, 1000 when the document can't be opened and
  // carries no thumbnail.
  int read(const char* path, MetaDataValues& values, bool want_thumbnails) override;

 private:
  int readDocument(const std::wstring& path, const std::string& head, MetaDataValues& values,
                   bool want_thumbnails);
};

#endif  // TESSELKERNEL_TESSELKERNEL_H_

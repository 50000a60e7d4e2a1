// What the metadata kernel reads of documents: the page count of a PDF (and of an AI file,
// which is a PDF inside) through qpdf, the page thumbnails that an AI file's XMP metadata
// carries, and the marks that tell PDF and PostScript files apart.
#ifndef TESSELKERNEL_DOCUMENT_META_H_
#define TESSELKERNEL_DOCUMENT_META_H_

#include <string>
#include <vector>

// True when `head` (the first bytes of a file) holds "%PDF-" within its first 1024 bytes,
// where PDF readers look for it.
bool hasPdfMark(const std::string& head);

// True for a PostScript file ("%!") and for an EPS file with a binary preview header.
bool hasPostScriptMark(const std::string& head);

// The facts qpdf can tell of the PDF at the POSIX path: its page count and version. Damaged
// cross-reference tables are rebuilt; a file that can't be opened (an encrypted one without
// its password, one that isn't a PDF at all) gives false. `xmp` receives the decoded text of
// the document's metadata stream when it has one.
bool readPdfFacts(const std::string& posix_path, int* pages, std::string* version,
                  std::string* xmp);

// The Base64 texts of the thumbnails in XMP text, one a page: those of the page list
// (xmpTPg:PageInfo) when there is one, otherwise every xmpGImg:image, in the order they
// stand. Line-break entities are turned back into line breaks.
std::vector<std::string> xmpThumbnails(const std::string& xmp);

#endif  // TESSELKERNEL_DOCUMENT_META_H_

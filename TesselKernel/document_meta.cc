#include "TesselKernel/document_meta.h"

#include <qpdf/Buffer.hh>
#include <qpdf/QPDF.hh>
#include <qpdf/QPDFObjectHandle.hh>

#include <algorithm>
#include <exception>
#include <memory>

namespace {

// Appends the text of each xmpGImg:image (element or attribute) that starts between `from`
// and `to`.
void collectImages(const std::string& xmp, size_t from, size_t to,
                   std::vector<std::string>* images) {
  const std::string element = "<xmpGImg:image>";
  const std::string attribute = "xmpGImg:image=\"";
  size_t at = from;
  while (at < to) {
    const size_t e = xmp.find(element, at);
    const size_t a = xmp.find(attribute, at);
    const size_t start = std::min(e, a);
    if (start == std::string::npos || start >= to) break;
    const bool is_element = start == e;
    const size_t text = start + (is_element ? element.size() : attribute.size());
    const size_t end = xmp.find(is_element ? "</xmpGImg:image>" : "\"", text);
    if (end == std::string::npos || end > to) break;
    std::string image = xmp.substr(text, end - text);
    // XML keeps the line breaks of the Base64 text as character references.
    for (const auto& [ref, c] : {std::pair<std::string, char>{"&#xA;", '\n'}, {"&#xD;", '\r'},
                                 {"&#10;", '\n'}, {"&#13;", '\r'}}) {
      for (size_t r = image.find(ref); r != std::string::npos; r = image.find(ref, r + 1)) {
        image.replace(r, ref.size(), 1, c);
      }
    }
    if (!image.empty()) images->push_back(image);
    at = end;
  }
}

}  // namespace

bool hasPdfMark(const std::string& head) {
  return head.substr(0, 1024).find("%PDF-") != std::string::npos;
}

bool hasPostScriptMark(const std::string& head) {
  return head.compare(0, 2, "%!") == 0 || head.compare(0, 4, "\xC5\xD0\xD3\xC6") == 0;
}

bool readPdfFacts(const std::string& posix_path, int* pages, std::string* version,
                  std::string* xmp) {
  try {
    QPDF pdf;
    pdf.setSuppressWarnings(true);
    pdf.processFile(posix_path.c_str());
    *pages = static_cast<int>(pdf.getAllPages().size());
    *version = pdf.getPDFVersion();
    QPDFObjectHandle metadata = pdf.getRoot().getKey("/Metadata");
    if (metadata.isStream()) {
      const std::shared_ptr<Buffer> data = metadata.getStreamData(qpdf_dl_generalized);
      xmp->assign(reinterpret_cast<const char*>(data->getBuffer()), data->getSize());
    }
    return true;
  } catch (const std::exception&) {
    // Encrypted without the password, not a PDF, or damaged beyond repair.
    return false;
  }
}

std::vector<std::string> xmpThumbnails(const std::string& xmp) {
  std::vector<std::string> images;
  const size_t pages = xmp.find("<xmpTPg:PageInfo");
  if (pages != std::string::npos) {
    const size_t end = xmp.find("</xmpTPg:PageInfo>", pages);
    collectImages(xmp, pages, end == std::string::npos ? xmp.size() : end, &images);
  }
  if (images.empty()) collectImages(xmp, 0, xmp.size(), &images);
  return images;
}

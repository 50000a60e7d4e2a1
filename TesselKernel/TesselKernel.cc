#include "TesselKernel/TesselKernel.h"

#include <glog/logging.h>

#include <algorithm>
#include <string>

#include "TesselKernel/document_meta.h"
#include "TesselKernel/psd_header.h"
#include "errors/result_codes.h"
#include "platform/env.h"

namespace {

// Enough of a file's start to find the mark of any format read here.
constexpr size_t kHeadBytes = 1024;
// The most of a document that is searched for the thumbnails of its metadata.
constexpr size_t kMetadataSearchBytes = 256u << 20;

}  // namespace

int TesselKernel::read(const char* path, MetaDataValues& values, bool want_thumbnails) {
  if (path == nullptr) return codes::kBadArgument;
  platform::Env* env = platform::Env::Default();
  std::string head;
  const std::wstring wide = env->WidenNarrowPath(path);
  const platform::Status s = env->ReadFile(wide, 0, kHeadBytes, &head);
  if (!s.ok()) {
    LOG(ERROR) << "TesselKernel::read" << " can't read file:" << path << ", " << s.message;
    return s.kind == platform::ErrorKind::kNotFound ? codes::kSourceMissing
                                                    : codes::kFileReadWrite;
  }
  if (hasPdfMark(head) || hasPostScriptMark(head)) {
    return readDocument(wide, head, values, want_thumbnails);
  }
  if (!hasPsdMark(head)) return codes::kWrongFileType;
  PsdHeader header;
  if (!parsePsdHeader(head, &header)) {
    LOG(ERROR) << "TesselKernel::read" << " broken psd header, file:" << path;
    return codes::kBrokenPsd;
  }
  values.color_mode = psdColorModeName(header.color_mode);
  values.page_count = std::to_string(1);  // a PSD file is one page
  values.width = std::to_string(header.width);
  values.height = std::to_string(header.height);
  values.bit_depth = std::to_string(header.depth);
  values.doc_version = std::to_string(header.version);
  return codes::kOk;
}

int TesselKernel::readDocument(const std::wstring& path, const std::string& head,
                               MetaDataValues& values, bool want_thumbnails) {
  platform::Env* env = platform::Env::Default();
  std::string xmp;
  bool read = false;
  if (hasPostScriptMark(head)) {
    // An EPS file (and an AI file of the PostScript era) is one page.
    values.page_count = std::to_string(1);
    read = true;
  } else {
    std::string posix_path;
    int pages = 0;
    std::string version;
    if (env->ToPosixPath(path, &posix_path) && readPdfFacts(posix_path, &pages, &version, &xmp)) {
      values.page_count = std::to_string(pages);
      values.doc_version = version;
      read = true;
    } else {
      LOG(ERROR) << "TesselKernel::read"
                 << " not err, but pdf can't be opened:" << posix_path;
    }
  }
  if (want_thumbnails) {
    // The metadata stream as the document lists it, else its packet wherever it stands in
    // the file, which also serves a document whose PDF part is broken.
    values.thumbnails = xmpThumbnails(xmp);
    if (values.thumbnails.empty()) {
      std::string bytes;
      uint64_t size = 0;
      if (env->GetFileSize(path, &size).ok() &&
          env->ReadFile(path, 0, static_cast<size_t>(std::min<uint64_t>(size, kMetadataSearchBytes)),
                        &bytes)
              .ok()) {
        values.thumbnails = xmpThumbnails(bytes);
      }
    }
    read = read || !values.thumbnails.empty();
  }
  return read ? codes::kOk : codes::kFileReadWrite;
}

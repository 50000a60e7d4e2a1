#include "TesselKernel/TesselKernel.h"

#include <glog/logging.h>

#include <string>

#include "TesselKernel/psd_header.h"
#include "errors/result_codes.h"
#include "platform/env.h"

int TesselKernel::read(const char* path, MetaDataValues& values, bool want_thumbnails) {
  (void)want_thumbnails;  // no format read here carries page images
  if (path == nullptr) return codes::kBadArgument;
  platform::Env* env = platform::Env::Default();
  std::string head;
  const platform::Status s = env->ReadFile(env->WidenNarrowPath(path), 0, kPsdHeaderSize, &head);
  if (!s.ok()) {
    LOG(ERROR) << "TesselKernel::read" << " can't read file:" << path << ", " << s.message;
    return s.kind == platform::ErrorKind::kNotFound ? codes::kSourceMissing
                                                    : codes::kFileReadWrite;
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

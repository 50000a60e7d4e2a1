// pcx2jpgcmd.exe: turns a PCX picture into a JPEG file.
//
//   pcx2jpgcmd.exe -i SOURCE -o FOLDER
//
// SOURCE and FOLDER are Windows paths. The picture goes into FOLDER under the source's file
// name with its extension replaced by ".jpg" (D:\a\scan.pcx gives FOLDER\scan.jpg), which is
// the name its caller works out; it is written under a temporary name first and renamed, so
// it appears whole or not at all. GraphicsMagick decodes the PCX (1, 2, 4 and 8 bits with
// palette, 24 bits in three planes); its limits keep a lying header from taking the memory.
#include <fcntl.h>
#include <magick/api.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>

#include "converters/converter_support.h"

namespace {

constexpr char kProgram[] = "pcx2jpgcmd.exe";
constexpr char kUsage[] = "usage: pcx2jpgcmd.exe -i SOURCE.pcx -o FOLDER";
constexpr size_t kMaxSourceBytes = 256u << 20;
constexpr long long kMaxPixels = 64LL * 1000 * 1000;
constexpr long long kMaxSide = 30000;
constexpr unsigned kJpegQuality = 90;

bool readSource(const std::string& path, std::string* bytes, std::string* error) {
  const int fd = ::open(path.c_str(), O_RDONLY | O_CLOEXEC);
  if (fd < 0) {
    *error = std::strerror(errno);
    return false;
  }
  char buf[1 << 16];
  ssize_t n;
  while ((n = ::read(fd, buf, sizeof(buf))) > 0 && bytes->size() <= kMaxSourceBytes) {
    bytes->append(buf, static_cast<size_t>(n));
  }
  const int err = errno;
  ::close(fd);
  if (n < 0) *error = std::strerror(err);
  if (bytes->size() > kMaxSourceBytes) *error = "the file is too big for a PCX picture";
  return error->empty();
}

// The header's own marks: maker 10, encoding 0 or 1, a known bit depth.
bool looksLikePcx(const std::string& bytes) {
  if (bytes.size() < 128 || static_cast<unsigned char>(bytes[0]) != 0x0A) return false;
  const unsigned encoding = static_cast<unsigned char>(bytes[2]);
  const unsigned bits = static_cast<unsigned char>(bytes[3]);
  return encoding <= 1 && (bits == 1 || bits == 2 || bits == 4 || bits == 8);
}

// The source's file name with its extension replaced by ".jpg".
std::string outputNameFor(const std::string& source) {
  std::string name = source.substr(source.find_last_of("\\/") + 1);
  const size_t dot = name.rfind('.');
  if (dot != std::string::npos) name.resize(dot);
  return name + ".jpg";
}

std::string describe(const ExceptionInfo& exception) {
  std::string text = exception.reason != nullptr ? exception.reason : "unknown fault";
  if (exception.description != nullptr && exception.description[0] != '\0') {
    text += std::string(" (") + exception.description + ")";
  }
  return text;
}

// Decodes the PCX bytes and encodes them as JPEG.
bool convert(const std::string& pcx, std::string* jpeg, std::string* error) {
  ExceptionInfo exception;
  GetExceptionInfo(&exception);
  ImageInfo* info = CloneImageInfo(nullptr);
  std::snprintf(info->magick, sizeof(info->magick), "PCX");
  std::snprintf(info->filename, sizeof(info->filename), "PCX:");
  Image* image = BlobToImage(info, pcx.data(), pcx.size(), &exception);
  bool ok = image != nullptr && exception.severity < ErrorException &&
            std::strcmp(image->magick, "PCX") == 0;
  if (!ok) {
    *error = image == nullptr || exception.severity >= ErrorException
                 ? describe(exception)
                 : std::string("not read as a PCX picture");
  }
  if (ok) {
    std::snprintf(info->magick, sizeof(info->magick), "JPEG");
    std::snprintf(info->filename, sizeof(info->filename), "JPEG:");
    std::snprintf(image->magick, sizeof(image->magick), "JPEG");
    std::snprintf(image->filename, sizeof(image->filename), "JPEG:");
    info->quality = kJpegQuality;
    size_t length = 0;
    void* blob = ImageToBlob(info, image, &length, &exception);
    ok = blob != nullptr && length > 0 && exception.severity < ErrorException;
    if (ok) jpeg->assign(static_cast<const char*>(blob), length);
    if (!ok) *error = describe(exception);
    MagickFree(blob);
  }
  if (image != nullptr) DestroyImageList(image);
  DestroyImageInfo(info);
  DestroyExceptionInfo(&exception);
  return ok;
}

// Writes the file under a temporary name in its folder, then renames it into place.
bool writeWhole(const std::string& folder, const std::string& name, const std::string& bytes,
                std::string* error) {
  std::string temp = folder + "/.pcx2jpgcmd-XXXXXX";
  const int fd = ::mkstemp(temp.data());
  if (fd < 0) {
    *error = std::strerror(errno);
    return false;
  }
  size_t done = 0;
  while (done < bytes.size()) {
    const ssize_t n = ::write(fd, bytes.data() + done, bytes.size() - done);
    if (n < 0 && errno == EINTR) continue;
    if (n <= 0) break;
    done += static_cast<size_t>(n);
  }
  const int err = errno;
  const bool closed = ::close(fd) == 0;
  if (done != bytes.size() || !closed ||
      ::rename(temp.c_str(), (folder + "/" + name).c_str()) != 0) {
    *error = std::strerror(done != bytes.size() ? err : errno);
    ::unlink(temp.c_str());
    return false;
  }
  return true;
}

}  // namespace

int main(int argc, char** argv) {
  std::string source, folder;
  for (int i = 1; i < argc; ++i) {
    const std::string arg = argv[i];
    if ((arg == "-i" || arg == "-o") && i + 1 < argc) {
      (arg == "-i" ? source : folder) = argv[++i];
    } else {
      return converters::fail(kProgram, kUsage, converters::kExitBadCommandLine);
    }
  }
  if (source.empty() || folder.empty()) {
    return converters::fail(kProgram, kUsage, converters::kExitBadCommandLine);
  }
  std::string source_path, folder_path;
  if (!converters::isDrivePath(source) || !converters::mapPath(source, &source_path)) {
    return converters::fail(kProgram, "no drive holds " + source, converters::kExitBadCommandLine);
  }
  if (!converters::isDrivePath(folder) || !converters::mapPath(folder, &folder_path)) {
    return converters::fail(kProgram, "no drive holds " + folder, converters::kExitBadCommandLine);
  }

  std::string pcx, jpeg, error;
  if (!readSource(source_path, &pcx, &error))
    return converters::fail(kProgram, source + ": " + error);
  if (!looksLikePcx(pcx)) return converters::fail(kProgram, source + ": not a PCX picture");

  InitializeMagick(nullptr);
  SetMagickResourceLimit(PixelsResource, kMaxPixels);
  SetMagickResourceLimit(WidthResource, kMaxSide);
  SetMagickResourceLimit(HeightResource, kMaxSide);
  const bool converted = convert(pcx, &jpeg, &error);
  DestroyMagick();
  if (!converted) return converters::fail(kProgram, source + ": " + error);

  const std::string name = outputNameFor(source);
  if (!writeWhole(folder_path, name, jpeg, &error)) {
    return converters::fail(kProgram, folder + ": " + error);
  }
  return 0;
}

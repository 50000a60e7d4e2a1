// The imaging services on POSIX, on libvips: images with a size and a pixel format, the
// scaled draw onto white, and the encoders of BMP, JPEG, GIF, TIFF and PNG.
//
// libvips can't be shut down and started again in one process, so it is started once, at
// the first StartImaging, and stays up to the end of the process (pinned in memory, so that
// unloading the module that started it doesn't pull its threads' code away). Start and stop
// keep the set of live tokens: without one every other operation fails, as it does on a
// platform whose imaging must be started. Operations aren't cached at all, so a stop has
// nothing of the requests' to drop.
#include <dlfcn.h>
#include <fcntl.h>
#include <unistd.h>
#include <vips/vips.h>

#include <cstring>
#include <memory>
#include <mutex>
#include <set>
#include <string>

#include "platform/posix/env_posix.h"

namespace platform {
namespace {

struct ImagingState {
  std::mutex mutex;
  bool tried = false;
  bool started = false;
  uintptr_t next_token = 1;
  std::set<uintptr_t> live;
};

ImagingState& imaging() {
  static ImagingState state;
  return state;
}

bool imagingLive() {
  ImagingState& s = imaging();
  std::lock_guard<std::mutex> lock(s.mutex);
  return !s.live.empty();
}

Status imagingError(const std::string& text) {
  Status s;
  s.kind = ErrorKind::kOther;
  s.message = text;
  return s;
}

// The text libvips collected for the last failure, and the buffer emptied.
Status vipsError(const char* what) {
  char* text = vips_error_buffer_copy();
  std::string message = std::string(what) + ": " + (text != nullptr ? text : "");
  g_free(text);
  while (!message.empty() && message.back() == '\n') message.pop_back();
  return imagingError(message);
}

void dropLibraryChatter(const gchar*, GLogLevelFlags, const gchar*, gpointer) {}

bool startVips() {
  if (VIPS_INIT("pellix") != 0) return false;
  // Every request reads a different file; cached operations would only hold memory and, for a
  // file rewritten under the same name, give its old pixels.
  vips_cache_set_max(0);
  vips_leak_set(FALSE);
  // Failures come back as statuses; the library's own warnings would go to the host's
  // standard error stream.
  g_log_set_handler("VIPS", static_cast<GLogLevelFlags>(G_LOG_LEVEL_WARNING | G_LOG_LEVEL_MESSAGE),
                    dropLibraryChatter, nullptr);
  Dl_info info;
  if (::dladdr(reinterpret_cast<void*>(&vips_init), &info) != 0 && info.dli_fname != nullptr) {
    ::dlopen(info.dli_fname, RTLD_NOW | RTLD_NOLOAD | RTLD_NODELETE);
  }
  return true;
}

struct GObjectUnref {
  void operator()(void* object) const {
    if (object != nullptr) g_object_unref(object);
  }
};
using VipsRef = std::unique_ptr<VipsImage, GObjectUnref>;

// An image of ours: a file (path and header facts; pixels decoded at each draw) or pixels in
// memory that a draw made.
class VipsBackedImage final : public Image {
 public:
  VipsBackedImage(std::string path, uint32_t width, uint32_t height, PixelFormat format)
      : path_(std::move(path)), width_(width), height_(height), format_(format) {}
  VipsBackedImage(VipsRef pixels, PixelFormat format)
      : pixels_(std::move(pixels)),
        width_(static_cast<uint32_t>(vips_image_get_width(pixels_.get()))),
        height_(static_cast<uint32_t>(vips_image_get_height(pixels_.get()))),
        format_(format) {}

  uint32_t Width() const override { return width_; }
  uint32_t Height() const override { return height_; }
  PixelFormat GetPixelFormat() const override { return format_; }

  const std::string& path() const { return path_; }
  VipsImage* pixels() const { return pixels_.get(); }

 private:
  std::string path_;
  VipsRef pixels_;
  uint32_t width_;
  uint32_t height_;
  PixelFormat format_;
};

PixelFormat pixelFormatOf(VipsImage* image) {
  if (vips_image_guess_interpretation(image) == VIPS_INTERPRETATION_CMYK) {
    return kPixelFormat32bppCMYK;
  }
  const bool alpha = vips_image_hasalpha(image) != 0;
  const VipsBandFormat band_format = vips_image_get_format(image);
  const bool deep = band_format != VIPS_FORMAT_UCHAR && band_format != VIPS_FORMAT_CHAR;
  if (alpha) return deep ? kPixelFormat64bppARGB : kPixelFormat32bppARGB;
  if (vips_image_get_bands(image) == 1) {
    return deep ? kPixelFormat16bppGrayScale : kPixelFormat8bppIndexed;
  }
  return deep ? kPixelFormat48bppRGB : kPixelFormat24bppRGB;
}

// The first bytes of a file, or fewer.
std::string fileHead(const std::string& posix_path, size_t count) {
  std::string head(count, '\0');
  int fd = ::open(posix_path.c_str(), O_RDONLY | O_CLOEXEC);
  if (fd < 0) return std::string();
  ssize_t n = ::read(fd, head.data(), count);
  ::close(fd);
  head.resize(n > 0 ? static_cast<size_t>(n) : 0);
  return head;
}

// Whether the loader that libvips picked by the file's content is one of the raster images
// this service reads. The catch-all loader (ImageMagick) is taken for BMP only.
bool isRasterLoader(const char* loader, const std::string& posix_path) {
  static const char* const kLoaders[] = {
      "VipsForeignLoadJpegFile", "VipsForeignLoadPngFile",  "VipsForeignLoadNsgifFile",
      "VipsForeignLoadTiffFile", "VipsForeignLoadWebpFile", "VipsForeignLoadJp2kFile"};
  for (const char* known : kLoaders) {
    if (std::strcmp(loader, known) == 0) return true;
  }
  return std::strcmp(loader, "VipsForeignLoadMagickFile") == 0 &&
         fileHead(posix_path, 2) == "BM";
}

// The image scaled to exactly width x height, in 8-bit sRGB, alpha flattened onto white.
VipsRef drawScaled(const VipsBackedImage& source, uint32_t width, uint32_t height,
                   Status* status) {
  VipsImage* step = nullptr;
  const int w = static_cast<int>(width);
  const int h = static_cast<int>(height);
  // The orientation tag is left alone, as the image's size says the stored one.
  int rc = source.pixels() != nullptr
               ? vips_thumbnail_image(source.pixels(), &step, w, "height", h, "size",
                                      VIPS_SIZE_FORCE, nullptr)
               : vips_thumbnail(source.path().c_str(), &step, w, "height", h, "size",
                                VIPS_SIZE_FORCE, "no_rotate", TRUE, "fail_on",
                                VIPS_FAIL_ON_TRUNCATED, nullptr);
  if (rc != 0) {
    *status = vipsError("the image can't be decoded");
    return nullptr;
  }
  VipsRef image(step);
  if (vips_image_guess_interpretation(image.get()) != VIPS_INTERPRETATION_sRGB ||
      vips_image_get_format(image.get()) != VIPS_FORMAT_UCHAR) {
    if (vips_colourspace(image.get(), &step, VIPS_INTERPRETATION_sRGB, nullptr) != 0) {
      *status = vipsError("the image's colours can't be converted");
      return nullptr;
    }
    image.reset(step);
  }
  if (vips_image_hasalpha(image.get())) {
    VipsArrayDouble* white = vips_array_double_newv(3, 255.0, 255.0, 255.0);
    rc = vips_flatten(image.get(), &step, "background", white, nullptr);
    vips_area_unref(VIPS_AREA(white));
    if (rc != 0) {
      *status = vipsError("the image can't be put on white");
      return nullptr;
    }
    image.reset(step);
  }
  if (vips_cast_uchar(image.get(), &step, nullptr) != 0) {
    *status = vipsError("the image can't be made 8-bit");
    return nullptr;
  }
  image.reset(step);
  return image;
}

const ImageEncoderInfo kEncoders[] = {
    {{0x557CF400, 0x1A04, 0x11D3, {0x9A, 0x73, 0x00, 0x00, 0xF8, 0x1E, 0xF3, 0x2E}},
     L"image/bmp"},
    {{0x557CF401, 0x1A04, 0x11D3, {0x9A, 0x73, 0x00, 0x00, 0xF8, 0x1E, 0xF3, 0x2E}},
     L"image/jpeg"},
    {{0x557CF402, 0x1A04, 0x11D3, {0x9A, 0x73, 0x00, 0x00, 0xF8, 0x1E, 0xF3, 0x2E}},
     L"image/gif"},
    {{0x557CF405, 0x1A04, 0x11D3, {0x9A, 0x73, 0x00, 0x00, 0xF8, 0x1E, 0xF3, 0x2E}},
     L"image/tiff"},
    {{0x557CF406, 0x1A04, 0x11D3, {0x9A, 0x73, 0x00, 0x00, 0xF8, 0x1E, 0xF3, 0x2E}},
     L"image/png"},
};
constexpr int kJpegQuality = 75;

}  // namespace

uintptr_t PosixEnv::StartImaging() {
  ImagingState& s = imaging();
  std::lock_guard<std::mutex> lock(s.mutex);
  if (!s.tried) {
    s.tried = true;
    s.started = startVips();
  }
  if (!s.started) return 0;
  const uintptr_t token = s.next_token++;
  s.live.insert(token);
  return token;
}

void PosixEnv::StopImaging(uintptr_t token) {
  ImagingState& s = imaging();
  std::lock_guard<std::mutex> lock(s.mutex);
  // The buffers libvips keeps for this thread go with the last user; libvips itself stays.
  if (s.live.erase(token) == 1 && s.live.empty()) vips_thread_shutdown();
}

std::shared_ptr<Image> PosixEnv::LoadImage(const std::wstring& path, Status* status) {
  *status = Status::Ok();
  if (!imagingLive()) {
    *status = imagingError("the imaging services aren't started");
    return nullptr;
  }
  std::string p;
  if (!ToPosixPath(path, &p) || ::access(p.c_str(), R_OK) != 0) {
    *status = imagingError("no such file");
    status->kind = ErrorKind::kNotFound;
    return nullptr;
  }
  const char* loader = vips_foreign_find_load(p.c_str());
  if (loader == nullptr || !isRasterLoader(loader, p)) {
    vips_error_clear();
    *status = imagingError("not an image of a known kind");
    return nullptr;
  }
  VipsRef header(vips_image_new_from_file(p.c_str(), "access", VIPS_ACCESS_SEQUENTIAL,
                                          nullptr));
  if (header == nullptr) {
    *status = vipsError("the image's header can't be read");
    return nullptr;
  }
  return std::make_shared<VipsBackedImage>(
      p, static_cast<uint32_t>(vips_image_get_width(header.get())),
      static_cast<uint32_t>(vips_image_get_height(header.get())), pixelFormatOf(header.get()));
}

std::shared_ptr<Image> PosixEnv::DrawImageOnWhite(const Image& image, uint32_t width,
                                                  uint32_t height, PixelFormat format,
                                                  Status* status) {
  *status = Status::Ok();
  if (!imagingLive()) {
    *status = imagingError("the imaging services aren't started");
    return nullptr;
  }
  if (width == 0 || height == 0 || width > 10000000 || height > 10000000) {
    *status = imagingError("no drawable size");
    return nullptr;
  }
  // Every Image comes from this file, so the cast is safe.
  VipsRef drawn = drawScaled(static_cast<const VipsBackedImage&>(image), width, height, status);
  if (drawn == nullptr) return nullptr;
  if ((format & kPixelFormatAlpha) != 0) {
    VipsImage* with_alpha = nullptr;
    if (vips_bandjoin_const1(drawn.get(), &with_alpha, 255.0, nullptr) != 0) {
      *status = vipsError("the image can't take an alpha channel");
      return nullptr;
    }
    drawn.reset(with_alpha);
  }
  // Decodes the source now, so that a damaged file fails here and not at the save.
  VipsRef pixels(vips_image_copy_memory(drawn.get()));
  if (pixels == nullptr) {
    *status = vipsError("the image can't be decoded");
    return nullptr;
  }
  return std::make_shared<VipsBackedImage>(std::move(pixels), format);
}

std::vector<ImageEncoderInfo> PosixEnv::GetImageEncoders() {
  return std::vector<ImageEncoderInfo>(std::begin(kEncoders), std::end(kEncoders));
}

Status PosixEnv::EncodeImage(const Image& image, const EncoderId& clsid, std::string* bytes) {
  bytes->clear();
  int encoder = -1;
  for (size_t i = 0; i < std::size(kEncoders); ++i) {
    if (kEncoders[i].clsid == clsid) encoder = static_cast<int>(i);
  }
  if (encoder < 0) return imagingError("no such encoder");
  std::shared_ptr<Image> drawn;
  const auto* ours = static_cast<const VipsBackedImage*>(&image);
  if (ours->pixels() == nullptr) {
    Status s;
    drawn = DrawImageOnWhite(image, image.Width(), image.Height(), image.GetPixelFormat(), &s);
    if (drawn == nullptr) return s;
    ours = static_cast<const VipsBackedImage*>(drawn.get());
  } else if (!imagingLive()) {
    return imagingError("the imaging services aren't started");
  }
  // The pixels are sRGB whatever profile the source had, so no profile goes with them.
  VipsImage* in = ours->pixels();
  void* buf = nullptr;
  size_t len = 0;
  int rc = -1;
  switch (encoder) {
    case 0:
      rc = vips_magicksave_buffer(in, &buf, &len, "format", "bmp", "strip", TRUE, nullptr);
      break;
    case 1:
      rc = vips_jpegsave_buffer(in, &buf, &len, "Q", kJpegQuality, "strip", TRUE, nullptr);
      break;
    case 2:
      rc = vips_gifsave_buffer(in, &buf, &len, "strip", TRUE, nullptr);
      break;
    case 3:
      rc = vips_tiffsave_buffer(in, &buf, &len, "compression",
                                VIPS_FOREIGN_TIFF_COMPRESSION_LZW, "strip", TRUE, nullptr);
      break;
    default:
      rc = vips_pngsave_buffer(in, &buf, &len, "strip", TRUE, nullptr);
      break;
  }
  if (rc != 0) return vipsError("the image can't be encoded");
  bytes->assign(static_cast<const char*>(buf), len);
  g_free(buf);
  return Status::Ok();
}

}  // namespace platform

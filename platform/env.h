// The platform layer: every operating-system service the kernel uses, behind one interface.
//
// The kernel holds paths in Windows form (wide text of UTF-16 code units, a drive letter,
// backslashes, maybe the prefix "\\?\"), and every operation here that takes a path takes
// that form and maps it through the drive table itself. An operation keeps the contract the
// kernel relies on (what it returns, what counts as failure); time limits, result codes and
// log texts belong to the kernel, never to this layer. One implementation per platform is
// picked by the build; this header includes nothing of any operating system.
#ifndef PLATFORM_ENV_H_
#define PLATFORM_ENV_H_

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "platform/windows_path.h"

namespace platform {

// What went wrong in a failed operation, in the platform's own terms turned into ours.
enum class ErrorKind {
  kNone = 0,
  kNotFound,      // the path or one of its folders isn't there, or no drive holds it
  kAccessDenied,  // there, but this process may not do that to it
  kExists,        // something is already there
  kNotEmpty,      // a folder that still holds entries
  kIsFolder,      // a folder where a file was wanted
  kNotFolder,     // a file where a folder was wanted
  kNoSpace,       // the disk or a quota is full
  kOther,
};

// The outcome of an operation that can fail: the kind, the operating system's own number for
// the log (0 when there is none) and a readable text of the cause.
struct Status {
  ErrorKind kind = ErrorKind::kNone;
  int os_code = 0;
  std::string message;

  bool ok() const { return kind == ErrorKind::kNone; }
  static Status Ok() { return {}; }
};

// The kinds of drive, numbered as the kernel's drive lists number them.
enum class DriveType {
  kUnknown = 0,
  kNoRootDir = 1,
  kRemovable = 2,
  kFixed = 3,
  kRemote = 4,
  kCdRom = 5,
  kRamDisk = 6,
};

struct DriveInfo {
  wchar_t letter;  // 'A' to 'Z'
  DriveType type;
};

// What names a volume for its serial: the identity of the file system that holds a drive's
// root (one that survives a new mount) and of the root folder itself.
struct VolumeIdentity {
  uint64_t file_system_id = 0;
  uint64_t root_folder_id = 0;
};

// One entry of a folder listing.
struct DirEntry {
  std::wstring name;  // the entry's own name, without its folder
  bool is_folder = false;
};

// Pixel formats, numbered as the Windows imaging API numbers them: the low bits name the
// layout, the higher bits are flags, so that `format & kPixelFormatAlpha` tells whether a
// format carries alpha.
using PixelFormat = int32_t;
inline constexpr PixelFormat kPixelFormatAlpha = 0x40000;
inline constexpr PixelFormat kPixelFormat8bppIndexed = 0x30803;
inline constexpr PixelFormat kPixelFormat16bppGrayScale = 0x101004;
inline constexpr PixelFormat kPixelFormat24bppRGB = 0x21808;
inline constexpr PixelFormat kPixelFormat32bppRGB = 0x22009;
inline constexpr PixelFormat kPixelFormat32bppARGB = 0x26200A;
inline constexpr PixelFormat kPixelFormat48bppRGB = 0x10300C;
inline constexpr PixelFormat kPixelFormat64bppARGB = 0x34400D;
inline constexpr PixelFormat kPixelFormat32bppCMYK = 0x200F;

// An image of the imaging services: one loaded from a file (whose pixels are decoded only
// when it is drawn) or one they drew.
class Image {
 public:
  virtual ~Image() = default;
  virtual uint32_t Width() const = 0;
  virtual uint32_t Height() const = 0;
  virtual PixelFormat GetPixelFormat() const = 0;
};

// The class identifier under which the imaging services know an encoder.
struct EncoderId {
  uint32_t data1 = 0;
  uint16_t data2 = 0;
  uint16_t data3 = 0;
  uint8_t data4[8] = {};
  bool operator==(const EncoderId&) const = default;
};

struct ImageEncoderInfo {
  EncoderId clsid;
  std::wstring mime_type;  // "image/jpeg"
};

class Env {
 public:
  virtual ~Env() = default;

  // The process's one platform object, made at first use.
  static Env* Default();

  // ---- Drive table and path forms ----

  // The drive table as it stands now: each drive letter with the POSIX folder that is its
  // root, in letter order. Only drives whose root folder exists are listed. The table is
  // read anew at each call, so a drive that comes or goes is seen at once.
  virtual std::vector<DriveRoot> GetDriveTable() = 0;

  // A Windows path as the POSIX path that the platform's file calls take; false when no
  // drive holds it (see WindowsToPosix).
  virtual bool ToPosixPath(const std::wstring& windows_path, std::string* posix_path) = 0;

  // An absolute POSIX path in its Windows form: the drive with the longest matching root
  // gives the letter. A path that names an existing file is also tried through its real
  // path (symbolic links resolved) when its own text matches no drive. False when no drive
  // holds it.
  virtual bool ToWindowsPath(const std::string& posix_path, std::wstring* windows_path) = 0;

  // The drives that exist, in letter order, each with its type: a remote file system is
  // kRemote, a block device marked removable is kRemovable, anything else kFixed.
  virtual std::vector<DriveInfo> GetDrives() = 0;

  // The identity of the volume whose root is the drive of `letter`; false if there is no
  // such drive.
  virtual bool GetVolumeIdentity(wchar_t letter, VolumeIdentity* identity) = 0;

  // ---- Files and folders ----

  // True if something (file or folder) is at the path and this process can reach it.
  virtual bool PathExists(const std::wstring& path) = 0;

  // The wide path that the platform's narrow file calls take a narrow path for: a narrow
  // path is Windows form in the encoding that those calls read (UTF-8 here).
  virtual std::wstring WidenNarrowPath(const std::string& path) = 0;

  // True if a folder is at the path.
  virtual bool IsFolder(const std::wstring& path) = 0;

  // The size in bytes of the file at the path.
  virtual Status GetFileSize(const std::wstring& path, uint64_t* size) = 0;

  // Reads at most `max_bytes` bytes from `offset` on. Other readers and writers keep the
  // file. Fewer bytes than asked for (also none) means the file ended.
  virtual Status ReadFile(const std::wstring& path, uint64_t offset, size_t max_bytes,
                          std::string* bytes) = 0;

  // Reads the whole file.
  virtual Status ReadWholeFile(const std::wstring& path, std::string* bytes) = 0;

  // Creates or truncates the file and writes `bytes` to it.
  virtual Status WriteFile(const std::wstring& path, const std::string& bytes) = 0;

  // Renames `from` to `to`, replacing a file at `to` in one step.
  virtual Status RenameFile(const std::wstring& from, const std::wstring& to) = 0;

  // Deletes one file (not a folder).
  virtual Status DeleteFile(const std::wstring& path) = 0;

  // Creates one folder; its parent must exist. kExists if something is there already.
  virtual Status CreateFolder(const std::wstring& path) = 0;

  // Removes one empty folder.
  virtual Status RemoveFolder(const std::wstring& path) = 0;

  // The entries of a folder, without "." and "..", in no particular order.
  virtual Status ListFolder(const std::wstring& path, std::vector<DirEntry>* entries) = 0;

  // ---- The running program ----

  // The full path of the program file of this process (the host, not a module), in Windows
  // form; empty if no drive holds it.
  virtual std::wstring GetProgramPath() = 0;

  // The home folder, the per-user data folder and the all-users data folder, in Windows
  // form; empty if no drive holds them. Nothing is created.
  virtual std::wstring GetHomeFolder() = 0;
  virtual std::wstring GetUserDataFolder() = 0;
  virtual std::wstring GetCommonDataFolder() = 0;

  // ---- Dynamic libraries ----

  // Loads the library file at the path; null if it can't be loaded. `error` receives the
  // loader's text when given.
  virtual void* LoadLibrary(const std::wstring& path, std::string* error) = 0;

  // The address of an exported name; null if the library lacks it.
  virtual void* GetLibrarySymbol(void* library, const char* name) = 0;

  // Unloads a library that LoadLibrary gave; false if the platform refused.
  virtual bool FreeLibrary(void* library) = 0;

  // ---- Imaging ----

  // Starts the imaging services for one user and gives that user's token; 0 if they can't
  // start. The other imaging operations fail while no token is live.
  virtual uintptr_t StartImaging() = 0;

  // Ends the use that `token` stands for; a token that isn't live is ignored. The services
  // can be started again afterwards.
  virtual void StopImaging(uintptr_t token) = 0;

  // Opens the image file at the path and reads its size and pixel format: JPEG, PNG, GIF
  // (the first frame), TIFF, BMP, WebP and JPEG 2000, known by their content. Null with
  // `status` telling why (kNotFound for a missing file).
  virtual std::shared_ptr<Image> LoadImage(const std::wstring& path, Status* status) = 0;

  // A new image of `width` by `height` in `format`: an opaque white ground with `image`
  // drawn on it, scaled to fill it, colours in sRGB (CMYK through the image's own colour
  // profile or a standard one). Null with `status` telling why when the source can't be
  // decoded in full: a truncated file is a failure, not a partial image.
  virtual std::shared_ptr<Image> DrawImageOnWhite(const Image& image, uint32_t width,
                                                  uint32_t height, PixelFormat format,
                                                  Status* status) = 0;

  // The encoders there are, exactly those of BMP, JPEG, GIF, TIFF and PNG, in this order.
  virtual std::vector<ImageEncoderInfo> GetImageEncoders() = 0;

  // The image encoded by the encoder of `clsid` (JPEG at the encoder's default quality of
  // 75), into `bytes`. A format without alpha is encoded without it.
  virtual Status EncodeImage(const Image& image, const EncoderId& clsid, std::string* bytes) = 0;

  // ---- Clock ----

  // Seconds since 1970-01-01 UTC.
  virtual int64_t NowSeconds() = 0;

  // A monotonic clock in microseconds, for durations only.
  virtual uint64_t NowMicros() = 0;

  virtual void SleepForMicroseconds(uint64_t micros) = 0;

  // ---- Text ----

  // Wide text in the narrow code page `code_page` (936 for Chinese); false if the text
  // can't be converted or the code page isn't known.
  virtual bool WideToCodePage(const std::wstring& text, int code_page, std::string* out) = 0;
};

}  // namespace platform

#endif  // PLATFORM_ENV_H_

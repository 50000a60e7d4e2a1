// The POSIX implementation of the platform layer, declared for the files that implement its
// parts. Nothing outside platform/posix/ includes this.
#ifndef PLATFORM_POSIX_ENV_POSIX_H_
#define PLATFORM_POSIX_ENV_POSIX_H_

#include <string>
#include <vector>

#include "platform/env.h"

namespace platform {

class PosixEnv final : public Env {
 public:
  std::vector<DriveRoot> GetDriveTable() override;
  bool ToPosixPath(const std::wstring& windows_path, std::string* posix_path) override;
  bool ToWindowsPath(const std::string& posix_path, std::wstring* windows_path) override;
  std::vector<DriveInfo> GetDrives() override;
  bool GetVolumeIdentity(wchar_t letter, VolumeIdentity* identity) override;
  bool PathExists(const std::wstring& path) override;
  std::wstring WidenNarrowPath(const std::string& path) override;
  bool IsFolder(const std::wstring& path) override;
  Status GetFileSize(const std::wstring& path, uint64_t* size) override;
  Status ReadFile(const std::wstring& path, uint64_t offset, size_t max_bytes,
                  std::string* bytes) override;
  Status ReadWholeFile(const std::wstring& path, std::string* bytes) override;
  Status WriteFile(const std::wstring& path, const std::string& bytes) override;
  Status RenameFile(const std::wstring& from, const std::wstring& to) override;
  Status DeleteFile(const std::wstring& path) override;
  Status CreateFolder(const std::wstring& path) override;
  Status RemoveFolder(const std::wstring& path) override;
  Status ListFolder(const std::wstring& path, std::vector<DirEntry>* entries) override;
  std::wstring GetProgramPath() override;
  std::wstring GetHomeFolder() override;
  std::wstring GetUserDataFolder() override;
  std::wstring GetCommonDataFolder() override;
  void* LoadLibrary(const std::wstring& path, std::string* error) override;
  void* GetLibrarySymbol(void* library, const char* name) override;
  bool FreeLibrary(void* library) override;
  uintptr_t StartImaging() override;
  void StopImaging(uintptr_t token) override;
  std::shared_ptr<Image> LoadImage(const std::wstring& path, Status* status) override;
  std::shared_ptr<Image> DrawImageOnWhite(const Image& image, uint32_t width, uint32_t height,
                                          PixelFormat format, Status* status) override;
  std::vector<ImageEncoderInfo> GetImageEncoders() override;
  Status EncodeImage(const Image& image, const EncoderId& clsid, std::string* bytes) override;
  int64_t NowSeconds() override;
  uint64_t NowMicros() override;
  void SleepForMicroseconds(uint64_t micros) override;
  bool WideToCodePage(const std::wstring& text, int code_page, std::string* out) override;

 private:
  // The Windows form of a POSIX path; empty when no drive holds it.
  std::wstring WindowsFormOf(const std::string& posix_path);
};

}  // namespace platform

#endif  // PLATFORM_POSIX_ENV_POSIX_H_

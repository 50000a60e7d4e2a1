// The platform layer on POSIX (Linux): the drive table of dosdevices/, file calls on mapped
// paths, dlopen, the clocks, iconv. errno is turned into ErrorKind here and nowhere else.
#include <dirent.h>
#include <dlfcn.h>
#include <fcntl.h>
#include <iconv.h>
#include <limits.h>
#include <linux/magic.h>
#include <pwd.h>
#include <sys/stat.h>
#include <sys/statfs.h>
#include <sys/sysmacros.h>
#include <time.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <string>
#include <vector>

#include "platform/posix/env_posix.h"

namespace platform {

Status StatusFromErrno(int err) {
  Status s;
  s.os_code = err;
  s.message = std::strerror(err);
  switch (err) {
    case 0:
      s.kind = ErrorKind::kNone;
      break;
    case ENOENT:
    case ESRCH:
    case ENOTDIR:
    case ENAMETOOLONG:
    case ELOOP:
      s.kind = err == ENOTDIR ? ErrorKind::kNotFolder : ErrorKind::kNotFound;
      break;
    case EACCES:
    case EPERM:
    case EROFS:
      s.kind = ErrorKind::kAccessDenied;
      break;
    case EEXIST:
      s.kind = ErrorKind::kExists;
      break;
    case ENOTEMPTY:
      s.kind = ErrorKind::kNotEmpty;
      break;
    case EISDIR:
      s.kind = ErrorKind::kIsFolder;
      break;
    case ENOSPC:
    case EDQUOT:
      s.kind = ErrorKind::kNoSpace;
      break;
    default:
      s.kind = ErrorKind::kOther;
      break;
  }
  return s;
}

namespace {

Status NoDrive() {
  Status s;
  s.kind = ErrorKind::kNotFound;
  s.message = "no drive holds the path";
  return s;
}

std::string RealPath(const std::string& path) {
  char buf[PATH_MAX];
  if (::realpath(path.c_str(), buf) == nullptr) return std::string();
  return buf;
}

bool IsPosixFolder(const std::string& path) {
  struct stat st;
  return ::stat(path.c_str(), &st) == 0 && S_ISDIR(st.st_mode);
}

std::string ProgramPosixPath() {
  char buf[PATH_MAX];
  ssize_t n = ::readlink("/proc/self/exe", buf, sizeof(buf) - 1);
  if (n <= 0) return std::string();
  return std::string(buf, static_cast<size_t>(n));
}

std::string PosixHome() {
  const char* home = std::getenv("HOME");
  if (home != nullptr && home[0] == '/') return home;
  struct passwd pw;
  struct passwd* found = nullptr;
  std::vector<char> buf(16384);
  if (::getpwuid_r(::getuid(), &pw, buf.data(), buf.size(), &found) == 0 && found != nullptr &&
      found->pw_dir != nullptr) {
    return found->pw_dir;
  }
  return "/";
}

bool IsRemoteFileSystem(long type) {
  switch (static_cast<unsigned long>(type)) {
    case NFS_SUPER_MAGIC:
    case SMB_SUPER_MAGIC:
    case 0xFF534D42UL:  // CIFS
    case 0xFE534D42UL:  // SMB2
    case CODA_SUPER_MAGIC:
    case AFS_SUPER_MAGIC:
    case 0x6B414653UL:  // AFS (kafs)
    case 0x47504653UL:  // GPFS
    case 0x0BD00BD0UL:  // Lustre
    case 0x013111A8UL:  // IBRIX
    case 0x19830326UL:  // FhGFS / BeeGFS
      return true;
    default:
      return false;
  }
}

// A block device (or the disk that holds a partition) that sysfs marks removable.
bool IsRemovableDevice(dev_t dev) {
  char link[64];
  std::snprintf(link, sizeof(link), "/sys/dev/block/%u:%u", major(dev), minor(dev));
  std::string device = RealPath(link);
  if (device.empty()) return false;
  for (const std::string& dir : {device, device + "/.."}) {
    int fd = ::open((dir + "/removable").c_str(), O_RDONLY | O_CLOEXEC);
    if (fd < 0) continue;
    char c = '0';
    ssize_t n = ::read(fd, &c, 1);
    ::close(fd);
    if (n == 1) return c == '1';
  }
  return false;
}

}  // namespace

std::string DriveTableFolder() {
  const char* given = std::getenv("PELLIX_DRIVE_TABLE");
  if (given != nullptr && given[0] == '/') return given;
  const std::string program = ProgramPosixPath();
  if (program.empty()) return std::string();
  return program.substr(0, program.rfind('/') + 1) + "dosdevices";
}

std::vector<DriveRoot> PosixEnv::GetDriveTable() {
  std::vector<DriveRoot> table;
  const std::string devices = DriveTableFolder();
  if (!devices.empty() && IsPosixFolder(devices)) {
    DIR* dir = ::opendir(devices.c_str());
    if (dir == nullptr) return table;
    while (struct dirent* e = ::readdir(dir)) {
      const std::string name = e->d_name;
      if (name.size() != 2 || name[1] != ':') continue;
      char c = name[0];
      if (c >= 'a' && c <= 'z') c = static_cast<char>(c - 'a' + 'A');
      if (c < 'A' || c > 'Z') continue;
      std::string root = RealPath(devices + "/" + name);
      if (root.empty() || !IsPosixFolder(root)) continue;  // a drive whose volume is gone
      table.push_back({static_cast<wchar_t>(c), root});
    }
    ::closedir(dir);
  } else {
    std::string home = RealPath(PosixHome());
    if (!home.empty()) table.push_back({L'C', home});
    table.push_back({L'Z', "/"});
  }
  std::sort(table.begin(), table.end(),
            [](const DriveRoot& a, const DriveRoot& b) { return a.letter < b.letter; });
  return table;
}

bool PosixEnv::ToPosixPath(const std::wstring& windows_path, std::string* posix_path) {
  return WindowsToPosix(windows_path, GetDriveTable(), posix_path);
}

bool PosixEnv::ToWindowsPath(const std::string& posix_path, std::wstring* windows_path) {
  const std::vector<DriveRoot> table = GetDriveTable();
  if (PosixToWindows(posix_path, table, windows_path)) return true;
  const std::string real = RealPath(posix_path);
  return !real.empty() && PosixToWindows(real, table, windows_path);
}

std::vector<DriveInfo> PosixEnv::GetDrives() {
  std::vector<DriveInfo> drives;
  for (const DriveRoot& d : GetDriveTable()) {
    DriveType type = DriveType::kFixed;
    struct statfs fs;
    struct stat st;
    if (::statfs(d.posix_root.c_str(), &fs) == 0 && IsRemoteFileSystem(fs.f_type)) {
      type = DriveType::kRemote;
    } else if (::stat(d.posix_root.c_str(), &st) == 0 && IsRemovableDevice(st.st_dev)) {
      type = DriveType::kRemovable;
    }
    drives.push_back({d.letter, type});
  }
  return drives;
}

bool PosixEnv::GetVolumeIdentity(wchar_t letter, VolumeIdentity* identity) {
  for (const DriveRoot& d : GetDriveTable()) {
    if (d.letter != letter) continue;
    struct statfs fs;
    struct stat st;
    if (::statfs(d.posix_root.c_str(), &fs) != 0 || ::stat(d.posix_root.c_str(), &st) != 0) {
      return false;
    }
    uint64_t fsid = 0;
    std::memcpy(&fsid, &fs.f_fsid,
                sizeof(fsid) < sizeof(fs.f_fsid) ? sizeof(fsid) : sizeof(fs.f_fsid));
    // Some file systems report no id of their own; their device number stands in.
    identity->file_system_id = fsid != 0 ? fsid : static_cast<uint64_t>(st.st_dev);
    identity->root_folder_id = static_cast<uint64_t>(st.st_ino);
    return true;
  }
  return false;
}

bool PosixEnv::PathExists(const std::wstring& path) {
  std::string p;
  return ToPosixPath(path, &p) && ::access(p.c_str(), F_OK) == 0;
}

std::wstring PosixEnv::WidenNarrowPath(const std::string& path) { return FileNameToUtf16(path); }

bool PosixEnv::IsFolder(const std::wstring& path) {
  std::string p;
  return ToPosixPath(path, &p) && IsPosixFolder(p);
}

Status PosixEnv::GetFileSize(const std::wstring& path, uint64_t* size) {
  std::string p;
  if (!ToPosixPath(path, &p)) return NoDrive();
  struct stat st;
  if (::stat(p.c_str(), &st) != 0) return StatusFromErrno(errno);
  *size = static_cast<uint64_t>(st.st_size);
  return Status::Ok();
}

Status PosixEnv::ReadFile(const std::wstring& path, uint64_t offset, size_t max_bytes,
                          std::string* bytes) {
  bytes->clear();
  std::string p;
  if (!ToPosixPath(path, &p)) return NoDrive();
  Fd fd(::open(p.c_str(), O_RDONLY | O_CLOEXEC));
  if (fd.get() < 0) return StatusFromErrno(errno);
  bytes->resize(max_bytes);
  size_t got = 0;
  while (got < max_bytes) {
    ssize_t n =
        ::pread(fd.get(), bytes->data() + got, max_bytes - got, static_cast<off_t>(offset + got));
    if (n < 0 && errno == EINTR) continue;
    if (n < 0) {
      int err = errno;
      bytes->clear();
      return StatusFromErrno(err);
    }
    if (n == 0) break;
    got += static_cast<size_t>(n);
  }
  bytes->resize(got);
  return Status::Ok();
}

Status PosixEnv::ReadWholeFile(const std::wstring& path, std::string* bytes) {
  bytes->clear();
  std::string p;
  if (!ToPosixPath(path, &p)) return NoDrive();
  Fd fd(::open(p.c_str(), O_RDONLY | O_CLOEXEC));
  if (fd.get() < 0) return StatusFromErrno(errno);
  struct stat st;
  if (::fstat(fd.get(), &st) == 0 && S_ISREG(st.st_mode)) {
    bytes->reserve(static_cast<size_t>(st.st_size));
  }
  char buf[1 << 16];
  for (;;) {
    ssize_t n = ::read(fd.get(), buf, sizeof(buf));
    if (n < 0 && errno == EINTR) continue;
    if (n < 0) {
      int err = errno;
      bytes->clear();
      return StatusFromErrno(err);
    }
    if (n == 0) break;
    bytes->append(buf, static_cast<size_t>(n));
  }
  return Status::Ok();
}

Status PosixEnv::WriteFile(const std::wstring& path, const std::string& bytes) {
  std::string p;
  if (!ToPosixPath(path, &p)) return NoDrive();
  Fd fd(::open(p.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0666));
  if (fd.get() < 0) return StatusFromErrno(errno);
  size_t done = 0;
  while (done < bytes.size()) {
    ssize_t n = ::write(fd.get(), bytes.data() + done, bytes.size() - done);
    if (n < 0 && errno == EINTR) continue;
    if (n < 0) return StatusFromErrno(errno);
    done += static_cast<size_t>(n);
  }
  if (::close(fd.release()) != 0) return StatusFromErrno(errno);
  return Status::Ok();
}

Status PosixEnv::RenameFile(const std::wstring& from, const std::wstring& to) {
  std::string a, b;
  if (!ToPosixPath(from, &a) || !ToPosixPath(to, &b)) return NoDrive();
  if (::rename(a.c_str(), b.c_str()) != 0) return StatusFromErrno(errno);
  return Status::Ok();
}

Status PosixEnv::DeleteFile(const std::wstring& path) {
  std::string p;
  if (!ToPosixPath(path, &p)) return NoDrive();
  struct stat st;
  if (::lstat(p.c_str(), &st) == 0 && S_ISDIR(st.st_mode)) return StatusFromErrno(EISDIR);
  if (::unlink(p.c_str()) != 0) return StatusFromErrno(errno);
  return Status::Ok();
}

Status PosixEnv::CreateFolder(const std::wstring& path) {
  std::string p;
  if (!ToPosixPath(path, &p)) return NoDrive();
  if (::mkdir(p.c_str(), 0777) != 0) return StatusFromErrno(errno);
  return Status::Ok();
}

Status PosixEnv::RemoveFolder(const std::wstring& path) {
  std::string p;
  if (!ToPosixPath(path, &p)) return NoDrive();
  if (::rmdir(p.c_str()) != 0) return StatusFromErrno(errno);
  return Status::Ok();
}

Status PosixEnv::ListFolder(const std::wstring& path, std::vector<DirEntry>* entries) {
  entries->clear();
  std::string p;
  if (!ToPosixPath(path, &p)) return NoDrive();
  DIR* dir = ::opendir(p.c_str());
  if (dir == nullptr) return StatusFromErrno(errno);
  while (struct dirent* e = ::readdir(dir)) {
    const std::string name = e->d_name;
    if (name == "." || name == "..") continue;
    bool folder = e->d_type == DT_DIR;
    if (e->d_type == DT_UNKNOWN) {
      // A symbolic link is never a folder here, so that nothing walks out of the tree.
      struct stat st;
      folder = ::lstat((p + "/" + name).c_str(), &st) == 0 && S_ISDIR(st.st_mode);
    }
    entries->push_back({FileNameToUtf16(name), folder});
  }
  ::closedir(dir);
  return Status::Ok();
}

std::wstring PosixEnv::GetProgramPath() { return WindowsFormOf(ProgramPosixPath()); }

std::wstring PosixEnv::GetHomeFolder() { return WindowsFormOf(PosixHome()); }

std::wstring PosixEnv::GetUserDataFolder() {
  const char* xdg = std::getenv("XDG_DATA_HOME");
  if (xdg != nullptr && xdg[0] == '/') return WindowsFormOf(xdg);
  return WindowsFormOf(PosixHome() + "/.local/share");
}

std::wstring PosixEnv::GetCommonDataFolder() { return WindowsFormOf("/var/tmp"); }

void* PosixEnv::LoadLibrary(const std::wstring& path, std::string* error) {
  std::string p;
  if (!ToPosixPath(path, &p)) {
    if (error != nullptr) *error = "no drive holds the path";
    return nullptr;
  }
  void* handle = ::dlopen(p.c_str(), RTLD_NOW | RTLD_LOCAL);
  if (handle == nullptr && error != nullptr) {
    const char* text = ::dlerror();
    *error = text != nullptr ? text : "dlopen failed";
  }
  return handle;
}

void* PosixEnv::GetLibrarySymbol(void* library, const char* name) {
  return library == nullptr ? nullptr : ::dlsym(library, name);
}

bool PosixEnv::FreeLibrary(void* library) { return library != nullptr && ::dlclose(library) == 0; }

int64_t PosixEnv::NowSeconds() { return static_cast<int64_t>(::time(nullptr)); }

uint64_t PosixEnv::NowMicros() {
  struct timespec ts;
  ::clock_gettime(CLOCK_MONOTONIC, &ts);
  return static_cast<uint64_t>(ts.tv_sec) * 1000000u + static_cast<uint64_t>(ts.tv_nsec) / 1000u;
}

void PosixEnv::SleepForMicroseconds(uint64_t micros) {
  struct timespec ts;
  ts.tv_sec = static_cast<time_t>(micros / 1000000u);
  ts.tv_nsec = static_cast<long>((micros % 1000000u) * 1000u);
  while (::nanosleep(&ts, &ts) != 0 && errno == EINTR) {
  }
}

bool PosixEnv::WideToCodePage(const std::wstring& text, int code_page, std::string* out) {
  out->clear();
  const std::string charset = code_page == 936 ? "GBK" : "CP" + std::to_string(code_page);
  iconv_t cd = ::iconv_open(charset.c_str(), "UTF-8");
  if (cd == reinterpret_cast<iconv_t>(-1)) return false;
  std::string in = Utf16ToFileName(text);
  std::string result(in.size() * 2 + 4, '\0');
  char* src = in.data();
  size_t src_left = in.size();
  char* dst = result.data();
  size_t dst_left = result.size();
  size_t rc = ::iconv(cd, &src, &src_left, &dst, &dst_left);
  ::iconv_close(cd);
  if (rc == static_cast<size_t>(-1)) return false;
  result.resize(result.size() - dst_left);
  *out = result;
  return true;
}

std::wstring PosixEnv::WindowsFormOf(const std::string& posix_path) {
  std::wstring w;
  return ToWindowsPath(posix_path, &w) ? w : std::wstring();
}

Env* Env::Default() {
  // Holds no state, so it may be destroyed with the module that holds it.
  static PosixEnv env;
  return &env;
}

}  // namespace platform

// A test program that stands in for a converter, so that tests can start real processes
// that misbehave on purpose. Copied under other file names it runs under those names.
//
//   child_standin hang                      sleeps until it is killed
//   child_standin crash                     dies of SIGSEGV, in the folder of its own
//                                           program file, so that a core file, should the
//                                           system write one, never lands in a source tree
//   child_standin exit CODE                 ends with that exit status
//   child_standin write-slowly FILE N MS    appends N blocks of 1000 bytes to FILE, MS apart
//   child_standin args FILE ...             writes every argument, its own path first, each
//                                           followed by a NUL, to FILE
//   child_standin report FILE               writes what it inherited to FILE, one line each:
//                                           "fd N TARGET", "session SID PID", "core LIMIT",
//                                           "sigint default|other", "blocked N",
//                                           "table VALUE" (PELLIX_DRIVE_TABLE)
#include <dirent.h>
#include <fcntl.h>
#include <limits.h>
#include <signal.h>
#include <sys/resource.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>

namespace {

bool WriteAll(const std::string& path, const std::string& bytes, int flags) {
  const int fd = ::open(path.c_str(), O_WRONLY | O_CREAT | O_CLOEXEC | flags, 0644);
  if (fd < 0) return false;
  const bool ok = ::write(fd, bytes.data(), bytes.size()) == static_cast<ssize_t>(bytes.size());
  ::close(fd);
  return ok;
}

std::string Report() {
  std::string text;
  DIR* dir = ::opendir("/proc/self/fd");
  const int own = dir != nullptr ? ::dirfd(dir) : -1;
  while (dir != nullptr) {
    struct dirent* e = ::readdir(dir);
    if (e == nullptr) break;
    if (e->d_name[0] == '.' || std::atoi(e->d_name) == own) continue;
    char target[PATH_MAX] = {};
    const std::string link = std::string("/proc/self/fd/") + e->d_name;
    const ssize_t n = ::readlink(link.c_str(), target, sizeof(target) - 1);
    text += std::string("fd ") + e->d_name + " " + (n > 0 ? target : "?") + "\n";
  }
  if (dir != nullptr) ::closedir(dir);
  text += "session " + std::to_string(::getsid(0)) + " " + std::to_string(::getpid()) + "\n";
  struct rlimit core = {};
  ::getrlimit(RLIMIT_CORE, &core);
  text += "core " + std::to_string(core.rlim_cur) + "\n";
  struct sigaction sigint = {};
  ::sigaction(SIGINT, nullptr, &sigint);
  text += std::string("sigint ") + (sigint.sa_handler == SIG_DFL ? "default" : "other") + "\n";
  sigset_t blocked;
  ::sigprocmask(SIG_BLOCK, nullptr, &blocked);
  int count = 0;
  for (int s = 1; s < NSIG; ++s) count += sigismember(&blocked, s) == 1 ? 1 : 0;
  text += "blocked " + std::to_string(count) + "\n";
  const char* table = std::getenv("PELLIX_DRIVE_TABLE");
  text += std::string("table ") + (table != nullptr ? table : "") + "\n";
  return text;
}

}  // namespace

int main(int argc, char** argv) {
  if (argc < 2) return 2;
  const std::string mode = argv[1];
  if (mode == "hang") {
    for (;;) ::pause();
  }
  if (mode == "crash") {
    // The core-file limit is left as it came: the tests check that it was 0.
    char self[PATH_MAX] = {};
    if (::readlink("/proc/self/exe", self, sizeof(self) - 1) > 0) {
      std::string folder(self);
      folder.resize(folder.rfind('/') + 1);
      if (::chdir(folder.c_str()) != 0) return 4;
    }
    // A sanitizer's own handler would turn the crash into an orderly exit.
    ::signal(SIGSEGV, SIG_DFL);
    ::raise(SIGSEGV);
    return 3;
  }
  if (mode == "exit" && argc == 3) return std::atoi(argv[2]);
  if (mode == "write-slowly" && argc == 5) {
    const int blocks = std::atoi(argv[3]);
    const int pause_ms = std::atoi(argv[4]);
    for (int i = 0; i < blocks; ++i) {
      if (i > 0) ::usleep(static_cast<useconds_t>(pause_ms) * 1000);
      if (!WriteAll(argv[2], std::string(1000, static_cast<char>('a' + i % 26)), O_APPEND)) {
        return 1;
      }
    }
    return 0;
  }
  if (mode == "args" && argc >= 3) {
    std::string record;
    for (int i = 0; i < argc; ++i) record += std::string(argv[i]) + '\0';
    return WriteAll(argv[2], record, O_TRUNC) ? 0 : 1;
  }
  if (mode == "report" && argc == 3) return WriteAll(argv[2], Report(), O_TRUNC) ? 0 : 1;
  return 2;
}

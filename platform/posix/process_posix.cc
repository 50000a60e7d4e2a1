// Child processes on Linux: posix_spawn without a shell, pidfds as handles, a reaper for
// children whose handle was closed while they ran, and the process list of /proc.
#include <dirent.h>
#include <fcntl.h>
#include <poll.h>
#include <signal.h>
#include <spawn.h>
#include <sys/eventfd.h>
#include <sys/resource.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <time.h>
#include <unistd.h>

#include <cerrno>
#include <climits>
#include <cstdlib>
#include <cstring>
#include <mutex>
#include <string>
#include <thread>
#include <utility>
#include <vector>

#include "platform/posix/env_posix.h"
#include "platform/windows_command_line.h"

extern char** environ;

namespace platform {

struct ChildProcess {
  pid_t pid = 0;
  int pidfd = -1;
  bool ended = false;       // reaped, by this layer or by someone else
  bool exit_known = false;  // this layer reaped it and keeps how it ended
  ProcessExit exit;
};

namespace {

// The C library's own declarations of these two lack C linkage in some versions; the system
// calls are taken directly.
int OpenPidfd(pid_t pid) { return static_cast<int>(::syscall(SYS_pidfd_open, pid, 0u)); }
int SendSignal(int pidfd, int signal) {
  return static_cast<int>(::syscall(SYS_pidfd_send_signal, pidfd, signal, nullptr, 0u));
}

constexpr char kDriveTableVariable[] = "PELLIX_DRIVE_TABLE";
constexpr uint32_t kNoTimeLimit = 0xFFFFFFFFu;

enum class Reap {
  kRunning,  // still runs
  kReaped,   // had ended, and is reaped now
  kLost,     // can't be waited on: someone else reaped it already
};

// Reaps the child of `pidfd` if it has ended, keeping how it ended in `exit`.
Reap ReapIfEnded(int pidfd, ProcessExit* exit) {
  siginfo_t info;
  std::memset(&info, 0, sizeof(info));
  if (::waitid(static_cast<idtype_t>(P_PIDFD), static_cast<id_t>(pidfd), &info,
               WEXITED | WNOHANG) != 0) {
    return errno == EINTR ? Reap::kRunning : Reap::kLost;
  }
  if (info.si_pid == 0) return Reap::kRunning;
  if (exit != nullptr) {
    *exit = ProcessExit();
    if (info.si_code == CLD_EXITED) {
      exit->code = info.si_status;
    } else {
      exit->signal = info.si_status;
      exit->code = 128 + info.si_status;
      exit->core_dumped = info.si_code == CLD_DUMPED;
    }
  }
  return Reap::kReaped;
}

// Watches the children whose handles were closed while they ran, and reaps each the moment
// it ends. Its thread runs only while there is such a child.
class ChildReaper {
 public:
  ChildReaper() : wake_fd_(::eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK)) {}

  ~ChildReaper() {
    {
      std::lock_guard<std::mutex> lock(mutex_);
      stopping_ = true;
    }
    Wake();
    if (thread_.joinable()) thread_.join();
    // The layer goes away (its module is unloaded, or the process ends): children still
    // running are no longer watched.
    for (const Child& c : children_) ::close(c.pidfd);
    if (wake_fd_ >= 0) ::close(wake_fd_);
  }

  ChildReaper(const ChildReaper&) = delete;
  ChildReaper& operator=(const ChildReaper&) = delete;

  // Takes over the pidfd of a running child.
  void Adopt(pid_t pid, int pidfd) {
    std::lock_guard<std::mutex> lock(mutex_);
    children_.push_back({pid, pidfd});
    if (running_) {
      Wake();
      return;
    }
    if (thread_.joinable()) thread_.join();  // a thread that found nothing left, finished
    running_ = true;
    thread_ = std::thread(&ChildReaper::Run, this);
  }

 private:
  struct Child {
    pid_t pid;
    int pidfd;
  };

  void Wake() {
    const uint64_t one = 1;
    if (wake_fd_ >= 0) (void)!::write(wake_fd_, &one, sizeof(one));
  }

  void Run() {
    for (;;) {
      std::vector<pollfd> fds;
      {
        std::lock_guard<std::mutex> lock(mutex_);
        if (stopping_ || children_.empty()) {
          running_ = false;
          return;
        }
        fds.push_back({wake_fd_, POLLIN, 0});
        for (const Child& c : children_) fds.push_back({c.pidfd, POLLIN, 0});
      }
      if (::poll(fds.data(), fds.size(), -1) < 0 && errno != EINTR) {
        // Nothing sensible is left to wait on; the children are no longer watched.
        std::lock_guard<std::mutex> lock(mutex_);
        running_ = false;
        return;
      }
      if (fds[0].revents != 0) {
        uint64_t count = 0;
        (void)!::read(wake_fd_, &count, sizeof(count));
      }
      std::lock_guard<std::mutex> lock(mutex_);
      for (size_t i = 1; i < fds.size(); ++i) {
        if (fds[i].revents == 0 || ReapIfEnded(fds[i].fd, nullptr) == Reap::kRunning) continue;
        ::close(fds[i].fd);
        std::erase_if(children_, [&](const Child& c) { return c.pidfd == fds[i].fd; });
      }
    }
  }

  std::mutex mutex_;
  std::vector<Child> children_;  // guarded by mutex_
  bool running_ = false;         // guarded by mutex_
  bool stopping_ = false;        // guarded by mutex_
  int wake_fd_;
  std::thread thread_;
};

ChildReaper& Reaper() {
  static ChildReaper reaper;
  return reaper;
}

// The soft core-file limit is 0 while a child is spawned, so that the child starts with it
// (a limit passes from parent to child and through exec; nothing else of posix_spawn can set
// it). The window is the spawn alone; the lock keeps two spawns from restoring each other's
// value.
class NoCoreDumpsWhileSpawning {
 public:
  NoCoreDumpsWhileSpawning() : lock_(Mutex()) {
    changed_ = ::getrlimit(RLIMIT_CORE, &saved_) == 0 && saved_.rlim_cur != 0;
    if (changed_) {
      struct rlimit none = {0, saved_.rlim_max};
      changed_ = ::setrlimit(RLIMIT_CORE, &none) == 0;
    }
  }
  ~NoCoreDumpsWhileSpawning() {
    if (changed_) ::setrlimit(RLIMIT_CORE, &saved_);
  }
  NoCoreDumpsWhileSpawning(const NoCoreDumpsWhileSpawning&) = delete;
  NoCoreDumpsWhileSpawning& operator=(const NoCoreDumpsWhileSpawning&) = delete;

 private:
  static std::mutex& Mutex() {
    static std::mutex mutex;
    return mutex;
  }
  std::lock_guard<std::mutex> lock_;
  struct rlimit saved_ = {};
  bool changed_ = false;
};

// This process's environment with the drive table variable set to the table in force.
std::vector<std::string> ChildEnvironment() {
  const std::string prefix = std::string(kDriveTableVariable) + "=";
  std::vector<std::string> env;
  for (char** e = environ; *e != nullptr; ++e) {
    if (std::strncmp(*e, prefix.c_str(), prefix.size()) != 0) env.emplace_back(*e);
  }
  const std::string table = DriveTableFolder();
  if (!table.empty()) env.push_back(prefix + table);
  return env;
}

std::vector<char*> CStrings(std::vector<std::string>& texts) {
  std::vector<char*> out;
  for (std::string& t : texts) out.push_back(t.data());
  out.push_back(nullptr);
  return out;
}

bool ReadSmallFile(const std::string& path, std::string* text) {
  Fd fd(::open(path.c_str(), O_RDONLY | O_CLOEXEC));
  if (fd.get() < 0) return false;
  text->clear();
  char buf[4096];
  ssize_t n;
  while ((n = ::read(fd.get(), buf, sizeof(buf))) > 0) text->append(buf, static_cast<size_t>(n));
  return n == 0;
}

std::string BaseName(const std::string& path) { return path.substr(path.rfind('/') + 1); }

// The file name of the program that process `pid` runs; empty when it has ended, waits to be
// reaped, or can't be told.
std::string ProgramNameOf(pid_t pid) {
  const std::string dir = "/proc/" + std::to_string(pid);
  std::string stat;
  if (!ReadSmallFile(dir + "/stat", &stat)) return std::string();
  // The state follows the name in parentheses, which may itself hold ") ".
  const size_t close = stat.rfind(')');
  if (close == std::string::npos || close + 2 >= stat.size()) return std::string();
  const char state = stat[close + 2];
  if (state == 'Z' || state == 'X' || state == 'x') return std::string();

  char target[PATH_MAX];
  const ssize_t n = ::readlink((dir + "/exe").c_str(), target, sizeof(target) - 1);
  if (n > 0) {
    std::string exe(target, static_cast<size_t>(n));
    // A program file replaced or removed while it runs is shown with this mark.
    const std::string deleted = " (deleted)";
    if (exe.size() > deleted.size() &&
        exe.compare(exe.size() - deleted.size(), deleted.size(), deleted) == 0) {
      exe.resize(exe.size() - deleted.size());
    }
    return BaseName(exe);
  }
  // Without access to the program file's link (a process of another user, a kernel thread)
  // the short name stands in. The system cuts it to 15 bytes; then the name the process was
  // started under completes it, if it begins with the short name.
  const size_t open = stat.find('(');
  if (open == std::string::npos || open > close) return std::string();
  const std::string comm = stat.substr(open + 1, close - open - 1);
  if (comm.size() < 15) return comm;
  std::string cmdline;
  if (ReadSmallFile(dir + "/cmdline", &cmdline)) {
    const std::string argv0 = BaseName(cmdline.substr(0, cmdline.find('\0')));
    if (argv0.compare(0, comm.size(), comm) == 0) return argv0;
  }
  return comm;
}

}  // namespace

ProcessHandle PosixEnv::StartProcess(const std::wstring& program, const std::wstring& arguments,
                                     Status* status) {
  Status ignored;
  Status& result = status != nullptr ? *status : ignored;
  result = Status::Ok();
  std::string path;
  if (!ToPosixPath(program, &path)) {
    result.kind = ErrorKind::kNotFound;
    result.message = "no drive holds the program's path";
    return nullptr;
  }
  // The line ends at a NUL, as a command line of text does.
  const std::wstring line = arguments.substr(0, arguments.find(L'\0'));
  std::vector<std::string> argv_text = {path};
  for (const std::wstring& arg : SplitWindowsArguments(line)) {
    argv_text.push_back(Utf16ToFileName(arg));
  }
  std::vector<std::string> env_text = ChildEnvironment();
  std::vector<char*> argv = CStrings(argv_text);
  std::vector<char*> envp = CStrings(env_text);

  posix_spawn_file_actions_t actions;
  posix_spawn_file_actions_init(&actions);
  posix_spawn_file_actions_addopen(&actions, 0, "/dev/null", O_RDONLY, 0);
  posix_spawn_file_actions_addopen(&actions, 1, "/dev/null", O_WRONLY, 0);
  posix_spawn_file_actions_addopen(&actions, 2, "/dev/null", O_WRONLY, 0);
  posix_spawn_file_actions_addclosefrom_np(&actions, 3);
  posix_spawnattr_t attr;
  posix_spawnattr_init(&attr);
  sigset_t all, none;
  sigfillset(&all);
  sigemptyset(&none);
  posix_spawnattr_setsigdefault(&attr, &all);
  posix_spawnattr_setsigmask(&attr, &none);
  posix_spawnattr_setflags(&attr,
                           POSIX_SPAWN_SETSIGDEF | POSIX_SPAWN_SETSIGMASK | POSIX_SPAWN_SETSID);
  pid_t pid = 0;
  int rc;
  {
    NoCoreDumpsWhileSpawning no_core;
    rc = ::posix_spawn(&pid, path.c_str(), &actions, &attr, argv.data(), envp.data());
  }
  posix_spawnattr_destroy(&attr);
  posix_spawn_file_actions_destroy(&actions);
  if (rc != 0) {
    result = StatusFromErrno(rc);
    return nullptr;
  }
  // The child can't be reaped by anyone but us, so its id can't name another process yet.
  const int pidfd = OpenPidfd(pid);
  if (pidfd < 0) {
    result = StatusFromErrno(errno);
    ::kill(pid, SIGKILL);
    while (::waitpid(pid, nullptr, 0) < 0 && errno == EINTR) {
    }
    return nullptr;
  }
  ChildProcess* child = new ChildProcess;
  child->pid = pid;
  child->pidfd = pidfd;
  return child;
}

namespace {

// Reaps the child of the handle if it has ended; true when it has.
bool HasEnded(ChildProcess* process) {
  if (!process->ended) {
    const Reap reap = ReapIfEnded(process->pidfd, &process->exit);
    process->ended = reap != Reap::kRunning;
    process->exit_known = reap == Reap::kReaped;
  }
  return process->ended;
}

}  // namespace

WaitResult PosixEnv::WaitForProcess(ProcessHandle process, uint32_t milliseconds) {
  if (process == nullptr) return WaitResult::kFailed;
  const uint64_t deadline = NowMicros() + static_cast<uint64_t>(milliseconds) * 1000u;
  for (;;) {
    if (HasEnded(process)) return WaitResult::kFinished;
    int timeout = -1;
    if (milliseconds != kNoTimeLimit) {
      const uint64_t now = NowMicros();
      if (now >= deadline) return WaitResult::kTimedOut;
      const uint64_t left = (deadline - now + 999) / 1000;
      timeout = left > INT_MAX ? INT_MAX : static_cast<int>(left);
    }
    // The pidfd turns readable when the process ends.
    pollfd fd = {process->pidfd, POLLIN, 0};
    const int n = ::poll(&fd, 1, timeout);
    if (n < 0 && errno != EINTR) return WaitResult::kFailed;
    if (n > 0 && (fd.revents & POLLNVAL) != 0) return WaitResult::kFailed;
  }
}

bool PosixEnv::GetProcessExit(ProcessHandle process, ProcessExit* exit) {
  if (process == nullptr || !HasEnded(process) || !process->exit_known) return false;
  *exit = process->exit;
  return true;
}

int64_t PosixEnv::GetProcessId(ProcessHandle process) {
  return process == nullptr ? 0 : static_cast<int64_t>(process->pid);
}

void PosixEnv::CloseProcess(ProcessHandle process) {
  if (process == nullptr) return;
  if (HasEnded(process)) {
    ::close(process->pidfd);
  } else {
    Reaper().Adopt(process->pid, process->pidfd);
  }
  delete process;
}

std::vector<ProcessEntry> PosixEnv::ListProcesses() {
  std::vector<ProcessEntry> list;
  DIR* dir = ::opendir("/proc");
  if (dir == nullptr) return list;
  while (struct dirent* e = ::readdir(dir)) {
    char* end = nullptr;
    const long pid = std::strtol(e->d_name, &end, 10);
    if (end == e->d_name || *end != '\0' || pid <= 0) continue;
    const std::string name = ProgramNameOf(static_cast<pid_t>(pid));
    if (!name.empty()) list.push_back({pid, FileNameToUtf16(name)});
  }
  ::closedir(dir);
  return list;
}

Status PosixEnv::KillProcess(const ProcessEntry& process) {
  if (process.id <= 0 || process.id > INT_MAX) return StatusFromErrno(ESRCH);
  const pid_t pid = static_cast<pid_t>(process.id);
  // The pidfd holds on to this very process; the name is checked after it was taken, so an
  // id that came free and went to another program in between is never hit.
  Fd pidfd(OpenPidfd(pid));
  if (pidfd.get() < 0) return StatusFromErrno(errno);
  if (FileNameToUtf16(ProgramNameOf(pid)) != process.program_name) {
    return StatusFromErrno(ESRCH);
  }
  if (SendSignal(pidfd.get(), SIGKILL) != 0) return StatusFromErrno(errno);
  return Status::Ok();
}

}  // namespace platform

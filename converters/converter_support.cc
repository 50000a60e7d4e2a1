#include "converters/converter_support.h"

#include <signal.h>
#include <sys/prctl.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <string_view>

#include "platform/env.h"
#include "platform/windows_path.h"

extern char** environ;

namespace converters {
namespace {

constexpr std::string_view kLongPathPrefix = "\\\\?\\";
constexpr std::string_view kToolFolderStem = "pellix-tool-";

std::string withoutLongPathPrefix(const std::string& path) {
  return path.compare(0, kLongPathPrefix.size(), kLongPathPrefix) == 0
             ? path.substr(kLongPathPrefix.size())
             : path;
}

std::string findInPath(const std::string& name) {
  const char* path = std::getenv("PATH");
  const std::string dirs =
      path != nullptr && path[0] != '\0' ? path : "/usr/local/bin:/usr/bin:/bin";
  size_t start = 0;
  while (start <= dirs.size()) {
    size_t end = dirs.find(':', start);
    if (end == std::string::npos) end = dirs.size();
    const std::string dir = dirs.substr(start, end - start);
    if (!dir.empty() && dir[0] == '/') {
      const std::string candidate = dir + "/" + name;
      struct stat st;
      if (::stat(candidate.c_str(), &st) == 0 && S_ISREG(st.st_mode) &&
          ::access(candidate.c_str(), X_OK) == 0) {
        return candidate;
      }
    }
    start = end + 1;
  }
  return std::string();
}

std::string temporaryBase() {
  const char* tmp = std::getenv("TMPDIR");
  return tmp != nullptr && tmp[0] == '/' ? tmp : "/tmp";
}

// Removes the temporary folders that converters which were killed left behind.
void sweepLeftFolders(const std::string& base) {
  std::error_code ec;
  for (const auto& entry : std::filesystem::directory_iterator(base, ec)) {
    const std::string name = entry.path().filename().string();
    if (name.compare(0, kToolFolderStem.size(), kToolFolderStem) != 0) continue;
    const long pid = std::strtol(name.c_str() + kToolFolderStem.size(), nullptr, 10);
    if (pid > 0 && ::kill(static_cast<pid_t>(pid), 0) != 0 && errno == ESRCH) {
      std::filesystem::remove_all(entry.path(), ec);
    }
  }
}

}  // namespace

bool isDrivePath(const std::string& arg) {
  const std::string path = withoutLongPathPrefix(arg);
  if (path.size() < 2 || path[1] != ':') return false;
  const char letter = path[0];
  if (!((letter >= 'A' && letter <= 'Z') || (letter >= 'a' && letter <= 'z'))) return false;
  return path.size() == 2 || path[2] == '\\' || path[2] == '/';
}

bool mapPath(const std::string& windows_path, std::string* posix_path) {
  return platform::Env::Default()->ToPosixPath(platform::FileNameToUtf16(windows_path), posix_path);
}

std::string driveRootOf(const std::string& windows_path) {
  if (!isDrivePath(windows_path)) return std::string();
  char letter = withoutLongPathPrefix(windows_path)[0];
  if (letter >= 'a' && letter <= 'z') letter = static_cast<char>(letter - 'a' + 'A');
  for (const platform::DriveRoot& drive : platform::Env::Default()->GetDriveTable()) {
    if (drive.letter == static_cast<wchar_t>(letter)) return drive.posix_root;
  }
  return std::string();
}

int fail(const char* program, const std::string& text, int status) {
  std::fprintf(stderr, "%s: %s\n", program, text.c_str());
  return status;
}

int runTool(const char* program, const std::string& name, const std::vector<std::string>& args,
            const std::vector<std::string>& drop_env) {
  const std::string tool = findInPath(name);
  if (tool.empty()) return fail(program, name + " not found in PATH", -1);

  const std::string base = temporaryBase();
  sweepLeftFolders(base);
  std::string scratch =
      base + "/" + std::string(kToolFolderStem) + std::to_string(::getpid()) + "-XXXXXX";
  if (::mkdtemp(scratch.data()) == nullptr) {
    return fail(program, "no temporary folder: " + std::string(std::strerror(errno)), -1);
  }

  std::vector<std::string> env_text;
  for (char** e = environ; *e != nullptr; ++e) {
    const std::string entry = *e;
    const std::string key = entry.substr(0, entry.find('='));
    bool drop = key == "TMPDIR" || key == "TEMP" || key == "TMP";
    for (const std::string& d : drop_env) drop = drop || key == d;
    if (!drop) env_text.push_back(entry);
  }
  for (const char* key : {"TMPDIR=", "TEMP=", "TMP="}) env_text.push_back(key + scratch);

  std::vector<std::string> argv_text = {tool};
  argv_text.insert(argv_text.end(), args.begin(), args.end());
  std::vector<char*> argv, envp;
  for (std::string& a : argv_text) argv.push_back(a.data());
  argv.push_back(nullptr);
  for (std::string& e : env_text) envp.push_back(e.data());
  envp.push_back(nullptr);

  const pid_t parent = ::getpid();
  const pid_t pid = ::fork();
  if (pid == 0) {
    // Killed the moment this converter goes, however it goes; and if it went already
    // before this line, the tool must not start at all.
    ::prctl(PR_SET_PDEATHSIG, SIGKILL);
    if (::getppid() != parent) ::_exit(127);
    ::execve(argv[0], argv.data(), envp.data());
    ::_exit(127);
  }
  int status = 0;
  int result = -1;
  if (pid < 0) {
    fail(program, "can't start " + tool + ": " + std::strerror(errno), 0);
  } else {
    while (::waitpid(pid, &status, 0) < 0 && errno == EINTR) {
    }
    result = WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
  }
  std::error_code ec;
  std::filesystem::remove_all(scratch, ec);
  return result;
}

}  // namespace converters

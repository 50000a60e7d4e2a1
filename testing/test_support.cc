#include "testing/test_support.h"

#include <sys/resource.h>

#include <fcntl.h>
#include <gtest/gtest.h>
#include <spawn.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <sstream>

#include "platform/env.h"

extern char** environ;

namespace pellix_test {

TempDir::TempDir() {
  const char* base = std::getenv("TMPDIR");
  std::string pattern =
      std::string(base != nullptr && base[0] == '/' ? base : "/tmp") + "/pellix-test-XXXXXX";
  char* made = ::mkdtemp(pattern.data());
  if (made == nullptr) ADD_FAILURE() << "mkdtemp failed: " << std::strerror(errno);
  path_ = pattern;
}

TempDir::~TempDir() {
  std::error_code ec;
  // Make everything writable first, so that tests that took permissions away clean up.
  for (auto it = std::filesystem::recursive_directory_iterator(
           path_, std::filesystem::directory_options::skip_permission_denied, ec);
       !ec && it != std::filesystem::recursive_directory_iterator(); it.increment(ec)) {
    if (it->is_directory(ec) && !it->is_symlink(ec)) ::chmod(it->path().c_str(), 0700);
  }
  std::filesystem::remove_all(path_, ec);
}

std::string TempDir::write(const std::string& name, const std::string& bytes) const {
  const std::string full = path_ + "/" + name;
  writeFile(full, bytes);
  return full;
}

std::string TempDir::mkdir(const std::string& name) const {
  const std::string full = path_ + "/" + name;
  std::filesystem::create_directories(full);
  return full;
}

LogCapture::LogCapture() { google::AddLogSink(this); }
LogCapture::~LogCapture() { google::RemoveLogSink(this); }

void LogCapture::send(google::LogSeverity severity, const char*, const char*, int,
                      const struct ::tm*, const char* message, size_t message_len) {
  std::lock_guard<std::mutex> lock(mutex_);
  lines_.push_back(std::string(severity >= google::GLOG_ERROR ? "E " : "I ") +
                   std::string(message, message_len));
}

std::vector<std::string> LogCapture::lines() const {
  std::lock_guard<std::mutex> lock(mutex_);
  return lines_;
}

int LogCapture::count(const std::string& text) const {
  std::lock_guard<std::mutex> lock(mutex_);
  int n = 0;
  for (const std::string& line : lines_) n += line.find(text) != std::string::npos ? 1 : 0;
  return n;
}

std::wstring windowsPath(const std::string& posix_path) {
  std::wstring out;
  EXPECT_TRUE(platform::Env::Default()->ToWindowsPath(posix_path, &out)) << posix_path;
  return out;
}

std::string posixPath(const std::wstring& windows_path) {
  std::string out;
  EXPECT_TRUE(platform::Env::Default()->ToPosixPath(windows_path, &out));
  return out;
}

void writeFile(const std::string& path, const std::string& bytes) {
  std::filesystem::create_directories(std::filesystem::path(path).parent_path());
  std::ofstream out(path, std::ios::binary | std::ios::trunc);
  out.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
  ASSERT_TRUE(out.good()) << "could not write " << path;
}

std::string readFile(const std::string& path) {
  std::ifstream in(path, std::ios::binary);
  std::ostringstream s;
  s << in.rdbuf();
  return s.str();
}

bool fileExists(const std::string& path) {
  struct stat st;
  return ::lstat(path.c_str(), &st) == 0;
}

namespace {

std::string drain(int fd) {
  std::string text;
  char buf[4096];
  ssize_t n;
  while ((n = ::read(fd, buf, sizeof(buf))) > 0) text.append(buf, static_cast<size_t>(n));
  return text;
}

}  // namespace

RunResult run(const std::vector<std::string>& argv, const std::vector<std::string>& extra_env) {
  RunResult result;
  TempDir capture;
  const std::string out_path = capture.path() + "/out";
  const std::string err_path = capture.path() + "/err";
  posix_spawn_file_actions_t actions;
  posix_spawn_file_actions_init(&actions);
  posix_spawn_file_actions_addopen(&actions, 0, "/dev/null", O_RDONLY, 0);
  posix_spawn_file_actions_addopen(&actions, 1, out_path.c_str(), O_WRONLY | O_CREAT, 0600);
  posix_spawn_file_actions_addopen(&actions, 2, err_path.c_str(), O_WRONLY | O_CREAT, 0600);
  std::vector<std::string> env_text;
  for (char** e = environ; *e != nullptr; ++e) env_text.emplace_back(*e);
  for (const std::string& extra : extra_env) {
    const std::string key = extra.substr(0, extra.find('=') + 1);
    std::erase_if(env_text, [&](const std::string& e) { return e.rfind(key, 0) == 0; });
    env_text.push_back(extra);
  }
  std::vector<char*> args, envp;
  for (const std::string& a : argv) args.push_back(const_cast<char*>(a.c_str()));
  args.push_back(nullptr);
  for (const std::string& e : env_text) envp.push_back(const_cast<char*>(e.c_str()));
  envp.push_back(nullptr);
  pid_t pid = 0;
  int rc = posix_spawn(&pid, args[0], &actions, nullptr, args.data(), envp.data());
  posix_spawn_file_actions_destroy(&actions);
  if (rc != 0) {
    ADD_FAILURE() << "could not start " << argv[0] << ": " << std::strerror(rc);
    return result;
  }
  int status = 0;
  while (::waitpid(pid, &status, 0) < 0 && errno == EINTR) {
  }
  result.status = WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
  int out_fd = ::open(out_path.c_str(), O_RDONLY);
  int err_fd = ::open(err_path.c_str(), O_RDONLY);
  result.out = drain(out_fd);
  result.err = drain(err_fd);
  ::close(out_fd);
  ::close(err_fd);
  return result;
}

void copyFile(const std::string& from, const std::string& to) {
  std::error_code ec;
  std::filesystem::copy_file(from, to, std::filesystem::copy_options::overwrite_existing, ec);
  ASSERT_FALSE(ec) << "copy " << from << " -> " << to << ": " << ec.message();
}

std::string stageBin() { return PELLIX_STAGE_BIN; }

std::wstring quoteWindowsArgument(const std::wstring& arg) {
  if (!arg.empty() && arg.find_first_of(L" \t\"") == std::wstring::npos) return arg;
  std::wstring out = L"\"";
  size_t backslashes = 0;
  for (wchar_t c : arg) {
    if (c == L'\\') {
      ++backslashes;
      continue;
    }
    out.append(c == L'"' ? backslashes * 2 + 1 : backslashes, L'\\');
    backslashes = 0;
    out.push_back(c);
  }
  out.append(backslashes * 2, L'\\');
  return out + L"\"";
}

std::string childStandin() { return PELLIX_CHILD_STANDIN; }

std::string copyStandin(const std::string& folder, const std::string& name) {
  std::filesystem::create_directories(folder);
  const std::string to = folder + "/" + name;
  copyFile(childStandin(), to);
  return to;
}

char processState(long long pid) {
  const std::string stat = readFile("/proc/" + std::to_string(pid) + "/stat");
  const size_t close = stat.rfind(')');
  if (close == std::string::npos || close + 2 >= stat.size()) return 0;
  return stat[close + 2];
}

bool waitUntil(const std::function<bool()>& done, int seconds) {
  for (int i = 0; i < seconds * 100; ++i) {
    if (done()) return true;
    ::usleep(10000);
  }
  return done();
}

long peakMemoryKib() {
  struct rusage usage;
  ::getrusage(RUSAGE_SELF, &usage);
  return usage.ru_maxrss;
}

const std::string& useOwnHome() {
  static TempDir home;
  static const bool set = [] {
    ::setenv("HOME", home.path().c_str(), 1);
    ::unsetenv("XDG_DATA_HOME");
    return true;
  }();
  (void)set;
  return home.path();
}

}  // namespace pellix_test

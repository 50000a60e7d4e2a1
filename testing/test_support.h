// What the tests share: temporary folders, captured log lines, files written byte by byte,
// paths in both forms, and running a program to see what it prints.
#ifndef TESTING_TEST_SUPPORT_H_
#define TESTING_TEST_SUPPORT_H_

#include <glog/logging.h>

#include <functional>
#include <mutex>
#include <string>
#include <vector>

namespace pellix_test {

// A fresh folder under the system's temporary folder, removed with everything in it when the
// object goes.
class TempDir {
 public:
  TempDir();
  ~TempDir();
  TempDir(const TempDir&) = delete;
  TempDir& operator=(const TempDir&) = delete;

  const std::string& path() const { return path_; }

  // Writes `bytes` to the file `name` inside the folder (making folders on the way) and
  // gives its full POSIX path.
  std::string write(const std::string& name, const std::string& bytes) const;

  // Makes the folder `name` inside the folder (with every level) and gives its path.
  std::string mkdir(const std::string& name) const;

 private:
  std::string path_;
};

// Catches every log line written while it lives, at every level.
class LogCapture : public google::LogSink {
 public:
  LogCapture();
  ~LogCapture() override;

  void send(google::LogSeverity severity, const char* full_filename, const char* base_filename,
            int line, const struct ::tm* tm_time, const char* message,
            size_t message_len) override;

  // The lines so far, each as "I " or "E " and the message.
  std::vector<std::string> lines() const;
  // How many lines hold `text`.
  int count(const std::string& text) const;

 private:
  mutable std::mutex mutex_;
  std::vector<std::string> lines_;
};

// The Windows form of a POSIX path through this process's drive table; fails the test when
// no drive holds it.
std::wstring windowsPath(const std::string& posix_path);

// The POSIX form of a Windows path; fails the test when no drive holds it.
std::string posixPath(const std::wstring& windows_path);

// Writes the file at `path` (making its folder) or fails the test.
void writeFile(const std::string& path, const std::string& bytes);

// The whole file, or empty.
std::string readFile(const std::string& path);

bool fileExists(const std::string& path);

// The result of running a program: its exit status (or 128 + signal) and what it printed.
struct RunResult {
  int status = -1;
  std::string out;
  std::string err;
};

// Runs `argv` (no shell) with extra environment entries, waits for it and collects its
// output.
RunResult run(const std::vector<std::string>& argv,
              const std::vector<std::string>& extra_env = {});

// Copies a file, keeping its mode bits.
void copyFile(const std::string& from, const std::string& to);

// The most memory this process has held at once so far, in KiB.
long peakMemoryKib();

// The staged install tree's bin folder.
std::string stageBin();

// One argument quoted for a Windows command line, the way careful callers quote: quotes
// around it when it needs them, backslashes doubled before a quote.
std::wstring quoteWindowsArgument(const std::wstring& arg);

// The test program that stands in for a converter: it hangs, crashes, writes slowly or
// reports what it was given (see testing/child_standin.cc).
std::string childStandin();

// A copy of the stand-in under another file name, so that it runs under that name.
std::string copyStandin(const std::string& folder, const std::string& name);

// The state letter of a process in /proc ('R', 'S', 'Z'...), or 0 when there is no process
// of that id at all (reaped).
char processState(long long pid);

// Checks `done` every 10 ms until it holds or `seconds` have passed; whether it held.
bool waitUntil(const std::function<bool()>& done, int seconds = 10);

// Gives this test process a home folder of its own, made at the first call and removed at
// exit, with XDG_DATA_HOME cleared: settings that the code under test finds through the home
// folder never touch the real user's. Call it before anything reads the home folder.
const std::string& useOwnHome();

}  // namespace pellix_test

#endif  // TESTING_TEST_SUPPORT_H_

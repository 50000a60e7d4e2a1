// Child processes of the platform layer, with real processes: the stand-in program hangs,
// crashes and reports what it was given.
#include <signal.h>
#include <sys/resource.h>
#include <unistd.h>

#include <gtest/gtest.h>

#include <chrono>
#include <cstdlib>
#include <string>
#include <vector>

#include "platform/env.h"
#include "platform/posix/env_posix.h"
#include "testing/test_support.h"

namespace platform {
namespace {

using pellix_test::copyStandin;
using pellix_test::fileExists;
using pellix_test::processState;
using pellix_test::quoteWindowsArgument;
using pellix_test::readFile;
using pellix_test::TempDir;
using pellix_test::waitUntil;
using pellix_test::windowsPath;

Env* env() { return Env::Default(); }

// A name of this test run's own, so that nothing else on the machine answers to it.
std::string UniqueName(const std::string& stem) {
  return stem + "-" + std::to_string(::getpid()) + ".exe";
}

// The command line of the stand-in: the mode and its arguments, each quoted.
std::wstring Line(const std::vector<std::string>& args) {
  std::wstring line;
  for (const std::string& a : args) line += L" " + quoteWindowsArgument(FileNameToUtf16(a));
  return line;
}

const ProcessEntry* FindEntry(const std::vector<ProcessEntry>& list, int64_t id) {
  for (const ProcessEntry& e : list) {
    if (e.id == id) return &e;
  }
  return nullptr;
}

std::vector<std::string> Records(const std::string& bytes) {
  std::vector<std::string> out;
  size_t start = 0;
  for (size_t end; (end = bytes.find('\0', start)) != std::string::npos; start = end + 1) {
    out.push_back(bytes.substr(start, end - start));
  }
  return out;
}

TEST(StartProcessTest, TheChildIsHiddenAndInheritsNothingButItsEnvironment) {
  TempDir tmp;
  const std::string out = tmp.path() + "/report.txt";
  // Make this process one that would leave core dumps and that ignores Ctrl-C, and give it a
  // descriptor that isn't closed on exec: none of this may reach the child.
  struct rlimit saved;
  ASSERT_EQ(::getrlimit(RLIMIT_CORE, &saved), 0);
  struct rlimit raised = {saved.rlim_max == 0 ? 0 : saved.rlim_max, saved.rlim_max};
  ASSERT_EQ(::setrlimit(RLIMIT_CORE, &raised), 0);
  struct sigaction ignore = {}, old_int = {};
  ignore.sa_handler = SIG_IGN;
  ::sigaction(SIGINT, &ignore, &old_int);
  const int stray = ::dup(2);

  Status status;
  ProcessHandle child =
      env()->StartProcess(windowsPath(pellix_test::childStandin()), Line({"report", out}), &status);
  struct rlimit after;
  ::getrlimit(RLIMIT_CORE, &after);
  ::close(stray);
  ::sigaction(SIGINT, &old_int, nullptr);
  ::setrlimit(RLIMIT_CORE, &saved);

  ASSERT_NE(child, nullptr) << status.message;
  EXPECT_EQ(after.rlim_cur, raised.rlim_cur) << "this process keeps its own limit";
  ASSERT_EQ(env()->WaitForProcess(child, 20000), WaitResult::kFinished);
  ProcessExit exit;
  ASSERT_TRUE(env()->GetProcessExit(child, &exit));
  EXPECT_EQ(exit.code, 0);
  const std::string pid = std::to_string(env()->GetProcessId(child));
  env()->CloseProcess(child);

  const std::string report = readFile(out);
  EXPECT_EQ(report.substr(0, report.find("session")),
            "fd 0 /dev/null\nfd 1 /dev/null\nfd 2 /dev/null\n");
  EXPECT_NE(report.find("session " + pid + " " + pid + "\n"), std::string::npos) << report;
  EXPECT_NE(report.find("core 0\n"), std::string::npos) << report;
  EXPECT_NE(report.find("sigint default\n"), std::string::npos) << report;
  EXPECT_NE(report.find("blocked 0\n"), std::string::npos) << report;
  EXPECT_NE(report.find("table " + DriveTableFolder() + "\n"), std::string::npos) << report;
}

TEST(StartProcessTest, OddNamesReachTheChildWholeAndNoShellRunsAnything) {
  TempDir tmp;
  const std::string folder = tmp.path() + "/dir with blanks 图 $(id);x";
  const std::string program = copyStandin(folder, "stand in;图.exe");
  const std::string out = tmp.path() + "/args.bin";
  const std::string marker = tmp.path() + "/ran";
  const std::vector<std::string> odd = {
      "a b.pcx",
      "quote\"inside\".pdf",
      "$(touch " + marker + "1)",
      "x; touch " + marker + "2",
      "`touch " + marker + "3`",
      "| touch " + marker + "4 &",
      "图像 文件.psd",
      "trailing\\",
      "\\\\server\\share\\a b\\",
      "",
      "%PATH% %% $HOME ~ *",
      "'single' \t tab",
  };
  std::vector<std::string> args = {"args", out};
  args.insert(args.end(), odd.begin(), odd.end());
  ProcessHandle child = env()->StartProcess(windowsPath(program), Line(args), nullptr);
  ASSERT_NE(child, nullptr);
  ASSERT_EQ(env()->WaitForProcess(child, 20000), WaitResult::kFinished);
  env()->CloseProcess(child);

  std::vector<std::string> expected = {program};
  expected.insert(expected.end(), args.begin(), args.end());
  const std::vector<std::string> got = Records(readFile(out));
  ASSERT_EQ(got.size(), expected.size());
  for (size_t i = 0; i < got.size(); ++i) EXPECT_EQ(got[i], expected[i]) << "argument " << i;
  for (int i = 1; i <= 4; ++i) EXPECT_FALSE(fileExists(marker + std::to_string(i))) << i;
}

TEST(StartProcessTest, ProgramsThatCantStartGiveNoHandle) {
  TempDir tmp;
  const std::string plain = tmp.write("not-a-program.exe", "just text");
  struct Case {
    std::wstring program;
    ErrorKind kind;
  } cases[] = {
      {windowsPath(tmp.path()) + L"\\missing.exe", ErrorKind::kNotFound},
      {windowsPath(plain), ErrorKind::kAccessDenied},
      {windowsPath(tmp.path()), ErrorKind::kAccessDenied},
      {L"\\\\server\\share\\gm.exe", ErrorKind::kNotFound},
      {L"", ErrorKind::kNotFound},
  };
  for (const Case& c : cases) {
    Status status;
    EXPECT_EQ(env()->StartProcess(c.program, L" hang", &status), nullptr)
        << "row: " << Utf16ToFileName(c.program);
    EXPECT_EQ(status.kind, c.kind) << "row: " << Utf16ToFileName(c.program);
  }
  EXPECT_EQ(env()->WaitForProcess(nullptr, 10), WaitResult::kFailed);
  ProcessExit exit;
  EXPECT_FALSE(env()->GetProcessExit(nullptr, &exit));
  EXPECT_EQ(env()->GetProcessId(nullptr), 0);
  env()->CloseProcess(nullptr);
}

TEST(ChildProcessTest, WaitsWithALimitAndEndsByKill) {
  TempDir tmp;
  const std::string name = UniqueName("pellix-hang");
  ProcessHandle child =
      env()->StartProcess(windowsPath(copyStandin(tmp.path(), name)), L"hang", nullptr);
  ASSERT_NE(child, nullptr);
  EXPECT_EQ(env()->WaitForProcess(child, 0), WaitResult::kTimedOut);
  const auto start = std::chrono::steady_clock::now();
  EXPECT_EQ(env()->WaitForProcess(child, 300), WaitResult::kTimedOut);
  EXPECT_GE(std::chrono::steady_clock::now() - start, std::chrono::milliseconds(300));
  ProcessExit exit;
  EXPECT_FALSE(env()->GetProcessExit(child, &exit));

  const int64_t pid = env()->GetProcessId(child);
  const std::vector<ProcessEntry> list = env()->ListProcesses();
  const ProcessEntry* entry = FindEntry(list, pid);
  ASSERT_NE(entry, nullptr);
  EXPECT_EQ(Utf16ToFileName(entry->program_name), name);
  // An entry whose id runs another program is refused and ends nothing.
  EXPECT_EQ(env()->KillProcess({pid, L"other.exe"}).kind, ErrorKind::kNotFound);
  EXPECT_EQ(env()->WaitForProcess(child, 50), WaitResult::kTimedOut);

  EXPECT_TRUE(env()->KillProcess(*entry).ok());
  ASSERT_EQ(env()->WaitForProcess(child, 20000), WaitResult::kFinished);
  ASSERT_TRUE(env()->GetProcessExit(child, &exit));
  EXPECT_EQ(exit.signal, SIGKILL);
  EXPECT_EQ(exit.code, 128 + SIGKILL);
  EXPECT_EQ(env()->WaitForProcess(child, 0), WaitResult::kFinished) << "asked again";
  env()->CloseProcess(child);
  EXPECT_EQ(processState(pid), 0);
  // The process has gone: a second kill finds nothing.
  EXPECT_EQ(env()->KillProcess(*entry).kind, ErrorKind::kNotFound);
}

TEST(ChildProcessTest, ACrashedChildGivesItsSignalNoCoreAndNoZombie) {
  struct rlimit saved;
  ASSERT_EQ(::getrlimit(RLIMIT_CORE, &saved), 0);
  struct rlimit raised = {saved.rlim_max, saved.rlim_max};
  ::setrlimit(RLIMIT_CORE, &raised);
  TempDir tmp;
  ProcessHandle child = env()->StartProcess(
      windowsPath(copyStandin(tmp.path(), UniqueName("pellix-crash"))), L"crash", nullptr);
  ::setrlimit(RLIMIT_CORE, &saved);
  ASSERT_NE(child, nullptr);
  const int64_t pid = env()->GetProcessId(child);
  // Nobody waits on it yet: it ends as a zombie, which no listing shows.
  ASSERT_TRUE(waitUntil([&] { return processState(pid) == 'Z'; }));
  EXPECT_EQ(FindEntry(env()->ListProcesses(), pid), nullptr);
  ProcessExit exit;
  ASSERT_TRUE(env()->GetProcessExit(child, &exit));
  EXPECT_EQ(exit.signal, SIGSEGV);
  EXPECT_FALSE(exit.core_dumped);
  EXPECT_EQ(processState(pid), 0) << "asking how it ended reaped it";
  env()->CloseProcess(child);

  // One that is only closed is reaped by the close.
  child = env()->StartProcess(windowsPath(pellix_test::childStandin()), L"exit 7", nullptr);
  ASSERT_NE(child, nullptr);
  const int64_t second = env()->GetProcessId(child);
  ASSERT_TRUE(waitUntil([&] { return processState(second) == 'Z'; }));
  env()->CloseProcess(child);
  EXPECT_EQ(processState(second), 0);
}

TEST(ChildProcessTest, AClosedHandleLeavesTheChildRunningAndItIsReapedWhenItEnds) {
  TempDir tmp;
  const std::string name = UniqueName("pellix-detached");
  const std::wstring program = windowsPath(copyStandin(tmp.path(), name));
  auto start = [&] {
    ProcessHandle child = env()->StartProcess(program, L"hang", nullptr);
    EXPECT_NE(child, nullptr);
    const int64_t pid = env()->GetProcessId(child);
    env()->CloseProcess(child);
    return pid;
  };
  auto kill = [&](int64_t pid) {
    const ProcessEntry* entry = nullptr;
    const std::vector<ProcessEntry> list = env()->ListProcesses();
    entry = FindEntry(list, pid);
    ASSERT_NE(entry, nullptr) << "the child still runs after its handle was closed";
    EXPECT_TRUE(env()->KillProcess(*entry).ok());
  };
  const int64_t a = start();
  const int64_t b = start();
  EXPECT_NE(processState(a), 'Z');
  kill(a);
  EXPECT_TRUE(waitUntil([&] { return processState(a) == 0; })) << "left as a zombie";
  EXPECT_NE(processState(b), 0);
  kill(b);
  EXPECT_TRUE(waitUntil([&] { return processState(b) == 0; })) << "left as a zombie";
  // Watching starts again for a child handed over after all others ended.
  const int64_t c = start();
  kill(c);
  EXPECT_TRUE(waitUntil([&] { return processState(c) == 0; })) << "left as a zombie";
}

TEST(ListProcessesTest, NamesAreWholeFileNamesEvenPastTheShortNameLimit) {
  TempDir tmp;
  const std::string stem = "pellix-long-name-" + std::to_string(::getpid());
  const std::vector<std::string> names = {stem + ".exe", stem + ".exe.bak", stem,
                                          "图像转换-" + std::to_string(::getpid()) + ".exe"};
  std::vector<ProcessHandle> children;
  for (const std::string& name : names) {
    children.push_back(
        env()->StartProcess(windowsPath(copyStandin(tmp.path(), name)), L"hang", nullptr));
    ASSERT_NE(children.back(), nullptr);
  }
  // A program file removed while it runs keeps its name.
  ASSERT_EQ(::unlink((tmp.path() + "/" + names[0]).c_str()), 0);
  const std::vector<ProcessEntry> list = env()->ListProcesses();
  for (size_t i = 0; i < names.size(); ++i) {
    const ProcessEntry* entry = FindEntry(list, env()->GetProcessId(children[i]));
    ASSERT_NE(entry, nullptr) << names[i];
    EXPECT_EQ(Utf16ToFileName(entry->program_name), names[i]);
    EXPECT_TRUE(env()->KillProcess(*entry).ok()) << names[i];
  }
  for (ProcessHandle child : children) {
    EXPECT_EQ(env()->WaitForProcess(child, 20000), WaitResult::kFinished);
    env()->CloseProcess(child);
  }
}

TEST(StartProcessTest, TheDriveTableInForceMapsTheProgramAndPassesToTheChild) {
  TempDir tmp;
  const std::string root = tmp.mkdir("q-root");
  const std::string table = tmp.mkdir("dosdevices");
  ASSERT_EQ(::symlink(root.c_str(), (table + "/q:").c_str()), 0);
  copyStandin(root, "p.exe");
  const std::string out = tmp.path() + "/report.txt";
  ASSERT_EQ(::setenv("PELLIX_DRIVE_TABLE", table.c_str(), 1), 0);
  ProcessHandle child = env()->StartProcess(L"q:\\p.exe", Line({"report", out}), nullptr);
  const bool mapped_here = [&] {
    std::string p;
    return env()->ToPosixPath(L"Q:\\p.exe", &p) && p == root + "/p.exe";
  }();
  ::unsetenv("PELLIX_DRIVE_TABLE");
  EXPECT_TRUE(mapped_here);
  ASSERT_NE(child, nullptr);
  ASSERT_EQ(env()->WaitForProcess(child, 20000), WaitResult::kFinished);
  env()->CloseProcess(child);
  EXPECT_NE(readFile(out).find("table " + table + "\n"), std::string::npos) << readFile(out);
}

}  // namespace
}  // namespace platform

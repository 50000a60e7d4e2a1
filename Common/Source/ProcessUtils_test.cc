// Starting converters and ending them by name, with real processes: the stand-in program
// copied under converter names hangs, crashes or writes its output slowly.
#include "Common/Source/ProcessUtils.h"

#include <signal.h>
#include <unistd.h>

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "Common/Source/text_forms.h"
#include "platform/env.h"
#include "testing/test_support.h"

namespace {

using pellix_test::copyStandin;
using pellix_test::LogCapture;
using pellix_test::processState;
using pellix_test::TempDir;
using pellix_test::waitUntil;
using pellix_test::windowsPath;

constexpr char kHead[] = "ProcessCommUtils::runExeInSilence";

platform::Env* env() { return platform::Env::Default(); }

std::string unique(const std::string& stem) {
  return stem + "-" + std::to_string(::getpid()) + ".exe";
}

// A stand-in running under `name` until the test ends it; it never outlives the test.
class Running {
 public:
  Running(const TempDir& tmp, const std::string& name)
      : handle_(ProcessCommUtils::runExeInSilence(windowsPath(copyStandin(tmp.path(), name)),
                                                  L"hang", 0)) {
    EXPECT_NE(handle_, nullptr) << name;
  }
  ~Running() {
    if (handle_ == nullptr) return;
    if (env()->WaitForProcess(handle_, 0) != platform::WaitResult::kFinished) {
      for (const platform::ProcessEntry& e : env()->ListProcesses()) {
        if (e.id == env()->GetProcessId(handle_)) env()->KillProcess(e);
      }
      env()->WaitForProcess(handle_, 20000);
    }
    env()->CloseProcess(handle_);
  }
  Running(const Running&) = delete;
  Running& operator=(const Running&) = delete;

  bool ended(uint32_t wait_ms) {
    return env()->WaitForProcess(handle_, wait_ms) == platform::WaitResult::kFinished;
  }

 private:
  platform::ProcessHandle handle_;
};

TEST(RunExeInSilenceTest, OneLogLineByHowTheWaitEnded) {
  TempDir tmp;
  const std::wstring folder = windowsPath(tmp.mkdir("a folder with blanks 图"));
  copyStandin(tmp.path() + "/a folder with blanks 图", "x y.exe");
  const std::wstring program = folder + L"\\x y.exe";
  struct Case {
    std::wstring exe;
    std::wstring params;
    uint32_t wait_ms;
    bool handle;
    std::string line;
  } cases[] = {
      {program, L"exit 0", 20000, true, "I ProcessCommUtils::runExeInSilence exe has run finish"},
      {program, L"crash", 20000, true, "I ProcessCommUtils::runExeInSilence exe has run finish"},
      {program, L"hang", 0, true,
       "I ProcessCommUtils::runExeInSilence wait timeout, wait_milli_sec:0 for exe run finish"},
      {program, L"hang", 150, true,
       "I ProcessCommUtils::runExeInSilence wait timeout, wait_milli_sec:150 for exe run finish"},
      {folder + L"\\missing 图.exe", L"exit 0", 1000, false,
       "E ProcessCommUtils::runExeInSilence failed for cmd:" + wsToUtf8(folder) +
           "\\missing 图.exe"},
  };
  for (const Case& c : cases) {
    const std::string row = wsToUtf8(c.exe + L" " + c.params);
    LogCapture log;
    platform::ProcessHandle process = ProcessCommUtils::runExeInSilence(c.exe, c.params, c.wait_ms);
    EXPECT_EQ(process != nullptr, c.handle) << "row: " << row;
    EXPECT_EQ(log.lines(), std::vector<std::string>{c.line}) << "row: " << row;
    if (process != nullptr &&
        env()->WaitForProcess(process, 0) != platform::WaitResult::kFinished) {
      EXPECT_TRUE(killProcessByName(L"x y.exe")) << "row: " << row;
      EXPECT_EQ(env()->WaitForProcess(process, 20000), platform::WaitResult::kFinished);
    }
    env()->CloseProcess(process);
  }
}

TEST(RunExeInSilenceTest, ACrashedChildGivesItsCodeAndNoZombie) {
  TempDir tmp;
  platform::ProcessHandle process = ProcessCommUtils::runExeInSilence(
      windowsPath(copyStandin(tmp.path(), unique("pellix-crash"))), L"crash", 20000);
  ASSERT_NE(process, nullptr);
  const int64_t pid = env()->GetProcessId(process);
  platform::ProcessExit exit;
  ASSERT_TRUE(env()->GetProcessExit(process, &exit));
  EXPECT_EQ(exit.signal, SIGSEGV);
  EXPECT_EQ(exit.code, 128 + SIGSEGV);
  EXPECT_FALSE(exit.core_dumped);
  env()->CloseProcess(process);
  EXPECT_EQ(processState(pid), 0);
}

TEST(ProcessByNameTest, OnlyTheExactProgramNameMatchesWhateverItsCase) {
  TempDir tmp;
  Running gm_exe(tmp, "gm.exe");
  Running gm(tmp, "gm");
  Running gm_bak(tmp, "gm.exe.bak");
  const std::string long_name = unique("pellix-standin-server");
  Running server(tmp, long_name);

  struct Case {
    std::wstring name;
    bool running;
  } cases[] = {
      {L"gm.exe", true},
      {L"GM.EXE", true},
      {L"Gm.Exe", true},
      {L"gm", true},
      {L"gm.ex", false},
      {L"m.exe", false},
      {L"gm.exe ", false},
      {L"C:\\x\\gm.exe", false},
      {windowsPath(tmp.path()) + L"\\gm.exe", false},
      {L"", false},
      {utf8ToWs(long_name), true},
      {utf8ToWs(long_name.substr(0, 15)), false},
      {utf8ToWs(long_name + ".old"), false},
  };
  for (const Case& c : cases) {
    EXPECT_EQ(isProcessRunning(c.name), c.running) << "row: " << wsToUtf8(c.name);
  }

  EXPECT_TRUE(killProcessByName(L"GM.exe"));
  EXPECT_TRUE(gm_exe.ended(20000));
  EXPECT_FALSE(isProcessRunning(L"gm.exe"));
  EXPECT_FALSE(gm.ended(100)) << "a process named gm was ended";
  EXPECT_FALSE(gm_bak.ended(0)) << "a process named gm.exe.bak was ended";
  EXPECT_FALSE(server.ended(0));
  // Nothing of that name is left: nothing to stop, and that is success.
  EXPECT_TRUE(killProcessByName(L"gm.exe"));
  EXPECT_TRUE(killProcessByName(L""));
  EXPECT_FALSE(gm.ended(0));
}

TEST(ProcessByNameTest, EndingAWriterByNameStopsItsOutput) {
  TempDir tmp;
  const std::string name = unique("pellix-slow");
  const std::wstring program = windowsPath(copyStandin(tmp.path(), name));
  const std::string out = tmp.path() + "/slow out.jpg";
  const std::wstring line =
      L"write-slowly " + pellix_test::quoteWindowsArgument(utf8ToWs(out)) + L" 400 20";
  platform::ProcessHandle process = ProcessCommUtils::runExeInSilence(program, line, 0);
  ASSERT_NE(process, nullptr);
  ASSERT_TRUE(waitUntil([&] { return pellix_test::readFile(out).size() >= 3000; }));
  EXPECT_TRUE(isProcessRunning(utf8ToWs(name)));
  EXPECT_TRUE(killProcessByName(utf8ToWs(name)));
  EXPECT_EQ(env()->WaitForProcess(process, 20000), platform::WaitResult::kFinished);
  EXPECT_FALSE(isProcessRunning(utf8ToWs(name)));
  const size_t size = pellix_test::readFile(out).size();
  ::usleep(200000);
  EXPECT_EQ(pellix_test::readFile(out).size(), size);
  EXPECT_LT(size, 400000u);
  const int64_t pid = env()->GetProcessId(process);
  env()->CloseProcess(process);
  EXPECT_EQ(processState(pid), 0);

  // Waited for, the same writer leaves all of its output.
  const std::string whole = tmp.path() + "/whole.jpg";
  LogCapture log;
  process = ProcessCommUtils::runExeInSilence(program,
                                              L"write-slowly " + utf8ToWs(whole) + L" 5 30", 20000);
  EXPECT_EQ(log.count(" exe has run finish"), 1);
  EXPECT_EQ(pellix_test::readFile(whole).size(), 5000u);
  env()->CloseProcess(process);
}

}  // namespace

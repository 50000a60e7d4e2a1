// The host program with converters running: pellix stop-tools ends the stray ones, and a
// Ctrl-C during a long Ghostscript run stops it at once.
#include <signal.h>

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "Common/Source/ProcessUtils.h"
#include "Common/Source/text_forms.h"
#include "platform/env.h"
#include "testing/test_support.h"

namespace {

using pellix_test::TempDir;
using pellix_test::windowsPath;

platform::Env* env() { return platform::Env::Default(); }

std::wstring commandLine(const std::vector<std::string>& args) {
  std::wstring line;
  for (const std::string& a : args) line += L" " + pellix_test::quoteWindowsArgument(utf8ToWs(a));
  return line;
}

// The program's exit status after it ends (a minute at most).
int exitOf(platform::ProcessHandle process) {
  EXPECT_EQ(env()->WaitForProcess(process, 60000), platform::WaitResult::kFinished);
  platform::ProcessExit exit;
  EXPECT_TRUE(env()->GetProcessExit(process, &exit));
  env()->CloseProcess(process);
  return exit.code;
}

bool gsOfTheTestRunning(const std::string& folder) {
  for (const platform::ProcessEntry& p : env()->ListProcesses()) {
    if (wsToUtf8(p.program_name) != "gs") continue;
    if (pellix_test::readFile("/proc/" + std::to_string(p.id) + "/cmdline").find(folder) !=
        std::string::npos) {
      return true;
    }
  }
  return false;
}

TEST(PellixToolsCliTest, StopToolsEndsTheStrayConverters) {
  TempDir tmp;
  std::vector<platform::ProcessHandle> tools;
  for (const char* name : {"gswin32c.exe", "inkscape.exe"}) {
    tools.push_back(env()->StartProcess(
        windowsPath(pellix_test::copyStandin(tmp.path(), name)), L"hang", nullptr));
    ASSERT_NE(tools.back(), nullptr);
  }
  const pellix_test::RunResult r = pellix_test::run({pellix_test::stageBin() + "/pellix", "stop-tools"});
  EXPECT_EQ(r.status, 0) << r.err;
  for (platform::ProcessHandle tool : tools) EXPECT_EQ(exitOf(tool), 128 + SIGKILL);

  platform::ProcessHandle jc = env()->StartProcess(
      windowsPath(pellix_test::copyStandin(tmp.path(), "ex9000.exe")), L"hang", nullptr);
  const pellix_test::RunResult again =
      pellix_test::run({pellix_test::stageBin() + "/pellix", "stop-tools"});
  EXPECT_EQ(again.status, 1);
  EXPECT_EQ(exitOf(jc), 128 + SIGKILL);
  EXPECT_EQ(pellix_test::run({pellix_test::stageBin() + "/pellix", "stop-tools", "x"}).status, 2);
}

TEST(PellixToolsCliTest, ACtrlCDuringALongGhostscriptRunStopsIt) {
  TempDir tmp;
  const std::string eps = tmp.write("endless.eps",
                                    "%!PS-Adobe-3.0 EPSF-3.0\n%%BoundingBox: 0 0 72 72\n"
                                    "{ 1 pop } loop\n");
  const std::string out = tmp.mkdir("previews");
  platform::ProcessHandle host = env()->StartProcess(
      windowsPath(pellix_test::stageBin() + "/pellix"),
      commandLine({"-q", "preview", "-o", out, eps}), nullptr);
  ASSERT_NE(host, nullptr);
  ASSERT_TRUE(pellix_test::waitUntil([&] { return gsOfTheTestRunning(tmp.path()); }, 30));
  ::kill(static_cast<pid_t>(env()->GetProcessId(host)), SIGINT);
  // Without the stop the host would wait for the converter's whole limit.
  EXPECT_EQ(exitOf(host), 130);
  EXPECT_FALSE(pellix_test::fileExists(out + "/endless.eps.1.jpg"));
  EXPECT_TRUE(pellix_test::waitUntil([&] { return !gsOfTheTestRunning(tmp.path()); }));
  EXPECT_FALSE(isProcessRunning(L"gswin32c.exe"));
}

}  // namespace

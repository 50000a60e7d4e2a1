// The watch on a converter, with real child processes: the stand-in program, copied under
// names of its own, ends, hangs, crashes or writes its output slowly; stops come from
// another thread through the driver.
#include <unistd.h>

#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <thread>
#include <vector>

#include "Common/Source/ProcessUtils.h"
#include "Common/Source/common_helper_mini.h"
#include "Common/Source/text_forms.h"
#include "PellixKernel/MultiImage.h"
#include "PellixKernel/PellixDriver.h"
#include "PellixKernel/file_type_sniff.h"
#include "PellixKernel/multi_image_test_access.h"
#include "errors/result_codes.h"
#include "testing/test_support.h"

namespace {

using Access = MultiImageTestAccess;
using pellix_test::copyStandin;
using pellix_test::fileExists;
using pellix_test::LogCapture;
using pellix_test::processState;
using pellix_test::readFile;
using pellix_test::TempDir;
using pellix_test::windowsPath;

platform::Env* env() { return platform::Env::Default(); }

// A stand-in under a name that no other test run uses, started as the routes start tools.
struct Tool {
  Tool(const TempDir& tmp, const std::string& stem)
      : name(stem + "-" + std::to_string(::getpid()) + ".exe"),
        path(windowsPath(copyStandin(tmp.path(), name))) {}

  platform::ProcessHandle start(const std::wstring& line) const {
    platform::ProcessHandle process = ProcessCommUtils::runExeInSilence(path, line, 0);
    EXPECT_NE(process, nullptr) << name;
    return process;
  }
  std::wstring wideName() const { return utf8ToWs(name); }

  std::string name;
  std::wstring path;
};

// The kill at the end of a watch doesn't wait for the end it causes.
bool goneAndReaped(const Tool& tool, int64_t pid) {
  return pellix_test::waitUntil(
      [&] { return !isProcessRunning(tool.wideName()) && processState(pid) == 0; });
}

std::wstring arg(const std::string& posix) {
  return pellix_test::quoteWindowsArgument(utf8ToWs(posix));
}

TEST(WaitChildTest, DecidesByTheOutputAloneAndLeavesNoProcessOfTheTool) {
  TempDir tmp;
  const Tool tool(tmp, "pellix-watched");
  const std::string out = tmp.path() + "/out put.jpg";
  struct Case {
    const char* what;
    std::function<void()> before;  // what stands at the output before the run
    std::wstring line;
    double limit_s;  // 0: the routes' own limit
    bool ok;
    bool timed_out;
    size_t size;  // of the output afterwards; npos: no file
  } cases[] = {
      {"ends with output", nullptr, L"write-slowly " + arg(out) + L" 3 10", 0, true, false, 3000},
      {"ends without output", nullptr, L"exit 0", 0, false, false, std::string::npos},
      {"ends with an empty output", [&] { pellix_test::writeFile(out, ""); }, L"exit 0", 0,
       false, false, 0},
      {"fails with its code", nullptr, L"exit 7", 0, false, false, std::string::npos},
      {"crashes", nullptr, L"crash", 0, false, false, std::string::npos},
      {"hangs past the limit without output", nullptr, L"hang", 0.3, false, true,
       std::string::npos},
      {"hangs past the limit with an output left", [&] { pellix_test::writeFile(out, "jpg"); },
       L"hang", 0.3, true, false, 3},
      // The limit passes early in the writing; the settling waits for the rest.
      {"writes slowly past the limit", nullptr, L"write-slowly " + arg(out) + L" 20 40", 0.2,
       true, false, 20000},
  };
  for (const Case& c : cases) {
    ::unlink(out.c_str());
    if (c.before) c.before();
    MultiImage multi(nullptr);
    Access::shortenTimeLimit(multi, c.limit_s);
    platform::ProcessHandle process = tool.start(c.line);
    const int64_t pid = env()->GetProcessId(process);
    bool timed_out = !c.timed_out;
    EXPECT_EQ(Access::waitChild(multi, process, tool.wideName(), windowsPath(out), &timed_out),
              c.ok)
        << "row: " << c.what;
    EXPECT_EQ(timed_out, c.timed_out) << "row: " << c.what;
    EXPECT_EQ(fileExists(out) ? readFile(out).size() : std::string::npos, c.size)
        << "row: " << c.what;
    EXPECT_TRUE(goneAndReaped(tool, pid)) << "row: " << c.what;
  }
}

TEST(WaitChildTest, AToolThatNeverStartedCountsAsDone) {
  MultiImage multi(nullptr);
  bool timed_out = true;
  EXPECT_TRUE(Access::waitChild(multi, nullptr, L"gm.exe", L"Z:\\nowhere\\x.jpg", &timed_out));
  EXPECT_FALSE(timed_out);
}

TEST(WaitChildTest, AStopKillsTheToolAndDeletesItsOutput) {
  TempDir tmp;
  const Tool tool(tmp, "pellix-stopped");
  const std::string out = tmp.path() + "/page.jpg";
  CPellixDriver driver;
  MultiImage& multi = DriverTestAccess::multiImage(driver);
  pellix_test::writeFile(out, "half a page");
  platform::ProcessHandle process = tool.start(L"hang");
  const int64_t pid = env()->GetProcessId(process);
  std::thread stopper([&] {
    ::usleep(300000);
    driver.setStopFlag(true);
  });
  bool timed_out = true;
  // Without the stop this would wait for the full limit of the routes.
  EXPECT_FALSE(Access::waitChild(multi, process, tool.wideName(), windowsPath(out), &timed_out));
  stopper.join();
  EXPECT_FALSE(timed_out);
  EXPECT_FALSE(fileExists(out));
  EXPECT_TRUE(goneAndReaped(tool, pid));
  EXPECT_FALSE(Access::waitStop(multi, 0)) << "the stop was consumed";
}

TEST(WaitChildTest, AStopAskedBeforeTheRunEndsItAtOnceUnlessWithdrawn) {
  TempDir tmp;
  const Tool tool(tmp, "pellix-early");
  const std::wstring out = windowsPath(tmp.path()) + L"\\early.jpg";
  CPellixDriver driver;
  MultiImage& multi = DriverTestAccess::multiImage(driver);
  Access::shortenTimeLimit(multi, 0.5);

  driver.setStopFlag(true);
  bool timed_out = true;
  EXPECT_FALSE(Access::waitChild(multi, tool.start(L"hang"), tool.wideName(), out, &timed_out));
  EXPECT_FALSE(timed_out) << "ended by the stop, not by the limit";

  driver.setStopFlag(true);
  driver.setStopFlag(false);
  EXPECT_FALSE(Access::waitChild(multi, tool.start(L"hang"), tool.wideName(), out, &timed_out));
  EXPECT_TRUE(timed_out) << "the withdrawn stop ended the run";
  EXPECT_TRUE(pellix_test::waitUntil([&] { return !isProcessRunning(tool.wideName()); }));
}

TEST(WaitChildTest, AStopForAToolThatHasEndedShowsInTheSettlingOrStaysPending) {
  TempDir tmp;
  const Tool tool(tmp, "pellix-ended");
  const std::string out = tmp.path() + "/ended.jpg";
  CPellixDriver driver;
  MultiImage& multi = DriverTestAccess::multiImage(driver);

  platform::ProcessHandle process = tool.start(L"write-slowly " + arg(out) + L" 2 0");
  ASSERT_EQ(env()->WaitForProcess(process, 20000), platform::WaitResult::kFinished);
  driver.setStopFlag(true);
  bool timed_out = true;
  EXPECT_FALSE(Access::waitChild(multi, process, tool.wideName(), windowsPath(out), &timed_out));
  EXPECT_EQ(readFile(out).size(), 2000u) << "a stop in the settling deletes nothing";
  EXPECT_FALSE(Access::waitStop(multi, 0));

  process = tool.start(L"exit 0");
  ASSERT_EQ(env()->WaitForProcess(process, 20000), platform::WaitResult::kFinished);
  driver.setStopFlag(true);
  EXPECT_FALSE(Access::waitChild(multi, process, tool.wideName(),
                                 windowsPath(tmp.path()) + L"\\none.jpg", &timed_out));
  EXPECT_TRUE(Access::waitStop(multi, 0)) << "nothing saw the stop, so it is still pending";
}

TEST(MultiImageTest, ToolFoldersLieUnderTheUtilsFolder) {
  LogCapture log;
  MultiImage multi(nullptr);
  std::wstring utils = getUtilsDir();
  utils.pop_back();
  const std::map<std::wstring, std::wstring> expected = {
      {L"GM", utils + L"\\GM"},  {L"GSWIN", utils},   {L"INK", utils + L"\\ink"},
      {L"JCH", utils},           {L"PCX2JPG", utils}, {L"PSD2JPG", utils},
  };
  EXPECT_EQ(Access::toolDirs(multi), expected);
  EXPECT_EQ(log.count("I MultiImage::MultiImage UtilsPath:" + wsToUtf8(utils)), 1);
}

TEST(MultiImageTest, RequestsAreCheckedSizedAndDispatchedByType) {
  TempDir tmp;
  const std::wstring src = windowsPath(tmp.write("doc.xyz", "content"));
  const std::wstring dst = windowsPath(tmp.path()) + L"\\made\\on the way\\doc.xyz.1.jpg";
  MultiImage multi(nullptr);
  struct Case {
    const char* what;
    std::wstring src;
    int type;
    MultiImage::Size size;
    std::wstring dst;
    int code;
    int height, width;  // afterwards
    std::string log;
  } cases[] = {
      {"empty source", L"", FT_PDF, {300, 500}, dst, codes::kPathNotUsable, 800, 800, ""},
      {"empty destination", src, FT_PDF, {300, 500}, L"", codes::kPathNotUsable, 800, 800, ""},
      {"missing source", src + L".gone", FT_PDF, {300, 500}, dst, codes::kSourceMissing, 800,
       800, ""},
      {"half a size keeps the last", src, 3, {0, 500}, dst, codes::kOk, 800, 800, ""},
      {"a size is kept", src, 3, {300, 500}, dst, codes::kOk, 300, 500, ""},
      {"and used again", src, 3, {300, 0}, dst, codes::kOk, 300, 500, ""},
      {"raster images have their own route", src, FT_IMAGE, {10, 10}, dst,
       codes::kUnknownFormat, 10, 10,
       "E MultiImage::getViewByCmd do use MagicImage::getViewByGDI first"},
  };
  for (const Case& c : cases) {
    LogCapture log;
    EXPECT_EQ(multi.getViewByCmd(c.src, c.type, c.size, c.dst), c.code) << "row: " << c.what;
    EXPECT_EQ(Access::height(multi), c.height) << "row: " << c.what;
    EXPECT_EQ(Access::width(multi), c.width) << "row: " << c.what;
    EXPECT_EQ(Access::pageCount(multi), 1) << "row: " << c.what;
    EXPECT_EQ(log.count(c.log.empty() ? "E " : c.log), c.log.empty() ? 0 : 1) << "row: " << c.what;
  }
  EXPECT_TRUE(pellix_test::fileExists(tmp.path() + "/made/on the way"))
      << "the destination's folder is made on the way";
  EXPECT_EQ(Access::checkPaths(multi, src, L"Q:\\no drive\\x.jpg"), codes::kOk)
      << "a folder that can't be made isn't reported";
}

TEST(MultiImageTest, StopToolsEndsTheStrayConvertersAndTellsOfTheJcProgram) {
  TempDir tmp;
  std::vector<platform::ProcessHandle> running;
  for (const char* name : {"psd2jpg.exe", "inkscape.exe", "ex9000.exe"}) {
    running.push_back(ProcessCommUtils::runExeInSilence(
        windowsPath(copyStandin(tmp.path(), name)), L"hang", 0));
    ASSERT_NE(running.back(), nullptr) << name;
  }
  EXPECT_FALSE(MultiImage::stopTools()) << "the JC program was running";
  for (platform::ProcessHandle process : running) {
    EXPECT_EQ(env()->WaitForProcess(process, 20000), platform::WaitResult::kFinished);
    env()->CloseProcess(process);
  }
  EXPECT_TRUE(MultiImage::stopTools());
}

}  // namespace

// gswin32c.exe with the real Ghostscript, run with the kernel's command lines on documents
// that the tests make with Ghostscript from PostScript.
#include <dirent.h>
#include <signal.h>
#include <unistd.h>

#include <gtest/gtest.h>

#include <cstdlib>
#include <string>
#include <vector>

#include "Common/Source/ProcessUtils.h"
#include "Common/Source/text_forms.h"
#include "converters/converter_test_support.h"
#include "testing/test_support.h"

namespace converter_test {
namespace {

using pellix_test::fileExists;
using pellix_test::readFile;
using pellix_test::writeFile;

const std::wstring kGs = L"gswin32c.exe";

// The heads of the kernel's three lines; the output name and the source follow.
constexpr wchar_t kMultiPage[] =
    L" -dSAFER -dBATCH -dNOPAUSE -sDEVICE=jpeg -dGraphicsAlphaBits=1 -dTextAlphaBits=1 "
    L"-dFirstPage=1 -dLastPage=10 -r200 -sOutputFile=\"";
constexpr wchar_t kSinglePage[] =
    L" -q -dNOSAFER -dBATCH -dNOPAUSE -sDEVICE=jpeg -dEPSCrop -dGraphicsAlphaBits=1 "
    L"-dTextAlphaBits=1 -dFirstPage=1 -dLastPage=1 -r200 -sOutputFile=\"";
constexpr wchar_t kEps[] =
    L" -q -dNOSAFER -dBATCH -dNOPAUSE -sDEVICE=jpeg -dEPSCrop -dGraphicsAlphaBits=1 "
    L"-dTextAlphaBits=1 -r200 -sOutputFile=\"";

std::wstring line(const wchar_t* head, const std::wstring& output, const std::wstring& src) {
  return head + output + L"\" \"" + src + L"\"";
}

// A PostScript string literal of the text.
std::string psString(const std::string& text) {
  std::string out = "(";
  for (char c : text) {
    if (c == '(' || c == ')' || c == '\\') out.push_back('\\');
    out.push_back(c);
  }
  return out + ")";
}

const Rgb kPageColours[] = {{255, 0, 0}, {0, 160, 0}, {0, 0, 255}};

// A PDF of three one-inch pages in the colours above, made by Ghostscript.
void makeThreePagePdf(const std::string& folder, const std::string& name) {
  std::string ps = "%!PS\n<< /PageSize [72 72] >> setpagedevice\n";
  for (const Rgb& c : kPageColours) {
    ps += std::to_string(c[0] / 255.0) + " " + std::to_string(c[1] / 255.0) + " " +
          std::to_string(c[2] / 255.0) + " setrgbcolor 0 0 72 72 rectfill showpage\n";
  }
  converter_test::makePdf(folder + "/" + name, ps);
}

std::vector<std::string> listFolder(const std::string& path) {
  std::vector<std::string> names;
  if (DIR* dir = ::opendir(path.c_str())) {
    while (struct dirent* e = ::readdir(dir)) {
      if (e->d_name[0] != '.') names.push_back(e->d_name);
    }
    ::closedir(dir);
  }
  return names;
}

TEST(GswinExeTest, RendersEveryPageThroughTheMaskIntoAFolderWithAPercentSign) {
  TestDrives drives;
  makeThreePagePdf(drives.d(), "doc 图.pdf");
  drives.tmp().mkdir("disk e 图/previews 100%");
  // The kernel doubles the '%' of the destination and puts the page field in.
  const std::wstring mask = L"E:\\previews 100%%\\doc 图.pdf.%d.jpg";
  const platform::ProcessExit exit =
      runLikeTheKernel(converterPath(kGs), line(kMultiPage, mask, L"D:\\doc 图.pdf"));
  EXPECT_EQ(exit.code, 0);
  const std::string folder = drives.e() + "/previews 100%";
  EXPECT_EQ(listFolder(folder).size(), 3u);
  for (int page = 1; page <= 3; ++page) {
    const Picture p = readPicture(folder + "/doc 图.pdf." + std::to_string(page) + ".jpg");
    EXPECT_EQ(p.format, "JPEG") << "page " << page;
    EXPECT_EQ(p.width, 200) << "page " << page;
    EXPECT_EQ(p.height, 200) << "page " << page;
    EXPECT_TRUE(near(p.at(100, 100), kPageColours[page - 1])) << show(p.at(100, 100));
  }
  EXPECT_EQ(listFolder(drives.e()).size(), 1u) << "nothing beside the folder";

  // The single-page line makes the first page alone, under the destination's own name.
  const platform::ProcessExit single = runLikeTheKernel(
      converterPath(kGs), line(kSinglePage, L"E:\\one.pdf.1.jpg", L"D:\\doc 图.pdf"));
  EXPECT_EQ(single.code, 0);
  const Picture one = readPicture(drives.e() + "/one.pdf.1.jpg");
  EXPECT_EQ(one.width, 200);
  EXPECT_TRUE(near(one.at(5, 5), kPageColours[0])) << show(one.at(5, 5));
  EXPECT_FALSE(fileExists(drives.e() + "/one.pdf.2.jpg"));
}

TEST(GswinExeTest, AnEpsFileCantReachTheFileSystemEvenWhenTheLineSaysNoSafer) {
  TestDrives drives;
  const std::string victim = drives.tmp().write("victim.txt", "keep me");
  const std::string outside = drives.tmp().path() + "/written.txt";
  const std::string beside = drives.e() + "/beside the output.txt";
  const std::string moved = drives.tmp().path() + "/moved.txt";
  const std::string eps =
      "%!PS-Adobe-3.0 EPSF-3.0\n%%BoundingBox: 0 0 100 50\n" +
      ("{ " + psString(outside) + " (w) file dup (x) writestring closefile }" + " stopped pop\n") +
      ("{ " + psString(beside) + " (w) file dup (x) writestring closefile }" + " stopped pop\n") +
      ("{ " + psString(victim) + " deletefile } stopped pop\n") +
      ("{ " + psString(victim) + " " + psString(moved) + " renamefile } stopped pop\n") +
      "0 0 1 setrgbcolor 0 0 100 50 rectfill showpage\n";
  writeFile(drives.d() + "/hostile.eps", eps);
  // Neither the environment may lift the safe mode.
  ::setenv("GS_OPTIONS", "-dNOSAFER", 1);
  const platform::ProcessExit exit = runLikeTheKernel(
      converterPath(kGs), line(kEps, L"E:\\hostile.eps.1.jpg", L"D:\\hostile.eps"));
  ::unsetenv("GS_OPTIONS");

  EXPECT_EQ(exit.code, 0);
  EXPECT_EQ(readFile(victim), "keep me");
  EXPECT_FALSE(fileExists(outside));
  EXPECT_FALSE(fileExists(beside));
  EXPECT_FALSE(fileExists(moved));
  // The drawing itself was made, cut to the bounding box.
  const Picture p = readPicture(drives.e() + "/hostile.eps.1.jpg");
  EXPECT_EQ(p.width, 278);
  EXPECT_EQ(p.height, 139);
  EXPECT_TRUE(near(p.at(100, 60), Rgb{0, 0, 255})) << show(p.at(100, 60));
}

TEST(GswinExeTest, OptionsBeyondRenderingRefuseTheWholeLine) {
  TestDrives drives;
  makeThreePagePdf(drives.d(), "doc.pdf");
  const std::string marker = drives.tmp().path() + "/ran";
  struct Case {
    const char* why;
    std::wstring line;
  } cases[] = {
      {"PostScript on the line", L" -c \"(x) print\" -sOutputFile=\"E:\\o.jpg\" \"D:\\doc.pdf\""},
      {"a pipe as output",
       L" -sOutputFile=\"%pipe%touch " + utf8ToWs(marker) + L"\" \"D:\\doc.pdf\""},
      {"an output no drive holds", L" -sOutputFile=\"/tmp/o.jpg\" \"D:\\doc.pdf\""},
      {"a device that isn't an image",
       L" -sDEVICE=pdfwrite -sOutputFile=\"E:\\o.jpg\" \"D:\\doc.pdf\""},
      {"permits", L" --permit-file-all=/ -sOutputFile=\"E:\\o.jpg\" \"D:\\doc.pdf\""},
      {"an option file", L" -sOutputFile=\"E:\\o.jpg\" \"@D:\\doc.pdf\""},
      {"a relative input", L" -sOutputFile=\"E:\\o.jpg\" \"doc.pdf\""},
      {"an input named by -f", L" -sOutputFile=\"E:\\o.jpg\" -f \"D:\\doc.pdf\""},
      {"standard input", L" -sOutputFile=\"E:\\o.jpg\" -"},
      {"no input", L" -sOutputFile=\"E:\\o.jpg\""},
      {"no output", L" -sDEVICE=jpeg \"D:\\doc.pdf\""},
      {"a page that isn't a number", L" -dLastPage=x -sOutputFile=\"E:\\o.jpg\" \"D:\\doc.pdf\""},
  };
  for (const Case& c : cases) {
    EXPECT_EQ(runLikeTheKernel(converterPath(kGs), c.line).code, 2) << "row: " << c.why;
    EXPECT_FALSE(fileExists(drives.e() + "/o.jpg")) << "row: " << c.why;
  }
  EXPECT_FALSE(fileExists(marker));
}

// The ids of the processes whose parent is `pid` and whose program is named `name`.
std::vector<long long> childrenNamed(long long pid, const std::string& name) {
  std::vector<long long> found;
  for (const std::string& entry : listFolder("/proc")) {
    const long long id = std::atoll(entry.c_str());
    if (id <= 0) continue;
    const std::string stat = readFile("/proc/" + entry + "/stat");
    const size_t close = stat.rfind(')');
    if (close == std::string::npos || stat.find("(" + name + ")") == std::string::npos) continue;
    if (std::atoll(stat.c_str() + close + 4) == pid) found.push_back(id);
  }
  return found;
}

TEST(GswinExeTest, KillingTheConverterByNameEndsGhostscriptAndItsLeftoversGoLater) {
  TestDrives drives;
  const std::string scratch = drives.tmp().mkdir("scratch");
  ::setenv("TMPDIR", scratch.c_str(), 1);
  writeFile(drives.d() + "/endless.eps",
            "%!PS-Adobe-3.0 EPSF-3.0\n%%BoundingBox: 0 0 10 10\n{ } loop\n");
  platform::Env* env = platform::Env::Default();
  platform::ProcessHandle adapter = ProcessCommUtils::runExeInSilence(
      converterPath(kGs), line(kEps, L"E:\\endless.jpg", L"D:\\endless.eps"), 0);
  ASSERT_NE(adapter, nullptr);
  const long long adapter_pid = env->GetProcessId(adapter);
  std::vector<long long> gs;
  EXPECT_TRUE(pellix_test::waitUntil([&] {
    gs = childrenNamed(adapter_pid, "gs");
    return !gs.empty();
  }));
  EXPECT_TRUE(isProcessRunning(L"GSWIN32C.EXE"));

  EXPECT_TRUE(killProcessByName(kGs));
  EXPECT_EQ(env->WaitForProcess(adapter, 20000), platform::WaitResult::kFinished);
  platform::ProcessExit exit;
  EXPECT_TRUE(env->GetProcessExit(adapter, &exit));
  EXPECT_EQ(exit.signal, SIGKILL);
  env->CloseProcess(adapter);
  for (long long id : gs) {
    // Whoever adopts the orphan may be slow to reap it; it runs no more all the same.
    EXPECT_TRUE(pellix_test::waitUntil([&] {
      const char state = pellix_test::processState(id);
      return state == 0 || state == 'Z';
    })) << "gs "
        << id << " outlived its converter";
  }
  EXPECT_FALSE(isProcessRunning(kGs));
  EXPECT_FALSE(fileExists(drives.e() + "/endless.jpg"));
  // The killed converter couldn't clear its temporary folder; the next one does.
  EXPECT_EQ(listFolder(scratch).size(), 1u);
  makeThreePagePdf(drives.d(), "doc.pdf");
  EXPECT_EQ(
      runLikeTheKernel(converterPath(kGs), line(kSinglePage, L"E:\\d.jpg", L"D:\\doc.pdf")).code,
      0);
  EXPECT_TRUE(listFolder(scratch).empty());
  ::unsetenv("TMPDIR");
}

}  // namespace
}  // namespace converter_test

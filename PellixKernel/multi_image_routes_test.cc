// The document routes with the real converters of the stage tree and the real gs and gm, on
// documents and pictures that the tests make. Without a driver a route stops at its zoom
// (2219), which leaves what the converter made in view; the metadata kernel's answer for a
// document is what the test knows it put into it.
#include <unistd.h>

#include <gtest/gtest.h>

#include <string>
#include <thread>
#include <vector>

#include "Common/Source/ProcessUtils.h"
#include "Common/Source/text_forms.h"
#include "PellixKernel/MultiImage.h"
#include "PellixKernel/PellixDriver.h"
#include "PellixKernel/file_type_sniff.h"
#include "PellixKernel/multi_image_test_access.h"
#include "converters/converter_test_support.h"
#include "errors/result_codes.h"
#include "testing/test_support.h"

namespace converter_test {
namespace {

using namespace std::string_literals;
using Access = MultiImageTestAccess;
using pellix_test::fileExists;
using pellix_test::LogCapture;
using pellix_test::readFile;
using pellix_test::writeFile;

constexpr MultiImage::Size kSize = {120, 160};

// A multi-page document whose pages are greys from dark to light, one inch each.
std::string greyPages(int pages) {
  std::string ps = "%!PS\n<< /PageSize [72 72] >> setpagedevice\n";
  for (int i = 0; i < pages; ++i) {
    ps += std::to_string(i / static_cast<double>(pages)) + " setgray 0 0 72 72 rectfill showpage\n";
  }
  return ps;
}

int greyOf(int page, int pages) { return 255 * (page - 1) / pages; }

// The converters of the stage tree, and the metadata kernel's answer for every document.
void prepare(MultiImage& multi, const std::string& page_count,
             std::vector<std::string> thumbnails = {}) {
  Access::useUtilsFolder(multi, L"S:");
  Access::setMetaDataHandler(
      multi, [page_count, thumbnails](const std::wstring&, MetaDataValues& values, bool want) {
        values.page_count = page_count;
        if (want) values.thumbnails = thumbnails;
        return 0;
      });
}

// Whether a real gs started for the tests' folders still runs.
bool testGsRunning() {
  for (const platform::ProcessEntry& p : platform::Env::Default()->ListProcesses()) {
    if (wsToUtf8(p.program_name) != "gs") continue;
    const std::string args = readFile("/proc/" + std::to_string(p.id) + "/cmdline");
    if (args.find("/pellix-test-") != std::string::npos) return true;
  }
  return false;
}

TEST(PdfRouteTest, PagesAndArgumentLineFollowThePageCountOfTheMetadata) {
  TestDrives drives;
  makePdf(drives.d() + "/twelve.pdf", greyPages(12));
  const std::wstring head = L"I MultiImage::_getViewPDF_AI cmd: S:\\gswin32c.exe";
  const std::wstring single =
      L" -q -dNOSAFER -dBATCH -dNOPAUSE -sDEVICE=jpeg -dEPSCrop -dGraphicsAlphaBits=1 "
      L"-dTextAlphaBits=1 -dFirstPage=1 -dLastPage=1 -r200 -sOutputFile=\"E:\\p\\twelve.pdf.1.jpg\"";
  const auto multi_line = [](int last) {
    return L" -dSAFER -dBATCH -dNOPAUSE -sDEVICE=jpeg -dGraphicsAlphaBits=1 -dTextAlphaBits=1 "
           L"-dFirstPage=1 -dLastPage=" +
           std::to_wstring(last) + L" -r200 -sOutputFile=\"E:\\p\\twelve.pdf.%d.jpg\"";
  };
  struct Case {
    std::string page_count;
    std::wstring line;
    int pages;
  } cases[] = {
      {"", single, 1},          {"1", single, 1},         {"many", single, 1},
      {"3", multi_line(3), 3},  {"12", multi_line(10), 10}, {"-4", multi_line(10), 10},
  };
  for (const Case& c : cases) {
    const std::string folder = drives.e() + "/p";
    pellix_test::run({"/bin/rm", "-rf", folder});
    MultiImage multi(nullptr);
    prepare(multi, c.page_count);
    LogCapture log;
    EXPECT_EQ(multi.getViewByCmd(L"D:\\twelve.pdf", FT_PDF, kSize, L"E:\\p\\twelve.pdf.1.jpg"),
              codes::kPreviewModuleFailed)
        << "row: " << c.page_count;
    EXPECT_EQ(log.count(wsToUtf8(head + c.line + L" \"D:\\twelve.pdf\"")), 1)
        << "row: " << c.page_count;
    EXPECT_EQ(log.count("E MultiImage::_getViewPDF_AI not err, but zoom big_jpg:"
                        "E:\\p\\twelve.pdf.1.jpgbig.jpg"),
              1)
        << "row: " << c.page_count;
    EXPECT_EQ(Access::pageCount(multi), c.pages) << "row: " << c.page_count;
    // Page 1 went to the zoom, which has nobody to do it; the others wait for the driver.
    EXPECT_FALSE(fileExists(folder + "/twelve.pdf.1.jpg")) << "row: " << c.page_count;
    EXPECT_FALSE(fileExists(folder + "/twelve.pdf.1.jpgbig.jpg")) << "row: " << c.page_count;
    for (int page = 2; page <= 11; ++page) {
      const std::string path = folder + "/twelve.pdf." + std::to_string(page) + ".jpg";
      ASSERT_EQ(fileExists(path), page <= c.pages) << "row: " << c.page_count << " page " << page;
      if (page > c.pages) continue;
      const Picture p = readPicture(path);
      EXPECT_EQ(p.width, 200);
      const int grey = greyOf(page, 12);
      EXPECT_TRUE(near(p.at(100, 100), {grey, grey, grey}, 12)) << "page " << page;
    }
  }
}

TEST(PdfRouteTest, APercentSignStaysItselfInEveryName) {
  TestDrives drives;
  makePdf(drives.d() + "/50% off.pdf", greyPages(2));
  MultiImage multi(nullptr);
  prepare(multi, "2");
  LogCapture log;
  EXPECT_EQ(multi.getViewByCmd(L"D:\\50% off.pdf", FT_PDF, kSize,
                               L"E:\\100%\\50% off.pdf.1.jpg"),
            codes::kPreviewModuleFailed);
  EXPECT_EQ(log.count("-sOutputFile=\"E:\\100%%\\50%% off.pdf.%d.jpg\" \"D:\\50% off.pdf\""), 1);
  EXPECT_TRUE(fileExists(drives.e() + "/100%/50% off.pdf.2.jpg"));
}

TEST(PdfRouteTest, AnEpsFileGetsItsOwnLineAndOneImage) {
  TestDrives drives;
  writeFile(drives.d() + "/art.eps",
            "%!PS-Adobe-3.0 EPSF-3.0\n%%BoundingBox: 0 0 72 36\n"
            "0 0 1 setrgbcolor 0 0 72 36 rectfill showpage\n");
  MultiImage multi(nullptr);
  prepare(multi, "3");
  LogCapture log;
  EXPECT_EQ(multi.getViewByCmd(L"D:\\art.eps", FT_PDF, kSize, L"E:\\art.eps.1.jpg"),
            codes::kPreviewModuleFailed);
  EXPECT_EQ(log.count(" -q -dNOSAFER -dBATCH -dNOPAUSE -sDEVICE=jpeg -dEPSCrop "
                      "-dGraphicsAlphaBits=1 -dTextAlphaBits=1 -r200 "
                      "-sOutputFile=\"E:\\art.eps.1.jpg\" \"D:\\art.eps\""),
            1);
  EXPECT_EQ(Access::pageCount(multi), 3) << "as the metadata said, though one image is made";
  EXPECT_FALSE(fileExists(drives.e() + "/art.eps.2.jpg"));
}

TEST(PdfRouteTest, AnAiFileGhostscriptCantReadFallsBackOnItsThumbnails) {
  TestDrives drives;
  const std::string jpeg_a = "\xFF\xD8\xFF\xE0 first page\xFF\xD9";
  const std::string jpeg_b = "\xFF\xD8\xFF\xE0 second page, longer\xFF\xD9";
  writeFile(drives.d() + "/logo.ai", "%PDF-1.5\n1 0 obj\n<< /Type /Catalog broken");
  struct Case {
    const char* what;
    std::wstring src;
    std::vector<std::string> thumbnails;
    int code;
  } cases[] = {
      {"AI with two thumbnails", L"D:\\logo.ai", {base64(jpeg_a), base64(jpeg_b)},
       codes::kPreviewFailed},
      {"AI without a thumbnail", L"D:\\logo.ai", {}, codes::kAiWithoutPdf},
  };
  for (const Case& c : cases) {
    pellix_test::run({"/bin/rm", "-rf", drives.e() + "/p"});
    MultiImage multi(nullptr);
    prepare(multi, "2", c.thumbnails);
    EXPECT_EQ(multi.getViewByCmd(c.src, FT_AI, kSize, L"E:\\p\\logo.ai.1.jpg"), c.code)
        << "row: " << c.what;
    EXPECT_EQ(readFile(drives.e() + "/p/logo.ai.1.jpg"), c.thumbnails.empty() ? "" : jpeg_a)
        << "row: " << c.what;
    EXPECT_EQ(readFile(drives.e() + "/p/logo.ai.2.jpg"), c.thumbnails.empty() ? "" : jpeg_b)
        << "row: " << c.what;
  }
  // A PDF has no such fallback.
  writeFile(drives.d() + "/broken.pdf", "%PDF-1.5\n1 0 obj\n<< /Type /Catalog broken");
  MultiImage multi(nullptr);
  prepare(multi, "1", {base64(jpeg_a)});
  LogCapture log;
  EXPECT_EQ(multi.getViewByCmd(L"D:\\broken.pdf", FT_PDF, kSize, L"E:\\q\\broken.pdf.1.jpg"),
            codes::kPreviewFailed);
  EXPECT_EQ(log.count("E MultiImage::_getViewPDF_AI failed, src_path:D:\\broken.pdf error:2220"),
            1);
  EXPECT_FALSE(fileExists(drives.e() + "/q/broken.pdf.1.jpg"));
}

TEST(PdfRouteTest, RefusalsComeBeforeAnyRun) {
  TestDrives drives;
  writeFile(drives.d() + "/doc.pdf", "%PDF-1.4\n");
  writeFile(drives.d() + "/doc.txt", "%PDF-1.4\n");
  struct Case {
    const char* what;
    std::wstring src;
    bool tools;
    bool handler;
    int code;
  } cases[] = {
      {"missing source", L"D:\\gone.pdf", true, true, codes::kSourceMissing},
      {"extension that isn't pdf, ai or eps", L"D:\\doc.txt", true, true, codes::kWrongFileType},
      {"no Ghostscript", L"D:\\doc.pdf", false, true, codes::kPdfEngineFailed},
      {"no metadata kernel", L"D:\\doc.pdf", true, false, codes::kMetaModuleFailed},
  };
  for (const Case& c : cases) {
    MultiImage multi(nullptr);
    if (c.handler) prepare(multi, "1");
    Access::useUtilsFolder(multi, c.tools ? L"S:" : L"E:\\no tools");
    EXPECT_EQ(multi.getViewByCmd(c.src, FT_PDF, kSize, L"E:\\doc.pdf.1.jpg"), c.code)
        << "row: " << c.what;
  }
  EXPECT_FALSE(isProcessRunning(L"gswin32c.exe"));
}

// A DOS EPS file: a binary header before the PostScript and a TIFF preview behind it.
std::string epsWithBinaryHeader(const std::string& postscript) {
  const std::string tiff = "II*\0 not really a preview"s;
  std::string bytes(30, '\0');
  const auto put32 = [&](size_t at, size_t value) {
    for (int i = 0; i < 4; ++i) bytes[at + i] = static_cast<char>((value >> (8 * i)) & 0xFF);
  };
  bytes[0] = static_cast<char>(0xC5);
  bytes[1] = static_cast<char>(0xD0);
  bytes[2] = static_cast<char>(0xD3);
  bytes[3] = static_cast<char>(0xC6);
  put32(4, 30);
  put32(8, postscript.size());
  put32(20, 30 + postscript.size());
  put32(24, tiff.size());
  bytes[28] = bytes[29] = static_cast<char>(0xFF);
  return bytes + postscript + tiff;
}

TEST(PdfRouteTest, DamagedAndHostileDocumentsEndWithACodeAndTouchNothingElse) {
  TestDrives drives;
  makePdf(drives.d() + "/whole.pdf", greyPages(1));
  const std::string whole = readFile(drives.d() + "/whole.pdf");
  const std::string victim = drives.tmp().write("victim.txt", "keep me");
  const std::string planted = drives.e() + "/planted.txt";
  const std::string hostile =
      "%!PS-Adobe-3.0 EPSF-3.0\n%%BoundingBox: 0 0 72 72\n"
      "{ (" + victim + ") deletefile } stopped pop\n"
      "{ (" + planted + ") (w) file dup (x) writestring closefile } stopped pop\n"
      "0 0 1 setrgbcolor 0 0 72 72 rectfill showpage\n";
  const std::string plain_eps =
      "%!PS-Adobe-3.0 EPSF-3.0\n%%BoundingBox: 0 0 72 72\n0 1 0 setrgbcolor 0 0 72 72 rectfill "
      "showpage\n";
  // A page tree whose only page is the tree itself.
  const std::string looping =
      "%PDF-1.4\n1 0 obj << /Type /Catalog /Pages 2 0 R >> endobj\n"
      "2 0 obj << /Type /Pages /Kids [2 0 R] /Count 1 >> endobj\n"
      "trailer << /Root 1 0 R >>\n%%EOF\n";
  struct Case {
    const char* what;
    std::string name;
    std::string bytes;
    int code;
  } cases[] = {
      {"empty", "empty.pdf", "", codes::kPreviewFailed},
      {"text", "text.pdf", std::string(500, 't'), codes::kPreviewFailed},
      {"cut before its first page", "cut.pdf", whole.substr(0, 40), codes::kPreviewFailed},
      {"a page tree that loops", "loop.pdf", looping, codes::kPreviewFailed},
      {"PostScript that deletes and writes outside", "hostile.eps", hostile,
       codes::kPreviewModuleFailed},
      {"EPS with a binary header", "dos.eps", epsWithBinaryHeader(plain_eps),
       codes::kPreviewModuleFailed},
  };
  for (const Case& c : cases) {
    writeFile(drives.d() + "/" + c.name, c.bytes);
    MultiImage multi(nullptr);
    prepare(multi, "1");
    const std::wstring dst = L"E:\\out\\" + utf8ToWs(c.name) + L".1.jpg";
    EXPECT_EQ(multi.getViewByCmd(L"D:\\" + utf8ToWs(c.name), FT_PDF, kSize, dst), c.code)
        << "row: " << c.what;
    EXPECT_EQ(pellix_test::run({"/usr/bin/find", drives.e() + "/out", "-mindepth", "1"}).out, "")
        << "row: " << c.what;
  }
  EXPECT_EQ(readFile(victim), "keep me");
  EXPECT_FALSE(fileExists(planted));
  EXPECT_FALSE(testGsRunning());
}

TEST(PdfRouteTest, AStopDuringAHeavyPageEndsGhostscriptAndDeletesTheOutput) {
  TestDrives drives;
  // A page that Ghostscript never finishes drawing.
  writeFile(drives.d() + "/heavy.eps",
            "%!PS-Adobe-3.0 EPSF-3.0\n%%BoundingBox: 0 0 72 72\n"
            "{ 1 pop } loop\n");
  writeFile(drives.e() + "/heavy.eps.1.jpg", "an output of an earlier run");
  CPellixDriver driver;
  MultiImage& multi = DriverTestAccess::multiImage(driver);
  prepare(multi, "1");
  std::thread stopper([&] {
    pellix_test::waitUntil(testGsRunning);
    ::usleep(300000);
    driver.setStopFlag(true);
  });
  // Without the stop the route would wait for its whole limit.
  EXPECT_EQ(multi.getViewByCmd(L"D:\\heavy.eps", FT_PDF, kSize, L"E:\\heavy.eps.1.jpg"),
            codes::kPreviewFailed);
  stopper.join();
  EXPECT_FALSE(fileExists(drives.e() + "/heavy.eps.1.jpg"));
  EXPECT_FALSE(isProcessRunning(L"gswin32c.exe"));
  EXPECT_TRUE(pellix_test::waitUntil([] { return !testGsRunning(); }));
}

TEST(PcxRouteTest, OddNamesReachTheConverterWholeAndNothingRunsThroughAShell) {
  TestDrives drives;
  const std::string pcx =
      makePcx(8, 3, 40, 30, [](int x, int, int plane) { return plane == 0 ? x * 6 : 90; });
  ::chdir(drives.tmp().path().c_str());
  struct Case {
    const char* what;
    std::string name;  // in D:'s root, whose own name holds "$(touch x);'q'"
    int code;
  } cases[] = {
      {"blanks, quotes, a command, a semicolon, CJK", "scan 'a' $(touch y); 图.PCX",
       codes::kPreviewModuleFailed},
      {"a double quote, which a Windows name can't hold", "scan \"b\".pcx",
       codes::kNoPreviewPossible},
  };
  for (const Case& c : cases) {
    writeFile(drives.d() + "/" + c.name, pcx);
    MultiImage multi(nullptr);
    prepare(multi, "1");
    LogCapture log;
    const std::wstring name = utf8ToWs(c.name);
    EXPECT_EQ(multi.getViewByCmd(L"D:\\" + name, FT_PCX, kSize, L"E:\\pre\\" + name + L".1.jpg"),
              c.code)
        << "row: " << c.what;
    // The converter's picture was there for the zoom and is gone after it.
    EXPECT_EQ(log.count("I MultiImage::_getViewPCX cost seconds:"),
              c.code == codes::kPreviewModuleFailed ? 1 : 0)
        << "row: " << c.what;
    EXPECT_EQ(pellix_test::run({"/usr/bin/find", drives.e() + "/pre", "-type", "f"}).out, "")
        << "row: " << c.what;
  }
  EXPECT_FALSE(fileExists(drives.tmp().path() + "/x"));
  EXPECT_FALSE(fileExists(drives.tmp().path() + "/y"));
  EXPECT_FALSE(fileExists(drives.d() + "/x"));
}

TEST(PcxRouteTest, RefusalsAndBadFilesGiveTheirCodes) {
  TestDrives drives;
  std::string lying = makePcx(8, 3, 64, 64, [](int x, int y, int) { return (x + y) % 256; });
  lying = lying.substr(0, 300);
  put16(&lying, 8, 20000);
  put16(&lying, 10, 20000);
  writeFile(drives.d() + "/lying.pcx", lying);
  writeFile(drives.d() + "/scan.pcz", lying);
  struct Case {
    const char* what;
    std::wstring src;
    bool tools;
    int code;
    std::string log;
  } cases[] = {
      {"not named pcx", L"D:\\scan.pcz", true, codes::kWrongFileType, ""},
      {"no converter", L"D:\\lying.pcx", false, codes::kPsdEngineFailed, ""},
      {"a header that claims more than the file holds", L"D:\\lying.pcx", true,
       codes::kNoPreviewPossible,
       "E MultiImage::_getViewPCX failed, src_pathLD:\\lying.pcx error:2229"},
  };
  for (const Case& c : cases) {
    MultiImage multi(nullptr);
    prepare(multi, "1");
    if (!c.tools) Access::useUtilsFolder(multi, L"E:\\no tools");
    LogCapture log;
    EXPECT_EQ(multi.getViewByCmd(c.src, FT_PCX, kSize, L"E:\\pre\\x.pcx.1.jpg"), c.code)
        << "row: " << c.what;
    EXPECT_EQ(log.count(c.log.empty() ? "E " : c.log), c.log.empty() ? 0 : 1) << "row: " << c.what;
  }
  EXPECT_EQ(pellix_test::run({"/usr/bin/find", drives.e(), "-type", "f"}).out, "");
}

TEST(GmRouteTest, ConvertsAtTheWantedSizeOrSaysWhyNot) {
  TestDrives drives;
  writeFile(drives.d() + "/wide 图.ppm",
            makePpm(300, 150, [](int x, int) { return Rgb{x < 150 ? 250 : 0, 0, 200}; }));
  writeFile(drives.d() + "/garbage.png", std::string(400, 'g'));
  MultiImage multi(nullptr);
  prepare(multi, "1");
  LogCapture log;
  EXPECT_EQ(multi.getViewByGMExe(L"D:\\wide 图.ppm", L"E:\\g\\wide.jpg", 100, 100), codes::kOk);
  const Picture p = readPicture(drives.e() + "/g/wide.jpg");
  EXPECT_EQ(p.format, "JPEG");
  EXPECT_EQ(p.width, 100);
  EXPECT_EQ(p.height, 50);
  EXPECT_TRUE(near(p.at(10, 25), {250, 0, 200})) << show(p.at(10, 25));
  EXPECT_EQ(log.count("I MultiImage::getViewByGMExe gm_cmd: convert -size 100x100 "
                      "\"D:\\wide 图.ppm\" -resize 100x100 +profile \"*\" \"E:\\g\\wide.jpg\""),
            1);

  EXPECT_EQ(multi.getViewByGMExe(L"D:\\garbage.png", L"E:\\g\\garbage.jpg", 100, 100),
            codes::kNoPreviewPossible);
  EXPECT_EQ(log.count("E MultiImage::getViewByGMExe failed, src_path:D:\\garbage.png error:2229"),
            1);
  EXPECT_FALSE(fileExists(drives.e() + "/g/garbage.jpg"));

  Access::useUtilsFolder(multi, L"E:\\no tools");
  EXPECT_EQ(multi.getViewByGMExe(L"D:\\wide 图.ppm", L"E:\\g\\w.jpg", 10, 10),
            codes::kGraphicsMagickFailed);
  EXPECT_EQ(multi.getViewByGMExe(L"D:\\gone.ppm", L"E:\\g\\w.jpg", 10, 10),
            codes::kSourceMissing);
}

TEST(GmRouteTest, ATiffThatComesOutWhiteIsMadeAgainNegated) {
  TestDrives drives;
  const std::string white = drives.tmp().write("white.ppm", makePpm(60, 40, [](int, int) {
    return Rgb{255, 255, 255};
  }));
  const std::string grey =
      drives.tmp().write("grey.ppm", makePpm(60, 40, [](int, int) { return Rgb{128, 128, 128}; }));
  struct Case {
    std::string name;
    std::string picture;
    bool again;
    int level;  // of the preview's grey
  } cases[] = {
      {"white.tif", white, true, 0},
      {"shouting.TIF", white, true, 0},
      {"grey.tiff", grey, false, 128},
      {"white.png", white, false, 255},
  };
  for (const Case& c : cases) {
    const pellix_test::RunResult made =
        pellix_test::run({"/usr/bin/gm", "convert", c.picture, drives.d() + "/" + c.name});
    ASSERT_EQ(made.status, 0) << made.err;
    MultiImage multi(nullptr);
    prepare(multi, "1");
    LogCapture log;
    const std::wstring dst = L"E:\\" + utf8ToWs(c.name) + L".jpg";
    EXPECT_EQ(multi.getViewByGMExe(L"D:\\" + utf8ToWs(c.name), dst, 30, 30), codes::kOk)
        << "row: " << c.name;
    EXPECT_EQ(log.count(" gm_cmd(for white): convert -size 30x30 \"D:\\" + c.name +
                        "\" -flatten -colorspace Gray -negate -resize 30x30 +profile \"*\""),
              c.again ? 1 : 0)
        << "row: " << c.name;
    const Picture p = readPicture(drives.e() + "/" + c.name + ".jpg");
    EXPECT_EQ(p.width, 30) << "row: " << c.name;
    EXPECT_TRUE(near(p.at(15, 10), {c.level, c.level, c.level}, 8))
        << "row: " << c.name << " " << show(p.at(15, 10));
  }
}

}  // namespace
}  // namespace converter_test

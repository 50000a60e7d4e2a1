// Document requests through the driver, in a host program with the metadata kernel beside
// it, the converters of the stage tree and the real gs: the preview path, the route, the
// metadata read through TesselKernel.dll and the pages collected.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include <opencv2/imgcodecs.hpp>

#include "Common/Source/ProcessUtils.h"
#include "Common/Source/text_forms.h"
#include "PellixKernel/PellixDriver.h"
#include "PellixKernel/multi_image_test_access.h"
#include "converters/converter_test_support.h"
#include "errors/result_codes.h"
#include "testing/test_support.h"

namespace converter_test {
namespace {

using pellix_test::fileExists;
using pellix_test::LogCapture;
using pellix_test::readFile;
using pellix_test::writeFile;

class DriverDocumentsTest : public testing::Test {
 protected:
  DriverDocumentsTest() {
    pellix_test::useOwnHome();
    MultiImageTestAccess::useUtilsFolder(DriverTestAccess::multiImage(driver_), L"S:");
  }

  int getView(const std::wstring& src, std::vector<std::wstring>& previews) {
    return driver_.getView(src, 160, 120, true, L"E:\\p", previews, false, 0);
  }

  TestDrives drives_;
  CPellixDriver driver_;
};

TEST_F(DriverDocumentsTest, AnAiFileWithABrokenPdfPartLeavesItsThumbnailsAsPages) {
  const std::string page_1 = makeJpeg(40, 30, {200, 0, 0});
  const std::string page_2 = makeJpeg(30, 40, {0, 0, 200});
  writeFile(drives_.d() + "/logo.ai",
            "%PDF-1.6\n1 0 obj\n<< /Type /Catalog /Pages 9 0 R >>\nendobj\n" +
                xmpPacket({page_1, page_2}, ""));
  std::vector<std::wstring> previews = {L"stale"};
  LogCapture log;
  EXPECT_EQ(getView(L"D:\\logo.ai", previews), codes::kPreviewFailed);
  EXPECT_TRUE(previews.empty());
  EXPECT_EQ(readFile(drives_.e() + "/p/logo.ai.1.jpg"), page_1);
  EXPECT_EQ(readFile(drives_.e() + "/p/logo.ai.2.jpg"), page_2);
  EXPECT_EQ(log.count("E CPellixDriver::_getSpecailTypeView create view failed, err_code:2220, "
                      "src_image;D:\\logo.ai, dst_preview_path:E:\\p\\logo.ai.1.jpg"),
            1);
}

TEST_F(DriverDocumentsTest, APdfMarkWithoutAnObjectSoonAfterIsNoKnownType) {
  writeFile(drives_.d() + "/late.pdf", "%PDF-1.4\n%" + std::string(80, 'x') + "\n1 0 obj\n");
  std::vector<std::wstring> previews;
  EXPECT_EQ(getView(L"D:\\late.pdf", previews), codes::kUnknownFormat);
  EXPECT_TRUE(previews.empty());
  EXPECT_FALSE(isProcessRunning(L"gswin32c.exe"));
}

TEST_F(DriverDocumentsTest, ATwelvePageDocumentIsRenderedToItsFirstTenPages) {
  std::string ps = "%!PS\n<< /PageSize [72 72] >> setpagedevice\n";
  for (int i = 0; i < 12; ++i) ps += "0 0 36 36 rectfill showpage\n";
  makePdf(drives_.d() + "/gs.pdf", ps);
  // Ghostscript's own long first comment would hide the first object from the sniff;
  // qpdf writes the same document with its objects first.
  ASSERT_EQ(pellix_test::run({"/usr/bin/qpdf", drives_.d() + "/gs.pdf", drives_.d() + "/twelve.pdf"})
                .status,
            0);
  std::vector<std::wstring> previews;
  LogCapture log;
  ASSERT_EQ(getView(L"D:\\twelve.pdf", previews), codes::kOk);
  // The page count came from the metadata kernel.
  EXPECT_EQ(log.count("-dLastPage=10 -r200 -sOutputFile=\"E:\\p\\twelve.pdf.%d.jpg\""), 1);
  ASSERT_EQ(previews.size(), 10u);
  for (int page = 1; page <= 10; ++page) {
    EXPECT_EQ(previews[page - 1], L"E:\\p\\twelve.pdf." + std::to_wstring(page) + L".jpg");
    // Ghostscript draws the square inch at 200 dots; each page is zoomed into 160x120.
    const cv::Mat image = cv::imread(drives_.e() + "/p/twelve.pdf." + std::to_string(page) + ".jpg");
    EXPECT_EQ(image.size(), cv::Size(120, 120)) << "page " << page;
  }
  EXPECT_FALSE(fileExists(drives_.e() + "/p/twelve.pdf.11.jpg"));
}

}  // namespace
}  // namespace converter_test

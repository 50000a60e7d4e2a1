// The metadata kernel on documents the tests make: PDFs from PostScript through Ghostscript,
// damaged and encrypted ones, EPS files, and AI files whose XMP carries page thumbnails.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "Common/Source/ThumbNailCommUtils.h"
#include "Common/Source/text_forms.h"
#include "converters/converter_test_support.h"
#include "outside/ITesselKernel.h"
#include "testing/staged_module.h"
#include "testing/test_support.h"

namespace converter_test {
namespace {

using pellix_test::readFile;
using pellix_test::writeFile;

std::string pages(int count) {
  std::string ps = "%!PS\n<< /PageSize [72 72] >> setpagedevice\n";
  for (int i = 0; i < count; ++i) ps += "0 0 36 36 rectfill showpage\n";
  return ps;
}

class DocumentMetaTest : public testing::Test {
 protected:
  int read(const std::string& posix_path, MetaDataValues& values, bool want_thumbnails) {
    const std::string narrow = wsToUtf8(pellix_test::windowsPath(posix_path));
    return kernel_->read(narrow.c_str(), values, want_thumbnails);
  }

  pellix_test::StagedModule module_{"TesselKernel.dll"};
  ITesselKernel* kernel_ = module_.take<ITesselKernel>(kTesselKernelInterfaceId);
  pellix_test::TempDir tmp_;
};

TEST_F(DocumentMetaTest, PageCountsOfPdfAndPostScriptFiles) {
  const std::string twelve = tmp_.path() + "/twelve 图.pdf";
  makePdf(twelve, pages(12));
  const std::string whole = readFile(twelve);
  // The cross-reference table points nowhere: qpdf rebuilds it from the objects.
  std::string bad_xref = whole;
  const size_t startxref = bad_xref.rfind("startxref");
  bad_xref.replace(startxref, std::string::npos, "startxref\n999999\n%%EOF\n");
  const std::string encrypted = tmp_.path() + "/locked.pdf";
  ASSERT_EQ(pellix_test::run({"/usr/bin/qpdf", "--encrypt", "user", "owner", "256", "--", twelve,
                              encrypted})
                .status,
            0);
  const std::string eps =
      "%!PS-Adobe-3.0 EPSF-3.0\n%%BoundingBox: 0 0 10 10\n0 0 10 10 rectfill\n";
  std::string dos_eps(30, '\0');
  dos_eps.replace(0, 4, "\xC5\xD0\xD3\xC6");
  dos_eps[4] = 30;
  dos_eps += eps;
  struct Case {
    const char* what;
    std::string name;
    std::string bytes;  // the file, unless empty
    int code;
    std::string page_count;
  } cases[] = {
      {"twelve pages", "twelve 图.pdf", "", 0, "12"},
      {"a broken cross-reference table", "bad xref.pdf", bad_xref, 0, "12"},
      {"encrypted with a user password", "locked.pdf", "", 1000, "preset"},
      // Ghostscript writes the page tree last, so no page is left to count.
      {"cut in the middle of its objects", "cut.pdf", whole.substr(0, whole.size() / 2), 1000,
       "preset"},
      {"only the mark", "mark.pdf", "%PDF-1.4\n", 1000, "preset"},
      {"EPS", "art.eps", eps, 0, "1"},
      {"EPS with a binary header", "dos.eps", dos_eps, 0, "1"},
  };
  for (const Case& c : cases) {
    if (!c.bytes.empty()) writeFile(tmp_.path() + "/" + c.name, c.bytes);
    MetaDataValues values;
    values.page_count = "preset";
    EXPECT_EQ(read(tmp_.path() + "/" + c.name, values, false), c.code) << "row: " << c.what;
    EXPECT_EQ(values.page_count, c.page_count) << "row: " << c.what;
  }
}

TEST_F(DocumentMetaTest, AnAiFileGivesTheThumbnailsOfItsPagesEvenWithItsPdfPartBroken) {
  const std::string page_1 = makeJpeg(40, 30, {200, 0, 0});
  const std::string page_2 = makeJpeg(30, 40, {0, 0, 200});
  const std::string whole_doc = makeJpeg(20, 20, {0, 200, 0});
  const std::string xmp = xmpPacket({page_1, page_2}, whole_doc);
  const std::string pdf = tmp_.path() + "/base.pdf";
  makePdf(pdf, pages(2));
  struct Case {
    const char* what;
    std::string bytes;
    std::string page_count;
  } cases[] = {
      {"a whole PDF part", readFile(pdf) + xmp, "2"},
      {"a PDF part that is broken", "%PDF-1.6\n1 0 obj\n<< /Type /Catalog" + xmp, ""},
      {"the PostScript of older versions", "%!PS-Adobe-3.0\n%%Creator: design\n" + xmp, "1"},
  };
  for (const Case& c : cases) {
    writeFile(tmp_.path() + "/logo.ai", c.bytes);
    MetaDataValues values;
    EXPECT_EQ(read(tmp_.path() + "/logo.ai", values, true), 0) << "row: " << c.what;
    EXPECT_EQ(values.page_count, c.page_count) << "row: " << c.what;
    ASSERT_EQ(values.thumbnails.size(), 2u) << "row: " << c.what;
    EXPECT_NE(values.thumbnails[0].find('\n'), std::string::npos) << "line breaks come back";
    // Round trip: the kernel's own decoder turns each text back into the page's picture.
    for (size_t i = 0; i < 2; ++i) {
      const std::string out = tmp_.path() + "/page" + std::to_string(i) + ".jpg";
      ThumbNailCommUtils::saveThumbNail(pellix_test::windowsPath(out), values.thumbnails[i]);
      EXPECT_EQ(readFile(out), i == 0 ? page_1 : page_2) << "row: " << c.what;
    }
    MetaDataValues without;
    read(tmp_.path() + "/logo.ai", without, false);
    EXPECT_TRUE(without.thumbnails.empty()) << "row: " << c.what;
  }
  // Without a page list the document's own thumbnail stands for its one page.
  writeFile(tmp_.path() + "/single.ai", "%PDF-1.6\n" + xmpPacket({}, whole_doc));
  MetaDataValues values;
  EXPECT_EQ(read(tmp_.path() + "/single.ai", values, true), 0);
  EXPECT_EQ(values.thumbnails.size(), 1u);
}

}  // namespace
}  // namespace converter_test

#include "PellixKernel/file_type_sniff.h"

#include <gtest/gtest.h>

#include "Common/Source/text_forms.h"
#include "testing/test_support.h"

namespace {

using pellix_test::TempDir;
using pellix_test::windowsPath;

const std::string kPng = std::string("\x89PNG\r\n\x1a\n", 8) + std::string(8, '\0') + "IHDR";
const std::string kJpeg = "\xFF\xD8\xFF\xE0" + std::string("\0\x10JFIF", 6);
const std::string kPdf = "%PDF-1.4\n1 0 obj\n<< /Type /Catalog >>\nendobj\n";

struct Case {
  const char* name;
  std::string content;
  int wide;    // sniffFileType
  int narrow;  // sniffFileTypeNarrow
};

void expectCases(const std::vector<Case>& cases) {
  TempDir tmp;
  for (const Case& c : cases) {
    const std::wstring path = windowsPath(tmp.write(c.name, c.content));
    EXPECT_EQ(sniffFileType(path), c.wide) << "row: " << c.name;
    EXPECT_EQ(sniffFileTypeNarrow(wsToUtf8(path).c_str()), c.narrow) << "row: " << c.name;
  }
}

TEST(SniffTest, ContainerMarksNeedTheirExtension) {
  expectCases({
      {"a.CDR", "PK\x03\x04rest", FT_CDR_ZIP, FT_CDR_ZIP},
      {"b.cdr", "RIFF\x10\0\0\0CDR", FT_CDR_RIFF, FT_CDR_RIFF},
      {"c.cdr", "no marks at all", FT_UNKNOWN, FT_UNKNOWN},
      {"d.jar", "PK\x03\x04", FT_JC, FT_UNKNOWN},
      {"e.webp", "RIFF\x10\0\0\0WEBPVP8 ", FT_IMAGE, FT_WEBP},
      {"f.zip", "PK\x03\x04", FT_UNKNOWN, FT_UNKNOWN},
  });
}

TEST(SniffTest, PdfNeedsAnObjectWithinTheHead) {
  expectCases({
      {"a.pdf", kPdf, FT_PDF, FT_PDF},
      {"b.ai", kPdf, FT_AI, FT_AI},
      {"c.pdf", "%PDF-1.7\n" + std::string(80, '%') + "\n1 0 obj", FT_UNKNOWN, FT_UNKNOWN},
      {"d.pdf", "garbage!! %PDF-1.4 1 0 obj", FT_PDF, FT_PDF},  // the mark counts anywhere
      {"e.pdf", "PK %PDF-1.4 1 0 obj", FT_UNKNOWN, FT_UNKNOWN},  // the first mark decides
      {"f.ai", "%!PS-Adobe-3.0\n", FT_UNKNOWN, FT_UNKNOWN},
      {"g.jpg", kPdf, FT_IMAGE, FT_UNKNOWN},
  });
}

TEST(SniffTest, EpsWithoutAMarkIsADocument) {
  expectCases({
      {"a.eps", "%!PS-Adobe-3.0 EPSF-3.0\n", FT_PDF, FT_PDF},
      {"b.EPS", "", FT_PDF, FT_PDF},
      {"c.eps", kPdf, FT_UNKNOWN, FT_UNKNOWN},
  });
}

TEST(SniffTest, PsdMarkAndPsdThatIsReallySomethingElse) {
  expectCases({
      {"a.psd", "8BPS\0\x01", FT_PSD, FT_PSD},
      {"b.psb", "8BPS\0\x02", FT_UNKNOWN, FT_PSD},
      {"c.jpg", "8BPS\0\x01", FT_IMAGE, FT_UNKNOWN},
      {"d.psd", kPng, FT_IMAGE, FT_PNG},
      {"e.psd", kJpeg, FT_IMAGE, FT_JPEG},
      {"f.psd", "nothing here", FT_UNKNOWN, FT_UNKNOWN},
  });
}

TEST(SniffTest, RasterNamesByListAndByMagic) {
  expectCases({
      {"a.png", "arbitrary", FT_IMAGE, FT_UNKNOWN},
      {"b.png", kPng, FT_IMAGE, FT_PNG},
      {"c.jpeg", kJpeg, FT_IMAGE, FT_JPEG},
      {"d.bmp", "BM\x36\0\0\0", FT_IMAGE, FT_BMP},
      {"e.gif", "GIF89a", FT_IMAGE, FT_GIF},
      {"f.tif", "II*\0", FT_IMAGE, FT_TIFF},
      {"g.tiff", "MM\0*", FT_IMAGE, FT_TIFF},
      {"h.jp2", "\0\0\0\x0cjP  ", FT_IMAGE, FT_UNKNOWN},
      {"i.JFIF", kJpeg, FT_IMAGE, FT_JPEG},
      {"j.pcx", "\x0a\x05\x01\x08", FT_PCX, FT_UNKNOWN},
      {"k.jc8", "", FT_JC, FT_UNKNOWN},
      {"l.pptx", "PK\x03\x04", FT_UNKNOWN, FT_PPTX},
      {"m.indd", "", FT_UNKNOWN, FT_INDD},
      {"n.indt", "", FT_UNKNOWN, FT_INDD},
  });
}

TEST(SniffTest, OnlyWholeListEntriesCount) {
  expectCases({
      {"a.peg", kJpeg, FT_UNKNOWN, FT_UNKNOWN},
      {"b.if", kJpeg, FT_UNKNOWN, FT_UNKNOWN},
      {"c.", kJpeg, FT_UNKNOWN, FT_UNKNOWN},
  });
}

TEST(SniffTest, NoDotMeansUnknownWithoutOpening) {
  TempDir tmp;
  const std::wstring folder = windowsPath(tmp.mkdir("dir.with.dots"));
  EXPECT_EQ(sniffFileType(windowsPath(tmp.write("noext", kPdf))), FT_UNKNOWN);
  // Names that don't exist: the extension alone decides, as for a file that can't be read.
  EXPECT_EQ(sniffFileType(folder + L"\\missing.png"), FT_IMAGE);
  EXPECT_EQ(sniffFileType(folder + L"\\missing.pdf"), FT_UNKNOWN);
  EXPECT_EQ(sniffFileType(folder + L"\\missing.eps"), FT_PDF);
  EXPECT_EQ(sniffFileType(L"Q:\\no\\drive.pcx"), FT_PCX);
}

TEST(SniffTest, LongPathWithPrefix) {
  TempDir tmp;
  std::string deep = tmp.path();
  for (int i = 0; i < 5; ++i) deep += "/" + std::string(60, 'p');
  const std::wstring path = windowsPath(tmp.write(deep.substr(tmp.path().size() + 1) + "/a.ai", kPdf));
  EXPECT_EQ(sniffFileType(L"\\\\?\\" + path), FT_AI);
}

TEST(FileHeadTest, ReadsLikeATextModeStream) {
  TempDir tmp;
  auto head = [&](const std::string& bytes) {
    return readFileHead(windowsPath(tmp.write("h.bin", bytes)));
  };
  EXPECT_EQ(head("ab"), std::string("ab") + std::string(62, '\0'));
  EXPECT_EQ(head("a\r\nb\rc").substr(0, 6), std::string("a\nb\rc\0", 6));
  EXPECT_EQ(head("ab\x1A" "cd"), std::string("ab") + std::string(62, '\0'));
  // 64 CR LF pairs are 128 bytes and 64 characters; what follows isn't read.
  std::string pairs;
  for (int i = 0; i < 64; ++i) pairs += "\r\n";
  EXPECT_EQ(head(pairs + "%PDF 0 obj"), std::string(64, '\n'));
  // Each CR LF pair is one character, so a mark that ends beyond byte 64 is still seen.
  TempDir other;
  EXPECT_EQ(sniffFileType(windowsPath(other.write("x.pdf", pairs.substr(0, 60) + "%PDF 1 0 obj"))),
            FT_PDF);
  EXPECT_EQ(sniffFileType(windowsPath(other.write("y.pdf", "%PDF 1 0 obj\x1A"))), FT_PDF);
  EXPECT_EQ(sniffFileType(windowsPath(other.write("z.pdf", "%PDF\x1A 1 0 obj"))), FT_UNKNOWN);
  EXPECT_EQ(readFileHead(L"Q:\\missing"), std::string(64, '\0'));
}

TEST(HexOfHeadTest, PrintsTwoCharactersABytePaddedWithABlank) {
  EXPECT_EQ(hexOfHead("\xFF\xD8\xFF", 3), "ffd8ff");
  EXPECT_EQ(hexOfHead(std::string("\x01\x0a\x10", 3), 3), " 1 a10");
  EXPECT_EQ(hexOfHead("ab", 5), "6162");
  EXPECT_EQ(hexOfHead("ab", 0), "");
}

}  // namespace

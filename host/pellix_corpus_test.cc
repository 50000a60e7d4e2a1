// Real-world files through the host program, one child process a file: every sound file
// gets a visible preview or a code that says why not, every damaged one a code, and none
// crashes the host or keeps it past its time limit.
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <map>
#include <opencv2/core.hpp>
#include <opencv2/imgcodecs.hpp>
#include <regex>
#include <sstream>

#include "testing/test_support.h"

namespace {

namespace fs = std::filesystem;
using pellix_test::RunResult;
using pellix_test::TempDir;

// A file of the corpus and what its manifest says of it.
struct Sample {
  std::string file;  // relative to the corpus folder
  std::string kind;  // the manifest's kind column
};

void PrintTo(const Sample& s, std::ostream* os) { *os << s.file; }

// Longer than any route may take on a small real file; a child still running then hangs.
constexpr int kChildLimitSeconds = 90;

// The routes a sample belongs to, by the manifest's kind, and for a damaged file by the
// extension it was meant to have (a trailing ".bin" left off).
enum class Route { kRaster, kDocument, kNone };

const std::map<std::string, Route> kRouteOfExtension = {
    {".jpg", Route::kRaster},  {".jpeg", Route::kRaster}, {".png", Route::kRaster},
    {".bmp", Route::kRaster},  {".gif", Route::kRaster},  {".tif", Route::kRaster},
    {".tiff", Route::kRaster}, {".webp", Route::kRaster}, {".jp2", Route::kRaster},
    {".j2k", Route::kRaster},  {".jpf", Route::kRaster},  {".pdf", Route::kDocument},
    {".ai", Route::kDocument}, {".eps", Route::kDocument}, {".pcx", Route::kDocument}};

const std::map<std::string, Route> kRouteOfKind = {
    {"jpeg", Route::kRaster}, {"png", Route::kRaster},    {"bmp", Route::kRaster},
    {"gif", Route::kRaster},  {"tiff", Route::kRaster},   {"webp", Route::kRaster},
    {"jp2", Route::kRaster},  {"pdf", Route::kDocument},  {"ai", Route::kDocument},
    {"eps", Route::kDocument}, {"pcx", Route::kDocument}};

// Sound files that the kernel can't preview, with the code it gives and why.
const std::map<std::string, int> kKnownRefusals = {
    // Names outside the kernel's list of image extensions: no known type.
    {"jp2/pillow_16bit.cropped.j2k", 2001},
    {"jp2/pillow_9bit.j2k", 2001},
    {"jp2/pillow_balloon.jpf", 2001},
    {"png/pillow_iss634.apng", 2001},
    // Read by neither OpenCV, libvips nor GraphicsMagick: a BMP carrying a JPEG or a PNG, a
    // BMP with alpha bit fields, a JPEG 2000 file with an ICC colour space, and a PCX whose
    // header GraphicsMagick rejects.
    {"bmp/bmpsuite_rgb24jpeg.bmp", 2229},
    {"bmp/bmpsuite_rgb24png.bmp", 2229},
    {"bmp/bmpsuite_rgba32abf.bmp", 2229},
    {"jp2/pillow_balloon_eciRGBv2_aware.jp2", 2229},
    {"pcx/pillow_01r_00.pcx", 2229},
    // Illustrator files of the PostScript era: an .ai without a PDF mark is no known type.
    {"ai/asposepsd_form_8_2l3_7_ps.ai", 2001},
    {"ai/asposepsd_rect2_color_ps.ai", 2001},
    {"ai/asposepsdpy_ai_one_text_3_ps.ai", 2001},
    {"ai/groupdocs_sample_ps.ai", 2001},
    {"ai/sk1_probe_ps.ai", 2001},
    // Ghostscript's own PDF: its long first comment hides the first object from the sniff.
    {"pdf/pypdf_crazyones-pdfa.pdf", 2001},
    // Encrypted with a user password: Ghostscript renders nothing.
    {"pdf/groupdocs_encrypted.pdf", 2220},
    {"pdf/magicknet_pdf-example-password.original.pdf", 2220},
    {"pdf/pypdf_libreoffice-writer-password.pdf", 2220},
    {"pdf/qpdf_20-pages.pdf", 2220},
    {"pdf/qpdf_enc-XI-R6_V5_userpw.pdf", 2220},
    // Ghostscript finds no page in them: a damaged file structure, a bounding box of 0 by 0,
    // and an EPS that never shows its page.
    {"pdf/pypdf_cmyk-image.pdf", 2220},
    {"eps/filetype_fixture.eps", 2220},
    {"eps/pillow_reqd_showpage.eps", 2220},
};

// White artwork on a transparent artboard: the document route renders onto white, so the
// preview is made but shows nothing.
const char* const kWhiteOnWhite[] = {"ai/asposepsdpy_bit_gear.ai"};

std::string corpusDir() { return PELLIX_CORPUS_DIR; }

std::string lower(std::string s) {
  std::transform(s.begin(), s.end(), s.begin(), [](unsigned char c) { return std::tolower(c); });
  return s;
}

Route routeOf(const Sample& s) {
  if (s.kind != "malformed") {
    const auto it = kRouteOfKind.find(s.kind);
    return it == kRouteOfKind.end() ? Route::kNone : it->second;
  }
  fs::path name(lower(s.file));
  if (name.extension() == ".bin") name = name.stem();
  const auto it = kRouteOfExtension.find(name.extension().string());
  return it == kRouteOfExtension.end() ? Route::kNone : it->second;
}

std::vector<Sample> manifest() {
  std::vector<Sample> all;
  std::ifstream in(corpusDir() + "/MANIFEST.tsv");
  std::string line;
  std::getline(in, line);  // the heading
  while (std::getline(in, line)) {
    std::istringstream fields(line);
    Sample s;
    if (std::getline(fields, s.file, '\t') && std::getline(fields, s.kind, '\t'))
      all.push_back(s);
  }
  return all;
}

template <typename Keep>
std::vector<Sample> samples(Keep keep) {
  std::vector<Sample> chosen;
  for (const Sample& s : manifest())
    if (keep(s)) chosen.push_back(s);
  return chosen;
}

// What the host printed for one file.
struct Outcome {
  int code = -1;
  std::string message;
  std::vector<std::string> previews;
};

Outcome parseJsonLine(const std::string& out) {
  Outcome o;
  std::smatch m;
  if (std::regex_search(out, m, std::regex("\"code\":(-?[0-9]+)"))) o.code = std::stoi(m[1]);
  if (std::regex_search(out, m, std::regex("\"message\":\"((?:[^\"\\\\]|\\\\.)*)\"")))
    o.message = m[1];
  if (std::regex_search(out, m, std::regex("\"previews\":\\[([^\\]]*)\\]"))) {
    const std::string list = m[1];
    const std::regex item("\"((?:[^\"\\\\]|\\\\.)*)\"");
    for (auto it = std::sregex_iterator(list.begin(), list.end(), item);
         it != std::sregex_iterator(); ++it)
      o.previews.push_back((*it)[1]);
  }
  return o;
}

// A preview a user can see: it decodes, and it isn't one flat white field (artwork that
// vanished when flattened onto white).
::testing::AssertionResult isVisible(const std::string& path) {
  const cv::Mat img = cv::imread(path, cv::IMREAD_COLOR);
  if (img.empty()) return ::testing::AssertionFailure() << path << " does not decode";
  double lowest = 0, highest = 0;
  cv::minMaxLoc(img.reshape(1), &lowest, &highest);
  if (lowest == 255) return ::testing::AssertionFailure() << path << " is all white";
  return ::testing::AssertionSuccess();
}

std::string testName(const ::testing::TestParamInfo<Sample>& info) {
  std::string name = info.param.file;
  for (char& c : name)
    if (!std::isalnum(static_cast<unsigned char>(c))) c = '_';
  return name;
}

class CorpusTest : public ::testing::TestWithParam<Sample> {
 protected:
  void SetUp() override {
    if (!fs::exists(corpusDir() + "/MANIFEST.tsv")) GTEST_SKIP() << "no corpus beside the tree";
    pellix_test::useOwnHome();
  }

  // Runs the host program on the sample and checks that it ended by itself.
  Outcome preview() {
    const RunResult r = pellix_test::run(
        {"/usr/bin/timeout", "-s", "KILL", std::to_string(kChildLimitSeconds),
         pellix_test::stageBin() + "/pellix", "preview", "--json", "-s", "800x800", "-o",
         out_.path(), corpusDir() + "/" + GetParam().file});
    EXPECT_TRUE(r.status == 0 || r.status == 1)
        << "status " << r.status << (r.status == 128 + 9 ? " (hung, killed)" : "") << "\n"
        << r.err;
    const Outcome o = parseJsonLine(r.out);
    EXPECT_NE(o.code, -1) << "no result line: " << r.out << r.err;
    if (o.code != 0) {
      EXPECT_FALSE(o.message.empty()) << "code " << o.code << " without a text";
    }
    return o;
  }

  TempDir out_;
};

class RealFileTest : public CorpusTest {};

TEST_P(RealFileTest, GetsAVisiblePreviewOrAKnownRefusal) {
  const Outcome o = preview();
  const auto refusal = kKnownRefusals.find(GetParam().file);
  if (refusal != kKnownRefusals.end()) {
    EXPECT_EQ(o.code, refusal->second) << o.message;
    return;
  }
  ASSERT_EQ(o.code, 0) << o.message;
  ASSERT_FALSE(o.previews.empty());
  const bool white = std::find(std::begin(kWhiteOnWhite), std::end(kWhiteOnWhite),
                               GetParam().file) != std::end(kWhiteOnWhite);
  for (const std::string& p : o.previews) {
    if (white) {
      EXPECT_FALSE(cv::imread(p).empty()) << p;
    } else {
      EXPECT_TRUE(isVisible(p));
    }
  }
}

class CodeOrPreviewTest : public CorpusTest {};

TEST_P(CodeOrPreviewTest, EndsWithACodeOrAPreviewThatDecodes) {
  const Outcome o = preview();
  // A failed raster request still names the preview it meant to write; whatever stands there
  // must be a whole picture, never a half-written one.
  for (const std::string& p : o.previews) {
    if (o.code == 0 || fs::exists(p)) {
      EXPECT_FALSE(cv::imread(p).empty()) << p << " is listed but does not decode";
    }
  }
}

std::vector<Sample> samplesOf(Route route, bool damaged) {
  return samples([&](const Sample& s) {
    return (s.kind == "malformed") == damaged && routeOf(s) == route;
  });
}

INSTANTIATE_TEST_SUITE_P(Raster, RealFileTest, ::testing::ValuesIn(samplesOf(Route::kRaster, false)),
                         testName);
INSTANTIATE_TEST_SUITE_P(DamagedRaster, CodeOrPreviewTest,
                         ::testing::ValuesIn(samplesOf(Route::kRaster, true)), testName);
INSTANTIATE_TEST_SUITE_P(Document, RealFileTest,
                         ::testing::ValuesIn(samplesOf(Route::kDocument, false)), testName);
INSTANTIATE_TEST_SUITE_P(DamagedDocument, CodeOrPreviewTest,
                         ::testing::ValuesIn(samplesOf(Route::kDocument, true)), testName);
// Formats without a route of their own (metafiles, Corel exchange files): a code or a
// preview, never a crash.
INSTANTIATE_TEST_SUITE_P(Unrouted, CodeOrPreviewTest,
                         ::testing::ValuesIn(samples([](const Sample& s) {
                           return s.kind == "other";
                         })),
                         testName);

}  // namespace

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

// Sound files that the kernel refuses on purpose, with the code it gives and why.
const std::map<std::string, int> kKnownRefusals = {};

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
  for (const std::string& p : o.previews) EXPECT_TRUE(isVisible(p));
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

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

const char* const kRasterKinds[] = {"jpeg", "png", "bmp", "gif", "tiff", "webp", "jp2"};
const char* const kRasterExtensions[] = {".jpg", ".jpeg", ".png", ".bmp", ".gif", ".tif",
                                         ".tiff", ".webp", ".jp2", ".j2k", ".jpf"};

// Sound files that the kernel refuses on purpose, with the code it gives and why.
const std::map<std::string, int> kKnownRefusals = {};

std::string corpusDir() { return PELLIX_CORPUS_DIR; }

std::string lower(std::string s) {
  std::transform(s.begin(), s.end(), s.begin(), [](unsigned char c) { return std::tolower(c); });
  return s;
}

bool isRaster(const Sample& s) {
  if (s.kind != "malformed") {
    return std::find(std::begin(kRasterKinds), std::end(kRasterKinds), s.kind) !=
           std::end(kRasterKinds);
  }
  const std::string ext = lower(fs::path(s.file).extension().string());
  return std::find(std::begin(kRasterExtensions), std::end(kRasterExtensions), ext) !=
         std::end(kRasterExtensions);
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
  if (o.code == 0) {
    for (const std::string& p : o.previews)
      EXPECT_FALSE(cv::imread(p).empty()) << p << " was reported but does not decode";
  } else {
    EXPECT_TRUE(o.previews.empty()) << "a failed file listed previews";
  }
}

INSTANTIATE_TEST_SUITE_P(Raster, RealFileTest,
                         ::testing::ValuesIn(samples([](const Sample& s) {
                           return s.kind != "malformed" && isRaster(s);
                         })),
                         testName);

INSTANTIATE_TEST_SUITE_P(DamagedRaster, CodeOrPreviewTest,
                         ::testing::ValuesIn(samples([](const Sample& s) {
                           return s.kind == "malformed" && isRaster(s);
                         })),
                         testName);

// Formats without a route of their own (metafiles, Corel exchange files): a code or a
// preview, never a crash.
INSTANTIATE_TEST_SUITE_P(Unrouted, CodeOrPreviewTest,
                         ::testing::ValuesIn(samples([](const Sample& s) {
                           return s.kind == "other";
                         })),
                         testName);

}  // namespace

// Raster files that are broken, hostile or odd, through the driver as a host calls it: each
// gets a preview or a code, never a crash, and a declared size is never paid for.
#include <gtest/gtest.h>

#include <opencv2/imgcodecs.hpp>
#include <opencv2/imgproc.hpp>

#include "Common/Source/config_db.h"
#include "PellixKernel/PellixDriver.h"
#include "testing/test_images.h"
#include "testing/test_support.h"

namespace {

using pellix_test::LogCapture;
using pellix_test::readFile;
using pellix_test::TempDir;
using pellix_test::windowsPath;

// What a request must come to: a preview, a failure, or either (damage a decoder may read
// past).
enum class Outcome { kPreview, kCode, kEither };

struct Case {
  std::string name;
  std::string bytes;
  Outcome outcome;
  cv::Size size = {};  // of the preview, when it is known
};

class RasterBadInputTest : public testing::Test {
 protected:
  static void SetUpTestSuite() {
    ASSERT_TRUE(
        common_hepler::ConfigDB::getInstance()->setThumbFileBasePath("test", L"C:\\Previews"));
  }

  // Runs each case through getView at 200 by 200 and checks what came of it.
  void expectOutcomes(const std::vector<Case>& cases) {
    const std::wstring out = windowsPath(tmp_.mkdir("out"));
    for (const Case& c : cases) {
      SCOPED_TRACE(c.name);
      const std::string src = tmp_.write("in/" + c.name, c.bytes);
      LogCapture log;
      std::vector<std::wstring> previews;
      const int code = driver_.getView(windowsPath(src), 200, 200, true, out, previews, false, 0);
      const std::string preview = previews.empty() || previews[0].empty()
                                      ? std::string()
                                      : pellix_test::posixPath(previews[0]);
      const cv::Mat made = preview.empty() ? cv::Mat() : cv::imread(preview);
      if (code == 0) {
        EXPECT_NE(c.outcome, Outcome::kCode) << "a preview where a code was due";
        ASSERT_FALSE(made.empty()) << "code 0 with no preview";
        if (!c.size.empty()) {
          EXPECT_EQ(made.size(), c.size);
        }
      } else {
        EXPECT_NE(c.outcome, Outcome::kPreview) << "code " << code;
        EXPECT_TRUE(made.empty()) << "a failure leaves no preview";
        EXPECT_FALSE(log.lines().empty()) << "a failure says why in the log";
      }
    }
  }

  TempDir tmp_;
  CPellixDriver driver_;
};

// Every format: cut in half, cut to its first 64 bytes, empty, and scrambled in the middle.
TEST_F(RasterBadInputTest, DamagedFilesOfEveryFormat) {
  const std::string dir = tmp_.mkdir("good");
  pellix_test::writeEveryRasterFormat(dir, "a", pellix_test::photoLike(320, 240));
  std::vector<Case> cases;
  for (const std::string& ext : pellix_test::kRasterExtensions) {
    const std::string good = readFile(dir + "/a." + ext);
    ASSERT_GT(good.size(), 1000u) << ext;
    std::string scrambled = good;
    for (size_t i = good.size() / 3; i < good.size() / 3 + 64; ++i) scrambled[i] ^= 0x5A;
    cases.push_back({"whole." + ext, good, Outcome::kPreview, {200, 150}});
    // A BMP holds no compressed data to run out of: a cut one is read as far as it goes by
    // some decoders.
    cases.push_back({"half." + ext, good.substr(0, good.size() / 2),
                     ext == "bmp" ? Outcome::kEither : Outcome::kCode});
    cases.push_back({"head." + ext, good.substr(0, 64), Outcome::kCode});
    cases.push_back({"empty." + ext, "", Outcome::kCode});
    cases.push_back({"scrambled." + ext, scrambled, Outcome::kEither});
  }
  expectOutcomes(cases);
}

TEST_F(RasterBadInputTest, HostileAndOddFiles) {
  const std::string dir = tmp_.mkdir("made");
  cv::Mat deep(120, 160, CV_16UC3, cv::Scalar(20000, 40000, 60000));
  ASSERT_TRUE(cv::imwrite(dir + "/deep.tif", deep));
  ASSERT_TRUE(cv::imwrite(dir + "/deep.png", deep));
  cv::Mat deep_alpha(120, 160, CV_16UC4, cv::Scalar(0, 0, 65535, 65535));
  deep_alpha(cv::Rect(0, 0, 80, 120)).setTo(cv::Scalar(0, 0, 0, 0));
  ASSERT_TRUE(cv::imwrite(dir + "/deep_alpha.png", deep_alpha));
  ASSERT_TRUE(cv::imwrite(dir + "/one.png", cv::Mat(1, 1, CV_8UC3, cv::Scalar(1, 2, 3))));
  pellix_test::plainImage(dir + "/orange.png", 160, 120, "#FF8000");
  pellix_test::gm(
      {"convert", dir + "/orange.png", "-colorspace", "CMYK", "+profile", "*", dir + "/cmyk.jpg"});
  pellix_test::gm({"convert", "-delay", "10", "-size", "160x120", "xc:red", "xc:blue", "xc:green",
                   dir + "/anim.gif"});
  const std::vector<Case> cases = {
      {"claims_100000.png", pellix_test::pngClaiming(100000, 100000), Outcome::kCode},
      {"claims_20000.png", pellix_test::pngClaiming(20000, 20000), Outcome::kCode},
      {"claims_16000.png", pellix_test::pngClaiming(16000, 16000), Outcome::kCode},
      {"one.png", readFile(dir + "/one.png"), Outcome::kPreview, {1, 1}},
      {"deep.tif", readFile(dir + "/deep.tif"), Outcome::kPreview, {160, 120}},
      {"deep.png", readFile(dir + "/deep.png"), Outcome::kPreview, {160, 120}},
      {"deep_alpha.png", readFile(dir + "/deep_alpha.png"), Outcome::kPreview, {160, 120}},
      {"cmyk.jpg", readFile(dir + "/cmyk.jpg"), Outcome::kPreview, {160, 120}},
      {"anim.gif", readFile(dir + "/anim.gif"), Outcome::kPreview, {160, 120}},
      {"png_inside.jpg", readFile(dir + "/orange.png"), Outcome::kPreview, {160, 120}},
      {"words.jpg", "these are words, not pixels", Outcome::kCode},
  };
  const long before = pellix_test::peakMemoryKib();
  expectOutcomes(cases);
  // The sizes the headers declare would take from 1 to 40 GB.
  EXPECT_LT(pellix_test::peakMemoryKib() - before, 256 * 1024);

  // Colours that come through: the CMYK file through a standard profile, the deep images
  // brought to 8 bits, transparency of a deep image on white, the first frame of an
  // animation.
  struct Colour {
    const char* name;
    cv::Point at;
    cv::Vec3b bgr;
    int tolerance;  // JPEG, and for CMYK the trip through a standard profile
  };
  const Colour colours[] = {
      {"cmyk.jpg", {80, 60}, {0, 128, 255}, 40},
      {"deep.tif", {80, 60}, {78, 156, 233}, 4},
      {"deep.png", {80, 60}, {78, 156, 233}, 4},
      {"deep_alpha.png", {20, 60}, {255, 255, 255}, 4},
      {"deep_alpha.png", {140, 60}, {0, 0, 255}, 4},
      {"anim.gif", {80, 60}, {0, 0, 255}, 4},
  };
  for (const Colour& c : colours) {
    const cv::Mat made = cv::imread(tmp_.path() + "/out/" + c.name + ".1.jpg");
    ASSERT_FALSE(made.empty()) << c.name;
    EXPECT_LE(cv::norm(pellix_test::bgrAt(made, c.at.x, c.at.y), c.bgr, cv::NORM_INF), c.tolerance)
        << c.name << " " << pellix_test::bgrAt(made, c.at.x, c.at.y);
  }
}

}  // namespace

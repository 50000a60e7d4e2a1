// The host program on raster files, as a user runs it from the install tree: previews of
// every raster format, white artwork on transparency kept visible, zoom and cut; and an
// install tree without the image module, where the imaging services make the previews.
#include <gtest/gtest.h>

#include <filesystem>

#include <opencv2/imgcodecs.hpp>
#include <opencv2/imgproc.hpp>

#include "host/json_text.h"
#include "testing/test_images.h"
#include "testing/test_support.h"

namespace {

using pellix_test::run;
using pellix_test::RunResult;
using pellix_test::TempDir;

RunResult pellixIn(const std::string& bin, std::vector<std::string> args) {
  args.insert(args.begin(), bin + "/pellix");
  return run(args);
}

RunResult pellix(std::vector<std::string> args) {
  return pellixIn(pellix_test::stageBin(), std::move(args));
}

// One image in every raster format the route takes, and a white logo on transparency.
std::vector<std::string> makeSamples(const TempDir& tmp) {
  const std::string dir = tmp.mkdir("in");
  cv::Mat photo = pellix_test::photoLike(400, 300);
  cv::rectangle(photo, cv::Rect(100, 100, 200, 100), cv::Scalar(30, 40, 200), cv::FILLED);
  pellix_test::writeEveryRasterFormat(dir, "photo", photo);
  cv::Mat logo(300, 400, CV_8UC4, cv::Scalar(0, 0, 0, 0));
  cv::circle(logo, cv::Point(200, 150), 100, cv::Scalar(255, 255, 255, 255), cv::FILLED);
  EXPECT_TRUE(cv::imwrite(dir + "/white_logo.png", logo));
  return {"photo.bmp", "photo.gif", "photo.jp2",  "photo.jpg",
          "photo.png", "photo.tif", "photo.webp", "white_logo.png"};
}

// Whether a preview shows something: not one flat colour.
bool visible(const cv::Mat& preview) {
  cv::Scalar mean, stddev;
  cv::meanStdDev(preview, mean, stddev);
  return stddev[0] + stddev[1] + stddev[2] > 10.0;
}

void expectPreviewsOfEveryFormat(const std::string& bin, const TempDir& tmp) {
  const std::vector<std::string> names = makeSamples(tmp);
  const std::string out = tmp.path() + "/out";
  const RunResult r =
      pellixIn(bin, {"preview", "--json", "-s", "200x200", "-o", out, tmp.path() + "/in"});
  EXPECT_EQ(r.status, 0) << r.out << r.err;
  std::string expected;
  for (const std::string& name : names) {
    const std::string src = tmp.path() + "/in/" + name;
    const std::string preview = out + "/" + name + ".1.jpg";
    expected += "{\"src\":" + jsonString(src) + ",\"code\":0,\"message\":\"\",\"previews\":[" +
                jsonString(preview) + "]}\n";
    const cv::Mat made = cv::imread(preview);
    EXPECT_EQ(made.size(), cv::Size(200, 150)) << name;
    EXPECT_TRUE(visible(made)) << name;
  }
  EXPECT_EQ(r.out, expected);
}

TEST(PellixRasterTest, PreviewsOfEveryRasterFormat) {
  TempDir tmp;
  expectPreviewsOfEveryFormat(pellix_test::stageBin(), tmp);
}

// The install tree without TesselOpenCV.dll still starts, and the imaging services make every
// preview (the white logo then comes out white on white: only the image module shows it).
TEST(PellixRasterTest, WithoutTheImageModuleTheImagingServicesMakeThePreviews) {
  TempDir tmp;
  const std::string bin = tmp.mkdir("install/bin");
  for (const auto& entry : std::filesystem::directory_iterator(pellix_test::stageBin())) {
    const std::string name = entry.path().filename().string();
    if (name == "TesselOpenCV.dll" || entry.is_directory()) continue;
    pellix_test::copyFile(entry.path().string(), bin + "/" + name);
  }
  const std::vector<std::string> names = makeSamples(tmp);
  const RunResult r = pellixIn(
      bin, {"-v", "preview", "-s", "200x200", "-o", tmp.path() + "/out", tmp.path() + "/in"});
  EXPECT_EQ(r.status, 0) << r.out << r.err;
  EXPECT_NE(r.err.find("TesselDllLoader::loadOpencvDll s_p_tessel_opencv_ is null"),
            std::string::npos);
  for (const std::string& name : names) {
    const cv::Mat made = cv::imread(tmp.path() + "/out/" + name + ".1.jpg");
    EXPECT_EQ(made.size(), cv::Size(200, 150)) << name;
    if (name != "white_logo.png") {
      EXPECT_TRUE(visible(made)) << name;
    }
  }
}

// A picture that no engine can read, GraphicsMagick last: its code, and no preview listed or
// left where the kernel meant to write it.
TEST(PellixRasterTest, AFileNoEngineReadsGetsItsCodeAndNoPreview) {
  TempDir tmp;
  makeSamples(tmp);
  const std::string whole = pellix_test::readFile(tmp.path() + "/in/photo.jpg");
  const std::string cut = tmp.write("cut/cut.jpg", whole.substr(0, 300));
  const std::string out = tmp.path() + "/out";
  const RunResult r = pellix({"preview", "--json", "-o", out, cut});
  EXPECT_EQ(r.status, 1) << r.err;
  EXPECT_NE(r.out.find("\"code\":2229,"), std::string::npos) << r.out;
  EXPECT_NE(r.out.find("\"previews\":[]"), std::string::npos) << r.out;
  EXPECT_TRUE(!std::filesystem::exists(out) || std::filesystem::is_empty(out));
}

TEST(PellixRasterTest, ZoomAndCut) {
  TempDir tmp;
  cv::Mat image(400, 1000, CV_8UC3);
  cv::randu(image, 0, 255);
  ASSERT_TRUE(cv::imwrite(tmp.path() + "/a.png", image));
  const std::string src = tmp.path() + "/a.png";

  RunResult r = pellix({"zoom", src, "250x250", tmp.path() + "/z.jpg"});
  EXPECT_EQ(r.status, 0) << r.err;
  EXPECT_EQ(r.out, "0\t" + tmp.path() + "/z.jpg\n");
  EXPECT_EQ(cv::imread(tmp.path() + "/z.jpg").size(), cv::Size(250, 100));

  // A view of 500 on an image of 1000: the factor is 2.
  r = pellix({"cut", src, "10", "20", "60", "45", "500", tmp.path() + "/c.png"});
  EXPECT_EQ(r.status, 0) << r.err;
  const cv::Mat cut = cv::imread(tmp.path() + "/c.png");
  ASSERT_EQ(cut.size(), cv::Size(100, 50));
  EXPECT_EQ(cv::norm(cut, image(cv::Rect(20, 40, 100, 50)), cv::NORM_INF), 0.0);

  r = pellix({"cut", src, "900", "0", "1100", "10", "0", tmp.path() + "/d.png"});
  EXPECT_EQ(r.status, 1);
  EXPECT_EQ(r.out.substr(0, 5), "1002\t");
  EXPECT_FALSE(pellix_test::fileExists(tmp.path() + "/d.png"));

  r = pellix({"zoom", tmp.path() + "/missing.png", "100x100", tmp.path() + "/m.jpg"});
  EXPECT_EQ(r.status, 1);
  EXPECT_EQ(r.out.substr(0, 5), "1002\t");

  for (const std::vector<std::string>& wrong :
       {std::vector<std::string>{"zoom", src, "100", tmp.path() + "/z.jpg"},
        {"zoom", src, "0x10", tmp.path() + "/z.jpg"},
        {"zoom", src},
        {"cut", src, "a", "0", "1", "1", "0", tmp.path() + "/c.png"},
        {"cut", src, "0", "0", "1", "1", "1.5", tmp.path() + "/c.png"},
        {"cut", src, "0", "0", "1", "1", "0"}}) {
    r = pellix(wrong);
    EXPECT_EQ(r.status, 2) << wrong.size() << " words, " << wrong[1];
    EXPECT_NE(r.err.find("Try 'pellix --help'"), std::string::npos);
  }
}

}  // namespace

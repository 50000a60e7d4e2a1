// The metadata kernel as the driver reaches it: TesselKernel.dll from the install tree,
// interface 100, and PSD headers written byte by byte.
#include <gtest/gtest.h>

#include "Common/Source/text_forms.h"
#include "outside/ITesselKernel.h"
#include "testing/staged_module.h"
#include "testing/test_support.h"

namespace {

using pellix_test::TempDir;

// A PSD header: version, channels, height, width, depth, colour mode; then `tail`.
std::string psdHeader(uint16_t version, uint16_t channels, uint32_t height, uint32_t width,
                      uint16_t depth, uint16_t mode, const std::string& tail = std::string(40, '\0')) {
  auto be = [](uint32_t v, int bytes) {
    std::string out;
    for (int i = bytes - 1; i >= 0; --i) out += static_cast<char>(v >> (8 * i));
    return out;
  };
  return "8BPS" + be(version, 2) + std::string(6, '\0') + be(channels, 2) + be(height, 4) +
         be(width, 4) + be(depth, 2) + be(mode, 2) + tail;
}

class TesselKernelTest : public testing::Test {
 protected:
  int read(const std::string& posix_path, MetaDataValues& values) {
    const std::wstring wide = pellix_test::windowsPath(posix_path);
    // The narrow form that the driver hands over: the Windows form in UTF-8.
    const std::string narrow = wsToUtf8(wide);
    return kernel_->read(narrow.c_str(), values, true);
  }

  pellix_test::StagedModule module_{"TesselKernel.dll"};
  ITesselKernel* kernel_ = module_.take<ITesselKernel>(kTesselKernelInterfaceId);
  TempDir tmp_;
};

TEST_F(TesselKernelTest, FollowsTheModuleContract) {
  void* out = &out;
  EXPECT_TRUE(module_.have_interface(100));
  EXPECT_FALSE(module_.have_interface(104));
  EXPECT_FALSE(module_.have_interface(114));
  EXPECT_EQ(module_.accquire(100, nullptr), -3);
  EXPECT_EQ(module_.accquire(114, &out), -4);
  EXPECT_EQ(out, &out);
  EXPECT_EQ(module_.accquire(100, &out), 0);
  EXPECT_EQ(out, kernel_) << "one object";
}

TEST_F(TesselKernelTest, ReadsThePsdHeader) {
  struct Row {
    std::string name;
    std::string bytes;
    std::string color_mode, width, height, depth, version;
  };
  const Row rows[] = {
      {"rgb.psd", psdHeader(1, 3, 600, 800, 8, 3), "RGB", "800", "600", "8", "1"},
      {"cmyk.psd", psdHeader(1, 5, 10, 20, 16, 4), "CMYK", "20", "10", "16", "1"},
      {"grey.psd", psdHeader(1, 1, 1, 1, 8, 1), "Grayscale", "1", "1", "8", "1"},
      {"line.psd", psdHeader(1, 1, 30000, 30000, 1, 0), "Bitmap", "30000", "30000", "1", "1"},
      {"lab.psd", psdHeader(1, 3, 5, 5, 8, 9), "Lab", "5", "5", "8", "1"},
      {"duo.psd", psdHeader(1, 1, 5, 5, 8, 8), "Duotone", "5", "5", "8", "1"},
      {"big.psb", psdHeader(2, 4, 250000, 120000, 32, 3), "RGB", "120000", "250000", "32", "2"},
      {"header_only.psd", psdHeader(1, 3, 7, 9, 8, 2, ""), "Indexed", "9", "7", "8", "1"},
      {"设计稿 v2.psd", psdHeader(1, 3, 2, 3, 8, 7), "Multichannel", "3", "2", "8", "1"},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(row.name);
    MetaDataValues values;
    values.color_mode = "preset";
    values.creator = "kept";
    ASSERT_EQ(read(tmp_.write(row.name, row.bytes), values), 0);
    EXPECT_EQ(values.color_mode, row.color_mode);
    EXPECT_EQ(values.page_count, "1");
    EXPECT_EQ(values.width, row.width);
    EXPECT_EQ(values.height, row.height);
    EXPECT_EQ(values.bit_depth, row.depth);
    EXPECT_EQ(values.doc_version, row.version);
    EXPECT_EQ(values.creator, "kept") << "what isn't read stays";
    EXPECT_TRUE(values.thumbnails.empty());
  }
}

TEST_F(TesselKernelTest, LeavesTheRecordAsPresetWhenItCantRead) {
  struct Row {
    std::string name;
    std::string bytes;
    int code;
  };
  const Row rows[] = {
      {"cut.psd", psdHeader(1, 3, 600, 800, 8, 3).substr(0, 20), 2232},
      {"version3.psd", psdHeader(3, 3, 6, 8, 8, 3), 2232},
      {"mode5.psd", psdHeader(1, 3, 6, 8, 8, 5), 2232},
      {"no_width.psd", psdHeader(1, 3, 6, 0, 8, 3), 2232},
      {"too_wide.psd", psdHeader(1, 3, 6, 30001, 8, 3), 2232},
      {"depth7.psd", psdHeader(1, 3, 6, 8, 7, 3), 2232},
      {"empty.psd", "", 2204},
      {"picture.psd", "\x89PNG\r\n\x1A\n and the rest", 2204},
      {"doc.pdf", "%PDF-1.4\n", 2204},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(row.name);
    MetaDataValues values;
    values.color_mode = "CMYK";
    values.page_count = "3";
    EXPECT_EQ(read(tmp_.write(row.name, row.bytes), values), row.code);
    EXPECT_EQ(values.color_mode, "CMYK");
    EXPECT_EQ(values.page_count, "3");
    EXPECT_TRUE(values.doc_version.empty());
  }
  MetaDataValues values;
  EXPECT_EQ(read(tmp_.path() + "/missing.psd", values), 2201);
  EXPECT_EQ(kernel_->read(nullptr, values, false), 1002);
}

}  // namespace

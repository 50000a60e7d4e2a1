// The driver's start and end with its siblings, in the process of a host program that has
// TesselKernel.dll beside it and no TesselOpenCV.dll: which siblings come up, the metadata
// kernel reached through readMetaData, and a new start after an end.
#include <dlfcn.h>
#include <gtest/gtest.h>

#include "PellixKernel/PellixDriver.h"
#include "platform/env.h"
#include "testing/test_images.h"
#include "testing/test_support.h"

struct DriverTestAccess {
  static int readMetaData(CPellixDriver& driver, const std::wstring& path,
                          MetaDataValues& values) {
    return driver.readMetaData(path, values, false);
  }
};

namespace {

using pellix_test::LogCapture;
using pellix_test::TempDir;
using pellix_test::windowsPath;

bool isMapped(const std::string& path) {
  void* handle = ::dlopen(path.c_str(), RTLD_NOW | RTLD_NOLOAD);
  if (handle != nullptr) ::dlclose(handle);
  return handle != nullptr;
}

const std::string kMetaDataKernel = std::string(PELLIX_PROGRAM_DIR) + "/TesselKernel.dll";

TEST(DriverSiblingsTest, StartsWithTheSiblingsThatAreThere) {
  ASSERT_TRUE(pellix_test::fileExists(kMetaDataKernel));
  LogCapture log;
  auto* driver = new CPellixDriver();
  EXPECT_EQ(log.count("CPellixDriver::CPellixDriver start"), 1);
  EXPECT_EQ(log.count("CPellixDriver::CPellixDriver OK"), 1) << "the metadata kernel is there";
  EXPECT_EQ(log.count("TesselDllLoader::loadOpencvDll s_p_tessel_opencv_ is null"), 1);
  EXPECT_EQ(log.count("CPellixDriver::CPellixDriver load TesselOpenCV.dllfailed"), 1);
  EXPECT_NE(CPellixDriver::s_p_meta_data_, nullptr);
  EXPECT_TRUE(isMapped(kMetaDataKernel));
  delete driver;
  EXPECT_EQ(CPellixDriver::s_p_meta_data_, nullptr);
  EXPECT_FALSE(isMapped(kMetaDataKernel)) << "freed with the driver";
}

TEST(DriverSiblingsTest, ReadsMetaDataThroughTheKernel) {
  TempDir tmp;
  CPellixDriver driver;
  std::string psd = std::string("8BPS\0\x01", 6) + std::string(6, '\0') +
                    std::string("\0\x04\0\0\0\x0A\0\0\0\x14\0\x08\0\x04", 14);
  const std::wstring path = windowsPath(tmp.write("a.psd", psd));
  MetaDataValues values;
  EXPECT_EQ(DriverTestAccess::readMetaData(driver, path, values), 0);
  EXPECT_EQ(values.color_mode, "CMYK");
  EXPECT_EQ(values.page_count, "1");
  values = MetaDataValues();
  EXPECT_EQ(DriverTestAccess::readMetaData(driver, windowsPath(tmp.write("b.png", "x")), values),
            2204);
  EXPECT_EQ(DriverTestAccess::readMetaData(driver, windowsPath(tmp.path()) + L"\\none.psd", values),
            2201);
  EXPECT_EQ(DriverTestAccess::readMetaData(driver, L"", values), 2203);
  EXPECT_TRUE(values.color_mode.empty());
}

TEST(DriverSiblingsTest, StartsAgainAfterAnEnd) {
  TempDir tmp;
  const std::wstring png =
      windowsPath(pellix_test::plainImage(tmp.path() + "/a.png", 4, 4, "red"));
  platform::Env* env = platform::Env::Default();
  platform::Status s;
  for (int round = 0; round < 3; ++round) {
    SCOPED_TRACE(round);
    CPellixDriver driver;
    EXPECT_NE(CPellixDriver::s_p_meta_data_, nullptr);
    EXPECT_NE(env->LoadImage(png, &s), nullptr) << "the imaging services are up: " << s.message;
  }
  EXPECT_EQ(env->LoadImage(png, &s), nullptr) << "and stopped with the driver";
}

}  // namespace

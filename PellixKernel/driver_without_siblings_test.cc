// The driver in a host program that has no sibling beside it: it starts all the same and
// answers readMetaData without touching the record.
#include <gtest/gtest.h>

#include "PellixKernel/PellixDriver.h"
#include "testing/test_support.h"

struct DriverTestAccess {
  static int readMetaData(CPellixDriver& driver, const std::wstring& path,
                          MetaDataValues& values) {
    return driver.readMetaData(path, values, true);
  }
};

namespace {

TEST(DriverWithoutSiblingsTest, StartsAndLeavesTheRecordAlone) {
  pellix_test::LogCapture log;
  pellix_test::TempDir tmp;
  CPellixDriver driver;
  EXPECT_EQ(log.count("CPellixDriver::CPellixDriver LoadKernelLibrary[TesselKernel.dll] failed"),
            1);
  EXPECT_EQ(log.count("CPellixDriver::CPellixDriver load TesselOpenCV.dllfailed"), 1);
  EXPECT_EQ(CPellixDriver::s_p_meta_data_, nullptr);
  MetaDataValues values;
  values.color_mode = "CMYK";
  const std::wstring psd = pellix_test::windowsPath(tmp.write("a.psd", "8BPS"));
  EXPECT_EQ(DriverTestAccess::readMetaData(driver, psd, values), 2210);
  EXPECT_EQ(values.color_mode, "CMYK");
}

}  // namespace

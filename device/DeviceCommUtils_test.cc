// Serial-form paths over this process's own drive table (C: the home folder, Z: the root of
// the file system); drive tables of a test's own are exercised through the host program.
#include "device/DeviceCommUtils.h"

#include <gtest/gtest.h>

#include "platform/windows_path.h"
#include "testing/test_support.h"

namespace {

using pellix_test::windowsPath;

TEST(DeviceCommUtilsTest, RecognisesOnlyItsOwnSerialForm) {
  struct Case {
    const wchar_t* path;
    bool serial;
  } cases[] = {
      {L"\\\\?\\Volume{00000000A1B2C3D4-1F}\\KorvanePreview", true},
      {L"\\\\?\\volume{00000000a1b2c3d4-1f}", true},
      {L"\\\\?\\Volume{00000000A1B2C3D4-1F}\\", true},
      {L"\\\\?\\Volume{}\\x", false},
      {L"\\\\?\\Volume{ZZ}\\x", false},
      {L"\\\\?\\Volume{0A}x", false},
      {L"\\\\?\\Volume{0A", false},
      {L"\\\\?\\D:\\x", false},
      {L"D:\\Volume{0A}", false},
      {L"", false},
  };
  for (const Case& c : cases) {
    EXPECT_EQ(DeviceCommUtils::isSerialPath(c.path), c.serial)
        << "row: " << platform::Utf16ToFileName(c.path);
  }
}

TEST(DeviceCommUtilsTest, DrivePathsGoToSerialFormAndBack) {
  pellix_test::TempDir tmp;
  DeviceCommUtils::initVolSerial(false);
  const std::wstring folder = windowsPath(tmp.path()) + L"\\it's here";
  const std::wstring serial_path = DeviceCommUtils::getSerialPathByDrive(folder, true);
  ASSERT_TRUE(DeviceCommUtils::isSerialPath(serial_path)) << platform::Utf16ToFileName(serial_path);
  EXPECT_EQ(serial_path.find(L':'), std::wstring::npos) << "no drive letter in serial form";
  EXPECT_EQ(DeviceCommUtils::getDrivePathBySerial(serial_path, true), folder);
  EXPECT_EQ(DeviceCommUtils::getSerialPathByDrive(serial_path, true), serial_path);

  const std::wstring drive = folder.substr(0, 2);
  const std::wstring serial = DeviceCommUtils::getVolSerial(folder);
  EXPECT_EQ(serial, DeviceCommUtils::getVolSerial(drive + L"\\"));
  EXPECT_EQ(DeviceCommUtils::getSerialPathByDrive(drive, false),
            L"\\\\?\\Volume{" + serial + L"}\\");
  EXPECT_EQ(DeviceCommUtils::getSerialPathByDrive(L"\\\\?\\" + drive + L"/a/b", false),
            L"\\\\?\\Volume{" + serial + L"}\\a\\b");
  EXPECT_EQ(DeviceCommUtils::getDrivePathBySerial(L"\\\\?\\Volume{" + serial + L"}", false),
            drive + L"\\");
  EXPECT_NE(DeviceCommUtils::getVolSerial(L"C:\\"), DeviceCommUtils::getVolSerial(L"Z:\\"))
      << "two roots on one file system have two serials";
}

TEST(DeviceCommUtilsTest, WhatNamesNoDriveHasNoSerial) {
  DeviceCommUtils::initVolSerial(true);
  for (const wchar_t* path : {L"Q:\\a", L"\\\\server\\share\\a.psd", L"relative\\a", L"C:abc",
                              L"", L"1:\\a"}) {
    EXPECT_EQ(DeviceCommUtils::getVolSerial(path), L"") << platform::Utf16ToFileName(path);
    EXPECT_EQ(DeviceCommUtils::getSerialPathByDrive(path, true), L"")
        << platform::Utf16ToFileName(path);
  }
  EXPECT_EQ(DeviceCommUtils::getDrivePathBySerial(L"\\\\?\\Volume{0-0}\\x", true), L"");
  EXPECT_EQ(DeviceCommUtils::getDrivePathBySerial(L"C:\\x", true), L"");
}

}  // namespace

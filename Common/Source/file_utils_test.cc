// Path checks, folder helpers and file housekeeping on real folders.
#include <gtest/gtest.h>

#include <filesystem>
#include <map>

#include "Common/Source/FileCheckUtils.h"
#include "Common/Source/FileComnUtils.h"
#include "Common/Source/common_helper_mini.h"
#include "Common/Source/text_forms.h"
#include "testing/test_support.h"

namespace {

using pellix_test::LogCapture;
using pellix_test::TempDir;
using pellix_test::windowsPath;

TEST(LongPathPrefixTest, RecognisesOnlyTheExactPrefix) {
  struct Case {
    const char* path;
    bool has;
    const char* removed;
  } cases[] = {
      {"\\\\?\\C:\\a", true, "C:\\a"},
      {"\\\\?\\UNC\\server\\share\\a", true, "UNC\\server\\share\\a"},
      {"\\\\.\\C:\\a", false, "\\\\.\\C:\\a"},
      {"\\\\server\\share\\a", false, "\\\\server\\share\\a"},
      {"C:\\\\?\\a", false, "C:\\\\?\\a"},
      {"", false, ""},
  };
  for (const Case& c : cases) {
    EXPECT_EQ(FileCheckUtils::isHasLongPathPrefix(c.path), c.has) << "row: " << c.path;
    EXPECT_EQ(FileCheckUtils::removeLongPathPrefix(c.path), c.removed) << "row: " << c.path;
  }
}

TEST(LongPathPrefixTest, AddsAtTheLimitCountedInUtf8Bytes) {
  const std::string short_path = "C:\\" + std::string(255, 'a');  // 258 bytes
  const std::string at_limit = "C:\\" + std::string(257, 'a');    // 260 bytes
  EXPECT_EQ(FileCheckUtils::addLongPathPrefix(short_path + "b"), short_path + "b");
  EXPECT_EQ(FileCheckUtils::addLongPathPrefix(at_limit), "\\\\?\\" + at_limit);
  EXPECT_EQ(FileCheckUtils::addLongPathPrefix("\\\\?\\" + at_limit), "\\\\?\\" + at_limit);
  // 90 Chinese characters are 270 UTF-8 bytes: long here, though only 93 wide characters.
  const std::wstring chinese = L"C:\\" + std::wstring(90, L'图');
  EXPECT_EQ(FileCheckUtils::addLongPathPrefix(chinese), L"\\\\?\\" + chinese);
  EXPECT_EQ(FileCheckUtils::addLongPathPrefix(L"C:\\" + std::wstring(80, L'图')),
            L"C:\\" + std::wstring(80, L'图'));
}

TEST(IsExistsTest, FindsShortAndLongPaths) {
  TempDir tmp;
  EXPECT_FALSE(FileCheckUtils::isExists(std::wstring()));
  EXPECT_FALSE(FileCheckUtils::isExists(std::string()));
  // A path of well over 260 characters, made level by level.
  std::string deep = tmp.path();
  for (int i = 0; i < 6; ++i) deep += "/" + std::string(60, static_cast<char>('a' + i));
  const std::string file = deep + "/图.jpg";
  pellix_test::writeFile(file, "x");
  const std::wstring wide = windowsPath(file);
  ASSERT_GE(wide.size(), kPathLimit);
  EXPECT_TRUE(FileCheckUtils::isExists(wide));
  EXPECT_TRUE(FileCheckUtils::isExists(wsToUtf8(wide)));
  EXPECT_TRUE(FileCheckUtils::isExists(L"\\\\?\\" + wide));
  EXPECT_FALSE(FileCheckUtils::isExists(wide + L"x"));
  EXPECT_FALSE(FileCheckUtils::isExists(L"Q:\\a"));
}

TEST(FolderTextTest, DriveRootsParentsAndToolFolders) {
  struct Case {
    const wchar_t* in;
    const wchar_t* out;
  };
  for (const Case& c : {Case{L"C", L"C:\\"}, Case{L"C:", L"C:\\"}, Case{L"C:\\x", L"C:\\"},
                        Case{L"D:\\a\\b", L"D:\\"}, Case{L"\\\\?\\D:\\a", L"\\\\?\\D:\\"},
                        Case{L"", L""}, Case{L"ab", L""}}) {
    EXPECT_EQ(getDriveRoot(c.in), c.out) << "row: " << wsToUtf8(c.in);
  }
  for (const Case& c : {Case{L"D:\\a\\b\\c", L"D:\\a\\b"}, Case{L"D:\\a\\b\\", L"D:\\a"},
                        Case{L"D:\\a\\", L"D:"}, Case{L"abc", L""}, Case{L"", L""},
                        Case{L"\\", L""}}) {
    EXPECT_EQ(getParentDir(c.in), c.out) << "row: " << wsToUtf8(c.in);
  }
  for (const Case& c : {Case{L"D:\\App\\x64", L"D:\\App\\x64\\..\\Utils\\"},
                        Case{L"D:\\App\\X64", L"D:\\App\\X64\\..\\Utils\\"},
                        Case{L"D:\\App", L"D:\\App\\Utils\\"},
                        Case{L"D:\\x64App", L"D:\\x64App\\Utils\\"}}) {
    EXPECT_EQ(utilsDirOf(c.in), c.out) << "row: " << wsToUtf8(c.in);
  }
  EXPECT_EQ(getUtilsDir(), getExeDir() + L"\\Utils\\");
}

TEST(CreateDirTest, MakesEveryLevelAndRefusesAMissingDrive) {
  TempDir tmp;
  const std::wstring base = windowsPath(tmp.path());
  EXPECT_TRUE(common_hepler::createDirIfNotExist(base + L"\\a\\b\\c"));
  EXPECT_TRUE(pellix_test::fileExists(tmp.path() + "/a/b/c"));
  EXPECT_TRUE(common_hepler::createDirIfNotExist(base + L"\\a\\b\\c"));  // already there
  LogCapture log;
  EXPECT_FALSE(common_hepler::createDirIfNotExist(L"Q:\\a"));
  EXPECT_TRUE(log.lines().empty());
  // A file stands where a folder level should be.
  pellix_test::writeFile(tmp.path() + "/file", "x");
  EXPECT_FALSE(common_hepler::createDirIfNotExist(base + L"\\file\\sub"));
  EXPECT_EQ(log.count("common_hepler::createDirIfNotExist fault for dir_name:"), 1);
}

TEST(FileSizeTest, SizesAndTheOnceAProcessLine) {
  TempDir tmp;
  const std::wstring file = windowsPath(tmp.write("a.bin", std::string(1234, 'x')));
  EXPECT_EQ(FileCheckUtils::getFileSize(file), 1234u);
  EXPECT_EQ(getFileSizeByHandle(file), 1234u);
  EXPECT_EQ(getFileSizeByFind(file), 1234u);
  EXPECT_EQ(getFileSizeByFind(L""), 0u);
  EXPECT_EQ(getFileSizeByHandle(L""), 0u);
  LogCapture log;
  const std::wstring missing = windowsPath(tmp.path()) + L"\\missing.bin";
  EXPECT_EQ(FileCheckUtils::getFileSize(missing), 0u);
  EXPECT_EQ(FileCheckUtils::getFileSize(missing), 0u);
  EXPECT_EQ(log.count("FileCheckUtils::getFileSize failed :"), 1);
  EXPECT_EQ(log.count("CreateFileW failed. Error: "), 2);
}

TEST(DeleteTest, FoldersGoWholeAndMissingFilesAreFalse) {
  TempDir tmp;
  tmp.write("tree/a.txt", "a");
  tmp.write("tree/sub/b.txt", "b");
  tmp.write("tree/sub/deeper/c.txt", "c");
  const std::wstring tree = windowsPath(tmp.path() + "/tree");
  LogCapture log;
  EXPECT_TRUE(FileCommUtils::deleteFolder(tree));
  EXPECT_FALSE(pellix_test::fileExists(tmp.path() + "/tree"));
  EXPECT_EQ(log.count("FileCommUtils::deleteFolder del_folder:" + wsToUtf8(tree) + "//sub//deeper"),
            1);
  EXPECT_TRUE(FileCommUtils::deleteFolder(L""));
  EXPECT_FALSE(FileCommUtils::deleteFolder(tree));

  const std::wstring file = windowsPath(tmp.write("x.txt", "x"));
  const size_t before = log.lines().size();
  EXPECT_FALSE(FileCommUtils::deleteFile(file + L".missing"));
  EXPECT_EQ(log.lines().size(), before) << "a missing file logs nothing";
  EXPECT_TRUE(FileCommUtils::deleteFile(file));
  EXPECT_EQ(log.count("FileCommUtils::deleteFile has del"), 1);
  EXPECT_FALSE(pellix_test::fileExists(tmp.path() + "/x.txt"));
}

TEST(DeleteTest, ALinkInTheTreeGoesButNotWhatItPointsAt) {
  TempDir tmp;
  tmp.write("outside/keep.txt", "k");
  tmp.mkdir("tree");
  std::filesystem::create_directory_symlink(tmp.path() + "/outside", tmp.path() + "/tree/link");
  EXPECT_TRUE(FileCommUtils::deleteFolder(windowsPath(tmp.path() + "/tree")));
  EXPECT_TRUE(pellix_test::fileExists(tmp.path() + "/outside/keep.txt"));
}

TEST(DiskInfoTest, AlwaysHoldsTheThreeKinds) {
  std::map<int, std::vector<std::wstring>> disks{{9, {L"junk"}}};
  FileCommUtils::getDiskInfo(disks);
  EXPECT_EQ(disks.size(), 3u);
  ASSERT_TRUE(disks.count(2) && disks.count(3) && disks.count(4));
  // Without a drive table beside the test program: C: (home) and Z: (/), both fixed here.
  EXPECT_EQ(disks[3], (std::vector<std::wstring>{L"C:", L"Z:"}));
}

}  // namespace

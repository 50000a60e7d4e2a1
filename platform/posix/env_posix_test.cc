#include "platform/env.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <filesystem>
#include <sstream>

#include "testing/test_support.h"

namespace {

using pellix_test::run;
using pellix_test::TempDir;

// A host folder of the test's own: the probe program copied into it, and the drive table
// that the test builds beside it.
class HostFolder {
 public:
  HostFolder() {
    bin_ = tmp_.mkdir("host/bin");
    pellix_test::copyFile(std::string(PELLIX_TESTS_DIR) + "/env_probe", bin_ + "/env_probe");
  }
  std::string drive(const std::string& name) const { return tmp_.mkdir("volumes/" + name); }
  void link(const std::string& letter, const std::string& target) const {
    std::filesystem::create_directories(bin_ + "/dosdevices");
    std::filesystem::remove(bin_ + "/dosdevices/" + letter);
    std::filesystem::create_directory_symlink(target, bin_ + "/dosdevices/" + letter);
  }
  std::string probe(std::vector<std::string> args,
                    const std::vector<std::string>& env = {}) const {
    args.insert(args.begin(), bin_ + "/env_probe");
    pellix_test::RunResult r = run(args, env);
    EXPECT_EQ(r.status, 0) << r.err;
    return r.out;
  }
  const std::string& bin() const { return bin_; }

 private:
  TempDir tmp_;
  std::string bin_;
};

TEST(DriveTableTest, DosdevicesBesideTheProgramIsTheTable) {
  HostFolder host;
  const std::string c = host.drive("system"), d = host.drive("data");
  host.link("c:", c);
  host.link("D:", d);
  host.link("x:", host.bin() + "/no-such-volume");  // a drive whose volume is gone
  host.link("com1", c);                             // not a drive name
  EXPECT_EQ(host.probe({"drives"}), "C\t3\t" + c + "\nD\t3\t" + d + "\n");
  EXPECT_EQ(host.probe({"to-windows", d + "/art/logo.psd", c, "/etc/hosts"}),
            "D:\\art\\logo.psd\nC:\\\n-\n");
  EXPECT_EQ(host.probe({"to-posix", "d:\\art\\logo.psd", "X:\\a", "\\\\?\\C:\\a"}),
            d + "/art/logo.psd\n-\n" + c + "/a\n");
}

TEST(DriveTableTest, ADriveComesAndGoesWithItsLink) {
  HostFolder host;
  const std::string d = host.drive("data");
  host.link("d:", d);
  EXPECT_EQ(host.probe({"to-posix", "D:\\x"}), d + "/x\n");
  std::filesystem::remove(host.bin() + "/dosdevices/d:");
  EXPECT_EQ(host.probe({"to-posix", "D:\\x"}), "-\n");
}

TEST(DriveTableTest, WithoutDosdevicesHomeIsCAndRootIsZ) {
  HostFolder host;
  TempDir home;
  const std::string real_home = std::filesystem::canonical(home.path());
  EXPECT_EQ(host.probe({"to-windows", real_home + "/a.jpg", "/usr/share/x"}, {"HOME=" + home.path()}),
            "C:\\a.jpg\nZ:\\usr\\share\\x\n");
  EXPECT_EQ(host.probe({"folders"}, {"HOME=" + home.path(), "XDG_DATA_HOME="}),
            "C:\\\nC:\\.local\\share\nZ:\\var\\tmp\n");
  EXPECT_EQ(host.probe({"folders"}, {"HOME=" + home.path(), "XDG_DATA_HOME=/srv/data"}),
            "C:\\\nZ:\\srv\\data\nZ:\\var\\tmp\n");
}

TEST(DriveTableTest, ProgramPathIsInWindowsForm) {
  HostFolder host;
  host.link("p:", host.bin());
  EXPECT_EQ(host.probe({"program"}), "P:\\env_probe\n");
}

TEST(VolumeIdentityTest, NamesTheRootFolderNotTheLetter) {
  HostFolder host;
  const std::string a = host.drive("a"), b = host.drive("b");
  host.link("d:", a);
  host.link("e:", a);
  host.link("f:", b);
  const std::string d = host.probe({"serial", "D"}), e = host.probe({"serial", "E"}),
                    f = host.probe({"serial", "F"});
  EXPECT_NE(d, "-\n");
  EXPECT_EQ(d, e) << "two letters for one folder share a serial";
  EXPECT_NE(d, f) << "two roots on one file system differ";
  EXPECT_EQ(host.probe({"serial", "G"}), "-\n");
  // The disk "comes back under another letter": the same folder keeps its serial.
  std::filesystem::remove(host.bin() + "/dosdevices/d:");
  host.link("k:", a);
  EXPECT_EQ(host.probe({"serial", "K"}), d);
}

TEST(EnvFilesTest, FilesAndFoldersThroughWindowsPaths) {
  platform::Env* env = platform::Env::Default();
  TempDir tmp;
  const std::wstring dir = pellix_test::windowsPath(tmp.path());
  EXPECT_TRUE(env->CreateFolder(dir + L"\\sub").ok());
  EXPECT_EQ(env->CreateFolder(dir + L"\\sub").kind, platform::ErrorKind::kExists);
  EXPECT_EQ(env->CreateFolder(dir + L"\\no\\deeper").kind, platform::ErrorKind::kNotFound);
  const std::wstring file = dir + L"\\sub\\a.bin";
  ASSERT_TRUE(env->WriteFile(file, std::string("ab\0cd", 5)).ok());
  uint64_t size = 0;
  ASSERT_TRUE(env->GetFileSize(file, &size).ok());
  EXPECT_EQ(size, 5u);
  std::string bytes;
  ASSERT_TRUE(env->ReadFile(file, 1, 3, &bytes).ok());
  EXPECT_EQ(bytes, std::string("b\0c", 3));
  ASSERT_TRUE(env->ReadFile(file, 4, 100, &bytes).ok());
  EXPECT_EQ(bytes, "d");
  EXPECT_EQ(env->RemoveFolder(dir + L"\\sub").kind, platform::ErrorKind::kNotEmpty);
  EXPECT_EQ(env->DeleteFile(dir + L"\\sub").kind, platform::ErrorKind::kIsFolder);
  ASSERT_TRUE(env->RenameFile(file, dir + L"\\b.bin").ok());
  EXPECT_FALSE(env->PathExists(file));
  EXPECT_TRUE(env->PathExists(dir + L"\\b.bin"));
  std::vector<platform::DirEntry> entries;
  ASSERT_TRUE(env->ListFolder(dir, &entries).ok());
  EXPECT_EQ(entries.size(), 2u);
  EXPECT_TRUE(env->DeleteFile(dir + L"\\b.bin").ok());
  EXPECT_EQ(env->DeleteFile(dir + L"\\b.bin").kind, platform::ErrorKind::kNotFound);
  EXPECT_TRUE(env->RemoveFolder(dir + L"\\sub").ok());
  EXPECT_EQ(env->GetFileSize(L"Q:\\nowhere", &size).kind, platform::ErrorKind::kNotFound);
}

TEST(EnvFilesTest, ASymbolicLinkIsNeverListedAsAFolder) {
  platform::Env* env = platform::Env::Default();
  TempDir tmp;
  tmp.mkdir("real");
  std::filesystem::create_directory_symlink(tmp.path() + "/real", tmp.path() + "/link");
  std::vector<platform::DirEntry> entries;
  ASSERT_TRUE(env->ListFolder(pellix_test::windowsPath(tmp.path()), &entries).ok());
  for (const auto& e : entries) EXPECT_EQ(e.is_folder, e.name == L"real");
}

TEST(EnvTextTest, ConvertsToTheChineseCodePage) {
  std::string gbk;
  ASSERT_TRUE(platform::Env::Default()->WideToCodePage(L"校验", 936, &gbk));
  EXPECT_EQ(gbk, "\xD0\xA3\xD1\xE9");
  EXPECT_FALSE(platform::Env::Default()->WideToCodePage(std::wstring(1, 0x1F600), 936, &gbk));
}

}  // namespace

// The settings and the preview root as a user meets them: the staged host program (and a probe
// for what it doesn't do) copied into a host folder of the test's own, with a drive table and
// a home folder made by the test, and the settings file looked into straight through SQLite.
#include <gtest/gtest.h>
#include <sqlite3.h>
#include <sys/stat.h>
#include <unistd.h>

#include <filesystem>
#include <thread>

#include "Common/Source/Md5Context.h"
#include "testing/settings_file.h"
#include "testing/test_support.h"

namespace {

using pellix_test::RunResult;
using pellix_test::SettingsFile;
using pellix_test::TempDir;
using History = std::vector<std::pair<std::string, std::string>>;

const std::string kMarker = "注意_Korvane预览图文件夹,请勿删除!.txt";

bool has(const std::string& text, const std::string& part) {
  return text.find(part) != std::string::npos;
}

class HostFolder {
 public:
  HostFolder() {
    bin_ = tmp_.mkdir("host/bin");
    home_ = tmp_.mkdir("home");
    for (const char* file : {"pellix", "PellixKernel.dll", "libdevice.dll"}) {
      pellix_test::copyFile(pellix_test::stageBin() + "/" + file, bin_ + "/" + file);
    }
    pellix_test::copyFile(std::string(PELLIX_TESTS_DIR) + "/settings_probe",
                          bin_ + "/settings_probe");
    link("c:", home_);
    std::filesystem::create_directories(home_ + "/.local/share/Korvane/users");
  }
  std::string volume(const std::string& name) const { return tmp_.mkdir("volumes/" + name); }
  void link(const std::string& letter, const std::string& target) const {
    std::filesystem::create_directories(bin_ + "/dosdevices");
    unlink(letter);
    std::filesystem::create_directory_symlink(target, bin_ + "/dosdevices/" + letter);
  }
  void unlink(const std::string& letter) const {
    std::filesystem::remove(bin_ + "/dosdevices/" + letter);
  }
  RunResult pellix(std::vector<std::string> args) const { return run("pellix", std::move(args)); }
  RunResult probe(std::vector<std::string> args) const {
    return run("settings_probe", std::move(args));
  }
  // The settings file of this home, with a history of every write.
  SettingsFile settings() const {
    return SettingsFile(home_ + "/.local/share/Korvane/users/localdata.dat");
  }
  // The lines of `pellix where` by their kind: POSIX path, tab, Windows path.
  std::map<std::string, std::string> where(const std::string& src, const std::string& dir) const {
    const RunResult r = pellix({"where", src, dir});
    EXPECT_EQ(r.status, 0) << r.err;
    std::map<std::string, std::string> lines;
    std::istringstream in(r.out);
    std::string line;
    while (std::getline(in, line)) {
      const size_t tab = line.find('\t');
      lines[line.substr(0, tab)] = line.substr(tab + 1);
    }
    return lines;
  }
  const std::string& home() const { return home_; }
  const std::string& bin() const { return bin_; }
  const TempDir& tmp() const { return tmp_; }

 private:
  RunResult run(const std::string& program, std::vector<std::string> args) const {
    args.insert(args.begin(), bin_ + "/" + program);
    return pellix_test::run(args, {"HOME=" + home_, "XDG_DATA_HOME="});
  }

  TempDir tmp_;
  std::string bin_, home_;
};

TEST(PreviewRootTest, AFreshInstallationTestsTheSecondDiskAndRecordsTheOutcome) {
  HostFolder host;
  const std::string d = host.volume("d");
  host.link("d:", d);
  host.settings().createWithHistory();
  const RunResult r = host.pellix({"where", d + "/a.psd", d + "/out"});
  EXPECT_EQ(r.status, 0) << r.err;
  EXPECT_EQ(r.out, "root\t" + d + "/KorvanePreview\tD:\\KorvanePreview\n" + "regular\t" + d +
                       "/out/a.psd.1.jpg\tD:\\out\\a.psd.1.jpg\n");
  EXPECT_EQ(host.settings().history(), (History{{"disk_rw_flag", "1"}, {"disk_rw_flag", "2"}}));
  EXPECT_FALSE(host.settings().value("thumb_base_path").has_value());
  EXPECT_TRUE(has(r.err, "del_folder:D:\\tmp_kvn_")) << "the test folder went again";
  EXPECT_EQ(std::distance(std::filesystem::directory_iterator(d), {}), 0);

  // The next process trusts the record and tests nothing.
  const RunResult again = host.pellix({"where", d + "/a.psd", d + "/out"});
  EXPECT_FALSE(has(again.err, "del_folder")) << again.err;
  EXPECT_EQ(host.settings().history().size(), 2u);
}

TEST(PreviewRootTest, ASingleFixedDiskIsUsedWithoutATest) {
  HostFolder host;
  host.settings().createWithHistory();
  const RunResult r = host.pellix({"where", host.home() + "/a.psd", host.home()});
  EXPECT_EQ(r.out.substr(0, r.out.find('\n')),
            "root\t" + host.home() + "/KorvanePreview\tC:\\KorvanePreview");
  EXPECT_TRUE(host.settings().history().empty()) << "disk_rw_flag isn't written";
  EXPECT_FALSE(has(r.err, "del_folder"));
}

TEST(PreviewRootTest, AnUnwritableSecondDiskLeavesTheFlagAtOneForGood) {
  HostFolder host;
  host.link("d:", "/proc/sys");  // a folder that not even root can make folders in
  host.settings().createWithHistory();
  const RunResult first = host.pellix({"where", "D:\\a.psd", "D:\\out"});
  EXPECT_TRUE(has(first.err, "common_hepler::checekDiskRwValidity isDiskRW_OK failed, but run "
                             "here, next_disk_path:D:\n"))
      << first.err;
  EXPECT_EQ(first.out, "root\t" + host.home() + "/KorvanePreview\tC:\\KorvanePreview\n" +
                           "regular\t/proc/sys/out/a.psd.1.jpg\tD:\\out\\a.psd.1.jpg\n")
      << "D: is a drive of the table, and the root is on C:";
  EXPECT_EQ(host.settings().history(), (History{{"disk_rw_flag", "1"}}));

  // A later process goes straight to the first disk, even once the second could be written.
  host.link("d:", host.volume("d"));
  const RunResult r = host.pellix({"where", "D:\\a.psd", "D:\\out"});
  EXPECT_TRUE(has(r.out, "root\t" + host.home() + "/KorvanePreview\t")) << r.out;
  EXPECT_FALSE(has(r.err, "isDiskRW_OK")) << r.err;
  EXPECT_FALSE(has(r.err, "del_folder")) << r.err;
  EXPECT_EQ(host.settings().history(), (History{{"disk_rw_flag", "1"}}));
}

TEST(PreviewRootTest, AStoredRootFollowsItsVolumeToAnotherLetter) {
  HostFolder host;
  const std::string e = host.volume("e");
  host.link("e:", e);
  host.settings().createWithHistory();
  host.settings().exec(
      "INSERT INTO config (key, value) VALUES ('thumb_base_path', 'E:\\Previews')");
  EXPECT_EQ(host.where("D:\\a.psd", "D:\\out")["root"], e + "/Previews\tE:\\Previews");
  const std::optional<std::string> serial_form = host.settings().value("thumb_base_path");
  ASSERT_TRUE(serial_form.has_value());
  EXPECT_EQ(serial_form->rfind("\\\\?\\Volume{", 0), 0u) << *serial_form;
  EXPECT_EQ(serial_form->substr(serial_form->size() - 10), "}\\Previews");
  EXPECT_TRUE(pellix_test::fileExists(e + "/Previews/" + kMarker));

  host.unlink("e:");
  host.link("f:", e);
  EXPECT_EQ(host.where("D:\\a.psd", "D:\\out")["root"], e + "/Previews\tF:\\Previews");
  EXPECT_EQ(host.settings().value("thumb_base_path"), serial_form);
  EXPECT_EQ(host.settings().history(),
            (History{{"thumb_base_path", "E:\\Previews"}, {"thumb_base_path", *serial_form}}))
      << "written by the test in drive form, then rewritten in serial form once";
}

TEST(PreviewRootTest, AMissingVolumeGivesTheDefaultUntilTheDriverLooksAgain) {
  HostFolder host;
  const std::string e = host.volume("e");
  host.link("e:", e);
  ASSERT_EQ(host.pellix({"config", "set", "thumb_base_path", e + "/Previews"}).status, 0);
  const std::optional<std::string> stored = host.settings().value("thumb_base_path");
  host.unlink("e:");
  const RunResult r = host.probe({"refresh-root", "e:", e});
  EXPECT_EQ(r.status, 0) << r.err;
  EXPECT_EQ(r.out, "C:\\KorvanePreview\nE:\\Previews\n");
  EXPECT_TRUE(has(r.err,
                  "common_hepler::ConfigDB::getThumbFileBasePathFromDBwill be default, "
                  "for invalid thumbBasePath:" +
                      *stored))
      << r.err;
  EXPECT_EQ(host.settings().value("thumb_base_path"), stored) << "the row is kept";
}

TEST(SettingsTableTest, TwoProcessesWritingAtOnceLoseNothing) {
  HostFolder host;
  constexpr int kEach = 150;
  std::vector<std::thread> writers;
  std::vector<RunResult> results(2);
  for (int w = 0; w < 2; ++w) {
    writers.emplace_back([&, w] {
      results[w] = host.probe({"write-many", w == 0 ? "a" : "b", std::to_string(kEach)});
    });
  }
  for (std::thread& t : writers) t.join();
  for (const RunResult& r : results) EXPECT_EQ(r.status, 0) << r.err;
  std::map<std::string, std::string> seen;
  for (const auto& row : host.settings().rows()) {
    EXPECT_TRUE(seen.emplace(row.key, row.value.value_or("")).second) << "twice: " << row.key;
  }
  ASSERT_EQ(seen.size(), 2u * kEach);
  EXPECT_EQ(seen["a0"], "0");
  EXPECT_EQ(seen["b149"], "149");
}

TEST(SettingsTableTest, AWriterThatMeetsALockWaitsForIt) {
  HostFolder host;
  const SettingsFile file = host.settings();
  file.createWithHistory();
  sqlite3* db = nullptr;
  ASSERT_EQ(sqlite3_open(file.path().c_str(), &db), SQLITE_OK);
  ASSERT_EQ(sqlite3_exec(db, "BEGIN EXCLUSIVE", nullptr, nullptr, nullptr), SQLITE_OK);
  RunResult writer;
  std::thread child([&] { writer = host.pellix({"config", "set", "thumb_type", "png"}); });
  // Long enough for the writer to meet the lock, well inside its patience.
  std::this_thread::sleep_for(std::chrono::milliseconds(1500));
  EXPECT_EQ(sqlite3_exec(db, "COMMIT", nullptr, nullptr, nullptr), SQLITE_OK);
  sqlite3_close(db);
  child.join();
  EXPECT_EQ(writer.status, 0) << writer.err;
  EXPECT_EQ(file.value("thumb_type"), "png");
}

TEST(SettingsTableTest, SetThenGetAndTheRowIsInTheFile) {
  HostFolder host;
  EXPECT_EQ(host.pellix({"config", "set", "thumb_type", "png"}).status, 0);
  const RunResult get = host.pellix({"config", "get", "thumb_type"});
  EXPECT_EQ(get.status, 0) << get.err;
  EXPECT_EQ(get.out, "png\n");
  const RunResult sql = pellix_test::run(
      {"/usr/bin/sqlite3", host.settings().path(),
       "SELECT count(*), value FROM config WHERE key = 'thumb_type' AND UserID IS NULL"});
  EXPECT_EQ(sql.out, "1|png\n") << sql.err;
  EXPECT_EQ(host.pellix({"config", "set", "easy_psd_max_size", "50"}).status, 0);
  EXPECT_EQ(host.pellix({"config", "list"}).out, "thumb_type\tpng\neasy_psd_max_size\t50\n");
  const RunResult missing = host.pellix({"config", "get", "cfg_jc_path"});
  EXPECT_EQ(missing.status, 1);
  EXPECT_EQ(missing.out, "");
}

TEST(SettingsTableTest, AnApostropheRootRoundTripsAndHostileTextChangesNothing) {
  HostFolder host;
  const std::string d = host.volume("d");
  host.link("d:", d);
  ASSERT_EQ(host.pellix({"config", "set", "thumb_base_path", d + "/it's"}).status, 0);
  const std::string stored = host.settings().value("thumb_base_path").value_or("");
  EXPECT_EQ(stored.substr(stored.size() - 6), "}\\it's") << stored;
  EXPECT_EQ(host.pellix({"config", "get", "thumb_base_path"}).out, stored + "\n");
  EXPECT_EQ(host.where("D:\\a.psd", "D:\\out")["root"], d + "/it's\tD:\\it's");
  EXPECT_TRUE(pellix_test::fileExists(d + "/it's/" + kMarker));

  const auto before = host.settings().rows();
  const std::string hostile = "x'; DROP TABLE config; --";
  for (const std::vector<std::string>& call :
       std::vector<std::vector<std::string>>{{"config", "set", hostile, "v"},
                                             {"config", "set", "thumb_type", hostile},
                                             {"config", "get", hostile}}) {
    const RunResult r = host.pellix(call);
    EXPECT_EQ(r.status, 1) << call[1] << " " << call[2];
    EXPECT_TRUE(has(r.err, "refused")) << r.err;
  }
  const auto after = host.settings().rows();
  ASSERT_EQ(after.size(), before.size());
  for (size_t i = 0; i < after.size(); ++i) {
    EXPECT_EQ(after[i].key, before[i].key);
    EXPECT_EQ(after[i].value, before[i].value);
  }
}

TEST(WhereTest, ALongRegularPathMovesToTheLongPathTree) {
  HostFolder host;
  const std::string d = host.volume("d");
  host.link("d:", d);
  ASSERT_EQ(host.pellix({"config", "set", "thumb_base_path", d + "/Previews"}).status, 0);
  const std::string source = "D:\\Design\\Spring\\Logo.PSD";
  // The regular path is the folder, '\' and "Logo.PSD.1.jpg" (14 characters).
  const std::string at_limit = "D:\\" + std::string(260 - 3 - 15, 'f');
  const std::string below = at_limit.substr(0, at_limit.size() - 1);
  auto lines = host.where(source, below);
  EXPECT_EQ(lines.count("long"), 0u) << "259 characters stay regular";
  lines = host.where(source, at_limit);
  const std::string tree = "D:\\Previews\\KvnLongPath\\";
  const std::string long_line = lines["long"];
  const std::string windows = long_line.substr(long_line.find('\t') + 1);
  const std::string name = "\\mid\\b433355feaba314a9778676a6c8eb550.jpg";
  ASSERT_GT(windows.size(), tree.size() + name.size()) << long_line;
  EXPECT_EQ(windows.rfind(tree, 0), 0u) << long_line;
  EXPECT_EQ(windows.substr(windows.size() - name.size()), name) << long_line;
  const std::string serial =
      windows.substr(tree.size(), windows.size() - tree.size() - name.size());
  EXPECT_FALSE(serial.empty());
  EXPECT_EQ(serial.find('\\'), std::string::npos) << serial;
  EXPECT_EQ(long_line.substr(0, long_line.find('\t')),
            d + "/Previews/KvnLongPath/" + serial + "/mid/b433355feaba314a9778676a6c8eb550.jpg");
  EXPECT_EQ(host.where("\\\\?\\" + source, at_limit), lines) << "the same for the \\\\?\\ form";

  // Any long source: the name is the MD5 of its path without the drive, folded.
  const std::string deep = "D:\\Some\\Deeper\\Folder\\Ünïcode 图.ai";
  Md5Context md5;
  const std::string folded = "some\\deeper\\folder\\Ünïcode 图.ai";
  md5.update(folded.data(), folded.size());
  const std::string deep_long = host.where(deep, at_limit)["long"];
  EXPECT_EQ(deep_long.substr(deep_long.size() - 36), md5.hexDigest() + ".jpg");
}

TEST(WhereTest, WrongCallsAreUsageErrors) {
  HostFolder host;
  for (const std::vector<std::string>& call :
       std::vector<std::vector<std::string>>{{"config"},
                                             {"config", "get"},
                                             {"config", "set", "k"},
                                             {"config", "drop", "k"},
                                             {"config", "list", "x"},
                                             {"where", "a.psd"},
                                             {"where", "a", "b", "c"}}) {
    const RunResult r = host.pellix(call);
    EXPECT_EQ(r.status, 2) << call[0] << " with " << call.size() - 1 << " words";
    EXPECT_TRUE(has(r.err, "Try 'pellix --help'.")) << r.err;
  }
}

TEST(BadSettingsFileTest, ReadsGiveDefaultsAndWritesFailWithoutACrash) {
  struct Case {
    const char* what;
    void (*spoil)(const HostFolder&);
  } cases[] = {
      {"not SQLite",
       [](const HostFolder& h) {
         pellix_test::writeFile(h.settings().path(), std::string(3000, '\x5a'));
       }},
      {"its folder can't be made",
       [](const HostFolder& h) {
         std::filesystem::remove_all(h.home() + "/.local");
         pellix_test::writeFile(h.home() + "/.local", "a file where a folder should be");
       }},
  };
  for (const Case& c : cases) {
    HostFolder host;
    c.spoil(host);
    EXPECT_EQ(host.pellix({"config", "get", "thumb_type"}).status, 1) << "row: " << c.what;
    EXPECT_EQ(host.pellix({"config", "set", "thumb_type", "png"}).status, 1) << "row: " << c.what;
    EXPECT_EQ(host.pellix({"config", "list"}).status, 1) << "row: " << c.what;
    const RunResult where = host.pellix({"where", "C:\\a.psd", "C:\\out"});
    EXPECT_EQ(where.status, 0) << "row: " << c.what << where.err;
    EXPECT_TRUE(has(where.out, "root\t" + host.home() + "/KorvanePreview\t"))
        << "row: " << c.what << where.out;
  }
}

TEST(BadSettingsFileTest, AReadOnlyFileIsReadButNotWritten) {
  HostFolder host;
  ASSERT_EQ(host.pellix({"config", "set", "thumb_type", "png"}).status, 0);
  // Everyone may reach the host folder and read the file; nobody may write it or its folder.
  for (std::string p = host.settings().path(); p.size() > host.tmp().path().size();
       p = std::filesystem::path(p).parent_path()) {
    ::chmod(p.c_str(), std::filesystem::is_directory(p) ? 0555 : 0444);
  }
  for (const std::string& p : {host.tmp().path(), host.tmp().path() + "/host", host.bin()}) {
    ::chmod(p.c_str(), 0755);
  }
  std::vector<std::string> as_user;
  if (::geteuid() == 0) {  // permission bits don't stop root: run as an ordinary user
    as_user = {"/usr/bin/setpriv", "--reuid=65534", "--regid=65534", "--clear-groups"};
  }
  auto run = [&](std::vector<std::string> args) {
    args.insert(args.begin(), host.bin() + "/pellix");
    args.insert(args.begin(), as_user.begin(), as_user.end());
    return pellix_test::run(args, {"HOME=" + host.home(), "XDG_DATA_HOME="});
  };
  const RunResult get = run({"config", "get", "thumb_type"});
  EXPECT_EQ(get.out, "png\n") << get.err;
  EXPECT_EQ(run({"config", "set", "thumb_type", "gif"}).status, 1);
  EXPECT_EQ(host.settings().value("thumb_type"), "png");
}

}  // namespace

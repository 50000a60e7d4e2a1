// The settings table through ConfigDB and ConfigDBHelper, on real SQLite files of the tests'
// own, looked into straight through SQLite.
#include "Common/Source/config_db.h"

#include <gtest/gtest.h>

#include <filesystem>

#include "Common/Source/text_forms.h"
#include "Common/includes/sys_utils.h"
#include "testing/settings_file.h"
#include "testing/test_support.h"

namespace {

using common_hepler::ConfigDB;
using pellix_test::LogCapture;
using pellix_test::SettingsFile;
using pellix_test::SettingsRow;
using pellix_test::TempDir;
using pellix_test::windowsPath;

// A ConfigDB of the test's own over a fresh file in a temporary folder.
class ConfigDBTest : public testing::Test {
 protected:
  void SetUp() override {
    file_ = std::make_unique<SettingsFile>(tmp_.path() + "/localdata.dat");
    ASSERT_TRUE(db_.openDB(windowsPath(tmp_.path()) + L"\\localdata.dat"));
  }
  ConfigDBHelper& helper() { return *db_.getDBHelper(); }

  TempDir tmp_;
  ConfigDB db_;
  std::unique_ptr<SettingsFile> file_;
};

TEST_F(ConfigDBTest, AFreshFileGetsTheTableAndOpensAgain) {
  EXPECT_TRUE(file_->rows().empty()) << "the table is there and empty";
  ConfigDB again;
  EXPECT_TRUE(again.openDB(windowsPath(file_->path())))
      << "the second open succeeds though the table exists";
  EXPECT_TRUE(again.saveValue("k", "v"));
  std::string value;
  EXPECT_TRUE(db_.queryValue("k", value)) << "one file, two connections";
  EXPECT_EQ(value, "v");
}

TEST_F(ConfigDBTest, WritesInsertOnceThenUpdateEveryRowOfTheKey) {
  ASSERT_TRUE(db_.saveValue("thumb_type", "png"));
  ASSERT_TRUE(db_.saveValue("thumb_type", "jpg"));
  std::vector<SettingsRow> rows = file_->rows();
  ASSERT_EQ(rows.size(), 1u);
  EXPECT_FALSE(rows[0].user_id.has_value()) << "UserID stays NULL";
  EXPECT_EQ(rows[0].value, "jpg");

  file_->exec("INSERT INTO config (UserID, key, value) VALUES ('u', 'twice', 'a');"
              "INSERT INTO config (UserID, key, value) VALUES ('u', 'twice', 'b');");
  ASSERT_TRUE(db_.saveValue("twice", "c"));
  rows = file_->rows();
  ASSERT_EQ(rows.size(), 3u);
  EXPECT_EQ(rows[1].value, "c");
  EXPECT_EQ(rows[2].value, "c");
  EXPECT_EQ(rows[1].user_id, "u") << "other writers' UserID is left alone";
}

TEST_F(ConfigDBTest, TypedReadsFollowAtoiAndGiveDefaultsForWhatIsMissing) {
  file_->exec("INSERT INTO config (key, value) VALUES ('empty', '');"
              "INSERT INTO config (key, value) VALUES ('null', NULL);");
  struct Case {
    const char* text;  // nullptr: no row
    int as_int;
    bool as_bool;
  } cases[] = {
      {nullptr, 7, true}, {"abc", 0, false},  {"12abc", 12, true}, {"0", 0, false},
      {"2", 2, true},     {"true", 0, false}, {" -3", -3, true},   {"", 7, true},
  };
  for (const Case& c : cases) {
    const std::string key = c.text == nullptr ? "missing" : std::string("k_") + c.text;
    if (c.text != nullptr) {
      ASSERT_TRUE(helper().setValue(key, c.text));
    }
    EXPECT_EQ(helper().getValue(key, 7), c.as_int) << "row: " << key;
    EXPECT_EQ(helper().getValue(key, true), c.as_bool) << "row: " << key;
    EXPECT_EQ(helper().getValue(key, "dflt"), c.text == nullptr || *c.text == 0 ? "dflt" : c.text)
        << "row: " << key;
  }
  std::string value = "untouched";
  EXPECT_FALSE(db_.queryValue("missing", value));
  EXPECT_EQ(value, "untouched");
  EXPECT_TRUE(db_.queryValue("empty", value)) << "an empty text is a row";
  EXPECT_EQ(value, "");
  EXPECT_FALSE(db_.queryValue("null", value)) << "a NULL value reads as none";
  EXPECT_EQ(helper().getValue("null", 5), 5);

  ASSERT_TRUE(helper().setValue("negative", -1));
  EXPECT_EQ(file_->value("negative"), "-1");

  LogCapture log;
  EXPECT_EQ(helper().getValue("", 9), 9);
  EXPECT_EQ(log.count("ConfigDBHelper::getValue key is empty"), 1);
}

TEST_F(ConfigDBTest, DoubledApostrophesComeBackSingle) {
  ASSERT_TRUE(helper().setValue("it''s", "D:\\it''s ''quoted''"));
  EXPECT_EQ(file_->value("it's"), "D:\\it's 'quoted'");
  EXPECT_EQ(helper().getValue("it''s", ""), "D:\\it's 'quoted'");
  ASSERT_TRUE(helper().setValue("it''s", "''"));
  EXPECT_EQ(file_->rows().size(), 1u) << "the doubled key finds its row again";
  EXPECT_EQ(helper().getValue("it''s", ""), "'");
}

TEST_F(ConfigDBTest, TextsThatCouldLeaveTheirLiteralAreRefused) {
  ASSERT_TRUE(db_.saveValue("kept", "1"));
  const std::vector<SettingsRow> before = file_->rows();
  const std::string hostile = "x'; DROP TABLE config; --";
  struct Case {
    std::string key, value;
  } cases[] = {
      {hostile, "v"},
      {"k", hostile},
      {"k", "ends with one'"},
      {"k", "three'''"},
      {"k", std::string("cut\0 short'", 11)},
      {"kept') OR ('1'='1", "v"},
      {std::string(1100, 'k'), "v"},
  };
  for (const Case& c : cases) {
    LogCapture log;
    EXPECT_FALSE(db_.saveValue(c.key, c.value)) << "row: " << c.key << " = " << c.value;
    EXPECT_EQ(log.count("common_hepler::ConfigDB::saveValue refused"), 1)
        << "row: " << c.key << " = " << c.value;
    std::string value;
    EXPECT_FALSE(db_.queryValue(c.key, value)) << "row: " << c.key;
  }
  const std::vector<SettingsRow> after = file_->rows();
  ASSERT_EQ(after.size(), before.size()) << "the table is unchanged";
  EXPECT_EQ(after[0].key, "kept");
  EXPECT_EQ(after[0].value, "1");
}

TEST(ConfigDBBadFileTest, EveryReadGivesItsDefaultAndWritesFail) {
  TempDir tmp;
  const std::string not_sqlite = tmp.write("not_sqlite.dat", std::string(4096, 'x'));
  const std::string folder_as_file = tmp.write("folder_as_file", "x");
  struct Case {
    const char* what;
    std::wstring path;
    bool opens;
  } cases[] = {
      {"not a database", windowsPath(not_sqlite), true},
      {"folder can't exist", windowsPath(folder_as_file) + L"\\users\\localdata.dat", false},
      {"no drive holds it", L"Q:\\users\\localdata.dat", false},
      {"no drive letter", L"\\Korvane\\users\\localdata.dat", false},
  };
  for (const Case& c : cases) {
    ConfigDB db;
    EXPECT_EQ(db.openDB(c.path), c.opens) << "row: " << c.what;
    ConfigDBHelper& helper = *db.getDBHelper();
    EXPECT_EQ(helper.getValue("thumb_type", "jpg"), "jpg") << "row: " << c.what;
    EXPECT_EQ(helper.getValue("easy_psd_max_size", 100), 100) << "row: " << c.what;
    EXPECT_FALSE(helper.setValue("thumb_type", "png")) << "row: " << c.what;
    std::vector<std::pair<std::string, std::string>> rows;
    EXPECT_FALSE(db.listValues(rows)) << "row: " << c.what;
  }
  EXPECT_EQ(pellix_test::readFile(not_sqlite), std::string(4096, 'x')) << "left as it was";
}

TEST(ConfigDBHelperTest, WithoutAConfigDBEveryCallSaysSo) {
  ConfigDBHelper helper(nullptr);
  LogCapture log;
  EXPECT_EQ(helper.getValue("thumb_type", "jpg"), "jpg");
  EXPECT_FALSE(helper.setValue("thumb_type", 3));
  EXPECT_EQ(log.count("ConfigDBHelper::checkDB db_ is null"), 2);
}

TEST(DiskWriteTestTest, TestsTheDriveOfWhatItIsGiven) {
  pellix_test::useOwnHome();  // C: is this process's own home folder
  for (const wchar_t* disk : {L"C", L"C:", L"C:\\some\\longer\\path"}) {
    LogCapture log;
    EXPECT_TRUE(SystemUtils::isDiskRW_OK(disk)) << wsToUtf8(disk);
    EXPECT_EQ(log.count("FileCommUtils::deleteFolder del_folder:C:\\tmp_kvn_"), 1)
        << wsToUtf8(disk);
  }
  EXPECT_FALSE(SystemUtils::isDiskRW_OK(L"Q:"));
  LogCapture log;
  EXPECT_FALSE(SystemUtils::isDiskRW_OK(L""));
  EXPECT_EQ(log.count("SystemUtils::isDiskRW_OK disk_root is empty"), 1);
  EXPECT_FALSE(ConfigDB().setThumbFileBasePath("test", L""));
  EXPECT_EQ(log.lines().size(), 1u) << "an empty root changes nothing and logs nothing";
}

TEST(SplitByCommaTest, LeavesOutEmptyPieces) {
  using V = std::vector<std::string>;
  struct Case {
    const char* text;
    V pieces;
  } cases[] = {
      {"", {}},
      {",", {}},
      {"a", {"a"}},
      {"a,,b", {"a", "b"}},
      {",a,", {"a"}},
      {"2001, 2002", {"2001", " 2002"}},
      {"2001,2002,", {"2001", "2002"}},
  };
  for (const Case& c : cases) {
    EXPECT_EQ(common_hepler::splitByComma(c.text), c.pieces) << "row: " << c.text;
  }
}

}  // namespace

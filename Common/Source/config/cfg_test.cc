// The settings caches over real settings files: defaults, conversions, what is read once and
// what at each call, and what gets written.
#include <gtest/gtest.h>

#include <set>
#include <thread>

#include "Common/Source/config/cfg_scan.h"
#include "Common/Source/config/cfg_serv.h"
#include "Common/Source/config/cfg_ui.h"
#include "Common/Source/config_db.h"
#include "Common/includes/config_key_names.h"
#include "testing/settings_file.h"
#include "testing/test_support.h"

namespace {

using common_hepler::ConfigDB;
using pellix_test::LogCapture;
using pellix_test::SettingsFile;
using pellix_test::TempDir;

class CfgTest : public testing::Test {
 protected:
  void SetUp() override {
    file_ = std::make_unique<SettingsFile>(tmp_.path() + "/localdata.dat");
    file_->createWithHistory();
    ASSERT_TRUE(db_.openDB(pellix_test::windowsPath(file_->path())));
  }
  void set(const std::string& key, const std::string& value) {
    ASSERT_TRUE(db_.saveValue(key, value));
  }

  TempDir tmp_;
  ConfigDB db_;
  std::unique_ptr<SettingsFile> file_;
};

TEST(ParseOrZeroTest, OnlyWholeNumbersOfTheirFormCount) {
  struct IntCase {
    const char* text;
    int64_t value;
  } ints[] = {
      {"0", 0},     {"220", 220}, {"007", 7}, {"123456789012345678", 123456789012345678},
      {"1234567890123456789", 0}, {"-1", 0},  {"+1", 0}, {" 1", 0}, {"1 ", 0},
      {"1e2", 0},   {"", 0},      {"abc", 0}, {"12abc", 0},
  };
  for (const IntCase& c : ints) EXPECT_EQ(parseIntOrZero(c.text), c.value) << "row: " << c.text;
  struct FloatCase {
    const char* text;
    float value;
  } floats[] = {
      {"0.95", 0.95f}, {".5", 0.5f}, {"+.5e1", 5.0f}, {"-2.", -2.0f}, {"1e2", 100.0f},
      {"1e99", 0.0f},  {"1e-99", 0.0f}, {".", 0.0f},  {"e5", 0.0f},   {"0x10", 0.0f},
      {"nan", 0.0f},   {"inf", 0.0f}, {"1,5", 0.0f}, {"", 0.0f},     {" 1", 0.0f},
  };
  for (const FloatCase& c : floats) {
    EXPECT_FLOAT_EQ(parseFloatOrZero(c.text), c.value) << "row: " << c.text;
  }
}

TEST(AlphaWhitePngCfgTest, FourPiecesOrTheBuiltInRecord) {
  struct Case {
    const char* text;
    int mode, second, third;
    float fourth;
  } cases[] = {
      {"1,220,15,0.95", 1, 220, 15, 0.95f},
      {"0,255,1e2,.5", 0, 255, 0, 0.5f},
      {"2,abc,3,0.5", 2, 0, 3, 0.5f},
      {"2,10,3,0.5,", 2, 10, 3, 0.5f},
      {"2,,3,0.5", 2, 0, 3, 0.5f},
      {"2,10,3", 1, 220, 15, 0.95f},
      {"2,10,3,0.5,9", 1, 220, 15, 0.95f},
      {"2,10,3,0.5,,", 1, 220, 15, 0.95f},
      {"", 1, 220, 15, 0.95f},
      {",,,", 1, 220, 15, 0.95f},
      {",,,,", 0, 0, 0, 0.0f},
  };
  for (const Case& c : cases) {
    const AlphaWhitePngCfg cfg = parseAlphaWhitePngCfg(c.text);
    EXPECT_EQ(cfg.mode, c.mode) << "row: " << c.text;
    EXPECT_EQ(cfg.second, c.second) << "row: " << c.text;
    EXPECT_EQ(cfg.third, c.third) << "row: " << c.text;
    EXPECT_FLOAT_EQ(cfg.fourth, c.fourth) << "row: " << c.text;
  }
}

TEST_F(CfgTest, ScanSettingsOnAnEmptyTable) {
  LogCapture log;
  CfgScan scan(db_.getDBHelper());
  EXPECT_FALSE(scan.getShowUnscannedFileType());
  const std::string list = scan.getAllTypeForImg();
  EXPECT_EQ(list.size(), 349u);
  EXPECT_EQ(list.substr(0, 11), "ai;art;bmp;");
  EXPECT_EQ(list.substr(list.size() - 15), ";docx;pptx;xlsx");
  EXPECT_EQ(log.count("CfgScan::getAllTypeForImg all_type_for_img_ is null"), 1);
  EXPECT_EQ(scan.getOpencvTyp(), "jpg,jpeg,bmp,png,jfif,webp");
  EXPECT_EQ(scan.getEasyPsdMaxSize(), 100);
  EXPECT_EQ(scan.getJcPath(), "");
  EXPECT_EQ(scan.getInkPluginPath(), "");
  EXPECT_TRUE(file_->rows().empty()) << "reading writes nothing";
}

TEST_F(CfgTest, ScanSettingsReadTheTable) {
  set("show_unscanned_file_type", "1");
  set("all_type_for_img", "png;jpg");
  set("easy_psd_max_size", "");
  CfgScan scan(db_.getDBHelper());
  EXPECT_TRUE(scan.getShowUnscannedFileType());
  EXPECT_EQ(scan.getEasyPsdMaxSize(), 100) << "an empty text is the default";
  set("easy_psd_max_size", "0");
  set("opencv_typ", "png");
  set("all_type_for_img", "gif");
  EXPECT_EQ(scan.getEasyPsdMaxSize(), 0) << "read at each call";
  EXPECT_EQ(scan.getOpencvTyp(), "png");
  EXPECT_EQ(scan.getAllTypeForImg(), "png;jpg") << "read once, at construction";
  EXPECT_TRUE(scan.setJcPath("D:\\JC\\ex9000.exe"));
  EXPECT_EQ(scan.getJcPath(), "D:\\JC\\ex9000.exe");
  EXPECT_EQ(file_->value("cfg_jc_path"), "D:\\JC\\ex9000.exe");
}

TEST_F(CfgTest, AlphaWhitePngCfgIsReadOnceAProcess) {
  set("alpha_white_png_cfg", "0,255,1e2,.5");
  CfgScan scan(db_.getDBHelper());
  const AlphaWhitePngCfg& first = scan.getAlphaWhitePngCfg();
  EXPECT_EQ(first.mode, 0);
  EXPECT_EQ(first.second, 255);
  EXPECT_EQ(first.third, 0);
  EXPECT_FLOAT_EQ(first.fourth, 0.5f);
  set("alpha_white_png_cfg", "3,3,3,3");
  EXPECT_EQ(&scan.getAlphaWhitePngCfg(), &first);
  EXPECT_EQ(scan.getAlphaWhitePngCfg().mode, 0) << "a later change isn't seen";
}

TEST_F(CfgTest, UiSettingsAndTheDiskFlag) {
  CfgUI fresh(db_.getDBHelper());
  EXPECT_EQ(fresh.getFeaAllGotNotifySwitch(), 1);
  EXPECT_EQ(fresh.getUiHideJsn(), "");
  EXPECT_EQ(fresh.getDiskRwFlag(), 0);
  set("fea_all_got_notify_switch", "0");
  set("ui_hide_jsn", "{\"a\":1}");
  CfgUI ui(db_.getDBHelper());
  EXPECT_EQ(ui.getFeaAllGotNotifySwitch(), 0);
  EXPECT_EQ(ui.getUiHideJsn(), "{\"a\":1}");
  EXPECT_TRUE(ui.setDiskRwFlag(1));
  EXPECT_TRUE(ui.setDiskRwFlag(2));
  EXPECT_EQ(fresh.getDiskRwFlag(), 2);
  EXPECT_EQ(file_->value("disk_rw_flag"), "2");
}

TEST_F(CfgTest, OnlyAChangeOfPortIsWritten) {
  CfgServ serv(db_.getDBHelper());
  serv.setMetaSrvGoodPort(-1);
  serv.setMetaSrvGoodPort(2003);
  serv.setMetaSrvGoodPort(2003);
  serv.setMetaSrvGoodPort(2005);
  const std::vector<std::pair<std::string, std::string>> expected = {
      {"meta_srv_good_port", "2003"}, {"meta_srv_good_port", "2005"}};
  EXPECT_EQ(file_->history(), expected);
}

TEST(CfgNullHelperTest, EachCacheSaysSoAndGivesDefaults) {
  LogCapture log;
  CfgServ serv(nullptr);
  CfgScan scan(nullptr);
  CfgUI ui(nullptr);
  EXPECT_EQ(log.count("CfgServ::CfgServ db_helper is null"), 1);
  EXPECT_EQ(log.count("CfgScan::CfgScan db_helper is null"), 1);
  EXPECT_EQ(log.count("CfgUI::CfgUI db_helper is null"), 1);
  serv.setMetaSrvGoodPort(2001);
  EXPECT_EQ(scan.getEasyPsdMaxSize(), 100);
  EXPECT_EQ(scan.getAllTypeForImg().size(), 349u);
  EXPECT_FALSE(ui.setDiskRwFlag(1));
  EXPECT_EQ(ui.getFeaAllGotNotifySwitch(), 1);
}

TEST_F(CfgTest, ConfigDBMakesEachCacheOnceAndReadsThumbTypeOnce) {
  EXPECT_EQ(db_.getThumbType(), L"jpg");
  set("thumb_type", "png");
  EXPECT_EQ(db_.getThumbType(), L"jpg") << "a changed row isn't seen by a running process";
  EXPECT_EQ(db_.getScanCfg(), db_.getScanCfg());
  EXPECT_EQ(db_.getServCfg(), db_.getServCfg());
  EXPECT_EQ(db_.getUICfg(), db_.getUICfg());
  EXPECT_EQ(db_.getScanCfg()->db_helper, db_.getDBHelper());
}

TEST(ConfigDBInstanceTest, ThreadsArrivingTogetherGetOneObjectOverTheUsersFile) {
  const std::string home = pellix_test::useOwnHome();
  std::vector<std::shared_ptr<ConfigDB>> got(8);
  std::vector<std::thread> threads;
  for (size_t i = 0; i < got.size(); ++i) {
    threads.emplace_back([&got, i] { got[i] = ConfigDB::getInstance(); });
  }
  for (std::thread& t : threads) t.join();
  for (const auto& db : got) EXPECT_EQ(db, got[0]);
  ASSERT_TRUE(got[0]->saveValue("thumb_type", "png"));
  const SettingsFile file(home + "/.local/share/Korvane/users/localdata.dat");
  EXPECT_EQ(file.value("thumb_type"), "png");
}

TEST(ConfigKeyNamesTest, EveryNameStandsOnceAndSpellsItsConstant) {
  std::set<std::string> seen;
  for (const char* name : cfg_names::kAllNames) {
    EXPECT_TRUE(seen.insert(name).second) << "twice: " << name;
  }
  EXPECT_EQ(seen.size(), std::size(cfg_names::kAllNames));
  // Misspelt names are the table's format; other modules look for exactly these rows.
  for (const char* name : {"compnay_send_dead_timeout", "company_serach_pirce_range",
                           "trade_upload_expired_lenght_sec", "trans_progrss_chk_edge",
                           "local_serach_cfg", "euclidean_istance", "indentify_ok",
                           "album_sync_clcle", "processe_autostart", "img_compress_levl",
                           "opencv_typ", "kvn3.3_clk", "_cutsome.jpg"}) {
    EXPECT_EQ(seen.count(name), 1u) << name;
  }
}

}  // namespace

// A program of its own, since it sets SQLite's threading mode for the whole process before
// the library starts: a library switched to multi-threaded mode can't share the one
// connection, so ConfigDB refuses to open and every read gives its default.
#include <gtest/gtest.h>
#include <sqlite3.h>

#include "Common/Source/config_db.h"
#include "testing/test_support.h"

namespace {

TEST(ConfigDBThreadingTest, AConnectionThatIsNotSerialisedIsRefused) {
  ASSERT_EQ(sqlite3_config(SQLITE_CONFIG_MULTITHREAD), SQLITE_OK)
      << "must run before anything starts SQLite";
  pellix_test::TempDir tmp;
  pellix_test::LogCapture log;
  common_hepler::ConfigDB db;
  EXPECT_FALSE(db.openDB(pellix_test::windowsPath(tmp.path()) + L"\\localdata.dat"));
  EXPECT_EQ(log.count("common_hepler::ConfigDB::openDB sqlite is not in serialized mode"), 1);
  EXPECT_FALSE(db.getDBHelper()->setValue("thumb_type", "png"));
  EXPECT_EQ(db.getDBHelper()->getValue("thumb_type", "jpg"), "jpg");
}

}  // namespace

// Replacing a file through a temporary name: the new content arrives whole, and a failed
// write leaves neither a stray file nor damage.
#include "Common/Source/file_replace.h"

#include <gtest/gtest.h>

#include <filesystem>

#include "testing/test_support.h"

namespace {

using pellix_test::TempDir;
using pellix_test::windowsPath;

size_t entriesIn(const std::string& dir) {
  return static_cast<size_t>(std::distance(std::filesystem::directory_iterator(dir),
                                           std::filesystem::directory_iterator()));
}

TEST(FileReplaceTest, ReplacesWholeAndLeavesNothingBehind) {
  TempDir tmp;
  const std::wstring path = windowsPath(tmp.path()) + L"\\preview.jpg";
  ASSERT_TRUE(replaceFileContent(path, "first").ok());
  ASSERT_TRUE(replaceFileContent(path, std::string("second\0bytes", 12)).ok());
  EXPECT_EQ(pellix_test::readFile(tmp.path() + "/preview.jpg"), std::string("second\0bytes", 12));
  EXPECT_EQ(entriesIn(tmp.path()), 1u) << "no temporary file left";

  const platform::Status s = replaceFileContent(windowsPath(tmp.path()) + L"\\none\\x.jpg", "x");
  EXPECT_EQ(s.kind, platform::ErrorKind::kNotFound);
  tmp.mkdir("taken.jpg");
  EXPECT_FALSE(replaceFileContent(windowsPath(tmp.path()) + L"\\taken.jpg", "x").ok());
  EXPECT_EQ(entriesIn(tmp.path()), 2u) << "the failed rename took its temporary file away";
}

}  // namespace

#include "errors/error_table.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <set>

namespace errors {
namespace {

int indexOf(int code) {
  const auto& t = errorTable();
  for (size_t i = 0; i < t.size(); ++i) {
    if (t[i].code == code) return static_cast<int>(i);
  }
  return -1;
}

TEST(ErrorTableTest, HasEveryRowInItsOwnOrder) {
  const auto& t = errorTable();
  ASSERT_EQ(t.size(), 773u);
  EXPECT_EQ(t[0].code, 1001);
  EXPECT_EQ(t[1].code, 1002);
  EXPECT_EQ(t[2].code, 1000);
  EXPECT_EQ(t.back().code, -1);
  EXPECT_EQ(indexOf(2081), indexOf(1011) + 1);
  EXPECT_EQ(indexOf(1012), indexOf(2081) + 1);
  std::multiset<int> codes;
  for (const ErrorRow& row : t) codes.insert(row.code);
  EXPECT_EQ(codes.count(6001), 2u);
  EXPECT_EQ(std::set<int>(codes.begin(), codes.end()).size(), 772u) << "6001 alone stands twice";
  // Apart from the rows placed by hand, the codes rise.
  std::vector<int> rest;
  for (size_t i = 3; i + 1 < t.size(); ++i) {
    if (t[i].code != 2081) rest.push_back(t[i].code);
  }
  EXPECT_TRUE(std::is_sorted(rest.begin(), rest.end()));
}

TEST(ErrorTableTest, KnownEmptyAndUnknownMessagesDiffer) {
  for (int code : {3800, 6216, 8801, 8802}) {
    ErrorLookup found = lookupError(code);
    EXPECT_EQ(found.kind, ErrorLookup::Kind::kMessage) << "row: " << code;
    EXPECT_TRUE(found.message.empty()) << "row: " << code;
  }
  EXPECT_EQ(lookupError(2081).kind, ErrorLookup::Kind::kNoKnownMessage);
  EXPECT_EQ(lookupError(0).kind, ErrorLookup::Kind::kNotInTable);
  EXPECT_EQ(lookupError(2214).kind, ErrorLookup::Kind::kNotInTable);
  int empty = 0;
  for (const ErrorRow& row : errorTable()) empty += row.has_known_message && row.message.empty();
  EXPECT_EQ(empty, 4);
}

TEST(ErrorTableTest, MessagesOfTheKernelsCodes) {
  EXPECT_EQ(lookupError(2201).message, L"原文件不存在，请重新扫描");
  EXPECT_EQ(lookupError(-1).message, L"未知错误");
  EXPECT_EQ(lookupError(1001).message, L"未知错误");
  EXPECT_EQ(lookupError(6001).message, L"请设置交易文件夹后，再尝试");
  EXPECT_EQ(errorTable()[static_cast<size_t>(indexOf(6001)) + 1].message,
            L"请确保设置了交易文件夹的价格，交易方式，交易类型后，再尝试");
  EXPECT_NE(lookupError(2229).message.find(L"预览图无法生成"), std::wstring::npos);
}

TEST(ErrorTableTest, ComposedMessagesAreComposedAtLoad) {
  EXPECT_EQ(lookupError(2405).message, L"图片尺寸太小，高和宽不要小于8像素");
  EXPECT_EQ(lookupError(7017).message, lookupError(2405).message);
  EXPECT_EQ(lookupError(6008).message,
            L"关联失败，预览图文件只能为：png;jpg;jpeg;gif;bmp;tiff;tif，请确认");
  EXPECT_EQ(lookupError(6012).message, L"无法显示大于 1 M的图片,请重新扫描生成预览图");
  const std::wstring internal =
      L"内部严重错误，请报告给support@korvane.example帮助我们改进，谢谢！";
  for (int code = 1005; code <= 1009; ++code) EXPECT_EQ(lookupError(code).message, internal);
  EXPECT_EQ(lookupError(2225).message,
            L"预览图保存路径未指定，请报告给support@korvane.example帮助我们改进，谢谢！");
}

}  // namespace
}  // namespace errors

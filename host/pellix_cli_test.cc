// The host program as a user runs it: the staged pellix, real files, its output and status.
#include <sys/stat.h>
#include <unistd.h>

#include <gtest/gtest.h>

#include "host/json_text.h"
#include "testing/test_support.h"

namespace {

using pellix_test::run;
using pellix_test::RunResult;
using pellix_test::TempDir;

RunResult pellix(std::vector<std::string> args) {
  args.insert(args.begin(), pellix_test::stageBin() + "/pellix");
  return run(args);
}

TEST(PellixCliTest, SniffPrintsTypeTabPath) {
  TempDir tmp;
  const std::string pdf = tmp.write("a.pdf", "%PDF-1.4\n1 0 obj\n");
  const std::string unknown = tmp.write("b.xyz", "text");
  const RunResult r = pellix({"sniff", pdf, unknown, tmp.path() + "/missing.jpg"});
  EXPECT_EQ(r.status, 0) << r.err;
  EXPECT_EQ(r.out, "6\t" + pdf + "\n0\t" + unknown + "\n14\t" + tmp.path() + "/missing.jpg\n");
}

TEST(PellixCliTest, PreviewJsonGivesEachFileItsCode) {
  TempDir tmp;
  const std::string unknown = tmp.write("in/notes.xyz", "plain text");
  const std::string no_ext = tmp.write("in/README", "plain text");
  const std::string missing = tmp.path() + "/in/missing.jpg";
  const RunResult r = pellix({"preview", "--json", "-o", tmp.path() + "/out", missing,
                              tmp.path() + "/in"});
  EXPECT_EQ(r.status, 1) << r.err;
  EXPECT_EQ(r.out,
            "{\"src\":\"" + missing + "\",\"code\":2201,\"message\":\"原文件不存在，请重新扫描\","
            "\"previews\":[]}\n"
            "{\"src\":\"" + no_ext + "\",\"code\":2228,\"message\":"
            "\"文件没有后缀名，请指定后缀名后，再重新扫描\",\"previews\":[]}\n"
            "{\"src\":\"" + unknown + "\",\"code\":2001,\"message\":" +
                jsonString("未识别出文件格式，若有运行加密软件，请授权Korvane读取加密文件的权限，"
                           "并【查看异常文件】->【一键清理】后，再扫描") +
                ",\"previews\":[]}\n");
  EXPECT_NE(r.err.find("3 of 3 files, 0 with previews, 3 failed"), std::string::npos) << r.err;
}

TEST(PellixCliTest, OddNamesComeBackIntactAndAsValidJson) {
  TempDir tmp;
  const std::string odd = tmp.write("bad\xFF name \"quoted\" $(x);.xyz", "text");
  const RunResult r = pellix({"preview", "--json", "-o", tmp.path(), odd});
  EXPECT_EQ(r.status, 1);
  EXPECT_EQ(r.out, "{\"src\":" + jsonString(odd) + ",\"code\":2001,\"message\":" +
                       jsonString("未识别出文件格式，若有运行加密软件，请授权Korvane读取加密文件的"
                                  "权限，并【查看异常文件】->【一键清理】后，再扫描") +
                       ",\"previews\":[]}\n");
  EXPECT_NE(r.out.find("bad\\u00ff name \\\"quoted\\\""), std::string::npos) << r.out;
}

TEST(PellixCliTest, AnUnreadableDocumentIsJudgedByItsNameAlone) {
  TempDir tmp;
  ::chmod(tmp.path().c_str(), 0755);
  const std::string pdf = tmp.write("locked.pdf", "%PDF-1.4\n1 0 obj\n");
  ::chmod(pdf.c_str(), 0);
  std::vector<std::string> args = {pellix_test::stageBin() + "/pellix", "preview", "--json",
                                   "-o", tmp.path(), pdf};
  // As root every file can be read; the check runs as an ordinary user then.
  if (::geteuid() == 0) {
    args.insert(args.begin(), {"/usr/bin/setpriv", "--reuid=65534", "--regid=65534",
                               "--clear-groups"});
  }
  const RunResult r = run(args);
  EXPECT_EQ(r.status, 1) << r.err;
  EXPECT_NE(r.out.find("\"code\":2001"), std::string::npos) << r.out << r.err;
}

TEST(PellixCliTest, OverLongAndEmptyPathsGetCodesNotCrashes) {
  TempDir tmp;
  const std::string too_long = tmp.path() + "/" + std::string(5000, 'a') + ".jpg";
  const std::string empty = tmp.write("empty.xyz", "");
  const RunResult r = pellix({"preview", "--json", "-o", tmp.path(), too_long, empty});
  EXPECT_EQ(r.status, 1) << r.err;
  EXPECT_NE(r.out.find("\"code\":2201"), std::string::npos) << r.out;
  EXPECT_NE(r.out.find("empty.xyz\",\"code\":2001"), std::string::npos) << r.out;
  EXPECT_NE(r.err.find("2 of 2 files"), std::string::npos) << r.err;
}

TEST(PellixCliTest, ErrorsPrintsMessagesAndTheTable) {
  RunResult r = pellix({"errors", "2229", "2081", "12345"});
  EXPECT_EQ(r.status, 1) << "a code outside the table";
  EXPECT_EQ(r.out,
            "2229\t预览图无法生成，若有运行加密软件，请授权Korvane读取加密文件的权限后，并【查看异常"
            "文件】->【一键清理】后，再扫描；否则请忽略该文件\n2081\t(no known message)\n"
            "12345\t(not in the table)\n");
  r = pellix({"errors"});
  EXPECT_EQ(r.status, 0);
  EXPECT_EQ(std::count(r.out.begin(), r.out.end(), '\n'), 773);
  EXPECT_EQ(r.out.rfind("1001\t未知错误\n", 0), 0u);
}

TEST(PellixCliTest, WrongCallsAreUsageErrors) {
  EXPECT_EQ(pellix({"--help"}).status, 0);
  EXPECT_NE(pellix({"--help"}).out.find("usage: pellix"), std::string::npos);
  for (const std::vector<std::string>& call : std::vector<std::vector<std::string>>{
           {}, {"nonsense"}, {"--bogus", "sniff"}, {"sniff"}, {"preview", "a.jpg"},
           {"preview", "-o", "/tmp"}, {"preview", "-s", "0x10", "-o", "/tmp", "a.jpg"},
           {"preview", "-s", "10by10", "-o", "/tmp", "a.jpg"}, {"errors", "12x"}}) {
    const RunResult r = pellix(call);
    EXPECT_EQ(r.status, 2) << "call: " << (call.empty() ? "" : call[0]);
    EXPECT_NE(r.err.find("Try 'pellix --help'."), std::string::npos) << r.err;
  }
}

}  // namespace

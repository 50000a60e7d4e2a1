// Runs after every test that starts converters: none of the converters of this build may be
// left running, nor a real gs or gm that one of them started.
#include <gtest/gtest.h>
#include <unistd.h>

#include <climits>
#include <cstdlib>
#include <filesystem>
#include <string>

#include "Common/Source/text_forms.h"
#include "platform/env.h"
#include "testing/test_support.h"

namespace {

// The program file of a process, or empty.
std::string programOf(long long pid) {
  char target[PATH_MAX] = {};
  const std::string link = "/proc/" + std::to_string(pid) + "/exe";
  const ssize_t n = ::readlink(link.c_str(), target, sizeof(target) - 1);
  return n > 0 ? std::string(target, static_cast<size_t>(n)) : std::string();
}

TEST(NoConverterLeftTest, NoneOfTheStagedConvertersRuns) {
  const std::string utils = pellix_test::stageBin() + "/Utils/";
  const std::string tests =
      std::filesystem::weakly_canonical(pellix_test::stageBin() + "/../../tests").string() + "/";
  for (const platform::ProcessEntry& p : platform::Env::Default()->ListProcesses()) {
    const std::string program = programOf(p.id);
    EXPECT_NE(program.compare(0, utils.size(), utils), 0)
        << "still running: " << program << " (" << p.id << ")";
    // A tool that outlived its converter works on the tests' folders and has a parent that
    // is no converter any more. Tests also run gs and gm themselves to make their fixtures:
    // those have a test program of this build as their parent.
    const std::string name = wsToUtf8(p.program_name);
    if (name == "gs" || name == "gm") {
      const std::string dir = "/proc/" + std::to_string(p.id);
      const std::string args = pellix_test::readFile(dir + "/cmdline");
      const std::string stat = pellix_test::readFile(dir + "/stat");
      const long long parent = std::atoll(stat.c_str() + stat.rfind(')') + 4);
      const std::string parent_name = programOf(parent);
      const bool orphan = parent_name.find("/gm.exe") == std::string::npos &&
                          parent_name.find("/gswin32c.exe") == std::string::npos &&
                          parent_name.compare(0, tests.size(), tests) != 0;
      EXPECT_FALSE(orphan && args.find("/pellix-test-") != std::string::npos)
          << "a " << name << " of the tests outlived its converter (" << p.id << ")";
    }
  }
}

}  // namespace

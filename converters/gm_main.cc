// gm.exe: GraphicsMagick under the name the kernel starts it by. The options pass to the
// real `gm` unchanged; every argument that is a Windows path on a drive is mapped through the
// drive table first.
#include <string>
#include <vector>

#include "converters/converter_support.h"

namespace {
constexpr char kProgram[] = "gm.exe";
}  // namespace

int main(int argc, char** argv) {
  std::vector<std::string> args;
  for (int i = 1; i < argc; ++i) {
    std::string arg = argv[i];
    if (converters::isDrivePath(arg)) {
      std::string posix;
      if (!converters::mapPath(arg, &posix)) {
        return converters::fail(kProgram, "no drive holds " + arg, converters::kExitBadCommandLine);
      }
      arg = posix;
    }
    args.push_back(arg);
  }
  const int status = converters::runTool(kProgram, "gm", args);
  return status < 0 ? converters::kExitFailed : status;
}

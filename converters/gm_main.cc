// gm.exe: GraphicsMagick under the name the kernel starts it by. The options pass to the
// real `gm` unchanged; every argument that is a Windows path on a drive is mapped through the
// drive table first. The picture a `convert` writes goes to a temporary name beside its own
// and is renamed only when gm succeeded, so a failed conversion never leaves a half-written
// or empty file where the kernel looks for its preview.
#include <unistd.h>

#include <cstdio>
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
  std::string final_output;
  if (args.size() > 2 && args.front() == "convert") {
    // The temporary name keeps the extension, by which gm chooses the format.
    final_output = args.back();
    const size_t slash = final_output.rfind('/');
    args.back() = final_output.substr(0, slash + 1) + ".gm-" + std::to_string(::getpid()) + "-" +
                  final_output.substr(slash + 1);
  }
  const int status = converters::runTool(kProgram, "gm", args);
  if (!final_output.empty()) {
    if (status == 0 && std::rename(args.back().c_str(), final_output.c_str()) == 0) return 0;
    std::remove(args.back().c_str());
  }
  return status < 0 ? converters::kExitFailed : status;
}

// pellix zoom SRC WxH OUT and pellix cut SRC LEFT TOP RIGHT BOTTOM VIEWMAX OUT: the kernel's
// zoomJpg and cutImage on one file each. Each prints the code, the output and the message.
#include <cerrno>
#include <cmath>
#include <cstdio>
#include <cstdlib>

#include "Common/Source/text_forms.h"
#include "host/commands.h"
#include "host/host_paths.h"
#include "host/kernel_module.h"

namespace {

// A whole word as a float or an int; false for anything else.
bool parseFloat(const std::string& text, float* value) {
  char* end = nullptr;
  errno = 0;
  *value = std::strtof(text.c_str(), &end);
  return !text.empty() && *end == '\0' && errno == 0 && std::isfinite(*value);
}

bool parseInt(const std::string& text, int* value) {
  char* end = nullptr;
  errno = 0;
  const long v = std::strtol(text.c_str(), &end, 10);
  if (text.empty() || *end != '\0' || errno != 0 || v < INT32_MIN || v > INT32_MAX) return false;
  *value = static_cast<int>(v);
  return true;
}

// The kernel, or null after telling why.
IPellix* openKernel(KernelModule& module) {
  std::string error;
  if (module.open(&error)) return module.kernel();
  std::fprintf(stderr, "pellix: %s\n", error.c_str());
  return nullptr;
}

int printResult(int code, const std::string& out) {
  std::printf("%d\t%s%s%s\n", code, out.c_str(), code ? "\t" : "", messageOf(code).c_str());
  return code == 0 ? kExitOk : kExitFailed;
}

}  // namespace

int runZoom(const Args& args) {
  if (args.size() != 3) return usageError("zoom wants SRC WxH OUT");
  std::wstring src, out;
  uint32_t width = 0, height = 0;
  if (!kernelPathOfArgument(args[0], &src)) return usageError("no drive holds " + args[0]);
  if (!parseSize(args[1], &width, &height)) return usageError("zoom wants WIDTHxHEIGHT");
  if (!kernelPathOfArgument(args[2], &out)) return usageError("no drive holds " + args[2]);
  KernelModule module;
  IPellix* kernel = openKernel(module);
  if (kernel == nullptr) return kExitFailed;
  return printResult(kernel->zoomJpg(src, width, height, out), args[2]);
}

int runCut(const Args& args) {
  if (args.size() != 7) return usageError("cut wants SRC LEFT TOP RIGHT BOTTOM VIEWMAX OUT");
  std::wstring src, out;
  ImageRange range{};
  int view_max = 0;
  if (!kernelPathOfArgument(args[0], &src)) return usageError("no drive holds " + args[0]);
  if (!parseFloat(args[1], &range.left) || !parseFloat(args[2], &range.top) ||
      !parseFloat(args[3], &range.right) || !parseFloat(args[4], &range.bottom)) {
    return usageError("cut wants LEFT TOP RIGHT BOTTOM as numbers");
  }
  if (!parseInt(args[5], &view_max)) return usageError("cut wants VIEWMAX as a whole number");
  if (!kernelPathOfArgument(args[6], &out)) return usageError("no drive holds " + args[6]);
  KernelModule module;
  IPellix* kernel = openKernel(module);
  if (kernel == nullptr) return kExitFailed;
  // The cut takes narrow paths, in the form the platform's narrow file calls read.
  const int code = kernel->cutImage(CodeConv::ws2s(src), std::make_shared<ImageRange>(range),
                                    CodeConv::ws2s(out), view_max);
  return printResult(code, args[6]);
}

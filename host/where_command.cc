// pellix where SRC DIR: where the previews of SRC for the folder DIR go, worked out as the
// kernel works them out: the preview root, the regular preview, and the preview in the
// long-path tree when the regular path reaches the path limit.
#include <cstdio>

#include "Common/Source/FileCheckUtils.h"
#include "Common/Source/ThumbNailCommUtils.h"
#include "Common/Source/config_db.h"
#include "Common/Source/text_forms.h"
#include "host/commands.h"
#include "host/host_paths.h"

namespace {

// One line: what the path is, its POSIX form, and the Windows form the kernel holds.
void printPath(const char* kind, const std::wstring& path) {
  std::printf("%s\t%s\t%s\n", kind, fromKernelPath(path).c_str(), wsToUtf8(path).c_str());
}

}  // namespace

int runWhere(const Args& args) {
  if (args.size() != 2) return usageError("where wants SRC DIR");
  std::wstring source, folder;
  if (!kernelPathOfArgument(args[0], &source)) return usageError("no drive holds " + args[0]);
  if (!kernelPathOfArgument(args[1], &folder)) return usageError("no drive holds " + args[1]);
  const std::wstring root = common_hepler::ConfigDB::getInstance()->getThumbFileBasePath();
  printPath("root", root);
  const std::wstring regular = ThumbNailCommUtils::getThumbPath(source, folder);
  printPath("regular", regular);
  if (regular.size() < kPathLimit) return kExitOk;
  const std::wstring long_path = ThumbNailCommUtils::getLongPathThumb(source);
  if (!ThumbNailCommUtils::isLongPathThumb(long_path)) {
    std::fprintf(stderr, "pellix: no preview in the long-path tree for %s\n", args[0].c_str());
    return kExitFailed;
  }
  printPath("long", long_path);
  return kExitOk;
}

// pellix sniff PATH...: the type number of each file, as the kernel identifies it.
#include <cstdio>

#include "PellixKernel/file_type_sniff.h"
#include "host/commands.h"
#include "host/host_paths.h"

int runSniff(const Args& args) {
  if (args.empty()) return usageError("sniff needs at least one PATH");
  for (const std::string& path : args) {
    std::wstring windows;
    const int type = toKernelPath(path, &windows) ? sniffFileType(windows) : 0;
    std::printf("%d\t%s\n", type, path.c_str());
  }
  return kExitOk;
}

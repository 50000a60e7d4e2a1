// pellix stop-tools: ends the converters that document previews left running. Exit status 0
// when neither the preview server nor the JC program was running, 1 otherwise.
#include <cstdio>

#include "host/commands.h"
#include "host/kernel_module.h"

int runStopTools(const Args& args) {
  if (!args.empty()) return usageError("stop-tools takes no arguments");
  KernelModule module;
  std::string load_error;
  if (!module.open(&load_error)) {
    std::fprintf(stderr, "pellix: %s\n", load_error.c_str());
    return kExitFailed;
  }
  if (module.kernel()->stopTools()) return kExitOk;
  std::fprintf(stderr, "pellix: the preview server or the JC program was running\n");
  return kExitFailed;
}

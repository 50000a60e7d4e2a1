#include "host/kernel_module.h"

#include <dlfcn.h>
#include <limits.h>
#include <unistd.h>

namespace {

std::string hostFolder() {
  char buf[PATH_MAX];
  ssize_t n = ::readlink("/proc/self/exe", buf, sizeof(buf) - 1);
  if (n <= 0) return ".";
  std::string self(buf, static_cast<size_t>(n));
  return self.substr(0, self.rfind('/'));
}

}  // namespace

KernelModule::~KernelModule() {
  if (kernel_ != nullptr && release_ != nullptr) release_(kPellixInterfaceId);
  // The module stays mapped until the process ends: threads of libraries it loaded may
  // still be winding down.
}

bool KernelModule::open(std::string* error) {
  const std::string path = hostFolder() + "/PellixKernel.dll";
  library_ = ::dlopen(path.c_str(), RTLD_NOW | RTLD_LOCAL);
  if (library_ == nullptr) {
    const char* text = ::dlerror();
    *error = "cannot load " + path + ": " + (text != nullptr ? text : "unknown error");
    return false;
  }
  auto accquire = reinterpret_cast<PellixAccquireFn>(::dlsym(library_, "Accquire"));
  release_ = reinterpret_cast<PellixReleaseFn>(::dlsym(library_, "Release"));
  auto have = reinterpret_cast<PellixHaveInterfaceFn>(::dlsym(library_, "HaveInterface"));
  if (accquire == nullptr || release_ == nullptr || have == nullptr) {
    *error = path + " lacks one of Accquire, Release, HaveInterface";
    return false;
  }
  if (!have(kPellixInterfaceId)) {
    *error = path + " doesn't offer interface 104";
    return false;
  }
  void* p = nullptr;
  const int code = accquire(kPellixInterfaceId, &p);
  if (code != 0 || p == nullptr) {
    *error = "Accquire(104) answered " + std::to_string(code);
    return false;
  }
  kernel_ = static_cast<IPellix*>(p);
  return true;
}

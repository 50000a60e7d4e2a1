// The kernel module as the host holds it: PellixKernel.dll loaded from beside the host
// program, IPellix taken with Accquire and given back with Release.
#ifndef HOST_KERNEL_MODULE_H_
#define HOST_KERNEL_MODULE_H_

#include <string>

#include "pellix/IPellix.h"

class KernelModule {
 public:
  KernelModule() = default;
  ~KernelModule();
  KernelModule(const KernelModule&) = delete;
  KernelModule& operator=(const KernelModule&) = delete;

  // Loads the module and takes IPellix; false with `error` telling why.
  bool open(std::string* error);

  IPellix* kernel() const { return kernel_; }

 private:
  void* library_ = nullptr;
  PellixReleaseFn release_ = nullptr;
  IPellix* kernel_ = nullptr;
};

#endif  // HOST_KERNEL_MODULE_H_

// The contract of the kernel's family of modules: a dynamic library with three C exports,
// Accquire, Release and HaveInterface, that hands out interfaces by number. Also the exports
// of a module that has one interface, made at the first Accquire and destroyed by Release.
#ifndef OUTSIDE_MODULE_CONTRACT_H_
#define OUTSIDE_MODULE_CONTRACT_H_

#include <new>

using ModuleAccquireFn = int (*)(int id, void** out);
using ModuleReleaseFn = int (*)(int id);
using ModuleHaveInterfaceFn = bool (*)(int id);

// Codes of Accquire: no place for the interface, and an interface the module doesn't have.
inline constexpr int kModuleNoOut = -3;
inline constexpr int kModuleNoInterface = -4;
// The object can't be made.
inline constexpr int kModuleUnavailable = -2;

#define PELLIX_MODULE_EXPORT extern "C" __attribute__((visibility("default")))

// The three exports' work for a module whose one interface `Interface`, number `kId`, is
// implemented by `Impl`. No exception leaves them.
template <typename Interface, typename Impl, int kId>
class SingleInterfaceModule {
 public:
  static int accquire(int id, void** out) {
    if (out == nullptr) return kModuleNoOut;
    if (id != kId) return kModuleNoInterface;
    if (s_p_instance_ == nullptr) s_p_instance_ = new (std::nothrow) Impl();
    if (s_p_instance_ == nullptr) return kModuleUnavailable;
    *out = static_cast<Interface*>(s_p_instance_);
    return 0;
  }

  static int release(int id) {
    if (id == kId) {
      delete s_p_instance_;
      s_p_instance_ = nullptr;
    }
    return 0;
  }

  static bool haveInterface(int id) { return id == kId; }

 private:
  static inline Impl* s_p_instance_ = nullptr;
};

#endif  // OUTSIDE_MODULE_CONTRACT_H_

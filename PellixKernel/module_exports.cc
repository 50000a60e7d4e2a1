// The module's three exports: the way a host gets and gives back the one IPellix.
#include <glog/logging.h>

#include "PellixKernel/PellixDriver.h"

#define PELLIX_EXPORT extern "C" __attribute__((visibility("default")))

PELLIX_EXPORT int Accquire(int id, void** out) {
  if (out == nullptr) return -3;
  if (id != kPellixInterfaceId) return -4;
  if (CPellixDriver::s_p_instance_ == nullptr) CPellixDriver::s_p_instance_ = new CPellixDriver();
  *out = static_cast<IPellix*>(CPellixDriver::s_p_instance_);
  return 0;
}

PELLIX_EXPORT int Release(int id) {
  if (id != kPellixInterfaceId) return 0;
  if (CPellixDriver::s_p_instance_ != nullptr) {
    IPellix* instance = CPellixDriver::s_p_instance_;
    delete instance;
    CPellixDriver::s_p_instance_ = nullptr;
  }
  LOG(INFO) << "CPellixDriver::ReleaseInstance" << " end";
  return 0;
}

PELLIX_EXPORT bool HaveInterface(int id) { return id == kPellixInterfaceId; }

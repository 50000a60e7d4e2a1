// Libraries of the module contract for the loader's tests, built in variants: the interface
// number each has, whether it refuses to hand it out, and whether it lacks Release.
#include "outside/module_contract.h"

namespace {
int s_object = 0;
}

PELLIX_MODULE_EXPORT bool HaveInterface(int id) { return id == TEST_MODULE_INTERFACE; }

PELLIX_MODULE_EXPORT int Accquire(int id, void** out) {
  if (id != TEST_MODULE_INTERFACE) return kModuleNoInterface;
  if (TEST_MODULE_REFUSES) return -9;
  *out = &s_object;
  return 0;
}

#if !TEST_MODULE_LACKS_RELEASE
// A code of its own, so that a test sees whose Release answered.
PELLIX_MODULE_EXPORT int Release(int id) { return id == TEST_MODULE_INTERFACE ? 50 + id : 0; }
#endif

// The exports of TesselKernel.dll: its one interface, number 100, by the module contract.
#include "TesselKernel/TesselKernel.h"
#include "outside/module_contract.h"

using Module = SingleInterfaceModule<ITesselKernel, TesselKernel, kTesselKernelInterfaceId>;

PELLIX_MODULE_EXPORT int Accquire(int id, void** out) { return Module::accquire(id, out); }
PELLIX_MODULE_EXPORT int Release(int id) { return Module::release(id); }
PELLIX_MODULE_EXPORT bool HaveInterface(int id) { return Module::haveInterface(id); }

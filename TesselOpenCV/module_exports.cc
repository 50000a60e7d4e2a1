// The exports of TesselOpenCV.dll: its one interface, number 114, by the module contract.
#include "TesselOpenCV/TesselOpenCv.h"
#include "outside/module_contract.h"

using Module = SingleInterfaceModule<ITesselOpenCV, TesselOpenCv, kTesselOpenCvInterfaceId>;

PELLIX_MODULE_EXPORT int Accquire(int id, void** out) { return Module::accquire(id, out); }
PELLIX_MODULE_EXPORT int Release(int id) { return Module::release(id); }
PELLIX_MODULE_EXPORT bool HaveInterface(int id) { return Module::haveInterface(id); }

// A module of the staged install tree as a host meets it: loaded with dlopen, its three
// exports looked up, its interface taken and given back.
#ifndef TESTING_STAGED_MODULE_H_
#define TESTING_STAGED_MODULE_H_

#include <string>

#include "outside/module_contract.h"

namespace pellix_test {

class StagedModule {
 public:
  // Loads `file_name` from the install tree's bin folder; the test fails if it can't.
  explicit StagedModule(const std::string& file_name);
  // Gives back the interface taken, and unloads the module.
  ~StagedModule();
  StagedModule(const StagedModule&) = delete;
  StagedModule& operator=(const StagedModule&) = delete;

  // Accquire(id) as a pointer to the interface; null (and a test failure) when refused.
  template <typename Interface>
  Interface* take(int id) {
    return static_cast<Interface*>(takeRaw(id));
  }

  ModuleAccquireFn accquire = nullptr;
  ModuleReleaseFn release = nullptr;
  ModuleHaveInterfaceFn have_interface = nullptr;

 private:
  void* takeRaw(int id);

  void* handle_ = nullptr;
  int taken_id_ = -1;
};

}  // namespace pellix_test

#endif  // TESTING_STAGED_MODULE_H_

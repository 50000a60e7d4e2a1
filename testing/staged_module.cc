#include "testing/staged_module.h"

#include <dlfcn.h>
#include <gtest/gtest.h>

#include "testing/test_support.h"

namespace pellix_test {

StagedModule::StagedModule(const std::string& file_name) {
  const std::string path = stageBin() + "/" + file_name;
  handle_ = ::dlopen(path.c_str(), RTLD_NOW | RTLD_LOCAL);
  if (handle_ == nullptr) {
    ADD_FAILURE() << "can't load " << path << ": " << ::dlerror();
    return;
  }
  accquire = reinterpret_cast<ModuleAccquireFn>(::dlsym(handle_, "Accquire"));
  release = reinterpret_cast<ModuleReleaseFn>(::dlsym(handle_, "Release"));
  have_interface = reinterpret_cast<ModuleHaveInterfaceFn>(::dlsym(handle_, "HaveInterface"));
  if (accquire == nullptr || release == nullptr || have_interface == nullptr) {
    ADD_FAILURE() << path << " lacks an export of the module contract";
  }
}

StagedModule::~StagedModule() {
  if (taken_id_ >= 0 && release != nullptr) release(taken_id_);
  if (handle_ != nullptr) ::dlclose(handle_);
}

void* StagedModule::takeRaw(int id) {
  void* out = nullptr;
  if (accquire == nullptr) return nullptr;
  const int code = accquire(id, &out);
  EXPECT_EQ(code, 0) << "Accquire(" << id << ")";
  if (code == 0) taken_id_ = id;
  return code == 0 ? out : nullptr;
}

}  // namespace pellix_test

#include "tessel_dll/kernel_library.h"

#include <cstdint>
#include <map>
#include <string>

#include "Common/Source/text_forms.h"
#include "outside/module_contract.h"
#include "platform/env.h"

namespace {

struct LibraryEntry {
  void* handle = nullptr;
  ModuleAccquireFn accquire = nullptr;
  ModuleReleaseFn release = nullptr;
  ModuleHaveInterfaceFn have_interface = nullptr;
  int32_t ref_count = 0;
};

// The process's one table; it exists from the first load to the last free.
struct LibraryTable {
  std::map<const char*, LibraryEntry> entries;  // ordered by the name pointers' values
  int count = 0;
};
LibraryTable* s_p_library_table_ = nullptr;

// A library's full path may have this many wide characters, less one.
constexpr size_t kPathBufferSize = 300;
// The program's path is had in full only below this length.
constexpr size_t kProgramPathLimit = 260;

// The library's path in the host program's folder; false when there is no usable one.
bool libraryPathOf(const char* name, std::wstring* path) {
  const std::wstring wide_name = CodeConv::s2ws(name);
  if (wide_name.empty()) return false;
  const std::wstring program = platform::Env::Default()->GetProgramPath();
  if (program.empty() || program.size() >= kProgramPathLimit) return false;
  const size_t cut = program.rfind(L'\\');
  if (cut == std::wstring::npos) return false;
  const std::wstring folder = program.substr(0, cut);
  if (folder.size() + wide_name.size() >= kPathBufferSize) return false;
  *path = folder + L"\\" + wide_name;
  return true;
}

template <typename Fn>
Fn exportOf(void* handle, const char* name) {
  return reinterpret_cast<Fn>(platform::Env::Default()->GetLibrarySymbol(handle, name));
}

}  // namespace

int LoadKernelLibrary(const char* name) {
  if (name == nullptr) return kLibraryBadName;
  if (s_p_library_table_ == nullptr) s_p_library_table_ = new LibraryTable();
  auto found = s_p_library_table_->entries.find(name);
  if (found != s_p_library_table_->entries.end()) {
    ++found->second.ref_count;
    return kLibraryOk;
  }
  std::wstring path;
  if (!libraryPathOf(name, &path)) return kLibraryBadName;
  platform::Env* env = platform::Env::Default();
  LibraryEntry entry;
  entry.handle = env->LoadLibrary(path, nullptr);
  if (entry.handle == nullptr) return kLibraryUnavailable;
  entry.accquire = exportOf<ModuleAccquireFn>(entry.handle, "Accquire");
  entry.release = exportOf<ModuleReleaseFn>(entry.handle, "Release");
  entry.have_interface = exportOf<ModuleHaveInterfaceFn>(entry.handle, "HaveInterface");
  if (entry.accquire == nullptr || entry.release == nullptr || entry.have_interface == nullptr) {
    env->FreeLibrary(entry.handle);
    return kLibraryUnavailable;
  }
  entry.ref_count = 1;
  s_p_library_table_->entries.emplace(name, entry);
  ++s_p_library_table_->count;
  return kLibraryOk;
}

int FreeKernelLibrary(const char* name) {
  if (name == nullptr) return kLibraryBadName;
  if (s_p_library_table_ == nullptr) return kLibraryUnavailable;
  int code = kLibraryBadName;
  auto found = s_p_library_table_->entries.find(name);
  if (found != s_p_library_table_->entries.end()) {
    if (--found->second.ref_count == 0) {
      platform::Env::Default()->FreeLibrary(found->second.handle);
      s_p_library_table_->entries.erase(found);
      --s_p_library_table_->count;
    }
    code = kLibraryOk;
  }
  if (s_p_library_table_->count == 0) {
    delete s_p_library_table_;
    s_p_library_table_ = nullptr;
  }
  return code;
}

int AccquireInterface(int id, void** out) {
  if (s_p_library_table_ == nullptr) return kLibraryUnavailable;
  for (const auto& [name, entry] : s_p_library_table_->entries) {
    if (entry.have_interface(id)) return entry.accquire(id, out);
  }
  return kLibraryNoInterface;
}

int ReleaseInterface(int id) {
  if (s_p_library_table_ == nullptr) return kLibraryUnavailable;
  for (const auto& [name, entry] : s_p_library_table_->entries) {
    if (entry.have_interface(id)) return entry.release(id);
  }
  return kLibraryUnavailable;
}

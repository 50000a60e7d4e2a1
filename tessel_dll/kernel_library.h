// The loader of the kernel's sibling modules: loads a library of the module contract by name
// from the folder of the host program, keeps its three exports in one table, and finds an
// interface by asking each loaded library in turn.
#ifndef TESSEL_DLL_KERNEL_LIBRARY_H_
#define TESSEL_DLL_KERNEL_LIBRARY_H_

// The loader's own result codes.
inline constexpr int kLibraryOk = 0;
// The library can't be loaded or lacks an export; or no table exists.
inline constexpr int kLibraryUnavailable = -2;
// No name, no usable path, or (on free) a name that isn't loaded.
inline constexpr int kLibraryBadName = -3;
// No loaded library has the interface.
inline constexpr int kLibraryNoInterface = -4;

// Loads the library `name` (a file name) from the host program's folder, or counts one more
// load of it. The table is keyed by the pointer `name`, not by its text: load and free with
// the same pointer.
int LoadKernelLibrary(const char* name);

// Counts one load of `name` off; the library is unloaded at the last one.
int FreeKernelLibrary(const char* name);

// Asks the loaded libraries, in the table's order, which has interface `id`, and gives the
// first one's own answer to Accquire(id, out).
int AccquireInterface(int id, void** out);

// The same for Release(id); kLibraryUnavailable when no library has the interface.
int ReleaseInterface(int id);

#endif  // TESSEL_DLL_KERNEL_LIBRARY_H_

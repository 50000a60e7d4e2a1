// The loader over real libraries built for it, which lie beside this test program (the host
// program here): codes, load counts, the table's life, and libraries that are broken.
#include "tessel_dll/kernel_library.h"

#include <dlfcn.h>
#include <gtest/gtest.h>

#include <string>

#include "testing/test_support.h"

namespace {

constexpr char kSeven[] = "loader_seven.dll";
constexpr char kRefuses[] = "loader_refuses.dll";
constexpr char kNoRelease[] = "loader_no_release.dll";

// Whether the library file beside this program is mapped into the process.
bool isLoaded(const char* name) {
  const std::string path = std::string(PELLIX_TESTS_DIR) + "/" + name;
  void* handle = ::dlopen(path.c_str(), RTLD_NOW | RTLD_NOLOAD);
  if (handle != nullptr) ::dlclose(handle);
  return handle != nullptr;
}

TEST(KernelLibraryTest, WithoutATableNothingIsThere) {
  void* out = nullptr;
  EXPECT_EQ(FreeKernelLibrary(kSeven), kLibraryUnavailable);
  EXPECT_EQ(LoadKernelLibrary(nullptr), kLibraryBadName);
  EXPECT_EQ(FreeKernelLibrary(kSeven), kLibraryUnavailable) << "a null name makes no table";
  EXPECT_EQ(FreeKernelLibrary(nullptr), kLibraryBadName);
  EXPECT_EQ(AccquireInterface(7, &out), kLibraryUnavailable);
  EXPECT_EQ(ReleaseInterface(7), kLibraryUnavailable);
}

TEST(KernelLibraryTest, CountsLoadsAndUnloadsAtTheLastFree) {
  ASSERT_EQ(LoadKernelLibrary(kSeven), kLibraryOk);
  ASSERT_EQ(LoadKernelLibrary(kSeven), kLibraryOk);
  EXPECT_TRUE(isLoaded(kSeven));

  void* out = nullptr;
  EXPECT_EQ(AccquireInterface(7, &out), 0);
  EXPECT_NE(out, nullptr);
  void* untouched = &out;
  EXPECT_EQ(AccquireInterface(100, &untouched), kLibraryNoInterface);
  EXPECT_EQ(untouched, &out);
  EXPECT_EQ(ReleaseInterface(100), kLibraryUnavailable) << "not kLibraryNoInterface";
  EXPECT_EQ(ReleaseInterface(7), 57) << "the library's own Release answers";

  EXPECT_EQ(FreeKernelLibrary(kSeven), kLibraryOk);
  EXPECT_TRUE(isLoaded(kSeven)) << "one load is still counted";
  EXPECT_EQ(FreeKernelLibrary(kSeven), kLibraryOk);
  EXPECT_FALSE(isLoaded(kSeven));
  EXPECT_EQ(FreeKernelLibrary(kSeven), kLibraryUnavailable) << "the table went with the last";
}

TEST(KernelLibraryTest, NamesAreTheirPointersNotTheirText) {
  const std::string same_text = kSeven;
  ASSERT_EQ(LoadKernelLibrary(kSeven), kLibraryOk);
  ASSERT_EQ(LoadKernelLibrary(same_text.c_str()), kLibraryOk);
  EXPECT_EQ(FreeKernelLibrary(same_text.c_str()), kLibraryOk);
  EXPECT_EQ(FreeKernelLibrary(same_text.c_str()), kLibraryBadName) << "not loaded any more";
  EXPECT_TRUE(isLoaded(kSeven)) << "the other entry holds it";
  EXPECT_EQ(FreeKernelLibrary(kSeven), kLibraryOk);
  EXPECT_FALSE(isLoaded(kSeven));
}

TEST(KernelLibraryTest, BrokenMissingAndUnnamedLibrariesAreRefused) {
  const std::string too_long = std::string(300, 'x') + ".dll";
  EXPECT_EQ(LoadKernelLibrary(kNoRelease), kLibraryUnavailable);
  EXPECT_FALSE(isLoaded(kNoRelease)) << "a library without Release is unloaded again";
  EXPECT_EQ(LoadKernelLibrary("absent.dll"), kLibraryUnavailable);
  EXPECT_EQ(LoadKernelLibrary(""), kLibraryBadName);
  EXPECT_EQ(LoadKernelLibrary(too_long.c_str()), kLibraryBadName);
  // The failed loads left an empty table: no interface, and the next free ends it.
  void* out = nullptr;
  EXPECT_EQ(AccquireInterface(9, &out), kLibraryNoInterface);
  EXPECT_EQ(FreeKernelLibrary("absent.dll"), kLibraryBadName);
  EXPECT_EQ(AccquireInterface(9, &out), kLibraryUnavailable);
}

TEST(KernelLibraryTest, ARefusingLibraryGivesItsOwnCode) {
  ASSERT_EQ(LoadKernelLibrary(kRefuses), kLibraryOk);
  ASSERT_EQ(LoadKernelLibrary(kSeven), kLibraryOk);
  void* out = nullptr;
  EXPECT_EQ(AccquireInterface(8, &out), -9);
  EXPECT_EQ(out, nullptr);
  EXPECT_EQ(AccquireInterface(7, &out), 0) << "the others still answer";
  EXPECT_EQ(FreeKernelLibrary(kRefuses), kLibraryOk);
  EXPECT_EQ(FreeKernelLibrary(kSeven), kLibraryOk);
  EXPECT_FALSE(isLoaded(kRefuses));
}

}  // namespace

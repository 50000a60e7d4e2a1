// The module as a host meets it: loaded from the staged install tree with dlopen, its three
// exports looked up by name, IPellix taken and given back.
#include <dlfcn.h>
#include <gtest/gtest.h>

#include "pellix/IPellix.h"
#include "testing/test_support.h"

namespace {

using pellix_test::LogCapture;
using pellix_test::TempDir;
using pellix_test::windowsPath;

class ModuleEntryTest : public testing::Test {
 protected:
  void SetUp() override {
    handle_ = dlopen((pellix_test::stageBin() + "/PellixKernel.dll").c_str(), RTLD_NOW);
    ASSERT_NE(handle_, nullptr) << dlerror();
    accquire_ = reinterpret_cast<PellixAccquireFn>(dlsym(handle_, "Accquire"));
    release_ = reinterpret_cast<PellixReleaseFn>(dlsym(handle_, "Release"));
    have_ = reinterpret_cast<PellixHaveInterfaceFn>(dlsym(handle_, "HaveInterface"));
    ASSERT_TRUE(accquire_ && release_ && have_);
  }
  void TearDown() override {
    if (release_ != nullptr) release_(kPellixInterfaceId);
    if (handle_ != nullptr) dlclose(handle_);
  }
  IPellix* take() {
    void* p = nullptr;
    EXPECT_EQ(accquire_(kPellixInterfaceId, &p), 0);
    return static_cast<IPellix*>(p);
  }

  void* handle_ = nullptr;
  PellixAccquireFn accquire_ = nullptr;
  PellixReleaseFn release_ = nullptr;
  PellixHaveInterfaceFn have_ = nullptr;
};

TEST_F(ModuleEntryTest, ExportsAnswerByTheirContract) {
  void* p = reinterpret_cast<void*>(0x1);
  EXPECT_EQ(accquire_(104, nullptr), -3);
  EXPECT_EQ(accquire_(7, nullptr), -3) << "out is tested before id";
  EXPECT_EQ(accquire_(7, &p), -4);
  EXPECT_EQ(p, reinterpret_cast<void*>(0x1)) << "a refused id leaves out untouched";
  EXPECT_TRUE(have_(104));
  EXPECT_FALSE(have_(100));
  EXPECT_FALSE(have_(114));
  IPellix* first = take();
  IPellix* second = take();
  ASSERT_NE(first, nullptr);
  EXPECT_EQ(first, second) << "one driver a process";
  first->reserved7();
  LogCapture log;
  EXPECT_EQ(release_(7), 0);
  EXPECT_EQ(log.count("CPellixDriver::ReleaseInstance end"), 0);
  EXPECT_EQ(release_(104), 0);
  EXPECT_EQ(release_(104), 0) << "without an instance";
  EXPECT_EQ(log.count("CPellixDriver::ReleaseInstance end"), 2);
  EXPECT_NE(take(), nullptr) << "a new driver after Release";
}

TEST_F(ModuleEntryTest, GetViewChecksInItsOrder) {
  IPellix* kernel = take();
  ASSERT_NE(kernel, nullptr);
  TempDir tmp;
  const std::wstring dir = windowsPath(tmp.path());
  const std::wstring unknown = windowsPath(tmp.write("notes.xyz", "plain text"));
  const std::wstring no_ext = windowsPath(tmp.write("README", "plain text"));
  const std::wstring dotted = windowsPath(tmp.write("v1.2/README", "plain text"));
  std::vector<std::wstring> previews{L"stale entry"};

  EXPECT_EQ(kernel->getView(dir + L"\\missing.jpg", 800, 800, true, L"", previews, false, 0),
            2201)
      << "a missing source is told before an empty folder";
  EXPECT_TRUE(previews.empty());
  EXPECT_EQ(kernel->getView(L"", 800, 800, true, dir, previews, false, 0), 2201);
  EXPECT_EQ(kernel->getView(unknown, 800, 800, true, L"", previews, false, 0), 2225)
      << "an empty folder is told before the type";
  EXPECT_EQ(kernel->getView(unknown, 800, 800, true, dir, previews, false, 0), 2001);
  EXPECT_EQ(kernel->getView(no_ext, 800, 800, true, dir, previews, false, 0), 2228);
  EXPECT_EQ(kernel->getView(dotted, 800, 800, true, dir, previews, false, 0), 2001)
      << "the last dot of the whole path counts";

  const std::wstring psd = windowsPath(tmp.write("a.psd", "8BPS\0\x01"));
  std::wstring out;
  EXPECT_EQ(kernel->getZoomView(psd, 100, 100, true, dir, out), 2227);
  EXPECT_EQ(kernel->zoomJpg(psd, 100, 100, dir + L"\\z.jpg"), 2227);
  EXPECT_EQ(kernel->getZoomView(dir + L"\\none.jpg", 100, 100, true, dir, out), 2201);
  EXPECT_EQ(kernel->getZoomView(psd, 100, 100, true, L"", out), 2225);
  EXPECT_FALSE(pellix_test::fileExists(tmp.path() + "/z.jpg"));
  EXPECT_EQ(kernel->cutImage("a.jpg", nullptr, "b.jpg", 800), 1002);
}

TEST_F(ModuleEntryTest, SiblingsAreLookedForBesideTheHostProgramOnly) {
  // The siblings are staged beside the kernel module, but this program lives elsewhere.
  ASSERT_TRUE(pellix_test::fileExists(pellix_test::stageBin() + "/TesselKernel.dll"));
  LogCapture log;
  EXPECT_NE(take(), nullptr) << "the start goes on without them";
  EXPECT_EQ(log.count("CPellixDriver::CPellixDriver LoadKernelLibrary[TesselKernel.dll] failed"),
            1);
  EXPECT_EQ(log.count("CPellixDriver::CPellixDriver load TesselOpenCV.dllfailed"), 1);
}

}  // namespace

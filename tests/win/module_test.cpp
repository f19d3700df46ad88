// ZELGraph.dll as a host loads it: its exports, its string table and the
// platform hooks it installs.
#include <windows.h>

#include <gtest/gtest.h>

#include "control/platform_win.h"
#include "util/font_spec.h"
#include "util/platform_hooks.h"
#include "util/process_state.h"
#include "util/texts.h"

namespace zel {
namespace {

class ModuleTest : public ::testing::Test {
 protected:
  void SetUp() override { module = LoadLibraryW(L"ZELGraph.dll"); }
  void TearDown() override {
    if (module) FreeLibrary(module);
  }

  template <typename Fn>
  Fn Export(const char* name) {
    return reinterpret_cast<Fn>(reinterpret_cast<void*>(GetProcAddress(module, name)));
  }

  HMODULE module = nullptr;
};

TEST_F(ModuleTest, ExportsTheServerEntryPoints) {
  ASSERT_NE(module, nullptr);
  using GetClassObject = HRESULT(WINAPI*)(REFCLSID, REFIID, void**);
  auto getClassObject = Export<GetClassObject>("DllGetClassObject");
  ASSERT_NE(getClassObject, nullptr);
  void* object = reinterpret_cast<void*>(1);
  EXPECT_EQ(getClassObject(GUID_NULL, IID_IUnknown, &object), CLASS_E_CLASSNOTAVAILABLE);
  EXPECT_EQ(object, nullptr);
  for (const char* name : {"DllCanUnloadNow", "DllRegisterServer", "DllUnregisterServer"}) {
    auto entry = Export<HRESULT(WINAPI*)()>(name);
    ASSERT_NE(entry, nullptr) << name;
    EXPECT_EQ(entry(), S_OK) << name;
  }
}

TEST_F(ModuleTest, StringTableHoldsTheBuiltInTexts) {
  ASSERT_NE(module, nullptr);
  int found = 0;
  for (int id = kFirstTextId; id <= kLastTextId; ++id) {
    wchar_t buffer[256];
    int length = LoadStringW(module, UINT(id), buffer, 256);
    Text resource(reinterpret_cast<const char16_t*>(buffer), size_t(length));
    EXPECT_EQ(Utf8FromText(resource), Utf8FromText(LookupText(id))) << "text " << id;
    found += length > 0;
  }
  EXPECT_EQ(size_t(found), BuiltInTexts().size());
}

TEST(WindowsPlatformTest, HooksReadTheDisplayAndTheSystemClock) {
  InstallWindowsPlatformHooks();
  HDC display = CreateDCW(L"DISPLAY", nullptr, nullptr, nullptr);
  ASSERT_NE(display, nullptr);
  int resolution = GetDeviceCaps(display, LOGPIXELSY);
  DeleteDC(display);
  EXPECT_EQ(Platform().screenResolution(), resolution);

  SYSTEMTIME before;
  GetSystemTime(&before);
  SystemTime now = Platform().utcNow();
  EXPECT_EQ(now.wYear, before.wYear);
  EXPECT_EQ(now.wMonth, before.wMonth);

  ResetProcessState();
  LOGFONTW font = ToLogFontW(ParseFontSpec(u"Arial,9,bold"));
  EXPECT_EQ(font.lfHeight, -MulDiv(9, resolution, 72));
  EXPECT_EQ(font.lfWeight, FW_BOLD);
  EXPECT_STREQ(font.lfFaceName, L"Arial");
  ResetProcessState();
  InstallPlatformHooks({});
}

}  // namespace
}  // namespace zel

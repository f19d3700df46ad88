// ZELGraph.dll as a host loads it: its exports, its string table and the
// platform hooks it installs.
#include <windows.h>

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "control/platform_win.h"
#include "zelgraph_idl.h"
#include "util/font_spec.h"
#include "util/platform_hooks.h"
#include "util/process_state.h"
#include "util/texts.h"

namespace zel {
namespace {

class ModuleTest : public ::testing::Test {
 protected:
  void SetUp() override { ASSERT_NE(module = LoadLibraryW(L"ZELGraph.dll"), nullptr); }
  void TearDown() override {
    if (module) FreeLibrary(module);
  }

  template <typename Fn>
  Fn Export(const char* name) {
    return reinterpret_cast<Fn>(reinterpret_cast<void*>(GetProcAddress(module, name)));
  }

  HMODULE module = nullptr;
};

TEST_F(ModuleTest, MakesClassObjectsForTheControlOnly) {
  auto getClassObject = Export<HRESULT(WINAPI*)(REFCLSID, REFIID, void**)>("DllGetClassObject");
  auto canUnloadNow = Export<HRESULT(WINAPI*)()>("DllCanUnloadNow");
  ASSERT_TRUE(getClassObject && canUnloadNow);
  void* object = reinterpret_cast<void*>(1);
  EXPECT_EQ(getClassObject(GUID_NULL, IID_IClassFactory, &object), CLASS_E_CLASSNOTAVAILABLE);
  EXPECT_EQ(object, nullptr);
  IClassFactory* factory = nullptr;
  ASSERT_EQ(getClassObject(CLSID_VX_Graph, IID_IClassFactory, reinterpret_cast<void**>(&factory)), S_OK);
  EXPECT_EQ(canUnloadNow(), S_FALSE);
  IUnknown* control = nullptr;
  EXPECT_EQ(factory->CreateInstance(nullptr, IID_IVX_Graph, reinterpret_cast<void**>(&control)), S_OK);
  EXPECT_EQ(factory->CreateInstance(factory, IID_IUnknown, &object), CLASS_E_NOAGGREGATION);
  factory->Release();
  EXPECT_EQ(canUnloadNow(), S_FALSE);
  control->Release();
  EXPECT_EQ(canUnloadNow(), S_OK);
}

const std::wstring kClsid = L"CLSID\\{303C0D04-D388-41B9-B933-E68A7BECF074}";

// The keys registration writes, under a classes root.
const std::vector<std::wstring> kRegisteredKeys = {
    kClsid, kClsid + L"\\Control", kClsid + L"\\Insertable", L"ZELGraph.VX_Graph.1", L"ZELGraph.VX_Graph\\CurVer",
    L"ZELGraph.VX_GraphPropPage.1", L"ZELGraph.AxesPropPage.1", L"ZELGraph.DSetPropPage.1",
    L"CLSID\\{A56B1B74-A62C-4C11-ADA4-D105A774D9B1}\\InprocServer32",
    L"TypeLib\\{C6AB4A99-D435-4BCC-BABE-1FA152632B6F}\\1.0", L"Interface\\{D8A2B09B-4A79-4F10-886C-BB0DA8FADF3F}"};

std::wstring ReadValue(const std::wstring& path, const wchar_t* name = nullptr) {
  wchar_t text[512] = {};
  DWORD size = sizeof text;
  if (RegGetValueW(HKEY_CLASSES_ROOT, path.c_str(), name, RRF_RT_REG_SZ, nullptr, text, &size) != ERROR_SUCCESS)
    return L"<missing>";
  return text;
}

// Those of `keys` that exist under `root`, each key name prefixed by `prefix`.
std::vector<std::wstring> Present(HKEY root, const std::vector<std::wstring>& keys, const std::wstring& prefix = L"") {
  std::vector<std::wstring> present;
  for (const std::wstring& name : keys) {
    HKEY key = nullptr;
    if (RegOpenKeyExW(root, (prefix + name).c_str(), 0, KEY_READ, &key) != ERROR_SUCCESS) continue;
    RegCloseKey(key);
    present.push_back(name);
  }
  return present;
}

TEST_F(ModuleTest, RegistersAndUnregistersExactlyItsKeys) {
  auto registerServer = Export<HRESULT(WINAPI*)()>("DllRegisterServer");
  auto unregisterServer = Export<HRESULT(WINAPI*)()>("DllUnregisterServer");
  auto install = Export<HRESULT(WINAPI*)(BOOL, LPCWSTR)>("DllInstall");
  ASSERT_TRUE(registerServer && unregisterServer && install);

  ASSERT_EQ(registerServer(), S_OK);
  EXPECT_EQ(Present(HKEY_CLASSES_ROOT, kRegisteredKeys), kRegisteredKeys);
  EXPECT_EQ(ReadValue(kClsid + L"\\InprocServer32", L"ThreadingModel"), L"Apartment");
  EXPECT_EQ(ReadValue(kClsid + L"\\MiscStatus\\1"), L"131473");
  EXPECT_EQ(ReadValue(kClsid + L"\\VersionIndependentProgID"), L"ZELGraph.VX_Graph");
  EXPECT_NE(ReadValue(kClsid + L"\\ToolboxBitmap32").find(L", 101"), std::wstring::npos);
  HBITMAP toolbox = HBITMAP(LoadImageW(module, MAKEINTRESOURCEW(101), IMAGE_BITMAP, 0, 0, 0));
  BITMAP picture{};
  EXPECT_TRUE(toolbox && GetObjectW(toolbox, sizeof picture, &picture)) << "the bitmap it names";
  EXPECT_EQ(std::pair(picture.bmWidth, picture.bmHeight), std::pair(16L, 16L));
  if (toolbox) DeleteObject(toolbox);
  EXPECT_EQ(ReadValue(L"ZELGraph.VX_Graph\\CurVer"), L"ZELGraph.VX_Graph.1");
  ASSERT_EQ(unregisterServer(), S_OK);
  EXPECT_TRUE(Present(HKEY_CLASSES_ROOT, kRegisteredKeys).empty());

  // Per user, under the user's own classes.
  const std::wstring userClasses = L"Software\\Classes\\";
  const std::vector<std::wstring> classAndProgId = {kClsid, L"ZELGraph.VX_Graph.1"};
  ASSERT_EQ(install(TRUE, L"user"), S_OK);
  EXPECT_EQ(Present(HKEY_CURRENT_USER, classAndProgId, userClasses), classAndProgId);
  ASSERT_EQ(install(FALSE, L"user"), S_OK);
  EXPECT_TRUE(Present(HKEY_CURRENT_USER, kRegisteredKeys, userClasses).empty());

  ASSERT_EQ(registerServer(), S_OK);  // as the other tests expect to find it
}

TEST_F(ModuleTest, StringTableHoldsTheBuiltInTexts) {
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

// Type-library browsers show a help string for the control's interface, its
// events and records, and each of their entries and fields: the module's own
// type library carries them all (the fields' added after widl by the build).
TEST_F(ModuleTest, TypeLibraryDescribesEveryEntryEventAndField) {
  ITypeLib* library = nullptr;
  ASSERT_EQ(LoadTypeLibEx(L"ZELGraph.dll", REGKIND_NONE, &library), S_OK);
  int entries = 0, fields = 0;
  for (UINT t = 0; t < library->GetTypeInfoCount(); ++t) {
    BSTR name = nullptr, doc = nullptr;
    library->GetDocumentation(INT(t), &name, &doc, nullptr, nullptr);
    EXPECT_GT(SysStringLen(doc), 0u) << "type " << t;
    ITypeInfo* info = nullptr;
    ASSERT_EQ(library->GetTypeInfo(t, &info), S_OK);
    FUNCDESC* func = nullptr;
    for (UINT f = 0; info->GetFuncDesc(f, &func) == S_OK; ++f, ++entries) {
      BSTR entry = nullptr, help = nullptr;
      info->GetDocumentation(func->memid, &entry, &help, nullptr, nullptr);
      EXPECT_GT(SysStringLen(help), 0u) << "entry " << f << " of type " << t;
      SysFreeString(entry);
      SysFreeString(help);
      info->ReleaseFuncDesc(func);
    }
    VARDESC* var = nullptr;
    for (UINT v = 0; info->GetVarDesc(v, &var) == S_OK; ++v, ++fields) {
      BSTR field = nullptr, help = nullptr;
      info->GetDocumentation(var->memid, &field, &help, nullptr, nullptr);
      EXPECT_GT(SysStringLen(help), 0u) << "field " << v << " of type " << t;
      if (std::wstring(field) == L"bUseGlb")  // the last string the build added
        EXPECT_STREQ(help, L"Use as global: the curve page offers these settings as every curve's default.");
      SysFreeString(field);
      SysFreeString(help);
      info->ReleaseVarDesc(var);
    }
    info->Release();
    SysFreeString(name);
    SysFreeString(doc);
  }
  library->Release();
  EXPECT_EQ(entries, 95 + 5);
  EXPECT_EQ(fields, 19 + 18);
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

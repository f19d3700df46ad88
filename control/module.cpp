// The module's entry points: loading, class objects and unloading.
#include "control/module.h"

#include <atomic>

#include "control/class_factory.h"
#include "control/class_ids.h"
#include "control/language_libraries.h"
#include "control/localized_windows.h"
#include "control/platform_win.h"
#include "control/vx_graph.h"
#include "pages/color_swatch.h"
#include "pages/settings_page.h"
#include "zelgraph_idl.h"

namespace zel {
namespace {

HINSTANCE moduleInstance = nullptr;
std::atomic<long> locks{0};

Text LibraryText(int id) { return LanguageLibraryText(id); }

}  // namespace

HINSTANCE ModuleInstance() { return moduleInstance; }

std::wstring ModulePath() {
  wchar_t path[MAX_PATH];
  DWORD length = GetModuleFileNameW(moduleInstance, path, MAX_PATH);
  return std::wstring(path, length);
}

void LockModule() { ++locks; }
void UnlockModule() { --locks; }

}  // namespace zel

extern "C" BOOL WINAPI DllMain(HINSTANCE instance, DWORD reason, LPVOID reserved) {
  if (reason == DLL_PROCESS_ATTACH) {
    zel::moduleInstance = instance;
    DisableThreadLibraryCalls(instance);
    zel::InstallWindowsPlatformHooks(zel::LibraryText);
    zel::ReloadLanguageLibraries();
  } else if (reason == DLL_PROCESS_DETACH && !reserved) {
    // Unloaded by FreeLibrary (at process exit the system frees everything).
    zel::FreeLanguageLibraries();
    zel::FreeRelabelFonts();
    zel::ColorSwatch::Unregister(instance);
  }
  return TRUE;
}

extern "C" HRESULT WINAPI DllGetClassObject(REFCLSID clsid, REFIID iid, LPVOID* object) {
  if (!object) return E_POINTER;
  *object = nullptr;
  zel::ClassFactory::Creator create = nullptr;
  if (IsEqualCLSID(clsid, CLSID_VX_Graph)) create = zel::CVX_Graph::Create;
  else if (IsEqualCLSID(clsid, zel::kGraphPageClsid)) create = zel::CreateGraphSettingsPage;
  else if (IsEqualCLSID(clsid, zel::kAxesPageClsid)) create = zel::CreateAxesPage;
  else if (IsEqualCLSID(clsid, zel::kCurvePageClsid)) create = zel::CreateCurvePage;
  if (!create) return CLASS_E_CLASSNOTAVAILABLE;
  auto* factory = new (std::nothrow) zel::ClassFactory(create);
  if (!factory) return E_OUTOFMEMORY;
  HRESULT hr = factory->QueryInterface(iid, object);
  factory->Release();
  return hr;
}

extern "C" HRESULT WINAPI DllCanUnloadNow() { return zel::locks == 0 ? S_OK : S_FALSE; }

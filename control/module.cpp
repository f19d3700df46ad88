// The module's entry points: loading, class objects and registration.
#include <windows.h>

#include "control/platform_win.h"

extern "C" BOOL WINAPI DllMain(HINSTANCE instance, DWORD reason, LPVOID) {
  if (reason == DLL_PROCESS_ATTACH) {
    DisableThreadLibraryCalls(instance);
    zel::InstallWindowsPlatformHooks();
  }
  return TRUE;
}

extern "C" HRESULT WINAPI DllGetClassObject(REFCLSID, REFIID, LPVOID* object) {
  if (object) *object = nullptr;
  return CLASS_E_CLASSNOTAVAILABLE;
}

extern "C" HRESULT WINAPI DllCanUnloadNow() { return S_OK; }

extern "C" HRESULT WINAPI DllRegisterServer() { return S_OK; }

extern "C" HRESULT WINAPI DllUnregisterServer() { return S_OK; }

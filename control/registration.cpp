// Registration of the control, its settings pages and its type library:
// per machine by DllRegisterServer, per user by DllInstall with "user".
#include <windows.h>
#include <oleauto.h>
#include <olectl.h>
#include <shlwapi.h>

#include <string>
#include <vector>

#include "control/class_ids.h"
#include "control/com_support.h"
#include "control/module.h"
#include "zelgraph_idl.h"

// Per-user registration of type libraries (oleaut32, Windows Vista on),
// which the MinGW headers do not declare.
extern "C" HRESULT WINAPI RegisterTypeLibForUser(ITypeLib* library, OLECHAR* path, OLECHAR* help);
extern "C" HRESULT WINAPI UnRegisterTypeLibForUser(REFGUID library, WORD major, WORD minor,
                                                    LCID locale, SYSKIND kind);

namespace zel {
namespace {

constexpr const wchar_t* kProgId = L"ZELGraph.VX_Graph.1";
constexpr const wchar_t* kIndependentProgId = L"ZELGraph.VX_Graph";
constexpr const wchar_t* kClassName = L"VX_Graph Class";

struct PageClass {
  const GUID& clsid;
  const wchar_t* progId;
  const wchar_t* name;
};
const PageClass kPages[] = {
    {kGraphPageClsid, L"ZELGraph.VX_GraphPropPage.1", L"VX_GraphPropPage Class"},
    {kAxesPageClsid, L"ZELGraph.AxesPropPage.1", L"AxesPropPage Class"},
    {kCurvePageClsid, L"ZELGraph.DSetPropPage.1", L"DSetPropPage Class"},
};

std::wstring GuidText(const GUID& guid) {
  wchar_t text[40];
  StringFromGUID2(guid, text, 40);
  return text;
}

// The classes key of the machine or of the user.
class ClassesRoot {
 public:
  explicit ClassesRoot(bool perUser) {
    if (perUser)
      RegCreateKeyExW(HKEY_CURRENT_USER, L"Software\\Classes", 0, nullptr, 0, KEY_ALL_ACCESS,
                      nullptr, &key_, nullptr);
    else
      key_ = HKEY_CLASSES_ROOT;
    perUser_ = perUser;
  }
  ~ClassesRoot() {
    if (perUser_ && key_) RegCloseKey(key_);
  }
  // Writes `path`'s default value (and optionally one named value).
  bool Write(const std::wstring& path, const wchar_t* value, const wchar_t* name = nullptr,
             const wchar_t* named = nullptr) {
    HKEY key = nullptr;
    if (RegCreateKeyExW(key_, path.c_str(), 0, nullptr, 0, KEY_WRITE, nullptr, &key, nullptr) != ERROR_SUCCESS)
      return false;
    bool ok = !value || SetString(key, nullptr, value);
    if (ok && name) ok = SetString(key, name, named);
    RegCloseKey(key);
    return ok;
  }
  void Delete(const std::wstring& path) { SHDeleteKeyW(key_, path.c_str()); }

 private:
  static bool SetString(HKEY key, const wchar_t* name, const wchar_t* value) {
    return RegSetValueExW(key, name, 0, REG_SZ, reinterpret_cast<const BYTE*>(value),
                          DWORD((wcslen(value) + 1) * sizeof(wchar_t))) == ERROR_SUCCESS;
  }
  HKEY key_ = nullptr;
  bool perUser_ = false;
};

bool WriteControlClass(ClassesRoot& root, const std::wstring& path) {
  std::wstring clsid = L"CLSID\\" + GuidText(CLSID_VX_Graph);
  std::wstring bitmap = path + L", 101";
  return root.Write(clsid, kClassName) && root.Write(clsid + L"\\ProgID", kProgId) &&
         root.Write(clsid + L"\\VersionIndependentProgID", kIndependentProgId) &&
         root.Write(clsid + L"\\InprocServer32", path.c_str(), L"ThreadingModel", L"Apartment") &&
         root.Write(clsid + L"\\Control", nullptr) && root.Write(clsid + L"\\Insertable", nullptr) &&
         root.Write(clsid + L"\\MiscStatus", L"0") && root.Write(clsid + L"\\MiscStatus\\1", L"131473") &&
         root.Write(clsid + L"\\ToolboxBitmap32", bitmap.c_str()) &&
         root.Write(clsid + L"\\TypeLib", GuidText(LIBID_ZELGRAPHLib).c_str()) &&
         root.Write(clsid + L"\\Version", L"1.0");
}

bool WriteProgIds(ClassesRoot& root) {
  std::wstring clsid = GuidText(CLSID_VX_Graph);
  std::wstring progId = kProgId, independent = kIndependentProgId;
  return root.Write(progId, kClassName) && root.Write(progId + L"\\CLSID", clsid.c_str()) &&
         root.Write(progId + L"\\Insertable", nullptr) && root.Write(independent, kClassName) &&
         root.Write(independent + L"\\CLSID", clsid.c_str()) &&
         root.Write(independent + L"\\CurVer", kProgId) &&
         root.Write(independent + L"\\Insertable", nullptr);
}

bool WritePages(ClassesRoot& root, const std::wstring& path) {
  for (const PageClass& page : kPages) {
    std::wstring clsid = L"CLSID\\" + GuidText(page.clsid);
    if (!root.Write(clsid, page.name) || !root.Write(clsid + L"\\ProgID", page.progId) ||
        !root.Write(clsid + L"\\InprocServer32", path.c_str(), L"ThreadingModel", L"Apartment") ||
        !root.Write(page.progId, page.name) ||
        !root.Write(std::wstring(page.progId) + L"\\CLSID", GuidText(page.clsid).c_str()))
      return false;
  }
  return true;
}

void DeleteAll(ClassesRoot& root) {
  root.Delete(L"CLSID\\" + GuidText(CLSID_VX_Graph));
  root.Delete(kProgId);
  root.Delete(kIndependentProgId);
  for (const PageClass& page : kPages) {
    root.Delete(L"CLSID\\" + GuidText(page.clsid));
    root.Delete(page.progId);
  }
}

HRESULT RegisterLibrary(bool perUser, const std::wstring& path) {
  ComPtr<ITypeLib> library;
  HRESULT hr = LoadTypeLibEx(path.c_str(), REGKIND_NONE, library.put());
  if (FAILED(hr)) return hr;
  auto* file = const_cast<OLECHAR*>(path.c_str());
  return perUser ? RegisterTypeLibForUser(library.get(), file, nullptr)
                 : RegisterTypeLib(library.get(), file, nullptr);
}

HRESULT Register(bool perUser) {
  std::wstring path = ModulePath();
  ClassesRoot root(perUser);
  if (!WriteControlClass(root, path) || !WriteProgIds(root) || !WritePages(root, path)) {
    DeleteAll(root);
    return SELFREG_E_CLASS;
  }
  HRESULT hr = RegisterLibrary(perUser, path);
  if (FAILED(hr)) DeleteAll(root);
  return FAILED(hr) ? SELFREG_E_TYPELIB : S_OK;
}

HRESULT Unregister(bool perUser) {
  ClassesRoot root(perUser);
  DeleteAll(root);
  SYSKIND kind = sizeof(void*) == 8 ? SYS_WIN64 : SYS_WIN32;
  perUser ? UnRegisterTypeLibForUser(LIBID_ZELGRAPHLib, 1, 0, LOCALE_NEUTRAL, kind)
          : UnRegisterTypeLib(LIBID_ZELGRAPHLib, 1, 0, LOCALE_NEUTRAL, kind);
  return S_OK;
}

}  // namespace
}  // namespace zel

extern "C" HRESULT WINAPI DllRegisterServer() { return zel::Register(false); }

extern "C" HRESULT WINAPI DllUnregisterServer() { return zel::Unregister(false); }

extern "C" HRESULT WINAPI DllInstall(BOOL install, LPCWSTR commandLine) {
  bool perUser = commandLine && _wcsicmp(commandLine, L"user") == 0;
  return install ? zel::Register(perUser) : zel::Unregister(perUser);
}

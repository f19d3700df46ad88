#include "pages/settings_page.h"

#include <new>

#include "control/localized_windows.h"
#include "control/module.h"
#include "util/text_ids.h"
#include "util/texts.h"

namespace zel {
namespace {

constexpr SIZE kPageSize{360, 240};

// The page's tab text, allocated for the frame to free.
LPOLESTR TaskText(int id) {
  Text text = LookupText(id);
  auto* copy = static_cast<LPOLESTR>(CoTaskMemAlloc((text.size() + 1) * sizeof(wchar_t)));
  if (copy) std::copy(text.c_str(), text.c_str() + text.size() + 1, reinterpret_cast<char16_t*>(copy));
  return copy;
}

HRESULT CreatePage(int titleId, REFIID iid, void** object) {
  auto* page = new (std::nothrow) CSettingsPage(titleId);
  if (!page) return E_OUTOFMEMORY;
  HRESULT hr = page->QueryInterface(iid, object);
  page->Release();
  return hr;
}

}  // namespace

CSettingsPage::CSettingsPage(int titleId) : titleId_(titleId) { LockModule(); }

CSettingsPage::~CSettingsPage() {
  Deactivate();
  UnlockModule();
}

STDMETHODIMP CSettingsPage::QueryInterface(REFIID iid, void** object) {
  return QueryFromTable(iid, object, {{IID_IUnknown, this}, {IID_IPropertyPage, this}});
}

STDMETHODIMP_(ULONG) CSettingsPage::AddRef() { return InterlockedIncrement(&refs_); }

STDMETHODIMP_(ULONG) CSettingsPage::Release() {
  LONG refs = InterlockedDecrement(&refs_);
  if (refs == 0) delete this;
  return ULONG(refs);
}

STDMETHODIMP CSettingsPage::SetPageSite(IPropertyPageSite* site) {
  site_ = site;
  return S_OK;
}

STDMETHODIMP CSettingsPage::Activate(HWND parent, LPCRECT place, BOOL) {
  if (!place) return E_POINTER;
  Text title = LookupText(titleId_);
  window_ = CreateWindowExW(WS_EX_CONTROLPARENT, L"STATIC", reinterpret_cast<LPCWSTR>(title.c_str()),
                            WS_CHILD | SS_CENTER, place->left, place->top, place->right - place->left,
                            place->bottom - place->top, parent, nullptr, ModuleInstance(), nullptr);
  if (!window_) return E_FAIL;
  RelabelDialog(window_);
  return S_OK;
}

STDMETHODIMP CSettingsPage::Deactivate() {
  if (window_) DestroyWindow(window_);
  window_ = nullptr;
  return S_OK;
}

STDMETHODIMP CSettingsPage::GetPageInfo(PROPPAGEINFO* info) {
  if (!info) return E_POINTER;
  *info = {sizeof *info, TaskText(titleId_), kPageSize, nullptr, nullptr, 0};
  return S_OK;
}

STDMETHODIMP CSettingsPage::SetObjects(ULONG count, IUnknown** objects) {
  return count == 0 || objects ? S_OK : E_POINTER;
}

STDMETHODIMP CSettingsPage::Show(UINT show) {
  if (window_) ShowWindow(window_, int(show));
  return S_OK;
}

STDMETHODIMP CSettingsPage::Move(LPCRECT place) {
  if (!place) return E_POINTER;
  if (window_) MoveWindow(window_, place->left, place->top, place->right - place->left, place->bottom - place->top, TRUE);
  return S_OK;
}

STDMETHODIMP CSettingsPage::IsPageDirty() { return S_FALSE; }
STDMETHODIMP CSettingsPage::Apply() { return S_OK; }
STDMETHODIMP CSettingsPage::Help(LPCOLESTR) { return E_NOTIMPL; }
STDMETHODIMP CSettingsPage::TranslateAccelerator(MSG*) { return S_FALSE; }

HRESULT CreateGraphSettingsPage(IUnknown*, REFIID iid, void** object) {
  return CreatePage(kTextGraphSettings, iid, object);
}
HRESULT CreateAxesPage(IUnknown*, REFIID iid, void** object) { return CreatePage(kTextAxesProperties, iid, object); }
HRESULT CreateCurvePage(IUnknown*, REFIID iid, void** object) {
  return CreatePage(kTextCurveProperties, iid, object);
}

}  // namespace zel

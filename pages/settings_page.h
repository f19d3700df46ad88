#pragma once
// A settings page in the control's property frame. The three pages (graph
// settings, axes, curves) share this frame-facing part: they open, size,
// show and close as the frame asks, and name themselves in the language of
// the texts. Their fields come with the pages' own work.
#include <windows.h>
#include <ocidl.h>

#include "control/com_support.h"

namespace zel {

class CSettingsPage final : public IPropertyPage {
 public:
  // `titleId` is the text id of the page's tab.
  explicit CSettingsPage(int titleId);

  STDMETHODIMP QueryInterface(REFIID iid, void** object) override;
  STDMETHODIMP_(ULONG) AddRef() override;
  STDMETHODIMP_(ULONG) Release() override;

  STDMETHODIMP SetPageSite(IPropertyPageSite* site) override;
  STDMETHODIMP Activate(HWND parent, LPCRECT place, BOOL modal) override;
  STDMETHODIMP Deactivate() override;
  STDMETHODIMP GetPageInfo(PROPPAGEINFO* info) override;
  STDMETHODIMP SetObjects(ULONG count, IUnknown** objects) override;
  STDMETHODIMP Show(UINT show) override;
  STDMETHODIMP Move(LPCRECT place) override;
  STDMETHODIMP IsPageDirty() override;
  STDMETHODIMP Apply() override;
  STDMETHODIMP Help(LPCOLESTR) override;
  STDMETHODIMP TranslateAccelerator(MSG*) override;

 private:
  ~CSettingsPage();

  LONG refs_ = 1;
  int titleId_;
  ComPtr<IPropertyPageSite> site_;
  HWND window_ = nullptr;
};

// Class objects' creators for the three pages.
HRESULT CreateGraphSettingsPage(IUnknown* outer, REFIID iid, void** object);
HRESULT CreateAxesPage(IUnknown* outer, REFIID iid, void** object);
HRESULT CreateCurvePage(IUnknown* outer, REFIID iid, void** object);

}  // namespace zel

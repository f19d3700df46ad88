#pragma once
// A container written the way containers are: one site object that is the
// control's client site, its in-place site and frame, its view sink and its
// ambient properties. It records what the control tells it.
#include <ocidl.h>
#include <olectl.h>

#include "com_client.h"

namespace zel::testing {

class TestContainer : public IOleClientSite,
                      public IOleInPlaceSite,
                      public IOleInPlaceFrame,
                      public IAdviseSink,
                      public IDispatch {
 public:
  HWND window = nullptr;
  bool userMode = true;
  int viewChanges = 0;
  IOleInPlaceActiveObject* activeObject = nullptr;  // borrowed, as the frame holds it

  STDMETHODIMP QueryInterface(REFIID iid, void** object) override {
    if (IsEqualIID(iid, IID_IUnknown) || IsEqualIID(iid, IID_IOleClientSite)) *object = static_cast<IOleClientSite*>(this);
    else if (IsEqualIID(iid, IID_IOleInPlaceSite) || IsEqualIID(iid, IID_IOleWindow))
      *object = static_cast<IOleInPlaceSite*>(this);
    else if (IsEqualIID(iid, IID_IOleInPlaceFrame) || IsEqualIID(iid, IID_IOleInPlaceUIWindow))
      *object = static_cast<IOleInPlaceFrame*>(this);
    else if (IsEqualIID(iid, IID_IAdviseSink)) *object = static_cast<IAdviseSink*>(this);
    else if (IsEqualIID(iid, IID_IDispatch)) *object = static_cast<IDispatch*>(this);
    else return *object = nullptr, E_NOINTERFACE;
    return S_OK;
  }
  STDMETHODIMP_(ULONG) AddRef() override { return 2; }
  STDMETHODIMP_(ULONG) Release() override { return 1; }

  // IOleClientSite
  STDMETHODIMP SaveObject() override { return S_OK; }
  STDMETHODIMP GetMoniker(DWORD, DWORD, IMoniker**) override { return E_NOTIMPL; }
  STDMETHODIMP GetContainer(IOleContainer** c) override { return *c = nullptr, E_NOINTERFACE; }
  STDMETHODIMP ShowObject() override { return S_OK; }
  STDMETHODIMP OnShowWindow(BOOL) override { return S_OK; }
  STDMETHODIMP RequestNewObjectLayout() override { return E_NOTIMPL; }

  // IOleWindow, shared by the in-place site and the frame
  STDMETHODIMP GetWindow(HWND* w) override { return *w = window, S_OK; }
  STDMETHODIMP ContextSensitiveHelp(BOOL) override { return S_OK; }

  // IOleInPlaceSite
  STDMETHODIMP CanInPlaceActivate() override { return S_OK; }
  STDMETHODIMP OnInPlaceActivate() override { return S_OK; }
  STDMETHODIMP OnUIActivate() override { return S_OK; }
  STDMETHODIMP GetWindowContext(IOleInPlaceFrame** frame, IOleInPlaceUIWindow** document, LPRECT place,
                                LPRECT clip, LPOLEINPLACEFRAMEINFO info) override {
    *frame = this;
    *document = nullptr;
    SetRect(place, 0, 0, 400, 300);
    *clip = *place;
    info->fMDIApp = FALSE, info->hwndFrame = window, info->haccel = nullptr, info->cAccelEntries = 0;
    return S_OK;
  }
  STDMETHODIMP Scroll(SIZE) override { return S_OK; }
  STDMETHODIMP OnUIDeactivate(BOOL) override { return S_OK; }
  STDMETHODIMP OnInPlaceDeactivate() override { return S_OK; }
  STDMETHODIMP DiscardUndoState() override { return S_OK; }
  STDMETHODIMP DeactivateAndUndo() override { return S_OK; }
  STDMETHODIMP OnPosRectChange(LPCRECT) override { return S_OK; }

  // IOleInPlaceFrame
  STDMETHODIMP GetBorder(LPRECT) override { return INPLACE_E_NOTOOLSPACE; }
  STDMETHODIMP RequestBorderSpace(LPCBORDERWIDTHS) override { return INPLACE_E_NOTOOLSPACE; }
  STDMETHODIMP SetBorderSpace(LPCBORDERWIDTHS) override { return S_OK; }
  STDMETHODIMP SetActiveObject(IOleInPlaceActiveObject* object, LPCOLESTR) override {
    activeObject = object;
    return S_OK;
  }
  STDMETHODIMP InsertMenus(HMENU, LPOLEMENUGROUPWIDTHS) override { return S_OK; }
  STDMETHODIMP SetMenu(HMENU, HOLEMENU, HWND) override { return S_OK; }
  STDMETHODIMP RemoveMenus(HMENU) override { return S_OK; }
  STDMETHODIMP SetStatusText(LPCOLESTR) override { return S_OK; }
  STDMETHODIMP EnableModeless(BOOL) override { return S_OK; }
  STDMETHODIMP TranslateAccelerator(LPMSG, WORD) override { return S_FALSE; }

  // IAdviseSink
  STDMETHODIMP_(void) OnDataChange(FORMATETC*, STGMEDIUM*) override {}
  STDMETHODIMP_(void) OnViewChange(DWORD, LONG) override { ++viewChanges; }
  STDMETHODIMP_(void) OnRename(IMoniker*) override {}
  STDMETHODIMP_(void) OnSave() override {}
  STDMETHODIMP_(void) OnClose() override {}

  // IDispatch: the ambient properties; UserMode alone is answered.
  STDMETHODIMP GetTypeInfoCount(UINT* count) override { return *count = 0, S_OK; }
  STDMETHODIMP GetTypeInfo(UINT, LCID, ITypeInfo**) override { return E_NOTIMPL; }
  STDMETHODIMP GetIDsOfNames(REFIID, LPOLESTR*, UINT, LCID, DISPID*) override { return E_NOTIMPL; }
  STDMETHODIMP Invoke(DISPID id, REFIID, LCID, WORD, DISPPARAMS*, VARIANT* result, EXCEPINFO*, UINT*) override {
    if (id != DISPID_AMBIENT_USERMODE || !result) return DISP_E_MEMBERNOTFOUND;
    V_VT(result) = VT_BOOL, V_BOOL(result) = userMode ? VARIANT_TRUE : VARIANT_FALSE;
    return S_OK;
  }
};

}  // namespace zel::testing

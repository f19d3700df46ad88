#pragma once
// The host's side of the control's two connection points: an event sink and
// a property-change sink that hand each notification to one handler, which
// may call back into the control before the notification returns.
#include <windows.h>
#include <ocidl.h>

#include <functional>

#include "zelgraph_idl.h"

namespace zel::fuzz {

class ReentrantSink final : public IDispatch, public IPropertyNotifySink {
 public:
  // Told the event's dispid, or the changed property's dispid plus 0x10000.
  std::function<void(DISPID)> onNotified;
  // What Invoke and OnRequestEdit answer.
  HRESULT answer = S_OK;
  LONG Borrowed() const { return refs_ - 1; }

  STDMETHODIMP QueryInterface(REFIID iid, void** object) override {
    if (!object) return E_POINTER;
    *object = nullptr;
    if (IsEqualIID(iid, IID_IUnknown) || IsEqualIID(iid, IID_IDispatch) || IsEqualIID(iid, DIID__IVX_GraphEvents))
      *object = static_cast<IDispatch*>(this);
    else if (IsEqualIID(iid, IID_IPropertyNotifySink))
      *object = static_cast<IPropertyNotifySink*>(this);
    else
      return E_NOINTERFACE;
    AddRef();
    return S_OK;
  }
  STDMETHODIMP_(ULONG) AddRef() override { return ULONG(InterlockedIncrement(&refs_)); }
  STDMETHODIMP_(ULONG) Release() override { return ULONG(InterlockedDecrement(&refs_)); }
  STDMETHODIMP GetTypeInfoCount(UINT* count) override {
    if (count) *count = 0;
    return count ? S_OK : E_POINTER;
  }
  STDMETHODIMP GetTypeInfo(UINT, LCID, ITypeInfo**) override { return E_NOTIMPL; }
  STDMETHODIMP GetIDsOfNames(REFIID, LPOLESTR*, UINT, LCID, DISPID*) override { return DISP_E_UNKNOWNNAME; }
  STDMETHODIMP Invoke(DISPID id, REFIID, LCID, WORD, DISPPARAMS*, VARIANT*, EXCEPINFO*, UINT*) override {
    if (onNotified) onNotified(id);
    return answer;
  }
  STDMETHODIMP OnChanged(DISPID id) override {
    if (onNotified) onNotified(id + 0x10000);
    return S_OK;
  }
  STDMETHODIMP OnRequestEdit(DISPID) override { return answer == S_OK ? S_OK : S_FALSE; }

 private:
  LONG refs_ = 1;
};

}  // namespace zel::fuzz

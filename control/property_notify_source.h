#pragma once
// The control's connection point for IPropertyNotifySink: property browsers
// of designers connect here and hear which property changed, whoever
// changed it (a settings page or the host).
#include <windows.h>
#include <ocidl.h>

#include <vector>

#include "control/com_support.h"

namespace zel {

class PropertyNotifySource final : public IConnectionPoint {
 public:
  // `owner` is the control's container interface; the point shares its life.
  explicit PropertyNotifySource(IConnectionPointContainer* owner) : owner_(owner) {}

  STDMETHODIMP QueryInterface(REFIID iid, void** object) override;
  STDMETHODIMP_(ULONG) AddRef() override { return owner_->AddRef(); }
  STDMETHODIMP_(ULONG) Release() override { return owner_->Release(); }
  STDMETHODIMP GetConnectionInterface(IID* iid) override;
  STDMETHODIMP GetConnectionPointContainer(IConnectionPointContainer** container) override;
  STDMETHODIMP Advise(IUnknown* sink, DWORD* cookie) override;
  STDMETHODIMP Unadvise(DWORD cookie) override;
  STDMETHODIMP EnumConnections(IEnumConnections** connections) override;

  // Tells every connected sink that property `id` changed. Sinks may
  // connect, disconnect or call the control during the call.
  void Changed(DISPID id);

 private:
  struct Connection {
    DWORD cookie;
    ComPtr<IPropertyNotifySink> sink;
  };
  IConnectionPointContainer* owner_;
  std::vector<Connection> connections_;
  DWORD nextCookie_ = 1;
};

}  // namespace zel

#pragma once
// What the control's connection points share: the list of connected sinks
// by cookie, advising and unadvising, and the owner whose life the point
// shares. A point names its outgoing interface and says which interface of
// a connecting object it calls (`Accept`).
#include <windows.h>
#include <ocidl.h>
#include <olectl.h>

#include <algorithm>
#include <new>
#include <vector>

#include "control/com_support.h"

namespace zel {

template <typename Sink>
class ConnectionPoint : public IConnectionPoint {
 public:
  STDMETHODIMP QueryInterface(REFIID iid, void** object) override {
    return QueryFromTable(iid, object, {{IID_IUnknown, this}, {IID_IConnectionPoint, this}});
  }
  STDMETHODIMP_(ULONG) AddRef() override { return owner_->AddRef(); }
  STDMETHODIMP_(ULONG) Release() override { return owner_->Release(); }
  STDMETHODIMP GetConnectionInterface(IID* iid) override {
    if (!iid) return E_POINTER;
    *iid = interface_;
    return S_OK;
  }
  STDMETHODIMP GetConnectionPointContainer(IConnectionPointContainer** container) override {
    if (!container) return E_POINTER;
    *container = owner_;
    owner_->AddRef();
    return S_OK;
  }
  STDMETHODIMP Advise(IUnknown* sink, DWORD* cookie) override {
    if (!sink || !cookie) return E_POINTER;
    *cookie = 0;
    ComPtr<Sink> accepted = Accept(*sink);
    if (!accepted) return CONNECT_E_CANNOTCONNECT;
    try {
      connections_.push_back({nextCookie_, accepted});
    } catch (const std::bad_alloc&) {
      return E_OUTOFMEMORY;
    }
    *cookie = nextCookie_++;
    return S_OK;
  }
  STDMETHODIMP Unadvise(DWORD cookie) override {
    auto it = std::find_if(connections_.begin(), connections_.end(),
                           [cookie](const Connection& c) { return c.cookie == cookie; });
    if (it == connections_.end()) return CONNECT_E_NOCONNECTION;
    connections_.erase(it);
    return S_OK;
  }
  STDMETHODIMP EnumConnections(IEnumConnections** connections) override {
    if (connections) *connections = nullptr;
    return E_NOTIMPL;
  }

 protected:
  struct Connection {
    DWORD cookie;
    ComPtr<Sink> sink;
  };

  // `owner` is the control's container interface; the point shares its life.
  ConnectionPoint(IConnectionPointContainer* owner, REFIID outgoing) : owner_(owner), interface_(outgoing) {}
  virtual ~ConnectionPoint() = default;

  // The interface of a connecting object that the point calls; empty when
  // it has none.
  virtual ComPtr<Sink> Accept(IUnknown& sink) const = 0;

  // Calls `call` on every sink connected when the call begins. Sinks may
  // connect, disconnect or call the control meanwhile, so the list is a copy
  // and the owner is kept alive.
  template <typename Call>
  void ForEachSink(Call&& call) {
    if (connections_.empty()) return;
    ComPtr<IConnectionPointContainer> keepAlive(owner_);
    std::vector<Connection> sinks = connections_;
    for (const Connection& connection : sinks) call(*connection.sink.get());
  }

 private:
  IConnectionPointContainer* owner_;
  IID interface_;
  std::vector<Connection> connections_;
  DWORD nextCookie_ = 1;
};

}  // namespace zel

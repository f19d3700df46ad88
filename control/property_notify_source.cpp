#include "control/property_notify_source.h"

#include <olectl.h>

#include <algorithm>
#include <new>

namespace zel {

STDMETHODIMP PropertyNotifySource::QueryInterface(REFIID iid, void** object) {
  return QueryFromTable(iid, object, {{IID_IUnknown, this}, {IID_IConnectionPoint, this}});
}

STDMETHODIMP PropertyNotifySource::GetConnectionInterface(IID* iid) {
  if (!iid) return E_POINTER;
  *iid = IID_IPropertyNotifySink;
  return S_OK;
}

STDMETHODIMP PropertyNotifySource::GetConnectionPointContainer(IConnectionPointContainer** container) {
  if (!container) return E_POINTER;
  *container = owner_;
  owner_->AddRef();
  return S_OK;
}

STDMETHODIMP PropertyNotifySource::Advise(IUnknown* sink, DWORD* cookie) {
  if (!sink || !cookie) return E_POINTER;
  *cookie = 0;
  ComPtr<IPropertyNotifySink> notified;
  if (FAILED(sink->QueryInterface(IID_IPropertyNotifySink, reinterpret_cast<void**>(notified.put()))))
    return CONNECT_E_CANNOTCONNECT;
  try {
    connections_.push_back({nextCookie_, notified});
  } catch (const std::bad_alloc&) {
    return E_OUTOFMEMORY;
  }
  *cookie = nextCookie_++;
  return S_OK;
}

STDMETHODIMP PropertyNotifySource::Unadvise(DWORD cookie) {
  auto it = std::find_if(connections_.begin(), connections_.end(),
                         [cookie](const Connection& c) { return c.cookie == cookie; });
  if (it == connections_.end()) return CONNECT_E_NOCONNECTION;
  connections_.erase(it);
  return S_OK;
}

STDMETHODIMP PropertyNotifySource::EnumConnections(IEnumConnections** connections) {
  if (connections) *connections = nullptr;
  return E_NOTIMPL;
}

void PropertyNotifySource::Changed(DISPID id) {
  if (connections_.empty()) return;
  ComPtr<IConnectionPointContainer> keepAlive(owner_);
  std::vector<Connection> sinks = connections_;
  for (const Connection& connection : sinks) connection.sink->OnChanged(id);
}

}  // namespace zel

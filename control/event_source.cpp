#include "control/event_source.h"

#include <olectl.h>

#include <algorithm>
#include <new>

#include "zelgraph_idl.h"

namespace zel {
EventSource::EventSource(IConnectionPointContainer* owner) : owner_(owner) {}
EventSource::~EventSource() = default;

STDMETHODIMP EventSource::QueryInterface(REFIID iid, void** object) {
  return QueryFromTable(iid, object, {{IID_IUnknown, this}, {IID_IConnectionPoint, this}});
}

STDMETHODIMP_(ULONG) EventSource::AddRef() { return owner_->AddRef(); }
STDMETHODIMP_(ULONG) EventSource::Release() { return owner_->Release(); }

STDMETHODIMP EventSource::GetConnectionInterface(IID* iid) {
  if (!iid) return E_POINTER;
  *iid = DIID__IVX_GraphEvents;
  return S_OK;
}

STDMETHODIMP EventSource::GetConnectionPointContainer(IConnectionPointContainer** container) {
  if (!container) return E_POINTER;
  *container = owner_;
  owner_->AddRef();
  return S_OK;
}

STDMETHODIMP EventSource::Advise(IUnknown* sink, DWORD* cookie) {
  if (!sink || !cookie) return E_POINTER;
  *cookie = 0;
  ComPtr<IDispatch> events;
  if (FAILED(sink->QueryInterface(DIID__IVX_GraphEvents, reinterpret_cast<void**>(events.put()))) &&
      FAILED(sink->QueryInterface(IID_IDispatch, reinterpret_cast<void**>(events.put()))))
    return CONNECT_E_CANNOTCONNECT;
  try {
    connections_.push_back({nextCookie_, events});
  } catch (const std::bad_alloc&) {
    return E_OUTOFMEMORY;
  }
  *cookie = nextCookie_++;
  return S_OK;
}

STDMETHODIMP EventSource::Unadvise(DWORD cookie) {
  auto it = std::find_if(connections_.begin(), connections_.end(),
                         [cookie](const Connection& c) { return c.cookie == cookie; });
  if (it == connections_.end()) return CONNECT_E_NOCONNECTION;
  connections_.erase(it);
  return S_OK;
}

STDMETHODIMP EventSource::EnumConnections(IEnumConnections** connections) {
  if (connections) *connections = nullptr;
  return E_NOTIMPL;
}

VARIANT EventArgument(VARTYPE type, double number) {
  VARIANT v;
  VariantInit(&v);
  V_VT(&v) = type;
  switch (type) {
    case VT_R4: V_R4(&v) = float(number); break;
    case VT_INT: V_INT(&v) = INT(number); break;
    case VT_UI4: V_UI4(&v) = ULONG(number); break;
    default: V_I4(&v) = LONG(number); break;
  }
  return v;
}

void EventSource::Fire(DISPID id, std::vector<VARIANT> args) {
  std::reverse(args.begin(), args.end());
  DISPPARAMS params{args.data(), nullptr, UINT(args.size()), 0};
  // A copy, so that sinks may disconnect or connect while being called; the
  // control stays alive for the whole round.
  ComPtr<IConnectionPointContainer> keepAlive(owner_);
  std::vector<Connection> sinks = connections_;
  for (const Connection& connection : sinks) {
    VARIANT result;
    VariantInit(&result);
    connection.sink->Invoke(id, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_METHOD, &params, &result,
                            nullptr, nullptr);
    VariantClear(&result);
  }
  for (VARIANT& arg : args) VariantClear(&arg);
}

}  // namespace zel

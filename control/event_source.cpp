#include "control/event_source.h"

#include <olectl.h>

#include <algorithm>
#include <new>

#include "zelgraph_idl.h"

namespace zel {
namespace {

// Enumerates the control's single connection point.
class SinglePointEnumerator final : public IEnumConnectionPoints {
 public:
  explicit SinglePointEnumerator(IConnectionPoint* point, ULONG position = 0)
      : point_(point), position_(position) {}

  STDMETHODIMP QueryInterface(REFIID iid, void** object) override {
    return QueryFromTable(iid, object, {{IID_IUnknown, this}, {IID_IEnumConnectionPoints, this}});
  }
  STDMETHODIMP_(ULONG) AddRef() override { return InterlockedIncrement(&refs_); }
  STDMETHODIMP_(ULONG) Release() override {
    LONG refs = InterlockedDecrement(&refs_);
    if (refs == 0) delete this;
    return ULONG(refs);
  }
  STDMETHODIMP Next(ULONG count, IConnectionPoint** points, ULONG* fetched) override {
    if (!points) return E_POINTER;
    ULONG given = 0;
    if (count > 0 && position_ == 0) {
      points[0] = point_.get();
      points[0]->AddRef();
      given = 1;
      position_ = 1;
    }
    if (fetched) *fetched = given;
    return given == count ? S_OK : S_FALSE;
  }
  STDMETHODIMP Skip(ULONG count) override {
    position_ = std::min<ULONG>(1, position_ + count);
    return position_ == 1 && count > 1 ? S_FALSE : S_OK;
  }
  STDMETHODIMP Reset() override {
    position_ = 0;
    return S_OK;
  }
  STDMETHODIMP Clone(IEnumConnectionPoints** clone) override {
    if (!clone) return E_POINTER;
    *clone = new (std::nothrow) SinglePointEnumerator(point_.get(), position_);
    return *clone ? S_OK : E_OUTOFMEMORY;
  }

 private:
  LONG refs_ = 1;
  ComPtr<IConnectionPoint> point_;
  ULONG position_;
};

}  // namespace

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

HRESULT EventSource::EnumerateSelf(IEnumConnectionPoints** points) {
  if (!points) return E_POINTER;
  *points = new (std::nothrow) SinglePointEnumerator(this);
  return *points ? S_OK : E_OUTOFMEMORY;
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

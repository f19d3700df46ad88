#pragma once
// The control's outgoing events: one connection point for _IVX_GraphEvents,
// owned by the control and kept alive by it.
#include <windows.h>
#include <ocidl.h>

#include <vector>

#include "control/com_support.h"

namespace zel {

// The dispids of _IVX_GraphEvents.
enum EventId : DISPID {
  kAreaSelected = 2,
  kHairlineMoved = 3,
  kGraphAreaMoved = 4,
  kHighlightLegendAndCurves = 5,
  kSelectLegendFromGraph = 6,
};

// An event argument: a number as VT_R4, VT_INT, VT_UI4 or VT_I4.
VARIANT EventArgument(VARTYPE type, double number);

class EventSource final : public IConnectionPoint {
 public:
  // `owner` is the control's container interface; the point shares its life.
  explicit EventSource(IConnectionPointContainer* owner);
  ~EventSource();

  STDMETHODIMP QueryInterface(REFIID iid, void** object) override;
  STDMETHODIMP_(ULONG) AddRef() override;
  STDMETHODIMP_(ULONG) Release() override;
  STDMETHODIMP GetConnectionInterface(IID* iid) override;
  STDMETHODIMP GetConnectionPointContainer(IConnectionPointContainer** container) override;
  STDMETHODIMP Advise(IUnknown* sink, DWORD* cookie) override;
  STDMETHODIMP Unadvise(DWORD cookie) override;
  STDMETHODIMP EnumConnections(IEnumConnections** connections) override;

  // Calls every connected sink in turn with VARIANT arguments, first to last
  // as written (they are passed in reverse, as DISPPARAMS wants). Sinks may
  // connect, disconnect or call the control during the call.
  void Fire(DISPID id, std::vector<VARIANT> args);

 private:
  struct Connection {
    DWORD cookie;
    ComPtr<IDispatch> sink;
  };
  IConnectionPointContainer* owner_;
  std::vector<Connection> connections_;
  DWORD nextCookie_ = 1;
};

}  // namespace zel

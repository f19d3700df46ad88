#pragma once
// The control's outgoing events: one connection point for _IVX_GraphEvents,
// owned by the control and kept alive by it.
#include <windows.h>
#include <ocidl.h>

#include <vector>

#include "control/connection_point.h"

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

class EventSource final : public ConnectionPoint<IDispatch> {
 public:
  explicit EventSource(IConnectionPointContainer* owner);

  // Calls every connected sink in turn with VARIANT arguments, first to last
  // as written (they are passed in reverse, as DISPPARAMS wants). Sinks may
  // connect, disconnect or call the control during the call.
  void Fire(DISPID id, std::vector<VARIANT> args);

 private:
  // The events interface, or a plain IDispatch.
  ComPtr<IDispatch> Accept(IUnknown& sink) const override;
};

}  // namespace zel

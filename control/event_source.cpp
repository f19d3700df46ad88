#include "control/event_source.h"

#include <algorithm>

#include "zelgraph_idl.h"

namespace zel {
EventSource::EventSource(IConnectionPointContainer* owner)
    : ConnectionPoint(owner, DIID__IVX_GraphEvents) {}

ComPtr<IDispatch> EventSource::Accept(IUnknown& sink) const {
  ComPtr<IDispatch> events;
  if (FAILED(sink.QueryInterface(DIID__IVX_GraphEvents, reinterpret_cast<void**>(events.put()))) &&
      FAILED(sink.QueryInterface(IID_IDispatch, reinterpret_cast<void**>(events.put()))))
    return {};
  return events;
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
  ForEachSink([&](IDispatch& sink) {
    VARIANT result;
    VariantInit(&result);
    sink.Invoke(id, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_METHOD, &params, &result, nullptr, nullptr);
    VariantClear(&result);
  });
  for (VARIANT& arg : args) VariantClear(&arg);
}

}  // namespace zel

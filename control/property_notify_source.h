#pragma once
// The control's connection point for IPropertyNotifySink: property browsers
// of designers connect here and hear which property changed, whoever
// changed it (a settings page or the host).
#include "control/connection_point.h"

namespace zel {

class PropertyNotifySource final : public ConnectionPoint<IPropertyNotifySink> {
 public:
  explicit PropertyNotifySource(IConnectionPointContainer* owner)
      : ConnectionPoint(owner, IID_IPropertyNotifySink) {}

  // Tells every connected sink that property `id` changed. Sinks may
  // connect, disconnect or call the control during the call.
  void Changed(DISPID id) {
    ForEachSink([id](IPropertyNotifySink& sink) { sink.OnChanged(id); });
  }

 private:
  ComPtr<IPropertyNotifySink> Accept(IUnknown& sink) const override {
    ComPtr<IPropertyNotifySink> notified;
    sink.QueryInterface(IID_IPropertyNotifySink, reinterpret_cast<void**>(notified.put()));
    return notified;
  }
};

}  // namespace zel

// What containers ask of a control beyond siting and drawing: keys inside
// dialogs and forms, quick activation, control information and the ambient
// UserMode of designers.
#include <windows.h>
#include <olectl.h>

#include <cstddef>

#include "control/vx_graph.h"

namespace zel {
namespace {

// The keys the control acts on: the hairline keys, and Esc while a drag is
// under way (it cancels the drag; otherwise it belongs to the dialog).
bool IsControlKey(const MSG& message, bool dragging) {
  if (message.message != WM_KEYDOWN) return false;
  return message.wParam == VK_LEFT || message.wParam == VK_RIGHT || (message.wParam == VK_ESCAPE && dragging);
}

}  // namespace

// A dialog's navigation (IsDialogMessage) would take the arrow keys and Esc;
// the control claims exactly its own, so Tab and the rest still move on.
LRESULT CVX_Graph::DialogCode(const MSG* message) const {
  return message && IsControlKey(*message, tracker_.dragState() != DragState::kIdle) ? DLGC_WANTMESSAGE : 0;
}

STDMETHODIMP CVX_Graph::TranslateAccelerator(LPMSG message) {
  HWND window = window_.handle();
  if (!message || !window || message->hwnd != window) return S_FALSE;
  if (!IsControlKey(*message, tracker_.dragState() != DragState::kIdle)) return S_FALSE;
  SendMessageW(window, message->message, message->wParam, message->lParam);
  return S_OK;
}

STDMETHODIMP CVX_Graph::GetControlInfo(CONTROLINFO* info) {
  if (!info) return E_POINTER;
  if (info->cb < sizeof(CONTROLINFO)) return E_INVALIDARG;
  info->hAccel = nullptr;
  info->cAccel = 0;
  info->dwFlags = 0;
  return S_OK;
}

STDMETHODIMP CVX_Graph::OnAmbientPropertyChange(DISPID id) {
  if (id == DISPID_AMBIENT_USERMODE || id == DISPID_UNKNOWN) ReadAmbientUserMode();
  return S_OK;
}

// Without a site that answers, the control runs in user mode.
void CVX_Graph::ReadAmbientUserMode() {
  userMode_ = true;
  ComPtr<IDispatch> ambients;
  if (!clientSite_ || FAILED(clientSite_->QueryInterface(IID_IDispatch, reinterpret_cast<void**>(ambients.put()))))
    return;
  VARIANT value;
  VariantInit(&value);
  DISPPARAMS none{};
  if (SUCCEEDED(ambients->Invoke(DISPID_AMBIENT_USERMODE, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_PROPERTYGET, &none,
                                 &value, nullptr, nullptr)) &&
      SUCCEEDED(VariantChangeType(&value, &value, 0, VT_BOOL)))
    userMode_ = V_BOOL(&value) != VARIANT_FALSE;
  VariantClear(&value);
}

// The container hands over in one call what it would otherwise pass in
// SetClientSite, SetAdvise and two Advise calls, with its ambients.
STDMETHODIMP CVX_Graph::QuickActivate(QACONTAINER* container, QACONTROL* control) {
  if (!container || !control) return E_POINTER;
  if (container->cbSize < offsetof(QACONTAINER, colorFore) || control->cbSize < sizeof(QACONTROL))
    return E_INVALIDARG;
  SetClientSite(container->pClientSite);
  userMode_ = container->dwAmbientFlags & QACONTAINER_USERMODE;
  if (container->pAdviseSink) SetAdvise(DVASPECT_CONTENT, 0, container->pAdviseSink);
  control->dwEventCookie = 0;
  control->dwPropNotifyCookie = 0;
  if (container->pUnkEventSink) events_.Advise(container->pUnkEventSink, &control->dwEventCookie);
  if (container->pPropertyNotifySink)
    propertyNotify_.Advise(container->pPropertyNotifySink, &control->dwPropNotifyCookie);
  GetMiscStatus(DVASPECT_CONTENT, &control->dwMiscStatus);
  control->dwViewStatus = 0;
  control->dwPointerActivationPolicy = 0;
  return S_OK;
}

}  // namespace zel

// The control object: its life, its COM identity and dispatch, errors and
// connection points.
#include "control/vx_graph.h"

#include <olectl.h>

#include <new>

#include "control/com_support.h"
#include "control/connection_points.h"
#include "control/module.h"
#include "control/type_library.h"

namespace zel {

HRESULT CVX_Graph::Create(IUnknown*, REFIID iid, void** object) {
  CVX_Graph* control = new (std::nothrow) CVX_Graph();
  if (!control) return E_OUTOFMEMORY;
  HRESULT hr = control->QueryInterface(iid, object);
  control->Release();
  return hr;
}

CVX_Graph::CVX_Graph()
    : window_(*this),
      graph_(std::make_unique<VGraph>(&window_)),
      tracker_(*graph_, window_),
      events_(this),
      propertyNotify_(this) {
  VariantInit(&version_);
  V_VT(&version_) = VT_R4;
  V_R4(&version_) = 0;
  defaults_ = CurrentSettings();
  LockModule();
}

CVX_Graph::~CVX_Graph() {
  window_.Destroy();
  VariantClear(&version_);
  UnlockModule();
}

STDMETHODIMP CVX_Graph::QueryInterface(REFIID iid, void** object) {
  IVX_Graph* self = this;
  return QueryFromTable(iid, object,
                        {{IID_IUnknown, self},
                         {IID_IDispatch, self},
                         {IID_IVX_Graph, self},
                         {IID_ISupportErrorInfo, static_cast<ISupportErrorInfo*>(this)},
                         {IID_IProvideClassInfo, static_cast<IProvideClassInfo2*>(this)},
                         {IID_IProvideClassInfo2, static_cast<IProvideClassInfo2*>(this)},
                         {IID_IConnectionPointContainer, static_cast<IConnectionPointContainer*>(this)},
                         {IID_IOleObject, static_cast<IOleObject*>(this)},
                         {IID_IOleWindow, static_cast<IOleInPlaceObject*>(this)},
                         {IID_IOleInPlaceObject, static_cast<IOleInPlaceObject*>(this)},
                         {IID_IOleInPlaceActiveObject, static_cast<IOleInPlaceActiveObject*>(this)},
                         {IID_IOleControl, static_cast<IOleControl*>(this)},
                         {IID_IViewObject, static_cast<IViewObject2*>(this)},
                         {IID_IViewObject2, static_cast<IViewObject2*>(this)},
                         {IID_IPersist, static_cast<IPersistStreamInit*>(this)},
                         {IID_IPersistStreamInit, static_cast<IPersistStreamInit*>(this)},
                         {IID_IPersistPropertyBag, static_cast<IPersistPropertyBag*>(this)},
                         {IID_IPersistStorage, static_cast<IPersistStorage*>(this)},
                         {IID_IQuickActivate, static_cast<IQuickActivate*>(this)},
                         {IID_IDataObject, static_cast<IDataObject*>(this)},
                         {IID_ISpecifyPropertyPages, static_cast<ISpecifyPropertyPages*>(this)},
                         {IID_IPromptOwner, static_cast<IPromptOwner*>(this)},
                         {IID_IAxisSides, static_cast<IAxisSides*>(this)}});
}

STDMETHODIMP_(ULONG) CVX_Graph::AddRef() { return InterlockedIncrement(&refs_); }

STDMETHODIMP_(ULONG) CVX_Graph::Release() {
  LONG refs = InterlockedDecrement(&refs_);
  if (refs == 0) delete this;
  return ULONG(refs);
}

STDMETHODIMP CVX_Graph::GetTypeInfoCount(UINT* count) {
  if (!count) return E_POINTER;
  *count = 1;
  return S_OK;
}

STDMETHODIMP CVX_Graph::GetTypeInfo(UINT index, LCID, ITypeInfo** info) {
  if (!info) return E_POINTER;
  *info = nullptr;
  if (index != 0) return DISP_E_BADINDEX;
  return TypeInfoOf(IID_IVX_Graph, info);
}

STDMETHODIMP CVX_Graph::GetIDsOfNames(REFIID, LPOLESTR* names, UINT count, LCID, DISPID* ids) {
  ComPtr<ITypeInfo> info;
  HRESULT hr = TypeInfoOf(IID_IVX_Graph, info.put());
  return SUCCEEDED(hr) ? info->GetIDsOfNames(names, count, ids) : hr;
}

// The entries whose vtable layout has several values behind one pointer
// learn that the call came late-bound, with one variable behind it.
STDMETHODIMP CVX_Graph::Invoke(DISPID id, REFIID iid, LCID, WORD flags, DISPPARAMS* params,
                               VARIANT* result, EXCEPINFO* exception, UINT* argumentError) {
  if (!IsEqualIID(iid, IID_NULL)) return DISP_E_UNKNOWNINTERFACE;
  ComPtr<ITypeInfo> info;
  HRESULT hr = TypeInfoOf(IID_IVX_Graph, info.put());
  if (FAILED(hr)) return hr;
  bool wasLateBound = lateBound_;
  lateBound_ = TakesOneVariableLateBound(id);
  hr = info->Invoke(static_cast<IVX_Graph*>(this), id, flags, params, result, exception, argumentError);
  lateBound_ = wasLateBound;
  return hr;
}

STDMETHODIMP CVX_Graph::InterfaceSupportsErrorInfo(REFIID iid) {
  return IsEqualIID(iid, IID_IVX_Graph) ? S_OK : S_FALSE;
}

STDMETHODIMP CVX_Graph::GetClassInfo(ITypeInfo** info) {
  if (!info) return E_POINTER;
  return TypeInfoOf(CLSID_VX_Graph, info);
}

STDMETHODIMP CVX_Graph::GetGUID(DWORD kind, GUID* guid) {
  if (!guid) return E_POINTER;
  if (kind != GUIDKIND_DEFAULT_SOURCE_DISP_IID) return E_INVALIDARG;
  *guid = DIID__IVX_GraphEvents;
  return S_OK;
}

STDMETHODIMP CVX_Graph::EnumConnectionPoints(IEnumConnectionPoints** points) {
  return EnumerateConnectionPoints({&events_, &propertyNotify_}, points);
}

STDMETHODIMP CVX_Graph::FindConnectionPoint(REFIID iid, IConnectionPoint** point) {
  if (!point) return E_POINTER;
  *point = nullptr;
  if (IsEqualIID(iid, DIID__IVX_GraphEvents)) *point = &events_;
  else if (IsEqualIID(iid, IID_IPropertyNotifySink)) *point = &propertyNotify_;
  else return CONNECT_E_NOCONNECTION;
  (*point)->AddRef();
  return S_OK;
}

void CVX_Graph::PropertyChanged(DISPID id) {
  dirty_ = true;
  propertyNotify_.Changed(id);
}

}  // namespace zel

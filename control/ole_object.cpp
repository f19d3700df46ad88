// The control as an OLE object: sited in a container, activated in place in
// a window of its own, drawn on request, saved and described.
#include <windows.h>
#include <olectl.h>

#include <algorithm>

#include "control/automation_values.h"
#include "control/class_ids.h"
#include "control/com_support.h"
#include "control/gdi_surface.h"
#include "control/verb_enumerator.h"
#include "control/vx_graph.h"

namespace zel {
namespace {

constexpr DWORD kMiscStatus = 131473;
constexpr COLORREF kWhite = 0xFFFFFF;

// What of the target's `drawn` rectangle the off-screen bitmap needs to
// hold: the part inside the nominal surface of width by height pixels
// that the target can show (its clip box), within the back buffer's bounds;
// a larger area is drawn in its top rows only.
RECT SurfaceArea(HDC target, const RECT& drawn, const RECT& nominal) {
  RECT area{}, shown{};
  IntersectRect(&area, &drawn, &nominal);
  switch (GetClipBox(target, &shown)) {
    case NULLREGION: return RECT{};
    case SIMPLEREGION:
    case COMPLEXREGION: IntersectRect(&area, &area, &shown); break;
    default: break;
  }
  area.right = LONG(std::min<int64_t>(area.right, int64_t(area.left) + BackBuffer::kMaxSide));
  if (LONG across = area.right - area.left; across > 0)
    area.bottom = LONG(std::min<int64_t>(area.bottom, int64_t(area.top) + BackBuffer::kMaxPixels / across));
  return area;
}

// The distance from `low` to `high`, within what an int and a layout hold:
// a host's bounds may lie anywhere in the 32-bit plane.
int Extent(LONG low, LONG high) {
  return int(std::clamp<int64_t>(int64_t(high) - low, -BackBuffer::kMaxSide, BackBuffer::kMaxSide));
}

bool IsMetafile(HDC target) {
  DWORD kind = GetObjectType(target);
  return kind == OBJ_ENHMETADC || kind == OBJ_METADC;
}

}  // namespace

// Draws the graph for a container, a paint message or a printer: into an
// off-screen bitmap first, then onto the target in one piece. The bitmap
// holds only the part of the draw rectangle the target shows; the pass
// draws at the same device positions as into a bitmap of the whole.
// Targets other than the live window are drawn detached.
void CVX_Graph::DrawInto(HDC target, const RECT& given) {
  if (!window_.Exists() || IsMetafile(target)) {
    DrawDetached(target, given);
    return;
  }
  RECT bounds = given;
  RECT screen = given;
  HWND window = window_.handle();
  if (window && IsWindow(window)) GetClientRect(window, &screen);
  int technology = GetDeviceCaps(target, TECHNOLOGY);
  bool printing = technology == DT_RASPRINTER;
  bool wasPrinting = graph_->printing();
  double wasScale = graph_->printScale();
  if (printing) {
    graph_->SetPrinting(true, PrinterScale(target));
    GdiSurface measuring(target);
    graph_->Recalculate(Extent(bounds.left, bounds.right) + 1, Extent(bounds.top, bounds.bottom) + 1, &measuring);
  }
  if (technology == DT_RASDISPLAY) {
    bounds = screen;
    if (drawRect_.left == 0 && drawRect_.top == 0 && drawRect_.right == 0 && drawRect_.bottom == 0)
      drawRect_ = screen;
    if (drawRect_.right - drawRect_.left != screen.right - screen.left) drawRect_ = bounds;
  } else {
    drawRect_ = bounds;
  }
  int width = Extent(bounds.left, bounds.right), height = Extent(bounds.top, bounds.bottom);
  if (width < 1) width = GetDeviceCaps(target, HORZRES);
  if (height < 1) height = GetDeviceCaps(target, VERTRES);
  if (printing) {
    width = GetDeviceCaps(target, HORZRES);
    height = GetDeviceCaps(target, VERTRES);
  }
  RECT area = SurfaceArea(target, drawRect_, RECT{0, 0, width, height});
  DrawOffScreen(target, area, bounds, technology == DT_RASDISPLAY);
  if (printing) {
    graph_->SetPrinting(wasPrinting, wasScale);
    graph_->Recalculate(screen.right - screen.left + 1, screen.bottom - screen.top + 1);
  }
  SetRect(&drawRect_, 0, 0, 0, 0);
}

// Frames on the display reuse the window's back buffer and drawing objects;
// others (printers, metafiles, or no window) make their own and drop them.
void CVX_Graph::DrawOffScreen(HDC target, const RECT& area, const RECT& bounds, bool display) {
  bool shared = display && window_.Exists();
  BackBuffer ownBuffer;
  BackBuffer& buffer = shared ? window_.backBuffer() : ownBuffer;
  int across = area.right - area.left, down = area.bottom - area.top;
  HDC memory = buffer.Begin(target, across, down);
  if (!memory) return;
  COLORREF background = TranslateColor(backColor_).value_or(kWhite);
  SetBkColor(memory, background);
  {
    GdiSurface surface(memory, Point{area.left, area.top}, shared ? &window_.drawingObjects() : nullptr);
    Rect local{bounds.left, bounds.top, bounds.right, bounds.bottom};
    Rect update{drawRect_.left, drawRect_.top, drawRect_.right, drawRect_.bottom};
    // Without a window there is no drawing pass; the background still shows.
    surface.FillRect({area.left, area.top, area.right, area.bottom}, background);
    graph_->Draw(surface, local, update);
  }
  BitBlt(target, area.left, area.top, across, down, memory, 0, 0, SRCCOPY);
  buffer.End();
}

// The graph laid out for `bounds` and drawn there, for a target that is not
// the live window: a metafile records the drawing calls themselves (a
// picture that scales); anything else gets the part of the bounds it shows
// through an off-screen bitmap. A printer scales as when printing.
void CVX_Graph::DrawDetached(HDC target, const RECT& bounds) {
  int64_t width = int64_t(bounds.right) - bounds.left, height = int64_t(bounds.bottom) - bounds.top;
  if (width < 1 || height < 1 || width > BackBuffer::kMaxSide || height > BackBuffer::kMaxSide) return;
  bool printing = GetDeviceCaps(target, TECHNOLOGY) == DT_RASPRINTER;
  bool wasPrinting = graph_->printing();
  double wasScale = graph_->printScale();
  if (printing) graph_->SetPrinting(true, PrinterScale(target));
  COLORREF background = TranslateColor(backColor_).value_or(kWhite);
  Rect place{bounds.left, bounds.top, bounds.right, bounds.bottom};
  if (IsMetafile(target)) {
    int saved = SaveDC(target);
    SetBkColor(target, background);
    {
      GdiSurface surface(target);
      graph_->DrawDetached(surface, place);
    }
    RestoreDC(target, saved);
  } else {
    RECT area = SurfaceArea(target, bounds, bounds);
    int across = area.right - area.left, down = area.bottom - area.top;
    BackBuffer buffer;
    if (HDC memory = across > 0 && down > 0 ? buffer.Begin(target, across, down) : nullptr) {
      SetBkColor(memory, background);
      {
        GdiSurface surface(memory, Point{area.left, area.top});
        graph_->DrawDetached(surface, place);
      }
      BitBlt(target, area.left, area.top, across, down, memory, 0, 0, SRCCOPY);
      buffer.End();
    }
  }
  if (printing) graph_->SetPrinting(wasPrinting, wasScale);
}

// A printer draws every pixel constant and font larger by its resolution
// over the screen's.
double CVX_Graph::PrinterScale(HDC printer) {
  HDC screen = GetDC(nullptr);
  int screenDpi = screen ? GetDeviceCaps(screen, LOGPIXELSX) : 0;
  if (screen) ReleaseDC(nullptr, screen);
  int printerDpi = GetDeviceCaps(printer, LOGPIXELSX);
  return screenDpi > 0 && printerDpi > 0 ? double(printerDpi) / screenDpi : 1.0;
}

void CVX_Graph::ViewChanged() {
  if (window_.Exists() && !graph_->suspendDraw()) window_.Invalidate(true);
  else TellViewSink();
}

// A sink that asked to hear once is forgotten after the first notice.
void CVX_Graph::TellViewSink() {
  ComPtr<IAdviseSink> sink = viewSink_;
  if (!sink) return;
  if (viewFlags_ & ADVF_ONLYONCE) viewSink_ = nullptr;
  sink->OnViewChange(DVASPECT_CONTENT, -1);
}

STDMETHODIMP CVX_Graph::SetClientSite(IOleClientSite* site) {
  clientSite_ = site;
  ReadAmbientUserMode();
  return S_OK;
}

STDMETHODIMP CVX_Graph::GetClientSite(IOleClientSite** site) {
  if (!site) return E_POINTER;
  *site = clientSite_.get();
  if (*site) (*site)->AddRef();
  return S_OK;
}

STDMETHODIMP CVX_Graph::Close(DWORD) {
  InPlaceDeactivate();
  if (adviseHolder_) adviseHolder_->SendOnClose();
  return S_OK;
}

STDMETHODIMP CVX_Graph::GetMoniker(DWORD, DWORD, IMoniker** moniker) {
  if (moniker) *moniker = nullptr;
  return E_NOTIMPL;
}

STDMETHODIMP CVX_Graph::GetClipboardData(DWORD, IDataObject** data) {
  if (!data) return E_POINTER;
  *data = static_cast<IDataObject*>(this);
  AddRef();
  return S_OK;
}

STDMETHODIMP CVX_Graph::DoVerb(LONG verb, LPMSG, IOleClientSite* site, LONG, HWND parent,
                               LPCRECT position) {
  if (site && !clientSite_) clientSite_ = site;
  switch (verb) {
    case OLEIVERB_PRIMARY:
    case OLEIVERB_SHOW:
    case OLEIVERB_INPLACEACTIVATE:
    case OLEIVERB_UIACTIVATE:
      return InPlaceActivate(verb, parent, position);
    case OLEIVERB_HIDE:
      return UIDeactivate();
    case OLEIVERB_PROPERTIES:
      return OpenPropertiesVerb(parent);
    default:
      return verb < 0 ? E_NOTIMPL : OLEOBJ_S_INVALIDVERB;
  }
}

HRESULT CVX_Graph::InPlaceActivate(LONG verb, HWND parent, LPCRECT position) {
  if (!window_.Exists()) {
    if (!clientSite_) return E_UNEXPECTED;
    if (FAILED(clientSite_->QueryInterface(IID_IOleInPlaceSite, reinterpret_cast<void**>(inPlaceSite_.put()))))
      return E_NOINTERFACE;
    if (inPlaceSite_->CanInPlaceActivate() != S_OK) return E_FAIL;
    inPlaceSite_->OnInPlaceActivate();
    ComPtr<IOleInPlaceFrame> frame;
    ComPtr<IOleInPlaceUIWindow> document;
    RECT place{}, clip{};
    OLEINPLACEFRAMEINFO frameInfo{sizeof frameInfo};
    inPlaceSite_->GetWindowContext(frame.put(), document.put(), &place, &clip, &frameInfo);
    inPlaceFrame_ = frame;
    inPlaceDocument_ = document;
    HWND siteWindow = nullptr;
    inPlaceSite_->GetWindow(&siteWindow);
    if (!window_.Create(siteWindow ? siteWindow : parent, position ? *position : place))
      return E_FAIL;
  }
  if (verb == OLEIVERB_UIACTIVATE || verb == OLEIVERB_PRIMARY) {
    if (!uiActive_ && inPlaceSite_) {
      uiActive_ = true;
      inPlaceSite_->OnUIActivate();
      // The frame and document hand keys to the active object's
      // TranslateAccelerator first.
      auto* active = static_cast<IOleInPlaceActiveObject*>(this);
      if (inPlaceFrame_) inPlaceFrame_->SetActiveObject(active, nullptr);
      if (inPlaceDocument_) inPlaceDocument_->SetActiveObject(active, nullptr);
    }
    SetFocus(window_.handle());
  }
  ShowWindow(window_.handle(), SW_SHOW);
  return S_OK;
}

STDMETHODIMP CVX_Graph::EnumVerbs(IEnumOLEVERB** verbs) { return EnumerateVerbs(verbs); }

STDMETHODIMP CVX_Graph::GetUserClassID(CLSID* clsid) { return GetClassID(clsid); }

STDMETHODIMP CVX_Graph::GetUserType(DWORD form, LPOLESTR* type) {
  return OleRegGetUserType(CLSID_VX_Graph, form, type);
}

STDMETHODIMP CVX_Graph::SetExtent(DWORD aspect, SIZEL* size) {
  if (aspect != DVASPECT_CONTENT) return DV_E_DVASPECT;
  if (!size) return E_POINTER;
  extent_ = *size;
  return S_OK;
}

STDMETHODIMP CVX_Graph::GetExtent(DWORD aspect, SIZEL* size) {
  if (aspect != DVASPECT_CONTENT) return DV_E_DVASPECT;
  if (!size) return E_POINTER;
  *size = extent_;
  return S_OK;
}

STDMETHODIMP CVX_Graph::Advise(IAdviseSink* sink, DWORD* connection) {
  if (!adviseHolder_ && FAILED(CreateOleAdviseHolder(adviseHolder_.put()))) return E_OUTOFMEMORY;
  return adviseHolder_->Advise(sink, connection);
}

STDMETHODIMP CVX_Graph::Unadvise(DWORD connection) {
  return adviseHolder_ ? adviseHolder_->Unadvise(connection) : OLE_E_NOCONNECTION;
}

STDMETHODIMP CVX_Graph::EnumAdvise(IEnumSTATDATA** advise) {
  if (advise) *advise = nullptr;
  return adviseHolder_ ? adviseHolder_->EnumAdvise(advise) : E_FAIL;
}

STDMETHODIMP CVX_Graph::GetMiscStatus(DWORD, DWORD* status) {
  if (!status) return E_POINTER;
  *status = kMiscStatus;
  return S_OK;
}

STDMETHODIMP CVX_Graph::GetWindow(HWND* window) {
  if (!window) return E_POINTER;
  *window = window_.handle();
  return *window ? S_OK : E_FAIL;
}

STDMETHODIMP CVX_Graph::InPlaceDeactivate() {
  if (!window_.Exists()) return S_OK;
  UIDeactivate();
  window_.Destroy();
  if (inPlaceSite_) inPlaceSite_->OnInPlaceDeactivate();
  inPlaceSite_ = nullptr;
  inPlaceFrame_ = nullptr;
  inPlaceDocument_ = nullptr;
  return S_OK;
}

STDMETHODIMP CVX_Graph::UIDeactivate() {
  if (uiActive_) {
    if (inPlaceFrame_) inPlaceFrame_->SetActiveObject(nullptr, nullptr);
    if (inPlaceDocument_) inPlaceDocument_->SetActiveObject(nullptr, nullptr);
    if (inPlaceSite_) inPlaceSite_->OnUIDeactivate(FALSE);
  }
  uiActive_ = false;
  return S_OK;
}

STDMETHODIMP CVX_Graph::SetObjectRects(LPCRECT position, LPCRECT) {
  if (!position) return E_POINTER;
  if (window_.Exists())
    MoveWindow(window_.handle(), position->left, position->top, position->right - position->left,
               position->bottom - position->top, TRUE);
  return S_OK;
}

STDMETHODIMP CVX_Graph::Draw(DWORD aspect, LONG, void*, DVTARGETDEVICE*, HDC, HDC dc,
                             LPCRECTL bounds, LPCRECTL, BOOL(STDMETHODCALLTYPE*)(ULONG_PTR), ULONG_PTR) {
  if (aspect != DVASPECT_CONTENT) return DV_E_DVASPECT;
  if (!dc || !bounds) return E_INVALIDARG;
  RECT r{bounds->left, bounds->top, bounds->right, bounds->bottom};
  DrawInto(dc, r);
  return S_OK;
}

STDMETHODIMP CVX_Graph::SetAdvise(DWORD aspects, DWORD flags, IAdviseSink* sink) {
  viewAspects_ = aspects;
  viewFlags_ = flags;
  viewSink_ = sink;
  return S_OK;
}

STDMETHODIMP CVX_Graph::GetAdvise(DWORD* aspects, DWORD* flags, IAdviseSink** sink) {
  if (aspects) *aspects = viewAspects_;
  if (flags) *flags = viewFlags_;
  if (sink) {
    *sink = viewSink_.get();
    if (*sink) (*sink)->AddRef();
  }
  return S_OK;
}

STDMETHODIMP CVX_Graph::GetExtent(DWORD aspect, LONG, DVTARGETDEVICE*, LPSIZEL size) {
  return GetExtent(aspect, size);
}


STDMETHODIMP CVX_Graph::GetPages(CAUUID* pages) {
  if (!pages) return E_POINTER;
  pages->pElems = static_cast<GUID*>(CoTaskMemAlloc(3 * sizeof(GUID)));
  if (!pages->pElems) {
    pages->cElems = 0;
    return E_OUTOFMEMORY;
  }
  pages->cElems = 3;
  pages->pElems[0] = kGraphPageClsid;
  pages->pElems[1] = kAxesPageClsid;
  pages->pElems[2] = kCurvePageClsid;
  return S_OK;
}

}  // namespace zel

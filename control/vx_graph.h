#pragma once
// The VX_Graph control: the automation object over one graph engine.
#include <windows.h>
#include <ocidl.h>

#include <array>
#include <functional>
#include <memory>

#include "control/axis_sides.h"
#include "control/control_window.h"
#include "control/event_source.h"
#include "control/module.h"
#include "control/prompt_message.h"
#include "control/property_notify_source.h"
#include "engine/v_graph.h"
#include "util/saved_settings.h"
#include "interaction/highlight.h"
#include "interaction/mouse_tracker.h"
#include "zelgraph_idl.h"

namespace zel {

class CVX_Graph final : public IVX_Graph,
                        public ISupportErrorInfo,
                        public IProvideClassInfo2,
                        public IConnectionPointContainer,
                        public IOleObject,
                        public IOleInPlaceObject,
                        public IOleInPlaceActiveObject,
                        public IOleControl,
                        public IViewObject2,
                        public IPersistStreamInit,
                        public IPersistPropertyBag,
                        public IPersistStorage,
                        public IQuickActivate,
                        public IDataObject,
                        public ISpecifyPropertyPages,
                        public IPromptOwner,
                        public IAxisSides {
 public:
  static HRESULT Create(IUnknown* outer, REFIID iid, void** object);

  // IUnknown
  STDMETHODIMP QueryInterface(REFIID iid, void** object) override;
  STDMETHODIMP_(ULONG) AddRef() override;
  STDMETHODIMP_(ULONG) Release() override;

  // IDispatch, through the type library
  STDMETHODIMP GetTypeInfoCount(UINT* count) override;
  STDMETHODIMP GetTypeInfo(UINT index, LCID lcid, ITypeInfo** info) override;
  STDMETHODIMP GetIDsOfNames(REFIID iid, LPOLESTR* names, UINT count, LCID lcid, DISPID* ids) override;
  STDMETHODIMP Invoke(DISPID id, REFIID iid, LCID lcid, WORD flags, DISPPARAMS* params,
                      VARIANT* result, EXCEPINFO* exception, UINT* argumentError) override;

  // ISupportErrorInfo
  STDMETHODIMP InterfaceSupportsErrorInfo(REFIID iid) override;
  // IProvideClassInfo2
  STDMETHODIMP GetClassInfo(ITypeInfo** info) override;
  STDMETHODIMP GetGUID(DWORD kind, GUID* guid) override;
  // IConnectionPointContainer
  STDMETHODIMP EnumConnectionPoints(IEnumConnectionPoints** points) override;
  STDMETHODIMP FindConnectionPoint(REFIID iid, IConnectionPoint** point) override;

  // IOleObject
  STDMETHODIMP SetClientSite(IOleClientSite* site) override;
  STDMETHODIMP GetClientSite(IOleClientSite** site) override;
  STDMETHODIMP SetHostNames(LPCOLESTR, LPCOLESTR) override { return S_OK; }
  STDMETHODIMP Close(DWORD saveOption) override;
  STDMETHODIMP SetMoniker(DWORD, IMoniker*) override { return E_NOTIMPL; }
  STDMETHODIMP GetMoniker(DWORD, DWORD, IMoniker** moniker) override;
  STDMETHODIMP InitFromData(IDataObject*, BOOL, DWORD) override { return E_NOTIMPL; }
  STDMETHODIMP GetClipboardData(DWORD, IDataObject** data) override;
  STDMETHODIMP DoVerb(LONG verb, LPMSG, IOleClientSite* site, LONG, HWND parent, LPCRECT position) override;
  STDMETHODIMP EnumVerbs(IEnumOLEVERB** verbs) override;
  STDMETHODIMP Update() override { return S_OK; }
  STDMETHODIMP IsUpToDate() override { return S_OK; }
  STDMETHODIMP GetUserClassID(CLSID* clsid) override;
  STDMETHODIMP GetUserType(DWORD form, LPOLESTR* type) override;
  STDMETHODIMP SetExtent(DWORD aspect, SIZEL* size) override;
  STDMETHODIMP GetExtent(DWORD aspect, SIZEL* size) override;
  STDMETHODIMP Advise(IAdviseSink* sink, DWORD* connection) override;
  STDMETHODIMP Unadvise(DWORD connection) override;
  STDMETHODIMP EnumAdvise(IEnumSTATDATA** advise) override;
  STDMETHODIMP GetMiscStatus(DWORD aspect, DWORD* status) override;
  STDMETHODIMP SetColorScheme(LOGPALETTE*) override { return E_NOTIMPL; }

  // IOleInPlaceObject and IOleInPlaceActiveObject
  STDMETHODIMP GetWindow(HWND* window) override;
  STDMETHODIMP ContextSensitiveHelp(BOOL) override { return E_NOTIMPL; }
  STDMETHODIMP InPlaceDeactivate() override;
  STDMETHODIMP UIDeactivate() override;
  STDMETHODIMP SetObjectRects(LPCRECT position, LPCRECT clip) override;
  STDMETHODIMP ReactivateAndUndo() override { return E_NOTIMPL; }
  // Left, Right, and Esc during a drag, go to the control's window.
  STDMETHODIMP TranslateAccelerator(LPMSG message) override;
  STDMETHODIMP OnFrameWindowActivate(BOOL) override { return S_OK; }
  STDMETHODIMP OnDocWindowActivate(BOOL) override { return S_OK; }
  STDMETHODIMP ResizeBorder(LPCRECT, IOleInPlaceUIWindow*, BOOL) override { return S_OK; }
  STDMETHODIMP EnableModeless(BOOL) override { return S_OK; }

  // IOleControl (control/container_protocol.cpp): no mnemonics; the
  // ambient UserMode is read again when it changes.
  STDMETHODIMP GetControlInfo(CONTROLINFO* info) override;
  STDMETHODIMP OnMnemonic(MSG*) override { return E_NOTIMPL; }
  STDMETHODIMP OnAmbientPropertyChange(DISPID id) override;
  STDMETHODIMP FreezeEvents(BOOL) override { return S_OK; }

  // IQuickActivate: siting, sinks and ambients in one call, as VB6 and
  // WinForms activate controls.
  STDMETHODIMP QuickActivate(QACONTAINER* container, QACONTROL* control) override;
  STDMETHODIMP SetContentExtent(LPSIZEL size) override { return SetExtent(DVASPECT_CONTENT, size); }
  STDMETHODIMP GetContentExtent(LPSIZEL size) override { return GetExtent(DVASPECT_CONTENT, size); }

  // IViewObject2
  STDMETHODIMP Draw(DWORD aspect, LONG index, void*, DVTARGETDEVICE*, HDC, HDC dc,
                    LPCRECTL bounds, LPCRECTL, BOOL(STDMETHODCALLTYPE*)(ULONG_PTR), ULONG_PTR) override;
  STDMETHODIMP GetColorSet(DWORD, LONG, void*, DVTARGETDEVICE*, HDC, LOGPALETTE**) override {
    return E_NOTIMPL;
  }
  STDMETHODIMP Freeze(DWORD, LONG, void*, DWORD*) override { return E_NOTIMPL; }
  STDMETHODIMP Unfreeze(DWORD) override { return E_NOTIMPL; }
  STDMETHODIMP SetAdvise(DWORD aspects, DWORD flags, IAdviseSink* sink) override;
  STDMETHODIMP GetAdvise(DWORD* aspects, DWORD* flags, IAdviseSink** sink) override;
  STDMETHODIMP GetExtent(DWORD aspect, LONG, DVTARGETDEVICE*, LPSIZEL size) override;

  // IPersistStreamInit, IPersistPropertyBag and IPersistStorage: the
  // control's own settings (control/persistence.cpp).
  STDMETHODIMP GetClassID(CLSID* clsid) override;
  STDMETHODIMP IsDirty() override;
  STDMETHODIMP Load(LPSTREAM stream) override;
  STDMETHODIMP Save(LPSTREAM stream, BOOL clearDirty) override;
  STDMETHODIMP GetSizeMax(ULARGE_INTEGER* size) override;
  STDMETHODIMP InitNew() override;
  STDMETHODIMP Load(IPropertyBag* bag, IErrorLog* log) override;
  STDMETHODIMP Save(IPropertyBag* bag, BOOL clearDirty, BOOL saveAll) override;
  STDMETHODIMP InitNew(IStorage* storage) override;
  STDMETHODIMP Load(IStorage* storage) override;
  STDMETHODIMP Save(IStorage* storage, BOOL sameAsLoad) override;
  STDMETHODIMP SaveCompleted(IStorage*) override { return S_OK; }
  STDMETHODIMP HandsOffStorage() override { return S_OK; }

  // IDataObject: the picture as an enhanced metafile or a bitmap
  // (control/picture_data.cpp); nothing to set and no data advises.
  STDMETHODIMP GetData(FORMATETC* format, STGMEDIUM* medium) override;
  STDMETHODIMP GetDataHere(FORMATETC*, STGMEDIUM*) override { return DATA_E_FORMATETC; }
  STDMETHODIMP QueryGetData(FORMATETC* format) override;
  STDMETHODIMP GetCanonicalFormatEtc(FORMATETC* format, FORMATETC* canonical) override;
  STDMETHODIMP SetData(FORMATETC*, STGMEDIUM*, BOOL) override { return E_NOTIMPL; }
  STDMETHODIMP EnumFormatEtc(DWORD direction, IEnumFORMATETC** formats) override;
  STDMETHODIMP DAdvise(FORMATETC*, DWORD, IAdviseSink*, DWORD*) override { return OLE_E_ADVISENOTSUPPORTED; }
  STDMETHODIMP DUnadvise(DWORD) override { return OLE_E_ADVISENOTSUPPORTED; }
  STDMETHODIMP EnumDAdvise(IEnumSTATDATA**) override { return OLE_E_ADVISENOTSUPPORTED; }

  // ISpecifyPropertyPages
  STDMETHODIMP GetPages(CAUUID* pages) override;

  // IVX_Graph: properties
  STDMETHODIMP put_BackColor(OLE_COLOR color) override;
  STDMETHODIMP get_BackColor(OLE_COLOR* color) override;
  STDMETHODIMP put_Enabled(VARIANT_BOOL enabled) override;
  STDMETHODIMP get_Enabled(VARIANT_BOOL* enabled) override;
  STDMETHODIMP get_Margins(VARIANT* margins) override;
  STDMETHODIMP put_Margins(VARIANT margins) override;
  STDMETHODIMP get_ZoomRect(VARIANT* rect) override;
  STDMETHODIMP put_ZoomRect(VARIANT rect) override;
  STDMETHODIMP get_MouseMode(BSTR* mode) override;
  STDMETHODIMP put_MouseMode(BSTR mode) override;
  STDMETHODIMP get_HorizontalScrollbarEnabled(LONG* value) override;
  STDMETHODIMP put_HorizontalScrollbarEnabled(LONG value) override;
  STDMETHODIMP get_VerticalScrollbarEnabled(LONG* value) override;
  STDMETHODIMP put_VerticalScrollbarEnabled(LONG value) override;
  STDMETHODIMP get_LegendEnabled(LONG* value) override;
  STDMETHODIMP put_LegendEnabled(LONG value) override;
  STDMETHODIMP get_LegendPosition(BSTR* position) override;
  STDMETHODIMP put_LegendPosition(BSTR position) override;
  STDMETHODIMP put_SuspendDraw(LONG suspend) override;
  STDMETHODIMP get_PropertiesModificationAllowed(LONG* value) override;
  STDMETHODIMP put_PropertiesModificationAllowed(LONG value) override;
  STDMETHODIMP get_ComnYAxesProps(LONG* value) override;
  STDMETHODIMP put_ComnYAxesProps(LONG value) override;
  STDMETHODIMP get_ComnYAxesPropsChkBoxEnable(LONG* value) override;
  STDMETHODIMP put_ComnYAxesPropsChkBoxEnable(LONG value) override;

  // IVX_Graph: axes, datasets and their values
  STDMETHODIMP AddXAxis(LONG id, BSTR type, VARIANT props, float ypos, VARIANT positionType,
                        VARIANT yAxis) override;
  STDMETHODIMP AddYAxis(LONG id, BSTR type, VARIANT props, float xpos, VARIANT positionType,
                        VARIANT xAxis) override;
  STDMETHODIMP SetDatasetValues(LONG id, VARIANT xvals, VARIANT yvals, VARIANT OSvals,
                                VARIANT append) override;
  STDMETHODIMP AddDataset(LONG id, BSTR type, LONG xAxis, LONG yAxis, VARIANT props) override;
  STDMETHODIMP SetXAxisProperties(LONG id, VARIANT props) override;
  STDMETHODIMP SetYAxisProperties(LONG id, VARIANT props) override;
  STDMETHODIMP GetXAxisProperties(LONG id, VARIANT* props) override;
  STDMETHODIMP GetYAxisProperties(LONG id, VARIANT* props) override;
  STDMETHODIMP SetDatasetProperties(LONG id, VARIANT props) override;
  STDMETHODIMP GetDatasetProperties(LONG id, VARIANT* props) override;
  STDMETHODIMP GetDatasetValues(LONG id, VARIANT* values) override;
  STDMETHODIMP RemoveDataset(LONG id) override;
  STDMETHODIMP RemoveXAxis(LONG id) override;
  STDMETHODIMP RemoveYAxis(LONG id) override;
  STDMETHODIMP SetPieColorAt(LONG datasetId, LONG index, OLE_COLOR color) override;
  STDMETHODIMP ClearDataset(LONG id) override;
  STDMETHODIMP RemoveAllDatasets() override;
  STDMETHODIMP EraseAll() override;
  STDMETHODIMP EnumXAxes(VARIANT* axes) override;
  STDMETHODIMP EnumYAxes(VARIANT* axes) override;
  STDMETHODIMP EnumDatasets(VARIANT* datasets) override;
  STDMETHODIMP AddLimitValue(LONG axisId, VARIANT value, VARIANT color, VARIANT style,
                             VARIANT width, LONG* id) override;
  STDMETHODIMP RemoveLimitValue(LONG id) override;

  // IVX_Graph: hairlines, selection and highlighting
  STDMETHODIMP AddHairline(float xpos, VARIANT color, VARIANT width, LONG* id) override;
  STDMETHODIMP GetHairlineIntersection(LONG id, LONG datasetId, LONG snapToClosest,
                                       VARIANT* result) override;
  STDMETHODIMP RemoveHairline(LONG id) override;
  STDMETHODIMP GetHairlinePosition(LONG id, float* xpos) override;
  STDMETHODIMP GetHairlineProps(LONG id, OLE_COLOR* color, short* width) override;
  STDMETHODIMP SetHairlineProps(LONG id, OLE_COLOR color, short width) override;
  STDMETHODIMP SetHairlineShowXAxis(LONG id) override;
  STDMETHODIMP AddHairlineShowDSet(LONG id) override;
  STDMETHODIMP GetSelectedPoints(LONG all, VARIANT* points) override;
  STDMETHODIMP ZoomToSelection() override;
  STDMETHODIMP GetPointIntersection(LONG datasetId, LONG graphType, VARIANT* result) override;
  STDMETHODIMP ShowHighlightedCurve(LONG curveIndex, LONG curvelogId, LONG seconds) override;
  STDMETHODIMP HighlightCurveAndLegend(LONG curveId, LONG curveIndex) override;
  STDMETHODIMP UpdateHighlightTimerInfo(LONG seconds) override;
  STDMETHODIMP GetCurvelogID(int* logId) override;
  STDMETHODIMP setMarkerColorStatus(VARIANT* colors) override;
  STDMETHODIMP SetLoadCurveSetttingInfo(LONG curvelogId) override;
  STDMETHODIMP GetCurveInfofromLegend(LONG* id, LONG* loadFromLegend) override;
  STDMETHODIMP loadCurveProperty(BSTR curveName, LONG id) override;

  // IVX_Graph: settings and thin entries
  STDMETHODIMP SetClientProperty(short num, LONG id, BSTR name, LONG value) override;
  STDMETHODIMP GetClientProperty(short num, LONG* id, BSTR* name, LONG* value) override;
  STDMETHODIMP ShowHelp() override;
  STDMETHODIMP SetHelpCommand(BSTR command) override;
  STDMETHODIMP SetLanguage(BSTR language) override;
  STDMETHODIMP SetDTFormat(BSTR format) override;
  STDMETHODIMP PutBarWidth(VARIANT width) override;
  STDMETHODIMP GetBarWidth(VARIANT* width) override;
  STDMETHODIMP setDefaultAsignType() override;
  STDMETHODIMP setSelectionFlag(LONG* flag) override;
  STDMETHODIMP GetGraphType(VARIANT* type) override;
  STDMETHODIMP SetGraphType(VARIANT type) override;
  STDMETHODIMP GetVer(VARIANT* version) override;
  STDMETHODIMP GetPreconfVersion(VARIANT version) override;
  STDMETHODIMP setGraphColor(LONG* background, LONG* grid) override;
  STDMETHODIMP SetGridProps(LONG* color, short* words) override;
  STDMETHODIMP getGridProp(LONG* color, short* words) override;
  STDMETHODIMP SetXMLColor(LONG* colors) override;
  STDMETHODIMP GetXMLColor(LONG* colors) override;
  STDMETHODIMP SetReportType(int* type) override;
  STDMETHODIMP enableHZ(int* show) override;
  STDMETHODIMP enableHZGrid(int* show) override;
  STDMETHODIMP setEnableMode(short* mode, LONG* flags) override;
  STDMETHODIMP enableSplitYAxis(LONG* y2, LONG* y3, LONG* y4) override;
  STDMETHODIMP getSplitYAxis(LONG* y2, LONG* y3, LONG* y4) override;
  STDMETHODIMP setUnitName(BSTR y1, BSTR y2, BSTR y3, BSTR y4) override;
  STDMETHODIMP GetUnitName(BSTR* y1, BSTR* y2, BSTR* y3, BSTR* y4) override;
  STDMETHODIMP SetListControlParent(IUnknown* parent) override;

  VGraph& graph() { return *graph_; }
  // Tells the container's view sink that the picture changed.
  void TellViewSink();
  // WM_GETDLGCODE: the keys the control takes from a dialog's navigation.
  LRESULT DialogCode(const MSG* message) const;
  OLE_COLOR backColor() const { return backColor_; }
  // Paints the control into a device context (the drawing pass comes here).
  void DrawInto(HDC dc, const RECT& bounds);
  // Input from the control window.
  void OnMouse(UINT message, LPARAM lParam);
  // False when the key is not the control's and goes on to the parent.
  bool OnKeyDown(WPARAM key);
  void OnScroll(bool vertical, WPARAM wParam);
  // True when the message is the control's (the cursor is over the client).
  bool OnSetCursor(LPARAM lParam);
  // Menu commands: the property frames and "Show &Hairline Here"; false for
  // any other id.
  bool OnCommand(UINT id);
  // Opens the property frame of menu command 244, 426 or 427; false for any
  // other id.
  bool OpenPropertyFrame(UINT id);
  // The context menu at a point in screen coordinates.
  void OnContextMenu(LPARAM lParam);
  // Timer 10101 drives the curve highlight; other ids are ignored.
  void OnTimer(UINT_PTR id);
  // IPromptOwner: the notes the pages show, silenced for this control's life.
  CPromptMsg& STDMETHODCALLTYPE Prompts() override { return prompts_; }
  // IAxisSides: where an axis was placed when it was added.
  int STDMETHODCALLTYPE AxisSide(BOOL vertical, LONG id) override;
  static double PrinterScale(HDC printer);

 private:
  CVX_Graph();
  ~CVX_Graph();

  struct ClientProperty {
    LONG id = 0;
    Text name;
    LONG value = 0;
  };

  HRESULT AddAxis(bool vertical, LONG id, BSTR type, const VARIANT& props, float crossing,
                  const VARIANT& positionType, const VARIANT& referenceAxis);
  HRESULT SetAxisProperties(bool vertical, LONG id, const VARIANT& props);
  HRESULT GetAxisProperties(bool vertical, LONG id, VARIANT* props);

  // The entries with several values behind one pointer in their vtable
  // layout, of which a late-bound caller passes one.
  static bool TakesOneVariableLateBound(DISPID id);

  HRESULT InPlaceActivate(LONG verb, HWND parent, LPCRECT position);
  // Draws `area` of the picture (device pixels) off screen and copies it to
  // the target; `display` when the target is a raster display.
  void DrawOffScreen(HDC target, const RECT& area, const RECT& bounds, bool display);
  // The graph laid out for `bounds` and drawn there, for a target that is
  // not the live window (no window, a metafile, a data object's picture).
  void DrawDetached(HDC target, const RECT& bounds);
  // The picture's size in pixels, and the picture in the data formats.
  SIZE PictureSize() const;
  HENHMETAFILE PictureAsMetafile();
  HGLOBAL PictureAsDib();
  // Tells the container's view sink that the picture changed, and repaints.
  void ViewChanged();
  // Shows what the interaction core asks for and fires its events in order.
  void Apply(const Reaction& reaction);
  void Fire(const InteractionEvent& event);
  void ShowHairlineHere();
  // Tells connected property sinks that the property `id` changed, and
  // marks the settings changed since the last save.
  void PropertyChanged(DISPID id);
  SavedSettings CurrentSettings() const;
  // Takes settings a reader accepted; nothing in them can fail.
  void ApplySettings(const SavedSettings& settings);
  // Reads settings over the defaults, then takes them; a bad stream or bag
  // changes nothing.
  HRESULT LoadSettings(const std::function<HRESULT(SavedSettings&)>& read);
  template <typename Body>
  HRESULT Changing(DISPID id, Body&& body);
  // Runs the modal frame of `count` pages over `owner` with the control as
  // its object.
  void ShowPropertyFrame(HWND owner, const CLSID* pages, ULONG count);
  HRESULT OpenPropertiesVerb(HWND parent);

  LONG refs_ = 1;
  ControlWindow window_;
  std::unique_ptr<VGraph> graph_;
  MouseTracker tracker_;
  ComPtr<IOleClientSite> clientSite_;
  ComPtr<IOleInPlaceSite> inPlaceSite_;
  ComPtr<IOleInPlaceFrame> inPlaceFrame_;
  ComPtr<IOleInPlaceUIWindow> inPlaceDocument_;
  ComPtr<IOleAdviseHolder> adviseHolder_;
  ComPtr<IAdviseSink> viewSink_;
  DWORD viewAspects_ = 0;
  DWORD viewFlags_ = 0;
  SIZEL extent_{5080, 3810};  // 192 by 144 pixels, in HIMETRIC
  bool uiActive_ = false;
  // The container's ambient UserMode: false in a designer, where the
  // control is drawn but takes no mouse action.
  bool userMode_ = true;
  void ReadAmbientUserMode();
  EventSource events_;
  PropertyNotifySource propertyNotify_;
  OLE_COLOR backColor_ = 0x80000005;  // the system's window colour
  // The part of the target a draw request covers; all zero between requests.
  RECT drawRect_{};
  VARIANT_BOOL enabled_ = VARIANT_TRUE;
  // True while IDispatch::Invoke runs an entry of TakesOneVariableLateBound.
  bool lateBound_ = false;
  std::array<ClientProperty, 3> clientProperties_;
  LONG legendEnabled_ = 0;
  LONG propertiesModificationAllowed_ = 0;
  LONG comnYAxesProps_ = 0;
  LONG comnYAxesPropsChkBoxEnable_ = 0;
  int showHZ_ = 0;
  VARIANT version_;
  LONG loadCurveId_ = -1;
  LONG loadFromLegend_ = 0;
  CurveHighlight highlight_{*graph_, window_};
  CPromptMsg prompts_{ModuleInstance()};
  // What InitNew restores: the settings of a new control.
  SavedSettings defaults_;
  // A setting changed since the last save that cleared the flag.
  bool dirty_ = false;
};

}  // namespace zel

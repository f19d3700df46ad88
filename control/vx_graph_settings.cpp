// Automation entries that store or return settings: stock properties,
// margins and zoom, modes, flags, process-wide values and the thin entries.
#include <windows.h>
#include <oleauto.h>
#include <olectl.h>

#include "control/automation_values.h"
#include "control/error_reporting.h"
#include "control/language_libraries.h"
#include "control/vx_graph.h"
#include "engine/graph_keywords.h"
#include "interaction/selection.h"
#include "util/process_state.h"
#include "util/text_ids.h"
#include "util/value_conversion.h"

namespace zel {
namespace {

// The dispids of the properties whose changes connected property sinks hear.
enum PropertyId : DISPID {
  kMarginsId = 4,
  kZoomRectId = 6,
  kMouseModeId = 8,
  kHorizontalScrollbarId = 0x12,
  kVerticalScrollbarId = 0x13,
  kLegendEnabledId = 0x19,
  kLegendPositionId = 0x1A,
  kPropertiesModificationAllowedId = 0x2F,
  kComnYAxesPropsId = 0x48,
  kComnYAxesPropsChkBoxEnableId = 0x49,
};

// The entries that, called late-bound, have one variable behind a pointer
// where their vtable layout has several.
enum OneVariableId : DISPID {
  kSetGridPropsId = 0x3A,
  kGetGridPropId = 0x3B,
  kSetXmlColorId = 0x3C,
  kGetXmlColorId = 0x3D,
};

constexpr int32_t kMarginsConversionFailed = 11000;
constexpr int32_t kZoomConversionFailed = 10000;
constexpr size_t kDateTimeFormatMax = 62;

template <typename T>
HRESULT Read(T* out, T value) {
  if (!out) return E_INVALIDARG;
  *out = value;
  return S_OK;
}

HRESULT ReadText(BSTR* out, TextView text) {
  if (!out) return E_INVALIDARG;
  return Guarded([&] { *out = NewBstr(text); });
}

// The first four elements of an array argument converted to `kind`; a
// failed conversion raises message 111 with `failureCode`.
std::vector<Value> FourConverted(const VARIANT& argument, ValueKind kind, int32_t failureCode) {
  ArrayArgument array(argument);
  std::vector<Value> values;
  for (size_t i = 0; i < std::min<size_t>(array.size(), 4); ++i) {
    Value converted;
    if (ChangeType(array.At(i), kind, converted) != kConversionOk) Raise(kMsgArrayAccess, failureCode);
    values.push_back(converted);
  }
  return values;
}

template <typename T>
void ToTypedArray(VARTYPE type, const std::array<T, 4>& values, VARIANT* out) {
  SAFEARRAY* array = SafeArrayCreateVector(type, 0, 4);
  if (!array) throw std::bad_alloc();
  T* data = nullptr;
  SafeArrayAccessData(array, reinterpret_cast<void**>(&data));
  std::copy(values.begin(), values.end(), data);
  SafeArrayUnaccessData(array);
  VariantInit(out);
  V_VT(out) = VT_ARRAY | type;
  V_ARRAY(out) = array;
}

// A tag whose value part holds a number (or nothing), never a pointer.
bool IsNumberOrEmpty(VARTYPE type) {
  switch (type) {
    case VT_EMPTY: case VT_I1: case VT_UI1: case VT_I2: case VT_UI2: case VT_I4: case VT_UI4:
    case VT_INT: case VT_UINT: case VT_I8: case VT_UI8: case VT_R4: case VT_R8: case VT_CY: case VT_DATE:
      return true;
    default:
      return false;
  }
}

}  // namespace

// A guarded property put that tells property sinks of the change when it
// succeeded.
template <typename Body>
HRESULT CVX_Graph::Changing(DISPID id, Body&& body) {
  HRESULT hr = Guarded(std::forward<Body>(body));
  if (SUCCEEDED(hr)) PropertyChanged(id);
  return hr;
}

STDMETHODIMP CVX_Graph::put_BackColor(OLE_COLOR color) {
  backColor_ = color;
  ViewChanged();
  PropertyChanged(DISPID_BACKCOLOR);
  return S_OK;
}
STDMETHODIMP CVX_Graph::get_BackColor(OLE_COLOR* color) { return Read(color, backColor_); }
STDMETHODIMP CVX_Graph::put_Enabled(VARIANT_BOOL enabled) {
  enabled_ = enabled;
  ViewChanged();
  PropertyChanged(DISPID_ENABLED);
  return S_OK;
}
STDMETHODIMP CVX_Graph::get_Enabled(VARIANT_BOOL* enabled) { return Read(enabled, enabled_); }

STDMETHODIMP CVX_Graph::get_Margins(VARIANT* margins) {
  if (!margins) return E_INVALIDARG;
  const Margins& m = graph_->margins();
  return Guarded([&] { ToTypedArray<int32_t>(VT_I4, {m.left, m.right, m.bottom, m.top}, margins); });
}

STDMETHODIMP CVX_Graph::put_Margins(VARIANT margins) {
  return Changing(kMarginsId, [&] {
    std::vector<Value> values = FourConverted(margins, ValueKind::I4, kMarginsConversionFailed);
    Margins m = graph_->margins();
    int32_t* order[] = {&m.left, &m.right, &m.bottom, &m.top};
    for (size_t i = 0; i < values.size(); ++i) *order[i] = std::get<int32_t>(values[i]);
    graph_->SetMargins(m);
  });
}

STDMETHODIMP CVX_Graph::get_ZoomRect(VARIANT* rect) {
  if (!rect) return E_INVALIDARG;
  const Fractions& z = graph_->zoomRect();
  return Guarded([&] { ToTypedArray<float>(VT_R4, {z.left, z.right, z.bottom, z.top}, rect); });
}

STDMETHODIMP CVX_Graph::put_ZoomRect(VARIANT rect) {
  return Changing(kZoomRectId, [&] {
    std::vector<Value> values = FourConverted(rect, ValueKind::R4, kZoomConversionFailed);
    Fractions zoom = graph_->zoomRect();
    float* order[] = {&zoom.left, &zoom.right, &zoom.bottom, &zoom.top};
    for (size_t i = 0; i < values.size(); ++i) *order[i] = std::get<float>(values[i]);
    graph_->SetZoomRect(zoom);
  });
}

STDMETHODIMP CVX_Graph::get_MouseMode(BSTR* mode) { return ReadText(mode, MouseModeKeyword(graph_->mouseMode())); }

STDMETHODIMP CVX_Graph::put_MouseMode(BSTR mode) {
  graph_->SetMouseMode(MouseModeFromKeyword(TextOf(mode)));
  PropertyChanged(kMouseModeId);
  return S_OK;
}

STDMETHODIMP CVX_Graph::get_HorizontalScrollbarEnabled(LONG* value) {
  return Read<LONG>(value, graph_->horizontalScrollbar());
}
STDMETHODIMP CVX_Graph::put_HorizontalScrollbarEnabled(LONG value) {
  graph_->SetScrollbars(value, -1);
  PropertyChanged(kHorizontalScrollbarId);
  return S_OK;
}
STDMETHODIMP CVX_Graph::get_VerticalScrollbarEnabled(LONG* value) {
  return Read<LONG>(value, graph_->verticalScrollbar());
}
STDMETHODIMP CVX_Graph::put_VerticalScrollbarEnabled(LONG value) {
  graph_->SetScrollbars(-1, value);
  PropertyChanged(kVerticalScrollbarId);
  return S_OK;
}

STDMETHODIMP CVX_Graph::get_LegendEnabled(LONG* value) { return Read(value, legendEnabled_); }
STDMETHODIMP CVX_Graph::put_LegendEnabled(LONG value) {
  legendEnabled_ = value;
  graph_->EnableLegend(value != 0);
  graph_->UpdateLayoutAndRepaint();
  PropertyChanged(kLegendEnabledId);
  return S_OK;
}

// The legend exists while it is enabled; without one the position reads
// "BOTTOM" and the remembered position becomes -1.
STDMETHODIMP CVX_Graph::get_LegendPosition(BSTR* position) {
  if (!position) return E_INVALIDARG;
  Text keyword = legendEnabled_ ? LegendPositionKeyword(graph_->legendPosition()) : Text(u"BOTTOM");
  if (!legendEnabled_) graph_->SetLegendPosition(LegendPosition::kNone);
  return ReadText(position, keyword);
}

STDMETHODIMP CVX_Graph::put_LegendPosition(BSTR position) {
  graph_->SetLegendPosition(LegendPositionFromKeyword(TextOf(position)));
  graph_->UpdateLayoutAndRepaint();
  PropertyChanged(kLegendPositionId);
  return S_OK;
}

STDMETHODIMP CVX_Graph::put_SuspendDraw(LONG suspend) {
  graph_->SetSuspendDraw(suspend);
  return S_OK;
}

STDMETHODIMP CVX_Graph::get_PropertiesModificationAllowed(LONG* v) { return Read(v, propertiesModificationAllowed_); }
STDMETHODIMP CVX_Graph::put_PropertiesModificationAllowed(LONG v) {
  propertiesModificationAllowed_ = v;
  PropertyChanged(kPropertiesModificationAllowedId);
  return S_OK;
}
STDMETHODIMP CVX_Graph::get_ComnYAxesProps(LONG* v) { return Read(v, comnYAxesProps_); }
STDMETHODIMP CVX_Graph::put_ComnYAxesProps(LONG v) {
  comnYAxesProps_ = v;
  PropertyChanged(kComnYAxesPropsId);
  return S_OK;
}
STDMETHODIMP CVX_Graph::get_ComnYAxesPropsChkBoxEnable(LONG* v) { return Read(v, comnYAxesPropsChkBoxEnable_); }
STDMETHODIMP CVX_Graph::put_ComnYAxesPropsChkBoxEnable(LONG v) {
  comnYAxesPropsChkBoxEnable_ = v;
  PropertyChanged(kComnYAxesPropsChkBoxEnableId);
  return S_OK;
}

// Slot numbers 1 and 2 are accepted: the test lets num - 1 be at most 2 as an
// unsigned 16-bit number, but num itself at most 2 as a signed one.
static bool IsClientPropertyNumber(short num) {
  return uint16_t(num - 1) <= 2 && num <= 2;
}

STDMETHODIMP CVX_Graph::SetClientProperty(short num, LONG id, BSTR name, LONG value) {
  return Guarded([&] {
    if (!IsClientPropertyNumber(num)) Raise(kMsgClientPropertyNumber);
    clientProperties_[size_t(num)] = {id, TextOf(name), value};
  });
}

// Reads no slot: it gives id 0 and leaves name and value as they are.
STDMETHODIMP CVX_Graph::GetClientProperty(short num, LONG* id, BSTR*, LONG*) {
  return Guarded([&] {
    if (!IsClientPropertyNumber(num)) Raise(kMsgClientPropertyNumber);
    if (id) *id = 0;
  });
}

// Help acts only through a help object attached to the control, and no
// entry attaches one, so ShowHelp does nothing; SetHelpCommand accepts its
// text and does nothing else, by definition.
STDMETHODIMP CVX_Graph::ShowHelp() { return S_OK; }
STDMETHODIMP CVX_Graph::SetHelpCommand(BSTR) { return S_OK; }
// These two accept their arguments and have no effect, by definition.
STDMETHODIMP CVX_Graph::setSelectionFlag(LONG*) { return S_OK; }
STDMETHODIMP CVX_Graph::setEnableMode(short*, LONG*) { return S_OK; }
// The owner of a curve list beside the graph: the control keeps no such
// list, so there is nothing to hand it.
STDMETHODIMP CVX_Graph::SetListControlParent(IUnknown*) { return S_OK; }

STDMETHODIMP CVX_Graph::SetLanguage(BSTR language) {
  Text name = TextOf(language);
  if (name.size() >= 2) Process().language = name;
  ReloadLanguageLibraries();
  return S_OK;
}

STDMETHODIMP CVX_Graph::SetDTFormat(BSTR format) {
  Process().dateTimeFormat = TextOf(format).substr(0, kDateTimeFormatMax);
  graph_->UpdateLayoutAndRepaint();
  return S_OK;
}

STDMETHODIMP CVX_Graph::PutBarWidth(VARIANT width) {
  graph_->SetBarWidth(OptionalInt(width, graph_->barWidth()));
  dirty_ = true;
  graph_->UpdateLayoutAndRepaint();
  return S_OK;
}

STDMETHODIMP CVX_Graph::GetBarWidth(VARIANT* width) {
  if (!width) return E_INVALIDARG;
  VariantInit(width);
  V_VT(width) = VT_I4;
  V_I4(width) = graph_->barWidth();
  return S_OK;
}

STDMETHODIMP CVX_Graph::setDefaultAsignType() {
  Process().assignType = -1;
  Process().assignTypeSet = 1;
  return S_OK;
}

// Only the low 16 bits of the value are written; the rest of the caller's
// VARIANT stays as it was.
STDMETHODIMP CVX_Graph::GetGraphType(VARIANT* type) {
  if (!type) return E_INVALIDARG;
  V_VT(type) = VT_I4;
  V_I2(type) = int16_t(Process().graphType);
  return S_OK;
}

STDMETHODIMP CVX_Graph::SetGraphType(VARIANT type) {
  if (V_VT(&type) == VT_I4) Process().graphType = int16_t(V_I4(&type));
  return S_OK;
}

// GetPreconfVersion stores the version and GetVer reads it back, in spite
// of their names; only the 32-bit value part travels.
STDMETHODIMP CVX_Graph::GetPreconfVersion(VARIANT version) {
  V_VT(&version_) = VT_R4;
  V_I4(&version_) = V_I4(&version);
  return S_OK;
}

// The caller's tag stays when it is empty or a number. Any other VARIANT
// (a text, an object, an array, a reference) is cleared and gets the
// version as VT_R4: its value part is a pointer the host would follow.
STDMETHODIMP CVX_Graph::GetVer(VARIANT* version) {
  if (!version) return E_INVALIDARG;
  if (!IsNumberOrEmpty(V_VT(version))) {
    VariantClear(version);
    V_VT(version) = VT_R4;
  }
  V_I4(version) = V_I4(&version_);
  return S_OK;
}

STDMETHODIMP CVX_Graph::setGraphColor(LONG* background, LONG* grid) {
  if (!background || !grid) return E_INVALIDARG;
  Process().backgroundColor = uint32_t(*background);
  Process().gridColor = uint32_t(*grid);
  graph_->UpdateLayoutAndRepaint();
  return S_OK;
}

bool CVX_Graph::TakesOneVariableLateBound(DISPID id) {
  return id == kSetGridPropsId || id == kGetGridPropId || id == kSetXmlColorId || id == kGetXmlColorId;
}

// Through the vtable the grid words are three shorts behind `words`; a
// late-bound caller has one, and only the first word is read or written
// (the other two stay as they are).
STDMETHODIMP CVX_Graph::SetGridProps(LONG* color, short* words) {
  if (!color || !words) return E_INVALIDARG;
  std::array<int16_t, 3> given = graph_->gridWords();
  std::copy_n(words, lateBound_ ? 1 : 3, given.begin());
  graph_->SetGridProps(*color, given);
  dirty_ = true;
  graph_->UpdateLayoutAndRepaint();
  return S_OK;
}

STDMETHODIMP CVX_Graph::getGridProp(LONG* color, short* words) {
  if (!color || !words) return E_INVALIDARG;
  *color = graph_->gridColor();
  std::copy_n(graph_->gridWords().begin(), lateBound_ ? 1 : 3, words);
  return S_OK;
}

// Two colours behind one pointer through the vtable; the first alone when
// late-bound.
STDMETHODIMP CVX_Graph::SetXMLColor(LONG* colors) {
  if (!colors) return E_INVALIDARG;
  std::copy_n(colors, lateBound_ ? 1 : 2, Process().xmlColors.begin());
  return S_OK;
}

STDMETHODIMP CVX_Graph::GetXMLColor(LONG* colors) {
  if (!colors) return E_INVALIDARG;
  std::copy_n(Process().xmlColors.begin(), lateBound_ ? 1 : 2, colors);
  return S_OK;
}

STDMETHODIMP CVX_Graph::SetReportType(int* type) {
  if (!type) return E_INVALIDARG;
  Process().reportType = *type;
  graph_->UpdateLayoutAndRepaint();
  return S_OK;
}

// enableHZ sets one flag and enableHZGrid reads it back, whatever their
// names say.
STDMETHODIMP CVX_Graph::enableHZ(int* show) {
  if (!show) return E_INVALIDARG;
  showHZ_ = *show;
  dirty_ = true;
  return S_OK;
}

STDMETHODIMP CVX_Graph::enableHZGrid(int* show) { return Read(show, showHZ_); }

STDMETHODIMP CVX_Graph::enableSplitYAxis(LONG* y2, LONG* y3, LONG* y4) {
  if (!y2 || !y3 || !y4) return E_INVALIDARG;
  Process().splitYAxis = {*y2, *y3, *y4};
  graph_->UpdateLayoutAndRepaint();
  return S_OK;
}

STDMETHODIMP CVX_Graph::getSplitYAxis(LONG* y2, LONG* y3, LONG* y4) {
  if (!y2 || !y3 || !y4) return E_INVALIDARG;
  *y2 = Process().splitYAxis[0];
  *y3 = Process().splitYAxis[1];
  *y4 = Process().splitYAxis[2];
  return S_OK;
}

STDMETHODIMP CVX_Graph::setUnitName(BSTR y1, BSTR y2, BSTR y3, BSTR y4) {
  graph_->SetUnitNames({TextOf(y1), TextOf(y2), TextOf(y3), TextOf(y4)});
  graph_->UpdateLayoutAndRepaint();
  return S_OK;
}

STDMETHODIMP CVX_Graph::GetUnitName(BSTR* y1, BSTR* y2, BSTR* y3, BSTR* y4) {
  if (!y1 || !y2 || !y3 || !y4) return E_INVALIDARG;
  BSTR* outs[] = {y1, y2, y3, y4};
  return Guarded([&] {
    BSTR names[4] = {};
    try {
      for (size_t i = 0; i < 4; ++i) names[i] = NewBstr(graph_->unitNames()[i]);
    } catch (...) {
      for (BSTR name : names) SysFreeString(name);
      throw;
    }
    for (size_t i = 0; i < 4; ++i) *outs[i] = names[i];
  });
}

}  // namespace zel

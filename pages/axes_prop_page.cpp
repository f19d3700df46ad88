#include "pages/axes_prop_page.h"

#include <cwchar>
#include <vector>

#include "control/automation_values.h"
#include "control/axis_sides.h"
#include "pages/axis_value_text.h"
#include "pages/page_resources.h"
#include "util/text_ids.h"
#include "util/texts.h"

namespace zel {
namespace {

constexpr int kAxisButtons[] = {ZEL_AXIS_X, ZEL_AXIS_Y1, ZEL_AXIS_Y2, ZEL_AXIS_Y3, ZEL_AXIS_Y4};
constexpr int kUnitFields[] = {ZEL_UNIT_NAME_Y1, ZEL_UNIT_NAME_Y2, ZEL_UNIT_NAME_Y3, ZEL_UNIT_NAME_Y4};
constexpr int kAxisFieldIds[] = {kCheckAutoScale, ZEL_AXIS_MIN, ZEL_AXIS_MAX, ZEL_AXIS_GRID_MODE,
                                 ZEL_AXIS_GRID_STYLE, ZEL_AXIS_GRID_WIDTH, ZEL_AXIS_GRID_COLOR, ZEL_AXIS_TITLE,
                                 kLabelAxisMin, kLabelAxisMax, kLabelGridMode, kLabelGridStyle,
                                 kLabelGridWidth, kLabelGridColor, kLabelAxisTitle};
constexpr size_t kUnitNameMax = 10;
constexpr long kGridWidthMax = 32767;

// The keywords of the lists, in item order, as the AxisProps record has them.
constexpr const wchar_t* kGridModes[] = {L"NONE", L"ANNOTATION", L"TICK"};
constexpr const wchar_t* kGridStyles[] = {L"SOLID", L"DASHED", L"DOTTED"};

template <size_t N>
int KeywordIndex(BSTR keyword, const wchar_t* const (&keywords)[N]) {
  for (size_t i = 0; i < N; ++i)
    if (keyword && wcscmp(keyword, keywords[i]) == 0) return int(i);
  return 0;
}

// A VARIANT cleared when it goes, also when an entry's refusal throws.
struct OwnedVariant {
  VARIANT v;
  OwnedVariant() { VariantInit(&v); }
  ~OwnedVariant() { VariantClear(&v); }
  OwnedVariant(const OwnedVariant&) = delete;
  OwnedVariant& operator=(const OwnedVariant&) = delete;
};

void ReplaceText(BSTR& field, TextView text) {
  SysFreeString(field);
  field = NewBstr(text);
}

void ReplaceText(BSTR& field, const wchar_t* keyword) {
  SysFreeString(field);
  field = SysAllocString(keyword);
}

// An element of a VARIANT array as a 32-bit number.
LONG ElementNumber(SAFEARRAY* array, LONG index) {
  OwnedVariant element, number;
  if (FAILED(SafeArrayGetElement(array, &index, &element.v))) return -1;
  return SUCCEEDED(VariantChangeType(&number.v, &element.v, 0, VT_I4)) ? V_I4(&number.v) : -1;
}

// The [id, title, type] lines of EnumXAxes or EnumYAxes, at most `count`.
std::vector<std::pair<LONG, LONG>> AxesOf(const VARIANT& lines, size_t count) {
  std::vector<std::pair<LONG, LONG>> axes;
  if (V_VT(&lines) != (VT_ARRAY | VT_VARIANT)) return axes;
  SAFEARRAY* array = V_ARRAY(&lines);
  LONG low = 0, high = -1;
  SafeArrayGetLBound(array, 1, &low);
  SafeArrayGetUBound(array, 1, &high);
  for (LONG i = low; i <= high && axes.size() < count; ++i) {
    OwnedVariant line;
    if (FAILED(SafeArrayGetElement(array, &i, &line.v)) || !(V_VT(&line.v) & VT_ARRAY)) continue;
    axes.emplace_back(ElementNumber(V_ARRAY(&line.v), 0), ElementNumber(V_ARRAY(&line.v), 2));
  }
  return axes;
}

// Whole numbers only, blanks around them allowed.
bool ParseWidth(const Text& text, long& width) {
  std::wstring wide(text.begin(), text.end());
  const wchar_t* start = wide.c_str();
  while (*start == L' ') ++start;
  wchar_t* end = nullptr;
  errno = 0;
  width = std::wcstol(start, &end, 10);
  if (end == start || errno == ERANGE) return false;
  while (*end == L' ') ++end;
  return *end == 0;
}

bool IsYAxis(int slot) { return slot > 0; }

}  // namespace

CAxesPropPage::CAxesPropPage() : CSettingsPage(kTextAxesProperties, ZEL_AXES_PAGE_DIALOG) {}

void CAxesPropPage::Prepare() {
  AddListItems(ZEL_AXIS_GRID_MODE, {kTextNoneItem, kTextGridAnnotation, kTextGridTick});
  AddListItems(ZEL_AXIS_GRID_STYLE, {kTextSolid, kTextDashed, kTextDotted});
  SendMessageW(Item(ZEL_AXIS_GRID_WIDTH), EM_LIMITTEXT, 6, 0);
  SendMessageW(Item(ZEL_AXIS_TITLE), EM_LIMITTEXT, 255, 0);
}

// Keeps the axis on view across an Apply when it is still there.
void CAxesPropPage::Fill() {
  FindAxes();
  shown_ = ReadControl();
  edits_ = shown_;
  if (current_ < 0 || !slots_[size_t(current_)].present()) {
    current_ = -1;
    for (int i = 0; i < kAxisCount && current_ < 0; ++i)
      if (slots_[size_t(i)].present()) current_ = i;
  }
  for (int i = 0; i < kAxisCount; ++i) {
    SetChecked(kAxisButtons[i], i == current_);
    EnableWindow(Item(kAxisButtons[i]), slots_[size_t(i)].present());
  }
  for (size_t i = 0; i < 4; ++i) SetFieldText(kUnitFields[i], shown_.units[i]);
  SetChecked(kCheckCommonYAxes, shown_.common);
  LONG commonEnabled = 0;
  graph().get_ComnYAxesPropsChkBoxEnable(&commonEnabled);
  EnableWindow(Item(kCheckCommonYAxes), commonEnabled != 0);
  ShowAxis(current_);
}

void CAxesPropPage::Check() const {
  Settings wanted = Wanted();
  if (current_ >= 0) CheckAxis(current_, wanted.axes[size_t(current_)]);
  for (int i = 0; i < kAxisCount; ++i)
    if (i != current_ && slots_[size_t(i)].present() && wanted.axes[size_t(i)] != shown_.axes[size_t(i)])
      CheckAxis(i, wanted.axes[size_t(i)]);
  for (size_t i = 0; i < 4; ++i)
    if (wanted.units[i].size() > kUnitNameMax) throw FieldError{kUnitFields[i], kTextUnitNames, kMsgUnitNameLength};
}

void CAxesPropPage::Write() {
  Settings wanted = Wanted();
  for (int i = 0; i < kAxisCount; ++i)
    if (slots_[size_t(i)].present() && wanted.axes[size_t(i)] != shown_.axes[size_t(i)])
      WriteAxis(i, wanted.axes[size_t(i)]);
  WriteShared(wanted);
}

bool CAxesPropPage::IsViewChoice(int control) const {
  for (int button : kAxisButtons)
    if (control == button) return true;
  return false;
}

// Choosing another axis keeps the edits of the one left.
void CAxesPropPage::OnFieldCommand(int control, WORD code) {
  if (code != BN_CLICKED) return;
  for (int i = 0; i < kAxisCount; ++i) {
    if (control != kAxisButtons[i] || i == current_ || !Checked(control)) continue;
    Settings edits = Wanted();
    edits_ = edits;
    current_ = i;
    ShowAxis(i);
  }
}

// The first X axis and the first four Y axes, in the order they were added.
void CAxesPropPage::FindAxes() {
  slots_ = {};
  OwnedVariant xAxes, yAxes;
  graph().EnumXAxes(&xAxes.v);
  graph().EnumYAxes(&yAxes.v);
  auto x = AxesOf(xAxes.v, 1);
  auto y = AxesOf(yAxes.v, 4);
  if (!x.empty()) slots_[0] = {x[0].first, x[0].second};
  for (size_t i = 0; i < y.size(); ++i) slots_[i + 1] = {y[i].first, y[i].second};
  ComPtr<IAxisSides> sides;
  if (FAILED(graph().QueryInterface(IID_IAxisSides, reinterpret_cast<void**>(sides.put())))) return;
  for (int i = 0; i < kAxisCount; ++i)
    if (slots_[size_t(i)].present()) slots_[size_t(i)].side = sides->AxisSide(IsYAxis(i), slots_[size_t(i)].id);
}

namespace {

// The words for where an axis stands: its side, the centre, or a value of
// another axis.
Text SideText(int slot, int side) {
  switch (side) {
    case 0: return LookupText(IsYAxis(slot) ? kTextLeft : kTextBottom);
    case 1: return LookupText(IsYAxis(slot) ? kTextRight : kTextTop);
    case 2: return LookupText(kTextCentre);
    case 3: return LookupText(kTextAtAnotherAxis);
    default: return Text();
  }
}

}  // namespace

CAxesPropPage::Settings CAxesPropPage::ReadControl() const {
  Settings s;
  for (int i = 0; i < kAxisCount; ++i)
    if (slots_[size_t(i)].present()) s.axes[size_t(i)] = ReadAxis(i);
  LONG split[3] = {};
  graph().getSplitYAxis(&split[0], &split[1], &split[2]);
  for (size_t i = 0; i < 3; ++i) s.split[i] = split[i] != 0;
  BSTR units[4] = {};
  graph().GetUnitName(&units[0], &units[1], &units[2], &units[3]);
  for (size_t i = 0; i < 4; ++i) s.units[i] = TextOf(units[i]), SysFreeString(units[i]);
  LONG common = 0;
  graph().get_ComnYAxesProps(&common);
  s.common = common != 0;
  return s;
}

CAxesPropPage::AxisFields CAxesPropPage::ReadAxis(int slot) const {
  const AxisSlot& axis = slots_[size_t(slot)];
  OwnedVariant props;
  HRESULT hr = IsYAxis(slot) ? graph().GetYAxisProperties(axis.id, &props.v)
                             : graph().GetXAxisProperties(axis.id, &props.v);
  AxisFields f;
  if (FAILED(hr) || V_VT(&props.v) != VT_RECORD || !V_RECORD(&props.v)) return f;
  const auto& r = *static_cast<const ::AxisProps*>(V_RECORD(&props.v));
  f.autoScale = r.bAutoScale != 0;
  f.min = AxisValueText(r.min, axis.type);
  f.max = AxisValueText(r.max, axis.type);
  f.gridMode = KeywordIndex(r.gridMode, kGridModes);
  f.gridStyle = KeywordIndex(r.gridStyle, kGridStyles);
  f.gridWidth = DecimalText(r.gridWidth);
  f.gridColor = OLE_COLOR(r.gridColor);
  f.title = TextOf(r.title);
  return f;
}

CAxesPropPage::Settings CAxesPropPage::Wanted() const {
  Settings s = edits_;
  if (current_ >= 0) s.axes[size_t(current_)] = ReadAxisFields();
  if (current_ >= 2) s.split[size_t(current_ - 2)] = Checked(kCheckSplitAxis);
  for (size_t i = 0; i < 4; ++i) s.units[i] = FieldText(kUnitFields[i]);
  s.common = Checked(kCheckCommonYAxes);
  return s;
}

CAxesPropPage::AxisFields CAxesPropPage::ReadAxisFields() const {
  AxisFields f;
  f.autoScale = Checked(kCheckAutoScale);
  f.min = FieldText(ZEL_AXIS_MIN);
  f.max = FieldText(ZEL_AXIS_MAX);
  f.gridMode = Selected(ZEL_AXIS_GRID_MODE);
  f.gridStyle = Selected(ZEL_AXIS_GRID_STYLE);
  f.gridWidth = FieldText(ZEL_AXIS_GRID_WIDTH);
  f.gridColor = Color(ZEL_AXIS_GRID_COLOR);
  f.title = FieldText(ZEL_AXIS_TITLE);
  return f;
}

// The edits of `slot` into the fields (blank ones for no axis).
void CAxesPropPage::ShowAxis(int slot) const {
  AxisFields f = slot >= 0 ? edits_.axes[size_t(slot)] : AxisFields{};
  SetChecked(kCheckAutoScale, f.autoScale);
  SetFieldText(ZEL_AXIS_MIN, f.min);
  SetFieldText(ZEL_AXIS_MAX, f.max);
  Select(ZEL_AXIS_GRID_MODE, slot >= 0 ? f.gridMode : -1);
  Select(ZEL_AXIS_GRID_STYLE, slot >= 0 ? f.gridStyle : -1);
  SetFieldText(ZEL_AXIS_GRID_WIDTH, f.gridWidth);
  SetColor(ZEL_AXIS_GRID_COLOR, f.gridColor);
  SetFieldText(ZEL_AXIS_TITLE, f.title);
  SetFieldText(ZEL_AXIS_SIDE, slot >= 0 ? SideText(slot, slots_[size_t(slot)].side) : Text());
  SetChecked(kCheckSplitAxis, slot >= 2 && edits_.split[size_t(slot - 2)]);
  for (int i = 0; i < kAxisCount; ++i) SetChecked(kAxisButtons[i], i == slot);
  EnableAxisFields();
}

// A DISCRETE axis has no range to enter; only Y2 to Y4 split.
void CAxesPropPage::EnableAxisFields() const {
  bool editable = !readOnly() && current_ >= 0;
  for (int field : kAxisFieldIds) EnableWindow(Item(field), editable);
  bool ranged = editable && slots_[size_t(current_)].type != kAxisDiscrete;
  for (int field : {ZEL_AXIS_MIN, ZEL_AXIS_MAX, int(kLabelAxisMin), int(kLabelAxisMax)})
    EnableWindow(Item(field), ranged);
  EnableWindow(Item(kCheckSplitAxis), editable && current_ >= 2);
}

void CAxesPropPage::CheckAxis(int slot, const AxisFields& wanted) const {
  auto refuse = [&](int field, int label, int message) {
    if (slot != current_) {
      edits_ = Wanted();
      current_ = slot;
      ShowAxis(slot);
    }
    throw FieldError{field, label, message};
  };
  const AxisFields& shown = shown_.axes[size_t(slot)];
  LONG type = slots_[size_t(slot)].type;
  int badValue = type == kAxisTime ? kMsgNotADateTime : kMsgNotANumber;
  if (wanted.min != shown.min || wanted.max != shown.max) {
    OwnedVariant min, max;
    if (!ParseAxisValue(wanted.min, type, &min.v)) refuse(ZEL_AXIS_MIN, kLabelAxisMin, badValue);
    if (!ParseAxisValue(wanted.max, type, &max.v)) refuse(ZEL_AXIS_MAX, kLabelAxisMax, badValue);
    if (AxisValueNumber(min.v) >= AxisValueNumber(max.v)) refuse(ZEL_AXIS_MIN, kLabelAxisMin, kMsgMinBelowMax);
  }
  // An axis added without a record holds width 0 until one is applied: only
  // a width the operator typed is checked.
  long width = 0;
  if (wanted.gridWidth != shown.gridWidth &&
      (!ParseWidth(wanted.gridWidth, width) || width < 1 || width > kGridWidthMax))
    refuse(ZEL_AXIS_GRID_WIDTH, kLabelGridWidth, kMsgGridWidthRange);
}

// The axis's own record with only the changed fields replaced, so that what
// the page does not show (steps, fonts, colours, title position) stays.
void CAxesPropPage::WriteAxis(int slot, const AxisFields& wanted) const {
  const AxisSlot& axis = slots_[size_t(slot)];
  const AxisFields& shown = shown_.axes[size_t(slot)];
  OwnedVariant props;
  Expect(IsYAxis(slot) ? graph().GetYAxisProperties(axis.id, &props.v) : graph().GetXAxisProperties(axis.id, &props.v));
  if (V_VT(&props.v) != VT_RECORD || !V_RECORD(&props.v)) throw EntryRefused{E_UNEXPECTED};
  auto& r = *static_cast<::AxisProps*>(V_RECORD(&props.v));
  // The control clears this field of the record it is given without freeing it.
  SysFreeString(r.annotationFormat);
  r.annotationFormat = nullptr;
  if (wanted.autoScale != shown.autoScale) r.bAutoScale = wanted.autoScale;
  if (wanted.min != shown.min) VariantClear(&r.min), ParseAxisValue(wanted.min, axis.type, &r.min);
  if (wanted.max != shown.max) VariantClear(&r.max), ParseAxisValue(wanted.max, axis.type, &r.max);
  if (wanted.gridMode != shown.gridMode) ReplaceText(r.gridMode, kGridModes[wanted.gridMode]);
  if (wanted.gridStyle != shown.gridStyle) ReplaceText(r.gridStyle, kGridStyles[wanted.gridStyle]);
  long width = 0;
  if (wanted.gridWidth != shown.gridWidth && ParseWidth(wanted.gridWidth, width)) r.gridWidth = short(width);
  if (wanted.gridColor != shown.gridColor) r.gridColor = LONG(wanted.gridColor);
  if (wanted.title != shown.title) ReplaceText(r.title, TextView(wanted.title));
  Expect(IsYAxis(slot) ? graph().SetYAxisProperties(axis.id, props.v) : graph().SetXAxisProperties(axis.id, props.v));
}

// The split flags are the process's, shared by every graph: written only
// when one of them changed, with the others as they were.
void CAxesPropPage::WriteShared(const Settings& wanted) const {
  if (wanted.split != shown_.split) {
    LONG split[3] = {wanted.split[0], wanted.split[1], wanted.split[2]};
    Expect(graph().enableSplitYAxis(&split[0], &split[1], &split[2]));
  }
  if (wanted.units != shown_.units) {
    BSTR units[4] = {};
    for (size_t i = 0; i < 4; ++i) units[i] = NewBstr(wanted.units[i]);
    HRESULT hr = graph().setUnitName(units[0], units[1], units[2], units[3]);
    for (BSTR unit : units) SysFreeString(unit);
    Expect(hr);
  }
  if (wanted.common != shown_.common) Expect(graph().put_ComnYAxesProps(wanted.common));
}

}  // namespace zel

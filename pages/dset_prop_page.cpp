#include "pages/dset_prop_page.h"

#include <cwchar>

#include "control/module.h"
#include "control/property_records.h"
#include "pages/color_swatch.h"
#include "pages/page_resources.h"
#include "util/text_ids.h"

namespace zel {
namespace {

// The keywords of the lists, in item order.
constexpr const wchar_t* kTypes[] = {L"PLOT", L"AREA", L"BAR", L"STACKED BAR"};
constexpr const wchar_t* kLineStyles[] = {L"SOLID", L"DASHED", L"DOTTED"};
constexpr const wchar_t* kMarkerShapes[] = {L"BOX", L"DOT", L"TRIANGLE", L"DIAMOND", L"NONE"};
constexpr const wchar_t* kFillReferences[] = {L"X_AXES", L"Y_AXES", L"CURVE"};
constexpr int kBarType = 2;
constexpr int kNoMarker = 4;
constexpr long kLineWidthMax = 100;
constexpr long kBarWidthMax = 100;
constexpr LONG kAutoWidth = -1;

template <size_t N>
int KeywordIndex(BSTR keyword, const wchar_t* const (&keywords)[N], int fallback) {
  for (size_t i = 0; i < N; ++i)
    if (keyword && wcscmp(keyword, keywords[i]) == 0) return int(i);
  return fallback;
}

// A field's keyword in the record: the old text is freed.
void Replace(BSTR& field, const wchar_t* keyword) {
  SysFreeString(field);
  field = SysAllocString(keyword);
}

// Element `i` of a one-dimensional VARIANT array.
VARIANT Element(SAFEARRAY* array, LONG i) {
  VARIANT element;
  VariantInit(&element);
  SafeArrayGetElement(array, &i, &element);
  return element;
}

Text TextOf(BSTR text) { return text ? Text(reinterpret_cast<const char16_t*>(text)) : Text(); }

LPCWSTR Wide(const Text& text) { return reinterpret_cast<LPCWSTR>(text.c_str()); }

Text Digits(long number) {
  std::wstring digits = std::to_wstring(number);
  return Text(digits.begin(), digits.end());
}

// How the lists name a curve: its title, or "#id" for an untitled one.
Text NameOf(LONG id, const Text& title) { return title.empty() ? u"#" + Digits(id) : title; }

// The number a field's text holds; -1 for anything but blanks and digits.
long WholeNumber(const Text& text) {
  std::wstring wide(text.begin(), text.end());
  wchar_t* end = nullptr;
  long number = std::wcstol(wide.c_str(), &end, 10);
  bool digits = end != wide.c_str();
  while (*end == L' ') ++end;
  return digits && *end == 0 ? number : -1;
}

bool ValidLineWidth(const Text& text) {
  long width = WholeNumber(text);
  return width >= 1 && width <= kLineWidthMax;
}

// The curve's record as the control holds it; null when it has none.
::DatasetProps* RecordIn(VARIANT& props) {
  return V_VT(&props) == VT_RECORD ? static_cast<::DatasetProps*>(V_RECORD(&props)) : nullptr;
}

}  // namespace

CDSetPropPage::CDSetPropPage()
    : CSettingsPage(kTextCurveProperties, ZEL_CURVE_PAGE_DIALOG), ownPrompts_(ModuleInstance()) {}

void CDSetPropPage::Prepare() {
  AddListItems(ZEL_CURVE_TYPE, {kTextPlot, kTextArea, kTextBar, kTextStackedBar});
  AddListItems(ZEL_CURVE_Y_AXIS, {kTextY1, kTextY2, kTextY3, kTextY4});
  AddListItems(ZEL_LINE_STYLE, {kTextSolid, kTextDashed, kTextDotted});
  AddListItems(ZEL_MARKER_SHAPE, {kTextBox, kTextDot, kTextTriangle, kTextDiamond, kTextNone});
  SendMessageW(Item(ZEL_LINE_WIDTH), EM_LIMITTEXT, 5, 0);
  SendMessageW(Item(ZEL_BAR_WIDTH), EM_LIMITTEXT, 5, 0);
}

void CDSetPropPage::Fill() {
  ReadCurves();
  SendDlgItemMessageW(dialog(), ZEL_CURVE_CHOICE, CB_RESETCONTENT, 0, 0);
  for (const Curve& curve : curves_) {
    SendDlgItemMessageW(dialog(), ZEL_CURVE_CHOICE, CB_ADDSTRING, 0, LPARAM(Wide(NameOf(curve.id, curve.title))));
  }
  VARIANT width;
  VariantInit(&width);
  graph().GetBarWidth(&width);
  barWidth_ = V_VT(&width) == VT_I4 ? V_I4(&width) : kAutoWidth;
  VariantClear(&width);
  SetChecked(kTextAutoWidth, barWidth_ == kAutoWidth);
  if (barWidth_ == kAutoWidth) SetFieldText(ZEL_BAR_WIDTH, u"");
  else SetNumber(ZEL_BAR_WIDTH, barWidth_);
  ShowCurve(StartingCurve());
}

// Every field is checked, the curves not shown included; a line width is
// checked only when the operator changed it.
void CDSetPropPage::Check() const {
  if (current_ >= 0) {
    Text typed = FieldText(ZEL_LINE_WIDTH);
    if (typed != curves_[size_t(current_)].shown.lineWidth)
      Number(ZEL_LINE_WIDTH, kLabelLineWidth, 1, kLineWidthMax, kMsgLineWidthRange);
  }
  for (size_t i = 0; i < curves_.size(); ++i) {
    const Look& look = curves_[i].edited;
    if (int(i) != current_ && look.lineWidth != curves_[i].shown.lineWidth && !ValidLineWidth(look.lineWidth))
      throw FieldError{ZEL_LINE_WIDTH, kLabelLineWidth, kMsgLineWidthRange};
  }
  if (!Checked(kTextAutoWidth)) Number(ZEL_BAR_WIDTH, kLabelBarWidth, 1, kBarWidthMax, kMsgBarWidthRange);
}

void CDSetPropPage::Write() {
  if (current_ >= 0) curves_[size_t(current_)].edited = FieldsLook();
  for (const Curve& curve : curves_)
    if (!(curve.edited == curve.shown)) WriteCurve(curve);
  WriteBarWidth();
}

bool CDSetPropPage::IsViewChoice(int control) const { return control == ZEL_CURVE_CHOICE; }

void CDSetPropPage::OnFieldCommand(int control, WORD code) {
  if (control == ZEL_CURVE_CHOICE && code == CBN_SELCHANGE) {
    if (current_ >= 0) curves_[size_t(current_)].edited = FieldsLook();
    ShowCurve(Selected(ZEL_CURVE_CHOICE));
  } else if (control == ZEL_CURVE_TYPE && code == CBN_SELCHANGE && Selected(ZEL_CURVE_TYPE) == kBarType) {
    Prompts().ShowOnce(dialog(), CPromptMsg::kBarSamplingNote);
  } else if (control == ZEL_LINE_COLOR && code == ColorSwatch::kColorChanged) {
    OnLineColorChanged();
  } else if (control == kTextAutoWidth) {
    EnableFields();
  }
}

void CDSetPropPage::ReadCurves() {
  curves_.clear();
  VARIANT list;
  VariantInit(&list);
  graph().EnumDatasets(&list);
  if (V_VT(&list) == (VT_ARRAY | VT_VARIANT)) {
    LONG upper = -1;
    SafeArrayGetUBound(V_ARRAY(&list), 1, &upper);
    for (LONG i = 0; i <= upper; ++i) {
      VARIANT entry = Element(V_ARRAY(&list), i);
      if (V_VT(&entry) == (VT_ARRAY | VT_VARIANT)) {
        VARIANT id = Element(V_ARRAY(&entry), 0), title = Element(V_ARRAY(&entry), 1);
        Curve curve{V_I4(&id), V_VT(&title) == VT_BSTR ? TextOf(V_BSTR(&title)) : Text()};
        curve.shown = curve.edited = ReadLook(curve.id);
        curves_.push_back(curve);
        VariantClear(&title);
      }
      VariantClear(&entry);
    }
  }
  VariantClear(&list);
}

CDSetPropPage::Look CDSetPropPage::ReadLook(LONG id) const {
  Look look;
  VARIANT props;
  VariantInit(&props);
  graph().GetDatasetProperties(id, &props);
  if (const ::DatasetProps* record = RecordIn(props)) {
    look.type = record->type && wcscmp(record->type, L"PIE") == 0 ? -1 : KeywordIndex(record->type, kTypes, 0);
    look.yAxis = record->YaxisID >= 1 && record->YaxisID <= 4 ? record->YaxisID - 1 : 0;
    look.lineStyle = KeywordIndex(record->lineStyle, kLineStyles, 0);
    look.lineWidth = Digits(record->lineWidth);
    look.lineColor = OLE_COLOR(record->lineColor);
    look.markerShape = KeywordIndex(record->markerShape, kMarkerShapes, kNoMarker);
    look.markerColor = OLE_COLOR(record->markerColor);
    look.fillColor = OLE_COLOR(record->fillColor);
    look.fillTo = KeywordIndex(record->fillTo, kFillReferences, 0);
    look.fillCurveId = record->fillCurveId;
    look.useGlobal = record->bUseGlb != 0;
  }
  VariantClear(&props);
  return look;
}

int CDSetPropPage::StartingCurve() const {
  LONG wanted = currentId_, fromLegend = 0, loadId = -1;
  if (graph().GetCurveInfofromLegend(&loadId, &fromLegend) == S_OK && fromLegend && current_ < 0) wanted = loadId;
  for (size_t i = 0; i < curves_.size(); ++i)
    if (curves_[i].id == wanted) return int(i);
  return curves_.empty() ? -1 : 0;
}

void CDSetPropPage::ShowCurve(int index) {
  current_ = index;
  currentId_ = index >= 0 ? curves_[size_t(index)].id : -1;
  Select(ZEL_CURVE_CHOICE, index);
  FillReferenceList(index);
  Look look = index >= 0 ? curves_[size_t(index)].edited : Look{};
  Select(ZEL_CURVE_TYPE, look.type);
  Select(ZEL_CURVE_Y_AXIS, look.yAxis);
  Select(ZEL_LINE_STYLE, look.lineStyle);
  SetFieldText(ZEL_LINE_WIDTH, look.lineWidth);
  SetColor(ZEL_LINE_COLOR, look.lineColor);
  Select(ZEL_MARKER_SHAPE, look.markerShape);
  SetColor(ZEL_MARKER_COLOR, look.markerColor);
  SetColor(ZEL_FILL_COLOR, look.fillColor);
  int reference = look.fillTo;
  if (look.fillTo == 2) {
    auto found = SendDlgItemMessageW(dialog(), ZEL_FILL_TO, CB_GETCOUNT, 0, 0);
    reference = -1;  // a curve that is gone shows no reference
    for (int i = 2; i < int(found); ++i)
      if (LONG(SendDlgItemMessageW(dialog(), ZEL_FILL_TO, CB_GETITEMDATA, WPARAM(i), 0)) == look.fillCurveId)
        reference = i;
  }
  Select(ZEL_FILL_TO, reference);
  SetChecked(kTextUseAsGlobal, look.useGlobal);
  EnableFields();
}

// The X and Y axes, then every other curve, each curve item holding its id.
void CDSetPropPage::FillReferenceList(int index) const {
  SendDlgItemMessageW(dialog(), ZEL_FILL_TO, CB_RESETCONTENT, 0, 0);
  AddListItems(ZEL_FILL_TO, {kTextFillToXAxis, kTextFillToYAxis});
  for (size_t i = 0; i < curves_.size(); ++i) {
    if (int(i) == index) continue;
    auto item = SendDlgItemMessageW(dialog(), ZEL_FILL_TO, CB_GETCOUNT, 0, 0);
    SendDlgItemMessageW(dialog(), ZEL_FILL_TO, CB_ADDSTRING, 0, LPARAM(Wide(NameOf(curves_[i].id, curves_[i].title))));
    SendDlgItemMessageW(dialog(), ZEL_FILL_TO, CB_SETITEMDATA, WPARAM(item), LPARAM(curves_[i].id));
  }
}

CDSetPropPage::Look CDSetPropPage::FieldsLook() const {
  Look look = curves_[size_t(current_)].edited;
  look.type = Selected(ZEL_CURVE_TYPE);
  look.yAxis = Selected(ZEL_CURVE_Y_AXIS);
  look.lineStyle = Selected(ZEL_LINE_STYLE);
  look.lineWidth = FieldText(ZEL_LINE_WIDTH);
  look.lineColor = Color(ZEL_LINE_COLOR);
  look.markerShape = Selected(ZEL_MARKER_SHAPE);
  look.markerColor = Color(ZEL_MARKER_COLOR);
  look.fillColor = Color(ZEL_FILL_COLOR);
  int reference = Selected(ZEL_FILL_TO);
  if (reference >= 0) {
    look.fillTo = reference < 2 ? reference : 2;
    if (reference >= 2) look.fillCurveId = LONG(SendDlgItemMessageW(dialog(), ZEL_FILL_TO, CB_GETITEMDATA, WPARAM(reference), 0));
  }
  look.useGlobal = Checked(kTextUseAsGlobal);
  return look;
}

// The curve's record as the control holds it, with what the operator changed
// put in: what the page does not show (title, fonts, other colours) goes
// back as it came.
void CDSetPropPage::WriteCurve(const Curve& curve) const {
  VARIANT props;
  VariantInit(&props);
  Expect(graph().GetDatasetProperties(curve.id, &props));
  ::DatasetProps* record = RecordIn(props);
  if (!record) {
    VariantClear(&props);
    throw EntryRefused{E_UNEXPECTED};
  }
  const Look &was = curve.shown, &now = curve.edited;
  if (now.type != was.type && now.type >= 0) Replace(record->type, kTypes[now.type]);
  if (now.yAxis != was.yAxis) record->YaxisID = short(now.yAxis + 1);
  if (now.lineStyle != was.lineStyle) Replace(record->lineStyle, kLineStyles[now.lineStyle]);
  if (now.lineWidth != was.lineWidth) record->lineWidth = short(WholeNumber(now.lineWidth));
  if (now.lineColor != was.lineColor) record->lineColor = LONG(now.lineColor);
  if (now.markerShape != was.markerShape) Replace(record->markerShape, kMarkerShapes[now.markerShape]);
  if (now.markerColor != was.markerColor) record->markerColor = LONG(now.markerColor);
  if (now.fillColor != was.fillColor) record->fillColor = LONG(now.fillColor);
  if (now.fillTo != was.fillTo || now.fillCurveId != was.fillCurveId) {
    Replace(record->fillTo, kFillReferences[now.fillTo]);
    record->fillCurveId = now.fillCurveId;
  }
  if (now.useGlobal != was.useGlobal) record->bUseGlb = now.useGlobal ? 1 : 0;
  HRESULT status = graph().SetDatasetProperties(curve.id, props);
  VariantClear(&props);
  Expect(status);
}

void CDSetPropPage::WriteBarWidth() const {
  LONG wanted = Checked(kTextAutoWidth) ? kAutoWidth : Number(ZEL_BAR_WIDTH, kLabelBarWidth, 1, kBarWidthMax, kMsgBarWidthRange);
  if (wanted == barWidth_) return;
  VARIANT width;
  VariantInit(&width);
  V_VT(&width) = VT_I4;
  V_I4(&width) = wanted;
  Expect(graph().PutBarWidth(width));
}

void CDSetPropPage::EnableFields() const {
  if (readOnly()) return;
  bool curve = current_ >= 0;
  for (int field : {ZEL_CURVE_CHOICE, ZEL_CURVE_TYPE, ZEL_CURVE_Y_AXIS, ZEL_LINE_STYLE, ZEL_LINE_WIDTH, ZEL_LINE_COLOR,
                    ZEL_MARKER_SHAPE, ZEL_MARKER_COLOR, ZEL_FILL_COLOR, ZEL_FILL_TO, int(kTextUseAsGlobal)})
    EnableWindow(Item(field), curve);
  EnableWindow(Item(ZEL_BAR_WIDTH), !Checked(kTextAutoWidth));
}

// A new line colour carries the marker and fill colours with it, as the
// note tells the operator.
void CDSetPropPage::OnLineColorChanged() const {
  OLE_COLOR color = Color(ZEL_LINE_COLOR);
  SetColor(ZEL_MARKER_COLOR, color);
  SetColor(ZEL_FILL_COLOR, color);
  Prompts().ShowOnce(dialog(), CPromptMsg::kLineColorNote);
}

CPromptMsg& CDSetPropPage::Prompts() const {
  IPromptOwner* owner = nullptr;
  if (FAILED(graph().QueryInterface(IID_IPromptOwner, reinterpret_cast<void**>(&owner))) || !owner) return ownPrompts_;
  CPromptMsg& prompts = owner->Prompts();
  owner->Release();
  return prompts;
}

}  // namespace zel

#include "pages/vx_graph_prop_page.h"

#include <olectl.h>

#include "pages/page_resources.h"
#include "util/text_ids.h"

namespace zel {
namespace {

constexpr int kMarginFields[] = {ZEL_MARGIN_LEFT, ZEL_MARGIN_RIGHT, ZEL_MARGIN_BOTTOM, ZEL_MARGIN_TOP};
constexpr int kMarginLabels[] = {kLabelMarginLeft, kLabelMarginRight, kLabelMarginBottom, kLabelMarginTop};
constexpr long kMarginMax = 1000;
constexpr long kSnapBoundMax = 10000;

// The keywords of the lists, in item order.
constexpr const wchar_t* kMouseModes[] = {L"SELECT", L"PAN", L"ZOOM", L"NONE"};
constexpr const wchar_t* kLegendPositions[] = {L"RIGHT", L"TOP", L"LEFT", L"BOTTOM"};
// The third grid word of each item of the grid list: none, X, Y, both.
constexpr short kGridModes[] = {0, 2, 1, 3};

// The item whose keyword the BSTR holds; `fallback` for any other.
template <size_t N>
int KeywordIndex(BSTR keyword, const wchar_t* const (&keywords)[N], int fallback) {
  for (size_t i = 0; i < N; ++i)
    if (keyword && wcscmp(keyword, keywords[i]) == 0) return int(i);
  return fallback;
}

int GridLinesIndex(short mode) {
  for (int i = 0; i < 4; ++i)
    if (kGridModes[i] == mode) return i;
  return 0;
}

std::array<long, 4> MarginsOf(VARIANT& value) {
  std::array<long, 4> margins{};
  if (V_VT(&value) != (VT_ARRAY | VT_I4)) return margins;
  LONG* data = nullptr;
  if (SUCCEEDED(SafeArrayAccessData(V_ARRAY(&value), reinterpret_cast<void**>(&data)))) {
    std::copy(data, data + 4, margins.begin());
    SafeArrayUnaccessData(V_ARRAY(&value));
  }
  return margins;
}

// Four I4 VARIANTs in a VARIANT array, as a script would pass them.
VARIANT MarginsArgument(const std::array<long, 4>& margins) {
  VARIANT argument;
  VariantInit(&argument);
  SAFEARRAY* array = SafeArrayCreateVector(VT_I4, 0, 4);
  if (!array) throw EntryRefused{E_OUTOFMEMORY};
  LONG* data = nullptr;
  SafeArrayAccessData(array, reinterpret_cast<void**>(&data));
  std::copy(margins.begin(), margins.end(), data);
  SafeArrayUnaccessData(array);
  V_VT(&argument) = VT_ARRAY | VT_I4;
  V_ARRAY(&argument) = array;
  return argument;
}

void PutKeyword(IVX_Graph& graph, HRESULT (STDMETHODCALLTYPE IVX_Graph::*put)(BSTR), const wchar_t* keyword) {
  BSTR text = SysAllocString(keyword);
  HRESULT status = (graph.*put)(text);
  SysFreeString(text);
  CSettingsPage::Expect(status);
}

COLORREF Rgb(OLE_COLOR color) {
  COLORREF rgb = 0;
  return SUCCEEDED(OleTranslateColor(color, nullptr, &rgb)) ? rgb : 0;
}

}  // namespace

CVX_GraphPropPage::CVX_GraphPropPage() : CSettingsPage(kTextGraphSettings, ZEL_GRAPH_PAGE_DIALOG) {}

void CVX_GraphPropPage::Prepare() {
  AddListItems(ZEL_MOUSE_MODE, {kTextModeSelect, kTextModePan, kTextModeZoom, kTextNoneItem});
  AddListItems(ZEL_LEGEND_POSITION, {kTextRight, kTextTop, kTextLeft, kTextBottom});
  AddListItems(ZEL_GRID_LINES, {kTextNoneItem, kTextGridX, kTextGridY, kTextGridBoth});
  for (int field : kMarginFields) SendMessageW(Item(field), EM_LIMITTEXT, 10, 0);
  SendMessageW(Item(ZEL_SNAP_BOUND), EM_LIMITTEXT, 10, 0);
}

void CVX_GraphPropPage::Fill() {
  shown_ = ReadControl();
  ShowSettings(shown_);
}

void CVX_GraphPropPage::Check() const { ReadFields(); }

void CVX_GraphPropPage::Write() {
  Settings wanted = ReadFields();
  WriteMargins(wanted);
  WriteModes(wanted);
  WriteGridAndColors(wanted);
}

void CVX_GraphPropPage::OnFieldCommand(int control, WORD) {
  if (control == kCheckShowLegend) EnableLegendPosition();
}

CVX_GraphPropPage::Settings CVX_GraphPropPage::ReadControl() {
  Settings s;
  VARIANT margins;
  VariantInit(&margins);
  graph().get_Margins(&margins);
  s.margins = MarginsOf(margins);
  VariantClear(&margins);
  BSTR mode = nullptr;
  graph().get_MouseMode(&mode);
  s.mouseMode = KeywordIndex(mode, kMouseModes, 3);
  SysFreeString(mode);
  LONG flag = 0;
  graph().get_LegendEnabled(&flag);
  s.legend = flag != 0;
  // Read only while the legend is shown: without one, reading forgets the
  // remembered position.
  if (s.legend) {
    BSTR position = nullptr;
    graph().get_LegendPosition(&position);
    s.legendPosition = KeywordIndex(position, kLegendPositions, 3);
    SysFreeString(position);
  }
  graph().get_HorizontalScrollbarEnabled(&flag);
  s.horizontalScrollbar = flag != 0;
  graph().get_VerticalScrollbarEnabled(&flag);
  s.verticalScrollbar = flag != 0;
  LONG gridColor = 0;
  short words[3] = {};
  graph().getGridProp(&gridColor, words);
  std::copy(words, words + 3, gridWords_.begin());
  s.gridLines = GridLinesIndex(words[2]);
  s.gridColor = OLE_COLOR(gridColor);
  graph().get_BackColor(&s.backColor);
  int bound = 0;
  graph().enableHZGrid(&bound);
  s.snapBound = bound;
  return s;
}

CVX_GraphPropPage::Settings CVX_GraphPropPage::ReadFields() const {
  Settings s;
  for (size_t i = 0; i < 4; ++i)
    s.margins[i] = Number(kMarginFields[i], kMarginLabels[i], 0, kMarginMax, kMsgMarginRange);
  s.mouseMode = Selected(ZEL_MOUSE_MODE);
  s.legend = Checked(kCheckShowLegend);
  s.legendPosition = Selected(ZEL_LEGEND_POSITION);
  s.horizontalScrollbar = Checked(kCheckHorizontalScrollBar);
  s.verticalScrollbar = Checked(kCheckVerticalScrollBar);
  s.gridLines = Selected(ZEL_GRID_LINES);
  s.gridColor = Color(ZEL_GRID_COLOR);
  s.backColor = Color(ZEL_BACK_COLOR);
  s.snapBound = Number(ZEL_SNAP_BOUND, kLabelSnapBound, 0, kSnapBoundMax, kMsgSnapBoundRange);
  return s;
}

void CVX_GraphPropPage::ShowSettings(const Settings& s) const {
  for (size_t i = 0; i < 4; ++i) SetNumber(kMarginFields[i], s.margins[i]);
  Select(ZEL_MOUSE_MODE, s.mouseMode);
  SetChecked(kCheckShowLegend, s.legend);
  Select(ZEL_LEGEND_POSITION, s.legendPosition);
  SetChecked(kCheckHorizontalScrollBar, s.horizontalScrollbar);
  SetChecked(kCheckVerticalScrollBar, s.verticalScrollbar);
  Select(ZEL_GRID_LINES, s.gridLines);
  SetColor(ZEL_GRID_COLOR, s.gridColor);
  SetColor(ZEL_BACK_COLOR, s.backColor);
  SetNumber(ZEL_SNAP_BOUND, s.snapBound);
  EnableLegendPosition();
}

void CVX_GraphPropPage::WriteMargins(const Settings& wanted) const {
  if (wanted.margins == shown_.margins) return;
  VARIANT argument = MarginsArgument(wanted.margins);
  HRESULT status = graph().put_Margins(argument);
  VariantClear(&argument);
  Expect(status);
}

void CVX_GraphPropPage::WriteModes(const Settings& wanted) const {
  if (wanted.mouseMode != shown_.mouseMode) PutKeyword(graph(), &IVX_Graph::put_MouseMode, kMouseModes[wanted.mouseMode]);
  if (wanted.legend != shown_.legend) Expect(graph().put_LegendEnabled(wanted.legend));
  if (wanted.legend && (wanted.legendPosition != shown_.legendPosition || !shown_.legend))
    PutKeyword(graph(), &IVX_Graph::put_LegendPosition, kLegendPositions[wanted.legendPosition]);
  if (wanted.horizontalScrollbar != shown_.horizontalScrollbar)
    Expect(graph().put_HorizontalScrollbarEnabled(wanted.horizontalScrollbar));
  if (wanted.verticalScrollbar != shown_.verticalScrollbar)
    Expect(graph().put_VerticalScrollbarEnabled(wanted.verticalScrollbar));
  if (wanted.snapBound != shown_.snapBound) {
    int bound = int(wanted.snapBound);
    Expect(graph().enableHZ(&bound));
  }
}

// The grid keeps its first two words; the page sets the third (which lines)
// and the colour. The process-wide colour pair follows the page's scheme.
void CVX_GraphPropPage::WriteGridAndColors(const Settings& wanted) const {
  bool gridChanged = wanted.gridLines != shown_.gridLines || wanted.gridColor != shown_.gridColor;
  bool backChanged = wanted.backColor != shown_.backColor;
  if (gridChanged) {
    LONG color = LONG(Rgb(wanted.gridColor));
    short words[3] = {gridWords_[0], gridWords_[1], kGridModes[wanted.gridLines]};
    if (wanted.gridLines == shown_.gridLines) words[2] = gridWords_[2];
    Expect(graph().SetGridProps(&color, words));
  }
  if (backChanged) Expect(graph().put_BackColor(wanted.backColor));
  if (gridChanged || backChanged) {
    LONG background = LONG(Rgb(wanted.backColor)), grid = LONG(Rgb(wanted.gridColor));
    Expect(graph().setGraphColor(&background, &grid));
  }
}

void CVX_GraphPropPage::EnableLegendPosition() const {
  bool enable = !readOnly() && Checked(kCheckShowLegend);
  EnableWindow(Item(ZEL_LEGEND_POSITION), enable);
  EnableWindow(Item(kLabelLegendPosition), enable);
}

}  // namespace zel

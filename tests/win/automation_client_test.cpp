// The control as hosts drive it: created by ProgID, called by name and
// through its vtable, with its errors and events.
#include <olectl.h>

#include <utility>

#include "com_client.h"

namespace zel::testing {
namespace {

const Var kEmpty;

template <typename T>
T* Query(IUnknown* object, const IID& iid) {
  T* result = nullptr;
  object->QueryInterface(iid, reinterpret_cast<void**>(&result));
  return result;
}

class AutomationClientTest : public ControlTest {
 protected:
  void BuildRealGraph() {
    ASSERT_EQ(Call(L"AddXAxis", {1, L"REAL", kEmpty, 0.0}).hr, S_OK);
    ASSERT_EQ(Call(L"AddYAxis", {1, L"REAL", kEmpty, 0.0}).hr, S_OK);
    ASSERT_EQ(Call(L"AddDataset", {10, L"PLOT", 1, 1, kEmpty}).hr, S_OK);
  }
  // The upper bound of the dataset's x (or y) values as read back.
  LONG PointsOf(int dataset, int column = 0) {
    return Call(L"GetDatasetValues", {dataset}).result[column].UpperBound();
  }
};

TEST_F(AutomationClientTest, OffersItsInterfacesAndTypeInformation) {
  for (const IID* iid : {&IID_IDispatch, &IID_IConnectionPointContainer, &IID_IProvideClassInfo2,
                         &IID_ISupportErrorInfo}) {
    IUnknown* unknown = Query<IUnknown>(graph, *iid);
    EXPECT_NE(unknown, nullptr);
    if (unknown) unknown->Release();
  }
  auto* support = Query<ISupportErrorInfo>(graph, IID_ISupportErrorInfo);
  EXPECT_EQ(support->InterfaceSupportsErrorInfo(IID_IVX_Graph), S_OK);
  support->Release();
  auto* classInfo = Query<IProvideClassInfo2>(graph, IID_IProvideClassInfo2);
  GUID events{};
  EXPECT_EQ(classInfo->GetGUID(GUIDKIND_DEFAULT_SOURCE_DISP_IID, &events), S_OK);
  EXPECT_TRUE(IsEqualGUID(events, DIID__IVX_GraphEvents));
  classInfo->Release();

  // Names resolve to the catalogue's dispids.
  for (auto [name, expected] : {std::pair<const wchar_t*, DISPID>{L"BackColor", -501}, {L"Enabled", -514},
                                {L"Margins", 4}, {L"AddXAxis", 1}, {L"SetDatasetValues", 3},
                                {L"GetHairlineIntersection", 0xA}, {L"EnumDatasets", 0x21},
                                {L"SetLoadCurveSetttingInfo", 0x50}, {L"SetListControlParent", 0x51},
                                {L"ComnYAxesPropsChkBoxEnable", 0x49}, {L"enableHZGrid", 0x40}}) {
    DISPID id = 0;
    LPOLESTR names[] = {const_cast<LPOLESTR>(name)};
    ASSERT_EQ(graph->GetIDsOfNames(IID_NULL, names, 1, 0, &id), S_OK);
    EXPECT_EQ(id, expected);
  }
  ITypeInfo* info = nullptr;
  ASSERT_EQ(graph->GetTypeInfo(0, 0, &info), S_OK);
  TYPEATTR* attr = nullptr;
  info->GetTypeAttr(&attr);
  EXPECT_EQ(attr->cFuncs, 95 + 7u);  // the 95 entries after IDispatch's seven
  info->ReleaseTypeAttr(attr);
  info->Release();
}

TEST_F(AutomationClientTest, LateBoundCallsBuildAGraphAndReadItBack) {
  BuildRealGraph();
  EXPECT_EQ(Call(L"SetDatasetValues", {10, Var::Array({1, 2, 3.5}), Var::Array({0.1, 0.2, 0.3}),
                                        Var::Array({0, 0, 0}), Var::Missing()}).hr, S_OK);
  Outcome values = Call(L"GetDatasetValues", {10});
  ASSERT_EQ(values.hr, S_OK);
  Var xs = values.result[0], ys = values.result[1];
  ASSERT_EQ(xs.UpperBound(), 2);
  Var y0 = ys[0], x2 = xs[2];
  EXPECT_EQ(y0.type(), VT_R4);
  EXPECT_EQ(V_R4(&y0.v), 0.1f);
  EXPECT_EQ(V_R4(&x2.v), 3.5f);

  Outcome axes = Call(L"EnumXAxes", {});
  ASSERT_EQ(axes.result.UpperBound(), 0);
  Var entry = axes.result[0];
  Var entryId = entry[0], entryType = entry[2];
  EXPECT_EQ(V_I4(&entryId.v), 1);
  EXPECT_EQ(entry[1].type(), VT_BSTR);
  EXPECT_EQ(V_I4(&entryType.v), 1);
  EXPECT_EQ(Call(L"EnumYAxes", {}).result.UpperBound(), 0);
  EXPECT_EQ(Call(L"EnumDatasets", {}).result.UpperBound(), 0);

  // Appending, with plain typed arrays as compiled hosts pass them.
  Var more = Var::Typed<double>(VT_R8, {4, 5});
  EXPECT_EQ(Call(L"SetDatasetValues", {10, more, more, Var::Typed<int32_t>(VT_I4, {0, 0}), 1}).hr, S_OK);
  EXPECT_EQ(PointsOf(10), 4);
  EXPECT_EQ(Call(L"ClearDataset", {10}).hr, S_OK);
  EXPECT_EQ(PointsOf(10), -1);
}

TEST_F(AutomationClientTest, ErrorsCarryTheMessageAndTheProgId) {
  BuildRealGraph();
  Outcome late = Call(L"AddXAxis", {1, L"REAL", kEmpty, 0.0});
  EXPECT_EQ(late.hr, DISP_E_EXCEPTION);
  EXPECT_EQ(late.scode, E_INVALIDARG);
  EXPECT_EQ(late.description, L"An axis with  id = 1 already exists");
  EXPECT_EQ(late.source, L"ZELGraph.VX_Graph.1");

  BSTR real = SysAllocString(L"real");
  EXPECT_EQ(graph->AddXAxis(2, real, kEmpty.v, 0, Var::Missing().v, Var::Missing().v), E_INVALIDARG);
  SysFreeString(real);
  std::wstring source;
  GUID guid{};
  EXPECT_EQ(ErrorDescription(&source, &guid), L"\"real\" is a wrong Axis type");
  EXPECT_EQ(source, L"ZELGraph.VX_Graph.1");
  EXPECT_TRUE(IsEqualGUID(guid, IID_IVX_Graph));

  EXPECT_EQ(Call(L"SetClientProperty", {3, 1, L"n", 1}).description,
            L"Client property number must be between 1 and 3");
  std::wstring longKeyword(300, L'k');
  EXPECT_EQ(Call(L"AddYAxis", {5, longKeyword.c_str(), kEmpty, 0.0}).description.size(), 128u);
}

TEST_F(AutomationClientTest, ArraysAreCheckedAndReadByTheirFirstDimension) {
  BuildRealGraph();
  Var zeros = Var::Array({0, 0, 0});
  EXPECT_EQ(Call(L"SetDatasetValues", {10, 5, zeros, zeros}).description, L"The argument is not Array");
  EXPECT_EQ(Call(L"SetDatasetValues", {10, Var::Null(VT_ARRAY | VT_R8), zeros, zeros}).description,
            L"Error occurred while accessing Array elements, error code=-2147024809");
  EXPECT_EQ(PointsOf(10), -1);

  // A reference to an array, lower bounds other than 0, different lengths.
  Var xs = Var::Array({1.0, 2.0, 3.0, 4.0, 5.0}, 1);
  EXPECT_EQ(Call(L"SetDatasetValues", {10, Var::Ref(xs), Var::Array({7, 8, 9}), zeros}).hr, S_OK);
  EXPECT_EQ(PointsOf(10, 1), 2);

  // Two dimensions: only the first is read.
  SAFEARRAYBOUND bounds[2] = {{3, 0}, {2, 0}};
  Var grid = Var::Null(VT_ARRAY | VT_R8);
  V_ARRAY(&grid.v) = SafeArrayCreate(VT_R8, 2, bounds);
  EXPECT_EQ(Call(L"SetDatasetValues", {10, grid, grid, zeros}).hr, S_OK);
  EXPECT_EQ(PointsOf(10), 2);

  Var empty = Var::Array({});
  EXPECT_EQ(Call(L"SetDatasetValues", {10, empty, empty, empty}).hr, S_OK);
  EXPECT_EQ(PointsOf(10), -1);
  EXPECT_EQ(Call(L"SetDatasetValues", {10, Var::Array({1.0, L"x"}), Var::Array({1, 2}), zeros}).description,
            L"Wrong value type (index=1) in the Dataset");
}

TEST_F(AutomationClientTest, RecordsTravelInVariantsBothWays) {
  BuildRealGraph();
  Outcome props = Call(L"GetXAxisProperties", {1});
  ASSERT_EQ(props.result.type(), VT_RECORD);
  IRecordInfo* info = V_RECORDINFO(&props.result.v);
  auto* read = static_cast<::AxisProps*>(V_RECORD(&props.result.v));
  EXPECT_EQ(V_VT(&read->min), VT_R8);
  EXPECT_STREQ(read->axisFont, L"Arial,9, Bold, Charset_Default");
  EXPECT_STREQ(read->gridMode, L"NONE");

  // Sent back changed, by value and behind a reference.
  auto* record = static_cast<::AxisProps*>(info->RecordCreate());
  V_VT(&record->min) = VT_R8, V_R8(&record->min) = -5;
  V_VT(&record->max) = VT_BSTR, V_BSTR(&record->max) = SysAllocString(L"5");
  record->title = SysAllocString(L"Pressure");
  record->gridMode = SysAllocString(L"TICK");
  BSTR format = SysAllocString(L"%Y");
  record->annotationFormat = format;
  Var byValue = Var::Null(VT_RECORD);
  V_RECORD(&byValue.v) = record;
  V_RECORDINFO(&byValue.v) = info;
  info->AddRef();
  EXPECT_EQ(graph->SetXAxisProperties(1, byValue.v), S_OK);
  EXPECT_EQ(record->annotationFormat, nullptr);  // cleared in the host's record
  SysFreeString(format);
  EXPECT_EQ(Call(L"SetYAxisProperties", {1, Var::Ref(byValue)}).hr, S_OK);

  Outcome back = Call(L"GetXAxisProperties", {1});
  auto* changed = static_cast<::AxisProps*>(V_RECORD(&back.result.v));
  EXPECT_EQ(V_R8(&changed->max), 5.0);
  EXPECT_STREQ(changed->title, L"Pressure");
  EXPECT_STREQ(changed->gridMode, L"TICK");

  // Something else behind a reference is refused without a message.
  Var text(L"props");
  SetErrorInfo(0, nullptr);
  EXPECT_EQ(graph->SetXAxisProperties(1, Var::Ref(text).v), E_INVALIDARG);
  EXPECT_EQ(ErrorDescription(), L"<none>");

  Outcome dataset = Call(L"GetDatasetProperties", {10});
  auto* ds = static_cast<::DatasetProps*>(V_RECORD(&dataset.result.v));
  EXPECT_STREQ(ds->type, L"PLOT");
  EXPECT_EQ(ds->lineColor, 0x0000C0);
}

TEST_F(AutomationClientTest, ThinEntriesKeepTheirQuirks) {
  EXPECT_EQ(Call(L"SetClientProperty", {2, 7, L"a", 9}).hr, S_OK);
  LONG id = 5, value = 6;
  BSTR name = nullptr;
  EXPECT_EQ(graph->GetClientProperty(2, &id, &name, &value), S_OK);
  EXPECT_EQ(id, 0);
  EXPECT_EQ(value, 6);
  EXPECT_EQ(name, nullptr);

  EXPECT_EQ(Put(L"MouseMode", L"pan").hr, S_OK);
  EXPECT_EQ(Get(L"MouseMode").result.Text(), L"NONE");
  EXPECT_EQ(Put(L"MouseMode", L"ZOOM").hr, S_OK);
  EXPECT_EQ(Get(L"MouseMode").result.Text(), L"ZOOM");
  EXPECT_EQ(Get(L"LegendPosition").result.Text(), L"BOTTOM");

  EXPECT_EQ(graph->SetGraphType(Var(0x12345).v), S_OK);
  VARIANT read;
  V_VT(&read) = VT_EMPTY, V_I4(&read) = 0x7FFF0000;
  EXPECT_EQ(graph->GetGraphType(&read), S_OK);
  EXPECT_EQ(V_VT(&read), VT_I4);
  EXPECT_EQ(V_I4(&read), 0x7FFF2345);

  EXPECT_EQ(graph->GetPreconfVersion(Var(2.5f).v), S_OK);
  Var version(0);
  EXPECT_EQ(graph->GetVer(&version.v), S_OK);
  EXPECT_EQ(version.type(), VT_I4);
  float asFloat = 0;
  memcpy(&asFloat, &V_I4(&version.v), 4);
  EXPECT_EQ(asFloat, 2.5f);

  int flag = 3, back = 0;
  graph->enableHZ(&flag);
  graph->enableHZGrid(&back);
  EXPECT_EQ(back, 3);

  LONG color = -1, readColor = 9;
  short words[3] = {4, 5, 6}, readWords[3] = {};
  graph->SetGridProps(&color, words);
  graph->getGridProp(&readColor, readWords);
  EXPECT_EQ(readColor, 0);
  EXPECT_EQ(readWords[0], 0);

  EXPECT_EQ(Put(L"ZoomRect", Var::Array({0.5, 0.25, 0.0, 1.0})).description,
            L"BAD Zoom rectangle - REAL(left, right, bottom, top)");
  EXPECT_EQ(Put(L"ZoomRect", Var::Array({L"left", 0.25})).description,
            L"Error occurred while accessing Array elements, error code=10000");
  EXPECT_EQ(Put(L"Margins", Var::Array({L"left"})).description,
            L"Error occurred while accessing Array elements, error code=11000");
  EXPECT_EQ(Put(L"Margins", Var::Array({1, 2, 3, 4, 5})).hr, S_OK);
  Outcome margins = Get(L"Margins");
  EXPECT_EQ(margins.result.type(), VT_ARRAY | VT_I4);
  LONG fourth = 3, last = 0;
  SafeArrayGetElement(V_ARRAY(&margins.result.v), &fourth, &last);
  EXPECT_EQ(last, 4);
  EXPECT_EQ(Get(L"ZoomRect").result.type(), VT_ARRAY | VT_R4);
}

TEST_F(AutomationClientTest, EventsReachEverySinkAndSurviveReentry) {
  auto* container = Query<IConnectionPointContainer>(graph, IID_IConnectionPointContainer);
  IConnectionPoint* point = nullptr;
  ASSERT_EQ(container->FindConnectionPoint(DIID__IVX_GraphEvents, &point), S_OK);
  container->Release();
  Sink first, second;
  ASSERT_EQ(point->Advise(&first, &first.cookie), S_OK);
  ASSERT_EQ(point->Advise(&second, &second.cookie), S_OK);
  second.onEvent = [&](DISPID) {
    // Re-entering the control and disconnecting from inside the event.
    second.onEvent = nullptr;
    graph->HighlightCurveAndLegend(0, 0);
    point->Unadvise(second.cookie);
  };

  EXPECT_EQ(graph->HighlightCurveAndLegend(42, 3), S_OK);
  ASSERT_EQ(first.calls.size(), 2u);  // the outer event, then the inner one
  ASSERT_EQ(first.calls[0].size(), 3u);
  EXPECT_EQ(V_I4(&first.calls[0][0].v), 5);
  EXPECT_EQ(first.calls[0][1].type(), VT_INT);
  EXPECT_EQ(V_INT(&first.calls[0][1].v), 42);
  EXPECT_EQ(V_INT(&first.calls[0][2].v), 3);
  EXPECT_EQ(second.calls.size(), 2u);

  graph->HighlightCurveAndLegend(1, 1);
  EXPECT_EQ(first.calls.size(), 3u);
  EXPECT_EQ(second.calls.size(), 2u);
  EXPECT_EQ(point->Unadvise(first.cookie), S_OK);
  EXPECT_EQ(point->Unadvise(first.cookie), CONNECT_E_NOCONNECTION);
  point->Release();
}

}  // namespace
}  // namespace zel::testing

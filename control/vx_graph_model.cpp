// Automation entries that build the graph: axes, datasets, their properties
// and values, limit lines.
#include "control/automation_values.h"
#include "control/error_reporting.h"
#include "control/property_records.h"
#include "control/vx_graph.h"
#include "engine/v_pie_dataset.h"
#include "util/text_ids.h"

namespace zel {
namespace {

AxisType AxisTypeFromKeyword(TextView keyword) {
  if (keyword == u"INTEGER") return kAxisInteger;
  if (keyword == u"REAL") return kAxisReal;
  if (keyword == u"DISCRETE") return kAxisDiscrete;
  if (keyword == u"TIME") return kAxisTime;
  Raise(kMsgWrongAxisType, keyword);
}

// Position keywords; anything unknown is the low side (0), so that message
// 103, which stands after this fallback, is never raised.
VAxis::Placement PositionTypeFromKeyword(TextView keyword, bool vertical) {
  if (keyword == u"LEFT" || keyword == u"BOTTOM") return VAxis::kLowSide;
  if (keyword == u"RIGHT" || keyword == u"TOP") return VAxis::kHighSide;
  if (keyword == u"CENTER") return VAxis::kCenter;
  if (keyword == (vertical ? u"X_POSITION" : u"Y_POSITION")) return VAxis::kOnAxis;
  return VAxis::kLowSide;
}

Text OptionalKeyword(const VARIANT& argument) {
  if (IsMissing(argument)) return Text();
  Value value = ValueOf(argument);
  auto* text = std::get_if<Text>(&value);
  return text ? *text : Text();
}

std::vector<Value> EnumEntryValue(const EnumEntry& entry) {
  return {entry.id, entry.title, entry.type};
}

void EnumToVariant(const std::vector<EnumEntry>& entries, VARIANT* out) {
  VariantInit(out);
  if (entries.empty()) return;
  ToVariantArray(entries.size(),
                 [&](size_t i, VARIANT* element) { ToVariantArray(EnumEntryValue(entries[i]), element); },
                 out);
}

}  // namespace

HRESULT CVX_Graph::AddAxis(bool vertical, LONG id, BSTR type, const VARIANT& props, float crossing,
                           const VARIANT& positionType, const VARIANT& referenceAxis) {
  bool wrongShape = false;
  void* record = RecordOf(props, kAxisPropsGuid, wrongShape);
  if (wrongShape) return E_INVALIDARG;
  return Guarded([&] {
    AxisType axisType = AxisTypeFromKeyword(TextOf(type));
    VAxis::Placement position = PositionTypeFromKeyword(OptionalKeyword(positionType), vertical);
    int32_t reference = OptionalInt(referenceAxis, 0);
    std::optional<AxisProps> engineProps;
    if (record) engineProps = AxisPropsFromRecord(*static_cast<::AxisProps*>(record));
    const AxisProps* given = engineProps ? &*engineProps : nullptr;
    if (vertical)
      graph_->AddYAxis(id, axisType, given, position, reference, crossing);
    else
      graph_->AddXAxis(id, axisType, given, position, reference, crossing);
  });
}

STDMETHODIMP CVX_Graph::AddXAxis(LONG id, BSTR type, VARIANT props, float ypos,
                                 VARIANT positionType, VARIANT yAxis) {
  return AddAxis(false, id, type, props, ypos, positionType, yAxis);
}

STDMETHODIMP CVX_Graph::AddYAxis(LONG id, BSTR type, VARIANT props, float xpos,
                                 VARIANT positionType, VARIANT xAxis) {
  return AddAxis(true, id, type, props, xpos, positionType, xAxis);
}

HRESULT CVX_Graph::SetAxisProperties(bool vertical, LONG id, const VARIANT& props) {
  bool wrongShape = false;
  void* record = RecordOf(props, kAxisPropsGuid, wrongShape);
  if (wrongShape) return E_INVALIDARG;
  return Guarded([&] {
    AxisProps engineProps = record ? AxisPropsFromRecord(*static_cast<::AxisProps*>(record)) : AxisProps();
    vertical ? graph_->SetYAxisProperties(id, engineProps) : graph_->SetXAxisProperties(id, engineProps);
  });
}

STDMETHODIMP CVX_Graph::SetXAxisProperties(LONG id, VARIANT props) { return SetAxisProperties(false, id, props); }
STDMETHODIMP CVX_Graph::SetYAxisProperties(LONG id, VARIANT props) { return SetAxisProperties(true, id, props); }

HRESULT CVX_Graph::GetAxisProperties(bool vertical, LONG id, VARIANT* props) {
  if (!props) return E_INVALIDARG;
  return Guarded([&] {
    VAxis& axis = vertical ? graph_->YAxis(id) : graph_->XAxis(id);
    VARIANT result;
    AxisPropsToVariant(axis.GetProperties(), &result);
    *props = result;
  });
}

STDMETHODIMP CVX_Graph::GetXAxisProperties(LONG id, VARIANT* props) { return GetAxisProperties(false, id, props); }
STDMETHODIMP CVX_Graph::GetYAxisProperties(LONG id, VARIANT* props) { return GetAxisProperties(true, id, props); }

STDMETHODIMP CVX_Graph::AddDataset(LONG id, BSTR type, LONG xAxis, LONG yAxis, VARIANT props) {
  bool wrongShape = false;
  void* record = RecordOf(props, kDatasetPropsGuid, wrongShape);
  if (wrongShape) return E_INVALIDARG;
  return Guarded([&] {
    std::optional<DatasetProps> engineProps;
    if (record) engineProps = DatasetPropsFromRecord(*static_cast<::DatasetProps*>(record));
    graph_->AddDataset(id, DatasetTypeFromKeyword(TextOf(type)), xAxis, yAxis,
                       engineProps ? &*engineProps : nullptr);
  });
}

STDMETHODIMP CVX_Graph::SetDatasetProperties(LONG id, VARIANT props) {
  bool wrongShape = false;
  void* record = RecordOf(props, kDatasetPropsGuid, wrongShape);
  if (wrongShape) return E_INVALIDARG;
  return Guarded([&] {
    graph_->SetDatasetProperties(
        id, record ? DatasetPropsFromRecord(*static_cast<::DatasetProps*>(record)) : DatasetProps());
  });
}

STDMETHODIMP CVX_Graph::GetDatasetProperties(LONG id, VARIANT* props) {
  if (!props) return E_INVALIDARG;
  return Guarded([&] {
    VARIANT result;
    DatasetPropsToVariant(graph_->Dataset(id).GetProps(), &result);
    *props = result;
  });
}

STDMETHODIMP CVX_Graph::SetDatasetValues(LONG id, VARIANT xvals, VARIANT yvals, VARIANT OSvals,
                                         VARIANT append) {
  return Guarded([&] {
    ArrayArgument xs(xvals), ys(yvals);
    size_t n = std::min(xs.size(), ys.size());
    ArrayArgument status(OSvals);
    std::vector<Value> xStorage, yStorage;
    std::vector<int32_t> statusValues = status.AsInt32(n);
    graph_->SetDatasetValues(id, n, xs.Column(xStorage), ys.Column(yStorage), statusValues,
                             OptionalInt(append, 0) != 0);
  });
}

STDMETHODIMP CVX_Graph::GetDatasetValues(LONG id, VARIANT* values) {
  if (!values) return E_INVALIDARG;
  return Guarded([&] {
    VDataset& dataset = graph_->Dataset(id);
    std::vector<Value> xs, ys;
    xs.reserve(dataset.count());
    ys.reserve(dataset.count());
    for (size_t i = 0; i < dataset.count(); ++i) {
      xs.push_back(dataset.XAt(i));
      ys.push_back(dataset.YAt(i));
    }
    const std::vector<Value>* columns[] = {&xs, &ys};
    VARIANT result;
    ToVariantArray(2, [&](size_t i, VARIANT* element) { ToVariantArray(*columns[i], element); }, &result);
    *values = result;
  });
}

STDMETHODIMP CVX_Graph::RemoveDataset(LONG id) { return Guarded([&] { graph_->RemoveDataset(id); }); }
STDMETHODIMP CVX_Graph::RemoveXAxis(LONG id) { return Guarded([&] { graph_->RemoveXAxis(id); }); }
STDMETHODIMP CVX_Graph::RemoveYAxis(LONG id) { return Guarded([&] { graph_->RemoveYAxis(id); }); }
STDMETHODIMP CVX_Graph::ClearDataset(LONG id) { return Guarded([&] { graph_->ClearDataset(id); }); }
STDMETHODIMP CVX_Graph::RemoveAllDatasets() { return Guarded([&] { graph_->RemoveAllDatasets(); }); }
STDMETHODIMP CVX_Graph::EraseAll() { return Guarded([&] { graph_->EraseAll(); }); }

STDMETHODIMP CVX_Graph::SetPieColorAt(LONG datasetId, LONG index, OLE_COLOR color) {
  bool inRange = true;
  HRESULT hr = Guarded([&] {
    inRange = graph_->SetPieColorAt(datasetId, index, TranslateColor(color).value_or(color));
  });
  return SUCCEEDED(hr) && !inRange ? E_INVALIDARG : hr;
}

int STDMETHODCALLTYPE CVX_Graph::AxisSide(BOOL vertical, LONG id) {
  const VAxis* axis = vertical ? graph().FindYAxis(id) : graph().FindXAxis(id);
  return axis ? int(axis->placement()) : -1;
}

STDMETHODIMP CVX_Graph::EnumXAxes(VARIANT* axes) {
  if (!axes) return E_INVALIDARG;
  return Guarded([&] { EnumToVariant(graph_->EnumXAxes(), axes); });
}

STDMETHODIMP CVX_Graph::EnumYAxes(VARIANT* axes) {
  if (!axes) return E_INVALIDARG;
  return Guarded([&] { EnumToVariant(graph_->EnumYAxes(), axes); });
}

STDMETHODIMP CVX_Graph::EnumDatasets(VARIANT* datasets) {
  if (!datasets) return E_INVALIDARG;
  return Guarded([&] { EnumToVariant(graph_->EnumDatasets(), datasets); });
}

STDMETHODIMP CVX_Graph::AddLimitValue(LONG axisId, VARIANT value, VARIANT color, VARIANT style,
                                      VARIANT width, LONG* id) {
  if (!id) return E_INVALIDARG;
  return Guarded([&] {
    std::optional<Color> rgb;
    if (!IsMissing(color)) rgb = TranslateColor(OLE_COLOR(OptionalInt(color, -1)));
    std::optional<Text> styleName;
    if (!IsMissing(style)) styleName = OptionalKeyword(style);
    *id = graph_->AddLimitValue(axisId, ValueOf(value), rgb, styleName,
                                int16_t(OptionalInt(width, 1)));
  });
}

STDMETHODIMP CVX_Graph::RemoveLimitValue(LONG id) { return Guarded([&] { graph_->RemoveLimitValue(id); }); }

}  // namespace zel

// Automation entries for hairlines, the selection and curve highlighting.
#include "control/automation_values.h"
#include "control/error_reporting.h"
#include "control/vx_graph.h"
#include "interaction/hairline_intersection.h"
#include "interaction/selection.h"

namespace zel {
namespace {

constexpr DISPID kHighlightLegendAndCurves = 5;

VARIANT IntArgument(LONG value) {
  VARIANT v;
  VariantInit(&v);
  V_VT(&v) = VT_INT;
  V_INT(&v) = value;
  return v;
}

}  // namespace

STDMETHODIMP CVX_Graph::AddHairline(float xpos, VARIANT color, VARIANT width, LONG* id) {
  if (!id) return E_INVALIDARG;
  std::optional<int32_t> added;
  HRESULT hr = Guarded([&] {
    std::optional<Color> rgb;
    if (!IsMissing(color)) rgb = TranslateColor(OLE_COLOR(OptionalInt(color, -1)));
    added = graph_->AddHairline(xpos, rgb, int16_t(OptionalInt(width, 1)));
  });
  if (FAILED(hr)) return hr;
  if (!added) return S_FALSE;
  *id = *added;
  return S_OK;
}

STDMETHODIMP CVX_Graph::RemoveHairline(LONG id) {
  return graph_->RemoveHairline(id) ? S_OK : E_INVALIDARG;
}

STDMETHODIMP CVX_Graph::GetHairlinePosition(LONG id, float* xpos) {
  const Hairline* hairline = graph_->FindHairline(id);
  if (!hairline || !xpos) return E_INVALIDARG;
  *xpos = hairline->position * 100;
  return S_OK;
}

STDMETHODIMP CVX_Graph::GetHairlineProps(LONG id, OLE_COLOR* color, short* width) {
  const Hairline* hairline = graph_->FindHairline(id);
  if (!hairline) return E_INVALIDARG;
  if (color) *color = hairline->color;
  if (width) *width = short(hairline->width);
  return S_OK;
}

STDMETHODIMP CVX_Graph::SetHairlineProps(LONG id, OLE_COLOR color, short width) {
  Hairline* hairline = graph_->FindHairline(id);
  if (!hairline) return E_INVALIDARG;
  hairline->color = color;
  hairline->width = width;
  graph_->UpdateLayoutAndRepaint();
  return S_OK;
}

STDMETHODIMP CVX_Graph::SetHairlineShowXAxis(LONG id) {
  graph_->xAxisHairline() = id;
  return S_OK;
}

STDMETHODIMP CVX_Graph::AddHairlineShowDSet(LONG id) {
  switch (graph_->AddHairlineShowDataset(id)) {
    case VGraph::ShowDatasetResult::kAdded: return S_OK;
    case VGraph::ShowDatasetResult::kUnknownDataset: return E_INVALIDARG;
    default: return E_FAIL;
  }
}

STDMETHODIMP CVX_Graph::GetHairlineIntersection(LONG id, LONG datasetId, LONG snap, VARIANT* result) {
  if (!result) return E_INVALIDARG;
  VariantInit(result);
  const Hairline* hairline = graph_->FindHairline(id);
  const VDataset* dataset = graph_->FindDataset(datasetId);
  if (!hairline || !dataset) return E_INVALIDARG;
  return Guarded([&] {
    const Box<int32_t>& data = graph_->dataArea();
    Crossing crossing =
        HairlineCrossing(*dataset, HairlinePixel(*graph_, *hairline), data.right - data.left + 1, snap != 0);
    ToVariantArray({crossing.x, crossing.y}, result);
  });
}

// Each dataset with points in the last band gives [id, points], the points
// an array of [x, y] pairs typed as the dataset's axes.
STDMETHODIMP CVX_Graph::GetSelectedPoints(LONG all, VARIANT* points) {
  if (!points) return E_INVALIDARG;
  VariantInit(points);
  std::vector<SelectedPoints> selected = SelectedPointsOf(*graph_, graph_->selection(), all != 0);
  if (selected.empty()) return S_OK;
  HRESULT hr = Guarded([&] {
    ToVariantArray(selected.size(), [&](size_t i, VARIANT* element) {
      const VDataset& dataset = *graph_->FindDataset(selected[i].datasetId);
      const std::vector<size_t>& indexes = selected[i].indexes;
      ToVariantArray(2, [&](size_t part, VARIANT* out) {
        if (part == 0) return ToVariant(Value(selected[i].datasetId), out);
        ToVariantArray(indexes.size(), [&](size_t k, VARIANT* pair) {
          ToVariantArray({dataset.XAt(indexes[k]), dataset.YAt(indexes[k])}, pair);
        }, out);
      }, element);
    }, points);
  });
  return FAILED(hr) ? E_FAIL : S_OK;
}

STDMETHODIMP CVX_Graph::ZoomToSelection() {
  return Guarded([&] { zel::ZoomToSelection(*graph_, graph_->selection()); });
}

STDMETHODIMP CVX_Graph::GetPointIntersection(LONG datasetId, LONG, VARIANT* result) {
  if (!result) return E_INVALIDARG;
  VariantInit(result);
  return graph_->FindDataset(datasetId) ? S_OK : E_INVALIDARG;
}

STDMETHODIMP CVX_Graph::ShowHighlightedCurve(LONG curveIndex, LONG curvelogId, LONG seconds) {
  highlightIndex_ = -1;
  highlightSeconds_ = -2;
  if (curveIndex >= 0 && seconds != -2) {
    highlightIndex_ = curveIndex;
    highlightSeconds_ = seconds;
    curvelogId_ = curvelogId;
  }
  return S_OK;
}

STDMETHODIMP CVX_Graph::HighlightCurveAndLegend(LONG curveId, LONG curveIndex) {
  events_.Fire(kHighlightLegendAndCurves, {IntArgument(curveId), IntArgument(curveIndex)});
  return S_OK;
}

STDMETHODIMP CVX_Graph::UpdateHighlightTimerInfo(LONG seconds) {
  highlightSeconds_ = seconds;
  // The log id becomes the active flag, as the control has always done.
  if (highlightIndex_ >= 0) curvelogId_ = 1;
  return S_OK;
}

STDMETHODIMP CVX_Graph::GetCurvelogID(int* logId) {
  if (!logId) return E_INVALIDARG;
  *logId = curvelogId_;
  return S_OK;
}

STDMETHODIMP CVX_Graph::setMarkerColorStatus(VARIANT* colors) {
  if (!colors) return S_OK;
  try {
    ArrayArgument array(*colors);
    if (array.size() == 4) {
      std::vector<int32_t> values = array.AsInt32(4);
      std::copy(values.begin(), values.end(), graph_->markerStatusColors().begin());
    }
  } catch (...) {
  }
  return S_OK;
}

STDMETHODIMP CVX_Graph::SetLoadCurveSetttingInfo(LONG curvelogId) {
  loadFromLegend_ = curvelogId >= 0 ? 1 : 0;
  loadCurveId_ = curvelogId >= 0 ? curvelogId : -1;
  return S_OK;
}

STDMETHODIMP CVX_Graph::GetCurveInfofromLegend(LONG* id, LONG* loadFromLegend) {
  if (!id || !loadFromLegend) return E_INVALIDARG;
  *id = loadCurveId_;
  *loadFromLegend = loadFromLegend_;
  return S_OK;
}

STDMETHODIMP CVX_Graph::loadCurveProperty(BSTR, LONG id) {
  loadCurveId_ = id;
  loadFromLegend_ = 1;
  // The curve page opens here once the settings pages exist; closing it
  // forgets the request again.
  return SetLoadCurveSetttingInfo(-1);
}

}  // namespace zel

// Automation entries for hairlines, the selection and curve highlighting.
#include <olectl.h>

#include <algorithm>

#include "control/automation_values.h"
#include "control/class_ids.h"
#include "control/error_reporting.h"
#include "control/vx_graph.h"
#include "interaction/hairline_intersection.h"
#include "interaction/pixel_frame.h"
#include "interaction/point_lookup.h"
#include "interaction/selection.h"

namespace zel {
namespace {

// The upper bound of the array a VARIANT holds, directly or by reference.
bool UpperBound(const VARIANT& variant, LONG* upper) {
  const VARIANT* v = &variant;
  if (V_VT(v) == (VT_BYREF | VT_VARIANT) && V_VARIANTREF(v)) v = V_VARIANTREF(v);
  if (!(V_VT(v) & VT_ARRAY)) return false;
  SAFEARRAY* array = (V_VT(v) & VT_BYREF) ? (V_ARRAYREF(v) ? *V_ARRAYREF(v) : nullptr) : V_ARRAY(v);
  return array && SUCCEEDED(SafeArrayGetUBound(array, 1, upper));
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
  if (!graph_->SetHairlineLook(id, color, width)) return E_INVALIDARG;
  graph_->UpdateLayoutAndRepaint();
  return S_OK;
}

STDMETHODIMP CVX_Graph::SetHairlineShowXAxis(LONG id) {
  graph_->SetXAxisHairline(id);
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
    Crossing crossing = HairlineCrossing(*dataset, HairlinePixel(*graph_, *hairline), graph_->dataArea().width(),
                                         snap != 0);
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

// The point of the dataset under the last mouse point, as [x, y] typed as
// its axes; VT_EMPTY when no point lies there. The graph type is not used.
STDMETHODIMP CVX_Graph::GetPointIntersection(LONG datasetId, LONG, VARIANT* result) {
  if (!result) return E_INVALIDARG;
  VariantInit(result);
  const VDataset* dataset = graph_->FindDataset(datasetId);
  if (!dataset) return E_INVALIDARG;
  const FrameRect& data = graph_->dataArea();
  FramePoint at = ToFrame(*graph_, window_.ClientRectangle(), tracker_.lastMouse());
  DataExtent extent{data.width(), data.height()};
  std::optional<size_t> index =
      PointAtPixel(*dataset, extent, at.x - data.left, at.y - data.bottom, std::max(1, dataset->lineWidth()));
  if (!index) return S_OK;
  return Guarded([&] { ToVariantArray({dataset->XAt(*index), dataset->YAt(*index)}, result); });
}

STDMETHODIMP CVX_Graph::ShowHighlightedCurve(LONG curveIndex, LONG curvelogId, LONG seconds) {
  highlight_.Show(curveIndex, curvelogId, seconds);
  return S_OK;
}

STDMETHODIMP CVX_Graph::HighlightCurveAndLegend(LONG curveId, LONG curveIndex) {
  AddRef();
  events_.Fire(kHighlightLegendAndCurves, {EventArgument(VT_INT, curveId), EventArgument(VT_INT, curveIndex)});
  Release();
  return S_OK;
}

STDMETHODIMP CVX_Graph::UpdateHighlightTimerInfo(LONG seconds) {
  highlight_.UpdateDuration(seconds);
  return S_OK;
}

STDMETHODIMP CVX_Graph::GetCurvelogID(int* logId) {
  if (!logId) return E_INVALIDARG;
  *logId = highlight_.curvelogId();
  return S_OK;
}

// Four 32-bit elements are taken when the array's upper bound is 3, whatever
// its lower bound; any other array is ignored.
STDMETHODIMP CVX_Graph::setMarkerColorStatus(VARIANT* colors) {
  LONG upper = 0;
  if (!colors || !UpperBound(*colors, &upper) || upper + 1 != 4) return S_OK;
  try {
    std::vector<int32_t> values = ArrayArgument(*colors).AsInt32(4);
    graph_->SetMarkerStatusColors({values[0], values[1], values[2], values[3]});
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

// Opens the curve page alone, for the curve `id`; the name is not used.
// Closing the page forgets the request and ends any highlight. A control
// not yet shown in its window has no curves on screen, and no page opens.
STDMETHODIMP CVX_Graph::loadCurveProperty(BSTR, LONG id) {
  loadCurveId_ = id;
  loadFromLegend_ = 1;
  AddRef();
  if (window_.Exists()) ShowPropertyFrame(GetActiveWindow(), &kCurvePageClsid, 1);
  SetLoadCurveSetttingInfo(-1);
  highlight_.Stop();
  Release();
  return S_OK;
}

}  // namespace zel

#include "interaction/selection.h"

#include <algorithm>

#include "engine/graph_error.h"
#include "interaction/point_lookup.h"
#include "util/text_ids.h"

namespace zel {

NormalBand Normalise(const RubberBand& band) {
  return {std::min(band.bandX0, band.bandX1), std::max(band.bandX0, band.bandX1),
          std::min(band.bandY0, band.bandY1), std::max(band.bandY0, band.bandY1)};
}

std::vector<SelectedPoints> SelectedPointsOf(const VGraph& graph, const RubberBand& selection, bool all) {
  NormalBand b = Normalise(selection);
  bool flag = all && b.left < b.right && b.bottom < b.top;
  const Box<int32_t>& data = graph.dataArea();
  DataExtent extent{data.right - data.left + 1, data.top - data.bottom + 1};
  std::vector<SelectedPoints> result;
  for (const auto& entry : graph.datasets().entries()) {
    std::vector<size_t> found = PointsInBand(*entry.object, extent, flag, b.left, b.right, b.bottom, b.top);
    if (!found.empty()) result.push_back({entry.id, std::move(found)});
  }
  return result;
}

void ApplyZoomRect(VGraph& graph, const Box<float>& zoom) {
  bool valid = zoom.left >= 0 && zoom.left < zoom.right && zoom.right <= 1 && zoom.bottom >= 0 &&
               zoom.bottom < zoom.top && zoom.top <= 1;
  if (!valid) Raise(kMsgBadZoomRect);
  graph.zoomRect() = zoom;
  graph.UpdateLayoutAndRepaint();
}

void ZoomToSelection(VGraph& graph, const RubberBand& selection) {
  NormalBand b = Normalise(selection);
  if (b.right > b.left && b.top > b.bottom) ApplyZoomRect(graph, {b.left, b.top, b.right, b.bottom});
}

}  // namespace zel

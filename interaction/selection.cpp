#include "interaction/selection.h"

#include <algorithm>

#include "engine/graph_error.h"
#include "interaction/point_lookup.h"
#include "util/text_ids.h"

namespace zel {

std::vector<SelectedPoints> SelectedPointsOf(const VGraph& graph, const RubberBand& selection, bool all) {
  Fractions b = selection.Normalised();
  bool flag = all && b.left < b.right && b.bottom < b.top;
  DataExtent extent{graph.dataArea().width(), graph.dataArea().height()};
  std::vector<SelectedPoints> result;
  for (const auto& entry : graph.datasets().entries()) {
    std::vector<size_t> found = PointsInBand(*entry.object, extent, flag, b.left, b.right, b.bottom, b.top);
    if (!found.empty()) result.push_back({entry.id, std::move(found)});
  }
  return result;
}

void ZoomToSelection(VGraph& graph, const RubberBand& selection) {
  Fractions b = selection.Normalised();
  if (b.right > b.left && b.top > b.bottom) graph.SetZoomRect(b);
}

}  // namespace zel

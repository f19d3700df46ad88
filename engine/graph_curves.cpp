// The curves of the drawing pass: every dataset by its type, in the order
// the passes need (fills below bars, bars below lines and markers).
#include "engine/curve_painter.h"
#include "engine/v_graph.h"

namespace zel {

void VGraph::DrawCurves(Surface& surface) {
  int32_t width = dataArea_.right - dataArea_.left + 1;
  int32_t height = dataArea_.top - dataArea_.bottom + 1;
  for (const auto& entry : datasets_.entries()) {
    const VDataset& dataset = *entry.object;
    if (dataset.type() == kPlot || dataset.type() == kArea)
      DrawPlot(surface, dataset, width, height, markerStatusColors_);
  }
}

}  // namespace zel

#pragma once
// The selection a rubber band leaves behind, and zooming: which points of
// each dataset it holds, and setting the zoom rectangle to it.
#include <cstddef>
#include <cstdint>
#include <vector>

#include "engine/v_graph.h"

namespace zel {

struct SelectedPoints {
  int32_t datasetId;
  std::vector<size_t> indexes;
};

// The datasets, in their order, that hold at least one point in the band.
// `all` holds only for a band with extent in both directions; without it
// each dataset gives its first point in the band only.
std::vector<SelectedPoints> SelectedPointsOf(const VGraph& graph, const RubberBand& selection, bool all);

// Zooms to the band when it has extent in both directions; else nothing.
void ZoomToSelection(VGraph& graph, const RubberBand& selection);

}  // namespace zel

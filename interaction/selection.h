#pragma once
// The selection a rubber band leaves behind, and zooming: which points of
// each dataset it holds, and setting the zoom rectangle to it.
#include <cstddef>
#include <cstdint>
#include <vector>

#include "engine/v_graph.h"

namespace zel {

// A band with its corners put in order.
struct NormalBand {
  float left, right, bottom, top;
};
NormalBand Normalise(const RubberBand& band);

struct SelectedPoints {
  int32_t datasetId;
  std::vector<size_t> indexes;
};

// The datasets, in their order, that hold at least one point in the band.
// `all` holds only for a band with extent in both directions; without it
// each dataset gives its first point in the band only.
std::vector<SelectedPoints> SelectedPointsOf(const VGraph& graph, const RubberBand& selection, bool all);

// Sets the zoom rectangle, raising message 113 unless 0 <= left < right <= 1
// and 0 <= bottom < top <= 1 (NaN fails); then lays out and repaints.
void ApplyZoomRect(VGraph& graph, const Box<float>& zoom);

// Zooms to the band when it has extent in both directions; else nothing.
void ZoomToSelection(VGraph& graph, const RubberBand& selection);

}  // namespace zel

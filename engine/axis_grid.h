#pragma once
// The grid lines of an axis across the plot, and its limit lines.
#include "engine/surface.h"

namespace zel {

class VAxis;

// The pen the graph hands every axis for its grid lines.
struct GridLook {
  Color color = 0;
  int style = kPenSolid;  // SOLID, DASHED or DOTTED
  int width = 1;
};

// The plot in the drawing pass's logical pixels, and where along the axis
// (x for an X axis, y for a Y axis) its minimum lies over `extent` pixels.
struct GridFrame {
  Rect plot;
  int32_t start = 0;
  int32_t extent = 0;
};

// Draws the grid lines (unless `lines` is false or the axis's grid mode is
// NONE), then the axis's limit lines. `betweenCategories` moves vertical
// lines left by half a step, as with bars. `f` is the printer scale.
void DrawAxisGrid(Surface& surface, const VAxis& axis, const GridLook& look, const GridFrame& frame,
                  bool lines, bool betweenCategories, double f);

}  // namespace zel

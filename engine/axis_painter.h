#pragma once
// Draws an axis: its line, major and minor ticks, labels (with the rules
// that leave some out), its title, and for a Y axis the arrowhead and unit
// name at its top. Positions are in the drawing pass's logical pixels, y
// growing downwards.
#include "engine/surface.h"

namespace zel {

class VAxis;

// Where an axis is drawn.
struct AxisPlacement {
  int32_t line;        // x of a Y axis line, y of an X axis line
  int32_t start;       // where the axis's minimum lies (x for X axes, y for Y axes)
  int32_t extent;      // pixels over the whole range
  int32_t roomFirst;   // the visible part: left..right, or top..bottom
  int32_t roomLast;
  int32_t slack;       // how far past roomLast an X label may end
  bool highSide;       // labels on the other side of the line
  double scale = 1.0;  // the printer scale factor, 1 on the screen
  TextView unitName;   // shown above a split Y axis
};

void DrawAxis(Surface& surface, const VAxis& axis, const AxisPlacement& placement, int reportType);

}  // namespace zel

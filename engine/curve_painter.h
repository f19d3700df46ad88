#pragma once
// Draws a dataset's points as a line with markers, in the data area: x from
// 0 to `width`, y from 0 at the top to `height`.
#include <array>
#include <cstdint>

#include "engine/surface.h"

namespace zel {

class VDataset;

// The region of a marker of `shape` centred on a point; half-size 3 for a
// one-pixel pen, (width * 5) / 2 otherwise.
Region MarkerRegion(Point at, int shape, int penWidth);

// The pen of a curve: dashed and dotted lines of width 2 or more are
// geometric, everything else a cosmetic pen of the style (solid for an
// unknown style).
Pen CurvePen(int lineStyle, int width, Color color);

// `statusColors` are the colours of points of status 1, 2 and 9.
void DrawPlot(Surface& surface, const VDataset& dataset, int32_t width, int32_t height,
              const std::array<int32_t, 4>& statusColors);

}  // namespace zel

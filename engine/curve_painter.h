#pragma once
// Draws a dataset's points as a line with markers, in the data area: x from
// 0 to `width`, y from 0 at the top to `height`.
#include <array>
#include <cstdint>

#include "engine/curve_look.h"
#include "engine/curve_points.h"
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

// Whether the points of a pixel column are reduced to the few that colour
// the same pixels (ColumnRun): automatically when the curve has more than
// twice as many points as the data area has columns, or always, or never.
enum class Reduction { kAuto, kAlways, kNever };

// Joins the drawn points in order (each segment clipped to the data area)
// and marks those inside it by their status. With reduction, a column's
// markers follow its lines; otherwise each marker follows the segment that
// reaches its point. For a solid one-pixel pen the lines colour the same
// pixels either way.
void DrawPlot(Surface& surface, const VDataset& dataset, CurveArea area, const CurveLook& look,
              Reduction reduction = Reduction::kAuto);

}  // namespace zel

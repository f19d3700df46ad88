#pragma once
// The fill of an AREA dataset: one polygon (WINDING) made of the curve's
// drawn points and a closing path chosen by fillTo.
#include <vector>

#include "engine/curve_points.h"
#include "engine/surface.h"

namespace zel {

class VDataset;

// The drawn points of a dataset in order, the points of one pixel column
// reduced to first, lowest, highest and last (which leaves the filled
// pixels as they are: a polygon's back-and-forth along one vertical line
// encloses nothing).
std::vector<Point> CurveOutline(const VDataset& dataset, CurveArea area);

// The fill polygon, closed by fillTo:
// - X_AXES: down (or up) to the pixel row of the Y value 0, from below the
//   last point back to below the first; when 0 lies outside the Y range,
//   to the nearer edge of the data area.
// - Y_AXES: sideways to the Y axis, the left edge of the data area (the
//   right edge for a Y axis on the high side), from beside the last point
//   back to beside the first.
// - CURVE: back along the points of `reference` (the dataset fillCurveId
//   names), last to first, each mapped through its own axes. Without a
//   reference with drawn points (no such dataset, the dataset itself, a
//   pie) the area is closed to the X axis as for X_AXES: a dangling id is
//   usually a curve not yet added, and the area should show meanwhile.
// Empty when the dataset has no drawn point.
Polygon AreaPolygon(const VDataset& dataset, const VDataset* reference, CurveArea area);

void DrawAreaFill(Surface& surface, const VDataset& dataset, const VDataset* reference, CurveArea area,
                  Color fill);

}  // namespace zel

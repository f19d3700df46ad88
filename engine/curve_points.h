#pragma once
// Where a dataset's points fall in the data area (x from 0 to width, y from 0
// at the top to height), and one loop over the points that are drawn, reading
// the typed columns directly so that a dense curve costs a few operations a
// point.
#include <algorithm>
#include <cmath>
#include <cstdint>
#include <variant>

#include "engine/axis_scale.h"
#include "engine/frame_geometry.h"
#include "engine/v_axis.h"
#include "engine/v_dataset.h"

namespace zel {

// Points of status 11 and above are absent; status 10 is drawn unmarked.
constexpr int32_t kAbsentStatus = 11;
constexpr int32_t kUnmarkedStatus = 10;

// The data area as curves see it: `width` by `height` pixels, x from its
// left edge and y down from its top row. An axis's whole range spans columns
// 0 to width and rows height - 1 (its minimum, on the bottom row) to -1 (its
// maximum, just above the top row), as in the graph's frame.
struct CurveArea {
  int32_t width = 0, height = 0;
  // The columns the drawing can show (the plot frame's, when zoomed): points
  // of a curve sorted by x that cannot reach them are not visited.
  int32_t firstVisible = INT32_MIN, lastVisible = INT32_MAX;
  double top() const { return -1; }
  double bottom() const { return height - 1; }
  bool Contains(double x, double y) const { return x >= 0 && x <= width && y >= top() && y <= bottom(); }
};

// The value-to-pixel maps of one dataset's axes, to device doubles of the
// data area (round x with Pixel, y with RowPixel). On a DISCRETE axis points
// sit in the middle of their category, half a category before its mark.
class PointMap {
 public:
  PointMap(const VDataset& dataset, CurveArea area)
      : xs_(ScaleOf(*dataset.xAxis(), area.width)),
        ys_(ScaleOf(*dataset.yAxis(), area.height)),
        xShift_(dataset.xAxis()->type() == kAxisDiscrete ? xs_.pixelsPerUnit / 2 : 0),
        yShift_(dataset.yAxis()->type() == kAxisDiscrete ? ys_.pixelsPerUnit / 2 : 0),
        bottom_(area.bottom()) {}

  // NaN stays NaN (the point is left out); infinities stop far off.
  double X(double value) const { return Far(xs_.ToPixel(value) - xShift_); }
  double Y(double value) const { return Far(bottom_ - ys_.ToPixel(value) - yShift_); }
  // Without the half-category shift: where bars and fills meet the axes.
  double PlainX(double value) const { return Far(xs_.ToPixel(value)); }
  double PlainY(double value) const { return Far(bottom_ - ys_.ToPixel(value)); }
  const AxisScale& xScale() const { return xs_; }

 private:
  static double Far(double v) { return v < -kFarPixel ? -kFarPixel : v > kFarPixel ? kFarPixel : v; }

  AxisScale xs_, ys_;
  double xShift_, yShift_;
  double bottom_;
};

// Whether a dataset can be drawn at all: it has both axes.
inline bool HasAxes(const VDataset& dataset) { return dataset.xAxis() && dataset.yAxis(); }

// Calls visit(i, x, y, status) for each point in [first, last) that is drawn:
// status below 11 and both pixels numbers (within kFarPixel). `map` turns stored values into
// pixels (a PointMap, or anything with X and Y).
template <typename Map, typename Visit>
void ForEachDrawnPoint(const VDataset& dataset, const Map& map, size_t first, size_t last, Visit&& visit) {
  std::visit(
      [&](const auto& xs) {
        std::visit(
            [&](const auto& ys) {
              const int32_t* status = dataset.status().data();
              size_t end = std::min({last, dataset.count(), xs.size(), ys.size(), dataset.status().size()});
              for (size_t i = first; i < end; ++i) {
                if (status[i] >= kAbsentStatus) continue;
                double x = map.X(double(xs[i])), y = map.Y(double(ys[i]));
                if (std::isnan(x) || std::isnan(y)) continue;
                visit(i, x, y, status[i]);
              }
            },
            dataset.yValues().storage());
      },
      dataset.xValues().storage());
}

template <typename Map, typename Visit>
void ForEachDrawnPoint(const VDataset& dataset, const Map& map, Visit&& visit) {
  ForEachDrawnPoint(dataset, map, 0, dataset.count(), visit);
}

}  // namespace zel

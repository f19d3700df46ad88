#include "engine/curve_painter.h"

#include <algorithm>
#include <cmath>

#include "engine/curve_reduction.h"
#include "engine/dataset_keywords.h"
#include "engine/v_dataset.h"

namespace zel {
namespace {

constexpr int32_t kVisibilityMargin = 5;

// Clips the segment a-b to the curve area (Liang-Barsky); false when nothing
// of it is inside. An end inside the area is kept exactly as it was, so a
// segment between two inside points is drawn between their own pixels.
bool ClipSegment(double& ax, double& ay, double& bx, double& by, const CurveArea& area) {
  double t0 = 0, t1 = 1, dx = bx - ax, dy = by - ay;
  const double p[] = {-dx, dx, -dy, dy};
  const double q[] = {ax, area.width - ax, ay - area.top(), area.bottom() - ay};
  for (int i = 0; i < 4; ++i) {
    if (p[i] == 0) {
      if (q[i] < 0) return false;
      continue;
    }
    double t = q[i] / p[i];
    if (p[i] < 0) t0 = std::max(t0, t);
    else t1 = std::min(t1, t);
    if (t0 > t1) return false;
  }
  if (t1 < 1) bx = ax + t1 * dx, by = ay + t1 * dy;
  if (t0 > 0) ax += t0 * dx, ay += t0 * dy;
  return true;
}

Color MarkerColor(const CurveLook& look, int32_t status) {
  switch (status) {
    case 1: return look.status[0];
    case 2: return look.status[1];
    case 9: return look.status[2];
    default: return look.marker;
  }
}

// The point loop of one curve. Points arrive in order; those inside the
// data area that share a pixel column with the point before gather in a
// ColumnRun (when reducing), which is drawn, with its markers, when the
// curve leaves the column.
class PlotPainter {
 public:
  PlotPainter(Surface& surface, const VDataset& dataset, const PointMap& map, CurveArea area,
              const CurveLook& look, bool reduce)
      : surface_(surface), dataset_(dataset), map_(map), area_(area), look_(look), reduce_(reduce) {}

  // The next drawn point, as ForEachDrawnPoint hands it over. Inlined into
  // the loop: most points of a dense curve only join the run of their column.
  [[gnu::always_inline]] void operator()(size_t i, double x, double y, int32_t) {
    bool inside = area_.Contains(x, y);
    Point at{NearPixel(x), NearRow(y)};
    if (reduce_ && inside && run_.active() && at.x == run_.x()) {
      run_.Add(at.y);
      runEnd_ = i;
      previousX_ = x, previousY_ = y;
      return;
    }
    Leave(i, x, y, inside, at);
  }

  void Finish() { CloseRun(); }

 private:
  // A point that does not join the current run: the run is drawn, the
  // segment from the previous point is drawn, and the point may start a run.
  // Out of line, so that Add stays small.
  [[gnu::noinline]] void Leave(size_t i, double x, double y, bool inside, Point at);

  void Connect(double x, double y) {
    double ax = previousX_, ay = previousY_, bx = x, by = y;
    if (!ClipSegment(ax, ay, bx, by, area_)) return;
    surface_.MoveTo({Pixel(ax), RowPixel(ay)});
    surface_.LineTo({Pixel(bx), RowPixel(by)});
  }

  void CloseRun() {
    if (!run_.active()) return;
    run_.Draw(surface_);
    if (dataset_.markerShape() != kMarkerNone) {
      if (run_.count() == 1) {
        Mark(run_.first(), dataset_.status()[runStart_]);
      } else {
        ForEachDrawnPoint(dataset_, map_, runStart_, runEnd_ + 1, [&](size_t, double x, double y, int32_t status) {
          Mark({Pixel(x), RowPixel(y)}, status);
        });
      }
    }
    run_.Reset();
  }

  void Mark(Point at, int32_t status) {
    if (status >= kUnmarkedStatus) return;
    Rect box{at.x - kVisibilityMargin, at.y - kVisibilityMargin, at.x + kVisibilityMargin,
             at.y + kVisibilityMargin};
    if (!surface_.IsVisible(box)) return;
    surface_.FillRegion(MarkerRegion(at, dataset_.markerShape(), look_.penWidth), MarkerColor(look_, status));
  }

  Surface& surface_;
  const VDataset& dataset_;
  const PointMap& map_;
  CurveArea area_;
  const CurveLook& look_;
  bool reduce_;
  ColumnRun run_;
  size_t runStart_ = 0, runEnd_ = 0;
  bool hasPrevious_ = false;
  double previousX_ = 0, previousY_ = 0;
};

void PlotPainter::Leave(size_t i, double x, double y, bool inside, Point at) {
  CloseRun();
  if (hasPrevious_) Connect(x, y);
  previousX_ = x, previousY_ = y;
  hasPrevious_ = true;
  // A point outside gets no marker and starts no run.
  if (!inside) return;
  run_.Start(at);
  runStart_ = runEnd_ = i;
}

// Whether point i is drawn at all (as ForEachDrawnPoint decides).
bool IsDrawn(const VDataset& dataset, const PointMap& map, size_t i) {
  if (dataset.status()[i] >= kAbsentStatus) return false;
  return !std::isnan(map.X(dataset.xValues().NumberAt(i))) && !std::isnan(map.Y(dataset.yValues().NumberAt(i)));
}

// The points of a curve whose x values never decrease that can colour the
// visible columns: those whose pixel lies within `reach` columns of them,
// and the drawn point on either side, where a segment into the view starts
// or ends. Everything for other curves.
// The first index in [low, high) where `holds` stops holding, for a
// predicate that holds on a prefix of the range.
template <typename Predicate>
size_t PartitionPoint(size_t low, size_t high, Predicate holds) {
  while (low < high) {
    size_t middle = low + (high - low) / 2;
    if (holds(middle)) low = middle + 1;
    else high = middle;
  }
  return low;
}

std::pair<size_t, size_t> VisiblePoints(const VDataset& dataset, const PointMap& map, CurveArea area,
                                        int32_t reach) {
  size_t count = std::min({dataset.count(), dataset.xValues().size(), dataset.yValues().size(),
                           dataset.status().size()});
  double pixelsPerUnit = map.xScale().pixelsPerUnit;
  if (!dataset.xValues().nonDecreasing() || !std::isfinite(pixelsPerUnit) || pixelsPerUnit == 0) return {0, count};
  double from = double(area.firstVisible) - reach, to = double(area.lastVisible) + reach;
  // Pixels grow with x on an axis drawn forwards, and shrink on one drawn backwards.
  bool forwards = pixelsPerUnit > 0;
  auto before = [&](size_t i) {
    double x = map.X(dataset.xValues().NumberAt(i));
    return forwards ? x < from : x > to;
  };
  auto upTo = [&](size_t i) {
    double x = map.X(dataset.xValues().NumberAt(i));
    return forwards ? x <= to : x >= from;
  };
  size_t first = PartitionPoint(0, count, before);
  size_t last = PartitionPoint(first, count, upTo);
  while (first > 0 && !IsDrawn(dataset, map, --first)) {}
  while (last < count && !IsDrawn(dataset, map, last)) ++last;
  return {first, std::min(last + 1, count)};
}

bool Reduces(Reduction reduction, size_t count, CurveArea area) {
  if (reduction != Reduction::kAuto) return reduction == Reduction::kAlways;
  return count / 2 > size_t(std::max(area.width, 0)) + 1;
}

}  // namespace

// A marker is 2r + 1 pixels across, centred on its point. Regions leave out
// their right and bottom edges, so a box reaches one pixel past x + r and
// y + r; an ellipse's region loses one more pixel there, and a polygon's
// fill takes the pixels left of its left corner.
Region MarkerRegion(Point at, int shape, int penWidth) {
  int32_t r = penWidth == 1 ? 3 : (penWidth * 5) / 2;
  int32_t x = at.x, y = at.y;
  switch (shape) {
    case kMarkerDot: return Ellipse{{x - r, y - r, x + r + 2, y + r + 2}};
    case kMarkerBox: return Rect{x - r, y - r, x + r + 1, y + r + 1};
    case kMarkerTriangle:
      return Polygon{{{x, y - r - 1}, {x + r + 1, y + r + 1}, {x - r - 1, y + r + 1}}, FillMode::kWinding};
    case kMarkerDiamond:
      return Polygon{{{x, y - r - 1}, {x + r + 1, y}, {x, y + r + 1}, {x - r, y}}, FillMode::kWinding};
    default: return Ellipse{{x, y, x, y}};
  }
}

Pen CurvePen(int lineStyle, int width, Color color) {
  if ((lineStyle == kPenDash || lineStyle == kPenDot) && width >= 2) return {lineStyle, width, color, true};
  int style = lineStyle == kPenDash || lineStyle == kPenDot ? lineStyle : kPenSolid;
  return {style, width, color, false};
}

void DrawPlot(Surface& surface, const VDataset& dataset, CurveArea area, const CurveLook& look,
              Reduction reduction) {
  if (dataset.count() == 0 || !HasAxes(dataset)) return;
  PointMap map(dataset, area);
  surface.SelectPen(CurvePen(dataset.lineStyle(), look.penWidth, look.line));
  PlotPainter painter(surface, dataset, map, area, look, Reduces(reduction, dataset.count(), area));
  int32_t markerReach = look.penWidth * 5 / 2 + 2;
  auto [first, last] = VisiblePoints(dataset, map, area, std::max(markerReach, kVisibilityMargin + 1));
  ForEachDrawnPoint(dataset, map, first, last, painter);
  painter.Finish();
}

}  // namespace zel

#include "engine/curve_painter.h"

#include <cmath>

#include "engine/axis_scale.h"
#include "engine/dataset_keywords.h"
#include "engine/v_axis.h"
#include "engine/v_dataset.h"

namespace zel {
namespace {

constexpr int32_t kAbsentStatus = 11;
constexpr int32_t kUnmarkedStatus = 10;
constexpr int32_t kVisibilityMargin = 5;

// Clips the segment a-b to the rectangle 0..w by 0..h (Liang-Barsky); false
// when nothing of it is inside.
bool ClipSegment(double& ax, double& ay, double& bx, double& by, double w, double h) {
  double t0 = 0, t1 = 1, dx = bx - ax, dy = by - ay;
  const double p[] = {-dx, dx, -dy, dy};
  const double q[] = {ax, w - ax, ay, h - ay};
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
  double sx = ax + t0 * dx, sy = ay + t0 * dy;
  bx = ax + t1 * dx;
  by = ay + t1 * dy;
  ax = sx;
  ay = sy;
  return true;
}

Color MarkerColor(const VDataset& dataset, int32_t status, const std::array<int32_t, 4>& statusColors) {
  switch (status) {
    case 1: return Color(statusColors[0]);
    case 2: return Color(statusColors[1]);
    case 9: return Color(statusColors[2]);
    default: return dataset.markerColor();
  }
}

int32_t Pixel(double v) { return std::isfinite(v) ? int32_t(std::lround(std::clamp(v, -1e9, 1e9))) : 0; }

}  // namespace

Region MarkerRegion(Point at, int shape, int penWidth) {
  int32_t r = penWidth == 1 ? 3 : (penWidth * 5) / 2;
  int32_t x = at.x, y = at.y;
  switch (shape) {
    case kMarkerDot: return Ellipse{{x - r, y - r, x + r, y + r}};
    case kMarkerBox: return Rect{x - r, y - r, x + r, y + r};
    case kMarkerTriangle:
      return Polygon{{{x, y - r - 1}, {x + r + 1, y + r + 1}, {x - r - 1, y + r + 1}}, FillMode::kWinding};
    case kMarkerDiamond:
      return Polygon{{{x, y - r - 1}, {x + r + 1, y}, {x, y + r + 1}, {x - r - 1, y}}, FillMode::kWinding};
    default: return Ellipse{{x, y, x, y}};
  }
}

Pen CurvePen(int lineStyle, int width, Color color) {
  if ((lineStyle == kPenDash || lineStyle == kPenDot) && width >= 2) return {lineStyle, width, color, true};
  int style = lineStyle == kPenDash || lineStyle == kPenDot ? lineStyle : kPenSolid;
  return {style, width, color, false};
}

void DrawPlot(Surface& surface, const VDataset& dataset, int32_t width, int32_t height,
              const std::array<int32_t, 4>& statusColors) {
  if (dataset.count() == 0 || !dataset.xAxis() || !dataset.yAxis()) return;
  AxisScale xs = ScaleOf(*dataset.xAxis(), width), ys = ScaleOf(*dataset.yAxis(), height);
  double xShift = dataset.xAxis()->type() == kAxisDiscrete ? xs.pixelsPerUnit / 2 : 0;
  double yShift = dataset.yAxis()->type() == kAxisDiscrete ? ys.pixelsPerUnit / 2 : 0;
  surface.SelectPen(CurvePen(dataset.lineStyle(), dataset.lineWidth(), dataset.lineColor()));
  std::span<const int32_t> status = dataset.status();
  bool hasPrevious = false;
  double previousX = 0, previousY = 0;
  for (size_t i = 0; i < dataset.count(); ++i) {
    if (status[i] >= kAbsentStatus) continue;
    double px = xs.ToPixel(dataset.xValues().NumberAt(i)) - xShift;
    double py = height - ys.ToPixel(dataset.yValues().NumberAt(i)) - yShift;
    if (hasPrevious) {
      double ax = previousX, ay = previousY, bx = px, by = py;
      if (ClipSegment(ax, ay, bx, by, width, height)) {
        surface.MoveTo({Pixel(ax), Pixel(ay)});
        surface.LineTo({Pixel(bx), Pixel(by)});
      }
    }
    previousX = px;
    previousY = py;
    hasPrevious = true;
    bool inside = px >= 0 && px <= width && py >= 0 && py <= height;
    if (dataset.markerShape() == kMarkerNone || !inside || status[i] >= kUnmarkedStatus) continue;
    Point at{Pixel(px), Pixel(py)};
    Rect box{at.x - kVisibilityMargin, at.y - kVisibilityMargin, at.x + kVisibilityMargin,
             at.y + kVisibilityMargin};
    if (!surface.IsVisible(box)) continue;
    surface.FillRegion(MarkerRegion(at, dataset.markerShape(), dataset.lineWidth()),
                       MarkerColor(dataset, status[i], statusColors));
  }
}

}  // namespace zel

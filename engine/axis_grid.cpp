#include "engine/axis_grid.h"

#include <cmath>

#include "engine/axis_keywords.h"
#include "engine/axis_scale.h"
#include "engine/frame_geometry.h"
#include "engine/v_axis.h"
#include "util/value_conversion.h"

namespace zel {
namespace {

constexpr double kDashPeriod = 15;
constexpr double kDotPeriod = 6;
constexpr int kWidestDottedGrid = 4;

int32_t FloorMod(int32_t value, int32_t period) {
  int32_t r = value % period;
  return r < 0 ? r + period : r;
}

Pen GridPen(const GridLook& look, double f, int32_t& period) {
  period = 1;
  switch (look.style) {
    case kPenDash:
      period = int32_t(kDashPeriod * f);
      return {kPenDash, look.width, look.color, true};
    case kPenDot:
      period = int32_t(kDotPeriod * f);
      return {kPenDot, look.width == 5 ? kWidestDottedGrid : look.width, look.color, true};
    default:
      return {kPenSolid, look.width, look.color, false};
  }
}

// Moves a line's ends back to multiples of the pattern period, the start one
// period further, so the dashes of neighbouring lines line up.
void AlignToPeriod(int32_t& first, int32_t& last, int32_t period) {
  if (period <= 1) return;
  first -= FloorMod(first, period) + period;
  last -= FloorMod(last, period);
}

void DrawGridLines(Surface& surface, const VAxis& axis, const GridLook& look, const GridFrame& frame,
                   bool betweenCategories, double f) {
  AxisScale scale = ScaleOf(axis, frame.extent);
  double step = axis.gridMode() == kGridTick && scale.tickStep > 0 ? scale.tickStep : scale.annotationStep;
  int32_t period;
  surface.SelectPen(GridPen(look, f, period));
  const Rect& plot = frame.plot;
  double shift = betweenCategories && !axis.vertical() ? step * scale.pixelsPerUnit / 2 : 0;
  static thread_local std::vector<double> marks;  // kept from frame to frame (see MarkPositions)
  MarkPositions(scale, step, frame.extent, marks);
  for (double position : marks) {
    int32_t offset = Pixel(position - shift);
    if (axis.vertical()) {
      int32_t y = frame.start - offset;
      if (y > plot.bottom) continue;
      if (y < plot.top) break;
      int32_t left = plot.left, right = plot.right;
      AlignToPeriod(left, right, period);
      surface.MoveTo({left, y});
      surface.LineTo({right, y});
    } else {
      int32_t x = frame.start + offset;
      if (x < plot.left) continue;
      if (x > plot.right) break;
      int32_t top = plot.top, bottom = plot.bottom;
      AlignToPeriod(top, bottom, period);
      surface.MoveTo({x, top});
      surface.LineTo({x, bottom});
    }
  }
}

void DrawLimitLines(Surface& surface, const VAxis& axis, const GridFrame& frame, double f) {
  AxisScale scale = ScaleOf(axis, frame.extent);
  const Rect& plot = frame.plot;
  for (const LimitValue& limit : axis.limitValues()) {
    int style = limit.style == kPenDash || limit.style == kPenDot ? limit.style : kPenSolid;
    surface.SelectPen({style, int(std::lround(limit.width * f)), limit.color, false});
    double pixel = scale.ToPixel(NumberOf(limit.value));
    if (!std::isfinite(pixel) || std::fabs(pixel) > 1e8) continue;
    int32_t offset = Pixel(pixel);
    if (axis.vertical()) {
      surface.MoveTo({plot.left, frame.start - offset});
      surface.LineTo({plot.right, frame.start - offset});
    } else {
      surface.MoveTo({frame.start + offset, plot.bottom});
      surface.LineTo({frame.start + offset, plot.top});
    }
  }
}

}  // namespace

void DrawAxisGrid(Surface& surface, const VAxis& axis, const GridLook& look, const GridFrame& frame,
                  bool lines, bool betweenCategories, double f) {
  if (lines && axis.gridMode() != kGridNone) DrawGridLines(surface, axis, look, frame, betweenCategories, f);
  DrawLimitLines(surface, axis, frame, f);
}

}  // namespace zel

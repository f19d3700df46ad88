// The drawing pass: background, the plot's window origin and clipping, the
// curves, then the free-standing axes, all in one order for screen and
// printer alike. The logical pixels of the pass start at the data area's
// top left corner, x growing right and y growing down.
#include <algorithm>

#include "engine/axis_painter.h"
#include "engine/curve_painter.h"
#include "engine/v_graph.h"
#include "util/process_state.h"

namespace zel {
namespace {

Rect Intersection(const Rect& a, const Rect& b) {
  Rect r{std::max(a.left, b.left), std::max(a.top, b.top), std::min(a.right, b.right),
         std::min(a.bottom, b.bottom)};
  if (r.right < r.left) r.right = r.left;
  if (r.bottom < r.top) r.bottom = r.top;
  return r;
}

}  // namespace

Rect VGraph::PlotInDevice(const Rect& bounds) const {
  int32_t x = bounds.left + margins_.left, y = bounds.bottom - margins_.bottom;
  return {x + plotFrame_.left, y - plotFrame_.top, x + plotFrame_.right + 1, y - plotFrame_.bottom + 1};
}

void VGraph::Draw(Surface& surface, const Rect& bounds, const Rect& update) {
  if (!HasWindow()) return;
  surface.FillRect(bounds, surface.BackgroundColor());
  surface.Save();
  bool pie = Kind() == kGraphOfPie;
  int32_t originY = pie ? -(margins_.top - dataArea_.top + bounds.bottom)
                        : -(bounds.bottom - margins_.bottom - dataArea_.top);
  surface.SetWindowOrigin({-(bounds.left + margins_.left + dataArea_.left), originY});
  surface.ClipTo(Intersection(update, PlotInDevice(bounds)));
  DrawCurves(surface);
  surface.ClipTo(update);
  DrawFreeAxes(surface);
  surface.SetWindowOrigin({0, 0});
  surface.ClipTo(bounds);
  surface.Restore();
}

void VGraph::DrawFreeAxes(Surface& surface) {
  // Logical pixels of graph coordinates.
  auto x = [&](int32_t graphX) { return graphX - dataArea_.left; };
  auto y = [&](int32_t graphY) { return dataArea_.top - graphY; };
  int reportType = Process().reportType;
  for (const auto& entry : xAxes_.entries()) {
    const VAxis& axis = *entry.object;
    if (axis.placement() == VAxis::kOnAxis) continue;
    bool high = axis.placement() == VAxis::kHighSide;
    int32_t line = high ? axis.position() - axis.thickness() : axis.position() + axis.thickness();
    AxisPlacement at{y(line), 0, dataArea_.right - dataArea_.left + 1, x(plotFrame_.left),
                     x(plotFrame_.right), margins_.right, high};
    DrawAxis(surface, axis, at, reportType);
  }
  const auto& split = Process().splitYAxis;
  for (size_t index = 0; index < yAxes_.size() && index < 4; ++index) {
    const VAxis& axis = *yAxes_.entries()[index].object;
    if (axis.placement() == VAxis::kOnAxis || (index > 0 && !split[index - 1])) continue;
    bool high = axis.placement() == VAxis::kHighSide;
    int32_t line = high ? axis.position() - axis.thickness() : axis.position() + axis.thickness();
    AxisPlacement at{x(line), y(dataArea_.bottom), dataArea_.top - dataArea_.bottom + 1,
                     y(plotFrame_.top), y(plotFrame_.bottom), 0, high};
    DrawAxis(surface, axis, at, reportType);
  }
}

}  // namespace zel

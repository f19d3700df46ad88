#include "interaction/hairline_intersection.h"

#include <cmath>
#include <vector>

#include "engine/curve_points.h"
#include "interaction/point_lookup.h"
#include "util/value_conversion.h"

namespace zel {
namespace {

// A number as a value of an axis's type: whole numbers rounded to nearest.
Value AxisValue(const VAxis& axis, double v) {
  switch (axis.type()) {
    case kAxisReal: return float(v);
    case kAxisTime: return DateValue{v};
    default: return std::isfinite(v) ? int32_t(std::lround(std::clamp(v, -2147483648.0, 2147483647.0))) : 0;
  }
}

// One end of a segment of the walk: its pixel, its values, and whether it is
// an end of the axis rather than a point.
struct Node {
  int32_t pixel;
  double x;
  Value xValue, yValue;
  double y;
  bool axisEnd;
};

struct NodeMap {
  AxisScale xs;
  double X(double value) const { return xs.ToPixel(value); }
  double Y(double value) const { return value; }
};

std::vector<Node> WalkNodes(const VDataset& dataset, const AxisScale& xs) {
  const VAxis& xAxis = *dataset.xAxis();
  std::vector<Node> nodes;
  ForEachDrawnPoint(dataset, NodeMap{xs}, [&](size_t i, double x, double, int32_t) {
    nodes.push_back({Pixel(x), dataset.xValues().NumberAt(i), dataset.XAt(i), dataset.YAt(i),
                     dataset.yValues().NumberAt(i), false});
  });
  double yMin = NumberOf(dataset.yAxis()->min());
  const Node* first = nodes.empty() ? nullptr : &nodes.front();
  const Node* last = nodes.empty() ? nullptr : &nodes.back();
  double xMin = xs.base, xMax = xs.pixelsPerUnit != 0 ? NumberOf(xAxis.max()) : xs.base;
  Node start{Pixel(xs.ToPixel(xMin)), xMin, AxisValue(xAxis, xMin),
             first ? first->yValue : AxisValue(*dataset.yAxis(), yMin), first ? first->y : yMin, true};
  Node end{Pixel(xs.ToPixel(xMax)), xMax, AxisValue(xAxis, xMax),
           last ? last->yValue : AxisValue(*dataset.yAxis(), yMin), last ? last->y : yMin, true};
  nodes.insert(nodes.begin(), start);
  nodes.push_back(end);
  return nodes;
}

}  // namespace

int32_t HairlinePixel(const VGraph& graph, const Hairline& hairline) {
  const FrameRect& frame = graph.plotFrame();
  return Pixel(double(frame.width()) * hairline.position) + (frame.left - graph.dataArea().left);
}

Crossing HairlineCrossing(const VDataset& dataset, int32_t p, int32_t width, bool snap) {
  if (!HasAxes(dataset)) return {};
  const VAxis& xAxis = *dataset.xAxis();
  AxisScale xs = ScaleOf(xAxis, width);
  if (xAxis.type() == kAxisDiscrete) {
    snap = true;
    p += (Pixel(xs.ToPixel(2)) - Pixel(xs.ToPixel(1))) / 2;
  }
  std::vector<Node> nodes = WalkNodes(dataset, xs);
  size_t segments = nodes.size() - 1;
  for (size_t k = 0; k < segments; ++k) {
    const Node& a = nodes[k];
    const Node& b = nodes[k + 1];
    if (p == a.pixel) return {a.xValue, a.yValue};
    if (p == b.pixel) return {b.xValue, b.yValue};
    if (!(p > std::min(a.pixel, b.pixel) && p < std::max(a.pixel, b.pixel))) continue;
    bool beforeFirst = k == 0, afterLast = k + 1 == segments;
    if (snap) {
      const Node* pick = std::abs(p - a.pixel) < std::abs(b.pixel - p) ? &a : &b;
      if (beforeFirst && !b.axisEnd) pick = &b;
      if (afterLast && !a.axisEnd) pick = &a;
      return {pick->xValue, pick->yValue};
    }
    double t = double(p - a.pixel) / double(b.pixel - a.pixel);
    Crossing crossing{AxisValue(xAxis, a.x + t * (b.x - a.x)), Value{}};
    if (!beforeFirst && !afterLast) crossing.y = AxisValue(*dataset.yAxis(), a.y + t * (b.y - a.y));
    return crossing;
  }
  return {nodes.back().xValue, nodes.back().yValue};
}

std::optional<int32_t> SnapHairline(VGraph& graph, HostWindow* window, bool toRight, int32_t scanBound) {
  const auto& hairlines = graph.hairlines();
  if (hairlines.empty()) return std::nullopt;
  const FrameRect& frame = graph.plotFrame();
  const FrameRect& data = graph.dataArea();
  int32_t width = data.width();
  int32_t p = HairlinePixel(graph, hairlines.front());
  int32_t best = toRight ? data.right - data.left + 3 : -1;
  bool answered = false;
  for (const auto& entry : graph.datasets().entries()) {
    const VDataset& dataset = *entry.object;
    if (entry.id < 0 || entry.id > scanBound || dataset.count() == 0) continue;
    int32_t pixel = NearestPointPixel(dataset, width, p, toRight);
    if (pixel < 0) continue;
    answered = true;
    best = toRight ? std::min(best, pixel) : std::max(best, pixel);
  }
  if (answered) {
    graph.SetHairlinePosition(hairlines.front().id, float(data.left - frame.left + best) / float(frame.width()));
    if (window && window->Exists() && !graph.suspendDraw()) window->Invalidate(true);
  }
  return hairlines.back().id;
}

std::optional<int32_t> PlaceLastHairline(VGraph& graph, HostWindow* window, int32_t clientX) {
  const auto& hairlines = graph.hairlines();
  if (hairlines.empty()) return std::nullopt;
  const FrameRect& frame = graph.plotFrame();
  int32_t x = clientX - graph.margins().left;
  int32_t divisor = frame.right - frame.left - 1;
  // A frame too narrow to divide by leaves the hairline where it is.
  if (divisor != 0) graph.SetHairlinePosition(hairlines.back().id, float(x - frame.left) / float(divisor));
  if (window && window->Exists() && !graph.suspendDraw()) window->Invalidate(true);
  return hairlines.back().id;
}

}  // namespace zel

#include "interaction/point_lookup.h"

#include <cmath>

#include "engine/curve_points.h"

namespace zel {
namespace {

// Stored x values as unshifted pixels; y values as they are.
struct XPixelMap {
  AxisScale xs;
  double X(double value) const { return xs.ToPixel(value); }
  double Y(double value) const { return value; }
};

}  // namespace

std::vector<size_t> PointsInBand(const VDataset& dataset, DataExtent extent, bool all, float x0,
                                 float x1, float y0, float y1) {
  std::vector<size_t> found;
  if (!HasAxes(dataset) || extent.width <= 0 || extent.height <= 0) return found;
  PointMap map(dataset, {extent.width, extent.height});
  ForEachDrawnPoint(dataset, map, [&](size_t i, double x, double y, int32_t) {
    if (!all && !found.empty()) return;
    double fx = x / extent.width, fy = (extent.height - 1 - y) / extent.height;
    if (fx >= x0 && fx <= x1 && fy >= y0 && fy <= y1) found.push_back(i);
  });
  return found;
}

std::optional<size_t> PointAtPixel(const VDataset& dataset, DataExtent extent, int32_t x, int32_t y,
                                   int32_t tolerance) {
  std::optional<size_t> hit;
  if (!HasAxes(dataset) || extent.width <= 0 || extent.height <= 0) return hit;
  PointMap map(dataset, {extent.width, extent.height});
  double fromTop = double(extent.height - 1) - y;
  ForEachDrawnPoint(dataset, map, [&](size_t i, double px, double py, int32_t) {
    if (!hit && std::fabs(px - x) <= tolerance && std::fabs(py - fromTop) <= tolerance) hit = i;
  });
  return hit;
}

int32_t NearestPointPixel(const VDataset& dataset, int32_t width, int32_t p, bool toRight) {
  if (!HasAxes(dataset)) return -1;
  XPixelMap map{ScaleOf(*dataset.xAxis(), width)};
  int32_t best = -1;
  ForEachDrawnPoint(dataset, map, [&](size_t, double x, double, int32_t) {
    int32_t pixel = Pixel(x);
    if (toRight ? pixel > p && (best < 0 || pixel < best) : pixel < p && pixel > best) best = pixel;
  });
  return best;
}

}  // namespace zel

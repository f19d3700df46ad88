#include "engine/area_painter.h"

#include <algorithm>

#include "engine/curve_reduction.h"
#include "engine/dataset_keywords.h"
#include "engine/v_axis.h"
#include "engine/v_dataset.h"

namespace zel {
namespace {

int32_t ZeroRow(const VDataset& dataset, CurveArea area) {
  PointMap map(dataset, area);
  return std::clamp(RowPixel(map.PlainY(0)), int32_t(area.top()), std::max(int32_t(area.bottom()), -1));
}

int32_t YAxisColumn(const VDataset& dataset, CurveArea area) {
  return dataset.yAxis()->placement() == VAxis::kHighSide ? area.width : 0;
}

}  // namespace

std::vector<Point> CurveOutline(const VDataset& dataset, CurveArea area) {
  std::vector<Point> outline;
  if (!HasAxes(dataset)) return outline;
  ColumnRun run;
  ForEachDrawnPoint(dataset, PointMap(dataset, area), [&](size_t, double x, double y, int32_t) {
    Point at{Pixel(x), RowPixel(y)};
    if (run.active() && run.x() == at.x) {
      run.Add(at.y);
    } else {
      run.AppendTo(outline);
      run.Start(at);
    }
  });
  run.AppendTo(outline);
  return outline;
}

Polygon AreaPolygon(const VDataset& dataset, const VDataset* reference, CurveArea area) {
  Polygon polygon{CurveOutline(dataset, area), FillMode::kWinding};
  std::vector<Point>& points = polygon.points;
  if (points.empty()) return polygon;
  Point first = points.front(), last = points.back();
  if (dataset.fillTo() == kFillToYAxis) {
    int32_t x = YAxisColumn(dataset, area);
    points.insert(points.end(), {{x, last.y}, {x, first.y}});
    return polygon;
  }
  if (dataset.fillTo() == kFillToCurve && reference && reference != &dataset && reference->type() != kPie) {
    std::vector<Point> back = CurveOutline(*reference, area);
    if (!back.empty()) {
      points.insert(points.end(), back.rbegin(), back.rend());
      return polygon;
    }
  }
  int32_t y = ZeroRow(dataset, area);
  points.insert(points.end(), {{last.x, y}, {first.x, y}});
  return polygon;
}

void DrawAreaFill(Surface& surface, const VDataset& dataset, const VDataset* reference, CurveArea area,
                  Color fill) {
  Polygon polygon = AreaPolygon(dataset, reference, area);
  if (!polygon.points.empty()) surface.FillRegion(polygon, fill);
}

}  // namespace zel

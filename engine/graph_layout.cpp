// The layout of a graph: the plot rectangle inside the margins and the axes
// around it, and the full (unzoomed) data area that the zoom rectangle maps
// onto it. Graph coordinates start at the lower left inside the margins,
// with y growing upwards.
#include <cmath>

#include "engine/v_graph.h"
#include "util/process_state.h"

namespace zel {
namespace {

constexpr int32_t kFurtherAxisGap = 10;
constexpr size_t kMaxMeasuredYAxes = 4;

int32_t RoundToPixel(float v) { return std::isfinite(v) ? int32_t(std::lround(v)) : 0; }

}  // namespace

void VGraph::Recalculate(int width, int height, Surface* measuring) {
  std::unique_ptr<Surface> own;
  if (!measuring && window_) {
    own = window_->MeasuringSurface();
    measuring = own.get();
  }
  layoutWidth_ = width;
  layoutHeight_ = height;
  int32_t w = width - 1, h = height - 1;
  Box<int32_t> plot{0, h, w, 0};
  if (Kind() < kGraphOfPie) {
    plot.right = w - margins_.right - margins_.left;
    plot.top = h - margins_.bottom - margins_.top;
    PlaceFreeAxes(measuring, plot);
    if (yAxes_.empty()) {
      plot.left = 0;
      plot.right = w;
    }
  }
  plotFrame_ = plot;
  PlaceDataArea();
  if (HasWindow() && !suspendDraw_) UpdateScrollBars();
}

void VGraph::PlaceFreeAxes(Surface* measuring, Box<int32_t>& plot) {
  double xScale = 1.0 / double(zoomRect_.right - zoomRect_.left);
  double yScale = 1.0 / double(zoomRect_.top - zoomRect_.bottom);
  auto measure = [&](VAxis& axis, double scale, TextView unitName) {
    if (!measuring) {
      axis.UpdateSteps(scale);
      return 0;
    }
    return axis.Measure(*measuring, scale, 1.0, unitName);
  };
  for (const auto& entry : xAxes_.entries()) {
    VAxis& axis = *entry.object;
    if (axis.placement() == VAxis::kOnAxis) continue;
    int32_t thickness = measure(axis, xScale, {});
    if (axis.placement() == VAxis::kHighSide) {
      axis.SetPosition(plot.top);
      plot.top -= thickness;
    } else {
      axis.SetPosition(plot.bottom);
      plot.bottom += thickness;
    }
  }
  // The first Y axis, and the second to fourth when split off, take room;
  // further ones on the same side stand 10 pixels apart.
  const auto& split = Process().splitYAxis;
  bool anySplit = split[0] || split[1] || split[2];
  int leftAxes = 0, rightAxes = 0;
  for (size_t index = 0; index < yAxes_.size() && index < kMaxMeasuredYAxes; ++index) {
    VAxis& axis = *yAxes_.entries()[index].object;
    if (axis.placement() == VAxis::kOnAxis || (index > 0 && !split[index - 1])) continue;
    int32_t thickness = measure(axis, yScale, anySplit ? TextView(unitNames_[index]) : TextView());
    if (axis.placement() == VAxis::kHighSide) {
      axis.SetPosition(plot.right);
      plot.right -= thickness;
      if (rightAxes++ > 0) axis.SetOffset(plot.right -= kFurtherAxisGap);
    } else {
      axis.SetPosition(plot.left);
      plot.left += thickness;
      if (leftAxes++ > 0) axis.SetOffset(plot.left += kFurtherAxisGap);
    }
  }
}

void VGraph::PlaceDataArea() {
  const Box<int32_t>& plot = plotFrame_;
  float sx = float(plot.right - plot.left + 1) / (zoomRect_.right - zoomRect_.left);
  float sy = float(plot.top - plot.bottom + 1) / (zoomRect_.top - zoomRect_.bottom);
  int32_t fullWidth = RoundToPixel(sx), fullHeight = RoundToPixel(sy);
  dataArea_.left = plot.left - RoundToPixel(sx * zoomRect_.left);
  dataArea_.right = dataArea_.left + fullWidth - 1;
  dataArea_.bottom = plot.bottom - RoundToPixel(zoomRect_.bottom * sy);
  dataArea_.top = dataArea_.bottom + fullHeight - 1;
}

}  // namespace zel

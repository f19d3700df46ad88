// The layout of a graph: the plot rectangle inside the margins and the axes
// around it, and the full (unzoomed) data area that the zoom rectangle maps
// onto it. Graph coordinates start at the lower left inside the margins,
// with y growing upwards.
#include <algorithm>
#include <cmath>

#include "engine/v_graph.h"
#include "engine/v_pie_dataset.h"
#include "util/process_state.h"

namespace zel {
namespace {

constexpr int32_t kFurtherAxisGap = 10;

// Rounded half away from zero, as lround does; far values stop at kFarPixel
// (a zoom into a sliver makes pixels per unit beyond any int).
int32_t RoundToPixel(float v) {
  return std::isfinite(v) ? int32_t(std::llround(std::clamp<double>(v, -kFarPixel, kFarPixel))) : 0;
}

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
  FrameRect plot{.left = 0, .bottom = 0, .right = w, .top = h};
  if (Kind() < kGraphOfPie) {
    PlaceLegend(measuring, plot, w, h);
    plot.right -= margins_.right + margins_.left;
    plot.top -= margins_.bottom + margins_.top;
    PlaceFreeAxes(measuring, plot);
    if (yAxes_.empty()) {
      plot.left = 0;
      plot.right = w;
    }
  }
  layout_.plot = plot;
  PlaceDataArea();
  if (Kind() == kGraphOfPie) PlacePie(measuring);
  if (Kind() < kGraphOfPie) PlaceAxesOnAxes(measuring);
  if (HasWindow() && !suspendDraw_) UpdateScrollBars();
}

// The legend takes its room from the client area on its side before the
// margins are applied, so the margin lies between legend and graph.
void VGraph::PlaceLegend(Surface* measuring, FrameRect& plot, int32_t w, int32_t h) {
  if (!legend_) return;
  LegendPosition position = VLegend::Placed(legendPosition_);
  legend_->position = position;
  bool side = VLegend::IsSide(position);
  int32_t room = measuring ? legend_->Measure(*measuring, position, side ? h + 1 : w + 1, printScale()) : 0;
  room = std::clamp(room, 0, side ? w : h);
  switch (position) {
    case VLegend::kRight:
      legend_->rect = {w - room, 0, w, h};
      plot.right -= room;
      break;
    case VLegend::kLeft:
      legend_->rect = {0, 0, room, h};
      plot.left += room;
      break;
    case VLegend::kTop:
      legend_->rect = {0, 0, w, room};
      plot.top -= room;
      break;
    default:
      legend_->rect = {0, h - room, w, h};
      plot.bottom += room;
      break;
  }
}

// Axes placed on other axes take no room; they only work out their steps
// and the room their labels would take.
void VGraph::PlaceAxesOnAxes(Surface* measuring) {
  double xScale = 1.0 / double(zoomRect_.right - zoomRect_.left);
  double yScale = 1.0 / double(zoomRect_.top - zoomRect_.bottom);
  for (const auto* axes : {&xAxes_, &yAxes_})
    for (const auto& entry : axes->entries()) {
      VAxis& axis = *entry.object;
      if (axis.placement() != VAxis::kOnAxis) continue;
      double scale = axis.vertical() ? yScale : xScale;
      if (measuring) axis.Measure(*measuring, scale, printScale());
      else axis.UpdateSteps(scale);
    }
}

// A pie fills the whole graph inside the margins.
void VGraph::PlacePie(Surface* measuring) {
  if (!measuring) return;
  int32_t width = layout_.data.width() - margins_.right - margins_.left;
  int32_t height = layout_.data.height() - margins_.bottom - margins_.top;
  for (const auto& entry : datasets_.entries())
    if (auto* slices = dynamic_cast<VPieDataset*>(entry.object.get()))
      slices->SetPlotRect({0, 0, width, height}, *measuring);
}

bool VGraph::HasSplitYAxes() const {
  const auto& split = Process().splitYAxis;
  return split[0] || split[1] || split[2];
}

void VGraph::PlaceFreeAxes(Surface* measuring, FrameRect& plot) {
  double xScale = 1.0 / double(zoomRect_.right - zoomRect_.left);
  double yScale = 1.0 / double(zoomRect_.top - zoomRect_.bottom);
  auto measure = [&](VAxis& axis, double scale, TextView unitName) {
    if (!measuring) {
      axis.UpdateSteps(scale);
      return 0;
    }
    return axis.Measure(*measuring, scale, printScale(), unitName);
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
  bool anySplit = HasSplitYAxes();
  int leftAxes = 0, rightAxes = 0;
  for (size_t index = 0; index < yAxes_.size(); ++index) {
    if (!ShowsYAxis(index)) continue;
    VAxis& axis = *yAxes_.entries()[index].object;
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
  const FrameRect& plot = layout_.plot;
  float sx = float(plot.width()) / (zoomRect_.right - zoomRect_.left);
  float sy = float(plot.height()) / (zoomRect_.top - zoomRect_.bottom);
  // A zoom into a sliver makes the data area far larger than any window:
  // its edges stop at kFarPixel instead of wrapping around.
  auto far = [](int64_t pixel) { return int32_t(std::clamp<int64_t>(pixel, -kFarPixel, kFarPixel)); };
  int32_t left = far(int64_t(plot.left) - RoundToPixel(sx * zoomRect_.left));
  int32_t bottom = far(int64_t(plot.bottom) - RoundToPixel(zoomRect_.bottom * sy));
  layout_.data = {.left = left, .bottom = bottom, .right = far(int64_t(left) + RoundToPixel(sx) - 1),
                  .top = far(int64_t(bottom) + RoundToPixel(sy) - 1)};
}

}  // namespace zel

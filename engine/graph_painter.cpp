// The drawing pass: background, the plot's window origin and clipping, the
// grid, axes placed on other axes, the curves or the pie, the free-standing
// axes, the legend, the hairlines with their labels and the selection band,
// in one order for screen and printer alike. The logical pixels of the pass
// start at the data area's top left corner, x growing right and y down.
#include <algorithm>
#include <cmath>

#include "engine/axis_grid.h"
#include "engine/axis_painter.h"
#include "engine/axis_scale.h"
#include "engine/hairline_label.h"
#include "engine/v_graph.h"
#include "engine/v_pie_dataset.h"
#include "util/font_spec.h"
#include "util/process_state.h"

namespace zel {
namespace {

enum GridWord : int16_t { kGridOfYAxes = 1, kGridOfXAxes = 2, kGridOfBoth = 3 };
constexpr char16_t kHairlineFont[] = u"Arial,8";
constexpr int32_t kHairlineLabelGap = 2;
constexpr Color kWhite = 0xFFFFFF;
constexpr Color kBlack = 0;

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
  const FrameRect& plot = layout_.plot;
  return {x + plot.left, y - plot.top, x + plot.right + 1, y - plot.bottom + 1};
}

int32_t VGraph::HairlineColumn(const Hairline& hairline, int32_t clientLeft) const {
  const FrameRect& plot = layout_.plot;
  return clientLeft + margins_.left + plot.left + Pixel(double(hairline.position) * plot.width());
}

bool VGraph::ShowsYAxis(size_t index) const {
  if (index >= 4 || yAxes_.entries()[index].object->placement() == VAxis::kOnAxis) return false;
  return index == 0 || Process().splitYAxis[index - 1];
}

void VGraph::Draw(Surface& surface, const Rect& bounds, const Rect& update) {
  if (!HasWindow()) return;
  if (layoutPending_) {
    Recalculate(layoutWidth_, layoutHeight_);
    layoutPending_ = false;
  }
  Paint(surface, bounds, update);
}

void VGraph::DrawDetached(Surface& surface, const Rect& bounds) {
  int lastWidth = layoutWidth_, lastHeight = layoutHeight_;
  Recalculate(bounds.right - bounds.left + 1, bounds.bottom - bounds.top + 1, &surface);
  Paint(surface, bounds, bounds);
  if (lastWidth > 0 && lastHeight > 0) Recalculate(lastWidth, lastHeight, HasWindow() ? nullptr : &surface);
}

void VGraph::Paint(Surface& surface, const Rect& bounds, const Rect& update) {
  surface.FillRect(bounds, surface.BackgroundColor());
  surface.Save();
  bool pie = Kind() == kGraphOfPie;
  const FrameRect& data = layout_.data;
  int32_t originY = pie ? -(margins_.top - data.top + bounds.bottom) : -(bounds.bottom - margins_.bottom - data.top);
  Point origin{-(bounds.left + margins_.left + data.left), originY};
  surface.SetWindowOrigin(origin);
  surface.ClipTo(Intersection(update, PlotInDevice(bounds)));
  if (pie) {
    for (const auto& entry : datasets_.entries())
      if (auto* slices = dynamic_cast<const VPieDataset*>(entry.object.get())) slices->DrawPie(surface, origin);
  } else {
    DrawGrid(surface);
    DrawAxesOnAxes(surface);
    DrawCurves(surface);
    surface.ClipTo(update);
    DrawFreeAxes(surface);
  }
  surface.SetWindowOrigin({0, 0});
  surface.ClipTo(bounds);
  surface.Restore();
  if (legend_ && !pie) DrawLegend(surface, bounds);
  if (surface.Technology() != kRasterPrinter && !pie && !hairlines_.empty()) DrawHairlines(surface, bounds);
  if (!band_.empty()) DrawBand(surface, bounds);
}

Rect VGraph::PlotInPass() const {
  const FrameRect &plot = layout_.plot, &data = layout_.data;
  return {plot.left - data.left, data.top - plot.top, plot.right - data.left, data.top - plot.bottom};
}

// The third grid word chooses the axes whose grids are drawn; the graph's
// grid colour and first two words (style, width) are the pen of every one.
// With split Y axes all shown Y axes draw their limit lines, but only the
// first one with a grid draws grid lines, so the bands share one grid.
void VGraph::DrawGrid(Surface& surface) {
  int16_t which = gridWords_[2];
  bool xGrid = which == kGridOfXAxes || which == kGridOfBoth;
  bool yGrid = which == kGridOfYAxes || which == kGridOfBoth;
  GridLook look{Color(gridColor_), gridWords_[0], gridWords_[1]};
  double f = printScale();
  bool bars = std::any_of(datasets_.entries().begin(), datasets_.entries().end(),
                          [](const auto& entry) { return entry.object->type() == kBar; });
  Rect plot = PlotInPass();
  int32_t width = layout_.data.width(), height = layout_.data.height();
  if (xGrid)
    for (const auto& entry : xAxes_.entries())
      DrawAxisGrid(surface, *entry.object, look, {plot, 0, width}, true, bars, f);
  if (!yGrid) return;
  bool linesDrawn = false;
  for (size_t index = 0; index < yAxes_.size(); ++index) {
    if (!ShowsYAxis(index)) continue;
    const VAxis& axis = *yAxes_.entries()[index].object;
    bool lines = !linesDrawn && axis.gridMode() != 0;
    DrawAxisGrid(surface, axis, look, {plot, height - 1, height}, lines, false, f);
    linesDrawn = linesDrawn || lines;
  }
}

// X axes placed on a Y axis stand where their crossing value lies on it, Y
// axes likewise on an X axis; both keep to the plot. A crossing far outside
// the view is drawn just far enough away that nothing of it shows, instead
// of at a position past what GDI can hold.
void VGraph::DrawAxesOnAxes(Surface& surface) {
  constexpr int32_t kOffPlot = 1000;
  int32_t width = layout_.data.width(), height = layout_.data.height();
  Rect plot = PlotInPass();
  int reportType = Process().reportType;
  double f = printScale();
  for (const auto& entry : xAxes_.entries()) {
    const VAxis& axis = *entry.object;
    if (axis.placement() != VAxis::kOnAxis || !axis.reference()) continue;
    int32_t line = height - 1 - Pixel(ScaleOf(*axis.reference(), height).ToPixel(axis.crossingValue()));
    line = std::clamp(line, plot.top - kOffPlot, plot.bottom + kOffPlot);
    AxisPlacement at{line, 0, width, plot.left, plot.right, 0, false, f, {}};
    DrawAxis(surface, axis, at, reportType);
  }
  for (const auto& entry : yAxes_.entries()) {
    const VAxis& axis = *entry.object;
    if (axis.placement() != VAxis::kOnAxis || !axis.reference()) continue;
    int32_t line = Pixel(ScaleOf(*axis.reference(), width).ToPixel(axis.crossingValue()));
    line = std::clamp(line, plot.left - kOffPlot, plot.right + kOffPlot);
    AxisPlacement at{line, height - 1, height, plot.top, plot.bottom, 0, false, f, {}};
    DrawAxis(surface, axis, at, reportType);
  }
}

void VGraph::DrawFreeAxes(Surface& surface) {
  // Logical pixels of graph coordinates.
  const FrameRect &plot = layout_.plot, &data = layout_.data;
  auto x = [&](int32_t graphX) { return graphX - data.left; };
  auto y = [&](int32_t graphY) { return data.top - graphY; };
  int reportType = Process().reportType;
  double f = printScale();
  for (const auto& entry : xAxes_.entries()) {
    const VAxis& axis = *entry.object;
    if (axis.placement() == VAxis::kOnAxis) continue;
    bool high = axis.placement() == VAxis::kHighSide;
    int32_t line = high ? axis.position() - axis.thickness() : axis.position() + axis.thickness();
    AxisPlacement at{y(line), 0, data.width(), x(plot.left), x(plot.right), margins_.right, high, f, {}};
    DrawAxis(surface, axis, at, reportType);
  }
  // A further Y axis on a side stands at the edge it moved on to, so that the
  // 10 pixels between it and the axis outside it keep that axis's arrowhead
  // clear of its labels, unit name and title.
  bool split = HasSplitYAxes();
  int leftAxes = 0, rightAxes = 0;
  for (size_t index = 0; index < yAxes_.size(); ++index) {
    if (!ShowsYAxis(index)) continue;
    const VAxis& axis = *yAxes_.entries()[index].object;
    bool high = axis.placement() == VAxis::kHighSide;
    bool further = (high ? rightAxes++ : leftAxes++) > 0;
    int32_t line = further ? axis.offset()
                   : high  ? axis.position() - axis.thickness()
                           : axis.position() + axis.thickness();
    AxisPlacement at{x(line), y(data.bottom), data.height(), y(plot.top), y(plot.bottom), 0, high, f,
                     split ? TextView(unitNames_[index]) : TextView()};
    DrawAxis(surface, axis, at, reportType);
  }
}

void VGraph::DrawLegend(Surface& surface, const Rect& bounds) {
  Rect client = legend_->rect;
  legend_->rect = {client.left + bounds.left, client.top + bounds.top, client.right + bounds.left,
                   client.bottom + bounds.top};
  legend_->Draw(surface, printScale());
  legend_->rect = client;
}

// Hairline lines are kept inside the plot, each at its fraction of the plot
// frame (where it is grabbed and its crossings are read, whatever the zoom);
// their labels stand beside it, on the side of the chosen X axis, and are
// not clipped to the plot.
void VGraph::DrawHairlines(Surface& surface, const Rect& bounds) {
  Rect plot = PlotInDevice(bounds);
  int32_t fullWidth = layout_.data.width();
  int32_t left = bounds.left + margins_.left + layout_.plot.left;
  const VAxis* axis = FindXAxis(xAxisHairline_);
  bool below = axis && axis->placement() == VAxis::kLowSide;
  bool above = axis && axis->placement() == VAxis::kHighSide;
  surface.SelectFont(ParseFontSpec(kHairlineFont));
  int reportType = Process().reportType;
  for (const Hairline& hairline : hairlines_) {
    int32_t x = std::clamp(HairlineColumn(hairline, bounds.left), -kDeviceReach, kDeviceReach);
    surface.ClipTo({plot.left + 1, plot.top + 1, plot.right - 1, plot.bottom - 1});
    surface.SelectPen({kPenSolid, hairline.width, hairline.color, false});
    surface.MoveTo({x, plot.bottom - 1});
    surface.LineTo({x, plot.top});
    if (!below && !above) continue;
    surface.ClipTo(bounds);
    double value = ScaleOf(*axis, fullWidth).ToValue(x - left + (layout_.plot.left - layout_.data.left));
    Text label = HairlineLabel(*axis, value, reportType);
    int32_t half = surface.TextExtent(label).cx / 2;
    uint32_t align = kAlignCenter;
    if (x - half - kHairlineLabelGap < left) align = kAlignLeft;
    else if (x + half + kHairlineLabelGap > plot.right) align = kAlignRight;
    surface.SetTextColor(hairline.color);
    surface.SetTextAlign(align | (below ? kAlignTop : kAlignBottom));
    surface.WriteText({x, below ? plot.bottom : plot.top - 1}, label);
  }
  surface.ClipTo(bounds);
}

// The rubber band: a dotted white frame XORed onto the data area, so that
// drawing it twice takes it away.
void VGraph::DrawBand(Surface& surface, const Rect& bounds) {
  const FrameRect& data = layout_.data;
  int32_t fullWidth = data.width(), fullHeight = data.height();
  int32_t left = bounds.left + margins_.left + data.left;
  int32_t bottom = bounds.bottom - margins_.bottom - data.bottom;
  auto x = [&](float fraction) { return left + Pixel(double(fraction) * fullWidth); };
  auto y = [&](float fraction) { return bottom - Pixel(double(fraction) * fullHeight); };
  Rect clip = Intersection(bounds, {left, bottom - fullHeight + 1, left + fullWidth, bottom + 1});
  surface.Save();
  surface.ClipTo(clip);
  surface.SelectPen({kPenDot, 1, kWhite, false});
  surface.SetBackgroundColor(kBlack);
  surface.SetRasterOp(RasterOp::kXor);
  const RubberBand& b = band_;
  // In a view zoomed far in, the band's corners can lie farther off than the
  // device holds. A corner beyond the clip moves toward it, but never into
  // it, by whole periods of the dot pattern, so every dot that shows stays
  // where it was.
  constexpr int32_t kPatternRepeat = 24;
  auto near = [](int32_t v, int32_t low, int32_t high) {
    if (v < low - kPatternRepeat) return v + (low - kPatternRepeat - v) / kPatternRepeat * kPatternRepeat;
    if (v > high + kPatternRepeat) return v - (v - high - kPatternRepeat) / kPatternRepeat * kPatternRepeat;
    return v;
  };
  auto cx = [&](float fraction) { return near(x(fraction), clip.left, clip.right); };
  auto cy = [&](float fraction) { return near(y(fraction), clip.top, clip.bottom); };
  Point corners[] = {{cx(b.bandX0), cy(b.bandY0)}, {cx(b.bandX1), cy(b.bandY0)}, {cx(b.bandX1), cy(b.bandY1)},
                     {cx(b.bandX0), cy(b.bandY1)}, {cx(b.bandX0), cy(b.bandY0)}};
  surface.Polyline(corners);
  surface.SetRasterOp(RasterOp::kCopy);
  surface.Restore();
}

}  // namespace zel

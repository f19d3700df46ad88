#include "interaction/mouse_tracker.h"

#include <cmath>
#include <cstdlib>

#include "engine/curve_points.h"
#include "interaction/scroller.h"
#include "interaction/selection.h"

namespace zel {
namespace {

constexpr float kSelectThreshold = 0.001f;  // SELECT reports smaller bands than ZOOM,
constexpr float kZoomThreshold = 0.01f;     // on purpose
constexpr int32_t kBorderStep = 2;
constexpr Color kGhostColor = 0xFFFFFF;

bool Bands(MouseMode mode) { return mode == MouseMode::kSelect || mode == MouseMode::kZoom; }

}  // namespace

Rect MouseTracker::ClientBounds() const {
  ClientRect c = window_.ClientRectangle();
  return {c.left, c.top, c.right, c.bottom};
}

void MouseTracker::XorBand(Surface& surface) { graph_.DrawBand(surface, ClientBounds()); }

void MouseTracker::EraseBand(Surface& surface) {
  if (!graph_.band().empty()) XorBand(surface);
  graph_.SetBand({});
}

// The ghost: the hairline's width in XOR white, from the plot's bottom to
// its top, so drawing it twice takes it away.
void MouseTracker::XorGhost(Surface& surface, int32_t x) {
  Rect c = ClientBounds();
  const FrameRect& f = graph_.plotFrame();
  int32_t left = c.left + graph_.margins().left, base = c.bottom - graph_.margins().bottom;
  int32_t width = 1;
  if (activeHairline_ >= 0 && size_t(activeHairline_) < graph_.hairlines().size())
    width = graph_.hairlines()[activeHairline_].width;
  surface.Save();
  surface.ClipTo({left + f.left, base - f.top, left + f.right + 1, base - f.bottom + 1});
  surface.SelectPen({kPenSolid, width, kGhostColor, false});
  surface.SetRasterOp(RasterOp::kXor);
  surface.MoveTo({left + x, base - f.bottom});
  surface.LineTo({left + x, base - f.top});
  surface.SetRasterOp(RasterOp::kCopy);
  surface.Restore();
}

// A hairline is hit within its pen width either side of its pixel.
int MouseTracker::HairlineAt(FramePoint p) const {
  const FrameRect& f = graph_.plotFrame();
  const auto& hairlines = graph_.hairlines();
  for (size_t i = 0; i < hairlines.size(); ++i) {
    int64_t offset = int64_t(f.left) - p.x + Pixel(double(hairlines[i].position) * f.width());
    if (offset >= -hairlines[i].width && offset <= hairlines[i].width) return int(i);
  }
  return -1;
}

Reaction MouseTracker::ButtonDown(Surface& surface, Point client, Point outer) {
  Reaction reaction;
  window_.CaptureMouse(true);
  ClientRect c = window_.ClientRectangle();
  if (graph_.legend() && OnLegendBorder(graph_.legendPosition(), c, client)) {
    borderPoint_ = outer;
    borderDrag_ = true;
    dragState_ = DragState::kDraggingBorder;
    return reaction;
  }
  lastMouse_ = client;
  EngineDown(surface, ToFrame(graph_, c, client));
  if (dragState_ != DragState::kIdle && graph_.mouseMode() == MouseMode::kPan) reaction.cursor = CursorShape::kGrab;
  return reaction;
}

void MouseTracker::EngineDown(Surface& surface, FramePoint p) {
  if (OnLegendBorder(graph_.legendPosition(), window_.ClientRectangle(), lastMouse_)) {
    dragState_ = DragState::kDraggingBorder;
    return;
  }
  if (!InsideFrame(graph_.plotFrame(), p)) return;
  MouseMode mode = graph_.mouseMode();
  if (dragState_ == DragState::kBanding && Bands(mode)) {  // a release that never came
    EraseBand(surface);
    dragState_ = DragState::kIdle;
    return;
  }
  if (dragState_ == DragState::kDraggingHairline) {  // a ghost left from before
    XorGhost(surface, ghostX_);
    dragState_ = DragState::kIdle;
    activeHairline_ = -1;
    graph_.SetBand({});
    return;
  }
  EraseBand(surface);
  activeHairline_ = HairlineAt(p);
  if (activeHairline_ >= 0) {
    dragState_ = DragState::kDraggingHairline;
    ghostX_ = p.x;
    XorGhost(surface, ghostX_);
  } else {
    dragState_ = Bands(mode) ? DragState::kBanding : mode == MouseMode::kPan ? DragState::kPanning : DragState::kIdle;
    if (dragState_ == DragState::kPanning) panClickOnly_ = true;
  }
  const FrameRect& data = graph_.dataArea();
  float fx = FractionX(data, p.x), fy = FractionY(data, p.y);
  graph_.SetBand({.bandX0 = fx, .bandX1 = fx, .bandY0 = fy, .bandY1 = fy});
}

Reaction MouseTracker::MouseMove(Surface& surface, Point client, Point outer) {
  Reaction reaction;
  if (dragState_ == DragState::kDraggingBorder && borderDrag_) {
    BorderStep(outer, reaction);
    return reaction;
  }
  lastMouse_ = client;
  mouseX_ = client.x;
  FramePoint p = ToFrame(graph_, window_.ClientRectangle(), client);
  if (dragState_ == DragState::kBanding) {
    XorBand(surface);
    RubberBand band = graph_.band();
    band.bandX1 = FractionX(graph_.dataArea(), p.x);
    band.bandY1 = FractionY(graph_.dataArea(), p.y);
    graph_.SetBand(band);
    XorBand(surface);
  } else if (dragState_ == DragState::kDraggingHairline && p.x != ghostX_) {
    XorGhost(surface, ghostX_);
    ghostX_ = p.x;
    XorGhost(surface, ghostX_);
  } else if (dragState_ == DragState::kPanning) {
    Pan(p);
  }
  return reaction;
}

// Reports the border's place in the grandparent once the coordinate that
// faces the legend (x beside it, y above or below) has moved two pixels or
// more since the last report; the host resizes the graph area to it.
void MouseTracker::BorderStep(Point outer, Reaction& reaction) {
  bool sideways = graph_.legend() && VLegend::IsSide(graph_.legendPosition());
  int64_t change = sideways ? int64_t(outer.x) - borderPoint_.x : int64_t(outer.y) - borderPoint_.y;
  if (std::abs(change) < kBorderStep) return;
  borderPoint_ = outer;
  reaction.events.push_back(GraphAreaMoved{outer.x, outer.y});
}

// Keeps the point taken at the press under the cursor, through the scroll
// bars' thumb tracking.
void MouseTracker::Pan(FramePoint p) {
  const FrameRect data = graph_.dataArea();
  const FrameRect frame = graph_.plotFrame();
  const RubberBand& b = graph_.band();
  int32_t dx = data.left + Pixel(double(b.bandX0) * data.width()) - p.x;
  int32_t dy = data.bottom + Pixel(double(b.bandY0) * data.height()) - p.y;
  if (dx != 0) Scroll(graph_, &window_, false, kScrollThumbTrack, std::max(0, frame.left - data.left + dx));
  if (dy != 0) Scroll(graph_, &window_, true, kScrollThumbTrack, std::max(0, data.top - frame.top - dy));
  panClickOnly_ = false;
}

Reaction MouseTracker::ButtonUp(Surface& surface, Point, Point outer) {
  Reaction reaction;
  reaction.releaseCapture = true;
  DragState old = dragState_;
  dragState_ = DragState::kIdle;
  if (old == DragState::kDraggingBorder) {
    // A release away from the last report finishes the host's resize there.
    if (borderDrag_) BorderStep(outer, reaction);
    borderDrag_ = false;
    reaction.cursor = CursorShape::kSizeWE;
  } else if (old == DragState::kPanning) {
    if (panClickOnly_) reaction.events.push_back(PixelClick(surface, lastMouse_));
    panClickOnly_ = true;
    reaction.cursor = CursorShape::kHand;
  } else if (old == DragState::kDraggingHairline) {
    FinishHairline(surface, reaction);
  } else if (old == DragState::kBanding) {
    FinishBand(surface, reaction);
  }
  return reaction;
}

void MouseTracker::FinishHairline(Surface& surface, Reaction& reaction) {
  XorGhost(surface, ghostX_);
  int index = activeHairline_;
  activeHairline_ = -1;
  if (index < 0 || size_t(index) >= graph_.hairlines().size()) return;
  const FrameRect& f = graph_.plotFrame();
  const Hairline& hairline = graph_.hairlines()[size_t(index)];
  graph_.SetHairlinePosition(hairline.id, float(ghostX_ - f.left) / float(f.width()));
  Rect c = ClientBounds();
  int32_t left = c.left + graph_.margins().left, base = c.bottom - graph_.margins().bottom;
  Rect plot{left + f.left, base - f.top, left + f.right + 1, base - f.bottom + 1};
  window_.InvalidateArea(plot, true);
  // The value labels stand above or below the plot, wherever the line was
  // and is now: those rows are repainted too, so no old value stays.
  if (plot.top > c.top) window_.InvalidateArea({c.left, c.top, c.right, plot.top}, true);
  if (plot.bottom < c.bottom) window_.InvalidateArea({c.left, plot.bottom, c.right, c.bottom}, true);
  reaction.events.push_back(HairlineMoved{hairline.id});
}

void MouseTracker::FinishBand(Surface& surface, Reaction& reaction) {
  graph_.SetSelection(graph_.band());
  Fractions b = graph_.selection().Normalised();
  float width = b.right - b.left, height = b.top - b.bottom;
  MouseMode mode = graph_.mouseMode();
  float threshold = mode == MouseMode::kZoom ? kZoomThreshold : kSelectThreshold;
  // A band left over from a mode change to PAN or NONE selects nothing.
  bool large = Bands(mode) && width > threshold && height > threshold;
  if (large) reaction.events.push_back(AreaSelected{b.left, b.right, b.bottom, b.top});
  if (large && mode == MouseMode::kZoom) return;  // the band stays until the host zooms
  if (large && mode == MouseMode::kSelect) reaction.viewChanged = true;
  EraseBand(surface);
  if (!large && width == 0 && height == 0) reaction.events.push_back(PixelClick(surface, lastMouse_));
}

SelectLegendFromGraph MouseTracker::PixelClick(Surface& surface, Point client) const {
  return {client.x, client.y, surface.PixelAt(client), 0};
}

Reaction MouseTracker::Cancel(Surface& surface) {
  Reaction reaction;
  if (dragState_ == DragState::kIdle) {
    reaction.handled = false;
    return reaction;
  }
  if (dragState_ == DragState::kBanding) XorBand(surface);
  if (dragState_ == DragState::kDraggingHairline) XorGhost(surface, ghostX_);
  graph_.SetBand({});
  activeHairline_ = -1;
  borderDrag_ = false;
  dragState_ = DragState::kIdle;
  return reaction;
}

CursorShape MouseTracker::CursorAt(Point client) {
  ClientRect c = window_.ClientRectangle();
  LegendPosition position = graph_.legendPosition();
  if (graph_.legend() && OnLegendBorder(position, c, client))
    return VLegend::IsSide(position) ? CursorShape::kSizeWE : CursorShape::kSizeNS;
  FramePoint p = ToFrame(graph_, c, client);
  if (HairlineAt(p) >= 0) return CursorShape::kSizeWE;
  if (graph_.mouseMode() == MouseMode::kPan && InsideFrame(graph_.plotFrame(), p)) return CursorShape::kHand;
  return CursorShape::kArrow;
}

}  // namespace zel

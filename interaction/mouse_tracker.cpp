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

bool Bands(int32_t mode) { return mode == kModeSelect || mode == kModeZoom; }

}  // namespace

Rect MouseTracker::ClientBounds() const {
  ClientRect c = window_.ClientRectangle();
  return {c.left, c.top, c.right, c.bottom};
}

void MouseTracker::XorBand(Surface& surface) { graph_.DrawBand(surface, ClientBounds()); }

void MouseTracker::EraseBand(Surface& surface) {
  if (!graph_.band().empty()) XorBand(surface);
  graph_.band() = {};
}

// The ghost: the hairline's width in XOR white, from the plot's bottom to
// its top, so drawing it twice takes it away.
void MouseTracker::XorGhost(Surface& surface, int32_t x) {
  Rect c = ClientBounds();
  const Box<int32_t>& f = graph_.plotFrame();
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
  const Box<int32_t>& f = graph_.plotFrame();
  int32_t frameWidth = f.right - f.left + 1;
  const auto& hairlines = graph_.hairlines();
  for (size_t i = 0; i < hairlines.size(); ++i) {
    int64_t offset = int64_t(f.left) - p.x + Pixel(double(hairlines[i].position) * frameWidth);
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
    dragState_ = kDraggingBorder;
    return reaction;
  }
  lastMouse_ = client;
  EngineDown(surface, ToFrame(graph_, c, client));
  if (dragState_ != kIdle && graph_.mouseMode() == kModePan) reaction.cursor = CursorShape::kGrab;
  return reaction;
}

void MouseTracker::EngineDown(Surface& surface, FramePoint p) {
  if (OnLegendBorder(graph_.legendPosition(), window_.ClientRectangle(), lastMouse_)) {
    dragState_ = kDraggingBorder;
    return;
  }
  if (!InsideFrame(graph_.plotFrame(), p)) return;
  int32_t mode = graph_.mouseMode();
  if (dragState_ == kBanding && Bands(mode)) {  // a release that never came
    EraseBand(surface);
    dragState_ = kIdle;
    return;
  }
  if (dragState_ == kDraggingHairline) {  // a ghost left from before
    XorGhost(surface, ghostX_);
    dragState_ = kIdle;
    activeHairline_ = -1;
    graph_.band() = {};
    return;
  }
  EraseBand(surface);
  activeHairline_ = HairlineAt(p);
  if (activeHairline_ >= 0) {
    dragState_ = kDraggingHairline;
    ghostX_ = p.x;
    XorGhost(surface, ghostX_);
  } else {
    dragState_ = Bands(mode) ? kBanding : mode == kModePan ? kPanning : kIdle;
    if (dragState_ == kPanning) panClickOnly_ = true;
  }
  const Box<int32_t>& data = graph_.dataArea();
  float fx = FractionX(data, p.x), fy = FractionY(data, p.y);
  graph_.band() = {fx, fx, fy, fy};
}

Reaction MouseTracker::MouseMove(Surface& surface, Point client, Point outer) {
  Reaction reaction;
  if (dragState_ == kDraggingBorder && borderDrag_) {
    BorderStep(outer, reaction);
    return reaction;
  }
  lastMouse_ = client;
  mouseX_ = client.x;
  FramePoint p = ToFrame(graph_, window_.ClientRectangle(), client);
  if (dragState_ == kBanding) {
    XorBand(surface);
    graph_.band().bandX1 = FractionX(graph_.dataArea(), p.x);
    graph_.band().bandY1 = FractionY(graph_.dataArea(), p.y);
    XorBand(surface);
  } else if (dragState_ == kDraggingHairline && p.x != ghostX_) {
    XorGhost(surface, ghostX_);
    ghostX_ = p.x;
    XorGhost(surface, ghostX_);
  } else if (dragState_ == kPanning) {
    Pan(p);
  }
  return reaction;
}

// Reports the border's place in the grandparent once the coordinate that
// faces the legend (x beside it, y above or below) has moved two pixels or
// more since the last report; the host resizes the graph area to it.
void MouseTracker::BorderStep(Point outer, Reaction& reaction) {
  bool sideways = graph_.legend() && (BorderSide(graph_.legendPosition()) % 2 == 1);
  int64_t change = sideways ? int64_t(outer.x) - borderPoint_.x : int64_t(outer.y) - borderPoint_.y;
  if (std::abs(change) < kBorderStep) return;
  borderPoint_ = outer;
  reaction.events.push_back(GraphAreaMoved{outer.x, outer.y});
}

// Keeps the point taken at the press under the cursor, through the scroll
// bars' thumb tracking.
void MouseTracker::Pan(FramePoint p) {
  const Box<int32_t> data = graph_.dataArea();
  const Box<int32_t>& frame = graph_.plotFrame();
  const RubberBand& b = graph_.band();
  int32_t dx = data.left + Pixel(double(b.bandX0) * (data.right - data.left + 1)) - p.x;
  int32_t dy = data.bottom + Pixel(double(b.bandY0) * (data.top - data.bottom + 1)) - p.y;
  if (dx != 0) Scroll(graph_, &window_, false, kScrollThumbTrack, std::max(0, frame.left - data.left + dx));
  if (dy != 0) Scroll(graph_, &window_, true, kScrollThumbTrack, std::max(0, data.top - frame.top - dy));
  panClickOnly_ = false;
}

Reaction MouseTracker::ButtonUp(Surface& surface, Point, Point outer) {
  Reaction reaction;
  reaction.releaseCapture = true;
  int old = dragState_;
  dragState_ = kIdle;
  if (old == kDraggingBorder) {
    // A release away from the last report finishes the host's resize there.
    if (borderDrag_) BorderStep(outer, reaction);
    borderDrag_ = false;
    reaction.cursor = CursorShape::kSizeWE;
  } else if (old == kPanning) {
    if (panClickOnly_) reaction.events.push_back(PixelClick(surface, lastMouse_));
    panClickOnly_ = true;
    reaction.cursor = CursorShape::kHand;
  } else if (old == kDraggingHairline) {
    FinishHairline(surface, reaction);
  } else if (old == kBanding) {
    FinishBand(surface, reaction);
  }
  return reaction;
}

void MouseTracker::FinishHairline(Surface& surface, Reaction& reaction) {
  XorGhost(surface, ghostX_);
  int index = activeHairline_;
  activeHairline_ = -1;
  if (index < 0 || size_t(index) >= graph_.hairlines().size()) return;
  const Box<int32_t>& f = graph_.plotFrame();
  Hairline& hairline = *graph_.FindHairline(graph_.hairlines()[index].id);
  hairline.position = float(ghostX_ - f.left) / float(f.right - f.left + 1);
  Rect c = ClientBounds();
  int32_t left = c.left + graph_.margins().left, base = c.bottom - graph_.margins().bottom;
  window_.InvalidateArea({left + f.left, base - f.top, left + f.right + 1, base - f.bottom + 1}, true);
  reaction.events.push_back(HairlineMoved{hairline.id});
}

void MouseTracker::FinishBand(Surface& surface, Reaction& reaction) {
  graph_.selection() = graph_.band();
  NormalBand b = Normalise(graph_.selection());
  float width = b.right - b.left, height = b.top - b.bottom;
  int32_t mode = graph_.mouseMode();
  float threshold = mode == kModeZoom ? kZoomThreshold : kSelectThreshold;
  // A band left over from a mode change to PAN or NONE selects nothing.
  bool large = Bands(mode) && width > threshold && height > threshold;
  if (large) reaction.events.push_back(AreaSelected{b.left, b.right, b.bottom, b.top});
  if (large && mode == kModeZoom) return;  // the band stays until the host zooms
  if (large && mode == kModeSelect) reaction.viewChanged = true;
  EraseBand(surface);
  if (!large && width == 0 && height == 0) reaction.events.push_back(PixelClick(surface, lastMouse_));
}

SelectLegendFromGraph MouseTracker::PixelClick(Surface& surface, Point client) const {
  return {client.x, client.y, surface.PixelAt(client), 0};
}

Reaction MouseTracker::Cancel(Surface& surface) {
  Reaction reaction;
  if (dragState_ == kIdle) {
    reaction.handled = false;
    return reaction;
  }
  if (dragState_ == kBanding) XorBand(surface);
  if (dragState_ == kDraggingHairline) XorGhost(surface, ghostX_);
  graph_.band() = {};
  activeHairline_ = -1;
  borderDrag_ = false;
  dragState_ = kIdle;
  return reaction;
}

CursorShape MouseTracker::CursorAt(Point client) {
  ClientRect c = window_.ClientRectangle();
  int32_t position = graph_.legendPosition();
  if (graph_.legend() && OnLegendBorder(position, c, client))
    return BorderSide(position) % 2 == 1 ? CursorShape::kSizeWE : CursorShape::kSizeNS;
  FramePoint p = ToFrame(graph_, c, client);
  if (HairlineAt(p) >= 0) return CursorShape::kSizeWE;
  if (graph_.mouseMode() == kModePan && InsideFrame(graph_.plotFrame(), p)) return CursorShape::kHand;
  return CursorShape::kArrow;
}

}  // namespace zel

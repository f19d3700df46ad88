#pragma once
// The left-button drag of one graph: rubber band (SELECT, ZOOM), panning,
// hairline dragging and the border drag against the legend, with Esc to
// cancel and the cursor that each place shows. Feedback is drawn in XOR on
// the surface the caller hands in (the window's device context); what the
// control must fire comes back as a Reaction.
#include <cstdint>

#include "engine/host_window.h"
#include "engine/v_graph.h"
#include "interaction/interaction_events.h"
#include "interaction/pixel_frame.h"

namespace zel {

enum class DragState { kIdle = 0, kBanding = 1, kPanning = 2, kDraggingHairline = 3, kDraggingBorder = 4 };

class MouseTracker {
 public:
  MouseTracker(VGraph& graph, HostWindow& window) : graph_(graph), window_(window) {}

  // `client` is the mouse in client pixels, `outer` in the client pixels of
  // the control window's grandparent (the border drag is measured there).
  Reaction ButtonDown(Surface& surface, Point client, Point outer);
  Reaction MouseMove(Surface& surface, Point client, Point outer);
  Reaction ButtonUp(Surface& surface, Point client, Point outer);
  // Esc cancels a drag; handled is false when there was none to cancel.
  Reaction Cancel(Surface& surface);
  // The cursor for a client point while no drag is in progress.
  CursorShape CursorAt(Point client);

  DragState dragState() const { return dragState_; }
  int activeHairline() const { return activeHairline_; }
  // The last mouse point the engine saw (client pixels): presses and moves,
  // but not those of a border drag.
  Point lastMouse() const { return lastMouse_; }
  // The client x of the last mouse move outside a border drag.
  int32_t mouseX() const { return mouseX_; }

 private:
  Rect ClientBounds() const;
  void XorBand(Surface& surface);
  void XorGhost(Surface& surface, int32_t x);
  void EraseBand(Surface& surface);
  int HairlineAt(FramePoint p) const;
  void EngineDown(Surface& surface, FramePoint p);
  void Pan(FramePoint p);
  void BorderStep(Point outer, Reaction& reaction);
  void FinishHairline(Surface& surface, Reaction& reaction);
  void FinishBand(Surface& surface, Reaction& reaction);
  SelectLegendFromGraph PixelClick(Surface& surface, Point client) const;

  VGraph& graph_;
  HostWindow& window_;
  DragState dragState_ = DragState::kIdle;
  int activeHairline_ = -1;
  int32_t ghostX_ = 0;
  bool borderDrag_ = false;
  bool panClickOnly_ = true;
  Point borderPoint_;
  Point lastMouse_;
  int32_t mouseX_ = 0;
};

}  // namespace zel

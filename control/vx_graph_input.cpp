// The operator's input at the control window: mouse, keys, scroll bars and
// the cursor, handed to the interaction core. The events it asks for are
// fired only after the engine calls have returned, because hosts call back
// into the control from their event handlers.
#include "control/hooked_message_boxes.h"
#include "control/vx_graph.h"
#include "interaction/hairline_intersection.h"
#include "interaction/scroller.h"
#include "util/text_ids.h"
#include "util/texts.h"

namespace zel {
namespace {

// The point in the client coordinates of the control window's grandparent,
// where the border drag against the legend is measured.
Point InGrandparent(HWND window, Point client) {
  POINT p{client.x, client.y};
  ClientToScreen(window, &p);
  HWND parent = GetParent(window);
  HWND grandparent = parent ? GetParent(parent) : nullptr;
  if (grandparent) ScreenToClient(grandparent, &p);
  return {p.x, p.y};
}

}  // namespace

void CVX_Graph::Fire(const InteractionEvent& event) {
  if (auto* area = std::get_if<AreaSelected>(&event)) {
    events_.Fire(kAreaSelected, {EventArgument(VT_R4, area->left), EventArgument(VT_R4, area->right),
                                 EventArgument(VT_R4, area->bottom), EventArgument(VT_R4, area->top)});
  } else if (auto* moved = std::get_if<HairlineMoved>(&event)) {
    events_.Fire(kHairlineMoved, {EventArgument(VT_I4, moved->id)});
  } else if (auto* border = std::get_if<GraphAreaMoved>(&event)) {
    events_.Fire(kGraphAreaMoved, {EventArgument(VT_R4, border->x), EventArgument(VT_R4, border->y)});
  } else if (auto* click = std::get_if<SelectLegendFromGraph>(&event)) {
    events_.Fire(kSelectLegendFromGraph, {EventArgument(VT_INT, click->x), EventArgument(VT_INT, click->y),
                                          EventArgument(VT_UI4, click->pixelColor),
                                          EventArgument(VT_I4, click->openContextMenu)});
  }
}

// The events fire first, while the mouse is still captured; then the
// container hears of the new view, the cursor changes and the capture goes.
void CVX_Graph::Apply(const Reaction& reaction) {
  // The control stays alive through the events even if a host releases it
  // from a handler.
  AddRef();
  for (const InteractionEvent& event : reaction.events) Fire(event);
  if (reaction.viewChanged) ViewChanged();
  if (reaction.cursor) window_.ShowCursor(*reaction.cursor);
  if (reaction.releaseCapture) window_.CaptureMouse(false);
  Release();
}

// In a designer (ambient UserMode false) the mouse belongs to the designer.
void CVX_Graph::OnMouse(UINT message, LPARAM lParam) {
  if (!userMode_) return;
  // Signed: a captured mouse may report points left of or above the window.
  Point client{int16_t(LOWORD(lParam)), int16_t(HIWORD(lParam))};
  HWND window = window_.handle();
  Point outer = InGrandparent(window, client);
  std::unique_ptr<Surface> surface = window_.MeasuringSurface();
  if (!surface) return;
  Reaction reaction;
  switch (message) {
    case WM_LBUTTONDOWN:
    case WM_LBUTTONDBLCLK:  // the second press of a quick double click
      SetFocus(window);
      reaction = tracker_.ButtonDown(*surface, client, outer);
      break;
    case WM_MOUSEMOVE: reaction = tracker_.MouseMove(*surface, client, outer); break;
    case WM_LBUTTONUP: reaction = tracker_.ButtonUp(*surface, client, outer); break;
  }
  surface.reset();
  Apply(reaction);
}

bool CVX_Graph::OnKeyDown(WPARAM key) {
  if (key == VK_ESCAPE) {
    std::unique_ptr<Surface> surface = window_.MeasuringSurface();
    Reaction reaction = surface ? tracker_.Cancel(*surface) : Reaction{{}, {}, false, false};
    surface.reset();
    Apply(reaction);
    return reaction.handled;
  }
  if (key != VK_LEFT && key != VK_RIGHT) return false;
  std::optional<int32_t> moved = SnapHairline(*graph_, &window_, key == VK_RIGHT, showHZ_);
  if (!moved) {
    CHookedMessageBoxes::Show(window_.handle(), LookupText(kMsgSelectShowHairline), LookupText(kCaptionSnapHairline), MB_OK);
    return true;
  }
  Apply({{HairlineMoved{*moved}}, {}, false, true});
  return true;
}

void CVX_Graph::OnScroll(bool vertical, WPARAM wParam) {
  Scroll(*graph_, &window_, vertical, LOWORD(wParam), HIWORD(wParam));
}

bool CVX_Graph::OnSetCursor(LPARAM lParam) {
  if (LOWORD(lParam) != HTCLIENT || !userMode_) return false;
  if (tracker_.dragState() == DragState::kIdle) {
    POINT p;
    GetCursorPos(&p);
    ScreenToClient(window_.handle(), &p);
    window_.ShowCursor(tracker_.CursorAt({p.x, p.y}));
  }
  return true;
}

}  // namespace zel

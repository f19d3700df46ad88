#pragma once
// What an input handler asks the control to do once the engine call has
// returned: events to fire, in order, and the cursor to show. Handlers never
// fire events themselves, because hosts call back into the control from
// their event handlers.
#include <cstdint>
#include <optional>
#include <variant>
#include <vector>

#include "engine/axis_props.h"

namespace zel {

struct AreaSelected {
  float left, right, bottom, top;
  bool operator==(const AreaSelected&) const = default;
};
struct HairlineMoved {
  int32_t id;
  bool operator==(const HairlineMoved&) const = default;
};
struct GraphAreaMoved {
  int32_t x, y;
  bool operator==(const GraphAreaMoved&) const = default;
};
struct SelectLegendFromGraph {
  int32_t x, y;
  Color pixelColor;
  int32_t openContextMenu;
  bool operator==(const SelectLegendFromGraph&) const = default;
};
using InteractionEvent = std::variant<AreaSelected, HairlineMoved, GraphAreaMoved, SelectLegendFromGraph>;

enum class CursorShape { kArrow, kHand, kGrab, kSizeWE, kSizeNS };

struct Reaction {
  std::vector<InteractionEvent> events;
  std::optional<CursorShape> cursor;  // set when the cursor is to change now
  bool viewChanged = false;           // tell the container the view changed
  bool handled = true;                // false: pass the key on to the parent
  bool releaseCapture = false;        // release the mouse once the events have fired
};

}  // namespace zel

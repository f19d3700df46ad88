#pragma once
// A vertical marker line across the plot, at a fraction of the plot frame's
// width, so that it stays in place on the screen when the graph is zoomed or
// scrolled.
#include <cstdint>

#include "engine/axis_props.h"

namespace zel {

struct Hairline {
  int32_t id;
  float position;  // 0 at the plot frame's left edge, 1 at its right
  int32_t reserved = 0;
  int32_t width;  // pen width in pixels, also the mouse tolerance
  Color color;
};

}  // namespace zel

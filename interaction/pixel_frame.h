#pragma once
// Mouse points in the graph's pixel frame: x from the left margin, y counted
// upwards from the bottom margin, and the fractions of the data area.
#include <cstdint>

#include "engine/host_window.h"
#include "engine/v_graph.h"

namespace zel {

// A point in the graph's pixel frame.
struct FramePoint {
  int32_t x = 0, y = 0;
};

FramePoint ToFrame(VGraph& graph, const ClientRect& client, Point mouse);

// Fractions of the data area, from its left and its bottom edge.
float FractionX(const FrameRect& data, int32_t x);
float FractionY(const FrameRect& data, int32_t y);

bool InsideFrame(const FrameRect& frame, FramePoint point);

// Whether a client point lies on the band along the window edge that faces
// the legend (bounds inclusive).
bool OnLegendBorder(LegendPosition legendPosition, const ClientRect& client, Point mouse);

}  // namespace zel

#pragma once
// Where a hairline crosses a curve, and the arrow-key move of a hairline to
// the next point of the curves.
#include <cstdint>
#include <optional>

#include "engine/host_window.h"
#include "engine/v_graph.h"
#include "util/value.h"

namespace zel {

struct Crossing {
  Value x, y;  // typed as the values of the X and the Y axis; y may be empty
};

// The hairline's pixel counted from the data area's left edge.
int32_t HairlinePixel(const VGraph& graph, const Hairline& hairline);

// The curve's value at pixel p of a data area `width` pixels wide. The curve
// runs from the X axis minimum through its points to the X axis maximum;
// between two points x and y are interpolated, outside them y is empty. With
// `snap` (always on a DISCRETE X axis) the nearer point is taken instead.
Crossing HairlineCrossing(const VDataset& dataset, int32_t p, int32_t width, bool snap);

// Left or Right arrow: moves the FIRST hairline to the nearest point left or
// right of it among datasets 0..scanBound, and returns the id of the LAST
// hairline, which is the one reported as moved. Nothing when there are no
// hairlines (the caller tells the operator). When no dataset has such a
// point the hairline stays, but its move is still reported.
std::optional<int32_t> SnapHairline(VGraph& graph, HostWindow* window, bool toRight, int32_t scanBound);

// "Show Hairline Here": moves the LAST hairline to the client x of the last
// mouse move and returns its id; nothing when there are no hairlines. Its
// divisor, the frame width less 2, differs from a drag's on purpose.
std::optional<int32_t> PlaceLastHairline(VGraph& graph, HostWindow* window, int32_t clientX);

}  // namespace zel

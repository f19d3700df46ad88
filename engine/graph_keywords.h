#pragma once
// Keywords of the graph's mouse mode and legend position, both ways.
// Comparison is exact and case-sensitive.
#include "engine/v_graph.h"
#include "util/text.h"

namespace zel {

// "SELECT", "PAN", "ZOOM", and "NONE" for anything else.
Text MouseModeKeyword(MouseMode mode);
MouseMode MouseModeFromKeyword(TextView keyword);

// "RIGHT", "TOP", "LEFT", and "BOTTOM" for anything else, no legend included.
Text LegendPositionKeyword(LegendPosition position);
LegendPosition LegendPositionFromKeyword(TextView keyword);

}  // namespace zel

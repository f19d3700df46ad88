#include "engine/graph_keywords.h"

namespace zel {

Text MouseModeKeyword(MouseMode mode) {
  switch (mode) {
    case MouseMode::kSelect: return u"SELECT";
    case MouseMode::kPan: return u"PAN";
    case MouseMode::kZoom: return u"ZOOM";
    default: return u"NONE";
  }
}

MouseMode MouseModeFromKeyword(TextView keyword) {
  if (keyword == u"SELECT") return MouseMode::kSelect;
  if (keyword == u"PAN") return MouseMode::kPan;
  if (keyword == u"ZOOM") return MouseMode::kZoom;
  return MouseMode::kNone;
}

Text LegendPositionKeyword(LegendPosition position) {
  switch (position) {
    case LegendPosition::kRight: return u"RIGHT";
    case LegendPosition::kTop: return u"TOP";
    case LegendPosition::kLeft: return u"LEFT";
    default: return u"BOTTOM";
  }
}

LegendPosition LegendPositionFromKeyword(TextView keyword) {
  if (keyword == u"RIGHT") return LegendPosition::kRight;
  if (keyword == u"TOP") return LegendPosition::kTop;
  if (keyword == u"LEFT") return LegendPosition::kLeft;
  return LegendPosition::kBottom;
}

}  // namespace zel

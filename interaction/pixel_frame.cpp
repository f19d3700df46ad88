#include "interaction/pixel_frame.h"

namespace zel {

FramePoint ToFrame(VGraph& graph, const ClientRect& client, Point mouse) {
  return {mouse.x - graph.margins().left, (client.bottom - graph.margins().bottom) - client.top - mouse.y};
}

// A data area of no size (a window of no size) gives fraction 0.
float FractionX(const FrameRect& data, int32_t x) {
  return data.width() > 0 ? float(x - data.left) / float(data.width()) : 0.0f;
}

float FractionY(const FrameRect& data, int32_t y) {
  return data.height() > 0 ? float(y - data.bottom) / float(data.height()) : 0.0f;
}

bool InsideFrame(const FrameRect& frame, FramePoint p) { return frame.Contains(p.x, p.y); }

bool OnLegendBorder(LegendPosition legendPosition, const ClientRect& c, Point m) {
  auto within = [](int32_t v, int32_t from, int32_t to) { return v >= from && v <= to; };
  switch (VLegend::Placed(legendPosition)) {
    case VLegend::kRight: return within(m.x, c.right - 5, c.right + 5);
    case VLegend::kTop: return within(m.y, c.top - 3, c.top + 5);
    case VLegend::kLeft: return within(m.x, c.left - 3, c.left + 5);
    default: return within(m.y, c.bottom - 5, c.bottom + 5);
  }
}

}  // namespace zel

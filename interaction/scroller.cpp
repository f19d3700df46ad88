#include "interaction/scroller.h"

#include <algorithm>

namespace zel {
namespace {

constexpr int kLineStep = 10;

// The plot frame in client pixels (right and bottom exclusive).
Rect PlotInClient(VGraph& graph, const ClientRect& client) {
  const FrameRect& f = graph.plotFrame();
  int32_t x = client.left + graph.margins().left, y = client.bottom - graph.margins().bottom;
  return {x + f.left, y - f.top, x + f.right + 1, y - f.bottom + 1};
}

}  // namespace

void Scroll(VGraph& graph, HostWindow* window, bool vertical, int request, int thumb) {
  const FrameRect& frame = graph.plotFrame();
  const FrameRect data = graph.dataArea();
  int32_t extent = vertical ? data.height() : data.width();
  int32_t page = vertical ? frame.height() : frame.width();
  int32_t position = vertical ? data.top - frame.top : frame.left - data.left;
  int32_t last = std::max(0, extent - page);
  int64_t wanted;
  switch (request) {
    case kScrollLineBack: wanted = int64_t(position) - kLineStep; break;
    case kScrollLineOn: wanted = int64_t(position) + kLineStep; break;
    case kScrollPageBack: wanted = int64_t(position) - page; break;
    case kScrollPageOn: wanted = int64_t(position) + page; break;
    case kScrollToStart: wanted = 0; break;
    case kScrollToEnd: wanted = last; break;
    case kScrollThumbTrack: wanted = thumb; break;
    default: return;
  }
  int32_t moved = int32_t(std::clamp<int64_t>(wanted, 0, last));
  if (moved == position || extent <= 0) return;
  Fractions zoom = graph.zoomRect();
  if (vertical) {
    int32_t bottom = frame.top + moved - (extent - 1);
    float height = zoom.top - zoom.bottom;
    zoom.bottom = float(frame.bottom - bottom) / float(extent);
    zoom.top = zoom.bottom + height;
    graph.MoveDataArea(data.left, bottom);
  } else {
    int32_t left = frame.left - moved;
    float width = zoom.right - zoom.left;
    zoom.left = float(frame.left - left) / float(extent);
    zoom.right = zoom.left + width;
    graph.MoveDataArea(left, data.bottom);
  }
  graph.ScrolledZoomRect(zoom);
  if (!window || !window->Exists()) return;
  window->SetScrollPosition(vertical, moved);
  int shift = position - moved;
  window->ScrollArea(PlotInClient(graph, window->ClientRectangle()), vertical ? 0 : shift, vertical ? shift : 0);
  window->Invalidate(false);
}

}  // namespace zel

#pragma once
// The scroll bars' requests: moving the data area under the plot frame of a
// zoomed graph, keeping the zoom rectangle's size.
#include "engine/host_window.h"
#include "engine/v_graph.h"

namespace zel {

// Request codes of WM_HSCROLL and WM_VSCROLL.
enum ScrollRequest : int {
  kScrollLineBack = 0,
  kScrollLineOn = 1,
  kScrollPageBack = 2,
  kScrollPageOn = 3,
  kScrollThumbPosition = 4,
  kScrollThumbTrack = 5,
  kScrollToStart = 6,
  kScrollToEnd = 7,
  kScrollEnd = 8,
};

// Handles one request for the horizontal or vertical bar; `thumb` is the
// position a thumb-track request carries. The position is clamped so that
// the data area always covers the plot frame; the window gets the new bar
// position, the plot's shift and a repaint without erase.
void Scroll(VGraph& graph, HostWindow* window, bool vertical, int request, int thumb);

}  // namespace zel

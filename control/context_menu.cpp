// The graph's context menu: which property pages it offers depends on
// where the operator clicked, and on whether the host says the click hit a
// curve (it may, from the SelectLegendFromGraph event fired just before).
#include "control/localized_windows.h"
#include "control/module.h"
#include "control/vx_graph.h"
#include "interaction/pixel_frame.h"

namespace zel {
namespace {

constexpr int kContextMenu = 180;
enum MenuItem : UINT { kGraphProperties = 244, kAxesProperties = 426, kCurveProperties = 427, kHairlineHere = 316 };

}  // namespace

void CVX_Graph::OnContextMenu(LPARAM lParam) {
  if (!userMode_) return;
  HWND window = window_.handle();
  HMENU menu = LoadMenuW(ModuleInstance(), MAKEINTRESOURCEW(kContextMenu));
  HMENU items = menu ? GetSubMenu(menu, 0) : nullptr;
  if (!items) {
    if (menu) DestroyMenu(menu);
    return;
  }
  RelabelMenu(items);
  POINT screen{int16_t(LOWORD(lParam)), int16_t(HIWORD(lParam))};
  POINT client = screen;
  ScreenToClient(window, &client);
  FramePoint at = ToFrame(*graph_, window_.ClientRectangle(), {client.x, client.y});
  if (graph_->hairlines().empty()) EnableMenuItem(items, kHairlineHere, MF_BYCOMMAND | MF_GRAYED | MF_DISABLED);
  const FrameRect& frame = graph_->plotFrame();
  bool inside = at.x > frame.left && at.x < frame.right && at.y > frame.bottom && at.y < frame.top;
  if (inside) {
    COLORREF pixel = 0;
    if (HDC dc = GetDC(window)) {
      pixel = GetPixel(dc, client.x, client.y);
      ReleaseDC(window, dc);
    }
    Point last = tracker_.lastMouse();
    AddRef();
    Fire(SelectLegendFromGraph{last.x, last.y, Color(pixel), 1});
    bool curve = loadFromLegend_ != 0;
    RemoveMenu(items, kAxesProperties, MF_BYCOMMAND);
    RemoveMenu(items, curve ? kGraphProperties : kCurveProperties, MF_BYCOMMAND);
    Release();
  } else {
    EnableMenuItem(items, kHairlineHere, MF_BYCOMMAND | MF_GRAYED | MF_DISABLED);
    RemoveMenu(items, kGraphProperties, MF_BYCOMMAND);
    RemoveMenu(items, kCurveProperties, MF_BYCOMMAND);
  }
  TrackPopupMenuEx(items, 0, screen.x, screen.y, window, nullptr);
  DestroyMenu(menu);
}

}  // namespace zel

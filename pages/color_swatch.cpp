#include "pages/color_swatch.h"

#include <commdlg.h>
#include <olectl.h>

namespace zel {
namespace {

bool registered = false;

OLE_COLOR ColorOf(HWND window) { return OLE_COLOR(GetWindowLongPtrW(window, 0)); }

// The colour as painted: a system colour is looked up, an untranslatable one
// shows black.
COLORREF Painted(OLE_COLOR color) {
  COLORREF rgb = 0;
  return SUCCEEDED(OleTranslateColor(color, nullptr, &rgb)) ? rgb : 0;
}

void Notify(HWND window) {
  HWND parent = GetParent(window);
  int id = GetDlgCtrlID(window);
  SendMessageW(parent, WM_COMMAND, MAKEWPARAM(id, ColorSwatch::kColorChanged), LPARAM(window));
}

}  // namespace

bool ColorSwatch::Register(HINSTANCE module) {
  if (registered) return true;
  WNDCLASSW type{};
  type.style = CS_HREDRAW | CS_VREDRAW;
  type.lpfnWndProc = Procedure;
  type.cbWndExtra = sizeof(LONG_PTR);
  type.hInstance = module;
  type.hCursor = LoadCursorW(nullptr, reinterpret_cast<LPCWSTR>(IDC_ARROW));
  type.lpszClassName = kClassName;
  registered = RegisterClassW(&type) != 0;
  return registered;
}

void ColorSwatch::Unregister(HINSTANCE module) {
  if (registered) UnregisterClassW(kClassName, module);
  registered = false;
}

LRESULT CALLBACK ColorSwatch::Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
  switch (message) {
    case kSetColor: SetWindowLongPtrW(window, 0, LONG_PTR(wParam)); InvalidateRect(window, nullptr, TRUE); return 0;
    case kGetColor: return LRESULT(ColorOf(window));
    case WM_PAINT: Paint(window); return 0;
    case WM_SETFOCUS:
    case WM_KILLFOCUS:
    case WM_ENABLE: InvalidateRect(window, nullptr, TRUE); return 0;
    case WM_GETDLGCODE: return DLGC_WANTCHARS;
    case WM_LBUTTONDOWN: SetFocus(window); Choose(window); return 0;
    case WM_KEYDOWN:
      if (wParam != VK_SPACE) break;
      Choose(window);
      return 0;
  }
  return DefWindowProcW(window, message, wParam, lParam);
}

// A sunken frame around the colour, a focus rectangle inside it while the
// swatch has the focus; disabled, the colour is framed in the face colour.
void ColorSwatch::Paint(HWND window) {
  PAINTSTRUCT paint;
  HDC dc = BeginPaint(window, &paint);
  RECT box;
  GetClientRect(window, &box);
  DrawEdge(dc, &box, EDGE_SUNKEN, BF_RECT | BF_ADJUST);
  if (!IsWindowEnabled(window)) {
    FrameRect(dc, &box, GetSysColorBrush(COLOR_BTNFACE));
    InflateRect(&box, -1, -1);
  }
  HBRUSH brush = CreateSolidBrush(Painted(ColorOf(window)));
  FillRect(dc, &box, brush);
  DeleteObject(brush);
  if (GetFocus() == window) {
    InflateRect(&box, -2, -2);
    DrawFocusRect(dc, &box);
  }
  EndPaint(window, &paint);
}

// The standard colour dialog, opened on the current colour; the parent hears
// of a different choice.
void ColorSwatch::Choose(HWND window) {
  static COLORREF customColors[16] = {};
  CHOOSECOLORW choice{sizeof choice};
  choice.hwndOwner = GetAncestor(window, GA_ROOT);
  choice.rgbResult = Painted(ColorOf(window));
  choice.lpCustColors = customColors;
  choice.Flags = CC_RGBINIT | CC_FULLOPEN | CC_ANYCOLOR;
  if (!ChooseColorW(&choice) || choice.rgbResult == ColorOf(window)) return;
  SendMessageW(window, kSetColor, choice.rgbResult, 0);
  Notify(window);
}

}  // namespace zel

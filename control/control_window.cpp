#include "control/automation_values.h"
#include "control/control_window.h"

#include <olectl.h>

#include "control/gdi_surface.h"
#include "control/module.h"
#include "control/vx_graph.h"

namespace zel {
namespace {

constexpr const wchar_t* kWindowClass = L"ZELGraphControlWindow";
constexpr COLORREF kWhite = 0xFFFFFF;
constexpr int kGrabCursor = 195;

ATOM RegisterWindowClass(WNDPROC procedure) {
  static ATOM atom = [procedure] {
    WNDCLASSEXW windowClass{};
    windowClass.cbSize = sizeof windowClass;
    windowClass.style = CS_DBLCLKS;
    windowClass.lpfnWndProc = procedure;
    windowClass.hInstance = ModuleInstance();
    windowClass.hCursor = LoadCursor(nullptr, IDC_ARROW);
    windowClass.lpszClassName = kWindowClass;
    return RegisterClassExW(&windowClass);
  }();
  return atom;
}

}  // namespace

bool ControlWindow::Create(HWND parent, const RECT& position) {
  if (Exists()) return true;
  if (!RegisterWindowClass(Procedure)) return false;
  CreateWindowExW(0, kWindowClass, L"", WS_CHILD | WS_VISIBLE | WS_CLIPSIBLINGS, position.left,
                  position.top, position.right - position.left, position.bottom - position.top,
                  parent, nullptr, ModuleInstance(), this);
  return window_ != nullptr;
}

void ControlWindow::Destroy() {
  if (window_ && IsWindow(window_)) DestroyWindow(window_);
  window_ = nullptr;
}

ClientRect ControlWindow::ClientRectangle() const {
  RECT r{};
  GetClientRect(window_, &r);
  return {r.left, r.top, r.right, r.bottom};
}

void ControlWindow::Invalidate(bool erase) {
  InvalidateRect(window_, nullptr, erase);
  control_.TellViewSink();
}

void ControlWindow::PictureChanged() { control_.TellViewSink(); }

// Setting a bar redraws it, which costs far more than the layout that asks,
// so a bar is set only when what it shows changes. The state is noted before
// the bar is set, so that a layout the call sets off (by resizing the
// client) compares with it.
void ControlWindow::SetScrollBar(bool vertical, const ScrollBarState& state) {
  std::optional<ScrollBarState>& told = scrollBars_[vertical];
  if (told == state) return;
  told = state;
  SCROLLINFO info{sizeof info, SIF_RANGE | SIF_PAGE | SIF_POS | SIF_DISABLENOSCROLL, 0, state.max,
                  UINT(state.page), state.position, 0};
  SetScrollInfo(window_, vertical ? SB_VERT : SB_HORZ, &info, TRUE);
}

void ControlWindow::InvalidateArea(const Rect& area, bool erase) {
  RECT r{area.left, area.top, area.right, area.bottom};
  InvalidateRect(window_, &r, erase);
}

// The system may move the thumb elsewhere than asked (within the range), so
// the bar's state is no longer known.
void ControlWindow::SetScrollPosition(bool vertical, int position) {
  scrollBars_[vertical].reset();
  SetScrollPos(window_, vertical ? SB_VERT : SB_HORZ, position, TRUE);
}

void ControlWindow::ScrollArea(const Rect& area, int dx, int dy) {
  RECT r{area.left, area.top, area.right, area.bottom};
  ScrollWindowEx(window_, dx, dy, &r, &r, nullptr, nullptr, SW_INVALIDATE);
}

void ControlWindow::CaptureMouse(bool capture) {
  if (capture) SetCapture(window_);
  else if (GetCapture() == window_) ReleaseCapture();
}

void ControlWindow::SetTimer(int id, int periodMs) { ::SetTimer(window_, UINT_PTR(id), UINT(periodMs), nullptr); }
void ControlWindow::KillTimer(int id) { ::KillTimer(window_, UINT_PTR(id)); }

std::unique_ptr<Surface> ControlWindow::MeasuringSurface() {
  HDC dc = Exists() ? GetDC(window_) : nullptr;
  return dc ? std::make_unique<GdiSurface>(dc, window_, &drawingObjects_) : nullptr;
}

LRESULT CALLBACK ControlWindow::Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
  if (message == WM_NCCREATE) {
    auto* self = static_cast<ControlWindow*>(reinterpret_cast<CREATESTRUCTW*>(lParam)->lpCreateParams);
    self->window_ = window;
    SetWindowLongPtrW(window, GWLP_USERDATA, LONG_PTR(self));
  }
  auto* self = reinterpret_cast<ControlWindow*>(GetWindowLongPtrW(window, GWLP_USERDATA));
  return self ? self->Handle(message, wParam, lParam) : DefWindowProcW(window, message, wParam, lParam);
}

LRESULT ControlWindow::Handle(UINT message, WPARAM wParam, LPARAM lParam) {
  switch (message) {
    case WM_PAINT: return OnPaint();
    case WM_LBUTTONDOWN:
    case WM_LBUTTONDBLCLK:
    case WM_LBUTTONUP:
    case WM_MOUSEMOVE: control_.OnMouse(message, lParam); return 0;
    case WM_SIZE: return OnSize(lParam);
    case WM_HSCROLL:
    case WM_VSCROLL: control_.OnScroll(message == WM_VSCROLL, wParam); return 0;
    case WM_CREATE: return OnCreate();
    case WM_DESTROY: return OnDestroy();
    case WM_ERASEBKGND: return OnEraseBackground();
    case WM_CONTEXTMENU: control_.OnContextMenu(lParam); return 0;
    case WM_SETCURSOR:
      if (control_.OnSetCursor(lParam)) return TRUE;
      break;
    case WM_GETDLGCODE: return control_.DialogCode(reinterpret_cast<const MSG*>(lParam));
    case WM_KEYDOWN:
      if (control_.OnKeyDown(wParam)) return 0;
      return ToParent(message, wParam, lParam);
    case WM_KEYUP:
      if (ToParent(message, wParam, lParam) == 0) return 0;
      break;
    case WM_COMMAND:
      if (control_.OnCommand(LOWORD(wParam))) return 0;
      break;
    case WM_TIMER: control_.OnTimer(wParam); return 0;
    case WM_NCDESTROY:
      SetWindowLongPtrW(window_, GWLP_USERDATA, 0);
      window_ = nullptr;
      break;
  }
  return DefWindowProcW(window_, message, wParam, lParam);
}

// The scroll-bar styles take effect only once the frame is recalculated:
// without that the bars have no room and are not drawn until the first
// resize. The recalculation resizes the client, so the graph is laid out
// again for what the bars leave.
LRESULT ControlWindow::OnCreate() {
  scrollBars_ = {};
  LoadCursors();
  LONG_PTR style = GetWindowLongPtrW(window_, GWL_STYLE);
  SetWindowLongPtrW(window_, GWL_STYLE, style | WS_HSCROLL | WS_VSCROLL);
  SetWindowPos(window_, nullptr, 0, 0, 0, 0,
               SWP_FRAMECHANGED | SWP_NOMOVE | SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
  return 0;
}

LRESULT ControlWindow::OnDestroy() {
  DestroyCursors();
  backBuffer_.Release();
  drawingObjects_.Release();
  return 0;
}

// Keys the control does not use go to the parent unchanged.
LRESULT ControlWindow::ToParent(UINT message, WPARAM wParam, LPARAM lParam) {
  HWND parent = GetParent(window_);
  return parent ? SendMessageW(parent, message, wParam, lParam) : 1;
}

void ControlWindow::LoadCursors() {
  cursors_ = {LoadCursor(nullptr, IDC_ARROW), LoadCursor(nullptr, IDC_HAND),
              LoadCursorW(ModuleInstance(), MAKEINTRESOURCEW(kGrabCursor)), LoadCursor(nullptr, IDC_SIZEWE),
              LoadCursor(nullptr, IDC_SIZENS)};
}

// All five go, the system's shared cursors included: that is how the
// control has always left.
void ControlWindow::DestroyCursors() {
  for (HCURSOR& cursor : cursors_) {
    if (cursor) DestroyCursor(cursor);
    cursor = nullptr;
  }
}

void ControlWindow::ShowCursor(CursorShape shape) {
  HCURSOR cursor = cursors_[size_t(shape)];
  if (cursor) SetCursor(cursor);
}

// The size is the one the message reports, not what GetClientRect says.
LRESULT ControlWindow::OnSize(LPARAM lParam) {
  backBuffer_.ShrinkTo(int64_t(LOWORD(lParam)) * HIWORD(lParam));
  control_.graph().LayoutAndRepaint(LOWORD(lParam), HIWORD(lParam));
  return 0;
}

// The update region reaches the draw entry as the paint context's clip box,
// which is all the off-screen surface covers.
LRESULT ControlWindow::OnPaint() {
  PAINTSTRUCT paint;
  HDC dc = BeginPaint(window_, &paint);
  RECT client;
  GetClientRect(window_, &client);
  control_.DrawInto(dc, client);
  EndPaint(window_, &paint);
  return 0;
}

// The erase is reported as done without filling anything: painting covers
// the whole window. The brush made and dropped here is how it has always been.
LRESULT ControlWindow::OnEraseBackground() {
  HBRUSH brush = CreateSolidBrush(TranslateColor(control_.backColor()).value_or(kWhite));
  DeleteObject(brush);
  return 1;
}

}  // namespace zel

#pragma once
// The control's child window: the engine's HostWindow over an HWND, and the
// window procedure that hands messages to the control. It keeps what frames
// on the display share (the back buffer and the drawing objects) while it
// exists, and tells the system only what changed about its scroll bars.
#include <windows.h>

#include <array>
#include <optional>

#include "control/back_buffer.h"
#include "control/gdi_object_cache.h"

#include "engine/host_window.h"
#include "interaction/interaction_events.h"

namespace zel {

class CVX_Graph;

class ControlWindow : public HostWindow {
 public:
  explicit ControlWindow(CVX_Graph& control) : control_(control) {}
  ~ControlWindow() override { Destroy(); }

  bool Create(HWND parent, const RECT& position);
  void Destroy();
  HWND handle() const { return window_; }

  bool Exists() const override { return window_ && IsWindow(window_); }
  ClientRect ClientRectangle() const override;
  void Invalidate(bool erase) override;
  void SetScrollBar(bool vertical, const ScrollBarState& state) override;
  void InvalidateArea(const Rect& area, bool erase) override;
  void SetScrollPosition(bool vertical, int position) override;
  void ScrollArea(const Rect& area, int dx, int dy) override;
  void CaptureMouse(bool capture) override;
  void SetTimer(int id, int periodMs) override;
  void KillTimer(int id) override;
  std::unique_ptr<Surface> MeasuringSurface() override;
  void PictureChanged() override;
  void ShowCursor(CursorShape shape);
  // For frames drawn on the display while the window exists.
  BackBuffer& backBuffer() { return backBuffer_; }
  GdiObjectCache& drawingObjects() { return drawingObjects_; }

 private:
  static LRESULT CALLBACK Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
  LRESULT Handle(UINT message, WPARAM wParam, LPARAM lParam);
  LRESULT OnCreate();
  LRESULT OnSize(LPARAM lParam);
  LRESULT OnPaint();
  LRESULT OnEraseBackground();
  LRESULT OnDestroy();
  LRESULT ToParent(UINT message, WPARAM wParam, LPARAM lParam);
  void LoadCursors();
  void DestroyCursors();

  CVX_Graph& control_;
  HWND window_ = nullptr;
  // Arrow, hand, grab, west-east and north-south, by CursorShape.
  std::array<HCURSOR, 5> cursors_{};
  BackBuffer backBuffer_;
  GdiObjectCache drawingObjects_;
  // What each bar (horizontal, vertical) was last told; empty when unknown.
  std::array<std::optional<ScrollBarState>, 2> scrollBars_;
};

}  // namespace zel

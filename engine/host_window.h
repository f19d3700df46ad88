#pragma once
// The control's window as the engine sees it. The engine holds a pointer to
// one; it is null, or reports no window, while the control has none.
#include <memory>

#include "engine/surface.h"

namespace zel {

struct ClientRect {
  int left = 0, top = 0, right = 0, bottom = 0;
};

// What SetScrollInfo gets: range 0..max, page and position (the minimum is 0).
struct ScrollBarState {
  int max = 0, page = 0, position = 0;
  bool operator==(const ScrollBarState&) const = default;
};

class HostWindow {
 public:
  virtual ~HostWindow() = default;
  virtual bool Exists() const = 0;
  virtual ClientRect ClientRectangle() const = 0;
  // The whole client area, erased first when `erase`.
  virtual void Invalidate(bool erase) = 0;
  virtual void SetScrollBar(bool vertical, const ScrollBarState& state) = 0;
  // What interaction asks of a window; a window without input ignores it.
  // Part of the client area (client pixels, right and bottom exclusive).
  virtual void InvalidateArea(const Rect&, bool /*erase*/) {}
  // Moves the bar's thumb only (SetScrollPos).
  virtual void SetScrollPosition(bool /*vertical*/, int /*position*/) {}
  // Shifts what `area` shows by (dx, dy) pixels (ScrollWindowEx).
  virtual void ScrollArea(const Rect&, int /*dx*/, int /*dy*/) {}
  // Takes (true) or releases (false) the mouse capture.
  virtual void CaptureMouse(bool /*capture*/) {}
  // Starts (with a period in milliseconds) or stops a window timer.
  virtual void SetTimer(int /*id*/, int /*periodMs*/) {}
  virtual void KillTimer(int /*id*/) {}
  // A surface over the window's device context, for measuring text.
  virtual std::unique_ptr<Surface> MeasuringSurface() = 0;
  // The graph's picture changed while no window repaint shows it (no
  // window, or drawing suspended): containers that keep a copy of the
  // picture are told. A repaint through Invalidate tells them itself.
  virtual void PictureChanged() {}
};

}  // namespace zel

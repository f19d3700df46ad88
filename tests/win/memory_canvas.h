#pragma once
// Drawing the engine through real GDI: a memory device context with a
// bitmap of its own, a window stand-in for the graph, and pixel reads.
#include <windows.h>

#include <memory>

#include "control/gdi_surface.h"
#include "control/platform_win.h"
#include "engine/host_window.h"
#include "engine/v_graph.h"

namespace zel::testing {

class MemoryCanvas {
 public:
  MemoryCanvas(int width, int height, COLORREF background = RGB(255, 255, 255))
      : width_(width), height_(height) {
    HDC screen = GetDC(nullptr);
    dc_ = CreateCompatibleDC(screen);
    BITMAPINFO info{};
    info.bmiHeader = {sizeof(BITMAPINFOHEADER), width, -height, 1, 32, BI_RGB};
    bitmap_ = CreateDIBSection(screen, &info, DIB_RGB_COLORS, reinterpret_cast<void**>(&bits_), nullptr, 0);
    ReleaseDC(nullptr, screen);
    old_ = SelectObject(dc_, bitmap_);
    SetBkColor(dc_, background);
    Clear(background);
  }
  ~MemoryCanvas() {
    SelectObject(dc_, old_);
    DeleteObject(bitmap_);
    DeleteDC(dc_);
  }
  MemoryCanvas(const MemoryCanvas&) = delete;
  MemoryCanvas& operator=(const MemoryCanvas&) = delete;

  HDC dc() const { return dc_; }
  int width() const { return width_; }
  int height() const { return height_; }
  void Clear(COLORREF colour) {
    GdiFlush();
    for (int i = 0; i < width_ * height_; ++i) bits_[i] = Swap(colour);
  }
  // The pixel as a COLORREF (0x00BBGGRR); black outside the canvas.
  COLORREF Pixel(int x, int y) const {
    GdiFlush();
    if (x < 0 || y < 0 || x >= width_ || y >= height_) return 0;
    return Swap(bits_[size_t(y) * size_t(width_) + size_t(x)]);
  }
  // Every pixel, row by row, as 0x00RRGGBB.
  const uint32_t* bits() const {
    GdiFlush();
    return bits_;
  }

 private:
  static uint32_t Swap(uint32_t c) { return ((c & 0xFF) << 16) | (c & 0xFF00) | ((c >> 16) & 0xFF); }

  int width_, height_;
  HDC dc_;
  HBITMAP bitmap_;
  HGDIOBJ old_;
  uint32_t* bits_ = nullptr;
};

// A window that exists, is as large as the canvas and measures on it.
class CanvasWindow : public HostWindow {
 public:
  explicit CanvasWindow(MemoryCanvas& canvas) : canvas_(canvas) {}
  bool Exists() const override { return true; }
  ClientRect ClientRectangle() const override { return {0, 0, canvas_.width(), canvas_.height()}; }
  void Invalidate(bool) override {}
  void SetScrollBar(bool, const ScrollBarState&) override {}
  std::unique_ptr<Surface> MeasuringSurface() override { return std::make_unique<GdiSurface>(canvas_.dc()); }

 private:
  MemoryCanvas& canvas_;
};

// Lays the graph out for the whole canvas and draws it there.
inline void Render(VGraph& graph, MemoryCanvas& canvas) {
  InstallWindowsPlatformHooks();
  GdiSurface surface(canvas.dc());
  graph.Recalculate(canvas.width() + 1, canvas.height() + 1, &surface);
  Rect bounds{0, 0, canvas.width(), canvas.height()};
  graph.Draw(surface, bounds, bounds);
}

}  // namespace zel::testing

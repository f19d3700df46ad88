#pragma once
// The drawing surface over a GDI device context, for one drawing call: the
// pens, fonts and brushes it makes are deleted when it goes, after the
// context has its original objects back. Given a cache of the window's, it
// borrows them from there instead and measures each text once.
#include <windows.h>

#include <optional>
#include <vector>

#include "control/gdi_object_cache.h"
#include "engine/surface.h"

namespace zel {

class GdiSurface final : public Surface {
 public:
  // `owner`, when given, is the window whose device context `dc` is; it is
  // released to it at the end.
  // `cache`, when given, must hold objects for contexts like `dc` (text
  // extents are kept per font, so one kind of device per cache).
  explicit GdiSurface(HDC dc, HWND owner = nullptr, GdiObjectCache* cache = nullptr);
  // A surface whose context holds only part of the picture: its pixel (0, 0)
  // is `origin` of the drawing's device coordinates, which the drawing keeps
  // using (clip rectangles included) as if the context held all of it.
  GdiSurface(HDC dc, Point origin, GdiObjectCache* cache = nullptr);
  ~GdiSurface() override;
  GdiSurface(const GdiSurface&) = delete;
  GdiSurface& operator=(const GdiSurface&) = delete;

  void Save() override;
  void Restore() override;
  void SetWindowOrigin(Point origin) override;
  void ClipTo(const Rect& deviceRect) override;
  void IntersectClip(const Rect& deviceRect) override;
  bool IsVisible(const Rect& rect) override;
  void SelectPen(const Pen& pen) override;
  void SelectFont(const LogFont& font) override;
  void SetTextColor(Color color) override;
  void SetTextAlign(uint32_t flags) override;
  void SetRasterOp(RasterOp op) override;
  Color BackgroundColor() override;
  void SetBackgroundColor(Color color) override;
  void SetTextBackground(TextBackground mode) override;
  void MoveTo(Point point) override;
  void LineTo(Point point) override;
  void Polyline(std::span<const Point> points) override;
  void FillRect(const Rect& rect, Color color) override;
  void FillRegion(const Region& region, Color color) override;
  void Rectangle(const Rect& rect, Color fill) override;
  void Pie(const Rect& box, Point firstRadial, Point secondRadial, Color fill) override;
  void WriteText(Point at, TextView text) override;
  Size TextExtent(TextView text) override;
  Color PixelAt(Point point) override;
  int Technology() override;

 private:
  // Selects an object made for this call and keeps it for deletion.
  void SelectOwned(HGDIOBJ object);

  HDC dc_;
  HWND owner_;
  GdiObjectCache* cache_;
  Point origin_{0, 0};
  int savedState_;
  std::vector<HGDIOBJ> owned_;
  // The font selected through this surface, if any, and the ones saved with
  // the context's state, so that extents are looked up for the right font.
  std::optional<LogFont> font_;
  std::vector<std::optional<LogFont>> savedFonts_;
};

}  // namespace zel

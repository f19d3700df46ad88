#include "control/gdi_surface.h"

#include "control/platform_win.h"

namespace zel {
namespace {

const wchar_t* Wide(TextView text) { return reinterpret_cast<const wchar_t*>(text.data()); }

// The brush of one fill: the cache's, or one made for it and deleted after.
class SolidBrush {
 public:
  SolidBrush(Color color, GdiObjectCache* cache)
      : brush_(cache ? cache->BrushFor(color) : CreateSolidBrush(color)), owned_(!cache) {}
  ~SolidBrush() {
    if (owned_) DeleteObject(brush_);
  }
  SolidBrush(const SolidBrush&) = delete;
  SolidBrush& operator=(const SolidBrush&) = delete;
  operator HBRUSH() const { return brush_; }

 private:
  HBRUSH brush_;
  bool owned_;
};

HRGN CreateRegion(const Region& region) {
  if (auto* rect = std::get_if<Rect>(&region))
    return CreateRectRgn(rect->left, rect->top, rect->right, rect->bottom);
  if (auto* ellipse = std::get_if<Ellipse>(&region))
    return CreateEllipticRgn(ellipse->box.left, ellipse->box.top, ellipse->box.right, ellipse->box.bottom);
  const Polygon& polygon = std::get<Polygon>(region);
  if (polygon.points.empty()) return nullptr;
  return CreatePolygonRgn(reinterpret_cast<const POINT*>(polygon.points.data()), int(polygon.points.size()),
                          polygon.mode == FillMode::kWinding ? WINDING : ALTERNATE);
}

static_assert(sizeof(Point) == sizeof(POINT));

}  // namespace

GdiSurface::GdiSurface(HDC dc, HWND owner, GdiObjectCache* cache)
    : dc_(dc), owner_(owner), cache_(cache), savedState_(SaveDC(dc)) {
  if (cache_) cache_->Hold();
}

// The viewport moves the drawing's logical coordinates; clip regions are in
// the context's own pixels and move by hand.
GdiSurface::GdiSurface(HDC dc, Point origin, GdiObjectCache* cache) : GdiSurface(dc, nullptr, cache) {
  origin_ = origin;
  SetViewportOrgEx(dc_, -origin.x, -origin.y, nullptr);
}

GdiSurface::~GdiSurface() {
  // Back to the state the context came in, which selects its own objects
  // again, so that the ones made or borrowed here can go.
  RestoreDC(dc_, savedState_);
  for (HGDIOBJ object : owned_) DeleteObject(object);
  if (cache_) cache_->LetGo();
  if (owner_) ReleaseDC(owner_, dc_);
}

void GdiSurface::SelectOwned(HGDIOBJ object) {
  if (!object) return;
  owned_.push_back(object);
  SelectObject(dc_, object);
}

void GdiSurface::Save() {
  SaveDC(dc_);
  savedFonts_.push_back(font_);
}

void GdiSurface::Restore() {
  RestoreDC(dc_, -1);
  if (savedFonts_.empty()) return;
  font_ = savedFonts_.back();
  savedFonts_.pop_back();
}

void GdiSurface::SetWindowOrigin(Point origin) { SetWindowOrgEx(dc_, origin.x, origin.y, nullptr); }

void GdiSurface::ClipTo(const Rect& r) {
  HRGN region = CreateRectRgn(r.left - origin_.x, r.top - origin_.y, r.right - origin_.x, r.bottom - origin_.y);
  SelectClipRgn(dc_, region);
  DeleteObject(region);
}

void GdiSurface::IntersectClip(const Rect& r) {
  HRGN region = CreateRectRgn(r.left - origin_.x, r.top - origin_.y, r.right - origin_.x, r.bottom - origin_.y);
  ExtSelectClipRgn(dc_, region, RGN_AND);
  DeleteObject(region);
}

bool GdiSurface::IsVisible(const Rect& r) {
  RECT rect{r.left, r.top, r.right, r.bottom};
  return RectVisible(dc_, &rect);
}

void GdiSurface::SelectPen(const Pen& pen) {
  if (!cache_) return SelectOwned(CreatePenFor(pen));
  if (HPEN handle = cache_->PenFor(pen)) SelectObject(dc_, handle);
}

void GdiSurface::SelectFont(const LogFont& font) {
  if (!cache_) {
    LOGFONTW logFont = ToLogFontW(font);
    return SelectOwned(CreateFontIndirectW(&logFont));
  }
  HFONT handle = cache_->FontFor(font);
  if (!handle) return;
  SelectObject(dc_, handle);
  font_ = font;
}

void GdiSurface::SetTextColor(Color color) { ::SetTextColor(dc_, color); }
void GdiSurface::SetTextAlign(uint32_t flags) { ::SetTextAlign(dc_, flags); }
void GdiSurface::SetRasterOp(RasterOp op) { SetROP2(dc_, op == RasterOp::kXor ? R2_XORPEN : R2_COPYPEN); }
Color GdiSurface::BackgroundColor() { return GetBkColor(dc_); }
void GdiSurface::SetBackgroundColor(Color color) { SetBkColor(dc_, color); }
void GdiSurface::SetTextBackground(TextBackground mode) {
  SetBkMode(dc_, mode == TextBackground::kTransparent ? TRANSPARENT : OPAQUE);
}
void GdiSurface::MoveTo(Point p) { MoveToEx(dc_, p.x, p.y, nullptr); }
void GdiSurface::LineTo(Point p) { ::LineTo(dc_, p.x, p.y); }

void GdiSurface::Polyline(std::span<const Point> points) {
  ::Polyline(dc_, reinterpret_cast<const POINT*>(points.data()), int(points.size()));
}

void GdiSurface::FillRect(const Rect& r, Color color) {
  RECT rect{r.left, r.top, r.right, r.bottom};
  ::FillRect(dc_, &rect, SolidBrush(color, cache_));
}

void GdiSurface::FillRegion(const Region& region, Color color) {
  HRGN handle = CreateRegion(region);
  if (!handle) return;
  FillRgn(dc_, handle, SolidBrush(color, cache_));
  DeleteObject(handle);
}

void GdiSurface::Rectangle(const Rect& r, Color fill) {
  SolidBrush brush(fill, cache_);
  HGDIOBJ old = SelectObject(dc_, brush);
  ::Rectangle(dc_, r.left, r.top, r.right, r.bottom);
  SelectObject(dc_, old);
}

void GdiSurface::Pie(const Rect& box, Point first, Point second, Color fill) {
  SolidBrush brush(fill, cache_);
  HGDIOBJ old = SelectObject(dc_, brush);
  ::Pie(dc_, box.left, box.top, box.right, box.bottom, first.x, first.y, second.x, second.y);
  SelectObject(dc_, old);
}

void GdiSurface::WriteText(Point at, TextView text) {
  ::TextOutW(dc_, at.x, at.y, Wide(text), int(text.size()));
}

Size GdiSurface::TextExtent(TextView text) {
  auto measure = [&] {
    SIZE size{};
    GetTextExtentPoint32W(dc_, Wide(text), int(text.size()), &size);
    return Size{size.cx, size.cy};
  };
  return cache_ && font_ ? cache_->Extent(*font_, text, measure) : measure();
}

Color GdiSurface::PixelAt(Point p) { return GetPixel(dc_, p.x, p.y); }
int GdiSurface::Technology() { return GetDeviceCaps(dc_, TECHNOLOGY); }

}  // namespace zel

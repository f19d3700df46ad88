#pragma once
// A surface that records every call as a line of text, with fixed text
// metrics (7 pixels a character, 12 high, whatever the font), so drawing
// rules can be asserted call by call.
#include <algorithm>
#include <cstdio>
#include <string>
#include <vector>

#include "engine/surface.h"

namespace zel {

class RecordingSurface : public Surface {
 public:
  std::vector<std::string> calls;
  // The polygons filled, in order, with their points (the calls name only their size).
  std::vector<Polygon> polygons;
  Color background = 0xFFFFFF;
  int technology = kRasterDisplay;

  // The recorded calls that start with `prefix`.
  std::vector<std::string> Calls(const std::string& prefix) const {
    std::vector<std::string> found;
    for (const std::string& c : calls)
      if (c.rfind(prefix, 0) == 0) found.push_back(c);
    return found;
  }

  void Save() override { Record("Save"); }
  void Restore() override { Record("Restore"); }
  void SetWindowOrigin(Point o) override {
    origin_ = o;
    Record("Origin(%d,%d)", o.x, o.y);
  }
  void ClipTo(const Rect& r) override {
    clip_ = r;
    Record("Clip(%d,%d,%d,%d)", r.left, r.top, r.right, r.bottom);
  }
  void IntersectClip(const Rect& r) override {
    clip_ = {std::max(clip_.left, r.left), std::max(clip_.top, r.top), std::min(clip_.right, r.right),
             std::min(clip_.bottom, r.bottom)};
    Record("IntersectClip(%d,%d,%d,%d)", r.left, r.top, r.right, r.bottom);
  }
  bool IsVisible(const Rect& r) override {
    Rect d{r.left - origin_.x, r.top - origin_.y, r.right - origin_.x, r.bottom - origin_.y};
    return std::max(d.left, clip_.left) < std::min(d.right, clip_.right) &&
           std::max(d.top, clip_.top) < std::min(d.bottom, clip_.bottom);
  }
  void SelectPen(const Pen& p) override {
    Record("Pen(%d,%d,%06X,%s)", p.style, p.width, p.color, p.geometric ? "geometric" : "cosmetic");
  }
  void SelectFont(const LogFont& f) override { Record("Font(%d,%d)", f.lfHeight, f.lfEscapement); }
  void SetTextColor(Color c) override { Record("TextColor(%06X)", c); }
  void SetTextAlign(uint32_t a) override { Record("Align(%u)", a); }
  void SetRasterOp(RasterOp op) override { Record(op == RasterOp::kXor ? "Xor" : "Copy"); }
  Color BackgroundColor() override { return background; }
  void SetBackgroundColor(Color c) override { Record("BkColor(%06X)", c); }
  void SetTextBackground(TextBackground mode) override {
    Record(mode == TextBackground::kTransparent ? "TextBackground(transparent)" : "TextBackground(opaque)");
  }
  void MoveTo(Point p) override { Record("MoveTo(%d,%d)", p.x, p.y); }
  void LineTo(Point p) override { Record("LineTo(%d,%d)", p.x, p.y); }
  void Polyline(std::span<const Point> points) override {
    std::string line = "Polyline(";
    for (const Point& p : points) line += std::to_string(p.x) + "," + std::to_string(p.y) + " ";
    calls.push_back(line + ")");
  }
  void FillRect(const Rect& r, Color c) override {
    Record("FillRect(%d,%d,%d,%d,%06X)", r.left, r.top, r.right, r.bottom, c);
  }
  void FillRegion(const Region& region, Color c) override {
    if (auto* r = std::get_if<Rect>(&region))
      Record("FillBox(%d,%d,%d,%d,%06X)", r->left, r->top, r->right, r->bottom, c);
    else if (auto* e = std::get_if<Ellipse>(&region))
      Record("FillEllipse(%d,%d,%d,%d,%06X)", e->box.left, e->box.top, e->box.right, e->box.bottom, c);
    else {
      polygons.push_back(std::get<Polygon>(region));
      Record("FillPolygon(%zu,%06X)", polygons.back().points.size(), c);
    }
  }
  void Rectangle(const Rect& r, Color c) override {
    Record("Rectangle(%d,%d,%d,%d,%06X)", r.left, r.top, r.right, r.bottom, c);
  }
  void Pie(const Rect& b, Point a, Point z, Color c) override {
    Record("Pie(%d,%d,%d,%d,%d,%d,%d,%d,%06X)", b.left, b.top, b.right, b.bottom, a.x, a.y, z.x, z.y, c);
  }
  void WriteText(Point at, TextView text) override {
    calls.push_back("Text(" + std::to_string(at.x) + "," + std::to_string(at.y) + "," +
                    std::string(text.begin(), text.end()) + ")");
  }
  Size TextExtent(TextView text) override { return {int32_t(7 * text.size()), 12}; }
  Color PixelAt(Point) override { return background; }
  int Technology() override { return technology; }

 private:
  template <typename... Args>
  void Record(const char* format, Args... args) {
    char line[160];
    std::snprintf(line, sizeof line, format, args...);
    calls.push_back(line);
  }

  Point origin_;
  Rect clip_{-100000, -100000, 100000, 100000};
};

}  // namespace zel

#pragma once
// Everything the drawing code does to a device goes through a Surface: GDI's
// operations, narrowed to what the graph needs. The control implements it
// over a device context; tests record the calls or measure only.
//
// Coordinates are logical (moved by the window origin); clip rectangles are
// given in device coordinates, as GDI's clip regions are. Drawing objects are
// values: selecting one replaces the one selected before, and the backend
// creates and deletes the platform object.
#include <cstdint>
#include <span>
#include <variant>
#include <vector>

#include "engine/axis_props.h"
#include "util/font_spec.h"
#include "util/text.h"

namespace zel {

struct Point {
  int32_t x = 0, y = 0;
  bool operator==(const Point&) const = default;
};

struct Size {
  int32_t cx = 0, cy = 0;
  bool operator==(const Size&) const = default;
};

struct Rect {
  int32_t left = 0, top = 0, right = 0, bottom = 0;
  int32_t width() const { return right - left; }
  int32_t height() const { return bottom - top; }
  bool operator==(const Rect&) const = default;
};

enum PenStyle : int { kPenSolid = 0, kPenDash = 1, kPenDot = 2, kPenNull = 5 };

struct Pen {
  int style = kPenSolid;
  int width = 1;
  Color color = 0;
  // A geometric pen (ExtCreatePen with a solid brush) rather than a cosmetic one.
  bool geometric = false;
  bool operator==(const Pen&) const = default;
};

// Text alignment flags as SetTextAlign takes them.
enum TextAlign : uint32_t {
  kAlignLeft = 0,
  kAlignRight = 2,
  kAlignCenter = 6,
  kAlignTop = 0,
  kAlignBottom = 8,
  kAlignBaseline = 24,
};

enum class RasterOp { kCopy, kXor };
// Whether text cells are first filled with the background colour (GDI's
// default) or only the glyphs are drawn.
enum class TextBackground { kOpaque, kTransparent };
enum class FillMode { kAlternate = 1, kWinding = 2 };
enum Technology : int { kRasterDisplay = 1, kRasterPrinter = 2 };

// Areas that are filled as regions: a rectangle, an ellipse in its box, or
// a polygon with its fill mode.
struct Ellipse {
  Rect box;
  bool operator==(const Ellipse&) const = default;
};
struct Polygon {
  std::vector<Point> points;
  FillMode mode = FillMode::kWinding;
  bool operator==(const Polygon&) const = default;
};
using Region = std::variant<Rect, Ellipse, Polygon>;

class Surface {
 public:
  virtual ~Surface() = default;

  // State.
  virtual void Save() = 0;
  virtual void Restore() = 0;
  virtual void SetWindowOrigin(Point origin) = 0;
  // Replaces the clipping with a rectangle in device coordinates.
  virtual void ClipTo(const Rect& deviceRect) = 0;
  // Narrows the clipping to its intersection with a rectangle (device).
  virtual void IntersectClip(const Rect& deviceRect) = 0;
  // Whether any part of a rectangle (logical) lies inside the clipping.
  virtual bool IsVisible(const Rect& rect) = 0;

  // Drawing objects and modes.
  virtual void SelectPen(const Pen& pen) = 0;
  virtual void SelectFont(const LogFont& font) = 0;
  virtual void SetTextColor(Color color) = 0;
  virtual void SetTextAlign(uint32_t flags) = 0;
  virtual void SetRasterOp(RasterOp op) = 0;
  virtual Color BackgroundColor() = 0;
  // The colour behind text and between the dots of a cosmetic pattern pen.
  virtual void SetBackgroundColor(Color color) = 0;
  virtual void SetTextBackground(TextBackground mode) = 0;

  // Lines with the selected pen; shapes filled with a solid colour.
  virtual void MoveTo(Point point) = 0;
  virtual void LineTo(Point point) = 0;
  virtual void Polyline(std::span<const Point> points) = 0;
  virtual void FillRect(const Rect& rect, Color color) = 0;
  virtual void FillRegion(const Region& region, Color color) = 0;
  // Outlined with the selected pen and filled with `fill`.
  virtual void Rectangle(const Rect& rect, Color fill) = 0;
  virtual void Pie(const Rect& box, Point firstRadial, Point secondRadial, Color fill) = 0;

  // Text in the selected font, colour and alignment.
  virtual void WriteText(Point at, TextView text) = 0;
  virtual Size TextExtent(TextView text) = 0;

  // The device.
  virtual Color PixelAt(Point point) = 0;
  virtual int Technology() = 0;
};

}  // namespace zel

#pragma once
// The graph's rectangles, one type per meaning, and the one rule that turns
// positions into pixels.
//
// - Fractions: parts of the whole (unzoomed) data range, in the automation
//   order left, right, bottom, top: the zoom rectangle and a normalised band.
// - FrameRect: pixels of the graph's own frame, x from the left margin and y
//   upward from the bottom margin, every edge inclusive: the plot frame (what
//   is visible) and the data area (the whole range at the current zoom).
// - Margins: pixels between the client edges and the frame, in the automation
//   order left, right, bottom, top.
// - Rect (surface.h): device pixels, y downward, right and bottom exclusive.
//
// A value at fraction t of its axis lies t x extent pixels from the data
// area's low edge (left, or bottom), the extent being the data area's width
// or height. Such an offset becomes a pixel by Pixel (halves upward, in the
// frame); a device row below a base row by RowPixel on the flipped value, which
// is the same pixel seen from the top. Everything drawn or hit uses these two.
#include <cmath>
#include <cstdint>

namespace zel {

struct Fractions {
  float left = 0, right = 1, bottom = 0, top = 1;
  bool operator==(const Fractions&) const = default;
};

struct FrameRect {
  int32_t left = 0, bottom = 0, right = 0, top = 0;
  int32_t width() const { return right - left + 1; }
  int32_t height() const { return top - bottom + 1; }
  bool Contains(int32_t x, int32_t y) const { return x >= left && x <= right && y >= bottom && y <= top; }
  bool operator==(const FrameRect&) const = default;
};

struct Margins {
  int32_t left = 10, right = 10, bottom = 10, top = 10;
  bool operator==(const Margins&) const = default;
};

// Far-off pixels stop here, so that rounding and rectangles cannot overflow.
constexpr double kFarPixel = 1e9;
// GDI holds device coordinates within ±2^27; what is drawn at a far-off
// position that only its clip hides keeps to half of that.
constexpr int32_t kDeviceReach = 1 << 26;

// The nearest pixel of an offset along the frame (and of a device column),
// halves toward the higher pixel, for numbers within kFarPixel.
inline int32_t NearPixel(double v) {
  double h = v + 0.5;
  int32_t t = int32_t(h);
  return t - (h < t);
}

// The nearest device row, halves toward the lower row (upward on screen), so
// that a row of base - offset is base - NearPixel(offset).
inline int32_t NearRow(double v) {
  double h = v - 0.5;
  int32_t t = int32_t(h);
  return t + (h > t);
}

// As NearPixel and NearRow for any double; NaN gives 0.
inline int32_t Pixel(double v) {
  if (std::isnan(v)) return 0;
  return NearPixel(v < -kFarPixel ? -kFarPixel : v > kFarPixel ? kFarPixel : v);
}
inline int32_t RowPixel(double v) {
  if (std::isnan(v)) return 0;
  return NearRow(v < -kFarPixel ? -kFarPixel : v > kFarPixel ? kFarPixel : v);
}

}  // namespace zel

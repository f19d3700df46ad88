#pragma once
// Where an axis's values fall along its pixels, and where its annotations
// and ticks go: the value-to-pixel map and the alignment of the first mark.
#include <cstddef>
#include <cstdint>
#include <vector>

namespace zel {

class VAxis;

struct AxisScale {
  double base = 0;            // the value at pixel 0
  double pixelsPerUnit = 0;   // along the axis
  double annotationStep = 0;  // in values (days for TIME axes)
  double tickStep = 0;
  double alignmentBase = 0;   // what annotations count from (the time of day for sub-day TIME steps)

  double ToPixel(double value) const { return (value - base) * pixelsPerUnit; }
  double ToValue(double pixel) const { return base + pixel / pixelsPerUnit; }
};

// The scale of an axis drawn over `extent` pixels (its whole, unzoomed range).
AxisScale ScaleOf(const VAxis& axis, double extent);

// The distance from `base` to the first multiple of `step` at or after it,
// counted as the control always has: far from 0, `base` is first moved
// toward 0 by a million steps at a time.
double FirstMarkOffset(double base, double step);

// Pixel positions of the marks of `step` from the start of the axis up to
// (not including) `limit`; none for a step that is not positive and finite.
// The positions go into `out`, whose storage is kept from call to call: a
// view zoomed far in has up to 100000 marks, and fresh memory for them on
// every frame would cost more than drawing them.
void MarkPositions(const AxisScale& scale, double step, double limit, std::vector<double>& out);

// The value of the `index`th mark of `step` (what MarkPositions gives the
// pixel of).
double MarkValue(const AxisScale& scale, double step, size_t index);

}  // namespace zel

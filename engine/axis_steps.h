#pragma once
// How far apart the annotations and ticks of an axis lie. A host may give
// the steps; the axis computes them itself at every layout when it does not,
// from its range and the scale s = 1 / (visible extent as a fraction of the
// whole range), so 1 when unzoomed.

#include <cstdint>

namespace zel {

struct AxisSteps {
  float annotation = 0;
  float tick = 0;
  float timeUnitLength = 0;  // days per unit of the steps; TIME axes only
};

// A given annotation step is kept only when the product of its fraction and
// integer parts is positive: a non-whole step above 1 (2.5 is kept; 0.5, 1, 5
// and 10 are not). A kept step keeps the given tick step by the same test, or
// ticks at every annotation. Returns false when the steps become automatic.
bool KeepsGivenSteps(float annotationStep, float& tickStep);

// 1, 2 or 5 times a power of ten near an eighth of the range.
AxisSteps AutomaticRealSteps(double min, double max, double scale);
AxisSteps AutomaticIntegerSteps(int32_t min, int32_t max, double scale);

// A count of time units (a year, half a year, two months, a month, 31 days,
// a day, an hour, a minute, a second or a fraction of one) near a tenth of
// the range; report type 1 aims at a seventh, report type 2 at one label per
// day of the span.
AxisSteps AutomaticTimeSteps(double min, double max, double scale, int reportType);

}  // namespace zel

#pragma once
// The BAR routine: each point a filled rectangle from the bar base up to its
// value, the BAR datasets of a graph side by side in groups.
#include <array>
#include <cstdint>

#include "engine/curve_points.h"
#include "engine/surface.h"

namespace zel {

class VAxis;
class VDataset;

// What the bar routines need of the graph.
struct BarFrame {
  CurveArea area;
  // The BAR datasets of the graph: the size of a group.
  int32_t barCount = 1;
  // PutBarWidth's percentage of the automatic width; -1 is "Auto Width".
  int32_t widthPercent = -1;
  // The graph's first four Y axes, null where it has fewer; a bar stands on
  // the minimum of the one its dataset's YaxisID names.
  std::array<const VAxis*, 4> yAxes{};
};

// Samples are taken every `SamplePitch` pixels along the data area, from
// its left edge: the width shared among the points, but no less than
// kMinSamplePitch. Zooming in widens the data area, so more points become
// bars.
constexpr int32_t kMinSamplePitch = 32;
int32_t SamplePitch(int32_t width, size_t count);

// The width of one bar on an axis that is not DISCRETE: (p / 2 - 6) / nBars,
// or (p - 10) / nBars in value modes 1 and 3; then 1 to 10 pixels for
// "Auto Width" (-1), else percent * base / 100, and 1 when that product is
// below 100.
int32_t BarWidth(int32_t pitch, int32_t barCount, int valueMode, int32_t percent);

// Where a bar of `width` stands on a DISCRETE axis: categories are `pitch`
// pixels apart and a category's mark is its right edge; the dataset's slot
// in the axis's bar list places the bar at round((slot + 0.5) * width)
// from the category's left edge.
int32_t DiscreteBarLeft(int32_t mark, int32_t pitch, int32_t slot, int32_t width);

// Draws the points of a BAR dataset as bars in the line colour (blinking
// when highlighted). On a DISCRETE X axis every point is a bar in the
// dataset's slot; otherwise the process-wide value mode picks the width and
// placement, the running bar index the place in the group, and in value
// mode 0 only the first point at or after each sample position becomes a
// bar (the cursor then moves to the first sample after it). Advances the
// running bar index (wrapping at barCount; a highlighted draw sets it to 0).
void DrawBars(Surface& surface, VDataset& dataset, const BarFrame& frame, bool highlighted);

// The pixel row a bar of `dataset` stands on.
int32_t BarBase(const VDataset& dataset, const BarFrame& frame);

// A bar from `base` to `top` between left and right, normalised and held
// within a pixel of the data area, filled.
void FillBar(Surface& surface, CurveArea area, int32_t left, int32_t right, int32_t base, int32_t top,
             Color color);

}  // namespace zel

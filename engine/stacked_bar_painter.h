#pragma once
// The STACKED BAR routine. The STACKED BAR datasets of a graph are stacked
// in list order: at each x value (each category on a DISCRETE axis) the
// first dataset's segment runs from the value 0 to its value, and each
// following dataset's from the top reached so far to that top plus its
// value, so negative values stack downward. Datasets on different Y axes
// keep separate stacks.
#include <cstdint>
#include <unordered_map>

#include "engine/bar_painter.h"

namespace zel {

class VAxis;
class VDataset;

// The tops of the stacks of one drawing pass.
class BarStacks {
 public:
  // The top at x on an axis (0 at first), which then grows by `value`.
  double Raise(const VAxis* axis, double x, double value);

 private:
  struct Key {
    const VAxis* axis;
    double x;
    bool operator==(const Key&) const = default;
  };
  struct KeyHash {
    size_t operator()(const Key& key) const;
  };
  std::unordered_map<Key, double, KeyHash> tops_;
};

// Horizontal extent of each segment: on a DISCRETE X axis the width and
// place of a single bar in its category (half the category pitch, centred);
// otherwise by realXbarMode: non-zero, from the midpoint with the previous
// drawn point to the midpoint with the next (the last reaching to the X
// axis maximum); 0, from the previous point's x to the point's own. With
// no previous point a segment starts at the X axis minimum. Filled in the
// line colour, blinking as a bar when highlighted.
void DrawStackedBars(Surface& surface, VDataset& dataset, BarStacks& stacks, const BarFrame& frame,
                     bool highlighted);

}  // namespace zel

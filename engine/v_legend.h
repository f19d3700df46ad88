#pragma once
// The legend: one entry per curve (line sample, marker and title) in a
// rectangle beside the plot. The graph reserves the rectangle during layout
// and draws the legend after the curves.
#include <cstdint>

#include "engine/id_map.h"
#include "engine/surface.h"

namespace zel {

class VDataset;

class VLegend {
 public:
  // Position codes as LegendPosition stores them; any other code counts as
  // kBottom. Left and right are the side positions (one entry a row), top
  // and bottom the band positions (entries flow left to right).
  enum Position : int32_t { kBottom = 0, kRight = 1, kTop = 2, kLeft = 3 };

  explicit VLegend(const IdMap<VDataset>& datasets) : datasets_(datasets) {}

  static bool IsSide(int32_t position) { return position == kRight || position == kLeft; }

  // The room the legend needs across its side of the graph: a width for the
  // side positions, a height for the band positions, whose entries wrap
  // within `along` pixels. `scale` is the printer scale factor (1 on screen).
  int32_t Measure(Surface& surface, int32_t position, int32_t along, double scale) const;

  // Draws the legend in `rect` (device pixels, window origin at 0,0).
  void Draw(Surface& surface, double scale) const;

  int32_t position = kBottom;
  Rect rect;

 private:
  const IdMap<VDataset>& datasets_;
};

}  // namespace zel

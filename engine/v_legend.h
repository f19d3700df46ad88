#pragma once
// The legend: one entry per curve (line sample, marker and title) in a
// rectangle beside the plot. The graph reserves the rectangle during layout
// and draws the legend after the curves.
#include <cstdint>

#include "engine/id_map.h"
#include "engine/surface.h"

namespace zel {

class VDataset;

// Where the legend stands, as the LegendPosition keywords say; kNone is what
// a read-back without a legend leaves, and counts as the bottom.
enum class LegendPosition : int32_t { kNone = -1, kBottom = 0, kRight = 1, kTop = 2, kLeft = 3 };

class VLegend {
 public:
  // Left and right are the side positions (one entry a row), top and bottom
  // the band positions (entries flow left to right).
  using Position = LegendPosition;
  static constexpr Position kBottom = Position::kBottom;
  static constexpr Position kRight = Position::kRight;
  static constexpr Position kTop = Position::kTop;
  static constexpr Position kLeft = Position::kLeft;

  // At most this many datasets, the first in the graph's order, are listed.
  static constexpr size_t kMaxEntries = 20;

  explicit VLegend(const IdMap<VDataset>& datasets) : datasets_(datasets) {}

  static bool IsSide(Position position) { return position == kRight || position == kLeft; }
  // Where a position puts the legend: kNone counts as the bottom.
  static Position Placed(Position position) { return position == Position::kNone ? kBottom : position; }

  // The room the legend needs across its side of the graph: a width for the
  // side positions, a height for the band positions, whose entries wrap
  // within `along` pixels (measured as Draw measures the rectangle's width,
  // right - left + 1). `scale` is the printer scale factor; it applies only
  // on a raster printer. 0 when there is no dataset to list.
  int32_t Measure(Surface& surface, Position position, int32_t along, double scale) const;

  // Draws the legend in `rect` (device pixels, right and bottom exclusive,
  // window origin at 0,0), clipped to it: a separator along the side that
  // faces the plot, drawn in XOR, then the entries. Nothing when the
  // rectangle is empty.
  void Draw(Surface& surface, double scale) const;

  Position position = kBottom;
  Rect rect;

 private:
  void DrawSeparator(Surface& surface) const;

  const IdMap<VDataset>& datasets_;
};

}  // namespace zel

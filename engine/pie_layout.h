#pragma once
// Where a pie and its slice labels go in the pie's rectangle: the diameter,
// shrunk so that the labels fit beside or below the pie, and the label
// positions.
#include <cstdint>
#include <span>
#include <vector>

namespace zel {

// Offsets of a label's parts from its place (labelX, labelY): the colour
// swatch starts 5 pixels in and 2 down, and is 24 wide and 12 high; the text
// starts 29 pixels in. A label row is at least as high as the swatch.
inline constexpr int32_t kPieLabelLeft = 5;
inline constexpr int32_t kPieLabelTop = 2;
inline constexpr int32_t kPieSwatchWidth = 24;
inline constexpr int32_t kPieSwatchHeight = 12;
inline constexpr int32_t kPieLabelTextOffset = 29;
// The band above the pie holds the title: its line height plus this.
inline constexpr int32_t kPieTitleBand = 10;

// The height of the band above the pie for a title font whose lines are
// `titleLineHeight` high. Layout leaves it free and drawing puts the pie
// right under it, so both take it from here.
int32_t PieTitleBand(int32_t titleLineHeight);

struct PieLayout {
  int32_t titleBand = 0;
  int32_t diameter = 0;
  // One place a slice, relative to the pie's rectangle.
  std::vector<int32_t> labelX;
  std::vector<int32_t> labelY;
  // How far the labels pass the right and the bottom edge; negative when
  // they leave room.
  int32_t overflowX = 0;
  int32_t overflowY = 0;
};

// Lays a pie out in `width` by `height` pixels, under a title whose lines are
// `titleLineHeight` high, for labels whose texts are `labelWidths` wide and
// `lineHeight` high.
//
// The pie starts as large as the space under the title band allows. Labels
// go first in rows to the right of the pie; while they pass an edge, the
// diameter shrinks by the overflow, but not below a minimum that depends on
// how elongated the space is. If they still do not fit, they go in rows
// below the pie, the diameter shrinking by the vertical overflow down to the
// same minimum.
PieLayout LayOutPie(int32_t width, int32_t height, int32_t titleLineHeight, int32_t lineHeight,
                    std::span<const int32_t> labelWidths);

}  // namespace zel

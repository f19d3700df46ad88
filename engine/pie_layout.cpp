#include "engine/pie_layout.h"
#include "util/win32_arith.h"

#include <algorithm>
#include <limits>

namespace zel {
namespace {

// Free space between one label's text and the next label's swatch in a row.
constexpr int64_t kLabelSpacing = 10;

// Labels placed in rows, and the far right and bottom edges they reach
// (one past their last pixel), relative to the pie's rectangle.
struct Placement {
  std::vector<int32_t> xs, ys;
  int64_t right = 0;
  int64_t bottom = 0;
};

// Places the labels left to right from (startX, startY), rows `pitch` apart.
// A label that would pass the right edge starts a new row at startX, unless
// it is the first of its row already: a label wider than the space stays
// where it is and overflows.
Placement Flow(std::span<const int32_t> widths, int64_t startX, int64_t startY, int64_t width,
               int64_t pitch) {
  Placement p;
  p.xs.reserve(widths.size());
  p.ys.reserve(widths.size());
  int64_t x = startX, y = startY;
  for (int32_t textWidth : widths) {
    int64_t extent = kPieLabelLeft + kPieLabelTextOffset + std::max<int64_t>(textWidth, 0);
    if (x > startX && x + extent > width) {
      x = startX;
      y += pitch;
    }
    p.xs.push_back(ClampToInt32(x));
    p.ys.push_back(ClampToInt32(y));
    p.right = std::max(p.right, x + extent);
    p.bottom = std::max(p.bottom, y + kPieLabelTop + pitch);
    x += extent - kPieLabelLeft + kLabelSpacing;
  }
  return p;
}

// The smallest diameter the labels may squeeze the pie to: the larger
// share, r / (r + 1), of the diameter, r being the ratio of the long side
// of the space under the title band to its short side. An elongated space
// has room for labels along its long side, so its pie shrinks little.
int64_t MinDiameter(int64_t width, int64_t below, int64_t diameter) {
  if (diameter <= 0) return 0;
  double r = width < below ? double(below) / double(width) : double(width) / double(below);
  return int64_t(r * double(diameter) / (r + 1));
}

}  // namespace

int32_t PieTitleBand(int32_t titleLineHeight) {
  return ClampToInt32(int64_t(std::max(titleLineHeight, 0)) + kPieTitleBand);
}

PieLayout LayOutPie(int32_t width, int32_t height, int32_t titleLineHeight, int32_t lineHeight,
                    std::span<const int32_t> labelWidths) {
  PieLayout layout;
  layout.titleBand = PieTitleBand(titleLineHeight);
  if (labelWidths.empty()) {
    layout.overflowX = ClampToInt32(-int64_t(width));
    layout.overflowY = ClampToInt32(-int64_t(height));
    return layout;
  }
  int64_t w = width, h = height;
  int64_t band = layout.titleBand;
  int64_t below = h - band;
  int64_t full = std::max<int64_t>(0, std::min(w, below));
  int64_t minimum = MinDiameter(w, below, full);
  // Rows are as high as a drawn label: the text, or the swatch when that is higher.
  int64_t pitch = std::max<int64_t>(lineHeight, kPieSwatchHeight);
  // The drawing skips labels that pass the last column or row of the
  // rectangle, so overflow is counted from there.
  auto overX = [&](const Placement& p) { return p.right - (w - 1); };
  auto overY = [&](const Placement& p) { return p.bottom - (h - 1); };

  int64_t d = full;
  Placement p = Flow(labelWidths, d, band, w - 1, pitch);
  for (int64_t over = std::max(overX(p), overY(p)); over > 0 && d > minimum;
       over = std::max(overX(p), overY(p))) {
    d = std::max(minimum, d - over);
    p = Flow(labelWidths, d, band, w - 1, pitch);
  }
  if (std::max(overX(p), overY(p)) > 0) {
    d = full;
    p = Flow(labelWidths, 0, band + d, w - 1, pitch);
    while (overY(p) > 0 && d > minimum) {
      d = std::max(minimum, d - overY(p));
      p = Flow(labelWidths, 0, band + d, w - 1, pitch);
    }
  }
  layout.diameter = ClampToInt32(d);
  layout.labelX = std::move(p.xs);
  layout.labelY = std::move(p.ys);
  layout.overflowX = ClampToInt32(overX(p));
  layout.overflowY = ClampToInt32(overY(p));
  return layout;
}

}  // namespace zel

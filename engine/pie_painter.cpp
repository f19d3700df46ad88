// Drawing a pie: its title, the slice labels with their colour swatches, and
// the wedges, from 12 o'clock clockwise, all clipped to the pie's rectangle.
#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <limits>

#include "engine/frame_geometry.h"
#include "engine/pie_layout.h"
#include "engine/v_pie_dataset.h"
#include "util/value.h"
#include "util/win32_arith.h"

namespace zel {
namespace {

// A full turn as the slice angles have always been computed with.
constexpr double kFullTurn = 6.2831852;
// A label is drawn only when this much of it, from its swatch's left edge,
// fits inside the right edge.
constexpr int64_t kLabelMinimumRoom = 37;
constexpr int32_t kTitleLeft = 10;
constexpr int32_t kTitleTop = 5;
// The wedges are drawn this much inside the laid-out circle.
constexpr int32_t kWedgeInset = 3;

// The height of a line of text in the selected font, whatever the text.
int32_t LineHeight(Surface& surface) { return surface.TextExtent(u"0").cy; }

// The point on the circle at `angle` radians clockwise from 12 o'clock; the
// offsets from the centre are truncated to whole pixels.
Point Radial(Point centre, int32_t radius, double angle) {
  return {centre.x + int32_t(radius * std::sin(angle)), centre.y - int32_t(radius * std::cos(angle))};
}

}  // namespace

void VPieDataset::DrawPie(Surface& surface, Point windowOrigin) const {
  if (count_ == 0) return;
  surface.Save();
  const Rect& r = plotRect_;
  // The clip is in device units; a pie zoomed far away is clipped at the
  // edge of what GDI holds, which shows the same nothing.
  auto device = [](int64_t v) { return int32_t(std::clamp<int64_t>(v, -kDeviceReach, kDeviceReach)); };
  // The title, a label or the pie anchored farther off than that is far
  // outside any window: it is left out rather than sent past what GDI holds.
  auto near = [&](Point p) {
    return std::llabs(int64_t(p.x) - windowOrigin.x) <= kDeviceReach &&
           std::llabs(int64_t(p.y) - windowOrigin.y) <= kDeviceReach;
  };
  surface.IntersectClip({device(int64_t(r.left) - windowOrigin.x), device(int64_t(r.top) - windowOrigin.y),
                         device(int64_t(r.right) - windowOrigin.x), device(int64_t(r.bottom) - windowOrigin.y)});
  surface.SelectPen({kPenSolid, 1, 0});
  surface.SetTextAlign(kAlignLeft | kAlignTop);

  surface.SelectFont(titleFont());
  surface.SetTextColor(titleColor());
  Point titleAt{r.left + kTitleLeft, r.top + kTitleTop};
  if (near(titleAt)) surface.WriteText(titleAt, title());

  surface.SelectFont(textFont());
  surface.SetTextColor(textColor());
  int32_t textHeight = LineHeight(surface);
  int32_t rowHeight = std::max(textHeight, kPieSwatchHeight);
  for (size_t i = 0; i < count_; ++i) {
    int64_t lx = int64_t(r.left) + kPieLabelLeft + labelX_[i];
    int64_t ly = int64_t(r.top) + kPieLabelTop + labelY_[i];
    if (lx + kLabelMinimumRoom > r.right || ly + rowHeight > r.bottom) continue;
    int32_t x = int32_t(lx), y = int32_t(ly);
    if (!near({x, y})) continue;
    int32_t swatchTop = y + (rowHeight - kPieSwatchHeight) / 2;
    surface.Rectangle({x, swatchTop, x + kPieSwatchWidth, swatchTop + kPieSwatchHeight}, sliceColors_[i]);
    surface.WriteText({x + kPieLabelTextOffset, y + (rowHeight - textHeight) / 2},
                      VariantDisplayText(labels_[i]));
  }

  // The sizes add up in single precision, slice by slice, as they always have.
  float total = 0;
  for (size_t i = 0; i < count_; ++i) total += sizes_[i];
  int32_t radius = pieDiameter_ / 2, drawn = radius - kWedgeInset;
  // All sizes zero (or not numbers) leave no angle to share out.
  Point centre{ClampToInt32(int64_t(r.left) + radius), ClampToInt32(int64_t(r.top) + titleBand_ + radius)};
  if (total != 0 && std::isfinite(total) && drawn > 0 && near(centre)) {
    // The pie stands right under the title band that the layout left free,
    // so it fits the diameter the layout chose.
    Rect box{centre.x - drawn, centre.y - drawn, centre.x + drawn, centre.y + drawn};
    double from = 0;
    for (size_t i = 0; i < count_; ++i) {
      double to = from + double(sizes_[i]) * kFullTurn / double(total);
      Point start = Radial(centre, drawn, from), end = Radial(centre, drawn, to);
      // A pie between two equal radials is a whole disc: an empty slice
      // draws nothing instead.
      if (!(start == end)) surface.Pie(box, end, start, sliceColors_[i]);
      from = to;
    }
  }
  surface.Restore();
}

}  // namespace zel

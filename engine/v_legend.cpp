#include "engine/v_legend.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "engine/curve_painter.h"
#include "engine/dataset_keywords.h"
#include "engine/v_dataset.h"
#include "util/win32_arith.h"

namespace zel {
namespace {

constexpr int32_t kSideRowSpacing = 14;
constexpr int32_t kBandRowSpacing = 6;
constexpr int32_t kRowTop = 3;
constexpr Color kSeparatorColor = 0xFFFFFF;
// A scale beyond any printer's, which keeps the scaled pixels in range.
constexpr double kMaxScale = 100;

// The legend's pixel sizes at scale s: gap before the line sample, the
// sample's length, the first row's offset and the indent of the titles.
struct LegendMetrics {
  explicit LegendMetrics(double s)
      : scale(s),
        gap(int32_t(10 * s)),
        sample(int32_t(32 * s)),
        firstRow(4 + int32_t(7 * s)),
        indent(sample + int32_t(10 * s) + gap),
        markerWidth(int32_t(s)) {}
  double scale;
  int32_t gap, sample, firstRow, indent, markerWidth;
};

// The printer scale factor on a raster printer, 1 on any other device.
double ScaleOn(Surface& surface, double printScale) {
  if (surface.Technology() != kRasterPrinter || !(printScale > 0)) return 1;
  return std::min(printScale, kMaxScale);
}

LogFont ScaledFont(LogFont font, double scale) {
  font.lfHeight = ClampToInt32(int64_t(double(font.lfHeight) * scale));
  return font;
}

// Where entries go, one after the other: at a side each in a row of its
// own, rows 14 + text height apart; in a band left to right, a new row
// starting 6 + the height of the row's tallest text lower when the next
// entry would pass the legend's width. The first entry of a row stays even
// when it is wider.
class EntryFlow {
 public:
  EntryFlow(bool side, int64_t width, const LegendMetrics& metrics)
      : side_(side), width_(width), indent_(metrics.indent), row_(metrics.firstRow) {}

  // The next entry's x from the legend's left edge and its row's offset.
  Point Next(Size text) {
    int64_t room = int64_t(indent_) + std::max(text.cx, 0);
    if (side_) {
      if (entries_++ > 0) row_ += kSideRowSpacing + previousHeight_;
      previousHeight_ = text.cy;
      rowHeight_ = text.cy;
      widest_ = std::max(widest_, room);
      return {0, ClampToInt32(row_)};
    }
    if (x_ > 0 && x_ + room > width_) {
      x_ = 0;
      row_ += kBandRowSpacing + rowHeight_;
      rowHeight_ = 0;
    }
    Point at{ClampToInt32(x_), ClampToInt32(row_)};
    x_ += room;
    rowHeight_ = std::max<int64_t>(rowHeight_, text.cy);
    widest_ = std::max(widest_, room);
    ++entries_;
    return at;
  }

  bool empty() const { return entries_ == 0; }
  int64_t widest() const { return widest_; }
  // The offset of the last row, and the height of its text.
  int64_t row() const { return row_; }
  int64_t rowHeight() const { return rowHeight_; }

 private:
  bool side_;
  int64_t width_;
  int64_t indent_;
  int64_t row_;
  int64_t x_ = 0;
  int64_t rowHeight_ = 0;
  int64_t previousHeight_ = 0;
  int64_t widest_ = 0;
  int entries_ = 0;
};

// Calls `visit(dataset, textSize)` for each listed dataset, with its title
// font selected on the surface.
template <typename Visit>
void ForEachEntry(const IdMap<VDataset>& datasets, Surface& surface, double scale, Visit visit) {
  size_t listed = std::min(datasets.size(), VLegend::kMaxEntries);
  for (size_t i = 0; i < listed; ++i) {
    const VDataset& dataset = *datasets.entries()[i].object;
    surface.SelectFont(ScaledFont(dataset.titleFont(), scale));
    // A line is as high as the font, whatever its text, so an empty title
    // still takes a row.
    Size text{surface.TextExtent(dataset.title()).cx, surface.TextExtent(u"0").cy};
    visit(dataset, text);
  }
}

bool HasMarker(const VDataset& dataset) {
  return dataset.type() != kBar && dataset.type() != kStackedBar && dataset.markerShape() != kMarkerNone;
}

// The pen of a line sample, made as CreatePen makes it: cosmetic, solid for
// a style it does not know.
Pen SamplePen(const VDataset& dataset) {
  int style = dataset.lineStyle();
  if (style != kPenDash && style != kPenDot) style = kPenSolid;
  return {style, dataset.lineWidth(), dataset.lineColor(), false};
}

}  // namespace

int32_t VLegend::Measure(Surface& surface, Position position, int32_t along, double scale) const {
  double s = ScaleOn(surface, scale);
  LegendMetrics metrics(s);
  EntryFlow flow(IsSide(position), along, metrics);
  surface.Save();
  ForEachEntry(datasets_, surface, s, [&](const VDataset&, Size text) { flow.Next(text); });
  surface.Restore();
  if (flow.empty()) return 0;
  // Across a side: the widest entry and a gap after it. Across a band: the
  // rows, with the first row's offset again below the last.
  if (IsSide(position)) return ClampToInt32(flow.widest() + metrics.gap);
  return ClampToInt32(kRowTop + flow.row() + flow.rowHeight() + metrics.firstRow);
}

void VLegend::Draw(Surface& surface, double scale) const {
  if (rect.right <= rect.left || rect.bottom <= rect.top) return;
  double s = ScaleOn(surface, scale);
  LegendMetrics metrics(s);
  EntryFlow flow(IsSide(position), int64_t(rect.right) - rect.left + 1, metrics);
  surface.Save();
  surface.IntersectClip(rect);
  DrawSeparator(surface);
  surface.SetTextAlign(kAlignLeft | kAlignTop);
  ForEachEntry(datasets_, surface, s, [&](const VDataset& dataset, Size text) {
    Point at = flow.Next(text);
    int32_t left = rect.left + at.x;
    int32_t y = ClampToInt32(int64_t(rect.top) + kRowTop + text.cy / 2 + at.y);
    surface.SetTextColor(dataset.titleColor());
    surface.SelectPen(SamplePen(dataset));
    surface.MoveTo({left + metrics.gap, y});
    surface.LineTo({left + metrics.gap + metrics.sample, y});
    if (HasMarker(dataset))
      surface.FillRegion(MarkerRegion({left + metrics.sample / 2 + metrics.gap, y + 1}, dataset.markerShape(),
                                      metrics.markerWidth),
                         dataset.markerColor());
    surface.WriteText({left + metrics.indent, y - text.cy / 2}, dataset.title());
  });
  surface.Restore();
}

void VLegend::DrawSeparator(Surface& surface) const {
  // The line lies on the legend's own edge next to the plot: its left or
  // right column at a side, its top or bottom row in a band.
  int32_t at = position == kRight  ? rect.left
               : position == kLeft ? rect.right - 1
               : position == kTop  ? rect.bottom - 1
                                   : rect.top;
  bool side = IsSide(position);
  Point from = side ? Point{at, rect.top} : Point{rect.left, at};
  Point to = side ? Point{at, rect.bottom} : Point{rect.right, at};
  surface.SetRasterOp(RasterOp::kXor);
  surface.SelectPen({kPenSolid, 1, kSeparatorColor});
  surface.MoveTo(from);
  surface.LineTo(to);
  surface.SetRasterOp(RasterOp::kCopy);
}

}  // namespace zel

#include "engine/stacked_bar_painter.h"

#include <algorithm>
#include <bit>
#include <functional>
#include <optional>

#include "engine/curve_look.h"
#include "engine/v_axis.h"
#include "engine/v_dataset.h"

namespace zel {
namespace {

// Hands the stored values through as they are (the loop still leaves out
// absent points and NaN).
struct ValueMap {
  double X(double v) const { return v; }
  double Y(double v) const { return v; }
};

// One segment waiting for its right edge, which may depend on the next point.
struct Segment {
  double x;  // pixel
  int32_t bottom, top;
};

// Draws the segments of a non-DISCRETE X axis, each once its successor is known.
class SegmentRow {
 public:
  SegmentRow(Surface& surface, const BarFrame& frame, bool midpoints, Color color)
      : surface_(surface), frame_(frame), midpoints_(midpoints), color_(color) {}

  void Add(const Segment& segment) {
    if (pending_) Draw(*pending_, segment.x);
    previousX_ = pending_ ? std::optional<double>(pending_->x) : std::nullopt;
    pending_ = segment;
  }
  void Finish() {
    if (pending_) Draw(*pending_, std::nullopt);
  }

 private:
  void Draw(const Segment& s, std::optional<double> nextX) {
    int32_t left = 0, right;
    if (midpoints_) {
      if (previousX_) left = Pixel((*previousX_ + s.x) / 2);
      right = nextX ? Pixel((s.x + *nextX) / 2) : frame_.area.width;
    } else {
      if (previousX_) left = Pixel(*previousX_);
      right = Pixel(s.x);
    }
    FillBar(surface_, frame_.area, left, right, s.bottom, s.top, color_);
  }

  Surface& surface_;
  const BarFrame& frame_;
  bool midpoints_;
  Color color_;
  std::optional<Segment> pending_;
  std::optional<double> previousX_;
};

}  // namespace

size_t BarStacks::KeyHash::operator()(const Key& key) const {
  double x = key.x == 0 ? 0.0 : key.x;  // -0 and 0 share a stack
  return std::hash<const VAxis*>()(key.axis) ^ (std::hash<uint64_t>()(std::bit_cast<uint64_t>(x)) * 31);
}

double BarStacks::Raise(const VAxis* axis, double x, double value) {
  double& top = tops_[{axis, x == 0 ? 0.0 : x}];
  double bottom = top;
  top += value;
  return bottom;
}

void DrawStackedBars(Surface& surface, VDataset& dataset, BarStacks& stacks, const BarFrame& frame,
                     bool highlighted) {
  if (!HasAxes(dataset)) return;
  Color color = BarColor(dataset, highlighted);
  PointMap map(dataset, frame.area);
  bool discrete = dataset.xAxis()->type() == kAxisDiscrete;
  int32_t pitch = Pixel(map.PlainX(2)) - Pixel(map.PlainX(1));
  SegmentRow row(surface, frame, dataset.realXbarMode() != 0, color);
  ForEachDrawnPoint(dataset, ValueMap{}, [&](size_t, double x, double y, int32_t) {
    double bottom = stacks.Raise(dataset.yAxis(), x, y);
    Segment segment{map.PlainX(x), RowPixel(map.PlainY(bottom)), RowPixel(map.PlainY(bottom + y))};
    dataset.NoteDrawnAsBars();
    if (!discrete) {
      row.Add(segment);
      return;
    }
    int32_t width = pitch / 2;
    int32_t left = DiscreteBarLeft(Pixel(segment.x), pitch, 0, width);
    FillBar(surface, frame.area, left, int32_t(std::min<int64_t>(int64_t(left) + width, kFarPixel)), segment.bottom,
            segment.top, color);
  });
  row.Finish();
}

}  // namespace zel

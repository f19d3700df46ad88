#include "engine/bar_painter.h"

#include <algorithm>

#include "engine/curve_look.h"
#include "engine/v_axis.h"
#include "engine/v_dataset.h"
#include "util/process_state.h"
#include "util/value_conversion.h"

namespace zel {
namespace {

// No bar is wider than this many pixels, whatever percentage is asked for.
constexpr int64_t kWidestBar = 1 << 24;
// Bar edges stop as far off as points do.
int32_t Far(int64_t v) { return int32_t(std::clamp<int64_t>(v, -int64_t(kFarPixel), int64_t(kFarPixel))); }

// Bars meet the axes where the marks are: no half-category shift.
struct MarkMap {
  const PointMap& map;
  double X(double v) const { return map.PlainX(v); }
  double Y(double v) const { return map.PlainY(v); }
};

int32_t SlotOf(const VDataset& dataset, VAxis& axis) {
  const auto& bars = axis.barList();
  auto found = std::find_if(bars.begin(), bars.end(), [&](const BarSlot& s) { return s.dataset == &dataset; });
  // A dataset that became a BAR after it was created is in no list; it takes
  // the spare slot that the width leaves after the registered ones.
  return int32_t(found - bars.begin());
}

void DrawDiscreteBars(Surface& surface, VDataset& dataset, const PointMap& map, const BarFrame& frame,
                      int32_t base, Color color) {
  VAxis& axis = *dataset.xAxis();
  int32_t pitch = Pixel(map.PlainX(2)) - Pixel(map.PlainX(1));
  int32_t width = pitch / int32_t(axis.barList().size() + 1);
  int32_t slot = SlotOf(dataset, axis);
  ForEachDrawnPoint(dataset, MarkMap{map}, [&](size_t, double x, double y, int32_t) {
    int32_t left = DiscreteBarLeft(Pixel(x), pitch, slot, width);
    FillBar(surface, frame.area, left, Far(int64_t(left) + width), base, RowPixel(y), color);
    dataset.NoteDrawnAsBars();
  });
}

void DrawSampledBars(Surface& surface, VDataset& dataset, const PointMap& map, const BarFrame& frame,
                     int32_t base, Color color) {
  int valueMode = Process().valueMode;
  int32_t nBars = std::max(frame.barCount, 1);
  int32_t pitch = SamplePitch(frame.area.width, dataset.count());
  int32_t width = BarWidth(pitch, nBars, valueMode, frame.widthPercent);
  int32_t slot = Process().runningBarIndex;
  double nextSample = 0;
  ForEachDrawnPoint(dataset, MarkMap{map}, [&](size_t, double x, double y, int32_t) {
    int32_t group;
    if (valueMode == 0) {
      if (x < nextSample || x > frame.area.width) return;
      nextSample = (std::floor(x / pitch) + 1) * pitch;
      group = Pixel(x - pitch / 2.0) + Pixel((pitch - double(nBars) * width) / 2);
    } else {
      group = Pixel(x - double(nBars) * width / 2);
    }
    int64_t left = int64_t(group) + int64_t(slot) * width;
    FillBar(surface, frame.area, Far(left), Far(left + width), base, RowPixel(y), color);
    dataset.NoteDrawnAsBars();
  });
}

}  // namespace

int32_t SamplePitch(int32_t width, size_t count) {
  int64_t shared = count > 0 ? int64_t(std::max(width, 0)) / int64_t(count) : int64_t(std::max(width, 0));
  return int32_t(std::max<int64_t>(shared, kMinSamplePitch));
}

int32_t BarWidth(int32_t pitch, int32_t barCount, int valueMode, int32_t percent) {
  int32_t nBars = std::max(barCount, 1);
  int32_t base = valueMode == 1 || valueMode == 3 ? (pitch - 10) / nBars : (pitch / 2 - 6) / nBars;
  if (percent == -1) return std::clamp(base, 1, 10);
  int64_t product = int64_t(percent) * base;
  if (product < 100) return 1;
  return int32_t(std::min(product / 100, kWidestBar));
}

int32_t DiscreteBarLeft(int32_t mark, int32_t pitch, int32_t slot, int32_t width) {
  return Far(int64_t(mark) - pitch + Pixel((slot + 0.5) * width));
}

int32_t BarBase(const VDataset& dataset, const BarFrame& frame) {
  int position = dataset.yAxisId() < 1 || dataset.yAxisId() > 4 ? 1 : dataset.yAxisId();
  // A position with no Y axis behind it falls back to the dataset's own.
  const VAxis* axis = frame.yAxes[size_t(position - 1)] ? frame.yAxes[size_t(position - 1)] : dataset.yAxis();
  AxisScale scale = ScaleOf(*axis, frame.area.height);
  return RowPixel(frame.area.bottom() - scale.ToPixel(NumberOf(axis->min())));
}

void FillBar(Surface& surface, CurveArea area, int32_t left, int32_t right, int32_t base, int32_t top,
             Color color) {
  int32_t width = std::max(area.width, 0), height = std::max(area.height, 0);
  auto across = [&](int32_t v) { return std::clamp(v, -1, width + 1); };
  auto down = [&](int32_t v) { return std::clamp(v, -1, height + 1); };
  Rect bar{across(std::min(left, right)), down(std::min(base, top)), across(std::max(left, right)),
           down(std::max(base, top))};
  surface.FillRect(bar, color);
}

void DrawBars(Surface& surface, VDataset& dataset, const BarFrame& frame, bool highlighted) {
  if (!HasAxes(dataset)) return;
  int32_t nBars = std::max(frame.barCount, 1);
  int32_t& running = Process().runningBarIndex;
  if (running < 0 || running >= nBars) running = 0;
  Color color = BarColor(dataset, highlighted);
  PointMap map(dataset, frame.area);
  int32_t base = BarBase(dataset, frame);
  if (dataset.xAxis()->type() == kAxisDiscrete) DrawDiscreteBars(surface, dataset, map, frame, base, color);
  else DrawSampledBars(surface, dataset, map, frame, base, color);
  running = highlighted || running + 1 >= nBars ? 0 : running + 1;
}

}  // namespace zel

// Painting a dense curve: 10^5 to 10^7 points of a random walk into a null
// surface of 1280 by 720 pixels, so the figures are the engine's own cost
// (mapping, reduction per pixel column, markers skipped). The baseline scans
// the same stored points once, summing them; the ratio to it is the cost of
// painting over merely reading the data. Drawing every segment is measured
// too, to show what the reduction saves in calls, and a view zoomed to 1 % of
// the range, which visits only the points it shows.
#include <benchmark/benchmark.h>

#include <algorithm>
#include <memory>
#include <random>
#include <vector>

#include "engine/curve_painter.h"
#include "engine/v_axis.h"
#include "engine/v_dataset.h"

namespace zel {
namespace {

// A surface whose calls do nothing, counting only the lines asked for.
class NullSurface final : public Surface {
 public:
  int64_t lines = 0;
  void Save() override {}
  void Restore() override {}
  void SetWindowOrigin(Point) override {}
  void ClipTo(const Rect&) override {}
  void IntersectClip(const Rect&) override {}
  bool IsVisible(const Rect&) override { return true; }
  void SelectPen(const Pen&) override {}
  void SelectFont(const LogFont&) override {}
  void SetTextColor(Color) override {}
  void SetTextAlign(uint32_t) override {}
  void SetRasterOp(RasterOp) override {}
  Color BackgroundColor() override { return 0; }
  void SetBackgroundColor(Color) override {}
  void SetTextBackground(TextBackground) override {}
  void MoveTo(Point) override {}
  void LineTo(Point) override { ++lines; }
  void Polyline(std::span<const Point>) override {}
  void FillRect(const Rect&, Color) override {}
  void FillRegion(const Region&, Color) override {}
  void Rectangle(const Rect&, Color) override {}
  void Pie(const Rect&, Point, Point, Color) override {}
  void WriteText(Point, TextView) override {}
  Size TextExtent(TextView) override { return {}; }
  Color PixelAt(Point) override { return 0; }
  int Technology() override { return kRasterDisplay; }
};

constexpr CurveArea kArea{1280, 720};

struct Walk {
  AxisProps range;
  VAxis x, y;
  VDataset curve;
  explicit Walk(size_t n)
      : range(Range()), x(false, kAxisReal, &range), y(true, kAxisReal, &range), curve(kPlot, &x, &y, nullptr) {
    std::mt19937 random(1);
    std::normal_distribution<float> step(0, 1);
    std::vector<float> xs(n), ys(n);
    std::vector<int32_t> status(n, 0);
    float level = 50;
    for (size_t i = 0; i < n; ++i) {
      xs[i] = float(100.0 * double(i) / double(n));
      level = std::clamp(level + step(random), 0.0f, 100.0f);
      ys[i] = level;
    }
    curve.SetValues(n, ValueColumn(std::span<const float>(xs)), ValueColumn(std::span<const float>(ys)), status,
                    false);
  }
  static AxisProps Range() {
    AxisProps props;
    props.min = 0.0;
    props.max = 100.0;
    return props;
  }
};

// One Walk per size, kept across benchmarks.
Walk& WalkOf(size_t n) {
  static std::vector<std::unique_ptr<Walk>> walks;
  for (auto& w : walks)
    if (w->curve.count() == n) return *w;
  walks.push_back(std::make_unique<Walk>(n));
  return *walks.back();
}

void BM_PlainScan(benchmark::State& state) {
  const VDataset& curve = WalkOf(size_t(state.range(0))).curve;
  const auto& xs = std::get<PodBuffer<float>>(curve.xValues().storage());
  const auto& ys = std::get<PodBuffer<float>>(curve.yValues().storage());
  std::span<const int32_t> status = curve.status();
  for (auto _ : state) {
    double sum = 0;
    for (size_t i = 0; i < curve.count(); ++i)
      if (status[i] < 11) sum += double(xs[i]) + double(ys[i]);
    benchmark::DoNotOptimize(sum);
  }
  state.SetItemsProcessed(state.iterations() * state.range(0));
}

void Paint(benchmark::State& state, Reduction reduction) {
  const VDataset& curve = WalkOf(size_t(state.range(0))).curve;
  CurveLook look = LookOf(curve, kPlot, {}, 1, false);
  NullSurface surface;
  for (auto _ : state) DrawPlot(surface, curve, kArea, look, reduction);
  state.SetItemsProcessed(state.iterations() * state.range(0));
  state.counters["lines_per_frame"] = double(surface.lines) / double(state.iterations());
}

void BM_PaintReduced(benchmark::State& state) { Paint(state, Reduction::kAuto); }
void BM_PaintEverySegment(benchmark::State& state) { Paint(state, Reduction::kNever); }

// A view zoomed to 1 % of the range: the data area is 100 times the plot's
// width, of which 1280 columns are visible.
void BM_PaintZoomedToOnePercent(benchmark::State& state) {
  const VDataset& curve = WalkOf(size_t(state.range(0))).curve;
  CurveLook look = LookOf(curve, kPlot, {}, 1, false);
  NullSurface surface;
  CurveArea zoomed{kArea.width * 100, kArea.height, kArea.width * 50, kArea.width * 51 - 1};
  for (auto _ : state) DrawPlot(surface, curve, zoomed, look);
  state.SetItemsProcessed(state.iterations() * state.range(0));
}

BENCHMARK(BM_PlainScan)->RangeMultiplier(10)->Range(100000, 10000000)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_PaintReduced)->RangeMultiplier(10)->Range(100000, 10000000)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_PaintEverySegment)->RangeMultiplier(10)->Range(100000, 10000000)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_PaintZoomedToOnePercent)->RangeMultiplier(10)->Range(100000, 10000000)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace zel

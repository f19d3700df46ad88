// Painting dense curves through GDI under the platform: 10^5, 10^6 and 10^7
// points of a random walk drawn into a 1280 by 720 memory bitmap, with each
// pixel column reduced (the normal drawing) and, up to 10^6 points, with
// every segment. The baseline scans the same stored points once in the same
// process; the ratios say what painting costs over merely reading the data.
#include <windows.h>

#include <algorithm>
#include <cstdio>
#include <functional>
#include <random>
#include <vector>

#include "bench/win/bench_support.h"
#include "control/gdi_surface.h"
#include "engine/curve_painter.h"
#include "engine/v_axis.h"
#include "engine/v_dataset.h"

namespace zel {
namespace {

using namespace zel::bench;

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

double Scan(const VDataset& curve) {
  const auto& xs = std::get<PodBuffer<float>>(curve.xValues().storage());
  const auto& ys = std::get<PodBuffer<float>>(curve.yValues().storage());
  std::span<const int32_t> status = curve.status();
  double sum = 0;
  for (size_t i = 0; i < curve.count(); ++i)
    if (status[i] < 11) sum += double(xs[i]) + double(ys[i]);
  return sum;
}

void Paint(const Dib& bitmap, const VDataset& curve, Reduction reduction) {
  PatBlt(bitmap.dc(), 0, 0, kWidth, kHeight, WHITENESS);
  GdiSurface surface(bitmap.dc());
  DrawPlot(surface, curve, {kWidth, kHeight}, LookOf(curve, kPlot, {}, 1, false), reduction);
  GdiFlush();
}

}  // namespace
}  // namespace zel

int main() {
  using namespace zel;
  Dib bitmap;
  std::printf("%10s %12s %14s %8s %16s %8s\n", "points", "scan ms", "reduced ms", "ratio", "every seg. ms", "ratio");
  for (size_t n : {size_t(100000), size_t(1000000), size_t(10000000)}) {
    Walk walk(n);
    volatile double sink = 0;
    double scan = BestOf(10, [&] { sink = sink + Scan(walk.curve); });
    double reduced = BestOf(5, [&] { Paint(bitmap, walk.curve, Reduction::kAuto); });
    std::printf("%10zu %12.3f %14.3f %8.1f", n, scan, reduced, reduced / scan);
    if (n <= 1000000) {
      double every = BestOf(2, [&] { Paint(bitmap, walk.curve, Reduction::kNever); });
      std::printf(" %16.3f %8.1f", every, every / scan);
    }
    std::printf("\n");
  }
  return 0;
}

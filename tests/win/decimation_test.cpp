// Dense curves through real GDI: drawing each pixel column's points reduced
// to the few that matter colours exactly the pixels that drawing every
// segment colours, in plain and zoomed views and with the curve leaving the
// plot; markers keep their status colours.
#include <gtest/gtest.h>

#include <cstring>
#include <random>

#include "memory_canvas.h"
#include "engine/curve_painter.h"
#include "engine/value_column.h"
#include "util/process_state.h"

namespace zel::testing {
namespace {

constexpr COLORREF kWhite = RGB(255, 255, 255);
constexpr COLORREF kLine = RGB(200, 0, 0);

AxisProps Range(double min, double max) {
  AxisProps props;
  props.min = min;
  props.max = max;
  props.axisColor = 0;
  return props;
}

// A view of the data area: the canvas shows `area` from `offset` on, as the
// drawing pass shows a zoomed plot.
struct View {
  CurveArea area;
  Point offset;
};

void Paint(MemoryCanvas& canvas, const VDataset& curve, const View& view, Reduction reduction) {
  canvas.Clear(kWhite);
  GdiSurface surface(canvas.dc());
  surface.SetWindowOrigin(view.offset);
  surface.ClipTo({0, 0, canvas.width(), canvas.height()});
  DrawPlot(surface, curve, view.area, LookOf(curve, kPlot, {}, 1, false), reduction);
}

// Pixels that differ, with the first of them for the message.
int Differences(const MemoryCanvas& a, const MemoryCanvas& b, std::string& first) {
  int count = 0;
  for (int y = 0; y < a.height(); ++y)
    for (int x = 0; x < a.width(); ++x)
      if (a.Pixel(x, y) != b.Pixel(x, y) && count++ == 0)
        first = "(" + std::to_string(x) + "," + std::to_string(y) + ")";
  return count;
}

// 10^5 points of a random walk over 0..100 by 0..100 that strays a little
// beyond both ends of each axis; `twoWay` lets x walk back as well.
void LoadWalk(VDataset& curve, unsigned seed, bool twoWay) {
  std::mt19937 random(seed);
  std::normal_distribution<double> step(0, 1.5);
  constexpr size_t kPoints = 100000;
  std::vector<double> xs(kPoints), ys(kPoints);
  std::vector<int32_t> status(kPoints, 0);
  double x = -3, y = 50;
  for (size_t i = 0; i < kPoints; ++i) {
    x += twoWay ? step(random) * 0.02 + 0.001 : 106.0 / kPoints;
    y += step(random);
    if (y < -20 || y > 120) y = 50;
    xs[i] = x;
    ys[i] = y;
    if (random() % 500 == 0) status[i] = 11;
  }
  curve.SetValues(kPoints, ValueColumn(std::span<const double>(xs)), ValueColumn(std::span<const double>(ys)),
                  status, false);
}

TEST(Decimation, ReducedAndEverySegmentDrawingsAgreePixelForPixel) {
  ResetProcessState();
  AxisProps range = Range(0, 100);
  VAxis xAxis(false, kAxisReal, &range), yAxis(true, kAxisReal, &range);
  DatasetProps props;
  props.lineColor = kLine;
  VDataset curve(kPlot, &xAxis, &yAxis, &props);
  MemoryCanvas every(480, 270), reduced(480, 270);
  const View views[] = {
      {{480, 270}, {0, 0}},          // the whole plot
      {{1920, 1080}, {700, 400}},    // zoomed in four times
      {{9600, 5400}, {4500, 2600}},  // twenty times
      {{400, 200}, {-40, -35}},      // a plot smaller than the canvas, edges in view
  };
  for (unsigned seed : {1u, 2u, 3u}) {
    for (bool twoWay : {false, true}) {
      LoadWalk(curve, seed, twoWay);
      for (const View& view : views) {
        Paint(every, curve, view, Reduction::kNever);
        Paint(reduced, curve, view, Reduction::kAlways);
        std::string first;
        EXPECT_EQ(Differences(every, reduced, first), 0)
            << "seed " << seed << (twoWay ? " two-way" : "") << " view " << view.area.width << ", first at " << first;
        int inked = 0;
        for (int y = 0; y < every.height(); ++y)
          for (int x = 0; x < every.width(); ++x) inked += every.Pixel(x, y) == kLine;
        EXPECT_GT(inked, 100) << "the view shows the curve";
      }
    }
  }
}

TEST(Decimation, MarkersCarryTheirStatusColours) {
  ResetProcessState();
  AxisProps range = Range(0, 100);
  VAxis xAxis(false, kAxisReal, &range), yAxis(true, kAxisReal, &range);
  DatasetProps props;
  props.lineColor = kLine;
  props.markerColor = RGB(0, 0, 200);
  props.markerShape = u"BOX";
  VDataset curve(kPlot, &xAxis, &yAxis, &props);
  std::vector<double> xs = {10, 25, 40, 55, 70, 85}, ys(6, 50);
  std::vector<int32_t> status = {0, 1, 2, 9, 10, 5};
  curve.SetValues(6, ValueColumn(std::span<const double>(xs)), ValueColumn(std::span<const double>(ys)), status,
                  false);
  const std::array<int32_t, 4> statusColors = {RGB(0, 200, 0), RGB(200, 200, 0), RGB(0, 200, 200), 0};
  MemoryCanvas canvas(200, 100);
  {
    GdiSurface surface(canvas.dc());
    DrawPlot(surface, curve, {200, 100}, LookOf(curve, kPlot, statusColors, 1, false));
  }
  // Each marker's corner, off the line; status 10 has none.
  const COLORREF expected[] = {RGB(0, 0, 200), RGB(0, 200, 0), RGB(200, 200, 0), RGB(0, 200, 200), kWhite,
                               RGB(0, 0, 200)};
  // 50 lies on row 99 - 50 of the 100 rows.
  for (size_t i = 0; i < xs.size(); ++i) {
    int x = int(xs[i] * 2), y = 49;
    EXPECT_EQ(canvas.Pixel(x - 2, y - 2), expected[i]) << "status " << status[i];
    EXPECT_EQ(canvas.Pixel(x - 5, y - 5), kWhite);
  }
  EXPECT_EQ(canvas.Pixel(int(xs[4] * 2), 49), kLine);  // the line runs through the unmarked point
}

}  // namespace
}  // namespace zel::testing

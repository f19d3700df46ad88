// The drawing pass through real GDI into a memory bitmap: a few pixels that
// say the pictures come out where the rules put them.
#include <gtest/gtest.h>

#include <array>
#include <cmath>

#include "memory_canvas.h"
#include "engine/curve_painter.h"
#include "engine/dataset_keywords.h"
#include "engine/value_column.h"
#include "util/process_state.h"

namespace zel::testing {
namespace {

AxisProps Range(double min, double max) {
  AxisProps props;
  props.min = min;
  props.max = max;
  props.axisColor = 0;
  return props;
}

// A graph of 300 by 200 pixels with a REAL X and Y axis from 0 to 100.
struct CanvasGraph {
  MemoryCanvas canvas{300, 200};
  CanvasWindow window{canvas};
  VGraph graph{&window};
  CanvasGraph() {
    ResetProcessState();
    AxisProps range = Range(0, 100);
    graph.AddXAxis(1, kAxisReal, &range);
    graph.AddYAxis(1, kAxisReal, &range);
  }
};

TEST(DrawingPixels, ACurveCrossesThePlotInItsColour) {
  CanvasGraph drawn;
  auto& [canvas, window, graph] = drawn;
  DatasetProps props;
  props.lineColor = RGB(255, 0, 0);
  graph.AddDataset(1, kPlot, 1, 1, &props);
  std::vector<double> xs = {0, 100}, ys = {50, 50};
  std::vector<int32_t> status(2, 0);
  graph.SetDatasetValues(1, 2, ValueColumn(std::span<const double>(xs)),
                         ValueColumn(std::span<const double>(ys)), status, false);
  Render(graph, canvas);
  const FrameRect& plot = graph.plotFrame();
  int x = 10 + (plot.left + plot.right) / 2;
  int red = 0;
  for (int y = 0; y < canvas.height(); ++y) red += canvas.Pixel(x, y) == RGB(255, 0, 0);
  EXPECT_EQ(red, 1);
}

TEST(DrawingPixels, AHairlineColoursItsColumnAndLabelsItBelowThePlot) {
  CanvasGraph drawn;
  auto& [canvas, window, graph] = drawn;
  graph.AddHairline(50, Color(RGB(0, 0, 255)), 1);
  graph.SetXAxisHairline(1);
  Render(graph, canvas);
  const FrameRect& plot = graph.plotFrame();
  int x = int(std::lround(0.5 * plot.width())) + 10 + plot.left;
  int top = 10 + (200 - 20 - plot.top), bottom = 190 - plot.bottom;  // device rows of the plot
  int blue = 0;
  for (int y = top + 1; y < bottom; ++y) blue += canvas.Pixel(x, y) == RGB(0, 0, 255);
  EXPECT_EQ(blue, bottom - top - 1) << "the whole column inside the plot's inner edge";
  EXPECT_NE(canvas.Pixel(x - 1, (top + bottom) / 2), RGB(0, 0, 255));
  int label = 0;
  for (int y = bottom + 1; y < 200; ++y)
    for (int dx = -30; dx <= 30; ++dx) label += canvas.Pixel(x + dx, y) == RGB(0, 0, 255);
  EXPECT_GT(label, 10) << "the value label is written in the hairline's colour";
}

// Markers are 2r + 1 pixels across and high, centred on their point, in
// every shape: r = 3 for a pen of width 1, 5 for width 2.
TEST(DrawingPixels, MarkersAreTwoRPlusOnePixelsAcross) {
  for (int shape : {kMarkerDot, kMarkerBox, kMarkerTriangle, kMarkerDiamond}) {
    for (auto [width, across] : {std::pair{1, 7}, {2, 11}}) {
      MemoryCanvas canvas{40, 40};
      GdiSurface surface(canvas.dc());
      surface.FillRect({0, 0, 40, 40}, RGB(255, 255, 255));
      surface.FillRegion(MarkerRegion({20, 20}, shape, width), RGB(0, 0, 0));
      int left = 40, right = -1, top = 40, bottom = -1;
      for (int y = 0; y < 40; ++y)
        for (int x = 0; x < 40; ++x)
          if (canvas.Pixel(x, y) == RGB(0, 0, 0)) {
            left = std::min(left, x), right = std::max(right, x);
            top = std::min(top, y), bottom = std::max(bottom, y);
          }
      int r = across / 2;
      EXPECT_EQ((std::array{left, right, top, bottom}), (std::array{20 - r, 20 + r, 20 - r, 20 + r}))
          << "shape " << shape << ", width " << width;
    }
  }
}

}  // namespace
}  // namespace zel::testing

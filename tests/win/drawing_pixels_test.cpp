// The drawing pass through real GDI into a memory bitmap: a few pixels that
// say the pictures come out where the rules put them.
#include <gtest/gtest.h>

#include "memory_canvas.h"
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

TEST(DrawingPixels, ACurveCrossesThePlotInItsColour) {
  ResetProcessState();
  MemoryCanvas canvas(300, 200);
  CanvasWindow window(canvas);
  VGraph graph(&window);
  AxisProps range = Range(0, 100);
  graph.AddXAxis(1, kAxisReal, &range);
  graph.AddYAxis(1, kAxisReal, &range);
  DatasetProps props;
  props.lineColor = RGB(255, 0, 0);
  graph.AddDataset(1, kPlot, 1, 1, &props);
  std::vector<double> xs = {0, 100}, ys = {50, 50};
  std::vector<int32_t> status(2, 0);
  graph.SetDatasetValues(1, 2, ValueColumn(std::span<const double>(xs)),
                         ValueColumn(std::span<const double>(ys)), status, false);
  Render(graph, canvas);
  const Box<int32_t>& plot = graph.plotFrame();
  int x = 10 + (plot.left + plot.right) / 2;
  int red = 0;
  for (int y = 0; y < canvas.height(); ++y) red += canvas.Pixel(x, y) == RGB(255, 0, 0);
  EXPECT_EQ(red, 1);
}

}  // namespace
}  // namespace zel::testing

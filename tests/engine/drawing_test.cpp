#include <algorithm>
#include <cmath>
#include <cstdio>

#include "engine/axis_painter.h"
#include "engine/axis_scale.h"
#include "engine/curve_painter.h"
#include "engine/v_axis.h"
#include "engine/v_dataset.h"
#include "engine/v_graph.h"
#include "engine_test_support.h"

namespace zel {
namespace {

class DrawingTest : public EngineTest {
 protected:
  static AxisProps Range(Value min, Value max) {
    AxisProps props;
    props.min = min;
    props.max = max;
    props.axisColor = 0;  // as a host's record carries it
    return props;
  }
  static int Count(const RecordingSurface& s, const std::string& prefix) {
    return int(s.Calls(prefix).size());
  }
};

TEST_F(DrawingTest, CurvePensAreCosmeticBelowWidthTwo) {
  EXPECT_EQ(CurvePen(kPenDash, 1, 0xFF), (Pen{kPenDash, 1, 0xFF, false}));
  EXPECT_EQ(CurvePen(kPenDash, 2, 0xFF), (Pen{kPenDash, 2, 0xFF, true}));
  EXPECT_EQ(CurvePen(kPenDot, 3, 0xFF), (Pen{kPenDot, 3, 0xFF, true}));
  EXPECT_EQ(CurvePen(-1, 2, 0xFF), (Pen{kPenSolid, 2, 0xFF, false}));
}

TEST_F(DrawingTest, MarkersGrowWithThePenAndTakeTheirShape) {
  EXPECT_EQ(MarkerRegion({10, 10}, kMarkerDot, 1), Region(Ellipse{{7, 7, 13, 13}}));
  EXPECT_EQ(MarkerRegion({10, 10}, kMarkerBox, 2), Region(Rect{5, 5, 15, 15}));
  EXPECT_EQ(MarkerRegion({10, 10}, kMarkerBox, 4), Region(Rect{0, 0, 20, 20}));
  Polygon triangle{{{10, 6}, {14, 14}, {6, 14}}, FillMode::kWinding};
  EXPECT_EQ(MarkerRegion({10, 10}, kMarkerTriangle, 1), Region(triangle));
  EXPECT_EQ(MarkerRegion({10, 10}, 9, 1), Region(Ellipse{{10, 10, 10, 10}}));
}

TEST_F(DrawingTest, PointsAreJoinedAndMarkedByTheirStatus) {
  AxisProps range = Range(0.0, 100.0);
  VAxis x(false, kAxisReal, &range), y(true, kAxisReal, &range);
  DatasetProps props;
  props.markerShape = u"BOX";
  props.markerColor = 0x00AA00;
  VDataset curve(kPlot, &x, &y, &props);
  std::vector<double> xs = {10, 20, 30, 40, 50, 60};
  std::vector<int32_t> status = {0, 1, 2, 11, 9, 10};
  curve.SetValues(6, Column(xs), Column(xs), status, false);
  RecordingSurface s;
  DrawPlot(s, curve, {100, 100}, LookOf(curve, kPlot, {0x0000FF, 0xFF0000, 0x00FFFF, 0}, 1, false));
  EXPECT_EQ(s.Calls("FillBox"), (std::vector<std::string>{
                                     "FillBox(7,87,13,93,00AA00)", "FillBox(17,77,23,83,0000FF)",
                                     "FillBox(27,67,33,73,FF0000)", "FillBox(47,47,53,53,00FFFF)"}));
  // The absent point (status 11) is neither joined nor marked: 30 joins 50.
  EXPECT_EQ(s.Calls("LineTo"), (std::vector<std::string>{"LineTo(20,80)", "LineTo(30,70)",
                                                         "LineTo(50,50)", "LineTo(60,40)"}));
}

TEST_F(DrawingTest, SegmentsAreClippedToTheDataArea) {
  AxisProps range = Range(0.0, 100.0);
  VAxis x(false, kAxisReal, &range), y(true, kAxisReal, &range);
  VDataset curve(kPlot, &x, &y, nullptr);
  std::vector<double> xs = {50, 150}, ys = {50, 50};
  std::vector<int32_t> status = {0, 0};
  curve.SetValues(2, Column(xs), Column(ys), status, false);
  RecordingSurface s;
  DrawPlot(s, curve, {100, 100}, LookOf(curve, kPlot, {}, 1, false));
  EXPECT_EQ(s.Calls("MoveTo"), (std::vector<std::string>{"MoveTo(50,50)"}));
  EXPECT_EQ(s.Calls("LineTo"), (std::vector<std::string>{"LineTo(100,50)"}));
}

TEST_F(DrawingTest, FirstMarksAlignOnWholeStepsEvenFarFromZero) {
  EXPECT_DOUBLE_EQ(FirstMarkOffset(3, 5), 2);
  EXPECT_DOUBLE_EQ(FirstMarkOffset(-3, 5), 3);
  EXPECT_DOUBLE_EQ(FirstMarkOffset(10, 5), 0);
  EXPECT_NEAR(FirstMarkOffset(1e12 + 3, 5), 2, 1e-3);
  EXPECT_NEAR(FirstMarkOffset(1e300, 1e-3), FirstMarkOffset(std::fmod(1e300, 1e3), 1e-3), 1e-3);
}

TEST_F(DrawingTest, XLabelsLeaveOutTheLeftEdgeTheTestTextAndRepeats) {
  // DISCRETE categories 0..4, 100 pixels apart, labels half a category right.
  AxisProps range = Range(int32_t(0), int32_t(4));
  VAxis axis(false, kAxisDiscrete, &range);
  axis.categoryLabels() = {Text(u"a long leftmost label"), Text(u"test"), Text(u"B"), Text(u"B"),
                           Text(u"C")};
  axis.UpdateSteps(1);
  RecordingSurface s;
  DrawAxis(s, axis, {100, 0, 400, 0, 400, 0, false}, 0);
  // The first would cross the left end; "test" equals the starting text;
  // the second "B" repeats the first. Every tick is drawn.
  EXPECT_EQ(s.Calls("Text("), (std::vector<std::string>{"Text(250,110,B)"}));
  EXPECT_EQ(s.Calls("LineTo").size(), 1u + 4u);
}

TEST_F(DrawingTest, YLabelsNeedRoomAboveAndBelowAndTheAxisCarriesAnArrowhead) {
  AxisProps range = Range(0.0, 100.0);
  VAxis axis(true, kAxisReal, &range);
  axis.UpdateSteps(1);
  RecordingSurface s;
  DrawAxis(s, axis, {50, 200, 201, 0, 200, 0, false}, 0);
  std::vector<std::string> texts = s.Calls("Text(");
  // 0.0 would hang below the room; 100.0 stands above it.
  ASSERT_EQ(texts.size(), 9u);
  EXPECT_EQ(texts.front(), "Text(43,174,10.0)");
  EXPECT_EQ(texts.back(), "Text(43,13,90.0)");
  EXPECT_EQ(s.Calls("FillPolygon"), (std::vector<std::string>{"FillPolygon(3,000000)"}));
}

TEST_F(DrawingTest, TheDrawingPassPaintsBackgroundThenPlotThenAxes) {
  FakeWindow window;
  VGraph graph(&window);
  AxisProps range = Range(0.0, 100.0);
  graph.AddXAxis(1, kAxisReal, &range);
  graph.AddYAxis(1, kAxisReal, &range);
  graph.AddDataset(1, kPlot, 1, 1, nullptr);
  RecordingSurface s;
  s.background = 0x123456;
  graph.Draw(s, {0, 0, 401, 301}, {0, 0, 401, 301});
  ASSERT_GE(s.calls.size(), 4u);
  EXPECT_EQ(s.calls[0], "FillRect(0,0,401,301,123456)");
  EXPECT_EQ(s.calls[1], "Save");
  Box<int32_t> data = graph.dataArea();
  char origin[64];
  std::snprintf(origin, sizeof origin, "Origin(%d,%d)", -(10 + data.left), -(301 - 10 - data.top));
  EXPECT_EQ(s.calls[2], origin);
  EXPECT_EQ(s.calls.back(), "Restore");

  window.exists = false;
  RecordingSurface none;
  graph.Draw(none, {0, 0, 401, 301}, {0, 0, 401, 301});
  EXPECT_TRUE(none.calls.empty());
}

}  // namespace
}  // namespace zel

#include <array>
#include <tuple>
#include <utility>

#include "engine/graph_error.h"
#include "engine/v_graph.h"
#include "engine_test_support.h"

namespace zel {
namespace {

class GraphLayoutTest : public EngineTest {
 protected:
  FakeWindow window;  // 400 by 300: layout for 401 by 301
  VGraph graph{&window};

  void AddY(int32_t id, VAxis::Placement side = VAxis::kLowSide) {
    AxisProps unit = AxisRange(0.0, 1.0);  // labels "0.000" and "1.000": 35 pixels wide
    graph.AddYAxis(id, kAxisReal, &unit, side);
  }
  FrameRect Plot() const { return graph.plotFrame(); }
  // left, bottom, right, top
  static std::array<int32_t, 4> Edges(const FrameRect& b) { return {b.left, b.bottom, b.right, b.top}; }
};

TEST_F(GraphLayoutTest, AxesTakeTheirRoomInsideTheMargins) {
  AxisProps x = AxisRange(0.0, 100.0);  // labels "0.0" and "100.0", 12 pixels high
  graph.AddXAxis(1, kAxisReal, &x);
  AddY(1);
  EXPECT_EQ(graph.XAxis(1).thickness(), 4 + 12 + 6);
  EXPECT_EQ(graph.YAxis(1).thickness(), 4 + 35 + 6);
  EXPECT_EQ(Edges(Plot()), (std::array<int32_t, 4>{45, 22, 400 - 10 - 10, 300 - 10 - 10}));
  EXPECT_EQ(graph.YAxis(1).position(), 0);
  EXPECT_EQ(Edges(graph.dataArea()), (std::array<int32_t, 4>{45, 22, 380, 280}));
}

TEST_F(GraphLayoutTest, WithoutYAxesTheMarginsAtTheSidesAreNotApplied) {
  graph.AddXAxis(1, kAxisReal, nullptr);
  EXPECT_EQ(std::pair(Plot().left, Plot().right), std::pair(0, 400));
  graph.AddXAxis(2, kAxisReal, nullptr, VAxis::kHighSide);
  EXPECT_EQ(graph.XAxis(2).position(), 280);
  EXPECT_EQ(Plot().top, 280 - graph.XAxis(2).thickness());
}

TEST_F(GraphLayoutTest, SplitYAxesTakeRoomAndFurtherOnesStandTenPixelsApart) {
  AddY(1);
  AddY(2);
  AddY(3, VAxis::kHighSide);
  AddY(4, VAxis::kHighSide);
  AddY(5);
  EXPECT_EQ(std::pair(Plot().left, Plot().right), std::pair(45, 380));

  Process().splitYAxis = {1, 1, 1};
  graph.UpdateLayoutAndRepaint();
  EXPECT_EQ(std::pair(Plot().left, Plot().right), std::pair(45 + 45 + 10, 380 - 45 - 45 - 10));
  EXPECT_EQ(std::pair(graph.YAxis(2).offset(), graph.YAxis(4).offset()), std::pair(100, 280));
  EXPECT_EQ(graph.YAxis(5).thickness(), 0);  // a fifth takes no room

  Process().splitYAxis = {0, 1, 0};
  graph.UpdateLayoutAndRepaint();
  EXPECT_EQ(std::pair(Plot().left, Plot().right), std::pair(45, 380 - 45));
}

TEST_F(GraphLayoutTest, UnitNamesWiderThanTheLabelsWidenTheirAxis) {
  AddY(1);
  Process().splitYAxis = {1, 0, 0};
  graph.SetUnitNames({u"degrees Celsius", u"", u"", u""});
  graph.UpdateLayoutAndRepaint();
  EXPECT_EQ(graph.YAxis(1).thickness(), 4 + 35 + 6 + (7 * 15 - 35));
}

TEST_F(GraphLayoutTest, TheZoomRectangleScalesTheDataArea) {
  AddY(1);
  graph.AddXAxis(1, kAxisReal, nullptr);
  graph.SetZoomRect({.left = 0.5f, .right = 1, .bottom = 0, .top = 1});
  graph.UpdateLayoutAndRepaint();
  FrameRect plot = Plot(), data = graph.dataArea();
  int32_t width = plot.right - plot.left + 1;
  EXPECT_EQ(std::tuple(data.left, data.right, data.top - data.bottom),
            std::tuple(plot.left - width, plot.right, plot.top - plot.bottom));
}

TEST_F(GraphLayoutTest, TheLegendTakesItsSideBeforeTheMargins) {
  AddY(1);
  graph.AddXAxis(1, kAxisReal, nullptr);
  graph.AddDataset(1, kPlot, 1, 1, nullptr);
  graph.UpdateLayoutAndRepaint();
  FrameRect without = Plot();
  graph.EnableLegend(true);
  RecordingSurface measuring;
  // Each side gives up the measured room; BOTTOM, and the position a
  // read-back without a legend leaves, at the bottom.
  for (LegendPosition position : {VLegend::kRight, VLegend::kLeft, VLegend::kTop, VLegend::kBottom,
                                  LegendPosition::kNone}) {
    graph.SetLegendPosition(position);
    graph.UpdateLayoutAndRepaint();
    bool side = VLegend::IsSide(position);
    int32_t room = graph.legend()->Measure(measuring, VLegend::Placed(position), side ? 301 : 401, 1.0);
    ASSERT_GT(room, 0);
    FrameRect expected = without;
    Rect legend{0, 0, 400, 300};
    if (position == VLegend::kRight) expected.right -= room, legend.left = 400 - room;
    else if (position == VLegend::kLeft) expected.left += room, legend.right = room;
    else if (position == VLegend::kTop) expected.top -= room, legend.bottom = room;
    else expected.bottom += room, legend.top = 300 - room;
    EXPECT_EQ(Edges(Plot()), Edges(expected)) << int(position);
    EXPECT_EQ(graph.legend()->rect, legend) << int(position);
  }
  graph.EnableLegend(false);
  graph.UpdateLayoutAndRepaint();
  EXPECT_EQ(Plot().right, without.right);
}

// A legend that would need more than the client keeps to the client: the
// plot shrinks to nothing but its frame stays ordered and finite.
TEST_F(GraphLayoutTest, AnOversizedLegendTakesAtMostTheClient) {
  AddY(1);
  graph.AddXAxis(1, kAxisReal, nullptr);
  DatasetProps named{.title = Text(200, u'w')};  // 1400 pixels of title
  graph.AddDataset(1, kPlot, 1, 1, &named);
  graph.EnableLegend(true);
  for (LegendPosition position : {VLegend::kRight, VLegend::kLeft}) {
    graph.SetLegendPosition(position);
    graph.UpdateLayoutAndRepaint();
    const Rect& legend = graph.legend()->rect;
    EXPECT_EQ(legend.right - legend.left, 400) << int(position);
    EXPECT_GE(legend.left, 0);
    EXPECT_LE(legend.right, 400);
    EXPECT_LT(Plot().right - Plot().left, 0) << "no room is left for the plot";
    EXPECT_GT(graph.dataArea().width(), -1000) << int(position);
  }
}

}  // namespace
}  // namespace zel

// The BAR and STACKED BAR routines: widths, slots, groups, sampling, bases
// and stacks, asserted on the rectangles they fill.
#include <cmath>
#include <cstdio>
#include <tuple>

#include "engine/bar_painter.h"
#include "engine/curve_look.h"
#include "engine/curve_painter.h"
#include "engine/area_painter.h"
#include "engine/graph_error.h"
#include "engine/stacked_bar_painter.h"
#include "engine/v_axis.h"
#include "engine/v_dataset.h"
#include "engine_test_support.h"

namespace zel {
namespace {

using Calls = std::vector<std::string>;

class BarTest : public EngineTest {
 protected:
  AxisProps percent_ = AxisRange(0.0, 100.0);
  VAxis x_{false, kAxisReal, &percent_};
  VAxis y_{true, kAxisReal, &percent_};
};

TEST_F(BarTest, WidthsFollowTheValueModeAndThePercentage) {
  // {pitch, bars, value mode, percentage, width}. Auto Width (-1) keeps
  // (pitch / 2 - 6) / bars, or (pitch - 10) / bars in modes 1 and 3, between
  // 1 and 10; a percentage of that base gives 1 pixel when percentage times
  // base is below 100; a negative base gives 1.
  const int32_t widths[][5] = {
      {32, 1, 0, -1, 10}, {20, 1, 0, -1, 4},    {10, 1, 0, -1, 1},   {100, 2, 0, -1, 10},
      {24, 2, 1, -1, 7},  {24, 2, 3, -1, 7},    {24, 2, 2, -1, 3},   {100, 1, 0, 50, 22},
      {100, 1, 1, 200, 180}, {100, 1, 1, 3, 2}, {100, 1, 1, 1, 1},   {100, 1, 1, 0, 1},
      {100, 1, 1, -5, 1}, {10, 1, 0, 100000, 1},
  };
  for (const auto& w : widths)
    EXPECT_EQ(BarWidth(w[0], w[1], w[2], w[3]), w[4]) << w[0] << " " << w[1] << " " << w[2] << " " << w[3];
  EXPECT_GT(BarWidth(100, 1, 1, 2000000000), 0);
  // The sample pitch shares the width among the points, never below 32.
  for (auto [width, points, pitch] : {std::tuple{400, 4, 100}, {400, 1000, 32}, {400, 0, 400}, {0, 5, 32}})
    EXPECT_EQ(SamplePitch(width, size_t(points)), pitch) << width << " " << points;
}

TEST_F(BarTest, DiscreteBarsTakeTheirSlotInTheCategory) {
  AxisProps categories = AxisRange(int32_t(0), int32_t(4));
  VAxis x(false, kAxisDiscrete, &categories);
  DatasetProps red{.lineColor = 0x0000FF}, blue{.lineColor = 0xFF0000}, green{.lineColor = 0x00FF00};
  VDataset first(kBar, &x, &y_, &red), second(kBar, &x, &y_, &blue), late(kPlot, &x, &y_, &green);
  late.SetProps({.lineColor = 0x00FF00, .type = u"BAR"});  // a BAR now, but in no bar list
  for (VDataset* d : {&first, &second, &late}) LoadPoints(*d, {0, 0}, {50, 100});
  BarFrame frame{{400, 100}, 3, -1, {&y_}};
  RecordingSurface s;
  for (VDataset* d : {&first, &second, &late}) DrawBars(s, *d, frame, false);
  // Categories are 100 pixels apart, bars 100 / 3 = 33 wide, at round((slot + 0.5) * 33).
  EXPECT_EQ(s.calls, (Calls{"FillRect(17,49,50,99,0000FF)", "FillRect(117,-1,150,99,0000FF)",
                            "FillRect(50,49,83,99,FF0000)", "FillRect(150,-1,183,99,FF0000)",
                            "FillRect(83,49,116,99,00FF00)", "FillRect(183,-1,216,99,00FF00)"}));
  EXPECT_TRUE(first.drawnAsBars());
}

TEST_F(BarTest, TheRunningIndexPlacesEachBarDatasetInItsGroup) {
  Process().valueMode = 1;
  DatasetProps props{.lineColor = 0};
  VDataset a(kBar, &x_, &y_, &props), b(kBar, &x_, &y_, &props), c(kBar, &x_, &y_, &props);
  for (VDataset* d : {&a, &b, &c}) LoadPoints(*d, {50, 75}, {50, 50});
  BarFrame frame{{400, 100}, 3, -1, {&y_}};
  auto lefts = [&](bool highlightB) {
    std::vector<int32_t> found;
    for (VDataset* d : {&a, &b, &c}) {
      RecordingSurface s;
      DrawBars(s, *d, frame, highlightB && d == &b);
      int32_t left = 0;
      std::sscanf(s.calls.front().c_str(), "FillRect(%d", &left);
      found.push_back(left);
    }
    return found;
  };
  // Pitch 400 / 2 = 200, width (200 - 10) / 3 kept at 10; the group of
  // three starts 15 pixels left of x = 200.
  EXPECT_EQ(lefts(false), (std::vector<int32_t>{185, 195, 205}));
  EXPECT_EQ(Process().runningBarIndex, 0);
  // A highlighted draw puts the index back to 0: the next dataset takes slot 0 again.
  EXPECT_EQ(lefts(true), (std::vector<int32_t>{185, 195, 185}));
  EXPECT_EQ(Process().runningBarIndex, 1);
  // An index left over from a larger group starts again at 0.
  Process().runningBarIndex = 7;
  EXPECT_EQ(lefts(false), (std::vector<int32_t>{185, 195, 205}));
}

TEST_F(BarTest, ValueModeZeroCentresGroupsOnTheSamplesAndSkipsTheRest) {
  DatasetProps props{.lineColor = 0};
  VDataset sparse(kBar, &x_, &y_, &props), dense(kBar, &x_, &y_, &props);
  LoadPoints(sparse, {12.5, 37.5, 62.5, 87.5}, {50, 50, 50, 50});
  BarFrame frame{{400, 100}, 1, -1, {&y_}};
  RecordingSurface s;
  DrawBars(s, sparse, frame, false);
  // Pitch 100, width 10: each bar centred on its point.
  EXPECT_EQ(s.calls, (Calls{"FillRect(45,49,55,99,000000)", "FillRect(145,49,155,99,000000)",
                            "FillRect(245,49,255,99,000000)", "FillRect(345,49,355,99,000000)"}));

  std::vector<double> xs, ys(1000, 50);
  for (int i = 0; i < 1000; ++i) xs.push_back(i * 0.1);
  LoadPoints(dense, xs, ys);
  RecordingSurface d;
  DrawBars(d, dense, frame, false);
  // One bar per 32-pixel sample: the first point at or after 0, 32, ... 384.
  ASSERT_EQ(d.calls.size(), 13u);
  for (size_t k = 0; k < d.calls.size(); ++k) {
    int32_t left = 0;
    std::sscanf(d.calls[k].c_str(), "FillRect(%d", &left);
    EXPECT_NEAR(left, std::max(int32_t(32 * k) - 5, -1), 1) << k;
  }
  // In the other modes every point is a bar.
  Process().valueMode = 2;
  RecordingSurface every;
  DrawBars(every, dense, frame, false);
  EXPECT_EQ(every.calls.size(), 1000u);
}

TEST_F(BarTest, RectanglesAreNormalisedAndHeldNearTheDataArea) {
  RecordingSurface s;
  FillBar(s, {100, 100}, 30, 10, 50, 20, 0xABCDEF);
  FillBar(s, {100, 100}, -500, 2000, 5000, -7000, 0);
  FillBar(s, {0, 0}, 5, 6, 7, 8, 0);
  EXPECT_EQ(s.calls, (Calls{"FillRect(10,20,30,50,ABCDEF)", "FillRect(-1,-1,101,101,000000)",
                            "FillRect(1,1,1,1,000000)"}));
}

TEST_F(BarTest, HighlightedBarsBlinkOnTheirOwnToggle) {
  DatasetProps props{.lineColor = 0x123456};
  VDataset bar(kBar, &x_, &y_, &props);
  EXPECT_EQ(BarColor(bar, true), 0x123456u);
  EXPECT_EQ(BarColor(bar, true), 0x123456u ^ 0xFFFFFF);
  EXPECT_EQ(BarColor(bar, false), 0x123456u);
  EXPECT_EQ(BarColor(bar, true), 0x123456u);
  EXPECT_FALSE(Process().curveBlink);
}

TEST_F(BarTest, StackedSegmentsRiseFromTheTopsBelowInListOrder) {
  DatasetProps midpoints{.realXbarMode = 1, .lineColor = 0x0000FF}, steps{.lineColor = 0xFF0000};
  VDataset lower(kStackedBar, &x_, &y_, &midpoints), upper(kStackedBar, &x_, &y_, &steps);
  LoadPoints(lower, {20, 50, 80}, {10, 20, 30});
  LoadPoints(upper, {20, 50, 80}, {5, 5, -5});
  BarFrame frame{{100, 100}, 0, -1, {&y_}};
  BarStacks stacks;
  RecordingSurface s;
  DrawStackedBars(s, lower, stacks, frame, false);
  DrawStackedBars(s, upper, stacks, frame, false);
  EXPECT_EQ(s.calls, (Calls{// from midpoint to midpoint, the last to the X axis maximum
                            "FillRect(0,89,35,99,0000FF)", "FillRect(35,79,65,99,0000FF)",
                            "FillRect(65,69,100,99,0000FF)",
                            // from the previous x to its own, on the tops below
                            "FillRect(0,84,20,89,FF0000)", "FillRect(20,74,50,79,FF0000)",
                            "FillRect(50,69,80,74,FF0000)"}));
  EXPECT_TRUE(upper.drawnAsBars());
}

TEST_F(BarTest, StackedSegmentsOnADiscreteAxisFillHalfTheirCategory) {
  AxisProps categories = AxisRange(int32_t(0), int32_t(4));
  VAxis x(false, kAxisDiscrete, &categories);
  DatasetProps props{.lineColor = 0};
  VDataset a(kStackedBar, &x, &y_, &props), b(kStackedBar, &x, &y_, &props);
  LoadPoints(a, {0, 0}, {10, 20});
  LoadPoints(b, {0, 0}, {30, 30});
  BarFrame frame{{400, 100}, 0, -1, {&y_}};
  BarStacks stacks;
  RecordingSurface s;
  DrawStackedBars(s, a, stacks, frame, false);
  DrawStackedBars(s, b, stacks, frame, false);
  EXPECT_EQ(s.calls, (Calls{"FillRect(25,89,75,99,000000)", "FillRect(125,79,175,99,000000)",
                            "FillRect(25,59,75,89,000000)", "FillRect(125,49,175,79,000000)"}));
}

// Far, infinite and undefined values, degenerate axes and empty or inverted
// areas: every routine keeps its rectangles near the data area and nothing
// overflows (the sanitizer build checks the arithmetic).
TEST_F(BarTest, HostileValuesAndAreasKeepEveryRoutineInBounds) {
  const double hostile[] = {std::nan(""), INFINITY, -INFINITY, 1e30, -1e30, 3e38, 0, 50};
  AxisProps flat = AxisRange(5.0, 5.0), reversed = AxisRange(100.0, 0.0);
  VAxis flatX(false, kAxisReal, &flat), reversedY(true, kAxisReal, &reversed);
  AxisProps categories = AxisRange(int32_t(0), int32_t(1));
  VAxis discrete(false, kAxisDiscrete, &categories);
  for (VAxis* x : {&x_, &flatX, &discrete}) {
    for (VAxis* y : {&y_, &reversedY}) {
      DatasetProps props{.markerShape = u"DIAMOND", .realXbarMode = 1};
      VDataset bar(kBar, x, y, &props), stacked(kStackedBar, x, y, &props), area(kArea, x, y, &props);
      for (VDataset* d : {&bar, &stacked, &area}) {
        for (double a : hostile) {
          for (double b : hostile) {
            std::vector<double> xs = {a, b}, ys = {b, a};
            std::vector<int32_t> status = {0, 0};
            try {
              d->SetValues(2, Column(xs), Column(ys), status, true);
            } catch (const GraphError&) {
              // a value the axis type cannot hold is refused as it would be from a host
            }
          }
        }
      }
      for (CurveArea area_ : {CurveArea{0, 0}, CurveArea{-5, -5}, CurveArea{1, 1}, CurveArea{400, 300},
                              CurveArea{2000000000, 2000000000}}) {
        RecordingSurface s;
        BarFrame frame{area_, 2, 100000, {y}};
        BarStacks stacks;
        for (int mode : {0, 1}) {
          Process().valueMode = mode;
          DrawBars(s, bar, frame, true);
          DrawStackedBars(s, stacked, stacks, frame, false);
        }
        DrawPlot(s, area, area_, LookOf(area, kArea, {}, 1, true));
        DrawPlot(s, area, area_, LookOf(area, kArea, {}, 1, false), Reduction::kAlways);
        Polygon polygon = AreaPolygon(area, &stacked, area_);
        for (const std::string& c : s.Calls("FillRect")) {
          int l, t, r, b;
          ASSERT_EQ(std::sscanf(c.c_str(), "FillRect(%d,%d,%d,%d", &l, &t, &r, &b), 4);
          EXPECT_TRUE(l <= r && t <= b && l >= -1 && t >= -1) << c;
          EXPECT_TRUE(r <= std::max(area_.width, 0) + 1 && b <= std::max(area_.height, 0) + 1) << c;
        }
        EXPECT_LE(polygon.points.size(), 2 * area.count() + 4);
      }
    }
  }
}

}  // namespace
}  // namespace zel

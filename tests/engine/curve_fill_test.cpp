// AREA fills: the polygon each fill reference closes, and where fills fall
// among the passes of the drawing.
#include <string>
#include <vector>

#include "engine/area_painter.h"
#include "engine/v_axis.h"
#include "engine/v_dataset.h"
#include "engine/v_graph.h"
#include "engine_test_support.h"

namespace zel {
namespace {

DatasetProps FillingTo(const char16_t* fillTo, int32_t curveId = 0) {
  return {.fillColor = 0x00FF00, .fillTo = Text(fillTo), .fillCurveId = curveId};
}

class CurveFillTest : public EngineTest {
 protected:
  // 0..100 on both axes over a 100 by 100 data area: values are pixels, x
  // from the left and y up from the bottom row (row 99).
  AxisProps range_ = AxisRange(0.0, 100.0);
  VAxis x_{false, kAxisReal, &range_};
  VAxis y_{true, kAxisReal, &range_};
  CurveArea area_{100, 100};
};

using Points = std::vector<Point>;

TEST_F(CurveFillTest, EachFillReferenceClosesThePolygonItsOwnWay) {
  DatasetProps toX = FillingTo(u"X_AXES"), toY = FillingTo(u"Y_AXES");
  VDataset xFill(kArea, &x_, &y_, &toX), yFill(kArea, &x_, &y_, &toY);
  for (VDataset* d : {&xFill, &yFill}) LoadPoints(*d, {10, 50, 90}, {20, 60, 40});
  Points curve = {{10, 79}, {50, 39}, {90, 59}};

  Polygon down = AreaPolygon(xFill, nullptr, area_);
  EXPECT_EQ(down.mode, FillMode::kWinding);
  Points expected = curve;
  expected.insert(expected.end(), {{90, 99}, {10, 99}});
  EXPECT_EQ(down.points, expected);

  expected = curve;
  expected.insert(expected.end(), {{0, 59}, {0, 79}});
  EXPECT_EQ(AreaPolygon(yFill, nullptr, area_).points, expected);

  // A Y axis on the high side is met at the right edge.
  VAxis right(true, kAxisReal, &range_, VAxis::kHighSide);
  VDataset onRight(kArea, &x_, &right, &toY);
  LoadPoints(onRight, {10, 50, 90}, {20, 60, 40});
  EXPECT_EQ(AreaPolygon(onRight, nullptr, area_).points.back(), (Point{100, 79}));
}

TEST_F(CurveFillTest, TheXAxisFillMeetsTheZeroValueOrTheNearerEdge) {
  AxisProps around = AxisRange(-50.0, 50.0), above = AxisRange(10.0, 100.0), below = AxisRange(-100.0, -10.0);
  VAxis yAround(true, kAxisReal, &around), yAbove(true, kAxisReal, &above), yBelow(true, kAxisReal, &below);
  DatasetProps props = FillingTo(u"X_AXES");
  VDataset a(kArea, &x_, &yAround, &props), b(kArea, &x_, &yAbove, &props), c(kArea, &x_, &yBelow, &props);
  for (VDataset* d : {&a, &b, &c}) LoadPoints(*d, {10, 90}, {20, 30});
  EXPECT_EQ(AreaPolygon(a, nullptr, area_).points.back(), (Point{10, 49}));
  EXPECT_EQ(AreaPolygon(b, nullptr, area_).points.back(), (Point{10, 99})) << "the minimum's row";
  EXPECT_EQ(AreaPolygon(c, nullptr, area_).points.back(), (Point{10, -1})) << "the maximum's row";
}

TEST_F(CurveFillTest, ACurveFillRunsBackAlongTheOtherCurveOrFallsBackToTheXAxis) {
  DatasetProps props = FillingTo(u"CURVE", 7);
  VDataset upper(kArea, &x_, &y_, &props), lower(kPlot, &x_, &y_, nullptr);
  LoadPoints(upper, {10, 50, 90}, {80, 90, 70});
  LoadPoints(lower, {0, 40, 100}, {10, 20, 30}, {0, 11, 0});
  Points expected = {{10, 19}, {50, 9}, {90, 29}, {100, 69}, {0, 89}};
  EXPECT_EQ(AreaPolygon(upper, &lower, area_).points, expected);

  Points toAxis = {{10, 19}, {50, 9}, {90, 29}, {90, 99}, {10, 99}};
  EXPECT_EQ(AreaPolygon(upper, nullptr, area_).points, toAxis);
  EXPECT_EQ(AreaPolygon(upper, &upper, area_).points, toAxis);
  VDataset empty(kPlot, &x_, &y_, nullptr);
  EXPECT_EQ(AreaPolygon(upper, &empty, area_).points, toAxis);
}

TEST_F(CurveFillTest, AbsentAndNotANumberPointsStayOutAndNothingIsFilledWithoutPoints) {
  DatasetProps props = FillingTo(u"X_AXES");
  VDataset area(kArea, &x_, &y_, &props);
  RecordingSurface s;
  DrawAreaFill(s, area, nullptr, area_, 0x00FF00);
  EXPECT_TRUE(s.calls.empty());

  LoadPoints(area, {10, 20, 30, 40}, {10, std::nan(""), 30, 40}, {0, 0, 0, 11});
  EXPECT_EQ(AreaPolygon(area, nullptr, area_).points, (Points{{10, 89}, {30, 69}, {30, 99}, {10, 99}}));
  DrawAreaFill(s, area, nullptr, area_, 0x00FF00);
  EXPECT_EQ(s.calls, (std::vector<std::string>{"FillPolygon(4,00FF00)"}));
}

TEST_F(CurveFillTest, ADenseOutlineKeepsFirstLowestHighestAndLastOfEachColumn) {
  VDataset dense(kArea, &x_, &y_, nullptr);
  std::vector<double> xs, ys;
  for (int i = 0; i < 1000; ++i) {
    xs.push_back(10 + (i / 100) * 5 + (i % 100) * 0.001);  // ten columns of a hundred points
    ys.push_back(50 + ((i * 37) % 41) - 20);
  }
  LoadPoints(dense, xs, ys);
  Points outline = CurveOutline(dense, area_);
  ASSERT_LE(outline.size(), 40u);
  for (int column = 0; column < 10; ++column) {
    int first = column * 100, last = first + 99;
    int32_t x = 10 + column * 5;
    Points here;
    for (const Point& p : outline)
      if (p.x == x) here.push_back(p);
    ASSERT_GE(here.size(), 2u);
    EXPECT_EQ(here.front().y, 99 - int32_t(ys[size_t(first)]));
    EXPECT_EQ(here.back().y, 99 - int32_t(ys[size_t(last)]));
    auto [low, high] = std::minmax_element(ys.begin() + first, ys.begin() + last + 1);
    auto has = [&](int32_t y) { return std::any_of(here.begin(), here.end(), [&](const Point& p) { return p.y == y; }); };
    EXPECT_TRUE(has(99 - int32_t(*low)) && has(99 - int32_t(*high)));
  }
}

class CurvePassTest : public EngineTest {
 protected:
  CurvePassTest() : graph_(&window_) {
    AxisProps range = AxisRange(0.0, 100.0);
    graph_.AddXAxis(1, kAxisReal, &range);
    graph_.AddYAxis(1, kAxisReal, &range);
  }
  void Add(int32_t id, DatasetType type, DatasetProps props) {
    graph_.AddDataset(id, type, 1, 1, &props);
    std::vector<double> xs = {10, 50, 90}, ys = {20, 60, 40};
    std::vector<int32_t> status(3, 0);
    graph_.SetDatasetValues(id, 3, Column(xs), Column(ys), status, false);
  }
  RecordingSurface Draw() {
    RecordingSurface s;
    graph_.Draw(s, {0, 0, 401, 301}, {0, 0, 401, 301});
    return s;
  }
  // The calls made under the plot's clipping, where the curves are drawn
  // (no grid is set), cut down to fills, bars and lines, each run once.
  static std::vector<std::string> Kinds(const RecordingSurface& s) {
    std::vector<std::string> kinds;
    auto plot = std::find_if(s.calls.begin(), s.calls.end(), [](const std::string& c) { return c.rfind("Clip", 0) == 0; });
    for (auto c = plot + 1; c != s.calls.end() && c->rfind("Clip", 0) != 0; ++c)
      for (const char* kind : {"FillPolygon", "FillRect", "LineTo"})
        if (c->rfind(kind, 0) == 0 && (kinds.empty() || kinds.back() != kind)) kinds.push_back(kind);
    return kinds;
  }

  FakeWindow window_;
  VGraph graph_;
};

TEST_F(CurvePassTest, FillsComeFirstThenBarsThenLinesWhateverTheListOrder) {
  Add(1, kPlot, {.lineColor = 0x0000FF});
  Add(2, kBar, {.lineColor = 0xFF0000});
  Add(3, kArea, FillingTo(u"X_AXES"));
  RecordingSurface s = Draw();
  EXPECT_EQ(Kinds(s), (std::vector<std::string>{"FillPolygon", "FillRect", "LineTo"}));
  EXPECT_EQ(s.Calls("FillPolygon(5"), (std::vector<std::string>{"FillPolygon(5,00FF00)"}));
  EXPECT_EQ(s.Calls("FillRect").size(), 1u + 3u);  // the background, then three bars
  EXPECT_EQ(s.Calls("Pen(0,1,0000FF").size(), 1u);
  EXPECT_EQ(graph_.FindDataset(2)->drawnType(), kBar);
  EXPECT_TRUE(graph_.FindDataset(2)->drawnAsBars());
  EXPECT_FALSE(graph_.FindDataset(1)->drawnAsBars());
}

TEST_F(CurvePassTest, AHighlightedAreaBlinksFillAndLineTogether) {
  DatasetProps props = FillingTo(u"X_AXES");
  props.lineColor = 0x0000FF;
  Add(5, kArea, props);
  graph_.SetHighlightedCurve(5);
  RecordingSurface first = Draw(), second = Draw(), third = Draw();
  EXPECT_EQ(first.Calls("FillPolygon(5"), (std::vector<std::string>{"FillPolygon(5,00FF00)"}));
  EXPECT_EQ(first.Calls("Pen(0,2,0000FF"), (std::vector<std::string>{"Pen(0,2,0000FF,cosmetic)"}));
  EXPECT_EQ(second.Calls("FillPolygon(5"), (std::vector<std::string>{"FillPolygon(5,FF00FF)"}));
  EXPECT_EQ(second.Calls("Pen(0,2,FFFF00"), (std::vector<std::string>{"Pen(0,2,FFFF00,cosmetic)"}));
  EXPECT_EQ(third.Calls("FillPolygon(5"), first.Calls("FillPolygon(5"));
}

}  // namespace
}  // namespace zel

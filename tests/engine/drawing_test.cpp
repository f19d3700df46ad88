#include <algorithm>
#include <cmath>
#include <cstdio>
#include <random>
#include <set>

#include "engine/axis_painter.h"
#include "engine/axis_scale.h"
#include "engine/curve_painter.h"
#include "engine/curve_reduction.h"
#include "engine/v_axis.h"
#include "engine/v_dataset.h"
#include "engine/v_graph.h"
#include "engine_test_support.h"

namespace zel {
namespace {

class DrawingTest : public EngineTest {
 protected:
  // Over a 100 by 100 plot, values are pixels: x from the left, y up from
  // the bottom row (row 99).
  AxisProps range_ = AxisRange(0.0, 100.0);
  VAxis x_{false, kAxisReal, &range_}, y_{true, kAxisReal, &range_};
};

TEST_F(DrawingTest, CurvePensAreCosmeticBelowWidthTwo) {
  EXPECT_EQ(CurvePen(kPenDash, 1, 0xFF), (Pen{kPenDash, 1, 0xFF, false}));
  EXPECT_EQ(CurvePen(kPenDash, 2, 0xFF), (Pen{kPenDash, 2, 0xFF, true}));
  EXPECT_EQ(CurvePen(kPenDot, 3, 0xFF), (Pen{kPenDot, 3, 0xFF, true}));
  EXPECT_EQ(CurvePen(-1, 2, 0xFF), (Pen{kPenSolid, 2, 0xFF, false}));
}

// Regions leave out their right and bottom edges: a marker 2r + 1 pixels
// across reaches one past x + r and y + r.
TEST_F(DrawingTest, MarkersGrowWithThePenAndTakeTheirShape) {
  EXPECT_EQ(MarkerRegion({10, 10}, kMarkerDot, 1), Region(Ellipse{{7, 7, 15, 15}}));
  EXPECT_EQ(MarkerRegion({10, 10}, kMarkerBox, 2), Region(Rect{5, 5, 16, 16}));
  EXPECT_EQ(MarkerRegion({10, 10}, kMarkerBox, 4), Region(Rect{0, 0, 21, 21}));
  Polygon triangle{{{10, 6}, {14, 14}, {6, 14}}, FillMode::kWinding};
  EXPECT_EQ(MarkerRegion({10, 10}, kMarkerTriangle, 1), Region(triangle));
  EXPECT_EQ(MarkerRegion({10, 10}, 9, 1), Region(Ellipse{{10, 10, 10, 10}}));
}

TEST_F(DrawingTest, PointsAreJoinedAndMarkedByTheirStatus) {
  DatasetProps props{.markerShape = u"BOX", .markerColor = 0x00AA00};
  VDataset curve(kPlot, &x_, &y_, &props);
  LoadPoints(curve, {10, 20, 30, 40, 50, 60}, {10, 20, 30, 40, 50, 60}, {0, 1, 2, 11, 9, 10});
  RecordingSurface s;
  DrawPlot(s, curve, {100, 100}, LookOf(curve, kPlot, {0x0000FF, 0xFF0000, 0x00FFFF, 0}, 1, false));
  EXPECT_EQ(s.Calls("FillBox"), (std::vector<std::string>{
                                     "FillBox(7,86,14,93,00AA00)", "FillBox(17,76,24,83,0000FF)",
                                     "FillBox(27,66,34,73,FF0000)", "FillBox(47,46,54,53,00FFFF)"}));
  // The absent point (status 11) is neither joined nor marked: 30 joins 50.
  EXPECT_EQ(s.Calls("LineTo"), (std::vector<std::string>{"LineTo(20,79)", "LineTo(30,69)",
                                                         "LineTo(50,49)", "LineTo(60,39)"}));
}

TEST_F(DrawingTest, SegmentsAreClippedToTheDataArea) {
  VDataset curve(kPlot, &x_, &y_, nullptr);
  LoadPoints(curve, {50, 150}, {50, 50});
  RecordingSurface s;
  DrawPlot(s, curve, {100, 100}, LookOf(curve, kPlot, {}, 1, false));
  EXPECT_EQ(s.Calls("MoveTo"), (std::vector<std::string>{"MoveTo(50,49)"}));
  EXPECT_EQ(s.Calls("LineTo"), (std::vector<std::string>{"LineTo(100,49)"}));
}

TEST_F(DrawingTest, HighlightWidensThePenAndInvertsColoursEverySecondTime) {
  DatasetProps props{.lineWidth = 2, .lineColor = 0x0000FF, .fillColor = 0x00FF00, .markerColor = 0x123456};
  VDataset curve(kPlot, nullptr, nullptr, &props);
  std::array<int32_t, 4> status = {1, 2, 3, 4};
  CurveLook first = LookOf(curve, kPlot, status, 1, true), second = LookOf(curve, kArea, status, 1, true);
  EXPECT_EQ(first.penWidth, 3);
  EXPECT_EQ((std::array<Color, 3>{first.line, first.fill, first.marker}),
            (std::array<Color, 3>{0x0000FF, 0x00FF00, 0x123456}));
  EXPECT_EQ((std::array<Color, 3>{second.line, second.fill, second.marker}),
            (std::array<Color, 3>{0xFFFF00, 0xFF00FF, 0xEDCBA9}));
  EXPECT_EQ(second.status, (std::array<Color, 3>{1, 2, 3}));  // status colours stay
  EXPECT_EQ(LookOf(curve, kPlot, status, 1, true).line, 0x0000FFu);
  // Bars are not highlighted here and leave the curve toggle alone.
  bool toggle = Process().curveBlink;
  EXPECT_EQ(LookOf(curve, kBar, status, 1, true).penWidth, 2);
  EXPECT_EQ(Process().curveBlink, toggle);
}

TEST_F(DrawingTest, APrinterScalesThePenWidthTruncated) {
  DatasetProps props{.lineWidth = 3};
  VDataset curve(kPlot, nullptr, nullptr, &props);
  // {scale, highlighted, width}: highlighted draws width + 1 unscaled.
  for (auto [scale, highlighted, width] :
       {std::tuple{1.5, false, 4}, {2.0, false, 6}, {2.0, true, 4}, {std::nan(""), false, 3}})
    EXPECT_EQ(LookOf(curve, kPlot, {}, scale, highlighted).penWidth, width) << scale << " " << highlighted;

  FakeWindow window;
  VGraph graph(&window);
  graph.AddXAxis(1, kAxisReal, &range_);
  graph.AddYAxis(1, kAxisReal, &range_);
  props.lineColor = 0x0000FF;
  props.markerShape = u"BOX";
  graph.AddDataset(1, kPlot, 1, 1, &props);
  std::vector<double> xs = {50};
  std::vector<int32_t> status = {0};
  graph.SetDatasetValues(1, 1, Column(xs), Column(xs), status, false);
  graph.SetPrinting(true, 2.5);
  RecordingSurface screen, printer;
  printer.technology = kRasterPrinter;
  graph.Draw(screen, {0, 0, 401, 301}, {0, 0, 401, 301});
  graph.Draw(printer, {0, 0, 401, 301}, {0, 0, 401, 301});
  EXPECT_EQ(screen.Calls("Pen(0,3,0000FF").size(), 1u);
  ASSERT_EQ(printer.Calls("Pen(0,7,0000FF").size(), 1u);
  // Markers grow with the printed width: half-size (7 * 5) / 2 = 17.
  std::vector<std::string> box = printer.Calls("FillBox");
  ASSERT_EQ(box.size(), 1u);
  int left, top, right;
  std::sscanf(box[0].c_str(), "FillBox(%d,%d,%d", &left, &top, &right);
  EXPECT_EQ(right - left, 35);
}

// Colours the pixels of lines as GDI does for a one-pixel pen: from the
// start, not including the end, nothing for a line that does not move.
class PixelModel : public RecordingSurface {
 public:
  std::set<std::pair<int32_t, int32_t>> pixels;
  int lines = 0;
  void MoveTo(Point p) override { at_ = p; }
  void LineTo(Point p) override {
    ++lines;
    int32_t dx = std::abs(p.x - at_.x), dy = std::abs(p.y - at_.y), sx = p.x > at_.x ? 1 : -1,
            sy = p.y > at_.y ? 1 : -1, steps = std::max(dx, dy), err = 0;
    Point q = at_;
    for (int32_t k = 0; k < steps; ++k) {
      pixels.insert({q.x, q.y});
      if (dx >= dy) {
        q.x += sx;
        if (2 * (err += dy) >= dx) q.y += sy, err -= dx;
      } else {
        q.y += sy;
        if (2 * (err += dx) >= dy) q.x += sx, err -= dy;
      }
    }
    at_ = p;
  }

 private:
  Point at_;
};

TEST_F(DrawingTest, AColumnRunKeepsFirstLowestHighestAndLast) {
  RecordingSurface s;
  ColumnRun run;
  run.Start({5, 10});
  for (int32_t y : {12, 3, 8, 20, 15, 7}) run.Add(y);
  run.Draw(s);
  EXPECT_EQ(s.calls, (std::vector<std::string>{"MoveTo(5,10)", "LineTo(5,3)", "LineTo(5,20)", "LineTo(5,7)"}));
  std::vector<Point> outline;
  run.AppendTo(outline);
  EXPECT_EQ(outline, (std::vector<Point>{{5, 10}, {5, 3}, {5, 20}, {5, 7}}));

  // Back at the top after leaving it: the whole run colours the top pixel,
  // which ending top, top would not; one step inward and back does.
  RecordingSurface back;
  run.Start({0, 0});
  for (int32_t y : {5, 3, 5}) run.Add(y);
  run.Draw(back);
  EXPECT_EQ(back.calls, (std::vector<std::string>{"MoveTo(0,0)", "LineTo(0,5)", "LineTo(0,4)", "LineTo(0,5)"}));
}

TEST_F(DrawingTest, ReducedColumnsColourTheSamePixelsAsEverySegment) {
  std::mt19937 random(7);
  for (int trial = 0; trial < 2000; ++trial) {
    int n = 2 + int(random() % 12);
    std::vector<int32_t> ys;
    for (int k = 0; k < n; ++k) ys.push_back(int32_t(random() % 6));
    PixelModel whole, reduced;
    whole.MoveTo({0, ys[0]});
    for (int k = 1; k < n; ++k) whole.LineTo({0, ys[size_t(k)]}), whole.MoveTo({0, ys[size_t(k)]});
    ColumnRun run;
    run.Start({0, ys[0]});
    for (int k = 1; k < n; ++k) run.Add(ys[size_t(k)]);
    run.Draw(reduced);
    ASSERT_EQ(whole.pixels, reduced.pixels) << ::testing::PrintToString(ys);
  }
}

TEST_F(DrawingTest, ADenseCurveIsReducedButKeepsItsPixelsAndMarkers) {
  DatasetProps props{.markerShape = u"DOT"};
  VDataset curve(kPlot, &x_, &y_, &props);
  std::mt19937 random(11);
  std::vector<double> xs, ys;
  std::vector<int32_t> status;
  double level = 50;
  for (int i = 0; i < 5000; ++i) {
    xs.push_back(-10 + i * 0.024);  // from left of the plot to right of it
    level += std::uniform_real_distribution<double>(-3, 3)(random);
    ys.push_back(level);
    status.push_back(i % 97 == 0 ? 11 : i % 89 == 0 ? 10 : 0);
  }
  LoadPoints(curve, xs, ys, status);
  CurveLook look = LookOf(curve, kPlot, {}, 1, false);
  PixelModel every, reduced, automatic;
  DrawPlot(every, curve, {100, 100}, look, Reduction::kNever);
  DrawPlot(reduced, curve, {100, 100}, look, Reduction::kAlways);
  DrawPlot(automatic, curve, {100, 100}, look);
  EXPECT_EQ(every.pixels, reduced.pixels);
  EXPECT_LT(reduced.lines * 3, every.lines);
  EXPECT_EQ(automatic.lines, reduced.lines);
  // Markers stay one per drawn, marked point inside the plot.
  EXPECT_EQ(reduced.Calls("FillEllipse").size(), every.Calls("FillEllipse").size());
  EXPECT_EQ(automatic.Calls("FillEllipse").size(), every.Calls("FillEllipse").size());
  EXPECT_GT(every.Calls("FillEllipse").size(), 1000u);
}

// A curve sorted by x visits only the points that can reach the visible
// columns, and those columns come out exactly as when every point is drawn:
// random walks with repeated x, NaN values and absent points, reversed axes.
TEST_F(DrawingTest, ASortedCurveDrawsOnlyWhatReachesTheViewAndTheSamePixels) {
  std::mt19937 random(5);
  for (int trial = 0; trial < 200; ++trial) {
    AxisProps xRange = trial % 5 == 4 ? AxisRange(100.0, 0.0) : AxisRange(0.0, 100.0);
    VAxis x(false, kAxisReal, &xRange);
    DatasetProps props{.markerShape = trial % 3 ? u"BOX" : u"NONE"};
    VDataset curve(kPlot, &x, &y_, &props);
    std::vector<double> xs, ys;
    std::vector<int32_t> status;
    double at = -20, level = 50;
    int n = 50 + int(random() % 3000);
    for (int i = 0; i < n; ++i) {
      at += random() % 4 == 0 ? 0 : std::uniform_real_distribution<double>(0, 140.0 / n)(random);
      level += std::uniform_real_distribution<double>(-4, 4)(random);
      xs.push_back(at);
      ys.push_back(random() % 50 == 0 ? std::nan("") : level);
      status.push_back(random() % 40 == 0 ? 11 : 0);
    }
    LoadPoints(curve, xs, ys, status);
    ASSERT_TRUE(curve.xValues().nonDecreasing());
    int32_t first = int32_t(random() % 380), last = first + int32_t(random() % (400 - first));
    CurveLook look = LookOf(curve, kPlot, {}, 1, false);
    PixelModel every, seen;
    DrawPlot(every, curve, {400, 100}, look);
    DrawPlot(seen, curve, {400, 100, first, last}, look);
    auto inView = [&](const PixelModel& m) {
      std::set<std::pair<int32_t, int32_t>> kept;
      for (auto p : m.pixels)
        if (p.first >= first && p.first <= last) kept.insert(p);
      return kept;
    };
    ASSERT_EQ(inView(every), inView(seen)) << "trial " << trial;
    auto marksInView = [&](const PixelModel& m) {
      std::vector<std::string> kept;
      for (const std::string& box : m.Calls("FillBox(")) {
        int l, t, r;
        std::sscanf(box.c_str(), "FillBox(%d,%d,%d", &l, &t, &r);
        if (r > first && l <= last) kept.push_back(box);
      }
      return kept;
    };
    ASSERT_EQ(marksInView(every), marksInView(seen)) << "trial " << trial;
    if (n > 1000 && last - first < 40 && every.lines > 40) EXPECT_LT(seen.lines, every.lines) << "trial " << trial;
  }
  // Appended points that go back keep the curve unsorted: every point is visited.
  VDataset curve(kPlot, &x_, &y_, nullptr);
  LoadPoints(curve, {1, 2, 3}, {1, 2, 3});
  std::vector<double> back = {2.5};
  std::vector<int32_t> normal = {0};
  curve.SetValues(1, Column(back), Column(back), normal, true);
  EXPECT_FALSE(curve.xValues().nonDecreasing());
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
  AxisProps range = AxisRange(int32_t(0), int32_t(4));
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

// An X label is drawn only 3 pixels or more after the previous drawn one:
// labels 98 pixels wide, one category (`pitch` pixels) apart.
TEST_F(DrawingTest, XLabelsKeepThreePixelsFromTheLastDrawnOne) {
  AxisProps range = AxisRange(int32_t(0), int32_t(4));
  VAxis axis(false, kAxisDiscrete, &range);
  for (char16_t c : {u'a', u'b', u'c', u'd', u'e'}) axis.categoryLabels().push_back(Text(14, c));
  axis.UpdateSteps(1);
  for (auto [pitch, drawn] : {std::pair{101, 4u}, {100, 2u}}) {
    RecordingSurface s;
    DrawAxis(s, axis, {100, 0, 4 * pitch, 0, 4 * pitch, 0, false}, 0);
    EXPECT_EQ(s.Calls("Text(").size(), drawn) << "gap " << pitch - 98;
  }
}

TEST_F(DrawingTest, YLabelsNeedRoomAboveAndBelowAndTheAxisCarriesAnArrowhead) {
  y_.UpdateSteps(1);
  RecordingSurface s;
  DrawAxis(s, y_, {50, 200, 201, 0, 200, 0, false}, 0);
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
  graph.AddXAxis(1, kAxisReal, &range_);
  graph.AddYAxis(1, kAxisReal, &range_);
  graph.AddDataset(1, kPlot, 1, 1, nullptr);
  RecordingSurface s;
  s.background = 0x123456;
  graph.Draw(s, {0, 0, 401, 301}, {0, 0, 401, 301});
  ASSERT_GE(s.calls.size(), 4u);
  EXPECT_EQ(s.calls[0], "FillRect(0,0,401,301,123456)");
  EXPECT_EQ(s.calls[1], "Save");
  FrameRect data = graph.dataArea();
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

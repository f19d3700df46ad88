// What the drawing pass draws around the curves: grid and limit lines, axes
// on other axes, minor ticks, unit names, printer scaling, hairlines with
// their labels and the rubber band.
#include <algorithm>
#include <cmath>
#include <cstdio>
#include <set>

#include "engine/axis_painter.h"
#include "engine/hairline_label.h"
#include "engine/v_graph.h"
#include "engine_test_support.h"

namespace zel {
namespace {

class GraphDrawingTest : public EngineTest {
 protected:
  FakeWindow window;  // 400 by 300
  VGraph graph{&window};
  RecordingSurface s;

  void AddAxes(const char16_t* gridMode = u"ANNOTATION") {
    AxisProps range = AxisRange(0.0, 100.0);
    if (gridMode) range.gridMode = Text(gridMode);
    graph.AddXAxis(1, kAxisReal, &range);
    graph.AddYAxis(1, kAxisReal, &range);
  }
  void Draw() {
    graph.Recalculate(401, 301, &s);
    s.calls.clear();
    graph.Draw(s, {0, 0, 400, 300}, {0, 0, 400, 300});
  }
  // The lines drawn while `pen` was selected.
  std::vector<std::string> DrawnWith(const std::string& pen) const {
    std::vector<std::string> found;
    bool in = false;
    for (const std::string& call : s.calls) {
      if (call.rfind("Pen(", 0) == 0) in = call == pen;
      else if (in && (call.rfind("MoveTo", 0) == 0 || call.rfind("LineTo", 0) == 0)) found.push_back(call);
    }
    return found;
  }
  size_t Index(const std::string& call) const {
    return size_t(std::find(s.calls.begin(), s.calls.end(), call) - s.calls.begin());
  }
};

// The rows of recorded MoveTo and LineTo calls.
std::set<int> RowsOf(const std::vector<std::string>& lines) {
  std::set<int> rows;
  for (const std::string& line : lines) {
    int x, y;
    if (std::sscanf(line.c_str(), "%*[A-Za-z](%d,%d)", &x, &y) == 2) rows.insert(y);
  }
  return rows;
}

TEST_F(GraphDrawingTest, TheThirdGridWordChoosesWhichAxesDrawGrids) {
  AddAxes();
  // {third word, vertical lines, horizontal lines}
  for (auto [word, wantVertical, wantHorizontal] :
       {std::tuple<int16_t, bool, bool>{0, false, false}, {1, false, true}, {2, true, false}, {3, true, true},
        {4, false, false}}) {
    graph.SetGridProps(0x00FF00, {0, 1, word});
    Draw();
    std::vector<std::string> grid = DrawnWith("Pen(0,1,00FF00,cosmetic)");
    bool vertical = false, horizontal = false;
    for (size_t i = 0; i + 1 < grid.size(); i += 2) {
      int x0, y0, x1, y1;
      ASSERT_EQ(std::sscanf(grid[i].c_str(), "MoveTo(%d,%d)", &x0, &y0), 2);
      ASSERT_EQ(std::sscanf(grid[i + 1].c_str(), "LineTo(%d,%d)", &x1, &y1), 2);
      (x0 == x1 ? vertical : horizontal) = true;
    }
    EXPECT_EQ(std::pair(vertical, horizontal), std::pair(wantVertical, wantHorizontal)) << "word " << word;
  }
}

TEST_F(GraphDrawingTest, PatternedGridLinesStartOnWholePeriods) {
  AddAxes();
  graph.SetGridProps(0x00FF00, {1, 2, 2});  // dashed, width 2, X grid
  Draw();
  std::vector<std::string> grid = DrawnWith("Pen(1,2,00FF00,geometric)");
  ASSERT_FALSE(grid.empty());
  int x, top, bottom;
  ASSERT_EQ(std::sscanf(grid[0].c_str(), "MoveTo(%d,%d)", &x, &top), 2);
  ASSERT_EQ(std::sscanf(grid[1].c_str(), "LineTo(%d,%d)", &x, &bottom), 2);
  EXPECT_EQ(top % 15, 0);
  EXPECT_EQ(bottom % 15, 0);
  EXPECT_LT(top, 0);  // one period before the plot's top

  graph.SetGridProps(0x00FF00, {2, 5, 2});  // a dotted grid of width 5 is drawn 4 wide
  Draw();
  EXPECT_FALSE(DrawnWith("Pen(2,4,00FF00,geometric)").empty());
}

TEST_F(GraphDrawingTest, BarsMoveVerticalGridLinesHalfAStepLeft) {
  AddAxes();
  graph.SetGridProps(0, {0, 1, 2});
  Draw();
  std::vector<std::string> plain = DrawnWith("Pen(0,1,000000,cosmetic)");
  graph.AddDataset(1, kBar, 1, 1, nullptr);
  Draw();
  std::vector<std::string> shifted = DrawnWith("Pen(0,1,000000,cosmetic)");
  int x0, x1, y;
  ASSERT_FALSE(plain.empty());
  ASSERT_FALSE(shifted.empty());
  std::sscanf(plain.front().c_str(), "MoveTo(%d,%d)", &x0, &y);
  std::sscanf(shifted.front().c_str(), "MoveTo(%d,%d)", &x1, &y);
  double step = graph.XAxis(1).annotationStep() * (graph.dataArea().right - graph.dataArea().left + 1) / 100.0;
  // The first line at the plot's left edge moves out of it; the next comes half a step in.
  EXPECT_NEAR(x1 - x0, step / 2, 1);
}

TEST_F(GraphDrawingTest, LimitLinesNeedTheGridPassButNotGridLines) {
  AddAxes(nullptr);  // grid mode NONE
  graph.AddLimitValue(1, Value(50.0), Color(0x0000FF), Text(u"DASHED"), 3);
  Draw();
  EXPECT_TRUE(DrawnWith("Pen(1,3,0000FF,cosmetic)").empty()) << "no Y grid chosen, no limit lines";
  graph.SetGridProps(0, {0, 1, 1});
  Draw();
  std::vector<std::string> limit = DrawnWith("Pen(1,3,0000FF,cosmetic)");
  ASSERT_EQ(limit.size(), 2u);
  FrameRect data = graph.dataArea();
  int32_t height = data.top - data.bottom + 1;
  int32_t y = height - 1 - int32_t(std::lround(height * 0.5));  // counted up from the plot's bottom row
  FrameRect plot = graph.plotFrame();
  EXPECT_EQ(limit[0], "MoveTo(" + std::to_string(plot.left - data.left) + "," + std::to_string(y) + ")");
  EXPECT_EQ(limit[1], "LineTo(" + std::to_string(plot.right - data.left) + "," + std::to_string(y) + ")");

  graph.SetPrinting(true, 2.0);  // printed twice as wide
  Draw();
  EXPECT_EQ(DrawnWith("Pen(1,6,0000FF,cosmetic)").size(), 2u);
}

// With split Y axes the bands share one grid, the first axis's, while every
// shown axis draws its limit lines; a fourth split flag off hides Y4's.
TEST_F(GraphDrawingTest, SplitYAxesShareOneGridButEachDrawsItsLimitLines) {
  AddAxes();
  AxisProps wide = AxisRange(0.0, 1000.0);
  wide.gridMode = Text(u"ANNOTATION");
  for (int32_t id : {2, 3, 4}) graph.AddYAxis(id, kAxisReal, &wide);
  Process().splitYAxis = {true, true, false};
  graph.SetGridProps(0x00FF00, {0, 1, 1});
  const Color colors[] = {0x000001, 0x000002, 0x000003, 0x000004};
  for (int32_t id = 1; id <= 4; ++id) graph.AddLimitValue(id, Value(50.0), colors[id - 1], Text(u"SOLID"), 1);
  Draw();
  std::set<int> gridRows = RowsOf(DrawnWith("Pen(0,1,00FF00,cosmetic)"));
  // Y1 (0..100) has a line every 10 or 20 units; Y2's 0..1000 would put 50 on
  // a row of its own, which the grid must not have.
  int32_t height = graph.dataArea().height();
  EXPECT_TRUE(gridRows.count(height - 1 - int32_t(std::lround(height * 0.2))));
  EXPECT_FALSE(gridRows.count(height - 1 - int32_t(std::lround(height * 0.05))));
  for (int32_t id = 1; id <= 4; ++id) {
    char pen[32];
    std::snprintf(pen, sizeof pen, "Pen(0,1,%06X,cosmetic)", colors[id - 1]);
    EXPECT_EQ(DrawnWith(pen).size(), id == 4 ? 0u : 2u) << "Y" << id;
  }
}

TEST_F(GraphDrawingTest, MinorTicksFallBetweenAnnotations) {
  // Steps kept as given: not whole, above 1.
  AxisProps props{.min = 0.0, .max = 100.0, .annotationIncrement = 25.5f, .tickIncrement = 8.5f, .axisColor = 0};
  VAxis axis(false, kAxisReal, &props);
  axis.UpdateSteps(1);
  DrawAxis(s, axis, {50, 0, 200, 0, 200, 0, false}, 0);
  // Annotations at 0, 51, 102, 153 pixels; ticks every 17: those at 0, 51,
  // 102 and 153 coincide and get no second tick.
  std::vector<int> minor;
  for (size_t i = 0; i + 1 < s.calls.size(); ++i) {
    int x, y0, y1, x1;
    if (std::sscanf(s.calls[i].c_str(), "MoveTo(%d,%d)", &x, &y0) == 2 &&
        std::sscanf(s.calls[i + 1].c_str(), "LineTo(%d,%d)", &x1, &y1) == 2 && y1 - y0 == 4)
      minor.push_back(x);
  }
  EXPECT_EQ(minor, (std::vector<int>{17, 34, 68, 85, 119, 136, 170, 187}));
}

TEST_F(GraphDrawingTest, LabelsShowWholeStepsWhateverThePixelRounding) {
  AxisProps props = AxisRange(int32_t(0), int32_t(20));
  VAxis axis(true, kAxisInteger, &props);
  axis.UpdateSteps(1);
  DrawAxis(s, axis, {50, 340, 337, 0, 340, 0, false}, 0);
  std::vector<std::string> texts = s.Calls("Text(");
  ASSERT_GE(texts.size(), 5u);
  for (const std::string& text : texts) {
    int x, y, value;
    ASSERT_EQ(std::sscanf(text.c_str(), "Text(%d,%d,%d)", &x, &y, &value), 3);
    EXPECT_EQ(value % int(axis.annotationStep()), 0) << text;
  }
}

TEST_F(GraphDrawingTest, APrinterScalesTicksAndGaps) {
  AxisProps props = AxisRange(0.0, 100.0);
  VAxis axis(false, kAxisReal, &props);
  axis.UpdateSteps(1);
  AxisPlacement screen{50, 0, 200, 0, 200, 0, false};
  DrawAxis(s, axis, screen, 0);
  EXPECT_EQ(s.Calls("LineTo(0,")[0], "LineTo(0,58)");
  auto textTop = [](const RecordingSurface& surface) {
    int x = 0, y = -1;
    std::sscanf(surface.Calls("Text(").at(0).c_str(), "Text(%d,%d", &x, &y);
    return y;
  };
  EXPECT_EQ(textTop(s), 60);
  RecordingSurface printer;
  AxisPlacement printed = screen;
  printed.scale = 2;
  DrawAxis(printer, axis, printed, 0);
  EXPECT_EQ(printer.Calls("LineTo(0,")[0], "LineTo(0,66)");
  EXPECT_EQ(textTop(printer), 70);
  EXPECT_EQ(printer.Calls("Pen(")[0], "Pen(0,4,000000,cosmetic)");
}

TEST_F(GraphDrawingTest, SplitYAxesShowTheirUnitNamesAboveTheirTops) {
  AddAxes(nullptr);
  AxisProps range = AxisRange(0.0, 10.0);
  graph.AddYAxis(2, kAxisReal, &range, VAxis::kHighSide);
  graph.SetUnitNames({Text(u"bar"), Text(u"degC"), Text(), Text()});
  auto count = [&](const std::string& ending) {
    return std::ranges::count_if(s.Calls("Text("), [&](const std::string& c) { return c.find(ending) != c.npos; });
  };
  Draw();
  EXPECT_EQ(count(",bar)"), 0);
  Process().splitYAxis = {1, 0, 0};
  Draw();
  EXPECT_EQ(count(",bar)"), 1);
  EXPECT_EQ(count(",degC)"), 1);
  // The plot reaches within 11 pixels of the top, so the top end moves to
  // 15; the unit name's top is that less its height plus 3.
  EXPECT_EQ(count("," + std::to_string(15 - 12 + 3) + ",bar)"), 1);
}

TEST_F(GraphDrawingTest, AnAxisOnAnotherStandsAtItsCrossingValue) {
  AddAxes(nullptr);
  AxisProps range = AxisRange(-1.0, 1.0);
  graph.AddXAxis(2, kAxisReal, &range, VAxis::kOnAxis, 1, 25.0f);
  Draw();
  FrameRect data = graph.dataArea();
  int32_t height = data.top - data.bottom + 1;
  int32_t y = height - 1 - int32_t(std::lround(height * 0.25));
  FrameRect plot = graph.plotFrame();
  std::string line = "MoveTo(" + std::to_string(plot.left - data.left) + "," + std::to_string(y) + ")";
  EXPECT_LT(Index("Pen(0,2,000000,cosmetic)"), Index(line));
  EXPECT_LT(Index(line), s.calls.size());
}

TEST_F(GraphDrawingTest, HairlineLabelsRoundUpAndAlignAtTheEdges) {
  AxisProps range = AxisRange(0.0, 100.0);
  VAxis axis(false, kAxisReal, &range);
  axis.UpdateSteps(1);
  // {value, mode, label}: "%.1f" rounds on its own.
  for (auto [value, mode, label] : {std::tuple{59.95, 0, u"60.0"}, {59.95, 1, u"60.0"}, {59.89, 1, u"59.9"},
                                    {59.91, 1, u"60.0"}, {59.95, 3, u"60"}, {59.5, 3, u"59"}})
    EXPECT_EQ(HairlineLabel(axis, value, mode), label) << value << " " << mode;

  AddAxes(nullptr);
  graph.SetXAxisHairline(1);  // the X axis whose values label the lines
  graph.AddHairline(0, Color(0xFF0000), 1);
  graph.AddHairline(50, Color(0x00FF00), 1);
  graph.AddHairline(100, Color(0x0000FF), 1);
  Draw();
  EXPECT_LT(Index("Align(0)"), Index("TextColor(FF0000)") + 2);
  std::vector<std::string> aligns = s.Calls("Align(");
  // Left edge: left-aligned; middle: centred; right edge: right-aligned; all hang below.
  ASSERT_GE(aligns.size(), 3u);
  EXPECT_EQ(std::vector<std::string>(aligns.end() - 3, aligns.end()),
            (std::vector<std::string>{"Align(0)", "Align(6)", "Align(2)"}));

  s.technology = kRasterPrinter;
  Draw();
  EXPECT_EQ(Index("TextColor(FF0000)"), s.calls.size()) << "no hairlines on a printer";
}


// Grid lines, limit lines, curve vertices, markers and bar tops of one value
// share one row, halves of a pixel included: the Y axis spans as many units as
// the data area has rows, so k + 0.5 lies exactly between two rows.
TEST_F(GraphDrawingTest, EverythingDrawnAtOneValueSharesItsRow) {
  AddAxes(nullptr);
  Draw();
  int32_t height = graph.dataArea().height();
  AxisProps pixels = AxisRange(0.0, double(height));
  pixels.gridMode = Text(u"ANNOTATION");
  graph.SetYAxisProperties(1, pixels);
  graph.SetGridProps(0x00FF00, {0, 1, 1});
  std::vector<double> values = {0, 20.5, 40, 61.5, 100.5, double(height) - 0.5};
  for (size_t i = 0; i < values.size(); ++i)
    graph.AddLimitValue(1, values[i], Color(0x0000FF), Text(u"SOLID"), 1);
  DatasetProps line{.markerShape = u"BOX", .lineColor = 0xFF0000, .markerColor = 0xFF00FF};
  graph.AddDataset(1, kPlot, 1, 1, &line);
  std::vector<double> xs = {10, 20, 30, 40, 50, 60};
  std::vector<int32_t> status(values.size(), 0);
  graph.SetDatasetValues(1, values.size(), Column(xs), Column(values), status, false);
  Draw();

  std::set<int> limits = RowsOf(DrawnWith("Pen(0,1,0000FF,cosmetic)"));
  std::set<int> curve = RowsOf(DrawnWith("Pen(0,1,FF0000,cosmetic)"));
  std::set<int> markers;
  for (const std::string& box : s.Calls("FillBox(")) {
    int l, t, r, b;
    std::sscanf(box.c_str(), "FillBox(%d,%d,%d,%d", &l, &t, &r, &b);
    markers.insert(t + 3);
  }
  // The bottom row is the minimum's: a value of 0 lies on it.
  EXPECT_EQ(*limits.rbegin(), height - 1);
  EXPECT_EQ(limits.size(), values.size());
  EXPECT_EQ(curve, limits);
  EXPECT_EQ(markers, limits);
  std::set<int> grid = RowsOf(DrawnWith("Pen(0,1,00FF00,cosmetic)"));
  EXPECT_TRUE(grid.count(height - 1 - 40)) << "the grid line of 40 lies on the limit line of 40";
  EXPECT_TRUE(limits.count(height - 1 - 40));
  // Halves go up: 20.5 is drawn on the row of 21.
  EXPECT_TRUE(limits.count(height - 1 - 21));

  // A bar reaches up to, and includes, its value's row.
  graph.RemoveDataset(1);
  graph.AddDataset(2, kBar, 1, 1, &line);
  graph.SetDatasetValues(2, values.size(), Column(xs), Column(values), status, false);
  Draw();
  std::set<int> tops;
  for (const std::string& bar : s.Calls("FillRect(")) {
    int l, t, r, b;
    unsigned c;
    std::sscanf(bar.c_str(), "FillRect(%d,%d,%d,%d,%X", &l, &t, &r, &b, &c);
    if (c == 0xFF0000 && t < b) tops.insert(t);
  }
  // Bars are sampled, so not every point is a bar.
  EXPECT_GE(tops.size(), 3u);
  for (int top : tops) EXPECT_TRUE(limits.count(top)) << top;
}

// A hairline's position is a fraction of the visible plot frame: zoomed or
// not, it is drawn where it is grabbed and where its crossings are read.
TEST_F(GraphDrawingTest, HairlinesStayOnTheirFractionOfTheVisibleFrame) {
  AddAxes(nullptr);
  DatasetProps line{.lineColor = 0xFF0000};
  graph.AddDataset(1, kPlot, 1, 1, &line);
  std::vector<double> xs = {0, 100};
  std::vector<int32_t> status = {0, 0};
  graph.SetDatasetValues(1, 2, Column(xs), Column(xs), status, false);
  graph.AddHairline(25, Color(0x00FF00), 1);
  graph.AddHairline(50, Color(0x0000FF), 1);
  for (Fractions zoom : {Fractions{}, Fractions{.left = 0.25f, .right = 0.75f, .bottom = 0, .top = 1},
                         Fractions{.left = 0.5f, .right = 0.6f, .bottom = 0.2f, .top = 0.3f}}) {
    graph.SetZoomRect(zoom);
    Draw();
    const FrameRect& plot = graph.plotFrame();
    int32_t left = graph.margins().left + plot.left;
    for (size_t i = 0; i < 2; ++i) {
      int32_t x = left + int32_t(std::lround(graph.hairlines()[i].position * plot.width()));
      std::vector<std::string> drawn = DrawnWith(i == 0 ? "Pen(0,1,00FF00,cosmetic)" : "Pen(0,1,0000FF,cosmetic)");
      ASSERT_EQ(drawn.size(), 2u) << zoom.left;
      EXPECT_EQ(drawn[0].rfind("MoveTo(" + std::to_string(x) + ",", 0), 0u) << drawn[0] << " " << zoom.left;
      EXPECT_EQ(graph.HairlineColumn(graph.hairlines()[i], 0), x);
    }
  }
}

TEST_F(GraphDrawingTest, TheBandIsADottedXorFrame) {
  AddAxes(nullptr);
  graph.SetBand({.bandX0 = 0.25f, .bandX1 = 0.75f, .bandY0 = 0.25f, .bandY1 = 0.75f});
  Draw();
  size_t xor_ = Index("Xor");
  ASSERT_LT(xor_, s.calls.size());
  EXPECT_EQ(s.calls[xor_ - 2], "Pen(2,1,FFFFFF,cosmetic)");
  EXPECT_EQ(s.calls[xor_ - 1], "BkColor(000000)");
  EXPECT_EQ(s.calls[xor_ + 1].rfind("Polyline(", 0), 0u);
  EXPECT_EQ(s.calls[xor_ + 2], "Copy");

  // A band dragged from its lower left: start corner first, then round.
  graph.SetBand({.bandX0 = 0.1f, .bandX1 = 0.6f, .bandY0 = 0.2f, .bandY1 = 0.9f});
  Draw();
  const FrameRect& data = graph.dataArea();
  int32_t left = graph.margins().left + data.left, bottom = 300 - graph.margins().bottom - data.bottom;
  auto x = [&](double f) { return std::to_string(left + int32_t(std::lround(f * data.width()))); };
  auto y = [&](double f) { return std::to_string(bottom - int32_t(std::lround(f * data.height()))); };
  std::string x0 = x(0.1f), x1 = x(0.6f), y0 = y(0.2f), y1 = y(0.9f);
  EXPECT_EQ(s.Calls("Polyline("), (std::vector<std::string>{"Polyline(" + x0 + "," + y0 + " " + x1 + "," + y0 +
                                                             " " + x1 + "," + y1 + " " + x0 + "," + y1 + " " +
                                                             x0 + "," + y0 + " )"}));
}

}  // namespace
}  // namespace zel

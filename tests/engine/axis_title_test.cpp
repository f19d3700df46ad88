// Where axis titles and unit names go: outside the plot, clear of the other
// texts and of the arrowheads, and titles drawn without a background.
#include <algorithm>
#include <cstdio>

#include "engine/v_graph.h"
#include "engine_test_support.h"

namespace zel {
namespace {

// A recorded text, the rectangle its cell covers (right and bottom
// exclusive) and the index of its call.
struct DrawnText {
  std::string text;
  Rect box;
  size_t call;
};

// The cells of all texts, from their positions, the alignment and the turn
// of the font in force, and the recorder's metrics (7 by 12 a character).
// A turned text runs upwards, its cell's top edge to the left.
std::vector<DrawnText> TextsOf(const std::vector<std::string>& calls) {
  std::vector<DrawnText> texts;
  unsigned align = 0;
  int height = 0, turn = 0;
  for (size_t i = 0; i < calls.size(); ++i) {
    const std::string& call = calls[i];
    int x, y, skip = 0;
    if (std::sscanf(call.c_str(), "Align(%u)", &align) == 1 ||
        std::sscanf(call.c_str(), "Font(%d,%d)", &height, &turn) == 2)
      continue;
    if (std::sscanf(call.c_str(), "Text(%d,%d,%n", &x, &y, &skip) != 2 || skip == 0) continue;
    std::string text = call.substr(size_t(skip), call.size() - size_t(skip) - 1);
    int32_t w = int32_t(7 * text.size()), h = 12;
    unsigned along = align & 6;
    int32_t back = along == kAlignCenter ? w / 2 : along == kAlignRight ? w : 0;
    bool bottom = (align & kAlignBottom) != 0;
    Rect box = turn == 0 ? Rect{x - back, bottom ? y - h : y, x - back + w, bottom ? y : y + h}
                         : Rect{bottom ? x - h : x, y + back - w, bottom ? x : x + h, y + back};
    texts.push_back({text, box, i});
  }
  return texts;
}

Rect BoundsOf(const Polygon& polygon) {
  Rect r{INT32_MAX, INT32_MAX, INT32_MIN, INT32_MIN};
  for (Point p : polygon.points)
    r = {std::min(r.left, p.x), std::min(r.top, p.y), std::max(r.right, p.x), std::max(r.bottom, p.y)};
  return r;
}

// How far apart two rectangles are; 0 or less when they touch or overlap.
int32_t Gap(const Rect& a, const Rect& b) {
  return std::max({b.left - a.right, a.left - b.right, b.top - a.bottom, a.top - b.bottom});
}

std::string Describe(const DrawnText& t) {
  return t.text + " at " + std::to_string(t.box.left) + "," + std::to_string(t.box.top) + "-" +
         std::to_string(t.box.right) + "," + std::to_string(t.box.bottom);
}

class AxisTitleTest : public EngineTest {
 protected:
  FakeWindow window;  // 400 by 300
  VGraph graph{&window};
  RecordingSurface s;

  void Draw() {
    graph.Recalculate(401, 301, &s);
    s.calls.clear();
    s.polygons.clear();
    graph.Draw(s, {0, 0, 400, 300}, {0, 0, 400, 300});
  }
  // The plot in the pass's logical pixels, right and bottom exclusive.
  Rect Plot() const {
    FrameRect plot = graph.plotFrame(), data = graph.dataArea();
    return {plot.left - data.left, data.top - plot.top, plot.right - data.left + 1, data.top - plot.bottom + 1};
  }
  static AxisProps Titled(const char16_t* title, const char16_t* position) {
    AxisProps props = AxisRange(0.0, 100.0);
    props.title = Text(title);
    props.titlePosition = Text(position);
    return props;
  }
};

TEST_F(AxisTitleTest, TitlesStandOutsideThePlotClearOfLabelsArrowheadsAndOneAnother) {
  AxisProps range = AxisRange(0.0, 100.0);
  graph.AddXAxis(1, kAxisReal, &range);
  graph.AddXAxis(2, kAxisReal, &range, VAxis::kHighSide);
  for (int32_t id : {1, 2, 3, 4}) graph.AddYAxis(id, kAxisReal, &range, id % 2 ? VAxis::kLowSide : VAxis::kHighSide);
  Process().splitYAxis = {1, 1, 1};
  // Unit names narrower and wider than the labels.
  graph.SetUnitNames({Text(u"degC"), Text(u"bar"), Text(u"m3/hour"), Text(u"%")});
  const std::vector<std::string> titles{"Time", "Top", "Temperature", "Pressure", "Flow", "Level"};
  const std::vector<std::string> units{"degC", "bar", "m3/hour", "%"};
  for (auto [x, y] : {std::pair{u"LEFT", u"BOTTOM"}, {u"RIGHT", u"TOP"}, {u"CENTER", u"CENTER"}}) {
    graph.XAxis(1).SetProperties(Titled(u"Time", x));
    graph.XAxis(2).SetProperties(Titled(u"Top", x));
    graph.YAxis(1).SetProperties(Titled(u"Temperature", y));
    graph.YAxis(2).SetProperties(Titled(u"Pressure", y));
    graph.YAxis(3).SetProperties(Titled(u"Flow", y));
    graph.YAxis(4).SetProperties(Titled(u"Level", y));
    Draw();
    std::vector<Rect> arrowheads;
    for (const Polygon& polygon : s.polygons) arrowheads.push_back(BoundsOf(polygon));
    ASSERT_EQ(arrowheads.size(), 4u);
    std::vector<DrawnText> texts = TextsOf(s.calls);
    size_t titlesSeen = 0;
    for (const DrawnText& t : texts) {
      if (std::ranges::count(units, t.text) != 0) {
        for (const Rect& arrow : arrowheads) EXPECT_GE(Gap(t.box, arrow), 3) << Describe(t);
      }
      if (std::ranges::count(titles, t.text) == 0) continue;
      ++titlesSeen;
      EXPECT_GT(Gap(t.box, Plot()), 0) << Describe(t);
      for (const Rect& arrow : arrowheads) EXPECT_GT(Gap(t.box, arrow), 0) << Describe(t);
      for (const DrawnText& other : texts) {
        if (other.call == t.call) continue;
        EXPECT_GT(Gap(t.box, other.box), 0) << Describe(t) << " and " << Describe(other);
      }
      // The title's cell is not filled: transparent since the state was last saved.
      auto stateCall = [](const std::string& c) { return c == "Save" || c.rfind("TextBackground(", 0) == 0; };
      auto before = std::find_if(s.calls.rbegin() + ptrdiff_t(s.calls.size() - t.call), s.calls.rend(), stateCall);
      ASSERT_NE(before, s.calls.rend());
      EXPECT_EQ(*before, "TextBackground(transparent)") << t.text;
    }
    EXPECT_EQ(titlesSeen, titles.size());
  }
}

TEST_F(AxisTitleTest, OnlyATitledAxisTakesRoomForItsTitle) {
  AxisProps range = AxisRange(0.0, 100.0);
  graph.AddXAxis(1, kAxisReal, &range);
  graph.AddYAxis(1, kAxisReal, &range);
  Draw();
  FrameRect bare = graph.plotFrame();
  int32_t xThickness = graph.XAxis(1).thickness(), yThickness = graph.YAxis(1).thickness();
  graph.XAxis(1).SetProperties(Titled(u"Sample", u"CENTER"));
  graph.YAxis(1).SetProperties(Titled(u"Reading", u"CENTER"));
  Draw();
  // A line of the title font (12 on the recorder) and a gap of 2 either side.
  EXPECT_EQ(std::pair(graph.XAxis(1).thickness(), graph.YAxis(1).thickness()),
            std::pair(xThickness + 16, yThickness + 16));
  EXPECT_EQ(std::pair(graph.plotFrame().left, graph.plotFrame().bottom), std::pair(bare.left + 16, bare.bottom + 16));
  graph.XAxis(1).SetProperties(Titled(u"", u"CENTER"));
  Draw();
  EXPECT_EQ(graph.XAxis(1).thickness(), xThickness);
  EXPECT_TRUE(s.Calls("TextBackground(").size() == 1) << "only the Y axis has a title left";
}

}  // namespace
}  // namespace zel

// The pie: where layout puts the pie and its labels, and what it draws.
#include <cmath>
#include <limits>
#include <tuple>

#include "engine/pie_layout.h"
#include "engine/v_graph.h"
#include "engine/v_pie_dataset.h"
#include "engine_test_support.h"

namespace zel {
namespace {

using Calls = std::vector<std::string>;
using Pixels = std::vector<int32_t>;

class PieTest : public EngineTest {
 protected:
  // A pie whose labels are "a", "b", ... (7 pixels wide each on the recorder).
  void Fill(const std::vector<float>& sizes) {
    std::vector<Value> labels;
    for (size_t i = 0; i < sizes.size(); ++i) labels.push_back(Text(1, char16_t(u'a' + i % 26)));
    pie.SetValues(sizes.size(), Column(labels), Column(sizes), {}, false);
  }
  // Lays the pie out in `rect` and draws it with the window origin at 0,0.
  RecordingSurface Draw(const Rect& rect) {
    pie.SetPlotRect(rect, measuring);
    RecordingSurface surface;
    pie.DrawPie(surface, {0, 0});
    return surface;
  }

  VPieDataset pie{nullptr};
  RecordingSurface measuring;
};

TEST(PieLayoutTest, TheDiameterShrinksUntilTheLabelsFitBesideThePie) {
  // 200 wide, 200 under the 22-pixel title band: the pie would fill the
  // width, and the label (5 + 29 + 7 pixels) passes the last column by 42.
  std::vector<int32_t> one{7};
  PieLayout layout = LayOutPie(200, 222, 12, 12, one);
  EXPECT_EQ(std::tuple(layout.diameter, layout.labelX, layout.labelY, layout.overflowX),
            std::tuple(158, Pixels{158}, Pixels{22}, 0));
  EXPECT_LT(layout.overflowY, 0);
}

TEST(PieLayoutTest, LabelsBesideThePieWrapIntoRowsOneLineApart) {
  // Wide space: the pie keeps the full height and the labels take rows of
  // two to its right, 10 pixels between one text and the next swatch.
  std::vector<int32_t> widths{70, 70, 70, 70};
  PieLayout layout = LayOutPie(400, 122, 12, 12, widths);
  EXPECT_EQ(std::tuple(layout.diameter, layout.labelX, layout.labelY),
            std::tuple(100, Pixels{100, 209, 100, 209}, Pixels{22, 22, 34, 34}));
  // Rows are never closer than a swatch is high, and a taller font spaces them by its height.
  EXPECT_EQ(LayOutPie(400, 122, 8, 8, widths).labelY, (Pixels{18, 18, 30, 30}));
  EXPECT_EQ(LayOutPie(400, 200, 20, 20, widths).labelY, (Pixels{30, 30, 50, 50}));
  // The band above pie and labels is as high as the title's font needs.
  PieLayout tallTitle = LayOutPie(400, 200, 30, 12, widths);
  EXPECT_EQ(std::tuple(tallTitle.titleBand, tallTitle.diameter, tallTitle.labelY),
            std::tuple(40, 160, Pixels{40, 40, 52, 52}));
}

TEST(PieLayoutTest, LabelsGoBelowWhenThePieCannotShrinkEnoughBesideThem) {
  // Tall space: r = 378 / 100, so the pie may not go below 79 pixels, where
  // a 40-pixel label still does not fit beside it.
  std::vector<int32_t> one{40};
  PieLayout layout = LayOutPie(100, 400, 12, 12, one);
  EXPECT_EQ(std::tuple(layout.diameter, layout.labelX, layout.labelY), std::tuple(100, Pixels{0}, Pixels{122}));

  // Below the pie the diameter gives way to rows that pass the bottom, down
  // to its minimum (178 / 2.78 of 100 = 64); what still passes is reported.
  std::vector<int32_t> nine(9, 40), ten(10, 40);
  PieLayout fits = LayOutPie(100, 200, 12, 12, nine), passes = LayOutPie(100, 200, 12, 12, ten);
  EXPECT_EQ(std::tuple(fits.diameter, fits.overflowY, fits.labelY.back()), std::tuple(67, 0, 22 + 67 + 8 * 12));
  EXPECT_EQ(std::pair(passes.diameter, passes.overflowY), std::pair(64, 9));
}

TEST(PieLayoutTest, DegenerateSpacesGiveNoPieAndNoFault) {
  constexpr int32_t kHuge = std::numeric_limits<int32_t>::max();
  std::vector<int32_t> widths{7, 0, -5, kHuge};
  for (auto [w, h, t] : {std::tuple{0, 0, 12}, {-50, 300, 12}, {300, -50, 12}, {300, 5, 12}, {1, 1, 0},
                         {kHuge, kHuge, 12}, {300, 300, kHuge}}) {
    PieLayout layout = LayOutPie(w, h, t, t, widths);
    EXPECT_GE(layout.diameter, 0);
    EXPECT_LE(layout.diameter, std::max(w, 0));
    EXPECT_EQ(layout.labelX.size(), widths.size());
  }
}

TEST_F(PieTest, LayoutMeasuresTheLabelTextsInTheTextFont) {
  std::vector<Value> labels{Text(u"north"), Text(u"south")};
  std::vector<double> sizes{1, 2};
  pie.SetValues(2, Column(labels), Column(sizes), {}, false);
  pie.SetPlotRect({10, 20, 409, 141}, measuring);
  EXPECT_EQ(measuring.calls.front(), "Save");
  EXPECT_EQ(measuring.calls[1], "Font(" + std::to_string(pie.titleFont().lfHeight) + ",0)");
  EXPECT_EQ(measuring.calls[2], "Font(" + std::to_string(pie.textFont().lfHeight) + ",0)");
  EXPECT_EQ(measuring.calls.back(), "Restore");
  // The rectangle counts both edges: 400 by 122.
  std::vector<int32_t> widths{35, 35};
  PieLayout expected = LayOutPie(400, 122, 12, 12, widths);
  EXPECT_EQ(std::tuple(pie.pieDiameter(), pie.labelX(), pie.labelY()),
            std::tuple(expected.diameter, expected.labelX, expected.labelY));
  EXPECT_EQ(pie.labelOverflow(), (Size{expected.overflowX, expected.overflowY}));
}

TEST_F(PieTest, WedgesRunClockwiseFromTwelveWithTruncatedRadialsInTheSliceColours) {
  // 400 by 300: diameter 278, drawn with radius 136 round (139, 161). The
  // radial at 3 o'clock is 135.99... pixels out, truncated to 135.
  for (std::vector<float> sizes : {std::vector<float>{1, 1, 2}, {0.5f, 0.5f, 1}}) {
    Fill(sizes);
    Calls pies = Draw({0, 0, 399, 299}).Calls("Pie");
    EXPECT_EQ(pie.pieDiameter(), 278);
    EXPECT_EQ(pies,
              (Calls{"Pie(3,25,275,297,274,161,139,25,FF00FF)", "Pie(3,25,275,297,139,296,274,161,0000FF)",
                     "Pie(3,25,275,297,139,26,139,296,00C0FF)"}));
  }
  // An empty slice draws no whole disc.
  Fill({1, 0, 1});
  EXPECT_EQ(Draw({0, 0, 399, 299}).Calls("Pie"),
            (Calls{"Pie(3,25,275,297,139,296,139,25,FF00FF)", "Pie(3,25,275,297,139,26,139,296,00C0FF)"}));

  Fill(std::vector<float>(12, 1));
  pie.SetPieColorAt(0, 0x123456);
  Calls pies = Draw({0, 0, 399, 299}).Calls("Pie");
  ASSERT_EQ(pies.size(), 12u);
  for (auto [slice, colour] : {std::pair{0, "123456)"}, {10, "808080)"}, {11, "C0C0C0)"}})
    EXPECT_EQ(pies[slice].substr(pies[slice].size() - 7), colour);
}

TEST_F(PieTest, SizesThatShareOutNoAngleDrawNoWedges) {
  float nan = std::numeric_limits<float>::quiet_NaN(), inf = std::numeric_limits<float>::infinity();
  for (std::vector<float> sizes : {std::vector<float>{0, 0, 0}, {1, nan, 2}, {inf, 1}, {inf, -inf}}) {
    Fill(sizes);
    RecordingSurface drawn = Draw({0, 0, 399, 299});
    EXPECT_TRUE(drawn.Calls("Pie").empty());
    EXPECT_EQ(drawn.Calls("Rectangle").size(), sizes.size());  // the labels are still there
  }
}

TEST_F(PieTest, ALabelNeedsThirtySevenPixelsBeforeTheRightEdge) {
  // 43 pixels wide: the label goes below the pie at the left, its swatch 5
  // pixels in, and 5 + 37 reaches the right edge exactly.
  Fill({1});
  RecordingSurface fits = Draw({100, 50, 142, 349});
  EXPECT_EQ(fits.Calls("Rectangle"), (Calls{"Rectangle(105,117,129,129,FF00FF)"}));
  EXPECT_EQ(fits.Calls("Text(134"), (Calls{"Text(134,117,a)"}));
  RecordingSurface tooNarrow = Draw({100, 50, 141, 349});
  EXPECT_TRUE(tooNarrow.Calls("Rectangle").empty());
  EXPECT_EQ(tooNarrow.Calls("Text(").size(), 1u);  // the title only
  // Labels that pass the bottom are skipped the same way.
  Fill(std::vector<float>(40, 1));
  size_t drawn = Draw({0, 0, 199, 199}).Calls("Rectangle").size();
  EXPECT_GT(drawn, 0u);
  EXPECT_LT(drawn, 40u);
}

TEST_F(PieTest, DrawingIsClippedToTheRectangleAndLeavesTheSurfaceAsItWas) {
  Fill({1, 2});
  pie.SetPlotRect({20, 30, 419, 329}, measuring);
  RecordingSurface surface;
  pie.DrawPie(surface, {-5, 7});
  const auto& calls = surface.calls;
  EXPECT_EQ(calls[0], "Save");
  EXPECT_EQ(calls[1], "IntersectClip(25,23,424,322)");
  EXPECT_EQ(calls[2], "Pen(0,1,000000,cosmetic)");
  EXPECT_EQ(calls.back(), "Restore");
  EXPECT_EQ(surface.Calls("Text(30,35"), (Calls{"Text(30,35,)"}));  // the (empty) title
  EXPECT_EQ(surface.Calls("TextColor").size(), 2u);
}

// A recorder whose lines are as high as the selected font's characters plus
// some leading, so that a pie's title and text fonts measure differently.
class FontSizedSurface : public RecordingSurface {
 public:
  void SelectFont(const LogFont& font) override {
    height_ = std::abs(font.lfHeight) * 5 / 4;
    RecordingSurface::SelectFont(font);
  }
  Size TextExtent(TextView text) override { return {int32_t(7 * text.size()), height_}; }

 private:
  int32_t height_ = 12;
};

TEST_F(PieTest, TheDiscAndItsOutlineStayInsideTheGraphWhateverItsFontsAndSize) {
  FakeWindow window;
  VGraph graph(&window);
  DatasetProps props;
  graph.AddDataset(1, kPie, 0, 0, &props);
  std::vector<float> sizes{3, 2, 2, 1, 1, 1};
  std::vector<Value> none(6, Text()), short_{Text(u"Gas"), Text(u"Coal"), Text(u"Wind"), Text(u"Solar"),
                                             Text(u"Hydro"), Text(u"Nuclear")},
      long_(6, Text(u"a label far too long to stand beside the pie"));
  // {title font, text font}: the usual pair, a title much taller than the
  // labels, and labels taller than the title.
  for (auto [titleFont, textFont] : {std::pair{u"Arial,9,Bold", u"Arial,7"}, {u"Arial,28", u"Arial,7"},
                                     {u"Arial,7", u"Arial,16"}})
    for (const auto* labels : {&none, &short_, &long_})
      for (auto [w, h] : {std::pair{600, 400}, {800, 500}, {601, 401}, {200, 600}, {150, 90}, {45, 45}}) {
        props.title = Text(u"Energy by source");
        props.titleFont = Text(titleFont);
        props.textFont = Text(textFont);
        graph.Dataset(1).SetProps(props);
        graph.Dataset(1).SetValues(6, Column(*labels), Column(sizes), {}, false);
        window.client = {0, 0, w, h};
        FontSizedSurface s;
        graph.Recalculate(w + 1, h + 1, &s);
        graph.Draw(s, {0, 0, w, h}, {0, 0, w, h});
        std::string where = "in " + std::to_string(w) + " by " + std::to_string(h);
        Point origin;
        ASSERT_EQ(std::sscanf(s.Calls("Origin(").at(0).c_str(), "Origin(%d,%d)", &origin.x, &origin.y), 2);
        int outline = 0;
        ASSERT_EQ(std::sscanf(s.Calls("Pen(").back().c_str(), "Pen(%*d,%d", &outline), 1);
        // Inside the margins of 10 pixels, the outline's width around the box included.
        for (const std::string& call : s.Calls("Pie(")) {
          Rect box;
          ASSERT_EQ(std::sscanf(call.c_str(), "Pie(%d,%d,%d,%d", &box.left, &box.top, &box.right, &box.bottom), 4);
          EXPECT_GE(box.left - origin.x - outline, 10) << where;
          EXPECT_GE(box.top - origin.y - outline, 10) << where;
          EXPECT_LE(box.right - origin.x + outline, w - 10) << where;
          EXPECT_LE(box.bottom - origin.y + outline, h - 10) << where << " " << call;
        }
        if (w >= 200) {
          EXPECT_EQ(s.Calls("Pie(").size(), sizes.size()) << where;
        }
      }
}

TEST_F(PieTest, AnEmptyPieDrawsNothing) {
  EXPECT_TRUE(Draw({0, 0, 399, 299}).calls.empty());
  EXPECT_EQ(pie.pieDiameter(), 0);
  EXPECT_EQ(pie.labelOverflow(), (Size{-400, -300}));
}

}  // namespace
}  // namespace zel

// The legend: which curves it lists, where each entry goes at the sides and
// in the bands, and the room it asks for.
#include "engine/v_dataset.h"
#include "engine/v_legend.h"
#include "engine_test_support.h"

namespace zel {
namespace {

using Calls = std::vector<std::string>;

class LegendTest : public EngineTest {
 protected:
  // A curve titled `title` (7 pixels a character on the recorder).
  void Add(const std::u16string& title, DatasetType type = kPlot, const char16_t* marker = u"BOX") {
    DatasetProps props{.title = title, .markerShape = Text(marker), .lineColor = 0x0000FF, .markerColor = 0x00FF00,
                       .titleColor = 0x112233, .type = DatasetTypeKeyword(type)};
    int32_t id = int32_t(datasets.size()) + 1;
    datasets.Add(id, std::make_unique<VDataset>(type, nullptr, nullptr, &props));
  }
  Calls Draw(LegendPosition position, const Rect& rect, double scale = 1) {
    legend.position = position;
    legend.rect = rect;
    surface.calls.clear();
    legend.Draw(surface, scale);
    return surface.calls;
  }

  IdMap<VDataset> datasets;
  VLegend legend{datasets};
  RecordingSurface surface;
};

TEST_F(LegendTest, SideEntriesTakeARowEachAndShowLineMarkerAndTitle) {
  Add(u"flow");
  Add(u"level");
  Draw(VLegend::kRight, {300, 0, 400, 300});
  // Row base: top + 3 + 12 / 2 + 11; rows 14 + 12 apart.
  EXPECT_EQ(surface.Calls("MoveTo(310"), (Calls{"MoveTo(310,20)", "MoveTo(310,46)"}));
  EXPECT_EQ(surface.Calls("LineTo(342"), (Calls{"LineTo(342,20)", "LineTo(342,46)"}));
  EXPECT_EQ(surface.Calls("FillBox"),
            (Calls{"FillBox(323,18,330,25,00FF00)", "FillBox(323,44,330,51,00FF00)"}));
  EXPECT_EQ(surface.Calls("Text("), (Calls{"Text(352,14,flow)", "Text(352,40,level)"}));
  EXPECT_EQ(surface.Calls("TextColor"), (Calls{"TextColor(112233)", "TextColor(112233)"}));
  EXPECT_EQ(surface.Calls("Pen(0,1,0000FF"), (Calls{"Pen(0,1,0000FF,cosmetic)", "Pen(0,1,0000FF,cosmetic)"}));
}

TEST_F(LegendTest, BandEntriesFlowAndWrapWithinTheLegendsWidth) {
  // Each entry takes its text and 52 pixels: 80 for four characters.
  for (int i = 0; i < 3; ++i) Add(u"abcd");
  // The width counts both edges: 160 fits two entries in a row.
  Draw(VLegend::kBottom, {0, 200, 159, 300});
  EXPECT_EQ(surface.Calls("Text("), (Calls{"Text(52,214,abcd)", "Text(132,214,abcd)", "Text(52,232,abcd)"}));
  Draw(VLegend::kTop, {0, 0, 158, 100});
  EXPECT_EQ(surface.Calls("Text("), (Calls{"Text(52,14,abcd)", "Text(52,32,abcd)", "Text(52,50,abcd)"}));
  // An entry wider than the legend still takes a row of its own.
  Draw(VLegend::kTop, {0, 0, 50, 100});
  EXPECT_EQ(surface.Calls("Text(").size(), 3u);
}

TEST_F(LegendTest, AtMostTwentyCurvesAreListed) {
  for (int i = 0; i < 25; ++i) Add(std::u16string(1, char16_t(u'A' + i)));
  Draw(VLegend::kLeft, {0, 0, 100, 1000});
  Calls texts = surface.Calls("Text(");
  ASSERT_EQ(texts.size(), 20u);
  EXPECT_EQ(texts.back(), "Text(52," + std::to_string(14 + 19 * 26) + ",T)");
}

TEST_F(LegendTest, BarsShowNoMarkerAndOtherCurvesTheirShape) {
  Add(u"bar", kBar);
  Add(u"stack", kStackedBar);
  Add(u"plain", kPlot, u"NONE");
  Add(u"dot", kArea, u"DOT");
  Add(u"tri", kPlot, u"TRIANGLE");
  Draw(VLegend::kRight, {0, 0, 200, 300});
  EXPECT_EQ(surface.Calls("Fill"), (Calls{"FillEllipse(23,96,31,104,00FF00)", "FillPolygon(3,00FF00)"}));
  EXPECT_EQ(surface.Calls("MoveTo(10").size(), 5u);
}

TEST_F(LegendTest, TheSeparatorIsAnXorLineOnTheSideFacingThePlot) {
  Add(u"x");
  for (auto [position, from, to] : {std::tuple{VLegend::kRight, "MoveTo(300,10)", "LineTo(300,90)"},
                                    {VLegend::kLeft, "MoveTo(399,10)", "LineTo(399,90)"},
                                    {VLegend::kTop, "MoveTo(300,89)", "LineTo(400,89)"},
                                    {VLegend::kBottom, "MoveTo(300,10)", "LineTo(400,10)"},
                                    {LegendPosition::kNone, "MoveTo(300,10)", "LineTo(400,10)"}}) {
    Calls calls = Draw(position, {300, 10, 400, 90});
    ASSERT_GE(calls.size(), 8u);
    EXPECT_EQ(calls[0], "Save");
    EXPECT_EQ(calls[1], "IntersectClip(300,10,400,90)");
    EXPECT_EQ((Calls(calls.begin() + 2, calls.begin() + 7)),
              (Calls{"Xor", "Pen(0,1,FFFFFF,cosmetic)", from, to, "Copy"})) << int(position);
    EXPECT_EQ(calls.back(), "Restore");
  }
  EXPECT_TRUE(Draw(VLegend::kRight, {300, 10, 300, 90}).empty());
  EXPECT_TRUE(Draw(VLegend::kTop, {300, 10, 400, 5}).empty());
}

TEST_F(LegendTest, OnARasterPrinterEverythingScales) {
  Add(u"flow", kPlot, u"BOX");
  int32_t height = datasets.entries()[0].object->titleFont().lfHeight;
  surface.technology = kRasterPrinter;
  Draw(VLegend::kRight, {0, 0, 400, 300}, 2);
  // gap 20, sample 64, first row 18, indent 104; markers of a 2-pixel pen.
  EXPECT_EQ(surface.Calls("Font"), (Calls{"Font(" + std::to_string(height * 2) + ",0)"}));
  EXPECT_EQ(surface.Calls("MoveTo(20"), (Calls{"MoveTo(20,27)"}));
  EXPECT_EQ(surface.Calls("LineTo(84"), (Calls{"LineTo(84,27)"}));
  EXPECT_EQ(surface.Calls("FillBox"), (Calls{"FillBox(47,23,58,34,00FF00)"}));
  EXPECT_EQ(surface.Calls("Text("), (Calls{"Text(104,21,flow)"}));
  // The printer's scale means nothing on a display.
  surface.technology = kRasterDisplay;
  Draw(VLegend::kRight, {0, 0, 400, 300}, 2);
  EXPECT_EQ(surface.Calls("Text("), (Calls{"Text(52,14,flow)"}));
}

TEST_F(LegendTest, MeasuredRoomHoldsWhatIsDrawn) {
  EXPECT_EQ(legend.Measure(surface, VLegend::kRight, 300, 1), 0);
  Add(u"abcd");
  Add(u"a much longer title");
  Add(u"ab");
  // At a side: the widest entry (52 + 133) and a gap.
  EXPECT_EQ(legend.Measure(surface, VLegend::kLeft, 300, 1), 195);
  // In a band 200 wide: rows of 80 + 52 + 133 do not fit, so three rows.
  int32_t height = legend.Measure(surface, VLegend::kBottom, 200, 1);
  EXPECT_EQ(height, 3 + 11 + 2 * 18 + 12 + 11);
  EXPECT_EQ(legend.Measure(surface, VLegend::kTop, 1000, 1), 3 + 11 + 12 + 11);
  // Drawn in exactly that room, every title lies inside it.
  Draw(VLegend::kBottom, {0, 500, 199, 500 + height});
  Calls texts = surface.Calls("Text(");
  ASSERT_EQ(texts.size(), 3u);
  EXPECT_EQ(texts.back(), "Text(52,550,ab)");
  EXPECT_LE(550 + 12, 500 + height);
  // Measuring leaves the surface as it was.
  surface.calls.clear();
  legend.Measure(surface, VLegend::kTop, 100, 1);
  EXPECT_EQ(surface.calls.front(), "Save");
  EXPECT_EQ(surface.calls.back(), "Restore");
}

}  // namespace
}  // namespace zel

#include "engine/v_dataset.h"

#include <array>
#include <cmath>
#include <tuple>

#include "engine/graph_error.h"
#include "engine/v_axis.h"
#include "engine/v_pie_dataset.h"
#include "engine_test_support.h"
#include "util/text_ids.h"
#include "util/value_conversion.h"

namespace zel {
namespace {

// The texts a dataset's record reads back: title, line style, marker shape,
// title and text fonts, type and fill reference.
using Fields = std::array<Text, 7>;
Fields Texts(const DatasetProps& p) {
  return {*p.title, *p.lineStyle, *p.markerShape, *p.titleFont, *p.textFont, *p.type, *p.fillTo};
}

class VDatasetTest : public EngineTest {
 protected:
  VAxis integerX{false, kAxisInteger, nullptr};
  VAxis realY{true, kAxisReal, nullptr};
  VAxis timeX{false, kAxisTime, nullptr};
  VAxis discreteX{false, kAxisDiscrete, nullptr};

  std::vector<int32_t> Zeros(size_t n) { return std::vector<int32_t>(n, 0); }

  // Sets values and returns the message raised, or 0.
  int Set(VDataset& d, const ValueColumn& xs, const ValueColumn& ys, size_t n, bool append) {
    std::vector<int32_t> status = Zeros(n);
    try {
      d.SetValues(n, xs, ys, status, append);
    } catch (const GraphError& e) {
      EXPECT_EQ(e.argument.index(), 1u);
      return e.messageId * 1000 + std::get<int32_t>(e.argument);
    }
    return 0;
  }
};

TEST_F(VDatasetTest, DefaultsAndPropertiesApplyByTheirOwnRules) {
  VDataset d(kPlot, &integerX, &realY, nullptr);
  DatasetProps defaults = d.GetProps();
  EXPECT_EQ(Texts(defaults), (Fields{u"", u"SOLID", u"NONE", u"Arial,9, Bold, Charset_Default",
                                     u"Arial,7, Charset_Default", u"PLOT", u"X_AXES"}));
  EXPECT_EQ(std::tuple(defaults.lineWidth, *defaults.lineColor, *defaults.fillColor, defaults.YaxisID),
            std::tuple(1, 0x0000C0u, 0u, 0));
  EXPECT_EQ(integerX.refCount(), 1);
  EXPECT_EQ(realY.refCount(), 1);

  d.SetProps({.title = Text(300, u'T'), .lineStyle = u"DOTTED", .titleFont = u"Times,10,underlined",
              .realXbarMode = 2, .lineWidth = 3, .lineColor = 0x123456, .manualColor = 0x654321, .type = u"AREA",
              .fillTo = u"CURVE", .fillCurveId = 7, .YaxisID = 2});
  DatasetProps read = d.GetProps();
  EXPECT_EQ(Texts(read), (Fields{Text(254, u'T'), u"DOTTED", u"NONE", u"Times,10, Underlined, Charset_Default",
                                 u"Arial,7, Charset_Default", u"AREA", u"CURVE"}));

  // Out-of-range numbers and null texts keep what is there; unknown
  // keywords and untranslatable colours fall back.
  d.SetProps({.lineStyle = u"WAVY", .titleFont = u"", .realXbarMode = -1, .lineWidth = 0, .type = u"SCATTER",
              .fillTo = u"ABOVE", .fillCurveId = -1});
  read = d.GetProps();
  EXPECT_EQ(std::tuple(read.lineWidth, read.realXbarMode, read.fillCurveId, read.YaxisID), std::tuple(3, 2, 7, 0));
  EXPECT_EQ(d.lineStyle(), -1);
  EXPECT_EQ(Texts(read), (Fields{Text(254, u'T'), u"SOLID", u"NONE", u"Times,10, Underlined, Charset_Default",
                                 u"Arial,7, Charset_Default", u"PLOT", u"X_AXES"}));
  EXPECT_EQ(std::tuple(*read.lineColor, *read.textColor, *read.manualColor),
            std::tuple(0xE0E0E0u, 0xE0E0E0u, 0xFFFF00u));
}

TEST_F(VDatasetTest, ValuesAreStoredInTheTypeOfTheirAxis) {
  VDataset d(kPlot, &timeX, &realY, nullptr);
  LoadPoints(d, {45000.5, 45001.25}, {0.1, -2.5}, {11, 10});
  EXPECT_EQ(d.XAt(0), Value(DateValue{45000.5}));
  EXPECT_EQ(d.YAt(0), Value(0.1f));
  EXPECT_EQ(double(std::get<float>(d.YAt(0))), 0.10000000149011612);
  EXPECT_EQ(std::vector<int32_t>(d.status().begin(), d.status().end()), (std::vector<int32_t>{11, 10}));

  VDataset i(kPlot, &integerX, &realY, nullptr);
  std::vector<double> halves = {2.5, 3.5, -2.5, 1e9};
  EXPECT_EQ(Set(i, Column(halves), Column(halves), 4, false), 0);
  EXPECT_EQ(i.XAt(0), Value(int32_t(2)));
  std::vector<Value> mixed = {int16_t(3), Text(u" 4.5 "), DateValue{2}, Value()};
  EXPECT_EQ(Set(i, Column(mixed), Column(mixed), 4, false), 0);
  EXPECT_EQ(i.XAt(1), Value(int32_t(4)));
  EXPECT_EQ(i.XAt(3), Value(int32_t(0)));
  EXPECT_EQ(i.YAt(1), Value(4.5f));
}

TEST_F(VDatasetTest, AppendAddsAndReplaceStartsOver) {
  VDataset d(kPlot, &integerX, &realY, nullptr);
  std::vector<int32_t> a = {1, 2, 3}, b = {4, 5};
  EXPECT_EQ(Set(d, Column(a), Column(a), 3, false), 0);
  EXPECT_EQ(Set(d, Column(b), Column(b), 2, true), 0);
  ASSERT_EQ(d.count(), 5u);
  EXPECT_EQ(d.XAt(4), Value(int32_t(5)));
  EXPECT_EQ(Set(d, Column(b), Column(b), 0, true), 0);
  EXPECT_EQ(d.count(), 5u);
  EXPECT_EQ(Set(d, Column(b), Column(b), 0, false), 0);
  EXPECT_EQ(d.count(), 0u);
}

TEST_F(VDatasetTest, BadValuesRaiseTheirAbsolutePositionAndChangeNothing) {
  VDataset d(kPlot, &timeX, &realY, nullptr);
  std::vector<double> good = {45000, 45001, 45002};
  EXPECT_EQ(Set(d, Column(good), Column(good), 3, false), 0);
  std::vector<double> badX = {1, 2, 3e9};
  std::vector<double> badY = {1, 1e39, 2};
  EXPECT_EQ(Set(d, Column(badX), Column(good), 3, true), kMsgWrongValueType * 1000 + 5);
  EXPECT_EQ(Set(d, Column(good), Column(badY), 3, true), kMsgWrongValueType * 1000 + 4);
  EXPECT_EQ(Set(d, Column(badX), Column(badY), 3, false), kMsgWrongValueType * 1000 + 2);
  ASSERT_EQ(d.count(), 3u);
  EXPECT_EQ(d.xValues().size(), 3u);
  EXPECT_EQ(d.yValues().size(), 3u);
  EXPECT_EQ(d.YAt(2), Value(45002.0f));
  std::vector<Value> text = {Text(u"ten")};
  VDataset i(kPlot, &integerX, &realY, nullptr);
  EXPECT_EQ(Set(i, Column(text), Column(good), 1, false), kMsgWrongValueType * 1000 + 0);
  std::vector<double> nan = {NAN};
  EXPECT_EQ(Set(i, Column(nan), Column(nan), 1, false), kMsgWrongValueType * 1000 + 0);
  EXPECT_EQ(Set(d, Column(nan), Column(nan), 1, false), 0);
}

TEST_F(VDatasetTest, DiscreteAxesNumberPointsAndKeepTheirTextsAsLabelsTillACurveIsCleared) {
  VDataset d(kPlot, &discreteX, &realY, nullptr);
  std::vector<Value> xs = {Text(u"A"), int32_t(7), Text(u"C")};
  std::vector<double> ys = {1, 2, 3};
  EXPECT_EQ(Set(d, Column(xs), Column(ys), 3, false), 0);
  EXPECT_EQ(d.XAt(0), Value(int32_t(1)));
  EXPECT_EQ(d.XAt(2), Value(int32_t(3)));
  const CategoryLabels& labels = discreteX.categoryLabels();
  ASSERT_EQ(labels.size(), 5u);
  EXPECT_EQ(labels[0], Text(u"A"));
  EXPECT_EQ(labels[1], Text(u"##"));
  EXPECT_EQ(labels[2], Text(u"C"));
  EXPECT_EQ(labels[3], std::nullopt);

  // Appending reads "is it a text" at the position among all points, in the
  // new array: here position 3 of a two-element array, so no label.
  std::vector<Value> more = {Text(u"D"), Text(u"E")};
  EXPECT_EQ(Set(d, Column(more), Column(ys), 2, true), 0);
  EXPECT_EQ(labels[3], Text(u"##"));
  EXPECT_EQ(d.XAt(4), Value(int32_t(5)));
  std::vector<Value> longer = {Text(u"F"), Text(u"G"), Text(u"H"), Text(u"I"), Text(u"J"),
                               Text(u"K")};
  EXPECT_EQ(Set(d, Column(longer), Column(ys), 1, true), 0);
  EXPECT_EQ(labels[5], Text(u"F"));

  // Clearing any dataset on the axis drops the labels of all of them.
  VDataset other(kPlot, &discreteX, &realY, nullptr);
  other.Clear();
  EXPECT_TRUE(labels.empty());
  EXPECT_EQ(d.count(), 6u);
}

TEST_F(VDatasetTest, BarsOnDiscreteAxesTakeSlotsInCreationOrder) {
  VAxis discreteY(true, kAxisDiscrete, nullptr);
  auto first = std::make_unique<VDataset>(kBar, &discreteX, &realY, nullptr);
  VDataset plot(kPlot, &discreteX, &realY, nullptr);
  DatasetProps asBar{.type = u"BAR"};
  VDataset changed(kPlot, &discreteX, &realY, &asBar);
  VDataset second(kBar, &integerX, &discreteY, nullptr);
  ASSERT_EQ(discreteX.barList().size(), 1u);
  EXPECT_EQ(discreteX.barList()[0].dataset, first.get());
  EXPECT_EQ(discreteY.barList()[0].dataset, &second);
  EXPECT_TRUE(integerX.barList().empty());
  first.reset();
  EXPECT_TRUE(discreteX.barList().empty());
  EXPECT_EQ(discreteX.refCount(), 2);
}

TEST_F(VDatasetTest, PieColoursStartWithTenAndContinueInGreys) {
  auto greys = [](size_t slices) {
    std::vector<int> v;
    auto colors = VPieDataset::DefaultColors(slices);
    for (size_t i = 10; i < colors.size(); ++i) v.push_back(int(colors[i] & 0xFF));
    return v;
  };
  auto ten = VPieDataset::DefaultColors(10);
  ASSERT_EQ(ten.size(), 10u);
  EXPECT_EQ(ten[9], Color(0xC000C0));
  EXPECT_EQ(greys(11), std::vector<int>({128}));
  EXPECT_EQ(greys(20), std::vector<int>({128, 140, 152, 164, 176, 188, 200, 212, 224, 236}));
  EXPECT_EQ(greys(150)[128], (128 + 128 * 0) % 256);
  EXPECT_EQ(VPieDataset::DefaultColors(400)[300], Color(0x808080));
}

TEST_F(VDatasetTest, PiesKeepLabelsAsGivenAndSizesAsFloats) {
  VPieDataset pie(nullptr);
  std::vector<Value> labels = {Text(u"north"), int16_t(2), DateValue{3}};
  std::vector<Value> sizes = {1.0, Text(u"2"), int32_t(3)};
  pie.SetValues(3, Column(labels), Column(sizes), {}, false);
  EXPECT_EQ(pie.XAt(1), Value(int16_t(2)));
  EXPECT_EQ(pie.XAt(2), Value(DateValue{3}));
  EXPECT_EQ(pie.YAt(1), Value(2.0f));
  EXPECT_TRUE(pie.SetPieColorAt(2, 0x010203));
  EXPECT_FALSE(pie.SetPieColorAt(3, 0));
  EXPECT_FALSE(pie.SetPieColorAt(-1, 0));
  EXPECT_EQ(pie.sliceColors()[2], Color(0x010203));

  std::vector<Value> one = {Text(u"south")}, five = {5.0};
  pie.SetValues(1, Column(one), Column(five), {}, true);
  EXPECT_EQ(pie.count(), 4u);
  EXPECT_EQ(pie.sliceColors()[2], VPieDataset::DefaultColors(4)[2]);

  std::vector<Value> bad = {1.0, Text(u"lots")};
  try {
    pie.SetValues(2, Column(bad), Column(bad), {}, false);
    FAIL();
  } catch (const StatusError& e) {
    EXPECT_EQ(e.status, kTypeMismatch);
  }
  EXPECT_EQ(pie.count(), 4u);
  EXPECT_EQ(pie.XAt(0), Value(Text(u"north")));
}

TEST(DatasetKeywordsTest, DisplayTextsComeFromTheTextTableInTheirOwnOrder) {
  EXPECT_EQ((std::vector<Text>{MarkerShapeDisplayText(kMarkerDot), MarkerShapeDisplayText(kMarkerBox),
                                MarkerShapeDisplayText(kMarkerNone), MarkerShapeDisplayText(7)}),
            (std::vector<Text>{u"DOT", u"BOX", u"NONE", u"NONE"}));
  EXPECT_EQ((std::vector<Text>{LineStyleDisplayText(2), LineStyleDisplayText(-1), DatasetTypeDisplayText(kStackedBar),
                                DatasetTypeDisplayText(DatasetType(9)), DatasetTypeKeyword(DatasetType(-1))}),
            (std::vector<Text>{u"DOTTED", u"SOLID", u"STACKED BAR", u"???", u"???"}));
  EXPECT_EQ((std::vector<Text>{ListIndexText(4), ListIndexText(6), ListIndexText(0)}),
            (std::vector<Text>{u"4", u"1", u"1"}));
}

}  // namespace
}  // namespace zel

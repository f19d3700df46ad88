#include "engine/v_axis.h"

#include <array>
#include <cmath>
#include <tuple>

#include "engine/graph_error.h"
#include "engine_test_support.h"
#include "util/text_ids.h"

namespace zel {
namespace {

int MessageOf(auto&& action) {
  try {
    action();
  } catch (const GraphError& e) {
    return e.messageId;
  }
  return 0;
}

class VAxisTest : public EngineTest {};

// titlePosition, gridMode and gridStyle as read back.
std::array<Text, 3> Keywords(const AxisProps& p) { return {*p.titlePosition, *p.gridMode, *p.gridStyle}; }

TEST_F(VAxisTest, DefaultsAndWhatAnyRecordResets) {
  VAxis x(false, kAxisReal, nullptr);
  VAxis y(true, kAxisReal, nullptr);
  AxisProps defaults = x.GetProperties();
  EXPECT_EQ(defaults.axisFont, u"Arial,9, Bold, Charset_Default");
  EXPECT_EQ(defaults.annotationFont, u"Arial,7, Charset_Default");
  EXPECT_EQ(defaults.titlePosition, u"LEFT");
  EXPECT_EQ(std::tuple(defaults.YaxisPos, defaults.gridWidth, defaults.min), std::tuple(1, 0, Value(0.0)));
  EXPECT_EQ(std::pair(x.axisFont().lfEscapement, y.axisFont().lfEscapement), std::pair(0, 900));

  y.SetProperties(AxisProps{});
  AxisProps applied = y.GetProperties();
  EXPECT_EQ(Keywords(applied), (std::array<Text, 3>{u"TOP", u"NONE", u"SOLID"}));
  EXPECT_EQ(std::pair(applied.gridWidth, applied.YaxisPos), std::pair(int16_t(1), 0));
  EXPECT_EQ(std::pair(*applied.axisColor, *applied.gridColor), std::pair(0x0000FFu, 0x808080u));
}

TEST_F(VAxisTest, EndsAreHeldInTheAxisTypeAndRealsReadBackAsDoubles) {
  VAxis real(false, kAxisReal, nullptr);
  real.SetProperties(AxisRange(int32_t(0), 0.1));
  EXPECT_EQ(real.GetProperties().max, Value(double(0.1f)));
  EXPECT_EQ(std::get<double>(real.GetProperties().max), 0.10000000149011612);

  VAxis integer(false, kAxisInteger, nullptr);
  integer.SetProperties(AxisRange(-2.5, 3.5));
  EXPECT_EQ(integer.min(), Value(int32_t(-2)));
  EXPECT_EQ(integer.max(), Value(int32_t(4)));

  VAxis discrete(false, kAxisDiscrete, nullptr);
  discrete.SetProperties(AxisRange(int32_t(5), int32_t(9)));
  EXPECT_EQ(discrete.min(), Value(int32_t(0)));

  VAxis time(false, kAxisTime, nullptr);
  time.SetProperties(AxisRange(45000.0, Text(u"45001.5")));
  EXPECT_EQ(time.GetProperties().max, Value(DateValue{45001.5}));
}

TEST_F(VAxisTest, UnconvertibleEndsRaiseAndChangeNothing) {
  VAxis axis(false, kAxisReal, nullptr);
  axis.SetProperties(AxisRange(1.0, 2.0));
  AxisProps badMax = AxisRange(5.0, 1e39);
  badMax.title = u"changed";
  EXPECT_EQ(MessageOf([&] { axis.SetProperties(badMax); }), kMsgWrongMax);
  EXPECT_EQ(MessageOf([&] { axis.SetProperties(AxisRange(Text(u"abc"), 1e39)); }), kMsgWrongMin);
  EXPECT_EQ(axis.min(), Value(1.0f));
  EXPECT_EQ(axis.title(), u"");
  VAxis time(false, kAxisTime, nullptr);
  EXPECT_EQ(MessageOf([&] { time.SetProperties(AxisRange(0.0, 3e6)); }), kMsgWrongMax);
  EXPECT_EQ(MessageOf([&] { VAxis(false, kAxisInteger, &badMax); }), kMsgWrongMax);
}

TEST_F(VAxisTest, GivenStepsAreKeptOnlyWhenNotWholeAndAboveOne) {
  auto steps = [](double annotation, double tick) {
    VAxis axis(false, kAxisReal, nullptr);
    axis.SetProperties({.min = 0.0, .max = 100.0, .annotationIncrement = annotation, .tickIncrement = tick});
    axis.UpdateSteps(1);
    return std::pair(axis.annotationStep(), axis.tickStep());
  };
  for (auto [annotation, tick, expected] : {std::tuple{2.5, 0.0, std::pair(2.5f, 2.5f)}, {2.5, 1.5, {2.5f, 1.5f}},
                                            {2.5, 0.5, {2.5f, 2.5f}}, {5.0, 1.5, {10.0f, 5.0f}},
                                            {0.5, 0.0, {10.0f, 5.0f}}, {double(NAN), 0.0, {10.0f, 5.0f}}})
    EXPECT_EQ(steps(annotation, tick), expected) << annotation << " " << tick;
}

struct StepCase {
  AxisType type;
  Value min, max;
  float annotation, tick;
  Text format;
};

TEST_F(VAxisTest, AutomaticStepsAndFormats) {
  const StepCase cases[] = {
      {kAxisReal, 0.0, 1.0, 0.1f, 0.05f, u"2.3f"},
      {kAxisReal, 0.0, 100.0, 10, 5, u"3.1f"},
      {kAxisReal, 0.0, 0.01, 0.001f, 0.0005f, u"1.3e"},
      {kAxisReal, 0.0, 50.0, 5, 2.5f, u"3.1f"},
      {kAxisReal, 100.0, 0.0, 10, 5, u"3.1f"},
      {kAxisInteger, int32_t(0), int32_t(100), 10, 5, u""},
      {kAxisInteger, int32_t(0), int32_t(45), 5, 2.5f, u""},
      {kAxisInteger, int32_t(0), int32_t(5), 1, 0.5f, u""},
      {kAxisDiscrete, int32_t(0), int32_t(30), 2, 1, u""},
      {kAxisTime, DateValue{0}, DateValue{1}, 2, 1, u"%d.%m.%y\n%H:%M"},
      {kAxisTime, DateValue{0}, DateValue{10}, 1, 0.5f, u"%d.%m.%y\n%H:%M"},
      {kAxisTime, DateValue{0}, DateValue{20}, 2, 1, u"%d-%m-%Y"},
      {kAxisTime, DateValue{0}, DateValue{0.01}, 1, 0.5f, u"%H:%M:%S\n%d.%m"},
      {kAxisTime, DateValue{0}, DateValue{0.05}, 5, 2.5f, u"%H:%M\n%d-%m"},
      {kAxisTime, DateValue{0}, DateValue{1e-4}, 1, 0.5f, u"%H:%M:%S\n%d.%m"},
  };
  for (const StepCase& c : cases) {
    VAxis axis(false, c.type, nullptr);
    axis.SetProperties(AxisRange(c.min, c.max));
    axis.UpdateSteps(1);
    EXPECT_EQ(std::tuple(axis.annotationStep(), axis.tickStep(), Utf8FromText(axis.annotationFormat())),
              std::tuple(c.annotation, c.tick, Utf8FromText(c.format)))
        << CodeOf(c.type) << " up to " << Utf8FromText(VariantDisplayText(c.max));
  }
}

TEST_F(VAxisTest, TimeStepsCountUnitsAndFollowTheReportType) {
  VAxis axis(false, kAxisTime, nullptr);
  auto step = [&](double days, double scale = 1) {
    axis.SetProperties(AxisRange(DateValue{0}, DateValue{days}));
    axis.UpdateSteps(scale);
    return std::pair(axis.annotationStep(), axis.timeUnitLength());
  };
  // {span in days, scale, step, unit}: a tenth of the span per label, in
  // units of the size of that tenth.
  const float hour = float(1.0 / 24), minute = float(1.0 / 1440), second = float(1.0 / 86400);
  for (auto [days, scale, annotation, unit] :
       {std::tuple{1.0, 1.0, 2.0f, hour}, {3.0, 1.0, 6.0f, hour}, {10.0 / 3, 1.0, 8.0f, hour}, {5.0, 1.0, 12.0f, hour},
        {0.5, 1.0, 1.0f, hour}, {0.3, 1.0, 30.0f, minute}, {0.2, 2.0, 15.0f, minute}, {2.0 / 1440, 1.0, 15.0f, second},
        {10.0, 1.0, 1.0f, 1.0f}, {20.0 / 144, 1.0, 20.0f, minute}, {150.0, 1.0, 1.0f, 31.0f},
        {400.0, 1.0, 1.0f, 30.459f}, {4000.0, 1.0, 1.0f, 365.0f}, {2000.0, 1.0, 1.0f, 180.0f},
        {1000.0, 1.0, 2.0f, 60.0f}, {50.0, 1.0, 5.0f, 1.0f}, {40.0, 1.0, 4.0f, 1.0f}, {50.0 / 24, 1.0, 4.0f, hour},
        {130.0 / 1440, 1.0, 15.0f, minute}, {110.0 / 1440, 1.0, 10.0f, minute}})
    EXPECT_EQ(step(days, scale), std::pair(annotation, unit)) << days << " at scale " << scale;
  EXPECT_EQ(step(1e-6).second, float(1.0 / 86400 / 1000));
  Process().reportType = 1;
  EXPECT_EQ(step(7), std::pair(1.0f, 1.0f));
  Process().reportType = 2;
  EXPECT_EQ(step(10.5), std::pair(1.0f, 1.0f));
}

TEST_F(VAxisTest, DegenerateRangesGiveUsableSteps) {
  for (AxisType type : {kAxisReal, kAxisInteger, kAxisTime}) {
    for (auto [min, max] : {std::pair(5.0, 5.0), std::pair(0.0, double(NAN)),
                            std::pair(-3e38, 3e38), std::pair(0.0, double(INFINITY))}) {
      VAxis axis(false, type, nullptr);
      Value lo = min, hi = max;
      if (type == kAxisTime) lo = DateValue{min}, hi = DateValue{max};
      try {
        axis.SetProperties(AxisRange(lo, hi));
      } catch (const GraphError&) {
        continue;  // not representable in this type
      }
      axis.UpdateSteps(1);
      EXPECT_TRUE(std::isfinite(axis.annotationStep()) && axis.annotationStep() > 0)
          << CodeOf(type) << " " << min << ".." << max;
      EXPECT_TRUE(std::isfinite(axis.ValueToFraction(1)));
    }
  }
}

TEST_F(VAxisTest, KeywordsAndTextsReadBackAsTheTableSays) {
  VAxis x(false, kAxisTime, nullptr);
  AxisProps props{.min = DateValue{0}, .max = DateValue{1}, .annotationFormat = u"%Y", .timeUnit = u"DAY",
                  .title = Text(300, u't'), .titlePosition = u"CENTER", .annotationFont = u"Courier,12,italic",
                  .gridMode = u"TICK", .gridStyle = u"DOTTED"};
  x.SetProperties(props);
  AxisProps read = x.GetProperties();
  EXPECT_EQ(read.title->size(), 255u);
  EXPECT_EQ(Keywords(read), (std::array<Text, 3>{u"CENTER", u"TICK", u"DOTTED"}));
  EXPECT_EQ(read.annotationFormat, u"");
  EXPECT_EQ(read.annotationFont, u"Courier,12, Italic, Charset_Default");
  EXPECT_EQ(x.timeUnitLength(), 1.0f);

  props.titlePosition = u"BOTTOM";
  props.gridMode = u"grid";
  props.gridStyle = u"WAVY";
  props.timeUnit = u"WEEK";
  props.title.reset();
  x.SetProperties(props);
  read = x.GetProperties();
  EXPECT_EQ(Keywords(read), (std::array<Text, 3>{u"LEFT", u"NONE", u"SOLID"}));
  EXPECT_EQ(read.title->size(), 255u);
  EXPECT_EQ(x.timeUnitLength(), 0.0f);
  EXPECT_EQ(read.timeUnit, u"");
}

TEST_F(VAxisTest, VisibilityAndFractionsFollowTheRange) {
  VAxis axis(false, kAxisInteger, nullptr);
  axis.SetProperties(AxisRange(int32_t(10), int32_t(20)));
  EXPECT_TRUE(axis.IsValueVisible(int32_t(15), 0.4, 0.6));
  EXPECT_TRUE(axis.IsValueVisible(14.0, 0.4, 0.6));
  EXPECT_FALSE(axis.IsValueVisible(13.9, 0.4, 0.6));
  EXPECT_FALSE(axis.IsValueVisible(int32_t(15), 0.6, 0.6));
  EXPECT_FALSE(axis.IsValueVisible(Text(u"x"), 0, 1));
  EXPECT_DOUBLE_EQ(axis.ValueToFraction(12.5), 0.25);

  VAxis discrete(false, kAxisDiscrete, nullptr);
  discrete.SetProperties(AxisRange(int32_t(7), int32_t(4)));
  EXPECT_DOUBLE_EQ(discrete.ValueToFraction(1), 0.25);
  VAxis flat(false, kAxisReal, nullptr);
  EXPECT_EQ(flat.ValueToFraction(3), 0.0);
}

TEST_F(VAxisTest, LimitValuesTakeIdsFromTheProcessAndMatchTheAxisType) {
  VAxis a(true, kAxisReal, nullptr), b(true, kAxisTime, nullptr);
  VAxis discrete(true, kAxisDiscrete, nullptr);
  EXPECT_EQ(a.AddLimitValue(2.5, std::nullopt, std::nullopt, 2), 0);
  EXPECT_EQ(b.AddLimitValue(int32_t(45000), 0x00FF00, Text(u"DASHED"), 1), 1);
  EXPECT_EQ(a.AddLimitValue(1.0, 0x1, Text(u"dashed"), 1), 2);
  EXPECT_EQ(MessageOf([&] { discrete.AddLimitValue(1.0, 0, std::nullopt, 1); }), kMsgDiscreteAxis);
  EXPECT_EQ(MessageOf([&] { a.AddLimitValue(Text(u"high"), 0, std::nullopt, 1); }),
            kMsgLimitValueType);
  EXPECT_EQ(MessageOf([&] { b.AddLimitValue(1e7, 0, std::nullopt, 1); }), kMsgLimitValueType);

  const LimitValue& first = a.limitValues()[0];
  EXPECT_EQ(std::tuple(first.value, first.color), std::tuple(Value(2.5f), Color(0x808080)));
  EXPECT_EQ(std::tuple(b.limitValues()[0].style, a.limitValues()[1].style), std::tuple(1, 0));  // case matters
  EXPECT_TRUE(a.RemoveLimitValue(0));
  EXPECT_FALSE(a.RemoveLimitValue(0));
  EXPECT_EQ(a.AddLimitValue(3.0, 0, std::nullopt, 1), 3);
}

TEST_F(VAxisTest, AxesPlacedOnAnotherCountThemselvesThere) {
  VAxis x(false, kAxisReal, nullptr);
  {
    VAxis y(true, kAxisReal, nullptr, VAxis::kOnAxis, &x, 5);
    EXPECT_EQ(x.refCount(), 1);
    EXPECT_EQ(y.reference(), &x);
  }
  EXPECT_EQ(x.refCount(), 0);
  AxisProps bad = AxisRange(Text(u"?"), 1.0);
  EXPECT_THROW(VAxis(true, kAxisReal, &bad, VAxis::kOnAxis, &x, 5), GraphError);
  EXPECT_EQ(x.refCount(), 0);
}

}  // namespace
}  // namespace zel

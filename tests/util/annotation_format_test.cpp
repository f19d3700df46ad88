#include "util/annotation_format.h"

#include "util/util_test_support.h"

namespace zel {
namespace {

constexpr float kDay = 1.0f;
constexpr float kHour = float(1.0 / 24);
constexpr float kMinute = float(1.0 / 1440);
constexpr float kSecond = float(1.0 / 86400);

// A time axis's label step, counted in units of the given length.
struct TimeCase {
  float step, unit;
  const char16_t* format;
};

class AnnotationFormatTest : public UtilTest {
 protected:
  void ExpectTimeFormats(std::initializer_list<TimeCase> cases) {
    for (const TimeCase& c : cases)
      EXPECT_EQ(ChooseAnnotationFormat(kAxisTime, c.step, c.unit), c.format)
          << c.step << " of " << c.unit << " in report type " << Process().reportType;
  }
  void GraphFormat(TextView format) { Process().dateTimeFormat = Text(format); }
};

TEST_F(AnnotationFormatTest, RealFormatsFollowTheStep) {
  for (auto [type, step, format] : {std::tuple{kAxisReal, 0.001f, u"1.3e"}, {kAxisReal, 0.005f, u"1.3e"},
                                    {kAxisReal, 0.0051f, u"2.3f"}, {kAxisReal, 1.0f, u"2.3f"},
                                    {kAxisReal, 1.0001f, u"3.1f"}, {kAxisInteger, 5.0f, u""},
                                    {kAxisDiscrete, 1.0f, u""}, {AxisType(7), 1.0f, u""}})
    EXPECT_EQ(ChooseAnnotationFormat(type, step, 0), format) << CodeOf(type) << " " << step;
}

TEST_F(AnnotationFormatTest, TimeFormatsFollowTheSpanBetweenLabelsAndTheReportType) {
  // Without a unit length (0) the step itself is the span in days.
  ExpectTimeFormats({{2, kDay, u"%d-%m-%Y"}, {48, kHour, u"%d-%m-%Y"}, {2.5f, kDay, u"%d.%m.%y\n%H:%M"},
                     {1.999f, kDay, u"%d.%m.%y\n%H:%M"}, {1, kHour, u"%d.%m.%y\n%H:%M"},
                     {5, kMinute, u"%H:%M\n%d-%m"}, {1, kSecond, u"%H:%M:%S\n%d.%m"},
                     {0.5f, kSecond, u"%H:%M:%S\n%%dms"}, {0.5f, 0, u"%d.%m.%y\n%H:%M"}, {2, 0, u"%d-%m-%Y"}});
  Process().reportType = 1;
  ExpectTimeFormats({{2, kDay, u"%d-%m-%Y"}, {3, kDay, u"%d.%m.%y\n%H:%M"}, {5, kMinute, u"%Y-%m-%d"},
                     {1, kSecond, u"%Y-%m-%d"}, {0.5f, kSecond, u"%Y-%m-%d"}});
  Process().reportType = 2;
  ExpectTimeFormats({{2, kDay, u"%#d"}, {1, kHour, u"%d.%m.%y\n%H:%M"}});
  Process().reportType = 3;
  ExpectTimeFormats({{2, kDay, u"%b"}, {30, kDay, u"%b"}, {400, kDay, u"%b"}, {1, kHour, u"%b"},
                     {5, kMinute, u"%H:%M\n%d-%m"}});
}

TEST_F(AnnotationFormatTest, GraphDateTimeFormatIsSplitIntoItsParts) {
  GraphFormat(u"%d.%m.%Y %H:%M");
  ExpectTimeFormats({{2, kDay, u"%d.%m.%Y"}, {1, kHour, u"%H:%M\n%d.%m.%Y"}, {1, kSecond, u"%H:%M\n%d.%m.%Y"},
                     {0.5f, kSecond, u"%H:%M:%S\n%%dms"}});
  Process().reportType = 1;
  ExpectTimeFormats({{1, kHour, u"%d.%m.%Y"}});
  Process().reportType = 2;
  ExpectTimeFormats({{1, kHour, u"%#d"}, {2, kDay, u"%#d"}});
  Process().reportType = 3;
  ExpectTimeFormats({{5, kMinute, u"%b"}});
}

TEST_F(AnnotationFormatTest, GraphFormatStaysInForceOnceSeenByATimeAxis) {
  GraphFormat(u"%Y/%m/%d");
  ChooseAnnotationFormat(kAxisReal, 1, 0);
  EXPECT_FALSE(Process().dateTimeFormatSeen);
  GraphFormat(u"");
  ExpectTimeFormats({{1, kHour, u"%d.%m.%y\n%H:%M"}});

  GraphFormat(u"%Y/%m/%d");
  ExpectTimeFormats({{1, kHour, u"%H:%M:%S\n%Y/%m/%d"}});
  GraphFormat(u"");
  ExpectTimeFormats({{1, kHour, u"%H:%M:%S\n%Y-%m-%d"}, {2, kDay, u"%Y-%m-%d"}});
}

TEST(FormatPartsTest, EachDirectiveAfterTheSeparatorOfThePreviousOne) {
  for (auto [format, date] : {std::pair{u"%d.%m.%Y %H:%M", u"%d.%m.%Y"}, {u"%H %d-%M %B", u"%d-%B"}, {u"%%d", u"%d"},
                              {u"%#d.%m", u"%m"}, {u"time only %H", u"%Y-%m-%d"}})
    EXPECT_EQ(DatePartOfFormat(format), date) << Utf8FromText(format);
  for (auto [format, time] : {std::pair{u"%d.%m.%Y %H:%M", u"%H:%M"}, {u"%Y/%m/%d %I:%M:%S %p", u"%I:%M:%S %p"},
                              {u"%H%M", u"%H%%M"}, {u"", u"%H:%M:%S"}})
    EXPECT_EQ(TimePartOfFormat(format), time) << Utf8FromText(format);
  EXPECT_EQ(SplitDateTimeFormat(u"%d.%m.%Y %H:%M", true), u"%d.%m.%Y");
  EXPECT_EQ(SplitDateTimeFormat(u"%d.%m.%Y %H:%M", false), u"%H:%M\n%d.%m.%Y");
}

}  // namespace
}  // namespace zel

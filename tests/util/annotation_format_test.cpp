#include "util/annotation_format.h"

#include "util/util_test_support.h"

namespace zel {
namespace {

constexpr float kDay = 1.0f;
constexpr float kHour = float(1.0 / 24);
constexpr float kMinute = float(1.0 / 1440);
constexpr float kSecond = float(1.0 / 86400);

class AnnotationFormatTest : public UtilTest {
 protected:
  Text Time(float step, float unit) { return ChooseAnnotationFormat(kAxisTime, step, unit); }
  void Report(int type) { Process().reportType = type; }
  void GraphFormat(TextView format) { Process().dateTimeFormat = Text(format); }
};

TEST_F(AnnotationFormatTest, RealFormatsFollowTheStep) {
  EXPECT_EQ(ChooseAnnotationFormat(kAxisReal, 0.001f, 0), u"1.3e");
  EXPECT_EQ(ChooseAnnotationFormat(kAxisReal, 0.005f, 0), u"1.3e");
  EXPECT_EQ(ChooseAnnotationFormat(kAxisReal, 0.0051f, 0), u"2.3f");
  EXPECT_EQ(ChooseAnnotationFormat(kAxisReal, 1.0f, 0), u"2.3f");
  EXPECT_EQ(ChooseAnnotationFormat(kAxisReal, 1.0001f, 0), u"3.1f");
  EXPECT_EQ(ChooseAnnotationFormat(kAxisInteger, 5, 0), u"");
  EXPECT_EQ(ChooseAnnotationFormat(kAxisDiscrete, 1, 0), u"");
  EXPECT_EQ(ChooseAnnotationFormat(7, 1, 0), u"");
}

TEST_F(AnnotationFormatTest, TimeFormatsFollowTheSpanBetweenLabels) {
  EXPECT_EQ(Time(2, kDay), u"%d-%m-%Y");
  EXPECT_EQ(Time(48, kHour), u"%d-%m-%Y");
  EXPECT_EQ(Time(2.5f, kDay), u"%d.%m.%y\n%H:%M");
  EXPECT_EQ(Time(1.999f, kDay), u"%d.%m.%y\n%H:%M");
  EXPECT_EQ(Time(1, kHour), u"%d.%m.%y\n%H:%M");
  EXPECT_EQ(Time(5, kMinute), u"%H:%M\n%d-%m");
  EXPECT_EQ(Time(1, kSecond), u"%H:%M:%S\n%d.%m");
  EXPECT_EQ(Time(0.5f, kSecond), u"%H:%M:%S\n%%dms");
  // Without a unit length the step itself is the span in days.
  EXPECT_EQ(Time(0.5f, 0), u"%d.%m.%y\n%H:%M");
  EXPECT_EQ(Time(2, 0), u"%d-%m-%Y");
}

TEST_F(AnnotationFormatTest, ReportTypesChangeTimeFormats) {
  Report(1);
  EXPECT_EQ(Time(2, kDay), u"%d-%m-%Y");
  EXPECT_EQ(Time(3, kDay), u"%d.%m.%y\n%H:%M");
  EXPECT_EQ(Time(5, kMinute), u"%Y-%m-%d");
  EXPECT_EQ(Time(1, kSecond), u"%Y-%m-%d");
  EXPECT_EQ(Time(0.5f, kSecond), u"%Y-%m-%d");
  Report(2);
  EXPECT_EQ(Time(2, kDay), u"%#d");
  EXPECT_EQ(Time(1, kHour), u"%d.%m.%y\n%H:%M");
  Report(3);
  EXPECT_EQ(Time(2, kDay), u"%b");
  EXPECT_EQ(Time(30, kDay), u"%b");
  EXPECT_EQ(Time(400, kDay), u"%b");
  EXPECT_EQ(Time(1, kHour), u"%b");
  EXPECT_EQ(Time(5, kMinute), u"%H:%M\n%d-%m");
}

TEST_F(AnnotationFormatTest, GraphDateTimeFormatIsSplitIntoItsParts) {
  GraphFormat(u"%d.%m.%Y %H:%M");
  EXPECT_EQ(Time(2, kDay), u"%d.%m.%Y");
  EXPECT_EQ(Time(1, kHour), u"%H:%M\n%d.%m.%Y");
  EXPECT_EQ(Time(1, kSecond), u"%H:%M\n%d.%m.%Y");
  EXPECT_EQ(Time(0.5f, kSecond), u"%H:%M:%S\n%%dms");
  Report(1);
  EXPECT_EQ(Time(1, kHour), u"%d.%m.%Y");
  Report(2);
  EXPECT_EQ(Time(1, kHour), u"%#d");
  EXPECT_EQ(Time(2, kDay), u"%#d");
  Report(3);
  EXPECT_EQ(Time(5, kMinute), u"%b");
}

TEST_F(AnnotationFormatTest, GraphFormatStaysInForceOnceSeenByATimeAxis) {
  GraphFormat(u"%Y/%m/%d");
  ChooseAnnotationFormat(kAxisReal, 1, 0);
  EXPECT_FALSE(Process().dateTimeFormatSeen);
  GraphFormat(u"");
  EXPECT_EQ(Time(1, kHour), u"%d.%m.%y\n%H:%M");

  GraphFormat(u"%Y/%m/%d");
  EXPECT_EQ(Time(1, kHour), u"%H:%M:%S\n%Y/%m/%d");
  GraphFormat(u"");
  EXPECT_EQ(Time(1, kHour), u"%H:%M:%S\n%Y-%m-%d");
  EXPECT_EQ(Time(2, kDay), u"%Y-%m-%d");
}

TEST(FormatPartsTest, EachDirectiveAfterTheSeparatorOfThePreviousOne) {
  EXPECT_EQ(DatePartOfFormat(u"%d.%m.%Y %H:%M"), u"%d.%m.%Y");
  EXPECT_EQ(TimePartOfFormat(u"%d.%m.%Y %H:%M"), u"%H:%M");
  EXPECT_EQ(TimePartOfFormat(u"%Y/%m/%d %I:%M:%S %p"), u"%I:%M:%S %p");
  EXPECT_EQ(DatePartOfFormat(u"%H %d-%M %B"), u"%d-%B");
  EXPECT_EQ(TimePartOfFormat(u"%H%M"), u"%H%%M");
  EXPECT_EQ(DatePartOfFormat(u"%%d"), u"%d");
  EXPECT_EQ(DatePartOfFormat(u"%#d.%m"), u"%m");
  EXPECT_EQ(DatePartOfFormat(u"time only %H"), u"%Y-%m-%d");
  EXPECT_EQ(TimePartOfFormat(u""), u"%H:%M:%S");
  EXPECT_EQ(SplitDateTimeFormat(u"%d.%m.%Y %H:%M", true), u"%d.%m.%Y");
  EXPECT_EQ(SplitDateTimeFormat(u"%d.%m.%Y %H:%M", false), u"%H:%M\n%d.%m.%Y");
}

}  // namespace
}  // namespace zel

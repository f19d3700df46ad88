#include "util/date_time.h"

#include "util/util_test_support.h"

namespace zel {
namespace {

SystemTime At(int year, int month, int day, int hour = 10) {
  SystemTime t;
  t.wYear = uint16_t(year);
  t.wMonth = uint16_t(month);
  t.wDay = uint16_t(day);
  t.wHour = uint16_t(hour);
  t.wMinute = 30;
  t.wSecond = 15;
  t.wMilliseconds = 999;
  return t;
}

TEST(DateTimeToTmTest, FillsCalendarFieldsOrLeavesTheRecordAlone) {
  std::tm time{};
  ASSERT_TRUE(DateTimeToTm(45000.75, time));
  EXPECT_EQ(time.tm_year, 123);
  EXPECT_EQ(time.tm_mon, 2);
  EXPECT_EQ(time.tm_mday, 15);
  EXPECT_EQ(time.tm_hour, 18);
  EXPECT_EQ(time.tm_wday, 3);

  ASSERT_TRUE(DateTimeToTm(0.0, time));
  EXPECT_EQ(time.tm_year, -1);
  EXPECT_EQ(time.tm_mon, 11);
  EXPECT_EQ(time.tm_mday, 30);

  std::tm untouched{};
  untouched.tm_mday = 17;
  time = untouched;
  EXPECT_FALSE(DateTimeToTm(1e9, time));
  EXPECT_EQ(time.tm_mday, 17);
}

TEST(TimeUnitLengthTest, DependsOnTodaysCalendar) {
  SystemTime november = At(2026, 11, 21);
  EXPECT_EQ(TimeUnitLength(u"DAY", november), 1.0f);
  EXPECT_EQ(TimeUnitLength(u"MONTH", november), 30.0f);
  EXPECT_EQ(TimeUnitLength(u"YEAR", november), 365.0f);
  EXPECT_EQ(TimeUnitLength(u"YEAR", At(2027, 11, 21)), 366.0f);
  EXPECT_EQ(TimeUnitLength(u"MONTH", At(2028, 2, 10)), 29.0f);
  EXPECT_FLOAT_EQ(TimeUnitLength(u"HOUR", november), float(1.0 / 24));
  EXPECT_NEAR(TimeUnitLength(u"MINUTE", november), 1.0 / 1440, 1e-9);
  EXPECT_NEAR(TimeUnitLength(u"SECOND", november), 1.0 / 86400, 1e-10);
}

TEST(TimeUnitLengthTest, FieldsRaisedPastTheirRangeRollOver) {
  EXPECT_EQ(TimeUnitLength(u"DAY", At(2026, 1, 31)), 1.0f);
  EXPECT_EQ(TimeUnitLength(u"DAY", At(2026, 12, 31)), 1.0f);
  EXPECT_EQ(TimeUnitLength(u"MONTH", At(2026, 1, 31)), 31.0f);
  EXPECT_EQ(TimeUnitLength(u"MONTH", At(2026, 12, 15)), 31.0f);
  EXPECT_FLOAT_EQ(TimeUnitLength(u"HOUR", At(2026, 12, 31, 23)), float(1.0 / 24));
}

TEST(TimeUnitLengthTest, UnknownNamesGiveZero) {
  SystemTime now = At(2026, 11, 21);
  EXPECT_EQ(TimeUnitLength(u"WEEK", now), 0.0f);
  EXPECT_EQ(TimeUnitLength(u"day", now), 0.0f);
  EXPECT_EQ(TimeUnitLength(u"", now), 0.0f);
}

class TimeUnitClockTest : public UtilTest {};

TEST_F(TimeUnitClockTest, ReadsThePlatformClock) {
  InstallPlatformHooks({.utcNow = [] { return At(2024, 2, 3); }});
  EXPECT_EQ(TimeUnitLength(u"MONTH"), 29.0f);
  InstallPlatformHooks({});
  EXPECT_EQ(TimeUnitLength(u"DAY"), 1.0f);
}

}  // namespace
}  // namespace zel

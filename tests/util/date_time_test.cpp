#include "util/date_time.h"

#include <tuple>

#include "util/util_test_support.h"

namespace zel {
namespace {

SystemTime At(int year, int month, int day, int hour = 10) {
  return {.wYear = uint16_t(year), .wMonth = uint16_t(month), .wDay = uint16_t(day), .wHour = uint16_t(hour),
          .wMinute = 30, .wSecond = 15, .wMilliseconds = 999};
}

TEST(DateTimeToTmTest, FillsCalendarFieldsOrLeavesTheRecordAlone) {
  std::tm time{};
  ASSERT_TRUE(DateTimeToTm(45000.75, time));
  EXPECT_EQ(std::tuple(time.tm_year, time.tm_mon, time.tm_mday, time.tm_hour, time.tm_wday),
            std::tuple(123, 2, 15, 18, 3));
  ASSERT_TRUE(DateTimeToTm(0.0, time));
  EXPECT_EQ(std::tuple(time.tm_year, time.tm_mon, time.tm_mday), std::tuple(-1, 11, 30));

  std::tm untouched{};
  untouched.tm_mday = 17;
  time = untouched;
  EXPECT_FALSE(DateTimeToTm(1e9, time));
  EXPECT_EQ(time.tm_mday, 17);
}

// Unit lengths depend on today's calendar; fields raised past their range
// roll over, and unknown names give zero.
TEST(TimeUnitLengthTest, DependsOnTodaysCalendar) {
  struct Case {
    const char16_t* unit;
    SystemTime today;
    float expected;
  } cases[] = {
      {u"DAY", At(2026, 11, 21), 1.0f},      {u"MONTH", At(2026, 11, 21), 30.0f}, {u"YEAR", At(2026, 11, 21), 365.0f},
      {u"YEAR", At(2027, 11, 21), 366.0f},   {u"MONTH", At(2028, 2, 10), 29.0f},  {u"DAY", At(2026, 1, 31), 1.0f},
      {u"DAY", At(2026, 12, 31), 1.0f},      {u"MONTH", At(2026, 1, 31), 31.0f},  {u"MONTH", At(2026, 12, 15), 31.0f},
      {u"WEEK", At(2026, 11, 21), 0.0f},     {u"day", At(2026, 11, 21), 0.0f},    {u"", At(2026, 11, 21), 0.0f},
  };
  for (const Case& c : cases)
    EXPECT_EQ(TimeUnitLength(c.unit, c.today), c.expected) << Utf8FromText(c.unit) << " " << c.today.wMonth;
  SystemTime november = At(2026, 11, 21);
  EXPECT_FLOAT_EQ(TimeUnitLength(u"HOUR", november), float(1.0 / 24));
  EXPECT_FLOAT_EQ(TimeUnitLength(u"HOUR", At(2026, 12, 31, 23)), float(1.0 / 24));
  EXPECT_NEAR(TimeUnitLength(u"MINUTE", november), 1.0 / 1440, 1e-9);
  EXPECT_NEAR(TimeUnitLength(u"SECOND", november), 1.0 / 86400, 1e-10);
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

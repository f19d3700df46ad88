#include "util/automation_date.h"

#include <gtest/gtest.h>

#include <cmath>
#include <random>

namespace zel {
namespace {

SystemTime Fields(int year, int month, int day, int hour = 0, int minute = 0, int second = 0) {
  SystemTime t;
  t.wYear = uint16_t(year);
  t.wMonth = uint16_t(month);
  t.wDay = uint16_t(day);
  t.wHour = uint16_t(hour);
  t.wMinute = uint16_t(minute);
  t.wSecond = uint16_t(second);
  return t;
}

SystemTime Converted(double date) {
  SystemTime t;
  EXPECT_TRUE(DateToSystemTime(date, t)) << date;
  return t;
}

SystemTime WithWeekday(SystemTime t, int weekday) {
  t.wDayOfWeek = uint16_t(weekday);
  return t;
}

TEST(DateToSystemTimeTest, CountsDaysFrom1899December30) {
  EXPECT_EQ(Converted(0.0), WithWeekday(Fields(1899, 12, 30), 6));
  EXPECT_EQ(Converted(1.0), WithWeekday(Fields(1899, 12, 31), 0));
  EXPECT_EQ(Converted(36526.5), WithWeekday(Fields(2000, 1, 1, 12), 6));
  EXPECT_EQ(Converted(45000.75), WithWeekday(Fields(2023, 3, 15, 18), 3));
  EXPECT_EQ(Converted(60.0), WithWeekday(Fields(1900, 2, 28), 3));
  EXPECT_EQ(Converted(61.0), WithWeekday(Fields(1900, 3, 1), 4));
}

TEST(DateToSystemTimeTest, NegativeDatesCountTheTimeOfDayForward) {
  EXPECT_EQ(Converted(-1.25), WithWeekday(Fields(1899, 12, 29, 6), 5));
  EXPECT_EQ(Converted(-0.25), WithWeekday(Fields(1899, 12, 30, 6), 6));
  EXPECT_EQ(Converted(-657434.5), WithWeekday(Fields(100, 1, 1, 12), 5));
}

TEST(DateToSystemTimeTest, RoundsToTheNearestSecondAcrossEveryField) {
  constexpr double kSecond = kSecondInDays;
  EXPECT_EQ(Converted(0.5 + 0.4 * kSecond).wSecond, 0);
  EXPECT_EQ(Converted(0.5 + 0.6 * kSecond).wSecond, 1);
  EXPECT_EQ(Converted(0.5 - 0.001 * kSecond), WithWeekday(Fields(1899, 12, 30, 12), 6));
  // 23:59:59.6 on the last day of a month rolls into the next month, the last
  // day of the year into the next year; the weekday stays that of the old day.
  EXPECT_EQ(Converted(45261.0 - 0.4 * kSecond), WithWeekday(Fields(2023, 12, 1), 4));
  EXPECT_EQ(Converted(45292.0 - 0.4 * kSecond), WithWeekday(Fields(2024, 1, 1), 0));
  EXPECT_EQ(Converted(45351.0 - 0.4 * kSecond), WithWeekday(Fields(2024, 2, 29), 3));
  EXPECT_EQ(Converted(2958465.999999), WithWeekday(Fields(10000, 1, 1), 5));
}

TEST(DateToSystemTimeTest, RefusesDatesOutsideTheRange) {
  SystemTime untouched = Fields(1, 2, 3);
  SystemTime t = untouched;
  EXPECT_FALSE(DateToSystemTime(-657435.0, t));
  EXPECT_FALSE(DateToSystemTime(2958466.0, t));
  EXPECT_FALSE(DateToSystemTime(std::nan(""), t));
  EXPECT_FALSE(DateToSystemTime(INFINITY, t));
  EXPECT_EQ(t, untouched);
  EXPECT_TRUE(DateToSystemTime(-657434.999, t));
  EXPECT_TRUE(DateToSystemTime(2958465.9999, t));
}

TEST(SystemTimeToDateTest, AddsTheTimeOfDayAwayFromDayZero) {
  double date = 0;
  ASSERT_TRUE(SystemTimeToDate(Fields(2000, 1, 1, 12), date));
  EXPECT_EQ(date, 36526.5);
  ASSERT_TRUE(SystemTimeToDate(Fields(1899, 12, 29, 6), date));
  EXPECT_EQ(date, -1.25);
  ASSERT_TRUE(SystemTimeToDate(Fields(1899, 12, 30, 18), date));
  EXPECT_EQ(date, 0.75);
}

TEST(SystemTimeToDateTest, MapsTwoDigitYearsAndRollsFieldsOver) {
  double a = 0, b = 0;
  ASSERT_TRUE(SystemTimeToDate(Fields(49, 6, 1), a));
  ASSERT_TRUE(SystemTimeToDate(Fields(2049, 6, 1), b));
  EXPECT_EQ(a, b);
  ASSERT_TRUE(SystemTimeToDate(Fields(50, 6, 1), a));
  ASSERT_TRUE(SystemTimeToDate(Fields(1950, 6, 1), b));
  EXPECT_EQ(a, b);
  ASSERT_TRUE(SystemTimeToDate(Fields(2001, 2, 30), a));
  ASSERT_TRUE(SystemTimeToDate(Fields(2001, 3, 2), b));
  EXPECT_EQ(a, b);
  ASSERT_TRUE(SystemTimeToDate(Fields(2023, 11, 31), a));
  ASSERT_TRUE(SystemTimeToDate(Fields(2023, 12, 1), b));
  EXPECT_EQ(a, b);
  ASSERT_TRUE(SystemTimeToDate(Fields(2023, 5, 0, 24, 60, 60), a));
  ASSERT_TRUE(SystemTimeToDate(Fields(2023, 5, 1, 1, 1), b));
  EXPECT_EQ(a, b);
}

TEST(SystemTimeToDateTest, RefusesWhatThePlatformRefuses) {
  double date = 7;
  EXPECT_FALSE(SystemTimeToDate(Fields(2023, 13, 1), date));
  EXPECT_FALSE(SystemTimeToDate(Fields(2023, 12, 32), date));
  EXPECT_FALSE(SystemTimeToDate(Fields(0xFFFF, 1, 1), date));
  EXPECT_FALSE(SystemTimeToDate(Fields(10000, 1, 1), date));
  EXPECT_EQ(date, 7);
  // Without the refusals, day 32 and month 13 roll into the next month and year.
  double rolled = 0, expected = 0;
  ASSERT_TRUE(CalendarToDate(Fields(2023, 12, 32), rolled));
  ASSERT_TRUE(SystemTimeToDate(Fields(2024, 1, 1), expected));
  EXPECT_EQ(rolled, expected);
  ASSERT_TRUE(CalendarToDate(Fields(2023, 13, 5), rolled));
  ASSERT_TRUE(SystemTimeToDate(Fields(2024, 1, 5), expected));
  EXPECT_EQ(rolled, expected);
}

TEST(AutomationDateTest, FieldsOfRandomDatesConvertBackWithinHalfASecond) {
  std::mt19937_64 random(20261121);
  std::uniform_real_distribution<double> dates(kFirstDate - 0.999, kLastDate + 0.99);
  for (int i = 0; i < 200000; ++i) {
    double date = dates(random);
    SystemTime t;
    ASSERT_TRUE(DateToSystemTime(date, t));
    double back = 0;
    ASSERT_TRUE(CalendarToDate(t, back)) << date;
    // Compare on a scale where the time of day runs forward on both sides of 0.
    auto linear = [](double d) { return d >= 0 ? d : 2 * std::ceil(d) - d; };
    ASSERT_NEAR(linear(back), linear(date), 0.5 * kSecondInDays + 1e-9) << date;
  }
}

}  // namespace
}  // namespace zel

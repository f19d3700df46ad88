// Calendar fields of automation dates. Agreement with oleaut32 over millions
// of dates is checked under Wine; these cases pin down the rules themselves.
#include "util/automation_date.h"

#include <gtest/gtest.h>

#include <cmath>

namespace zel {
namespace {

SystemTime Fields(int year, int month, int day, int hour = 0, int weekday = 0) {
  return {.wYear = uint16_t(year), .wMonth = uint16_t(month), .wDayOfWeek = uint16_t(weekday), .wDay = uint16_t(day),
          .wHour = uint16_t(hour)};
}

SystemTime Converted(double date) {
  SystemTime t;
  EXPECT_TRUE(DateToSystemTime(date, t)) << date;
  return t;
}

double Date(SystemTime t) {
  double date = -1e300;
  EXPECT_TRUE(CalendarToDate(t, date));
  return date;
}

TEST(AutomationDateTest, CountsDaysFrom1899December30WithTheTimeOfDayForward) {
  for (auto [date, fields] : {std::pair{0.0, Fields(1899, 12, 30, 0, 6)}, {60.0, Fields(1900, 2, 28, 0, 3)},
                              {45000.75, Fields(2023, 3, 15, 18, 3)}, {-1.25, Fields(1899, 12, 29, 6, 5)},
                              {-0.25, Fields(1899, 12, 30, 6, 6)}})
    EXPECT_EQ(Converted(date), fields) << date;
  EXPECT_EQ(Date(Fields(1899, 12, 29, 6)), -1.25);
  EXPECT_EQ(Date(Fields(2023, 3, 15, 18)), 45000.75);
}

TEST(AutomationDateTest, RoundsToTheSecondAndRollsTheCalendarForward) {
  const double almost = -0.4 * kSecondInDays;  // 23:59:59.6 of the day before
  EXPECT_EQ(Converted(0.5 + 0.4 * kSecondInDays).wSecond, 0);
  EXPECT_EQ(Converted(0.5 + 0.6 * kSecondInDays).wSecond, 1);
  // The weekday stays that of the day before, as the platform leaves it.
  EXPECT_EQ(Converted(45261.0 + almost), Fields(2023, 12, 1, 0, 4));
  EXPECT_EQ(Converted(45292.0 + almost), Fields(2024, 1, 1, 0, 0));
  EXPECT_EQ(Converted(45351.0 + almost), Fields(2024, 2, 29, 0, 3));
  EXPECT_EQ(Converted(2958465.999999), Fields(10000, 1, 1, 0, 5));
}

TEST(AutomationDateTest, RefusesDatesAndFieldsOutOfRange) {
  SystemTime t = Fields(1, 2, 3);
  for (double date : {-657435.0, 2958466.0, std::nan(""), double(INFINITY)})
    EXPECT_FALSE(DateToSystemTime(date, t)) << date;
  EXPECT_EQ(t, Fields(1, 2, 3));
  EXPECT_TRUE(DateToSystemTime(-657434.999, t));

  double date = 7;
  for (SystemTime bad : {Fields(2023, 13, 1), Fields(2023, 12, 32), Fields(0xFFFF, 1, 1),
                         Fields(10000, 1, 1)})
    EXPECT_FALSE(SystemTimeToDate(bad, date));
  EXPECT_EQ(date, 7);
}

TEST(AutomationDateTest, FieldsPastTheirRangeRollIntoTheNextOne) {
  // Two-digit years: below 50 in this century, from 50 in the last.
  for (auto [given, same] :
       {std::pair{Fields(2023, 12, 32), Fields(2024, 1, 1)}, {Fields(2023, 13, 5), Fields(2024, 1, 5)},
        {Fields(2023, 11, 31), Fields(2023, 12, 1)}, {Fields(2001, 2, 29), Fields(2001, 3, 1)},
        {Fields(2023, 5, 0, 24), Fields(2023, 5, 1)}, {Fields(49, 6, 1), Fields(2049, 6, 1)},
        {Fields(50, 6, 1), Fields(1950, 6, 1)}})
    EXPECT_EQ(Date(given), Date(same)) << given.wYear << "-" << given.wMonth << "-" << given.wDay;
}

}  // namespace
}  // namespace zel

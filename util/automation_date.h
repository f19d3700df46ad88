#pragma once
// Automation dates: 64-bit floating-point days since 1899-12-30 00:00, the
// fraction being the time of day. Before 1899-12-30 the whole part counts days
// backwards while the fraction still counts the time of day forwards, so -1.25
// is 1899-12-29 06:00.
//
// The conversions agree with the platform's VariantTimeToSystemTime and
// SystemTimeToVariantTime field for field, including their rounding to the
// nearest second and their roll-over of out-of-range fields.
#include <cstdint>

namespace zel {

// Field for field the platform's SYSTEMTIME.
struct SystemTime {
  uint16_t wYear = 0;
  uint16_t wMonth = 0;
  uint16_t wDayOfWeek = 0;
  uint16_t wDay = 0;
  uint16_t wHour = 0;
  uint16_t wMinute = 0;
  uint16_t wSecond = 0;
  uint16_t wMilliseconds = 0;

  bool operator==(const SystemTime&) const = default;
};

// 0100-01-01 and 9999-12-31, the first and last representable days.
inline constexpr int kFirstDate = -657434;
inline constexpr int kLastDate = 2958465;

// One second in days.
inline constexpr double kSecondInDays = 1.1574074074074073e-05;

// Calendar fields of a date, the time rounded to the nearest second and the
// milliseconds 0. Dates outside kFirstDate..kLastDate (and NaN) fail. The
// day of the week is that of the date before rounding, as the platform gives.
bool DateToSystemTime(double date, SystemTime& out);

// The date of calendar fields, as SystemTimeToVariantTime: a month above 12,
// a day above 31 or a negative year fail; years 0-49 mean 2000-2049 and 50-99
// mean 1950-1999; the milliseconds and the day of the week are ignored.
bool SystemTimeToDate(const SystemTime& time, double& out);

// As SystemTimeToDate, but without refusing a day of 32 or a month of 13:
// every field that passes its range rolls over into the next larger one
// (December 32 is January 1 of the next year).
bool CalendarToDate(const SystemTime& time, double& out);

}  // namespace zel

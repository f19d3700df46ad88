#include "util/automation_date.h"

#include <cmath>

namespace zel {
namespace {

bool IsLeapYear(int year) {
  return year % 4 == 0 && (year % 100 != 0 || year % 400 == 0);
}

int DaysInMonth(int year, int month) {
  static constexpr int kDays[] = {0, 31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
  return month == 2 && IsLeapYear(year) ? 29 : kDays[month];
}

// Days from 1899-12-30 to a proleptic Gregorian date.
int DaysFromCivil(int year, int month, int day) {
  year -= month <= 2;
  int era = (year >= 0 ? year : year - 399) / 400;
  int yearOfEra = year - era * 400;
  int dayOfYear = (153 * (month + (month > 2 ? -3 : 9)) + 2) / 5 + day - 1;
  int dayOfEra = yearOfEra * 365 + yearOfEra / 4 - yearOfEra / 100 + dayOfYear;
  return era * 146097 + dayOfEra - 693899;
}

void CivilFromDays(int days, int& year, int& month, int& day) {
  days += 693899;
  int era = (days >= 0 ? days : days - 146096) / 146097;
  int dayOfEra = days - era * 146097;
  int yearOfEra = (dayOfEra - dayOfEra / 1460 + dayOfEra / 36524 - dayOfEra / 146096) / 365;
  int dayOfYear = dayOfEra - (365 * yearOfEra + yearOfEra / 4 - yearOfEra / 100);
  int shiftedMonth = (5 * dayOfYear + 2) / 153;
  day = dayOfYear - (153 * shiftedMonth + 2) / 5 + 1;
  month = shiftedMonth < 10 ? shiftedMonth + 3 : shiftedMonth - 9;
  year = yearOfEra + era * 400 + (month <= 2);
}

// Calendar fields as signed values, for rolling out-of-range ones over.
struct Fields {
  int year, month, day, hour, minute, second;
};

// The platform's normalisation of calendar fields. It works on 16-bit signed
// values, so a field above 32767 counts as negative.
bool RollOver(Fields& f) {
  if (f.year > 9999 || f.year < -9999) return false;
  if (f.year >= 0 && f.year <= 49)
    f.year += 2000;
  else if (f.year >= 50 && f.year <= 99)
    f.year += 1900;

  f.minute += f.second / 60;
  f.second %= 60;
  f.hour += f.minute / 60;
  f.minute %= 60;
  f.day += f.hour / 24;
  f.hour %= 24;
  f.year += f.month / 12;
  f.month %= 12;
  if (f.month <= 0) {
    f.month += 12;
    --f.year;
  }
  while (f.day > DaysInMonth(f.year, f.month)) {
    f.day -= DaysInMonth(f.year, f.month);
    if (++f.month > 12) {
      f.month = 1;
      ++f.year;
    }
  }
  while (f.day <= 0) {
    if (--f.month <= 0) {
      f.month += 12;
      --f.year;
    }
    f.day += DaysInMonth(f.year, f.month);
  }
  if (f.second < 0) {
    f.second += 60;
    --f.minute;
  }
  if (f.minute < 0) {
    f.minute += 60;
    --f.hour;
  }
  if (f.hour < 0) {
    f.hour += 24;
    --f.day;
  }
  if (f.year <= 0) f.year += 2000;
  return true;
}

// Monday is 1; 1899-12-30 was a Saturday.
uint16_t DayOfWeek(int days) {
  return uint16_t(((days + 6) % 7 + 7) % 7);
}

// Adds the second that rounding the milliseconds up carries into the fields.
void CarrySecond(SystemTime& t) {
  if (++t.wSecond < 60) return;
  t.wSecond = 0;
  if (++t.wMinute < 60) return;
  t.wMinute = 0;
  if (++t.wHour < 24) return;
  t.wHour = 0;
  if (++t.wDay <= 28) return;
  Fields f{t.wYear, t.wMonth, t.wDay, 0, 0, 0};
  RollOver(f);
  t.wYear = uint16_t(f.year);
  t.wMonth = uint16_t(f.month);
  t.wDay = uint16_t(f.day);
}

}  // namespace

bool DateToSystemTime(double date, SystemTime& out) {
  if (!(date > kFirstDate - 1.0 && date < kLastDate + 1.0)) return false;

  double wholeDays = std::trunc(date);
  // The time of day gets 1e-11 day added before each field is truncated, so
  // that a value just below a whole second is not cut one second short.
  double time = std::fabs(date - wholeDays) + 1e-11;
  if (time >= 1.0) time -= 1e-11;

  SystemTime t;
  int year, month, day;
  CivilFromDays(int(wholeDays), year, month, day);
  t.wYear = uint16_t(year);
  t.wMonth = uint16_t(month);
  t.wDay = uint16_t(day);
  t.wDayOfWeek = DayOfWeek(int(wholeDays));

  time *= 24.0;
  t.wHour = uint16_t(time);
  time = (time - t.wHour) * 60.0;
  t.wMinute = uint16_t(time);
  time = (time - t.wMinute) * 60.0;
  t.wSecond = uint16_t(time);
  time -= t.wSecond;
  if (time > 0.5) CarrySecond(t);
  out = t;
  return true;
}

bool CalendarToDate(const SystemTime& time, double& out) {
  Fields f{int16_t(time.wYear), int16_t(time.wMonth), int16_t(time.wDay),
           int16_t(time.wHour), int16_t(time.wMinute), int16_t(time.wSecond)};
  if (!RollOver(f)) return false;
  double date = DaysFromCivil(f.year, f.month, f.day);
  double sign = date < 0.0 ? -1.0 : 1.0;
  date += f.hour / 24.0 * sign;
  date += f.minute / 1440.0 * sign;
  date += f.second / 86400.0 * sign;
  out = date;
  return true;
}

bool SystemTimeToDate(const SystemTime& time, double& out) {
  if (time.wMonth > 12 || time.wDay > 31 || int16_t(time.wYear) < 0) return false;
  return CalendarToDate(time, out);
}

}  // namespace zel

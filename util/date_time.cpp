#include "util/date_time.h"

#include "util/platform_hooks.h"

namespace zel {

bool DateTimeToTm(double date, std::tm& time) {
  SystemTime t;
  if (!DateToSystemTime(date, t)) return false;
  time.tm_year = t.wYear - 1900;
  time.tm_mon = t.wMonth - 1;
  time.tm_mday = t.wDay;
  time.tm_hour = t.wHour;
  time.tm_min = t.wMinute;
  time.tm_sec = t.wSecond;
  time.tm_wday = t.wDayOfWeek;
  return true;
}

float TimeUnitLength(TextView unit) { return TimeUnitLength(unit, Platform().utcNow()); }

float TimeUnitLength(TextView unit, const SystemTime& nowUtc) {
  SystemTime later = nowUtc;
  if (unit == u"SECOND") ++later.wSecond;
  else if (unit == u"MINUTE") ++later.wMinute;
  else if (unit == u"HOUR") ++later.wHour;
  else if (unit == u"DAY") ++later.wDay;
  else if (unit == u"MONTH") ++later.wMonth;
  else if (unit == u"YEAR") ++later.wYear;
  else return 0.0f;

  double now = 0, then = 0;
  if (!SystemTimeToDate(nowUtc, now) || !CalendarToDate(later, then)) return 0.0f;
  return float(then - now);
}


Text TimeUnitName(float unitLength) { return TimeUnitName(unitLength, Platform().utcNow()); }

Text TimeUnitName(float unitLength, const SystemTime& nowUtc) {
  double now = 0;
  SystemTime a, b;
  if (!SystemTimeToDate(nowUtc, now) || !DateToSystemTime(now, a) ||
      !DateToSystemTime(now + unitLength, b))
    return Text();
  if (a.wYear != b.wYear) return u"YEAR";
  if (a.wMonth != b.wMonth) return u"MONTH";
  if (a.wDay != b.wDay) return u"DAY";
  if (a.wHour != b.wHour) return u"HOUR";
  if (a.wMinute != b.wMinute) return u"MINUTE";
  if (a.wSecond != b.wSecond) return u"SECOND";
  return Text();
}

}  // namespace zel

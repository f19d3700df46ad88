// Date conversions: automation dates to calendar fields and back, broken-
// down times, and the time units of TIME axes.
#include "fuzz/fuzz_input.h"
#include "util/automation_date.h"
#include "util/date_time.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  using namespace zel;
  FuzzedDataProvider in(data, size);
  double date = fuzz::ExtremeNumber(in);
  SystemTime fields;
  if (DateToSystemTime(date, fields)) {
    double back = 0;
    SystemTime again;
    // A date that has calendar fields has a date for them, with the same fields.
    if (!SystemTimeToDate(fields, back) || !DateToSystemTime(back, again) || again.wYear != fields.wYear ||
        again.wMonth != fields.wMonth || again.wDay != fields.wDay || again.wHour != fields.wHour ||
        again.wMinute != fields.wMinute || again.wSecond != fields.wSecond)
      __builtin_trap();
  }
  std::tm time{};
  DateTimeToTm(date, time);
  SystemTime now;
  for (uint16_t* field : {&now.wYear, &now.wMonth, &now.wDayOfWeek, &now.wDay, &now.wHour, &now.wMinute,
                          &now.wSecond, &now.wMilliseconds})
    *field = in.ConsumeIntegral<uint16_t>();
  CalendarToDate(now, date);
  TimeUnitLength(fuzz::TextOf(in, 12), now);
  TimeUnitName(float(fuzz::ExtremeNumber(in)), now);
  return 0;
}

#pragma once
// Calendar fields and time units of automation dates.
#include <ctime>

#include "util/automation_date.h"
#include "util/text.h"

namespace zel {

// Fills the calendar fields of `time` (year - 1900, month - 1, day, hour,
// minute, second, day of the week; the time rounded to the nearest second)
// from an automation date. A date the platform cannot convert leaves `time`
// untouched and gives false.
bool DateTimeToTm(double date, std::tm& time);

// The length in days of one "SECOND", "MINUTE", "HOUR", "DAY", "MONTH" or
// "YEAR" counted from the current UTC time: the difference between now and
// now with that field raised by one. A month is therefore 28 to 31 days and a
// year 365 or 366, depending on today. A field raised past its range rolls
// over into the next one, so one DAY is 1 even on the last day of a month
// (day 32 is the 1st of the next month) and one MONTH counted from December
// reaches January. Unknown names (compared exactly) give 0.
float TimeUnitLength(TextView unit);
float TimeUnitLength(TextView unit, const SystemTime& nowUtc);

// The name of the largest calendar field that adding `unitLength` days to
// the current UTC time changes ("YEAR" down to "SECOND"), or an empty text
// when it changes none.
Text TimeUnitName(float unitLength);
Text TimeUnitName(float unitLength, const SystemTime& nowUtc);

}  // namespace zel

#include "util/axis_value_text.h"

#include <algorithm>
#include <cmath>
#include <ctime>

#include "util/automation_date.h"
#include "util/c_printf.h"
#include "util/c_strftime.h"
#include "util/date_time.h"
#include "util/win32_arith.h"

namespace zel {
namespace {

constexpr size_t kLabelCapacity = 64;  // characters, terminator included
constexpr size_t kRealFormatMeasuredMax = 15;
constexpr int kMaxLabelLines = 5;
constexpr double kFiveMillisecondsPerDay = 17280000.0;

Text IntegerText(double value) { return CPrintf(u"%d", TruncToInt32(value)); }

Text RealText(TextView format, double value) {
  Text text = CPrintf(u"%" + Text(format), value);
  if (text.empty() || text.size() >= kLabelCapacity) text = CPrintf(u"%f", value);
  return text.size() < kLabelCapacity ? text : Text(u"####");
}

Text CategoryText(const CategoryLabels* labels, double value) {
  int32_t index = TruncToInt32(value);
  if (labels && index >= 0 && size_t(index) < labels->size() && (*labels)[size_t(index)])
    return *(*labels)[size_t(index)];
  return u" ";
}

// Splits the sub-second part off a time value: the value moves back to its
// whole second and the milliseconds are returned, a multiple of 5; 1000 ms
// carries into the next second. The time of day runs forward on both sides of
// day 0, so for dates before it the whole second lies further from zero.
int SplitMilliseconds(double& value) {
  double wholeDays = 0;
  double timeOfDay = std::fabs(std::modf(value, &wholeDays));
  double remainder = timeOfDay - std::floor(timeOfDay * 86400.0) * kSecondInDays;
  double direction = value < 0 ? -1.0 : 1.0;
  value -= direction * remainder;
  float steps = float(remainder * kFiveMillisecondsPerDay);
  if (!std::isfinite(steps)) return 0;  // a value that is no date has no milliseconds
  int milliseconds = int(std::floor(steps + 0.5f)) * 5;
  if (milliseconds == 1000) {
    value += direction * kSecondInDays;
    milliseconds = 0;
  }
  return milliseconds;
}

Text TimeText(TextView format, double value) {
  int milliseconds = 0;
  if (format.find(u"%%d") != TextView::npos) milliseconds = SplitMilliseconds(value);
  std::tm time{};
  if (!DateTimeToTm(value, time)) return u"####";
  time.tm_year = std::max(time.tm_year, 1);
  Text text = CFormatTime(format, time, kLabelCapacity);
  if (text.empty()) text = CFormatTime(u"%H:%M", time, kLabelCapacity);
  if (text.empty()) return u"####";
  if (text.find(u"%d") != Text::npos) text = CPrintf(text, milliseconds);
  return text;
}

int LineCount(TextView format) {
  int lines = 1 + int(std::count(format.begin(), format.end(), u'\n'));
  return std::min(lines, kMaxLabelLines);
}

}  // namespace

Text FormatAxisValue(const AxisLabelFormat& axis, double value) {
  switch (axis.type) {
    case kAxisInteger: return IntegerText(value);
    case kAxisReal: return RealText(axis.annotationFormat, value);
    case kAxisDiscrete: return CategoryText(axis.categoryLabels, value);
    case kAxisTime: return TimeText(axis.annotationFormat, value);
    default: return u"####";
  }
}

LabelExtentSample LabelExtentTexts(const AxisLabelFormat& axis, double min, double max) {
  LabelExtentSample sample;
  switch (axis.type) {
    case kAxisInteger:
      sample.texts = {IntegerText(min), IntegerText(max)};
      break;
    case kAxisDiscrete:
      sample.texts = {IntegerText(max)};
      break;
    case kAxisReal: {
      TextView format = axis.annotationFormat.size() > kRealFormatMeasuredMax
                            ? TextView(u"2.3f") : axis.annotationFormat;
      sample.texts = {RealText(format, min), RealText(format, max)};
      break;
    }
    case kAxisTime: {
      std::tm time{};
      DateTimeToTm(1.0, time);
      Text text = CFormatTime(axis.annotationFormat, time, kLabelCapacity);
      sample.texts = {text.empty() ? CFormatTime(u"%H:%M", time, kLabelCapacity) : text};
      sample.lineCount = LineCount(axis.annotationFormat);
      break;
    }
  }
  return sample;
}

}  // namespace zel

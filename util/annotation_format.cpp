#include "util/annotation_format.h"

#include "util/process_state.h"

namespace zel {
namespace {

constexpr double kHour = 1.0 / 24;                    // 0.041666666666666664
constexpr double kFiveMinutes = 1.0 / 288;            // 0.003472222222222222
constexpr double kEightTenthsSecond = 9.259259259259259e-06;
constexpr double kMonthLabelsUpTo = 366;  // days between labels

Text PartOfFormat(TextView format, TextView letters, TextView fallback) {
  Text part;
  size_t previousEnd = TextView::npos;
  for (size_t i = 0; i + 1 < format.size(); ++i) {
    if (format[i] != u'%' || letters.find(format[i + 1]) == TextView::npos) continue;
    // Each directive but the first is preceded by the character that followed
    // the previous directive of the same part.
    if (previousEnd != TextView::npos) part += format[previousEnd];
    part += format.substr(i, 2);
    previousEnd = i + 2;
    ++i;
  }
  return part.empty() ? Text(fallback) : part;
}

Text ChooseRealFormat(float step) {
  if (step <= 0.005) return u"1.3e";
  if (step <= 1.0) return u"2.3f";
  return u"3.1f";
}

// The format derived from the graph's date-time format for report type `report`.
Text GraphFormat(int report) {
  const Text& format = Process().dateTimeFormat;
  if (report == 2) return u"%#d";
  if (report == 3) return u"%b";
  return SplitDateTimeFormat(format, report == 1);
}

Text ChooseTimeFormat(float step, float unitLength) {
  ProcessState& process = Process();
  float span = unitLength > 0 ? step * unitLength : step;
  if (!process.dateTimeFormat.empty()) process.dateTimeFormatSeen = true;
  bool graphFormat = process.dateTimeFormatSeen;
  int report = process.reportType;

  if (span == 2.0) {
    if (report == 3) return u"%b";
    if (report == 2) return u"%#d";
    return graphFormat ? DatePartOfFormat(process.dateTimeFormat) : Text(u"%d-%m-%Y");
  }
  if (span > 2.0 && span <= kMonthLabelsUpTo && report == 3) return u"%b";
  if (span >= kHour) {
    if (graphFormat) return GraphFormat(report);
    return report == 3 ? u"%b" : u"%d.%m.%y\n%H:%M";
  }
  if (span >= kFiveMinutes) {
    if (graphFormat) return GraphFormat(report);
    return report == 1 ? u"%Y-%m-%d" : u"%H:%M\n%d-%m";
  }
  if (span >= kEightTenthsSecond) {
    if (graphFormat) return GraphFormat(report);
    return report == 1 ? u"%Y-%m-%d" : u"%H:%M:%S\n%d.%m";
  }
  return report == 1 ? u"%Y-%m-%d" : u"%H:%M:%S\n%%dms";
}

}  // namespace

Text DatePartOfFormat(TextView format) { return PartOfFormat(format, u"mdYyBb", u"%Y-%m-%d"); }

Text TimePartOfFormat(TextView format) { return PartOfFormat(format, u"HMISp", u"%H:%M:%S"); }

Text SplitDateTimeFormat(TextView format, bool dateOnly) {
  if (dateOnly) return DatePartOfFormat(format);
  return TimePartOfFormat(format) + u'\n' + DatePartOfFormat(format);
}

Text ChooseAnnotationFormat(AxisType axisType, float annotationStep, float timeUnitLength) {
  if (axisType == kAxisReal) return ChooseRealFormat(annotationStep);
  if (axisType == kAxisTime) return ChooseTimeFormat(annotationStep, timeUnitLength);
  return Text();
}

}  // namespace zel

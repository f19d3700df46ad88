#include "engine/axis_steps.h"

#include <cmath>

#include "util/automation_date.h"

namespace zel {
namespace {

constexpr double kDay = 1.0;
constexpr double kHour = 1.0 / 24;
constexpr double kMinute = 1.0 / 1440;
constexpr double kSecond = 1.0 / 86400;

bool IsPositive(double v) { return std::isfinite(v) && v > 0; }

double PowerOfTenBelow(double v) { return std::pow(10.0, std::trunc(std::log10(v))); }

// 5m, 2m or m for the power of ten m at or below `raw`; REAL steps correct m
// for raws below 1, INTEGER steps do not.
double NiceStep(double raw, bool correctBelowOne) {
  double m = PowerOfTenBelow(raw);
  if (correctBelowOne && raw < m) m /= 10;
  long k = std::lround(raw / m);
  return k >= 5 ? 5 * m : k >= 2 ? 2 * m : m;
}

AxisSteps FromAnnotationStep(double step, float unit = 0) {
  return {float(step), float(step) / 2, unit};
}

double TimeUnitFor(double& raw) {
  if (raw >= 365) return 365;
  if (raw >= 180) return 180;
  if (raw >= 60) return 60;
  if (raw >= 30) return 30.459;
  if (raw >= 10) return 31;
  double unit;
  if (raw >= 0.8) {
    unit = kDay;
  } else if (raw >= 1.0 / 30) {
    unit = kHour;
  } else if (raw >= 1.0 / 1800) {
    unit = kMinute;
  } else if (raw >= 9.259259259259259e-06) {
    unit = kSecond;
  } else {
    double q = kSecond / raw;
    double p = PowerOfTenBelow(q);
    if (p < q) p *= 10;
    return kSecond / p;
  }
  if (raw < unit) raw = unit;
  return unit;
}

double TimeStepCount(double n, bool hourly) {
  if (std::lround(n) == 1) return 1;
  double m = PowerOfTenBelow(n);
  long k = std::lround(n / m);
  if (m != 10) {
    if (k > 7 && hourly) return 8 * m;
    if (k > 5 && hourly) return 6 * m;
    if (k >= 5 && !hourly) return 5 * m;
    if (k >= 4) return 4 * m;
    if (k >= 2) return 2 * m;
    return m;
  }
  if (k >= 3) return 30;
  if (hourly) return 12;
  if (k >= 2) return 20;
  return n >= 12 ? 15 : 10;
}

// Report type 2 divides the span by its day-of-month field read as a date,
// one more when that date has an hour.
double DaysOfSpan(double span) {
  SystemTime t;
  if (!DateToSystemTime(span, t)) return 10;
  return t.wDay + (t.wHour != 0 ? 1 : 0);
}

}  // namespace

bool KeepsGivenSteps(float annotationStep, float& tickStep) {
  auto kept = [](float step) {
    double whole = 0;
    double fraction = std::modf(double(step), &whole);
    return fraction * whole > 0;
  };
  if (!kept(annotationStep)) return false;
  if (!kept(tickStep)) tickStep = annotationStep;
  return true;
}

AxisSteps AutomaticRealSteps(double min, double max, double scale) {
  double raw = std::fabs((max - min) * 0.125 / scale);
  return FromAnnotationStep(IsPositive(raw) ? NiceStep(raw, true) : 1);
}

AxisSteps AutomaticIntegerSteps(int32_t min, int32_t max, double scale) {
  double raw = std::fabs(double((int64_t(max) - min) / 8) / scale);
  return FromAnnotationStep(IsPositive(raw) ? NiceStep(raw, false) : 1);
}

AxisSteps AutomaticTimeSteps(double min, double max, double scale, int reportType) {
  double span = max - min;
  double raw = reportType == 1   ? span / 7
               : reportType == 2 ? span / DaysOfSpan(span)
                                 : span / 10;
  raw = std::fabs(raw / scale);
  // An empty or unreadable range labels every day.
  if (!IsPositive(raw)) return FromAnnotationStep(1, float(kDay));
  double unit = TimeUnitFor(raw);
  return FromAnnotationStep(TimeStepCount(raw / unit, unit == kHour), float(unit));
}

}  // namespace zel

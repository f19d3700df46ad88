#include "engine/hairline_label.h"

#include <algorithm>
#include <cmath>

#include "engine/v_axis.h"
#include "util/c_printf.h"

namespace zel {
namespace {

constexpr double kRoundUpFraction = 0.9;

bool ShowsAWholeUnit(double fraction) {
  Text text = CPrintf(u"%0.2f", fraction);
  return text == u"0.98" || text == u"0.99" || text == u"1.00" || fraction >= kRoundUpFraction;
}

}  // namespace

Text HairlineLabel(const VAxis& axis, double value, int reportType) {
  if (reportType > 0 && std::isfinite(value)) {
    // A TIME axis counts in its time unit; the others in their own values.
    double unit = axis.type() == kAxisTime && axis.timeUnitLength() > 0 ? axis.timeUnitLength() : 1.0;
    double units = value / unit;
    double whole = std::floor(units);
    if (ShowsAWholeUnit(units - whole)) units = whole + 1;
    if (reportType == 3) return CPrintf(u"%d", int32_t(std::clamp(std::floor(units), -2147483648.0, 2147483647.0)));
    value = units * unit;
  }
  Text text = FormatAxisValue(axis.LabelFormat(), value);
  for (char16_t& c : text)
    if (c == u'\n') c = u' ';
  return text;
}

}  // namespace zel

#pragma once
// Small tagged values that cross the automation boundary one at a time (axis
// ends, limit values, pie labels, intersection results): the VARIANT types
// the control uses, and nothing else.
#include <cstdint>
#include <variant>

#include "util/text.h"

namespace zel {

// An automation date (VT_DATE), kept apart from a plain double (VT_R8).
struct DateValue {
  double days = 0;
  bool operator==(const DateValue&) const = default;
};

// VT_EMPTY, VT_I2, VT_I4, VT_R4, VT_R8, VT_DATE, VT_BSTR.
using Value = std::variant<std::monostate, int16_t, int32_t, float, double, DateValue, Text>;

// The display text of a value: a text as it is; I2 and I4 by "%d", R4 by
// "%f", R8 by "%lf" (at most 32 characters); a date by "%H:%M"; "####" for an
// empty value or a date that cannot be converted.
Text VariantDisplayText(const Value& value);

}  // namespace zel

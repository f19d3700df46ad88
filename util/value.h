#pragma once
// Small tagged values that cross the automation boundary one at a time (axis
// ends, limit values, pie labels, intersection results): the VARIANT types
// the control uses, and nothing else.
#include <cstdint>
#include <memory>
#include <variant>

#include "util/text.h"

namespace zel {

// An automation date (VT_DATE), kept apart from a plain double (VT_R8).
struct DateValue {
  double days = 0;
  bool operator==(const DateValue&) const = default;
};

class HostValue;

// VT_EMPTY, VT_I2, VT_I4, VT_R4, VT_R8, VT_DATE, VT_BSTR, and any other
// automation value held for the host as it came (a HostValue).
using Value = std::variant<std::monostate, int16_t, int32_t, float, double, DateValue, Text,
                           std::shared_ptr<const HostValue>>;

// The kinds of Value, in the order of its alternatives.
enum class ValueKind { Empty, I2, I4, R4, R8, Date, Text, Host };

inline ValueKind KindOf(const Value& value) { return ValueKind(value.index()); }

// A value of a type the control does not interpret itself (a VT_BOOL, a
// VT_CY, an object...). The control shell implements it over a copy of the
// automation value, converting with the platform's own rules.
class HostValue {
 public:
  virtual ~HostValue() = default;
  // Converts to one of I4, R4, R8 or Date; returns 0 or the platform's failure code.
  virtual int32_t ConvertTo(ValueKind kind, Value& out) const = 0;
};

// The display text of a value: a text as it is; I2 and I4 by "%d", R4 by
// "%f", R8 by "%lf" (at most 32 characters); a date by "%H:%M"; "####" for an
// empty value, a host value, or a date that cannot be converted.
Text VariantDisplayText(const Value& value);

}  // namespace zel

#pragma once
// An axis end as the operator reads and types it: numbers for INTEGER and
// REAL axes, a date and time for TIME axes, both through the platform's own
// conversions (the same ones the control applies to what a host passes).
#include <windows.h>
#include <oaidl.h>

#include "util/text.h"

namespace zel {

// Axis type codes of the automation interface.
enum AxisTypeCode : LONG { kAxisInteger = 0, kAxisReal = 1, kAxisDiscrete = 2, kAxisTime = 3 };

// `value` (as GetXAxisProperties returns it) as text; a REAL end is shown
// with the float precision the axis keeps it in.
Text AxisValueText(const VARIANT& value, LONG type);

// The text as a value of the axis's kind (VT_I4, VT_R8 or VT_DATE) in `out`;
// false, with `out` empty, when it does not convert.
bool ParseAxisValue(const Text& text, LONG type, VARIANT* out);

// The number an axis value stands for, for comparing two ends.
double AxisValueNumber(const VARIANT& value);

}  // namespace zel

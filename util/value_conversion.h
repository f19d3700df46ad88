#pragma once
// Conversion of values between automation types, giving exactly what the
// platform's VariantChangeType gives for the types the control stores:
// to I4 (rounding halves to even), to R4, to R8 and to a date.
#include <cstdint>

#include "util/value.h"

namespace zel {

// Failure codes, the platform's HRESULT values.
inline constexpr int32_t kConversionOk = 0;
inline constexpr int32_t kTypeMismatch = int32_t(0x80020005);  // DISP_E_TYPEMISMATCH
inline constexpr int32_t kOverflow = int32_t(0x8002000A);      // DISP_E_OVERFLOW

// Converts `in` to `target` (I4, R4, R8 or Date) into `out`; returns
// kConversionOk or the failure code, leaving `out` alone on failure. Texts
// are converted by the platform (its number and date parsing follow the
// user's locale); host values convert themselves.
int32_t ChangeType(const Value& in, ValueKind target, Value& out);

// A value as a number (R8), or 0 when it cannot be converted.
double NumberOf(const Value& value);

// The numeric rules on their own, for whole columns of plain numbers.
int32_t ToInt32(double value, int32_t& out);  // halves to even; NaN and |v| >= 2^31 + 0.5 overflow
int32_t ToFloat(double value, float& out);    // only magnitudes above FLT_MAX overflow
int32_t ToDate(double value, double& out);    // dates outside 0100-01-01..9999-12-31 overflow

}  // namespace zel

#pragma once
// Integer arithmetic exactly as Windows programs do it, for results that a
// host can observe (font heights, pixel positions, truncated values).
#include <algorithm>
#include <cstdint>
#include <limits>

namespace zel {

// a * b / c rounded to the nearest integer with halves away from zero, computed
// in 64 bits, as the platform's MulDiv. A zero divisor or a result outside
// -2147483647..2147483647 gives -1.
int32_t MulDiv(int32_t a, int32_t b, int32_t c);

// A C cast of a floating-point value to a 32-bit integer as compiled x86 code
// performs it: truncation toward zero, and INT32_MIN (the processor's
// "integer indefinite") for NaN and for values outside the 32-bit range.
int32_t TruncToInt32(double value);

// A 64-bit pixel sum brought back into 32 bits, saturating at the ends.
inline int32_t ClampToInt32(int64_t v) {
  return int32_t(std::clamp<int64_t>(v, std::numeric_limits<int32_t>::min(), std::numeric_limits<int32_t>::max()));
}

}  // namespace zel

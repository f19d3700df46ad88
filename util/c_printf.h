#pragma once
// printf-style formatting with one argument, giving what the Windows C
// runtime's wide printf (msvcrt) gives in the "C" locale:
//   - conversions d i o u x X c s S e E f F g G and %%, with the flags
//     - + space 0 #, width, precision and the size prefixes h l ll L w I I32 I64;
//   - floating-point values printed from their exact binary value, rounded
//     half up, with three-digit exponents ("1.000e+003");
//   - infinities and NaNs in the runtime's own spelling: "1.#INF00",
//     "-1.#IND00", "1.#QNAN0", including its rounding of that text under a
//     precision ("%.2f" of infinity is "1.#J");
//   - an unknown conversion letter printed as text, a trailing "%" dropped.
// Every conversion takes the one argument; one of the wrong kind is converted
// (a number for %s prints "(null)", a text for %d prints 0).
#include <cstdint>
#include <variant>

#include "util/text.h"

namespace zel {

using FormatArg = std::variant<std::monostate, int32_t, double, TextView>;

Text CPrintf(TextView format, const FormatArg& arg);

}  // namespace zel

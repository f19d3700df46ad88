#pragma once
// Calendar time formatting that gives what the Windows C runtime's wcsftime
// (msvcrt) gives in the "C" locale, for the directives that time labels use:
//   %Y %y %m %d %b %B %H %I %M %S %p %%, the "#" flag that drops leading
//   zeros (%#d), and any other character as text, line feeds included.
// Like the runtime it refuses a field out of its range (a month day of 0, a
// year above 9999, %y before 1900), a directive it does not know, a trailing
// "%", a character that the "C" locale cannot narrow (above U+00FF), and a
// result that does not fit `capacity` characters with its terminator. A
// refusal gives an empty text, as does an empty result.
#include <cstddef>
#include <ctime>

#include "util/text.h"

namespace zel {

Text CFormatTime(TextView format, const std::tm& time, size_t capacity);

}  // namespace zel

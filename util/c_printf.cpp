#include "util/c_printf.h"

#include <algorithm>
#include <bit>
#include <charconv>
#include <climits>
#include <cmath>
#include <string>

#include "util/win32_arith.h"

namespace zel {
namespace {

struct Conversion {
  bool leftAlign = false;
  bool padZero = false;
  bool alternate = false;
  char16_t sign = 0;  // '+', ' ' or, for a negative number, '-'
  int width = 0;
  int precision = -1;
  bool shortInteger = false;
  bool longInteger = false;
  char16_t letter = 0;
};

bool IsDigit(char16_t c) { return c >= u'0' && c <= u'9'; }

bool IsOneOf(char16_t c, std::string_view set) {
  return c != 0 && c < 0x80 && set.find(char(c)) != std::string_view::npos;
}

// Widths and precisions stop at this many characters. Every caller keeps at
// most a few hundred characters of a result, and those come out the same
// whether a field is this wide or wider; a host's "%2147483647d" would
// otherwise build gigabytes of padding.
constexpr int kFieldLimit = 4096;

// A width or precision, at most kFieldLimit.
int ParseNumber(TextView format, size_t& i) {
  int value = 0;
  while (i < format.size() && IsDigit(format[i])) {
    value = std::min(kFieldLimit, value * 10 + (format[i++] - u'0'));
  }
  return value;
}

// Parses the part of a conversion between "%" and its letter; `i` is left on
// the letter (or at the end of the format).
Conversion ParseConversion(TextView format, size_t& i) {
  Conversion conv;
  for (; i < format.size(); ++i) {
    char16_t c = format[i];
    if (c == u'+' || c == u' ') {
      if (conv.sign != u'+') conv.sign = c;
    } else if (c == u'-') {
      conv.leftAlign = true;
    } else if (c == u'0') {
      conv.padZero = true;
    } else if (c == u'#') {
      conv.alternate = true;
    } else {
      break;
    }
  }
  if (i < format.size() && format[i] == u'*') ++i;  // no second argument to take it from
  conv.width = ParseNumber(format, i);
  if (i < format.size() && format[i] == u'.') {
    ++i;
    if (i < format.size() && format[i] == u'*') ++i;
    conv.precision = ParseNumber(format, i);
  }
  auto next = [&](size_t k) { return i + k < format.size() ? format[i + k] : u'\0'; };
  while (i < format.size()) {
    char16_t c = format[i];
    if (c == u'l' && next(1) == u'l') {
      conv.longInteger = true;
      i += 2;
    } else if (c == u'I' && next(1) == u'6' && next(2) == u'4') {
      conv.longInteger = true;
      i += 3;
    } else if (c == u'I' && next(1) == u'3' && next(2) == u'2') {
      i += 3;
    } else if ((c == u'I' || c == u'z' || c == u't') && IsOneOf(next(1), "diouxX")) {
      conv.longInteger = sizeof(void*) == 8;
      ++i;
    } else if (c == u'h') {
      conv.shortInteger = true;
      ++i;
    } else if (IsOneOf(c, "lLwFNj")) {
      conv.longInteger |= c == u'j';
      ++i;
    } else {
      break;
    }
  }
  if (i < format.size()) conv.letter = format[i];
  return conv;
}

// Pads a converted body to the field width, placing the sign as the runtime
// does: before zero padding, after space padding.
void AppendField(Text& out, TextView body, Conversion conv) {
  if (conv.sign && !IsOneOf(conv.letter, "diaAeEfFgG")) conv.sign = 0;
  int width = conv.width - (conv.sign ? 1 : 0);
  int padding = std::max(0, width - int(body.size()));
  if (conv.sign && conv.padZero) out += conv.sign;
  if (!conv.leftAlign) out.append(size_t(padding), conv.padZero ? u'0' : u' ');
  if (conv.sign && !conv.padZero) out += conv.sign;
  out += body;
  if (conv.leftAlign) out.append(size_t(padding), u' ');
}

void AppendString(Text& out, TextView text, Conversion conv) {
  text = text.substr(0, text.find(u'\0'));
  if (conv.precision >= 0) text = text.substr(0, size_t(conv.precision));
  AppendField(out, text, conv);
}

void AppendInteger(Text& out, int64_t value, Conversion conv) {
  bool isSigned = conv.letter == u'd' || conv.letter == u'i';
  uint64_t magnitude;
  if (isSigned) {
    if (conv.shortInteger) value = int16_t(value);
    if (value < 0) conv.sign = u'-';
    magnitude = value < 0 ? 0 - uint64_t(value) : uint64_t(value);
  } else {
    magnitude = conv.shortInteger ? uint16_t(value)
              : conv.longInteger  ? uint64_t(value)
                                  : uint32_t(value);
  }
  unsigned base = conv.letter == u'o' ? 8 : IsOneOf(conv.letter, "xX") ? 16 : 10;
  const char* digits = conv.letter == u'X' ? "0123456789ABCDEF" : "0123456789abcdef";
  if (base == 16 && conv.padZero && conv.alternate && !conv.leftAlign &&
      conv.precision < conv.width - 2)
    conv.precision = conv.width - 2;

  std::string reversed;
  if (magnitude == 0) {
    conv.alternate = false;
    if (conv.precision != 0) reversed = "0";
  }
  for (; magnitude; magnitude /= base) reversed += digits[magnitude % base];
  while (int(reversed.size()) < conv.precision) reversed += '0';
  if (conv.alternate && base == 16) reversed += conv.letter == u'X' ? "X0" : "x0";
  if (conv.alternate && base == 8 && reversed.back() != '0') reversed += '0';
  std::reverse(reversed.begin(), reversed.end());
  AppendField(out, TextFromAscii(reversed), conv);
}

// The exact decimal expansion of a finite, non-negative double:
// value = 0.d1d2d3... * 10^radix, without trailing zeros ("" for 0).
struct Decimal {
  std::string digits;
  int radix = 1;
};

// The leading `significant` digits of a finite, non-negative double,
// correctly rounded; trailing zeros are kept.
Decimal DecimalDigits(double value, int significant) {
  Decimal d;
  if (value == 0) return d;
  char buffer[800];
  auto result = std::to_chars(buffer, buffer + sizeof buffer, value,
                              std::chars_format::scientific, significant - 1);
  std::string_view text(buffer, size_t(result.ptr - buffer));
  size_t e = text.find('e');
  d.digits = std::string(1, text[0]) + std::string(text.substr(2, e - 2));
  d.digits.erase(d.digits.find_last_not_of('0') + 1);
  d.radix = std::stoi(std::string(text.substr(e + 1))) + 1;
  return d;
}

// Keeps `count` leading digits, rounding half up on the first digit dropped.
void RoundToDigits(Decimal& d, int count);

// The decimal digits of a finite, non-negative double rounded half up to the
// number of digits that `countFor(radix)` asks for. 41 correctly rounded
// digits settle it unless every digit after the rounding digit is zero there
// (an exact tie, or a carry from further down); then the exact expansion,
// which never needs more than 767 digits, does.
//
// The 41 digits are exact outright when the expansion is no longer: below
// 10^40 with no binary digit below 2^-34, since m * 2^-q takes at most
// digits(m) + q * log10(5) significant decimal digits.
bool QuickDigitsAreExact(double value) {
  int exponent = 0;
  double fraction = std::frexp(value, &exponent);
  auto mantissa = uint64_t(std::ldexp(fraction, 53));
  int lowestBit = exponent - 53 + std::countr_zero(mantissa);
  return value < 1e40 && lowestBit >= -34;
}

template <typename CountFor>
Decimal RoundedDecimal(double value, CountFor countFor) {
  constexpr int kQuickDigits = 41;
  Decimal d = DecimalDigits(value, kQuickDigits);
  int count = countFor(d.radix);
  bool settled = QuickDigitsAreExact(value) || count < 0 || count + 1 < int(d.digits.size());
  if (!settled) d = DecimalDigits(value, 767);
  RoundToDigits(d, countFor(d.radix));
  return d;
}

void RoundToDigits(Decimal& d, int count) {
  if (count >= int(d.digits.size())) return;
  if (count < 0) {
    d.digits.clear();
    return;
  }
  bool up = d.digits[size_t(count)] >= '5';
  d.digits.resize(size_t(count));
  if (!up) return;
  int i = count - 1;
  for (; i >= 0 && d.digits[size_t(i)] == '9'; --i) d.digits[size_t(i)] = '0';
  if (i >= 0) {
    ++d.digits[size_t(i)];
  } else {
    d.digits.insert(d.digits.begin(), '1');
    ++d.radix;
  }
}

char DigitAt(const Decimal& d, int position) {
  return position >= 0 && position < int(d.digits.size()) ? d.digits[size_t(position)] : '0';
}

std::string FixedBody(const Decimal& d, int precision, bool alternate) {
  std::string body;
  if (d.radix <= 0 || d.digits.empty()) body = "0";
  for (int p = 0; p < d.radix && !d.digits.empty(); ++p) body += DigitAt(d, p);
  if (precision > 0 || alternate) body += '.';
  for (int p = 0; p < precision; ++p) body += DigitAt(d, d.digits.empty() ? -1 : d.radix + p);
  return body;
}

std::string ExponentBody(const Decimal& d, int precision, bool alternate, char letter) {
  std::string body(1, DigitAt(d, 0));
  if (precision > 0 || alternate) body += '.';
  for (int p = 1; p <= precision; ++p) body += DigitAt(d, p);
  int exponent = d.digits.empty() ? 0 : d.radix - 1;
  std::string digits = std::to_string(std::abs(exponent));
  body += letter;
  body += exponent < 0 ? '-' : '+';
  return body + std::string(digits.size() < 3 ? 3 - digits.size() : 0, '0') + digits;
}

void TrimFraction(std::string& body, size_t mantissaEnd) {
  size_t point = body.find('.');
  if (point == std::string::npos || point > mantissaEnd) return;
  size_t last = body.find_last_not_of('0', mantissaEnd - 1);
  size_t keep = last == point ? point : last + 1;
  body.erase(keep, mantissaEnd - keep);
}

std::string FiniteBody(double value, const Conversion& conv) {
  int precision = conv.precision < 0 ? 6 : conv.precision;
  switch (conv.letter) {
    case u'f':
    case u'F': {
      Decimal d = RoundedDecimal(value, [&](int radix) { return radix + precision; });
      return FixedBody(d, precision, conv.alternate);
    }
    case u'e':
    case u'E': {
      Decimal d = RoundedDecimal(value, [&](int) { return precision + 1; });
      return ExponentBody(d, precision, conv.alternate, char(conv.letter));
    }
  }
  // %g and %G: the shorter of the two forms for `precision` significant digits.
  precision = std::max(precision, 1);
  Decimal d = RoundedDecimal(value, [&](int) { return precision; });
  int exponent = d.digits.empty() ? 0 : d.radix - 1;
  std::string body;
  if (exponent >= -4 && exponent < precision) {
    body = FixedBody(d, precision - 1 - exponent, conv.alternate);
    if (!conv.alternate) TrimFraction(body, body.size());
  } else {
    body = ExponentBody(d, precision - 1, conv.alternate, conv.letter == u'g' ? 'e' : 'E');
    if (!conv.alternate) TrimFraction(body, body.find_first_of("eE"));
  }
  return body;
}

// Infinity and NaN as the runtime spells them: "1.#INF", "1.#IND" (negative
// NaN) or "1.#QNAN", with a precision below the length of the part after
// "1." rounding that text up at the cut, and the usual fraction digits made
// up with zeros.
void AppendSpecial(Text& out, double value, Conversion conv) {
  bool g = conv.letter == u'g' || conv.letter == u'G';
  if (g) --conv.precision;
  std::string prefix = std::isinf(value) ? "1.#INF" : conv.sign == u'-' ? "1.#IND" : "1.#QNAN";
  int fractionLength = int(prefix.size()) - 2;
  if (conv.precision >= 0 && conv.precision < fractionLength)
    ++prefix[size_t(conv.precision + 1)];

  std::string suffix;
  if (conv.letter == u'e' || conv.letter == u'E')
    suffix = std::string(1, char(conv.letter)) + "+000";
  int suffixLength = !conv.alternate && g ? fractionLength : conv.precision;
  if (suffixLength == -1 && IsOneOf(conv.letter, "fFeE")) suffixLength = 6;
  suffixLength += int(suffix.size()) - fractionLength;

  Conversion head = conv;
  if (suffixLength > 0) head.width -= suffixLength;
  if (head.precision >= 0) {
    if (head.precision == 0) --head.precision;
    head.precision += int(prefix.size()) - fractionLength;
    prefix.resize(std::min(prefix.size(), size_t(std::max(head.precision, 0))));
  }
  AppendField(out, TextFromAscii(prefix), head);

  Conversion tail = conv;
  tail.width = suffixLength;
  tail.padZero = true;
  tail.sign = 0;
  AppendField(out, TextFromAscii(suffix), tail);
}

void AppendFloating(Text& out, double value, Conversion conv) {
  if (std::signbit(value)) {
    conv.sign = u'-';
    value = -value;
  }
  if (!std::isfinite(value)) {
    AppendSpecial(out, value, conv);
    return;
  }
  std::string body = FiniteBody(value, conv);
  AppendField(out, TextFromAscii(body), conv);
}

int64_t IntegerOf(const FormatArg& arg) {
  if (auto* i = std::get_if<int32_t>(&arg)) return *i;
  if (auto* d = std::get_if<double>(&arg)) return TruncToInt32(*d);
  return 0;
}

double FloatingOf(const FormatArg& arg) {
  if (auto* i = std::get_if<int32_t>(&arg)) return *i;
  if (auto* d = std::get_if<double>(&arg)) return *d;
  return 0.0;
}

// Formats one conversion; false when its letter is not a conversion, which
// the caller then prints as text.
bool AppendConversion(Text& out, const Conversion& conv, const FormatArg& arg) {
  char16_t c = conv.letter;
  if (c == u's' || c == u'S') {
    auto* text = std::get_if<TextView>(&arg);
    AppendString(out, text ? *text : TextView(u"(null)"), conv);
  } else if (c == u'c' || c == u'C') {
    Text one(1, char16_t(IntegerOf(arg)));
    AppendField(out, one, conv);
  } else if (IsOneOf(c, "diouxX")) {
    AppendInteger(out, IntegerOf(arg), conv);
  } else if (IsOneOf(c, "eEfFgG")) {
    AppendFloating(out, FloatingOf(arg), conv);
  } else {
    return false;
  }
  return true;
}

}  // namespace

Text CPrintf(TextView format, const FormatArg& arg) {
  Text out;
  size_t i = 0;
  while (i < format.size()) {
    size_t percent = std::min(format.find(u'%', i), format.size());
    out.append(format.substr(i, percent - i));
    i = percent;
    if (i == format.size()) break;
    if (++i < format.size() && format[i] == u'%') {
      out += u'%';
      ++i;
      continue;
    }
    Conversion conv = ParseConversion(format, i);
    if (AppendConversion(out, conv, arg)) ++i;
  }
  return out;
}

}  // namespace zel

#include "util/c_strftime.h"

#include <cstdint>
#include <optional>

namespace zel {
namespace {

constexpr const char16_t* kShortMonths[] = {u"Jan", u"Feb", u"Mar", u"Apr", u"May", u"Jun",
                                            u"Jul", u"Aug", u"Sep", u"Oct", u"Nov", u"Dec"};
constexpr const char16_t* kMonths[] = {u"January", u"February", u"March",     u"April",
                                       u"May",     u"June",     u"July",      u"August",
                                       u"September", u"October", u"November", u"December"};

// Fields are widened first: a caller's tm may hold any int, and the runtime
// refuses what lies outside a field's range rather than wrapping it.
bool InRange(int64_t value, int low, int high) { return value >= low && value <= high; }

// A number zero-padded to `digits` (none with the "#" flag), if in range.
bool AppendNumber(Text& out, int64_t value, int low, int high, int digits, bool alternate) {
  if (!InRange(value, low, high)) return false;
  Text number = DecimalText(value);
  if (!alternate && int(number.size()) < digits) out.append(size_t(digits) - number.size(), u'0');
  out += number;
  return true;
}

bool AppendDirective(Text& out, char16_t directive, bool alternate, const std::tm& t) {
  int64_t year = int64_t(t.tm_year) + 1900;
  switch (directive) {
    case u'Y': return AppendNumber(out, year, 0, 9999, 4, alternate);
    case u'y': return year >= 1900 && AppendNumber(out, year % 100, 0, 99, 2, alternate);
    case u'm': return AppendNumber(out, int64_t(t.tm_mon) + 1, 1, 12, 2, alternate);
    case u'd': return AppendNumber(out, t.tm_mday, 1, 31, 2, alternate);
    case u'H': return AppendNumber(out, t.tm_hour, 0, 23, 2, alternate);
    case u'I':
      return InRange(t.tm_hour, 0, 23) &&
             AppendNumber(out, (t.tm_hour + 11) % 12 + 1, 1, 12, 2, alternate);
    case u'M': return AppendNumber(out, t.tm_min, 0, 59, 2, alternate);
    case u'S': return AppendNumber(out, t.tm_sec, 0, 59, 2, alternate);
    case u'p':
      if (!InRange(t.tm_hour, 0, 23)) return false;
      out += t.tm_hour < 12 ? u"AM" : u"PM";
      return true;
    case u'b':
    case u'B':
      if (!InRange(t.tm_mon, 0, 11)) return false;
      out += directive == u'b' ? kShortMonths[t.tm_mon] : kMonths[t.tm_mon];
      return true;
    case u'%':
      out += u'%';
      return true;
    default: return false;
  }
}

std::optional<Text> Format(TextView format, const std::tm& time) {
  Text out;
  for (size_t i = 0; i < format.size(); ++i) {
    if (format[i] > 0xFF) return std::nullopt;
    if (format[i] != u'%') {
      out += format[i];
      continue;
    }
    bool alternate = i + 1 < format.size() && format[i + 1] == u'#';
    if (alternate) ++i;
    if (++i == format.size() || !AppendDirective(out, format[i], alternate, time))
      return std::nullopt;
  }
  return out;
}

}  // namespace

Text CFormatTime(TextView format, const std::tm& time, size_t capacity) {
  format = format.substr(0, format.find(u'\0'));
  std::optional<Text> text = Format(format, time);
  if (!text || text->size() >= capacity) return Text();
  return *text;
}

}  // namespace zel

#include "util/value.h"

#include "util/c_printf.h"
#include "util/c_strftime.h"
#include "util/date_time.h"

namespace zel {
namespace {

constexpr size_t kNumberTextMax = 32;
constexpr size_t kDateTextCapacity = 30;

Text Cut(Text text, size_t max) {
  if (text.size() > max) text.resize(max);
  return text;
}

struct DisplayText {
  Text operator()(std::monostate) const { return u"####"; }
  Text operator()(int16_t v) const { return Cut(CPrintf(u"%d", int32_t(v)), kNumberTextMax); }
  Text operator()(int32_t v) const { return Cut(CPrintf(u"%d", v), kNumberTextMax); }
  Text operator()(float v) const { return Cut(CPrintf(u"%f", double(v)), kNumberTextMax); }
  Text operator()(double v) const { return Cut(CPrintf(u"%lf", v), kNumberTextMax); }
  Text operator()(const Text& v) const { return v; }
  Text operator()(const std::shared_ptr<const HostValue>&) const { return u"####"; }
  Text operator()(DateValue v) const {
    std::tm time{};
    Text text;
    if (DateTimeToTm(v.days, time)) text = CFormatTime(u"%H:%M", time, kDateTextCapacity);
    return text.empty() ? Text(u"####") : text;
  }
};

}  // namespace

Text VariantDisplayText(const Value& value) { return std::visit(DisplayText{}, value); }

}  // namespace zel

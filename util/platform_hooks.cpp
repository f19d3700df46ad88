#include "util/platform_hooks.h"

#include <charconv>
#include <chrono>
#include <string>

#include "util/value_conversion.h"

namespace zel {
namespace {

SystemTime SystemClockNow() {
  using namespace std::chrono;
  auto now = system_clock::now();
  auto today = floor<days>(now);
  year_month_day date{today};
  hh_mm_ss time{floor<milliseconds>(now - today)};
  SystemTime t;
  t.wYear = uint16_t(int(date.year()));
  t.wMonth = uint16_t(unsigned(date.month()));
  t.wDay = uint16_t(unsigned(date.day()));
  t.wDayOfWeek = uint16_t(weekday{today}.c_encoding());
  t.wHour = uint16_t(time.hours().count());
  t.wMinute = uint16_t(time.minutes().count());
  t.wSecond = uint16_t(time.seconds().count());
  t.wMilliseconds = uint16_t(time.subseconds().count());
  return t;
}

int32_t ConvertDecimalText(TextView text, ValueKind target, Value& out) {
  size_t first = text.find_first_not_of(u" \t");
  size_t last = text.find_last_not_of(u" \t");
  if (first == TextView::npos) return kTypeMismatch;
  std::string narrow;
  for (char16_t c : text.substr(first, last - first + 1)) {
    if (c >= 0x80) return kTypeMismatch;
    narrow += char(c);
  }
  double number = 0;
  const char* begin = narrow.data() + (narrow[0] == '+' ? 1 : 0);
  auto [end, error] = std::from_chars(begin, narrow.data() + narrow.size(), number);
  if (error != std::errc() || end != narrow.data() + narrow.size()) return kTypeMismatch;
  return ChangeType(number, target, out);
}

PlatformHooks WithDefaults(PlatformHooks hooks) {
  if (!hooks.screenResolution) hooks.screenResolution = [] { return 96; };
  if (!hooks.utcNow) hooks.utcNow = SystemClockNow;
  if (!hooks.languageText) hooks.languageText = [](int) { return Text(); };
  if (!hooks.convertText) hooks.convertText = ConvertDecimalText;
  return hooks;
}

PlatformHooks& Installed() {
  static PlatformHooks hooks = WithDefaults({});
  return hooks;
}

}  // namespace

const PlatformHooks& Platform() { return Installed(); }

void InstallPlatformHooks(PlatformHooks hooks) { Installed() = WithDefaults(std::move(hooks)); }

}  // namespace zel

#include "util/platform_hooks.h"

#include <chrono>

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

PlatformHooks WithDefaults(PlatformHooks hooks) {
  if (!hooks.screenResolution) hooks.screenResolution = [] { return 96; };
  if (!hooks.utcNow) hooks.utcNow = SystemClockNow;
  if (!hooks.languageText) hooks.languageText = [](int) { return Text(); };
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

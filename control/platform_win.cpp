#include "control/platform_win.h"

#include <bit>
#include <cstddef>

#include "util/platform_hooks.h"

namespace zel {
namespace {

// The portable records convert bit for bit into the platform's.
static_assert(sizeof(LogFont) == sizeof(LOGFONTW));
static_assert(offsetof(LogFont, lfWeight) == offsetof(LOGFONTW, lfWeight));
static_assert(offsetof(LogFont, lfCharSet) == offsetof(LOGFONTW, lfCharSet));
static_assert(offsetof(LogFont, lfFaceName) == offsetof(LOGFONTW, lfFaceName));
static_assert(sizeof(SystemTime) == sizeof(SYSTEMTIME));
static_assert(offsetof(SystemTime, wDay) == offsetof(SYSTEMTIME, wDay));
static_assert(offsetof(SystemTime, wMilliseconds) == offsetof(SYSTEMTIME, wMilliseconds));

int DisplayResolution() {
  HDC display = CreateDCW(L"DISPLAY", nullptr, nullptr, nullptr);
  if (!display) return 0;
  int resolution = GetDeviceCaps(display, LOGPIXELSY);
  DeleteDC(display);
  return resolution;
}

SystemTime UtcNow() {
  SYSTEMTIME now;
  GetSystemTime(&now);
  return FromSystemTime(now);
}

}  // namespace

void InstallWindowsPlatformHooks(Text (*languageText)(int id)) {
  InstallPlatformHooks({.screenResolution = DisplayResolution, .utcNow = UtcNow, .languageText = languageText});
}

LOGFONTW ToLogFontW(const LogFont& font) { return std::bit_cast<LOGFONTW>(font); }

SystemTime FromSystemTime(const SYSTEMTIME& time) { return std::bit_cast<SystemTime>(time); }

}  // namespace zel

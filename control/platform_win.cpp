#include "control/platform_win.h"

#include <oleauto.h>

#include <bit>
#include <cstddef>
#include <new>

#include "util/platform_hooks.h"
#include "util/value_conversion.h"

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
// The core's conversion failures are the platform's own codes.
static_assert(kTypeMismatch == DISP_E_TYPEMISMATCH && kOverflow == DISP_E_OVERFLOW);

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

VARTYPE VarTypeOf(ValueKind target) {
  switch (target) {
    case ValueKind::I4: return VT_I4;
    case ValueKind::R4: return VT_R4;
    case ValueKind::R8: return VT_R8;
    case ValueKind::Date: return VT_DATE;
    default: return VT_EMPTY;
  }
}

// The value of a converted VARIANT of one of those four types.
Value ConvertedValue(const VARIANT& converted) {
  switch (V_VT(&converted)) {
    case VT_I4: return int32_t(V_I4(&converted));
    case VT_R4: return V_R4(&converted);
    case VT_R8: return V_R8(&converted);
    default: return DateValue{V_DATE(&converted)};
  }
}

// A text converted as VariantChangeType converts a BSTR (flags 0, so numbers
// and dates follow the user's locale), with the platform's failure code.
// Running out of memory is not a verdict on the text: it throws.
int32_t ConvertText(TextView text, ValueKind target, Value& out) {
  VARTYPE type = VarTypeOf(target);
  if (type == VT_EMPTY) return kTypeMismatch;
  VARIANT in, converted;
  VariantInit(&converted);
  V_VT(&in) = VT_BSTR;
  V_BSTR(&in) = SysAllocStringLen(reinterpret_cast<const OLECHAR*>(text.data()), UINT(text.size()));
  if (!V_BSTR(&in)) throw std::bad_alloc();
  HRESULT hr = VariantChangeType(&converted, &in, 0, type);
  VariantClear(&in);
  if (hr == E_OUTOFMEMORY) throw std::bad_alloc();
  if (FAILED(hr)) return hr;
  out = ConvertedValue(converted);
  return kConversionOk;
}

}  // namespace

void InstallWindowsPlatformHooks(Text (*languageText)(int id)) {
  InstallPlatformHooks({.screenResolution = DisplayResolution, .utcNow = UtcNow, .languageText = languageText,
                        .convertText = ConvertText});
}

LOGFONTW ToLogFontW(const LogFont& font) { return std::bit_cast<LOGFONTW>(font); }

SystemTime FromSystemTime(const SYSTEMTIME& time) { return std::bit_cast<SystemTime>(time); }

}  // namespace zel

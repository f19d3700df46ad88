#pragma once
// The Windows side of the core's platform hooks, and conversions between the
// core's platform-shaped records and the real ones.
#include <windows.h>

#include "util/automation_date.h"
#include "util/font_spec.h"
#include "util/text.h"

namespace zel {

// Screen resolution from the display's device context, time from the system
// clock, texts from `languageText` (none when null), text values converted
// by VariantChangeType.
void InstallWindowsPlatformHooks(Text (*languageText)(int id) = nullptr);

LOGFONTW ToLogFontW(const LogFont& font);
SystemTime FromSystemTime(const SYSTEMTIME& time);

}  // namespace zel

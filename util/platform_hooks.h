#pragma once
// The few things the portable code asks of the platform. The control module
// installs Windows implementations when it is loaded; natively, and until
// then, the defaults below apply.
#include <functional>

#include "util/automation_date.h"
#include "util/text.h"
#include "util/value.h"

namespace zel {

struct PlatformHooks {
  // Vertical pixels per logical inch of the display (GetDeviceCaps LOGPIXELSY).
  // Default: 96.
  std::function<int()> screenResolution;
  // The current UTC time (GetSystemTime). Default: the system clock.
  std::function<SystemTime()> utcNow;
  // A text from the language libraries, or an empty text when they have none.
  // Default: none, so every text comes from the built-in table.
  std::function<Text(int id)> languageText;
  // Converts a text to I4, R4, R8 or Date as the platform's VariantChangeType
  // does (numbers and dates in the user's locale); returns 0 or its failure
  // code, and throws std::bad_alloc when memory runs out. Default: plain
  // decimal numbers ("-1.5e3", blanks around allowed).
  std::function<int32_t(TextView text, ValueKind target, Value& out)> convertText;
};

// The installed hooks; every member is always callable.
const PlatformHooks& Platform();

// Replaces the hooks; empty members get the defaults.
void InstallPlatformHooks(PlatformHooks hooks);

}  // namespace zel

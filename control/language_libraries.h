#pragma once
// The language libraries: resource-only modules with string tables in other
// languages. One is the host's chosen language, reloaded on every choice; the
// other is the default language ("EN"), loaded once and kept. Texts are looked
// up in them before the module's own table.
#include <windows.h>

#include "util/text.h"

namespace zel {

// Releases the chosen language's library and loads the libraries of the
// current language (when it is not "EN") and of the default language (when
// that is not loaded yet). A library that cannot be loaded is no error: its
// texts then come from the next source.
void ReloadLanguageLibraries();

// Releases both libraries (when the module is unloaded).
void FreeLanguageLibraries();

// The text of `id` from the first of these that has a non-empty one: the
// module `caller` (none when null), the chosen language's library, the default
// language's library. Empty when none has it; the caller then falls back to
// the module's own table.
Text LanguageLibraryText(int id, HMODULE caller = nullptr);

}  // namespace zel

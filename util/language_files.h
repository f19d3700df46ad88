#pragma once
// Where a language library lies: in a folder named after the language, beside
// the module, under the module's own name with the language added.
#include <array>

#include "util/text.h"

namespace zel {

// The two file names tried, in order, for `language`, given the module's full
// path (for "C:\app\ZELGraph.dll" and "DE"):
//   C:\app\DE\ZELGraph_texts_DE.dll
//   C:\app\DE\ZELGraph_textsDE.dll
// A module name without an extension gives names without one.
std::array<Text, 2> LanguageLibraryNames(TextView modulePath, TextView language);

}  // namespace zel

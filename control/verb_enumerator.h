#pragma once
// The verbs the control offers its container: the properties verb, named
// like the context menu's "Graph &Settings..." in the language of the texts.
#include <windows.h>
#include <ole2.h>
#include <olectl.h>

namespace zel {

HRESULT EnumerateVerbs(IEnumOLEVERB** verbs);

}  // namespace zel

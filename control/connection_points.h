#pragma once
// An enumerator over the control's connection points, for
// IConnectionPointContainer::EnumConnectionPoints.
#include <windows.h>
#include <ocidl.h>

#include <vector>

namespace zel {

// A new enumerator of `points`, in order; each is AddRef'ed while held.
HRESULT EnumerateConnectionPoints(const std::vector<IConnectionPoint*>& points, IEnumConnectionPoints** out);

}  // namespace zel

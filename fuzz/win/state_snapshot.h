#pragma once
// The graph as a host can observe it through the control's getters, written
// out as one text: two snapshots are equal when no getter can tell the
// graphs apart. Points are folded into a checksum per dataset.
#include <windows.h>

#include <string>

#include "zelgraph_idl.h"

namespace zel::fuzz {

std::wstring Snapshot(IVX_Graph* graph);

// The first place where two snapshots differ, with some text around it.
std::wstring FirstDifference(const std::wstring& before, const std::wstring& after);

}  // namespace zel::fuzz

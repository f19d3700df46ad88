// The context menu's commands and the highlight timer.
#include "control/vx_graph.h"

namespace zel {

bool CVX_Graph::OnCommand(UINT) { return false; }

void CVX_Graph::OnTimer(UINT_PTR) {}

}  // namespace zel

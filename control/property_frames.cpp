// The property frames of the context menu's commands: modal frames over the
// active window with the control as their one object.
#include <olectl.h>

#include "control/class_ids.h"
#include "control/vx_graph.h"

namespace zel {

bool CVX_Graph::OpenPropertyFrame(UINT id) {
  static const CLSID allPages[] = {kGraphPageClsid, kAxesPageClsid, kCurvePageClsid};
  const CLSID* pages = nullptr;
  ULONG count = 0;
  switch (id) {
    case 244: pages = allPages, count = 3; break;
    case 426: pages = &allPages[1], count = 1; break;
    case 427: pages = &allPages[2], count = 1; break;
    default: return false;
  }
  IUnknown* self = static_cast<IVX_Graph*>(this);
  AddRef();
  OleCreatePropertyFrame(GetActiveWindow(), 0, 0, nullptr, 1, &self, count, const_cast<CLSID*>(pages),
                         LOCALE_USER_DEFAULT, 0, nullptr);
  if (id == 427) SetLoadCurveSetttingInfo(-1);
  if (id == 244 || id == 427) highlight_.Stop();
  Release();
  return true;
}

}  // namespace zel

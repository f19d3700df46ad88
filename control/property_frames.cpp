// The property frames: modal frames with the control as their one object,
// opened from the context menu's commands and by the properties verb.
#include <olectl.h>

#include "control/class_ids.h"
#include "control/vx_graph.h"

namespace zel {
namespace {

const CLSID kAllPages[] = {kGraphPageClsid, kAxesPageClsid, kCurvePageClsid};

}  // namespace

void CVX_Graph::ShowPropertyFrame(HWND owner, const CLSID* pages, ULONG count) {
  IUnknown* self = static_cast<IVX_Graph*>(this);
  AddRef();
  OleCreatePropertyFrame(owner, 0, 0, nullptr, 1, &self, count, const_cast<CLSID*>(pages), LOCALE_USER_DEFAULT, 0,
                         nullptr);
  Release();
}

bool CVX_Graph::OpenPropertyFrame(UINT id) {
  const CLSID* pages = nullptr;
  ULONG count = 0;
  switch (id) {
    case 244: pages = kAllPages, count = 3; break;
    case 426: pages = &kAllPages[1], count = 1; break;
    case 427: pages = &kAllPages[2], count = 1; break;
    default: return false;
  }
  AddRef();
  ShowPropertyFrame(GetActiveWindow(), pages, count);
  if (id == 427) SetLoadCurveSetttingInfo(-1);
  if (id == 244 || id == 427) highlight_.Stop();
  Release();
  return true;
}

// The properties verb opens the frame of "Graph &Settings...", over the
// window the container names, else the active one.
HRESULT CVX_Graph::OpenPropertiesVerb(HWND parent) {
  ShowPropertyFrame(parent ? parent : GetActiveWindow(), kAllPages, 3);
  return S_OK;
}

}  // namespace zel

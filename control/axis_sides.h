#pragma once
// The side each axis stands on is fixed when the axis is added, and no
// automation entry reads it back. The axes page shows it through this
// interface of the module's control, as it finds the prompt flags.
#include <windows.h>
#include <unknwn.h>

namespace zel {

struct IAxisSides : IUnknown {
  // The axis's placement code (0 low side, 1 high side, 2 centre, 3 at a
  // value of another axis), or -1 when the graph has no such axis.
  virtual int STDMETHODCALLTYPE AxisSide(BOOL vertical, LONG id) = 0;
};
inline const IID IID_IAxisSides = {0x9d766cfa, 0x6c5b, 0x4827, {0xa1, 0x8b, 0x64, 0x11, 0x76, 0xe9, 0xe9, 0xb1}};

}  // namespace zel

#pragma once
// Axis type codes, as the automation interface numbers them.

namespace zel {

enum AxisType : int {
  kAxisInteger = 0,   // values held as 32-bit integers
  kAxisReal = 1,      // 32-bit floats
  kAxisDiscrete = 2,  // categories 0..max, with text labels
  kAxisTime = 3,      // automation dates
};

}  // namespace zel

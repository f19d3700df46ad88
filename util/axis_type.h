#pragma once
// Axis type codes, as the automation interface numbers them. A host may pass
// any other number: such an axis holds empty values, and every rule below
// treats it as none of the four.
#include <cstdint>

namespace zel {

enum class AxisType : int32_t {
  kInteger = 0,   // values held as 32-bit integers
  kReal = 1,      // 32-bit floats
  kDiscrete = 2,  // categories 0..max, with text labels
  kTime = 3,      // automation dates
};

inline constexpr AxisType kAxisInteger = AxisType::kInteger;
inline constexpr AxisType kAxisReal = AxisType::kReal;
inline constexpr AxisType kAxisDiscrete = AxisType::kDiscrete;
inline constexpr AxisType kAxisTime = AxisType::kTime;

// The code a host sees.
constexpr int32_t CodeOf(AxisType type) { return int32_t(type); }

}  // namespace zel

#pragma once
// What every fuzz target shares: the bytes read as typed values (clang's
// FuzzedDataProvider), texts of UTF-16 code units, and a fresh process state
// for each input so that one input never depends on the one before.
#include <fuzzer/FuzzedDataProvider.h>

#include <cmath>
#include <cstdint>
#include <limits>

#include "util/platform_hooks.h"
#include "util/process_state.h"
#include "util/text.h"

namespace zel::fuzz {

// A text of at most `units` code units, any values (unpaired surrogates too).
inline Text TextOf(FuzzedDataProvider& in, size_t units = 64) {
  size_t count = in.ConsumeIntegralInRange<size_t>(0, units);
  Text text;
  for (size_t i = 0; i < count && in.remaining_bytes() >= 2; ++i) text.push_back(in.ConsumeIntegral<char16_t>());
  return text;
}

// A double that is often extreme: NaN, infinities, huge, tiny or plain.
inline double ExtremeNumber(FuzzedDataProvider& in) {
  switch (in.ConsumeIntegralInRange(0, 7)) {
    case 0: return std::numeric_limits<double>::quiet_NaN();
    case 1: return in.ConsumeBool() ? HUGE_VAL : -HUGE_VAL;
    case 2: return in.ConsumeBool() ? 1e308 : -1e308;
    case 3: return in.ConsumeIntegralInRange(-100, 100);
    default: return in.ConsumeFloatingPoint<double>();
  }
}

inline void FreshProcess() {
  ResetProcessState();
  InstallPlatformHooks({});
}

}  // namespace zel::fuzz

#pragma once
// The fuzzer's one source of chance: every choice of a run comes from it, so
// a seed replays the run.
#include <cstddef>
#include <cstdint>
#include <random>
#include <vector>

namespace zel::fuzz {

class RandomSource {
 public:
  explicit RandomSource(uint64_t seed) : engine_(seed) {}

  uint64_t Bits() { return engine_(); }
  // A number in [0, n); 0 when n is 0.
  size_t Below(size_t n) { return n ? size_t(engine_() % n) : 0; }
  // True with the given chance in percent.
  bool Percent(unsigned chance) { return Below(100) < chance; }
  // A number in [low, high].
  int64_t Between(int64_t low, int64_t high) { return low + int64_t(Below(size_t(high - low) + 1)); }
  template <typename T>
  const T& Pick(const std::vector<T>& items) { return items[Below(items.size())]; }
  template <typename T, size_t N>
  const T& Pick(const T (&items)[N]) { return items[Below(N)]; }

 private:
  std::mt19937_64 engine_;
};

}  // namespace zel::fuzz

// MulDiv against the platform's own, over random and boundary operands.
#include <windows.h>

#include <gtest/gtest.h>

#include <random>

#include "util/win32_arith.h"

namespace zel {
namespace {

TEST(Kernel32MulDivTest, AgreesWithThePlatform) {
  std::mt19937 random(9);
  std::uniform_int_distribution<int32_t> small(-3000, 3000);
  constexpr int32_t kMin = -0x7FFFFFFF - 1;
  const int32_t edges[] = {0, 1, -1, 2, -2, 72, 96, 0x7FFFFFFF, -0x7FFFFFFF, kMin};
  for (int i = 0; i < 300000; ++i) {
    int32_t a = i % 3 ? small(random) : int32_t(random());
    int32_t b = i % 5 ? small(random) : edges[random() % 10];
    int32_t c = i % 7 ? small(random) : edges[random() % 10];
    // Wine makes a negative divisor positive by negating both operands in 32
    // bits, which overflows for -2147483648; the result here stays exact.
    if (c == kMin || (c < 0 && a == kMin)) continue;
    ASSERT_EQ(zel::MulDiv(a, b, c), ::MulDiv(a, b, c)) << a << " * " << b << " / " << c;
  }
}

}  // namespace
}  // namespace zel

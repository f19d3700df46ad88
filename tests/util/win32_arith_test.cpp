#include "util/win32_arith.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace zel {
namespace {

TEST(Win32ArithTest, MulDivRoundsHalvesAwayFromZeroAndFailsAsMinusOne) {
  // {number, numerator, denominator, result}
  const int32_t cases[][4] = {{7, 96, 72, 9}, {1, 1, 2, 1},           {1, -3, 2, -2},            {3, 1, -2, -2},
                              {5, 72, 0, -1}, {0x7FFFFFFF, 2, 1, -1}, {-0x7FFFFFFF - 1, 1, 1, -1}};
  for (const auto& c : cases) EXPECT_EQ(MulDiv(c[0], c[1], c[2]), c[3]) << c[0] << " * " << c[1] << " / " << c[2];
}

TEST(Win32ArithTest, TruncationGivesIntegerIndefiniteOutOfRange) {
  constexpr int32_t kIndefinite = std::numeric_limits<int32_t>::min();
  EXPECT_EQ(TruncToInt32(-2.7), -2);
  EXPECT_EQ(TruncToInt32(2147483647.9), 2147483647);
  for (double v : {2147483648.0, -2147483649.0, std::nan(""), double(INFINITY)})
    EXPECT_EQ(TruncToInt32(v), kIndefinite) << v;
}

}  // namespace
}  // namespace zel

#include "util/win32_arith.h"

#include <cmath>
#include <limits>

namespace zel {

int32_t MulDiv(int32_t a, int32_t b, int32_t c) {
  if (c == 0) return -1;
  int64_t product = int64_t(a) * b;
  int64_t divisor = c;
  if (divisor < 0) {
    product = -product;
    divisor = -divisor;
  }
  int64_t half = divisor / 2;
  int64_t result = (product >= 0 ? product + half : product - half) / divisor;
  if (result > 2147483647 || result < -2147483647) return -1;
  return int32_t(result);
}

int32_t TruncToInt32(double value) {
  // The range test is written so that NaN fails it.
  if (!(value > -2147483649.0 && value < 2147483648.0))
    return std::numeric_limits<int32_t>::min();
  return int32_t(value);
}

}  // namespace zel

// wcsftime-style formatting: any format, any broken-down time, any room.
#include <ctime>

#include "fuzz/fuzz_input.h"
#include "util/c_strftime.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  using namespace zel;
  FuzzedDataProvider in(data, size);
  std::tm time{};
  for (int* field : {&time.tm_sec, &time.tm_min, &time.tm_hour, &time.tm_mday, &time.tm_mon, &time.tm_year,
                     &time.tm_wday, &time.tm_yday, &time.tm_isdst})
    *field = in.ConsumeBool() ? in.ConsumeIntegral<int>() : in.ConsumeIntegralInRange(0, 60);
  size_t capacity = in.ConsumeIntegralInRange<size_t>(0, 300);
  Text format = fuzz::TextOf(in, 64);
  Text out = CFormatTime(format, time, capacity);
  if (capacity > 0 && out.size() >= capacity) __builtin_trap();  // never more than the room allows
  return 0;
}

// Value conversions between the automation types the control stores.
#include "fuzz/fuzz_input.h"
#include "util/value_conversion.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  using namespace zel;
  FuzzedDataProvider in(data, size);
  fuzz::FreshProcess();
  double number = fuzz::ExtremeNumber(in);
  Value value;
  switch (in.ConsumeIntegralInRange(0, 6)) {
    case 0: break;
    case 1: value = in.ConsumeIntegral<int16_t>(); break;
    case 2: value = in.ConsumeIntegral<int32_t>(); break;
    case 3: value = float(number); break;
    case 4: value = number; break;
    case 5: value = DateValue{number}; break;
    default: value = fuzz::TextOf(in, 32); break;
  }
  const ValueKind kinds[] = {ValueKind::I4, ValueKind::R4, ValueKind::R8, ValueKind::Date};
  Value out;
  ChangeType(value, kinds[in.ConsumeIntegralInRange(0, 3)], out);
  NumberOf(value);
  int32_t whole = 0;
  float single = 0;
  double day = 0;
  ToInt32(number, whole), ToFloat(number, single), ToDate(number, day);
  return 0;
}

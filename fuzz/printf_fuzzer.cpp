// printf-style formatting of one argument: any format, any argument kind.
#include "fuzz/fuzz_input.h"
#include "util/c_printf.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  using namespace zel;
  FuzzedDataProvider in(data, size);
  Text format = fuzz::TextOf(in, 48);
  Text textArgument = fuzz::TextOf(in, 16);
  FormatArg argument;
  switch (in.ConsumeIntegralInRange(0, 3)) {
    case 0: break;
    case 1: argument = in.ConsumeIntegral<int32_t>(); break;
    case 2: argument = fuzz::ExtremeNumber(in); break;
    default: argument = TextView(textArgument); break;
  }
  CPrintf(format, argument);
  return 0;
}

// Font specifications: any text parses, and the font's own specification
// parses again.
#include "fuzz/fuzz_input.h"
#include "util/font_spec.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  using namespace zel;
  FuzzedDataProvider in(data, size);
  fuzz::FreshProcess();
  ParseFontSpec(FormatFontSpec(ParseFontSpec(fuzz::TextOf(in, 96))));
  return 0;
}

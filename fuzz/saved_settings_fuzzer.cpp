// The settings stream: any bytes are read or refused without harm, a
// refusal changes nothing, and what is read writes back to a stream that
// reads as the same settings.
#include "util/saved_settings.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  using namespace zel;
  SavedSettings settings, before;
  settings.barWidth = before.barWidth = 77;
  if (DecodeSettings(std::span(data, size), settings) != SettingsStatus::kOk) {
    if (!(settings == before)) __builtin_trap();
    return 0;
  }
  SavedSettings again;
  if (DecodeSettings(EncodeSettings(settings), again) != SettingsStatus::kOk || !(again == settings))
    __builtin_trap();
  return 0;
}

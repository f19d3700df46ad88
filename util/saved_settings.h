#pragma once
// The control-level settings a designer or project file keeps between runs,
// and their stream format. Axes, datasets and values are not among them:
// hosts build those in code at run time.
//
// The format is self-describing, so a later version reads older streams and
// an older one skips what it does not know:
//   header  "ZELS", major version (u16), header size (u16), body size (u32)
//   body    fields, each a tag (u16), a size (u16) and that many bytes
// All numbers are little-endian. A field absent from the body keeps the
// value it had before reading; an unknown tag is skipped by its size; a known
// tag with another size, a body that ends inside a field, or a body larger
// than kMaxSettingsBody is refused.
#include <array>
#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

namespace zel {

struct SavedSettings {
  uint32_t backColor = 0;
  bool enabled = true;
  std::array<int32_t, 4> margins{};  // left, right, bottom, top
  int32_t mouseMode = 0;
  int32_t legendEnabled = 0;
  int32_t legendPosition = 0;
  int32_t horizontalScrollbar = 0;
  int32_t verticalScrollbar = 0;
  int32_t propertiesModificationAllowed = 0;
  int32_t commonYAxesProps = 0;
  int32_t commonYAxesPropsCheckBoxEnable = 0;
  int32_t barWidth = 0;
  std::array<int16_t, 3> gridWords{};
  uint32_t gridColor = 0;
  int32_t hairlineSnap = 0;
  bool operator==(const SavedSettings&) const = default;
};

enum class SettingsStatus {
  kOk,
  kNotSettings,  // no header of ours, or a major version this reader cannot read
  kTruncated,    // the bytes end before the header's body size
  kTooLarge,     // a body size beyond kMaxSettingsBody
  kCorrupt,      // a field that ends past the body, or a known field of another size
};

inline constexpr uint16_t kSettingsMajorVersion = 1;
inline constexpr size_t kSettingsHeaderSize = 12;
inline constexpr uint32_t kMaxSettingsBody = 1 << 16;

// The header and body of `settings`, every field written.
std::vector<uint8_t> EncodeSettings(const SavedSettings& settings);

// The body size a header announces, after checking the header (kOk only
// then). Readers of a stream read the header, then exactly that many bytes.
SettingsStatus SettingsBodySize(std::span<const uint8_t> header, uint32_t& bodySize);

// Reads header and body over `settings`; on any status but kOk `settings`
// is left as it was.
SettingsStatus DecodeSettings(std::span<const uint8_t> bytes, SavedSettings& settings);

}  // namespace zel

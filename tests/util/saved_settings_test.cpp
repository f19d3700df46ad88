#include "util/saved_settings.h"

#include <gtest/gtest.h>

namespace zel {
namespace {

SavedSettings Unusual() {
  SavedSettings s;
  s.backColor = 0x80000005;
  s.enabled = false;
  s.margins = {-3, 40, 2147483647, int32_t(0x80000000)};
  s.mouseMode = 2;
  s.legendEnabled = 1;
  s.legendPosition = -1;
  s.horizontalScrollbar = 7;
  s.propertiesModificationAllowed = 1;
  s.commonYAxesPropsCheckBoxEnable = -9;
  s.barWidth = -1;
  s.gridWords = {-32768, 32767, 3};
  s.gridColor = 0xFFFFFFFF;
  s.hairlineSnap = 12;
  return s;
}

// A field as a writer would put it into a body.
std::vector<uint8_t> Field(uint16_t tag, std::vector<uint8_t> payload) {
  std::vector<uint8_t> field{uint8_t(tag), uint8_t(tag >> 8), uint8_t(payload.size()), uint8_t(payload.size() >> 8)};
  field.insert(field.end(), payload.begin(), payload.end());
  return field;
}

std::vector<uint8_t> Stream(const std::vector<std::vector<uint8_t>>& fields) {
  std::vector<uint8_t> body;
  for (const auto& field : fields) body.insert(body.end(), field.begin(), field.end());
  std::vector<uint8_t> out{'Z', 'E', 'L', 'S', 1, 0, 12, 0};
  for (int i = 0; i < 4; ++i) out.push_back(uint8_t(body.size() >> (8 * i)));
  out.insert(out.end(), body.begin(), body.end());
  return out;
}

TEST(SavedSettingsTest, EveryFieldRoundTripsInAStreamOfFixedSize) {
  std::vector<uint8_t> bytes = EncodeSettings(Unusual());
  EXPECT_EQ(bytes.size(), EncodeSettings(SavedSettings{}).size()) << "the size the control announces";
  SavedSettings read;
  ASSERT_EQ(DecodeSettings(bytes, read), SettingsStatus::kOk);
  EXPECT_EQ(read, Unusual());
  EXPECT_EQ(std::vector<uint8_t>(bytes.begin(), bytes.begin() + 12),
            (std::vector<uint8_t>{'Z', 'E', 'L', 'S', 1, 0, 12, 0, uint8_t(bytes.size() - 12), 0, 0, 0}));
}

// A newer writer adds fields an older reader skips; an older writer's
// stream lacks fields, which keep what the reader had.
TEST(SavedSettingsTest, ReadersOfOtherVersionsTakeWhatTheyKnow) {
  std::vector<uint8_t> newer =
      Stream({Field(99, {1, 2, 3, 4, 5}), Field(4, {1, 0, 0, 0}), Field(0xFFFF, {}), Field(2, {0})});
  SavedSettings read = Unusual();
  ASSERT_EQ(DecodeSettings(newer, read), SettingsStatus::kOk);
  SavedSettings expected = Unusual();
  expected.mouseMode = 1;
  expected.enabled = false;
  EXPECT_EQ(read, expected);
}

TEST(SavedSettingsTest, DamagedStreamsAreRefusedAndChangeNothing) {
  std::vector<uint8_t> good = EncodeSettings(Unusual());
  auto patched = [&](size_t at, uint8_t value) {
    std::vector<uint8_t> bytes = good;
    bytes[at] = value;
    return bytes;
  };
  struct Case {
    const char* what;
    std::vector<uint8_t> bytes;
    SettingsStatus status;
  };
  const Case cases[] = {
      {"another magic", patched(0, 'X'), SettingsStatus::kNotSettings},
      {"a later major version", patched(4, 2), SettingsStatus::kNotSettings},
      {"a longer header", patched(6, 16), SettingsStatus::kNotSettings},
      {"a body past the limit", patched(10, 2), SettingsStatus::kTooLarge},
      {"a body longer than the bytes", patched(8, uint8_t(good[8] + 1)), SettingsStatus::kTruncated},
      {"a known field of another size", Stream({Field(4, {1, 0})}), SettingsStatus::kCorrupt},
      {"a field past the body", Stream({Field(4, {1, 0, 0, 0}), {5, 0, 200, 0, 1}}), SettingsStatus::kCorrupt},
      {"half a field header", Stream({{4, 0, 4}}), SettingsStatus::kCorrupt},
  };
  for (const Case& c : cases) {
    SavedSettings kept = Unusual();
    EXPECT_EQ(DecodeSettings(c.bytes, kept), c.status) << c.what;
    EXPECT_EQ(kept, Unusual()) << c.what;
  }
  for (size_t length = 0; length < good.size(); ++length) {
    SavedSettings kept;
    EXPECT_NE(DecodeSettings(std::span(good).first(length), kept), SettingsStatus::kOk) << length;
    EXPECT_EQ(kept, SavedSettings{}) << length;
  }
}

}  // namespace
}  // namespace zel

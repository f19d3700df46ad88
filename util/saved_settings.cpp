#include "util/saved_settings.h"

#include <algorithm>
#include <iterator>
#include <tuple>
#include <type_traits>

namespace zel {
namespace {

constexpr uint8_t kMagic[4] = {'Z', 'E', 'L', 'S'};

// Every field with its tag. Tags are never reused: a field that goes away
// leaves its tag unused, and a new field takes the next one.
template <typename Settings, typename Visit>
void ForEachField(Settings& s, Visit&& visit) {
  visit(1, s.backColor);
  visit(2, s.enabled);
  visit(3, s.margins);
  visit(4, s.mouseMode);
  visit(5, s.legendEnabled);
  visit(6, s.legendPosition);
  visit(7, s.horizontalScrollbar);
  visit(8, s.verticalScrollbar);
  visit(9, s.propertiesModificationAllowed);
  visit(10, s.commonYAxesProps);
  visit(11, s.commonYAxesPropsCheckBoxEnable);
  visit(12, s.barWidth);
  visit(13, s.gridWords);
  visit(14, s.gridColor);
  visit(15, s.hairlineSnap);
}

// Size on the stream: a flag is one byte, numbers their own width, arrays
// their elements one after the other.
template <typename T>
constexpr size_t StreamSize() {
  if constexpr (std::is_same_v<T, bool>) return 1;
  else if constexpr (std::is_integral_v<T>) return sizeof(T);
  else return std::tuple_size_v<T> * sizeof(typename T::value_type);
}

void PutUnsigned(std::vector<uint8_t>& out, uint64_t value, size_t bytes) {
  for (size_t i = 0; i < bytes; ++i) out.push_back(uint8_t(value >> (8 * i)));
}

uint64_t GetUnsigned(const uint8_t* in, size_t bytes) {
  uint64_t value = 0;
  for (size_t i = 0; i < bytes; ++i) value |= uint64_t(in[i]) << (8 * i);
  return value;
}

template <typename T>
void Put(std::vector<uint8_t>& out, const T& value) {
  if constexpr (std::is_same_v<T, bool>) out.push_back(value ? 1 : 0);
  else if constexpr (std::is_integral_v<T>) PutUnsigned(out, uint64_t(std::make_unsigned_t<T>(value)), sizeof(T));
  else for (const auto& element : value) Put(out, element);
}

template <typename T>
void Get(const uint8_t* in, T& value) {
  if constexpr (std::is_same_v<T, bool>) value = in[0] != 0;
  else if constexpr (std::is_integral_v<T>) value = T(std::make_unsigned_t<T>(GetUnsigned(in, sizeof(T))));
  else for (auto& element : value) Get(in, element), in += sizeof(element);
}

}  // namespace

std::vector<uint8_t> EncodeSettings(const SavedSettings& settings) {
  std::vector<uint8_t> body;
  ForEachField(settings, [&](uint16_t tag, const auto& value) {
    using T = std::remove_cvref_t<decltype(value)>;
    PutUnsigned(body, tag, 2);
    PutUnsigned(body, StreamSize<T>(), 2);
    Put(body, value);
  });
  std::vector<uint8_t> out(std::begin(kMagic), std::end(kMagic));
  PutUnsigned(out, kSettingsMajorVersion, 2);
  PutUnsigned(out, kSettingsHeaderSize, 2);
  PutUnsigned(out, body.size(), 4);
  out.insert(out.end(), body.begin(), body.end());
  return out;
}

// A later minor change adds fields, not header bytes; a header that claims
// another size belongs to a format this reader does not know.
SettingsStatus SettingsBodySize(std::span<const uint8_t> header, uint32_t& bodySize) {
  if (header.size() < kSettingsHeaderSize) return SettingsStatus::kTruncated;
  if (!std::equal(std::begin(kMagic), std::end(kMagic), header.begin())) return SettingsStatus::kNotSettings;
  if (GetUnsigned(&header[4], 2) != kSettingsMajorVersion || GetUnsigned(&header[6], 2) != kSettingsHeaderSize)
    return SettingsStatus::kNotSettings;
  uint32_t size = uint32_t(GetUnsigned(&header[8], 4));
  if (size > kMaxSettingsBody) return SettingsStatus::kTooLarge;
  bodySize = size;
  return SettingsStatus::kOk;
}

SettingsStatus DecodeSettings(std::span<const uint8_t> bytes, SavedSettings& settings) {
  uint32_t bodySize = 0;
  if (SettingsStatus status = SettingsBodySize(bytes, bodySize); status != SettingsStatus::kOk) return status;
  if (bytes.size() - kSettingsHeaderSize < bodySize) return SettingsStatus::kTruncated;
  std::span<const uint8_t> body = bytes.subspan(kSettingsHeaderSize, bodySize);
  SavedSettings read = settings;
  for (size_t at = 0; at < body.size();) {
    if (body.size() - at < 4) return SettingsStatus::kCorrupt;
    auto tag = uint16_t(GetUnsigned(&body[at], 2));
    size_t size = GetUnsigned(&body[at + 2], 2);
    at += 4;
    if (body.size() - at < size) return SettingsStatus::kCorrupt;
    bool fits = true;
    ForEachField(read, [&](uint16_t fieldTag, auto& value) {
      if (fieldTag != tag) return;
      if (size != StreamSize<std::remove_cvref_t<decltype(value)>>()) fits = false;
      else Get(&body[at], value);
    });
    if (!fits) return SettingsStatus::kCorrupt;
    at += size;
  }
  settings = read;
  return SettingsStatus::kOk;
}

}  // namespace zel

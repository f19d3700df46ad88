#include "util/texts.h"

#include <algorithm>

#include "util/platform_hooks.h"

namespace zel {
namespace {

constexpr BuiltInText kBuiltInTexts[] = {
#define ZEL_TEXT(id, name, text) {id, u"" text},
#include "resources/texts.def"
#undef ZEL_TEXT
};

constexpr bool IdsAscendInRange() {
  for (size_t i = 0; i < std::size(kBuiltInTexts); ++i) {
    int id = kBuiltInTexts[i].id;
    if (id < kFirstTextId || id > kLastTextId) return false;
    if (i > 0 && id <= kBuiltInTexts[i - 1].id) return false;
  }
  return true;
}
static_assert(IdsAscendInRange(), "texts.def must list ids 100-429 in ascending order");

constexpr size_t kLookupCapacity = 255;  // a 256-character buffer with its terminator
constexpr size_t kFormattedMax = 128;

Text FindBuiltInText(int id) {
  auto it = std::lower_bound(std::begin(kBuiltInTexts), std::end(kBuiltInTexts), id,
                             [](const BuiltInText& e, int key) { return e.id < key; });
  return it != std::end(kBuiltInTexts) && it->id == id ? Text(it->text) : Text();
}

}  // namespace

std::span<const BuiltInText> BuiltInTexts() { return kBuiltInTexts; }

Text LookupText(int id) {
  Text text = Platform().languageText(id);
  if (text.empty()) text = FindBuiltInText(id);
  if (text.size() > kLookupCapacity) text.resize(kLookupCapacity);
  return text;
}

Text FormatText(int id, const FormatArg& arg) {
  Text format = LookupText(id);
  Text text = CPrintf(format.empty() ? TextView(u"#TEXT#") : TextView(format), arg);
  if (text.size() > kFormattedMax) text.resize(kFormattedMax);
  return text;
}

}  // namespace zel

#pragma once
// Names of the text table's ids: kMsgAxisExists is 101, and so on.

namespace zel {

enum TextId : int {
#define ZEL_TEXT(id, name, text) k##name = id,
#include "resources/texts.def"
#undef ZEL_TEXT
};

inline constexpr int kFirstTextId = 100;
inline constexpr int kLastTextId = 429;

}  // namespace zel

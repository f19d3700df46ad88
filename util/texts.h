#pragma once
// Operator-visible texts by id: lookup and printf-style formatting.
#include <span>

#include "util/c_printf.h"
#include "util/text.h"
#include "util/text_ids.h"

namespace zel {

struct BuiltInText {
  int id;
  TextView text;
};

// The module's own table, in id order.
std::span<const BuiltInText> BuiltInTexts();

// The text of an id: from the language libraries when they have it, else
// from the built-in table; at most 255 characters; empty when no source has it.
Text LookupText(int id);

// The text of an id used as a printf format for one argument (a number or a
// text), cut to 128 characters. An id without text formats "#TEXT#".
Text FormatText(int id, const FormatArg& arg = {});

}  // namespace zel

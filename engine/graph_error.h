#pragma once
// The errors the engine raises. Every broken rule throws one GraphError; the
// automation entry that caught it reports the formatted message and returns
// E_INVALIDARG. A platform status that must reach the host unchanged (a
// failed value conversion of a pie) travels as a StatusError. Memory
// exhaustion is std::bad_alloc.
#include <cstdint>
#include <variant>

#include "util/text.h"

namespace zel {

struct GraphError {
  int messageId;
  std::variant<std::monostate, int32_t, Text> argument;

  // The message of the text table with the argument in its placeholder.
  Text Message() const;
};

struct StatusError {
  int32_t status;
};

[[noreturn]] void Raise(int messageId);
[[noreturn]] void Raise(int messageId, int32_t argument);
[[noreturn]] void Raise(int messageId, TextView argument);

}  // namespace zel

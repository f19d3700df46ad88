#include "engine/graph_error.h"

#include "util/texts.h"

namespace zel {

Text GraphError::Message() const {
  struct ToFormatArg {
    FormatArg operator()(std::monostate) const { return {}; }
    FormatArg operator()(int32_t v) const { return v; }
    FormatArg operator()(const Text& v) const { return TextView(v); }
  };
  return FormatText(messageId, std::visit(ToFormatArg{}, argument));
}

void Raise(int messageId) { throw GraphError{messageId, {}}; }
void Raise(int messageId, int32_t argument) { throw GraphError{messageId, argument}; }
void Raise(int messageId, TextView argument) { throw GraphError{messageId, Text(argument)}; }

}  // namespace zel

#pragma once
// The values of one automation array as the engine takes them in: either a
// plain array of one numeric type, read without any per-element work beyond
// the conversion itself, or an array of values of any type.
#include <cstdint>
#include <span>
#include <variant>

#include "util/value.h"

namespace zel {

// A plain array of VT_DATE elements.
struct DateSpan {
  std::span<const double> days;
};

class ValueColumn {
 public:
  ValueColumn() = default;
  ValueColumn(std::span<const int16_t> v) : elements_(v) {}
  ValueColumn(std::span<const int32_t> v) : elements_(v) {}
  ValueColumn(std::span<const float> v) : elements_(v) {}
  ValueColumn(std::span<const double> v) : elements_(v) {}
  ValueColumn(DateSpan v) : elements_(v) {}
  ValueColumn(std::span<const Value> v) : elements_(v) {}

  size_t size() const;
  Value At(size_t i) const;
  // Whether element i is a text (VT_BSTR); false past the end.
  bool IsTextAt(size_t i) const;
  const Text* TextAt(size_t i) const;

  // Converts elements 0..out.size()-1 as VariantChangeType would, to I4,
  // R4 or a date; returns the index of the first element that fails, or
  // out.size() when all convert.
  size_t ConvertInto(std::span<int32_t> out) const;
  size_t ConvertInto(std::span<float> out) const;
  size_t ConvertDatesInto(std::span<double> out) const;

 private:
  std::variant<std::span<const Value>, std::span<const int16_t>, std::span<const int32_t>,
               std::span<const float>, std::span<const double>, DateSpan>
      elements_;
};

}  // namespace zel

#include "engine/value_column.h"

#include <algorithm>

#include "util/value_conversion.h"

namespace zel {
namespace {

template <typename In, typename Out, typename Convert>
size_t ConvertEach(std::span<const In> in, std::span<Out> out, Convert convert) {
  for (size_t i = 0; i < out.size(); ++i)
    if (convert(double(in[i]), out[i]) != kConversionOk) return i;
  return out.size();
}

size_t ConvertValues(std::span<const Value> in, std::span<int32_t> out) {
  for (size_t i = 0; i < out.size(); ++i) {
    Value v;
    if (ChangeType(in[i], ValueKind::I4, v) != kConversionOk) return i;
    out[i] = std::get<int32_t>(v);
  }
  return out.size();
}

size_t ConvertValues(std::span<const Value> in, std::span<float> out) {
  for (size_t i = 0; i < out.size(); ++i) {
    Value v;
    if (ChangeType(in[i], ValueKind::R4, v) != kConversionOk) return i;
    out[i] = std::get<float>(v);
  }
  return out.size();
}

size_t ConvertDateValues(std::span<const Value> in, std::span<double> out) {
  for (size_t i = 0; i < out.size(); ++i) {
    Value v;
    if (ChangeType(in[i], ValueKind::Date, v) != kConversionOk) return i;
    out[i] = std::get<DateValue>(v).days;
  }
  return out.size();
}

}  // namespace

size_t ValueColumn::size() const {
  return std::visit(
      [](const auto& e) {
        if constexpr (std::is_same_v<std::decay_t<decltype(e)>, DateSpan>)
          return e.days.size();
        else
          return e.size();
      },
      elements_);
}

Value ValueColumn::At(size_t i) const {
  return std::visit(
      [i](const auto& e) -> Value {
        using E = std::decay_t<decltype(e)>;
        if constexpr (std::is_same_v<E, DateSpan>)
          return DateValue{e.days[i]};
        else
          return e[i];
      },
      elements_);
}

bool ValueColumn::IsTextAt(size_t i) const { return TextAt(i) != nullptr; }

const Text* ValueColumn::TextAt(size_t i) const {
  auto* values = std::get_if<std::span<const Value>>(&elements_);
  return values && i < values->size() ? std::get_if<Text>(&(*values)[i]) : nullptr;
}

size_t ValueColumn::ConvertInto(std::span<int32_t> out) const {
  if (auto* v = std::get_if<std::span<const int32_t>>(&elements_)) {
    std::copy_n(v->begin(), out.size(), out.begin());
    return out.size();
  }
  if (auto* v = std::get_if<std::span<const int16_t>>(&elements_)) {
    std::copy_n(v->begin(), out.size(), out.begin());
    return out.size();
  }
  if (auto* v = std::get_if<std::span<const float>>(&elements_)) return ConvertEach(*v, out, ToInt32);
  if (auto* v = std::get_if<std::span<const double>>(&elements_)) return ConvertEach(*v, out, ToInt32);
  if (auto* v = std::get_if<DateSpan>(&elements_)) return ConvertEach(v->days, out, ToInt32);
  return ConvertValues(std::get<std::span<const Value>>(elements_), out);
}

size_t ValueColumn::ConvertInto(std::span<float> out) const {
  if (auto* v = std::get_if<std::span<const float>>(&elements_)) {
    std::copy_n(v->begin(), out.size(), out.begin());
    return out.size();
  }
  if (auto* v = std::get_if<std::span<const int16_t>>(&elements_)) {
    std::transform(v->begin(), v->begin() + out.size(), out.begin(), [](int16_t x) { return float(x); });
    return out.size();
  }
  if (auto* v = std::get_if<std::span<const int32_t>>(&elements_)) {
    std::transform(v->begin(), v->begin() + out.size(), out.begin(), [](int32_t x) { return float(x); });
    return out.size();
  }
  if (auto* v = std::get_if<std::span<const double>>(&elements_)) return ConvertEach(*v, out, ToFloat);
  if (auto* v = std::get_if<DateSpan>(&elements_)) return ConvertEach(v->days, out, ToFloat);
  return ConvertValues(std::get<std::span<const Value>>(elements_), out);
}

size_t ValueColumn::ConvertDatesInto(std::span<double> out) const {
  // Small integers and floats become dates without a range check, as the
  // platform converts them.
  if (auto* v = std::get_if<std::span<const int16_t>>(&elements_)) {
    std::copy_n(v->begin(), out.size(), out.begin());
    return out.size();
  }
  if (auto* v = std::get_if<std::span<const float>>(&elements_)) {
    std::copy_n(v->begin(), out.size(), out.begin());
    return out.size();
  }
  if (auto* v = std::get_if<std::span<const int32_t>>(&elements_)) return ConvertEach(*v, out, ToDate);
  if (auto* v = std::get_if<std::span<const double>>(&elements_)) return ConvertEach(*v, out, ToDate);
  if (auto* v = std::get_if<DateSpan>(&elements_)) {
    std::copy_n(v->days.begin(), out.size(), out.begin());
    return out.size();
  }
  return ConvertDateValues(std::get<std::span<const Value>>(elements_), out);
}

}  // namespace zel

#include "engine/point_column.h"

#include <algorithm>

namespace zel {
namespace {

PointColumn::Storage StorageFor(int axisType) {
  if (axisType == kAxisReal) return std::vector<float>();
  if (axisType == kAxisTime) return std::vector<double>();
  return std::vector<int32_t>();
}

// Converts into the tail of `values`, keeping it only when every value converts.
template <typename T, typename Convert>
size_t AppendConverted(std::vector<T>& values, size_t n, Convert convert) {
  size_t old = values.size();
  values.resize(old + n);
  size_t failed = convert(std::span<T>(values.data() + old, n));
  if (failed != n) values.resize(old);
  return failed;
}

}  // namespace

PointColumn::PointColumn(int axisType) : axisType_(axisType), values_(StorageFor(axisType)) {}

size_t PointColumn::size() const {
  return std::visit([](const auto& v) { return v.size(); }, values_);
}

Value PointColumn::At(size_t i) const {
  if (auto* v = std::get_if<std::vector<float>>(&values_)) return (*v)[i];
  if (auto* v = std::get_if<std::vector<double>>(&values_)) return DateValue{(*v)[i]};
  return std::get<std::vector<int32_t>>(values_)[i];
}

double PointColumn::NumberAt(size_t i) const {
  return std::visit([i](const auto& v) { return double(v[i]); }, values_);
}

size_t PointColumn::Append(const ValueColumn& in, size_t n) {
  if (auto* v = std::get_if<std::vector<float>>(&values_))
    return AppendConverted(*v, n, [&](std::span<float> out) { return in.ConvertInto(out); });
  if (auto* v = std::get_if<std::vector<double>>(&values_))
    return AppendConverted(*v, n, [&](std::span<double> out) { return in.ConvertDatesInto(out); });
  return AppendConverted(std::get<std::vector<int32_t>>(values_), n,
                         [&](std::span<int32_t> out) { return in.ConvertInto(out); });
}

void PointColumn::AppendCategories(size_t first, size_t n) {
  auto& ints = std::get<std::vector<int32_t>>(values_);
  for (size_t k = first; k < first + n; ++k) ints.push_back(int32_t(k + 1));
}

void PointColumn::Truncate(size_t size) {
  std::visit([size](auto& v) { v.resize(std::min(size, v.size())); }, values_);
}

void PointColumn::Clear() {
  std::visit([](auto& v) { v = std::decay_t<decltype(v)>(); }, values_);
}

}  // namespace zel

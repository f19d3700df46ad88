#include "engine/point_column.h"

#include <algorithm>

namespace zel {
namespace {

PointColumn::Storage StorageFor(AxisType axisType) {
  if (axisType == kAxisReal) return PodBuffer<float>();
  if (axisType == kAxisTime) return PodBuffer<double>();
  return PodBuffer<int32_t>();
}

// Converts into the tail of `values`, keeping it only when every value converts.
template <typename T, typename Convert>
size_t AppendConverted(PodBuffer<T>& values, size_t n, Convert convert) {
  size_t old = values.size();
  values.resize(old + n);
  size_t failed = convert(std::span<T>(values.data() + old, n));
  if (failed != n) values.resize(old);
  return failed;
}

}  // namespace

PointColumn::PointColumn(AxisType axisType) : values_(StorageFor(axisType)) {}

size_t PointColumn::size() const {
  return std::visit([](const auto& v) { return v.size(); }, values_);
}

Value PointColumn::At(size_t i) const {
  if (auto* v = std::get_if<PodBuffer<float>>(&values_)) return (*v)[i];
  if (auto* v = std::get_if<PodBuffer<double>>(&values_)) return DateValue{(*v)[i]};
  return std::get<PodBuffer<int32_t>>(values_)[i];
}

double PointColumn::NumberAt(size_t i) const {
  return std::visit([i](const auto& v) { return double(v[i]); }, values_);
}

size_t PointColumn::Append(const ValueColumn& in, size_t n) {
  size_t old = size(), failed;
  if (auto* v = std::get_if<PodBuffer<float>>(&values_))
    failed = AppendConverted(*v, n, [&](std::span<float> out) { return in.ConvertInto(out); });
  else if (auto* v = std::get_if<PodBuffer<double>>(&values_))
    failed = AppendConverted(*v, n, [&](std::span<double> out) { return in.ConvertDatesInto(out); });
  else
    failed = AppendConverted(std::get<PodBuffer<int32_t>>(values_), n,
                             [&](std::span<int32_t> out) { return in.ConvertInto(out); });
  if (failed == n) CheckOrderFrom(old);
  return failed;
}

void PointColumn::AppendCategories(size_t first, size_t n) {
  auto& ints = std::get<PodBuffer<int32_t>>(values_);
  size_t old = ints.size();
  ints.resize(old + n);
  for (size_t i = 0; i < n; ++i) ints[old + i] = int32_t(first + i + 1);
  CheckOrderFrom(old);
}

// A column cut back may be in order again: it is looked at anew.
void PointColumn::Truncate(size_t size) {
  std::visit([size](auto& v) { v.resize(std::min(size, v.size())); }, values_);
  if (!nonDecreasing_) {
    nonDecreasing_ = true;
    CheckOrderFrom(0);
  }
}

void PointColumn::Clear() {
  std::visit([](auto& v) { v = std::decay_t<decltype(v)>(); }, values_);
  nonDecreasing_ = true;
}

void PointColumn::CheckOrderFrom(size_t from) {
  if (!nonDecreasing_) return;
  std::visit(
      [&](const auto& v) {
        for (size_t i = std::max<size_t>(from, 1); i < v.size() && nonDecreasing_; ++i)
          nonDecreasing_ = v[i - 1] <= v[i];
        // A lone NaN has nothing before it to fail against.
        if (from == 0 && v.size() > 0 && v[0] != v[0]) nonDecreasing_ = false;
      },
      values_);
}

}  // namespace zel

#pragma once
// One coordinate of a dataset's points, stored in the type its axis holds:
// 32-bit integers for INTEGER and DISCRETE axes, 32-bit floats for REAL,
// 64-bit dates for TIME. Read back, each value is the VARIANT of that type
// that the host gave (0.1 on a REAL axis reads back as 0.100000001490116).
#include <cstdint>
#include <variant>

#include "engine/pod_buffer.h"
#include "engine/value_column.h"
#include "util/axis_type.h"
#include "util/value.h"

namespace zel {

class PointColumn {
 public:
  using Storage = std::variant<PodBuffer<int32_t>, PodBuffer<float>, PodBuffer<double>>;

  explicit PointColumn(AxisType axisType);

  size_t size() const;
  const Storage& storage() const { return values_; }

  // The value at i as the host reads it back (VT_I4, VT_R4 or VT_DATE).
  Value At(size_t i) const;
  // The value at i as a number, for scaling and drawing.
  double NumberAt(size_t i) const;

  // Converts `in` and appends its first n values; returns the index of the
  // first value that fails, or n, in which case nothing was appended.
  size_t Append(const ValueColumn& in, size_t n);
  // Appends the categories first+1 ... first+n (DISCRETE points are numbered
  // by their position, from 1).
  void AppendCategories(size_t first, size_t n);
  // Drops the values from `size` on.
  void Truncate(size_t size);
  void Clear();

  // Whether every value is at least the one before it (no NaN among them),
  // kept up to date as values arrive, so that a sorted curve's visible
  // points can be found by search.
  bool nonDecreasing() const { return nonDecreasing_; }

 private:
  // Takes in the values from `from` on.
  void CheckOrderFrom(size_t from);

  Storage values_;
  bool nonDecreasing_ = true;
};

}  // namespace zel

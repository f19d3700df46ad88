#include "engine/axis_scale.h"

#include <cmath>

#include "engine/v_axis.h"
#include "util/value_conversion.h"

namespace zel {
namespace {

constexpr double kAlignmentLimit = 1000000;
constexpr size_t kMaxMarks = 100000;

}  // namespace

AxisScale ScaleOf(const VAxis& axis, double extent) {
  AxisScale scale;
  double min = NumberOf(axis.min()), max = NumberOf(axis.max());
  double unit = axis.type() == kAxisTime && axis.timeUnitLength() > 0 ? axis.timeUnitLength() : 1.0;
  scale.annotationStep = axis.annotationStep() * unit;
  scale.tickStep = axis.tickStep() * unit;
  if (axis.type() == kAxisDiscrete) {
    min = 0;
    scale.annotationStep = 1;
    scale.tickStep = 0;
  }
  scale.base = min;
  scale.pixelsPerUnit = max != min ? extent / (max - min) : 0;
  scale.alignmentBase = min;
  if (axis.type() == kAxisTime && scale.annotationStep < 1.0) {
    double wholeDays = 0;
    scale.alignmentBase = std::fabs(std::modf(min, &wholeDays));
  }
  return scale;
}

double FirstMarkOffset(double base, double step) {
  // Moving toward 0 by a million steps at a time leaves the remainder; taking
  // it at once gives the same offset without a loop over huge values.
  if (std::fabs(base / step) > kAlignmentLimit) base = std::fmod(base, step * kAlignmentLimit);
  double offset = std::trunc(base / step) * step - base;
  return offset < 0 ? offset + step : offset;
}

void MarkPositions(const AxisScale& scale, double step, double limit, std::vector<double>& out) {
  out.clear();
  double pixelStep = step * scale.pixelsPerUnit;
  if (!(step > 0 && std::isfinite(step) && pixelStep > 0 && std::isfinite(pixelStep))) return;
  double first = FirstMarkOffset(scale.alignmentBase, step) * scale.pixelsPerUnit;
  for (double p = first; p < limit && out.size() < kMaxMarks; p += pixelStep) out.push_back(p);
}

double MarkValue(const AxisScale& scale, double step, size_t index) {
  return scale.base + FirstMarkOffset(scale.alignmentBase, step) + double(index) * step;
}

}  // namespace zel

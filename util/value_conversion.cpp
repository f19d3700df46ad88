#include "util/value_conversion.h"

#include <cfloat>
#include <cmath>

#include "util/automation_date.h"
#include "util/platform_hooks.h"

namespace zel {

int32_t ToInt32(double value, int32_t& out) {
  if (!(value >= -2147483648.5 && value < 2147483647.5)) return kOverflow;
  double rounded = std::nearbyint(value);  // the default rounding mode: halves to even
  out = int32_t(rounded);
  return kConversionOk;
}

int32_t ToFloat(double value, float& out) {
  if (std::fabs(value) > FLT_MAX) return kOverflow;
  out = float(value);
  return kConversionOk;
}

int32_t ToDate(double value, double& out) {
  if (value <= kFirstDate - 1.0 || value >= kLastDate + 1.0) return kOverflow;
  out = value;
  return kConversionOk;
}

namespace {

// The number a numeric value stands for; false for texts and host values.
bool PlainNumber(const Value& value, double& number) {
  switch (KindOf(value)) {
    case ValueKind::Empty: number = 0; return true;
    case ValueKind::I2: number = std::get<int16_t>(value); return true;
    case ValueKind::I4: number = std::get<int32_t>(value); return true;
    case ValueKind::R4: number = std::get<float>(value); return true;
    case ValueKind::R8: number = std::get<double>(value); return true;
    case ValueKind::Date: number = std::get<DateValue>(value).days; return true;
    default: return false;
  }
}

int32_t ConvertNumber(const Value& in, double number, ValueKind target, Value& out) {
  ValueKind source = KindOf(in);
  switch (target) {
    case ValueKind::I4: {
      int32_t i = 0;
      int32_t status = ToInt32(number, i);
      if (status == kConversionOk) out = i;
      return status;
    }
    case ValueKind::R4: {
      float f = 0;
      int32_t status = ToFloat(number, f);
      if (status == kConversionOk) out = f;
      return status;
    }
    case ValueKind::R8:
      out = number;
      return kConversionOk;
    case ValueKind::Date: {
      // Small integers and floats become dates without a range check.
      if (source == ValueKind::I2 || source == ValueKind::R4 || source == ValueKind::Empty) {
        out = DateValue{number};
        return kConversionOk;
      }
      double date = 0;
      int32_t status = ToDate(number, date);
      if (status == kConversionOk) out = DateValue{date};
      return status;
    }
    default:
      return kTypeMismatch;
  }
}

}  // namespace

double NumberOf(const Value& value) {
  Value number;
  return ChangeType(value, ValueKind::R8, number) == kConversionOk ? std::get<double>(number) : 0.0;
}

int32_t ChangeType(const Value& in, ValueKind target, Value& out) {
  if (KindOf(in) == target) {
    out = in;
    return kConversionOk;
  }
  double number = 0;
  if (PlainNumber(in, number)) return ConvertNumber(in, number, target, out);
  if (auto* text = std::get_if<Text>(&in)) return Platform().convertText(*text, target, out);
  return std::get<std::shared_ptr<const HostValue>>(in)->ConvertTo(target, out);
}

}  // namespace zel

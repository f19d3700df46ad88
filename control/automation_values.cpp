#include "control/automation_values.h"

#include <olectl.h>

#include <cstring>
#include <new>

#include "engine/graph_error.h"
#include "util/text_ids.h"
#include "util/value_conversion.h"

namespace zel {
namespace {

const char16_t* Chars(const wchar_t* text) { return reinterpret_cast<const char16_t*>(text); }

VARTYPE VarTypeOf(ValueKind kind) {
  switch (kind) {
    case ValueKind::I4: return VT_I4;
    case ValueKind::R4: return VT_R4;
    case ValueKind::R8: return VT_R8;
    case ValueKind::Date: return VT_DATE;
    default: return VT_EMPTY;
  }
}

// Any other automation value, kept as a copy that the platform converts.
class VariantValue : public HostValue {
 public:
  explicit VariantValue(const VARIANT& value) {
    VariantInit(&value_);
    if (FAILED(VariantCopyInd(&value_, const_cast<VARIANT*>(&value)))) throw std::bad_alloc();
  }
  ~VariantValue() override { VariantClear(&value_); }

  int32_t ConvertTo(ValueKind kind, Value& out) const override {
    VARIANT converted;
    VariantInit(&converted);
    HRESULT hr = VariantChangeType(&converted, const_cast<VARIANT*>(&value_), 0, VarTypeOf(kind));
    if (FAILED(hr)) return hr;
    out = ValueOf(converted);
    VariantClear(&converted);
    return kConversionOk;
  }
  const VARIANT& variant() const { return value_; }

 private:
  VARIANT value_;
};

[[noreturn]] void RaiseArrayAccess(HRESULT hr) { Raise(kMsgArrayAccess, int32_t(hr)); }

// Element types whose bytes are pointers the control would follow.
bool HoldsPointers(VARTYPE type) {
  switch (type) {
    case VT_BSTR: case VT_DISPATCH: case VT_UNKNOWN: case VT_VARIANT: case VT_RECORD: return true;
    default: return false;
  }
}

// Pointer elements are read only from an array that says it holds them:
// the bytes of numbers tagged as objects would be followed as addresses.
void CheckElementType(SAFEARRAY* array, VARTYPE tagged) {
  VARTYPE held = VT_EMPTY;
  HRESULT hr = SafeArrayGetVartype(array, &held);
  if (FAILED(hr)) RaiseArrayAccess(hr);
  if (held != tagged) RaiseArrayAccess(DISP_E_TYPEMISMATCH);
}

// Whether the data holds any element: none when any dimension is empty.
bool HoldsElements(const SAFEARRAY* array) {
  for (USHORT i = 0; i < array->cDims; ++i)
    if (array->rgsabound[i].cElements == 0) return false;
  return array->cDims > 0;
}

}  // namespace

Text TextOf(BSTR text) { return text ? Text(Chars(text)) : Text(); }

std::optional<Text> OptionalTextOf(BSTR text) {
  return text ? std::optional<Text>(Chars(text)) : std::nullopt;
}

BSTR NewBstr(TextView text) {
  BSTR result = SysAllocStringLen(reinterpret_cast<const OLECHAR*>(text.data()), UINT(text.size()));
  if (!result) throw std::bad_alloc();
  return result;
}

Value ValueOf(const VARIANT& variant) {
  const VARIANT& v = (V_VT(&variant) == (VT_BYREF | VT_VARIANT) && V_VARIANTREF(&variant))
                         ? *V_VARIANTREF(&variant) : variant;
  bool byref = V_VT(&v) & VT_BYREF;
  switch (V_VT(&v) & ~VT_BYREF) {
    case VT_EMPTY: return Value();
    case VT_I2: return byref ? *V_I2REF(&v) : V_I2(&v);
    case VT_I4: return byref ? *V_I4REF(&v) : V_I4(&v);
    case VT_R4: return byref ? *V_R4REF(&v) : V_R4(&v);
    case VT_R8: return byref ? *V_R8REF(&v) : V_R8(&v);
    case VT_DATE: return DateValue{byref ? *V_DATEREF(&v) : V_DATE(&v)};
    case VT_BSTR: return TextOf(byref ? *V_BSTRREF(&v) : V_BSTR(&v));
    default: return std::make_shared<const VariantValue>(v);
  }
}

void ToVariant(const Value& value, VARIANT* out) {
  VariantInit(out);
  switch (KindOf(value)) {
    case ValueKind::Empty: break;
    case ValueKind::I2: V_VT(out) = VT_I2; V_I2(out) = std::get<int16_t>(value); break;
    case ValueKind::I4: V_VT(out) = VT_I4; V_I4(out) = std::get<int32_t>(value); break;
    case ValueKind::R4: V_VT(out) = VT_R4; V_R4(out) = std::get<float>(value); break;
    case ValueKind::R8: V_VT(out) = VT_R8; V_R8(out) = std::get<double>(value); break;
    case ValueKind::Date: V_VT(out) = VT_DATE; V_DATE(out) = std::get<DateValue>(value).days; break;
    case ValueKind::Text:
      V_BSTR(out) = NewBstr(std::get<Text>(value));
      V_VT(out) = VT_BSTR;
      break;
    case ValueKind::Host: {
      auto& host = std::get<std::shared_ptr<const HostValue>>(value);
      auto* copy = dynamic_cast<const VariantValue*>(host.get());
      if (copy && FAILED(VariantCopy(out, const_cast<VARIANT*>(&copy->variant()))))
        throw std::bad_alloc();
      break;
    }
  }
}

bool IsMissing(const VARIANT& variant) {
  return V_VT(&variant) == VT_ERROR && V_ERROR(&variant) == DISP_E_PARAMNOTFOUND;
}

int32_t OptionalInt(const VARIANT& variant, int32_t otherwise) {
  if (IsMissing(variant)) return otherwise;
  Value converted;
  return ChangeType(ValueOf(variant), ValueKind::I4, converted) == kConversionOk
             ? std::get<int32_t>(converted) : otherwise;
}

std::optional<Color> TranslateColor(OLE_COLOR color) {
  COLORREF rgb = 0;
  if (FAILED(OleTranslateColor(color, nullptr, &rgb))) return std::nullopt;
  return Color(rgb);
}

ArrayArgument::ArrayArgument(const VARIANT& variant) {
  const VARIANT* v = &variant;
  if (!(V_VT(v) & VT_ARRAY) && V_VT(v) == (VT_BYREF | VT_VARIANT) && V_VARIANTREF(v))
    v = V_VARIANTREF(v);
  if (!(V_VT(v) & VT_ARRAY)) Raise(kMsgNotArray);
  array_ = (V_VT(v) & VT_BYREF) ? (V_ARRAYREF(v) ? *V_ARRAYREF(v) : nullptr) : V_ARRAY(v);
  elementType_ = VARTYPE(V_VT(v) & ~(VT_ARRAY | VT_BYREF));
  LONG lower = 0, upper = 0;
  if (HRESULT hr = SafeArrayGetLBound(array_, 1, &lower); FAILED(hr)) RaiseArrayAccess(hr);
  if (HRESULT hr = SafeArrayGetUBound(array_, 1, &upper); FAILED(hr)) RaiseArrayAccess(hr);
  if (HoldsPointers(elementType_)) CheckElementType(array_, elementType_);
  // The first dimension's elements lie first in the data, and are there only
  // when no other dimension is empty.
  count_ = upper >= lower && HoldsElements(array_) ? size_t(int64_t(upper) - lower + 1) : 0;
  elementSize_ = SafeArrayGetElemsize(array_);
  if (HRESULT hr = SafeArrayAccessData(array_, &data_); FAILED(hr)) RaiseArrayAccess(hr);
  if (!data_) count_ = 0;
}

ArrayArgument::~ArrayArgument() {
  if (data_) SafeArrayUnaccessData(array_);
}

Value ArrayArgument::At(size_t i) const {
  // Elements are read by the array's own element size, never past it.
  VARIANT element;
  VariantInit(&element);
  const char* p = static_cast<const char*>(data_) + i * elementSize_;
  if (elementType_ == VT_VARIANT && elementSize_ == sizeof(VARIANT))
    return ValueOf(*reinterpret_cast<const VARIANT*>(p));
  switch (elementType_) {
    case VT_I2: return elementSize_ >= 2 ? Value(*reinterpret_cast<const int16_t*>(p)) : Value();
    case VT_I4: return elementSize_ >= 4 ? Value(*reinterpret_cast<const int32_t*>(p)) : Value();
    case VT_R4: return elementSize_ >= 4 ? Value(*reinterpret_cast<const float*>(p)) : Value();
    case VT_R8: return elementSize_ >= 8 ? Value(*reinterpret_cast<const double*>(p)) : Value();
    case VT_DATE: return elementSize_ >= 8 ? Value(DateValue{*reinterpret_cast<const double*>(p)}) : Value();
    case VT_BSTR: return elementSize_ == sizeof(BSTR) ? Value(TextOf(*reinterpret_cast<BSTR const*>(p))) : Value();
    default: break;
  }
  // Any other plain element type becomes a VARIANT of that type.
  if (elementSize_ > sizeof(V_UI8(&element))) return Value();
  V_VT(&element) = elementType_;
  std::memcpy(&V_UI8(&element), p, elementSize_);
  return ValueOf(element);
}

ValueColumn ArrayArgument::Column(std::vector<Value>& storage) const {
  auto typed = [&](auto* first) { return std::span(first, count_); };
  switch (elementType_) {
    case VT_I2: if (elementSize_ == 2) return ValueColumn(typed(static_cast<const int16_t*>(data_))); break;
    case VT_I4: if (elementSize_ == 4) return ValueColumn(typed(static_cast<const int32_t*>(data_))); break;
    case VT_R4: if (elementSize_ == 4) return ValueColumn(typed(static_cast<const float*>(data_))); break;
    case VT_R8: if (elementSize_ == 8) return ValueColumn(typed(static_cast<const double*>(data_))); break;
    case VT_DATE: if (elementSize_ == 8) return ValueColumn(DateSpan{typed(static_cast<const double*>(data_))}); break;
  }
  storage.clear();
  storage.reserve(count_);
  for (size_t i = 0; i < count_; ++i) storage.push_back(At(i));
  return ValueColumn(std::span<const Value>(storage));
}

std::vector<int32_t> ArrayArgument::AsInt32(size_t n) const {
  std::vector<int32_t> values(n, 0);
  size_t bytes = std::min(n * sizeof(int32_t), count_ * elementSize_);
  if (bytes) std::memcpy(values.data(), data_, bytes);
  return values;
}

void ToVariantArray(size_t count, const std::function<void(size_t, VARIANT*)>& fill, VARIANT* out) {
  VariantInit(out);
  SAFEARRAY* array = SafeArrayCreateVector(VT_VARIANT, 0, ULONG(count));
  if (!array) throw std::bad_alloc();
  VARIANT* elements = nullptr;
  SafeArrayAccessData(array, reinterpret_cast<void**>(&elements));
  try {
    for (size_t i = 0; i < count; ++i) fill(i, &elements[i]);
  } catch (...) {
    SafeArrayUnaccessData(array);
    SafeArrayDestroy(array);
    throw;
  }
  SafeArrayUnaccessData(array);
  V_VT(out) = VT_ARRAY | VT_VARIANT;
  V_ARRAY(out) = array;
}

void ToVariantArray(const std::vector<Value>& values, VARIANT* out) {
  ToVariantArray(values.size(), [&](size_t i, VARIANT* element) { ToVariant(values[i], element); }, out);
}

}  // namespace zel

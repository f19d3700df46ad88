#include "pages/axis_value_text.h"

#include "control/automation_values.h"

namespace zel {
namespace {

VARTYPE EntryType(LONG type) {
  switch (type) {
    case kAxisTime: return VT_DATE;
    case kAxisReal: return VT_R8;
    default: return VT_I4;
  }
}

// The platform's conversion, which takes its source as writable but leaves it
// as it is.
HRESULT Change(VARIANT* out, const VARIANT& in, VARTYPE type) {
  return VariantChangeType(out, const_cast<VARIANT*>(&in), 0, type);
}

}  // namespace

Text AxisValueText(const VARIANT& value, LONG type) {
  VARIANT shown;
  VariantInit(&shown);
  HRESULT hr = S_OK;
  if (type == kAxisReal && V_VT(&value) != VT_R4) {
    VARIANT single;
    VariantInit(&single);
    hr = Change(&single, value, VT_R4);
    if (SUCCEEDED(hr)) hr = Change(&shown, single, VT_BSTR);
  } else if (type == kAxisTime && V_VT(&value) != VT_DATE) {
    VARIANT date;
    VariantInit(&date);
    hr = Change(&date, value, VT_DATE);
    if (SUCCEEDED(hr)) hr = Change(&shown, date, VT_BSTR);
  } else {
    hr = Change(&shown, value, VT_BSTR);
  }
  Text text = SUCCEEDED(hr) ? TextOf(V_BSTR(&shown)) : Text();
  VariantClear(&shown);
  return text;
}

bool ParseAxisValue(const Text& text, LONG type, VARIANT* out) {
  VariantInit(out);
  VARIANT typed;
  VariantInit(&typed);
  V_VT(&typed) = VT_BSTR;
  V_BSTR(&typed) = NewBstr(text);
  HRESULT hr = VariantChangeType(out, &typed, 0, EntryType(type));
  VariantClear(&typed);
  if (FAILED(hr)) VariantInit(out);
  return SUCCEEDED(hr);
}

double AxisValueNumber(const VARIANT& value) {
  VARIANT number;
  VariantInit(&number);
  return SUCCEEDED(Change(&number, value, VT_R8)) ? V_R8(&number) : 0.0;
}

}  // namespace zel

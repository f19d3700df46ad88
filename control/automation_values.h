#pragma once
// Automation values on their way into and out of the engine: texts, tagged
// values, colours, optional arguments and array arguments.
#include <windows.h>
#include <ocidl.h>
#include <oleauto.h>

#include <functional>
#include <optional>
#include <vector>

#include "engine/axis_props.h"
#include "engine/value_column.h"
#include "util/text.h"
#include "util/value.h"

namespace zel {

// A BSTR's text up to its first null character; a null BSTR is empty.
Text TextOf(BSTR text);
std::optional<Text> OptionalTextOf(BSTR text);
// A new BSTR for the host; throws std::bad_alloc.
BSTR NewBstr(TextView text);

// The value a VARIANT holds, looking through VT_BYREF. Types the engine does
// not know are kept as host values that convert with VariantChangeType.
Value ValueOf(const VARIANT& variant);
// Writes a value into an empty VARIANT.
void ToVariant(const Value& value, VARIANT* out);

// An optional argument the caller left out (VT_ERROR, DISP_E_PARAMNOTFOUND).
bool IsMissing(const VARIANT& variant);
// An optional argument converted to I4, or `otherwise` when missing or not
// convertible.
int32_t OptionalInt(const VARIANT& variant, int32_t otherwise);

// An automation colour as RGB; empty when it cannot be translated.
std::optional<Color> TranslateColor(OLE_COLOR color);

// A one-dimensional view of an array argument: the VARIANT must carry the
// array flag (a VT_BYREF VARIANT is looked through first), else message 110;
// a failing array call raises message 111 with its status, and so does an
// array of strings, objects, VARIANTs or records whose own element type is
// not the tagged one. Only the first dimension is read, and only where the
// data holds it: an empty dimension anywhere means no elements. The data
// stays accessed while the view lives.
class ArrayArgument {
 public:
  explicit ArrayArgument(const VARIANT& variant);
  ~ArrayArgument();
  ArrayArgument(const ArrayArgument&) = delete;
  ArrayArgument& operator=(const ArrayArgument&) = delete;

  size_t size() const { return count_; }
  VARTYPE elementType() const { return elementType_; }
  // The first n elements as the engine takes them in. `storage` keeps values
  // converted element by element alive.
  ValueColumn Column(std::vector<Value>& storage) const;
  // The element at i as a value.
  Value At(size_t i) const;
  // The first n elements' bytes read as 32-bit integers, whatever their type;
  // bytes the array does not have read as 0.
  std::vector<int32_t> AsInt32(size_t n) const;

 private:
  SAFEARRAY* array_ = nullptr;
  VARTYPE elementType_ = VT_EMPTY;
  size_t count_ = 0;
  size_t elementSize_ = 0;
  void* data_ = nullptr;
};

// A one-dimensional SAFEARRAY of `count` VARIANTs (lower bound 0) in `out`,
// element i written by `fill(i, element)`; nothing is left behind when a
// fill throws.
void ToVariantArray(size_t count, const std::function<void(size_t, VARIANT*)>& fill, VARIANT* out);
void ToVariantArray(const std::vector<Value>& values, VARIANT* out);

}  // namespace zel

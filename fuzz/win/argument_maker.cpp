#include "argument_maker.h"

#include <cmath>
#include <cstring>
#include <limits>

namespace zel::fuzz {
namespace {

// Texts the control reads as keywords, formats, fonts or languages, and texts
// that are awkward anywhere.
const wchar_t* const kWords[] = {
    L"INTEGER", L"REAL", L"DISCRETE", L"TIME", L"real", L"LEFT", L"RIGHT", L"TOP", L"BOTTOM", L"CENTER",
    L"X_POSITION", L"Y_POSITION", L"SELECT", L"PAN", L"ZOOM", L"NONE", L"PLOT", L"AREA", L"BAR",
    L"STACKED BAR", L"PIE", L"DOT", L"BOX", L"TRIANGLE", L"DIAMOND", L"SOLID", L"DASHED", L"DOTTED",
    L"X_AXES", L"Y_AXES", L"CURVE", L"ANNOTATION", L"TICK", L"YEAR", L"MONTH", L"DAY", L"HOUR", L"MINUTE",
    L"SECOND", L"EN", L"DE", L"FR", L"RU", L"XX", L"Arial,9,bold", L"Courier New,-12,Bold, Charset_Default",
    L"Arial,2147483647,bold,Charset Greek", L",,,,,,", L"%d", L"%.2f", L"%s", L"%n%n%n%n", L"%999999d",
    L"%.9999f", L"%lld %lu %c %p", L"%*.*f", L"%%", L"%Y-%m-%d %H:%M:%S", L"%#c %j %U %z", L"%", L"hh:mm:ss",
    L"12", L"-1", L"1e308", L"NaN", L"\x00e9\x4e2d\x0416", L"\xd800", L"a\0b"};

const double kReals[] = {0.0, -0.0, 0.5, 1.0, -1.0, 2.0, 10.0, 100.0, 1e-300, 4.9e-324, 1.17e-38, 3.4e38, 3.5e38,
                         -3.5e38, 1e300, -1e300, 2147483647.0, 2147483648.0, -2147483649.0, 1e15, 0.001};
const int32_t kIntegers[] = {-1, 0x7FFFFFFF, int32_t(0x80000000), 0x7FFF, 0x8000, -32768, 0xFFFF, 0x10000,
                             int32_t(0x80000005), 0xFFFFFF, 0x1000000, 256, 1000, 10101, 32767};

const VARTYPE kScalarTypes[] = {VT_EMPTY, VT_NULL, VT_I2, VT_I4, VT_R4, VT_R8, VT_CY, VT_DATE, VT_BSTR, VT_ERROR,
                                VT_BOOL, VT_DECIMAL, VT_I1, VT_UI1, VT_UI2, VT_UI4, VT_I8, VT_UI8, VT_INT, VT_UINT};
const VARTYPE kElementTypes[] = {VT_VARIANT, VT_VARIANT, VT_I2, VT_I4, VT_R4, VT_R8, VT_R8, VT_DATE, VT_BSTR,
                                 VT_UI1, VT_I8, VT_BOOL, VT_CY, VT_DISPATCH, VT_UNKNOWN, VT_ERROR, VT_DECIMAL};

bool IsMissing(const VARIANT& v) { return V_VT(&v) == VT_ERROR && V_ERROR(&v) == DISP_E_PARAMNOTFOUND; }

void Number(double d, std::wstring& out) {
  wchar_t text[40];
  swprintf(text, 40, L"%.9g", d);
  out += text;
}

}  // namespace

ArgumentMaker::ArgumentMaker(RandomSource& random, GuardedArena& arena, const TypeCatalog& catalog)
    : random_(random), arena_(arena), catalog_(catalog) {
  // Records that claim the control's GUIDs with another size, and records of
  // a type of their own.
  const GUID other = {0x0BADF00D, 0x1234, 0x5678, {1, 2, 3, 4, 5, 6, 7, 8}};
  for (const RecordType& record : catalog.records()) {
    ULONG size = 0;
    record.info->GetSize(&size);
    foreign_.push_back(new ForeignRecordInfo(record.guid, 24));
    foreign_.push_back(new ForeignRecordInfo(record.guid, size + 8));
    foreign_.push_back(new ForeignRecordInfo(other, size));
  }
  foreign_.push_back(new ForeignRecordInfo(other, 1));
}

ArgumentMaker::~ArgumentMaker() {
  for (ForeignRecordInfo* info : foreign_) delete info;
}

void ArgumentMaker::SetReentry(std::function<void()> reentry) {
  for (Probe& probe : probes_) probe.onAsked = reentry;
}

LONG ArgumentMaker::BorrowedReferences() const {
  LONG borrowed = 0;
  for (const Probe& probe : probes_) borrowed += probe.Borrowed();
  for (const ForeignRecordInfo* info : foreign_) borrowed += info->Borrowed();
  return borrowed;
}

VARIANT* ArgumentMaker::NewVariant() {
  auto* v = static_cast<VARIANT*>(arena_.Take(sizeof(VARIANT)));
  if (!v) {
    VariantInit(&spare_);
    return &spare_;
  }
  arena_.ClearLater(v);
  return v;
}

int32_t ArgumentMaker::Int32() {
  size_t roll = random_.Below(100);
  if (roll < 65) return int32_t(random_.Pick({0, 1, 2, 3, 4, 5, 10, 11, 12}));
  if (roll < 85) return random_.Pick(kIntegers);
  return int32_t(random_.Bits());
}

double ArgumentMaker::Real() {
  size_t roll = random_.Below(100);
  if (roll < 30) return double(random_.Between(-100, 100)) / 4;
  if (roll < 45) return double(random_.Below(1001)) / 1000;
  if (roll < 55) return random_.Pick({std::nan(""), HUGE_VAL, -HUGE_VAL});
  if (roll < 85) return random_.Pick(kReals);
  uint64_t bits = random_.Bits();
  double any;
  std::memcpy(&any, &bits, sizeof any);
  return any;
}

double ArgumentMaker::Date() {
  if (random_.Percent(60)) return 45000 + double(random_.Below(100000)) / 97;
  return random_.Pick({-657434.0, -657435.0, 2958465.0, 2958466.0, 0.0, -1.5, 1e10, std::nan(""), HUGE_VAL});
}

BSTR ArgumentMaker::String() {
  size_t roll = random_.Below(100);
  if (roll < 55) {
    const wchar_t* word = random_.Pick(kWords);
    return SysAllocStringLen(word, UINT(word == kWords[std::size(kWords) - 1] ? 3 : wcslen(word)));
  }
  if (roll < 62) return nullptr;
  if (roll < 70) return SysAllocString(L"");
  size_t length = roll < 97 ? random_.Between(1, 300) : random_.Between(5000, 100000);
  BSTR text = SysAllocStringLen(nullptr, UINT(length));
  if (!text) return nullptr;
  for (size_t i = 0; i < length; ++i) text[i] = wchar_t(random_.Percent(90) ? L'A' + random_.Below(60) : random_.Bits());
  return text;
}

void ArgumentMaker::Object(VARIANT* out, bool dispatch) {
  V_VT(out) = dispatch ? VT_DISPATCH : VT_UNKNOWN;
  size_t roll = random_.Below(10);
  if (roll < 2) {
    V_DISPATCH(out) = nullptr;
  } else if (roll < 4 && control_) {
    IDispatch* control = nullptr;
    control_->QueryInterface(IID_IDispatch, reinterpret_cast<void**>(&control));
    V_DISPATCH(out) = control;
  } else {
    Probe& probe = probes_[random_.Below(probes_.size())];
    probe.answer = int(random_.Below(4));
    probe.AddRef();
    V_DISPATCH(out) = &probe;
  }
}

void ArgumentMaker::Scalar(VARTYPE type, VARIANT* out) {
  VariantInit(out);
  V_VT(out) = type;
  switch (type) {
    case VT_I1: case VT_UI1: V_UI1(out) = BYTE(Int32()); break;
    case VT_I2: case VT_UI2: V_I2(out) = SHORT(Int32()); break;
    case VT_BOOL: V_BOOL(out) = random_.Pick({VARIANT_TRUE, VARIANT_FALSE, VARIANT_BOOL(5)}); break;
    case VT_I4: case VT_UI4: case VT_INT: case VT_UINT: V_I4(out) = Int32(); break;
    case VT_I8: case VT_UI8: V_I8(out) = random_.Percent(50) ? Int32() : LONGLONG(random_.Bits()); break;
    case VT_CY: V_CY(out).int64 = random_.Percent(50) ? Int32() * 10000LL : LONGLONG(random_.Bits()); break;
    case VT_R4: V_R4(out) = float(Real()); break;
    case VT_R8: V_R8(out) = Real(); break;
    case VT_DATE: V_DATE(out) = Date(); break;
    case VT_BSTR: V_BSTR(out) = String(); break;
    case VT_ERROR: V_ERROR(out) = random_.Percent(70) ? DISP_E_PARAMNOTFOUND : SCODE(random_.Bits()); break;
    case VT_DECIMAL: {
      DECIMAL d{};
      d.scale = BYTE(random_.Below(29));
      d.sign = random_.Percent(50) ? DECIMAL_NEG : 0;
      d.Hi32 = random_.Percent(80) ? 0 : ULONG(random_.Bits());
      d.Lo64 = random_.Bits() >> random_.Below(64);
      V_DECIMAL(out) = d;
      V_VT(out) = VT_DECIMAL;
      break;
    }
    case VT_DISPATCH: case VT_UNKNOWN: Object(out, type == VT_DISPATCH); break;
    default: V_VT(out) = VT_EMPTY; break;
  }
}

VARIANT* ArgumentMaker::Typed(VARTYPE type) {
  VARIANT* v = NewVariant();
  if (type == VT_VARIANT) return Any();
  Scalar(type, v);
  return v;
}

VARIANT* ArgumentMaker::Any(int depth) {
  VARIANT* v = NewVariant();
  size_t roll = random_.Below(100);
  if (roll < 30 || depth > 1) Scalar(random_.Pick(kScalarTypes), v);
  else if (roll < 38) V_VT(v) = VT_ERROR, V_ERROR(v) = DISP_E_PARAMNOTFOUND;
  else if (roll < 62) Array(v, depth);
  else if (roll < 70) OwnRecord(v);
  else if (roll < 74) ForeignRecord(v);
  else if (roll < 86) Reference(v, depth);
  else if (roll < 93) Object(v, random_.Percent(60));
  else Scalar(VT_BSTR, v);
  return v;
}

void ArgumentMaker::FillElements(VARTYPE type, void* data, size_t count) {
  for (size_t i = 0; i < count; ++i) {
    switch (type) {
      case VT_VARIANT: {
        VARIANT* element = static_cast<VARIANT*>(data) + i;
        Scalar(random_.Percent(80) ? VARTYPE(random_.Pick({VT_I4, VT_R8, VT_R4, VT_I2, VT_DATE, VT_BSTR}))
                                   : random_.Pick(kScalarTypes), element);
        break;
      }
      case VT_BSTR: static_cast<BSTR*>(data)[i] = random_.Percent(80) ? SysAllocString(L"1.5") : String(); break;
      case VT_DISPATCH: case VT_UNKNOWN: {
        VARIANT object;
        Object(&object, type == VT_DISPATCH);
        static_cast<IUnknown**>(data)[i] = V_UNKNOWN(&object);
        break;
      }
      default: {
        VARIANT value;
        Scalar(type, &value);
        std::memcpy(static_cast<BYTE*>(data) + i * SizeOf(type), &V_UI1(&value), SizeOf(type));
        break;
      }
    }
  }
}

// Arrays of one to three dimensions; the first dimension may be empty, long
// or start anywhere, and the tag may name another element type than the
// array holds.
void ArgumentMaker::Array(VARIANT* out, int depth) {
  VARTYPE type = random_.Pick(kElementTypes);
  SAFEARRAYBOUND bounds[3];
  UINT dims = random_.Percent(85) ? 1 : UINT(random_.Between(2, 3));
  size_t total = 1;
  for (UINT d = 0; d < dims; ++d) {
    size_t roll = random_.Below(100);
    ULONG count = roll < 12 ? 0 : roll < 55 ? ULONG(random_.Between(1, 4)) : roll < 88 ? ULONG(random_.Between(5, 64))
                                                                              : ULONG(random_.Between(65, 3000));
    if (roll == 99 && type != VT_VARIANT && type != VT_BSTR && dims == 1) count = ULONG(random_.Between(20000, 100000));
    if (dims > 1) count = std::min<ULONG>(count, 16);
    bounds[d].cElements = count;
    bounds[d].lLbound = random_.Percent(80) ? 0 : random_.Pick({1, -5, 0x7FFFFFF0, int(0x80000000)});
    total *= count;
  }
  SAFEARRAY* array = SafeArrayCreate(type, dims, bounds);
  if (!array) return;
  void* data = nullptr;
  if (SUCCEEDED(SafeArrayAccessData(array, &data))) {
    // Long arrays of plain values repeat their first 3000 random elements,
    // so that making an argument stays far quicker than the call it feeds;
    // other elements past those stay empty (null strings and objects).
    constexpr size_t kRandom = 3000;
    size_t filled = std::min(total, kRandom);
    FillElements(type, data, filled);
    bool plain = type != VT_VARIANT && type != VT_BSTR && type != VT_DISPATCH && type != VT_UNKNOWN;
    for (size_t at = filled; plain && at < total; at += filled)
      std::memcpy(static_cast<BYTE*>(data) + at * SizeOf(type), data, std::min(filled, total - at) * SizeOf(type));
    SafeArrayUnaccessData(array);
  }
  VARTYPE tag = random_.Percent(10) ? random_.Pick(kElementTypes) : type;
  V_VT(out) = VARTYPE(VT_ARRAY | tag);
  V_ARRAY(out) = array;
  (void)depth;
}

// A reference to a value in guarded memory of exactly its size. What the
// value owns is held by a second VARIANT that the arena clears.
void ArgumentMaker::Reference(VARIANT* out, int depth) {
  size_t roll = random_.Below(100);
  if (roll < 35) {
    VARIANT* target = static_cast<VARIANT*>(arena_.Take(sizeof(VARIANT)));
    if (!target) return;
    *target = *Any(depth + 1);  // owned by the VARIANT it was copied from
    V_VT(out) = VT_BYREF | VT_VARIANT, V_VARIANTREF(out) = target;
    return;
  }
  VARTYPE type = roll < 45 ? VARTYPE(VT_DECIMAL) : roll < 55 ? VARTYPE(VT_ARRAY)
                                                            : VARTYPE(random_.Pick({VT_I2, VT_I4, VT_R4, VT_R8, VT_DATE,
                                                                            VT_BSTR, VT_BOOL, VT_UI1, VT_CY,
                                                                            VT_DISPATCH, VT_UNKNOWN, VT_I8}));
  if (type == VT_DECIMAL) {
    auto* target = static_cast<BYTE*>(arena_.Take(sizeof(DECIMAL)));
    if (!target) return;
    for (size_t i = 0; i < sizeof(DECIMAL); ++i) target[i] = BYTE(random_.Bits());
    // Any reserved word (it overlays a VARIANT's tag for a control that
    // reads the reference as a VARIANT), but a scale and sign the platform's
    // conversions accept: Wine's oleaut32 faults formatting a scale past 28.
    auto* decimal = reinterpret_cast<DECIMAL*>(target);
    decimal->scale = BYTE(random_.Below(29));
    decimal->sign = random_.Percent(50) ? DECIMAL_NEG : 0;
    V_VT(out) = VT_BYREF | VT_DECIMAL, V_DECIMALREF(out) = decimal;
    return;
  }
  VARIANT* holder = NewVariant();
  if (type == VT_ARRAY) Array(holder, depth + 1);
  else Scalar(type, holder);
  VARTYPE held = V_VT(holder);
  size_t size = held & VT_ARRAY ? sizeof(SAFEARRAY*) : SizeOf(held);
  void* target = size ? arena_.Take(size) : nullptr;
  if (!target) return;
  std::memcpy(target, &V_UI1(holder), size);
  V_VT(out) = VARTYPE(VT_BYREF | held), V_BYREF(out) = target;
}

// A record of the control's own type, in guarded memory, every field set
// through the record information.
void ArgumentMaker::OwnRecord(VARIANT* out) {
  if (catalog_.records().empty()) return;
  const RecordType& record = random_.Pick(catalog_.records());
  ULONG size = 0;
  record.info->GetSize(&size);
  void* data = arena_.Take(size);
  if (!data) return;
  record.info->RecordInit(data);
  record.info->AddRef();
  arena_.ClearRecordLater(record.info, data);
  for (const RecordField& field : record.fields) {
    if (random_.Percent(15)) continue;
    VARIANT* value = field.type.type != VT_VARIANT ? Typed(field.type.type)
                     : random_.Percent(50) ? Typed(random_.Pick({VT_I4, VT_R8, VT_R4, VT_DATE, VT_BSTR, VT_I2}))
                                           : Any(2);
    record.info->PutField(INVOKE_PROPERTYPUT, data, field.name.c_str(), value);
    // Wine's RecordClear leaves VARIANT fields as they are: they are
    // cleared here, before the record's own cleanup.
    VARIANT view;
    PVOID where = nullptr;
    VariantInit(&view);
    if (field.type.type == VT_VARIANT &&
        SUCCEEDED(record.info->GetFieldNoCopy(data, field.name.c_str(), &view, &where)) && where)
      arena_.ClearLater(static_cast<VARIANT*>(where));
  }
  // The control sets an axis record's annotationFormat to null without
  // freeing it; the string stays the caller's to free, as hosts are told.
  VARIANT format;
  PVOID where = nullptr;
  VariantInit(&format);
  if (SUCCEEDED(record.info->GetFieldNoCopy(data, L"annotationFormat", &format, &where)) && where)
    arena_.FreeIfDropped(static_cast<BSTR*>(where));
  V_VT(out) = VT_RECORD, V_RECORD(out) = data, V_RECORDINFO(out) = record.info;
}

void ArgumentMaker::ForeignRecord(VARIANT* out) {
  ForeignRecordInfo* info = foreign_[random_.Below(foreign_.size())];
  auto* data = static_cast<BYTE*>(arena_.Take(info->size()));
  if (!data) return;
  for (ULONG i = 0; i < info->size(); ++i) data[i] = BYTE(random_.Bits());
  info->AddRef();
  arena_.ClearRecordLater(info, data);
  V_VT(out) = VT_RECORD, V_RECORD(out) = data, V_RECORDINFO(out) = info;
}

size_t ArgumentMaker::SizeOf(VARTYPE type) {
  switch (type) {
    case VT_I1: case VT_UI1: return 1;
    case VT_I2: case VT_UI2: case VT_BOOL: return 2;
    case VT_I4: case VT_UI4: case VT_INT: case VT_UINT: case VT_R4: case VT_ERROR: return 4;
    case VT_I8: case VT_UI8: case VT_R8: case VT_DATE: case VT_CY: return 8;
    case VT_BSTR: case VT_DISPATCH: case VT_UNKNOWN: return sizeof(void*);
    case VT_DECIMAL: return sizeof(DECIMAL);
    case VT_VARIANT: return sizeof(VARIANT);
    default: return 0;
  }
}

void* ArgumentMaker::PointerTo(VARTYPE type, size_t count, bool fill, BYTE sentinel) {
  size_t size = SizeOf(type) * count;
  auto* data = static_cast<BYTE*>(arena_.Take(size));
  if (!data) return nullptr;
  if (!fill) {
    std::memset(data, sentinel, size);
    if (type == VT_BSTR || type == VT_DISPATCH || type == VT_UNKNOWN) std::memset(data, 0, size);
    for (size_t i = 0; type == VT_VARIANT && i < count; ++i) V_VT(reinterpret_cast<VARIANT*>(data) + i) = VT_EMPTY;
    return data;
  }
  // The caller owns what the values hold: they are made outside the arena.
  for (size_t i = 0; i < count; ++i) {
    void* element = data + i * SizeOf(type);
    if (type == VT_VARIANT) {
      VARIANT* made = Any(1);
      if (V_VT(made) == VT_RECORD || FAILED(VariantCopy(static_cast<VARIANT*>(element), made)))
        V_VT(static_cast<VARIANT*>(element)) = VT_I4;
      continue;
    }
    VARIANT value;
    Scalar(type, &value);
    std::memcpy(element, &V_UI1(&value), SizeOf(type));
  }
  return data;
}

void ArgumentMaker::ClearPointed(VARTYPE type, void* data, size_t count) {
  for (size_t i = 0; data && i < count; ++i) {
    void* element = static_cast<BYTE*>(data) + i * SizeOf(type);
    if (type == VT_VARIANT) {
      VariantClear(static_cast<VARIANT*>(element));
    } else if (type == VT_BSTR || type == VT_DISPATCH || type == VT_UNKNOWN) {
      VARIANT owner;
      V_VT(&owner) = type;
      std::memcpy(&V_UI1(&owner), element, sizeof(void*));
      VariantClear(&owner);
      std::memset(element, 0, sizeof(void*));
    }
  }
}

void ArgumentMaker::Describe(const VARIANT& value, std::wstring& out) const {
  VARTYPE type = V_VT(&value);
  if (IsMissing(value)) {
    out += L"missing";
    return;
  }
  if (type & VT_ARRAY) {
    SAFEARRAY* array = (type & VT_BYREF) ? *V_ARRAYREF(&value) : V_ARRAY(&value);
    out += (type & VT_BYREF) ? L"&array " : L"array ";
    out += TypeName(VARTYPE(type & VT_TYPEMASK));
    VARTYPE held = VT_EMPTY;
    if (array && SUCCEEDED(SafeArrayGetVartype(array, &held)) && held != (type & VT_TYPEMASK))
      out += L" holding ", out += TypeName(held);
    for (USHORT d = 0; array && d < array->cDims; ++d) {
      const SAFEARRAYBOUND& b = array->rgsabound[array->cDims - 1 - d];
      out += L"[" + std::to_wstring(b.lLbound) + L"+" + std::to_wstring(b.cElements) + L"]";
    }
    return;
  }
  if (type == (VT_BYREF | VT_VARIANT)) {
    out += L"&";
    Describe(*V_VARIANTREF(&value), out);
    return;
  }
  if (type & VT_BYREF) {
    out += L"&";
    out += TypeName(VARTYPE(type & VT_TYPEMASK));
    return;
  }
  switch (type) {
    case VT_EMPTY: out += L"empty"; return;
    case VT_I2: out += L"I2 " + std::to_wstring(V_I2(&value)); return;
    case VT_I4: case VT_INT: out += std::to_wstring(V_I4(&value)); return;
    case VT_UI4: case VT_UINT: out += L"UI4 " + std::to_wstring(V_UI4(&value)); return;
    case VT_R4: out += L"R4 "; Number(V_R4(&value), out); return;
    case VT_R8: out += L"R8 "; Number(V_R8(&value), out); return;
    case VT_DATE: out += L"DATE "; Number(V_DATE(&value), out); return;
    case VT_BOOL: out += L"BOOL " + std::to_wstring(V_BOOL(&value)); return;
    case VT_BSTR:
      if (!V_BSTR(&value)) out += L"null BSTR";
      else if (SysStringLen(V_BSTR(&value)) > 40) out += L"BSTR of " + std::to_wstring(SysStringLen(V_BSTR(&value)));
      else out += L"\"" + std::wstring(V_BSTR(&value), SysStringLen(V_BSTR(&value))) + L"\"";
      return;
    case VT_DISPATCH: case VT_UNKNOWN: {
      out += TypeName(type);
      const IUnknown* object = V_UNKNOWN(&value);
      bool probe = false;
      for (const Probe& p : probes_) probe = probe || object == static_cast<const IUnknown*>(&p);
      out += !object ? L" null" : probe ? L" probe" : L" control";
      return;
    }
    case VT_RECORD: {
      for (const RecordType& record : catalog_.records())
        if (record.info == V_RECORDINFO(&value)) {
          out += L"record " + record.name;
          return;
        }
      ULONG size = 0;
      if (V_RECORDINFO(&value)) V_RECORDINFO(&value)->GetSize(&size);
      out += L"foreign record of " + std::to_wstring(size) + L" bytes";
      return;
    }
    default: out += TypeName(type); out += L" value"; return;
  }
}

}  // namespace zel::fuzz

#include "control/property_records.h"

#include <cstddef>
#include <new>

#include "control/automation_values.h"
#include "control/com_support.h"
#include "control/type_library.h"

namespace zel {

const GUID kAxisPropsGuid = {0x1376EC82, 0xAAC4, 0x4D18, {0x9F, 0x8F, 0xA6, 0xE0, 0x56, 0x3D, 0x4E, 0x15}};
const GUID kDatasetPropsGuid = {0x88A7E2DB, 0x2F1D, 0x4F59, {0xA7, 0xD4, 0xFE, 0x8F, 0x6C, 0xBC, 0x2C, 0x78}};

namespace {

constexpr unsigned kReferenceBits = 0x0C;
constexpr unsigned kRecordBits = 0x24;

bool HasBits(VARTYPE type, unsigned bits) { return (type & bits) == bits; }

// The record is the library's type `guid`: the same GUID, the same size,
// and a matching type in the eyes of the library's own record information.
// A record of another type that claims the GUID is not read as ours.
bool IsRecordOf(const VARIANT& v, REFGUID guid) {
  IRecordInfo* theirs = V_RECORDINFO(&v);
  GUID actual;
  if (!theirs || !V_RECORD(&v) || FAILED(theirs->GetGuid(&actual)) || !IsEqualGUID(actual, guid)) return false;
  ComPtr<IRecordInfo> ours;
  ULONG size = 0, expected = 0;
  return SUCCEEDED(RecordInfoOf(guid, ours.put())) && SUCCEEDED(ours->GetSize(&expected)) &&
         SUCCEEDED(theirs->GetSize(&size)) && size == expected && ours->IsMatchingType(theirs);
}

BSTR Bstr(const std::optional<Text>& text) { return NewBstr(text.value_or(Text())); }

// Makes a record of the library's type, fills it and wraps it in `out`.
template <typename Record, typename Fill>
void RecordToVariant(REFGUID guid, Fill fill, VARIANT* out) {
  ComPtr<IRecordInfo> info;
  if (FAILED(RecordInfoOf(guid, info.put()))) throw std::bad_alloc();
  auto* record = static_cast<Record*>(info->RecordCreate());
  if (!record) throw std::bad_alloc();
  try {
    fill(*record);
  } catch (...) {
    info->RecordDestroy(record);
    throw;
  }
  VariantInit(out);
  V_VT(out) = VT_RECORD;
  V_RECORD(out) = record;
  V_RECORDINFO(out) = info.get();
  info->AddRef();
}

}  // namespace

void* RecordOf(const VARIANT& props, REFGUID recordGuid, bool& wrongShape) {
  wrongShape = false;
  VARTYPE type = VARTYPE(V_VT(&props) & 0xFF);
  if (HasBits(type, kReferenceBits)) {
    // Only a reference to a VARIANT can lead to a record: the other tags
    // with these bits (a DECIMAL, an object pointer) point at less than a
    // VARIANT, which is not read past its end.
    const VARIANT* referred = V_VT(&props) == (VT_BYREF | VT_VARIANT) ? V_VARIANTREF(&props) : nullptr;
    if (!referred || !HasBits(VARTYPE(V_VT(referred) & 0xFF), kRecordBits) ||
        !IsRecordOf(*referred, recordGuid)) {
      wrongShape = true;
      return nullptr;
    }
    return V_RECORD(referred);
  }
  if (HasBits(type, kRecordBits)) {
    if (!IsRecordOf(props, recordGuid)) {
      wrongShape = true;
      return nullptr;
    }
    return V_RECORD(&props);
  }
  return nullptr;
}

AxisProps AxisPropsFromRecord(::AxisProps& r) {
  AxisProps p;
  p.min = ValueOf(r.min);
  p.max = ValueOf(r.max);
  p.annotationIncrement = ValueOf(r.annotationIncrement);
  p.tickIncrement = ValueOf(r.tickIncrement);
  p.axisColor = TranslateColor(OLE_COLOR(r.axisColor));
  // Kept as the control has always done it: the [in] record's
  // annotationFormat is set to null in the host's record without being
  // freed. The string stays the host's to free, through its own pointer.
  r.annotationFormat = nullptr;
  p.timeUnit = OptionalTextOf(r.timeUnit);
  p.title = OptionalTextOf(r.title);
  p.titlePosition = OptionalTextOf(r.titlePosition);
  p.axisFont = OptionalTextOf(r.axisFont);
  p.annotationFont = OptionalTextOf(r.annotationFont);
  p.gridMode = OptionalTextOf(r.gridMode);
  p.gridStyle = OptionalTextOf(r.gridStyle);
  p.gridWidth = r.gridWidth;
  p.gridColor = TranslateColor(OLE_COLOR(r.gridColor));
  p.bAutoScale = r.bAutoScale;
  p.fntgridColor = r.fntgridColor;
  p.gridEnabdle = r.gridEnabdle;
  p.YaxisPos = r.YaxisPos;
  return p;
}

DatasetProps DatasetPropsFromRecord(const ::DatasetProps& r) {
  DatasetProps p;
  p.title = OptionalTextOf(r.title);
  p.lineStyle = OptionalTextOf(r.lineStyle);
  p.markerShape = OptionalTextOf(r.markerShape);
  p.titleFont = OptionalTextOf(r.titleFont);
  p.textFont = OptionalTextOf(r.textFont);
  p.realXbarMode = r.realXbarMode;
  p.lineWidth = r.lineWidth;
  p.lineColor = TranslateColor(OLE_COLOR(r.lineColor));
  p.fillColor = TranslateColor(OLE_COLOR(r.fillColor));
  p.markerColor = TranslateColor(OLE_COLOR(r.markerColor));
  p.titleColor = TranslateColor(OLE_COLOR(r.titleColor));
  p.textColor = TranslateColor(OLE_COLOR(r.textColor));
  p.manualColor = TranslateColor(OLE_COLOR(r.manualColor));
  p.type = OptionalTextOf(r.type);
  p.fillTo = OptionalTextOf(r.fillTo);
  p.fillCurveId = r.fillCurveId;
  p.YaxisID = r.YaxisID;
  p.bUseGlb = r.bUseGlb;
  return p;
}

void AxisPropsToVariant(const AxisProps& p, VARIANT* out) {
  RecordToVariant<::AxisProps>(kAxisPropsGuid, [&](::AxisProps& r) {
    ToVariant(p.min, &r.min);
    ToVariant(p.max, &r.max);
    ToVariant(p.annotationIncrement, &r.annotationIncrement);
    ToVariant(p.tickIncrement, &r.tickIncrement);
    r.axisColor = LONG(p.axisColor.value_or(0));
    r.annotationFormat = Bstr(p.annotationFormat);
    r.timeUnit = Bstr(p.timeUnit);
    r.title = Bstr(p.title);
    r.titlePosition = Bstr(p.titlePosition);
    r.axisFont = Bstr(p.axisFont);
    r.annotationFont = Bstr(p.annotationFont);
    r.gridMode = Bstr(p.gridMode);
    r.gridStyle = Bstr(p.gridStyle);
    r.gridWidth = p.gridWidth;
    r.gridColor = LONG(p.gridColor.value_or(0));
    r.bAutoScale = p.bAutoScale;
    r.fntgridColor = p.fntgridColor;
    r.gridEnabdle = p.gridEnabdle;
    r.YaxisPos = p.YaxisPos;
  }, out);
}

void DatasetPropsToVariant(const DatasetProps& p, VARIANT* out) {
  RecordToVariant<::DatasetProps>(kDatasetPropsGuid, [&](::DatasetProps& r) {
    r.title = Bstr(p.title);
    r.lineStyle = Bstr(p.lineStyle);
    r.markerShape = Bstr(p.markerShape);
    r.titleFont = Bstr(p.titleFont);
    r.textFont = Bstr(p.textFont);
    r.realXbarMode = p.realXbarMode;
    r.lineWidth = p.lineWidth;
    r.lineColor = LONG(p.lineColor.value_or(0));
    r.fillColor = LONG(p.fillColor.value_or(0));
    r.markerColor = LONG(p.markerColor.value_or(0));
    r.titleColor = LONG(p.titleColor.value_or(0));
    r.textColor = LONG(p.textColor.value_or(0));
    r.manualColor = LONG(p.manualColor.value_or(0));
    r.type = Bstr(p.type);
    r.fillTo = Bstr(p.fillTo);
    r.fillCurveId = p.fillCurveId;
    r.YaxisID = p.YaxisID;
    r.bUseGlb = p.bUseGlb;
  }, out);
}

// The records are the automation interface's: their layout on i686 is fixed.
#if defined(__i386__)
static_assert(sizeof(::AxisProps) == 128);
static_assert(offsetof(::AxisProps, max) == 16);
static_assert(offsetof(::AxisProps, axisColor) == 64);
static_assert(offsetof(::AxisProps, annotationFormat) == 68);
static_assert(offsetof(::AxisProps, gridStyle) == 96);
static_assert(offsetof(::AxisProps, gridWidth) == 100);
static_assert(offsetof(::AxisProps, gridColor) == 104);
static_assert(offsetof(::AxisProps, YaxisPos) == 120);
static_assert(sizeof(::DatasetProps) == 68);
static_assert(offsetof(::DatasetProps, realXbarMode) == 20);
static_assert(offsetof(::DatasetProps, lineWidth) == 22);
static_assert(offsetof(::DatasetProps, lineColor) == 24);
static_assert(offsetof(::DatasetProps, manualColor) == 44);
static_assert(offsetof(::DatasetProps, type) == 48);
static_assert(offsetof(::DatasetProps, fillCurveId) == 56);
static_assert(offsetof(::DatasetProps, YaxisID) == 60);
static_assert(offsetof(::DatasetProps, bUseGlb) == 64);
#endif

}  // namespace zel

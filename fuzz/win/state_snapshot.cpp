#include "state_snapshot.h"

#include <oleauto.h>

#include <cstring>
#include <vector>

namespace zel::fuzz {
namespace {

class Writer {
 public:
  std::wstring text;

  void Label(const wchar_t* name) { text += L"\n", text += name, text += L"="; }
  void Number(long long n) { text += std::to_wstring(n), text += L" "; }
  void Status(HRESULT hr) {
    if (FAILED(hr)) text += L"<failed " + std::to_wstring(hr) + L"> ";
  }
  void Text(BSTR s) { text += s ? std::wstring(s, SysStringLen(s)) : L"<null>", text += L"|"; }

  // Scalars by their type and bits, arrays element by element (plain
  // elements as a checksum), records field by field.
  void Value(const VARIANT& v) {
    VARTYPE type = V_VT(&v);
    text += L"<" + std::to_wstring(type) + L">";
    if (type & VT_ARRAY) return Array(V_ARRAY(&v), VARTYPE(type & VT_TYPEMASK));
    switch (type) {
      case VT_BSTR: return Text(V_BSTR(&v));
      case VT_RECORD: return Record(v);
      case VT_DISPATCH: case VT_UNKNOWN: text += V_UNKNOWN(&v) ? L"object " : L"null "; return;
      default: {
        unsigned long long bits = 0;
        std::memcpy(&bits, &V_UI8(&v), sizeof bits);
        Number((long long)bits);
      }
    }
  }

 private:
  void Array(SAFEARRAY* array, VARTYPE type) {
    if (!array) return Text(nullptr);
    long total = 1;
    for (USHORT d = 0; d < array->cDims; ++d) {
      Number(array->rgsabound[d].lLbound), Number(array->rgsabound[d].cElements);
      total *= long(array->rgsabound[d].cElements);
    }
    void* data = nullptr;
    if (FAILED(SafeArrayAccessData(array, &data))) return Status(E_FAIL);
    if (type == VT_VARIANT) {
      for (long i = 0; i < total; ++i) Value(static_cast<VARIANT*>(data)[i]);
    } else if (type == VT_BSTR) {
      for (long i = 0; i < total; ++i) Text(static_cast<BSTR*>(data)[i]);
    } else {
      unsigned long long hash = 1469598103934665603ull;
      auto* bytes = static_cast<const unsigned char*>(data);
      for (size_t i = 0; i < size_t(total) * SafeArrayGetElemsize(array); ++i) hash = (hash ^ bytes[i]) * 1099511628211ull;
      Number((long long)hash);
    }
    SafeArrayUnaccessData(array);
  }

  void Record(const VARIANT& v) {
    IRecordInfo* info = V_RECORDINFO(&v);
    ULONG count = 0;
    if (!info || !V_RECORD(&v) || FAILED(info->GetFieldNames(&count, nullptr))) return Status(E_FAIL);
    std::vector<BSTR> names(count);
    info->GetFieldNames(&count, names.data());
    for (BSTR name : names) {
      VARIANT field;
      VariantInit(&field);
      Status(info->GetField(V_RECORD(&v), name, &field));
      Value(field);
      VariantClear(&field);
      SysFreeString(name);
    }
  }
};

struct OwnedVariant {
  VARIANT v;
  OwnedVariant() { VariantInit(&v); }
  ~OwnedVariant() { VariantClear(&v); }
};

// The ids of an Enum* result: an array of [id, title, type] arrays.
std::vector<LONG> IdsOf(const VARIANT& listing) {
  std::vector<LONG> ids;
  if (V_VT(&listing) != (VT_ARRAY | VT_VARIANT)) return ids;
  SAFEARRAY* outer = V_ARRAY(&listing);
  VARIANT* rows = nullptr;
  if (FAILED(SafeArrayAccessData(outer, reinterpret_cast<void**>(&rows)))) return ids;
  for (ULONG i = 0; i < outer->rgsabound[0].cElements; ++i) {
    if (V_VT(&rows[i]) != (VT_ARRAY | VT_VARIANT)) continue;
    LONG first = 0;
    VARIANT id;
    VariantInit(&id);
    if (SUCCEEDED(SafeArrayGetElement(V_ARRAY(&rows[i]), &first, &id)) &&
        SUCCEEDED(VariantChangeType(&id, &id, 0, VT_I4)))
      ids.push_back(V_I4(&id));
    VariantClear(&id);
  }
  SafeArrayUnaccessData(outer);
  return ids;
}

template <typename Get>
void Listing(Writer& w, const wchar_t* name, Get get, std::vector<LONG>& ids) {
  OwnedVariant listing;
  w.Label(name);
  w.Status(get(&listing.v));
  w.Value(listing.v);
  ids = IdsOf(listing.v);
}

template <typename Get>
void Each(Writer& w, const wchar_t* name, const std::vector<LONG>& ids, Get get) {
  for (LONG id : ids) {
    OwnedVariant value;
    w.Label(name);
    w.Number(id);
    w.Status(get(id, &value.v));
    w.Value(value.v);
  }
}

void Settings(Writer& w, IVX_Graph* g) {
  OLE_COLOR color = 0;
  VARIANT_BOOL enabled = 0;
  LONG n = 0;
  w.Label(L"BackColor"), w.Status(g->get_BackColor(&color)), w.Number(color);
  w.Label(L"Enabled"), w.Status(g->get_Enabled(&enabled)), w.Number(enabled);
  std::pair<const wchar_t*, HRESULT (STDMETHODCALLTYPE IVX_Graph::*)(LONG*)> flags[] = {
      {L"HorizontalScrollbarEnabled", &IVX_Graph::get_HorizontalScrollbarEnabled},
      {L"VerticalScrollbarEnabled", &IVX_Graph::get_VerticalScrollbarEnabled},
      {L"LegendEnabled", &IVX_Graph::get_LegendEnabled},
      {L"PropertiesModificationAllowed", &IVX_Graph::get_PropertiesModificationAllowed},
      {L"ComnYAxesProps", &IVX_Graph::get_ComnYAxesProps},
      {L"ComnYAxesPropsChkBoxEnable", &IVX_Graph::get_ComnYAxesPropsChkBoxEnable}};
  for (auto& [name, get] : flags) w.Label(name), w.Status((g->*get)(&n)), w.Number(n);
  std::pair<const wchar_t*, HRESULT (STDMETHODCALLTYPE IVX_Graph::*)(BSTR*)> texts[] = {
      {L"MouseMode", &IVX_Graph::get_MouseMode}, {L"LegendPosition", &IVX_Graph::get_LegendPosition}};
  for (auto& [name, get] : texts) {
    BSTR text = nullptr;
    w.Label(name), w.Status((g->*get)(&text)), w.Text(text);
    SysFreeString(text);
  }
  std::pair<const wchar_t*, HRESULT (STDMETHODCALLTYPE IVX_Graph::*)(VARIANT*)> values[] = {
      {L"Margins", &IVX_Graph::get_Margins}, {L"ZoomRect", &IVX_Graph::get_ZoomRect},
      {L"BarWidth", &IVX_Graph::GetBarWidth}, {L"GraphType", &IVX_Graph::GetGraphType}};
  for (auto& [name, get] : values) {
    OwnedVariant value;
    w.Label(name), w.Status((g->*get)(&value.v)), w.Value(value.v);
  }
}

void ThinValues(Writer& w, IVX_Graph* g) {
  LONG color = 0, colors[2] = {}, split[3] = {}, id = 0, fromLegend = 0;
  short words[3] = {};
  int flag = 0, logId = 0;
  w.Label(L"GridProps"), w.Status(g->getGridProp(&color, words));
  w.Number(color), w.Number(words[0]), w.Number(words[1]), w.Number(words[2]);
  w.Label(L"XMLColor"), w.Status(g->GetXMLColor(colors)), w.Number(colors[0]), w.Number(colors[1]);
  w.Label(L"SplitYAxis"), w.Status(g->getSplitYAxis(&split[0], &split[1], &split[2]));
  w.Number(split[0]), w.Number(split[1]), w.Number(split[2]);
  w.Label(L"HZ"), w.Status(g->enableHZGrid(&flag)), w.Number(flag);
  w.Label(L"CurvelogID"), w.Status(g->GetCurvelogID(&logId)), w.Number(logId);
  w.Label(L"CurveInfo"), w.Status(g->GetCurveInfofromLegend(&id, &fromLegend)), w.Number(id), w.Number(fromLegend);
  BSTR units[4] = {};
  w.Label(L"UnitName"), w.Status(g->GetUnitName(&units[0], &units[1], &units[2], &units[3]));
  for (BSTR& unit : units) w.Text(unit), SysFreeString(unit);
  OwnedVariant version;
  V_VT(&version.v) = VT_I4;
  w.Label(L"Ver"), w.Status(g->GetVer(&version.v)), w.Value(version.v);
}

void Hairlines(Writer& w, IVX_Graph* g) {
  for (LONG id = 0; id <= 8; ++id) {
    float position = 0;
    OLE_COLOR color = 0;
    short width = 0;
    if (FAILED(g->GetHairlinePosition(id, &position))) continue;
    w.Label(L"Hairline"), w.Number(id), w.Number((long long)(position * 1000));
    w.Status(g->GetHairlineProps(id, &color, &width)), w.Number(color), w.Number(width);
  }
}

}  // namespace

std::wstring Snapshot(IVX_Graph* g) {
  Writer w;
  w.text.reserve(4096);
  Settings(w, g);
  ThinValues(w, g);
  Hairlines(w, g);
  std::vector<LONG> xAxes, yAxes, datasets;
  Listing(w, L"XAxes", [&](VARIANT* v) { return g->EnumXAxes(v); }, xAxes);
  Listing(w, L"YAxes", [&](VARIANT* v) { return g->EnumYAxes(v); }, yAxes);
  Listing(w, L"Datasets", [&](VARIANT* v) { return g->EnumDatasets(v); }, datasets);
  Each(w, L"XAxis", xAxes, [&](LONG id, VARIANT* v) { return g->GetXAxisProperties(id, v); });
  Each(w, L"YAxis", yAxes, [&](LONG id, VARIANT* v) { return g->GetYAxisProperties(id, v); });
  Each(w, L"Dataset", datasets, [&](LONG id, VARIANT* v) { return g->GetDatasetProperties(id, v); });
  Each(w, L"Points", datasets, [&](LONG id, VARIANT* v) { return g->GetDatasetValues(id, v); });
  return w.text;
}

std::wstring FirstDifference(const std::wstring& before, const std::wstring& after) {
  size_t at = 0;
  while (at < before.size() && at < after.size() && before[at] == after[at]) ++at;
  size_t from = before.rfind(L'\n', at);
  from = from == std::wstring::npos ? 0 : from + 1;
  auto line = [&](const std::wstring& s) {
    size_t end = s.find(L'\n', at);
    return s.substr(from, std::min<size_t>(end == std::wstring::npos ? s.size() : end, from + 300) - from);
  };
  return L"before: " + line(before) + L"\n  after: " + line(after);
}

}  // namespace zel::fuzz

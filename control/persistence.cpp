// Persistence of the control's own settings: streams (form designers, HMI
// project files), property bags (HTML <param> tags, VB forms) and storages
// (Insert Object). Axes, datasets and values are never saved: hosts build
// them in code at run time, and restoring them would make those calls fail.
#include <windows.h>
#include <ocidl.h>

#include "control/automation_values.h"
#include "control/error_reporting.h"
#include "control/vx_graph.h"
#include "engine/graph_keywords.h"

namespace zel {
namespace {

// The stream inside a storage that holds the settings.
constexpr wchar_t kContentsStream[] = L"Contents";

HRESULT StorageError(SettingsStatus status) {
  switch (status) {
    case SettingsStatus::kOk: return S_OK;
    case SettingsStatus::kNotSettings: return STG_E_INVALIDHEADER;
    case SettingsStatus::kTruncated: return STG_E_READFAULT;
    default: return STG_E_DOCFILECORRUPT;
  }
}

// Reads exactly `size` bytes; a stream that ends early is truncated.
HRESULT ReadAll(IStream& stream, uint8_t* into, ULONG size) {
  while (size > 0) {
    ULONG read = 0;
    HRESULT hr = stream.Read(into, size, &read);
    if (FAILED(hr)) return hr;
    if (read == 0 || read > size) return STG_E_READFAULT;
    into += read, size -= read;
  }
  return S_OK;
}

// Codes a stream may hold for the two keyword settings.
bool KnownCodes(const SavedSettings& s) {
  return s.mouseMode >= int32_t(MouseMode::kSelect) && s.mouseMode <= int32_t(MouseMode::kNone) &&
         s.legendPosition >= int32_t(LegendPosition::kNone) && s.legendPosition <= int32_t(LegendPosition::kLeft);
}

HRESULT ReadStream(IStream& stream, SavedSettings& settings) {
  uint8_t header[kSettingsHeaderSize];
  HRESULT hr = ReadAll(stream, header, sizeof header);
  if (FAILED(hr)) return hr;
  uint32_t bodySize = 0;
  if (SettingsStatus status = SettingsBodySize(header, bodySize); status != SettingsStatus::kOk)
    return StorageError(status);
  std::vector<uint8_t> bytes(header, header + sizeof header);
  bytes.resize(sizeof header + bodySize);
  hr = ReadAll(stream, bytes.data() + sizeof header, bodySize);
  if (FAILED(hr)) return hr;
  SavedSettings read = settings;
  if (SettingsStatus status = DecodeSettings(bytes, read); status != SettingsStatus::kOk) return StorageError(status);
  if (!KnownCodes(read)) return STG_E_DOCFILECORRUPT;
  settings = read;
  return S_OK;
}

// The property bag's names and value types: the automation names where the
// setting has one, so HTML <param> tags read as scripts would write them.
struct BagEntry {
  const wchar_t* name;
  VARTYPE type;
};

// One setting through the bag: `Visit(entry, value)` for each, where value
// is the setting as the bag holds it.
template <typename Visit>
void ForEachBagEntry(SavedSettings& s, Visit&& visit) {
  visit(BagEntry{L"BackColor", VT_I4}, s.backColor);
  visit(BagEntry{L"Enabled", VT_BOOL}, s.enabled);
  visit(BagEntry{L"MarginLeft", VT_I4}, s.margins[0]);
  visit(BagEntry{L"MarginRight", VT_I4}, s.margins[1]);
  visit(BagEntry{L"MarginBottom", VT_I4}, s.margins[2]);
  visit(BagEntry{L"MarginTop", VT_I4}, s.margins[3]);
  visit(BagEntry{L"MouseMode", VT_BSTR}, s.mouseMode);
  visit(BagEntry{L"LegendEnabled", VT_I4}, s.legendEnabled);
  visit(BagEntry{L"LegendPosition", VT_BSTR}, s.legendPosition);
  visit(BagEntry{L"HorizontalScrollbarEnabled", VT_I4}, s.horizontalScrollbar);
  visit(BagEntry{L"VerticalScrollbarEnabled", VT_I4}, s.verticalScrollbar);
  visit(BagEntry{L"PropertiesModificationAllowed", VT_I4}, s.propertiesModificationAllowed);
  visit(BagEntry{L"ComnYAxesProps", VT_I4}, s.commonYAxesProps);
  visit(BagEntry{L"ComnYAxesPropsChkBoxEnable", VT_I4}, s.commonYAxesPropsCheckBoxEnable);
  visit(BagEntry{L"BarWidth", VT_I4}, s.barWidth);
  visit(BagEntry{L"GridColor", VT_I4}, s.gridColor);
  visit(BagEntry{L"GridStyle", VT_I2}, s.gridWords[0]);
  visit(BagEntry{L"GridWidth", VT_I2}, s.gridWords[1]);
  visit(BagEntry{L"GridLines", VT_I2}, s.gridWords[2]);
  visit(BagEntry{L"HairlineSnap", VT_I4}, s.hairlineSnap);
}

// A setting as a VARIANT of the entry's type; the two keyword settings are
// written as their keywords.
void ToVariant(const BagEntry& entry, const auto& value, VARIANT& v) {
  VariantInit(&v);
  V_VT(&v) = entry.type;
  using T = std::remove_cvref_t<decltype(value)>;
  if constexpr (std::is_same_v<T, bool>) {
    V_BOOL(&v) = value ? VARIANT_TRUE : VARIANT_FALSE;
  } else if constexpr (std::is_same_v<T, int16_t>) {
    V_I2(&v) = value;
  } else if (entry.type == VT_BSTR) {
    Text keyword = wcscmp(entry.name, L"MouseMode") == 0 ? MouseModeKeyword(MouseMode(value))
                                                         : LegendPositionKeyword(LegendPosition(value));
    V_BSTR(&v) = NewBstr(keyword);
  } else {
    V_I4(&v) = LONG(value);
  }
}

// A bag's value into a setting, converted as the platform converts; the
// keywords follow the rules of their properties.
HRESULT FromVariant(const BagEntry& entry, VARIANT& given, auto& value) {
  VARIANT v;
  VariantInit(&v);
  HRESULT hr = VariantChangeType(&v, &given, 0, entry.type);
  if (FAILED(hr)) return STG_E_INVALIDPARAMETER;
  using T = std::remove_cvref_t<decltype(value)>;
  if constexpr (std::is_same_v<T, bool>) {
    value = V_BOOL(&v) != VARIANT_FALSE;
  } else if constexpr (std::is_same_v<T, int16_t>) {
    value = V_I2(&v);
  } else if (entry.type == VT_BSTR) {
    Text keyword = TextOf(V_BSTR(&v));
    value = wcscmp(entry.name, L"MouseMode") == 0 ? int32_t(MouseModeFromKeyword(keyword))
                                                  : int32_t(LegendPositionFromKeyword(keyword));
  } else {
    value = T(V_I4(&v));
  }
  VariantClear(&v);
  return S_OK;
}

HRESULT ReadBag(IPropertyBag& bag, IErrorLog* log, SavedSettings& settings) {
  HRESULT result = S_OK;
  ForEachBagEntry(settings, [&](const BagEntry& entry, auto& value) {
    if (FAILED(result)) return;
    VARIANT given;
    VariantInit(&given);
    // A setting the bag lacks keeps its default.
    if (SUCCEEDED(bag.Read(entry.name, &given, log))) result = FromVariant(entry, given, value);
    VariantClear(&given);
  });
  return result;
}

}  // namespace

SavedSettings CVX_Graph::CurrentSettings() const {
  SavedSettings s;
  const Margins& m = graph_->margins();
  s.backColor = backColor_;
  s.enabled = enabled_ != VARIANT_FALSE;
  s.margins = {m.left, m.right, m.bottom, m.top};
  s.mouseMode = int32_t(graph_->mouseMode());
  s.legendEnabled = legendEnabled_;
  s.legendPosition = int32_t(graph_->legendPosition());
  s.horizontalScrollbar = graph_->horizontalScrollbar();
  s.verticalScrollbar = graph_->verticalScrollbar();
  s.propertiesModificationAllowed = propertiesModificationAllowed_;
  s.commonYAxesProps = comnYAxesProps_;
  s.commonYAxesPropsCheckBoxEnable = comnYAxesPropsChkBoxEnable_;
  s.barWidth = graph_->barWidth();
  s.gridWords = graph_->gridWords();
  s.gridColor = uint32_t(graph_->gridColor());
  s.hairlineSnap = showHZ_;
  return s;
}

// The same effects as the properties' own puts, with one layout and one
// notice to property browsers ("several changed") at the end.
void CVX_Graph::ApplySettings(const SavedSettings& s) {
  backColor_ = s.backColor;
  enabled_ = s.enabled ? VARIANT_TRUE : VARIANT_FALSE;
  graph_->SetMargins({.left = s.margins[0], .right = s.margins[1], .bottom = s.margins[2], .top = s.margins[3]});
  graph_->SetMouseMode(MouseMode(s.mouseMode));
  legendEnabled_ = s.legendEnabled;
  graph_->EnableLegend(s.legendEnabled != 0);
  graph_->SetLegendPosition(LegendPosition(s.legendPosition));
  graph_->SetScrollbars(s.horizontalScrollbar, s.verticalScrollbar);
  propertiesModificationAllowed_ = s.propertiesModificationAllowed;
  comnYAxesProps_ = s.commonYAxesProps;
  comnYAxesPropsChkBoxEnable_ = s.commonYAxesPropsCheckBoxEnable;
  graph_->SetBarWidth(s.barWidth);
  graph_->SetGridProps(int32_t(s.gridColor), s.gridWords);
  showHZ_ = s.hairlineSnap;
  graph_->UpdateLayoutAndRepaint();
  ViewChanged();
  propertyNotify_.Changed(DISPID_UNKNOWN);
}

HRESULT CVX_Graph::LoadSettings(const std::function<HRESULT(SavedSettings&)>& read) {
  SavedSettings settings = defaults_;
  HRESULT readStatus = S_OK;
  HRESULT hr = Guarded([&] { readStatus = read(settings); });
  if (FAILED(hr) || FAILED(readStatus)) return FAILED(hr) ? hr : readStatus;
  hr = Guarded([&] { ApplySettings(settings); });
  if (SUCCEEDED(hr)) dirty_ = false;
  return hr;
}

STDMETHODIMP CVX_Graph::GetClassID(CLSID* clsid) {
  if (!clsid) return E_POINTER;
  *clsid = CLSID_VX_Graph;
  return S_OK;
}

STDMETHODIMP CVX_Graph::IsDirty() { return dirty_ ? S_OK : S_FALSE; }

STDMETHODIMP CVX_Graph::InitNew() {
  return LoadSettings([](SavedSettings&) { return S_OK; });
}

STDMETHODIMP CVX_Graph::Load(LPSTREAM stream) {
  if (!stream) return E_POINTER;
  return LoadSettings([&](SavedSettings& settings) { return ReadStream(*stream, settings); });
}

STDMETHODIMP CVX_Graph::Save(LPSTREAM stream, BOOL clearDirty) {
  if (!stream) return E_POINTER;
  std::vector<uint8_t> bytes = EncodeSettings(CurrentSettings());
  ULONG written = 0;
  HRESULT hr = stream->Write(bytes.data(), ULONG(bytes.size()), &written);
  if (FAILED(hr)) return hr;
  if (written != bytes.size()) return STG_E_MEDIUMFULL;
  if (clearDirty) dirty_ = false;
  return S_OK;
}

// Every save writes every field, so the size is that of any save.
STDMETHODIMP CVX_Graph::GetSizeMax(ULARGE_INTEGER* size) {
  if (!size) return E_POINTER;
  size->QuadPart = EncodeSettings(CurrentSettings()).size();
  return S_OK;
}

STDMETHODIMP CVX_Graph::Load(IPropertyBag* bag, IErrorLog* log) {
  if (!bag) return E_POINTER;
  return LoadSettings([&](SavedSettings& settings) { return ReadBag(*bag, log, settings); });
}

STDMETHODIMP CVX_Graph::Save(IPropertyBag* bag, BOOL clearDirty, BOOL) {
  if (!bag) return E_POINTER;
  SavedSettings settings = CurrentSettings();
  HRESULT result = S_OK;
  ForEachBagEntry(settings, [&](const BagEntry& entry, auto& value) {
    if (FAILED(result)) return;
    VARIANT v;
    ToVariant(entry, value, v);
    result = bag->Write(entry.name, &v);
    VariantClear(&v);
  });
  if (SUCCEEDED(result) && clearDirty) dirty_ = false;
  return result;
}

STDMETHODIMP CVX_Graph::InitNew(IStorage* storage) {
  if (!storage) return E_POINTER;
  return InitNew();
}

STDMETHODIMP CVX_Graph::Load(IStorage* storage) {
  if (!storage) return E_POINTER;
  ComPtr<IStream> stream;
  HRESULT hr = storage->OpenStream(kContentsStream, nullptr, STGM_READ | STGM_SHARE_EXCLUSIVE, 0, stream.put());
  if (FAILED(hr)) return hr;
  return Load(stream.get());
}

STDMETHODIMP CVX_Graph::Save(IStorage* storage, BOOL) {
  if (!storage) return E_POINTER;
  HRESULT hr = WriteClassStg(storage, CLSID_VX_Graph);
  ComPtr<IStream> stream;
  if (SUCCEEDED(hr))
    hr = storage->CreateStream(kContentsStream, STGM_CREATE | STGM_WRITE | STGM_SHARE_EXCLUSIVE, 0, 0, stream.put());
  return SUCCEEDED(hr) ? Save(stream.get(), FALSE) : hr;
}

}  // namespace zel

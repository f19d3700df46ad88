// The control saved and loaded as containers do it: a designer through a
// stream, an HTML page or VB form through a property bag, Insert Object
// through a storage.
#include <ocidl.h>

#include <map>

#include "com_client.h"

namespace zel::testing {
namespace {

// A property bag of the simplest kind: names to values.
class MemoryBag : public IPropertyBag {
 public:
  std::map<std::wstring, Var> values;
  STDMETHODIMP QueryInterface(REFIID iid, void** object) override {
    if (!IsEqualIID(iid, IID_IUnknown) && !IsEqualIID(iid, IID_IPropertyBag)) return *object = nullptr, E_NOINTERFACE;
    *object = this;
    return S_OK;
  }
  STDMETHODIMP_(ULONG) AddRef() override { return 2; }
  STDMETHODIMP_(ULONG) Release() override { return 1; }
  STDMETHODIMP Read(LPCOLESTR name, VARIANT* value, IErrorLog*) override {
    auto found = values.find(name);
    if (found == values.end()) return E_INVALIDARG;
    return VariantCopy(value, &found->second.v);
  }
  STDMETHODIMP Write(LPCOLESTR name, VARIANT* value) override {
    VariantCopy(&values[name].v, value);
    return S_OK;
  }
};

template <typename I>
I* As(IUnknown* object, REFIID iid) {
  I* found = nullptr;
  object->QueryInterface(iid, reinterpret_cast<void**>(&found));
  return found;
}

class PersistenceTest : public ControlTest {
 protected:
  IVX_Graph* NewGraph() {
    IVX_Graph* fresh = nullptr;
    EXPECT_EQ(CoCreateInstance(CLSID_VX_Graph, nullptr, CLSCTX_INPROC_SERVER, IID_IVX_Graph,
                               reinterpret_cast<void**>(&fresh)), S_OK);
    return fresh;
  }

  // Every saved setting changed away from its default.
  static void ChangeEverySetting(IVX_Graph* g) {
    g->put_BackColor(RGB(1, 2, 3));
    g->put_Enabled(VARIANT_FALSE);
    Var margins = Var::Array({Var(5), Var(6), Var(7), Var(8)});
    g->put_Margins(margins.v);
    g->put_MouseMode(Var(L"ZOOM").v.bstrVal);
    g->put_LegendEnabled(1);
    g->put_LegendPosition(Var(L"LEFT").v.bstrVal);
    g->put_HorizontalScrollbarEnabled(1);
    g->put_VerticalScrollbarEnabled(1);
    g->put_PropertiesModificationAllowed(1);
    g->put_ComnYAxesProps(1);
    g->put_ComnYAxesPropsChkBoxEnable(1);
    g->PutBarWidth(Var(40).v);
    LONG color = RGB(9, 8, 7);
    short words[3] = {2, 3, 1};
    g->SetGridProps(&color, words);
    int snap = 7;
    g->enableHZ(&snap);
  }

  // The saved settings as the control reports them.
  static std::wstring Settings(IVX_Graph* g) {
    OLE_COLOR back = 0;
    VARIANT_BOOL enabled = 0;
    LONG legend = 0, horizontal = 0, vertical = 0, allowed = 0, common = 0, commonBox = 0, grid = 0;
    Var margins, barWidth;
    BSTR mode = nullptr, position = nullptr;
    short words[3] = {};
    int snap = 0;
    g->get_BackColor(&back), g->get_Enabled(&enabled), g->get_Margins(&margins.v), g->get_MouseMode(&mode);
    g->get_LegendEnabled(&legend), g->get_LegendPosition(&position);
    g->get_HorizontalScrollbarEnabled(&horizontal), g->get_VerticalScrollbarEnabled(&vertical);
    g->get_PropertiesModificationAllowed(&allowed), g->get_ComnYAxesProps(&common);
    g->get_ComnYAxesPropsChkBoxEnable(&commonBox), g->GetBarWidth(&barWidth.v), g->getGridProp(&grid, words);
    g->enableHZGrid(&snap);
    LONG* m = nullptr;
    SafeArrayAccessData(V_ARRAY(&margins.v), reinterpret_cast<void**>(&m));
    std::wstring s = std::to_wstring(m[0]) + L"," + std::to_wstring(m[1]) + L"," + std::to_wstring(m[2]) + L"," +
                     std::to_wstring(m[3]);
    SafeArrayUnaccessData(V_ARRAY(&margins.v));
    for (long n : {long(back), long(enabled), legend, horizontal, vertical, allowed, common, commonBox,
                   long(V_I4(&barWidth.v)), grid, long(words[0]), long(words[1]), long(words[2]), long(snap)})
      s += L"," + std::to_wstring(n);
    return s + L"," + Take(mode) + L"," + Take(position);
  }

  static IStream* SavedStream(IVX_Graph* g, BOOL clearDirty = TRUE) {
    IStream* stream = nullptr;
    CreateStreamOnHGlobal(nullptr, TRUE, &stream);
    IPersistStreamInit* persist = As<IPersistStreamInit>(g, IID_IPersistStreamInit);
    EXPECT_EQ(persist->Save(stream, clearDirty), S_OK);
    persist->Release();
    LARGE_INTEGER start{};
    stream->Seek(start, STREAM_SEEK_SET, nullptr);
    return stream;
  }

  static HRESULT LoadStream(IVX_Graph* g, const std::vector<uint8_t>& bytes) {
    IStream* stream = nullptr;
    CreateStreamOnHGlobal(nullptr, TRUE, &stream);
    if (!bytes.empty()) stream->Write(bytes.data(), ULONG(bytes.size()), nullptr);
    LARGE_INTEGER start{};
    stream->Seek(start, STREAM_SEEK_SET, nullptr);
    IPersistStreamInit* persist = As<IPersistStreamInit>(g, IID_IPersistStreamInit);
    HRESULT hr = persist->Load(stream);
    persist->Release();
    stream->Release();
    return hr;
  }

  static std::vector<uint8_t> Bytes(IStream* stream) {
    STATSTG stat{};
    stream->Stat(&stat, STATFLAG_NONAME);
    std::vector<uint8_t> bytes(size_t(stat.cbSize.QuadPart));
    LARGE_INTEGER start{};
    stream->Seek(start, STREAM_SEEK_SET, nullptr);
    stream->Read(bytes.data(), ULONG(bytes.size()), nullptr);
    return bytes;
  }
};

TEST_F(PersistenceTest, AStreamCarriesEverySettingIntoANewControl) {
  std::wstring defaults = Settings(graph);
  IPersistStreamInit* persist = As<IPersistStreamInit>(graph, IID_IPersistStreamInit);
  EXPECT_EQ(persist->IsDirty(), S_FALSE);
  ChangeEverySetting(graph);
  std::wstring changed = Settings(graph);
  ASSERT_NE(changed, defaults);
  EXPECT_EQ(persist->IsDirty(), S_OK);

  IStream* stream = SavedStream(graph);
  EXPECT_EQ(persist->IsDirty(), S_FALSE) << "saved with clearDirty";
  std::vector<uint8_t> bytes = Bytes(stream);
  ULARGE_INTEGER sizeMax{};
  EXPECT_EQ(persist->GetSizeMax(&sizeMax), S_OK);
  EXPECT_EQ(sizeMax.QuadPart, bytes.size());
  stream->Release();

  // A newer writer's field, which this reader skips: tag 999, four bytes.
  std::vector<uint8_t> newer = bytes;
  for (uint8_t b : {0xE7, 0x03, 4, 0, 1, 2, 3, 4}) newer.push_back(b);
  newer[8] = uint8_t(newer[8] + 8);
  IVX_Graph* fresh = NewGraph();
  EXPECT_EQ(LoadStream(fresh, newer), S_OK);
  EXPECT_EQ(Settings(fresh), changed);
  IPersistStreamInit* freshPersist = As<IPersistStreamInit>(fresh, IID_IPersistStreamInit);
  EXPECT_EQ(freshPersist->IsDirty(), S_FALSE) << "just loaded";
  EXPECT_EQ(freshPersist->InitNew(), S_OK);
  EXPECT_EQ(Settings(fresh), defaults);
  freshPersist->Release();
  fresh->Release();
  persist->Release();
}

TEST_F(PersistenceTest, APropertyBagCarriesEverySettingByName) {
  std::wstring defaults = Settings(graph);
  ChangeEverySetting(graph);
  MemoryBag bag;
  IPersistPropertyBag* persist = As<IPersistPropertyBag>(graph, IID_IPersistPropertyBag);
  EXPECT_EQ(persist->Save(&bag, TRUE, TRUE), S_OK);
  persist->Release();
  EXPECT_EQ(bag.values[L"MouseMode"].Text(), L"ZOOM");
  EXPECT_EQ(bag.values[L"MarginTop"].type(), VT_I4);

  IVX_Graph* fresh = NewGraph();
  IPersistPropertyBag* freshPersist = As<IPersistPropertyBag>(fresh, IID_IPersistPropertyBag);
  EXPECT_EQ(freshPersist->Load(&bag, nullptr), S_OK);
  EXPECT_EQ(Settings(fresh), Settings(graph));

  // An HTML page gives texts, and only some of them; the rest are defaults.
  MemoryBag page;
  page.values[L"BackColor"] = Var(L"&H0000FF");
  page.values[L"MouseMode"] = Var(L"PAN");
  page.values[L"Enabled"] = Var(L"0");
  EXPECT_EQ(freshPersist->Load(&page, nullptr), S_OK);
  OLE_COLOR back = 0;
  BSTR mode = nullptr;
  VARIANT_BOOL enabled = VARIANT_TRUE;
  fresh->get_BackColor(&back), fresh->get_MouseMode(&mode), fresh->get_Enabled(&enabled);
  EXPECT_EQ(back, 0xFFu);
  EXPECT_EQ(Take(mode), L"PAN");
  EXPECT_EQ(enabled, VARIANT_FALSE);
  LONG legend = 1;
  fresh->get_LegendEnabled(&legend);
  EXPECT_EQ(legend, 0) << "a setting the page does not give is the default";
  freshPersist->Release();
  fresh->Release();
  EXPECT_NE(defaults, Settings(graph));
}

TEST_F(PersistenceTest, DamagedStreamsAndBagsAreRefusedAndChangeNothing) {
  ChangeEverySetting(graph);
  IStream* stream = SavedStream(graph, FALSE);
  std::vector<uint8_t> good = Bytes(stream);
  stream->Release();
  std::wstring before = Settings(graph);

  auto patched = [&](size_t at, uint8_t value) {
    std::vector<uint8_t> bytes = good;
    bytes[at] = value;
    return bytes;
  };
  // The mouse mode field (tag 4) follows the header and three fields of 8,
  // 5 and 20 bytes: its size is at 47, its value at 49.
  std::vector<uint8_t> badMode = good;
  ASSERT_EQ(badMode[45], 4);
  badMode[49] = 9;
  const std::pair<std::vector<uint8_t>, HRESULT> cases[] = {
      {{}, STG_E_READFAULT},
      {std::vector<uint8_t>(good.begin(), good.end() - 1), STG_E_READFAULT},
      {patched(0, 'X'), STG_E_INVALIDHEADER},
      {patched(11, 0x7F), STG_E_DOCFILECORRUPT},
      {patched(47, 3), STG_E_DOCFILECORRUPT},
      {badMode, STG_E_DOCFILECORRUPT},
  };
  for (const auto& [bytes, status] : cases) {
    EXPECT_EQ(LoadStream(graph, bytes), status) << bytes.size();
    EXPECT_EQ(Settings(graph), before);
  }

  MemoryBag bag;
  bag.values[L"MarginLeft"] = Var(1);
  bag.values[L"MarginTop"] = Var(L"high");
  IPersistPropertyBag* persist = As<IPersistPropertyBag>(graph, IID_IPersistPropertyBag);
  EXPECT_EQ(persist->Load(&bag, nullptr), STG_E_INVALIDPARAMETER);
  persist->Release();
  EXPECT_EQ(Settings(graph), before);
}

// Insert Object: OleCreate starts the control on a new storage, OleSave
// writes it, OleLoad brings it back.
TEST_F(PersistenceTest, AStorageHoldsTheControlForInsertObject) {
  ILockBytes* bytes = nullptr;
  IStorage* storage = nullptr;
  ASSERT_EQ(CreateILockBytesOnHGlobal(nullptr, TRUE, &bytes), S_OK);
  ASSERT_EQ(StgCreateDocfileOnILockBytes(bytes, STGM_CREATE | STGM_READWRITE | STGM_SHARE_EXCLUSIVE, 0, &storage),
            S_OK);
  IOleObject* object = nullptr;
  ASSERT_EQ(OleCreate(CLSID_VX_Graph, IID_IOleObject, OLERENDER_NONE, nullptr, nullptr, storage,
                      reinterpret_cast<void**>(&object)), S_OK);
  IVX_Graph* created = As<IVX_Graph>(object, IID_IVX_Graph);
  ChangeEverySetting(created);
  IPersistStorage* persist = As<IPersistStorage>(object, IID_IPersistStorage);
  EXPECT_EQ(OleSave(persist, storage, TRUE), S_OK);
  EXPECT_EQ(persist->SaveCompleted(nullptr), S_OK);
  std::wstring saved = Settings(created);
  persist->Release();
  created->Release();
  object->Close(OLECLOSE_NOSAVE);
  object->Release();

  IOleObject* loaded = nullptr;
  ASSERT_EQ(OleLoad(storage, IID_IOleObject, nullptr, reinterpret_cast<void**>(&loaded)), S_OK);
  IVX_Graph* reloaded = As<IVX_Graph>(loaded, IID_IVX_Graph);
  EXPECT_EQ(Settings(reloaded), saved);
  reloaded->Release();
  loaded->Release();
  storage->Release();
  bytes->Release();
}

}  // namespace
}  // namespace zel::testing

// What a hostile or careless host found: arguments shaped to make the control
// read or write past what the host gave it, windows too large to draw off
// screen, and the cost of a refused call. Each call returns, touches only
// the caller's own memory and leaves the graph as it was when refused.
#include <ocidl.h>

#include <chrono>
#include <cstring>

#include "com_client.h"
#include "hosted_control.h"
#include "memory_canvas.h"

namespace zel::testing {
namespace {

constexpr DISPID kGetVerId = 0x37;
constexpr DISPID kSetGridPropsId = 0x3A;
constexpr DISPID kGetGridPropId = 0x3B;
constexpr DISPID kSetXmlColorId = 0x3C;
constexpr DISPID kGetXmlColorId = 0x3D;

// An array whose first dimension claims four elements while its second
// holds none, so the data holds no element at all.
Var FourByNothing(VARTYPE type) {
  SAFEARRAYBOUND bounds[2] = {{4, 0}, {0, 0}};
  Var a = Var::Null(VARTYPE(VT_ARRAY | type));
  V_ARRAY(&a.v) = SafeArrayCreate(type, 2, bounds);
  return a;
}

// A record of some other type (`size` bytes of `fill`, ending where a
// guard page starts) whose information claims the control's record GUID.
class ForeignRecord : public IRecordInfo {
 public:
  ForeignRecord(REFGUID claimed, ULONG size, BYTE fill) : guid_(claimed), size_(size) {
    SYSTEM_INFO system;
    GetSystemInfo(&system);
    page_ = system.dwPageSize;
    pages_ = static_cast<BYTE*>(VirtualAlloc(nullptr, 2 * page_, MEM_RESERVE | MEM_COMMIT, PAGE_READWRITE));
    DWORD old = 0;
    VirtualProtect(pages_ + page_, page_, PAGE_NOACCESS, &old);
    data_ = pages_ + page_ - size;
    std::memset(data_, fill, size);
  }
  ~ForeignRecord() { VirtualFree(pages_, 0, MEM_RELEASE); }

  // The record as a host passes it, by value.
  VARIANT Argument() {
    VARIANT v;
    V_VT(&v) = VT_RECORD, V_RECORD(&v) = data_, V_RECORDINFO(&v) = this;
    return v;
  }
  void* Data() const { return data_; }
  bool Untouched(BYTE fill) const {
    for (ULONG i = 0; i < size_; ++i)
      if (data_[i] != fill) return false;
    return true;
  }
  LONG refs = 1;

  STDMETHODIMP QueryInterface(REFIID iid, void** object) override {
    bool mine = IsEqualIID(iid, IID_IUnknown) || IsEqualIID(iid, IID_IRecordInfo);
    *object = mine ? this : nullptr;
    if (mine) AddRef();
    return mine ? S_OK : E_NOINTERFACE;
  }
  STDMETHODIMP_(ULONG) AddRef() override { return ULONG(++refs); }
  STDMETHODIMP_(ULONG) Release() override { return ULONG(--refs); }
  STDMETHODIMP RecordInit(PVOID) override { return E_NOTIMPL; }
  STDMETHODIMP RecordClear(PVOID) override { return E_NOTIMPL; }
  STDMETHODIMP RecordCopy(PVOID, PVOID) override { return E_NOTIMPL; }
  STDMETHODIMP GetGuid(GUID* guid) override {
    *guid = guid_;
    return S_OK;
  }
  STDMETHODIMP GetName(BSTR* name) override {
    *name = SysAllocString(L"Foreign");
    return S_OK;
  }
  STDMETHODIMP GetSize(ULONG* size) override {
    *size = size_;
    return S_OK;
  }
  STDMETHODIMP GetTypeInfo(ITypeInfo**) override { return E_NOTIMPL; }
  STDMETHODIMP GetField(PVOID, LPCOLESTR, VARIANT*) override { return E_NOTIMPL; }
  STDMETHODIMP GetFieldNoCopy(PVOID, LPCOLESTR, VARIANT*, PVOID*) override { return E_NOTIMPL; }
  STDMETHODIMP PutField(ULONG, PVOID, LPCOLESTR, VARIANT*) override { return E_NOTIMPL; }
  STDMETHODIMP PutFieldNoCopy(ULONG, PVOID, LPCOLESTR, VARIANT*) override { return E_NOTIMPL; }
  STDMETHODIMP GetFieldNames(ULONG*, BSTR*) override { return E_NOTIMPL; }
  BOOL STDMETHODCALLTYPE IsMatchingType(IRecordInfo*) override { return TRUE; }
  PVOID STDMETHODCALLTYPE RecordCreate() override { return nullptr; }
  STDMETHODIMP RecordCreateCopy(PVOID, PVOID*) override { return E_NOTIMPL; }
  STDMETHODIMP RecordDestroy(PVOID) override { return E_NOTIMPL; }

 private:
  GUID guid_;
  ULONG size_;
  DWORD page_ = 0;
  BYTE* pages_ = nullptr;
  BYTE* data_ = nullptr;
};

class HostileHostTest : public ControlTest {
 protected:
  void BuildGraph() {
    ASSERT_EQ(Call(L"AddXAxis", {1, L"REAL", Var(), 0.0}).hr, S_OK);
    ASSERT_EQ(Call(L"AddYAxis", {1, L"REAL", Var(), 0.0}).hr, S_OK);
    ASSERT_EQ(Call(L"AddDataset", {10, L"PLOT", 1, 1, Var()}).hr, S_OK);
    ASSERT_EQ(Call(L"SetDatasetValues", {10, Var::Array({1.0, 2.0}), Var::Array({3.0, 4.0}),
                                         Var::Array({0, 0})}).hr, S_OK);
  }
  LONG PointsOf(LONG id) {
    Outcome values = Call(L"GetDatasetValues", {id});
    return values.hr == S_OK ? values.result[0].UpperBound() + 1 : -1;
  }

  // Invokes a dispid directly with arguments in order and a chosen riid.
  HRESULT InvokeId(DISPID id, std::vector<VARIANT> args, REFIID riid = IID_NULL) {
    std::vector<VARIANT> reversed(args.rbegin(), args.rend());
    DISPPARAMS params{reversed.data(), nullptr, UINT(reversed.size()), 0};
    Var result;
    EXCEPINFO exception{};
    UINT argumentError = 0;
    HRESULT hr = graph->Invoke(id, riid, LOCALE_USER_DEFAULT, DISPATCH_METHOD, &params, &result.v, &exception,
                               &argumentError);
    SysFreeString(exception.bstrDescription);
    SysFreeString(exception.bstrSource);
    SysFreeString(exception.bstrHelpFile);
    return hr;
  }
};

TEST_F(HostileHostTest, ArraysAreReadWithinTheElementsTheyHold) {
  BuildGraph();
  for (VARTYPE type : {VT_DISPATCH, VT_UNKNOWN, VT_VARIANT, VT_BSTR, VT_R8}) {
    Var empty = FourByNothing(type);
    EXPECT_EQ(Put(L"ZoomRect", empty).hr, S_OK) << type;
    EXPECT_EQ(Put(L"Margins", empty).hr, S_OK) << type;
    EXPECT_EQ(Call(L"SetDatasetValues", {10, empty, empty, empty}).hr, S_OK) << type;
    EXPECT_EQ(PointsOf(10), 0) << type;
    EXPECT_EQ(Call(L"SetDatasetValues", {10, Var::Array({1.0}), Var::Array({2.0}), empty}).hr, S_OK) << type;
    EXPECT_EQ(PointsOf(10), 1) << "status values the array lacks read as 0";
    EXPECT_EQ(graph->setMarkerColorStatus(&empty.v), S_OK) << type;
  }
  Outcome zoom = Get(L"ZoomRect");
  EXPECT_EQ(zoom.result.UpperBound(), 3);

  // A two-dimensional array gives its first column, which the data holds.
  SAFEARRAYBOUND bounds[2] = {{4, 0}, {2, 0}};
  Var grid = Var::Null(VT_ARRAY | VT_I4);
  V_ARRAY(&grid.v) = SafeArrayCreate(VT_I4, 2, bounds);
  LONG* cells = nullptr;
  SafeArrayAccessData(V_ARRAY(&grid.v), reinterpret_cast<void**>(&cells));
  for (LONG i = 0; i < 8; ++i) cells[i] = 10 + i;
  SafeArrayUnaccessData(V_ARRAY(&grid.v));
  ASSERT_EQ(Put(L"Margins", grid).hr, S_OK);
  Outcome margins = Get(L"Margins");
  ASSERT_EQ(margins.result.type(), VT_ARRAY | VT_I4);
  SafeArrayAccessData(V_ARRAY(&margins.result.v), reinterpret_cast<void**>(&cells));
  for (LONG i = 0; i < 4; ++i) EXPECT_EQ(cells[i], 10 + i);
  SafeArrayUnaccessData(V_ARRAY(&margins.result.v));
}

// An array tagged with one element type but holding another: pointer
// elements are never made up from the bytes of plain ones.
TEST_F(HostileHostTest, ArraysOfAnotherTypeThanTheirTagGiveNoObjects) {
  BuildGraph();
  Var numbers = Var::Typed<int64_t>(VT_I8, {0x4141414141414141, 0x4242424242424242});
  V_VT(&numbers.v) = VT_ARRAY | VT_DISPATCH;
  Outcome outcome = Call(L"SetDatasetValues", {10, numbers, numbers, Var::Array({0, 0})});
  V_VT(&numbers.v) = VT_ARRAY | VT_I8;
  EXPECT_EQ(outcome.hr, DISP_E_EXCEPTION);
  EXPECT_EQ(PointsOf(10), 2);
}

TEST_F(HostileHostTest, ForeignRecordsClaimingTheControlsGuidAreRefused) {
  BuildGraph();
  const GUID axisGuid = {0x1376EC82, 0xAAC4, 0x4D18, {0x9F, 0x8F, 0xA6, 0xE0, 0x56, 0x3D, 0x4E, 0x15}};
  const GUID datasetGuid = {0x88A7E2DB, 0x2F1D, 0x4F59, {0xA7, 0xD4, 0xFE, 0x8F, 0x6C, 0xBC, 0x2C, 0x78}};
  Var plot(L"PLOT");
  for (BYTE fill : {BYTE(0), BYTE(0x41)}) {
    ForeignRecord dataset(datasetGuid, 24, fill), axis(axisGuid, 24, fill);
    VARIANT datasetProps = dataset.Argument(), axisProps = axis.Argument();
    EXPECT_EQ(graph->SetDatasetProperties(10, datasetProps), E_INVALIDARG);
    EXPECT_EQ(graph->AddDataset(11, V_BSTR(&plot.v), 1, 1, datasetProps), E_INVALIDARG);
    EXPECT_EQ(graph->SetXAxisProperties(1, axisProps), E_INVALIDARG);
    EXPECT_EQ(graph->AddYAxis(2, nullptr, axisProps, 0, Var::Missing().v, Var::Missing().v), E_INVALIDARG);
    VARIANT byReference;
    V_VT(&byReference) = VT_BYREF | VT_VARIANT, V_VARIANTREF(&byReference) = &axisProps;
    EXPECT_EQ(graph->SetYAxisProperties(1, byReference), E_INVALIDARG);
    EXPECT_TRUE(dataset.Untouched(fill) && axis.Untouched(fill)) << "annotationFormat is not cleared either";
    EXPECT_EQ(dataset.refs, 1);
    EXPECT_EQ(axis.refs, 1);
  }
  EXPECT_EQ(Call(L"EnumYAxes", {}).result.UpperBound(), 0);
  EXPECT_EQ(Call(L"EnumDatasets", {}).result.UpperBound(), 0);
}

// A reference whose tag has the reference bits but names something smaller
// than a VARIANT (a DECIMAL, an IUnknown pointer) holds no record, whatever
// its bytes say: it is refused, not read past its end.
TEST_F(HostileHostTest, ReferencesToLessThanAVariantHoldNoRecord) {
  BuildGraph();
  const GUID axisGuid = {0x1376EC82, 0xAAC4, 0x4D18, {0x9F, 0x8F, 0xA6, 0xE0, 0x56, 0x3D, 0x4E, 0x15}};
  for (VARTYPE type : {VARTYPE(VT_DECIMAL), VARTYPE(VT_UNKNOWN)}) {
    ForeignRecord memory(axisGuid, type == VT_DECIMAL ? sizeof(DECIMAL) : sizeof(void*), BYTE(VT_RECORD));
    VARIANT reference;
    V_VT(&reference) = VARTYPE(VT_BYREF | type), V_BYREF(&reference) = memory.Data();
    EXPECT_EQ(graph->SetYAxisProperties(1, reference), E_INVALIDARG) << type;
    EXPECT_EQ(graph->SetDatasetProperties(10, reference), E_INVALIDARG) << type;
  }
}

TEST_F(HostileHostTest, InvokeKnowsOnlyTheNullInterface) {
  EXPECT_EQ(InvokeId(kGetVerId, {}, IID_IDispatch), DISP_E_UNKNOWNINTERFACE);
  EXPECT_EQ(InvokeId(kGetVerId, {}, IID_IVX_Graph), DISP_E_UNKNOWNINTERFACE);
  EXPECT_EQ(InvokeId(0x7FFF, {}, IID_IUnknown), DISP_E_UNKNOWNINTERFACE);
  EXPECT_EQ(InvokeId(kGetVerId, {Var().v}), S_OK);
}

// A late-bound caller has one variable where the vtable layout has three
// words or two colours: only that variable is written, or read.
TEST_F(HostileHostTest, LateBoundCallsTouchOnlyTheVariablePassed) {
  LONG color = 0x123456;
  short words[3] = {7, 8, 9};
  ASSERT_EQ(graph->SetGridProps(&color, words), S_OK);

  struct Guarded {
    short before = 0x5A5A;
    short value = 0;
    short after[3] = {0x5A5A, 0x5A5A, 0x5A5A};
  } grid;
  LONG readColor = 0;
  VARIANT colorRef, wordRef;
  V_VT(&colorRef) = VT_BYREF | VT_I4, V_I4REF(&colorRef) = &readColor;
  V_VT(&wordRef) = VT_BYREF | VT_I2, V_I2REF(&wordRef) = &grid.value;
  EXPECT_EQ(InvokeId(kGetGridPropId, {colorRef, wordRef}), S_OK);
  EXPECT_EQ(readColor, 0x123456);
  EXPECT_EQ(grid.value, 7);
  EXPECT_EQ(grid.before, 0x5A5A);
  for (short word : grid.after) EXPECT_EQ(word, 0x5A5A);

  // The put reads the one word and keeps the other two.
  grid.value = 3;
  EXPECT_EQ(InvokeId(kSetGridPropsId, {colorRef, wordRef}), S_OK);
  short vtableWords[5] = {-1, -1, -1, -1, -1};
  ASSERT_EQ(graph->getGridProp(&readColor, vtableWords), S_OK);
  EXPECT_EQ(vtableWords[0], 3);
  EXPECT_EQ(vtableWords[1], 8);
  EXPECT_EQ(vtableWords[2], 9);
  EXPECT_EQ(vtableWords[3], -1) << "the vtable layout is three words";

  LONG colors[2] = {0x111, 0x222};
  ASSERT_EQ(graph->SetXMLColor(colors), S_OK);
  LONG guardedColor[3] = {0x5A5A, 0x333, 0x5A5A};
  VARIANT colorsRef;
  V_VT(&colorsRef) = VT_BYREF | VT_I4, V_I4REF(&colorsRef) = &guardedColor[1];
  EXPECT_EQ(InvokeId(kSetXmlColorId, {colorsRef}), S_OK);
  guardedColor[1] = 0;
  EXPECT_EQ(InvokeId(kGetXmlColorId, {colorsRef}), S_OK);
  EXPECT_EQ(guardedColor[1], 0x333);
  EXPECT_EQ(guardedColor[2], 0x5A5A);
  LONG vtableColors[3] = {0, 0, -1};
  ASSERT_EQ(graph->GetXMLColor(vtableColors), S_OK);
  EXPECT_EQ(vtableColors[0], 0x333);
  EXPECT_EQ(vtableColors[1], 0x222) << "the second colour stays";
  EXPECT_EQ(vtableColors[2], -1);
}

// GetVer writes into the value part of a numeric or empty VARIANT, keeping
// its tag; any other VARIANT is cleared and given the version as VT_R4.
TEST_F(HostileHostTest, GetVerNeverWritesIntoAPointer) {
  ASSERT_EQ(graph->GetPreconfVersion(Var(1.5f).v), S_OK);
  Var text(L"caller's text");
  EXPECT_EQ(InvokeId(kGetVerId, {Var::Ref(text).v}), S_OK);
  EXPECT_EQ(text.type(), VT_R4);
  EXPECT_EQ(V_R4(&text.v), 1.5f);
  Var copy(text);  // the host's next step, which used to crash
  EXPECT_EQ(copy.type(), VT_R4);

  Var array = Var::Array({1, 2});
  EXPECT_EQ(graph->GetVer(&array.v), S_OK);
  EXPECT_EQ(array.type(), VT_R4);

  Var number(0L), empty;
  EXPECT_EQ(graph->GetVer(&number.v), S_OK);
  EXPECT_EQ(number.type(), VT_I4);
  float bits = 0;
  std::memcpy(&bits, &V_I4(&number.v), 4);
  EXPECT_EQ(bits, 1.5f);
  EXPECT_EQ(InvokeId(kGetVerId, {Var::Ref(empty).v}), S_OK);
  EXPECT_EQ(empty.type(), VT_EMPTY);
}

TEST_F(HostileHostTest, RefusedCallsCostLittle) {
  graph->RemoveDataset(99);  // the first refusal may load what the later ones reuse
  auto start = std::chrono::steady_clock::now();
  constexpr int kCalls = 2000;
  for (int i = 0; i < kCalls; ++i) ASSERT_EQ(graph->RemoveDataset(99), E_INVALIDARG);
  double perCall = std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - start).count() / kCalls;
  EXPECT_LT(perCall, 0.1) << "milliseconds per refused call";
  std::wstring source;
  ErrorDescription(&source);
  EXPECT_EQ(source, L"ZELGraph.VX_Graph.1");
}

class HostHookTest : public HostedControlTest {};

// A host that watches dialogs with its own CBT hook (to centre or answer
// them) still sees the message boxes the control shows: the control's own
// hook passes the activation on.
TEST_F(HostHookTest, TheHostsHookSeesTheControlsMessageBoxes) {
  static int activations = 0;
  static HHOOK hook = nullptr;
  struct Host {
    static bool IsBox(HWND window) {
      wchar_t name[16] = L"";
      GetClassNameW(window, name, 16);
      return std::wstring(name) == L"#32770";
    }
    static LRESULT CALLBACK Cbt(int code, WPARAM wParam, LPARAM lParam) {
      if (code == HCBT_ACTIVATE && IsBox(reinterpret_cast<HWND>(wParam))) {
        ++activations;
        PostMessageW(reinterpret_cast<HWND>(wParam), WM_COMMAND, IDOK, 0);
      }
      return CallNextHookEx(hook, code, wParam, lParam);
    }
    // Closes a box the hook never heard of, so that the test ends.
    static BOOL CALLBACK CloseBox(HWND window, LPARAM) {
      if (IsBox(window) && IsWindowVisible(window)) PostMessageW(window, WM_COMMAND, IDOK, 0);
      return TRUE;
    }
    static void CALLBACK Late(HWND, UINT, UINT_PTR, DWORD) {
      EnumThreadWindows(GetCurrentThreadId(), CloseBox, 0);
    }
  };
  activations = 0;
  hook = SetWindowsHookExW(WH_CBT, Host::Cbt, nullptr, GetCurrentThreadId());
  UINT_PTR fallback = SetTimer(nullptr, 0, 200, Host::Late);
  SendMessageW(window, WM_KEYDOWN, VK_LEFT, 1);  // no hairline: the operator is told to add one
  KillTimer(nullptr, fallback);
  UnhookWindowsHookEx(hook);
  EXPECT_EQ(activations, 1);
}

class HugeWindowTest : public HostedControlTest {};

// A host window larger than any screen: painting and drawing make a surface
// only as large as what is drawn.
TEST_F(HugeWindowTest, PaintsAndDrawsOnlyWhatIsSeen) {
  AddRealAxes();
  SetWindowPos(frame, nullptr, 0, 0, 32767, 32767, SWP_NOZORDER);
  SetWindowPos(host, nullptr, 0, 0, 32767, 32767, SWP_NOZORDER);
  ShowWindow(frame, SW_SHOW);
  RECT client{};
  GetClientRect(window, &client);
  ASSERT_GT(client.right, 20000) << "the platform kept the window smaller";

  auto start = std::chrono::steady_clock::now();
  RedrawWindow(window, nullptr, nullptr, RDW_INVALIDATE | RDW_UPDATENOW);
  IViewObject2* view = nullptr;
  graph->QueryInterface(IID_IViewObject2, reinterpret_cast<void**>(&view));
  ASSERT_NE(view, nullptr);
  MemoryCanvas canvas(1, 1, RGB(1, 2, 3));
  ASSERT_EQ(graph->put_BackColor(0x00336699), S_OK);
  RECTL bounds{0, 0, 1, 1};
  EXPECT_EQ(view->Draw(DVASPECT_CONTENT, -1, nullptr, nullptr, nullptr, canvas.dc(), &bounds, nullptr, nullptr, 0),
            S_OK);
  view->Release();
  double seconds = std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
  EXPECT_EQ(canvas.Pixel(0, 0), COLORREF(0x00336699));
  EXPECT_LT(seconds, 1.0);
}

// Drawing only part of the picture (a clipped target) gives the same pixels
// there as drawing all of it.
TEST_F(HugeWindowTest, APartDrawnMatchesTheWhole) {
  AddRealAxes();
  AddPlot(10);
  Var xs = Var::Array({0.0, 5.0, 10.0}), ys = Var::Array({0.0, 10.0, 3.0}), status = Var::Array({0, 0, 0});
  ASSERT_EQ(graph->SetDatasetValues(10, xs.v, ys.v, status.v, Var::Missing().v), S_OK);
  IViewObject2* view = nullptr;
  graph->QueryInterface(IID_IViewObject2, reinterpret_cast<void**>(&view));
  ASSERT_NE(view, nullptr);
  RECT client{};
  GetClientRect(window, &client);
  RECTL bounds{0, 0, client.right, client.bottom};
  MemoryCanvas whole(client.right, client.bottom), part(client.right, client.bottom, RGB(1, 2, 3));
  ASSERT_EQ(view->Draw(DVASPECT_CONTENT, -1, nullptr, nullptr, nullptr, whole.dc(), &bounds, nullptr, nullptr, 0),
            S_OK);
  RECT seen{37, 41, client.right - 23, client.bottom - 19};
  IntersectClipRect(part.dc(), seen.left, seen.top, seen.right, seen.bottom);
  ASSERT_EQ(view->Draw(DVASPECT_CONTENT, -1, nullptr, nullptr, nullptr, part.dc(), &bounds, nullptr, nullptr, 0),
            S_OK);
  view->Release();
  int differences = 0, outside = 0;
  for (int y = 0; y < client.bottom; ++y)
    for (int x = 0; x < client.right; ++x) {
      POINT p{x, y};
      if (PtInRect(&seen, p)) differences += part.Pixel(x, y) != whole.Pixel(x, y);
      else outside += part.Pixel(x, y) != RGB(1, 2, 3);
    }
  EXPECT_EQ(differences, 0);
  EXPECT_EQ(outside, 0);
}

}  // namespace
}  // namespace zel::testing

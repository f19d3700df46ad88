#pragma once
// A COM client as a host application is one: creates the control by ProgID
// and calls it late-bound, by name through IDispatch, or early-bound.
#include <windows.h>
#include <oleauto.h>

#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <vector>

#include "zelgraph_idl.h"

namespace zel::testing {

// An owned VARIANT.
struct Var {
  VARIANT v;
  Var() { VariantInit(&v); }
  Var(long i) : Var() { V_VT(&v) = VT_I4, V_I4(&v) = i; }
  Var(int i) : Var(long(i)) {}
  Var(double d) : Var() { V_VT(&v) = VT_R8, V_R8(&v) = d; }
  Var(float f) : Var() { V_VT(&v) = VT_R4, V_R4(&v) = f; }
  Var(const wchar_t* s) : Var() { V_VT(&v) = VT_BSTR, V_BSTR(&v) = SysAllocString(s); }
  Var(const Var& o) : Var() { VariantCopy(&v, const_cast<VARIANT*>(&o.v)); }
  Var& operator=(const Var& o) {
    VariantCopy(&v, const_cast<VARIANT*>(&o.v));
    return *this;
  }
  ~Var() { VariantClear(&v); }
  VARTYPE type() const { return V_VT(&v); }
  static Var Missing() {
    Var m;
    V_VT(&m.v) = VT_ERROR, V_ERROR(&m.v) = DISP_E_PARAMNOTFOUND;
    return m;
  }
  // A null pointer of a pointer type (VT_BSTR, VT_DISPATCH, VT_ARRAY | ...).
  static Var Null(VARTYPE type) {
    Var n;
    V_VT(&n.v) = type, V_BYREF(&n.v) = nullptr;
    return n;
  }
  // A reference to `target`, which must outlive it.
  static Var Ref(Var& target) {
    Var r;
    V_VT(&r.v) = VT_BYREF | VT_VARIANT, V_VARIANTREF(&r.v) = &target.v;
    return r;
  }
  // An array of VARIANTs, as scripts make them.
  static Var Array(const std::vector<Var>& items, LONG lowerBound = 0) {
    SAFEARRAYBOUND bound{ULONG(items.size()), lowerBound};
    Var a = Null(VT_ARRAY | VT_VARIANT);
    V_ARRAY(&a.v) = SafeArrayCreate(VT_VARIANT, 1, &bound);
    for (LONG i = 0; i < LONG(items.size()); ++i) {
      LONG index = lowerBound + i;
      SafeArrayPutElement(V_ARRAY(&a.v), &index, const_cast<VARIANT*>(&items[size_t(i)].v));
    }
    return a;
  }
  // A plain typed array, as compiled hosts make them.
  template <typename T>
  static Var Typed(VARTYPE type, const std::vector<T>& items) {
    Var a = Null(VARTYPE(VT_ARRAY | type));
    V_ARRAY(&a.v) = SafeArrayCreateVector(type, 0, ULONG(items.size()));
    void* data = nullptr;
    SafeArrayAccessData(V_ARRAY(&a.v), &data);
    if (!items.empty()) memcpy(data, items.data(), items.size() * sizeof(T));
    SafeArrayUnaccessData(V_ARRAY(&a.v));
    return a;
  }
  // Element i of a one-dimensional array of VARIANTs.
  Var operator[](LONG i) const {
    Var element;
    SafeArrayGetElement(V_ARRAY(&v), &i, &element.v);
    return element;
  }
  LONG UpperBound() const {
    LONG upper = -1;
    SafeArrayGetUBound(V_ARRAY(&v), 1, &upper);
    return upper;
  }
  std::wstring Text() const { return V_VT(&v) == VT_BSTR && V_BSTR(&v) ? V_BSTR(&v) : L""; }
};

// Takes ownership of a BSTR and returns it as a string ("" for null).
inline std::wstring Take(BSTR text) {
  std::wstring s = text ? text : L"";
  SysFreeString(text);
  return s;
}

// ATL's container window class (Wine's atl.dll), registered once for the
// whole process however many suites ask for it.
inline bool AtlAxWinReady() {
  static const bool ready = [] {
    auto init = reinterpret_cast<BOOL(WINAPI*)()>(
        reinterpret_cast<void*>(GetProcAddress(LoadLibraryW(L"atl.dll"), "AtlAxWinInit")));
    return init && init();
  }();
  return ready;
}

// An event sink that records what it is told (the dispid, then the
// arguments in order) and may call back in through `onEvent`.
class Sink : public IDispatch {
 public:
  std::vector<std::vector<Var>> calls;
  std::function<void(DISPID)> onEvent;
  DWORD cookie = 0;

  STDMETHODIMP QueryInterface(REFIID iid, void** object) override {
    bool mine = IsEqualIID(iid, IID_IUnknown) || IsEqualIID(iid, IID_IDispatch) ||
                IsEqualIID(iid, DIID__IVX_GraphEvents);
    *object = mine ? this : nullptr;
    return mine ? S_OK : E_NOINTERFACE;
  }
  STDMETHODIMP_(ULONG) AddRef() override { return 2; }
  STDMETHODIMP_(ULONG) Release() override { return 1; }
  STDMETHODIMP GetTypeInfoCount(UINT*) override { return E_NOTIMPL; }
  STDMETHODIMP GetTypeInfo(UINT, LCID, ITypeInfo**) override { return E_NOTIMPL; }
  STDMETHODIMP GetIDsOfNames(REFIID, LPOLESTR*, UINT, LCID, DISPID*) override { return E_NOTIMPL; }
  STDMETHODIMP Invoke(DISPID id, REFIID, LCID, WORD, DISPPARAMS* params, VARIANT*, EXCEPINFO*, UINT*) override {
    std::vector<Var> args{Var(long(id))};
    for (UINT i = params->cArgs; i-- > 0;) {
      args.emplace_back();
      VariantCopy(&args.back().v, &params->rgvarg[i]);
    }
    calls.push_back(args);
    // A copy: the handler may replace itself.
    if (std::function<void(DISPID)> handler = onEvent) handler(id);
    return S_OK;
  }
};

// The outcome of a late-bound call.
struct Outcome {
  HRESULT hr;
  Var result;
  std::wstring description, source;
  HRESULT scode = S_OK;
};

class ControlTest : public ::testing::Test {
 protected:
  static void SetUpTestSuite() { CoInitialize(nullptr); }
  static void TearDownTestSuite() { CoUninitialize(); }

  void SetUp() override {
    CLSID clsid;
    ASSERT_EQ(CLSIDFromProgID(L"ZELGraph.VX_Graph", &clsid), S_OK) << "is ZELGraph.dll registered?";
    ASSERT_EQ(CoCreateInstance(clsid, nullptr, CLSCTX_INPROC_SERVER, IID_IVX_Graph,
                               reinterpret_cast<void**>(&graph)), S_OK);
  }
  void TearDown() override {
    if (graph) {
      EXPECT_EQ(graph->Release(), 0u);
    }
  }

  // Calls an entry by name through IDispatch::Invoke, arguments in order.
  Outcome Call(const wchar_t* name, std::vector<Var> args, WORD flags = DISPATCH_METHOD) {
    Outcome out{};
    DISPID id = 0;
    LPOLESTR names[] = {const_cast<LPOLESTR>(name)};
    out.hr = graph->GetIDsOfNames(IID_NULL, names, 1, LOCALE_USER_DEFAULT, &id);
    if (FAILED(out.hr)) return out;
    std::vector<VARIANT> reversed;
    for (auto it = args.rbegin(); it != args.rend(); ++it) reversed.push_back(it->v);
    DISPID named = DISPID_PROPERTYPUT;
    bool put = flags == DISPATCH_PROPERTYPUT;
    DISPPARAMS params{reversed.data(), put ? &named : nullptr, UINT(reversed.size()), put ? 1u : 0u};
    EXCEPINFO exception{};
    UINT argumentError = 0;
    out.hr = graph->Invoke(id, IID_NULL, LOCALE_USER_DEFAULT, flags, &params, &out.result.v, &exception,
                           &argumentError);
    std::wstring description = Take(exception.bstrDescription), source = Take(exception.bstrSource);
    SysFreeString(exception.bstrHelpFile);
    if (out.hr == DISP_E_EXCEPTION) out.description = description, out.source = source, out.scode = exception.scode;
    return out;
  }
  Outcome Get(const wchar_t* name) { return Call(name, {}, DISPATCH_PROPERTYGET); }
  Outcome Put(const wchar_t* name, Var value) { return Call(name, {value}, DISPATCH_PROPERTYPUT); }

  // The thread's error information after an early-bound failure.
  std::wstring ErrorDescription(std::wstring* source = nullptr, GUID* guid = nullptr) {
    IErrorInfo* info = nullptr;
    if (GetErrorInfo(0, &info) != S_OK || !info) return L"<none>";
    BSTR text = nullptr, from = nullptr;
    info->GetDescription(&text);
    info->GetSource(&from);
    if (guid) info->GetGUID(guid);
    info->Release();
    if (source) *source = Take(from);
    else SysFreeString(from);
    return Take(text);
  }

  IVX_Graph* graph = nullptr;
};

}  // namespace zel::testing

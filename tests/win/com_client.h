#pragma once
// A COM client as a host application is one: creates the control by ProgID
// and calls it late-bound, by name through IDispatch, or early-bound.
#include <windows.h>
#include <oleauto.h>

#include <gtest/gtest.h>

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
    V_VT(&m.v) = VT_ERROR;
    V_ERROR(&m.v) = DISP_E_PARAMNOTFOUND;
    return m;
  }
  // An array of VARIANTs, as scripts make them.
  static Var Array(const std::vector<Var>& items, LONG lowerBound = 0) {
    Var a;
    SAFEARRAYBOUND bound{ULONG(items.size()), lowerBound};
    SAFEARRAY* array = SafeArrayCreate(VT_VARIANT, 1, &bound);
    for (LONG i = 0; i < LONG(items.size()); ++i) {
      LONG index = lowerBound + i;
      SafeArrayPutElement(array, &index, const_cast<VARIANT*>(&items[size_t(i)].v));
    }
    V_VT(&a.v) = VT_ARRAY | VT_VARIANT;
    V_ARRAY(&a.v) = array;
    return a;
  }
  // A plain typed array, as compiled hosts make them.
  template <typename T>
  static Var Typed(VARTYPE type, const std::vector<T>& items) {
    Var a;
    SAFEARRAY* array = SafeArrayCreateVector(type, 0, ULONG(items.size()));
    void* data = nullptr;
    SafeArrayAccessData(array, &data);
    if (!items.empty()) memcpy(data, items.data(), items.size() * sizeof(T));
    SafeArrayUnaccessData(array);
    V_VT(&a.v) = VARTYPE(VT_ARRAY | type);
    V_ARRAY(&a.v) = array;
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
    DISPPARAMS params{reversed.data(), nullptr, UINT(reversed.size()), 0};
    if (flags == DISPATCH_PROPERTYPUT) {
      params.rgdispidNamedArgs = &named;
      params.cNamedArgs = 1;
    }
    EXCEPINFO exception{};
    UINT argumentError = 0;
    out.hr = graph->Invoke(id, IID_NULL, LOCALE_USER_DEFAULT, flags, &params, &out.result.v,
                           &exception, &argumentError);
    if (out.hr == DISP_E_EXCEPTION) {
      out.description = exception.bstrDescription ? exception.bstrDescription : L"";
      out.source = exception.bstrSource ? exception.bstrSource : L"";
      out.scode = exception.scode;
    }
    SysFreeString(exception.bstrDescription);
    SysFreeString(exception.bstrSource);
    SysFreeString(exception.bstrHelpFile);
    return out;
  }
  Outcome Get(const wchar_t* name) { return Call(name, {}, DISPATCH_PROPERTYGET); }
  Outcome Put(const wchar_t* name, Var value) { return Call(name, {value}, DISPATCH_PROPERTYPUT); }

  // The thread's error information after an early-bound failure.
  std::wstring ErrorDescription(std::wstring* source = nullptr, GUID* guid = nullptr) {
    IErrorInfo* info = nullptr;
    if (GetErrorInfo(0, &info) != S_OK || !info) return L"<none>";
    BSTR text = nullptr;
    info->GetDescription(&text);
    std::wstring description = text ? text : L"";
    SysFreeString(text);
    if (source) {
      BSTR s = nullptr;
      info->GetSource(&s);
      *source = s ? s : L"";
      SysFreeString(s);
    }
    if (guid) info->GetGUID(guid);
    info->Release();
    return description;
  }

  IVX_Graph* graph = nullptr;
};

}  // namespace zel::testing

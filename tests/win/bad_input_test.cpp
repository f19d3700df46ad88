// Every entry of the interface, called by name with argument lists a careless
// or hostile host might send: the call returns, and when it fails the graph
// is exactly as it was.
#include <cmath>
#include <functional>

#include "com_client.h"
#include "util/text.h"

namespace zel::testing {
namespace {

class BadInputTest : public ControlTest {
 protected:
  // What a host can read back of the graph, as text.
  std::wstring Snapshot() {
    std::wstring out;
    for (const wchar_t* name : {L"EnumXAxes", L"EnumYAxes", L"EnumDatasets"}) {
      Outcome e = Call(name, {});
      out += name + (L":" + std::to_wstring(e.result.type() == VT_EMPTY ? -1 : e.result.UpperBound()));
    }
    Outcome values = Call(L"GetDatasetValues", {10});
    if (values.hr == S_OK) out += L" points:" + std::to_wstring(values.result[0].UpperBound());
    return out;
  }

  void BuildGraph() {
    ASSERT_EQ(Call(L"AddXAxis", {1, L"DISCRETE", Var(), 0.0}).hr, S_OK);
    ASSERT_EQ(Call(L"AddYAxis", {1, L"TIME", Var(), 0.0}).hr, S_OK);
    ASSERT_EQ(Call(L"AddDataset", {10, L"BAR", 1, 1, Var()}).hr, S_OK);
    ASSERT_EQ(Call(L"SetDatasetValues", {10, Var::Array({L"a", L"b"}), Var::Array({45000, 45001}),
                                         Var::Array({0, 0})}).hr, S_OK);
  }
};

// Argument families, each giving the argument at a position.
std::vector<std::pair<const char*, std::function<Var(int)>>> Families() {
  static Var seven(7L);
  static Var twoDimensional = [] {
    SAFEARRAYBOUND bounds[2] = {{2, 3}, {2, 3}};
    Var a = Var::Null(VT_ARRAY | VT_VARIANT);
    V_ARRAY(&a.v) = SafeArrayCreate(VT_VARIANT, 2, bounds);
    return a;
  }();
  return {
      {"empty", [](int) { return Var(); }},
      {"null texts", [](int) { return Var::Null(VT_BSTR); }},
      {"long texts", [](int) { return Var(std::wstring(400, L'w').c_str()); }},
      {"nan", [](int) { return Var(std::nan("")); }},
      {"huge", [](int i) { return Var(i % 2 ? 1e300 : -1e300); }},
      {"references", [](int) { return Var::Ref(seven); }},
      {"two dimensions", [](int) { return twoDimensional; }},
      {"empty arrays", [](int) { return Var::Typed<int32_t>(VT_I4, {}); }},
      {"missing", [](int) { return Var::Missing(); }},
      {"null objects", [](int) { return Var::Null(VT_DISPATCH); }},
      {"small numbers", [](int i) { return Var(long(i % 3 + 1)); }},
  };
}

TEST_F(BadInputTest, NoEntryCrashesAndFailuresChangeNothing) {
  BuildGraph();
  ITypeInfo* info = nullptr;
  ASSERT_EQ(graph->GetTypeInfo(0, 0, &info), S_OK);
  int calls = 0;
  const std::wstring skipped = L"|QueryInterface|AddRef|Release|GetTypeInfoCount|GetTypeInfo|"
                               L"GetIDsOfNames|Invoke|EraseAll|RemoveAllDatasets|";  // the last two succeed by design
  FUNCDESC* func = nullptr;
  for (UINT f = 0; info->GetFuncDesc(f, &func) == S_OK; ++f) {
    BSTR name = nullptr;
    info->GetDocumentation(func->memid, &name, nullptr, nullptr, nullptr);
    std::wstring entry = Take(name);
    WORD flags = func->invkind == INVOKE_PROPERTYGET   ? DISPATCH_PROPERTYGET
                 : func->invkind == INVOKE_PROPERTYPUT ? DISPATCH_PROPERTYPUT
                                                       : DISPATCH_METHOD;
    bool returnsValue = func->cParams && (func->lprgelemdescParam[func->cParams - 1]
                                              .paramdesc.wParamFlags & PARAMFLAG_FRETVAL);
    int params = func->cParams - (returnsValue ? 1 : 0);
    info->ReleaseFuncDesc(func);
    if (skipped.find(L"|" + entry + L"|") != std::wstring::npos) continue;
    for (auto& [family, make] : Families()) {
      std::vector<Var> args;
      for (int i = 0; i < params; ++i) args.push_back(make(i));
      std::wstring before = Snapshot();
      Outcome outcome = Call(entry.c_str(), args, flags);
      ++calls;
      if (FAILED(outcome.hr)) {
        EXPECT_EQ(Snapshot(), before) << Utf8FromText(reinterpret_cast<const char16_t*>(entry.c_str()))
                                      << " with " << family;
      }
      // A successful call may change the graph; build it again for the next.
      if (SUCCEEDED(outcome.hr) && Snapshot() != before) {
        Call(L"EraseAll", {});
        BuildGraph();
      }
    }
  }
  info->Release();
  EXPECT_GT(calls, 1000);
}

}  // namespace
}  // namespace zel::testing

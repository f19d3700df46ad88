#include "call_runner.h"

#include <cstdio>

namespace zel::fuzz {
namespace {

constexpr BYTE kSentinel = 0xA5;
// Values a pointer parameter gets behind it on the vtable: more than any
// entry reads there, so that reading past them is a fault of the control.
constexpr size_t kVtableValues = 4;

bool Untouched(const void* data, size_t bytes, VARTYPE type) {
  if (!data) return true;
  auto* p = static_cast<const BYTE*>(data);
  if (type == VT_VARIANT) {
    for (size_t i = 0; i < bytes; i += sizeof(VARIANT))
      if (V_VT(reinterpret_cast<const VARIANT*>(p + i)) != VT_EMPTY) return false;
    return true;
  }
  BYTE expected = type == VT_BSTR || type == VT_DISPATCH || type == VT_UNKNOWN ? 0 : kSentinel;
  for (size_t i = 0; i < bytes; ++i)
    if (p[i] != expected) return false;
  return true;
}

void Hex(HRESULT hr, std::wstring& log) {
  wchar_t text[16];
  swprintf(text, 16, L"0x%08lX", static_cast<unsigned long>(hr));
  log += text;
}

}  // namespace

CallRunner::CallRunner(const TypeCatalog& catalog, ArgumentMaker& maker, GuardedArena& arena, RandomSource& random)
    : catalog_(catalog), maker_(maker), arena_(arena), random_(random), tallies_(catalog.entries().size()) {}

void CallRunner::Argument(const VARIANT& value, std::wstring& log) {
  if (log.back() != L'(') log += L", ";
  maker_.Describe(value, log);
}

CallOutcome CallRunner::Call(size_t index, bool throughVtable, std::wstring& log, bool dryRun) {
  const Entry& entry = catalog_.entries()[index];
  GuardedArena::Mark mark = arena_.Here();
  std::vector<Pointed> pointed;
  pointed.reserve(8);
  log += throughVtable ? L"vtable " : L"Invoke ";
  log += entry.name;
  log += entry.kind == INVOKE_PROPERTYGET ? L" get(" : entry.isPut() ? L" put(" : L"(";
  CallOutcome outcome;
  outcome.hr = throughVtable ? ByVtable(entry, pointed, log, dryRun) : ByInvoke(entry, pointed, log, dryRun);
  log += L") -> ";
  Hex(outcome.hr, log);
  for (const Pointed& p : pointed) {
    if (FAILED(outcome.hr) && p.checkUntouched && !Untouched(p.data, p.count * ArgumentMaker::SizeOf(p.type), p.type))
      outcome.wroteOutOnFailure = true;
    ArgumentMaker::ClearPointed(p.type, p.data, p.count);
  }
  arena_.RewindTo(mark);
  if (!dryRun) {
    ++tallies_[index].calls;
    tallies_[index].succeeded += SUCCEEDED(outcome.hr);
  }
  return outcome;
}

// Arguments as a script passes them: last first, a put's value named,
// trailing optional ones sometimes left out, out parameters always as
// references to one variable (given a value instead, Wine's own dispatch of
// an [out] parameter frees memory twice, far from the control). Now and then
// the count or a type is wrong.
HRESULT CallRunner::ByInvoke(const Entry& entry, std::vector<Pointed>& pointed, std::wstring& log, bool dryRun) {
  std::vector<VARIANT> args;
  args.reserve(entry.params.size() + 1);
  size_t given = 0;
  for (const ParamType& p : entry.params) given += !p.retval;
  while (given > 0 && entry.params[given - 1].optional && random_.Percent(25)) --given;
  for (size_t i = 0; i < given; ++i) {
    const ParamType& p = entry.params[i];
    VARIANT value;
    if (p.byPointer && (p.out || random_.Percent(85))) {
      void* data = maker_.PointerTo(p.type, 1, p.in, kSentinel);
      pointed.push_back({p.type, data, data ? 1u : 0u, false});
      V_VT(&value) = VARTYPE(VT_BYREF | p.type), V_BYREF(&value) = data;
    } else if (p.type == VT_VARIANT || random_.Percent(20)) {
      value = *maker_.Any();
    } else {
      value = *maker_.Typed(p.type);
    }
    Argument(value, log);
    args.push_back(value);
  }
  if (random_.Percent(3)) {
    if (!args.empty() && random_.Percent(50)) args.pop_back(), log += L" <one less>";
    else args.push_back(*maker_.Any()), log += L" <one more>";
  }
  std::vector<VARIANT> reversed(args.rbegin(), args.rend());
  DISPID named = DISPID_PROPERTYPUT;
  bool put = entry.isPut();
  DISPPARAMS params{reversed.data(), put ? &named : nullptr, UINT(reversed.size()), put ? 1u : 0u};
  WORD flags = put ? DISPATCH_PROPERTYPUT : entry.kind == INVOKE_PROPERTYGET ? DISPATCH_PROPERTYGET
                                                                              : DISPATCH_METHOD;
  if (flags == DISPATCH_METHOD && random_.Percent(20)) flags |= DISPATCH_PROPERTYGET;
  if (dryRun) return S_OK;
  VARIANT result;
  VariantInit(&result);
  EXCEPINFO exception{};
  UINT argumentError = 0;
  HRESULT hr = control_->Invoke(entry.id, IID_NULL, LOCALE_USER_DEFAULT, flags, &params, &result, &exception,
                                &argumentError);
  VariantClear(&result);
  SysFreeString(exception.bstrDescription);
  SysFreeString(exception.bstrSource);
  SysFreeString(exception.bstrHelpFile);
  return hr;
}

// Arguments of exactly the declared types, by the vtable slot. Pointers lead
// to guarded storage; a VARIANT pointer may be null.
HRESULT CallRunner::ByVtable(const Entry& entry, std::vector<Pointed>& pointed, std::wstring& log, bool dryRun) {
  size_t n = entry.params.size();
  std::vector<VARTYPE> types(n);
  std::vector<VARIANT> holders(n);
  std::vector<VARIANTARG*> args(n);
  for (size_t i = 0; i < n; ++i) {
    const ParamType& p = entry.params[i];
    if (p.byPointer) {
      void* data = nullptr;
      if (p.type != VT_VARIANT || random_.Percent(90)) data = maker_.PointerTo(p.type, kVtableValues, p.in, kSentinel);
      pointed.push_back({p.type, data, data ? kVtableValues : 0, !p.in});
      types[i] = VARTYPE(VT_BYREF | p.type);
      V_VT(&holders[i]) = types[i], V_BYREF(&holders[i]) = data;
      args[i] = &holders[i];
      if (!data) log += log.back() == L'(' ? L"null" : L", null";
      else Argument(holders[i], log);
      continue;
    }
    args[i] = p.type == VT_VARIANT ? maker_.Any() : maker_.Typed(p.type);
    types[i] = p.type;
    Argument(*args[i], log);
  }
  if (dryRun) return S_OK;
  VARIANT result;
  VariantInit(&result);
  HRESULT called = DispCallFunc(static_cast<IDispatch*>(control_), ULONG_PTR(entry.vtableOffset), CC_STDCALL, VT_ERROR,
                                UINT(n), types.data(), args.data(), &result);
  if (FAILED(called)) {
    log += L" <DispCallFunc failed>";
    return called;
  }
  return V_ERROR(&result);
}

}  // namespace zel::fuzz

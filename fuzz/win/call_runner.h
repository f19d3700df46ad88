#pragma once
// Calls one entry of the control with made arguments, either late-bound
// through IDispatch::Invoke as a script would, or early-bound through the
// vtable slot the type library names (DispCallFunc), and writes down what it
// did. Whatever the call was given or handed back is freed before it returns.
#include <windows.h>
#include <oleauto.h>

#include <string>
#include <vector>

#include "argument_maker.h"
#include "type_catalog.h"

namespace zel::fuzz {

struct CallOutcome {
  HRESULT hr = S_OK;
  // A failing call wrote into an out parameter it was given.
  bool wroteOutOnFailure = false;
};

class CallRunner {
 public:
  CallRunner(const TypeCatalog& catalog, ArgumentMaker& maker, GuardedArena& arena, RandomSource& random);

  void SetControl(IDispatch* control) { control_ = control; }
  // Calls entry `index` of the catalog; appends the call to `log`. A dry run
  // makes, describes and frees the arguments and calls nothing.
  CallOutcome Call(size_t index, bool throughVtable, std::wstring& log, bool dryRun = false);

  struct Tally {
    unsigned calls = 0, succeeded = 0;
  };
  const std::vector<Tally>& tallies() const { return tallies_; }

 private:
  // A pointer parameter's storage, given back after the call.
  struct Pointed {
    VARTYPE type;
    void* data;
    size_t count;
    bool checkUntouched;
  };
  HRESULT ByInvoke(const Entry& entry, std::vector<Pointed>& pointed, std::wstring& log, bool dryRun);
  HRESULT ByVtable(const Entry& entry, std::vector<Pointed>& pointed, std::wstring& log, bool dryRun);
  void Argument(const VARIANT& value, std::wstring& log);

  const TypeCatalog& catalog_;
  ArgumentMaker& maker_;
  GuardedArena& arena_;
  RandomSource& random_;
  IDispatch* control_ = nullptr;
  std::vector<Tally> tallies_;
};

}  // namespace zel::fuzz

#pragma once
// Makes the arguments of a call: well-formed automation values chosen to hit
// the edges (NaN, infinities, extreme integers, empty and huge texts, arrays
// with no, many or several dimensions, arrays tagged with another element
// type, references, objects, the control's own records and foreign ones).
// Every value lives in the guarded arena and is cleaned up when the arena is
// rewound, so an argument never outlives its call and never leaks.
#include <windows.h>
#include <oleauto.h>

#include <array>
#include <functional>
#include <string>
#include <vector>

#include "guarded_arena.h"
#include "probe_objects.h"
#include "random_source.h"
#include "type_catalog.h"

namespace zel::fuzz {

class ArgumentMaker {
 public:
  ArgumentMaker(RandomSource& random, GuardedArena& arena, const TypeCatalog& catalog);
  ~ArgumentMaker();

  // The control, which arguments may carry as an object.
  void SetControl(IUnknown* control) { control_ = control; }
  // What probes do when the control asks them for their value.
  void SetReentry(std::function<void()> reentry);

  // A value of exactly `type`, as a parameter of that type takes it.
  VARIANT* Typed(VARTYPE type);
  // Any well-formed VARIANT, for a parameter that takes a VARIANT.
  VARIANT* Any(int depth = 0);
  // `count` values of `type` behind a pointer, in guarded memory; filled
  // with chosen values when `fill`, else with the byte `sentinel`.
  // What the values hold belongs to the caller, who gives it back with
  // ClearPointed, whatever the callee put there.
  void* PointerTo(VARTYPE type, size_t count, bool fill, BYTE sentinel = 0xA5);
  static void ClearPointed(VARTYPE type, void* data, size_t count);
  // The size one value of `type` takes behind a pointer.
  static size_t SizeOf(VARTYPE type);

  // A short text naming a value, for the log of calls.
  void Describe(const VARIANT& value, std::wstring& out) const;
  // References the control still holds on the fuzzer's objects.
  LONG BorrowedReferences() const;

 private:
  void Scalar(VARTYPE type, VARIANT* out);
  void Array(VARIANT* out, int depth);
  void Reference(VARIANT* out, int depth);
  void OwnRecord(VARIANT* out);
  void ForeignRecord(VARIANT* out);
  void Object(VARIANT* out, bool dispatch);
  void FillElements(VARTYPE type, void* data, size_t count);
  VARIANT* NewVariant();

  int32_t Int32();
  double Real();
  double Date();
  BSTR String();

  RandomSource& random_;
  GuardedArena& arena_;
  const TypeCatalog& catalog_;
  IUnknown* control_ = nullptr;
  std::array<Probe, 3> probes_;
  std::vector<ForeignRecordInfo*> foreign_;
  VARIANT spare_{};  // handed out when the arena is full
};

}  // namespace zel::fuzz

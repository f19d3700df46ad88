#pragma once
// Where the fuzzer keeps what an argument points to: each piece ends where a
// page the process may not touch begins, so a control that reads or writes a
// byte past what the caller handed it faults at once. Allocation is a stack:
// a call made from inside another call (an event handler calling back) takes
// its pieces above those of the outer call and gives them back first. The
// pages are reserved once, so the arena adds nothing to the heap the leak
// oracle measures.
#include <windows.h>
#include <oleauto.h>

#include <cstddef>
#include <utility>
#include <vector>

namespace zel::fuzz {

class GuardedArena {
 public:
  explicit GuardedArena(size_t slots = 512);
  ~GuardedArena();
  GuardedArena(const GuardedArena&) = delete;
  GuardedArena& operator=(const GuardedArena&) = delete;

  // `bytes` (at most a page) of zeros ending at a guard page; null when the
  // arena is exhausted.
  void* Take(size_t bytes);
  // Cleanups run when the arena is rewound past the point they were added:
  // a VARIANT to clear, or a record to clear with its information released.
  void ClearLater(VARIANT* owned);
  void ClearRecordLater(IRecordInfo* info, void* record);
  // A string field that a call may set to null without freeing it (as the
  // control does with a record's annotationFormat): freed here if so.
  void FreeIfDropped(BSTR* field);

  // The addresses the arena covers, guard pages included.
  std::pair<const void*, const void*> Range() const { return {pages_, pages_ + 2 * slots_ * pageSize_}; }

  struct Mark {
    size_t slots, cleanups;
  };
  Mark Here() const { return {used_, cleanups_.size()}; }
  // Runs the cleanups added since `mark`, newest first, and frees its slots.
  void RewindTo(Mark mark);

 private:
  struct Cleanup {
    VARIANT* variant;
    IRecordInfo* info;
    void* record;
    BSTR* field = nullptr;
    BSTR held = nullptr;
  };
  BYTE* pages_ = nullptr;
  size_t pageSize_ = 4096;
  size_t slots_ = 0, used_ = 0;
  std::vector<Cleanup> cleanups_;
};

}  // namespace zel::fuzz

#include "guarded_arena.h"

#include <cstring>

namespace zel::fuzz {

GuardedArena::GuardedArena(size_t slots) : slots_(slots) {
  SYSTEM_INFO system;
  GetSystemInfo(&system);
  pageSize_ = system.dwPageSize;
  pages_ = static_cast<BYTE*>(VirtualAlloc(nullptr, 2 * slots * pageSize_, MEM_RESERVE | MEM_COMMIT, PAGE_READWRITE));
  DWORD old = 0;
  for (size_t i = 0; pages_ && i < slots; ++i)
    VirtualProtect(pages_ + (2 * i + 1) * pageSize_, pageSize_, PAGE_NOACCESS, &old);
  if (!pages_) slots_ = 0;
  cleanups_.reserve(4096);
}

GuardedArena::~GuardedArena() {
  RewindTo({0, 0});
  if (pages_) VirtualFree(pages_, 0, MEM_RELEASE);
}

void* GuardedArena::Take(size_t bytes) {
  if (used_ == slots_ || bytes > pageSize_) return nullptr;
  BYTE* end = pages_ + (2 * used_ + 1) * pageSize_;
  ++used_;
  std::memset(end - bytes, 0, bytes);
  return end - bytes;
}

void GuardedArena::ClearLater(VARIANT* owned) { cleanups_.push_back({owned, nullptr, nullptr}); }

void GuardedArena::ClearRecordLater(IRecordInfo* info, void* record) {
  cleanups_.push_back({nullptr, info, record});
}

void GuardedArena::FreeIfDropped(BSTR* field) {
  if (*field) cleanups_.push_back({nullptr, nullptr, nullptr, field, *field});
}

void GuardedArena::RewindTo(Mark mark) {
  while (cleanups_.size() > mark.cleanups) {
    Cleanup cleanup = cleanups_.back();
    cleanups_.pop_back();
    if (cleanup.field) {
      if (!*cleanup.field) SysFreeString(cleanup.held);
    } else if (cleanup.variant) {
      // A record VARIANT only borrows its record: the record's own cleanup
      // frees it.
      if (V_VT(cleanup.variant) != VT_RECORD) VariantClear(cleanup.variant);
    } else {
      cleanup.info->RecordClear(cleanup.record);
      cleanup.info->Release();
    }
  }
  used_ = mark.slots;
}

}  // namespace zel::fuzz

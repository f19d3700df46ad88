#pragma once
// The last things the fuzzer did, kept in a ring of texts whose storage is
// made once, so that keeping the log adds nothing to the heap as it runs.
#include <cstdint>
#include <cstdio>
#include <string>
#include <vector>

namespace zel::fuzz {

class CallLog {
 public:
  explicit CallLog(size_t keep = 48) : entries_(keep), steps_(keep) {
    for (std::wstring& entry : entries_) entry.reserve(1024);
  }
  // A cleared entry for step `step`; nested calls write their own entries.
  std::wstring& Begin(uint64_t step) {
    size_t slot = next_++ % entries_.size();
    steps_[slot] = step;
    entries_[slot].clear();
    return entries_[slot];
  }
  // Oldest first; safe enough to call from the watchdog while the main
  // thread is stuck in a call.
  void Print(FILE* out) const {
    size_t count = std::min(next_, entries_.size());
    for (size_t i = next_ - count; i < next_; ++i) {
      size_t slot = i % entries_.size();
      fprintf(out, "  #%llu %ls\n", static_cast<unsigned long long>(steps_[slot]), entries_[slot].c_str());
    }
    fflush(out);
  }

 private:
  std::vector<std::wstring> entries_;
  std::vector<uint64_t> steps_;
  size_t next_ = 0;
};

}  // namespace zel::fuzz

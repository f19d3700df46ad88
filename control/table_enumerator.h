#pragma once
// An enumerator over a fixed table, as COM's IEnumXxx interfaces want it:
// `fill(i)` makes the i-th item a caller receives (and then owns).
#include <windows.h>

#include <new>

#include "control/com_support.h"

namespace zel {

template <typename Enum, typename Item>
class TableEnumerator final : public Enum {
 public:
  using Fill = Item (*)(ULONG index);

  // A new enumerator (null when memory runs out) for `count` items.
  static Enum* Create(REFIID iid, ULONG count, Fill fill) {
    return new (std::nothrow) TableEnumerator(iid, count, fill, 0);
  }

  STDMETHODIMP QueryInterface(REFIID iid, void** object) override {
    return QueryFromTable(iid, object, {{IID_IUnknown, this}, {iid_, this}});
  }
  STDMETHODIMP_(ULONG) AddRef() override { return InterlockedIncrement(&refs_); }
  STDMETHODIMP_(ULONG) Release() override {
    LONG refs = InterlockedDecrement(&refs_);
    if (refs == 0) delete this;
    return ULONG(refs);
  }
  STDMETHODIMP Next(ULONG count, Item* items, ULONG* fetched) override {
    if (!items) return E_POINTER;
    ULONG given = 0;
    for (; given < count && position_ < count_; ++given, ++position_) items[given] = fill_(position_);
    if (fetched) *fetched = given;
    return given == count ? S_OK : S_FALSE;
  }
  STDMETHODIMP Skip(ULONG count) override {
    ULONG left = count_ - position_;
    position_ += count < left ? count : left;
    return count <= left ? S_OK : S_FALSE;
  }
  STDMETHODIMP Reset() override {
    position_ = 0;
    return S_OK;
  }
  STDMETHODIMP Clone(Enum** clone) override {
    if (!clone) return E_POINTER;
    *clone = new (std::nothrow) TableEnumerator(iid_, count_, fill_, position_);
    return *clone ? S_OK : E_OUTOFMEMORY;
  }

 private:
  TableEnumerator(REFIID iid, ULONG count, Fill fill, ULONG position)
      : iid_(iid), count_(count), fill_(fill), position_(position) {}

  LONG refs_ = 1;
  const IID& iid_;
  ULONG count_;
  Fill fill_;
  ULONG position_;
};

}  // namespace zel

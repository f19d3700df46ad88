#pragma once
// Small pieces every COM object of the module uses.
#include <windows.h>
#include <ole2.h>

#include <initializer_list>
#include <utility>

namespace zel {

struct InterfaceEntry {
  const IID& iid;
  IUnknown* object;
};

// QueryInterface from a table of the interfaces an object offers; the
// object found is AddRef'ed.
inline HRESULT QueryFromTable(REFIID iid, void** object, std::initializer_list<InterfaceEntry> table) {
  if (!object) return E_POINTER;
  for (const InterfaceEntry& entry : table) {
    if (IsEqualIID(iid, entry.iid)) {
      entry.object->AddRef();
      *object = entry.object;
      return S_OK;
    }
  }
  *object = nullptr;
  return E_NOINTERFACE;
}

// Holds a reference and releases it.
template <typename T>
class ComPtr {
 public:
  ComPtr() = default;
  ComPtr(T* p) : p_(p) {
    if (p_) p_->AddRef();
  }
  ComPtr(const ComPtr& o) : ComPtr(o.p_) {}
  ComPtr& operator=(ComPtr o) {
    std::swap(p_, o.p_);
    return *this;
  }
  ~ComPtr() {
    if (p_) p_->Release();
  }
  T* get() const { return p_; }
  T* operator->() const { return p_; }
  explicit operator bool() const { return p_ != nullptr; }
  // For out parameters: releases what is held and gives its address.
  T** put() {
    if (p_) p_->Release();
    p_ = nullptr;
    return &p_;
  }

 private:
  T* p_ = nullptr;
};

}  // namespace zel

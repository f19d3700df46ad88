#include "control/class_factory.h"

#include "control/com_support.h"
#include "control/module.h"

namespace zel {

ClassFactory::ClassFactory(Creator create) : create_(create) { LockModule(); }
ClassFactory::~ClassFactory() { UnlockModule(); }

STDMETHODIMP ClassFactory::QueryInterface(REFIID iid, void** object) {
  return QueryFromTable(iid, object, {{IID_IUnknown, this}, {IID_IClassFactory, this}});
}

STDMETHODIMP_(ULONG) ClassFactory::AddRef() { return InterlockedIncrement(&refs_); }

STDMETHODIMP_(ULONG) ClassFactory::Release() {
  LONG refs = InterlockedDecrement(&refs_);
  if (refs == 0) delete this;
  return ULONG(refs);
}

STDMETHODIMP ClassFactory::CreateInstance(IUnknown* outer, REFIID iid, void** object) {
  if (!object) return E_POINTER;
  *object = nullptr;
  if (outer) return CLASS_E_NOAGGREGATION;
  return create_(outer, iid, object);
}

STDMETHODIMP ClassFactory::LockServer(BOOL lock) {
  lock ? LockModule() : UnlockModule();
  return S_OK;
}

}  // namespace zel

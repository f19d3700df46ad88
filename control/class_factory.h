#pragma once
// The class object that makes control objects.
#include <windows.h>
#include <unknwn.h>

namespace zel {

class ClassFactory final : public IClassFactory {
 public:
  using Creator = HRESULT (*)(IUnknown* outer, REFIID iid, void** object);
  explicit ClassFactory(Creator create);

  STDMETHODIMP QueryInterface(REFIID iid, void** object) override;
  STDMETHODIMP_(ULONG) AddRef() override;
  STDMETHODIMP_(ULONG) Release() override;
  STDMETHODIMP CreateInstance(IUnknown* outer, REFIID iid, void** object) override;
  STDMETHODIMP LockServer(BOOL lock) override;

 private:
  ~ClassFactory();
  LONG refs_ = 1;
  Creator create_;
};

}  // namespace zel

#pragma once
// Objects of the fuzzer's own that travel inside arguments: a dispatch object
// that counts the references the control takes and may call back into it
// when asked for its value, and record information for records that are not
// the control's.
#include <windows.h>
#include <oleauto.h>

#include <functional>

namespace zel::fuzz {

// An IDispatch whose only member is its value (DISPID_VALUE), which is what
// VariantChangeType asks for. Never freed: its references are counted so
// that the end of a run can tell whether the control kept any.
class Probe final : public IDispatch {
 public:
  // Called from Invoke, before it answers: an event handler's re-entry.
  std::function<void()> onAsked;
  // The references beyond the fuzzer's own.
  LONG Borrowed() const { return refs_ - 1; }

  STDMETHODIMP QueryInterface(REFIID iid, void** object) override;
  STDMETHODIMP_(ULONG) AddRef() override { return ULONG(InterlockedIncrement(&refs_)); }
  STDMETHODIMP_(ULONG) Release() override { return ULONG(InterlockedDecrement(&refs_)); }
  STDMETHODIMP GetTypeInfoCount(UINT* count) override;
  STDMETHODIMP GetTypeInfo(UINT, LCID, ITypeInfo**) override { return E_NOTIMPL; }
  STDMETHODIMP GetIDsOfNames(REFIID, LPOLESTR*, UINT, LCID, DISPID*) override { return DISP_E_UNKNOWNNAME; }
  STDMETHODIMP Invoke(DISPID id, REFIID, LCID, WORD, DISPPARAMS*, VARIANT* result, EXCEPINFO*, UINT*) override;

  // What the next request for the value answers: a number, a text or a failure.
  int answer = 0;

 private:
  LONG refs_ = 1;
};

// Information for a record that is not the control's: `size` bytes, a GUID
// that may claim one of the control's records, and a type that matches
// nothing. Copies work on plain bytes; the record holds no pointers.
class ForeignRecordInfo final : public IRecordInfo {
 public:
  ForeignRecordInfo(REFGUID guid, ULONG size) : guid_(guid), size_(size) {}
  ULONG size() const { return size_; }
  LONG Borrowed() const { return refs_ - 1; }

  STDMETHODIMP QueryInterface(REFIID iid, void** object) override;
  STDMETHODIMP_(ULONG) AddRef() override { return ULONG(InterlockedIncrement(&refs_)); }
  STDMETHODIMP_(ULONG) Release() override { return ULONG(InterlockedDecrement(&refs_)); }
  STDMETHODIMP RecordInit(PVOID record) override;
  STDMETHODIMP RecordClear(PVOID) override { return S_OK; }
  STDMETHODIMP RecordCopy(PVOID from, PVOID to) override;
  STDMETHODIMP GetGuid(GUID* guid) override;
  STDMETHODIMP GetName(BSTR* name) override;
  STDMETHODIMP GetSize(ULONG* size) override;
  STDMETHODIMP GetTypeInfo(ITypeInfo**) override { return E_NOTIMPL; }
  STDMETHODIMP GetField(PVOID, LPCOLESTR, VARIANT*) override { return E_NOTIMPL; }
  STDMETHODIMP GetFieldNoCopy(PVOID, LPCOLESTR, VARIANT*, PVOID*) override { return E_NOTIMPL; }
  STDMETHODIMP PutField(ULONG, PVOID, LPCOLESTR, VARIANT*) override { return E_NOTIMPL; }
  STDMETHODIMP PutFieldNoCopy(ULONG, PVOID, LPCOLESTR, VARIANT*) override { return E_NOTIMPL; }
  STDMETHODIMP GetFieldNames(ULONG*, BSTR*) override { return E_NOTIMPL; }
  BOOL STDMETHODCALLTYPE IsMatchingType(IRecordInfo* other) override { return other == this; }
  PVOID STDMETHODCALLTYPE RecordCreate() override;
  STDMETHODIMP RecordCreateCopy(PVOID from, PVOID* to) override;
  STDMETHODIMP RecordDestroy(PVOID record) override;

 private:
  GUID guid_;
  ULONG size_;
  LONG refs_ = 1;
};

}  // namespace zel::fuzz

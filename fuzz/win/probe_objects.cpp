#include "probe_objects.h"

#include <cstring>

namespace zel::fuzz {

STDMETHODIMP Probe::QueryInterface(REFIID iid, void** object) {
  if (!object) return E_POINTER;
  bool mine = IsEqualIID(iid, IID_IUnknown) || IsEqualIID(iid, IID_IDispatch);
  *object = mine ? this : nullptr;
  if (mine) AddRef();
  return mine ? S_OK : E_NOINTERFACE;
}

STDMETHODIMP Probe::GetTypeInfoCount(UINT* count) {
  if (!count) return E_POINTER;
  *count = 0;
  return S_OK;
}

STDMETHODIMP Probe::Invoke(DISPID id, REFIID, LCID, WORD, DISPPARAMS*, VARIANT* result, EXCEPINFO*, UINT*) {
  if (id != DISPID_VALUE) return DISP_E_MEMBERNOTFOUND;
  if (onAsked) onAsked();
  if (!result) return S_OK;
  VariantInit(result);
  switch (answer) {
    case 0: V_VT(result) = VT_R8, V_R8(result) = 2.5; return S_OK;
    case 1: V_VT(result) = VT_BSTR, V_BSTR(result) = SysAllocString(L"12"); return S_OK;
    case 2: return S_OK;  // empty
    default: return E_FAIL;
  }
}

STDMETHODIMP ForeignRecordInfo::QueryInterface(REFIID iid, void** object) {
  if (!object) return E_POINTER;
  bool mine = IsEqualIID(iid, IID_IUnknown) || IsEqualIID(iid, IID_IRecordInfo);
  *object = mine ? this : nullptr;
  if (mine) AddRef();
  return mine ? S_OK : E_NOINTERFACE;
}

STDMETHODIMP ForeignRecordInfo::RecordInit(PVOID record) {
  if (!record) return E_INVALIDARG;
  std::memset(record, 0, size_);
  return S_OK;
}

STDMETHODIMP ForeignRecordInfo::RecordCopy(PVOID from, PVOID to) {
  if (!from || !to) return E_INVALIDARG;
  std::memcpy(to, from, size_);
  return S_OK;
}

STDMETHODIMP ForeignRecordInfo::GetGuid(GUID* guid) {
  if (!guid) return E_POINTER;
  *guid = guid_;
  return S_OK;
}

STDMETHODIMP ForeignRecordInfo::GetName(BSTR* name) {
  if (!name) return E_POINTER;
  *name = SysAllocString(L"Foreign");
  return S_OK;
}

STDMETHODIMP ForeignRecordInfo::GetSize(ULONG* size) {
  if (!size) return E_POINTER;
  *size = size_;
  return S_OK;
}

PVOID STDMETHODCALLTYPE ForeignRecordInfo::RecordCreate() { return CoTaskMemAlloc(size_ ? size_ : 1); }

STDMETHODIMP ForeignRecordInfo::RecordCreateCopy(PVOID from, PVOID* to) {
  if (!to) return E_POINTER;
  *to = RecordCreate();
  return *to ? RecordCopy(from, *to) : E_OUTOFMEMORY;
}

STDMETHODIMP ForeignRecordInfo::RecordDestroy(PVOID record) {
  CoTaskMemFree(record);
  return S_OK;
}

}  // namespace zel::fuzz

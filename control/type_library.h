#pragma once
// The module's own type library (resource TYPELIB 1), loaded once.
#include <windows.h>
#include <oaidl.h>

namespace zel {

// The type information of an interface, dispinterface, coclass or record
// of the library, AddRef'ed.
HRESULT TypeInfoOf(REFGUID guid, ITypeInfo** info);

// The record information of AxisProps or DatasetProps, AddRef'ed.
HRESULT RecordInfoOf(REFGUID guid, IRecordInfo** info);

}  // namespace zel

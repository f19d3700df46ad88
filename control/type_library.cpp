#include "control/type_library.h"

#include "control/com_support.h"
#include "control/module.h"

namespace zel {
namespace {

ITypeLib* LoadedLibrary() {
  static ITypeLib* library = [] {
    ITypeLib* loaded = nullptr;
    LoadTypeLibEx(ModulePath().c_str(), REGKIND_NONE, &loaded);
    return loaded;
  }();
  return library;
}

}  // namespace

HRESULT TypeInfoOf(REFGUID guid, ITypeInfo** info) {
  *info = nullptr;
  ITypeLib* library = LoadedLibrary();
  return library ? library->GetTypeInfoOfGuid(guid, info) : TYPE_E_CANTLOADLIBRARY;
}

HRESULT RecordInfoOf(REFGUID guid, IRecordInfo** info) {
  *info = nullptr;
  ComPtr<ITypeInfo> type;
  HRESULT hr = TypeInfoOf(guid, type.put());
  return SUCCEEDED(hr) ? GetRecordInfoFromTypeInfo(type.get(), info) : hr;
}

}  // namespace zel

#pragma once
// What the control's type library says about its dispatch interface and its
// records: every entry with its dispid, kind, vtable slot and parameters, and
// every record with its fields. The fuzzer knows nothing else of the control.
#include <windows.h>
#include <oleauto.h>

#include <string>
#include <vector>

namespace zel::fuzz {

// One parameter or record field, its type resolved through aliases:
// `type` is the automation type of the value (VT_I4, VT_BSTR, VT_VARIANT,
// VT_UNKNOWN...), `byPointer` says the entry takes a pointer to it.
struct ParamType {
  VARTYPE type = VT_EMPTY;
  bool byPointer = false;
  bool in = true, out = false, retval = false, optional = false;
};

struct Entry {
  std::wstring name;
  MEMBERID id = 0;
  INVOKEKIND kind = INVOKE_FUNC;
  short vtableOffset = 0;
  std::vector<ParamType> params;
  // A property put passes its last argument as the named DISPID_PROPERTYPUT.
  bool isPut() const { return kind == INVOKE_PROPERTYPUT || kind == INVOKE_PROPERTYPUTREF; }
  std::wstring Signature() const;
};

struct RecordField {
  std::wstring name;
  ParamType type;
};

struct RecordType {
  std::wstring name;
  GUID guid{};
  IRecordInfo* info = nullptr;  // owned by the catalog
  std::vector<RecordField> fields;
};

class TypeCatalog {
 public:
  // Reads the interface behind `control`'s IDispatch::GetTypeInfo and the
  // records of the library that holds it. Empty when it cannot.
  explicit TypeCatalog(IDispatch* control);
  ~TypeCatalog();
  TypeCatalog(const TypeCatalog&) = delete;
  TypeCatalog& operator=(const TypeCatalog&) = delete;

  const std::vector<Entry>& entries() const { return entries_; }
  const std::vector<RecordType>& records() const { return records_; }
  // Why the catalog is empty, or "".
  const std::wstring& problem() const { return problem_; }

 private:
  void ReadInterface(ITypeInfo* dispatchInfo);
  void ReadRecords(ITypeLib* library);

  std::vector<Entry> entries_;
  std::vector<RecordType> records_;
  std::wstring problem_;
};

const wchar_t* TypeName(VARTYPE type);

}  // namespace zel::fuzz

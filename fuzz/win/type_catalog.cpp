#include "type_catalog.h"

namespace zel::fuzz {
namespace {

// The value type a TYPEDESC stands for, looking through one pointer level
// and through aliases; interfaces count as objects.
ParamType Resolve(ITypeInfo* owner, const TYPEDESC& desc) {
  ParamType result;
  const TYPEDESC* d = &desc;
  if (d->vt == VT_PTR) {
    const TYPEDESC* target = d->lptdesc;
    bool interfacePointer = false;
    if (target->vt == VT_USERDEFINED) {
      ITypeInfo* referred = nullptr;
      if (SUCCEEDED(owner->GetRefTypeInfo(target->hreftype, &referred))) {
        TYPEATTR* attr = nullptr;
        referred->GetTypeAttr(&attr);
        interfacePointer = attr && (attr->typekind == TKIND_INTERFACE || attr->typekind == TKIND_DISPATCH);
        if (attr) referred->ReleaseTypeAttr(attr);
        referred->Release();
      }
    }
    if (interfacePointer) return Resolve(owner, *target);
    result = Resolve(owner, *target);
    result.byPointer = true;
    return result;
  }
  if (d->vt != VT_USERDEFINED) {
    result.type = d->vt;
    return result;
  }
  ITypeInfo* referred = nullptr;
  if (FAILED(owner->GetRefTypeInfo(d->hreftype, &referred))) return result;
  TYPEATTR* attr = nullptr;
  if (SUCCEEDED(referred->GetTypeAttr(&attr))) {
    switch (attr->typekind) {
      case TKIND_ALIAS: result = Resolve(referred, attr->tdescAlias); break;
      case TKIND_DISPATCH: result.type = VT_DISPATCH; break;
      case TKIND_INTERFACE: result.type = VT_UNKNOWN; break;
      case TKIND_RECORD: result.type = VT_RECORD; break;
      case TKIND_ENUM: result.type = VT_I4; break;
      default: break;
    }
    referred->ReleaseTypeAttr(attr);
  }
  referred->Release();
  return result;
}

std::wstring NameOf(ITypeInfo* info, MEMBERID id) {
  BSTR name = nullptr;
  info->GetDocumentation(id, &name, nullptr, nullptr, nullptr);
  std::wstring result = name ? name : L"?";
  SysFreeString(name);
  return result;
}

}  // namespace

const wchar_t* TypeName(VARTYPE type) {
  switch (type) {
    case VT_EMPTY: return L"EMPTY"; case VT_NULL: return L"NULL"; case VT_I2: return L"I2";
    case VT_I4: return L"I4"; case VT_R4: return L"R4"; case VT_R8: return L"R8"; case VT_CY: return L"CY";
    case VT_DATE: return L"DATE"; case VT_BSTR: return L"BSTR"; case VT_DISPATCH: return L"DISPATCH";
    case VT_ERROR: return L"ERROR"; case VT_BOOL: return L"BOOL"; case VT_VARIANT: return L"VARIANT";
    case VT_UNKNOWN: return L"UNKNOWN"; case VT_DECIMAL: return L"DECIMAL"; case VT_I1: return L"I1";
    case VT_UI1: return L"UI1"; case VT_UI2: return L"UI2"; case VT_UI4: return L"UI4"; case VT_I8: return L"I8";
    case VT_UI8: return L"UI8"; case VT_INT: return L"INT"; case VT_UINT: return L"UINT";
    case VT_RECORD: return L"RECORD"; case VT_HRESULT: return L"HRESULT";
    default: return L"?";
  }
}

std::wstring Entry::Signature() const {
  std::wstring text = name + (kind == INVOKE_PROPERTYGET ? L" get(" : isPut() ? L" put(" : L"(");
  for (size_t i = 0; i < params.size(); ++i) {
    const ParamType& p = params[i];
    if (i) text += L", ";
    if (p.out) text += p.in ? L"in-out " : p.retval ? L"retval " : L"out ";
    if (p.optional) text += L"opt ";
    text += TypeName(p.type);
    if (p.byPointer) text += L"*";
  }
  return text + L")";
}

TypeCatalog::TypeCatalog(IDispatch* control) {
  ITypeInfo* info = nullptr;
  if (FAILED(control->GetTypeInfo(0, LOCALE_USER_DEFAULT, &info)) || !info) {
    problem_ = L"IDispatch::GetTypeInfo failed";
    return;
  }
  ReadInterface(info);
  ITypeLib* library = nullptr;
  UINT index = 0;
  if (SUCCEEDED(info->GetContainingTypeLib(&library, &index))) {
    ReadRecords(library);
    library->Release();
  }
  info->Release();
  if (entries_.empty() && problem_.empty()) problem_ = L"the interface has no entries";
}

TypeCatalog::~TypeCatalog() {
  for (RecordType& record : records_) record.info->Release();
}

// A dual interface's dispatch description lists the entries; its interface
// half (reference -1) has the vtable offsets that DispCallFunc needs.
void TypeCatalog::ReadInterface(ITypeInfo* dispatchInfo) {
  ITypeInfo* vtableInfo = nullptr;
  HREFTYPE half = 0;
  if (FAILED(dispatchInfo->GetRefTypeOfImplType(UINT(-1), &half)) ||
      FAILED(dispatchInfo->GetRefTypeInfo(half, &vtableInfo))) {
    problem_ = L"the interface is not dual";
    return;
  }
  TYPEATTR* attr = nullptr;
  vtableInfo->GetTypeAttr(&attr);
  for (UINT i = 0; attr && i < attr->cFuncs; ++i) {
    FUNCDESC* func = nullptr;
    if (FAILED(vtableInfo->GetFuncDesc(i, &func))) continue;
    Entry entry;
    entry.name = NameOf(vtableInfo, func->memid);
    entry.id = func->memid;
    entry.kind = func->invkind;
    entry.vtableOffset = func->oVft;
    for (SHORT p = 0; p < func->cParams; ++p) {
      const ELEMDESC& element = func->lprgelemdescParam[p];
      ParamType param = Resolve(vtableInfo, element.tdesc);
      USHORT flags = element.paramdesc.wParamFlags;
      param.out = flags & PARAMFLAG_FOUT;
      param.in = (flags & PARAMFLAG_FIN) || !param.out;
      param.retval = flags & PARAMFLAG_FRETVAL;
      param.optional = flags & PARAMFLAG_FOPT;
      entry.params.push_back(param);
    }
    entries_.push_back(entry);
    vtableInfo->ReleaseFuncDesc(func);
  }
  if (attr) vtableInfo->ReleaseTypeAttr(attr);
  vtableInfo->Release();
}

void TypeCatalog::ReadRecords(ITypeLib* library) {
  for (UINT i = 0; i < library->GetTypeInfoCount(); ++i) {
    TYPEKIND kind;
    ITypeInfo* info = nullptr;
    if (FAILED(library->GetTypeInfoType(i, &kind)) || kind != TKIND_RECORD ||
        FAILED(library->GetTypeInfo(i, &info)))
      continue;
    RecordType record;
    TYPEATTR* attr = nullptr;
    info->GetTypeAttr(&attr);
    if (attr && SUCCEEDED(GetRecordInfoFromTypeInfo(info, &record.info))) {
      record.guid = attr->guid;
      record.name = NameOf(info, MEMBERID_NIL);
      for (UINT v = 0; v < attr->cVars; ++v) {
        VARDESC* var = nullptr;
        if (FAILED(info->GetVarDesc(v, &var))) continue;
        record.fields.push_back({NameOf(info, var->memid), Resolve(info, var->elemdescVar.tdesc)});
        info->ReleaseVarDesc(var);
      }
      records_.push_back(std::move(record));
    }
    if (attr) info->ReleaseTypeAttr(attr);
    info->Release();
  }
}

}  // namespace zel::fuzz

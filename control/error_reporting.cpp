#include "control/error_reporting.h"

#include <oleauto.h>

#include <string>

#include "control/com_support.h"
#include "zelgraph_idl.h"

namespace zel {
namespace {

// The control's ProgID as registered, looked up once per process: the
// registry lookup is most of a refused call's cost and its answer does not
// change while the module is loaded.
const std::wstring& SourceName() {
  static const std::wstring name = [] {
    LPOLESTR progId = nullptr;
    std::wstring found = SUCCEEDED(ProgIDFromCLSID(CLSID_VX_Graph, &progId)) && progId ? progId
                                                                                      : L"ZELGraph.VX_Graph.1";
    CoTaskMemFree(progId);
    return found;
  }();
  return name;
}

}  // namespace

HRESULT ReportError(const GraphError& error) {
  // The message is kept in a buffer of 255 characters, as it always was.
  Text message = error.Message().substr(0, 254);
  ComPtr<ICreateErrorInfo> info;
  if (SUCCEEDED(CreateErrorInfo(info.put()))) {
    info->SetGUID(IID_IVX_Graph);
    info->SetSource(const_cast<LPOLESTR>(SourceName().c_str()));
    info->SetDescription(const_cast<LPOLESTR>(reinterpret_cast<const wchar_t*>(message.c_str())));
    info->SetHelpFile(nullptr);
    info->SetHelpContext(0);
    ComPtr<IErrorInfo> errorInfo;
    if (SUCCEEDED(info->QueryInterface(IID_IErrorInfo, reinterpret_cast<void**>(errorInfo.put()))))
      SetErrorInfo(0, errorInfo.get());
  }
  return E_INVALIDARG;
}

}  // namespace zel

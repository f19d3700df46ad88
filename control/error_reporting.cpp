#include "control/error_reporting.h"

#include <oleauto.h>

#include "control/com_support.h"
#include "zelgraph_idl.h"

namespace zel {

HRESULT ReportError(const GraphError& error) {
  // The message is kept in a buffer of 255 characters, as it always was.
  Text message = error.Message().substr(0, 254);
  ComPtr<ICreateErrorInfo> info;
  if (SUCCEEDED(CreateErrorInfo(info.put()))) {
    LPOLESTR progId = nullptr;
    ProgIDFromCLSID(CLSID_VX_Graph, &progId);
    info->SetGUID(IID_IVX_Graph);
    info->SetSource(progId ? progId : const_cast<LPOLESTR>(L"ZELGraph.VX_Graph.1"));
    info->SetDescription(const_cast<LPOLESTR>(reinterpret_cast<const wchar_t*>(message.c_str())));
    info->SetHelpFile(nullptr);
    info->SetHelpContext(0);
    ComPtr<IErrorInfo> errorInfo;
    if (SUCCEEDED(info->QueryInterface(IID_IErrorInfo, reinterpret_cast<void**>(errorInfo.put()))))
      SetErrorInfo(0, errorInfo.get());
    CoTaskMemFree(progId);
  }
  return E_INVALIDARG;
}

}  // namespace zel

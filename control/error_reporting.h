#pragma once
// How an automation entry turns what the engine raised into its result.
#include <windows.h>

#include <new>

#include "engine/graph_error.h"

namespace zel {

// Sets the thread's error information (interface IVX_Graph, source the
// control's ProgID, the message as description) and gives E_INVALIDARG.
HRESULT ReportError(const GraphError& error);

// Runs an entry's body: S_OK when it returns, the reported error or
// E_OUTOFMEMORY when it throws; a platform status passes through.
template <typename Body>
HRESULT Guarded(Body&& body) {
  try {
    body();
    return S_OK;
  } catch (const GraphError& error) {
    return ReportError(error);
  } catch (const StatusError& error) {
    return HRESULT(error.status);
  } catch (const std::bad_alloc&) {
    return E_OUTOFMEMORY;
  }
}

}  // namespace zel

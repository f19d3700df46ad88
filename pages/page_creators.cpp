// The class objects' creators of the three pages.
#include <new>

#include "pages/axes_prop_page.h"
#include "pages/dset_prop_page.h"
#include "pages/page_resources.h"
#include "pages/vx_graph_prop_page.h"
#include "util/text_ids.h"

namespace zel {
namespace {

template <typename Page, typename... Arguments>
HRESULT CreatePage(REFIID iid, void** object, Arguments... arguments) {
  IPropertyPage* page = new (std::nothrow) Page(arguments...);
  if (!page) return E_OUTOFMEMORY;
  HRESULT hr = page->QueryInterface(iid, object);
  page->Release();
  return hr;
}

}  // namespace

HRESULT CreateGraphSettingsPage(IUnknown*, REFIID iid, void** object) {
  return CreatePage<CVX_GraphPropPage>(iid, object);
}
HRESULT CreateAxesPage(IUnknown*, REFIID iid, void** object) {
  return CreatePage<CAxesPropPage>(iid, object);
}
HRESULT CreateCurvePage(IUnknown*, REFIID iid, void** object) {
  return CreatePage<CDSetPropPage>(iid, object);
}

}  // namespace zel

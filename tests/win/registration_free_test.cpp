// The control with no registration at all, as a host that ships it beside
// its program uses it: an activation context made from the module's
// side-by-side manifest finds the class by ProgID, its settings pages and
// the type library of its records.
#include <ocidl.h>

#include "com_client.h"
#include "control/class_ids.h"

namespace zel::testing {
namespace {

std::wstring BesideTheProgram(const wchar_t* name) {
  wchar_t path[MAX_PATH];
  DWORD length = GetModuleFileNameW(nullptr, path, MAX_PATH);
  std::wstring directory(path, length);
  return directory.substr(0, directory.find_last_of(L'\\') + 1) + name;
}

class RegistrationFreeTest : public ::testing::Test {
 protected:
  void SetUp() override {
    OleInitialize(nullptr);
    module = LoadLibraryW(L"ZELGraph.dll");
    ASSERT_NE(module, nullptr);
    auto unregister = reinterpret_cast<HRESULT(WINAPI*)()>(
        reinterpret_cast<void*>(GetProcAddress(module, "DllUnregisterServer")));
    ASSERT_EQ(unregister(), S_OK);
  }
  // The other tests find the control registered again.
  void TearDown() override {
    if (cookie) DeactivateActCtx(0, cookie);
    if (context != INVALID_HANDLE_VALUE) ReleaseActCtx(context);
    auto reregister = reinterpret_cast<HRESULT(WINAPI*)()>(
        reinterpret_cast<void*>(GetProcAddress(module, "DllRegisterServer")));
    EXPECT_EQ(reregister(), S_OK);
    FreeLibrary(module);
    OleUninitialize();
  }

  HMODULE module = nullptr;
  HANDLE context = INVALID_HANDLE_VALUE;
  ULONG_PTR cookie = 0;
};

TEST_F(RegistrationFreeTest, AHostCreatesHostsAndFeedsTheControlFromTheManifest) {
  CLSID clsid{};
  ASSERT_NE(CLSIDFromProgID(L"ZELGraph.VX_Graph", &clsid), S_OK) << "still registered";

  std::wstring manifest = BesideTheProgram(L"ZELGraph.manifest");
  ACTCTXW description{sizeof description};
  description.lpSource = manifest.c_str();
  context = CreateActCtxW(&description);
  ASSERT_NE(context, INVALID_HANDLE_VALUE) << "error " << GetLastError();
  ASSERT_TRUE(ActivateActCtx(context, &cookie));

  // The ProgID resolves (Wine answers with an alias of the class id, which
  // creates the same class), and so does the class id itself.
  ASSERT_EQ(CLSIDFromProgID(L"ZELGraph.VX_Graph", &clsid), S_OK);
  IUnknown* direct = nullptr;
  EXPECT_EQ(CoCreateInstance(CLSID_VX_Graph, nullptr, CLSCTX_INPROC_SERVER, IID_IVX_Graph,
                             reinterpret_cast<void**>(&direct)), S_OK);
  if (direct) direct->Release();
  ASSERT_TRUE(AtlAxWinReady());
  HWND frame = CreateWindowExW(0, L"STATIC", L"host", WS_OVERLAPPEDWINDOW, 0, 0, 640, 480, nullptr, nullptr,
                               nullptr, nullptr);
  HWND host = CreateWindowExW(0, L"AtlAxWin", L"ZELGraph.VX_Graph", WS_CHILD | WS_VISIBLE, 0, 0, 400, 300, frame,
                              nullptr, nullptr, nullptr);
  auto getControl = reinterpret_cast<HRESULT(WINAPI*)(HWND, IUnknown**)>(
      reinterpret_cast<void*>(GetProcAddress(GetModuleHandleW(L"atl.dll"), "AtlAxGetControl")));
  IUnknown* control = nullptr;
  ASSERT_EQ(getControl(host, &control), S_OK);
  IVX_Graph* graph = nullptr;
  control->QueryInterface(IID_IVX_Graph, reinterpret_cast<void**>(&graph));
  control->Release();
  ASSERT_NE(graph, nullptr);

  // A record made as compiled hosts make it, from the type library the
  // manifest names.
  IRecordInfo* axisRecord = nullptr;
  const GUID axisProps = {0x1376EC82, 0xAAC4, 0x4D18, {0x9F, 0x8F, 0xA6, 0xE0, 0x56, 0x3D, 0x4E, 0x15}};
  ASSERT_EQ(GetRecordInfoFromGuids(LIBID_ZELGRAPHLib, 1, 0, 0, axisProps, &axisRecord), S_OK);
  Var props;
  V_VT(&props.v) = VT_RECORD;
  V_RECORDINFO(&props.v) = axisRecord;
  V_RECORD(&props.v) = axisRecord->RecordCreate();
  static_cast<::AxisProps*>(V_RECORD(&props.v))->title = SysAllocString(L"Flow");
  Var real(L"REAL");
  EXPECT_EQ(graph->AddXAxis(1, V_BSTR(&real.v), props.v, 0, Var::Missing().v, Var::Missing().v), S_OK);
  Var read;
  ASSERT_EQ(graph->GetXAxisProperties(1, &read.v), S_OK);
  EXPECT_STREQ(static_cast<::AxisProps*>(V_RECORD(&read.v))->title, L"Flow");

  for (const GUID* page : {&kGraphPageClsid, &kAxesPageClsid, &kCurvePageClsid}) {
    IPropertyPage* created = nullptr;
    EXPECT_EQ(CoCreateInstance(*page, nullptr, CLSCTX_INPROC_SERVER, IID_IPropertyPage,
                               reinterpret_cast<void**>(&created)), S_OK);
    if (created) created->Release();
  }
  graph->Release();
  DestroyWindow(frame);
}

}  // namespace
}  // namespace zel::testing

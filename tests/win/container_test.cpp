// The control inside a real container: ATL's AtlAxWin window class (Wine's
// atl.dll) creates, sites and activates it in place.
#include <ocidl.h>
#include <olectl.h>

#include "com_client.h"
#include "memory_canvas.h"

namespace zel::testing {
namespace {

class ContainerTest : public ::testing::Test {
 protected:
  static void SetUpTestSuite() {
    OleInitialize(nullptr);
    registered = AtlAxWinReady();
    getControl = reinterpret_cast<HRESULT(WINAPI*)(HWND, IUnknown**)>(
        reinterpret_cast<void*>(GetProcAddress(GetModuleHandleW(L"atl.dll"), "AtlAxGetControl")));
  }
  static void TearDownTestSuite() { OleUninitialize(); }
  static inline bool registered = false;
  static inline HRESULT(WINAPI* getControl)(HWND, IUnknown**) = nullptr;

  void SetUp() override {
    ASSERT_TRUE(registered && getControl) << "AtlAxWinInit failed";
    parent = CreateWindowExW(0, L"STATIC", L"host", WS_OVERLAPPEDWINDOW, 0, 0, 640, 480, nullptr,
                             nullptr, nullptr, nullptr);
    host = CreateWindowExW(0, L"AtlAxWin", L"ZELGraph.VX_Graph", WS_CHILD | WS_VISIBLE, 0, 0, 400,
                           300, parent, nullptr, nullptr, nullptr);
    ASSERT_NE(host, nullptr);
  }
  void TearDown() override {
    if (parent) DestroyWindow(parent);
  }

  template <typename T>
  T* Control(const IID& iid) {
    IUnknown* unknown = nullptr;
    if (getControl(host, &unknown) != S_OK || !unknown) return nullptr;
    T* result = nullptr;
    unknown->QueryInterface(iid, reinterpret_cast<void**>(&result));
    unknown->Release();
    return result;
  }

  HWND parent = nullptr, host = nullptr;
};

TEST_F(ContainerTest, IsActivatedInPlaceInAWindowOfItsOwn) {
  IOleInPlaceObject* inPlace = Control<IOleInPlaceObject>(IID_IOleInPlaceObject);
  ASSERT_NE(inPlace, nullptr);
  HWND window = nullptr;
  ASSERT_EQ(inPlace->GetWindow(&window), S_OK);
  EXPECT_EQ(GetParent(window), host);
  EXPECT_EQ(GetWindowLongPtrW(window, GWL_STYLE) & (WS_HSCROLL | WS_VSCROLL), WS_HSCROLL | WS_VSCROLL);

  // The container moves it; its window follows.
  RECT place{10, 20, 210, 120}, moved;
  EXPECT_EQ(inPlace->SetObjectRects(&place, &place), S_OK);
  GetWindowRect(window, &moved);
  EXPECT_EQ(moved.right - moved.left, 200);
  EXPECT_EQ(moved.bottom - moved.top, 100);

  // Still an automation object in its container.
  IVX_Graph* graph = Control<IVX_Graph>(IID_IVX_Graph);
  ASSERT_NE(graph, nullptr);
  Var real(L"REAL");
  EXPECT_EQ(graph->AddXAxis(1, V_BSTR(&real.v), Var().v, 0, Var::Missing().v, Var::Missing().v), S_OK);
  UpdateWindow(window);
  graph->Release();

  EXPECT_EQ(inPlace->InPlaceDeactivate(), S_OK);
  EXPECT_FALSE(IsWindow(window));
  inPlace->Release();
}

TEST_F(ContainerTest, DescribesItselfToItsContainer) {
  IOleObject* object = Control<IOleObject>(IID_IOleObject);
  ASSERT_NE(object, nullptr);
  DWORD status = 0;
  EXPECT_EQ(object->GetMiscStatus(DVASPECT_CONTENT, &status), S_OK);
  EXPECT_EQ(status, 131473u);
  SIZEL size{2540, 1270}, read{};
  EXPECT_EQ(object->SetExtent(DVASPECT_CONTENT, &size), S_OK);
  EXPECT_EQ(object->GetExtent(DVASPECT_CONTENT, &read), S_OK);
  EXPECT_EQ(read.cx, 2540);
  CLSID clsid{};
  object->GetUserClassID(&clsid);
  EXPECT_TRUE(IsEqualCLSID(clsid, CLSID_VX_Graph));
  object->Release();

  ISpecifyPropertyPages* pages = Control<ISpecifyPropertyPages>(IID_ISpecifyPropertyPages);
  ASSERT_NE(pages, nullptr);
  CAUUID ids{};
  EXPECT_EQ(pages->GetPages(&ids), S_OK);
  EXPECT_EQ(ids.cElems, 3u);
  CoTaskMemFree(ids.pElems);
  pages->Release();

  IPersistStreamInit* persist = Control<IPersistStreamInit>(IID_IPersistStreamInit);
  ASSERT_NE(persist, nullptr);
  EXPECT_EQ(persist->InitNew(), S_OK);
  persist->Release();
}

TEST_F(ContainerTest, DrawsItsBackColourWhenAsked) {
  IVX_Graph* graph = Control<IVX_Graph>(IID_IVX_Graph);
  ASSERT_NE(graph, nullptr);
  EXPECT_EQ(graph->put_BackColor(0x00336699), S_OK);
  IViewObject2* view = nullptr;
  graph->QueryInterface(IID_IViewObject2, reinterpret_cast<void**>(&view));
  graph->Release();
  ASSERT_NE(view, nullptr);

  MemoryCanvas canvas(40, 30);
  RECTL bounds{0, 0, 40, 30};
  EXPECT_EQ(view->Draw(DVASPECT_CONTENT, -1, nullptr, nullptr, nullptr, canvas.dc(), &bounds, nullptr, nullptr, 0),
            S_OK);
  EXPECT_EQ(canvas.Pixel(20, 15), COLORREF(0x00336699));
  view->Release();
}

}  // namespace
}  // namespace zel::testing

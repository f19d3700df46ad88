#pragma once
// A control hosted as a form hosts it: ATL's container window inside a top
// window, the control's own window found through IOleWindow, and a sink
// connected to its events.
#include <ocidl.h>

#include "com_client.h"

namespace zel::testing {

class HostedControlTest : public ::testing::Test {
 protected:
  static void SetUpTestSuite() { OleInitialize(nullptr); }
  static void TearDownTestSuite() { OleUninitialize(); }

  void SetUp() override {
    ASSERT_TRUE(AtlAxWinReady());
    frame = CreateWindowExW(0, L"STATIC", L"host", WS_OVERLAPPEDWINDOW, 0, 0, 640, 480, nullptr, nullptr,
                            nullptr, nullptr);
    host = CreateWindowExW(0, L"AtlAxWin", L"ZELGraph.VX_Graph", WS_CHILD | WS_VISIBLE, 0, 0, 400, 300, frame,
                           nullptr, nullptr, nullptr);
    auto getControl = reinterpret_cast<HRESULT(WINAPI*)(HWND, IUnknown**)>(
        reinterpret_cast<void*>(GetProcAddress(GetModuleHandleW(L"atl.dll"), "AtlAxGetControl")));
    IUnknown* unknown = nullptr;
    ASSERT_EQ(getControl(host, &unknown), S_OK);
    unknown->QueryInterface(IID_IVX_Graph, reinterpret_cast<void**>(&graph));
    IOleWindow* oleWindow = nullptr;
    unknown->QueryInterface(IID_IOleWindow, reinterpret_cast<void**>(&oleWindow));
    IConnectionPointContainer* container = nullptr;
    unknown->QueryInterface(IID_IConnectionPointContainer, reinterpret_cast<void**>(&container));
    unknown->Release();
    ASSERT_TRUE(graph && oleWindow && container);
    oleWindow->GetWindow(&window);
    oleWindow->Release();
    ASSERT_TRUE(IsWindow(window));
    container->FindConnectionPoint(DIID__IVX_GraphEvents, &point);
    container->Release();
    ASSERT_EQ(point->Advise(&sink, &sink.cookie), S_OK);
  }
  void TearDown() override {
    if (point) {
      point->Unadvise(sink.cookie);
      point->Release();
    }
    if (graph) graph->Release();
    DestroyWindow(frame);
  }

  // A REAL X axis and a REAL Y axis, both with id 1.
  void AddRealAxes() {
    Var real(L"REAL");
    ASSERT_EQ(graph->AddXAxis(1, V_BSTR(&real.v), Var().v, 0, Var::Missing().v, Var::Missing().v), S_OK);
    ASSERT_EQ(graph->AddYAxis(1, V_BSTR(&real.v), Var().v, 0, Var::Missing().v, Var::Missing().v), S_OK);
  }
  void AddPlot(LONG id) {
    Var plot(L"PLOT");
    ASSERT_EQ(graph->AddDataset(id, V_BSTR(&plot.v), 1, 1, Var().v), S_OK);
  }
  // The events of one kind the sink heard, each as [dispid, arguments...].
  std::vector<std::vector<Var>> EventsOf(DISPID id) const {
    std::vector<std::vector<Var>> found;
    for (const auto& call : sink.calls)
      if (V_I4(&call[0].v) == id) found.push_back(call);
    return found;
  }

  HWND frame = nullptr, host = nullptr, window = nullptr;
  IVX_Graph* graph = nullptr;
  IConnectionPoint* point = nullptr;
  Sink sink;
};

}  // namespace zel::testing

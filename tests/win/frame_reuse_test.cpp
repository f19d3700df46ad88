// Frames of a hosted control on the display: after the first, a frame makes
// no bitmap, memory context, pen, brush or font of its own (the window keeps
// them), and the pixels are those a freshly made control draws, also after
// the window grew or shrank.
#include <gtest/gtest.h>

#include <array>

#include "hosted_control.h"
#include "import_hook.h"
#include "memory_canvas.h"

namespace zel::testing {
namespace {

// How many drawing objects the control module made while counting.
int made = 0;
std::array<void*, 6> originals{};

HDC WINAPI CountedCreateCompatibleDC(HDC dc) {
  ++made;
  return reinterpret_cast<HDC(WINAPI*)(HDC)>(originals[0])(dc);
}
HBITMAP WINAPI CountedCreateCompatibleBitmap(HDC dc, int width, int height) {
  ++made;
  return reinterpret_cast<HBITMAP(WINAPI*)(HDC, int, int)>(originals[1])(dc, width, height);
}
HPEN WINAPI CountedCreatePen(int style, int width, COLORREF color) {
  ++made;
  return reinterpret_cast<HPEN(WINAPI*)(int, int, COLORREF)>(originals[2])(style, width, color);
}
HPEN WINAPI CountedExtCreatePen(DWORD style, DWORD width, const LOGBRUSH* brush, DWORD count, const DWORD* dashes) {
  ++made;
  return reinterpret_cast<HPEN(WINAPI*)(DWORD, DWORD, const LOGBRUSH*, DWORD, const DWORD*)>(originals[3])(
      style, width, brush, count, dashes);
}
HFONT WINAPI CountedCreateFontIndirectW(const LOGFONTW* font) {
  ++made;
  return reinterpret_cast<HFONT(WINAPI*)(const LOGFONTW*)>(originals[4])(font);
}
HBRUSH WINAPI CountedCreateSolidBrush(COLORREF color) {
  ++made;
  return reinterpret_cast<HBRUSH(WINAPI*)(COLORREF)>(originals[5])(color);
}

// Counts what the control module makes while it lives.
class CountedObjects {
 public:
  CountedObjects() {
    HMODULE control = GetModuleHandleW(L"ZELGraph.dll");
    const std::pair<const char*, void*> stands[] = {
        {"CreateCompatibleDC", reinterpret_cast<void*>(CountedCreateCompatibleDC)},
        {"CreateCompatibleBitmap", reinterpret_cast<void*>(CountedCreateCompatibleBitmap)},
        {"CreatePen", reinterpret_cast<void*>(CountedCreatePen)},
        {"ExtCreatePen", reinterpret_cast<void*>(CountedExtCreatePen)},
        {"CreateFontIndirectW", reinterpret_cast<void*>(CountedCreateFontIndirectW)},
        {"CreateSolidBrush", reinterpret_cast<void*>(CountedCreateSolidBrush)}};
    for (size_t i = 0; i < hooks_.size(); ++i) {
      hooks_[i] = std::make_unique<ImportHook>(control, "gdi32.dll", stands[i].first, stands[i].second);
      EXPECT_TRUE(hooks_[i]->found()) << stands[i].first;
      originals[i] = hooks_[i]->original();
    }
    made = 0;
  }

 private:
  std::array<std::unique_ptr<ImportHook>, 6> hooks_;
};

// A REAL graph with a curve, a legend and a labelled hairline: pens,
// brushes and fonts of several kinds.
void Populate(IVX_Graph* graph) {
  Var real(L"REAL"), plot(L"PLOT");
  ASSERT_EQ(graph->AddXAxis(1, V_BSTR(&real.v), Var().v, 0, Var::Missing().v, Var::Missing().v), S_OK);
  ASSERT_EQ(graph->AddYAxis(1, V_BSTR(&real.v), Var().v, 0, Var::Missing().v, Var::Missing().v), S_OK);
  ASSERT_EQ(graph->AddDataset(10, V_BSTR(&plot.v), 1, 1, Var().v), S_OK);
  Var xs = Var::Array({0.0, 3.0, 5.0, 10.0}), ys = Var::Array({0.0, 8.0, 10.0, 3.0});
  ASSERT_EQ(graph->SetDatasetValues(10, xs.v, ys.v, Var::Array({0, 0, 0, 0}).v, Var::Missing().v), S_OK);
  ASSERT_EQ(graph->put_LegendEnabled(1), S_OK);
  LONG hairline = 0;
  ASSERT_EQ(graph->AddHairline(4, Var(long(RGB(0, 0, 255))).v, Var::Missing().v, &hairline), S_OK);
}

RECT ClientOf(HWND window) {
  RECT client{};
  GetClientRect(window, &client);
  return client;
}

// One frame as a container asks for it, into a canvas of the client's size.
void Frame(IVX_Graph* graph, MemoryCanvas& canvas) {
  IViewObject* view = nullptr;
  graph->QueryInterface(IID_IViewObject, reinterpret_cast<void**>(&view));
  ASSERT_NE(view, nullptr);
  RECTL bounds{0, 0, canvas.width(), canvas.height()};
  EXPECT_EQ(view->Draw(DVASPECT_CONTENT, -1, nullptr, nullptr, nullptr, canvas.dc(), &bounds, nullptr, nullptr, 0),
            S_OK);
  view->Release();
}

int Differences(const MemoryCanvas& a, const MemoryCanvas& b) {
  int count = 0;
  for (int y = 0; y < a.height(); ++y)
    for (int x = 0; x < a.width(); ++x) count += a.Pixel(x, y) != b.Pixel(x, y);
  return count;
}

class FrameReuseTest : public HostedControlTest {
 protected:
  // What a control made and populated afresh in a host of `size` draws.
  void DrawFresh(SIZE size, MemoryCanvas& canvas) {
    HWND other = CreateWindowExW(0, L"AtlAxWin", L"ZELGraph.VX_Graph", WS_CHILD | WS_VISIBLE, 0, 0, size.cx,
                                 size.cy, frame, nullptr, nullptr, nullptr);
    auto getControl = reinterpret_cast<HRESULT(WINAPI*)(HWND, IUnknown**)>(
        reinterpret_cast<void*>(GetProcAddress(GetModuleHandleW(L"atl.dll"), "AtlAxGetControl")));
    IUnknown* unknown = nullptr;
    ASSERT_EQ(getControl(other, &unknown), S_OK);
    IVX_Graph* fresh = nullptr;
    unknown->QueryInterface(IID_IVX_Graph, reinterpret_cast<void**>(&fresh));
    unknown->Release();
    ASSERT_NE(fresh, nullptr);
    Populate(fresh);
    Frame(fresh, canvas);
    fresh->Release();
    DestroyWindow(other);
  }
};

TEST_F(FrameReuseTest, FramesAfterTheFirstMakeNoBitmapsOrDrawingObjects) {
  Populate(graph);
  ShowWindow(frame, SW_SHOW);
  UpdateWindow(window);
  RECT client = ClientOf(window);
  MemoryCanvas first(client.right, client.bottom), later(client.right, client.bottom, RGB(1, 2, 3));
  Frame(graph, first);
  {
    CountedObjects counted;
    for (int i = 0; i < 10; ++i) {
      later.Clear(RGB(1, 2, 3));
      Frame(graph, later);
      InvalidateRect(window, nullptr, FALSE);
      UpdateWindow(window);
    }
    EXPECT_EQ(made, 0) << "objects made by ten frames and ten paints";
  }
  EXPECT_EQ(Differences(first, later), 0);
}

TEST_F(FrameReuseTest, AGrownOrShrunkWindowDrawsWhatAFreshOneDraws) {
  Populate(graph);
  RECT client = ClientOf(window);
  MemoryCanvas start(client.right, client.bottom);
  Frame(graph, start);
  // Larger than the first frame, then smaller than the second: the buffer
  // grows, then is reused with room to spare.
  for (SIZE size : {SIZE{520, 380}, SIZE{430, 330}}) {
    SetWindowPos(host, nullptr, 0, 0, size.cx, size.cy, SWP_NOMOVE | SWP_NOZORDER);
    client = ClientOf(window);
    MemoryCanvas reused(client.right, client.bottom), fresh(client.right, client.bottom);
    Frame(graph, reused);
    DrawFresh(size, fresh);
    EXPECT_EQ(Differences(reused, fresh), 0) << size.cx << " by " << size.cy;
  }
}

}  // namespace
}  // namespace zel::testing

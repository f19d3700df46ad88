// Builds a gallery of graphs with the ZELGraph control, as a host program
// does, and writes each picture as a PNG file.
//
// usage: gallery.exe OUTPUT_FOLDER
//
// The control must be registered (regsvr32 ZELGraph.dll). Each graph is made
// in a control of its own, hosted in a window of 800 by 500 pixels by ATL's
// container window class, drawn through IViewObject::Draw into a bitmap and
// encoded with the platform's imaging codecs.
#include <windows.h>
#include <ocidl.h>
#include <wincodec.h>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <initializer_list>
#include <string>
#include <utility>
#include <vector>

#include "gallery_graphs.h"
#include "host_support.h"
#include "zelgraph_idl.h"

namespace {

using namespace host;
using namespace gallery;

constexpr int kWidth = 800;
constexpr int kHeight = 500;

// A control hosted by ATL's container window, as a dialog or form hosts it.
struct HostedGraph {
  HWND frame = nullptr;
  HWND host = nullptr;
  IVX_Graph* graph = nullptr;

  HostedGraph() {
    frame = CreateWindowExW(0, L"STATIC", L"gallery", WS_POPUP, 0, 0, kWidth, kHeight, nullptr,
                            nullptr, nullptr, nullptr);
    host = CreateWindowExW(0, L"AtlAxWin", L"ZELGraph.VX_Graph", WS_CHILD | WS_VISIBLE, 0, 0,
                           kWidth, kHeight, frame, nullptr, nullptr, nullptr);
    auto getControl = reinterpret_cast<HRESULT(WINAPI*)(HWND, IUnknown**)>(
        reinterpret_cast<void*>(GetProcAddress(GetModuleHandleW(L"atl.dll"), "AtlAxGetControl")));
    IUnknown* control = nullptr;
    if (host && getControl && SUCCEEDED(getControl(host, &control)) && control) {
      control->QueryInterface(IID_IVX_Graph, reinterpret_cast<void**>(&graph));
      control->Release();
    }
  }
  ~HostedGraph() {
    if (graph) graph->Release();
    if (frame) DestroyWindow(frame);
  }
  // The control's own window, inside the container's.
  HWND ControlWindow() const {
    IOleWindow* window = nullptr;
    HWND handle = nullptr;
    if (graph && SUCCEEDED(graph->QueryInterface(IID_IOleWindow, reinterpret_cast<void**>(&window)))) {
      window->GetWindow(&handle);
      window->Release();
    }
    return handle;
  }
};

bool Render(const HostedGraph& hosted, const std::wstring& path) {
  IViewObject* view = nullptr;
  if (FAILED(hosted.graph->QueryInterface(IID_IViewObject, reinterpret_cast<void**>(&view)))) return false;
  RECT client{0, 0, kWidth, kHeight};
  if (HWND window = hosted.ControlWindow()) GetClientRect(window, &client);
  BITMAPINFO info{};
  info.bmiHeader = {sizeof(BITMAPINFOHEADER), client.right, -client.bottom, 1, 32, BI_RGB};
  void* bits = nullptr;
  HDC dc = CreateCompatibleDC(nullptr);
  HBITMAP bitmap = CreateDIBSection(dc, &info, DIB_RGB_COLORS, &bits, nullptr, 0);
  HGDIOBJ old = SelectObject(dc, bitmap);
  RECTL bounds{0, 0, client.right, client.bottom};
  bool ok = SUCCEEDED(view->Draw(DVASPECT_CONTENT, -1, nullptr, nullptr, nullptr, dc, &bounds,
                                 nullptr, nullptr, 0));
  GdiFlush();
  SelectObject(dc, old);
  ok = ok && WritePng(client.right, client.bottom, bits, path);
  DeleteObject(bitmap);
  DeleteDC(dc);
  view->Release();
  return ok;
}

}  // namespace

int wmain(int argc, wchar_t** argv) {
  if (argc != 2) {
    std::fprintf(stderr, "usage: gallery OUTPUT_FOLDER\n");
    return 2;
  }
  std::wstring folder = argv[1];
  CreateDirectoryW(folder.c_str(), nullptr);
  OleInitialize(nullptr);
  if (!AtlContainerReady()) {
    std::fprintf(stderr, "ATL's container window class is not available\n");
    return 1;
  }
  struct Picture {
    const wchar_t* name;
    void (*build)(IVX_Graph*);
  };
  const Picture pictures[] = {{L"time_trend", TimeTrend}, {L"status_markers", StatusMarkers},
                              {L"area_fills", AreaFills},  {L"bars", Bars},
                              {L"stacked_bars", StackedBars}, {L"pie", Pie},
                              {L"zoomed", Zoomed}};
  int failures = 0;
  for (const Picture& picture : pictures) {
    HostedGraph hosted;
    std::wstring path = folder + L"\\" + picture.name + L".png";
    bool ok = hosted.graph != nullptr;
    if (ok) {
      // Split Y axes are a setting of the whole process: each picture starts without.
      LONG off = 0;
      hosted.graph->enableSplitYAxis(&off, &off, &off);
      picture.build(hosted.graph);
      ok = Render(hosted, path);
    }
    std::fwprintf(ok ? stdout : stderr, L"%ls %ls\n", ok ? L"wrote" : L"could not write", path.c_str());
    failures += ok ? 0 : 1;
  }
  OleUninitialize();
  return failures ? 1 : 0;
}

// An operator's session with the ZELGraph control on a real screen. A
// visible top-level window hosts the control in ATL's container; the mouse is
// driven through the window system's input queue (SendInput), as a person
// would drive it: a rubber band in the default mode, a zoom to it, a pan and
// a hairline drag. After each step the window is copied from the screen and
// written as a PNG. Last, a control holding the gallery's time trend opens
// its "Graph Settings" frame, and each of its pages is photographed. The program prints what the host heard, one "PASS" or
// "FAIL" line per check and "done" at its end, and exits with status 1 when a
// check failed, so that it doubles as a test.
//
// usage: interaction_session.exe OUTPUT_FOLDER
//
// The control must be registered (regsvr32 ZELGraph.dll), and Wine must have
// a real display (its X11 driver, under Xvfb for instance).
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

constexpr int kWidth = 800;
constexpr int kHeight = 480;
constexpr COLORREF kHairlineColour = RGB(230, 0, 180);
constexpr DISPID kAreaSelected = 2, kHairlineMoved = 3;

int failures = 0;

void Check(bool ok, const char* what) {
  std::printf("%s %s\n", ok ? "PASS" : "FAIL", what);
  std::fflush(stdout);
  failures += ok ? 0 : 1;
}

double Number(const VARIANT& v) {
  VARIANT copy;
  VariantInit(&copy);
  double n = NAN;
  if (SUCCEEDED(VariantChangeType(&copy, const_cast<VARIANT*>(&v), 0, VT_R8))) n = V_R8(&copy);
  return n;
}

// The host's side of _IVX_GraphEvents: prints each event with its arguments
// and keeps them.
class Sink : public IDispatch {
 public:
  struct Event {
    DISPID id;
    std::vector<double> args;
  };
  std::vector<Event> heard;

  STDMETHODIMP QueryInterface(REFIID iid, void** object) override {
    bool mine = IsEqualIID(iid, IID_IUnknown) || IsEqualIID(iid, IID_IDispatch) ||
                IsEqualIID(iid, DIID__IVX_GraphEvents);
    *object = mine ? this : nullptr;
    return mine ? S_OK : E_NOINTERFACE;
  }
  STDMETHODIMP_(ULONG) AddRef() override { return 2; }
  STDMETHODIMP_(ULONG) Release() override { return 1; }
  STDMETHODIMP GetTypeInfoCount(UINT*) override { return E_NOTIMPL; }
  STDMETHODIMP GetTypeInfo(UINT, LCID, ITypeInfo**) override { return E_NOTIMPL; }
  STDMETHODIMP GetIDsOfNames(REFIID, LPOLESTR*, UINT, LCID, DISPID*) override { return E_NOTIMPL; }
  STDMETHODIMP Invoke(DISPID id, REFIID, LCID, WORD, DISPPARAMS* params, VARIANT*, EXCEPINFO*, UINT*) override {
    static const char* const names[] = {"?", "?", "AreaSelected", "HairlineMoved", "GraphAreaMoved",
                                        "HighlightLegendAndCurves", "SelectLegendFromGraph"};
    Event event{id, {}};
    std::printf("  heard %s(", id >= 0 && id <= 6 ? names[id] : "?");
    for (UINT i = params->cArgs; i-- > 0;) {  // arguments arrive last first
      event.args.push_back(Number(params->rgvarg[i]));
      std::printf("%s%.4g", i + 1 == params->cArgs ? "" : ", ", event.args.back());
    }
    std::printf(")\n");
    heard.push_back(event);
    return S_OK;
  }
  const Event* Last(DISPID id) const {
    for (auto it = heard.rbegin(); it != heard.rend(); ++it)
      if (it->id == id) return &*it;
    return nullptr;
  }
};

void SetAxis(IVX_Graph* g, bool vertical, double min, double max, const wchar_t* title) {
  WithRecord<AxisProps>(
      kAxisProps,
      [&](AxisProps& record) {
        V_VT(&record.min) = VT_R8, V_R8(&record.min) = min;
        V_VT(&record.max) = VT_R8, V_R8(&record.max) = max;
        record.title = SysAllocString(title);
        record.gridMode = SysAllocString(L"ANNOTATION");
        if (vertical) record.titlePosition = SysAllocString(L"CENTER");
      },
      [&](VARIANT& props) { vertical ? g->SetYAxisProperties(1, props) : g->SetXAxisProperties(1, props); });
}

void AddCurve(IVX_Graph* g, LONG id, const wchar_t* title, COLORREF colour, double (*shape)(double)) {
  Bstr plot(L"PLOT");
  WithRecord<DatasetProps>(
      kDatasetProps,
      [&](DatasetProps& record) {
        record.title = SysAllocString(title);
        record.type = SysAllocString(L"PLOT");
        record.lineStyle = SysAllocString(L"SOLID");
        record.markerShape = SysAllocString(L"NONE");
        record.titleFont = SysAllocString(L"Arial,9");
        record.lineWidth = 2;
        record.lineColor = LONG(colour);
        record.markerColor = LONG(colour);
        record.YaxisID = 1;
      },
      [&](VARIANT& props) { g->AddDataset(id, plot, 1, 1, props); });
  const int count = 241;
  SAFEARRAY* xs = SafeArrayCreateVector(VT_R8, 0, count);
  SAFEARRAY* ys = SafeArrayCreateVector(VT_R8, 0, count);
  SAFEARRAY* status = SafeArrayCreateVector(VT_I4, 0, count);
  double *x = nullptr, *y = nullptr;
  SafeArrayAccessData(xs, reinterpret_cast<void**>(&x));
  SafeArrayAccessData(ys, reinterpret_cast<void**>(&y));
  for (int i = 0; i < count; ++i) x[i] = i * 0.5, y[i] = shape(x[i]);
  SafeArrayUnaccessData(xs);
  SafeArrayUnaccessData(ys);
  VARIANT vx, vy, vs, append = Missing();
  V_VT(&vx) = VT_ARRAY | VT_R8, V_ARRAY(&vx) = xs;
  V_VT(&vy) = VT_ARRAY | VT_R8, V_ARRAY(&vy) = ys;
  V_VT(&vs) = VT_ARRAY | VT_I4, V_ARRAY(&vs) = status;
  g->SetDatasetValues(id, vx, vy, vs, append);
  for (VARIANT* v : {&vx, &vy, &vs}) VariantClear(v);
}

// A furnace warming up over two minutes: inlet and outlet temperatures, a
// grid, a legend on the right and one hairline labelled with its time.
LONG BuildGraph(IVX_Graph* g) {
  Bstr real(L"REAL");
  VARIANT none, missing = Missing();
  VariantInit(&none);
  g->AddXAxis(1, real, none, 0, missing, missing);
  g->AddYAxis(1, real, none, 0, missing, missing);
  SetAxis(g, false, 0, 120, L"Time (s)");
  SetAxis(g, true, 0, 100, L"Temperature (\u00b0C)");
  LONG colour = LONG(RGB(210, 210, 210));
  short grid[3] = {2, 1, 3};
  g->SetGridProps(&colour, grid);
  AddCurve(g, 1, L"Inlet", RGB(200, 30, 30),
           [](double t) { return 20 + 60 * (1 - std::exp(-t / 35)) + 4 * std::sin(t / 4); });
  AddCurve(g, 2, L"Outlet", RGB(20, 90, 200),
           [](double t) { return 18 + 45 * (1 - std::exp(-t / 55)) + 2 * std::sin(t / 7 + 1); });
  g->put_LegendEnabled(1);
  Bstr right(L"RIGHT");
  g->put_LegendPosition(right);
  VARIANT colourArg, width;
  VariantInit(&colourArg), VariantInit(&width);
  V_VT(&colourArg) = VT_I4, V_I4(&colourArg) = LONG(kHairlineColour);
  V_VT(&width) = VT_I2, V_I2(&width) = 2;
  LONG id = -1;
  g->AddHairline(30, colourArg, width, &id);
  g->SetHairlineShowXAxis(1);  // the X axis whose values label the hairlines
  return id;
}

struct Zoom {
  float left = NAN, right = NAN, bottom = NAN, top = NAN;
};

Zoom ReadZoom(IVX_Graph* g) {
  Zoom z;
  VARIANT v;
  VariantInit(&v);
  if (FAILED(g->get_ZoomRect(&v)) || !(V_VT(&v) & VT_ARRAY)) return z;
  float* parts[] = {&z.left, &z.right, &z.bottom, &z.top};
  for (LONG i = 0; i < 4; ++i) {
    VARIANT element;
    VariantInit(&element);
    if ((V_VT(&v) & VT_TYPEMASK) == VT_VARIANT) {
      if (SUCCEEDED(SafeArrayGetElement(V_ARRAY(&v), &i, &element))) *parts[i] = float(Number(element));
      VariantClear(&element);
    } else {
      SafeArrayGetElement(V_ARRAY(&v), &i, parts[i]);
    }
  }
  VariantClear(&v);
  std::printf("  ZoomRect (%.4f, %.4f, %.4f, %.4f)\n", z.left, z.right, z.bottom, z.top);
  return z;
}

void SetZoom(IVX_Graph* g, const Zoom& z) {
  SAFEARRAY* array = SafeArrayCreateVector(VT_R4, 0, 4);
  float* parts = nullptr;
  SafeArrayAccessData(array, reinterpret_cast<void**>(&parts));
  parts[0] = z.left, parts[1] = z.right, parts[2] = z.bottom, parts[3] = z.top;
  SafeArrayUnaccessData(array);
  VARIANT v;
  V_VT(&v) = VT_ARRAY | VT_R4, V_ARRAY(&v) = array;
  g->put_ZoomRect(v);
  VariantClear(&v);
  std::printf("zoom set to (%.4f, %.4f, %.4f, %.4f)\n", z.left, z.right, z.bottom, z.top);
}

void SetMode(IVX_Graph* g, const wchar_t* mode) {
  Bstr text(mode);
  g->put_MouseMode(text);
  std::printf("mouse mode %ls\n", mode);
}

// Lets the window system deliver input and paint for `ms` milliseconds.
void Pump(DWORD ms) {
  DWORD start = GetTickCount();
  do {
    MsgWaitForMultipleObjects(0, nullptr, FALSE, 10, QS_ALLINPUT);
    MSG msg;
    while (PeekMessageW(&msg, nullptr, 0, 0, PM_REMOVE)) {
      TranslateMessage(&msg);
      DispatchMessageW(&msg);
    }
  } while (GetTickCount() - start < ms);
}

// One mouse input through the window system: a move to a point of `window`'s
// client area, a press or a release there.
void Mouse(HWND window, POINT client, DWORD flags) {
  POINT p = client;
  ClientToScreen(window, &p);
  int w = GetSystemMetrics(SM_CXSCREEN), h = GetSystemMetrics(SM_CYSCREEN);
  INPUT input{};
  input.type = INPUT_MOUSE;
  // Absolute coordinates are in 65536ths of the screen; the middle of the
  // pixel keeps rounding from landing on its neighbour.
  input.mi.dx = LONG((p.x * 65536.0 + 32768) / w);
  input.mi.dy = LONG((p.y * 65536.0 + 32768) / h);
  input.mi.dwFlags = MOUSEEVENTF_MOVE | MOUSEEVENTF_ABSOLUTE | flags;
  SendInput(1, &input, sizeof input);
  Pump(30);
}

// A left-button drag as a hand makes it, in steps; `during` runs before the
// button is let go.
template <typename During>
void Drag(HWND window, POINT from, POINT to, During during) {
  Mouse(window, from, 0);
  Mouse(window, from, MOUSEEVENTF_LEFTDOWN);
  const int steps = 8;
  for (int i = 1; i <= steps; ++i)
    Mouse(window, {from.x + (to.x - from.x) * i / steps, from.y + (to.y - from.y) * i / steps}, 0);
  Pump(100);
  during();
  Mouse(window, to, MOUSEEVENTF_LEFTUP);
  Pump(150);
}

// The pixels of a window's rectangle as they are on the screen.
struct Shot {
  int width = 0, height = 0;
  std::vector<DWORD> pixels;  // 0x00RRGGBB, top row first
  COLORREF At(int x, int y) const {
    DWORD p = pixels[size_t(y) * size_t(width) + size_t(x)];
    return RGB((p >> 16) & 255, (p >> 8) & 255, p & 255);
  }
};

Shot Capture(HWND window, bool clientOnly) {
  RECT r;
  if (clientOnly) {
    GetClientRect(window, &r);
    MapWindowPoints(window, nullptr, reinterpret_cast<POINT*>(&r), 2);
  } else {
    GetWindowRect(window, &r);
  }
  Shot shot;
  shot.width = r.right - r.left, shot.height = r.bottom - r.top;
  BITMAPINFO info{};
  info.bmiHeader = {sizeof(BITMAPINFOHEADER), shot.width, -shot.height, 1, 32, BI_RGB};
  HDC screen = GetDC(nullptr);
  HDC dc = CreateCompatibleDC(screen);
  void* bits = nullptr;
  HBITMAP bitmap = CreateDIBSection(dc, &info, DIB_RGB_COLORS, &bits, nullptr, 0);
  HGDIOBJ old = SelectObject(dc, bitmap);
  BitBlt(dc, 0, 0, shot.width, shot.height, screen, r.left, r.top, SRCCOPY);
  GdiFlush();
  auto* p = static_cast<const DWORD*>(bits);
  shot.pixels.assign(p, p + size_t(shot.width) * size_t(shot.height));
  SelectObject(dc, old);
  DeleteObject(bitmap);
  DeleteDC(dc);
  ReleaseDC(nullptr, screen);
  return shot;
}

// Copies the whole top-level window from the screen into FOLDER\NAME.png.
void Screenshot(HWND frame, const std::wstring& folder, const wchar_t* name) {
  std::wstring path = folder + L"\\" + name + L".png";
  Shot shot = Capture(frame, false);
  bool ok = WritePng(shot.width, shot.height, shot.pixels.data(), path);
  std::printf("%s %ls\n", ok ? "wrote" : "could not write", path.c_str());
  if (!ok) ++failures;
}

// The middle column of the hairline's colour on the control's row `y`, or -1.
int HairlineColumn(const Shot& shot, int y) {
  int first = -1, last = -1;
  for (int x = 0; x < shot.width; ++x)
    if (shot.At(x, y) == kHairlineColour) {
      if (first < 0) first = x;
      last = x;
    }
  return first < 0 ? -1 : (first + last) / 2;
}

// The columns, from first to last, where the hairline's colour shows below
// the line at column `line` (found on row `y`): where its value label stands.
std::pair<int, int> LabelColumns(const Shot& shot, int line, int y) {
  while (y < shot.height && shot.At(line, y) == kHairlineColour) ++y;
  std::pair<int, int> columns{-1, -1};
  for (++y; y < shot.height; ++y)
    for (int x = 0; x < shot.width; ++x)
      if (shot.At(x, y) == kHairlineColour) {
        if (columns.first < 0 || x < columns.first) columns.first = x;
        columns.second = std::max(columns.second, x);
      }
  return columns;
}

// How many pixels differ between two shots along row `y` from x0 to x1.
int ChangedOnRow(const Shot& a, const Shot& b, int y, int x0, int x1) {
  int changed = 0;
  for (int x = x0; x <= x1; ++x) changed += a.At(x, y) != b.At(x, y);
  return changed;
}

// Captures the control's window until `holds` accepts the picture or a
// second has passed: the screen may show a paint a moment after the window
// system delivered it. Returns the last picture.
template <typename Holds>
Shot Await(HWND window, Holds holds) {
  Shot shot = Capture(window, true);
  for (int tries = 0; tries < 10 && !holds(shot); ++tries) {
    Pump(100);
    shot = Capture(window, true);
  }
  return shot;
}

bool Near(float a, float b, float tolerance) { return std::fabs(a - b) <= tolerance; }

LRESULT CALLBACK FrameProcedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
  if (message == WM_SIZE) {
    if (HWND child = GetWindow(window, GW_CHILD)) MoveWindow(child, 0, 0, LOWORD(lParam), HIWORD(lParam), TRUE);
    return 0;
  }
  return DefWindowProcW(window, message, wParam, lParam);
}

// The settings frame photographed page by page from inside its modal loop,
// by a timer of this thread: every other tick turns to the next tab, the
// ticks between take the picture once the page has painted.
struct PageShots {
  std::wstring folder;
  int tick = 0;
  int taken = 0;
  bool closed = false;
};
PageShots pageShots;

BOOL CALLBACK FindPropertySheet(HWND window, LPARAM found) {
  if (!IsWindowVisible(window) || !FindWindowExW(window, nullptr, L"SysTabControl32", nullptr)) return TRUE;
  *reinterpret_cast<HWND*>(found) = window;
  return FALSE;
}

void CALLBACK ShootNextPage(HWND, UINT, UINT_PTR timer, DWORD) {
  static const wchar_t* const names[] = {L"page_graph", L"page_axes", L"page_curve"};
  HWND sheet = nullptr;
  EnumThreadWindows(GetCurrentThreadId(), FindPropertySheet, LPARAM(&sheet));
  if (!sheet) return;  // not open yet
  int page = pageShots.tick / 2;
  if (page == 3) {
    KillTimer(nullptr, timer);
    PostMessageW(sheet, WM_COMMAND, IDCANCEL, 0);
    pageShots.closed = true;
  } else if (pageShots.tick % 2 == 0) {
    SendMessageW(sheet, PSM_SETCURSEL, WPARAM(page), 0);
    RedrawWindow(sheet, nullptr, nullptr, RDW_INVALIDATE | RDW_ALLCHILDREN | RDW_UPDATENOW);
  } else {
    Screenshot(sheet, pageShots.folder, names[page]);
    ++pageShots.taken;
  }
  ++pageShots.tick;
}

// A new control in `frame`, built as the gallery's time trend, opens its
// settings frame as the context menu's "Graph Settings..." does.
void ShootSettingsPages(HWND frame, const std::wstring& folder) {
  RECT client;
  GetClientRect(frame, &client);
  HWND host = CreateWindowExW(0, L"AtlAxWin", L"ZELGraph.VX_Graph", WS_CHILD | WS_VISIBLE, 0, 0, client.right,
                              client.bottom, frame, nullptr, nullptr, nullptr);
  auto getControl = reinterpret_cast<HRESULT(WINAPI*)(HWND, IUnknown**)>(
      reinterpret_cast<void*>(GetProcAddress(GetModuleHandleW(L"atl.dll"), "AtlAxGetControl")));
  IUnknown* control = nullptr;
  IVX_Graph* graph = nullptr;
  IOleWindow* oleWindow = nullptr;
  HWND window = nullptr;
  if (host && SUCCEEDED(getControl(host, &control)) && control) {
    control->QueryInterface(IID_IVX_Graph, reinterpret_cast<void**>(&graph));
    control->QueryInterface(IID_IOleWindow, reinterpret_cast<void**>(&oleWindow));
    control->Release();
  }
  if (oleWindow) oleWindow->GetWindow(&window), oleWindow->Release();
  Check(graph && window, "a second control is hosted for the settings pages");
  if (!graph || !window) return;
  gallery::TimeTrend(graph);
  graph->put_PropertiesModificationAllowed(1);
  Pump(200);
  pageShots.folder = folder;
  SetTimer(nullptr, 0, 300, ShootNextPage);
  PostMessageW(window, WM_COMMAND, 244, 0);
  for (int waited = 0; waited < 50 && !pageShots.closed; ++waited) Pump(100);
  Pump(200);
  Check(pageShots.taken == 3, "the settings frame shows its three pages");
  graph->Release();
  DestroyWindow(host);
}

int Session(const std::wstring& folder) {
  WNDCLASSW frameClass{};
  frameClass.lpfnWndProc = FrameProcedure;
  frameClass.hInstance = GetModuleHandleW(nullptr);
  frameClass.hCursor = LoadCursorW(nullptr, reinterpret_cast<LPCWSTR>(IDC_ARROW));
  frameClass.hbrBackground = reinterpret_cast<HBRUSH>(COLOR_WINDOW + 1);
  frameClass.lpszClassName = L"ZELGraphSession";
  RegisterClassW(&frameClass);
  RECT outer{0, 0, kWidth, kHeight};
  // A caption without its buttons: they would need the symbol font, which a
  // bare Wine prefix lacks.
  const DWORD style = WS_OVERLAPPED | WS_CAPTION | WS_THICKFRAME;
  AdjustWindowRect(&outer, style, FALSE);
  HWND frame = CreateWindowExW(0, L"ZELGraphSession", L"ZELGraph interaction session", style, 40,
                               40, outer.right - outer.left, outer.bottom - outer.top, nullptr, nullptr,
                               frameClass.hInstance, nullptr);
  HWND host = CreateWindowExW(0, L"AtlAxWin", L"ZELGraph.VX_Graph", WS_CHILD | WS_VISIBLE, 0, 0, kWidth, kHeight,
                              frame, nullptr, nullptr, nullptr);
  auto getControl = reinterpret_cast<HRESULT(WINAPI*)(HWND, IUnknown**)>(
      reinterpret_cast<void*>(GetProcAddress(GetModuleHandleW(L"atl.dll"), "AtlAxGetControl")));
  IUnknown* control = nullptr;
  if (!host || !getControl || FAILED(getControl(host, &control)) || !control) {
    std::fprintf(stderr, "the control could not be created: is ZELGraph.dll registered?\n");
    return 2;
  }
  IVX_Graph* graph = nullptr;
  IOleWindow* oleWindow = nullptr;
  IConnectionPointContainer* container = nullptr;
  control->QueryInterface(IID_IVX_Graph, reinterpret_cast<void**>(&graph));
  control->QueryInterface(IID_IOleWindow, reinterpret_cast<void**>(&oleWindow));
  control->QueryInterface(IID_IConnectionPointContainer, reinterpret_cast<void**>(&container));
  control->Release();
  HWND window = nullptr;
  IConnectionPoint* point = nullptr;
  Sink sink;
  DWORD cookie = 0;
  if (oleWindow) oleWindow->GetWindow(&window), oleWindow->Release();
  if (container) container->FindConnectionPoint(DIID__IVX_GraphEvents, &point), container->Release();
  if (!graph || !window || !point || FAILED(point->Advise(&sink, &cookie))) {
    std::fprintf(stderr, "the control has no window or no events\n");
    return 2;
  }

  LONG hairline = BuildGraph(graph);
  ShowWindow(frame, SW_SHOWNORMAL);
  SetForegroundWindow(frame);
  UpdateWindow(frame);
  Pump(400);
  RECT client;
  GetClientRect(window, &client);
  std::printf("control window %ldx%ld, screen %dx%d\n", client.right, client.bottom,
              GetSystemMetrics(SM_CXSCREEN), GetSystemMetrics(SM_CYSCREEN));
  Screenshot(frame, folder, L"interaction_1_start");
  const int row = client.bottom / 2;
  Shot start = Await(window, [&](const Shot& shot) { return HairlineColumn(shot, row) > 0; });
  int hairlineX = HairlineColumn(start, row);
  float startPosition = NAN;
  graph->GetHairlinePosition(hairline, &startPosition);
  std::printf("hairline %ld at %.2f%% of the plot, on screen at x %d\n", hairline, startPosition, hairlineX);
  Check(hairlineX > 0, "the hairline is on the screen");

  // 1. A rubber band in the default mode, photographed while the button is
  // still down, then released.
  Zoom full = ReadZoom(graph);
  POINT bandFrom{client.right * 45 / 100, client.bottom * 30 / 100};
  POINT bandTo{client.right * 70 / 100, client.bottom * 62 / 100};
  Drag(window, bandFrom, bandTo, [&] {
    Shot during = Await(window, [&](const Shot& shot) {
      return ChangedOnRow(start, shot, bandFrom.y, bandFrom.x + 4, bandTo.x - 4) > 20;
    });
    Check(ChangedOnRow(start, during, bandFrom.y, bandFrom.x + 4, bandTo.x - 4) > 20,
          "the rubber band shows on the screen while it is dragged");
    Screenshot(frame, folder, L"interaction_2_band");
  });
  const Sink::Event* area = sink.Last(kAreaSelected);
  Check(area && area->args.size() == 4, "releasing the band fires AreaSelected");
  Zoom band;
  if (area && area->args.size() == 4) {
    band = {float(area->args[0]), float(area->args[1]), float(area->args[2]), float(area->args[3])};
    Check(band.left > 0.2f && band.right < 0.95f && band.right - band.left > 0.15f && band.top > band.bottom,
          "the band's fractions lie where the band was drawn");
  }
  auto bandGone = [&](const Shot& shot) {
    return ChangedOnRow(start, shot, bandFrom.y, bandFrom.x + 4, bandTo.x - 4) < 4;
  };
  Shot released = Await(window, bandGone);
  Check(bandGone(released),
        "the band is gone from the screen after the release");

  // 2. Zoom to the selection, as a host's zoom button does.
  graph->ZoomToSelection();
  Pump(300);
  Zoom zoomed = ReadZoom(graph);
  Check(Near(zoomed.left, band.left, 1e-4f) && Near(zoomed.right, band.right, 1e-4f) &&
            Near(zoomed.bottom, band.bottom, 1e-4f) && Near(zoomed.top, band.top, 1e-4f),
        "ZoomToSelection zooms to the band");
  Check(!Near(full.right - full.left, zoomed.right - zoomed.left, 0.05f), "the zoom narrows the view");
  // The plot's middle rows, left of the legend, differ from an earlier
  // picture. Five rows 4 pixels apart: a row that shows a horizontal grid
  // line in both pictures cannot hide the change on its own.
  auto repainted = [&](const Shot& old, const Shot& shot) {
    int changed = 0;
    for (int y = row - 8; y <= row + 8; y += 4) changed += ChangedOnRow(old, shot, y, 60, client.right - 140);
    return changed > 20;
  };
  Shot afterZoom = Await(window, [&](const Shot& shot) { return repainted(released, shot); });
  Check(repainted(released, afterZoom), "the zoomed view is painted");
  Screenshot(frame, folder, L"interaction_3_zoomed");

  // 3. Pan: drag the picture left and down, so the view moves right and up.
  SetMode(graph, L"PAN");
  POINT panFrom{client.right * 40 / 100, client.bottom * 50 / 100};
  POINT panTo{panFrom.x - 120, panFrom.y + 60};
  Drag(window, panFrom, panTo, [] {});
  Pump(200);
  Zoom panned = ReadZoom(graph);
  Check(panned.left > zoomed.left + 0.01f && panned.bottom > zoomed.bottom + 0.01f,
        "dragging the picture left and down moves the view right and up");
  Check(Near(panned.right - panned.left, zoomed.right - zoomed.left, 1e-3f) &&
            Near(panned.top - panned.bottom, zoomed.top - zoomed.bottom, 1e-3f),
        "panning keeps the zoom's size");
  Shot afterPan = Await(window, [&](const Shot& shot) { return repainted(afterZoom, shot); });
  Check(repainted(afterZoom, afterPan), "the panned view is painted");
  Screenshot(frame, folder, L"interaction_4_panned");

  // 4. Back to the whole range, as a host's "zoom out" button does, then
  // drag the hairline 150 pixels to the right. (Zoomed in, the line is drawn
  // at its fraction of the whole data width but grabbed at its fraction of
  // the plot, so the operator would miss it there.)
  std::printf("zoomed in and panned, the hairline is drawn at x %d\n", HairlineColumn(afterPan, row));
  SetMode(graph, L"SELECT");
  SetZoom(graph, full);
  Pump(300);
  Shot unzoomed = Await(window, [&](const Shot& shot) { return HairlineColumn(shot, row) == hairlineX; });
  int before = HairlineColumn(unzoomed, row);
  float positionBefore = NAN, positionAfter = NAN;
  graph->GetHairlinePosition(hairline, &positionBefore);
  Check(before > 0 && std::abs(before - hairlineX) <= 1, "zoomed out, the hairline is back at its place");
  size_t heardBefore = sink.heard.size();
  Drag(window, {before, row + 40}, {before + 150, row + 20}, [] {});
  Pump(200);
  graph->GetHairlinePosition(hairline, &positionAfter);
  Shot moved = Await(window, [&](const Shot& shot) { return HairlineColumn(shot, row) > before + 100; });
  int after = HairlineColumn(moved, row);
  std::printf("hairline at %.2f%% -> %.2f%%, on screen at x %d -> %d\n", positionBefore, positionAfter, before,
              after);
  // The value label under the plot: only the plot is repainted after the
  // drag, so the label may still stand at the old place.
  std::pair<int, int> label = LabelColumns(moved, std::max(after, 0), row);
  std::printf("hairline label drawn from x %d to %d\n", label.first, label.second);
  const Sink::Event* hairlineEvent = sink.heard.size() > heardBefore ? sink.Last(kHairlineMoved) : nullptr;
  Check(hairlineEvent && hairlineEvent->args.size() == 1 && LONG(hairlineEvent->args[0]) == hairline,
        "releasing the hairline fires HairlineMoved with its id");
  Check(positionAfter > positionBefore + 10, "the hairline's position follows the drag");
  Check(std::abs(after - (before + 150)) <= 2, "the hairline is drawn where it was let go");
  Zoom last = ReadZoom(graph);
  Check(Near(last.left, full.left, 1e-5f) && Near(last.right, full.right, 1e-5f) &&
            Near(last.bottom, full.bottom, 1e-5f) && Near(last.top, full.top, 1e-5f),
        "a hairline drag leaves the view alone");
  Screenshot(frame, folder, L"interaction_5_hairline");

  point->Unadvise(cookie);
  point->Release();
  graph->Release();
  DestroyWindow(host);
  ShootSettingsPages(frame, folder);
  DestroyWindow(frame);
  std::printf("done\n");
  return failures ? 1 : 0;
}

}  // namespace

int wmain(int argc, wchar_t** argv) {
  if (argc != 2) {
    std::fprintf(stderr, "usage: interaction_session OUTPUT_FOLDER\n");
    return 2;
  }
  std::wstring folder = argv[1];
  CreateDirectoryW(folder.c_str(), nullptr);
  OleInitialize(nullptr);
  if (!AtlContainerReady()) {
    std::fprintf(stderr, "ATL's container window class is not available\n");
    return 2;
  }
  int status = Session(folder);
  OleUninitialize();
  return status;
}

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

#include <cmath>
#include <cstdio>
#include <initializer_list>
#include <string>
#include <utility>
#include <vector>

#include "zelgraph_idl.h"

namespace {

constexpr int kWidth = 800;
constexpr int kHeight = 500;

// A VARIANT holding an array of VARIANTs, as scripts and VB hosts pass them.
struct Array {
  VARIANT v;
  explicit Array(const std::vector<double>& values, VARTYPE type = VT_R8) {
    SAFEARRAY* array = SafeArrayCreateVector(VT_VARIANT, 0, ULONG(values.size()));
    VARIANT* elements = nullptr;
    SafeArrayAccessData(array, reinterpret_cast<void**>(&elements));
    for (size_t i = 0; i < values.size(); ++i) {
      VariantInit(&elements[i]);
      V_VT(&elements[i]) = type;
      if (type == VT_I4)
        V_I4(&elements[i]) = LONG(values[i]);
      else
        V_R8(&elements[i]) = values[i];  // VT_R8 and VT_DATE share the field
    }
    SafeArrayUnaccessData(array);
    VariantInit(&v);
    V_VT(&v) = VT_ARRAY | VT_VARIANT;
    V_ARRAY(&v) = array;
  }
  ~Array() { VariantClear(&v); }
};

VARIANT Missing() {
  VARIANT v;
  VariantInit(&v);
  V_VT(&v) = VT_ERROR;
  V_ERROR(&v) = DISP_E_PARAMNOTFOUND;
  return v;
}

VARIANT Empty() {
  VARIANT v;
  VariantInit(&v);
  return v;
}

class Bstr {
 public:
  explicit Bstr(const wchar_t* text) : text_(SysAllocString(text)) {}
  ~Bstr() { SysFreeString(text_); }
  operator BSTR() const { return text_; }

 private:
  BSTR text_;
};

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

void SetValues(IVX_Graph* graph, LONG id, const std::vector<double>& xs, const std::vector<double>& ys,
               VARTYPE xType = VT_R8, std::vector<double> status = {}) {
  if (status.empty()) status.assign(xs.size(), 0);
  Array x(xs, xType), y(ys), s(status, VT_I4);
  VARIANT append = Missing();
  graph->SetDatasetValues(id, x.v, y.v, s.v, append);
}

// Sets an axis's range and title through an AxisProps record, as compiled
// hosts do.
void SetRange(IVX_Graph* g, bool vertical, LONG id, double min, double max, const wchar_t* title,
              VARTYPE type = VT_R8) {
  const GUID axisProps = {0x1376EC82, 0xAAC4, 0x4D18, {0x9F, 0x8F, 0xA6, 0xE0, 0x56, 0x3D, 0x4E, 0x15}};
  IRecordInfo* info = nullptr;
  if (FAILED(GetRecordInfoFromGuids(LIBID_ZELGRAPHLib, 1, 0, 0, axisProps, &info))) return;
  auto* record = static_cast<AxisProps*>(info->RecordCreate());
  for (auto [variant, value] : {std::pair(&record->min, min), std::pair(&record->max, max)}) {
    V_VT(variant) = type;
    if (type == VT_I4)
      V_I4(variant) = LONG(value);
    else
      V_R8(variant) = value;  // VT_R8 and VT_DATE share the field
  }
  record->title = SysAllocString(title);
  VARIANT props;
  VariantInit(&props);
  V_VT(&props) = VT_RECORD;
  V_RECORD(&props) = record;
  V_RECORDINFO(&props) = info;
  vertical ? g->SetYAxisProperties(id, props) : g->SetXAxisProperties(id, props);
  VariantClear(&props);
}

// A temperature trend over one day on four split Y axes, with limit lines,
// hairlines and a legend.
void TimeTrend(IVX_Graph* g) {
  Bstr time(L"TIME"), real(L"REAL"), plot(L"PLOT"), left(L"LEFT"), right(L"RIGHT");
  VARIANT none = Empty(), missing = Missing();
  g->AddXAxis(1, time, none, 0, missing, missing);
  VARIANT leftSide, rightSide;
  VariantInit(&leftSide);
  V_VT(&leftSide) = VT_BSTR, V_BSTR(&leftSide) = left;
  VariantInit(&rightSide);
  V_VT(&rightSide) = VT_BSTR, V_BSTR(&rightSide) = right;
  for (LONG axis = 1; axis <= 4; ++axis) g->AddYAxis(axis, real, none, 0, axis % 2 ? leftSide : rightSide, missing);
  SetRange(g, false, 1, 46347.0, 46348.0, L"Time", VT_DATE);
  for (LONG axis = 1; axis <= 4; ++axis) SetRange(g, true, axis, 20 + 5 * axis - 6, 20 + 5 * axis + 6, L"Value");
  LONG on = 1;
  g->enableSplitYAxis(&on, &on, &on);
  std::vector<double> times;
  for (int i = 0; i <= 96; ++i) times.push_back(46347.0 + i / 96.0);
  for (LONG axis = 1; axis <= 4; ++axis) {
    g->AddDataset(axis * 10, plot, 1, axis, none);
    std::vector<double> values;
    for (size_t i = 0; i < times.size(); ++i)
      values.push_back(20 + 5 * axis + 4 * std::sin(double(i) / (6 + axis)));
    SetValues(g, axis * 10, times, values, VT_DATE);
  }
  VARIANT limit;
  VariantInit(&limit);
  V_VT(&limit) = VT_R8, V_R8(&limit) = 28;
  LONG id = 0;
  g->AddLimitValue(1, limit, missing, missing, missing, &id);
  g->AddHairline(30, missing, missing, &id);
  g->AddHairline(70, missing, missing, &id);
  g->put_LegendEnabled(1);
  LONG off = 0;
  g->enableSplitYAxis(&off, &off, &off);
}

// Bars on a DISCRETE axis.
void Bars(IVX_Graph* g) {
  Bstr discrete(L"DISCRETE"), integer(L"INTEGER"), bar(L"BAR"), stacked(L"STACKED BAR");
  VARIANT none = Empty(), missing = Missing();
  g->AddXAxis(1, discrete, none, 0, missing, missing);
  g->AddYAxis(1, integer, none, 0, missing, missing);
  SetRange(g, false, 1, 0, 4, L"Line", VT_I4);
  SetRange(g, true, 1, 0, 10, L"Count", VT_I4);
  g->AddDataset(1, bar, 1, 1, none);
  g->AddDataset(2, stacked, 1, 1, none);
  SetValues(g, 1, {1, 2, 3, 4}, {5, 8, 3, 6});
  SetValues(g, 2, {1, 2, 3, 4}, {2, 3, 4, 1});
}

// A pie of five slices.
void Pie(IVX_Graph* g) {
  Bstr pie(L"PIE");
  VARIANT none = Empty();
  g->AddDataset(1, pie, 0, 0, none);
  SetValues(g, 1, {1, 2, 3, 4, 5}, {30, 20, 25, 15, 10});
}

bool WritePng(HBITMAP bitmap, const std::wstring& path) {
  IWICImagingFactory* factory = nullptr;
  if (FAILED(CoCreateInstance(CLSID_WICImagingFactory, nullptr, CLSCTX_INPROC_SERVER,
                              IID_IWICImagingFactory, reinterpret_cast<void**>(&factory))))
    return false;
  IWICBitmap* source = nullptr;
  IWICStream* stream = nullptr;
  IWICBitmapEncoder* encoder = nullptr;
  IWICBitmapFrameEncode* frame = nullptr;
  bool ok = SUCCEEDED(factory->CreateBitmapFromHBITMAP(bitmap, nullptr, WICBitmapIgnoreAlpha, &source)) &&
            SUCCEEDED(factory->CreateStream(&stream)) &&
            SUCCEEDED(stream->InitializeFromFilename(path.c_str(), GENERIC_WRITE)) &&
            SUCCEEDED(factory->CreateEncoder(GUID_ContainerFormatPng, nullptr, &encoder)) &&
            SUCCEEDED(encoder->Initialize(stream, WICBitmapEncoderNoCache)) &&
            SUCCEEDED(encoder->CreateNewFrame(&frame, nullptr)) && SUCCEEDED(frame->Initialize(nullptr)) &&
            SUCCEEDED(frame->WriteSource(source, nullptr)) && SUCCEEDED(frame->Commit()) &&
            SUCCEEDED(encoder->Commit());
  for (IUnknown* p : std::initializer_list<IUnknown*>{frame, encoder, stream, source, factory})
    if (p) p->Release();
  return ok;
}

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
  SelectObject(dc, old);
  ok = ok && WritePng(bitmap, path);
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
  auto atlInit = reinterpret_cast<BOOL(WINAPI*)()>(
      reinterpret_cast<void*>(GetProcAddress(LoadLibraryW(L"atl.dll"), "AtlAxWinInit")));
  if (!atlInit || !atlInit()) {
    std::fprintf(stderr, "ATL's container window class is not available\n");
    return 1;
  }
  struct Picture {
    const wchar_t* name;
    void (*build)(IVX_Graph*);
  };
  const Picture pictures[] = {{L"time_trend", TimeTrend}, {L"bars", Bars}, {L"pie", Pie}};
  int failures = 0;
  for (const Picture& picture : pictures) {
    HostedGraph hosted;
    std::wstring path = folder + L"\\" + picture.name + L".png";
    bool ok = hosted.graph != nullptr;
    if (ok) {
      picture.build(hosted.graph);
      ok = Render(hosted, path);
    }
    std::fwprintf(ok ? stdout : stderr, L"%ls %ls\n", ok ? L"wrote" : L"could not write", path.c_str());
    failures += ok ? 0 : 1;
  }
  OleUninitialize();
  return failures ? 1 : 0;
}

// What a frame of a live trend costs a host: the registered control in ATL's
// container, its values handed over late-bound through IDispatch as a
// trend host does, each frame drawn with IViewObject::Draw into a 1280 by
// 720 DIB. One random-walk curve on a TIME axis of 10^5, 10^6 and 10^7
// points. Two baselines run in the same process on the same points: a bare
// scan that finds each pixel column's lowest and highest point, and a GDI
// reference that reduces each column to its first, lowest, highest and last
// point and draws them as one Polyline. Read the figures as ratios.
//
// Run with: ./zelgraph.sh bench
#include <windows.h>
#include <ocidl.h>
#include <oleauto.h>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <functional>
#include <random>
#include <vector>

#include "bench/win/bench_support.h"
#include "zelgraph_idl.h"

namespace {

using namespace zel::bench;

constexpr size_t kAppended = 1000;
constexpr double kFirstDay = 46000.0;  // an automation date in 2025
constexpr double kSecond = 1.0 / 86400;


// An owned VARIANT holding a typed one-dimensional array.
struct ArrayVariant {
  VARIANT v;
  template <typename T>
  ArrayVariant(VARTYPE type, const T* items, size_t count) {
    VariantInit(&v);
    V_VT(&v) = VARTYPE(VT_ARRAY | type);
    V_ARRAY(&v) = SafeArrayCreateVector(type, 0, ULONG(count));
    void* data = nullptr;
    SafeArrayAccessData(V_ARRAY(&v), &data);
    if (count) memcpy(data, items, count * sizeof(T));
    SafeArrayUnaccessData(V_ARRAY(&v));
  }
  ~ArrayVariant() { VariantClear(&v); }
};

VARIANT Long(LONG value) {
  VARIANT v;
  VariantInit(&v);
  V_VT(&v) = VT_I4, V_I4(&v) = value;
  return v;
}

VARIANT Text(const wchar_t* text) {
  VARIANT v;
  VariantInit(&v);
  V_VT(&v) = VT_BSTR, V_BSTR(&v) = SysAllocString(text);
  return v;
}

// An AxisProps record with only `min` and `max` set, in a VARIANT. The
// record and its information are kept for the rest of the run.
VARIANT Range(VARTYPE type, double min, double max) {
  VARIANT v;
  VariantInit(&v);
  IRecordInfo* info = nullptr;
  const GUID axisProps = {0x1376EC82, 0xAAC4, 0x4D18, {0x9F, 0x8F, 0xA6, 0xE0, 0x56, 0x3D, 0x4E, 0x15}};
  if (FAILED(GetRecordInfoFromGuids(LIBID_ZELGRAPHLib, 1, 0, LOCALE_USER_DEFAULT, axisProps, &info)))
    return v;
  auto* props = static_cast<AxisProps*>(info->RecordCreate());
  V_VT(&props->min) = V_VT(&props->max) = type;
  V_R8(&props->min) = min, V_R8(&props->max) = max;  // VT_DATE and VT_R8 share the double
  V_VT(&v) = VT_RECORD, V_RECORD(&v) = props, V_RECORDINFO(&v) = info;
  return v;
}

// The control in ATL's container in a top window of the frame's size.
class HostedGraph {
 public:
  HostedGraph() {
    frame_ = CreateWindowExW(0, L"STATIC", L"bench", WS_POPUP | WS_VISIBLE, 0, 0, kWidth, kHeight, nullptr,
                             nullptr, nullptr, nullptr);
    host_ = CreateWindowExW(0, L"AtlAxWin", L"ZELGraph.VX_Graph", WS_CHILD | WS_VISIBLE, 0, 0, kWidth, kHeight,
                            frame_, nullptr, nullptr, nullptr);
    auto getControl = reinterpret_cast<HRESULT(WINAPI*)(HWND, IUnknown**)>(
        reinterpret_cast<void*>(GetProcAddress(GetModuleHandleW(L"atl.dll"), "AtlAxGetControl")));
    IUnknown* unknown = nullptr;
    if (host_ && getControl && getControl(host_, &unknown) == S_OK) {
      unknown->QueryInterface(IID_IDispatch, reinterpret_cast<void**>(&dispatch_));
      unknown->QueryInterface(IID_IViewObject, reinterpret_cast<void**>(&view_));
      unknown->Release();
    }
  }
  ~HostedGraph() {
    if (view_) view_->Release();
    if (dispatch_) dispatch_->Release();
    DestroyWindow(frame_);
  }
  bool ready() const { return dispatch_ && view_; }

  // A late-bound call by name; `arguments` in the order of the signature.
  HRESULT Call(const wchar_t* name, std::vector<VARIANT> arguments, WORD flags = DISPATCH_METHOD) {
    DISPID id = 0;
    LPOLESTR names[] = {const_cast<LPOLESTR>(name)};
    if (FAILED(dispatch_->GetIDsOfNames(IID_NULL, names, 1, LOCALE_USER_DEFAULT, &id))) return DISP_E_UNKNOWNNAME;
    std::reverse(arguments.begin(), arguments.end());
    DISPID put = DISPID_PROPERTYPUT;
    DISPPARAMS parameters{arguments.data(), flags == DISPATCH_PROPERTYPUT ? &put : nullptr, UINT(arguments.size()),
                          flags == DISPATCH_PROPERTYPUT ? 1u : 0u};
    VARIANT result;
    VariantInit(&result);
    HRESULT hr = dispatch_->Invoke(id, IID_NULL, LOCALE_USER_DEFAULT, flags, &parameters, &result, nullptr, nullptr);
    VariantClear(&result);
    return hr;
  }

  // A TIME X axis over [first, last], a REAL Y axis over 0..100 and one
  // PLOT curve on them, all id 1, as a trend host sets them up.
  void AddTrend(double first, double last) {
    VARIANT empty;
    VariantInit(&empty);
    Call(L"AddXAxis", {Long(1), Text(L"TIME"), Range(VT_DATE, first, last), Long(0)});
    Call(L"AddYAxis", {Long(1), Text(L"REAL"), Range(VT_R8, 0, 100), Long(0)});
    Call(L"AddDataset", {Long(1), Text(L"PLOT"), Long(1), Long(1), empty});
  }

  // Hands over points [first, first + count) of the curve, replacing or
  // appending.
  void SetValues(const std::vector<double>& xs, const std::vector<float>& ys, size_t first, size_t count,
                 bool append) {
    std::vector<LONG> status(count, 0);
    ArrayVariant x(VT_DATE, xs.data() + first, count), y(VT_R4, ys.data() + first, count),
        s(VT_I4, status.data(), count);
    VARIANT a = Long(append ? 1 : 0);
    Call(L"SetDatasetValues", {Long(1), x.v, y.v, s.v, a});
  }

  // Zooms to the x fractions [left, right] and the whole y range.
  void Zoom(float left, float right) {
    std::vector<float> fractions{left, right, 0.0f, 1.0f};
    ArrayVariant zoom(VT_R4, fractions.data(), fractions.size());
    Call(L"ZoomRect", {zoom.v}, DISPATCH_PROPERTYPUT);
  }

  void Frame(const Dib& dib) {
    RECTL bounds{0, 0, kWidth, kHeight};
    view_->Draw(DVASPECT_CONTENT, -1, nullptr, nullptr, nullptr, dib.dc(), &bounds, nullptr, nullptr, 0);
    GdiFlush();
  }

 private:
  HWND frame_ = nullptr, host_ = nullptr;
  IDispatch* dispatch_ = nullptr;
  IViewObject* view_ = nullptr;
};

// A random walk of `n` points one second apart, with room for appending.
struct Walk {
  std::vector<double> xs;
  std::vector<float> ys;
  explicit Walk(size_t n) : xs(n + 32 * kAppended), ys(n + 32 * kAppended) {
    std::mt19937 random(1);
    std::normal_distribution<float> step(0, 1);
    float level = 50;
    for (size_t i = 0; i < xs.size(); ++i) {
      xs[i] = kFirstDay + double(i) * kSecond;
      level = std::clamp(level + step(random), 0.0f, 100.0f);
      ys[i] = level;
    }
  }
};

// Which of `kWidth` columns across [x0, x1] a point falls in.
struct Columns {
  double x0, scale;
  Columns(double first, double last) : x0(first), scale(kWidth / std::max(last - first, 1e-12)) {}
  int operator()(double x) const { return std::clamp(int((x - x0) * scale), 0, kWidth - 1); }
};

// The bare baseline: each column's lowest and highest point.
float Scan(const double* xs, const float* ys, size_t n) {
  std::vector<float> low(kWidth, 1e30f), high(kWidth, -1e30f);
  Columns column(xs[0], xs[n - 1]);
  for (size_t i = 0; i < n; ++i) {
    int c = column(xs[i]);
    low[size_t(c)] = std::min(low[size_t(c)], ys[i]);
    high[size_t(c)] = std::max(high[size_t(c)], ys[i]);
  }
  return low[0] + high[kWidth - 1];
}

// The GDI reference: each column's first, lowest, highest and last point,
// in that order, drawn as one Polyline over a cleared frame.
void ReferenceFrame(const Dib& dib, const double* xs, const float* ys, size_t n) {
  Columns column(xs[0], xs[n - 1]);
  auto row = [](float y) { return LONG(std::lround((100.0f - y) * (kHeight - 1) / 100.0f)); };
  std::vector<POINT> line;
  line.reserve(4 * kWidth);
  size_t i = 0;
  while (i < n) {
    int c = column(xs[i]);
    size_t first = i, low = i, high = i;
    for (; i < n && column(xs[i]) == c; ++i) {
      if (ys[i] < ys[low]) low = i;
      if (ys[i] > ys[high]) high = i;
    }
    size_t last = i - 1;
    size_t middle[2] = {std::min(low, high), std::max(low, high)};
    for (size_t k : {first, middle[0], middle[1], last}) line.push_back({c, row(ys[k])});
  }
  PatBlt(dib.dc(), 0, 0, kWidth, kHeight, WHITENESS);
  HGDIOBJ old = SelectObject(dib.dc(), GetStockObject(BLACK_PEN));
  Polyline(dib.dc(), line.data(), int(line.size()));
  SelectObject(dib.dc(), old);
  GdiFlush();
}

void MeasureRow(size_t n, const Dib& dib) {
  HostedGraph graph;
  if (!graph.ready()) return;
  Walk walk(n);
  graph.AddTrend(walk.xs[0], walk.xs[n - 1]);
  graph.SetValues(walk.xs, walk.ys, 0, n, false);
  int runs = n >= 10000000 ? 3 : 5;
  volatile float sink = 0;
  double scan = BestOf(runs, [&] { sink = sink + Scan(walk.xs.data(), walk.ys.data(), n); });
  double reference = BestOf(runs, [&] { ReferenceFrame(dib, walk.xs.data(), walk.ys.data(), n); });
  graph.Frame(dib);
  double frame = BestOf(runs, [&] { graph.Frame(dib); });
  graph.Zoom(0.5f, 0.51f);
  double zoomed = BestOf(runs, [&] { graph.Frame(dib); });
  graph.Zoom(0.0f, 1.0f);
  size_t held = n;
  double append = BestOf(runs, [&] {
    graph.SetValues(walk.xs, walk.ys, held, kAppended, true);
    held += kAppended;
    graph.Frame(dib);
  });
  std::printf("%9zu %9.2f %9.2f %9.2f %9.2f %9.2f | %8.1f %8.1f %8.1f %8.1f\n", n, scan, reference, frame, zoomed,
              append, frame / reference, frame / scan, zoomed / scan, append / scan);
}

// Private memory the process has committed, summed over its address space
// (Wine's process counters do not follow the heap).
double PrivateBytes() {
  double total = 0;
  MEMORY_BASIC_INFORMATION region;
  for (const BYTE* at = nullptr; VirtualQuery(at, &region, sizeof(region)) == sizeof(region);
       at = static_cast<const BYTE*>(region.BaseAddress) + region.RegionSize) {
    if (region.State == MEM_COMMIT && region.Type == MEM_PRIVATE) total += double(region.RegionSize);
  }
  return total;
}

// Handing `n` points to a fresh control against copying the same bytes
// (x dates, y floats, 32-bit statuses) into freshly allocated memory, which
// pays the same first touch of every page; and what the control keeps per
// point once the caller's arrays are gone.
void MeasureIngest(size_t n) {
  Walk walk(n);
  std::vector<LONG> status(n, 0);
  double ingest = 1e300, copy = 1e300, kept = 0;
  for (int run = 0; run < 3; ++run) {
    HostedGraph graph;
    graph.AddTrend(walk.xs[0], walk.xs[n - 1]);
    double before = PrivateBytes();
    {
      ArrayVariant x(VT_DATE, walk.xs.data(), n), y(VT_R4, walk.ys.data(), n), s(VT_I4, status.data(), n);
      VARIANT replace = Long(0);
      double start = Now();
      graph.Call(L"SetDatasetValues", {Long(1), x.v, y.v, s.v, replace});
      ingest = std::min(ingest, (Now() - start) * 1000);
    }
    kept = PrivateBytes() - before;  // the caller's arrays are gone by now
    double start = Now();
    size_t bytes = n * (sizeof(double) + sizeof(float) + sizeof(LONG));
    auto* fresh = static_cast<char*>(VirtualAlloc(nullptr, bytes, MEM_COMMIT | MEM_RESERVE, PAGE_READWRITE));
    memcpy(fresh, walk.xs.data(), n * sizeof(double));
    memcpy(fresh + n * sizeof(double), walk.ys.data(), n * sizeof(float));
    memcpy(fresh + n * (sizeof(double) + sizeof(float)), status.data(), n * sizeof(LONG));
    copy = std::min(copy, (Now() - start) * 1000);
    VirtualFree(fresh, 0, MEM_RELEASE);
  }
  std::printf("SetDatasetValues of %zu points: %8.2f ms, %.2f x a copy into fresh memory; "
              "%.1f bytes kept per point\n", n, ingest, ingest / copy, kept / double(n));
}

// A structural change of a live trend: its 1000 points replaced, which lays
// the graph out again; with the scroll bars off (the default) or on.
double Relayout(bool scrollBars) {
  HostedGraph trend;
  if (scrollBars) {
    trend.Call(L"HorizontalScrollbarEnabled", {Long(1)}, DISPATCH_PROPERTYPUT);
    trend.Call(L"VerticalScrollbarEnabled", {Long(1)}, DISPATCH_PROPERTYPUT);
  }
  Walk walk(kAppended);
  trend.AddTrend(walk.xs[0], walk.xs[kAppended - 1]);
  trend.SetValues(walk.xs, walk.ys, 0, kAppended, false);
  return BestOf(20, [&] { trend.SetValues(walk.xs, walk.ys, 0, kAppended, false); });
}

void MeasureFixedCosts(const Dib& dib) {
  HostedGraph empty;
  if (!empty.ready()) return;
  empty.Frame(dib);
  double emptyFrame = BestOf(20, [&] { empty.Frame(dib); });
  std::printf("\nempty graph, one frame:                          %8.3f ms\n", emptyFrame);
  std::printf("SetDatasetValues of %zu points, scroll bars off: %8.3f ms\n", kAppended, Relayout(false));
  std::printf("SetDatasetValues of %zu points, scroll bars on:  %8.3f ms\n", kAppended, Relayout(true));
}

}  // namespace

int main() {
  OleInitialize(nullptr);
  auto init = reinterpret_cast<BOOL(WINAPI*)()>(
      reinterpret_cast<void*>(GetProcAddress(LoadLibraryW(L"atl.dll"), "AtlAxWinInit")));
  if (!init || !init() || !HostedGraph().ready()) {
    std::fprintf(stderr, "the control is not registered or ATL's container is missing\n");
    return 1;
  }
  Dib dib;
  std::printf("milliseconds, best of several runs; a frame is 1280 x 720\n");
  std::printf("%9s %9s %9s %9s %9s %9s | %8s %8s %8s %8s\n", "points", "scan", "GDI ref", "frame", "zoom 1%",
              "append", "fr/ref", "fr/scan", "zm/scan", "ap/scan");
  for (size_t n : {size_t(100000), size_t(1000000), size_t(10000000)}) MeasureRow(n, dib);
  MeasureFixedCosts(dib);
  std::printf("\n");
  MeasureIngest(10000000);
  OleUninitialize();
  return 0;
}

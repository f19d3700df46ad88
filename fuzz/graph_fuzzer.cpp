// The whole graph driven by engine calls decoded from the bytes: axes,
// datasets, values with NaN, infinities and extremes, zoom, margins, window
// sizes up to 32767, hairlines, limit values and mouse input, each followed
// by a paint on a checking surface. A call the engine refuses (an error)
// must leave the graph as it was, and no drawing call may reach past the
// ±2^27 device units that GDI holds.
#include <cmath>
#include <cstdio>
#include <string>
#include <vector>

#include "engine/graph_error.h"
#include "engine/host_window.h"
#include "engine/v_dataset.h"
#include "engine/v_graph.h"
#include "fuzz/fuzz_input.h"
#include "interaction/mouse_tracker.h"
#include "util/value_conversion.h"

namespace zel {
namespace {

constexpr int64_t kDeviceLimit = int64_t(1) << 27;

[[noreturn]] void Fail(const char* what) {
  std::fprintf(stderr, "graph fuzzer: %s\n", what);
  __builtin_trap();
}

// A surface that draws nothing and checks every position it is given, in
// device units (the window origin applied), with text 7 by 12 pixels a
// character as the recording surface of the tests measures it.
class CheckingSurface final : public Surface {
 public:
  void Save() override { saved_.push_back(origin_); }
  void Restore() override {
    if (saved_.empty()) Fail("Restore without Save");
    origin_ = saved_.back();
    saved_.pop_back();
  }
  void SetWindowOrigin(Point origin) override { origin_ = origin; }
  void ClipTo(const Rect& r) override { CheckDevice(r); }
  void IntersectClip(const Rect& r) override { CheckDevice(r); }
  bool IsVisible(const Rect& r) override { return CheckDevice(r), true; }
  void SelectPen(const Pen&) override {}
  void SelectFont(const LogFont&) override {}
  void SetTextColor(Color) override {}
  void SetTextAlign(uint32_t) override {}
  void SetRasterOp(RasterOp) override {}
  Color BackgroundColor() override { return 0xFFFFFF; }
  void SetBackgroundColor(Color) override {}
  void SetTextBackground(TextBackground) override {}
  void MoveTo(Point p) override { Check(p); }
  void LineTo(Point p) override { Check(p); }
  void Polyline(std::span<const Point> points) override {
    for (Point p : points) Check(p);
  }
  void FillRect(const Rect& r, Color) override { Check(r); }
  void FillRegion(const Region& region, Color) override {
    if (auto* r = std::get_if<Rect>(&region)) Check(*r);
    if (auto* polygon = std::get_if<Polygon>(&region))
      for (Point p : polygon->points) Check(p);
  }
  void Rectangle(const Rect& r, Color) override { Check(r); }
  void Pie(const Rect& box, Point a, Point b, Color) override { Check(box), Check(a), Check(b); }
  void WriteText(Point at, TextView) override { Check(at); }
  Size TextExtent(TextView text) override { return {int32_t(7 * text.size()), 12}; }
  Color PixelAt(Point) override { return 0; }
  int Technology() override { return kRasterDisplay; }

 private:
  void Check(Point p) const {
    int64_t x = int64_t(p.x) - origin_.x, y = int64_t(p.y) - origin_.y;
    if (std::llabs(x) > kDeviceLimit || std::llabs(y) > kDeviceLimit) Fail("a drawing call past 2^27");
  }
  void Check(const Rect& r) const { Check(Point{r.left, r.top}), Check(Point{r.right, r.bottom}); }
  // Clip rectangles are given in device units already.
  static void CheckDevice(const Rect& r) {
    for (int64_t v : {r.left, r.top, r.right, r.bottom})
      if (std::llabs(v) > kDeviceLimit) Fail("a clip rectangle past 2^27");
  }

  Point origin_;
  std::vector<Point> saved_;
};

class Window final : public HostWindow {
 public:
  int width = 400, height = 300;
  bool Exists() const override { return true; }
  ClientRect ClientRectangle() const override { return {0, 0, width, height}; }
  void Invalidate(bool) override {}
  void SetScrollBar(bool, const ScrollBarState&) override {}
  std::unique_ptr<Surface> MeasuringSurface() override { return std::make_unique<CheckingSurface>(); }
};

// What a host can read of the graph, as one text.
std::string Snapshot(const VGraph& g) {
  std::string s;
  auto add = [&](double v) { s += std::to_string(v) + ","; };
  for (const auto* list : {&g.xAxes(), &g.yAxes()})
    for (const auto& entry : list->entries()) {
      add(entry.id);
      add(NumberOf(entry.object->min()));
      add(NumberOf(entry.object->max()));
    }
  for (const auto& entry : g.datasets().entries()) add(entry.id), add(double(entry.object->count()));
  const Fractions& z = g.zoomRect();
  const Margins& m = g.margins();
  for (double v : {double(z.left), double(z.right), double(z.bottom), double(z.top), double(m.left),
                   double(m.right), double(m.bottom), double(m.top)})
    add(v);
  for (const Hairline& h : g.hairlines()) add(h.id), add(h.position);
  return s;
}

Value ValueOf(FuzzedDataProvider& in) {
  double n = fuzz::ExtremeNumber(in);
  switch (in.ConsumeIntegralInRange(0, 4)) {
    case 0: return Value();
    case 1: return int32_t(in.ConsumeIntegral<int32_t>());
    case 2: return float(n);
    case 3: return DateValue{n};
    default: return n;
  }
}

AxisProps AxisPropsOf(FuzzedDataProvider& in) {
  AxisProps p;
  p.min = ValueOf(in);
  p.max = ValueOf(in);
  p.annotationIncrement = ValueOf(in);
  p.tickIncrement = ValueOf(in);
  p.bAutoScale = in.ConsumeBool();
  p.gridWidth = in.ConsumeIntegral<int16_t>();
  if (in.ConsumeBool()) p.timeUnit = fuzz::TextOf(in, 8);
  if (in.ConsumeBool()) p.title = fuzz::TextOf(in, 12);
  return p;
}

// One engine call chosen by the bytes.
void Call(FuzzedDataProvider& in, VGraph& g, Window& window, MouseTracker& mouse, CheckingSurface& surface) {
  auto id = [&] { return in.ConsumeIntegralInRange<int32_t>(-1, 4); };
  switch (in.ConsumeIntegralInRange(0, 14)) {
    case 0: case 1: {
      AxisProps props = AxisPropsOf(in);
      auto type = AxisType(in.ConsumeIntegralInRange(0, 3));
      auto placement = VAxis::Placement(in.ConsumeIntegralInRange(0, 3));
      bool vertical = in.ConsumeBool();
      int32_t axis = id(), other = id();
      float at = float(fuzz::ExtremeNumber(in));
      if (vertical) g.AddYAxis(axis, type, in.ConsumeBool() ? &props : nullptr, placement, other, at);
      else g.AddXAxis(axis, type, in.ConsumeBool() ? &props : nullptr, placement, other, at);
      break;
    }
    case 2: {
      AxisProps props = AxisPropsOf(in);
      if (in.ConsumeBool()) g.SetYAxisProperties(id(), props);
      else g.SetXAxisProperties(id(), props);
      break;
    }
    case 3: g.AddDataset(id(), DatasetType(in.ConsumeIntegralInRange(0, 4)), id(), id(), nullptr); break;
    case 4: case 5: {
      size_t n = in.ConsumeIntegralInRange<size_t>(0, in.ConsumeBool() ? 2000 : 8);
      std::vector<double> xs, ys;
      std::vector<int32_t> status;
      double x = fuzz::ExtremeNumber(in);
      for (size_t i = 0; i < n; ++i) {
        x = in.ConsumeBool() ? x + in.ConsumeIntegralInRange(0, 3) : fuzz::ExtremeNumber(in);
        xs.push_back(x), ys.push_back(fuzz::ExtremeNumber(in)), status.push_back(in.ConsumeIntegralInRange(0, 12));
      }
      g.SetDatasetValues(id(), n, ValueColumn(std::span<const double>(xs)), ValueColumn(std::span<const double>(ys)),
                         status, in.ConsumeBool());
      break;
    }
    case 6: {
      float f[4];
      for (float& v : f) v = float(in.ConsumeBool() ? fuzz::ExtremeNumber(in) : in.ConsumeProbability<double>());
      g.SetZoomRect({.left = f[0], .right = f[1], .bottom = f[2], .top = f[3]});
      break;
    }
    case 7:
      g.SetMargins({.left = in.ConsumeIntegral<int32_t>() % 40000, .right = in.ConsumeIntegralInRange(-50, 500),
                    .bottom = in.ConsumeIntegralInRange(-50, 500), .top = in.ConsumeIntegral<int32_t>() % 40000});
      break;
    case 8:
      window.width = in.ConsumeIntegralInRange(0, 32767);
      window.height = in.ConsumeIntegralInRange(0, in.ConsumeBool() ? 32767 : 600);
      g.LayoutAndRepaint(window.width, window.height);
      break;
    case 9: {
      auto hairline = g.AddHairline(float(fuzz::ExtremeNumber(in)), std::nullopt, in.ConsumeIntegral<int16_t>());
      if (hairline && in.ConsumeBool()) g.SetXAxisHairline(id());
      break;
    }
    case 10: g.AddLimitValue(id(), ValueOf(in), std::nullopt, std::nullopt, in.ConsumeIntegral<int16_t>()); break;
    case 11: {
      Point p{in.ConsumeIntegralInRange(-100, 33000), in.ConsumeIntegralInRange(-100, 33000)};
      switch (in.ConsumeIntegralInRange(0, 3)) {
        case 0: mouse.ButtonDown(surface, p, p); break;
        case 1: mouse.MouseMove(surface, p, p); break;
        case 2: mouse.ButtonUp(surface, p, p); break;
        default: mouse.Cancel(surface); break;
      }
      break;
    }
    case 12: g.SetMouseMode(MouseMode(in.ConsumeIntegralInRange(0, 3))); break;
    case 13: in.ConsumeBool() ? g.RemoveDataset(id()) : g.ClearDataset(id()); break;
    default: in.ConsumeBool() ? g.RemoveXAxis(id()) : g.RemoveYAxis(id()); break;
  }
}

}  // namespace
}  // namespace zel

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  using namespace zel;
  FuzzedDataProvider in(data, size);
  fuzz::FreshProcess();
  Window window;
  VGraph graph(&window);
  MouseTracker mouse(graph, window);
  CheckingSurface surface;
  for (int calls = 0; calls < 40 && in.remaining_bytes() > 0; ++calls) {
    std::string before = Snapshot(graph);
    bool refused = false;
    try {
      Call(in, graph, window, mouse, surface);
    } catch (const GraphError&) {
      refused = true;
    } catch (const StatusError&) {
      refused = true;
    }
    if (refused && Snapshot(graph) != before) Fail("a refused call changed the graph");
    Rect bounds{0, 0, window.width, window.height};
    graph.Draw(surface, bounds, bounds);
  }
  return 0;
}

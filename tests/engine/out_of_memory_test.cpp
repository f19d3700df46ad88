// Memory running out in the middle of an entry: a scripted session is
// replayed once for every allocation an entry makes, with that allocation
// failing. The entry must end in std::bad_alloc (which the control reports
// as E_OUTOFMEMORY) and leave the graph exactly as it was.
#include <cstdlib>
#include <functional>
#include <new>
#include <string>

#include "engine/v_graph.h"
#include "engine_test_support.h"
#include "util/value_conversion.h"

namespace {

// Allocations counted down while armed; the one that reaches zero fails.
thread_local long allocationsLeft = -1;

void* Allocate(std::size_t size) {
  if (allocationsLeft >= 0 && allocationsLeft-- == 0) throw std::bad_alloc();
  if (void* p = std::malloc(size ? size : 1)) return p;
  throw std::bad_alloc();
}

}  // namespace

void* operator new(std::size_t size) { return Allocate(size); }
void* operator new[](std::size_t size) { return Allocate(size); }
void operator delete(void* p) noexcept { std::free(p); }
void operator delete[](void* p) noexcept { std::free(p); }
void operator delete(void* p, std::size_t) noexcept { std::free(p); }
void operator delete[](void* p, std::size_t) noexcept { std::free(p); }

namespace zel {
namespace {

// What a host can read of the graph, as one text.
std::string Snapshot(const VGraph& g) {
  std::string s;
  auto add = [&](double v) { s += std::to_string(v) + ","; };
  for (const auto* axes : {&g.xAxes(), &g.yAxes()})
    for (const auto& entry : axes->entries()) {
      add(entry.id), add(NumberOf(entry.object->min())), add(NumberOf(entry.object->max()));
      add(double(entry.object->limitValues().size()));
    }
  for (const auto& entry : g.datasets().entries()) add(entry.id), add(double(entry.object->count()));
  const Fractions& z = g.zoomRect();
  const Margins& m = g.margins();
  for (double v : {double(z.left), double(z.right), double(m.left), double(m.top)}) add(v);
  for (const Hairline& h : g.hairlines()) add(h.id), add(h.position);
  return s;
}

class OutOfMemoryTest : public EngineTest {};

TEST_F(OutOfMemoryTest, EveryFailedAllocationLeavesTheGraphAsItWas) {
  std::vector<double> xs(500), ys(500);
  for (size_t i = 0; i < xs.size(); ++i) xs[i] = double(i), ys[i] = double(i % 17);
  std::vector<int32_t> status(xs.size(), 0);
  AxisProps titled = AxisRange(0.0, 600.0);
  titled.title = u"Flow";
  using Step = std::function<void(VGraph&)>;
  const std::vector<std::pair<const char*, Step>> session = {
      {"AddXAxis", [&](VGraph& g) { g.AddXAxis(1, kAxisReal, &titled); }},
      {"AddYAxis", [&](VGraph& g) { g.AddYAxis(1, kAxisReal, nullptr); }},
      {"AddDataset", [](VGraph& g) { g.AddDataset(1, kPlot, 1, 1, nullptr); }},
      {"SetDatasetValues", [&](VGraph& g) { g.SetDatasetValues(1, xs.size(), Column(xs), Column(ys), status, false); }},
      {"append", [&](VGraph& g) { g.SetDatasetValues(1, xs.size(), Column(xs), Column(ys), status, true); }},
      {"SetXAxisProperties", [&](VGraph& g) { g.SetXAxisProperties(1, titled); }},
      {"AddLimitValue", [](VGraph& g) { g.AddLimitValue(1, 5.0, std::nullopt, std::nullopt, 1); }},
      {"AddHairline", [](VGraph& g) { g.AddHairline(40, std::nullopt, 1); }},
      {"SetZoomRect", [](VGraph& g) { g.SetZoomRect({.left = 0.2f, .right = 0.6f, .bottom = 0, .top = 1}); }},
      {"SetMargins", [](VGraph& g) { g.SetMargins({.left = 30, .right = 5, .bottom = 20, .top = 5}); }},
      {"AddDataset 2", [](VGraph& g) { g.AddDataset(2, kArea, 1, 1, nullptr); }},
      {"RemoveDataset", [](VGraph& g) { g.RemoveDataset(1); }},
  };
  for (size_t step = 0; step < session.size(); ++step) {
    for (long failing = 0;; ++failing) {
      FakeWindow window;
      window.expected = FakeWindow::kAnyCall;
      VGraph graph(&window);
      for (size_t before = 0; before < step; ++before) session[before].second(graph);
      std::string kept = Snapshot(graph);
      bool failed = false;
      allocationsLeft = failing;
      try {
        session[step].second(graph);
      } catch (const std::bad_alloc&) {
        failed = true;
      }
      allocationsLeft = -1;
      if (!failed) break;  // every allocation of the step has failed once
      EXPECT_EQ(Snapshot(graph), kept) << session[step].first << ", allocation " << failing;
    }
  }
}

}  // namespace
}  // namespace zel

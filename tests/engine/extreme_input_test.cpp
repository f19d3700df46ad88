// Inputs a hostile host can give that once overflowed or reached past what
// GDI can draw: each case here was found by the graph fuzzer, and fails (or,
// for arithmetic overflow, trips the sanitizers) without its fix.
#include <cstdio>
#include <cstdlib>

#include "engine/v_graph.h"
#include "engine_test_support.h"

namespace zel {
namespace {

class ExtremeInputTest : public EngineTest {
 protected:
  FakeWindow window;
  VGraph graph{&window};
  RecordingSurface surface;

  void Paint() {
    window.expected = FakeWindow::kAnyCall;
    graph.LayoutAndRepaint(400, 300);
    Rect bounds{0, 0, 400, 300};
    graph.Draw(surface, bounds, bounds);
  }
  // The largest distance from the origin of any MoveTo or LineTo, in device
  // units (the window origin applied).
  int64_t FarthestLineEnd() const {
    int64_t farthest = 0, originX = 0, originY = 0;
    for (const std::string& call : surface.calls) {
      long x = 0, y = 0;
      if (std::sscanf(call.c_str(), "Origin(%ld,%ld)", &x, &y) == 2) originX = x, originY = y;
      if (std::sscanf(call.c_str(), "MoveTo(%ld,%ld)", &x, &y) == 2 ||
          std::sscanf(call.c_str(), "LineTo(%ld,%ld)", &x, &y) == 2)
        farthest = std::max<int64_t>({farthest, std::llabs(x - originX), std::llabs(y - originY)});
    }
    return farthest;
  }
};

TEST_F(ExtremeInputTest, AFarHairlineIsDrawnWithinTheDeviceRange) {
  graph.AddXAxis(1, kAxisReal, nullptr);
  graph.AddYAxis(1, kAxisReal, nullptr);
  ASSERT_TRUE(graph.AddHairline(1e30f, std::nullopt, 1));
  Paint();
  EXPECT_LE(FarthestLineEnd(), int64_t(1) << 27);
}

// A zoom into a sliver: the data area's edges stop instead of wrapping.
TEST_F(ExtremeInputTest, ASliverZoomKeepsTheDataAreaInOrder) {
  graph.AddXAxis(1, kAxisReal, nullptr);
  graph.AddYAxis(1, kAxisReal, nullptr);
  graph.SetZoomRect({.left = 0.9f, .right = 0.9000001f, .bottom = 0.9f, .top = 0.9000001f});
  Paint();
  const FrameRect& data = graph.dataArea();
  EXPECT_LT(data.left, data.right);
  EXPECT_LT(data.bottom, data.top);
}

}  // namespace
}  // namespace zel

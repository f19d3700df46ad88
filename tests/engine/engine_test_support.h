#pragma once
// A window that records what the engine asks of it, and a fresh process for
// every test.
#include <gtest/gtest.h>

#include <array>
#include <utility>
#include <vector>

#include "engine/host_window.h"
#include "engine/v_dataset.h"
#include "recording_surface.h"
#include "engine/value_column.h"
#include "util/platform_hooks.h"
#include "util/process_state.h"

namespace zel {

// A window that records what it is asked, and fails the test on a kind of
// call the test does not expect. The engine's own changes only repaint and
// set the scroll bars; interaction also repaints parts, scrolls, captures the
// mouse and runs timers.
class FakeWindow : public HostWindow {
 public:
  enum Calls : unsigned {
    kRepaint = 1, kScrollBars = 2, kRepaintArea = 4, kScrolling = 8, kCapture = 16, kTimers = 32,
    kEngineCalls = kRepaint | kScrollBars,
    kAnyCall = 63,
  };
  unsigned expected = kEngineCalls;

  bool exists = true;
  ClientRect client{0, 0, 400, 300};
  int invalidations = 0;
  // Interaction repaints without erase; engine changes never do.
  bool allowPlainInvalidate = false;
  std::vector<ScrollBarState> horizontal, vertical;
  std::vector<Rect> invalidatedAreas;
  std::vector<int> horizontalPositions, verticalPositions;
  std::vector<std::array<int, 2>> scrolls;
  bool captured = false;
  // Timers started (id, period) and stopped (id, 0), in order.
  std::vector<std::pair<int, int>> timers;

  bool Exists() const override { return exists; }
  ClientRect ClientRectangle() const override { return client; }
  void Invalidate(bool erase) override {
    Expect(kRepaint, "Invalidate");
    if (!allowPlainInvalidate) {
      EXPECT_TRUE(erase);
    }
    ++invalidations;
  }
  void SetScrollBar(bool isVertical, const ScrollBarState& state) override {
    Expect(kScrollBars, "SetScrollBar");
    (isVertical ? vertical : horizontal).push_back(state);
  }
  void InvalidateArea(const Rect& area, bool) override {
    Expect(kRepaintArea, "InvalidateArea");
    invalidatedAreas.push_back(area);
  }
  void SetScrollPosition(bool isVertical, int position) override {
    Expect(kScrolling, "SetScrollPosition");
    (isVertical ? verticalPositions : horizontalPositions).push_back(position);
  }
  void ScrollArea(const Rect&, int dx, int dy) override {
    Expect(kScrolling, "ScrollArea");
    scrolls.push_back({dx, dy});
  }
  void CaptureMouse(bool capture) override {
    Expect(kCapture, "CaptureMouse");
    captured = capture;
  }
  void SetTimer(int id, int periodMs) override {
    Expect(kTimers, "SetTimer");
    timers.push_back({id, periodMs});
  }
  void KillTimer(int id) override {
    Expect(kTimers, "KillTimer");
    timers.push_back({id, 0});
  }
  std::unique_ptr<Surface> MeasuringSurface() override { return std::make_unique<RecordingSurface>(); }

 private:
  void Expect(unsigned kind, const char* call) {
    if (!(expected & kind)) ADD_FAILURE() << "unexpected " << call;
  }
};

class EngineTest : public ::testing::Test {
 protected:
  void SetUp() override {
    ResetProcessState();
    InstallPlatformHooks({});
  }
  void TearDown() override { ResetProcessState(); }
};

// Plain arrays and arrays of values, as the automation layer hands them over.
template <typename T>
ValueColumn Column(const std::vector<T>& values) {
  return ValueColumn(std::span<const T>(values));
}

// An axis record from `min` to `max` with a black axis line.
inline AxisProps AxisRange(Value min, Value max) {
  AxisProps props;
  props.min = min;
  props.max = max;
  props.axisColor = 0;
  return props;
}

// Replaces a curve's points; statuses not given are 0 (drawn).
inline void LoadPoints(VDataset& dataset, std::vector<double> xs, std::vector<double> ys,
                       std::vector<int32_t> status = {}) {
  status.resize(xs.size(), 0);
  dataset.SetValues(xs.size(), Column(xs), Column(ys), status, false);
}

}  // namespace zel

#pragma once
// A window that records what the engine asks of it, and a fresh process for
// every test.
#include <gtest/gtest.h>

#include <vector>

#include "engine/host_window.h"
#include "recording_surface.h"
#include "engine/value_column.h"
#include "util/platform_hooks.h"
#include "util/process_state.h"

namespace zel {

class FakeWindow : public HostWindow {
 public:
  bool exists = true;
  ClientRect client{0, 0, 400, 300};
  int invalidations = 0;
  std::vector<ScrollBarState> horizontal, vertical;

  bool Exists() const override { return exists; }
  ClientRect ClientRectangle() const override { return client; }
  void Invalidate(bool erase) override {
    EXPECT_TRUE(erase);
    ++invalidations;
  }
  void SetScrollBar(bool isVertical, const ScrollBarState& state) override {
    (isVertical ? vertical : horizontal).push_back(state);
  }
  std::unique_ptr<Surface> MeasuringSurface() override { return std::make_unique<RecordingSurface>(); }
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

}  // namespace zel

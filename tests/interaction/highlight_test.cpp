// Timed curve highlighting counted tick by tick, and "Show Hairline Here".
#include "interaction/hairline_intersection.h"
#include "interaction/highlight.h"

#include "../engine/engine_test_support.h"

namespace zel {
namespace {

using Timers = std::vector<std::pair<int, int>>;
const std::pair<int, int> kStarted{10101, 1000}, kKilled{10101, 0};

class HighlightTest : public EngineTest {
 protected:
  void SetUp() override {
    EngineTest::SetUp();
    graph_.AddXAxis(1, kAxisReal, nullptr);
    graph_.AddYAxis(1, kAxisReal, nullptr);
    for (int32_t id : {7, 3, 9}) graph_.AddDataset(id, kPlot, 1, 1, nullptr);
    window_.invalidations = 0;
  }
  // How many ticks keep the curve highlighted before one stops it; `limit`
  // when none does.
  int TicksKept(int32_t seconds, int limit = 50) {
    highlight_.Show(1, 42, seconds);
    for (int tick = 0; tick < limit; ++tick) {
      highlight_.Tick();
      if (!highlight_.highlightActive()) return tick;
    }
    return limit;
  }

  static FakeWindow TimedWindow() {
    FakeWindow window;
    window.expected = FakeWindow::kEngineCalls | FakeWindow::kTimers;
    return window;
  }
  FakeWindow window_ = TimedWindow();
  VGraph graph_{&window_};
  CurveHighlight highlight_{graph_, window_};
};

TEST_F(HighlightTest, ADurationOfNEndsAtTickNPlus2) {
  EXPECT_EQ(TicksKept(3), 4);
  EXPECT_EQ(TicksKept(1), 2);
  EXPECT_EQ(TicksKept(0), 50) << "elapsed never counts for 0";
  EXPECT_EQ(TicksKept(-1), 50);
  EXPECT_EQ(TicksKept(-5), 0);
  EXPECT_EQ(highlight_.highlightSeconds(), -2);
  EXPECT_EQ(highlight_.highlightIndex(), -1);
  EXPECT_FALSE(graph_.highlightedCurve());
}

TEST_F(HighlightTest, ShowPicksTheDatasetByPlaceAndRunsTheTimer) {
  highlight_.Show(1, 42, 3);
  EXPECT_EQ(graph_.highlightedCurve(), 3);
  EXPECT_EQ(highlight_.curvelogId(), 42);
  EXPECT_EQ(window_.timers, (Timers{kKilled, kStarted})) << "a new index stops first";
  EXPECT_EQ(window_.invalidations, 1);

  highlight_.Tick();
  EXPECT_EQ(highlight_.highlightElapsed(), 1);
  EXPECT_EQ(window_.invalidations, 2) << "each kept tick repaints, so the curve blinks";

  graph_.RemoveDataset(7);
  highlight_.Tick();
  EXPECT_EQ(graph_.highlightedCurve(), 9) << "the place is read again on every tick";

  window_.timers.clear();
  highlight_.Show(5, 1, 3);
  EXPECT_EQ(highlight_.highlightActive(), 1);
  EXPECT_FALSE(graph_.highlightedCurve()) << "no dataset in that place";
  EXPECT_EQ(window_.timers, (Timers{kKilled, kStarted}));
}

TEST_F(HighlightTest, NothingToShowOnlyStopsWhatIsOn) {
  highlight_.Show(-1, 42, 3);
  highlight_.Show(0, 42, -2);
  EXPECT_EQ(window_.timers, (Timers{kKilled})) << "only the new index >= 0 stops";
  EXPECT_EQ(highlight_.curvelogId(), 0);

  highlight_.Show(0, 42, 3);
  window_.timers.clear();
  highlight_.Show(-1, 0, 3);
  EXPECT_EQ(window_.timers, (Timers{kKilled}));
  EXPECT_EQ(highlight_.highlightActive(), 0);
  EXPECT_EQ(highlight_.highlightSeconds(), -2);
  EXPECT_FALSE(graph_.highlightedCurve());
  EXPECT_EQ(highlight_.curvelogId(), 42) << "the log id outlives the highlight";

  window_.timers.clear();
  highlight_.Tick();  // a stray tick with nothing on
  EXPECT_TRUE(window_.timers.empty());
}

TEST_F(HighlightTest, UpdateRestartsTheCountAndOverwritesTheLogId) {
  highlight_.UpdateDuration(7);
  EXPECT_EQ(highlight_.highlightSeconds(), 7);
  EXPECT_EQ(highlight_.curvelogId(), 0) << "nothing active: only the duration changes";
  EXPECT_TRUE(window_.timers.empty());

  highlight_.Show(2, 42, 3);
  highlight_.Tick();
  highlight_.Tick();
  window_.timers.clear();
  highlight_.UpdateDuration(1);
  EXPECT_EQ(highlight_.curvelogId(), 1);
  EXPECT_EQ(highlight_.highlightElapsed(), 0);
  EXPECT_EQ(highlight_.highlightIndex(), 2);
  EXPECT_EQ(graph_.highlightedCurve(), 9);
  EXPECT_EQ(window_.timers, (Timers{kKilled, kStarted}));
  highlight_.Tick();
  highlight_.Tick();
  highlight_.Tick();
  EXPECT_EQ(highlight_.highlightActive(), 0) << "the new duration counts from 0";
}

TEST_F(HighlightTest, WithoutAWindowNoTimerIsAsked) {
  window_.exists = false;
  highlight_.Show(0, 1, 3);
  highlight_.Stop();
  EXPECT_TRUE(window_.timers.empty());
  EXPECT_EQ(window_.invalidations, 0);
}

TEST_F(HighlightTest, ShowHairlineHereDividesByTheFrameWidthLessTwo) {
  EXPECT_FALSE(PlaceLastHairline(graph_, &window_, 100));
  window_.client = {0, 0, 399, 299};
  graph_.SetMargins({.left = 0, .right = 0, .bottom = 0, .top = 0});
  graph_.RemoveDataset(7);
  graph_.RemoveDataset(3);
  graph_.RemoveDataset(9);
  graph_.RemoveXAxis(1);
  graph_.RemoveYAxis(1);
  graph_.UpdateLayoutAndRepaint();
  ASSERT_EQ(graph_.plotFrame().right - graph_.plotFrame().left, 399);
  int32_t first = *graph_.AddHairline(10, std::nullopt, 1);
  int32_t last = *graph_.AddHairline(20, std::nullopt, 1);
  window_.invalidations = 0;
  EXPECT_EQ(PlaceLastHairline(graph_, &window_, 199), last);
  EXPECT_FLOAT_EQ(graph_.FindHairline(last)->position, 199 / 398.f);
  EXPECT_FLOAT_EQ(graph_.FindHairline(first)->position, 0.1f);
  EXPECT_EQ(window_.invalidations, 1);
}

}  // namespace
}  // namespace zel

// Hairline crossings of curves, the arrow-key snap, scrolling and the
// selection, on axes of 0..100 over 100 pixels, so values are pixels.
#include "interaction/hairline_intersection.h"
#include "interaction/scroller.h"
#include "interaction/selection.h"

#include "../engine/engine_test_support.h"
#include "engine/graph_error.h"

#include <cmath>

namespace zel {
namespace {

AxisProps Range(Value min, Value max) {
  AxisProps props;
  props.min = min;
  props.max = max;
  return props;
}

void Load(VDataset& dataset, std::vector<float> xs, std::vector<float> ys, std::vector<int32_t> status = {}) {
  status.resize(xs.size(), 0);
  dataset.SetValues(xs.size(), Column(xs), Column(ys), status, false);
}

class CrossingTest : public EngineTest {
 protected:
  AxisProps range_ = Range(0.0, 100.0);
  VAxis x_{false, kAxisReal, &range_};
  VAxis y_{true, kAxisReal, &range_};
  VDataset curve_{kPlot, &x_, &y_, nullptr};
};

TEST_F(CrossingTest, InterpolatesBetweenPointsAndLeavesYEmptyOutside) {
  Load(curve_, {20, 40, 60, 80}, {10, 30, 20, 99}, {0, 0, 11, 0});  // 60 is absent
  Crossing between = HairlineCrossing(curve_, 30, 100, false);
  EXPECT_EQ(between.x, Value(30.f));
  EXPECT_EQ(between.y, Value(20.f));
  EXPECT_EQ(HairlineCrossing(curve_, 60, 100, false).y, Value(64.5f)) << "the absent point is skipped";
  EXPECT_EQ(HairlineCrossing(curve_, 40, 100, false).y, Value(30.f));

  Crossing before = HairlineCrossing(curve_, 10, 100, false);
  EXPECT_EQ(before.x, Value(10.f));
  EXPECT_EQ(KindOf(before.y), ValueKind::Empty);
  EXPECT_EQ(KindOf(HairlineCrossing(curve_, 90, 100, false).y), ValueKind::Empty);
  EXPECT_EQ(HairlineCrossing(curve_, 100, 100, false).y, Value(99.f)) << "the axis end holds the last y";
}

TEST_F(CrossingTest, SnapTakesTheNearerPointAndTheEndOnATie) {
  Load(curve_, {20, 40}, {10, 30});
  EXPECT_EQ(HairlineCrossing(curve_, 5, 100, true).x, Value(20.f)) << "before the first point";
  EXPECT_EQ(HairlineCrossing(curve_, 95, 100, true).x, Value(40.f)) << "after the last point";
  EXPECT_EQ(HairlineCrossing(curve_, 29, 100, true).x, Value(20.f));
  EXPECT_EQ(HairlineCrossing(curve_, 30, 100, true).x, Value(40.f));
}

TEST_F(CrossingTest, DiscreteAxesAlwaysSnapHalfACategoryOn) {
  AxisProps categories = Range(int32_t(0), int32_t(4));
  VAxis discrete(false, kAxisDiscrete, &categories);
  VDataset bars(kPlot, &discrete, &y_, nullptr);
  std::vector<int32_t> xs{1, 2, 3};
  std::vector<float> ys{5, 6, 7};
  std::vector<int32_t> status(3, 0);
  bars.SetValues(3, Column(xs), Column(ys), status, false);
  // Category 2 is drawn from pixel 25 to 50; its middle (37) snaps to 2.
  Crossing crossing = HairlineCrossing(bars, 37, 100, false);
  EXPECT_EQ(crossing.x, Value(int32_t(2)));
  EXPECT_EQ(crossing.y, Value(6.f));
}

TEST_F(CrossingTest, EmptyAndUnscaledCurvesStayQuiet) {
  Crossing none = HairlineCrossing(curve_, 50, 100, false);
  EXPECT_EQ(none.x, Value(50.f));
  EXPECT_EQ(KindOf(none.y), ValueKind::Empty);
  AxisProps flat = Range(5.0, 5.0);
  VAxis point(false, kAxisReal, &flat);
  VDataset onPoint(kPlot, &point, &y_, nullptr);
  Load(onPoint, {5}, {1});
  HairlineCrossing(onPoint, 50, 100, true);
  HairlineCrossing(onPoint, 50, 0, false);
}

class GraphInteractionTest : public EngineTest {
 protected:
  void SetUp() override {
    EngineTest::SetUp();
    window_.client = {0, 0, 99, 99};
    window_.allowPlainInvalidate = true;
    window_.expected = FakeWindow::kEngineCalls | FakeWindow::kScrolling;
    graph_.SetMargins({.left = 0, .right = 0, .bottom = 0, .top = 0});
    graph_.UpdateLayoutAndRepaint();
  }
  FakeWindow window_;
  VGraph graph_{&window_};
};

TEST_F(GraphInteractionTest, ScrollRequestsClampToTheDataArea) {
  graph_.SetZoomRect({.left = 0.25f, .right = 0.75f, .bottom = 0, .top = 1});  // data area 200 wide at -50
  graph_.UpdateLayoutAndRepaint();
  Scroll(graph_, &window_, false, kScrollLineOn, 0);
  EXPECT_EQ(graph_.dataArea().left, -60);
  EXPECT_EQ(window_.horizontalPositions.back(), 60);
  EXPECT_EQ(window_.scrolls.back(), (std::array<int, 2>{-10, 0}));
  EXPECT_FLOAT_EQ(graph_.zoomRect().left, 0.3f);
  EXPECT_FLOAT_EQ(graph_.zoomRect().right, 0.8f);

  Scroll(graph_, &window_, false, kScrollPageOn, 0);
  EXPECT_EQ(graph_.dataArea().left, -100) << "the frame stays inside the data area";
  Scroll(graph_, &window_, false, kScrollThumbTrack, -40);
  EXPECT_EQ(graph_.dataArea().left, 0);
  size_t moves = window_.horizontalPositions.size();
  for (int ignored : {int(kScrollThumbPosition), int(kScrollEnd), 9, int(kScrollLineBack)})
    Scroll(graph_, &window_, false, ignored, 50);
  EXPECT_EQ(window_.horizontalPositions.size(), moves) << "ignored codes, or already at the start";
  Scroll(graph_, &window_, true, kScrollToEnd, 0);
  EXPECT_TRUE(window_.verticalPositions.empty()) << "nothing to scroll vertically";
}

TEST_F(GraphInteractionTest, VerticalScrollMovesTheBottomFraction) {
  graph_.SetZoomRect({.left = 0, .right = 1, .bottom = 0, .top = 0.5f});  // the lower half
  graph_.UpdateLayoutAndRepaint();
  EXPECT_EQ(graph_.dataArea().top - graph_.plotFrame().top, 100);
  Scroll(graph_, &window_, true, kScrollToStart, 0);
  EXPECT_FLOAT_EQ(graph_.zoomRect().bottom, 0.5f);
  EXPECT_FLOAT_EQ(graph_.zoomRect().top, 1.0f);
  EXPECT_EQ(window_.scrolls.back(), (std::array<int, 2>{0, 100}));
}

TEST_F(GraphInteractionTest, ArrowSnapMovesTheFirstAndReportsTheLast) {
  EXPECT_EQ(SnapHairline(graph_, &window_, true, 10), std::nullopt);
  AxisProps range = Range(0.0, 100.0);
  graph_.AddXAxis(1, kAxisReal, &range);
  graph_.AddYAxis(1, kAxisReal, &range);
  graph_.AddDataset(0, kPlot, 1, 1, nullptr);
  graph_.AddDataset(5, kPlot, 1, 1, nullptr);
  graph_.SetMargins({.left = 0, .right = 0, .bottom = 0, .top = 0});
  graph_.UpdateLayoutAndRepaint();
  std::vector<float> xs{20, 60}, ys{1, 1};
  std::vector<int32_t> status{0, 0};
  graph_.SetDatasetValues(0, 2, Column(xs), Column(ys), status, false);
  std::vector<float> nearer{45};
  graph_.SetDatasetValues(5, 1, Column(nearer), Column(ys), status, false);
  int32_t first = *graph_.AddHairline(30, 0, 1), last = *graph_.AddHairline(90, 0, 1);

  const FrameRect& f = graph_.plotFrame();
  const FrameRect& d = graph_.dataArea();
  int32_t width = d.right - d.left + 1;
  auto pixelOf = [&](double value) { return int32_t(std::lround(value * width / 100)); };
  EXPECT_EQ(SnapHairline(graph_, &window_, true, 4), last) << "dataset 5 lies beyond the bound";
  float frameWidth = float(f.right - f.left + 1);
  EXPECT_FLOAT_EQ(graph_.FindHairline(first)->position, float(d.left - f.left + pixelOf(60)) / frameWidth);
  EXPECT_FLOAT_EQ(graph_.FindHairline(last)->position, 0.9f);
  SnapHairline(graph_, &window_, false, 5);
  EXPECT_FLOAT_EQ(graph_.FindHairline(first)->position, float(d.left - f.left + pixelOf(45)) / frameWidth);
}

TEST_F(GraphInteractionTest, SelectionFindsPointsAndZoomChecksItsRectangle) {
  AxisProps range = Range(0.0, 100.0);
  graph_.AddXAxis(1, kAxisReal, &range);
  graph_.AddYAxis(1, kAxisReal, &range);
  graph_.AddDataset(3, kPlot, 1, 1, nullptr);
  graph_.AddDataset(4, kPlot, 1, 1, nullptr);
  graph_.UpdateLayoutAndRepaint();
  std::vector<float> xs{10, 50, 55, 90}, ys{10, 50, 52, 90};
  std::vector<int32_t> status{0, 0, 0, 0};
  graph_.SetDatasetValues(3, 4, Column(xs), Column(ys), status, false);

  RubberBand band{0.6f, 0.4f, 0.7f, 0.3f};  // dragged from the top right
  auto all = SelectedPointsOf(graph_, band, true);
  ASSERT_EQ(all.size(), 1u) << "dataset 4 has no points";
  EXPECT_EQ(all[0].datasetId, 3);
  EXPECT_EQ(all[0].indexes, (std::vector<size_t>{1, 2}));
  EXPECT_EQ(SelectedPointsOf(graph_, band, false)[0].indexes.size(), 1u);

  ZoomToSelection(graph_, band);
  EXPECT_FLOAT_EQ(graph_.zoomRect().left, 0.4f);
  EXPECT_FLOAT_EQ(graph_.zoomRect().top, 0.7f);
  ZoomToSelection(graph_, RubberBand{0.5f, 0.5f, 0.1f, 0.9f});
  EXPECT_FLOAT_EQ(graph_.zoomRect().left, 0.4f) << "a band without width changes nothing";
  for (float bad : {std::nanf(""), 1.5f, 0.05f}) {
    try {
      graph_.SetZoomRect({.left = 0.1f, .right = 0.9f, .bottom = 0.1f, .top = bad});
      ADD_FAILURE() << bad;
    } catch (const GraphError& e) {
      EXPECT_EQ(e.messageId, 113);
    }
  }
  EXPECT_FLOAT_EQ(graph_.zoomRect().left, 0.4f);

  // Both ends may reach the edges of the range, but not pass them or meet.
  const Fractions edges{.left = 0.5f, .right = 1, .bottom = 0, .top = 1};
  graph_.SetZoomRect(edges);
  EXPECT_EQ(graph_.zoomRect(), edges);
  float past = std::nextafter(1.0f, 2.0f);
  for (Fractions bad : {Fractions{.left = 0.5f, .right = past, .bottom = 0, .top = 1},
                        Fractions{.left = -0.01f, .right = 1, .bottom = 0, .top = 1},
                        Fractions{.left = 0.5f, .right = 0.5f, .bottom = 0, .top = 1},
                        Fractions{.left = 0, .right = 1, .bottom = 0.3f, .top = 0.3f},
                        Fractions{.left = 0, .right = 1, .bottom = 0.5f, .top = 0.2f}}) {
    EXPECT_THROW(graph_.SetZoomRect(bad), GraphError);
    EXPECT_EQ(graph_.zoomRect(), edges);
  }
}

}  // namespace
}  // namespace zel

// The drag state machine as the control drives it: what each release fires,
// what is drawn in XOR, and what the window is asked to do.
#include "interaction/mouse_tracker.h"

#include "../engine/engine_test_support.h"

namespace zel {
namespace {

class MouseTrackerTest : public EngineTest {
 protected:
  // No margins and no axes: the plot frame is the whole 400 by 300 client,
  // so x' = x and y' = 299 - y.
  void SetUp() override {
    EngineTest::SetUp();
    window_.client = {0, 0, 399, 299};
    window_.allowPlainInvalidate = true;
    // Everything but timers: a drag repaints, captures and may scroll.
    window_.expected = FakeWindow::kAnyCall & ~FakeWindow::kTimers;
    graph_.SetMargins({.left = 0, .right = 0, .bottom = 0, .top = 0});
    graph_.UpdateLayoutAndRepaint();
  }
  Reaction Drag(Point from, Point to) {
    tracker_.ButtonDown(surface_, from, {});
    if (!(to == from)) tracker_.MouseMove(surface_, to, {});
    return tracker_.ButtonUp(surface_, to, {});
  }

  FakeWindow window_;
  VGraph graph_{&window_};
  MouseTracker tracker_{graph_, window_};
  RecordingSurface surface_;
};

TEST_F(MouseTrackerTest, SelectAndZoomReleaseAtTheirOwnThresholds) {
  // 2 pixels of 400 is a band 0.005 wide.
  graph_.SetMouseMode(MouseMode::kSelect);
  Reaction selected = Drag({100, 199}, {102, 99});
  ASSERT_EQ(selected.events.size(), 1u);
  EXPECT_EQ(std::get<AreaSelected>(selected.events[0]), (AreaSelected{0.25f, 0.255f, 1 / 3.f, 2 / 3.f}));
  EXPECT_TRUE(selected.viewChanged);
  EXPECT_TRUE(graph_.band().empty());
  EXPECT_FLOAT_EQ(graph_.selection().bandX1, 0.255f);

  graph_.SetMouseMode(MouseMode::kZoom);
  EXPECT_TRUE(Drag({100, 199}, {102, 99}).events.empty());
  EXPECT_TRUE(graph_.band().empty());
  Reaction zoomed = Drag({100, 199}, {200, 99});
  ASSERT_EQ(zoomed.events.size(), 1u);
  EXPECT_FALSE(graph_.band().empty()) << "a zoom band stays until the host zooms";
  // The next press takes the old band away before starting anew.
  surface_.calls.clear();
  tracker_.ButtonDown(surface_, {10, 10}, {});
  EXPECT_EQ(surface_.Calls("Polyline").size(), 1u);

  // A mode change keeps the drag, but outside SELECT and ZOOM a band
  // selects nothing when released.
  tracker_.MouseMove(surface_, {200, 200}, {});
  graph_.SetMouseMode(MouseMode::kPan);
  EXPECT_TRUE(tracker_.ButtonUp(surface_, {200, 200}, {}).events.empty());
  EXPECT_TRUE(graph_.band().empty());
}

TEST_F(MouseTrackerTest, PlainClickSelectsLegendByPixelColour) {
  surface_.background = 0x123456;
  for (MouseMode mode : {MouseMode::kSelect, MouseMode::kZoom, MouseMode::kPan}) {
    graph_.SetMouseMode(mode);
    Reaction r = Drag({50, 60}, {50, 60});
    ASSERT_EQ(r.events.size(), 1u) << int(mode);
    EXPECT_EQ(std::get<SelectLegendFromGraph>(r.events[0]), (SelectLegendFromGraph{50, 60, 0x123456, 0}));
    EXPECT_TRUE(r.releaseCapture);
  }
  // The click is reported where the engine last saw the mouse, not where an
  // unannounced release lands.
  graph_.SetMouseMode(MouseMode::kSelect);
  tracker_.ButtonDown(surface_, {50, 60}, {});
  Reaction r = tracker_.ButtonUp(surface_, {53, 60}, {});
  EXPECT_EQ(r.events, std::vector<InteractionEvent>{(SelectLegendFromGraph{50, 60, 0x123456, 0})});
}

TEST_F(MouseTrackerTest, PressOutsideThePlotStartsNothingButCaptures) {
  tracker_.ButtonDown(surface_, {-5, 50}, {});
  EXPECT_EQ(tracker_.dragState(), DragState::kIdle);
  EXPECT_TRUE(window_.captured);
  Reaction up = tracker_.ButtonUp(surface_, {-5, 50}, {});
  EXPECT_TRUE(up.events.empty());
  EXPECT_TRUE(up.releaseCapture);
}

TEST_F(MouseTrackerTest, DraggedHairlineLandsWhereTheGhostWas) {
  graph_.AddHairline(50, 0x0000FF, 2);
  graph_.AddHairline(90, 0x0000FF, 1);
  int32_t id = graph_.hairlines()[0].id;
  EXPECT_EQ(tracker_.CursorAt({198, 100}), CursorShape::kSizeWE);
  EXPECT_EQ(tracker_.CursorAt({197, 100}), CursorShape::kArrow);

  tracker_.ButtonDown(surface_, {202, 100}, {});
  EXPECT_EQ(tracker_.dragState(), DragState::kDraggingHairline);
  tracker_.MouseMove(surface_, {300, 100}, {});
  Reaction r = tracker_.ButtonUp(surface_, {300, 100}, {});
  EXPECT_EQ(r.events, std::vector<InteractionEvent>{HairlineMoved{id}});
  EXPECT_FLOAT_EQ(graph_.hairlines()[0].position, 0.75f);
  EXPECT_EQ(surface_.Calls("LineTo").size(), 4u) << "ghost drawn, moved (erase + draw), erased";
  ASSERT_EQ(window_.invalidatedAreas.size(), 1u);
  EXPECT_EQ(window_.invalidatedAreas[0], (Rect{0, 0, 400, 300}));
}

TEST_F(MouseTrackerTest, ADraggedHairlineRepaintsTheRowsOfItsValueLabels) {
  graph_.SetMargins({.left = 10, .right = 10, .bottom = 20, .top = 15});
  graph_.AddHairline(50, 0x0000FF, 1);
  Drag({10 + 200, 100}, {10 + 300, 100});
  // The plot (without Y axes the side margins are not applied), and the
  // rows above and below it where the labels stand.
  EXPECT_EQ(window_.invalidatedAreas,
            (std::vector<Rect>{{10, 15, 410, 280}, {0, 0, 399, 15}, {0, 280, 399, 299}}));
  EXPECT_FLOAT_EQ(graph_.hairlines()[0].position, 0.75f);
}

TEST_F(MouseTrackerTest, EscapeErasesAndOnlyWhenDragging) {
  tracker_.ButtonDown(surface_, {100, 100}, {});
  tracker_.MouseMove(surface_, {150, 150}, {});
  EXPECT_TRUE(tracker_.Cancel(surface_).handled);
  EXPECT_EQ(tracker_.dragState(), DragState::kIdle);
  EXPECT_TRUE(graph_.band().empty());
  EXPECT_EQ(surface_.Calls("Polyline").size(), 3u) << "drawn, redrawn on the move, erased";
  EXPECT_FALSE(tracker_.Cancel(surface_).handled);
}

TEST_F(MouseTrackerTest, BorderDragReportsStepsOfTwoPixelsOrMore) {
  graph_.EnableLegend(true);
  graph_.SetLegendPosition(VLegend::kRight);
  EXPECT_EQ(tracker_.CursorAt({395, 100}), CursorShape::kSizeWE);
  graph_.SetLegendPosition(VLegend::kBottom);
  EXPECT_EQ(tracker_.CursorAt({100, 295}), CursorShape::kSizeNS);
  graph_.SetLegendPosition(VLegend::kRight);

  tracker_.MouseMove(surface_, {120, 130}, {});
  tracker_.ButtonDown(surface_, {394, 100}, {500, 40});
  EXPECT_EQ(tracker_.dragState(), DragState::kDraggingBorder);
  EXPECT_TRUE(tracker_.MouseMove(surface_, {395, 150}, {501, 90}).events.empty()) << "only x is watched";
  Reaction moved = tracker_.MouseMove(surface_, {396, 150}, {502, 90});
  EXPECT_EQ(moved.events, (std::vector<InteractionEvent>{GraphAreaMoved{502, 90}}));
  EXPECT_TRUE(tracker_.MouseMove(surface_, {397, 150}, {503, 90}).events.empty());
  Reaction up = tracker_.ButtonUp(surface_, {}, {503, 90});
  EXPECT_TRUE(up.events.empty());
  EXPECT_EQ(up.cursor, CursorShape::kSizeWE);
  EXPECT_TRUE(up.releaseCapture);
  EXPECT_EQ(tracker_.lastMouse(), (Point{120, 130})) << "the border drag is the control's, not the engine's";
  EXPECT_EQ(tracker_.mouseX(), 120);

  // Above the graph y is watched; a release two pixels on finishes there.
  graph_.SetLegendPosition(VLegend::kTop);
  tracker_.ButtonDown(surface_, {100, 1}, {500, 40});
  EXPECT_TRUE(tracker_.MouseMove(surface_, {}, {540, 41}).events.empty());
  EXPECT_EQ(tracker_.ButtonUp(surface_, {}, {540, 38}).events,
            (std::vector<InteractionEvent>{GraphAreaMoved{540, 38}}));
  EXPECT_EQ(tracker_.dragState(), DragState::kIdle);
  EXPECT_TRUE(tracker_.MouseMove(surface_, {}, {600, 90}).events.empty());

  // Without a legend the band still takes the press, but reports nothing.
  graph_.EnableLegend(false);
  graph_.SetLegendPosition(VLegend::kBottom);
  tracker_.ButtonDown(surface_, {100, 297}, {500, 40});
  EXPECT_EQ(tracker_.dragState(), DragState::kDraggingBorder);
  EXPECT_TRUE(tracker_.MouseMove(surface_, {100, 250}, {500, 0}).events.empty());
  EXPECT_TRUE(tracker_.ButtonUp(surface_, {100, 250}, {500, 0}).events.empty());
}

TEST_F(MouseTrackerTest, PanKeepsThePressedPointUnderTheCursor) {
  graph_.SetMouseMode(MouseMode::kPan);
  graph_.SetZoomRect({.left = 0.25f, .right = 0.75f, .bottom = 0, .top = 1});  // half the width, all the height
  graph_.UpdateLayoutAndRepaint();
  EXPECT_EQ(graph_.dataArea().left, -200);
  EXPECT_EQ(tracker_.CursorAt({100, 100}), CursorShape::kHand);

  EXPECT_EQ(tracker_.ButtonDown(surface_, {200, 100}, {}).cursor, CursorShape::kGrab);
  tracker_.MouseMove(surface_, {190, 100}, {});
  EXPECT_EQ(graph_.dataArea().left, -210);
  EXPECT_FLOAT_EQ(graph_.zoomRect().left, 210 / 800.f);
  EXPECT_FLOAT_EQ(graph_.zoomRect().right - graph_.zoomRect().left, 0.5f);
  Reaction up = tracker_.ButtonUp(surface_, {190, 100}, {});
  EXPECT_TRUE(up.events.empty()) << "a pan that moved selects nothing";
  EXPECT_EQ(up.cursor, CursorShape::kHand);
}

}  // namespace
}  // namespace zel

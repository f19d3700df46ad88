// The operator's side inside ATL's container: timer ticks of the curve
// highlight, "Show Hairline Here" from the menu command, and the point under
// the mouse.
#include "hosted_control.h"

namespace zel::testing {
namespace {

constexpr DISPID kHairlineMoved = 3;
constexpr UINT kHighlightTimer = 10101, kShowHairlineHere = 316;

class HighlightWindowTest : public HostedControlTest {
 protected:
  void SetUp() override {
    HostedControlTest::SetUp();
    AddRealAxes();
    AddPlot(1);
    AddPlot(2);
  }

  // Both axes run from 0 to 100.
  void SetRange(bool vertical) {
    Var props;
    ASSERT_EQ(vertical ? graph->GetYAxisProperties(1, &props.v) : graph->GetXAxisProperties(1, &props.v), S_OK);
    auto* record = static_cast<::AxisProps*>(V_RECORD(&props.v));
    VariantClear(&record->min);
    VariantClear(&record->max);
    V_VT(&record->min) = VT_R8, V_R8(&record->min) = 0;
    V_VT(&record->max) = VT_R8, V_R8(&record->max) = 100;
    ASSERT_EQ(vertical ? graph->SetYAxisProperties(1, props.v) : graph->SetXAxisProperties(1, props.v), S_OK);
  }
  void Tick(UINT_PTR id = kHighlightTimer) { SendMessageW(window, WM_TIMER, id, 0); }
  // Whether a highlight is still on: only then does a new duration turn the
  // log id into the active flag.
  bool StillOn() {
    EXPECT_EQ(graph->UpdateHighlightTimerInfo(5), S_OK);
    int logId = 0;
    graph->GetCurvelogID(&logId);
    return logId == 1;
  }
};

TEST_F(HighlightWindowTest, TimerTicksEndTheHighlightAtTheThirdForOneSecond) {
  ASSERT_EQ(graph->ShowHighlightedCurve(1, 42, 1), S_OK);
  int logId = 0;
  ASSERT_EQ(graph->GetCurvelogID(&logId), S_OK);
  EXPECT_EQ(logId, 42);
  for (int i = 0; i < 5; ++i) Tick(kHighlightTimer + 1);  // not the highlight's
  Tick();
  Tick();
  EXPECT_TRUE(StillOn());

  ASSERT_EQ(graph->ShowHighlightedCurve(1, 42, 1), S_OK);
  for (int i = 0; i < 3; ++i) Tick();
  EXPECT_FALSE(StillOn());

  ASSERT_EQ(graph->ShowHighlightedCurve(0, 7, -1), S_OK);
  for (int i = 0; i < 20; ++i) Tick();
  EXPECT_TRUE(StillOn()) << "-1 runs without end";
  ASSERT_EQ(graph->ShowHighlightedCurve(0, 8, 4), S_OK);
  ASSERT_EQ(graph->ShowHighlightedCurve(-1, 0, 0), S_OK);
  EXPECT_FALSE(StillOn()) << "a negative index only stops";
}

TEST_F(HighlightWindowTest, ShowHairlineHereMovesTheLastHairlineBeforeReportingIt) {
  LONG first = -1, last = -1;
  ASSERT_EQ(graph->AddHairline(10, Var::Missing().v, Var::Missing().v, &first), S_OK);
  ASSERT_EQ(graph->AddHairline(20, Var::Missing().v, Var::Missing().v, &last), S_OK);
  float seen = -1;
  sink.onEvent = [&](DISPID id) {
    if (id == kHairlineMoved) graph->GetHairlinePosition(last, &seen);
  };
  SendMessageW(window, WM_MOUSEMOVE, 0, MAKELPARAM(300, 150));
  EXPECT_EQ(SendMessageW(window, WM_COMMAND, kShowHairlineHere, 0), 0);
  ASSERT_EQ(sink.calls.size(), 1u);
  EXPECT_EQ(V_I4(&sink.calls[0][0].v), kHairlineMoved);
  EXPECT_EQ(V_VT(&sink.calls[0][1].v), VT_I4);
  EXPECT_EQ(V_I4(&sink.calls[0][1].v), last);

  float position = 0, untouched = 0;
  graph->GetHairlinePosition(last, &position);
  graph->GetHairlinePosition(first, &untouched);
  EXPECT_EQ(seen, position) << "the handler sees the moved hairline";
  EXPECT_GT(position, 60.f);
  EXPECT_LT(position, 100.f);
  EXPECT_FLOAT_EQ(untouched, 10.f);
}

TEST_F(HighlightWindowTest, GetPointIntersectionFindsThePointUnderTheMouse) {
  SetRange(false);
  SetRange(true);
  std::vector<float> xs, ys;
  for (int i = 0; i <= 1000; ++i) xs.push_back(float(i) / 10), ys.push_back(50);  // denser than pixels
  std::vector<int32_t> status(xs.size(), 0);
  ASSERT_EQ(graph->SetDatasetValues(1, Var::Typed(VT_R4, xs).v, Var::Typed(VT_R4, ys).v,
                                    Var::Typed(VT_I4, status).v, Var(0).v),
            S_OK);
  Var none;
  EXPECT_EQ(graph->GetPointIntersection(3, 0, &none.v), E_INVALIDARG);
  int hits = 0;
  for (int y = 0; y < 300; ++y) {
    SendMessageW(window, WM_MOUSEMOVE, 0, MAKELPARAM(200, y));
    Var found;
    ASSERT_EQ(graph->GetPointIntersection(1, 0, &found.v), S_OK);
    if (V_VT(&found.v) == VT_EMPTY) continue;
    ++hits;
    ASSERT_EQ(V_VT(&found.v), VT_ARRAY | VT_VARIANT);
    LONG index = 1;
    Var y1;
    SafeArrayGetElement(V_ARRAY(&found.v), &index, &y1.v);
    EXPECT_EQ(V_VT(&y1.v), VT_R4);
    EXPECT_EQ(V_R4(&y1.v), 50.f);
  }
  EXPECT_GE(hits, 1);
  EXPECT_LE(hits, 5) << "within the pen's width of the line only";
}

// The curve page's frame: its tab count is noted when it activates, and it
// is cancelled at once.
HHOOK frameHook = nullptr;
int frameTabs = -1;

LRESULT CALLBACK CancelFrame(int code, WPARAM wParam, LPARAM lParam) {
  if (code == HCBT_ACTIVATE && frameTabs < 0) {
    HWND dialog = reinterpret_cast<HWND>(wParam);
    if (HWND tabs = FindWindowExW(dialog, nullptr, L"SysTabControl32", nullptr)) {
      frameTabs = int(SendMessageW(tabs, 0x1304 /* TCM_GETITEMCOUNT */, 0, 0));
      PostMessageW(dialog, WM_COMMAND, IDCANCEL, 0);
    }
  }
  return CallNextHookEx(frameHook, code, wParam, lParam);
}

TEST_F(HighlightWindowTest, TheCurvePageOpensAloneAndClosingItEndsTheHighlight) {
  ASSERT_EQ(graph->ShowHighlightedCurve(0, 42, -1), S_OK);
  frameHook = SetWindowsHookExW(WH_CBT, CancelFrame, nullptr, GetCurrentThreadId());
  frameTabs = -1;
  EXPECT_EQ(graph->loadCurveProperty(nullptr, 2), S_OK);
  UnhookWindowsHookEx(frameHook);
  EXPECT_EQ(frameTabs, 1);
  LONG id = 0, fromLegend = 1;
  graph->GetCurveInfofromLegend(&id, &fromLegend);
  EXPECT_EQ(id, -1);
  EXPECT_EQ(fromLegend, 0);
  EXPECT_FALSE(StillOn());
}

}  // namespace
}  // namespace zel::testing

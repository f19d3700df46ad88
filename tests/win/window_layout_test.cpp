// The control's window as a container sizes it: the scroll bars take their
// room in the frame from the start, and the graph is laid out for the size
// each resize reports. The horizontal bar shows the layout: with no axes the
// plot spans the whole layout width, the client width plus one, and the bar's
// page is the plot's width. A layout that leaves a bar as it was does not
// set it again.
#include "hosted_control.h"
#include "import_hook.h"

namespace zel::testing {
namespace {

int scrollBarsSet = 0;
void* setScrollInfo = nullptr;

int WINAPI CountedSetScrollInfo(HWND window, int bar, const SCROLLINFO* info, BOOL redraw) {
  ++scrollBarsSet;
  return reinterpret_cast<int(WINAPI*)(HWND, int, const SCROLLINFO*, BOOL)>(setScrollInfo)(window, bar, info,
                                                                                             redraw);
}

class WindowLayoutTest : public HostedControlTest {
 protected:
  void EnableBars() {
    ASSERT_EQ(graph->put_HorizontalScrollbarEnabled(1), S_OK);
    ASSERT_EQ(graph->put_VerticalScrollbarEnabled(1), S_OK);
  }
  int Page(int bar) const {
    SCROLLINFO info{sizeof info, SIF_PAGE};
    EXPECT_TRUE(GetScrollInfo(window, bar, &info));
    return int(info.nPage);
  }
  int Range(int bar) const {
    SCROLLINFO info{sizeof info, SIF_RANGE};
    EXPECT_TRUE(GetScrollInfo(window, bar, &info));
    return info.nMax;
  }
  RECT Client() const {
    RECT client{};
    GetClientRect(window, &client);
    return client;
  }
};

TEST_F(WindowLayoutTest, ScrollBarsTurnedOnBeforeAnyResizeTakeTheirRoomAndShow) {
  EnableBars();
  RECT outer{}, client = Client();
  GetWindowRect(window, &outer);
  EXPECT_EQ(client.right, outer.right - outer.left - GetSystemMetrics(SM_CXVSCROLL));
  EXPECT_EQ(client.bottom, outer.bottom - outer.top - GetSystemMetrics(SM_CYHSCROLL));
  for (LONG bar : {LONG(OBJID_HSCROLL), LONG(OBJID_VSCROLL)}) {
    SCROLLBARINFO info{sizeof info};
    ASSERT_TRUE(GetScrollBarInfo(window, bar, &info)) << bar;
    EXPECT_EQ(info.rgstate[0] & (STATE_SYSTEM_INVISIBLE | STATE_SYSTEM_OFFSCREEN), 0u) << bar;
    EXPECT_FALSE(IsRectEmpty(&info.rcScrollBar)) << bar;
  }
  EXPECT_EQ(Page(SB_HORZ), client.right + 1) << "laid out for the client left beside the bar";
}

TEST_F(WindowLayoutTest, AResizeLaysTheGraphOutForTheSizeItReports) {
  ShowWindow(frame, SW_SHOW);  // a hidden window has nothing to repaint
  EnableBars();
  RECT client = Client();
  int verticalPage = Page(SB_VERT);
  ValidateRect(window, nullptr);
  EXPECT_EQ(SendMessageW(window, WM_SIZE, SIZE_RESTORED, MAKELPARAM(250, 120)), 0);
  EXPECT_EQ(Page(SB_HORZ), 251);
  EXPECT_EQ(Page(SB_VERT), verticalPage - (client.bottom - 120));
  EXPECT_TRUE(GetUpdateRect(window, nullptr, FALSE)) << "and repainted";

  // A real resize reports the client it leaves.
  SetWindowPos(host, nullptr, 0, 0, 300, 200, SWP_NOMOVE | SWP_NOZORDER);
  client = Client();
  EXPECT_EQ(Page(SB_HORZ), client.right + 1);
  EXPECT_EQ(client.right, 300 - GetSystemMetrics(SM_CXVSCROLL));
}

// Values of a live trend arriving, margins set to what they were: nothing
// the bars show changes, and the bars are left alone. A zoom changes them.
TEST_F(WindowLayoutTest, ABarIsSetOnlyWhenWhatItShowsChanges) {
  ShowWindow(frame, SW_SHOW);
  EnableBars();
  AddRealAxes();
  AddPlot(10);
  Var xs = Var::Array({0.0, 5.0, 10.0}), ys = Var::Array({1.0, 9.0, 4.0}), status = Var::Array({0, 0, 0});
  ASSERT_EQ(graph->SetDatasetValues(10, xs.v, ys.v, status.v, Var::Missing().v), S_OK);
  Var margins;
  ASSERT_EQ(graph->get_Margins(&margins.v), S_OK);
  int horizontalRange = Range(SB_HORZ), verticalRange = Range(SB_VERT);

  ImportHook hook(GetModuleHandleW(L"ZELGraph.dll"), "user32.dll", "SetScrollInfo",
                  reinterpret_cast<void*>(CountedSetScrollInfo));
  ASSERT_TRUE(hook.found());
  setScrollInfo = hook.original();
  scrollBarsSet = 0;
  for (int i = 0; i < 3; ++i) ASSERT_EQ(graph->SetDatasetValues(10, xs.v, ys.v, status.v, Var::Missing().v), S_OK);
  ASSERT_EQ(graph->put_Margins(margins.v), S_OK);
  EXPECT_EQ(scrollBarsSet, 0);

  ASSERT_EQ(graph->put_ZoomRect(Var::Array({0.0, 0.5, 0.0, 0.25}).v), S_OK);
  EXPECT_EQ(scrollBarsSet, 2);
  EXPECT_GT(Range(SB_HORZ), horizontalRange);
  EXPECT_GT(Range(SB_VERT), verticalRange);
}

}  // namespace
}  // namespace zel::testing

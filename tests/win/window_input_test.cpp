// The control's window receiving real messages inside ATL's container:
// drags and clicks become events for a connected sink, keys the control does
// not use reach the parent, scroll requests move the view, and a host may
// change the graph from inside an event handler.
#include "hosted_control.h"
#include "modal_watch.h"

namespace zel::testing {
namespace {

constexpr DISPID kAreaSelected = 2, kHairlineMoved = 3, kGraphAreaMoved = 4, kSelectLegendFromGraph = 6;

// Keys that reach the container's window.
std::vector<WPARAM> parentKeys;
WNDPROC containerProcedure = nullptr;

LRESULT CALLBACK RecordKeys(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
  if (message == WM_KEYDOWN) parentKeys.push_back(wParam);
  return CallWindowProcW(containerProcedure, window, message, wParam, lParam);
}

class WindowInputTest : public HostedControlTest {
 protected:
  void SetUp() override {
    HostedControlTest::SetUp();
    containerProcedure = reinterpret_cast<WNDPROC>(
        SetWindowLongPtrW(GetParent(window), GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(RecordKeys)));
    parentKeys.clear();
    AddRealAxes();
    AddPlot(1);
  }

  void Send(UINT message, int x, int y) { SendMessageW(window, message, 0, MAKELPARAM(x, y)); }
  void SetMouseMode(const wchar_t* mode) {
    Var text(mode);
    ASSERT_EQ(graph->put_MouseMode(V_BSTR(&text.v)), S_OK);
  }
  void SetLegend(const wchar_t* position) {
    Var text(position);
    graph->put_LegendEnabled(1);
    ASSERT_EQ(graph->put_LegendPosition(V_BSTR(&text.v)), S_OK);
  }
  void Drag(int x0, int y0, int x1, int y1) {
    Send(WM_LBUTTONDOWN, x0, y0);
    Send(WM_MOUSEMOVE, x1, y1);
    Send(WM_LBUTTONUP, x1, y1);
  }
};

TEST_F(WindowInputTest, ABandFiresAreaSelectedAndAClickSelectsFromTheGraph) {
  Drag(150, 100, 250, 200);
  auto areas = EventsOf(kAreaSelected);
  ASSERT_EQ(areas.size(), 1u);
  ASSERT_EQ(areas[0].size(), 5u);
  for (size_t i = 1; i < 5; ++i) EXPECT_EQ(V_VT(&areas[0][i].v), VT_R4);
  float left = V_R4(&areas[0][1].v), right = V_R4(&areas[0][2].v);
  float bottom = V_R4(&areas[0][3].v), top = V_R4(&areas[0][4].v);
  EXPECT_LT(0.f, left);
  EXPECT_LT(left, right);
  EXPECT_LT(right, 1.f);
  EXPECT_LT(0.f, bottom);
  EXPECT_LT(bottom, top);
  EXPECT_LT(top, 1.f);
  EXPECT_NEAR(right - left, 100.f / 318, 0.05);

  sink.calls.clear();
  Drag(200, 150, 200, 150);  // a click that never moves
  auto clicks = EventsOf(kSelectLegendFromGraph);
  ASSERT_EQ(clicks.size(), 1u);
  EXPECT_EQ(V_VT(&clicks[0][1].v), VT_INT);
  EXPECT_EQ(V_VT(&clicks[0][3].v), VT_UI4);
  EXPECT_EQ(V_I4(&clicks[0][4].v), 0);
  EXPECT_TRUE(EventsOf(kAreaSelected).empty());
}

TEST_F(WindowInputTest, KeysTheControlDoesNotUseReachTheParent) {
  SendMessageW(window, WM_KEYDOWN, 'A', 0);
  SendMessageW(window, WM_KEYDOWN, VK_ESCAPE, 0);  // no drag to cancel
  EXPECT_EQ(parentKeys, (std::vector<WPARAM>{'A', VK_ESCAPE}));
  // Esc during a band is the control's: the release then selects nothing.
  Send(WM_LBUTTONDOWN, 150, 100);
  Send(WM_MOUSEMOVE, 250, 200);
  SendMessageW(window, WM_KEYDOWN, VK_ESCAPE, 0);
  Send(WM_LBUTTONUP, 250, 200);
  EXPECT_EQ(parentKeys.size(), 2u);
  EXPECT_TRUE(sink.calls.empty());
  EXPECT_EQ(GetCapture(), nullptr);

  // With a hairline the arrows snap it and report it moved.
  LONG id = -1;
  ASSERT_EQ(graph->AddHairline(50, Var::Missing().v, Var::Missing().v, &id), S_OK);
  SendMessageW(window, WM_KEYDOWN, VK_RIGHT, 0);
  auto moved = EventsOf(kHairlineMoved);
  ASSERT_EQ(moved.size(), 1u);
  EXPECT_EQ(V_I4(&moved[0][1].v), id);
  EXPECT_EQ(parentKeys.size(), 2u);
}

TEST_F(WindowInputTest, AHostMayChangeTheGraphFromInsideAnEvent) {
  sink.onEvent = [&](DISPID id) {
    if (id != kAreaSelected) return;
    sink.onEvent = nullptr;
    EXPECT_EQ(graph->RemoveDataset(1), S_OK);
    float zoom[] = {0.25f, 0.75f, 0.25f, 0.75f};
    std::vector<Var> items(zoom, zoom + 4);
    EXPECT_EQ(graph->put_ZoomRect(Var::Array(items).v), S_OK);
  };
  Drag(150, 100, 250, 200);
  EXPECT_EQ(EventsOf(kAreaSelected).size(), 1u);
  UpdateWindow(window);
  Drag(120, 120, 300, 250);  // the zoomed graph still takes input
  EXPECT_EQ(EventsOf(kAreaSelected).size(), 2u);
}

TEST_F(WindowInputTest, ScrollRequestsAndPanningMoveTheZoomedView) {
  float zoom[] = {0.f, 0.5f, 0.f, 1.f};
  std::vector<Var> items(zoom, zoom + 4);
  ASSERT_EQ(graph->put_ZoomRect(Var::Array(items).v), S_OK);
  auto leftAndRight = [&] {
    Var rect;
    EXPECT_EQ(graph->get_ZoomRect(&rect.v), S_OK);
    float* values = nullptr;
    SafeArrayAccessData(V_ARRAY(&rect.v), reinterpret_cast<void**>(&values));
    std::pair<float, float> seen(values[0], values[1]);
    SafeArrayUnaccessData(V_ARRAY(&rect.v));
    return seen;
  };
  SendMessageW(window, WM_HSCROLL, SB_PAGERIGHT, 0);
  auto [left, right] = leftAndRight();
  EXPECT_GT(left, 0.4f);
  EXPECT_NEAR(right - left, 0.5f, 0.01f);

  // Dragging the view right by 30 pixels brings earlier values in.
  SetMouseMode(L"PAN");
  Drag(150, 150, 180, 150);
  auto [panned, pannedRight] = leftAndRight();
  EXPECT_NEAR(left - panned, 30.f / 636, 0.01f);
  EXPECT_NEAR(pannedRight - panned, 0.5f, 0.01f);
  EXPECT_TRUE(EventsOf(kSelectLegendFromGraph).empty()) << "a pan that moved is no click";
}

TEST_F(WindowInputTest, TheCursorSuitsThePlaceOverTheClientAreaOnly) {
  HCURSOR arrow = LoadCursor(nullptr, IDC_ARROW), hand = LoadCursor(nullptr, IDC_HAND);
  HCURSOR sizeWE = LoadCursor(nullptr, IDC_SIZEWE), sizeNS = LoadCursor(nullptr, IDC_SIZENS);
  // WM_SETCURSOR as the system sends it, with the cursor really at the point.
  auto cursorAt = [&](int x, int y, WORD hit = HTCLIENT) {
    POINT p{x, y};
    ClientToScreen(window, &p);
    SetCursorPos(p.x, p.y);
    SetCursor(nullptr);
    LRESULT handled = SendMessageW(window, WM_SETCURSOR, WPARAM(window), MAKELPARAM(hit, WM_MOUSEMOVE));
    return std::pair(handled, GetCursor());
  };
  EXPECT_EQ(cursorAt(200, 150), std::pair(LRESULT(TRUE), arrow));
  SetMouseMode(L"PAN");
  EXPECT_EQ(cursorAt(200, 150).second, hand);
  EXPECT_EQ(cursorAt(3, 150).second, arrow) << "beside the plot";
  EXPECT_NE(cursorAt(200, 150, HTVSCROLL).second, hand);

  // "Show Hairline Here" puts the hairline under the last mouse move; the
  // operator then drags it on.
  LONG id = -1;
  ASSERT_EQ(graph->AddHairline(10, Var::Missing().v, Var(3).v, &id), S_OK);
  Send(WM_MOUSEMOVE, 200, 150);
  SendMessageW(window, WM_COMMAND, 316, 0);
  EXPECT_EQ(cursorAt(200, 150).second, sizeWE);
  float before = 0, after = 0;
  graph->GetHairlinePosition(id, &before);
  Drag(200, 150, 260, 150);
  graph->GetHairlinePosition(id, &after);
  EXPECT_GT(after, before + 10);
  auto moved = EventsOf(kHairlineMoved);
  ASSERT_EQ(moved.size(), 2u);
  EXPECT_EQ(V_VT(&moved[1][1].v), VT_I4);
  EXPECT_EQ(V_I4(&moved[1][1].v), id);
  EXPECT_EQ(cursorAt(260, 150).second, sizeWE);

  Send(WM_LBUTTONDOWN, 100, 150);  // no cursor is chosen while a drag lasts
  EXPECT_EQ(cursorAt(100, 150), std::pair(LRESULT(TRUE), HCURSOR(nullptr)));
  Send(WM_LBUTTONUP, 100, 150);

  SetLegend(L"RIGHT");
  RECT c;
  GetClientRect(window, &c);
  EXPECT_EQ(cursorAt(c.right - 2, 150).second, sizeWE);
  SetLegend(L"BOTTOM");
  EXPECT_EQ(cursorAt(150, c.bottom - 2).second, sizeNS);
}

TEST_F(WindowInputTest, APanShowsTheGrabWhileHeldAndTheHostHearsOfAClickInsideIt) {
  SetMouseMode(L"PAN");
  HCURSOR grab = LoadCursorW(GetModuleHandleW(L"ZELGraph.dll"), MAKEINTRESOURCEW(195));
  ASSERT_TRUE(grab);
  HCURSOR cursorSeen = nullptr;
  HWND captureSeen = nullptr;
  sink.onEvent = [&](DISPID) {
    cursorSeen = GetCursor();
    captureSeen = GetCapture();
  };
  Send(WM_LBUTTONDOWN, 200, 150);
  EXPECT_EQ(GetCursor(), grab);
  EXPECT_EQ(GetCapture(), window);
  Send(WM_LBUTTONUP, 200, 150);
  auto clicks = EventsOf(kSelectLegendFromGraph);
  ASSERT_EQ(clicks.size(), 1u);
  HDC dc = GetDC(window);
  COLORREF pixel = GetPixel(dc, 200, 150);
  ReleaseDC(window, dc);
  EXPECT_EQ(V_INT(&clicks[0][1].v), 200);
  EXPECT_EQ(V_INT(&clicks[0][2].v), 150);
  EXPECT_EQ(V_UI4(&clicks[0][3].v), pixel);
  EXPECT_EQ(V_VT(&clicks[0][4].v), VT_I4);
  EXPECT_EQ(V_I4(&clicks[0][4].v), 0);
  EXPECT_EQ(cursorSeen, grab);
  EXPECT_EQ(captureSeen, window);
  EXPECT_EQ(GetCursor(), LoadCursor(nullptr, IDC_HAND));
  EXPECT_EQ(GetCapture(), nullptr);
}

// Real mouse input, routed by the system to the window under the cursor:
// placing the cursor sends WM_SETCURSOR and WM_MOUSEMOVE.
void Pump() {
  MSG msg;
  while (PeekMessageW(&msg, nullptr, 0, 0, PM_REMOVE)) DispatchMessageW(&msg);
}
void Press(DWORD button) {
  INPUT input{};
  input.type = INPUT_MOUSE;
  input.mi.dwFlags = button;
  SendInput(1, &input, sizeof input);
  Pump();
}

void MouseTo(HWND window, int x, int y) {
  POINT p{x, y};
  ClientToScreen(window, &p);
  SetCursorPos(p.x, p.y);
  Pump();
}

// The left button's presses and releases as the control's window gets them.
std::vector<UINT> buttonsSeen;
WNDPROC controlProcedure = nullptr;

LRESULT CALLBACK RecordButtons(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
  if (message == WM_LBUTTONDOWN || message == WM_LBUTTONDBLCLK || message == WM_LBUTTONUP)
    buttonsSeen.push_back(message);
  return CallWindowProcW(controlProcedure, window, message, wParam, lParam);
}

// The window class asks for double clicks, so the system turns a quick
// second press into WM_LBUTTONDBLCLK: a band begun with it is an ordinary band.
TEST_F(WindowInputTest, TheSecondPressOfADoubleClickBandsLikeAFirstPress) {
  ShowWindow(frame, SW_SHOW);
  buttonsSeen.clear();
  controlProcedure = reinterpret_cast<WNDPROC>(
      SetWindowLongPtrW(window, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(RecordButtons)));
  MouseTo(window, 150, 100);
  Press(MOUSEEVENTF_LEFTDOWN);
  Press(MOUSEEVENTF_LEFTUP);
  Press(MOUSEEVENTF_LEFTDOWN);
  EXPECT_EQ(GetCapture(), window);
  MouseTo(window, 250, 200);
  Press(MOUSEEVENTF_LEFTUP);
  SetWindowLongPtrW(window, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(controlProcedure));
  ASSERT_EQ(buttonsSeen, (std::vector<UINT>{WM_LBUTTONDOWN, WM_LBUTTONUP, WM_LBUTTONDBLCLK, WM_LBUTTONUP}));
  EXPECT_EQ(GetCapture(), nullptr);
  EXPECT_EQ(EventsOf(kSelectLegendFromGraph).size(), 1u) << "the first press and release are a click";
  auto doubled = EventsOf(kAreaSelected);
  ASSERT_EQ(doubled.size(), 1u);

  sink.calls.clear();
  Drag(150, 100, 250, 200);
  auto single = EventsOf(kAreaSelected);
  ASSERT_EQ(single.size(), 1u);
  for (size_t i = 1; i < 5; ++i) EXPECT_EQ(V_R4(&doubled[0][i].v), V_R4(&single[0][i].v)) << i;
}

TEST_F(WindowInputTest, AHairlineIsGrabbedAgainByTheSecondPressOfADoubleClick) {
  LONG id = -1;
  ASSERT_EQ(graph->AddHairline(10, Var::Missing().v, Var(3).v, &id), S_OK);
  Send(WM_MOUSEMOVE, 200, 150);
  SendMessageW(window, WM_COMMAND, 316, 0);  // the hairline now stands at x 200
  Send(WM_LBUTTONDOWN, 200, 150);
  Send(WM_LBUTTONUP, 200, 150);
  float before = 0, after = 0;
  graph->GetHairlinePosition(id, &before);
  sink.calls.clear();
  Send(WM_LBUTTONDBLCLK, 200, 150);
  EXPECT_EQ(GetCapture(), window);
  Send(WM_MOUSEMOVE, 260, 150);
  Send(WM_LBUTTONUP, 260, 150);
  EXPECT_EQ(GetCapture(), nullptr);
  graph->GetHairlinePosition(id, &after);
  EXPECT_GT(after, before + 10);
  auto moved = EventsOf(kHairlineMoved);
  ASSERT_EQ(moved.size(), 1u);
  EXPECT_EQ(V_I4(&moved[0][1].v), id);
}

TEST_F(WindowInputTest, TheHostResizesItsGraphAreaByDraggingTheBorder) {
  // The container sits at (30, 20) in the shown form, so the form's client
  // coordinates differ from the control's.
  SetWindowPos(host, nullptr, 30, 20, 0, 0, SWP_NOSIZE | SWP_NOZORDER);
  ShowWindow(frame, SW_SHOW);
  SetLegend(L"RIGHT");
  auto mouseTo = [&](int x, int y) { MouseTo(window, x, y); };
  // The host keeps the client's right edge, left of the control's vertical
  // scroll bar, 2 pixels right of the mouse.
  int bar = GetSystemMetrics(SM_CXVSCROLL);
  sink.onEvent = [&](DISPID id) {
    if (id != kGraphAreaMoved) return;
    EXPECT_EQ(GetCapture(), window);
    int right = int(V_R4(&sink.calls.back()[1].v));
    SetWindowPos(host, nullptr, 0, 0, right - 30 + 2 + bar, 300, SWP_NOMOVE | SWP_NOZORDER);
  };
  RECT c;
  GetClientRect(window, &c);
  int x = c.right - 2;
  mouseTo(x, 100);
  EXPECT_EQ(GetCursor(), LoadCursor(nullptr, IDC_SIZEWE));
  Press(MOUSEEVENTF_LEFTDOWN);
  EXPECT_EQ(GetCapture(), window);
  mouseTo(x - 1, 140);  // under 2 pixels along x
  EXPECT_TRUE(EventsOf(kGraphAreaMoved).empty());
  mouseTo(x - 40, 140);
  auto moved = EventsOf(kGraphAreaMoved);
  mouseTo(x - 41, 140);
  Press(MOUSEEVENTF_LEFTUP);
  ASSERT_EQ(moved.size(), 1u);
  ASSERT_EQ(moved[0].size(), 3u);
  EXPECT_EQ(V_VT(&moved[0][1].v), VT_R4);
  EXPECT_EQ(V_VT(&moved[0][2].v), VT_R4);
  EXPECT_EQ(V_R4(&moved[0][1].v), float(x - 40 + 30));
  EXPECT_EQ(V_R4(&moved[0][2].v), float(140 + 20));
  GetClientRect(window, &c);
  EXPECT_EQ(c.right, x - 40 + 2) << "the control follows its container";
  EXPECT_EQ(EventsOf(kGraphAreaMoved).size(), 1u);
  EXPECT_EQ(GetCursor(), LoadCursor(nullptr, IDC_SIZEWE));
  EXPECT_EQ(GetCapture(), nullptr);
  mouseTo(10, 10);
  EXPECT_EQ(EventsOf(kGraphAreaMoved).size(), 1u) << "the drag is over";
}

TEST_F(WindowInputTest, TheContextMenuOffersWhatSuitsThePlace) {
  auto openAt = [&](int x, int y) { return ContextMenuAt(window, x, y); };
  // Outside the plot (on the axis labels): only the axes, and no hairline to show.
  EXPECT_EQ(openAt(5, 280), (std::vector<MenuItemSeen>{{426, L"Axes Properties...", false},
                                                       {0, L"", false},
                                                       {316, L"Show &Hairline Here", true}}));
  EXPECT_TRUE(EventsOf(kSelectLegendFromGraph).empty());

  // Inside it the host hears of the click first, and may say it hit a curve.
  LONG id = -1;
  graph->AddHairline(50, Var::Missing().v, Var::Missing().v, &id);
  EXPECT_EQ(openAt(200, 150), (std::vector<MenuItemSeen>{{244, L"Graph &Settings...", false},
                                                         {0, L"", false},
                                                         {316, L"Show &Hairline Here", false}}));
  auto clicks = EventsOf(kSelectLegendFromGraph);
  ASSERT_EQ(clicks.size(), 1u);
  EXPECT_EQ(V_I4(&clicks[0][4].v), 1);
  sink.onEvent = [&](DISPID) { graph->SetLoadCurveSetttingInfo(7); };
  EXPECT_EQ(openAt(200, 150), (std::vector<MenuItemSeen>{{427, L"Curve Properties...", false},
                                                         {0, L"", false},
                                                         {316, L"Show &Hairline Here", false}}));
}

// Each frame's tab count is noted when it opens, then it is cancelled.
TEST_F(WindowInputTest, PropertyFramesOpenWithTheirPagesAndClose) {
  for (auto [command, tabs] : {std::pair(244, 3), std::pair(426, 1), std::pair(427, 1)}) {
    int frameTabs = -1;
    WhenDialogOpens([&](HWND frame) {
      HWND tabControl = FindWindowExW(frame, nullptr, L"SysTabControl32", nullptr);
      if (tabControl) frameTabs = int(SendMessageW(tabControl, 0x1304 /* TCM_GETITEMCOUNT */, 0, 0));
      PostMessageW(frame, WM_COMMAND, IDCANCEL, 0);
    });
    SendMessageW(window, WM_COMMAND, WPARAM(command), 0);
    EXPECT_EQ(frameTabs, tabs) << command;
  }
  LONG id = 0, fromLegend = 1;
  graph->GetCurveInfofromLegend(&id, &fromLegend);
  EXPECT_EQ(fromLegend, 0) << "the curve page's frame ends the curve choice";
}

}  // namespace
}  // namespace zel::testing

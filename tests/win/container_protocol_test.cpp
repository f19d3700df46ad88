// The control in a container written as containers are (test_container.h):
// UI activation, keys inside a dialog, quick activation, the ambient
// UserMode of designers, and the view notices that refresh cached pictures.
#include "test_container.h"

namespace zel::testing {
namespace {

constexpr DISPID kAreaSelected = 2, kHairlineMoved = 3;

template <typename I>
I* As(IUnknown* object, REFIID iid) {
  I* found = nullptr;
  object->QueryInterface(iid, reinterpret_cast<void**>(&found));
  return found;
}

class ContainerProtocolTest : public ::testing::Test {
 protected:
  static void SetUpTestSuite() { OleInitialize(nullptr); }
  static void TearDownTestSuite() { OleUninitialize(); }

  void SetUp() override {
    frame = CreateWindowExW(WS_EX_CONTROLPARENT, L"STATIC", L"dialog", WS_OVERLAPPEDWINDOW, 0, 0, 640, 480,
                            nullptr, nullptr, nullptr, nullptr);
    button = CreateWindowExW(0, L"BUTTON", L"OK", WS_CHILD | WS_VISIBLE | WS_TABSTOP, 500, 400, 60, 20, frame,
                             nullptr, nullptr, nullptr);
    container.window = frame;
    ASSERT_EQ(CoCreateInstance(CLSID_VX_Graph, nullptr, CLSCTX_INPROC_SERVER, IID_IVX_Graph,
                               reinterpret_cast<void**>(&graph)), S_OK);
    object = As<IOleObject>(graph, IID_IOleObject);
    view = As<IViewObject>(graph, IID_IViewObject);
  }
  void TearDown() override {
    if (object) object->Close(OLECLOSE_NOSAVE), object->SetClientSite(nullptr), object->Release();
    if (view) view->Release();
    if (graph) graph->Release();
    DestroyWindow(frame);
  }

  // Sited, then activated as a form activates its controls.
  void Activate(LONG verb = OLEIVERB_UIACTIVATE) {
    ASSERT_EQ(object->SetClientSite(&container), S_OK);
    RECT place{0, 0, 400, 300};
    ASSERT_EQ(object->DoVerb(verb, nullptr, &container, 0, frame, &place), S_OK);
    IOleWindow* oleWindow = As<IOleWindow>(graph, IID_IOleWindow);
    oleWindow->GetWindow(&window);
    oleWindow->Release();
    ASSERT_TRUE(IsWindow(window));
  }

  void ConnectEvents() {
    IConnectionPointContainer* points = As<IConnectionPointContainer>(graph, IID_IConnectionPointContainer);
    IConnectionPoint* point = nullptr;
    points->FindConnectionPoint(DIID__IVX_GraphEvents, &point);
    points->Release();
    ASSERT_EQ(point->Advise(&sink, &sink.cookie), S_OK);
    point->Release();
  }

  // A curve and a hairline, so that Left and Right snap the hairline.
  void AddHairline() {
    Var real(L"REAL"), plot(L"PLOT");
    graph->AddXAxis(1, V_BSTR(&real.v), Var().v, 0, Var::Missing().v, Var::Missing().v);
    graph->AddYAxis(1, V_BSTR(&real.v), Var().v, 0, Var::Missing().v, Var::Missing().v);
    graph->AddDataset(1, V_BSTR(&plot.v), 1, 1, Var().v);
    LONG id = -1;
    ASSERT_EQ(graph->AddHairline(50, Var::Missing().v, Var::Missing().v, &id), S_OK);
  }

  size_t Heard(DISPID id) const {
    size_t n = 0;
    for (const auto& call : sink.calls) n += V_I4(&call[0].v) == id;
    return n;
  }

  // One key through a dialog's navigation; whether it was the dialog's.
  bool ThroughDialog(WPARAM key) {
    MSG message{GetFocus(), WM_KEYDOWN, key, 0, 0, {}};
    return IsDialogMessageW(frame, &message);
  }

  HWND frame = nullptr, button = nullptr, window = nullptr;
  TestContainer container;
  IVX_Graph* graph = nullptr;
  IOleObject* object = nullptr;
  IViewObject* view = nullptr;
  Sink sink;
};

TEST_F(ContainerProtocolTest, UIActivationMakesTheControlTheFramesActiveObject) {
  Activate();
  IOleInPlaceActiveObject* active = As<IOleInPlaceActiveObject>(graph, IID_IOleInPlaceActiveObject);
  EXPECT_EQ(container.activeObject, active);
  IOleInPlaceObject* inPlace = As<IOleInPlaceObject>(graph, IID_IOleInPlaceObject);
  EXPECT_EQ(inPlace->UIDeactivate(), S_OK);
  EXPECT_EQ(container.activeObject, nullptr);
  inPlace->Release();
  active->Release();

  IOleControl* control = As<IOleControl>(graph, IID_IOleControl);
  CONTROLINFO info{sizeof info, reinterpret_cast<HACCEL>(1), 5, 7};
  EXPECT_EQ(control->GetControlInfo(&info), S_OK);
  EXPECT_EQ(std::tuple(info.hAccel, info.cAccel, info.dwFlags), std::tuple(HACCEL(nullptr), USHORT(0), DWORD(0)));
  control->Release();
}

// Left and Right snap the hairline whether the container's loop asks the
// active object first or a dialog's navigation sees the key; Esc is the
// control's only during a drag, and Tab always leaves.
TEST_F(ContainerProtocolTest, HairlineKeysWorkInsideADialogAndTabLeaves) {
  Activate();
  ConnectEvents();
  AddHairline();
  SetFocus(window);
  ASSERT_EQ(GetFocus(), window);
  EXPECT_TRUE(ThroughDialog(VK_RIGHT));
  EXPECT_TRUE(ThroughDialog(VK_LEFT));
  EXPECT_EQ(Heard(kHairlineMoved), 2u);
  EXPECT_EQ(GetFocus(), window) << "the arrows did not move the focus";

  MSG key{window, WM_KEYDOWN, VK_RIGHT, 0, 0, {}};
  EXPECT_EQ(container.activeObject->TranslateAccelerator(&key), S_OK);
  EXPECT_EQ(Heard(kHairlineMoved), 3u);
  key.wParam = VK_ESCAPE;
  EXPECT_EQ(container.activeObject->TranslateAccelerator(&key), S_FALSE) << "no drag to cancel";
  key.wParam = VK_TAB;
  EXPECT_EQ(container.activeObject->TranslateAccelerator(&key), S_FALSE);

  // Esc during a rubber band cancels it: the release selects nothing.
  SendMessageW(window, WM_LBUTTONDOWN, 0, MAKELPARAM(150, 100));
  SendMessageW(window, WM_MOUSEMOVE, 0, MAKELPARAM(250, 200));
  key.wParam = VK_ESCAPE;
  EXPECT_EQ(SendMessageW(window, WM_GETDLGCODE, VK_ESCAPE, LPARAM(&key)), DLGC_WANTMESSAGE);
  EXPECT_TRUE(ThroughDialog(VK_ESCAPE));
  SendMessageW(window, WM_LBUTTONUP, 0, MAKELPARAM(250, 200));
  EXPECT_EQ(Heard(kAreaSelected), 0u);
  EXPECT_EQ(SendMessageW(window, WM_GETDLGCODE, VK_ESCAPE, LPARAM(&key)), 0) << "idle again";

  EXPECT_TRUE(ThroughDialog(VK_TAB));
  EXPECT_EQ(GetFocus(), button);
}

// A designer (UserMode false) may click and drag the control to select and
// move it: the control takes no mouse action until the container says the
// mode changed.
TEST_F(ContainerProtocolTest, InADesignerTheMouseBelongsToTheDesigner) {
  container.userMode = false;
  Activate(OLEIVERB_INPLACEACTIVATE);
  ConnectEvents();
  auto band = [&] {
    SendMessageW(window, WM_LBUTTONDOWN, 0, MAKELPARAM(150, 100));
    SendMessageW(window, WM_MOUSEMOVE, 0, MAKELPARAM(250, 200));
    SendMessageW(window, WM_LBUTTONUP, 0, MAKELPARAM(250, 200));
  };
  band();
  EXPECT_EQ(Heard(kAreaSelected), 0u);
  EXPECT_EQ(GetCapture(), nullptr);

  container.userMode = true;
  IOleControl* control = As<IOleControl>(graph, IID_IOleControl);
  EXPECT_EQ(control->OnAmbientPropertyChange(DISPID_AMBIENT_USERMODE), S_OK);
  control->Release();
  band();
  EXPECT_EQ(Heard(kAreaSelected), 1u);
}

TEST_F(ContainerProtocolTest, QuickActivationSitesAndConnectsInOneCall) {
  IQuickActivate* quick = As<IQuickActivate>(graph, IID_IQuickActivate);
  ASSERT_NE(quick, nullptr);
  QACONTAINER qa{sizeof qa};
  qa.pClientSite = &container;
  qa.pUnkEventSink = &sink;
  qa.dwAmbientFlags = QACONTAINER_USERMODE;
  QACONTROL result{sizeof result};
  EXPECT_EQ(quick->QuickActivate(&qa, &result), S_OK);
  EXPECT_EQ(result.dwMiscStatus, 131473u);
  EXPECT_NE(result.dwEventCookie, 0u);
  IOleClientSite* site = nullptr;
  object->GetClientSite(&site);
  EXPECT_EQ(site, static_cast<IOleClientSite*>(&container));
  if (site) site->Release();
  SIZEL extent{1000, 500}, read{};
  EXPECT_EQ(quick->SetContentExtent(&extent), S_OK);
  EXPECT_EQ(quick->GetContentExtent(&read), S_OK);
  EXPECT_EQ(read.cx, 1000);
  quick->Release();

  Activate();
  AddHairline();
  SendMessageW(window, WM_KEYDOWN, VK_RIGHT, 0);
  EXPECT_EQ(Heard(kHairlineMoved), 1u) << "events reach the sink given at quick activation";
}

// Containers that keep a copy of the picture (Office documents, print
// previews) hear of every change, with a window or without one.
TEST_F(ContainerProtocolTest, EveryChangeOfThePictureIsAnnounced) {
  ASSERT_EQ(view->SetAdvise(DVASPECT_CONTENT, 0, &container), S_OK);
  auto announced = [&](const std::function<void()>& change) {
    int before = container.viewChanges;
    change();
    return container.viewChanges > before;
  };
  Var real(L"REAL"), plot(L"PLOT");
  EXPECT_TRUE(announced([&] { graph->AddXAxis(1, V_BSTR(&real.v), Var().v, 0, Var::Missing().v, Var::Missing().v); }));
  EXPECT_TRUE(announced([&] { graph->put_BackColor(RGB(1, 2, 3)); }));
  Activate();
  EXPECT_TRUE(announced([&] { graph->AddYAxis(1, V_BSTR(&real.v), Var().v, 0, Var::Missing().v, Var::Missing().v); }));
  EXPECT_TRUE(announced([&] { graph->AddDataset(1, V_BSTR(&plot.v), 1, 1, Var().v); }));
  Var xs = Var::Array({Var(1.0), Var(2.0)}), ys = Var::Array({Var(3.0), Var(4.0)});
  Var status = Var::Typed<int32_t>(VT_I4, {0, 0});
  EXPECT_TRUE(announced([&] { graph->SetDatasetValues(1, xs.v, ys.v, status.v, Var::Missing().v); }));
  EXPECT_TRUE(announced([&] { graph->put_SuspendDraw(1), graph->RemoveDataset(1); }));
  EXPECT_FALSE(announced([&] { Var margins; graph->get_Margins(&margins.v); })) << "reading changes nothing";

  // A sink that asked to hear once hears once.
  ASSERT_EQ(view->SetAdvise(DVASPECT_CONTENT, ADVF_ONLYONCE, &container), S_OK);
  int before = container.viewChanges;
  graph->put_BackColor(RGB(4, 5, 6));
  graph->put_BackColor(RGB(7, 8, 9));
  EXPECT_EQ(container.viewChanges, before + 1);
}

}  // namespace
}  // namespace zel::testing

// The settings pages as an operator meets them: the frame opened from the
// context menu or by the properties verb, its graph page driven with the
// messages its fields send, and the graph checked through the automation
// interface afterwards.
#include <olectl.h>

#include <functional>

#include "control/class_ids.h"
#include "hosted_control.h"
#include "page_driver.h"
#include "pages/page_resources.h"

namespace zel::testing {
namespace {

constexpr int kShowLegend = 360, kHorizontalBar = 367, kVerticalBar = 368;

BOOL CALLBACK FindGraphPage(HWND child, LPARAM found) {
  if (!GetDlgItem(child, ZEL_MARGIN_LEFT)) return TRUE;
  *reinterpret_cast<HWND*>(found) = child;
  return FALSE;
}

HWND GraphPageIn(HWND frame) {
  HWND page = nullptr;
  EnumChildWindows(frame, FindGraphPage, LPARAM(&page));
  return page;
}


// The fields of the graph page, driven as the operator's input drives them.
using GraphPage = PageDriver;

// A property browser's sink: the dispids it was told of, in order.
class NotifySink : public IPropertyNotifySink {
 public:
  std::vector<DISPID> changed;
  STDMETHODIMP QueryInterface(REFIID iid, void** object) override {
    bool mine = IsEqualIID(iid, IID_IUnknown) || IsEqualIID(iid, IID_IPropertyNotifySink);
    *object = mine ? this : nullptr;
    return mine ? S_OK : E_NOINTERFACE;
  }
  STDMETHODIMP_(ULONG) AddRef() override { return 2; }
  STDMETHODIMP_(ULONG) Release() override { return 1; }
  STDMETHODIMP OnChanged(DISPID id) override {
    changed.push_back(id);
    return S_OK;
  }
  STDMETHODIMP OnRequestEdit(DISPID) override { return S_OK; }
};

class SettingsPagesTest : public HostedControlTest {
 protected:
  void SetUp() override {
    HostedControlTest::SetUp();
    graph->put_PropertiesModificationAllowed(1);
  }

  // Opens the frame of the context menu's "Graph &Settings..." and runs
  // `drive` on its graph page; `drive` must close the frame.
  void WithGraphPage(std::function<void(const GraphPage&)> drive, bool byVerb = false) {
    bool seen = false;
    WhenDialogOpens([&](HWND frame) {
      HWND page = GraphPageIn(frame);
      seen = page != nullptr;
      if (!page) return void(PostMessageW(frame, WM_COMMAND, IDCANCEL, 0));
      drive(GraphPage{frame, page});
      if (IsWindow(frame)) PostMessageW(frame, WM_COMMAND, IDCANCEL, 0);
    });
    if (byVerb) {
      IOleObject* object = nullptr;
      graph->QueryInterface(IID_IOleObject, reinterpret_cast<void**>(&object));
      EXPECT_EQ(object->DoVerb(OLEIVERB_PROPERTIES, nullptr, nullptr, 0, frame, nullptr), S_OK);
      object->Release();
    } else {
      SendMessageW(window, WM_COMMAND, 244, 0);
    }
    ASSERT_TRUE(seen) << "no graph page in the frame";
  }

  std::vector<LONG> Margins() {
    Var margins;
    EXPECT_EQ(graph->get_Margins(&margins.v), S_OK);
    LONG* data = nullptr;
    SafeArrayAccessData(V_ARRAY(&margins.v), reinterpret_cast<void**>(&data));
    std::vector<LONG> values(data, data + 4);
    SafeArrayUnaccessData(V_ARRAY(&margins.v));
    return values;
  }
  std::wstring Keyword(HRESULT (STDMETHODCALLTYPE IVX_Graph::*get)(BSTR*)) {
    BSTR text = nullptr;
    EXPECT_EQ((graph->*get)(&text), S_OK);
    return Take(text);
  }
  LONG Flag(HRESULT (STDMETHODCALLTYPE IVX_Graph::*get)(LONG*)) {
    LONG value = -1;
    EXPECT_EQ((graph->*get)(&value), S_OK);
    return value;
  }
  std::pair<LONG, short> Grid() {
    LONG color = 0;
    short words[3] = {};
    graph->getGridProp(&color, words);
    return {color, words[2]};
  }
  OLE_COLOR BackColor() {
    OLE_COLOR color = 0;
    graph->get_BackColor(&color);
    return color;
  }
  int SnapBound() {
    int bound = -1;
    graph->enableHZGrid(&bound);
    return bound;
  }

  // Everything the graph page shows, as the control reports it.
  std::wstring Snapshot() {
    std::wstring s;
    for (LONG m : Margins()) s += std::to_wstring(m) + L",";
    s += Keyword(&IVX_Graph::get_MouseMode) + L"," + std::to_wstring(Flag(&IVX_Graph::get_LegendEnabled)) + L",";
    s += std::to_wstring(Flag(&IVX_Graph::get_HorizontalScrollbarEnabled)) + L",";
    s += std::to_wstring(Flag(&IVX_Graph::get_VerticalScrollbarEnabled)) + L",";
    auto [gridColor, gridMode] = Grid();
    s += std::to_wstring(gridColor) + L"," + std::to_wstring(gridMode) + L",";
    return s + std::to_wstring(BackColor()) + L"," + std::to_wstring(SnapBound());
  }

  // Changes every field of the page away from the defaults.
  static void ChangeEverything(const GraphPage& p) {
    p.Type(ZEL_MARGIN_LEFT, L"21");
    p.Type(ZEL_MARGIN_RIGHT, L"22");
    p.Type(ZEL_MARGIN_BOTTOM, L" 23 ");
    p.Type(ZEL_MARGIN_TOP, L"0");
    p.Choose(ZEL_MOUSE_MODE, 2);
    p.Click(kShowLegend);
    p.Choose(ZEL_LEGEND_POSITION, 2);
    p.Click(kHorizontalBar);
    p.Click(kVerticalBar);
    p.Choose(ZEL_GRID_LINES, 3);
    p.PickColor(ZEL_GRID_COLOR, RGB(1, 2, 3));
    p.PickColor(ZEL_BACK_COLOR, RGB(200, 100, 50));
    p.Type(ZEL_SNAP_BOUND, L"7");
  }
};

TEST_F(SettingsPagesTest, ThePageShowsTheGraphAndApplyWritesEveryField) {
  WithGraphPage([&](const GraphPage& p) {
    EXPECT_EQ(p.Text(ZEL_MARGIN_LEFT), L"10");
    EXPECT_EQ(p.Selected(ZEL_MOUSE_MODE), 0) << "SELECT";
    EXPECT_EQ(p.Color(ZEL_BACK_COLOR), 0x80000005u) << "the system's window colour, as the control holds it";
    EXPECT_FALSE(p.ApplyEnabled());
    ChangeEverything(p);
    EXPECT_EQ(p.Color(ZEL_GRID_COLOR), RGB(1, 2, 3)) << "the colour dialog's choice";
    EXPECT_TRUE(p.ApplyEnabled());
    EXPECT_EQ(p.PressForMessage(kApplyButton), L"");
    EXPECT_EQ(Margins(), (std::vector<LONG>{21, 22, 23, 0}));
    EXPECT_FALSE(p.ApplyEnabled()) << "nothing left to apply";
    p.Press(IDCANCEL);
  });
  EXPECT_EQ(Keyword(&IVX_Graph::get_MouseMode), L"ZOOM");
  EXPECT_EQ(Flag(&IVX_Graph::get_LegendEnabled), 1);
  EXPECT_EQ(Keyword(&IVX_Graph::get_LegendPosition), L"LEFT");
  EXPECT_EQ(Flag(&IVX_Graph::get_HorizontalScrollbarEnabled), 1);
  EXPECT_EQ(Flag(&IVX_Graph::get_VerticalScrollbarEnabled), 1);
  EXPECT_EQ(Grid(), std::make_pair(LONG(RGB(1, 2, 3)), short(3)));
  EXPECT_EQ(BackColor(), RGB(200, 100, 50));
  EXPECT_EQ(SnapBound(), 7);

  // Opened again, the page shows what the graph now holds, and OK applies.
  WithGraphPage([&](const GraphPage& p) {
    EXPECT_EQ(p.Text(ZEL_MARGIN_BOTTOM), L"23");
    EXPECT_EQ(p.Selected(ZEL_LEGEND_POSITION), 2);
    EXPECT_EQ(p.Selected(ZEL_GRID_LINES), 3);
    p.Choose(ZEL_GRID_LINES, 2);  // Y axis lines only
    p.Click(kShowLegend);
    p.Press(IDOK);
  });
  EXPECT_EQ(Grid().second, 1);
  EXPECT_EQ(Flag(&IVX_Graph::get_LegendEnabled), 0);
}

TEST_F(SettingsPagesTest, CancelLeavesTheGraphAsItWas) {
  std::wstring before = Snapshot();
  WithGraphPage([&](const GraphPage& p) {
    ChangeEverything(p);
    p.Press(IDCANCEL);
  });
  EXPECT_EQ(Snapshot(), before);
}

TEST_F(SettingsPagesTest, ABadNumberIsNamedAndNothingIsWritten) {
  std::wstring before = Snapshot();
  WithGraphPage([&](const GraphPage& p) {
    p.Type(ZEL_MARGIN_RIGHT, L"30");
    p.Choose(ZEL_MOUSE_MODE, 1);
    p.Type(ZEL_MARGIN_LEFT, L"1x");
    EXPECT_EQ(p.PressForMessage(IDOK), L"\"Left\" must be a whole number of pixels from 0 to 1000.");
    EXPECT_TRUE(IsWindowVisible(p.frame)) << "the frame stays open";
    EXPECT_EQ(GetFocus(), GetDlgItem(p.page, ZEL_MARGIN_LEFT));
    p.Type(ZEL_MARGIN_LEFT, L"5");
    p.Type(ZEL_MARGIN_TOP, L"1001");
    EXPECT_EQ(p.PressForMessage(kApplyButton), L"\"Top\" must be a whole number of pixels from 0 to 1000.");
    p.Type(ZEL_MARGIN_TOP, L"-1");
    EXPECT_EQ(p.PressForMessage(kApplyButton), L"\"Top\" must be a whole number of pixels from 0 to 1000.");
    p.Type(ZEL_MARGIN_TOP, L"10");
    p.Type(ZEL_SNAP_BOUND, L"");
    EXPECT_EQ(p.PressForMessage(kApplyButton), L"\"Snap to curves with ids up to\" must be a whole number from 0 to 10000.");
    p.Press(IDCANCEL);
  });
  EXPECT_EQ(Snapshot(), before);
}

TEST_F(SettingsPagesTest, WithoutPermissionThePageShowsButChangesNothing) {
  graph->put_PropertiesModificationAllowed(0);
  std::wstring before = Snapshot();
  WithGraphPage([&](const GraphPage& p) {
    EXPECT_EQ(p.Text(ZEL_MARGIN_TOP), L"10");
    for (int field : {ZEL_MARGIN_LEFT, ZEL_MOUSE_MODE, kShowLegend, ZEL_GRID_COLOR, ZEL_SNAP_BOUND})
      EXPECT_FALSE(IsWindowEnabled(GetDlgItem(p.page, field))) << field;
    p.Type(ZEL_MARGIN_LEFT, L"44");
    p.Choose(ZEL_MOUSE_MODE, 1);
    EXPECT_FALSE(p.ApplyEnabled());
    p.Press(IDOK);
  });
  EXPECT_EQ(Snapshot(), before);
}

TEST_F(SettingsPagesTest, ThePropertiesVerbOpensTheSameFrame) {
  IOleObject* object = nullptr;
  graph->QueryInterface(IID_IOleObject, reinterpret_cast<void**>(&object));
  IEnumOLEVERB* verbs = nullptr;
  ASSERT_EQ(object->EnumVerbs(&verbs), S_OK);
  OLEVERB verb{};
  ULONG fetched = 0;
  EXPECT_EQ(verbs->Next(1, &verb, &fetched), S_OK);
  EXPECT_EQ(verb.lVerb, OLEIVERB_PROPERTIES);
  EXPECT_STREQ(verb.lpszVerbName, L"Graph &Settings...");
  CoTaskMemFree(verb.lpszVerbName);
  EXPECT_EQ(verbs->Next(1, &verb, &fetched), S_FALSE);
  verbs->Release();
  object->Release();

  int tabs = -1;
  WithGraphPage(
      [&](const GraphPage& p) {
        HWND tabControl = FindWindowExW(p.frame, nullptr, L"SysTabControl32", nullptr);
        tabs = int(SendMessageW(tabControl, 0x1304 /* TCM_GETITEMCOUNT */, 0, 0));
        p.Choose(ZEL_MOUSE_MODE, 1);
        p.Press(IDOK);
      },
      true);
  EXPECT_EQ(tabs, 3);
  EXPECT_EQ(Keyword(&IVX_Graph::get_MouseMode), L"PAN");
}

TEST_F(SettingsPagesTest, PropertyBrowsersHearOfChangesFromThePageAndTheHost) {
  IConnectionPointContainer* container = nullptr;
  graph->QueryInterface(IID_IConnectionPointContainer, reinterpret_cast<void**>(&container));
  IEnumConnectionPoints* points = nullptr;
  ASSERT_EQ(container->EnumConnectionPoints(&points), S_OK);
  IConnectionPoint* found[3] = {};
  ULONG count = 0;
  EXPECT_EQ(points->Next(3, found, &count), S_FALSE);
  EXPECT_EQ(count, 2u) << "events and property changes";
  for (ULONG i = 0; i < count; ++i) found[i]->Release();
  points->Release();
  IConnectionPoint* point = nullptr;
  ASSERT_EQ(container->FindConnectionPoint(IID_IPropertyNotifySink, &point), S_OK);
  container->Release();
  NotifySink notify;
  DWORD cookie = 0;
  ASSERT_EQ(point->Advise(&notify, &cookie), S_OK);

  WithGraphPage([&](const GraphPage& p) {
    p.Type(ZEL_MARGIN_TOP, L"12");
    p.Click(kShowLegend);
    p.Press(IDOK);
  });
  EXPECT_EQ(notify.changed, (std::vector<DISPID>{4, 0x19, 0x1A})) << "margins, legend shown, its position";
  notify.changed.clear();
  graph->put_BackColor(RGB(9, 9, 9));
  Var bad = Var::Array({Var(L"x")});
  EXPECT_EQ(graph->put_Margins(bad.v), E_INVALIDARG);
  EXPECT_EQ(notify.changed, (std::vector<DISPID>{DISPID_BACKCOLOR})) << "a refused put changes nothing";
  EXPECT_EQ(point->Unadvise(cookie), S_OK);
  point->Release();
}

// The page outside any frame, as a designer's own frame drives it: through
// the page site and TranslateAccelerator.
class DirtySite : public IPropertyPageSite {
 public:
  std::vector<DWORD> status;
  STDMETHODIMP QueryInterface(REFIID iid, void** object) override {
    bool mine = IsEqualIID(iid, IID_IUnknown) || IsEqualIID(iid, IID_IPropertyPageSite);
    *object = mine ? this : nullptr;
    return mine ? S_OK : E_NOINTERFACE;
  }
  STDMETHODIMP_(ULONG) AddRef() override { return 2; }
  STDMETHODIMP_(ULONG) Release() override { return 1; }
  STDMETHODIMP OnStatusChange(DWORD flags) override {
    status.push_back(flags);
    return S_OK;
  }
  STDMETHODIMP GetLocaleID(LCID* locale) override {
    *locale = LOCALE_USER_DEFAULT;
    return S_OK;
  }
  STDMETHODIMP GetPageContainer(IUnknown**) override { return E_NOTIMPL; }
  STDMETHODIMP TranslateAccelerator(MSG*) override { return S_FALSE; }
};

TEST_F(SettingsPagesTest, APageFollowsTheProtocolOfAnyFrame) {
  IPropertyPage* page = nullptr;
  ASSERT_EQ(CoCreateInstance(kGraphPageClsid, nullptr, CLSCTX_INPROC_SERVER, IID_IPropertyPage,
                             reinterpret_cast<void**>(&page)), S_OK);
  DirtySite site;
  page->SetPageSite(&site);
  IUnknown* objects[] = {graph};
  ASSERT_EQ(page->SetObjects(1, objects), S_OK);
  PROPPAGEINFO info{};
  ASSERT_EQ(page->GetPageInfo(&info), S_OK);
  EXPECT_STREQ(info.pszTitle, L"Graph Settings");
  EXPECT_GT(info.size.cx, 300);
  CoTaskMemFree(info.pszTitle);
  RECT place{0, 0, info.size.cx, info.size.cy};
  ASSERT_EQ(page->Activate(frame, &place, TRUE), S_OK);
  HWND dialog = GraphPageIn(frame);
  ASSERT_TRUE(dialog);
  page->Show(SW_SHOW);
  EXPECT_EQ(page->IsPageDirty(), S_FALSE);

  // Tab moves on to the next field; Alt+M reaches the mouse mode list.
  HWND left = GetDlgItem(dialog, ZEL_MARGIN_LEFT);
  SetFocus(left);
  MSG tab{left, WM_KEYDOWN, VK_TAB, 0};
  EXPECT_EQ(page->TranslateAccelerator(&tab), S_OK);
  EXPECT_EQ(GetFocus(), GetDlgItem(dialog, ZEL_MARGIN_RIGHT));
  MSG alt{GetFocus(), WM_SYSCHAR, 'm', 1 << 29};
  EXPECT_EQ(page->TranslateAccelerator(&alt), S_OK);
  EXPECT_EQ(GetFocus(), GetDlgItem(dialog, ZEL_MOUSE_MODE));

  SetDlgItemTextW(dialog, ZEL_MARGIN_LEFT, L"33");
  SetDlgItemTextW(dialog, ZEL_MARGIN_RIGHT, L"34");
  EXPECT_EQ(site.status, (std::vector<DWORD>{PROPPAGESTATUS_DIRTY})) << "told once, on the first change";
  EXPECT_EQ(page->IsPageDirty(), S_OK);
  EXPECT_EQ(page->Apply(), S_OK);
  EXPECT_EQ(page->IsPageDirty(), S_FALSE);
  EXPECT_EQ(Margins(), (std::vector<LONG>{33, 34, 10, 10}));
  page->Deactivate();
  page->SetObjects(0, nullptr);
  EXPECT_EQ(page->Release(), 0u);
}

}  // namespace
}  // namespace zel::testing

// The curve page as an operator meets it: opened for one curve by the host
// (loadCurveProperty) or from the context menu after a legend pick, driven
// with the messages its fields send, and the curves checked through the
// automation interface afterwards.
#include <functional>

#include "hosted_control.h"
#include "page_driver.h"
#include "pages/page_resources.h"

namespace zel::testing {
namespace {

constexpr int kUseAsGlobal = 348, kAutoWidth = 345;
constexpr int kPromptNote = 301, kPromptSilence = 300;
constexpr int kCurveMenuItem = 427;

BOOL CALLBACK FindCurvePage(HWND child, LPARAM found) {
  if (!GetDlgItem(child, ZEL_CURVE_CHOICE)) return TRUE;
  *reinterpret_cast<HWND*>(found) = child;
  return FALSE;
}


// The text of the note that came up ("" when none did).
struct NoteSeen {
  std::wstring text;
};

struct CurvePage : PageDriver {
  std::wstring SelectedText(int list) const {
    wchar_t text[128] = L"";
    SendDlgItemMessageW(page, list, CB_GETLBTEXT, WPARAM(Selected(list)), LPARAM(text));
    return text;
  }

  // Answers the note that may follow, checking its box when `silence`.
  void ExpectNote(NoteSeen& seen, bool silence) const {
    AnswerNextBoxOf(frame, [&seen, silence](HWND note) {
      seen.text = ItemText(note, kPromptNote);
      if (silence) CheckDlgButton(note, kPromptSilence, BST_CHECKED);
      PostMessageW(note, WM_COMMAND, IDOK, 0);
    }, 25);
  }
  // Picks a colour in the colour dialog; a note that then comes up is
  // answered as `ExpectNote` does.
  NoteSeen PickColor(int swatch, COLORREF color, bool silence = false) const {
    NoteSeen seen;
    AnswerNextBoxOf(frame, [&, swatch, color, silence](HWND dialog) {
      SetDlgItemInt(dialog, 706, GetRValue(color), FALSE);
      SetDlgItemInt(dialog, 707, GetGValue(color), FALSE);
      SetDlgItemInt(dialog, 708, GetBValue(color), FALSE);
      if (swatch == ZEL_LINE_COLOR) ExpectNote(seen, silence);
      SendMessageW(dialog, WM_COMMAND, IDOK, 0);
    }, 25);
    SendDlgItemMessageW(page, swatch, WM_KEYDOWN, VK_SPACE, 0);
    return seen;
  }
  NoteSeen ChooseType(int index, bool silence = false) const {
    NoteSeen seen;
    ExpectNote(seen, silence);
    Choose(ZEL_CURVE_TYPE, index);
    return seen;
  }
};

class CurvePageTest : public HostedControlTest {
 protected:
  void SetUp() override {
    HostedControlTest::SetUp();
    graph->put_PropertiesModificationAllowed(1);
    AddRealAxes();
    for (LONG id : {1, 2, 3}) AddPlot(id);
    Retitle(1, L"Flow");
    Retitle(2, L"Level");
    Retitle(3, L"Temp");
  }

  Var Props(LONG id) {
    Var props;
    EXPECT_EQ(graph->GetDatasetProperties(id, &props.v), S_OK);
    return props;
  }
  static ::DatasetProps& Record(Var& props) { return *static_cast<::DatasetProps*>(V_RECORD(&props.v)); }
  void Retitle(LONG id, const wchar_t* title) {
    Var props = Props(id);
    SysFreeString(Record(props).title);
    Record(props).title = SysAllocString(title);
    ASSERT_EQ(graph->SetDatasetProperties(id, props.v), S_OK);
  }

  // Everything the page shows of a curve, as the control reports it.
  std::wstring Look(LONG id) {
    Var props = Props(id);
    const ::DatasetProps& r = Record(props);
    auto n = [](long v) { return std::to_wstring(v) + L","; };
    return std::wstring(r.type) + L"," + n(r.YaxisID) + r.lineStyle + L"," + n(r.lineWidth) + n(r.lineColor) +
           r.markerShape + L"," + n(r.markerColor) + n(r.fillColor) + r.fillTo + L"," + n(r.fillCurveId) +
           n(r.bUseGlb) + r.title;
  }
  std::wstring Snapshot() { return Look(1) + L"|" + Look(2) + L"|" + Look(3) + L"|" + std::to_wstring(BarWidth()); }
  LONG BarWidth() {
    Var width;
    graph->GetBarWidth(&width.v);
    return V_I4(&width.v);
  }

  // Opens the curve frame, by the host's request for `curve` or from the
  // context menu after a legend pick of it, and runs `drive` on the page.
  void WithCurvePage(LONG curve, bool fromMenu, std::function<void(const CurvePage&)> drive) {
    bool seen = false;
    WhenDialogOpens([&](HWND frame) {
      HWND page = nullptr;
      EnumChildWindows(frame, FindCurvePage, LPARAM(&page));
      seen = page != nullptr;
      if (page) drive(CurvePage{frame, page});
      if (IsWindow(frame)) PostMessageW(frame, WM_COMMAND, IDCANCEL, 0);
    });
    if (fromMenu) {
      graph->SetLoadCurveSetttingInfo(curve);
      SendMessageW(window, WM_COMMAND, kCurveMenuItem, 0);
    } else {
      Var name(L"ignored");
      EXPECT_EQ(graph->loadCurveProperty(V_BSTR(&name.v), curve), S_OK);
    }
    ASSERT_TRUE(seen) << "no curve page in the frame";
    LONG id = 0, fromLegend = 1;
    graph->GetCurveInfofromLegend(&id, &fromLegend);
    EXPECT_EQ(std::make_pair(id, fromLegend), std::make_pair(-1L, 0L)) << "the request is forgotten on closing";
  }
};

TEST_F(CurvePageTest, OpensOnTheNamedCurveAndEveryFieldRoundTrips) {
  std::wstring others = Look(1) + Look(3);
  WithCurvePage(2, false, [&](const CurvePage& p) {
    HWND tabs = FindWindowExW(p.frame, nullptr, L"SysTabControl32", nullptr);
    EXPECT_EQ(SendMessageW(tabs, 0x1304 /* TCM_GETITEMCOUNT */, 0, 0), 1);
    EXPECT_EQ(p.SelectedText(ZEL_CURVE_CHOICE), L"Level");
    EXPECT_EQ(p.SelectedText(ZEL_CURVE_TYPE), L"PLOT");
    EXPECT_EQ(p.SelectedText(ZEL_MARKER_SHAPE), L"NONE");
    EXPECT_EQ(p.Text(ZEL_LINE_WIDTH), L"1");
    EXPECT_EQ(p.Color(ZEL_LINE_COLOR), 0x0000C0u);
    EXPECT_TRUE(p.Checked(kAutoWidth));
    EXPECT_FALSE(IsWindowEnabled(GetDlgItem(p.page, ZEL_BAR_WIDTH)));
    p.Choose(ZEL_CURVE_TYPE, 1);  // AREA
    p.Choose(ZEL_CURVE_Y_AXIS, 1);
    p.Choose(ZEL_LINE_STYLE, 2);
    p.Type(ZEL_LINE_WIDTH, L"3");
    p.Choose(ZEL_MARKER_SHAPE, 3);
    p.PickColor(ZEL_MARKER_COLOR, RGB(1, 2, 3));
    p.PickColor(ZEL_FILL_COLOR, RGB(4, 5, 6));
    ASSERT_EQ(SendDlgItemMessageW(p.page, ZEL_FILL_TO, CB_GETCOUNT, 0, 0), 4) << "two axes and two other curves";
    p.Choose(ZEL_FILL_TO, 3);
    EXPECT_EQ(p.SelectedText(ZEL_FILL_TO), L"Temp");
    p.Click(kUseAsGlobal);
    p.Click(kAutoWidth);
    p.Type(ZEL_BAR_WIDTH, L"40");
    EXPECT_EQ(p.PressForMessage(kApplyButton), L"");
    EXPECT_EQ(p.SelectedText(ZEL_CURVE_CHOICE), L"Level") << "Apply stays on the curve";
    EXPECT_EQ(p.Text(ZEL_LINE_WIDTH), L"3");
    p.Press(IDCANCEL);
  });
  EXPECT_EQ(Look(2), L"AREA,2,DOTTED,3,192,DIAMOND,197121,394500,CURVE,3,1,Level");
  EXPECT_EQ(BarWidth(), 40);
  EXPECT_EQ(Look(1) + Look(3), others) << "the other curves are untouched";

  // Opened again on it, the page shows what the curve now holds; the fill
  // reference back to the X axis and Auto Width go through OK.
  WithCurvePage(2, false, [&](const CurvePage& p) {
    EXPECT_EQ(p.SelectedText(ZEL_CURVE_TYPE), L"AREA");
    EXPECT_EQ(p.Selected(ZEL_CURVE_Y_AXIS), 1);
    EXPECT_EQ(p.SelectedText(ZEL_FILL_TO), L"Temp");
    EXPECT_EQ(p.Text(ZEL_BAR_WIDTH), L"40");
    EXPECT_TRUE(p.Checked(kUseAsGlobal));
    p.Choose(ZEL_FILL_TO, 0);
    p.Click(kAutoWidth);
    p.Press(IDOK);
  });
  EXPECT_EQ(Look(2), L"AREA,2,DOTTED,3,192,DIAMOND,197121,394500,X_AXES,3,1,Level");
  EXPECT_EQ(BarWidth(), -1);
}

TEST_F(CurvePageTest, SwitchingCurvesKeepsTheEditsAndCancelChangesNothing) {
  std::wstring before = Snapshot();
  auto editTwoCurves = [](const CurvePage& p) {
    EXPECT_EQ(p.SelectedText(ZEL_CURVE_CHOICE), L"Temp") << "the curve picked in the legend";
    p.Choose(ZEL_CURVE_CHOICE, 1);
    p.Choose(ZEL_CURVE_CHOICE, 2);
    EXPECT_FALSE(p.ApplyEnabled()) << "looking at another curve changes nothing";
    p.Type(ZEL_LINE_WIDTH, L"4");
    p.Choose(ZEL_CURVE_CHOICE, 0);
    EXPECT_EQ(p.Text(ZEL_LINE_WIDTH), L"1") << "Flow's own width";
    p.Choose(ZEL_LINE_STYLE, 1);
    p.Choose(ZEL_CURVE_CHOICE, 2);
    EXPECT_EQ(p.Text(ZEL_LINE_WIDTH), L"4") << "the edit kept while Flow was shown";
    EXPECT_EQ(p.Selected(ZEL_LINE_STYLE), 0);
  };
  WithCurvePage(3, true, [&](const CurvePage& p) {
    editTwoCurves(p);
    p.Press(IDCANCEL);
  });
  EXPECT_EQ(Snapshot(), before);

  WithCurvePage(3, true, [&](const CurvePage& p) {
    editTwoCurves(p);
    p.Press(IDOK);
  });
  EXPECT_EQ(Look(3), L"PLOT,0,SOLID,4,192,NONE,0,0,X_AXES,0,0,Temp");
  EXPECT_EQ(Look(1), L"PLOT,0,DASHED,1,192,NONE,0,0,X_AXES,0,0,Flow");
  EXPECT_EQ(Look(2), L"PLOT,0,SOLID,1,192,NONE,0,0,X_AXES,0,0,Level");
}

TEST_F(CurvePageTest, BadInputIsNamedAndNothingIsWritten) {
  std::wstring before = Snapshot();
  WithCurvePage(1, false, [&](const CurvePage& p) {
    p.Choose(ZEL_LINE_STYLE, 2);
    p.Click(kAutoWidth);
    for (const wchar_t* width : {L"0", L"101", L"", L"5x"}) {
      p.Type(ZEL_BAR_WIDTH, width);
      EXPECT_EQ(p.PressForMessage(kApplyButton), L"\"Bar width (%)\" must be a whole number from 1 to 100, or Auto Width.")
          << width;
    }
    p.Type(ZEL_BAR_WIDTH, L"100");
    for (const wchar_t* width : {L"0", L"-2", L"2x", L"101"}) {
      p.Type(ZEL_LINE_WIDTH, width);
      EXPECT_EQ(p.PressForMessage(IDOK), L"\"Line width\" must be a whole number of pixels from 1 to 100.") << width;
      EXPECT_EQ(GetFocus(), GetDlgItem(p.page, ZEL_LINE_WIDTH));
    }
    // A bad width left on a curve that is no longer shown still stops Apply.
    p.Choose(ZEL_CURVE_CHOICE, 1);
    EXPECT_EQ(p.PressForMessage(kApplyButton), L"\"Line width\" must be a whole number of pixels from 1 to 100.");
    EXPECT_TRUE(IsWindowVisible(p.frame)) << "the frame stays open";
    p.Press(IDCANCEL);
  });
  EXPECT_EQ(Snapshot(), before);
}

TEST_F(CurvePageTest, NotesComeUntilSilencedForTheLifeOfTheControl) {
  WithCurvePage(1, false, [&](const CurvePage& p) {
    EXPECT_EQ(p.PickColor(ZEL_LINE_COLOR, RGB(0, 128, 0)).text,
              L"Change in Line color will change maker color, legend color and fill color accordingly.");
    EXPECT_EQ(p.Color(ZEL_MARKER_COLOR), RGB(0, 128, 0)) << "the marker and fill follow the line";
    EXPECT_EQ(p.Color(ZEL_FILL_COLOR), RGB(0, 128, 0));
    EXPECT_NE(p.PickColor(ZEL_LINE_COLOR, RGB(0, 0, 255), true).text, L"") << "shown again until silenced";
    EXPECT_EQ(p.PickColor(ZEL_LINE_COLOR, RGB(0, 0, 200)).text, L"") << "silenced";
    EXPECT_EQ(p.ChooseType(1).text, L"") << "only BAR brings its note";
    EXPECT_EQ(p.ChooseType(2, true).text,
              L"BAR graph displays only sample values at first view. For more values, use zoom in function.");
    p.Press(IDOK);
  });
  Var props = Props(1);
  EXPECT_EQ(Record(props).lineColor, LONG(RGB(0, 0, 200)));
  EXPECT_STREQ(Record(props).type, L"BAR");

  WithCurvePage(2, true, [&](const CurvePage& p) {
    EXPECT_EQ(p.PickColor(ZEL_LINE_COLOR, RGB(9, 9, 9)).text, L"") << "still silenced in a new frame";
    EXPECT_EQ(p.ChooseType(2).text, L"");
    p.Press(IDCANCEL);
  });
}

TEST_F(CurvePageTest, WithoutPermissionThePageShowsButChangesNothing) {
  graph->put_PropertiesModificationAllowed(0);
  std::wstring before = Snapshot();
  WithCurvePage(3, false, [&](const CurvePage& p) {
    EXPECT_EQ(p.SelectedText(ZEL_CURVE_CHOICE), L"Temp");
    for (int field : {ZEL_CURVE_TYPE, ZEL_LINE_WIDTH, ZEL_LINE_COLOR, ZEL_FILL_TO, kAutoWidth, ZEL_BAR_WIDTH})
      EXPECT_FALSE(IsWindowEnabled(GetDlgItem(p.page, field))) << field;
    p.Choose(ZEL_CURVE_CHOICE, 0);
    EXPECT_NE(p.SelectedText(ZEL_CURVE_CHOICE), L"Temp") << "every curve can still be looked at";
    p.Type(ZEL_LINE_WIDTH, L"7");
    p.Choose(ZEL_CURVE_TYPE, 3);
    p.Press(IDOK);
  });
  EXPECT_EQ(Snapshot(), before);
}

}  // namespace
}  // namespace zel::testing

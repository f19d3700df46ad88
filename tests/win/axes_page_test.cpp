// The axes page as an operator meets it: the frame of "Graph &Settings..."
// turned to its Axes tab, the fields driven with the messages they send, and
// the axes checked through the automation interface afterwards.
#include <windows.h>
#include <prsht.h>

#include <functional>

#include "hosted_control.h"
#include "page_driver.h"
#include "pages/page_resources.h"

namespace zel::testing {
namespace {

constexpr int kAutoScale = 381, kSplit = 390, kCommon = 392;
constexpr int kAxisButtons[] = {ZEL_AXIS_X, ZEL_AXIS_Y1, ZEL_AXIS_Y2, ZEL_AXIS_Y3, ZEL_AXIS_Y4};

BOOL CALLBACK FindAxesPage(HWND child, LPARAM found) {
  if (!GetDlgItem(child, ZEL_AXIS_MIN)) return TRUE;
  *reinterpret_cast<HWND*>(found) = child;
  return FALSE;
}

struct AxesPage : PageDriver {
  void Axis(int slot) const { Click(kAxisButtons[slot]); }
};

DATE Date(WORD year, WORD month, WORD day, WORD hour = 0, WORD minute = 0) {
  SYSTEMTIME time{year, month, 0, day, hour, minute, 0, 0};
  DATE date = 0;
  SystemTimeToVariantTime(&time, &date);
  return date;
}

class AxesPageTest : public HostedControlTest {
 protected:
  // A REAL X axis (1), a TIME Y1 (2) and a REAL Y2 (3); no Y3 or Y4. The
  // split flags belong to the process: none to start with, and none after.
  void SetUp() override {
    HostedControlTest::SetUp();
    LONG off[3] = {};
    graph->enableSplitYAxis(&off[0], &off[1], &off[2]);
    graph->put_PropertiesModificationAllowed(1);
    graph->put_ComnYAxesPropsChkBoxEnable(1);
    Var real(L"REAL"), time(L"TIME");
    ASSERT_EQ(graph->AddXAxis(1, V_BSTR(&real.v), Var().v, 0, Var::Missing().v, Var::Missing().v), S_OK);
    ASSERT_EQ(graph->AddYAxis(2, V_BSTR(&time.v), Var().v, 0, Var::Missing().v, Var::Missing().v), S_OK);
    ASSERT_EQ(graph->AddYAxis(3, V_BSTR(&real.v), Var().v, 0, Var::Missing().v, Var::Missing().v), S_OK);
    SetRange(false, 1, Var(0.0), Var(10.0));
    Var day1, day2;
    V_VT(&day1.v) = V_VT(&day2.v) = VT_DATE;
    V_DATE(&day1.v) = Date(2020, 1, 1), V_DATE(&day2.v) = Date(2020, 1, 2);
    SetRange(true, 2, day1, day2);
  }
  void TearDown() override {
    LONG off[3] = {};
    graph->enableSplitYAxis(&off[0], &off[1], &off[2]);
    HostedControlTest::TearDown();
  }

  void SetRange(bool y, LONG id, const Var& min, const Var& max) {
    Var props = Props(y, id);
    auto* record = static_cast<::AxisProps*>(V_RECORD(&props.v));
    SysFreeString(record->annotationFormat);
    record->annotationFormat = nullptr;
    VariantCopy(&record->min, const_cast<VARIANT*>(&min.v));
    VariantCopy(&record->max, const_cast<VARIANT*>(&max.v));
    ASSERT_EQ(y ? graph->SetYAxisProperties(id, props.v) : graph->SetXAxisProperties(id, props.v), S_OK);
  }
  Var Props(bool y, LONG id) {
    Var props;
    EXPECT_EQ(y ? graph->GetYAxisProperties(id, &props.v) : graph->GetXAxisProperties(id, &props.v), S_OK);
    return props;
  }
  static const ::AxisProps& Record(const Var& props) { return *static_cast<const ::AxisProps*>(V_RECORD(&props.v)); }

  // Opens the frame of "Graph &Settings...", turns it to the Axes tab and runs
  // `drive` on the page; the frame is cancelled afterwards if still open.
  void WithAxesPage(std::function<void(const AxesPage&)> drive) {
    bool seen = false;
    WhenDialogOpens([&](HWND frame) {
      SendMessageW(frame, PSM_SETCURSEL, 1, 0);
      HWND page = nullptr;
      EnumChildWindows(frame, FindAxesPage, LPARAM(&page));
      seen = page != nullptr;
      if (page) drive(AxesPage{frame, page});
      if (IsWindow(frame)) PostMessageW(frame, WM_COMMAND, IDCANCEL, 0);
    });
    SendMessageW(window, WM_COMMAND, 244, 0);
    ASSERT_TRUE(seen) << "no axes page in the frame";
  }

  // Everything the page can change, as the control reports it.
  std::wstring Snapshot() {
    std::wstring s;
    for (auto [y, id] : {std::pair{false, 1L}, {true, 2L}, {true, 3L}}) {
      Var props = Props(y, id);
      const ::AxisProps& r = Record(props);
      Var min, max;
      VariantChangeType(&min.v, const_cast<VARIANT*>(&r.min), 0, VT_BSTR);
      VariantChangeType(&max.v, const_cast<VARIANT*>(&r.max), 0, VT_BSTR);
      s += min.Text() + L"," + max.Text() + L"," + std::to_wstring(r.bAutoScale) + L"," + r.gridMode + L"," +
           r.gridStyle + L"," + std::to_wstring(r.gridWidth) + L"," + std::to_wstring(r.gridColor) + L"," +
           (r.title ? r.title : L"") + L";";
    }
    LONG split[3] = {}, common = 0;
    graph->getSplitYAxis(&split[0], &split[1], &split[2]);
    graph->get_ComnYAxesProps(&common);
    BSTR units[4] = {};
    graph->GetUnitName(&units[0], &units[1], &units[2], &units[3]);
    for (BSTR unit : units) s += Take(unit) + L",";
    return s + std::to_wstring(split[0]) + std::to_wstring(split[1]) + std::to_wstring(common);
  }
};

TEST_F(AxesPageTest, EachFieldOfRealAndTimeAxesRoundTrips) {
  WithAxesPage([&](const AxesPage& p) {
    EXPECT_TRUE(p.Checked(ZEL_AXIS_X));
    EXPECT_EQ(p.Text(ZEL_AXIS_MAX), L"10");
    EXPECT_TRUE(p.Enabled(ZEL_AXIS_Y2));
    EXPECT_FALSE(p.Enabled(ZEL_AXIS_Y3)) << "no third Y axis";
    EXPECT_FALSE(p.Enabled(kSplit)) << "the X axis does not split";
    p.Axis(2);
    p.Axis(0);
    EXPECT_FALSE(p.ApplyEnabled()) << "looking at another axis changes nothing";
    p.Click(kAutoScale);
    EXPECT_TRUE(p.ApplyEnabled());
    p.Type(ZEL_AXIS_MIN, L"-5");
    p.Type(ZEL_AXIS_MAX, L"2.5");
    p.Choose(ZEL_AXIS_GRID_MODE, 2);
    p.Choose(ZEL_AXIS_GRID_STYLE, 2);
    p.Type(ZEL_AXIS_GRID_WIDTH, L"3");
    p.PickColor(ZEL_AXIS_GRID_COLOR, RGB(1, 2, 3));
    p.Type(ZEL_AXIS_TITLE, L"Flow");

    // The TIME axis shows and takes dates; the X edits are kept meanwhile.
    p.Axis(1);
    Var shown(p.Text(ZEL_AXIS_MIN).c_str()), date;
    EXPECT_EQ(VariantChangeType(&date.v, &shown.v, 0, VT_DATE), S_OK) << p.Text(ZEL_AXIS_MIN);
    EXPECT_EQ(V_DATE(&date.v), Date(2020, 1, 1));
    p.Type(ZEL_AXIS_MIN, L"1/5/2020 3:30:00 AM");
    p.Type(ZEL_AXIS_MAX, L"1/6/2020");
    p.Choose(ZEL_AXIS_GRID_MODE, 1);
    p.Type(ZEL_UNIT_NAME_Y1, L"bar");
    p.Type(ZEL_UNIT_NAME_Y4, L"1234567890");
    p.Axis(2);
    EXPECT_TRUE(p.Enabled(kSplit));
    p.Click(kSplit);
    p.Click(kCommon);
    p.Axis(0);
    EXPECT_EQ(p.Text(ZEL_AXIS_TITLE), L"Flow");
    EXPECT_EQ(p.PressForMessage(kApplyButton), L"");
    EXPECT_TRUE(p.Checked(ZEL_AXIS_X)) << "the axis on view stays after Apply";
    p.Press(IDCANCEL);
  });
  Var x = Props(false, 1), y1 = Props(true, 2);
  EXPECT_EQ(V_R8(&Record(x).min), -5.0);
  EXPECT_EQ(V_R8(&Record(x).max), 2.5);
  EXPECT_EQ(Record(x).bAutoScale, 1);
  EXPECT_STREQ(Record(x).gridMode, L"TICK");
  EXPECT_STREQ(Record(x).gridStyle, L"DOTTED");
  EXPECT_EQ(Record(x).gridWidth, 3);
  EXPECT_EQ(Record(x).gridColor, LONG(RGB(1, 2, 3)));
  EXPECT_STREQ(Record(x).title, L"Flow");
  EXPECT_EQ(V_DATE(&Record(y1).min), Date(2020, 1, 5, 3, 30));
  EXPECT_EQ(V_DATE(&Record(y1).max), Date(2020, 1, 6));
  EXPECT_STREQ(Record(y1).gridMode, L"ANNOTATION");
  EXPECT_STREQ(Record(y1).gridStyle, L"SOLID") << "what was not changed stays";
  LONG split[3] = {};
  graph->getSplitYAxis(&split[0], &split[1], &split[2]);
  EXPECT_EQ(split[0], 1);
  EXPECT_EQ(split[1], 0);
  LONG common = 0;
  graph->get_ComnYAxesProps(&common);
  EXPECT_EQ(common, 1);
  BSTR units[4] = {};
  graph->GetUnitName(&units[0], &units[1], &units[2], &units[3]);
  EXPECT_EQ(Take(units[0]), L"bar");
  EXPECT_EQ(Take(units[3]), L"1234567890");
  Take(units[1]), Take(units[2]);

  // Opened again, the page shows what the axes now hold; OK applies.
  WithAxesPage([&](const AxesPage& p) {
    EXPECT_EQ(p.Text(ZEL_AXIS_MIN), L"-5");
    EXPECT_EQ(p.Selected(ZEL_AXIS_GRID_STYLE), 2);
    EXPECT_TRUE(p.Checked(kAutoScale));
    p.Axis(1);
    p.Type(ZEL_AXIS_TITLE, L"When");
    p.Press(IDOK);
  });
  Var again = Props(true, 2);
  EXPECT_STREQ(Record(again).title, L"When");
  EXPECT_EQ(V_DATE(&Record(again).min), Date(2020, 1, 5, 3, 30)) << "an untouched date is not rewritten";
}

// Added without a record, the axis also holds grid width 0, which the page
// shows and leaves alone. Its side is shown, as for every axis.
TEST_F(AxesPageTest, ADiscreteAxisHasNoRangeToEnter) {
  Var discrete(L"DISCRETE"), right(L"RIGHT");
  ASSERT_EQ(graph->AddYAxis(4, V_BSTR(&discrete.v), Var().v, 0, right.v, Var::Missing().v), S_OK);
  Var before = Props(true, 4);
  WithAxesPage([&](const AxesPage& p) {
    EXPECT_EQ(p.Text(ZEL_AXIS_SIDE), L"Bottom");
    p.Axis(1);
    EXPECT_EQ(p.Text(ZEL_AXIS_SIDE), L"Left");
    EXPECT_FALSE(p.Enabled(ZEL_AXIS_Y4));
    p.Axis(3);
    EXPECT_EQ(p.Text(ZEL_AXIS_SIDE), L"Right");
    EXPECT_FALSE(p.Enabled(ZEL_AXIS_MIN));
    EXPECT_FALSE(p.Enabled(ZEL_AXIS_MAX));
    EXPECT_EQ(p.Text(ZEL_AXIS_GRID_WIDTH), L"0");
    p.Choose(ZEL_AXIS_GRID_MODE, 1);
    EXPECT_EQ(p.PressForMessage(IDOK), L"");
  });
  Var after = Props(true, 4);
  EXPECT_STREQ(Record(after).gridMode, L"ANNOTATION");
  EXPECT_EQ(Record(after).gridWidth, 1) << "the control's own rule for a width below 1";
  EXPECT_EQ(V_I4(&Record(after).max), V_I4(&Record(before).max));
}

TEST_F(AxesPageTest, CancelChangesNothing) {
  std::wstring before = Snapshot();
  WithAxesPage([&](const AxesPage& p) {
    p.Type(ZEL_AXIS_MIN, L"1");
    p.Choose(ZEL_AXIS_GRID_MODE, 1);
    p.Axis(2);
    p.Click(kSplit);
    p.Type(ZEL_UNIT_NAME_Y2, L"m");
    p.Press(IDCANCEL);
  });
  EXPECT_EQ(Snapshot(), before);
}

TEST_F(AxesPageTest, BadInputIsNamedAndNothingIsWritten) {
  std::wstring before = Snapshot();
  WithAxesPage([&](const AxesPage& p) {
    p.Type(ZEL_AXIS_TITLE, L"changed");
    p.Type(ZEL_AXIS_MIN, L"1x");
    EXPECT_EQ(p.PressForMessage(IDOK), L"\"Minimum\" must be a number.");
    EXPECT_TRUE(IsWindowVisible(p.frame)) << "the frame stays open";
    EXPECT_EQ(GetFocus(), GetDlgItem(p.page, ZEL_AXIS_MIN));
    p.Type(ZEL_AXIS_MIN, L"10");
    EXPECT_EQ(p.PressForMessage(kApplyButton), L"\"Minimum\" must be below the maximum.");
    p.Type(ZEL_AXIS_MIN, L"1");
    p.Type(ZEL_AXIS_GRID_WIDTH, L"0");
    EXPECT_EQ(p.PressForMessage(kApplyButton), L"\"Grid width\" must be a whole number from 1 to 32767.");
    p.Type(ZEL_AXIS_GRID_WIDTH, L"1");

    // A bad field of an axis not on view brings that axis back.
    p.Axis(1);
    p.Type(ZEL_AXIS_MAX, L"tomorrow-ish");
    p.Axis(0);
    EXPECT_EQ(p.PressForMessage(kApplyButton), L"\"Maximum\" must be a date and time.");
    EXPECT_TRUE(p.Checked(ZEL_AXIS_Y1));
    EXPECT_EQ(p.Text(ZEL_AXIS_MAX), L"tomorrow-ish");
    p.Type(ZEL_AXIS_MAX, L"1/9/2020");
    p.Type(ZEL_UNIT_NAME_Y3, L"12345678901");
    EXPECT_EQ(p.PressForMessage(kApplyButton), L"\"Unit names\" may hold at most 10 characters.");
    EXPECT_EQ(GetFocus(), GetDlgItem(p.page, ZEL_UNIT_NAME_Y3));
    p.Press(IDCANCEL);
  });
  EXPECT_EQ(Snapshot(), before);
}

TEST_F(AxesPageTest, WithoutPermissionThePageShowsButChangesNothing) {
  graph->put_PropertiesModificationAllowed(0);
  std::wstring before = Snapshot();
  WithAxesPage([&](const AxesPage& p) {
    EXPECT_EQ(p.Text(ZEL_AXIS_MAX), L"10");
    for (int field : {ZEL_AXIS_MIN, ZEL_AXIS_GRID_MODE, ZEL_AXIS_GRID_COLOR, ZEL_UNIT_NAME_Y1, kAutoScale, kCommon})
      EXPECT_FALSE(p.Enabled(field)) << field;
    p.Type(ZEL_AXIS_MIN, L"4");
    p.Type(ZEL_UNIT_NAME_Y1, L"x");
    EXPECT_FALSE(p.ApplyEnabled());
    EXPECT_FALSE(p.Enabled(ZEL_AXIS_Y3)) << "an absent axis stays unchosen";
    p.Axis(1);
    EXPECT_TRUE(p.Checked(ZEL_AXIS_Y1)) << "every axis can still be looked at";
    EXPECT_EQ(p.Text(ZEL_AXIS_MAX).substr(0, 8), L"1/2/2020");
    p.Press(IDOK);
  });
  EXPECT_EQ(Snapshot(), before);
}

}  // namespace
}  // namespace zel::testing

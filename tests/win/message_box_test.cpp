// Message boxes and the operator's notes in the language of the texts: the
// buttons the system draws are relabelled by their group, and a note asked
// not to come back stays away.
#include "control/hooked_message_boxes.h"
#include "control/localized_windows.h"
#include "control/prompt_message.h"
#include "modal_watch.h"
#include "util/platform_hooks.h"
#include "util/process_state.h"
#include "util/text_ids.h"

#include <gtest/gtest.h>

namespace zel::testing {
namespace {

class MessageBoxTest : public ::testing::Test {
 protected:
  // Every button text in a language of its own: "<id>!".
  void SetUp() override {
    InstallPlatformHooks({.languageText = [](int id) {
      return id >= 335 && id <= 340 ? DecimalText(id) + u"!" : Text();
    }});
  }
  void TearDown() override { InstallPlatformHooks({}); }
};

struct BoxSeen {
  std::wstring caption;
  std::vector<std::wstring> buttons;  // OK, Cancel, Yes, No, Retry
  bool operator==(const BoxSeen&) const = default;
};

TEST_F(MessageBoxTest, ButtonsAreRelabelledByTheirGroup) {
  const std::wstring kept = L"<system>";
  auto show = [&](UINT type, int close) {
    BoxSeen seen;
    WhenDialogOpens([&](HWND box) {
      seen.caption = WindowText(box);
      for (int button : {IDOK, IDCANCEL, IDYES, IDNO, IDRETRY})
        seen.buttons.push_back(GetDlgItem(box, button) ? ItemText(box, button) : L"-");
      PostMessageW(box, WM_COMMAND, WPARAM(close), 0);
    });
    EXPECT_EQ(CHookedMessageBoxes::Show(nullptr, u"text", u"caption", type | MB_ICONWARNING), close);
    return seen;
  };
  using Buttons = std::vector<std::wstring>;
  EXPECT_EQ(show(MB_OK, IDOK), (BoxSeen{L"caption", Buttons{L"335!", L"-", L"-", L"-", L"-"}}));
  EXPECT_EQ(show(MB_OKCANCEL, IDCANCEL), (BoxSeen{L"caption", Buttons{L"335!", L"336!", L"-", L"-", L"-"}}));
  EXPECT_EQ(show(MB_YESNOCANCEL, IDNO), (BoxSeen{L"caption", Buttons{L"-", L"336!", L"337!", L"338!", L"-"}}));
  EXPECT_EQ(show(MB_YESNO, IDYES), (BoxSeen{L"caption", Buttons{L"-", L"-", L"337!", L"338!", L"-"}}));
  // Other groups keep the system's texts.
  BoxSeen retry = show(MB_RETRYCANCEL, IDCANCEL);
  EXPECT_NE(retry.buttons[1], L"336!");
  EXPECT_NE(retry.buttons[4], L"-");
  // The hook went away with each box: a plain box keeps the system's texts.
  BoxSeen plain;
  WhenDialogOpens([&](HWND box) {
    plain.buttons.push_back(ItemText(box, IDOK));
    PostMessageW(box, WM_COMMAND, IDOK, 0);
  });
  MessageBoxW(nullptr, L"text", L"plain", MB_OK);
  EXPECT_EQ(plain.buttons, Buttons{L"OK"});
}

TEST_F(MessageBoxTest, ErrorsAndQuestionsShowFormattedTextsWithTheSystemsButtons) {
  BoxSeen seen;
  std::wstring message;
  auto answer = [&](int close) {
    seen = {};
    WhenDialogOpens([&, close](HWND box) {
      seen.caption = WindowText(box);
      message = ItemText(box, 0xFFFF);
      for (int button : {IDOK, IDCANCEL, IDYES, IDNO})
        seen.buttons.push_back(!GetDlgItem(box, button) ? L"-" : ItemText(box, button) == L"335!" ? L"relabelled" : L"+");
      PostMessageW(box, WM_COMMAND, WPARAM(close), 0);
    });
  };
  answer(IDOK);
  EXPECT_EQ(CHookedMessageBoxes::ShowError(nullptr, kCaptionSnapHairline, kMsgAxisMissing, 7), IDOK);
  EXPECT_EQ(seen, (BoxSeen{L"Snap Hairline", {L"+", L"-", L"-", L"-"}}));
  EXPECT_EQ(message, L"Axis with  id = 7 does NOT exist");
  answer(IDNO);
  EXPECT_EQ(CHookedMessageBoxes::Ask(nullptr, kTextGraphSettings, 200), IDNO);
  EXPECT_EQ(seen, (BoxSeen{L"Graph Settings", {L"-", L"+", L"+", L"+"}}));
  EXPECT_EQ(message, L"#TEXT#");
}

TEST_F(MessageBoxTest, ANoteSilencedByItsBoxStaysAway) {
  HMODULE resources = LoadLibraryExW(L"ZELGraph.dll", nullptr, LOAD_LIBRARY_AS_DATAFILE);
  ASSERT_TRUE(resources);
  CPromptMsg prompt(resources);
  struct PromptSeen {
    std::wstring caption, note, box, ok;
  } seen;
  auto answer = [&](bool silence) {
    WhenDialogOpens([&, silence](HWND dialog) {
      seen = {WindowText(dialog), ItemText(dialog, 301), ItemText(dialog, 300), ItemText(dialog, IDOK)};
      if (silence) CheckDlgButton(dialog, 300, BST_CHECKED);
      PostMessageW(dialog, WM_COMMAND, IDOK, 0);
    });
  };
  answer(false);
  EXPECT_EQ(prompt.ShowOnce(nullptr, CPromptMsg::kBarSamplingNote), IDOK);
  EXPECT_EQ(seen.caption, L"Graph Settings");
  EXPECT_EQ(seen.note, L"BAR graph displays only sample values at first view. For more values, use zoom in function.");
  EXPECT_EQ(seen.box, L"Do not show this message again.");
  EXPECT_EQ(seen.ok, L"335!");
  EXPECT_EQ(prompt.showAgain(CPromptMsg::kBarSamplingNote), 1);

  answer(true);
  EXPECT_EQ(prompt.ShowOnce(nullptr, CPromptMsg::kBarSamplingNote), IDOK);
  EXPECT_EQ(prompt.showAgain(CPromptMsg::kBarSamplingNote), 0);
  EXPECT_EQ(prompt.ShowOnce(nullptr, CPromptMsg::kBarSamplingNote), 0) << "silenced";

  // The other note keeps its own flag.
  answer(false);
  EXPECT_EQ(prompt.ShowOnce(nullptr, CPromptMsg::kLineColorNote), IDOK);
  EXPECT_EQ(seen.note, L"Change in Line color will change maker color, legend color and fill color accordingly.");
  EXPECT_EQ(prompt.showAgain(CPromptMsg::kLineColorNote), 1);
  FreeLibrary(resources);
}

TEST_F(MessageBoxTest, DialogChildrenTakeTheTextsOfTheirIdsAndRussianTheCyrillicCharacterSet) {
  HWND dialog = CreateWindowExW(0, L"STATIC", L"page", WS_POPUP, 0, 0, 200, 100, nullptr, nullptr, nullptr, nullptr);
  auto child = [&](int id) {
    return CreateWindowExW(0, L"BUTTON", L"resource", WS_CHILD, 0, 0, 50, 20, dialog, HMENU(INT_PTR(id)), nullptr,
                           nullptr);
  };
  HWND ok = child(335), unknown = child(4000), noId = child(0);
  auto charset = [](HWND window) {
    LOGFONTW look{};
    HFONT font = reinterpret_cast<HFONT>(SendMessageW(window, WM_GETFONT, 0, 0));
    GetObjectW(font ? font : GetStockObject(SYSTEM_FONT), sizeof look, &look);
    return look.lfCharSet;
  };
  RelabelDialog(dialog);
  EXPECT_EQ(WindowText(ok), L"335!");
  EXPECT_EQ(WindowText(unknown), L"resource");
  EXPECT_EQ(WindowText(noId), L"resource");
  EXPECT_NE(charset(ok), RUSSIAN_CHARSET);

  Process().language = u"RU";
  RelabelDialog(dialog);
  for (HWND window : {ok, unknown, noId}) EXPECT_EQ(charset(window), RUSSIAN_CHARSET);
  ResetProcessState();
  DestroyWindow(dialog);
}

}  // namespace
}  // namespace zel::testing

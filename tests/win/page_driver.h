#pragma once
// A settings page driven as the operator's input drives it: fields typed
// into and chosen from, buttons clicked, colours picked in the colour dialog,
// and the frame's buttons pressed, all by window messages.
#include <windows.h>

#include <string>

#include "modal_watch.h"
#include "pages/color_swatch.h"

namespace zel::testing {

constexpr int kApplyButton = 0x3021;  // the common property sheet's Apply
// The static that holds a message box's text.
constexpr int kMessageBoxText = 0xFFFF;

struct PageDriver {
  HWND frame, page;

  void Type(int field, const wchar_t* text) const { SetDlgItemTextW(page, field, text); }
  void Choose(int list, int index) const {
    SendDlgItemMessageW(page, list, CB_SETCURSEL, WPARAM(index), 0);
    SendMessageW(page, WM_COMMAND, MAKEWPARAM(list, CBN_SELCHANGE), LPARAM(GetDlgItem(page, list)));
  }
  void Click(int button) const { SendDlgItemMessageW(page, button, BM_CLICK, 0, 0); }
  std::wstring Text(int field) const { return ItemText(page, field); }
  int Selected(int list) const { return int(SendDlgItemMessageW(page, list, CB_GETCURSEL, 0, 0)); }
  bool Checked(int button) const { return IsDlgButtonChecked(page, button) == BST_CHECKED; }
  bool Enabled(int field) const { return IsWindowEnabled(GetDlgItem(page, field)); }
  OLE_COLOR Color(int swatch) const {
    return OLE_COLOR(SendDlgItemMessageW(page, swatch, ColorSwatch::kGetColor, 0, 0));
  }
  bool ApplyEnabled() const { return IsWindowEnabled(GetDlgItem(frame, kApplyButton)); }
  void Press(int button) const { SendDlgItemMessageW(frame, button, BM_CLICK, 0, 0); }
  // Space on a swatch opens the colour dialog, where the colour is typed in.
  void PickColor(int swatch, COLORREF color) const {
    AnswerNextBoxOf(frame, [color](HWND dialog) {
      SetDlgItemInt(dialog, 706, GetRValue(color), FALSE);
      SetDlgItemInt(dialog, 707, GetGValue(color), FALSE);
      SetDlgItemInt(dialog, 708, GetBValue(color), FALSE);
      SendMessageW(dialog, WM_COMMAND, IDOK, 0);
    });
    SendDlgItemMessageW(page, swatch, WM_KEYDOWN, VK_SPACE, 0);
  }
  // Presses `button` and returns the text of the message box it brings up
  // ("" for none), closing the box.
  std::wstring PressForMessage(int button) const {
    std::wstring message;
    AnswerNextBoxOf(frame, [&](HWND box) {
      message = ItemText(box, kMessageBoxText);
      PostMessageW(box, WM_COMMAND, IDOK, 0);
    });
    Press(button);
    return message;
  }
};

}  // namespace zel::testing

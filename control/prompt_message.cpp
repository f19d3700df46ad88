#include "control/prompt_message.h"

#include "util/text_ids.h"
#include "util/texts.h"

namespace zel {

const IID IID_IPromptOwner = {0xecc7a68c, 0x4746, 0x498d, {0x93, 0x48, 0xf0, 0x92, 0x8c, 0x55, 0x96, 0xe2}};

namespace {

constexpr int kPromptDialog = 141;
constexpr int kDoNotShowAgainBox = 300;
constexpr int kNoteText = 301;

void SetItemText(HWND dialog, int item, int textId) {
  SetDlgItemTextW(dialog, item, reinterpret_cast<LPCWSTR>(LookupText(textId).c_str()));
}

}  // namespace

INT_PTR CPromptMsg::ShowOnce(HWND owner, Note note) {
  if (showAgain_[note] != 1) return 0;
  showing_ = note;
  return DialogBoxParamW(resources_, MAKEINTRESOURCEW(kPromptDialog), owner, DialogProc, LPARAM(this));
}

INT_PTR CALLBACK CPromptMsg::DialogProc(HWND dialog, UINT message, WPARAM wParam, LPARAM lParam) {
  if (message == WM_INITDIALOG) {
    auto* prompt = reinterpret_cast<CPromptMsg*>(lParam);
    SetWindowLongPtrW(dialog, DWLP_USER, lParam);
    SetItemText(dialog, IDOK, kButtonOk);
    SetItemText(dialog, kNoteText, prompt->showing_ == kBarSamplingNote ? kNoteBarSampling : kNoteLineColor);
    SetItemText(dialog, kDoNotShowAgainBox, kTextDoNotShowAgain);
    SetWindowTextW(dialog, reinterpret_cast<LPCWSTR>(LookupText(kTextGraphSettings).c_str()));
    return TRUE;
  }
  if (message == WM_COMMAND && (LOWORD(wParam) == IDOK || LOWORD(wParam) == IDCANCEL)) {
    auto* prompt = reinterpret_cast<CPromptMsg*>(GetWindowLongPtrW(dialog, DWLP_USER));
    bool silenced = IsDlgButtonChecked(dialog, kDoNotShowAgainBox) == BST_CHECKED;
    prompt->showAgain_[prompt->showing_] = silenced ? 0 : 1;
    EndDialog(dialog, LOWORD(wParam));
    return TRUE;
  }
  return FALSE;
}

}  // namespace zel

#include "control/hooked_message_boxes.h"

#include <span>

#include "util/text_ids.h"
#include "util/texts.h"

namespace zel {

HHOOK CHookedMessageBoxes::hook_ = nullptr;
UINT CHookedMessageBoxes::type_ = 0;

int CHookedMessageBoxes::Show(HWND owner, TextView text, TextView caption, UINT type) {
  Text message(text), title(caption);  // terminated copies
  type_ = type;
  hook_ = SetWindowsHookExW(WH_CBT, Hook, nullptr, GetCurrentThreadId());
  int pressed = MessageBoxW(owner, reinterpret_cast<LPCWSTR>(message.c_str()),
                            reinterpret_cast<LPCWSTR>(title.c_str()), type);
  if (hook_) {  // the box never came up
    UnhookWindowsHookEx(hook_);
    hook_ = nullptr;
  }
  return pressed;
}

int CHookedMessageBoxes::ShowError(HWND owner, int captionId, int messageId, const FormatArg& arg) {
  Text caption = FormatText(captionId), message = FormatText(messageId, arg);
  return MessageBoxW(owner, reinterpret_cast<LPCWSTR>(message.c_str()), reinterpret_cast<LPCWSTR>(caption.c_str()),
                     MB_ICONERROR);
}

int CHookedMessageBoxes::Ask(HWND owner, int captionId, int messageId, const FormatArg& arg) {
  Text caption = FormatText(captionId), message = FormatText(messageId, arg);
  return MessageBoxW(owner, reinterpret_cast<LPCWSTR>(message.c_str()), reinterpret_cast<LPCWSTR>(caption.c_str()),
                     MB_YESNOCANCEL | MB_ICONQUESTION);
}

// The activation goes on down the chain too: a host's own hook (one that
// centres or answers message boxes) must still see the box come up.
LRESULT CALLBACK CHookedMessageBoxes::Hook(int code, WPARAM wParam, LPARAM lParam) {
  HHOOK hook = hook_;
  if (code == HCBT_ACTIVATE) {
    RelabelButtons(reinterpret_cast<HWND>(wParam));
    UnhookWindowsHookEx(hook_);
    hook_ = nullptr;
  }
  return CallNextHookEx(hook, code, wParam, lParam);
}

void CHookedMessageBoxes::RelabelButtons(HWND box) {
  struct Relabel {
    int button;
    int textId;
  };
  static constexpr Relabel kOk[] = {{IDOK, kButtonOk}};
  static constexpr Relabel kOkCancel[] = {{IDOK, kButtonOk}, {IDCANCEL, kButtonCancel}};
  static constexpr Relabel kYesNoCancel[] = {{IDYES, kButtonYes}, {IDNO, kButtonNo}, {IDCANCEL, kButtonCancel}};
  static constexpr Relabel kYesNo[] = {{IDYES, kButtonYes}, {IDNO, kButtonNo}};
  std::span<const Relabel> buttons;
  switch (type_ & MB_TYPEMASK) {
    case MB_OK: buttons = kOk; break;
    case MB_OKCANCEL: buttons = kOkCancel; break;
    case MB_YESNOCANCEL: buttons = kYesNoCancel; break;
    case MB_YESNO: buttons = kYesNo; break;
    default: break;
  }
  for (const Relabel& relabel : buttons)
    SetDlgItemTextW(box, relabel.button, reinterpret_cast<LPCWSTR>(LookupText(relabel.textId).c_str()));
}

}  // namespace zel

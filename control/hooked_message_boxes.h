#pragma once
// Message boxes in the language of the texts. The system draws the buttons
// of a message box in its own language, so the box is caught as it is
// activated and its buttons are given the texts 335 to 338.
#include <windows.h>

#include "util/c_printf.h"
#include "util/text.h"

namespace zel {

class CHookedMessageBoxes {
 public:
  // MessageBoxW with the buttons of `type`'s group relabelled: OK; OK and
  // Cancel; Yes, No and Cancel; Yes and No. Other groups keep the system's
  // texts. Returns what MessageBoxW returns. One such box at a time.
  static int Show(HWND owner, TextView text, TextView caption, UINT type);

  // A box with the texts of two ids, the message formatted with `arg`, and
  // the error icon.
  static int ShowError(HWND owner, int captionId, int messageId, const FormatArg& arg = {});
  // A Yes/No/Cancel question, its texts made the same way.
  static int Ask(HWND owner, int captionId, int messageId, const FormatArg& arg = {});

 private:
  static LRESULT CALLBACK Hook(int code, WPARAM wParam, LPARAM lParam);
  static void RelabelButtons(HWND box);

  static HHOOK hook_;
  static UINT type_;
};

}  // namespace zel

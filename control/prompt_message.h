#pragma once
// The operator notes that offer not to be shown again: a dialog with the
// note, an OK button and a "Do not show this message again." box.
#include <windows.h>
#include <unknwn.h>

#include <array>

namespace zel {

class CPromptMsg {
 public:
  enum Note { kLineColorNote, kBarSamplingNote };

  // `resources` is the module holding dialog 141.
  explicit CPromptMsg(HINSTANCE resources) : resources_(resources) {}

  // Shows `note` while its show-again flag is 1; the box checked when the
  // dialog closes sets the flag to 0. Returns the id of the button that closed
  // the dialog, 0 when the note was not shown, -1 when the dialog failed.
  INT_PTR ShowOnce(HWND owner, Note note);

  int showAgain(Note note) const { return showAgain_[note]; }

 private:
  static INT_PTR CALLBACK DialogProc(HWND dialog, UINT message, WPARAM wParam, LPARAM lParam);

  HINSTANCE resources_;
  std::array<int, 2> showAgain_{1, 1};
  Note showing_ = kLineColorNote;
};

// The control keeps its notes' flags for its whole life, so a note silenced
// on one page stays silent on the pages opened later. Its pages, which reach
// it only through COM, find the flags through this interface of the module.
struct IPromptOwner : IUnknown {
  virtual CPromptMsg& STDMETHODCALLTYPE Prompts() = 0;
};
extern const IID IID_IPromptOwner;

}  // namespace zel

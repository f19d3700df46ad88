#pragma once
// Menus and dialogs shown in the language of the texts: every item or child
// window whose id has a text gets that text; the resource text stays where
// none has.
#include <windows.h>

namespace zel {

// Gives every item with a command id the text of that id, by position.
void RelabelMenu(HMENU menu);

// Gives every child window of `dialog` (a dialog or a property page) whose
// control id has a text that text. With the language "RU", each child first
// gets a copy of its font with the Cyrillic character set.
void RelabelDialog(HWND dialog);

// Deletes the fonts made for "RU" (when the module is unloaded).
void FreeRelabelFonts();

}  // namespace zel

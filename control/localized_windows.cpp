#include "control/localized_windows.h"

#include <map>

#include "util/process_state.h"
#include "util/texts.h"

namespace zel {
namespace {

// The Cyrillic copy of each font a relabelled child had. Dialogs share a few
// fonts, so this stays small, and each copy lives as long as the module.
std::map<HFONT, HFONT>& CyrillicFonts() {
  static std::map<HFONT, HFONT> fonts;
  return fonts;
}

HFONT CyrillicCopyOf(HFONT font) {
  if (!font) font = static_cast<HFONT>(GetStockObject(SYSTEM_FONT));
  auto [it, added] = CyrillicFonts().try_emplace(font, nullptr);
  if (added) {
    LOGFONTW look{};
    GetObjectW(font, sizeof look, &look);
    look.lfCharSet = RUSSIAN_CHARSET;
    it->second = CreateFontIndirectW(&look);
  }
  return it->second;
}

BOOL CALLBACK RelabelChild(HWND child, LPARAM) {
  if (Process().language == u"RU") {
    HFONT font = reinterpret_cast<HFONT>(SendMessageW(child, WM_GETFONT, 0, 0));
    if (HFONT cyrillic = CyrillicCopyOf(font)) SendMessageW(child, WM_SETFONT, WPARAM(cyrillic), TRUE);
  }
  int id = GetDlgCtrlID(child);
  if (id > 0) {
    Text text = LookupText(id);
    if (!text.empty()) SetWindowTextW(child, reinterpret_cast<LPCWSTR>(text.c_str()));
  }
  return TRUE;
}

}  // namespace

void RelabelMenu(HMENU menu) {
  int count = GetMenuItemCount(menu);
  for (int position = 0; position < count; ++position) {
    UINT id = GetMenuItemID(menu, position);
    if (id == 0 || id == UINT(-1)) continue;  // separators and submenus
    Text text = LookupText(int(id));
    if (text.empty()) continue;
    ModifyMenuW(menu, UINT(position), MF_BYPOSITION | MF_STRING, id, reinterpret_cast<LPCWSTR>(text.c_str()));
  }
}

void RelabelDialog(HWND dialog) { EnumChildWindows(dialog, RelabelChild, 0); }

void FreeRelabelFonts() {
  for (auto& [original, cyrillic] : CyrillicFonts())
    if (cyrillic) DeleteObject(cyrillic);
  CyrillicFonts().clear();
}

}  // namespace zel

#pragma once
// Looking into the modal loops the control runs (message boxes, dialogs,
// context menus): what they show is read from inside them, and then they are
// closed, so that no test waits for an operator.
#include <windows.h>

#include <functional>
#include <ostream>
#include <string>
#include <utility>
#include <vector>

namespace zel::testing {

// Runs `inspect` on the first dialog box (a message box or a dialog) of this
// thread that comes up within about two seconds, from a timer inside its modal
// loop. `inspect` must close the box.
inline void WhenDialogOpens(std::function<void(HWND)> inspect) {
  static std::function<void(HWND)> pending;
  static int ticksLeft = 0;
  static UINT_PTR timer = 0;
  struct Tick {
    static BOOL CALLBACK FindBox(HWND window, LPARAM found) {
      wchar_t name[16] = L"";
      GetClassNameW(window, name, 16);
      if (std::wstring(name) != L"#32770" || !IsWindowVisible(window)) return TRUE;
      *reinterpret_cast<HWND*>(found) = window;
      return FALSE;
    }
    static void CALLBACK Run(HWND, UINT, UINT_PTR, DWORD) {
      HWND box = nullptr;
      EnumThreadWindows(GetCurrentThreadId(), FindBox, LPARAM(&box));
      if (!box && --ticksLeft > 0) return;
      KillTimer(nullptr, timer);
      if (box) std::exchange(pending, nullptr)(box);
      pending = nullptr;
    }
  };
  pending = std::move(inspect);
  ticksLeft = 100;
  timer = SetTimer(nullptr, 0, 20, Tick::Run);
}

inline std::wstring WindowText(HWND window) {
  wchar_t text[256] = L"";
  GetWindowTextW(window, text, 256);
  return text;
}

inline std::wstring ItemText(HWND dialog, int item) { return WindowText(GetDlgItem(dialog, item)); }

// What a popup menu offered when it opened: each item's id (0 for a
// separator), text and whether it was greyed.
struct MenuItemSeen {
  UINT id;
  std::wstring text;
  bool grayed;
  bool operator==(const MenuItemSeen&) const = default;
};
inline void PrintTo(const MenuItemSeen& item, std::ostream* out) {
  *out << item.id << " \"" << std::string(item.text.begin(), item.text.end()) << "\"" << (item.grayed ? " grayed" : "");
}

// Sends `window` a WM_CONTEXTMENU for its client point (x, y) and returns the
// items of the popup menu it opened, which is closed at once.
inline std::vector<MenuItemSeen> ContextMenuAt(HWND window, int x, int y) {
  static std::vector<MenuItemSeen> seen;
  static WNDPROC original = nullptr;
  struct Recorder {
    static LRESULT CALLBACK Procedure(HWND hwnd, UINT message, WPARAM wParam, LPARAM lParam) {
      if (message == WM_INITMENUPOPUP) {
        HMENU menu = reinterpret_cast<HMENU>(wParam);
        for (int i = 0; i < GetMenuItemCount(menu); ++i) {
          wchar_t text[64] = L"";
          GetMenuStringW(menu, UINT(i), text, 64, MF_BYPOSITION);
          UINT state = GetMenuState(menu, UINT(i), MF_BYPOSITION);
          UINT id = GetMenuItemID(menu, i);
          seen.push_back({id, text, id != 0 && (state & MF_GRAYED) != 0});  // separators count as no state
        }
        PostMessageW(hwnd, WM_CANCELMODE, 0, 0);
        PostMessageW(hwnd, WM_KEYDOWN, VK_ESCAPE, 0);
      }
      return CallWindowProcW(original, hwnd, message, wParam, lParam);
    }
    // Closes a menu that was never seen opening.
    static void CALLBACK EndLate(HWND, UINT, UINT_PTR, DWORD) { EndMenu(); }
  };
  seen.clear();
  original = reinterpret_cast<WNDPROC>(
      SetWindowLongPtrW(window, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(Recorder::Procedure)));
  UINT_PTR fallback = SetTimer(nullptr, 0, 2000, Recorder::EndLate);
  POINT p{x, y};
  ClientToScreen(window, &p);
  SendMessageW(window, WM_CONTEXTMENU, WPARAM(window), MAKELPARAM(p.x, p.y));
  KillTimer(nullptr, fallback);
  SetWindowLongPtrW(window, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(original));
  return seen;
}

// Runs `answer` on the next dialog box owned by `owner` (a message box, the
// colour dialog or a note over a frame), from a timer inside its modal loop;
// looks for it `ticks` times, 20 ms apart.
inline void AnswerNextBoxOf(HWND owner, std::function<void(HWND)> answer, int ticks = 100) {
  static HWND boxOwner = nullptr;
  static std::function<void(HWND)> pending;
  static UINT_PTR timer = 0;
  static int ticksLeft = 0;
  struct Tick {
    static BOOL CALLBACK Find(HWND window, LPARAM found) {
      if (GetWindow(window, GW_OWNER) != boxOwner || !IsWindowVisible(window)) return TRUE;
      *reinterpret_cast<HWND*>(found) = window;
      return FALSE;
    }
    static void CALLBACK Run(HWND, UINT, UINT_PTR, DWORD) {
      HWND box = nullptr;
      EnumThreadWindows(GetCurrentThreadId(), Find, LPARAM(&box));
      if (!box && --ticksLeft > 0) return;
      KillTimer(nullptr, timer);
      if (box) std::exchange(pending, nullptr)(box);
    }
  };
  if (timer) KillTimer(nullptr, timer);  // an answer no box asked for
  boxOwner = owner;
  pending = std::move(answer);
  ticksLeft = ticks;
  timer = SetTimer(nullptr, 0, 20, Tick::Run);
}

}  // namespace zel::testing

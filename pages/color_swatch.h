#pragma once
// The colour swatch of the settings pages: a small tab-stop control that
// shows one colour and lets the operator pick another with the standard
// colour dialog (a click, or Space while it has the focus). Dialog templates
// name its window class; the page registers the class before it makes them.
#include <windows.h>

namespace zel {

class ColorSwatch {
 public:
  // The window class's name, for dialog templates.
  static constexpr const wchar_t* kClassName = L"ZELGraphColorSwatch";

  // Sets the colour (an OLE colour: RGB or a system colour), wParam; no
  // notification. Returns 0.
  static constexpr UINT kSetColor = WM_USER + 1;
  // Returns the colour, as set or as picked.
  static constexpr UINT kGetColor = WM_USER + 2;
  // The notification code of the WM_COMMAND the parent gets when the
  // operator picked a different colour.
  static constexpr WORD kColorChanged = 0x7A01;

  // Registers the window class in `module` once; later calls do nothing.
  static bool Register(HINSTANCE module);
  // Removes the class again (when the module is unloaded).
  static void Unregister(HINSTANCE module);

 private:
  static LRESULT CALLBACK Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
  static void Paint(HWND window);
  static void Choose(HWND window);
};

}  // namespace zel

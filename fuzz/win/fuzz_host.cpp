#include "fuzz_host.h"

#include <algorithm>

namespace zel::fuzz {
namespace {

unsigned dialogsClosed = 0;
HHOOK dialogHook = nullptr;

// Answers every dialog box of the thread as it is activated: a message box
// takes its default button, any other dialog is cancelled.
LRESULT CALLBACK CloseDialogs(int code, WPARAM wParam, LPARAM lParam) {
  if (code == HCBT_ACTIVATE) {
    HWND window = reinterpret_cast<HWND>(wParam);
    wchar_t name[16] = L"";
    GetClassNameW(window, name, 16);
    if (std::wstring(name) == L"#32770") {
      ++dialogsClosed;
      PostMessageW(window, WM_COMMAND, IDOK, 0);
      PostMessageW(window, WM_COMMAND, IDCANCEL, 0);
    }
  }
  return CallNextHookEx(dialogHook, code, wParam, lParam);
}

bool AtlReady() {
  static const bool ready = [] {
    auto init = reinterpret_cast<BOOL(WINAPI*)()>(
        reinterpret_cast<void*>(GetProcAddress(LoadLibraryW(L"atl.dll"), "AtlAxWinInit")));
    return init && init();
  }();
  return ready;
}

// Mostly inside the window, sometimes far outside it or negative, as a
// captured mouse reports.
LPARAM PointIn(RandomSource& random, HWND window) {
  RECT client{};
  GetClientRect(window, &client);
  int x = random.Percent(85) ? int(random.Below(size_t(std::max<LONG>(client.right, 1)) + 4)) : int(int16_t(random.Bits()));
  int y = random.Percent(85) ? int(random.Below(size_t(std::max<LONG>(client.bottom, 1)) + 4)) : int(int16_t(random.Bits()));
  return MAKELPARAM(x, y);
}

}  // namespace

unsigned FuzzHost::DialogsClosed() { return dialogsClosed; }

bool FuzzHost::Create(std::wstring& problem) {
  if (!dialogHook) dialogHook = SetWindowsHookExW(WH_CBT, CloseDialogs, nullptr, GetCurrentThreadId());
  if (!AtlReady()) return problem = L"atl.dll has no AtlAxWin class", false;
  frame_ = CreateWindowExW(0, L"STATIC", L"fuzz host", WS_OVERLAPPEDWINDOW, 0, 0, 640, 480, nullptr, nullptr, nullptr,
                           nullptr);
  host_ = CreateWindowExW(0, L"AtlAxWin", L"ZELGraph.VX_Graph", WS_CHILD | WS_VISIBLE, 0, 0, 400, 300, frame_, nullptr,
                          nullptr, nullptr);
  auto getControl = reinterpret_cast<HRESULT(WINAPI*)(HWND, IUnknown**)>(
      reinterpret_cast<void*>(GetProcAddress(GetModuleHandleW(L"atl.dll"), "AtlAxGetControl")));
  IUnknown* unknown = nullptr;
  if (!host_ || !getControl || FAILED(getControl(host_, &unknown)) || !unknown)
    return problem = L"the container did not create ZELGraph.VX_Graph (is it registered?)", Destroy(), false;
  unknown->QueryInterface(IID_IVX_Graph, reinterpret_cast<void**>(&graph_));
  IOleWindow* oleWindow = nullptr;
  if (SUCCEEDED(unknown->QueryInterface(IID_IOleWindow, reinterpret_cast<void**>(&oleWindow)))) {
    oleWindow->GetWindow(&window_);
    oleWindow->Release();
  }
  IConnectionPointContainer* points = nullptr;
  if (SUCCEEDED(unknown->QueryInterface(IID_IConnectionPointContainer, reinterpret_cast<void**>(&points)))) {
    points->FindConnectionPoint(DIID__IVX_GraphEvents, &events_);
    points->FindConnectionPoint(IID_IPropertyNotifySink, &changes_);
    points->Release();
  }
  unknown->Release();
  if (events_) events_->Advise(static_cast<IDispatch*>(&sink_), &eventsCookie_);
  if (changes_) changes_->Advise(static_cast<IPropertyNotifySink*>(&sink_), &changesCookie_);
  if (!graph_ || !IsWindow(window_) || !eventsCookie_)
    return problem = L"the hosted control has no interface, window or event point", Destroy(), false;
  ShowWindow(frame_, SW_SHOW);
  return true;
}

void FuzzHost::Destroy() {
  for (auto [point, cookie] : {std::pair{events_, eventsCookie_}, std::pair{changes_, changesCookie_}}) {
    if (!point) continue;
    if (cookie) point->Unadvise(cookie);
    point->Release();
  }
  events_ = changes_ = nullptr;
  eventsCookie_ = changesCookie_ = 0;
  if (graph_) graph_->Release();
  graph_ = nullptr;
  if (frame_) DestroyWindow(frame_);
  frame_ = host_ = window_ = nullptr;
  Pump();
}

void FuzzHost::Pump() {
  MSG message;
  for (int i = 0; i < 1000; ++i) {
    if (!PeekMessageW(&message, nullptr, 0, WM_TIMER - 1, PM_REMOVE) &&
        !PeekMessageW(&message, nullptr, WM_TIMER + 1, 0xFFFF, PM_REMOVE))
      return;
    TranslateMessage(&message);
    DispatchMessageW(&message);
  }
}

void FuzzHost::Act(RandomSource& random, std::wstring& log) {
  size_t roll = random.Below(100);
  if (roll < 35) Mouse(random, log);
  else if (roll < 47) Key(random, log);
  else if (roll < 57) {
    UINT message = random.Percent(50) ? WM_HSCROLL : WM_VSCROLL;
    WPARAM code = MAKEWPARAM(random.Below(10), random.Percent(70) ? random.Below(200) : random.Bits());
    log += message == WM_HSCROLL ? L"WM_HSCROLL " : L"WM_VSCROLL ";
    log += std::to_wstring(code);
    SendMessageW(window_, message, code, 0);
  } else if (roll < 67) Resize(random, log);
  else if (roll < 70) {
    LPARAM size = LPARAM(random.Bits() & 0xFFFFFFFF);
    log += L"WM_SIZE " + std::to_wstring(LOWORD(size)) + L"x" + std::to_wstring(HIWORD(size));
    SendMessageW(window_, WM_SIZE, SIZE_RESTORED, size);
  } else if (roll < 80) {
    log += L"paint";
    RedrawWindow(window_, nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_UPDATENOW);
  } else if (roll < 85) DrawIntoMemory(random, log);
  else if (roll < 91) {
    WPARAM id = random.Percent(80) ? 10101 : random.Below(20000);
    log += L"WM_TIMER " + std::to_wstring(id);
    SendMessageW(window_, WM_TIMER, id, 0);
  } else if (roll < 94) {
    log += L"WM_SETCURSOR";
    SendMessageW(window_, WM_SETCURSOR, WPARAM(window_), MAKELPARAM(random.Percent(80) ? HTCLIENT : HTBORDER, WM_MOUSEMOVE));
  } else if (roll < 96) {
    log += L"WM_ERASEBKGND";
    HDC dc = GetDC(window_);
    SendMessageW(window_, WM_ERASEBKGND, WPARAM(dc), 0);
    ReleaseDC(window_, dc);
  } else if (roll < 98) {
    log += L"WM_COMMAND 316 (Show Hairline Here)";
    SendMessageW(window_, WM_COMMAND, 316, 0);
  } else {
    log += L"WM_MOUSEWHEEL";
    SendMessageW(window_, WM_MOUSEWHEEL, MAKEWPARAM(0, short(random.Bits())), PointIn(random, window_));
  }
  Pump();
}

// Presses, moves and releases of the left button; a right button would
// open the context menu, so it is never pressed.
void FuzzHost::Mouse(RandomSource& random, std::wstring& log) {
  static const UINT kMessages[] = {WM_LBUTTONDOWN, WM_MOUSEMOVE, WM_MOUSEMOVE, WM_MOUSEMOVE, WM_LBUTTONUP,
                                   WM_LBUTTONDBLCLK};
  static const wchar_t* const kNames[] = {L"down", L"move", L"move", L"move", L"up", L"double click"};
  size_t count = random.Between(1, 6);
  log += L"mouse";
  for (size_t i = 0; i < count; ++i) {
    size_t which = random.Below(std::size(kMessages));
    LPARAM at = PointIn(random, window_);
    log += L" " + std::wstring(kNames[which]) + L"@" + std::to_wstring(short(LOWORD(at))) + L"," +
           std::to_wstring(short(HIWORD(at)));
    SendMessageW(window_, kMessages[which], which == 4 ? 0 : MK_LBUTTON, at);
  }
}

void FuzzHost::Key(RandomSource& random, std::wstring& log) {
  static const WPARAM kKeys[] = {VK_ESCAPE, VK_LEFT, VK_RIGHT, VK_LEFT, VK_RIGHT, VK_UP, VK_DOWN, 'A', VK_SPACE,
                                 VK_RETURN, VK_DELETE, VK_HOME};
  WPARAM key = random.Pick(kKeys);
  bool down = random.Percent(70);
  log += (down ? L"key down " : L"key up ") + std::to_wstring(key);
  SendMessageW(window_, down ? WM_KEYDOWN : WM_KEYUP, key, 1);
}

void FuzzHost::Resize(RandomSource& random, std::wstring& log) {
  int width = random.Percent(90) ? int(random.Below(900)) : int(random.Below(32768));
  int height = random.Percent(90) ? int(random.Below(700)) : int(random.Below(32768));
  log += L"resize " + std::to_wstring(width) + L"x" + std::to_wstring(height);
  SetWindowPos(frame_, nullptr, 0, 0, width + 20, height + 40, SWP_NOZORDER | SWP_NOACTIVATE);
  SetWindowPos(host_, nullptr, 0, 0, width, height, SWP_NOZORDER | SWP_NOACTIVATE);
}

// IViewObject::Draw as a container prints or previews: a small bitmap, and
// bounds that may be empty, inverted or far larger than the bitmap.
void FuzzHost::DrawIntoMemory(RandomSource& random, std::wstring& log) {
  IViewObject* view = nullptr;
  if (FAILED(graph_->QueryInterface(IID_IViewObject, reinterpret_cast<void**>(&view)))) return;
  HDC screen = GetDC(nullptr);
  HDC dc = CreateCompatibleDC(screen);
  HBITMAP bitmap = CreateCompatibleBitmap(screen, 64, 48);
  ReleaseDC(nullptr, screen);
  HGDIOBJ old = SelectObject(dc, bitmap);
  auto extent = [&] { return LONG(random.Percent(80) ? random.Between(-10, 400) : random.Between(-32768, 32767)); };
  RECTL bounds{extent(), extent(), extent(), extent()};
  if (random.Percent(50)) bounds.left = bounds.top = 0;
  log += L"Draw into memory at " + std::to_wstring(bounds.left) + L"," + std::to_wstring(bounds.top) + L"," +
         std::to_wstring(bounds.right) + L"," + std::to_wstring(bounds.bottom);
  HRESULT hr = view->Draw(DVASPECT_CONTENT, -1, nullptr, nullptr, nullptr, dc, &bounds, nullptr, nullptr, 0);
  log += L" -> " + std::to_wstring(hr);
  SelectObject(dc, old);
  DeleteObject(bitmap);
  DeleteDC(dc);
  view->Release();
}

}  // namespace zel::fuzz

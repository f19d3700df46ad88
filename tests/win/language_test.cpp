// Texts in the host's language: a copy of the control with language
// libraries beside it, as a host ships them, shows its messages, menu and
// message boxes from the first library that has each text.
#include <ocidl.h>

#include "com_client.h"
#include "control/class_ids.h"
#include "pages/page_resources.h"
#include "modal_watch.h"

namespace zel::testing {
namespace {

std::wstring ExeDirectory() {
  wchar_t path[MAX_PATH];
  DWORD length = GetModuleFileNameW(nullptr, path, MAX_PATH);
  std::wstring directory(path, length);
  return directory.substr(0, directory.find_last_of(L'\\'));
}

class LanguageTest : public ::testing::Test {
 protected:
  // The copy is named LangGraph.dll, so it looks for LangGraph_texts_* in the
  // language folders the build made; it loads the default library ("EN") as
  // it is loaded.
  static void SetUpTestSuite() {
    OleInitialize(nullptr);
    std::wstring directory = ExeDirectory();
    std::wstring copy = directory + L"\\language_test\\LangGraph.dll";
    ASSERT_TRUE(CopyFileW((directory + L"\\ZELGraph.dll").c_str(), copy.c_str(), FALSE));
    module = LoadLibraryW(copy.c_str());
    ASSERT_TRUE(module);
  }
  static void TearDownTestSuite() { OleUninitialize(); }

  void SetUp() override {
    ASSERT_TRUE(AtlAxWinReady());
    auto getClassObject = reinterpret_cast<HRESULT(WINAPI*)(REFCLSID, REFIID, void**)>(
        reinterpret_cast<void*>(GetProcAddress(module, "DllGetClassObject")));
    IClassFactory* factory = nullptr;
    ASSERT_EQ(getClassObject(CLSID_VX_Graph, IID_IClassFactory, reinterpret_cast<void**>(&factory)), S_OK);
    ASSERT_EQ(factory->CreateInstance(nullptr, IID_IVX_Graph, reinterpret_cast<void**>(&graph)), S_OK);
    factory->Release();
  }
  void TearDown() override {
    if (graph) {
      Choose(L"EN");
      graph->Release();
    }
    if (frame) DestroyWindow(frame);
    if (container) container->Release();
  }

  void Choose(const wchar_t* language) {
    BSTR name = SysAllocString(language);
    EXPECT_EQ(graph->SetLanguage(name), S_OK);
    SysFreeString(name);
  }

  // The messages of three failures: an axis missing (104), a dataset missing
  // (105) and a bad zoom rectangle (113).
  std::vector<std::wstring> Messages() {
    std::vector<std::wstring> messages;
    auto take = [&](HRESULT hr) {
      EXPECT_EQ(hr, E_INVALIDARG);
      IErrorInfo* info = nullptr;
      BSTR text = nullptr;
      if (GetErrorInfo(0, &info) == S_OK && info) info->GetDescription(&text), info->Release();
      messages.push_back(Take(text));
    };
    take(graph->RemoveXAxis(7));
    take(graph->RemoveDataset(8));
    take(graph->put_ZoomRect(Var::Array({Var(1.f), Var(0.f), Var(0.f), Var(1.f)}).v));
    return messages;
  }

  // Hosts the control in a window through ATL's container and returns the
  // control's window.
  HWND Host() {
    frame = CreateWindowExW(0, L"STATIC", L"host", WS_OVERLAPPEDWINDOW, 0, 0, 640, 480, nullptr, nullptr,
                            nullptr, nullptr);
    HWND host = CreateWindowExW(0, L"STATIC", L"", WS_CHILD | WS_VISIBLE, 0, 0, 400, 300, frame, nullptr,
                                nullptr, nullptr);
    auto attach = reinterpret_cast<HRESULT(WINAPI*)(IUnknown*, HWND, IUnknown**)>(
        reinterpret_cast<void*>(GetProcAddress(GetModuleHandleW(L"atl.dll"), "AtlAxAttachControl")));
    EXPECT_EQ(attach(graph, host, &container), S_OK);
    HWND window = nullptr;
    IOleWindow* oleWindow = nullptr;
    graph->QueryInterface(IID_IOleWindow, reinterpret_cast<void**>(&oleWindow));
    if (oleWindow) oleWindow->GetWindow(&window), oleWindow->Release();
    return window;
  }

  // A page of the copy for the control, activated in a window of ours with
  // `language` chosen; `inspect` reads its dialog.
  void ShowPageIn(REFCLSID clsid, const wchar_t* language, const std::function<void(HWND)>& inspect) {
    auto getClassObject = reinterpret_cast<HRESULT(WINAPI*)(REFCLSID, REFIID, void**)>(
        reinterpret_cast<void*>(GetProcAddress(module, "DllGetClassObject")));
    IClassFactory* factory = nullptr;
    ASSERT_EQ(getClassObject(clsid, IID_IClassFactory, reinterpret_cast<void**>(&factory)), S_OK);
    IPropertyPage* page = nullptr;
    ASSERT_EQ(factory->CreateInstance(nullptr, IID_IPropertyPage, reinterpret_cast<void**>(&page)), S_OK);
    factory->Release();
    IUnknown* objects[] = {graph};
    page->SetObjects(1, objects);
    frame = CreateWindowExW(0, L"STATIC", L"host", WS_OVERLAPPEDWINDOW, 0, 0, 640, 480, nullptr, nullptr,
                            nullptr, nullptr);
    Choose(language);
    RECT place{0, 0, 500, 300};
    EXPECT_EQ(page->Activate(frame, &place, TRUE), S_OK);
    inspect(GetWindow(frame, GW_CHILD));
    page->Deactivate();
    page->SetObjects(0, nullptr);
    page->Release();
  }

  static HMODULE module;
  IVX_Graph* graph = nullptr;
  IUnknown* container = nullptr;
  HWND frame = nullptr;
};
HMODULE LanguageTest::module = nullptr;

TEST_F(LanguageTest, EachTextComesFromTheFirstSourceThatHasIt) {
  const std::wstring ownBadZoom = L"BAD Zoom rectangle - REAL(left, right, bottom, top)";
  // Loaded in English: the default library first, then the module's own table.
  EXPECT_EQ(Messages(), (std::vector<std::wstring>{L"EN library: axis 7 is missing",
                                                   L"EN library: dataset 8 is missing", ownBadZoom}));
  // German where the German library has the text, else as before.
  Choose(L"DE");
  EXPECT_EQ(Messages(), (std::vector<std::wstring>{L"Achse mit id = 7 fehlt", L"EN library: dataset 8 is missing",
                                                   ownBadZoom}));
  // A name shorter than two characters keeps the language.
  Choose(L"E");
  EXPECT_EQ(Messages()[0], L"Achse mit id = 7 fehlt");
  // French is shipped under the second file name.
  Choose(L"FR");
  EXPECT_EQ(Messages()[0], L"L'axe 7 n'existe pas");
  // A language without a library, and English again, fall back alike.
  for (const wchar_t* language : {L"IT", L"EN"}) {
    Choose(language);
    EXPECT_EQ(Messages()[0], L"EN library: axis 7 is missing") << language;
  }
}

TEST_F(LanguageTest, MenusAndMessageBoxesSpeakTheLanguage) {
  HWND window = Host();
  ASSERT_TRUE(IsWindow(window));
  // Outside the plot: the axes' item from the own table, the hairline's from
  // the default library.
  EXPECT_EQ(ContextMenuAt(window, 5, 295), (std::vector<MenuItemSeen>{{426, L"Axes Properties...", false},
                                                                      {0, L"", false},
                                                                      {316, L"EN library: hairline here", true}}));
  Choose(L"DE");
  EXPECT_EQ(ContextMenuAt(window, 5, 295)[2].text, L"&Haarlinie hier");

  // The arrow keys without a hairline say so in a box whose button is
  // relabelled from the language library.
  std::wstring caption, message, button;
  WhenDialogOpens([&](HWND box) {
    caption = WindowText(box);
    button = ItemText(box, IDOK);
    PostMessageW(box, WM_COMMAND, IDOK, 0);
  });
  SendMessageW(window, WM_KEYDOWN, VK_LEFT, 0);
  EXPECT_EQ(caption, L"Haarlinie einrasten");
  EXPECT_EQ(button, L"Gut");
}

// The graph settings page of the same copy, activated in a window of ours:
// labels and list items come from the first source that has them.
TEST_F(LanguageTest, TheSettingsPageSpeaksTheLanguage) {
  ShowPageIn(kGraphPageClsid, L"DE", [&](HWND dialog) {
    auto item = [&](int list, int index) {
      wchar_t text[64] = L"";
      SendDlgItemMessageW(dialog, list, CB_GETLBTEXT, WPARAM(index), LPARAM(text));
      return std::wstring(text);
    };
    EXPECT_EQ(ItemText(dialog, 350), L"&Links:");
    EXPECT_EQ(ItemText(dialog, 360), L"Le&gende zeigen");
    EXPECT_EQ(ItemText(dialog, 366), L"EN library: scroll bars");
    EXPECT_EQ(ItemText(dialog, 351), L"&Right:");
    EXPECT_EQ(item(ZEL_MOUSE_MODE, 0), L"Markieren");
    EXPECT_EQ(item(ZEL_MOUSE_MODE, 1), L"Pan");
    EXPECT_EQ(ItemText(dialog, ZEL_MARGIN_LEFT), L"10") << "fields keep their values";
  });
}

// In the marking language every text reads "[id]". Every label, group box,
// check box and list item of the three pages must show it, while fields
// (ids from 1000 up) keep what they hold, the axis buttons' symbols too.
TEST_F(LanguageTest, EveryLabelOfThePagesComesFromTheTextTable) {
  auto marked = [](const std::wstring& text) {
    return text.size() > 2 && text.front() == L'[' && text.back() == L']' &&
           text.find_first_not_of(L"0123456789", 1) == text.size() - 1;
  };
  for (const GUID* page : {&kGraphPageClsid, &kAxesPageClsid, &kCurvePageClsid}) {
    ShowPageIn(*page, L"XX", [&](HWND dialog) {
      int labels = 0;
      for (HWND child = GetWindow(dialog, GW_CHILD); child; child = GetWindow(child, GW_HWNDNEXT)) {
        int id = GetDlgCtrlID(child);
        if (id > 0 && id < 1000) {
          EXPECT_EQ(WindowText(child), L"[" + std::to_wstring(id) + L"]");
          ++labels;
        }
        wchar_t kind[16] = L"";
        GetClassNameW(child, kind, 16);
        if (_wcsicmp(kind, L"ComboBox") != 0) continue;
        auto count = SendMessageW(child, CB_GETCOUNT, 0, 0);
        for (WPARAM i = 0; i < WPARAM(count); ++i) {
          wchar_t item[64] = L"";
          SendMessageW(child, CB_GETLBTEXT, i, LPARAM(item));
          EXPECT_TRUE(marked(item)) << id << ": " << item;
        }
      }
      EXPECT_GT(labels, 10);
      if (page == &kAxesPageClsid) {
        EXPECT_EQ(ItemText(dialog, ZEL_AXIS_Y1), L"Y&1");
      }
    });
  }
}

}  // namespace
}  // namespace zel::testing

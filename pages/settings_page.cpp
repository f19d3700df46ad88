#include "pages/settings_page.h"

#include <commctrl.h>
#include <prsht.h>

#include <cwchar>

#include "control/hooked_message_boxes.h"
#include "control/localized_windows.h"
#include "control/module.h"
#include "pages/color_swatch.h"
#include "util/texts.h"

namespace zel {
namespace {

constexpr UINT_PTR kFrameSubclassId = 0x5A45;

LPCWSTR Wide(const Text& text) { return reinterpret_cast<LPCWSTR>(text.c_str()); }

// The page's tab text, allocated for the frame to free.
LPOLESTR TaskText(int id) {
  Text text = LookupText(id);
  auto* copy = static_cast<LPOLESTR>(CoTaskMemAlloc((text.size() + 1) * sizeof(wchar_t)));
  if (copy) std::copy(text.c_str(), text.c_str() + text.size() + 1, reinterpret_cast<char16_t*>(copy));
  return copy;
}

// A label's words, as a message names the field: without the mnemonic
// marker and the closing colon.
Text LabelWords(int labelId) {
  Text words;
  for (char16_t c : LookupText(labelId))
    if (c != u'&') words += c;
  while (!words.empty() && (words.back() == u':' || words.back() == u' ')) words.pop_back();
  return words;
}

// Whole numbers only: an optional sign and digits, blanks around them.
bool ParseWhole(const std::wstring& text, long& number) {
  const wchar_t* start = text.c_str();
  while (*start == L' ') ++start;
  wchar_t* end = nullptr;
  errno = 0;
  number = std::wcstol(start, &end, 10);
  if (end == start || errno == ERANGE) return false;
  while (*end == L' ') ++end;
  return *end == 0;
}

bool IsInputField(HWND child) {
  wchar_t name[32] = L"";
  GetClassNameW(child, name, 32);
  return _wcsicmp(name, L"Static") != 0 && (GetWindowLongW(child, GWL_STYLE) & 0x0F) != BS_GROUPBOX;
}


}  // namespace

CSettingsPage::CSettingsPage(int titleId, int dialogId) : titleId_(titleId), dialogId_(dialogId) { LockModule(); }

CSettingsPage::~CSettingsPage() {
  Deactivate();
  UnlockModule();
}

STDMETHODIMP CSettingsPage::QueryInterface(REFIID iid, void** object) {
  return QueryFromTable(iid, object, {{IID_IUnknown, this}, {IID_IPropertyPage, this}});
}

STDMETHODIMP_(ULONG) CSettingsPage::AddRef() { return InterlockedIncrement(&refs_); }

STDMETHODIMP_(ULONG) CSettingsPage::Release() {
  LONG refs = InterlockedDecrement(&refs_);
  if (refs == 0) delete this;
  return ULONG(refs);
}

STDMETHODIMP CSettingsPage::SetPageSite(IPropertyPageSite* site) {
  site_ = site;
  return S_OK;
}

// Takes the first object that is a graph control; none (or no objects)
// leaves the page without a control, and it shows nothing.
STDMETHODIMP CSettingsPage::SetObjects(ULONG count, IUnknown** objects) {
  if (count > 0 && !objects) return E_POINTER;
  graph_ = nullptr;
  dirty_ = false;
  for (ULONG i = 0; i < count && !graph_; ++i)
    if (objects[i]) objects[i]->QueryInterface(IID_IVX_Graph, reinterpret_cast<void**>(graph_.put()));
  if (window_) Refill();
  return S_OK;
}

STDMETHODIMP CSettingsPage::Activate(HWND parent, LPCRECT place, BOOL) {
  if (!place) return E_POINTER;
  if (window_) return E_UNEXPECTED;
  ColorSwatch::Register(ModuleInstance());
  window_ = CreateDialogParamW(ModuleInstance(), MAKEINTRESOURCEW(dialogId_), parent, DialogProc, LPARAM(this));
  if (!window_) return E_FAIL;
  parent_ = parent;
  SetWindowSubclass(parent_, FrameSubclass, kFrameSubclassId, DWORD_PTR(this));
  Move(place);
  RelabelDialog(window_);
  filling_ = true;
  Prepare();
  filling_ = false;
  Refill();
  return S_OK;
}

STDMETHODIMP CSettingsPage::Deactivate() {
  if (parent_) RemoveWindowSubclass(parent_, FrameSubclass, kFrameSubclassId);
  if (window_) DestroyWindow(window_);
  window_ = parent_ = nullptr;
  sheetDriven_ = false;
  return S_OK;
}

STDMETHODIMP CSettingsPage::GetPageInfo(PROPPAGEINFO* info) {
  if (!info) return E_POINTER;
  *info = {sizeof *info, TaskText(titleId_), TemplateSize(), nullptr, nullptr, 0};
  return S_OK;
}

STDMETHODIMP CSettingsPage::Show(UINT show) {
  if (window_) ShowWindow(window_, int(show));
  return S_OK;
}

STDMETHODIMP CSettingsPage::Move(LPCRECT place) {
  if (!place) return E_POINTER;
  if (window_) MoveWindow(window_, place->left, place->top, place->right - place->left, place->bottom - place->top, TRUE);
  return S_OK;
}

STDMETHODIMP CSettingsPage::IsPageDirty() { return dirty_ && !readOnly_ ? S_OK : S_FALSE; }

STDMETHODIMP CSettingsPage::Apply() {
  if (!window_ || !graph_ || !dirty_ || readOnly_) return S_OK;
  try {
    Check();
  } catch (const FieldError& error) {
    ShowFieldError(error);
    return E_FAIL;
  }
  try {
    Write();
  } catch (const EntryRefused&) {
    ShowEntryError();
    return E_FAIL;
  }
  dirty_ = false;
  if (site_) site_->OnStatusChange(PROPPAGESTATUS_VALIDATE);
  Refill();
  return S_OK;
}

STDMETHODIMP CSettingsPage::Help(LPCOLESTR) { return E_NOTIMPL; }

STDMETHODIMP CSettingsPage::TranslateAccelerator(MSG* message) {
  if (!message || !window_) return S_FALSE;
  if (message->hwnd != window_ && !IsChild(window_, message->hwnd)) return S_FALSE;
  return IsDialogMessageW(window_, message) ? S_OK : S_FALSE;
}

void CSettingsPage::Expect(HRESULT status) {
  if (FAILED(status)) throw EntryRefused{status};
}

void CSettingsPage::AddListItems(int combo, std::initializer_list<int> textIds) const {
  for (int id : textIds) SendDlgItemMessageW(window_, combo, CB_ADDSTRING, 0, LPARAM(Wide(LookupText(id))));
}

int CSettingsPage::Selected(int combo) const { return int(SendDlgItemMessageW(window_, combo, CB_GETCURSEL, 0, 0)); }
void CSettingsPage::Select(int combo, int index) const { SendDlgItemMessageW(window_, combo, CB_SETCURSEL, WPARAM(index), 0); }
bool CSettingsPage::Checked(int button) const { return IsDlgButtonChecked(window_, button) == BST_CHECKED; }
void CSettingsPage::SetChecked(int button, bool checked) const {
  CheckDlgButton(window_, button, checked ? BST_CHECKED : BST_UNCHECKED);
}

Text CSettingsPage::FieldText(int control) const {
  wchar_t text[256] = L"";
  GetDlgItemTextW(window_, control, text, 256);
  return Text(reinterpret_cast<const char16_t*>(text));
}

void CSettingsPage::SetFieldText(int control, TextView text) const {
  SetDlgItemTextW(window_, control, Wide(Text(text)));
}

void CSettingsPage::SetNumber(int control, long number) const {
  SetDlgItemTextW(window_, control, std::to_wstring(number).c_str());
}

long CSettingsPage::Number(int control, int label, long low, long high, int message) const {
  Text text = FieldText(control);
  long number = 0;
  if (!ParseWhole(std::wstring(text.begin(), text.end()), number) || number < low || number > high)
    throw FieldError{control, label, message};
  return number;
}

OLE_COLOR CSettingsPage::Color(int swatch) const {
  return OLE_COLOR(SendDlgItemMessageW(window_, swatch, ColorSwatch::kGetColor, 0, 0));
}
void CSettingsPage::SetColor(int swatch, OLE_COLOR color) const {
  SendDlgItemMessageW(window_, swatch, ColorSwatch::kSetColor, WPARAM(color), 0);
}

// The first change enables the frame's Apply: through the page site, and
// for the common property sheet through PSM_CHANGED.
void CSettingsPage::MarkDirty() {
  if (dirty_ || readOnly_) return;
  dirty_ = true;
  if (site_) site_->OnStatusChange(PROPPAGESTATUS_DIRTY);
  if (sheetDriven_) SendMessageW(GetParent(parent_), PSM_CHANGED, WPARAM(parent_), 0);
}

INT_PTR CALLBACK CSettingsPage::DialogProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
  if (message == WM_INITDIALOG) {
    SetWindowLongPtrW(window, DWLP_USER, lParam);
    return FALSE;
  }
  auto* page = reinterpret_cast<CSettingsPage*>(GetWindowLongPtrW(window, DWLP_USER));
  if (message != WM_COMMAND || !page || !lParam) return FALSE;
  page->OnCommand(LOWORD(wParam), HIWORD(wParam));
  return TRUE;
}

// Changes the operator makes; those made while filling the page are not,
// nor is showing another axis or curve.
void CSettingsPage::OnCommand(int control, WORD code) {
  if (filling_) return;
  if (IsViewChoice(control)) {
    filling_ = true;
    OnFieldCommand(control, code);
    filling_ = false;
    return;
  }
  bool change = code == EN_CHANGE || code == BN_CLICKED || code == CBN_SELCHANGE || code == ColorSwatch::kColorChanged;
  if (change) MarkDirty();
  OnFieldCommand(control, code);
}

// The common property sheet announces itself to its pages with PSN_SETACTIVE
// and asks for their changes with PSN_APPLY; a refused Apply keeps the sheet
// open on this page.
LRESULT CALLBACK CSettingsPage::FrameSubclass(HWND window, UINT message, WPARAM wParam, LPARAM lParam, UINT_PTR,
                                              DWORD_PTR self) {
  auto* page = reinterpret_cast<CSettingsPage*>(self);
  UINT code = message == WM_NOTIFY && lParam ? reinterpret_cast<NMHDR*>(lParam)->code : 0;
  if (code == PSN_APPLY) return SUCCEEDED(page->Apply()) ? PSNRET_NOERROR : PSNRET_INVALID_NOCHANGEPAGE;
  if (code == PSN_SETACTIVE) page->OnSheetActive();
  return DefSubclassProc(window, message, wParam, lParam);
}

void CSettingsPage::OnSheetActive() {
  sheetDriven_ = true;
  if (dirty_) SendMessageW(GetParent(parent_), PSM_CHANGED, WPARAM(parent_), 0);
}

// The control's values into the fields, read-only when the control allows
// no changes.
void CSettingsPage::Refill() {
  if (!graph_) return;
  LONG allowed = 0;
  graph_->get_PropertiesModificationAllowed(&allowed);
  readOnly_ = allowed == 0;
  filling_ = true;
  Fill();
  filling_ = false;
  dirty_ = false;
  if (readOnly_) LockFields();
}

void CSettingsPage::LockFields() { EnumChildWindows(window_, LockField, LPARAM(this)); }

BOOL CALLBACK CSettingsPage::LockField(HWND child, LPARAM self) {
  auto* page = reinterpret_cast<CSettingsPage*>(self);
  if (IsInputField(child) && !page->IsViewChoice(GetDlgCtrlID(child))) EnableWindow(child, FALSE);
  return TRUE;
}

void CSettingsPage::ShowFieldError(const FieldError& error) {
  Text words = LabelWords(error.label);
  CHookedMessageBoxes::ShowError(window_, titleId_, error.message, TextView(words));
  SetFocus(Item(error.control));
  SendDlgItemMessageW(window_, error.control, EM_SETSEL, 0, -1);
}

// The control's own message for what it refused.
void CSettingsPage::ShowEntryError() {
  IErrorInfo* info = nullptr;
  BSTR description = nullptr;
  if (GetErrorInfo(0, &info) == S_OK && info) info->GetDescription(&description), info->Release();
  Text message = description ? Text(reinterpret_cast<const char16_t*>(description)) : LookupText(titleId_);
  SysFreeString(description);
  Text caption = LookupText(titleId_);
  CHookedMessageBoxes::Show(window_, message, caption, MB_OK | MB_ICONERROR);
}

// The template's size in pixels, measured on a hidden copy: the frame sizes
// its tab from it before the page is activated.
SIZE CSettingsPage::TemplateSize() const {
  ColorSwatch::Register(ModuleInstance());
  HWND copy = CreateDialogParamW(ModuleInstance(), MAKEINTRESOURCEW(dialogId_), HWND_MESSAGE, DialogProc, 0);
  RECT box{0, 0, 0, 0};
  if (copy) GetWindowRect(copy, &box), DestroyWindow(copy);
  return {box.right - box.left, box.bottom - box.top};
}

}  // namespace zel

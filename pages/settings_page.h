#pragma once
// The part every settings page shares: the property-page protocol over a
// dialog template of the module (DS_CONTROL | WS_CHILD), relabelled from the
// text table. A page reads and writes the graph only through the control's
// automation interface, so it is held to the same checks as any host.
//
// A page derives from CSettingsPage and fills in four hooks:
//   Prepare()  once the dialog exists: list items, text limits;
//   Fill()     the control's values into the fields;
//   Check()    throws FieldError for the first field the control would refuse
//              or that cannot be read; nothing is written before all pass;
//   Write()    the fields through the control's entries.
// The base marks the page dirty on the first change the operator makes
// (edit text, a click, a list choice, a new colour), tells the frame, and
// keeps the page read-only while PropertiesModificationAllowed is 0.
#include <windows.h>
#include <ocidl.h>

#include <initializer_list>

#include "control/com_support.h"
#include "util/text.h"
#include "zelgraph_idl.h"

namespace zel {

// A field the page cannot write: its control, the text id of its label, and
// the message whose one %s takes the label's words.
struct FieldError {
  int control;
  int label;
  int message;
};

// An entry of the control refused what a page wrote; its error information
// holds the message.
struct EntryRefused {
  HRESULT status;
};

class CSettingsPage : public IPropertyPage {
 public:
  STDMETHODIMP QueryInterface(REFIID iid, void** object) override;
  STDMETHODIMP_(ULONG) AddRef() override;
  STDMETHODIMP_(ULONG) Release() override;

  STDMETHODIMP SetPageSite(IPropertyPageSite* site) override;
  STDMETHODIMP Activate(HWND parent, LPCRECT place, BOOL modal) override;
  STDMETHODIMP Deactivate() override;
  STDMETHODIMP GetPageInfo(PROPPAGEINFO* info) override;
  STDMETHODIMP SetObjects(ULONG count, IUnknown** objects) override;
  STDMETHODIMP Show(UINT show) override;
  STDMETHODIMP Move(LPCRECT place) override;
  STDMETHODIMP IsPageDirty() override;
  // Checks every field, then writes them all; a bad field is named in a
  // message box, gets the focus, and nothing is written (E_FAIL).
  STDMETHODIMP Apply() override;
  STDMETHODIMP Help(LPCOLESTR) override;
  // Tab, arrow keys and mnemonics inside the page.
  STDMETHODIMP TranslateAccelerator(MSG* message) override;

  // For Write: throws EntryRefused when an entry of the control failed.
  static void Expect(HRESULT status);

 protected:
  // `titleId` is the text id of the page's tab, `dialogId` its template.
  CSettingsPage(int titleId, int dialogId);
  virtual ~CSettingsPage();

  virtual void Prepare() {}
  virtual void Fill() = 0;
  virtual void Check() const {}
  virtual void Write() = 0;
  // A command from a field, after the base has noted the change: pages
  // enable or disable dependent fields here.
  virtual void OnFieldCommand(int /*control*/, WORD /*code*/) {}
  // Whether `control` chooses which axis or curve the page shows. Choosing
  // changes nothing in the graph: it neither marks the page dirty nor is
  // locked in read-only mode, so every item can still be looked at.
  virtual bool IsViewChoice(int /*control*/) const { return false; }

  // The control; valid from SetObjects on (hooks run only then).
  IVX_Graph& graph() const { return *graph_.get(); }
  HWND dialog() const { return window_; }
  HWND Item(int control) const { return GetDlgItem(window_, control); }
  bool readOnly() const { return readOnly_; }

  // Field helpers for the hooks.
  void AddListItems(int combo, std::initializer_list<int> textIds) const;
  int Selected(int combo) const;
  void Select(int combo, int index) const;
  bool Checked(int button) const;
  void SetChecked(int button, bool checked) const;
  Text FieldText(int control) const;
  void SetFieldText(int control, TextView text) const;
  void SetNumber(int control, long number) const;
  // The field as a whole number within [low, high], else FieldError.
  long Number(int control, int label, long low, long high, int message) const;
  OLE_COLOR Color(int swatch) const;
  void SetColor(int swatch, OLE_COLOR color) const;
  // The page's changes count as made (the operator's edits do this).
  void MarkDirty();

 private:
  static INT_PTR CALLBACK DialogProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
  static LRESULT CALLBACK FrameSubclass(HWND window, UINT message, WPARAM wParam, LPARAM lParam,
                                        UINT_PTR id, DWORD_PTR self);
  void OnCommand(int control, WORD code);
  void OnSheetActive();
  void Refill();
  void LockFields();
  static BOOL CALLBACK LockField(HWND child, LPARAM self);
  void ShowFieldError(const FieldError& error);
  void ShowEntryError();
  SIZE TemplateSize() const;

  LONG refs_ = 1;
  int titleId_;
  int dialogId_;
  ComPtr<IPropertyPageSite> site_;
  ComPtr<IVX_Graph> graph_;
  HWND window_ = nullptr;
  HWND parent_ = nullptr;
  bool dirty_ = false;
  bool filling_ = false;
  bool readOnly_ = true;
  // Set when the parent is a page of the common property sheet, which
  // speaks notifications (PSN_APPLY, PSM_CHANGED) instead of calling Apply.
  bool sheetDriven_ = false;
};

// Class objects' creators for the three pages.
HRESULT CreateGraphSettingsPage(IUnknown* outer, REFIID iid, void** object);
HRESULT CreateAxesPage(IUnknown* outer, REFIID iid, void** object);
HRESULT CreateCurvePage(IUnknown* outer, REFIID iid, void** object);

}  // namespace zel

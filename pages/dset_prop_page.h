#pragma once
// The "Curve Properties" page: one curve at a time, chosen by its title, with
// its type, Y axis, line, marker and fill; and the graph's bar width.
#include <vector>

#include "control/prompt_message.h"
#include "pages/settings_page.h"

namespace zel {

class CDSetPropPage final : public CSettingsPage {
 public:
  CDSetPropPage();

 private:
  // One curve's look as the page shows it; lists hold the index of their item.
  struct Look {
    int type = -1;        // PLOT, AREA, BAR, STACKED BAR; -1 for a pie
    int yAxis = 0;        // Y1..Y4
    int lineStyle = 0;    // SOLID, DASHED, DOTTED
    Text lineWidth;       // as typed: checked only on Apply
    OLE_COLOR lineColor = 0;
    int markerShape = 4;  // BOX, DOT, TRIANGLE, DIAMOND, NONE
    OLE_COLOR markerColor = 0;
    OLE_COLOR fillColor = 0;
    int fillTo = 0;       // X_AXES, Y_AXES, CURVE
    LONG fillCurveId = 0;
    bool useGlobal = false;
    bool operator==(const Look&) const = default;
  };
  struct Curve {
    LONG id = 0;
    Text title;
    Look shown;   // as read from the control
    Look edited;  // the operator's version, kept while another curve is shown
  };

  void Prepare() override;
  void Fill() override;
  void Check() const override;
  void Write() override;
  void OnFieldCommand(int control, WORD code) override;
  bool IsViewChoice(int control) const override;

  void ReadCurves();
  Look ReadLook(LONG id) const;
  // The curve to show first: the one the frame was opened for, else the
  // one shown before, else the first.
  int StartingCurve() const;
  void ShowCurve(int index);
  Look FieldsLook() const;
  void FillReferenceList(int index) const;
  void WriteCurve(const Curve& curve) const;
  void WriteBarWidth() const;
  void EnableFields() const;
  void OnLineColorChanged() const;
  // The notes' flags: the control's when it keeps them, else this page's.
  CPromptMsg& Prompts() const;

  std::vector<Curve> curves_;
  int current_ = -1;
  LONG currentId_ = -1;  // kept across refills, so Apply stays on the curve
  LONG barWidth_ = -1;   // as read; -1 is Auto Width
  mutable CPromptMsg ownPrompts_;
};

}  // namespace zel

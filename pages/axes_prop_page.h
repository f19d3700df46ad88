#pragma once
// The "Axes Properties" page: for the first X axis and the first four Y axes,
// the scale, the grid, the title and the split flags; the unit names of the
// Y axes and the flag for common Y-axis settings.
#include <array>

#include "pages/settings_page.h"

namespace zel {

class CAxesPropPage final : public CSettingsPage {
 public:
  CAxesPropPage();

  // The axes the page offers: X, then Y1 to Y4.
  static constexpr int kAxisCount = 5;

 private:
  // One axis as the page shows it; range and width as typed, so that an
  // axis left for another keeps what the operator entered.
  struct AxisFields {
    bool autoScale = false;
    Text min, max;
    int gridMode = 0;   // NONE, ANNOTATION, TICK
    int gridStyle = 0;  // SOLID, DASHED, DOTTED
    Text gridWidth;
    OLE_COLOR gridColor = 0;
    Text title;
    bool operator==(const AxisFields&) const = default;
  };
  // Which axis stands behind a choice: its id and type code (-1: none).
  struct AxisSlot {
    LONG id = 0;
    LONG type = -1;
    int side = -1;  // placement code, shown but not changed
    bool present() const { return type >= 0; }
  };
  struct Settings {
    std::array<AxisFields, kAxisCount> axes;
    std::array<bool, 3> split{};  // Y2, Y3, Y4
    std::array<Text, 4> units;
    bool common = false;
  };

  void Prepare() override;
  void Fill() override;
  void Check() const override;
  void Write() override;
  void OnFieldCommand(int control, WORD code) override;
  bool IsViewChoice(int control) const override;

  void FindAxes();
  Settings ReadControl() const;
  AxisFields ReadAxis(int slot) const;
  // The operator's edits, with those of the axis on view read from its fields.
  Settings Wanted() const;
  AxisFields ReadAxisFields() const;
  void ShowAxis(int slot) const;
  void EnableAxisFields() const;
  // Throws FieldError for the first field of `slot` the control would refuse;
  // the page then shows that axis so the message points at a visible field.
  void CheckAxis(int slot, const AxisFields& wanted) const;
  void WriteAxis(int slot, const AxisFields& wanted) const;
  void WriteShared(const Settings& wanted) const;

  std::array<AxisSlot, kAxisCount> slots_;
  Settings shown_;
  // Edits of the axes not on view; Check moves the view to a bad field.
  mutable Settings edits_;
  mutable int current_ = -1;
};

}  // namespace zel

#pragma once
// The "Graph Settings" page: margins, mouse mode, legend, scroll bars, grid,
// colours and the hairline snapping bound.
#include <array>

#include "pages/settings_page.h"

namespace zel {

class CVX_GraphPropPage final : public CSettingsPage {
 public:
  CVX_GraphPropPage();

 private:
  // What the page shows, in the control's terms; lists hold the index of
  // their item.
  struct Settings {
    std::array<long, 4> margins{};  // left, right, bottom, top
    int mouseMode = 3;              // SELECT, PAN, ZOOM, NONE
    bool legend = false;
    int legendPosition = 3;         // RIGHT, TOP, LEFT, BOTTOM
    bool horizontalScrollbar = false;
    bool verticalScrollbar = false;
    int gridLines = 0;              // none, X, Y, both
    OLE_COLOR gridColor = 0;
    OLE_COLOR backColor = 0;
    long snapBound = 0;
    bool operator==(const Settings&) const = default;
  };

  void Prepare() override;
  void Fill() override;
  void Check() const override;
  void Write() override;
  void OnFieldCommand(int control, WORD code) override;

  // Also keeps the grid words the page does not show.
  Settings ReadControl();
  // The fields; FieldError for the first that cannot be written.
  Settings ReadFields() const;
  void ShowSettings(const Settings& settings) const;
  void WriteMargins(const Settings& wanted) const;
  void WriteModes(const Settings& wanted) const;
  void WriteGridAndColors(const Settings& wanted) const;
  void EnableLegendPosition() const;

  // As filled: only what the operator changed is written, so what the page
  // cannot express (other grid words, a legend position kept while the
  // legend is hidden) stays as it was.
  Settings shown_;
  std::array<short, 3> gridWords_{};
};

}  // namespace zel

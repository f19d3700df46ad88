#pragma once
// How a dataset looks in one drawing pass: its pen width (scaled for a
// printer, one wider when highlighted) and its colours (inverted on every
// second pass while highlighted, so that the curve blinks).
#include <array>
#include <cstdint>

#include "engine/dataset_keywords.h"
#include "engine/surface.h"

namespace zel {

class VDataset;

struct CurveLook {
  int penWidth = 1;
  Color line = 0, fill = 0, marker = 0;
  // The marker colours of points of status 1, 2 and 9.
  std::array<Color, 3> status{};
};

// `printerScale` multiplies the width (then truncated); pass 1 on screens.
// A highlighted PLOT or AREA curve takes lineWidth + 1 and flips the
// process-wide curve toggle; when the toggle was set before, its line, fill
// and marker colours are inverted. Other types are never drawn highlighted
// here (bars have their own toggle, BarColor).
CurveLook LookOf(const VDataset& dataset, DatasetType typeDrawn, const std::array<int32_t, 4>& statusColors,
                 double printerScale, bool highlighted);

// The fill of a bar: the line colour; a highlighted draw flips the
// process-wide bar toggle and inverts the colour when it was set before.
Color BarColor(const VDataset& dataset, bool highlighted);

}  // namespace zel

#pragma once
// The properties record of a dataset (the automation record DatasetProps) as
// the engine takes and gives it. Texts the host may leave null are optional;
// a colour is empty when the host's colour could not be translated.
#include <cstdint>
#include <optional>

#include "engine/axis_props.h"
#include "util/text.h"

namespace zel {

struct DatasetProps {
  std::optional<Text> title;
  std::optional<Text> lineStyle;    // "SOLID", "DASHED", "DOTTED"
  std::optional<Text> markerShape;  // "DOT", "BOX", "TRIANGLE", "DIAMOND", "NONE"
  std::optional<Text> titleFont;    // font specifications
  std::optional<Text> textFont;
  int16_t realXbarMode = 0;
  int16_t lineWidth = 0;
  std::optional<Color> lineColor;
  std::optional<Color> fillColor;
  std::optional<Color> markerColor;
  std::optional<Color> titleColor;
  std::optional<Color> textColor;
  std::optional<Color> manualColor;
  std::optional<Text> type;    // "PLOT", "AREA", "BAR", "STACKED BAR", "PIE"
  std::optional<Text> fillTo;  // "X_AXES", "Y_AXES", "CURVE"
  int32_t fillCurveId = 0;
  int16_t YaxisID = 0;
  int32_t bUseGlb = 0;
};

}  // namespace zel

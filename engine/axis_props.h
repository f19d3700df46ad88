#pragma once
// The properties record of an axis (the automation record AxisProps) as the
// engine takes and gives it. Texts that the host may leave null are
// optional; a colour is empty when the host's colour could not be translated.
#include <cstdint>
#include <optional>

#include "util/text.h"
#include "util/value.h"

namespace zel {

using Color = uint32_t;  // 0x00BBGGRR

struct AxisProps {
  Value min;                  // converted to the axis's type
  Value max;
  Value annotationIncrement;  // converted to R4
  Value tickIncrement;
  std::optional<Color> axisColor;
  std::optional<Text> annotationFormat;  // ignored on set
  std::optional<Text> timeUnit;          // "SECOND" ... "YEAR"
  std::optional<Text> title;
  std::optional<Text> titlePosition;  // "LEFT"/"BOTTOM", "RIGHT"/"TOP", "CENTER"
  std::optional<Text> axisFont;       // font specifications
  std::optional<Text> annotationFont;
  std::optional<Text> gridMode;   // "ANNOTATION", "TICK"
  std::optional<Text> gridStyle;  // "SOLID", "DASHED", "DOTTED"
  int16_t gridWidth = 0;
  std::optional<Color> gridColor;
  int32_t bAutoScale = 0;
  int32_t fntgridColor = 0;
  int32_t gridEnabdle = 0;
  int32_t YaxisPos = 0;
};

}  // namespace zel

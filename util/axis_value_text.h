#pragma once
// The label text of one axis value, and the sample texts whose extent an axis
// reserves for its labels.
#include <optional>
#include <vector>

#include "util/axis_type.h"
#include "util/text.h"

namespace zel {

// Labels of the categories of a DISCRETE axis, by category; an unset entry
// has no label.
using CategoryLabels = std::vector<std::optional<Text>>;

// What the label of an axis value depends on.
struct AxisLabelFormat {
  AxisType type = kAxisInteger;
  TextView annotationFormat;                     // REAL and TIME axes
  const CategoryLabels* categoryLabels = nullptr;  // DISCRETE axes, may be null
};

// The label of `value` on an axis:
//   INTEGER  "%d" of the value truncated toward zero;
//   REAL     the annotation format as a printf conversion, "%f" where that
//            prints nothing or more than 63 characters;
//   DISCRETE the category label at the truncated value, a blank when unset;
//   TIME     wcsftime of the annotation format, falling back to "%H:%M" and
//            then "####"; years before 1901 show as 1901. A "%%d" in the
//            format marks where the milliseconds go, in steps of 5 ms.
//   other    "####".
Text FormatAxisValue(const AxisLabelFormat& axis, double value);

struct LabelExtentSample {
  std::vector<Text> texts;  // measure each; the widest sets the room
  int lineCount = 1;        // lines of a TIME label, at most 5
};

// The texts an axis measures to size its labels: the "%d" texts of the ends
// of an INTEGER axis, that of the maximum of a DISCRETE one, the formatted
// ends of a REAL one (with "2.3f" in place of a format over 15 characters),
// and for a TIME axis the date 1899-12-31 00:00 in its format (or "%H:%M").
LabelExtentSample LabelExtentTexts(const AxisLabelFormat& axis, double min, double max);

}  // namespace zel

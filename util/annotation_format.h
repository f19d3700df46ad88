#pragma once
// The annotation formats of axes: which format the labels of an axis use,
// chosen from the distance between two labels, and the date and time parts
// of the graph's date-time format.
#include "util/axis_type.h"
#include "util/text.h"

namespace zel {

// The annotation format for an axis of `axisType` whose labels are
// `annotationStep` apart (counted in time units of `timeUnitLength` days for
// TIME axes). REAL axes get a printf conversion without its "%" ("1.3e",
// "2.3f", "3.1f"), TIME axes a wcsftime format, INTEGER and DISCRETE axes
// none (an empty text).
//
// TIME formats follow the process's report type and date-time format. Once a
// non-empty date-time format has been seen here, formats keep being derived
// from it for the rest of the process, even after it is emptied again.
Text ChooseAnnotationFormat(AxisType axisType, float annotationStep, float timeUnitLength);

// The directives of the date part (%m %d %Y %y %B %b) or the time part
// (%H %M %I %S %p) of a format, each after the character that followed the
// previous directive of the same part in the format. Without any, "%Y-%m-%d"
// and "%H:%M:%S".
Text DatePartOfFormat(TextView format);
Text TimePartOfFormat(TextView format);

// The date part alone when `dateOnly`, otherwise the time part, a line feed
// and the date part.
Text SplitDateTimeFormat(TextView format, bool dateOnly);

}  // namespace zel

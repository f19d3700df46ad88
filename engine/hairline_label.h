#pragma once
// The value label of a hairline: the X axis's value where the line stands,
// as the axis writes it, with the report types' rounding.
#include "util/text.h"

namespace zel {

class VAxis;

// The text for `value` on `axis` under the process's report type: above 0,
// a fraction that prints as "0.98", "0.99" or "1.00", or is 0.9 or more,
// goes up to the next whole unit, so the label never shows one unit too
// few; report type 3 writes the whole number alone. Line breaks become
// blanks.
Text HairlineLabel(const VAxis& axis, double value, int reportType);

}  // namespace zel

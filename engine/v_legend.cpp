#include "engine/v_legend.h"

namespace zel {

int32_t VLegend::Measure(Surface&, int32_t, int32_t, double) const { return 0; }

void VLegend::Draw(Surface&, double) const {}

}  // namespace zel

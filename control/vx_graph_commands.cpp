// The context menu's commands and the highlight timer.
#include "control/hooked_message_boxes.h"
#include "control/vx_graph.h"
#include "interaction/hairline_intersection.h"
#include "util/text_ids.h"
#include "util/texts.h"

namespace zel {
namespace {

constexpr UINT kHairlineHere = 316;

}  // namespace

bool CVX_Graph::OnCommand(UINT id) {
  switch (id) {
    case kHairlineHere: ShowHairlineHere(); return true;
    default: return OpenPropertyFrame(id);
  }
}

// Moves the last hairline to where the mouse last was; the operator is told
// to add one first when there is none.
void CVX_Graph::ShowHairlineHere() {
  std::optional<int32_t> moved = PlaceLastHairline(*graph_, &window_, tracker_.mouseX());
  if (!moved) {
    CHookedMessageBoxes::Show(window_.handle(), LookupText(kMsgSelectShowHairline), LookupText(kCaptionShowHairlineHere), MB_OK);
    return;
  }
  Apply({{HairlineMoved{*moved}}, {}, false, true});
}

void CVX_Graph::OnTimer(UINT_PTR id) {
  if (id == UINT_PTR(CurveHighlight::kTimerId)) highlight_.Tick();
}

}  // namespace zel

// The curves of the drawing pass, in three passes so that nothing hides
// what it should not: the fills of AREA datasets first, then BAR and
// STACKED BAR datasets, then the lines and markers of PLOT and AREA
// datasets; within each pass the datasets in list order.
#include <vector>

#include "engine/area_painter.h"
#include "engine/bar_painter.h"
#include "engine/curve_look.h"
#include "engine/curve_painter.h"
#include "engine/stacked_bar_painter.h"
#include "engine/v_graph.h"

namespace zel {
namespace {

// The dataset an AREA fills to when it fills to another curve, if any.
const VDataset* FillReference(const IdMap<VDataset>& datasets, const VDataset& dataset) {
  if (dataset.fillTo() != kFillToCurve) return nullptr;
  return datasets.Find(dataset.fillCurveId());
}

}  // namespace

void VGraph::DrawCurves(Surface& surface) {
  Rect plot = PlotInPass();
  CurveArea area{layout_.data.width(), layout_.data.height(), plot.left, plot.right};
  double printerScale = surface.Technology() == kRasterPrinter ? printScale() : 1.0;
  BarFrame bars{area, 0, barWidth_, {}};
  for (size_t k = 0; k < yAxes_.size() && k < bars.yAxes.size(); ++k) bars.yAxes[k] = yAxes_.entries()[k].object.get();
  for (const auto& entry : datasets_.entries()) bars.barCount += entry.object->type() == kBar;

  // A curve's look is settled once per repaint, so that a highlighted AREA
  // takes one turn of the blink toggle for its fill and its line together.
  std::vector<CurveLook> looks;
  looks.reserve(datasets_.size());
  for (const auto& entry : datasets_.entries()) {
    bool highlighted = highlightedCurve_ == entry.id;
    looks.push_back(LookOf(*entry.object, entry.object->type(), markerStatusColors_, printerScale, highlighted));
  }

  const auto& entries = datasets_.entries();
  for (size_t k = 0; k < entries.size(); ++k) {
    const VDataset& dataset = *entries[k].object;
    if (dataset.type() == kArea)
      DrawAreaFill(surface, dataset, FillReference(datasets_, dataset), area, looks[k].fill);
  }
  BarStacks stacks;
  for (const auto& entry : entries) {
    VDataset& dataset = *entry.object;
    bool highlighted = highlightedCurve_ == entry.id;
    if (dataset.type() == kBar) DrawBars(surface, dataset, bars, highlighted);
    else if (dataset.type() == kStackedBar) DrawStackedBars(surface, dataset, stacks, bars, highlighted);
  }
  for (size_t k = 0; k < entries.size(); ++k) {
    VDataset& dataset = *entries[k].object;
    if (dataset.type() == kPlot || dataset.type() == kArea) DrawPlot(surface, dataset, area, looks[k]);
    if (dataset.type() != kPie) dataset.NoteDrawn(dataset.type());
  }
}

}  // namespace zel

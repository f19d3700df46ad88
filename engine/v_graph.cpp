#include "engine/v_graph.h"

#include <algorithm>
#include <new>

#include "engine/graph_error.h"
#include "engine/v_pie_dataset.h"
#include "util/process_state.h"
#include "util/text_ids.h"

namespace zel {
namespace {

constexpr Color kHairlineColorFallback = 0xFF0000;

ScrollBarState ScrollState(bool enabled, int viewStart, int viewEnd, int fullStart, int fullEnd,
                           int offset) {
  if (!enabled) return {};
  ScrollBarState state;
  state.page = viewEnd - viewStart + 1;
  state.max = fullEnd - fullStart;
  state.position = std::max(offset, 0);
  if (state.position + state.page > state.max) state.position = state.max - state.page;
  return state;
}

}  // namespace

VGraph::VGraph(HostWindow* window) : window_(window) { hairlineDatasets_.fill(-1); }

VGraph::~VGraph() {
  hairlines_.clear();
  legend_.reset();
  datasets_.Clear();
  DestroyAxes();
}

void VGraph::EnableLegend(bool enabled) {
  if (enabled && !legend_) legend_ = std::make_unique<VLegend>(datasets_);
  if (!enabled) legend_.reset();
}

void VGraph::SetPrinting(bool printing, double scale) {
  printing_ = printing;
  printScale_ = scale;
}

int VGraph::Kind() const {
  if (!xAxes_.empty() || !yAxes_.empty()) return kGraphOfAxes;
  if (datasets_.empty()) return kGraphEmpty;
  return datasets_.entries().front().object->type() == kPie ? kGraphOfPie : kGraphOfAxes;
}

void VGraph::AddAxis(IdMap<VAxis>& axes, const IdMap<VAxis>& others, bool vertical, int32_t id,
                     AxisType type, const AxisProps* props, VAxis::Placement positionType, int32_t referenceId,
                     float crossingValue) {
  if (Kind() == kGraphOfPie) Raise(kMsgPieExists);
  if (axes.Contains(id)) Raise(kMsgAxisExists, id);
  VAxis* reference = nullptr;
  if (positionType == VAxis::kOnAxis) {
    reference = others.Find(referenceId);
    if (!reference) Raise(kMsgAxisMissing, referenceId);
  }
  axes.Add(id, std::make_unique<VAxis>(vertical, type, props, positionType, reference,
                                       crossingValue));
  UpdateLayoutAndRepaint();
}

void VGraph::AddXAxis(int32_t id, AxisType type, const AxisProps* props, VAxis::Placement positionType,
                      int32_t referenceId, float crossingValue) {
  AddAxis(xAxes_, yAxes_, false, id, type, props, positionType, referenceId, crossingValue);
}

void VGraph::AddYAxis(int32_t id, AxisType type, const AxisProps* props, VAxis::Placement positionType,
                      int32_t referenceId, float crossingValue) {
  AddAxis(yAxes_, xAxes_, true, id, type, props, positionType, referenceId, crossingValue);
}

void VGraph::AddDataset(int32_t id, DatasetType type, int32_t xAxisId, int32_t yAxisId,
                        const DatasetProps* props) {
  if (datasets_.Contains(id)) Raise(kMsgDatasetExists, id);
  if (type == kPie) {
    if (Kind() == kGraphOfAxes) Raise(kMsgNonPieExists);
    datasets_.Add(id, std::make_unique<VPieDataset>(props));
    hairlines_.clear();
  } else {
    if (Kind() == kGraphOfPie) Raise(kMsgPieExists);
    VAxis& x = XAxis(xAxisId);
    VAxis& y = YAxis(yAxisId);
    if (x.type() == kAxisDiscrete && y.type() == kAxisDiscrete) Raise(kMsgBothAxesDiscrete);
    datasets_.Add(id, std::make_unique<VDataset>(type, &x, &y, props));
  }
  UpdateLayoutAndRepaint();
}

VAxis& VGraph::XAxis(int32_t id) const {
  VAxis* axis = xAxes_.Find(id);
  if (!axis) Raise(kMsgAxisMissing, id);
  return *axis;
}

VAxis& VGraph::YAxis(int32_t id) const {
  VAxis* axis = yAxes_.Find(id);
  if (!axis) Raise(kMsgAxisMissing, id);
  return *axis;
}

VDataset& VGraph::Dataset(int32_t id) const {
  VDataset* dataset = datasets_.Find(id);
  if (!dataset) Raise(kMsgDatasetMissing, id);
  return *dataset;
}

void VGraph::RemoveAxis(IdMap<VAxis>& axes, int32_t id) {
  VAxis* axis = axes.Find(id);
  if (!axis) Raise(kMsgAxisMissing, id);
  if (axis->refCount() >= 1) Raise(kMsgAxisReferenced, id);
  axes.Remove(id);
  UpdateLayoutAndRepaint();
}

void VGraph::RemoveXAxis(int32_t id) { RemoveAxis(xAxes_, id); }
void VGraph::RemoveYAxis(int32_t id) { RemoveAxis(yAxes_, id); }

void VGraph::RemoveDataset(int32_t id) {
  Dataset(id);
  datasets_.Remove(id);
  UpdateLayoutAndRepaint();
}

void VGraph::RemoveAllDatasets() {
  datasets_.Clear();
  Repaint();
}

void VGraph::EraseAll() {
  RemoveAllDatasets();
  DestroyAxes();
  UpdateLayoutAndRepaint();
}

void VGraph::DestroyAxes() {
  // Sweeps the axes that nothing counts on any more until none are left:
  // each sweep frees the axes that the removed ones were placed on, so no
  // axis is ever destroyed while another still refers to it.
  for (bool removedAny = true; removedAny;) {
    removedAny = false;
    for (IdMap<VAxis>* axes : {&xAxes_, &yAxes_}) {
      std::vector<int32_t> unreferenced;
      for (const auto& entry : axes->entries())
        if (entry.object->refCount() < 1) unreferenced.push_back(entry.id);
      for (int32_t id : unreferenced) axes->Remove(id);
      removedAny |= !unreferenced.empty();
    }
  }
}

std::vector<EnumEntry> VGraph::EnumAxes(const IdMap<VAxis>& axes) const {
  std::vector<EnumEntry> entries;
  for (const auto& e : axes.entries()) entries.push_back({e.id, e.object->title(), CodeOf(e.object->type())});
  return entries;
}

std::vector<EnumEntry> VGraph::EnumXAxes() const { return EnumAxes(xAxes_); }
std::vector<EnumEntry> VGraph::EnumYAxes() const { return EnumAxes(yAxes_); }

std::vector<EnumEntry> VGraph::EnumDatasets() const {
  std::vector<EnumEntry> entries;
  for (const auto& e : datasets_.entries())
    entries.push_back({e.id, e.object->title(), CodeOf(e.object->type())});
  return entries;
}

void VGraph::SetXAxisProperties(int32_t id, const AxisProps& props) {
  XAxis(id).SetProperties(props);
  UpdateLayoutAndRepaint();
}

void VGraph::SetYAxisProperties(int32_t id, const AxisProps& props) {
  YAxis(id).SetProperties(props);
  UpdateLayoutAndRepaint();
}

void VGraph::SetDatasetProperties(int32_t id, const DatasetProps& props) {
  Dataset(id).SetProps(props);
  UpdateLayoutAndRepaint();
}

void VGraph::SetDatasetValues(int32_t id, size_t n, const ValueColumn& xs, const ValueColumn& ys,
                              std::span<const int32_t> status, bool append) {
  Dataset(id).SetValues(n, xs, ys, status, append);
  UpdateLayoutAndRepaint();
}

void VGraph::ClearDataset(int32_t id) {
  Dataset(id).Clear();
  UpdateLayoutAndRepaint();
}

bool VGraph::SetPieColorAt(int32_t datasetId, int index, Color color) {
  auto* pie = dynamic_cast<VPieDataset*>(&Dataset(datasetId));
  if (!pie) Raise(kMsgNotPie, datasetId);
  if (!pie->SetPieColorAt(index, color)) return false;
  Repaint();
  return true;
}

int32_t VGraph::AddLimitValue(int32_t axisId, const Value& value, std::optional<Color> color,
                              const std::optional<Text>& style, int16_t width) {
  int32_t id = YAxis(axisId).AddLimitValue(value, color, style, width);
  Repaint();
  return id;
}

void VGraph::RemoveLimitValue(int32_t id) {
  for (const IdMap<VAxis>* axes : {&xAxes_, &yAxes_})
    for (const auto& entry : axes->entries())
      if (entry.object->RemoveLimitValue(id)) {
        Repaint();
        return;
      }
}

std::optional<int32_t> VGraph::AddHairline(float xposPercent, std::optional<Color> color,
                                           int16_t width) {
  if (Kind() == kGraphOfPie) return std::nullopt;
  int32_t id = Process().nextHairlineId;
  try {
    hairlines_.push_back({id, xposPercent / 100, 0, width, color.value_or(kHairlineColorFallback)});
  } catch (const std::bad_alloc&) {
    return std::nullopt;
  }
  ++Process().nextHairlineId;
  Repaint();
  return id;
}

namespace {

// The hairline of an id in a list, const or not; null when absent.
template <typename Hairlines>
auto HairlineIn(Hairlines& hairlines, int32_t id) -> decltype(hairlines.data()) {
  auto it = std::find_if(hairlines.begin(), hairlines.end(), [id](auto& h) { return h.id == id; });
  return it == hairlines.end() ? nullptr : &*it;
}

}  // namespace

const Hairline* VGraph::FindHairline(int32_t id) const { return HairlineIn(hairlines_, id); }

bool VGraph::SetHairlinePosition(int32_t id, float position) {
  Hairline* hairline = HairlineIn(hairlines_, id);
  if (hairline) hairline->position = position;
  return hairline != nullptr;
}

bool VGraph::SetHairlineLook(int32_t id, Color color, int32_t width) {
  Hairline* hairline = HairlineIn(hairlines_, id);
  if (!hairline) return false;
  hairline->color = color;
  hairline->width = width;
  return true;
}

bool VGraph::RemoveHairline(int32_t id) {
  const Hairline* hairline = FindHairline(id);
  if (!hairline) return false;
  hairlines_.erase(hairlines_.begin() + (hairline - hairlines_.data()));
  if (hairlines_.empty()) hairlines_.shrink_to_fit();
  Repaint();
  return true;
}

VGraph::ShowDatasetResult VGraph::AddHairlineShowDataset(int32_t datasetId) {
  if (!FindDataset(datasetId)) return ShowDatasetResult::kUnknownDataset;
  auto free = std::find(hairlineDatasets_.begin(), hairlineDatasets_.end(), -1);
  if (free == hairlineDatasets_.end()) return ShowDatasetResult::kFull;
  *free = datasetId;
  Repaint();
  return ShowDatasetResult::kAdded;
}

void VGraph::SetScrollbars(int horizontal, int vertical) {
  if (horizontal >= 0) horizontalScrollbar_ = horizontal > 0;
  if (vertical >= 0) verticalScrollbar_ = vertical > 0;
  UpdateScrollBars();
}

// The bars show where the visible plot frame lies within the whole data
// area, in pixels: zoomed in, the data area is the larger.
void VGraph::UpdateScrollBars() {
  if (!HasWindow()) return;
  const FrameRect &plot = layout_.plot, &data = layout_.data;
  window_->SetScrollBar(false, ScrollState(horizontalScrollbar_, plot.left, plot.right, data.left, data.right,
                                           plot.left - data.left));
  window_->SetScrollBar(true, ScrollState(verticalScrollbar_, plot.bottom, plot.top, data.bottom, data.top,
                                          data.top - plot.top));
}

void VGraph::SetSuspendDraw(int32_t suspend) {
  suspendDraw_ = suspend;
  if (suspend == 0) UpdateScrollBars();
}

void VGraph::SetGridProps(int32_t color, const std::array<int16_t, 3>& words) {
  if (color < 0) {
    gridColor_ = 0;
    gridWords_[0] = 0;
  } else {
    gridColor_ = color;
    gridWords_ = words;
  }
}

void VGraph::UpdateLayoutAndRepaint() {
  if (!HasWindow()) {
    if (window_) window_->PictureChanged();
    return;
  }
  ClientRect client = window_->ClientRectangle();
  LayoutAndRepaint(client.right - client.left, client.bottom - client.top);
}

void VGraph::LayoutAndRepaint(int clientWidth, int clientHeight) {
  if (!HasWindow()) return;
  // One more than the client size, as the layout has always been given.
  // When memory runs out here, the change that asked for the layout stands
  // (the entry has made it whole) and the next paint lays the graph out.
  try {
    Recalculate(clientWidth + 1, clientHeight + 1);
  } catch (const std::bad_alloc&) {
    layoutPending_ = true;
  }
  Repaint();
}

void VGraph::SetMargins(const Margins& margins) {
  margins_ = margins;
  UpdateLayoutAndRepaint();
}

void VGraph::SetZoomRect(const Fractions& zoom) {
  bool valid = zoom.left >= 0 && zoom.left < zoom.right && zoom.right <= 1 && zoom.bottom >= 0 &&
               zoom.bottom < zoom.top && zoom.top <= 1;
  if (!valid) Raise(kMsgBadZoomRect);
  zoomRect_ = zoom;
  UpdateLayoutAndRepaint();
}

void VGraph::MoveDataArea(int32_t left, int32_t bottom) {
  FrameRect& data = layout_.data;
  data = {.left = left, .bottom = bottom, .right = left + data.width() - 1, .top = bottom + data.height() - 1};
}

Fractions RubberBand::Normalised() const {
  return {.left = std::min(bandX0, bandX1), .right = std::max(bandX0, bandX1), .bottom = std::min(bandY0, bandY1),
          .top = std::max(bandY0, bandY1)};
}

void VGraph::Repaint() {
  if (HasWindow() && !suspendDraw_) window_->Invalidate(true);
  else if (window_) window_->PictureChanged();
}

}  // namespace zel

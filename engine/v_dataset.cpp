#include "engine/v_dataset.h"

#include <algorithm>

#include "engine/graph_error.h"
#include "engine/v_axis.h"
#include "util/text_ids.h"

namespace zel {
namespace {

constexpr Color kColorFallback = 0xE0E0E0;
constexpr Color kManualColorFallback = 0xFFFF00;
constexpr size_t kTitleMax = 254;
const Text kNoLabel = u"##";

AxisType AxisTypeOf(const VAxis* axis) { return axis ? axis->type() : kAxisInteger; }

bool IsDiscrete(const VAxis* axis) { return axis && axis->type() == kAxisDiscrete; }

void RemoveFromBarList(VAxis* axis, const VDataset* dataset) {
  if (!axis) return;
  auto& bars = axis->barList();
  std::erase_if(bars, [dataset](const BarSlot& slot) { return slot.dataset == dataset; });
}

}  // namespace

VDataset::VDataset(DatasetType type, VAxis* xAxis, VAxis* yAxis, const DatasetProps* props)
    : type_(type),
      xAxis_(xAxis),
      yAxis_(yAxis),
      xValues_(AxisTypeOf(xAxis)),
      yValues_(AxisTypeOf(yAxis)),
      titleFont_(ParseFontSpec(u"Arial,9,Bold, Charset_Default")),
      textFont_(ParseFontSpec(u"Arial,7")) {
  for (VAxis* axis : {xAxis_, yAxis_}) {
    if (!axis) continue;
    axis->AddRef();
    if (type_ == kBar && IsDiscrete(axis)) axis->barList().push_back({this});
  }
  if (props) SetProps(*props);
}

VDataset::~VDataset() {
  // A dataset leaves the bar lists whatever its type is now, so that no list
  // keeps a dataset that has gone.
  for (VAxis* axis : {xAxis_, yAxis_}) {
    if (!axis) continue;
    axis->Release();
    RemoveFromBarList(axis, this);
  }
}

void VDataset::AppendPoints(PointColumn& xs, PointColumn& ys, size_t first, size_t n,
                            const ValueColumn& xIn, const ValueColumn& yIn) const {
  size_t xSize = xs.size();
  if (IsDiscrete(xAxis_)) {
    xs.AppendCategories(first, n);
  } else if (size_t failed = xs.Append(xIn, n); failed != n) {
    Raise(kMsgWrongValueType, int32_t(first + failed));
  }
  try {
    if (IsDiscrete(yAxis_)) {
      ys.AppendCategories(first, n);
    } else if (size_t failed = ys.Append(yIn, n); failed != n) {
      Raise(kMsgWrongValueType, int32_t(first + failed));
    }
  } catch (...) {
    xs.Truncate(xSize);
    throw;
  }
}

void VDataset::SetValues(size_t n, const ValueColumn& xs, const ValueColumn& ys,
                         std::span<const int32_t> status, bool append) {
  size_t first = append ? count_ : 0;
  if (append) {
    // Room for the statuses first, so that nothing after the conversions can fail.
    status_.reserve(first + n);
    AppendPoints(xValues_, yValues_, first, n, xs, ys);
  } else {
    PointColumn newX(AxisTypeOf(xAxis_)), newY(AxisTypeOf(yAxis_));
    AppendPoints(newX, newY, 0, n, xs, ys);
    PodBuffer<int32_t> newStatus;
    newStatus.reserve(n);
    Clear();
    xValues_ = std::move(newX);
    yValues_ = std::move(newY);
    status_ = std::move(newStatus);
  }
  status_.append(status.data(), n);
  try {
    WriteCategoryLabels(first, n, xs, ys);
  } catch (...) {
    xValues_.Truncate(count_);
    yValues_.Truncate(count_);
    status_.resize(count_);
    throw;
  }
  count_ = first + n;
}

// The labels of a DISCRETE axis come from the texts among the x values. As
// the format has always done it, whether there is a label at position k is
// read from the x values at k counted over all points, not over the new ones
// (the same on a first load), and on a DISCRETE Y axis it is the x values too
// that decide; the label itself is the new value's text ("##" otherwise).
void VDataset::WriteCategoryLabels(size_t first, size_t n, const ValueColumn& xs,
                                   const ValueColumn& ys) {
  for (VAxis* axis : {xAxis_, yAxis_}) {
    if (!IsDiscrete(axis)) continue;
    const ValueColumn& source = axis == xAxis_ ? xs : ys;
    CategoryLabels& labels = axis->categoryLabels();
    labels.resize(first + n + 2);
    for (size_t i = 0; i < n; ++i) {
      const Text* text = source.TextAt(i);
      labels[first + i] = xs.IsTextAt(first + i) && text ? *text : kNoLabel;
    }
    labels[first + n] = std::nullopt;
  }
}

void VDataset::Clear() {
  xValues_.Clear();
  yValues_.Clear();
  status_ = {};
  count_ = 0;
  for (VAxis* axis : {xAxis_, yAxis_})
    if (axis) axis->categoryLabels() = {};
}

void VDataset::SetProps(const DatasetProps& props) {
  if (props.title) title_ = props.title->substr(0, kTitleMax);
  if (props.lineStyle) lineStyle_ = DatasetLineStyleFromKeyword(*props.lineStyle);
  if (props.markerShape) markerShape_ = MarkerShapeFromKeyword(*props.markerShape);
  if (props.titleFont && !props.titleFont->empty()) titleFont_ = ParseFontSpec(*props.titleFont);
  if (props.textFont && !props.textFont->empty()) textFont_ = ParseFontSpec(*props.textFont);
  if (props.realXbarMode >= 0) realXbarMode_ = props.realXbarMode;
  if (props.lineWidth > 0) lineWidth_ = props.lineWidth;
  lineColor_ = props.lineColor.value_or(kColorFallback);
  fillColor_ = props.fillColor.value_or(kColorFallback);
  markerColor_ = props.markerColor.value_or(kColorFallback);
  titleColor_ = props.titleColor.value_or(kColorFallback);
  textColor_ = props.textColor.value_or(kColorFallback);
  manualColor_ = props.manualColor.value_or(kManualColorFallback);
  if (props.type) type_ = DatasetTypeFromKeyword(*props.type);
  if (props.fillTo) fillTo_ = int16_t(FillToFromKeyword(*props.fillTo));
  if (props.fillCurveId >= 0) fillCurveId_ = props.fillCurveId;
  yAxisId_ = props.YaxisID;
  useAsGlobal_ = props.bUseGlb;
}

DatasetProps VDataset::GetProps() const {
  DatasetProps props;
  props.title = title_;
  props.lineStyle = DatasetLineStyleKeyword(lineStyle_);
  props.markerShape = MarkerShapeKeyword(markerShape_);
  props.titleFont = FormatFontSpec(titleFont_);
  props.textFont = FormatFontSpec(textFont_);
  props.realXbarMode = int16_t(realXbarMode_);
  props.lineWidth = int16_t(lineWidth_);
  props.lineColor = lineColor_;
  props.fillColor = fillColor_;
  props.markerColor = markerColor_;
  props.titleColor = titleColor_;
  props.textColor = textColor_;
  props.manualColor = manualColor_;
  props.type = DatasetTypeKeyword(type_);
  props.fillTo = FillToKeyword(fillTo_);
  props.fillCurveId = fillCurveId_;
  props.YaxisID = yAxisId_;
  props.bUseGlb = useAsGlobal_;
  return props;
}

}  // namespace zel

#include "engine/v_axis.h"

#include <algorithm>
#include <cmath>

#include "engine/axis_keywords.h"
#include "engine/axis_steps.h"
#include "engine/graph_error.h"
#include "util/annotation_format.h"
#include "util/date_time.h"
#include "util/process_state.h"
#include "util/text_ids.h"
#include "util/value_conversion.h"

namespace zel {
namespace {

constexpr Color kAxisColorFallback = 0x0000FF;
constexpr Color kGridColorFallback = 0x808080;
constexpr Color kLimitColorFallback = 0x808080;
constexpr size_t kTitleMax = 255;
constexpr size_t kFormatMax = 31;
constexpr int32_t kQuarterTurn = 900;

float FloatOr0(const Value& value) {
  Value f;
  return ChangeType(value, ValueKind::R4, f) == kConversionOk ? std::get<float>(f) : 0.0f;
}

}  // namespace

VAxis::VAxis(bool vertical, AxisType type, const AxisProps* props, Placement placement, VAxis* reference,
             float crossingValue)
    : vertical_(vertical),
      type_(type),
      placement_(placement),
      reference_(reference),
      crossingValue_(crossingValue),
      axisFont_(ParseFontSpec(u"Arial,9,bold")),
      annotationFont_(ParseFontSpec(u"Arial,7")) {
  Value zero;
  ChangeType(int32_t(0), StorageKind(), zero);
  min_ = max_ = zero;
  if (vertical_) axisFont_.lfEscapement = kQuarterTurn;
  if (props) SetProperties(*props);
  if (reference_) reference_->AddRef();
}

VAxis::~VAxis() {
  if (reference_) reference_->Release();
}

ValueKind VAxis::StorageKind() const {
  switch (type_) {
    case kAxisReal: return ValueKind::R4;
    case kAxisTime: return ValueKind::Date;
    case kAxisInteger:
    case kAxisDiscrete: return ValueKind::I4;
    default: return ValueKind::Empty;
  }
}

void VAxis::SetProperties(const AxisProps& props) {
  Value min, max;
  if (ChangeType(props.min, StorageKind(), min) != kConversionOk) Raise(kMsgWrongMin);
  if (ChangeType(props.max, StorageKind(), max) != kConversionOk) Raise(kMsgWrongMax);
  if (type_ == kAxisDiscrete) min = int32_t(0);
  min_ = min;
  max_ = max;
  autoScale_ = props.bAutoScale;
  ApplySteps(props);
  ApplyAppearance(props);
}

void VAxis::ApplySteps(const AxisProps& props) {
  annotationStep_ = FloatOr0(props.annotationIncrement);
  tickStep_ = FloatOr0(props.tickIncrement);
  if (props.timeUnit) {
    timeUnitLength_ = TimeUnitLength(*props.timeUnit);
    if (timeUnitLength_ < 0) timeUnitLength_ = 1.0f;
  }
  autoStep_ = !KeepsGivenSteps(annotationStep_, tickStep_);
  autoFormat_ = true;
}

void VAxis::ApplyAppearance(const AxisProps& props) {
  axisColor_ = props.axisColor.value_or(kAxisColorFallback);
  if (props.annotationFont && !props.annotationFont->empty())
    annotationFont_ = ParseFontSpec(*props.annotationFont);
  if (props.axisFont && !props.axisFont->empty()) axisFont_ = ParseFontSpec(*props.axisFont);
  if (vertical_) axisFont_.lfEscapement = kQuarterTurn;
  if (props.title) title_ = props.title->substr(0, kTitleMax);
  titlePosition_ = props.titlePosition ? TitlePositionFromKeyword(*props.titlePosition) : kTitleEnd;
  gridMode_ = props.gridMode ? GridModeFromKeyword(*props.gridMode) : kGridNone;
  gridStyle_ = props.gridStyle ? LineStyleFromKeyword(*props.gridStyle) : kLineSolid;
  gridWidth_ = props.gridWidth >= 1 ? props.gridWidth : 1;
  gridColor_ = props.gridColor.value_or(kGridColorFallback);
  fntgridColor_ = props.fntgridColor;
  gridEnabdle_ = props.gridEnabdle;
  yAxisPos_ = props.YaxisPos;
}

AxisProps VAxis::GetProperties() const {
  AxisProps props;
  props.min = type_ == kAxisReal ? Value(double(std::get<float>(min_))) : min_;
  props.max = type_ == kAxisReal ? Value(double(std::get<float>(max_))) : max_;
  props.annotationIncrement = annotationStep_;
  props.tickIncrement = tickStep_;
  props.axisColor = axisColor_;
  props.annotationFormat = annotationFormat_;
  props.timeUnit = TimeUnitName(timeUnitLength_);
  props.title = title_;
  props.titlePosition = TitlePositionKeyword(titlePosition_, vertical_);
  props.axisFont = FormatFontSpec(axisFont_);
  props.annotationFont = FormatFontSpec(annotationFont_);
  props.gridMode = GridModeKeyword(gridMode_);
  props.gridStyle = LineStyleKeyword(gridStyle_);
  props.gridWidth = int16_t(gridWidth_);
  props.gridColor = gridColor_;
  props.bAutoScale = autoScale_;
  props.fntgridColor = fntgridColor_;
  props.gridEnabdle = gridEnabdle_;
  props.YaxisPos = yAxisPos_;
  return props;
}

void VAxis::UpdateSteps(double scale) {
  if (autoStep_) {
    AxisSteps steps;
    if (type_ == kAxisReal)
      steps = AutomaticRealSteps(std::get<float>(min_), std::get<float>(max_), scale);
    else if (type_ == kAxisTime)
      steps = AutomaticTimeSteps(std::get<DateValue>(min_).days, std::get<DateValue>(max_).days,
                                 scale, Process().reportType);
    else if (type_ == kAxisInteger || type_ == kAxisDiscrete)
      steps = AutomaticIntegerSteps(std::get<int32_t>(min_), std::get<int32_t>(max_), scale);
    annotationStep_ = steps.annotation;
    tickStep_ = steps.tick;
    if (type_ == kAxisTime) timeUnitLength_ = steps.timeUnitLength;
  }
  if (autoFormat_)
    annotationFormat_ =
        ChooseAnnotationFormat(type_, annotationStep_, timeUnitLength_).substr(0, kFormatMax);
}

int32_t VAxis::Measure(Surface& surface, double scale, double f, TextView unitName) {
  UpdateSteps(scale);
  LogFont font = annotationFont_;
  font.lfHeight = int32_t(font.lfHeight * f);
  surface.SelectFont(font);
  LabelExtentSample sample = LabelExtentTexts(LabelFormat(), NumberOf(min_), NumberOf(max_));
  int32_t extent = 0;
  for (const Text& text : sample.texts) {
    Size size = surface.TextExtent(text);
    extent = std::max(extent, vertical_ ? size.cx : size.cy * sample.lineCount);
  }
  labelExtent_ = extent;
  thickness_ = int32_t(4 * f) + extent + int32_t(6 * f);
  if (vertical_ && !unitName.empty()) {
    LogFont unitFont = font;
    unitFont.lfWeight = kFontWeightBold;
    unitFont.lfHeight = int32_t(unitFont.lfHeight * 1.5);
    surface.SelectFont(unitFont);
    thickness_ += std::max(0, surface.TextExtent(unitName).cx - extent);
  }
  // The title stands beyond the labels, outside the plot, so an axis that
  // has one needs room for it; without a title the thickness stays as above.
  titleRoom_ = 0;
  if (!title_.empty()) {
    LogFont titleFont = axisFont_;
    titleFont.lfHeight = int32_t(titleFont.lfHeight * f);
    surface.SelectFont(titleFont);
    titleRoom_ = surface.TextExtent(title_).cy + 2 * int32_t(kAxisTitleGap * f);
    thickness_ += titleRoom_;
  }
  return thickness_;
}

AxisLabelFormat VAxis::LabelFormat() const {
  return {type_, annotationFormat_, &categoryLabels_};
}

VAxis::Range VAxis::NumericRange() const {
  if (type_ == kAxisDiscrete) return {0, NumberOf(max_)};
  if (type_ == kAxisReal) {
    float min = std::get<float>(min_), max = std::get<float>(max_);
    return {min, double(max - min)};
  }
  double min = NumberOf(min_);
  return {min, NumberOf(max_) - min};
}

bool VAxis::IsValueVisible(const Value& value, double from, double to) const {
  if (to <= from) return false;
  Value number;
  if (ChangeType(value, ValueKind::R8, number) != kConversionOk) return false;
  double v = std::get<double>(number);
  Range r = NumericRange();
  return from * r.length + r.base <= v && v <= to * r.length + r.base;
}

double VAxis::ValueToFraction(double value) const {
  Range r = NumericRange();
  // An empty range maps every value to its start rather than dividing by 0.
  return r.length != 0 && std::isfinite(r.length) ? (value - r.base) / r.length : 0.0;
}

int32_t VAxis::AddLimitValue(const Value& value, std::optional<Color> color,
                             const std::optional<Text>& style, int32_t width) {
  if (type_ == kAxisDiscrete) Raise(kMsgDiscreteAxis);
  Value converted;
  if (ChangeType(value, StorageKind(), converted) != kConversionOk) Raise(kMsgLimitValueType);
  try {
    if (limits_.size() == limits_.capacity()) limits_.reserve(std::max<size_t>(4, 2 * limits_.size()));
  } catch (const std::bad_alloc&) {
    return 0;
  }
  int32_t id = Process().nextLimitValueId++;
  limits_.push_back({id, converted, style ? LineStyleFromKeyword(*style) : kLineSolid, width,
                     color.value_or(kLimitColorFallback)});
  return id;
}

bool VAxis::RemoveLimitValue(int32_t id) {
  auto it = std::find_if(limits_.begin(), limits_.end(), [id](auto& l) { return l.id == id; });
  if (it == limits_.end()) return false;
  limits_.erase(it);
  return true;
}

}  // namespace zel

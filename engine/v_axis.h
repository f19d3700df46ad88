#pragma once
// One X or Y axis of a graph: its range, steps, fonts, grid settings, limit
// lines, category labels (DISCRETE axes), and the count of datasets and axes
// placed on it.
#include <cstdint>
#include <optional>
#include <vector>

#include "engine/axis_props.h"
#include "engine/surface.h"
#include "util/axis_type.h"
#include "util/axis_value_text.h"
#include "util/font_spec.h"
#include "util/value.h"

namespace zel {

class VDataset;

// A horizontal (on a Y axis) or vertical line at a fixed value.
struct LimitValue {
  int32_t id;
  Value value;  // of the axis's type
  int32_t style;
  int32_t width;
  Color color;
};

// Pixels between an axis title and the labels, and between it and the outer
// edge of the axis's room (times the printer scale).
inline constexpr double kAxisTitleGap = 2;

// A BAR dataset drawn on a DISCRETE axis; its place in the list is its slot.
struct BarSlot {
  const VDataset* dataset;
  int32_t value = 0;
};

class VAxis {
 public:
  // Where an axis stands, as its position keyword says: beside the plot at
  // the low or high side, centred, or crossing another axis at a value.
  enum class Placement : int32_t { kLowSide = 0, kHighSide = 1, kCenter = 2, kOnAxis = 3 };
  static constexpr Placement kLowSide = Placement::kLowSide;
  static constexpr Placement kHighSide = Placement::kHighSide;
  static constexpr Placement kCenter = Placement::kCenter;
  static constexpr Placement kOnAxis = Placement::kOnAxis;

  // A new axis with the defaults, then `props` when given (which may throw,
  // as SetProperties). An axis placed on another one counts itself there.
  VAxis(bool vertical, AxisType type, const AxisProps* props, Placement placement = kLowSide,
        VAxis* reference = nullptr, float crossingValue = 0);
  ~VAxis();
  VAxis(const VAxis&) = delete;
  VAxis& operator=(const VAxis&) = delete;

  bool vertical() const { return vertical_; }
  AxisType type() const { return type_; }
  Placement placement() const { return placement_; }
  VAxis* reference() const { return reference_; }
  float crossingValue() const { return crossingValue_; }

  // Applies a record; a min or max that cannot be converted to the axis's
  // type raises message 107 or 108 before anything changes.
  void SetProperties(const AxisProps& props);
  AxisProps GetProperties() const;

  // The automatic steps and annotation format, recomputed at every layout
  // (`scale` as for the step rules).
  void UpdateSteps(double scale);

  // Measures the room the axis needs beside the plot: its steps and format,
  // the extent of its labels in the annotation font (heights for an X axis,
  // times the lines of a TIME label; widths for a Y axis), and its thickness
  // int(4f) + extent + 6f, f being the printer scale. `unitName` widens a Y
  // axis whose unit name, in the bold font one and a half times as high, is
  // wider than its labels. An axis with a title adds the room the title
  // takes beyond the labels (see titleRoom).
  int32_t Measure(Surface& surface, double scale, double f = 1.0, TextView unitName = {});
  int32_t thickness() const { return thickness_; }
  int32_t labelExtent() const { return labelExtent_; }
  // The outer part of the thickness that holds the title: the height of its
  // line in the axis font and a gap on either side; 0 without a title.
  int32_t titleRoom() const { return titleRoom_; }
  // Where layout put the axis, in graph pixels, and for further Y axes on
  // one side the edge they moved on to.
  int32_t position() const { return position_; }
  void SetPosition(int32_t position) { position_ = position; }
  int32_t offset() const { return offset_; }
  void SetOffset(int32_t offset) { offset_ = offset; }
  float annotationStep() const { return annotationStep_; }
  float tickStep() const { return tickStep_; }
  float timeUnitLength() const { return timeUnitLength_; }
  const Text& annotationFormat() const { return annotationFormat_; }
  AxisLabelFormat LabelFormat() const;

  const Value& min() const { return min_; }
  const Value& max() const { return max_; }
  const Text& title() const { return title_; }
  const LogFont& axisFont() const { return axisFont_; }
  const LogFont& annotationFont() const { return annotationFont_; }
  Color axisColor() const { return axisColor_; }
  int32_t titlePosition() const { return titlePosition_; }
  int32_t gridMode() const { return gridMode_; }

  // Whether a value lies within the fractions from..to of the axis (ends
  // included); false when to <= from.
  bool IsValueVisible(const Value& value, double from, double to) const;
  // Where a value lies along the axis, 0 at its minimum and 1 at its maximum.
  double ValueToFraction(double value) const;

  // Message 115 on a DISCRETE axis, 116 for a value of the wrong type.
  int32_t AddLimitValue(const Value& value, std::optional<Color> color,
                        const std::optional<Text>& style, int32_t width);
  bool RemoveLimitValue(int32_t id);
  const std::vector<LimitValue>& limitValues() const { return limits_; }

  CategoryLabels& categoryLabels() { return categoryLabels_; }
  const CategoryLabels& categoryLabels() const { return categoryLabels_; }
  std::vector<BarSlot>& barList() { return barList_; }

  void AddRef() { ++refCount_; }
  void Release() { --refCount_; }
  int refCount() const { return refCount_; }

 private:
  struct Range {
    double base, length;
  };
  Range NumericRange() const;
  ValueKind StorageKind() const;
  void ApplySteps(const AxisProps& props);
  void ApplyAppearance(const AxisProps& props);

  bool vertical_;
  AxisType type_;
  Placement placement_;
  VAxis* reference_;
  float crossingValue_;
  CategoryLabels categoryLabels_;
  std::vector<LimitValue> limits_;
  Value min_;
  Value max_;
  float annotationStep_ = 0;
  float tickStep_ = 0;
  float timeUnitLength_ = 0;
  Color axisColor_ = 0;
  LogFont axisFont_;
  LogFont annotationFont_;
  Text annotationFormat_;
  Text title_;
  int32_t titlePosition_ = 0;
  int32_t gridMode_ = 0;
  int32_t gridStyle_ = 0;
  int32_t gridWidth_ = 0;
  Color gridColor_ = 0;
  int32_t yAxisPos_ = 1;
  bool autoFormat_ = false;
  bool autoStep_ = false;
  int32_t autoScale_ = 0;
  int32_t fntgridColor_ = 0;
  int32_t gridEnabdle_ = 0;
  int refCount_ = 0;
  std::vector<BarSlot> barList_;
  int32_t position_ = 0;
  int32_t thickness_ = 0;
  int32_t labelExtent_ = 0;
  int32_t titleRoom_ = 0;
  int32_t offset_ = 0;
};

}  // namespace zel

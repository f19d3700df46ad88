#pragma once
// One curve of a graph: points (x, y and a status each) drawn against one X
// and one Y axis in one of the forms of DatasetType, with its look.
#include <cstdint>
#include <optional>
#include <span>
#include <vector>

#include "engine/dataset_keywords.h"
#include "engine/dataset_props.h"
#include "engine/point_column.h"
#include "engine/value_column.h"
#include "util/font_spec.h"

namespace zel {

class VAxis;

class VDataset {
 public:
  // Counts itself on both axes and, as a BAR, in the bar lists of the
  // DISCRETE ones; then applies `props` when given.
  VDataset(DatasetType type, VAxis* xAxis, VAxis* yAxis, const DatasetProps* props);
  virtual ~VDataset();
  VDataset(const VDataset&) = delete;
  VDataset& operator=(const VDataset&) = delete;

  // Replaces (or, with `append`, extends) the points with the first n
  // values of xs, ys and status. A value that cannot be converted to its
  // axis's type raises message 106 with its position among all the points,
  // and the dataset stays as it was.
  virtual void SetValues(size_t n, const ValueColumn& xs, const ValueColumn& ys,
                         std::span<const int32_t> status, bool append);
  // Drops every point, and the category labels of both axes.
  void Clear();

  size_t count() const { return count_; }
  // The points as the host reads them back.
  virtual Value XAt(size_t i) const { return xValues_.At(i); }
  virtual Value YAt(size_t i) const { return yValues_.At(i); }
  const PointColumn& xValues() const { return xValues_; }
  const PointColumn& yValues() const { return yValues_; }
  std::span<const int32_t> status() const { return status_; }

  void SetProps(const DatasetProps& props);
  DatasetProps GetProps() const;

  DatasetType type() const { return type_; }
  VAxis* xAxis() const { return xAxis_; }
  VAxis* yAxis() const { return yAxis_; }
  const Text& title() const { return title_; }
  int lineStyle() const { return lineStyle_; }
  int markerShape() const { return markerShape_; }
  int lineWidth() const { return lineWidth_; }
  int realXbarMode() const { return realXbarMode_; }
  const LogFont& titleFont() const { return titleFont_; }
  const LogFont& textFont() const { return textFont_; }
  Color lineColor() const { return lineColor_; }
  Color fillColor() const { return fillColor_; }
  Color markerColor() const { return markerColor_; }
  Color titleColor() const { return titleColor_; }
  Color textColor() const { return textColor_; }
  int fillTo() const { return fillTo_; }
  int fillCurveId() const { return fillCurveId_; }
  int yAxisId() const { return yAxisId_; }

  // What the drawing made of the dataset: the type it was last drawn as (-1
  // before the first drawing), and whether a bar routine has drawn its
  // points as bars.
  std::optional<DatasetType> drawnType() const { return drawnType_; }
  bool drawnAsBars() const { return drawnAsBars_; }
  void NoteDrawn(DatasetType type) { drawnType_ = type; }
  void NoteDrawnAsBars() { drawnAsBars_ = true; }

 protected:
  size_t count_ = 0;

 private:
  void AppendPoints(PointColumn& xs, PointColumn& ys, size_t first, size_t n,
                    const ValueColumn& xIn, const ValueColumn& yIn) const;
  void WriteCategoryLabels(size_t first, size_t n, const ValueColumn& xs, const ValueColumn& ys);

  DatasetType type_;
  int16_t yAxisId_ = 0;
  VAxis* xAxis_;
  VAxis* yAxis_;
  PointColumn xValues_;
  PointColumn yValues_;
  PodBuffer<int32_t> status_;
  Text title_;
  int lineStyle_ = 0;
  int markerShape_ = kMarkerNone;
  int realXbarMode_ = 0;
  int lineWidth_ = 1;
  LogFont titleFont_;
  LogFont textFont_;
  Color lineColor_ = 0x0000C0;
  Color fillColor_ = 0;
  Color markerColor_ = 0;
  Color manualColor_ = 0;
  Color titleColor_ = 0;
  Color textColor_ = 0;
  int16_t fillTo_ = kFillToXAxis;
  int32_t fillCurveId_ = 0;
  int32_t useAsGlobal_ = 0;
  std::optional<DatasetType> drawnType_;
  bool drawnAsBars_ = false;
};

}  // namespace zel

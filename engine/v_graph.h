#pragma once
// The engine behind one control: owns its axes, datasets and hairlines by
// the host's ids, enforces what may coexist, and asks the control's window to
// lay out and repaint after each change.
#include <array>
#include <cstdint>
#include <memory>
#include <optional>
#include <vector>

#include "engine/axis_props.h"
#include "engine/dataset_props.h"
#include "engine/hairline.h"
#include "engine/host_window.h"
#include "engine/id_map.h"
#include "engine/v_axis.h"
#include "engine/v_dataset.h"
#include "engine/v_legend.h"

namespace zel {

enum GraphKind : int { kGraphEmpty = -1, kGraphOfAxes = 0, kGraphOfPie = 1 };

// One line of EnumXAxes, EnumYAxes or EnumDatasets.
struct EnumEntry {
  int32_t id;
  Text title;
  int32_t type;
};

// Left, top, right, bottom; in pixels for margins, in fractions of the whole
// range for the zoom rectangle.
template <typename T>
struct Box {
  T left, top, right, bottom;
};

// The rubber band: start (x0, y0) and current (x1, y1) corner as fractions of
// the data area, from its left and bottom edges. Empty when all are zero.
struct RubberBand {
  float bandX0 = 0, bandX1 = 0, bandY0 = 0, bandY1 = 0;
  bool empty() const { return bandX0 == 0 && bandX1 == 0 && bandY0 == 0 && bandY1 == 0; }
};

class VGraph {
 public:
  explicit VGraph(HostWindow* window = nullptr);
  virtual ~VGraph();
  VGraph(const VGraph&) = delete;
  VGraph& operator=(const VGraph&) = delete;

  // Axis graph, pie graph or empty, derived from what the graph holds.
  int Kind() const;

  // Adds an axis; a position type of 3 places it at `crossingValue` on the
  // axis `referenceId` of the other direction. Messages 155, 101, 104.
  void AddXAxis(int32_t id, int type, const AxisProps* props, int positionType = 0,
                int32_t referenceId = 0, float crossingValue = 0);
  void AddYAxis(int32_t id, int type, const AxisProps* props, int positionType = 0,
                int32_t referenceId = 0, float crossingValue = 0);
  // Messages 112, 156, 155, 104, 114.
  void AddDataset(int32_t id, int type, int32_t xAxisId, int32_t yAxisId,
                  const DatasetProps* props);
  // Message 104 for a missing axis, 154 for one that is still referenced.
  void RemoveXAxis(int32_t id);
  void RemoveYAxis(int32_t id);
  void RemoveDataset(int32_t id);  // message 105
  void RemoveAllDatasets();
  // Removes datasets and axes; hairlines stay.
  void EraseAll();

  VAxis* FindXAxis(int32_t id) const { return xAxes_.Find(id); }
  VAxis* FindYAxis(int32_t id) const { return yAxes_.Find(id); }
  VDataset* FindDataset(int32_t id) const { return datasets_.Find(id); }
  // As the Find functions, raising message 104 or 105 when absent.
  VAxis& XAxis(int32_t id) const;
  VAxis& YAxis(int32_t id) const;
  VDataset& Dataset(int32_t id) const;
  const IdMap<VAxis>& xAxes() const { return xAxes_; }
  const IdMap<VAxis>& yAxes() const { return yAxes_; }
  const IdMap<VDataset>& datasets() const { return datasets_; }

  std::vector<EnumEntry> EnumXAxes() const;
  std::vector<EnumEntry> EnumYAxes() const;
  std::vector<EnumEntry> EnumDatasets() const;

  // The changes of the automation entries that lay out and repaint.
  void SetXAxisProperties(int32_t id, const AxisProps& props);
  void SetYAxisProperties(int32_t id, const AxisProps& props);
  void SetDatasetProperties(int32_t id, const DatasetProps& props);
  void SetDatasetValues(int32_t id, size_t n, const ValueColumn& xs, const ValueColumn& ys,
                        std::span<const int32_t> status, bool append);
  void ClearDataset(int32_t id);
  // Message 105, or 157 when the dataset is not a pie; false for an index
  // outside the pie.
  bool SetPieColorAt(int32_t datasetId, int index, Color color);

  // Limit lines of Y axes (message 104 for a missing one); removal of an
  // unknown id does nothing.
  int32_t AddLimitValue(int32_t axisId, const Value& value, std::optional<Color> color,
                        const std::optional<Text>& style, int16_t width);
  void RemoveLimitValue(int32_t id);

  // Hairlines; a pie graph takes none. Ids come from one counter of the process.
  std::optional<int32_t> AddHairline(float xposPercent, std::optional<Color> color, int16_t width);
  const std::vector<Hairline>& hairlines() const { return hairlines_; }
  // The hairline of an id, or null.
  Hairline* FindHairline(int32_t id);
  // False for an unknown id; the others keep their order.
  bool RemoveHairline(int32_t id);
  // Remembers a dataset whose values the hairlines show, in the first of
  // 20 free places.
  enum class ShowDatasetResult { kAdded, kUnknownDataset, kFull };
  ShowDatasetResult AddHairlineShowDataset(int32_t datasetId);
  // The colours of points of status 1, 2 and 9, and a fourth one.
  std::array<int32_t, 4>& markerStatusColors() { return markerStatusColors_; }

  // Negative leaves a flag as it is; anything else sets it to (value > 0).
  void SetScrollbars(int horizontal, int vertical);
  bool horizontalScrollbar() const { return horizontalScrollbar_; }
  bool verticalScrollbar() const { return verticalScrollbar_; }
  void UpdateScrollBars();

  void SetSuspendDraw(int32_t suspend);
  int32_t suspendDraw() const { return suspendDraw_; }

  // A negative colour clears the colour and the first word only.
  void SetGridProps(int32_t color, const std::array<int16_t, 3>& words);
  int32_t gridColor() const { return gridColor_; }
  const std::array<int16_t, 3>& gridWords() const { return gridWords_; }

  std::array<Text, 4>& unitNames() { return unitNames_; }
  Box<int32_t>& margins() { return margins_; }
  Box<float>& zoomRect() { return zoomRect_; }
  int32_t& mouseMode() { return mouseMode_; }
  int32_t& legendPosition() { return legendPosition_; }
  // The legend exists while it is enabled.
  void EnableLegend(bool enabled);
  VLegend* legend() const { return legend_.get(); }
  // PutBarWidth's percentage of the automatic bar width; -1 is "Auto Width".
  int32_t& barWidth() { return barWidth_; }
  int32_t barWidth() const { return barWidth_; }
  // The curve drawn highlighted, if any.
  std::optional<int32_t>& highlightedCurve() { return highlightedCurve_; }
  const std::optional<int32_t>& highlightedCurve() const { return highlightedCurve_; }
  // The rubber band the operator dragged; the drawing pass draws it unless empty.
  RubberBand& band() { return band_; }
  // The band of the last release, kept for GetSelectedPoints and
  // ZoomToSelection after the band itself is taken away.
  RubberBand& selection() { return selection_; }
  // XORs the band's dotted frame onto a surface whose client area is `bounds`.
  void DrawBand(Surface& surface, const Rect& bounds);
  // While printing, pixel constants and fonts are scaled by the printer's
  // resolution over the screen's.
  bool printing() const { return printing_; }
  double printScale() const { return printing_ ? printScale_ : 1.0; }
  void SetPrinting(bool printing, double scale);
  int32_t& xAxisHairline() { return xAxisHairline_; }
  std::array<int32_t, 20>& hairlineDatasets() { return hairlineDatasets_; }

  // Lays the graph out for the window's client size and invalidates the
  // window unless drawing is suspended; nothing without a window.
  void UpdateLayoutAndRepaint();
  // Lays the graph out for a client of width - 1 by height - 1 pixels,
  // measuring text on `measuring`, or on the window's device context.
  void Recalculate(int width, int height, Surface* measuring = nullptr);
  // Size of the last layout (the client size plus one).
  int layoutWidth() const { return layoutWidth_; }
  int layoutHeight() const { return layoutHeight_; }
  // Paints the graph: `bounds` is where, in device pixels, `update` the part
  // that needs it. Nothing without a window.
  void Draw(Surface& surface, const Rect& bounds, const Rect& update);

  // The visible plot and the whole (unzoomed) data area, in graph pixels.
  const Box<int32_t>& plotFrame() const { return plotFrame_; }
  const Box<int32_t>& dataArea() const { return dataArea_; }
  // Moves the data area (scrolling) without changing its size.
  void MoveDataArea(int32_t left, int32_t bottom) {
    dataArea_.right += left - dataArea_.left;
    dataArea_.top += bottom - dataArea_.bottom;
    dataArea_.left = left;
    dataArea_.bottom = bottom;
  }

 private:
  void AddAxis(IdMap<VAxis>& axes, const IdMap<VAxis>& others, bool vertical, int32_t id,
               int type, const AxisProps* props, int positionType, int32_t referenceId,
               float crossingValue);
  void RemoveAxis(IdMap<VAxis>& axes, int32_t id);
  void DestroyAxes();
  std::vector<EnumEntry> EnumAxes(const IdMap<VAxis>& axes) const;
  void PlaceFreeAxes(Surface* measuring, Box<int32_t>& plot);
  void PlaceDataArea();
  void PlaceLegend(Surface* measuring, Box<int32_t>& plot, int32_t w, int32_t h);
  void PlaceAxesOnAxes(Surface* measuring);
  void PlacePie(Surface* measuring);
  // Whether the Y axis at `index` is measured and drawn beside the plot:
  // the first one, and the second to fourth when split off.
  bool ShowsYAxis(size_t index) const;
  bool HasSplitYAxes() const;
  // The plot frame in device pixels of a pass over `bounds`, and in the
  // pass's logical pixels.
  Rect PlotInDevice(const Rect& bounds) const;
  Rect PlotInPass() const;
  void DrawGrid(Surface& surface);
  void DrawAxesOnAxes(Surface& surface);
  void DrawCurves(Surface& surface);
  void DrawFreeAxes(Surface& surface);
  void DrawLegend(Surface& surface, const Rect& bounds);
  void DrawHairlines(Surface& surface, const Rect& bounds);
  void Repaint();
  bool HasWindow() const { return window_ && window_->Exists(); }

  HostWindow* window_;
  int32_t suspendDraw_ = 0;
  int32_t legendPosition_ = 0;
  std::unique_ptr<VLegend> legend_;
  int32_t barWidth_ = -1;
  std::optional<int32_t> highlightedCurve_;
  RubberBand band_;
  RubberBand selection_;
  bool printing_ = false;
  double printScale_ = 1.0;
  int32_t gridColor_ = 0;
  std::array<int16_t, 3> gridWords_{};
  IdMap<VAxis> xAxes_;
  IdMap<VAxis> yAxes_;
  IdMap<VDataset> datasets_;
  std::vector<Hairline> hairlines_;
  int32_t xAxisHairline_ = -1;
  std::array<int32_t, 20> hairlineDatasets_;
  std::array<int32_t, 4> markerStatusColors_{};
  int32_t mouseMode_ = 0;
  bool horizontalScrollbar_ = false;
  bool verticalScrollbar_ = false;
  Box<float> zoomRect_{0, 1, 1, 0};
  Box<int32_t> margins_{10, 10, 10, 10};
  std::array<Text, 4> unitNames_;
  int layoutWidth_ = 0;
  int layoutHeight_ = 0;
  Box<int32_t> plotFrame_{};
  Box<int32_t> dataArea_{};
};

}  // namespace zel

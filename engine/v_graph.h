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
#include "engine/frame_geometry.h"
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

// What a left-button drag does; the MouseMode property's keywords in order.
enum class MouseMode : int32_t { kSelect = 0, kPan = 1, kZoom = 2, kNone = 3 };

// The rubber band: start (x0, y0) and current (x1, y1) corner as fractions of
// the data area, from its left and bottom edges. Empty when all are zero.
struct RubberBand {
  float bandX0 = 0, bandX1 = 0, bandY0 = 0, bandY1 = 0;
  bool empty() const { return bandX0 == 0 && bandX1 == 0 && bandY0 == 0 && bandY1 == 0; }
  // The corners in order: (left, right, bottom, top).
  Fractions Normalised() const;
};

// Where the last layout put the graph, in the graph's frame: the visible
// plot frame and the whole data area that the zoom rectangle maps onto it.
struct GraphLayout {
  FrameRect plot;
  FrameRect data;
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
  void AddXAxis(int32_t id, AxisType type, const AxisProps* props, VAxis::Placement positionType = VAxis::kLowSide,
                int32_t referenceId = 0, float crossingValue = 0);
  void AddYAxis(int32_t id, AxisType type, const AxisProps* props, VAxis::Placement positionType = VAxis::kLowSide,
                int32_t referenceId = 0, float crossingValue = 0);
  // Messages 112, 156, 155, 104, 114.
  void AddDataset(int32_t id, DatasetType type, int32_t xAxisId, int32_t yAxisId,
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
  const Hairline* FindHairline(int32_t id) const;
  // False for an unknown id; the others keep their order.
  bool RemoveHairline(int32_t id);
  // Remembers a dataset whose values the hairlines show, in the first of
  // 20 free places.
  enum class ShowDatasetResult { kAdded, kUnknownDataset, kFull };
  ShowDatasetResult AddHairlineShowDataset(int32_t datasetId);
  // Moves a hairline to a fraction of the plot frame's width; false for an
  // unknown id.
  bool SetHairlinePosition(int32_t id, float position);
  // Sets a hairline's colour and pen width as given; false for an unknown id.
  bool SetHairlineLook(int32_t id, Color color, int32_t width);
  // The X axis whose values label the hairlines (not checked).
  int32_t xAxisHairline() const { return xAxisHairline_; }
  void SetXAxisHairline(int32_t id) { xAxisHairline_ = id; }
  const std::array<int32_t, 20>& hairlineDatasets() const { return hairlineDatasets_; }
  // The colours of points of status 1, 2 and 9, and a fourth one.
  const std::array<int32_t, 4>& markerStatusColors() const { return markerStatusColors_; }
  void SetMarkerStatusColors(const std::array<int32_t, 4>& colors) { markerStatusColors_ = colors; }

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

  // The names of split Y axes 1 to 4, drawn above their axes.
  const std::array<Text, 4>& unitNames() const { return unitNames_; }
  void SetUnitNames(std::array<Text, 4> names) { unitNames_ = std::move(names); }
  // Lays out and repaints with the new margins.
  const Margins& margins() const { return margins_; }
  void SetMargins(const Margins& margins);
  // Raises message 113 unless 0 <= left < right <= 1 and 0 <= bottom < top
  // <= 1 (NaN fails); then lays out and repaints.
  const Fractions& zoomRect() const { return zoomRect_; }
  void SetZoomRect(const Fractions& zoom);
  // The zoom rectangle a scroll leaves, whose width or height it keeps:
  // no check, no layout (the data area has moved already).
  void ScrolledZoomRect(const Fractions& zoom) { zoomRect_ = zoom; }
  MouseMode mouseMode() const { return mouseMode_; }
  void SetMouseMode(MouseMode mode) { mouseMode_ = mode; }
  // The LegendPosition keyword's value as the host last gave it (kNone after
  // it was read without a legend).
  LegendPosition legendPosition() const { return legendPosition_; }
  void SetLegendPosition(LegendPosition position) { legendPosition_ = position; }
  // The legend exists while it is enabled.
  void EnableLegend(bool enabled);
  VLegend* legend() const { return legend_.get(); }
  // PutBarWidth's percentage of the automatic bar width; -1 is "Auto Width".
  int32_t barWidth() const { return barWidth_; }
  void SetBarWidth(int32_t percent) { barWidth_ = percent; }
  // The curve drawn highlighted, if any.
  const std::optional<int32_t>& highlightedCurve() const { return highlightedCurve_; }
  void SetHighlightedCurve(std::optional<int32_t> id) { highlightedCurve_ = id; }
  // The rubber band the operator dragged; the drawing pass draws it unless empty.
  const RubberBand& band() const { return band_; }
  void SetBand(const RubberBand& band) { band_ = band; }
  // The band of the last release, kept for GetSelectedPoints and
  // ZoomToSelection after the band itself is taken away.
  const RubberBand& selection() const { return selection_; }
  void SetSelection(const RubberBand& selection) { selection_ = selection; }
  // XORs the band's dotted frame onto a surface whose client area is `bounds`.
  void DrawBand(Surface& surface, const Rect& bounds);
  // While printing, pixel constants and fonts are scaled by the printer's
  // resolution over the screen's.
  bool printing() const { return printing_; }
  double printScale() const { return printing_ ? printScale_ : 1.0; }
  void SetPrinting(bool printing, double scale);

  // Lays the graph out for the window's client size and invalidates the
  // window unless drawing is suspended; nothing without a window.
  void UpdateLayoutAndRepaint();
  // The same for a client area of the given size, as a resize reports it.
  void LayoutAndRepaint(int clientWidth, int clientHeight);
  // Lays the graph out for a client of width - 1 by height - 1 pixels,
  // measuring text on `measuring`, or on the window's device context.
  void Recalculate(int width, int height, Surface* measuring = nullptr);
  // Size of the last layout (the client size plus one).
  int layoutWidth() const { return layoutWidth_; }
  int layoutHeight() const { return layoutHeight_; }
  // Paints the graph: `bounds` is where, in device pixels, `update` the part
  // that needs it. Nothing without a window.
  void Draw(Surface& surface, const Rect& bounds, const Rect& update);
  // The picture for a target other than the window (a metafile, a data
  // object, a control that has no window): laid out for `bounds`, measured
  // on `surface`, and painted whole, window or not. The last layout is
  // taken again afterwards.
  void DrawDetached(Surface& surface, const Rect& bounds);

  // The visible plot and the whole (unzoomed) data area, in graph pixels.
  const GraphLayout& layout() const { return layout_; }
  const FrameRect& plotFrame() const { return layout_.plot; }
  const FrameRect& dataArea() const { return layout_.data; }
  // Moves the data area (scrolling) without changing its size.
  void MoveDataArea(int32_t left, int32_t bottom);
  // The device column of a hairline drawn on a client area whose left edge
  // is `clientLeft`: where it is drawn, grabbed and read.
  int32_t HairlineColumn(const Hairline& hairline, int32_t clientLeft) const;

 private:
  void AddAxis(IdMap<VAxis>& axes, const IdMap<VAxis>& others, bool vertical, int32_t id,
               AxisType type, const AxisProps* props, VAxis::Placement positionType, int32_t referenceId,
               float crossingValue);
  void RemoveAxis(IdMap<VAxis>& axes, int32_t id);
  void DestroyAxes();
  std::vector<EnumEntry> EnumAxes(const IdMap<VAxis>& axes) const;
  void PlaceFreeAxes(Surface* measuring, FrameRect& plot);
  void PlaceDataArea();
  void PlaceLegend(Surface* measuring, FrameRect& plot, int32_t w, int32_t h);
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
  void Paint(Surface& surface, const Rect& bounds, const Rect& update);
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
  LegendPosition legendPosition_ = LegendPosition::kBottom;
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
  MouseMode mouseMode_ = MouseMode::kSelect;
  bool horizontalScrollbar_ = false;
  bool verticalScrollbar_ = false;
  Fractions zoomRect_;
  Margins margins_;
  std::array<Text, 4> unitNames_;
  // A layout that ran out of memory, to be done again before the next paint.
  bool layoutPending_ = false;
  int layoutWidth_ = 0;
  int layoutHeight_ = 0;
  GraphLayout layout_;
};

}  // namespace zel

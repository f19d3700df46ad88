#pragma once
// A pie chart: one slice per point, sized by its y value and labelled by its
// x value, which is kept as the host gave it. A pie has no axes and shares
// the graph with nothing else.
#include <vector>

#include "engine/surface.h"
#include "engine/v_dataset.h"

namespace zel {

class VPieDataset : public VDataset {
 public:
  explicit VPieDataset(const DatasetProps* props);

  // Labels are copied whatever their type; sizes are converted to R4, and a
  // size that cannot be throws StatusError with the platform's code, leaving
  // the pie as it was. Every call gives all slices the default colours again.
  void SetValues(size_t n, const ValueColumn& xs, const ValueColumn& ys,
                 std::span<const int32_t> status, bool append) override;

  Value XAt(size_t i) const override { return labels_[i]; }
  Value YAt(size_t i) const override { return sizes_[i]; }
  const std::vector<float>& sizes() const { return sizes_; }
  const std::vector<Color>& sliceColors() const { return sliceColors_; }

  // False, changing nothing, for an index outside 0..count-1.
  bool SetPieColorAt(int index, Color color);

  // The default colours of a pie of `slices` slices: ten colours, then greys
  // from 128 up in equal steps.
  static std::vector<Color> DefaultColors(size_t slices);

  // Gives the pie its rectangle (logical pixels of the drawing pass, right
  // and bottom inclusive) and lays it out there: the band the title takes,
  // the diameter and the slice labels, measured in the title and text fonts
  // on `measuring`.
  void SetPlotRect(const Rect& rect, Surface& measuring);
  const Rect& plotRect() const { return plotRect_; }
  int32_t pieDiameter() const { return pieDiameter_; }
  // The height above the pie that the layout left for the title.
  int32_t titleBand() const { return titleBand_; }
  const std::vector<int32_t>& labelX() const { return labelX_; }
  const std::vector<int32_t>& labelY() const { return labelY_; }
  const std::vector<Value>& labels() const { return labels_; }
  // How far the labels of the last layout pass the right (cx) and bottom
  // (cy) edges; negative when room is left.
  Size labelOverflow() const { return labelOverflow_; }

  // Title, labels with their colour swatches, and the wedges, clipped to the
  // rectangle. `windowOrigin` is the surface's current window origin, which
  // turns the rectangle into the device pixels that clipping takes.
  void DrawPie(Surface& surface, Point windowOrigin) const;

 private:
  std::vector<Value> labels_;
  std::vector<float> sizes_;
  std::vector<Color> sliceColors_;
  std::vector<int32_t> labelX_;
  std::vector<int32_t> labelY_;
  Rect plotRect_;
  int32_t pieDiameter_ = 0;
  int32_t titleBand_ = 0;
  Size labelOverflow_;
};

}  // namespace zel

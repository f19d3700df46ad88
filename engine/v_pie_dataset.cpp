#include "engine/v_pie_dataset.h"

#include <algorithm>
#include <cstdint>

#include "engine/graph_error.h"
#include "engine/pie_layout.h"
#include "util/value.h"
#include "util/value_conversion.h"

namespace zel {
namespace {

constexpr Color Rgb(int r, int g, int b) { return Color(r | (g << 8) | (b << 16)); }

constexpr Color kFirstColors[] = {Rgb(255, 0, 255), Rgb(255, 0, 0),   Rgb(255, 192, 0),
                                  Rgb(192, 192, 0), Rgb(255, 255, 0), Rgb(0, 255, 0),
                                  Rgb(0, 255, 255), Rgb(0, 0, 255),   Rgb(0, 0, 192),
                                  Rgb(192, 0, 192)};
constexpr size_t kNamedColors = std::size(kFirstColors);

}  // namespace

VPieDataset::VPieDataset(const DatasetProps* props) : VDataset(kPie, nullptr, nullptr, props) {}

std::vector<Color> VPieDataset::DefaultColors(size_t slices) {
  std::vector<Color> colors(kFirstColors, kFirstColors + std::min(slices, kNamedColors));
  // With exactly ten slices there are no greys, and no step to divide by.
  int step = slices > kNamedColors ? 128 / int(slices - kNamedColors) : 0;
  for (size_t i = kNamedColors; i < slices; ++i) {
    int v = (128 + int(i - kNamedColors) * step) % 256;
    colors.push_back(Rgb(v, v, v));
  }
  return colors;
}

void VPieDataset::SetValues(size_t n, const ValueColumn& xs, const ValueColumn& ys,
                            std::span<const int32_t>, bool append) {
  std::vector<float> sizes(n);
  for (size_t i = 0; i < n; ++i) {
    Value size;
    if (int32_t status = ChangeType(ys.At(i), ValueKind::R4, size); status != kConversionOk)
      throw StatusError{status};
    sizes[i] = std::get<float>(size);
  }
  size_t first = append ? count_ : 0;
  std::vector<Value> labels(append ? labels_ : std::vector<Value>());
  for (size_t i = 0; i < n; ++i) labels.push_back(xs.At(i));
  std::vector<float> allSizes(append ? sizes_ : std::vector<float>());
  allSizes.insert(allSizes.end(), sizes.begin(), sizes.end());
  std::vector<Color> colors = DefaultColors(first + n);

  labels_ = std::move(labels);
  sizes_ = std::move(allSizes);
  sliceColors_ = std::move(colors);
  labelX_.assign(first + n, 0);
  labelY_.assign(first + n, 0);
  count_ = first + n;
}

bool VPieDataset::SetPieColorAt(int index, Color color) {
  if (index < 0 || size_t(index) >= count_) return false;
  sliceColors_[size_t(index)] = color;
  return true;
}

void VPieDataset::SetPlotRect(const Rect& rect, Surface& measuring) {
  std::vector<int32_t> widths(count_);
  measuring.Save();
  measuring.SelectFont(titleFont());
  int32_t titleLineHeight = measuring.TextExtent(u"0").cy;
  measuring.SelectFont(textFont());
  int32_t lineHeight = measuring.TextExtent(u"0").cy;
  for (size_t i = 0; i < count_; ++i) widths[i] = measuring.TextExtent(VariantDisplayText(labels_[i])).cx;
  measuring.Restore();
  // Widths and heights count both edges; a rectangle turned inside out has none.
  auto extent = [](int32_t from, int32_t to) {
    return int32_t(std::clamp<int64_t>(int64_t(to) - from + 1, 0, INT32_MAX));
  };
  PieLayout layout = LayOutPie(extent(rect.left, rect.right), extent(rect.top, rect.bottom), titleLineHeight,
                               lineHeight, widths);
  plotRect_ = rect;
  titleBand_ = layout.titleBand;
  pieDiameter_ = layout.diameter;
  labelX_ = std::move(layout.labelX);
  labelY_ = std::move(layout.labelY);
  labelOverflow_ = {layout.overflowX, layout.overflowY};
}

}  // namespace zel

// The pie and the legend through real GDI into a memory bitmap: the wedges
// land in the quarters their sizes give them, clipping holds, and the
// legend's separator inverts what it crosses.
#include <gtest/gtest.h>

#include "engine/v_dataset.h"
#include "engine/v_legend.h"
#include "engine/v_pie_dataset.h"
#include "memory_canvas.h"
#include "util/process_state.h"

namespace zel::testing {
namespace {

constexpr COLORREF kWhite = RGB(255, 255, 255);

class PieAndLegendPixels : public ::testing::Test {
 protected:
  void SetUp() override {
    ResetProcessState();
    InstallWindowsPlatformHooks();
  }
  void Fill(const std::vector<float>& sizes) {
    std::vector<Value> labels;
    for (size_t i = 0; i < sizes.size(); ++i) labels.push_back(Text(1, char16_t(u'a' + i)));
    pie.SetValues(sizes.size(), ValueColumn(std::span<const Value>(labels)),
                  ValueColumn(std::span<const float>(sizes)), {}, false);
  }
  // Lays the pie out in `rect` and draws it with the window origin at `origin`.
  void Draw(MemoryCanvas& canvas, const Rect& rect, Point origin = {0, 0}, const Rect* clip = nullptr) {
    GdiSurface surface(canvas.dc());
    pie.SetPlotRect(rect, surface);
    if (clip) surface.ClipTo(*clip);
    surface.SetWindowOrigin(origin);
    pie.DrawPie(surface, origin);
  }
  int32_t TitleHeight(MemoryCanvas& canvas) {
    GdiSurface surface(canvas.dc());
    surface.SelectFont(pie.titleFont());
    return surface.TextExtent(u"0").cy;
  }
  // Pixels of the canvas outside `rect` that are not white.
  static int MarkedOutside(const MemoryCanvas& canvas, const Rect& rect) {
    int marked = 0;
    for (int y = 0; y < canvas.height(); ++y)
      for (int x = 0; x < canvas.width(); ++x)
        if ((x < rect.left || x >= rect.right || y < rect.top || y >= rect.bottom) &&
            canvas.Pixel(x, y) != kWhite)
          ++marked;
    return marked;
  }

  VPieDataset pie{nullptr};
};

TEST_F(PieAndLegendPixels, SlicesOfOneOneTwoFillTheirQuartersAndHalfAndTheirSwatches) {
  MemoryCanvas canvas(320, 260);
  Fill({1, 1, 2});
  Draw(canvas, {0, 0, 319, 259});
  int32_t radius = pie.pieDiameter() / 2, inner = radius - 3;
  ASSERT_GT(inner, 20);
  int cx = radius, cy = TitleHeight(canvas) + 10 + radius, q = inner / 2;
  EXPECT_EQ(canvas.Pixel(cx + q, cy - q), RGB(255, 0, 255));  // 12 to 3 o'clock
  EXPECT_EQ(canvas.Pixel(cx + q, cy + q), RGB(255, 0, 0));    // 3 to 6 o'clock
  EXPECT_EQ(canvas.Pixel(cx - q, cy - q), RGB(255, 192, 0));  // 6 round to 12
  EXPECT_EQ(canvas.Pixel(cx - q, cy + q), RGB(255, 192, 0));
  EXPECT_EQ(canvas.Pixel(cx - inner + 1, cy), RGB(255, 192, 0));
  // The black outline, and nothing past it.
  EXPECT_EQ(canvas.Pixel(cx, cy - inner), RGB(0, 0, 0));
  EXPECT_EQ(canvas.Pixel(cx, cy - inner - 2), kWhite);
  EXPECT_EQ(canvas.Pixel(cx + inner + 2, cy + q), kWhite);

  // The label swatches show the slice colours.
  GdiSurface measuring(canvas.dc());
  measuring.SelectFont(pie.textFont());
  int32_t row = std::max(measuring.TextExtent(u"0").cy, 12);
  const COLORREF colours[] = {RGB(255, 0, 255), RGB(255, 0, 0), RGB(255, 192, 0)};
  for (size_t i = 0; i < 3; ++i) {
    int x = 5 + pie.labelX()[i], y = 2 + pie.labelY()[i] + (row - 12) / 2;
    EXPECT_EQ(canvas.Pixel(x + 12, y + 6), colours[i]) << i;
    EXPECT_EQ(canvas.Pixel(x, y + 6), RGB(0, 0, 0)) << i;  // the swatch's outline
  }
}

TEST_F(PieAndLegendPixels, TheDiscKeepsItsOutlineAtTheBottomUnderATallerTitleFont) {
  // The default title font is taller than the default text font; the pie
  // fills the height under the title, and its outline is not cut off.
  MemoryCanvas canvas(600, 400);
  Fill({1, 1, 2});
  Draw(canvas, {0, 0, 599, 399});
  ASSERT_GT(pie.pieDiameter(), 300);
  int x = pie.pieDiameter() / 2 + 8, lowest = 399;
  while (lowest > 0 && canvas.Pixel(x, lowest) == kWhite) --lowest;
  EXPECT_EQ(canvas.Pixel(x, lowest), RGB(0, 0, 0)) << "row " << lowest;
  EXPECT_EQ(canvas.Pixel(x, lowest - 2), RGB(255, 0, 0));
}

TEST_F(PieAndLegendPixels, DrawingStaysInsideTheRectangleAndTheClipping) {
  Fill({3, 1, 1, 2, 5});
  // The rectangle is in logical pixels; the window origin moves it to
  // (50, 20) on the device.
  MemoryCanvas moved(320, 260);
  Draw(moved, {0, 0, 199, 199}, {-50, -20});
  EXPECT_EQ(MarkedOutside(moved, {50, 20, 249, 219}), 0);
  EXPECT_NE(moved.Pixel(50 + pie.pieDiameter() / 2, 20 + 40), kWhite);
  // Clipping already in place narrows it further.
  MemoryCanvas clipped(320, 260);
  Rect clip{0, 0, 120, 260};
  Draw(clipped, {0, 0, 199, 199}, {-50, -20}, &clip);
  EXPECT_EQ(MarkedOutside(clipped, {50, 20, 120, 219}), 0);
  EXPECT_NE(clipped.Pixel(100, 120), kWhite);
}

TEST_F(PieAndLegendPixels, TheLegendSeparatorInvertsWhatItCrosses) {
  MemoryCanvas canvas(200, 100);
  GdiSurface(canvas.dc()).FillRect({0, 0, 200, 50}, RGB(0, 0, 0));
  IdMap<VDataset> datasets;
  DatasetProps props;
  props.title = Text(u"flow");
  props.lineColor = RGB(0, 0, 255);
  props.markerShape = Text(u"BOX");
  props.markerColor = RGB(0, 255, 0);
  datasets.Add(1, std::make_unique<VDataset>(kPlot, nullptr, nullptr, &props));
  VLegend legend(datasets);
  legend.position = VLegend::kRight;
  legend.rect = {100, 0, 200, 100};
  GdiSurface surface(canvas.dc());
  legend.Draw(surface, 1);
  surface.SelectFont(datasets.Find(1)->titleFont());
  EXPECT_EQ(canvas.Pixel(100, 10), kWhite);        // over black
  EXPECT_EQ(canvas.Pixel(100, 80), RGB(0, 0, 0));  // over white
  EXPECT_EQ(canvas.Pixel(99, 80), kWhite);
  // The line sample and the marker of the first row; nothing drawn left of the legend.
  int32_t y = 3 + surface.TextExtent(u"0").cy / 2 + 11;
  EXPECT_EQ(canvas.Pixel(100 + 10 + 2, y), RGB(0, 0, 255));
  EXPECT_EQ(canvas.Pixel(100 + 16 + 10, y + 1), RGB(0, 255, 0));
}

}  // namespace
}  // namespace zel::testing

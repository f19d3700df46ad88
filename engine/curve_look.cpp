#include "engine/curve_look.h"

#include <algorithm>
#include <cmath>

#include "engine/dataset_keywords.h"
#include "engine/v_dataset.h"
#include "util/process_state.h"

namespace zel {
namespace {

constexpr Color kInvert = 0xFFFFFF;
// Wider pens than this would only cost time: no device is that large.
constexpr double kWidestPen = 10000;

// Flips a blink toggle; true on the turns where it was set before.
bool Blink(bool& toggle) {
  bool wasSet = toggle;
  toggle = !toggle;
  return wasSet;
}

int ScaledWidth(int width, double scale) {
  double scaled = double(width) * scale;
  if (!std::isfinite(scaled)) return width;
  return int(std::clamp(scaled, -kWidestPen, kWidestPen));
}

}  // namespace

CurveLook LookOf(const VDataset& dataset, DatasetType typeDrawn, const std::array<int32_t, 4>& statusColors,
                 double printerScale, bool highlighted) {
  CurveLook look;
  look.penWidth = ScaledWidth(dataset.lineWidth(), printerScale);
  look.line = dataset.lineColor();
  look.fill = dataset.fillColor();
  look.marker = dataset.markerColor();
  for (size_t k = 0; k < look.status.size(); ++k) look.status[k] = Color(statusColors[k]);
  if (highlighted && (typeDrawn == kPlot || typeDrawn == kArea)) {
    // The highlighted width is the line width plus one, on any device.
    look.penWidth = dataset.lineWidth() + 1;
    if (Blink(Process().curveBlink)) {
      look.line ^= kInvert;
      look.fill ^= kInvert;
      look.marker ^= kInvert;
    }
  }
  return look;
}

Color BarColor(const VDataset& dataset, bool highlighted) {
  Color color = dataset.lineColor();
  if (highlighted && Blink(Process().barBlink)) color ^= kInvert;
  return color;
}

}  // namespace zel

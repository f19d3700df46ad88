#include "engine/axis_painter.h"

#include <algorithm>
#include <cmath>

#include "engine/axis_scale.h"
#include "engine/v_axis.h"

namespace zel {
namespace {

constexpr int32_t kXMajorTick = 8;
constexpr int32_t kYMajorTick = 6;
constexpr int32_t kXLabelGap = 10;  // 1.25 major ticks
constexpr int32_t kLabelSpacing = 3;
constexpr int32_t kTopLabelFree = 9;
constexpr int32_t kArrowHalfBase = 6;
constexpr int32_t kArrowHeight = 16;

std::vector<Text> Lines(const Text& text) {
  std::vector<Text> lines;
  size_t start = 0;
  for (size_t end; (end = text.find(u'\n', start)) != Text::npos; start = end + 1)
    lines.push_back(text.substr(start, end - start));
  lines.push_back(text.substr(start));
  return lines;
}

Size Measure(Surface& surface, const std::vector<Text>& lines) {
  Size size;
  for (const Text& line : lines) {
    Size s = surface.TextExtent(line);
    size.cx = std::max(size.cx, s.cx);
    size.cy += s.cy;
  }
  return size;
}

void WriteLines(Surface& surface, Point at, const std::vector<Text>& lines, int32_t lineHeight) {
  for (const Text& line : lines) {
    surface.WriteText(at, line);
    at.y += lineHeight;
  }
}

// The label of the annotation at pixel `position` of the axis.
Text LabelAt(const VAxis& axis, const AxisScale& scale, double position) {
  return FormatAxisValue(axis.LabelFormat(), scale.ToValue(position));
}

void DrawXLabels(Surface& surface, const VAxis& axis, const AxisScale& scale,
                 const AxisPlacement& at, int reportType) {
  int32_t direction = at.highSide ? -1 : 1;
  double halfCategory = axis.type() == kAxisDiscrete ? scale.pixelsPerUnit / 2 : 0;
  Text previous = u"test";
  int32_t previousRight = 0;
  bool first = true;
  for (double position : MarkPositions(scale, scale.annotationStep, at.extent)) {
    int32_t x = at.start + int32_t(std::lround(position));
    if (x < at.roomFirst || x > at.roomLast) continue;
    surface.MoveTo({x, at.line});
    surface.LineTo({x, at.line + direction * kXMajorTick});
    Text text = LabelAt(axis, scale, position);
    std::vector<Text> lines = Lines(text);
    Size size = Measure(surface, lines);
    int32_t labelX = x + int32_t(halfCategory);
    int32_t half = size.cx / 2;
    bool fitsLeft = labelX - half >= at.roomFirst;
    bool fitsRight = reportType == 3 || labelX + half <= at.roomLast ||
                     labelX + half <= at.roomLast + at.slack;
    bool clearOfPrevious = first || labelX - half >= previousRight + kLabelSpacing;
    if (!(fitsLeft && fitsRight && clearOfPrevious && text != previous)) continue;
    int32_t lineHeight = lines.empty() ? 0 : size.cy / int32_t(lines.size());
    int32_t top = at.highSide ? at.line - kXLabelGap - size.cy : at.line + kXLabelGap;
    WriteLines(surface, {labelX, top}, lines, lineHeight);
    previous = text;
    previousRight = labelX + half;
    first = false;
  }
}

void DrawYLabels(Surface& surface, const VAxis& axis, const AxisScale& scale, const AxisPlacement& at) {
  int32_t direction = at.highSide ? 1 : -1;
  double halfCategory = axis.type() == kAxisDiscrete ? scale.pixelsPerUnit / 2 : 0;
  int32_t labelX = at.line + direction * (kYMajorTick * 5 / 4);
  for (double position : MarkPositions(scale, scale.annotationStep, at.extent)) {
    int32_t y = at.start - int32_t(std::lround(position));
    if (y < at.roomFirst || y > at.roomLast) continue;
    surface.MoveTo({at.line, y});
    surface.LineTo({at.line + direction * kYMajorTick, y});
    std::vector<Text> lines = Lines(LabelAt(axis, scale, position));
    Size size = Measure(surface, lines);
    int32_t centre = y - int32_t(halfCategory);
    int32_t top = centre - size.cy / 2;
    if (top < at.roomFirst || centre + size.cy / 2 > at.roomLast || top <= at.roomFirst + kTopLabelFree)
      continue;
    WriteLines(surface, {labelX, top}, lines, lines.empty() ? 0 : size.cy / int32_t(lines.size()));
  }
}

void DrawArrowhead(Surface& surface, const VAxis& axis, const AxisPlacement& at) {
  int32_t end = at.roomFirst < 11 ? 15 : at.roomFirst;
  Polygon arrow{{{at.line - kArrowHalfBase, end}, {at.line + kArrowHalfBase, end}, {at.line, end - kArrowHeight}},
                FillMode::kWinding};
  surface.FillRegion(arrow, axis.axisColor());
}

}  // namespace

void DrawAxis(Surface& surface, const VAxis& axis, const AxisPlacement& at, int reportType) {
  AxisScale scale = ScaleOf(axis, at.extent);
  surface.SelectPen({kPenSolid, 2, axis.axisColor(), false});
  if (axis.vertical()) {
    surface.MoveTo({at.line, at.roomLast});
    surface.LineTo({at.line, at.roomFirst});
  } else {
    surface.MoveTo({at.roomFirst, at.line});
    surface.LineTo({at.roomLast, at.line});
  }
  surface.SelectPen({kPenSolid, 1, axis.axisColor(), false});
  surface.SelectFont(axis.annotationFont());
  surface.SetTextColor(axis.axisColor());
  if (axis.vertical()) {
    DrawArrowhead(surface, axis, at);
    surface.SetTextAlign((at.highSide ? kAlignLeft : kAlignRight) | kAlignTop);
    DrawYLabels(surface, axis, scale, at);
  } else {
    surface.SetTextAlign(kAlignCenter | kAlignTop);
    DrawXLabels(surface, axis, scale, at, reportType);
  }
}

}  // namespace zel

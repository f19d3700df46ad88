#include "engine/axis_painter.h"

#include <algorithm>
#include <cmath>
#include <span>
#include <vector>

#include "engine/axis_keywords.h"
#include "engine/axis_scale.h"
#include "engine/frame_geometry.h"
#include "engine/v_axis.h"

namespace zel {
namespace {

constexpr double kXMajorTick = 8;
constexpr double kYMajorTick = 6;
constexpr double kXMinorTick = 4;
constexpr double kYMinorTick = 3;
constexpr double kLabelGapInTicks = 1.25;
constexpr int32_t kLabelSpacing = 3;
constexpr int32_t kTopLabelFree = 9;
constexpr int32_t kArrowHalfBase = 6;
constexpr int32_t kArrowHeight = 16;
constexpr int32_t kArrowLowestEnd = 11;
constexpr int32_t kArrowMovedEnd = 15;
// The unit name keeps this much clear of the arrowhead's widest part.
constexpr int32_t kUnitNameGap = 3;
constexpr int32_t kUnitNameRise = 3;
// Below the top end of a Y axis this much is left to the arrowhead and the
// unit name: labels and title keep out of it.
constexpr int32_t kTopEndFree = kTopLabelFree + 1;

// A pixel constant on this surface.
int32_t Scaled(double pixels, double f) { return int32_t(pixels * f); }

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

LogFont ScaledFont(LogFont font, double f) {
  font.lfHeight = int32_t(font.lfHeight * f);
  return font;
}

// The label of the `index`th annotation, from its value counted in whole
// steps (not from its pixel, which would lose the exact multiple).
Text LabelAt(const VAxis& axis, const AxisScale& scale, size_t index) {
  return FormatAxisValue(axis.LabelFormat(), MarkValue(scale, scale.annotationStep, index));
}

class AxisDrawing {
 public:
  AxisDrawing(Surface& surface, const VAxis& axis, const AxisPlacement& at)
      : surface_(surface), axis_(axis), at_(at), scale_(ScaleOf(axis, at.extent)),
        annotations_(AnnotationBuffer()) {
    MarkPositions(scale_, scale_.annotationStep, at.extent, annotations_);
  }

  void Line() {
    surface_.SelectPen({kPenSolid, Scaled(2, at_.scale), axis_.axisColor(), false});
    if (axis_.vertical()) {
      surface_.MoveTo({at_.line, at_.roomLast});
      surface_.LineTo({at_.line, at_.roomFirst});
    } else {
      surface_.MoveTo({at_.roomFirst, at_.line});
      surface_.LineTo({at_.roomLast, at_.line});
    }
    surface_.SelectPen({kPenSolid, 1, axis_.axisColor(), false});
  }

  void XLabels(int reportType) {
    double f = at_.scale;
    int32_t outward = at_.highSide ? -1 : 1;
    int32_t tick = Scaled(kXMajorTick, f), gap = Scaled(kXMajorTick * kLabelGapInTicks, f);
    double halfCategory = axis_.type() == kAxisDiscrete ? scale_.pixelsPerUnit / 2 : 0;
    Text previous = u"test";
    int32_t previousRight = 0;
    bool first = true;
    for (size_t index = 0; index < annotations_.size(); ++index) {
      int32_t x = at_.start + Pixel(annotations_[index]);
      if (x < at_.roomFirst || x > at_.roomLast) continue;
      surface_.MoveTo({x, at_.line});
      surface_.LineTo({x, at_.line + outward * tick});
      Text text = LabelAt(axis_, scale_, index);
      std::vector<Text> lines = Lines(text);
      Size size = Measure(surface_, lines);
      int32_t labelX = x + int32_t(halfCategory);
      int32_t half = size.cx / 2;
      bool fitsLeft = labelX - half >= at_.roomFirst;
      bool fitsRight = reportType == 3 || labelX + half <= at_.roomLast ||
                       labelX + half <= at_.roomLast + at_.slack;
      bool clearOfPrevious = first || labelX - half >= previousRight + Scaled(kLabelSpacing, f);
      if (!(fitsLeft && fitsRight && clearOfPrevious && text != previous)) continue;
      int32_t lineHeight = size.cy / int32_t(lines.size());
      int32_t top = at_.highSide ? at_.line - gap - size.cy : at_.line + gap;
      WriteLines(surface_, {labelX, top}, lines, lineHeight);
      previous = text;
      previousRight = labelX + half;
      first = false;
    }
    MinorTicks(Scaled(kXMinorTick, f) * outward);
  }

  void YLabels() {
    double f = at_.scale;
    int32_t outward = at_.highSide ? 1 : -1;
    int32_t tick = Scaled(kYMajorTick, f);
    double halfCategory = axis_.type() == kAxisDiscrete ? scale_.pixelsPerUnit / 2 : 0;
    int32_t labelX = at_.line + outward * Scaled(kYMajorTick * kLabelGapInTicks, f);
    for (size_t index = 0; index < annotations_.size(); ++index) {
      int32_t y = at_.start - Pixel(annotations_[index]);
      if (y < at_.roomFirst || y > at_.roomLast) continue;
      surface_.MoveTo({at_.line, y});
      surface_.LineTo({at_.line + outward * tick, y});
      std::vector<Text> lines = Lines(LabelAt(axis_, scale_, index));
      Size size = Measure(surface_, lines);
      int32_t centre = y - int32_t(halfCategory);
      int32_t top = centre - size.cy / 2;
      if (top < at_.roomFirst || centre + size.cy / 2 > at_.roomLast ||
          top <= at_.roomFirst + Scaled(kTopLabelFree, f))
        continue;
      WriteLines(surface_, {labelX, top}, lines, size.cy / int32_t(lines.size()));
    }
    MinorTicks(Scaled(kYMinorTick, f) * outward);
  }

  // The top end of a Y axis: where the arrowhead points and the unit name
  // stands. An end too near the top moves down to make room for the apex;
  // an inverted data area (margins larger than the window, placed far off)
  // keeps it within the device's reach of the axis's visible top.
  int32_t TopEnd() const {
    if (at_.roomFirst >= kArrowLowestEnd) return at_.roomFirst;
    return int32_t(std::clamp<int64_t>(kArrowMovedEnd, int64_t(at_.roomFirst) - kDeviceReach,
                                       int64_t(at_.roomFirst) + kDeviceReach));
  }

  // The arrowhead lies within the axis's own strip and the surface: its
  // apex is at most one pixel above the top edge, where the device clips it.
  void Arrowhead() {
    int32_t end = TopEnd();
    Polygon arrow{{{at_.line - kArrowHalfBase, end}, {at_.line + kArrowHalfBase, end}, {at_.line, end - kArrowHeight}},
                  FillMode::kWinding};
    surface_.FillRegion(arrow, axis_.axisColor());
  }

  void UnitName() {
    if (at_.unitName.empty()) return;
    LogFont font = ScaledFont(axis_.annotationFont(), at_.scale);
    font.lfWeight = kFontWeightBold;
    font.lfHeight = int32_t(font.lfHeight * 1.5);
    surface_.SelectFont(font);
    int32_t height = surface_.TextExtent(at_.unitName).cy;
    int32_t outward = at_.highSide ? 1 : -1;
    surface_.SetTextAlign((at_.highSide ? kAlignLeft : kAlignRight) | kAlignTop);
    surface_.WriteText({at_.line + outward * (kArrowHalfBase + kUnitNameGap), TopEnd() - height + kUnitNameRise},
                       at_.unitName);
  }

  // The title, in the axis font, in the outer part of the axis's room that
  // measuring kept for it: beyond the labels (and unit name), away from the
  // plot, at the axis's start, end or centre. Its cells are not filled, so
  // that it hides nothing even where a long title runs past its room. Y
  // titles run upwards in their turned font and stay below the arrowhead.
  void Title() {
    if (axis_.title().empty()) return;
    surface_.Save();
    surface_.SetTextBackground(TextBackground::kTransparent);
    surface_.SelectFont(ScaledFont(axis_.axisFont(), at_.scale));
    Size size = surface_.TextExtent(axis_.title());
    int32_t nearSide = axis_.thickness() - axis_.titleRoom() + Scaled(kAxisTitleGap, at_.scale);
    int position = axis_.titlePosition();
    if (axis_.vertical()) {
      // Turned a quarter to the left, the text runs up from its reference
      // point and its cell's top edge faces left.
      int32_t x = at_.highSide ? at_.line + nearSide : at_.line - nearSide - size.cy;
      int32_t highest = TopEnd() + kTopEndFree + size.cx;
      int32_t start = position == kTitleStart    ? at_.roomLast
                      : position == kTitleCenter ? (at_.roomFirst + at_.roomLast + size.cx) / 2
                                                 : highest;
      surface_.SetTextAlign(kAlignLeft | kAlignTop);
      surface_.WriteText({x, std::max(start, highest)}, axis_.title());
    } else {
      uint32_t along = position == kTitleStart ? kAlignLeft : position == kTitleCenter ? kAlignCenter : kAlignRight;
      int32_t x = position == kTitleStart    ? at_.roomFirst
                  : position == kTitleCenter ? (at_.roomFirst + at_.roomLast) / 2
                                             : at_.roomLast;
      int32_t y = at_.highSide ? at_.line - nearSide - size.cy : at_.line + nearSide;
      surface_.SetTextAlign(along | kAlignTop);
      surface_.WriteText({x, y}, axis_.title());
    }
    surface_.Restore();
  }

 private:
  // Minor ticks at the tick step wherever no annotation lies within a pixel;
  // `length` is signed, outward from the line.
  void MinorTicks(int32_t length) {
    static thread_local std::vector<double> ticks;
    MarkPositions(scale_, scale_.tickStep, at_.extent, ticks);
    // Only the ticks that can land in the visible room (a pixel of rounding
    // either side) are looked at: a view zoomed far in has many more.
    double low = axis_.vertical() ? double(at_.start) - at_.roomLast : double(at_.roomFirst) - at_.start;
    double high = axis_.vertical() ? double(at_.start) - at_.roomFirst : double(at_.roomLast) - at_.start;
    auto from = std::lower_bound(ticks.begin(), ticks.end(), low - 1);
    auto to = std::upper_bound(from, ticks.end(), high + 1);
    for (double position : std::span(from, to)) {
      auto next = std::lower_bound(annotations_.begin(), annotations_.end(), position);
      if (next != annotations_.end() && *next - position <= 1) continue;
      if (next != annotations_.begin() && position - *std::prev(next) <= 1) continue;
      int32_t offset = Pixel(position);
      if (axis_.vertical()) {
        int32_t y = at_.start - offset;
        if (y < at_.roomFirst || y > at_.roomLast) continue;
        surface_.MoveTo({at_.line, y});
        surface_.LineTo({at_.line + length, y});
      } else {
        int32_t x = at_.start + offset;
        if (x < at_.roomFirst || x > at_.roomLast) continue;
        surface_.MoveTo({x, at_.line});
        surface_.LineTo({x, at_.line + length});
      }
    }
  }

  Surface& surface_;
  const VAxis& axis_;
  const AxisPlacement& at_;
  AxisScale scale_;
  // Kept from one drawing to the next (see MarkPositions); one axis is
  // drawn at a time.
  static std::vector<double>& AnnotationBuffer() {
    static thread_local std::vector<double> buffer;
    return buffer;
  }
  std::vector<double>& annotations_;
};

}  // namespace

void DrawAxis(Surface& surface, const VAxis& axis, const AxisPlacement& at, int reportType) {
  AxisDrawing drawing(surface, axis, at);
  drawing.Line();
  surface.SelectFont(ScaledFont(axis.annotationFont(), at.scale));
  surface.SetTextColor(axis.axisColor());
  if (axis.vertical()) {
    drawing.Arrowhead();
    surface.SetTextAlign((at.highSide ? kAlignLeft : kAlignRight) | kAlignTop);
    drawing.YLabels();
    drawing.UnitName();
  } else {
    surface.SetTextAlign(kAlignCenter | kAlignTop);
    drawing.XLabels(reportType);
  }
  drawing.Title();
}

}  // namespace zel

#pragma once
// A dense curve puts many points into one pixel column. Consecutive points
// that share a column are joined by vertical one-pixel lines there, and what
// those lines colour depends only on the column's first point, its lowest,
// its highest and its last: a line through just those points, in their
// order, colours the same pixels. A ColumnRun collects such a run of points
// and draws it that way, so that a frame costs work per column, not per point.
#include <cstdint>
#include <vector>

#include "engine/surface.h"

namespace zel {

class ColumnRun {
 public:
  bool active() const { return count_ > 0; }
  int32_t x() const { return x_; }
  size_t count() const { return count_; }
  Point first() const { return {x_, first_}; }

  // Starts a run at a point; the previous one, if any, is forgotten.
  void Start(Point point);
  // The next point of the curve, in the same column. Inline and without
  // branches on the data: dense curves pass every point through here.
  void Add(int32_t y) {
    lastCovered_ = y >= min_ && y <= max_ && (y != last_ || lastCovered_);
    bool lower = y < min_, higher = y > max_;
    minAt_ = lower ? count_ : minAt_;
    maxAt_ = higher ? count_ : maxAt_;
    min_ = lower ? y : min_;
    max_ = higher ? y : max_;
    last_ = y;
    ++count_;
  }
  void Reset() { count_ = 0; }

  // The vertical line through the run's points, with the lines of the
  // selected pen: nothing for a run of one point.
  void Draw(Surface& surface) const;
  // The points that stand for the run in an outline: first, lowest and
  // highest in their order, last.
  void AppendTo(std::vector<Point>& outline) const;

 private:
  // The y values that stand for the run, in order, without repeats of one
  // point; returns how many.
  int Reduced(int32_t (&ys)[4]) const;

  int32_t x_ = 0;
  int32_t first_ = 0, last_ = 0, min_ = 0, max_ = 0;
  size_t count_ = 0, minAt_ = 0, maxAt_ = 0;
  // Whether the lines so far colour the last point's pixel (a line leaves
  // out its end pixel, so it depends on where the curve has been). The
  // lines colour min..max except perhaps the end pixel; a new end is
  // coloured when it lies within that span and is either a new place or
  // one already coloured (a line that does not move colours nothing).
  bool lastCovered_ = false;
};

}  // namespace zel

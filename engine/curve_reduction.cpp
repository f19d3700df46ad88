#include "engine/curve_reduction.h"

#include <algorithm>
#include <utility>

namespace zel {
namespace {

// Whether a vertical chain of lines colours its end pixel, given whether it
// did before the point `y` was added after `last`, the chain having spanned
// min..max so far. The chain colours min..max except perhaps its end pixel:
// a line colours its start and everything up to, not including, its end,
// and a line that does not move colours nothing. So the new end is coloured
// when it lies within the span and is either a new place or one already
// coloured.
bool CoversEnd(bool covered, int32_t last, int32_t y, int32_t min, int32_t max) {
  return y >= min && y <= max && (y != last || covered);
}

}  // namespace

void ColumnRun::Start(Point point) {
  x_ = point.x;
  first_ = last_ = min_ = max_ = point.y;
  count_ = 1;
  minAt_ = maxAt_ = 0;
  lastCovered_ = false;
}

int ColumnRun::Reduced(int32_t (&ys)[4]) const {
  std::pair<size_t, int32_t> kept[4] = {{0, first_}, {minAt_, min_}, {maxAt_, max_}, {count_ - 1, last_}};
  std::sort(std::begin(kept), std::end(kept),
            [](const auto& a, const auto& b) { return a.first < b.first; });
  int n = 0;
  for (int k = 0; k < 4; ++k)
    if (k == 0 || kept[k].first != kept[k - 1].first) ys[n++] = kept[k].second;
  return n;
}

void ColumnRun::Draw(Surface& surface) const {
  if (count_ < 2) return;
  int32_t ys[4];
  int n = Reduced(ys);
  // The reduced chain's own coverage of its end, computed as for the whole run.
  int32_t low = ys[0], high = ys[0];
  bool covered = false;
  for (int k = 1; k < n; ++k) {
    covered = CoversEnd(covered, ys[k - 1], ys[k], low, high);
    low = std::min(low, ys[k]);
    high = std::max(high, ys[k]);
  }
  surface.MoveTo({x_, ys[0]});
  for (int k = 1; k < n - 1; ++k) surface.LineTo({x_, ys[k]});
  // The whole run came back to an extreme it had left: its end pixel is
  // coloured, which the reduced chain (ending extreme, extreme) would miss.
  // A step of one pixel inward and back colours it, and nothing outside the run.
  if (lastCovered_ && !covered) surface.LineTo({x_, last_ == max_ ? last_ - 1 : last_ + 1});
  surface.LineTo({x_, ys[n - 1]});
}

void ColumnRun::AppendTo(std::vector<Point>& outline) const {
  if (count_ == 0) return;
  int32_t ys[4];
  int n = Reduced(ys);
  for (int k = 0; k < n; ++k) outline.push_back({x_, ys[k]});
}

}  // namespace zel

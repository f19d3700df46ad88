#pragma once
// How a dataset answers the interaction's questions about its points: which
// lie inside a rubber band, which lies under a pixel, and which is the
// nearest to the left or right of a hairline. Points of status 11 and above
// are never found.
#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

#include "engine/v_dataset.h"

namespace zel {

// The size of the data area in pixels (right - left + 1, top - bottom + 1).
struct DataExtent {
  int32_t width = 0, height = 0;
};

// Indexes of the points drawn inside the band x0..x1, y0..y1 (fractions of
// the data area, ends included), judged where the point is drawn. With `all`
// false only the first such point.
std::vector<size_t> PointsInBand(const VDataset& dataset, DataExtent extent, bool all, float x0,
                                 float x1, float y0, float y1);

// The first point drawn within `tolerance` pixels of (x, y), both counted
// from the data area's left and bottom edges.
std::optional<size_t> PointAtPixel(const VDataset& dataset, DataExtent extent, int32_t x, int32_t y,
                                   int32_t tolerance);

// The x pixel (from the data area's left edge, rounded, without the
// half-category shift of DISCRETE drawing) of the point nearest to the left
// of p (`toRight` false) or to the right of it; -1 when there is none.
int32_t NearestPointPixel(const VDataset& dataset, int32_t width, int32_t p, bool toRight);

}  // namespace zel

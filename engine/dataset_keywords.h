#pragma once
// Keywords of dataset properties: keyword to code, code to keyword, and code
// to the display text the settings pages show (from the text table).
#include <cstdint>

#include "util/text.h"

namespace zel {

enum class DatasetType : int32_t { kPlot = 0, kArea = 1, kBar = 2, kStackedBar = 3, kPie = 4 };
inline constexpr DatasetType kPlot = DatasetType::kPlot;
inline constexpr DatasetType kArea = DatasetType::kArea;
inline constexpr DatasetType kBar = DatasetType::kBar;
inline constexpr DatasetType kStackedBar = DatasetType::kStackedBar;
inline constexpr DatasetType kPie = DatasetType::kPie;
// The code a host sees.
constexpr int32_t CodeOf(DatasetType type) { return int32_t(type); }

enum MarkerShape : int { kMarkerNone = -1, kMarkerDot = 0, kMarkerBox = 1, kMarkerTriangle = 2, kMarkerDiamond = 3 };
enum FillTo : int { kFillToXAxis = 0, kFillToYAxis = 1, kFillToCurve = 2 };

// Unknown type keywords give PLOT; codes outside 0..4 read back as "???".
DatasetType DatasetTypeFromKeyword(TextView keyword);
Text DatasetTypeKeyword(DatasetType type);
Text DatasetTypeDisplayText(DatasetType type);

// Unknown line style keywords give -1, which reads back as "SOLID".
int DatasetLineStyleFromKeyword(TextView keyword);
Text DatasetLineStyleKeyword(int style);
Text LineStyleDisplayText(int style);

// Any other text, "NONE" included, gives -1 ("NONE").
int MarkerShapeFromKeyword(TextView keyword);
Text MarkerShapeKeyword(int shape);
Text MarkerShapeDisplayText(int shape);

// Unknown keywords give X_AXES.
int FillToFromKeyword(TextView keyword);
Text FillToKeyword(int fillTo);

// The settings pages' list index as a text: 2..5 as they are, anything else "1".
Text ListIndexText(int index);

}  // namespace zel

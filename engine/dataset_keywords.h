#pragma once
// Keywords of dataset properties: keyword to code, code to keyword, and code
// to the display text the settings pages show (from the text table).
#include "util/text.h"

namespace zel {

enum DatasetType : int { kPlot = 0, kArea = 1, kBar = 2, kStackedBar = 3, kPie = 4 };
enum MarkerShape : int { kMarkerNone = -1, kMarkerDot = 0, kMarkerBox = 1, kMarkerTriangle = 2, kMarkerDiamond = 3 };
enum FillTo : int { kFillToXAxis = 0, kFillToYAxis = 1, kFillToCurve = 2 };

// Unknown type keywords give PLOT; codes outside 0..4 read back as "???".
int DatasetTypeFromKeyword(TextView keyword);
Text DatasetTypeKeyword(int type);
Text DatasetTypeDisplayText(int type);

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

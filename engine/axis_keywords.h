#pragma once
// Keywords of axis properties and limit lines, both ways. Comparison is
// exact and case-sensitive.
#include "util/text.h"

namespace zel {

enum TitlePosition : int { kTitleStart = 0, kTitleEnd = 1, kTitleCenter = 2 };
enum GridMode : int { kGridNone = 0, kGridAnnotation = 1, kGridTick = 2 };
enum LineStyle : int { kLineSolid = 0, kLineDashed = 1, kLineDotted = 2 };

// "LEFT" or "BOTTOM" 0, "RIGHT" or "TOP" 1, "CENTER" 2; anything else 1.
int TitlePositionFromKeyword(TextView keyword);
// X axes read "LEFT"/"RIGHT", Y axes "BOTTOM"/"TOP"; 2 reads "CENTER".
Text TitlePositionKeyword(int position, bool vertical);

// "ANNOTATION" 1, "TICK" 2, anything else 0 ("NONE").
int GridModeFromKeyword(TextView keyword);
Text GridModeKeyword(int mode);

// "SOLID" 0, "DASHED" 1, "DOTTED" 2; anything else 0.
int LineStyleFromKeyword(TextView keyword);
Text LineStyleKeyword(int style);

}  // namespace zel

#include "engine/axis_keywords.h"

namespace zel {

int TitlePositionFromKeyword(TextView keyword) {
  if (keyword == u"LEFT" || keyword == u"BOTTOM") return kTitleStart;
  if (keyword == u"CENTER") return kTitleCenter;
  return kTitleEnd;
}

Text TitlePositionKeyword(int position, bool vertical) {
  if (position == kTitleCenter) return u"CENTER";
  if (position == kTitleStart) return vertical ? u"BOTTOM" : u"LEFT";
  return vertical ? u"TOP" : u"RIGHT";
}

int GridModeFromKeyword(TextView keyword) {
  if (keyword == u"ANNOTATION") return kGridAnnotation;
  if (keyword == u"TICK") return kGridTick;
  return kGridNone;
}

Text GridModeKeyword(int mode) {
  if (mode == kGridAnnotation) return u"ANNOTATION";
  if (mode == kGridTick) return u"TICK";
  return u"NONE";
}

int LineStyleFromKeyword(TextView keyword) {
  if (keyword == u"DASHED") return kLineDashed;
  if (keyword == u"DOTTED") return kLineDotted;
  return kLineSolid;
}

Text LineStyleKeyword(int style) {
  if (style == kLineDashed) return u"DASHED";
  if (style == kLineDotted) return u"DOTTED";
  return u"SOLID";
}

}  // namespace zel

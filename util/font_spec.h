#pragma once
// Font specifications: one line of text such as "Arial,9,bold" or
// "Arial,9,Bold, Charset_Default" that stands for a logical font. Fields are
// separated by commas: the face name, the size in points, then style and
// charset keywords in any case.
#include <cstdint>
#include <string_view>

#include "util/text.h"

namespace zel {

// Field for field the platform's LOGFONTW; the control shell copies it into
// the real record.
struct LogFont {
  int32_t lfHeight = 0;
  int32_t lfWidth = 0;
  int32_t lfEscapement = 0;
  int32_t lfOrientation = 0;
  int32_t lfWeight = 0;
  uint8_t lfItalic = 0;
  uint8_t lfUnderline = 0;
  uint8_t lfStrikeOut = 0;
  uint8_t lfCharSet = 0;
  uint8_t lfOutPrecision = 0;
  uint8_t lfClipPrecision = 0;
  uint8_t lfQuality = 0;
  uint8_t lfPitchAndFamily = 0;
  char16_t lfFaceName[32] = {};

  TextView FaceName() const;
  bool operator==(const LogFont&) const = default;
};

inline constexpr int32_t kFontWeightNormal = 400;
inline constexpr int32_t kFontWeightBold = 700;

// Reads a font specification. Never fails: what cannot be read keeps its
// default (empty face, height 0, weight 400, charset 1). The height is
// -(points * screen resolution / 72), with the resolution asked of the
// platform the first time it is needed.
//
// Kept as the format has always behaved: every blank before the face name
// shortens the face by one character from its end ("  Arial,9" gives the face
// "  Ari"), and a field with trailing blanks is not recognised.
LogFont ParseFontSpec(TextView spec);

// Writes a font back as a specification, such as "Arial,9, Bold, Charset_Default".
// Charset 0 (ANSI) writes as Charset_Default and so reads back as 1. Before any
// specification has been read the resolution is unknown (0), and the size
// comes out as 1.
Text FormatFontSpec(const LogFont& font);

// The charset code of the keyword that the text begins with ("RUSSIAN" 204,
// "ANSI" 0, "DEFAULT" 1, "EASTEUROPE" 238, "TURKISH" 162, "OEM" 255,
// "BALTIC" 186, "GREEK" 161, "CHINESEBIG5" 136), 1 for any other text.
uint8_t CharsetFromKeyword(std::string_view keyword);

}  // namespace zel

#include "util/font_spec.h"

#include <algorithm>
#include <string>

#include "util/platform_hooks.h"
#include "util/process_state.h"
#include "util/win32_arith.h"

namespace zel {
namespace {

constexpr uint8_t kDefaultCharset = 1;
constexpr size_t kFaceNameMax = 31;
constexpr std::string_view kBlanks = " \t";

// The screen resolution, asked of the platform once per process.
int32_t ScreenResolution() {
  int32_t& cached = Process().screenResolution;
  if (cached < 1) cached = Platform().screenResolution();
  return cached;
}

bool IsSurrogatePairAt(TextView text, size_t i) {
  return i + 1 < text.size() && text[i] >= 0xD800 && text[i] < 0xDC00 &&
         text[i + 1] >= 0xDC00 && text[i + 1] < 0xE000;
}

// The specification as a single-byte code page renders it: one byte per
// character. Only ASCII matters for the keywords; anything else becomes '?'.
std::string NarrowCopy(TextView spec) {
  std::string narrow;
  narrow.reserve(spec.size());
  for (size_t i = 0; i < spec.size(); ++i) {
    narrow += spec[i] < 0x80 ? char(spec[i]) : '?';
    if (IsSurrogatePairAt(spec, i)) ++i;
  }
  return narrow;
}

std::string UpperCaseAscii(std::string text) {
  for (char& c : text)
    if (c >= 'a' && c <= 'z') c = char(c - 'a' + 'A');
  return text;
}

// The next field: leading blanks skipped, cut at the next comma. Advances
// `rest` past that comma, or to its end.
std::string_view NextField(std::string_view& rest) {
  size_t start = std::min(rest.find_first_not_of(kBlanks), rest.size());
  size_t comma = rest.find(',', start);
  std::string_view field = rest.substr(start, comma - start);
  rest = comma == std::string_view::npos ? std::string_view() : rest.substr(comma + 1);
  return field;
}

bool IsSpaceForScanf(char c) { return c == ' ' || (c >= '\t' && c <= '\r'); }

// A decimal integer read by "%d" rules: leading white space and a sign
// allowed, reading stops at the first non-digit; too many digits wrap around
// in 32 bits as the C runtime's scanner lets them.
bool ScanDecimal(std::string_view field, int32_t& value) {
  size_t i = 0;
  while (i < field.size() && IsSpaceForScanf(field[i])) ++i;
  bool negative = false;
  if (i < field.size() && (field[i] == '+' || field[i] == '-')) negative = field[i++] == '-';
  if (i == field.size() || field[i] < '0' || field[i] > '9') return false;
  uint32_t magnitude = 0;
  for (; i < field.size() && field[i] >= '0' && field[i] <= '9'; ++i)
    magnitude = magnitude * 10 + uint32_t(field[i] - '0');
  value = int32_t(negative ? 0u - magnitude : magnitude);
  return true;
}

void ApplyStyleField(std::string_view field, LogFont& font) {
  constexpr std::string_view kCharset = "CHARSET";
  constexpr size_t kCharsetKeywordStart = 8;  // the length of "CHARSET_"
  if (field == "BOLD") {
    font.lfWeight = kFontWeightBold;
  } else if (field == "ITALIC") {
    font.lfItalic = 1;
  } else if (field == "UNDERLINED") {
    font.lfUnderline = 1;
  } else if (field.starts_with(kCharset)) {
    font.lfCharSet = CharsetFromKeyword(
        field.size() > kCharsetKeywordStart ? field.substr(kCharsetKeywordStart) : "");
  }
}

void SetFaceName(LogFont& font, TextView face) {
  face = face.substr(0, kFaceNameMax);
  std::copy(face.begin(), face.end(), font.lfFaceName);
  font.lfFaceName[face.size()] = 0;
}

TextView CharsetName(uint8_t charset) {
  switch (charset) {
    case 204: return u"Charset Russian";
    case 238: return u"Charset Easteurope";
    case 162: return u"Charset Turkish";
    case 255: return u"Charset OEM";
    case 186: return u"Charset Baltic";
    case 161: return u"Charset Greek";
    case 136: return u"Charset ChineseBig5";
    default: return u"Charset_Default";
  }
}

}  // namespace

TextView LogFont::FaceName() const {
  const char16_t* end = std::find(std::begin(lfFaceName), std::end(lfFaceName), u'\0');
  return TextView(lfFaceName, size_t(end - lfFaceName));
}

uint8_t CharsetFromKeyword(std::string_view keyword) {
  static constexpr std::pair<std::string_view, uint8_t> kCharsets[] = {
      {"RUSSIAN", 204}, {"ANSI", 0},      {"DEFAULT", 1},   {"EASTEUROPE", 238},
      {"TURKISH", 162}, {"OEM", 255},     {"BALTIC", 186},  {"GREEK", 161},
      {"CHINESEBIG5", 136},
  };
  for (auto [name, code] : kCharsets)
    if (keyword.starts_with(name)) return code;
  return kDefaultCharset;
}

LogFont ParseFontSpec(TextView spec) {
  spec = spec.substr(0, spec.find(u'\0'));
  LogFont font;
  font.lfWeight = kFontWeightNormal;
  font.lfCharSet = kDefaultCharset;

  std::string narrow = NarrowCopy(spec);
  size_t start = std::min(narrow.find_first_not_of(kBlanks), narrow.size());
  size_t comma = narrow.find(',', start);
  if (comma == std::string::npos) {
    SetFaceName(font, spec);
    return font;
  }
  // The cut is counted from the very start of the text although the comma was
  // searched from the first non-blank: each leading blank costs the face one
  // character at its end.
  SetFaceName(font, spec.substr(0, comma - start));

  std::string upper = UpperCaseAscii(narrow.substr(comma + 1));
  std::string_view rest = upper;
  int32_t points = 0;
  if (ScanDecimal(NextField(rest), points))
    font.lfHeight = -MulDiv(points, ScreenResolution(), 72);
  while (!rest.empty()) ApplyStyleField(NextField(rest), font);
  return font;
}

Text FormatFontSpec(const LogFont& font) {
  Text spec(font.FaceName());
  spec += u',';
  spec += DecimalText(-MulDiv(font.lfHeight, 72, Process().screenResolution));
  if (font.lfWeight == kFontWeightBold) spec += u", Bold";
  if (font.lfItalic) spec += u", Italic";
  if (font.lfUnderline) spec += u", Underlined";
  spec += u", ";
  spec += CharsetName(font.lfCharSet);
  return spec;
}

}  // namespace zel

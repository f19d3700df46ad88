#include "util/text.h"

namespace zel {

Text TextFromAscii(std::string_view ascii) {
  return Text(ascii.begin(), ascii.end());
}

namespace {

void AppendUtf8(std::string& out, char32_t c) {
  if (c < 0x80) {
    out += char(c);
  } else if (c < 0x800) {
    out += char(0xC0 | (c >> 6));
    out += char(0x80 | (c & 0x3F));
  } else if (c < 0x10000) {
    out += char(0xE0 | (c >> 12));
    out += char(0x80 | ((c >> 6) & 0x3F));
    out += char(0x80 | (c & 0x3F));
  } else {
    out += char(0xF0 | (c >> 18));
    out += char(0x80 | ((c >> 12) & 0x3F));
    out += char(0x80 | ((c >> 6) & 0x3F));
    out += char(0x80 | (c & 0x3F));
  }
}

bool IsHighSurrogate(char16_t c) { return c >= 0xD800 && c < 0xDC00; }
bool IsLowSurrogate(char16_t c) { return c >= 0xDC00 && c < 0xE000; }

}  // namespace

std::string Utf8FromText(TextView text) {
  std::string out;
  out.reserve(text.size());
  for (size_t i = 0; i < text.size(); ++i) {
    char16_t c = text[i];
    if (IsHighSurrogate(c) && i + 1 < text.size() && IsLowSurrogate(text[i + 1])) {
      AppendUtf8(out, 0x10000 + ((char32_t(c) - 0xD800) << 10) + (text[++i] - 0xDC00));
    } else if (IsHighSurrogate(c) || IsLowSurrogate(c)) {
      AppendUtf8(out, 0xFFFD);
    } else {
      AppendUtf8(out, c);
    }
  }
  return out;
}

Text DecimalText(long long value) {
  return TextFromAscii(std::to_string(value));
}

}  // namespace zel

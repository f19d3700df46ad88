#pragma once
// Texts of the control are UTF-16, as the automation strings (BSTR) and the
// wide-character Windows calls they come from and go to.
#include <string>
#include <string_view>

namespace zel {

using Text = std::u16string;
using TextView = std::u16string_view;

// ASCII text widened character by character.
Text TextFromAscii(std::string_view ascii);

// UTF-8 for logs and test messages; unpaired surrogates become U+FFFD.
std::string Utf8FromText(TextView text);

// The decimal text of an integer ("%d").
Text DecimalText(long long value);

}  // namespace zel

#include "util/value.h"

#include <gtest/gtest.h>

namespace zel {
namespace {

TEST(VariantDisplayTextTest, EachTypeHasItsFormat) {
  for (auto [value, text] : {std::pair<Value, const char16_t*>{Text(u"label"), u"label"}, {int16_t(-5), u"-5"},
                             {int32_t(123456), u"123456"}, {0.5f, u"0.500000"}, {0.1f, u"0.100000"},
                             {2.25, u"2.250000"}, {DateValue{45000.75}, u"18:00"}, {Value(), u"####"},
                             {DateValue{1e9}, u"####"}})
    EXPECT_EQ(VariantDisplayText(value), text) << Utf8FromText(text);
}

TEST(VariantDisplayTextTest, NumbersAreCutTo32Characters) {
  Text text = VariantDisplayText(1e40);
  EXPECT_EQ(text.size(), 32u);
  EXPECT_EQ(text.substr(0, 5), u"10000");
}

}  // namespace
}  // namespace zel

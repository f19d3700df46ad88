#include "util/value.h"

#include <gtest/gtest.h>

namespace zel {
namespace {

TEST(VariantDisplayTextTest, EachTypeHasItsFormat) {
  EXPECT_EQ(VariantDisplayText(Text(u"label")), u"label");
  EXPECT_EQ(VariantDisplayText(int16_t(-5)), u"-5");
  EXPECT_EQ(VariantDisplayText(int32_t(123456)), u"123456");
  EXPECT_EQ(VariantDisplayText(0.5f), u"0.500000");
  EXPECT_EQ(VariantDisplayText(0.1f), u"0.100000");
  EXPECT_EQ(VariantDisplayText(2.25), u"2.250000");
  EXPECT_EQ(VariantDisplayText(DateValue{45000.75}), u"18:00");
  EXPECT_EQ(VariantDisplayText(Value()), u"####");
  EXPECT_EQ(VariantDisplayText(DateValue{1e9}), u"####");
}

TEST(VariantDisplayTextTest, NumbersAreCutTo32Characters) {
  Text text = VariantDisplayText(1e40);
  EXPECT_EQ(text.size(), 32u);
  EXPECT_EQ(text.substr(0, 5), u"10000");
}

}  // namespace
}  // namespace zel

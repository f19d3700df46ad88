#include "util/value_conversion.h"

#include <cmath>

#include "util/util_test_support.h"

namespace zel {
namespace {

class ValueConversionTest : public UtilTest {
 protected:
  Value To(const Value& in, ValueKind kind, int32_t expectedStatus = kConversionOk) {
    Value out = Text(u"untouched");
    EXPECT_EQ(ChangeType(in, kind, out), expectedStatus);
    return out;
  }
};

TEST_F(ValueConversionTest, IntegersRoundHalvesToEvenWithinRange) {
  EXPECT_EQ(To(2.5, ValueKind::I4), Value(int32_t(2)));
  EXPECT_EQ(To(3.5f, ValueKind::I4), Value(int32_t(4)));
  EXPECT_EQ(To(DateValue{-2.5}, ValueKind::I4), Value(int32_t(-2)));
  EXPECT_EQ(To(-2147483648.5, ValueKind::I4), Value(int32_t(-2147483647 - 1)));
  EXPECT_EQ(To(2147483647.5, ValueKind::I4, kOverflow), Value(Text(u"untouched")));
  To(double(NAN), ValueKind::I4, kOverflow);
  EXPECT_EQ(To(Value(), ValueKind::I4), Value(int32_t(0)));
}

TEST_F(ValueConversionTest, FloatsOverflowOnlyPastTheLargestFloat) {
  EXPECT_EQ(To(int32_t(16777217), ValueKind::R4), Value(16777216.0f));
  EXPECT_EQ(To(3.4028234663852886e38, ValueKind::R4), Value(3.4028234663852886e38f));
  To(3.5e38, ValueKind::R4, kOverflow);
  To(double(INFINITY), ValueKind::R4, kOverflow);
  EXPECT_TRUE(std::isnan(std::get<float>(To(double(NAN), ValueKind::R4))));
}

TEST_F(ValueConversionTest, DatesAreRangeCheckedExceptFromSmallIntegersAndFloats) {
  EXPECT_EQ(To(int32_t(45000), ValueKind::Date), Value(DateValue{45000}));
  To(int32_t(3000000), ValueKind::Date, kOverflow);
  To(-657435.0, ValueKind::Date, kOverflow);
  EXPECT_EQ(To(1e30f, ValueKind::Date), Value(DateValue{double(1e30f)}));
  EXPECT_EQ(To(DateValue{1e7}, ValueKind::Date), Value(DateValue{1e7}));
  EXPECT_EQ(To(DateValue{1.5}, ValueKind::R8), Value(1.5));
}

TEST_F(ValueConversionTest, TextsGoToThePlatform) {
  EXPECT_EQ(To(Text(u" -1.5e2 "), ValueKind::R8), Value(-150.0));
  EXPECT_EQ(To(Text(u"+7"), ValueKind::I4), Value(int32_t(7)));
  To(Text(u"7 apples"), ValueKind::I4, kTypeMismatch);
  To(Text(u""), ValueKind::R4, kTypeMismatch);
  InstallPlatformHooks({.convertText = [](TextView, ValueKind, Value& out) {
    out = int32_t(42);
    return kConversionOk;
  }});
  EXPECT_EQ(To(Text(u"forty-two"), ValueKind::I4), Value(int32_t(42)));
}

}  // namespace
}  // namespace zel

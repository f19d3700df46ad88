// Values no caller of the control's own produces, but a hostile host or a
// corrupt record can: each case was found by a fuzzer and tripped the
// sanitizers (integer overflow, a NaN cast to int) before its fix.
#include <climits>
#include <cmath>
#include <ctime>

#include "util/axis_value_text.h"
#include "util/c_printf.h"
#include "util/c_strftime.h"
#include "util/util_test_support.h"

namespace zel {
namespace {

class ExtremeValuesTest : public UtilTest {};

TEST_F(ExtremeValuesTest, FieldsBeyondTheirRangeAreRefusedNotWrapped) {
  std::tm time{};
  time.tm_year = INT_MAX;
  time.tm_mon = INT_MAX;
  EXPECT_EQ(CFormatTime(u"%Y", time, 64), u"");
  EXPECT_EQ(CFormatTime(u"%m", time, 64), u"");
}

TEST_F(ExtremeValuesTest, ATimeLabelOfNoDateIsTheFallback) {
  AxisLabelFormat axis{kAxisTime, u"%H:%M:%S%%d"};
  EXPECT_EQ(FormatAxisValue(axis, std::nan("")), u"####");
  EXPECT_EQ(FormatAxisValue(axis, HUGE_VAL), u"####");
}

// Callers keep at most a few hundred characters, so a field wider than any
// of them is built only as far as they can see.
TEST_F(ExtremeValuesTest, FieldsWiderThanAnyCallerKeepsAreNotBuilt) {
  Text wide = CPrintf(u"%2147483647d", 5);
  EXPECT_LE(wide.size(), 4096u);
  EXPECT_EQ(wide.substr(0, 256), Text(256, u' '));
  Text precise = CPrintf(u"%.99999999999f", 0.5);
  EXPECT_LE(precise.size(), 4098u);
  EXPECT_EQ(precise.substr(0, 6), u"0.5000");
}

}  // namespace
}  // namespace zel

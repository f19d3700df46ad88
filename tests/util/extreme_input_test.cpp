// Values no caller of the control's own produces, but a hostile host or a
// corrupt record can: each case was found by a fuzzer and tripped the
// sanitizers (integer overflow, a NaN cast to int) before its fix.
#include <climits>
#include <cmath>
#include <ctime>

#include "util/axis_value_text.h"
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

}  // namespace
}  // namespace zel

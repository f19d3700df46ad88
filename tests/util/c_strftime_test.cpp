// The runtime's time formatting rules that labels show. Agreement with the
// runtime itself, over many dates, is checked under Wine.
#include "util/c_strftime.h"

#include <gtest/gtest.h>

namespace zel {
namespace {

std::tm At(int year, int month, int day, int hour = 7, int minute = 8, int second = 9) {
  std::tm t{};
  t.tm_year = year - 1900;
  t.tm_mon = month - 1;
  t.tm_mday = day;
  t.tm_hour = hour;
  t.tm_min = minute;
  t.tm_sec = second;
  return t;
}

Text F(TextView format, const std::tm& t) { return CFormatTime(format, t, 64); }

TEST(CFormatTimeTest, FieldsNamesAndLiterals) {
  EXPECT_EQ(F(u"%Y-%m-%d %H:%M:%S", At(2026, 3, 5)), u"2026-03-05 07:08:09");
  EXPECT_EQ(F(u"%#d/%#m %Y %#Y", At(5, 3, 5)), u"5/3 0005 5");
  EXPECT_EQ(F(u"%#d/%#m %y", At(2000, 3, 5)), u"5/3 00");
  EXPECT_EQ(F(u"%b %B %I %p", At(2026, 9, 1, 0)), u"Sep September 12 AM");
  EXPECT_EQ(F(u"%#I %p", At(2026, 9, 1, 13)), u"1 PM");
  EXPECT_EQ(F(u"%H:%M:%S\n%%dms \u00e9", At(2026, 3, 5)), u"07:08:09\n%dms \u00e9");
}

TEST(CFormatTimeTest, RefusesWhatTheRuntimeRefuses) {
  std::tm t = At(2026, 3, 5);
  for (TextView format : {u"", u"%Q", u"%H%", u"%H\u4e00"}) EXPECT_EQ(F(format, t), u"");
  EXPECT_EQ(F(u"%y", At(1899, 12, 31)), u"");
  EXPECT_EQ(F(u"%Y", At(10000, 1, 1)), u"");
  EXPECT_EQ(F(u"%d", At(2026, 1, 0)), u"");
  EXPECT_EQ(F(u"%S", At(2026, 1, 1, 0, 0, 60)), u"");
  EXPECT_EQ(CFormatTime(Text(63, u'x'), t, 64), Text(63, u'x'));
  EXPECT_EQ(CFormatTime(Text(64, u'x'), t, 64), u"");
}

}  // namespace
}  // namespace zel

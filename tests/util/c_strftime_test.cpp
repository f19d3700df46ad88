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

TEST(CFormatTimeTest, NumericFieldsAreZeroPaddedUnlessFlagged) {
  std::tm t = At(2026, 3, 5);
  EXPECT_EQ(F(u"%Y-%m-%d %H:%M:%S", t), u"2026-03-05 07:08:09");
  EXPECT_EQ(F(u"%d.%m.%y\n%H:%M", t), u"05.03.26\n07:08");
  EXPECT_EQ(F(u"%#d/%#m/%#Y %#H", t), u"5/3/2026 7");
  EXPECT_EQ(F(u"%Y", At(5, 1, 1)), u"0005");
  EXPECT_EQ(F(u"%#Y", At(5, 1, 1)), u"5");
  EXPECT_EQ(F(u"%y", At(2000, 1, 1)), u"00");
}

TEST(CFormatTimeTest, NamesAndTwelveHourClock) {
  EXPECT_EQ(F(u"%b %B", At(2026, 9, 1)), u"Sep September");
  EXPECT_EQ(F(u"%I %p", At(2026, 1, 1, 0)), u"12 AM");
  EXPECT_EQ(F(u"%I %p", At(2026, 1, 1, 11)), u"11 AM");
  EXPECT_EQ(F(u"%I %p", At(2026, 1, 1, 12)), u"12 PM");
  EXPECT_EQ(F(u"%#I %p", At(2026, 1, 1, 13)), u"1 PM");
}

TEST(CFormatTimeTest, LiteralsAndPercent) {
  std::tm t = At(2026, 3, 5);
  EXPECT_EQ(F(u"%H:%M:%S\n%%dms", t), u"07:08:09\n%dms");
  EXPECT_EQ(F(u"100%% at %H\u00e9", t), u"100% at 07\u00e9");
  EXPECT_EQ(F(u"%#%", t), u"%");
}

TEST(CFormatTimeTest, RefusesWhatTheRuntimeRefuses) {
  std::tm t = At(2026, 3, 5);
  EXPECT_EQ(F(u"", t), u"");
  EXPECT_EQ(F(u"%Q", t), u"");
  EXPECT_EQ(F(u"%H%", t), u"");
  EXPECT_EQ(F(u"%H\u4e00", t), u"");
  EXPECT_EQ(F(u"%y", At(1899, 12, 31)), u"");
  EXPECT_EQ(F(u"%Y", At(10000, 1, 1)), u"");
  EXPECT_EQ(F(u"%d", At(2026, 1, 0)), u"");
  EXPECT_EQ(F(u"%b", At(2026, 13, 1)), u"");
  EXPECT_EQ(F(u"%S", At(2026, 1, 1, 0, 0, 60)), u"");
  EXPECT_EQ(F(u"%H", At(2026, 1, 1, 24)), u"");
}

TEST(CFormatTimeTest, ResultMustFitWithItsTerminator) {
  std::tm t = At(2026, 3, 5);
  EXPECT_EQ(CFormatTime(Text(63, u'x'), t, 64), Text(63, u'x'));
  EXPECT_EQ(CFormatTime(Text(64, u'x'), t, 64), u"");
  EXPECT_EQ(CFormatTime(u"%H:%M", t, 6), u"07:08");
  EXPECT_EQ(CFormatTime(u"%H:%M", t, 5), u"");
}

}  // namespace
}  // namespace zel

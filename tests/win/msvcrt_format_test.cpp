// The portable printf and wcsftime subsets against the C runtime's own
// functions, taken from msvcrt.dll by name so that no MinGW replacement
// stands in between.
#include <windows.h>

#include <gtest/gtest.h>

#include <cmath>
#include <ctime>
#include <random>
#include <string>
#include <vector>

#include "util/c_printf.h"
#include "util/c_strftime.h"
#include "util/date_time.h"

namespace zel {
namespace {

using SnwprintfFn = int(__cdecl*)(wchar_t*, size_t, const wchar_t*, ...);
using WcsftimeFn = size_t(__cdecl*)(wchar_t*, size_t, const wchar_t*, const std::tm*);

template <typename Fn>
Fn RuntimeFunction(const char* name) {
  HMODULE msvcrt = LoadLibraryW(L"msvcrt.dll");
  return msvcrt ? reinterpret_cast<Fn>(reinterpret_cast<void*>(GetProcAddress(msvcrt, name)))
                : nullptr;
}

const wchar_t* W(TextView text) { return reinterpret_cast<const wchar_t*>(text.data()); }
std::string Show(TextView text) { return Utf8FromText(text); }

class MsvcrtFormatTest : public ::testing::Test {
 protected:
  SnwprintfFn snwprintf = RuntimeFunction<SnwprintfFn>("_snwprintf");
  WcsftimeFn wcsftime = RuntimeFunction<WcsftimeFn>("wcsftime");

  template <typename Arg>
  Text Runtime(const Text& format, Arg arg) {
    wchar_t buffer[600];
    int n = snwprintf(buffer, 599, W(format), arg);
    EXPECT_GE(n, 0) << Show(format);
    return Text(reinterpret_cast<const char16_t*>(buffer), size_t(std::max(n, 0)));
  }
};

std::vector<double> SampleDoubles() {
  std::vector<double> values = {0.0, -0.0, 0.5, 1.5, 2.5, -2.5, 0.125, 0.05, 0.25, 9.996, 1e-300,
                                5e-324, 1e20, 1e30, 123456789.0, 0.0001, 0.00001, 1e6, 1e-10,
                                6e-10, 4e-4, 0.0006, 0.99999, 99.95, 1234.5, double(0.1f),
                                1.7976931348623157e308, 3.4028234663852886e38, -1.0 / 3,
                                INFINITY, -INFINITY, std::nan(""), -std::nan("")};
  std::mt19937_64 random(11);
  std::uniform_real_distribution<double> mantissa(1, 10);
  std::uniform_int_distribution<int> exponent(-12, 20);
  std::uniform_int_distribution<int> hundredths(-100000, 100000);
  for (int i = 0; i < 1500; ++i) {
    values.push_back(mantissa(random) * std::pow(10.0, exponent(random)) * (i % 2 ? -1 : 1));
    values.push_back(hundredths(random) / 200.0);  // many exact ties
    values.push_back(double(float(mantissa(random) * std::pow(10.0, exponent(random)))));
  }
  return values;
}

TEST_F(MsvcrtFormatTest, FloatingPointConversionsAgree) {
  ASSERT_NE(snwprintf, nullptr);
  const char16_t* formats[] = {u"%f", u"%.0f", u"%.1f", u"%.2f", u"%.3f", u"%0.2f", u"%2.3f", u"%3.1f", u"%lf",
                               u"%1.3e", u"%e", u"%E", u"%.0e", u"%.2e", u"%g", u"%.3g", u"%.10g", u"%#g", u"%G",
                               u"%10.2f", u"%-10.2f", u"%08.2f", u"%+f", u"% e", u"%#.0f", u"%-12f", u"%010f",
                               u"%.5f", u"%#.3g", u"%.0g", u"[%12.4e]"};
  int compared = 0;
  for (double value : SampleDoubles()) {
    for (const char16_t* format : formats) {
      ASSERT_EQ(Show(CPrintf(format, value)), Show(Runtime(format, value)))
          << Show(format) << " of " << value;
      ++compared;
    }
  }
  EXPECT_GT(compared, 100000);
}

TEST_F(MsvcrtFormatTest, IntegerAndTextConversionsAgree) {
  ASSERT_NE(snwprintf, nullptr);
  const char16_t* integerFormats[] = {u"%d", u"%5d", u"%-5d|", u"%05d", u"%+d", u"% d", u"%x", u"%#X", u"%o", u"%#o",
                                      u"%u", u"%hd", u"%.0d", u"%.3d", u"%#08x", u"%ld", u"%i", u"%-+6d|", u"%y",
                                      u"%", u"100%%", u"%5%", u"%c"};
  std::mt19937 random(3);
  std::vector<int32_t> values = {0, 1, -1, 7, 255, 65537, 2147483647, -2147483647 - 1, 65};
  for (int i = 0; i < 2000; ++i) values.push_back(int32_t(random()));
  for (int32_t value : values)
    for (const char16_t* format : integerFormats)
      ASSERT_EQ(Show(CPrintf(format, value)), Show(Runtime(format, value)))
          << Show(format) << " of " << value;

  const char16_t* textFormats[] = {u"%s", u"%.2s", u"%-6s|", u"%6s", u"\"%s\" is a wrong Axis type"};
  for (const char16_t* text : {u"", u"real", u"longer text"})
    for (const char16_t* format : textFormats)
      ASSERT_EQ(Show(CPrintf(format, TextView(text))), Show(Runtime(format, W(text))))
          << Show(format) << " of " << Show(text);
}

TEST_F(MsvcrtFormatTest, TimeFormatsAgreeOverManyDates) {
  ASSERT_NE(wcsftime, nullptr);
  const char16_t* formats[] = {u"%d-%m-%Y", u"%d.%m.%y\n%H:%M", u"%H:%M\n%d-%m", u"%H:%M:%S\n%d.%m",
                               u"%H:%M:%S\n%%dms", u"%Y-%m-%d", u"%#d", u"%b", u"%H:%M", u"%B %#d, %Y",
                               u"%I:%M:%S %p", u"%#I%p", u"%#m/%#d/%#y", u"%y", u"%%", u"at %H\u00e9h", u"%H%%M",
                               u"%Q", u"%H%", u"%#Y|%#H|%#M|%#S", u""};
  std::mt19937_64 random(5);
  std::uniform_real_distribution<double> dates(kFirstDate, kLastDate + 1.0);
  int compared = 0;
  for (int i = 0; i < 12000; ++i) {
    std::tm time{};
    ASSERT_TRUE(DateTimeToTm(dates(random), time));
    if (i % 4 == 0) time.tm_year = std::max(time.tm_year, 1);
    for (const char16_t* format : formats) {
      wchar_t buffer[64];
      size_t n = wcsftime(buffer, 64, W(format), &time);
      Text runtime(reinterpret_cast<const char16_t*>(buffer), n);
      ASSERT_EQ(Show(CFormatTime(format, time, 64)), Show(runtime))
          << Show(format) << " for year " << time.tm_year + 1900;
      ++compared;
    }
  }
  EXPECT_GT(compared, 200000);
}

}  // namespace
}  // namespace zel

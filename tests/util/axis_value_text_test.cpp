#include "util/axis_value_text.h"

#include <cmath>
#include <tuple>

#include "util/automation_date.h"
#include "util/util_test_support.h"

namespace zel {
namespace {

constexpr double kMs = kSecondInDays / 1000;

AxisLabelFormat Axis(AxisType type, TextView format = u"", const CategoryLabels* labels = nullptr) {
  return {type, format, labels};
}

// {format, value, text} on an axis of `type`.
void ExpectTexts(AxisType type, std::initializer_list<std::tuple<const char16_t*, double, const char16_t*>> cases) {
  for (auto [format, value, text] : cases)
    EXPECT_EQ(FormatAxisValue(Axis(type, format), value), text) << Utf8FromText(format) << " " << value;
}

TEST(FormatAxisValueTest, IntegersTruncateTowardZero) {
  ExpectTexts(kAxisInteger, {{u"", 3.9, u"3"}, {u"", -3.9, u"-3"}, {u"", std::nan(""), u"-2147483648"}});
  EXPECT_EQ(FormatAxisValue(Axis(AxisType(7)), 1.0), u"####");
}

TEST(FormatAxisValueTest, RealsUseTheAnnotationFormatWithAPercentInFront) {
  // Formats that print nothing, or too much, fall back to "%f".
  ExpectTexts(kAxisReal, {{u"2.3f", double(0.1f), u"0.100"}, {u"3.1f", 12.25, u"12.3"},
                          {u"1.3e", 0.001, u"1.000e-003"}, {u"2.3f", std::nan(""), u"1.#QO"},
                          {u"", 0.5, u"0.500000"}, {u"y", 0.5, u"y"}, {u"70.1f", 0.5, u"0.500000"}});
}

TEST(FormatAxisValueTest, CategoriesShowTheirLabelOrABlank) {
  CategoryLabels labels{std::nullopt, u"A", u""};
  EXPECT_EQ(FormatAxisValue(Axis(kAxisDiscrete, u"", &labels), 1.7), u"A");
  EXPECT_EQ(FormatAxisValue(Axis(kAxisDiscrete, u"", &labels), 2), u"");
  for (double blank : {0.0, 3.0, -1.0, 1e12})
    EXPECT_EQ(FormatAxisValue(Axis(kAxisDiscrete, u"", &labels), blank), u" ") << blank;
  EXPECT_EQ(FormatAxisValue(Axis(kAxisDiscrete), 1), u" ");
}

TEST(FormatAxisValueTest, TimesShowYearsBefore1901As1901AndFallBack) {
  // What prints nothing falls back to hours and minutes, then to hashes.
  ExpectTexts(kAxisTime, {{u"%Y-%m-%d", 0.0, u"1901-12-30"}, {u"%d.%m.%y\n%H:%M", 45000.75, u"15.03.23\n18:00"},
                          {u"%d.%m.%y", -1.25, u"29.12.01"}, {u"%Q", 45000.75, u"18:00"}, {u"", 45000.75, u"18:00"},
                          {u"%Y", 2958465.99999999, u"00:00"}, {u"%Y", 1e9, u"####"}, {u"%Y", std::nan(""), u"####"}});
}

TEST(FormatAxisValueTest, MillisecondMarkerShowsFiveMillisecondSteps) {
  const char16_t* ms = u"%H:%M:%S\n%%dms";
  double at = 45000.0 + (12 * 3600 + 30 * 60 + 5) * kSecondInDays, ten = 45000.0 + 10 * 3600 * kSecondInDays;
  // Before day 0 the time of day still runs forward.
  ExpectTexts(kAxisTime, {{ms, at + 125 * kMs, u"12:30:05\n125ms"}, {ms, at + 123 * kMs, u"12:30:05\n125ms"},
                          {ms, at + 122 * kMs, u"12:30:05\n120ms"}, {ms, at + 999 * kMs, u"12:30:06\n0ms"},
                          {ms, at + 600 * kMs, u"12:30:05\n600ms"}, {ms, ten + 999 * kMs, u"10:00:01\n0ms"},
                          {ms, -1.25 - 250 * kMs, u"06:00:00\n250ms"}, {u"%m%%d", 45000.75, u"030"}});
}

TEST(LabelExtentTextsTest, SamplesTheTextsAnAxisMeasures) {
  EXPECT_EQ(LabelExtentTexts(Axis(kAxisInteger), -5.7, 120).texts,
            (std::vector<Text>{u"-5", u"120"}));
  EXPECT_EQ(LabelExtentTexts(Axis(kAxisDiscrete), 0, 12).texts, (std::vector<Text>{u"12"}));
  EXPECT_EQ(LabelExtentTexts(Axis(kAxisReal, u"2.3f"), 0, 1).texts,
            (std::vector<Text>{u"0.000", u"1.000"}));
  EXPECT_EQ(LabelExtentTexts(Axis(kAxisReal, u"3.1f%%%%%%%%%%%%"), 0, 1).texts,
            (std::vector<Text>{u"0.000", u"1.000"}));
}

TEST(LabelExtentTextsTest, TimeAxesMeasureTheSecondDayAndCountLines) {
  LabelExtentSample sample = LabelExtentTexts(Axis(kAxisTime, u"%Y-%m-%d"), 0, 1);
  EXPECT_EQ(sample.texts, (std::vector<Text>{u"1899-12-31"}));
  EXPECT_EQ(sample.lineCount, 1);
  // "%y" refuses years before 1900, so this one measures "%H:%M".
  sample = LabelExtentTexts(Axis(kAxisTime, u"%d.%m.%y\n%H:%M"), 0, 1);
  EXPECT_EQ(sample.texts, (std::vector<Text>{u"00:00"}));
  EXPECT_EQ(sample.lineCount, 2);
  sample = LabelExtentTexts(Axis(kAxisTime, u"%H\n\n\n\n\n\n%M"), 0, 1);
  EXPECT_EQ(sample.lineCount, 5);
}

}  // namespace
}  // namespace zel

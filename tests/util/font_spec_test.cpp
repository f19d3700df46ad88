#include "util/font_spec.h"

#include <tuple>

#include "util/util_test_support.h"

namespace zel {
namespace {

class FontSpecTest : public UtilTest {
 protected:
  int resolutionQueries = 0;
  void UseResolution(int dpi) {
    InstallPlatformHooks({.screenResolution = [this, dpi] {
      ++resolutionQueries;
      return dpi;
    }});
  }
};

TEST_F(FontSpecTest, ReadsFaceSizeAndDefaults) {
  UseResolution(96);
  LogFont font = ParseFontSpec(u"Arial,7");
  EXPECT_EQ(font.FaceName(), u"Arial");
  EXPECT_EQ(std::tuple(font.lfHeight, font.lfWeight, font.lfCharSet), std::tuple(-9, 400, 1));
  EXPECT_EQ(font.lfItalic + font.lfUnderline + font.lfEscapement + font.lfWidth, 0);

  UseResolution(72);
  Process().screenResolution = 0;
  EXPECT_EQ(ParseFontSpec(u"Arial,7").lfHeight, -7);
  EXPECT_EQ(ParseFontSpec(u"Arial,9.5").lfHeight, -9);
  EXPECT_EQ(ParseFontSpec(u"Arial,-8").lfHeight, 8);
}

TEST_F(FontSpecTest, AsksForTheResolutionOnceAndOnlyWhenASizeIsGiven) {
  UseResolution(96);
  LogFont font = ParseFontSpec(u"Arial");
  EXPECT_EQ(font.FaceName(), u"Arial");
  EXPECT_EQ(font.lfHeight, 0);
  EXPECT_EQ(ParseFontSpec(u"Arial,,bold").lfHeight, 0);
  EXPECT_EQ(resolutionQueries, 0);
  ParseFontSpec(u"Arial,9");
  ParseFontSpec(u"Tahoma,12");
  EXPECT_EQ(resolutionQueries, 1);
  EXPECT_EQ(Process().screenResolution, 96);
}

TEST_F(FontSpecTest, KeywordsMatchInAnyCaseButOnlyWholeFields) {
  EXPECT_EQ(ParseFontSpec(u"Arial,9,bold"), ParseFontSpec(u"Arial,9,Bold, Charset_Default"));
  LogFont font = ParseFontSpec(u"Arial,9, italic,UNDERLINED,Bold");
  EXPECT_EQ(std::tuple(font.lfWeight, font.lfItalic, font.lfUnderline), std::tuple(700, 1, 1));
  EXPECT_EQ(ParseFontSpec(u"Arial,9,bold ").lfWeight, 400);
  EXPECT_EQ(ParseFontSpec(u"Arial,9,boldface,heavy").lfWeight, 400);
  EXPECT_EQ(ParseFontSpec(u"arial,9").FaceName(), u"arial");
}

TEST_F(FontSpecTest, CharsetFieldsReadTheirKeywordFromTheNinthCharacter) {
  for (auto [fields, charset] :
       {std::pair{u"CHARSET_RUSSIAN", 204}, {u"Charset Russian", 204}, {u"charset-russian", 204}, {u"Charset OEM", 255},
        {u"Charset ANSI", 0}, {u"Charset Klingon", 1}, {u"CHARSET", 1}, {u"CHARSET,RUSSIAN", 1},
        {u"Charset Greek,Charset Baltic", 186}})
    EXPECT_EQ(ParseFontSpec(u"Arial,9," + Text(fields)).lfCharSet, charset) << Utf8FromText(fields);
  for (auto [keyword, charset] :
       {std::pair{"EASTEUROPE", 238}, {"TURKISHX", 162}, {"CHINESEBIG5", 136}, {"DEFAULT", 1}, {"", 1}})
    EXPECT_EQ(CharsetFromKeyword(keyword), charset) << keyword;
}

TEST_F(FontSpecTest, LeadingBlanksShortenTheFaceFromItsEndAndFacesAreCut) {
  UseResolution(96);
  LogFont font = ParseFontSpec(u"  Arial,9");
  EXPECT_EQ(font.FaceName(), u"  Ari");
  EXPECT_EQ(font.lfHeight, -12);
  EXPECT_EQ(ParseFontSpec(u"\tArial").FaceName(), u"\tArial");
  // Faces are cut to 31 characters, or at a NUL.
  Text longFace(40, u'x');
  EXPECT_EQ(ParseFontSpec(longFace + u",9").FaceName(), Text(31, u'x'));
  EXPECT_EQ(ParseFontSpec(longFace).FaceName(), Text(31, u'x'));
  EXPECT_EQ(ParseFontSpec(Text(u"Ari\0al,9", 8)).FaceName(), u"Ari");
  EXPECT_EQ(ParseFontSpec(u"").FaceName(), u"");
}

TEST_F(FontSpecTest, FormatsWithBlanksBeforeEveryLaterField) {
  // Before any parse the resolution is unknown, so the size prints as 1.
  LogFont unparsed;
  std::copy_n(u"Arial", 5, unparsed.lfFaceName);
  unparsed.lfHeight = -12;
  EXPECT_EQ(FormatFontSpec(unparsed), u"Arial,1, Charset_Default");

  UseResolution(96);
  EXPECT_EQ(FormatFontSpec(ParseFontSpec(u"Arial,9,bold")), u"Arial,9, Bold, Charset_Default");
  EXPECT_EQ(FormatFontSpec(ParseFontSpec(u"Arial,7,italic,underlined,Charset Russian")),
            u"Arial,7, Italic, Underlined, Charset Russian");
  LogFont semiBold = ParseFontSpec(u"Arial,9");
  semiBold.lfWeight = 600;
  EXPECT_EQ(FormatFontSpec(semiBold), u"Arial,9, Charset_Default");

  // A round trip keeps every charset but ANSI, which becomes the default.
  LogFont ansi = ParseFontSpec(u"Arial,9,Charset ANSI");
  ASSERT_EQ(ansi.lfCharSet, 0);
  Text formatted = FormatFontSpec(ansi);
  EXPECT_EQ(formatted, u"Arial,9, Charset_Default");
  EXPECT_EQ(ParseFontSpec(formatted).lfCharSet, 1);
  for (uint8_t charset : {204, 238, 162, 255, 186, 161, 136}) {
    LogFont font = ansi;
    font.lfCharSet = charset;
    EXPECT_EQ(ParseFontSpec(FormatFontSpec(font)).lfCharSet, charset);
  }
}

}  // namespace
}  // namespace zel

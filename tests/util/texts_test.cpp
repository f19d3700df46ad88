#include "util/texts.h"

#include "util/language_files.h"
#include "util/util_test_support.h"

namespace zel {
namespace {

class TextsTest : public UtilTest {};

TEST_F(TextsTest, MessagesKeepTheirExactWording) {
  EXPECT_EQ(FormatText(kMsgWrongAxisType, u"real"), u"\"real\" is a wrong Axis type");
  EXPECT_EQ(FormatText(kMsgArrayAccess, int32_t(0x80070057)),
            u"Error occurred while accessing Array elements, error code=-2147024809");
  EXPECT_EQ(FormatText(kMsgNotArray), u"The argument is not Array");
  EXPECT_EQ(LookupText(kTextModuleName), u"ZELGraph");
  EXPECT_EQ(LookupText(kMenuGraphSettings), u"Graph &Settings...");
}

TEST_F(TextsTest, IdsWithoutTextGiveTheMarker) {
  EXPECT_EQ(LookupText(200), u"");
  EXPECT_EQ(FormatText(200, 5), u"#TEXT#");
  EXPECT_EQ(FormatText(99), u"#TEXT#");
  EXPECT_EQ(FormatText(430), u"#TEXT#");
}

TEST_F(TextsTest, FormattedTextsAreCutTo128Characters) {
  Text keyword(300, u'k');
  Text message = FormatText(kMsgWrongAxisType, keyword);
  EXPECT_EQ(message.size(), 128u);
  EXPECT_EQ(message, u"\"" + Text(127, u'k'));
}

TEST_F(TextsTest, LanguageLibrariesComeFirst) {
  InstallPlatformHooks({.languageText = [](int id) {
    if (id == kMsgAxisExists) return Text(u"Achse %d existiert bereits");
    if (id == kButtonOk) return Text(300, u'x');
    return Text();
  }});
  EXPECT_EQ(FormatText(kMsgAxisExists, 4), u"Achse 4 existiert bereits");
  EXPECT_EQ(LookupText(kButtonOk).size(), 255u);
  EXPECT_EQ(FormatText(kMsgAxisMissing, 4), u"Axis with  id = 4 does NOT exist");
}

TEST(LanguageFilesTest, LibrariesLieInALanguageFolderBesideTheModule) {
  using Names = std::array<Text, 2>;
  EXPECT_EQ(LanguageLibraryNames(u"C:\\app\\ZELGraph.dll", u"DE"),
            (Names{u"C:\\app\\DE\\ZELGraph_texts_DE.dll", u"C:\\app\\DE\\ZELGraph_textsDE.dll"}));
  // Only the file name splits at its last dot; without one there is no extension.
  EXPECT_EQ(LanguageLibraryNames(u"C:\\v1.2\\my.graph.ocx", u"RU"),
            (Names{u"C:\\v1.2\\RU\\my.graph_texts_RU.ocx", u"C:\\v1.2\\RU\\my.graph_textsRU.ocx"}));
  EXPECT_EQ(LanguageLibraryNames(u"C:\\v1.2\\graph", u"EN"),
            (Names{u"C:\\v1.2\\EN\\graph_texts_EN", u"C:\\v1.2\\EN\\graph_textsEN"}));
}

}  // namespace
}  // namespace zel

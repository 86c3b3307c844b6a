#include "frame/text_routines.h"

#include <gtest/gtest.h>

#include <vector>

namespace kwo::frame {
namespace {

using namespace std::string_view_literals;

TEST(FileNamePartTest, IsWhatStandsBehindTheLastSeparator) {
    struct Row {
        TextView path, name;
    };
    for (const Row& row :
         {Row{u"", u""}, Row{u"   ", u""}, Row{u"C:\\", u""}, Row{u" C:\\ ", u""}, Row{u"C:\\dir\\", u"dir"},
          Row{u"C:\\dir\\file.txt", u"file.txt"}, Row{u"  C:\\dir\\file.txt  ", u"file.txt"}, Row{u"a/b", u"b"},
          Row{u"a/b/", u""}, Row{u"a\\b/c", u"b/c"}, Row{u"file", u"file"}, Row{u"file\\", u"file"}, Row{u"\\", u""},
          Row{u"dir\\\\", u""}, Row{u"C:", u"C:"}}) {
        EXPECT_EQ(KWO_FileNamePart(row.path), row.name) << "row " << std::string(row.path.begin(), row.path.end());
    }
}

TEST(AddSeparatorTest, AddsNoneBehindEitherSlashOrTheSeparatorItself) {
    EXPECT_EQ(KWO_AddSeparator(u"C:\\dir", u"\\"), u"C:\\dir\\");
    EXPECT_EQ(KWO_AddSeparator(u"C:\\dir\\", u"\\"), u"C:\\dir\\");
    EXPECT_EQ(KWO_AddSeparator(u"a/", u"\\"), u"a/");
    EXPECT_EQ(KWO_AddSeparator(u"a\\", u"/"), u"a\\");
    EXPECT_EQ(KWO_AddSeparator(u"a;", u";"), u"a;");
    EXPECT_EQ(KWO_AddSeparator(u"a", u";"), u"a;");
    EXPECT_EQ(KWO_AddSeparator(u"", u"\\"), u"\\");
}

TEST(CutAtNulTest, KeepsWhatStandsBeforeTheFirstZeroCharacter) {
    EXPECT_EQ(KWO_CutAtNul(u"abc\0def\0"sv), u"abc");
    EXPECT_EQ(KWO_CutAtNul(u"abc"), u"abc");
    EXPECT_EQ(KWO_CutAtNul(u"\0abc"sv), u"");
    EXPECT_EQ(KWO_CutAtNul(u""), u"");
}

TEST(InsertValueTest, ReplacesTheFirstMarkerWhereverItStands) {
    EXPECT_EQ(KWO_InsertValue(u"%1 rest", u"x", u"%1", false), u"x rest");
    EXPECT_EQ(KWO_InsertValue(u"rest %1", u"x", u"%1", false), u"rest x");
    EXPECT_EQ(KWO_InsertValue(u"a %1 b %1", u"x", u"%1", false), u"a x b %1");
    EXPECT_EQ(KWO_InsertValue(u"%1", u"", u"%1", false), u"");
}

TEST(InsertValueTest, PutsAValueWithoutAMarkerBehindTheTextAfterABlank) {
    EXPECT_EQ(KWO_InsertValue(u"text", u"x", u"%1", false), u"text x");
}

TEST(InsertValueTest, QuotesOnRequest) {
    EXPECT_EQ(KWO_InsertValue(u"a | b", u"x", u"|", true), u"a 'x' b");
    EXPECT_EQ(KWO_InsertValue(u"text", u"x", u"|", true), u"text 'x'");
}

TEST(InsertValueTest, IsEmptyWithoutTextOrMarker) {
    EXPECT_EQ(KWO_InsertValue(u"", u"x", u"%1", false), u"");
    EXPECT_EQ(KWO_InsertValue(u"text", u"x", u"", false), u"");
}

TEST(FillTemplateTest, FillsNumberedMarkersByNumber) {
    EXPECT_EQ(KWO_FillTemplate(u"Delete call trace log file for %1?", std::vector<Text>{u"APP"}),
              u"Delete call trace log file for APP?");
    EXPECT_EQ(KWO_FillTemplate(u"%2 then %1", std::vector<Text>{u"a", u"b"}), u"b then a");
}

TEST(FillTemplateTest, FillsBarsInOrderWhenThereIsNoPercentOne) {
    EXPECT_EQ(KWO_FillTemplate(u"Raising error #|: |; Source=|", std::vector<Text>{u"5", u"text", u"here"}),
              u"Raising error #5: text; Source=here");
    EXPECT_EQ(KWO_FillTemplate(u"%2 |", std::vector<Text>{u"a"}), u"%2 a");
}

TEST(FillTemplateTest, LeavesMarkersWithoutAValue) {
    EXPECT_EQ(KWO_FillTemplate(u"%1 and %2", std::vector<Text>{u"a"}), u"a and %2");
    EXPECT_EQ(KWO_FillTemplate(u"| and |", std::vector<Text>{u"a"}), u"a and |");
    EXPECT_EQ(KWO_FillTemplate(u"nothing", {}), u"nothing");
}

// A reader would expect a value without a marker to be dropped.
TEST(FillTemplateIntended, AppendsAValueWithoutAMarkerAfterABlank) {
    EXPECT_EQ(KWO_FillTemplate(u"Raising error #|:|", std::vector<Text>{u"-5", u"Denied.", u"There"}),
              u"Raising error #-5:Denied. There");
    EXPECT_EQ(KWO_FillTemplate(u"Only %1", std::vector<Text>{u"a", u"b"}), u"Only a b");
}

TEST(LowWordTest, KeepsSixteenBits) {
    EXPECT_EQ(KWO_LowWord(0x12345678), 0x5678);
    EXPECT_EQ(KWO_LowWord(-1), 0xFFFF);
    EXPECT_EQ(KWO_LowWord(0x10000), 0);
}

TEST(ReplaceAllTest, DoesNotSearchWhatItPutIn) {
    EXPECT_EQ(ReplaceAll(u"aXbX", u"X", u"XX"), u"aXXbXX");
    EXPECT_EQ(ReplaceAll(u"abc", u"", u"x"), u"abc");
    EXPECT_EQ(ReplaceAll(u"a\r\nb\r\n", kCrLf, u" "), u"a b ");
}

TEST(TrimTest, TakesBlanksOnly) {
    EXPECT_EQ(Trim(u"  a b  "), u"a b");
    EXPECT_EQ(Trim(u"   "), u"");
    EXPECT_EQ(Trim(u"\ta "), u"\ta");
    EXPECT_EQ(TrimRight(u"  a  "), u"  a");
}

}  // namespace
}  // namespace kwo::frame

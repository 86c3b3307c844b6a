#include "contract_test.h"

namespace kwo::contract {
namespace {

class SystemFontsContract : public ContractTest {
protected:
    platform::SystemFonts& fonts = platform().fonts;
};

TEST_F(SystemFontsContract, TheDesktopHasFiveFonts) {
    platform::NonClientFonts records;
    ASSERT_TRUE(fonts.QueryNonClient(records));
    for (const platform::FontRecord& record :
         {records.caption, records.smallCaption, records.menu, records.status, records.message}) {
        EXPECT_FALSE(record.faceName.empty());
        EXPECT_EQ(record.faceName.find(u'\0'), Text::npos);
        EXPECT_NE(record.height, 0);
        EXPECT_GE(record.weight, 100);
    }
}

TEST_F(SystemFontsContract, AFontObjectTakesItsProperties) {
    const platform::HostObjectRef font = fonts.MakeFont();
    ASSERT_NE(font, nullptr);
    platform::Conversions& conversions = platform().conversions;
    for (const TextView property : {u"Bold", u"Italic", u"Underline", u"Strikethrough"}) {
        for (const bool value : {true, false}) {
            font->Let(property, value);
            EXPECT_EQ(conversions.ToBoolean(font->Get(property)), value) << Printed(property);
        }
    }
    font->Let(u"Name", Text(u"Arial"));
    font->Let(u"Size", 12.0);
    // Fonts come in the sizes that the system can draw.
    EXPECT_NEAR(conversions.ToDouble(font->Get(u"Size")), 12.0, 1.0);
    EXPECT_FALSE(conversions.ToText(font->Get(u"Name")).empty());
}

TEST_F(SystemFontsContract, AFontTakesNoNameAndNoSize) {
    const platform::HostObjectRef font = fonts.MakeFont();
    EXPECT_NO_THROW(font->Let(u"Name", Text()));
    EXPECT_NO_THROW(font->Let(u"Size", 0.0));
}

TEST_F(SystemFontsContract, EachFontIsAnotherObject) {
    EXPECT_FALSE(fonts.MakeFont()->IsSameAs(*fonts.MakeFont()));
}

}  // namespace
}  // namespace kwo::contract

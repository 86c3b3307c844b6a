#include "sysinfo/sys_params.h"

#include <gtest/gtest.h>

#include <vector>

#include "platform/component_error.h"
#include "platform/simulated/simulated_desktop.h"

namespace kwo::sysinfo {
namespace {

using platform::ComponentError;
using platform::FontRecord;
using platform::HostObjectRef;
using platform::Text;
using platform::TextView;
using platform::Variant;
using Lines = std::vector<std::string>;

FontRecord Record(TextView name, std::int32_t height = -11, std::int32_t weight = 400) {
    FontRecord record;
    record.height = height;
    record.weight = weight;
    record.faceName = name;
    return record;
}

class SystemFonts : public testing::Test {
protected:
    SystemFonts() {
        desktop.fonts.nonClient = {Record(u"Caption Face", -13, 700), Record(u"Small Face", -11), Record(u"Menu Face"),
                                   Record(u"Status Face"), Record(u"Message Face")};
    }

    static Variant Of(const HostObjectRef& font, TextView property) { return font->Get(property); }
    static Text Name(const HostObjectRef& font) { return std::get<Text>(Of(font, u"Name")); }
    static bool Bold(const HostObjectRef& font) { return std::get<bool>(Of(font, u"Bold")); }
    static double Size(const HostObjectRef& font) { return std::get<double>(Of(font, u"Size")); }

    double SizeOf(std::int32_t height, double twipsPerPixel = 15) {
        desktop.fonts.nonClient.menu.height = height;
        desktop.screen.twipsPerPixelY = twipsPerPixel;
        return Size(KWOSysParams(component).MenuFont());
    }
    bool BoldOf(std::int32_t weight) {
        desktop.fonts.nonClient.status.weight = weight;
        return Bold(KWOSysParams(component).StatusFont());
    }

    platform::simulated::SimulatedDesktop desktop;
    component::Component component{desktop.Services()};
};

TEST_F(SystemFonts, EachPropertyGivesItsFont) {
    const KWOSysParams params(component);
    EXPECT_EQ(Name(params.CaptionFont()), u"Caption Face");
    EXPECT_EQ(Name(params.MenuFont()), u"Menu Face");
    EXPECT_EQ(Name(params.StatusFont()), u"Status Face");
    EXPECT_EQ(Name(params.MessageFont()), u"Message Face");
    EXPECT_TRUE(Bold(params.CaptionFont()));
    EXPECT_FALSE(Bold(params.MenuFont()));
    EXPECT_EQ(component.ProgramName(), u"KWOUtil");
}

TEST_F(SystemFonts, PropertiesAreSetOneAfterTheOtherForAllFonts) {
    desktop.fonts.nonClient.caption.italic = 1;
    desktop.fonts.nonClient.smallCaption.underline = 255;
    desktop.fonts.nonClient.menu.strikeOut = 1;
    const KWOSysParams params(component);
    EXPECT_EQ(desktop.log.Lines(), (Lines{
                                       "SystemParametersInfo 41",
                                       "Let font1.Name \"Caption Face\"",
                                       "Let font2.Name \"Small Face\"",
                                       "Let font3.Name \"Menu Face\"",
                                       "Let font4.Name \"Status Face\"",
                                       "Let font5.Name \"Message Face\"",
                                       "Let font1.Italic True",
                                       "Let font2.Italic False",
                                       "Let font3.Italic False",
                                       "Let font4.Italic False",
                                       "Let font5.Italic False",
                                       "Let font1.Underline False",
                                       "Let font2.Underline True",
                                       "Let font3.Underline False",
                                       "Let font4.Underline False",
                                       "Let font5.Underline False",
                                       "Let font1.Strikethrough False",
                                       "Let font2.Strikethrough False",
                                       "Let font3.Strikethrough True",
                                       "Let font4.Strikethrough False",
                                       "Let font5.Strikethrough False",
                                       "Let font1.Bold True",
                                       "Let font2.Bold False",
                                       "Let font3.Bold False",
                                       "Let font4.Bold False",
                                       "Let font5.Bold False",
                                       "Let font1.Size 9.75",
                                       "Let font2.Size 8.25",
                                       "Let font3.Size 8.25",
                                       "Let font4.Size 8.25",
                                       "Let font5.Size 8.25",
                                   }));
}

TEST_F(SystemFonts, AFaceNameIsTakenWhole) {
    desktop.fonts.nonClient.caption = Record(u"0123456789012345678901234567890X");
    desktop.fonts.nonClient.status = Record(u"");
    desktop.fonts.nonClient.message = Record(u"Größ€");
    const KWOSysParams params(component);
    EXPECT_EQ(Name(params.CaptionFont()), u"0123456789012345678901234567890X");
    EXPECT_EQ(Name(params.StatusFont()), u"");
    EXPECT_EQ(Name(params.MessageFont()), u"Größ€");
}

TEST_F(SystemFonts, BoldBeginsAbove550) {
    EXPECT_FALSE(BoldOf(400));
    EXPECT_FALSE(BoldOf(549));
    EXPECT_FALSE(BoldOf(550));
    EXPECT_TRUE(BoldOf(551));
    EXPECT_TRUE(BoldOf(700));
    EXPECT_FALSE(BoldOf(0));
    EXPECT_FALSE(BoldOf(-700));
}

TEST_F(SystemFonts, ASizeIsTheHeightInPoints) {
    EXPECT_EQ(SizeOf(-11), 8.25);
    EXPECT_EQ(SizeOf(11), 8.25);
    EXPECT_EQ(SizeOf(0), 0);
    EXPECT_EQ(SizeOf(-1), 0.75);
    EXPECT_EQ(SizeOf(-14, 12), 8.4);
    EXPECT_EQ(SizeOf(-16, 10), 8);
}

TEST_F(SystemFonts, TwipsPerPixelAreRoundedToTheNearestAndHalvesToEven) {
    EXPECT_EQ(SizeOf(-20, 14.5), 14);
    EXPECT_EQ(SizeOf(-20, 15.5), 16);
    EXPECT_EQ(SizeOf(-20, 14.51), 15);
    EXPECT_EQ(SizeOf(-20, 7.4999), 7);
}

TEST_F(SystemFonts, AHeightOfMoreThan32BitsOfTwipsOverflows) {
    EXPECT_EQ(SizeOf(-143'165'576), 107'374'182.0);
    for (const std::int32_t height : {143'165'577, -143'165'577, INT32_MIN}) {
        try {
            SizeOf(height);
            ADD_FAILURE() << height;
        } catch (const ComponentError& error) {
            EXPECT_EQ(error.number, 6) << height;
        }
    }
}

TEST_F(SystemFonts, TheLargestNumberOfTwipsIsASize) {
    EXPECT_EQ(SizeOf(INT32_MAX, 1), INT32_MAX / 20.0);
}

TEST_F(SystemFonts, TwipsPerPixelOfMoreThan16BitsOverflow) {
    EXPECT_EQ(SizeOf(-1, 32'767), 32'767 / 20.0);
    for (const double twips : {32'768.0, -32'769.0}) {
        desktop.screen.twipsPerPixelY = twips;
        try {
            const KWOSysParams params(component);
            ADD_FAILURE() << twips;
        } catch (const ComponentError& error) {
            EXPECT_EQ(error.number, 6);
        }
    }
}

TEST_F(SystemFonts, AFailedQueryGivesEmptyFonts) {
    desktop.FailCall("SystemParametersInfo", 1, 5);
    const KWOSysParams params(component);
    for (const HostObjectRef& font :
         {params.CaptionFont(), params.MenuFont(), params.StatusFont(), params.MessageFont()}) {
        ASSERT_NE(font, nullptr);
        EXPECT_EQ(Name(font), u"");
        EXPECT_EQ(Size(font), 0);
        EXPECT_FALSE(Bold(font));
    }
}

TEST_F(SystemFonts, AFontIsSharedWithAllWhoGetIt) {
    const KWOSysParams params(component);
    EXPECT_EQ(params.MenuFont(), params.MenuFont());
    params.MenuFont()->Let(u"Size", Variant(20.0));
    EXPECT_EQ(Size(params.MenuFont()), 20);
    EXPECT_EQ(Size(KWOSysParams(component).MenuFont()), 8.25);
}

TEST_F(SystemFonts, TheFontsAreThoseOfTheMomentOfCreation) {
    const KWOSysParams params(component);
    desktop.fonts.nonClient.menu = Record(u"Later Face");
    EXPECT_EQ(Name(params.MenuFont()), u"Menu Face");
    EXPECT_EQ(Name(KWOSysParams(component).MenuFont()), u"Later Face");
}

using SmallCaptionFontIntended = SystemFonts;

TEST_F(SmallCaptionFontIntended, GivesNoFontButItsNameToTheCaptionFont) {
    KWOSysParams params(component);
    EXPECT_EQ(Name(params.CaptionFont()), u"Caption Face");
    EXPECT_EQ(params.SmCaptionFont(), nullptr);
    EXPECT_EQ(Name(params.CaptionFont()), u"Small Face");
    // The rest of the caption font stays.
    EXPECT_TRUE(Bold(params.CaptionFont()));
    EXPECT_EQ(Size(params.CaptionFont()), 9.75);
}

}  // namespace
}  // namespace kwo::sysinfo

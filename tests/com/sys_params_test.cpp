#include <olectl.h>

#include <cmath>
#include <cstring>
#include <optional>

#include "com_test.h"
#include "replaced_function.h"
#include "wine.h"

namespace kwo::com_test {
namespace {

class SysParamsClass : public ::testing::Test {
protected:
    void SetUp() override {
        mFonts = Create(L"KWOSysParams");
        ASSERT_TRUE(mFonts);
        mMetrics.cbSize = 340;
        ASSERT_TRUE(SystemParametersInfoA(SPI_GETNONCLIENTMETRICS, 0, &mMetrics, 0));
    }
    /// A font of the class, by the early-bound interface of fonts.
    ComPtr<IFont> Font(const wchar_t* property) {
        const Outcome outcome = Get(mFonts.Get(), property);
        EXPECT_EQ(Hex(outcome.status), Hex(S_OK));
        EXPECT_EQ(outcome.result.vt, VT_DISPATCH);
        return outcome.result.vt == VT_DISPATCH ? As<IFont>(outcome.result.pdispVal, IID_IFont) : ComPtr<IFont>();
    }
    static std::wstring NameOf(IFont* font) {
        Bstr name;
        EXPECT_EQ(Hex(font->get_Name(name.Out())), Hex(S_OK));
        return name.Text();
    }
    static std::wstring Wide(const char* text) { return std::wstring(text, text + strlen(text)); }

    ComPtr<IDispatch> mFonts;
    NONCLIENTMETRICSA mMetrics = {};
};

TEST_F(SysParamsClass, FontsAreThoseOfTheDesktop) {
    const struct {
        const wchar_t* property;
        const LOGFONTA& expected;
    } rows[] = {{L"CaptionFont", mMetrics.lfCaptionFont},
                {L"MenuFont", mMetrics.lfMenuFont},
                {L"StatusFont", mMetrics.lfStatusFont},
                {L"MessageFont", mMetrics.lfMessageFont}};
    const HDC screen = GetDC(nullptr);
    const double twipsPerPixel = std::nearbyint(1440.0 / GetDeviceCaps(screen, LOGPIXELSY));
    ReleaseDC(nullptr, screen);
    for (const auto& row : rows) {
        const ComPtr<IFont> font = Font(row.property);
        ASSERT_TRUE(font) << Narrow(row.property);
        CY size = {};
        BOOL bold = FALSE;
        BOOL italic = FALSE;
        EXPECT_EQ(NameOf(font.Get()), Wide(row.expected.lfFaceName)) << Narrow(row.property);
        EXPECT_EQ(Hex(font->get_Size(&size)), Hex(S_OK));
        EXPECT_EQ(Hex(font->get_Bold(&bold)), Hex(S_OK));
        EXPECT_EQ(Hex(font->get_Italic(&italic)), Hex(S_OK));
        EXPECT_NEAR(static_cast<double>(size.int64) / 10'000, std::abs(row.expected.lfHeight * twipsPerPixel) / 20, 0.4)
            << Narrow(row.property);
        EXPECT_EQ(bold != FALSE, row.expected.lfWeight > 550) << Narrow(row.property);
        EXPECT_EQ(italic != FALSE, row.expected.lfItalic != 0) << Narrow(row.property);
    }
}

/// A desktop with another font for each purpose, or one that does not supply its fonts.
NONCLIENTMETRICSA theMetrics;
bool theMetricsAreTold = true;
UINT theAction = 0;
UINT theSize = 0;

BOOL WINAPI TellMetrics(UINT action, UINT, void* record, UINT) {
    theAction = action;
    theSize = static_cast<NONCLIENTMETRICSA*>(record)->cbSize;
    if (theMetricsAreTold) std::memcpy(record, &theMetrics, theSize);
    return theMetricsAreTold;
}

void PutFont(LOGFONTA& font, const char* name, LONG height, LONG weight) {
    font = {};
    font.lfHeight = height;
    font.lfWeight = weight;
    std::strcpy(font.lfFaceName, name);
}

class FontsOfAnotherDesktop : public SysParamsClass {
protected:
    void SetUp() override {
        SysParamsClass::SetUp();
        theMetricsAreTold = true;
        PutFont(theMetrics.lfCaptionFont, "Wingdings", -16, 700);
        PutFont(theMetrics.lfSmCaptionFont, "Webdings", -12, 400);
        PutFont(theMetrics.lfMenuFont, "Marlett", -20, 400);
        PutFont(theMetrics.lfStatusFont, "Tahoma", -24, 400);
        PutFont(theMetrics.lfMessageFont, "Symbol", -32, 400);
        mReplaced.emplace("SystemParametersInfoA", &TellMetrics);
    }
    void MakeFonts() { mFonts = Create(L"KWOSysParams"); }
    static double SizeOf(IFont* font) {
        CY size = {};
        EXPECT_EQ(Hex(font->get_Size(&size)), Hex(S_OK));
        return static_cast<double>(size.int64) / 10'000;
    }
    static bool Has(IFont* font, HRESULT (STDMETHODCALLTYPE IFont::*style)(BOOL*)) {
        BOOL value = FALSE;
        EXPECT_EQ(Hex((font->*style)(&value)), Hex(S_OK));
        return value != FALSE;
    }
    std::optional<ReplacedFunction> mReplaced;
};

TEST_F(FontsOfAnotherDesktop, EachPropertyGivesItsOwn) {
    MakeFonts();
    EXPECT_EQ(theAction, 41u);
    EXPECT_EQ(theSize, 340u);
    EXPECT_EQ(NameOf(Font(L"CaptionFont").Get()), L"Wingdings");
    EXPECT_EQ(NameOf(Font(L"MenuFont").Get()), L"Marlett");
    EXPECT_EQ(NameOf(Font(L"StatusFont").Get()), L"Tahoma");
    EXPECT_EQ(NameOf(Font(L"MessageFont").Get()), L"Symbol");
    EXPECT_TRUE(Has(Font(L"CaptionFont").Get(), &IFont::get_Bold));
    EXPECT_FALSE(Has(Font(L"MenuFont").Get(), &IFont::get_Bold));
    EXPECT_LT(SizeOf(Font(L"CaptionFont").Get()), SizeOf(Font(L"MenuFont").Get()));
    EXPECT_LT(SizeOf(Font(L"StatusFont").Get()), SizeOf(Font(L"MessageFont").Get()));
    Get(mFonts.Get(), L"SmCaptionFont");
    EXPECT_EQ(NameOf(Font(L"CaptionFont").Get()), L"Webdings");
}

TEST_F(FontsOfAnotherDesktop, WhateverIsNotZeroIsAStyle) {
    theMetrics.lfMenuFont.lfItalic = 255;
    theMetrics.lfStatusFont.lfUnderline = 2;
    theMetrics.lfMessageFont.lfStrikeOut = 128;
    MakeFonts();
    const struct {
        const wchar_t* property;
        bool italic, underline, strikethrough;
    } rows[] = {{L"CaptionFont", false, false, false},
                {L"MenuFont", true, false, false},
                {L"StatusFont", false, true, false},
                {L"MessageFont", false, false, true}};
    for (const auto& row : rows) {
        const ComPtr<IFont> font = Font(row.property);
        EXPECT_EQ(Has(font.Get(), &IFont::get_Italic), row.italic) << Narrow(row.property);
        EXPECT_EQ(Has(font.Get(), &IFont::get_Underline), row.underline) << Narrow(row.property);
        EXPECT_EQ(Has(font.Get(), &IFont::get_Strikethrough), row.strikethrough) << Narrow(row.property);
    }
}

TEST_F(FontsOfAnotherDesktop, FontsThatAreNotToldHaveNoNameAndNoSize) {
    theMetricsAreTold = false;
    MakeFonts();
    for (const wchar_t* const property : {L"CaptionFont", L"MenuFont", L"StatusFont", L"MessageFont"}) {
        const ComPtr<IFont> font = Font(property);
        ASSERT_TRUE(font);
        // Without a name and a size the system's font object tells what it likes. Wine's tells those of the font that
        // it would draw with.
        if (IsWine()) {
            EXPECT_FALSE(NameOf(font.Get()).empty()) << Narrow(property);
            EXPECT_NE(SizeOf(font.Get()), 0) << Narrow(property);
        }
        EXPECT_FALSE(Has(font.Get(), &IFont::get_Bold)) << Narrow(property);
    }
}

TEST_F(SysParamsClass, AFontAnswersLateBoundCallers) {
    const Outcome outcome = Get(mFonts.Get(), L"MenuFont");
    ASSERT_EQ(outcome.result.vt, VT_DISPATCH);
    for (const wchar_t* const property : {L"Name", L"Size", L"Bold", L"Italic", L"Underline", L"Strikethrough"})
        EXPECT_EQ(Hex(Get(outcome.result.pdispVal, property).status), Hex(S_OK)) << Narrow(property);
}

TEST_F(SysParamsClass, AFontIsSharedWithAllWhoGetIt) {
    const ComPtr<IFont> first = Font(L"StatusFont");
    ASSERT_TRUE(first);
    EXPECT_EQ(Hex(first->put_Strikethrough(TRUE)), Hex(S_OK));

    const ComPtr<IFont> second = Font(L"StatusFont");
    BOOL strikethrough = FALSE;
    EXPECT_EQ(Hex(second->get_Strikethrough(&strikethrough)), Hex(S_OK));
    EXPECT_TRUE(strikethrough);
    EXPECT_EQ(second.Get(), first.Get());
}

TEST_F(SysParamsClass, AFontOutlivesTheObject) {
    const ComPtr<IFont> font = Font(L"CaptionFont");
    mFonts = {};
    EXPECT_EQ(NameOf(font.Get()), Wide(mMetrics.lfCaptionFont.lfFaceName));
}

TEST_F(SysParamsClass, TheSmallCaptionFontIsNoneAndNamesTheCaptionFont) {
    // Another name than the caption's own shows what happens.
    const ComPtr<IFont> caption = Font(L"CaptionFont");
    const Bstr other(L"Webdings");
    caption->put_Name(other.Get());

    const Outcome outcome = Get(mFonts.Get(), L"SmCaptionFont");
    EXPECT_EQ(Hex(outcome.status), Hex(S_OK));
    EXPECT_EQ(outcome.result.vt, VT_DISPATCH);
    EXPECT_EQ(outcome.result.pdispVal, nullptr);
    EXPECT_EQ(NameOf(caption.Get()), Wide(mMetrics.lfSmCaptionFont.lfFaceName));
}

}  // namespace
}  // namespace kwo::com_test

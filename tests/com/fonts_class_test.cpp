#include <olectl.h>

#include <cmath>

#include "com_test.h"

namespace kwo::com_test {
namespace {

class FontsClass : public ::testing::Test {
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
        EXPECT_EQ(Hex(S_OK), Hex(outcome.status));
        EXPECT_EQ(VT_DISPATCH, outcome.result.vt);
        return outcome.result.vt == VT_DISPATCH ? As<IFont>(outcome.result.pdispVal, IID_IFont) : ComPtr<IFont>();
    }
    static std::wstring NameOf(IFont* font) {
        Bstr name;
        EXPECT_EQ(Hex(S_OK), Hex(font->get_Name(name.Out())));
        return name.Text();
    }
    static std::wstring Wide(const char* text) { return std::wstring(text, text + strlen(text)); }

    ComPtr<IDispatch> mFonts;
    NONCLIENTMETRICSA mMetrics = {};
};

TEST_F(FontsClass, FontsAreThoseOfTheDesktop) {
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
        EXPECT_EQ(Wide(row.expected.lfFaceName), NameOf(font.Get())) << Narrow(row.property);
        EXPECT_EQ(Hex(S_OK), Hex(font->get_Size(&size)));
        EXPECT_EQ(Hex(S_OK), Hex(font->get_Bold(&bold)));
        EXPECT_EQ(Hex(S_OK), Hex(font->get_Italic(&italic)));
        EXPECT_NEAR(std::abs(row.expected.lfHeight * twipsPerPixel) / 20, static_cast<double>(size.int64) / 10'000, 0.4)
            << Narrow(row.property);
        EXPECT_EQ(row.expected.lfWeight > 550, bold != FALSE) << Narrow(row.property);
        EXPECT_EQ(row.expected.lfItalic != 0, italic != FALSE) << Narrow(row.property);
    }
}

TEST_F(FontsClass, AFontAnswersLateBoundCallers) {
    const Outcome outcome = Get(mFonts.Get(), L"MenuFont");
    ASSERT_EQ(VT_DISPATCH, outcome.result.vt);
    for (const wchar_t* const property : {L"Name", L"Size", L"Bold", L"Italic", L"Underline", L"Strikethrough"})
        EXPECT_EQ(Hex(S_OK), Hex(Get(outcome.result.pdispVal, property).status)) << Narrow(property);
}

TEST_F(FontsClass, AFontIsSharedWithAllWhoGetIt) {
    const ComPtr<IFont> first = Font(L"StatusFont");
    ASSERT_TRUE(first);
    EXPECT_EQ(Hex(S_OK), Hex(first->put_Strikethrough(TRUE)));

    const ComPtr<IFont> second = Font(L"StatusFont");
    BOOL strikethrough = FALSE;
    EXPECT_EQ(Hex(S_OK), Hex(second->get_Strikethrough(&strikethrough)));
    EXPECT_TRUE(strikethrough);
    EXPECT_EQ(first.Get(), second.Get());
}

TEST_F(FontsClass, AFontOutlivesTheObject) {
    const ComPtr<IFont> font = Font(L"CaptionFont");
    mFonts = {};
    EXPECT_EQ(Wide(mMetrics.lfCaptionFont.lfFaceName), NameOf(font.Get()));
}

TEST_F(FontsClass, TheSmallCaptionFontIsNoneAndNamesTheCaptionFont) {
    // Another name than the caption's own shows what happens.
    const ComPtr<IFont> caption = Font(L"CaptionFont");
    const Bstr other(L"Courier New");
    caption->put_Name(other.Get());

    const Outcome outcome = Get(mFonts.Get(), L"SmCaptionFont");
    EXPECT_EQ(Hex(S_OK), Hex(outcome.status));
    EXPECT_EQ(VT_DISPATCH, outcome.result.vt);
    EXPECT_EQ(nullptr, outcome.result.pdispVal);
    EXPECT_EQ(Wide(mMetrics.lfSmCaptionFont.lfFaceName), NameOf(caption.Get()));
}

}  // namespace
}  // namespace kwo::com_test

#include <cwchar>

#include "com_test.h"
#include "wine.h"

namespace kwo::com_test {
namespace {

enum class Expect { X, Y, Pixels, Flag, FirstBit, Short, Long };

struct Row {
    const wchar_t* member;
    int index;
    Expect expect;
};

// By hand, like the list of members: the number that the system knows each metric by.
constexpr Row kRows[] = {
    {L"ScreenX", 0, Expect::X},
    {L"ScreenY", 1, Expect::Y},
    {L"VScrollX", 2, Expect::X},
    {L"HScrollY", 3, Expect::Y},
    {L"BorderX", 5, Expect::X},
    {L"BorderY", 6, Expect::Y},
    {L"DialogFrameX", 7, Expect::X},
    {L"DialogFrameY", 8, Expect::Y},
    {L"VScrollThumbY", 9, Expect::Y},
    {L"HScrollThumbX", 10, Expect::X},
    {L"IconX", 11, Expect::X},
    {L"IconY", 12, Expect::Y},
    {L"CursorX", 13, Expect::X},
    {L"CursorY", 14, Expect::Y},
    {L"FullScreenWindowX", 16, Expect::X},
    {L"FullScreenWindowY", 17, Expect::Y},
    {L"WindowMinX", 28, Expect::X},
    {L"WindowMinY", 29, Expect::Y},
    {L"WindowBtnX", 30, Expect::X},
    {L"WindowBtnY", 31, Expect::Y},
    {L"FrameX", 32, Expect::X},
    {L"FrameY", 33, Expect::Y},
    {L"MinTrackX", 34, Expect::X},
    {L"MinTrackY", 35, Expect::Y},
    {L"DoubleClickX", 36, Expect::X},
    {L"DoubleClickY", 37, Expect::Y},
    {L"IconSpacingX", 38, Expect::X},
    {L"IconSpacingY", 39, Expect::Y},
    {L"DragX", 68, Expect::X},
    {L"DragY", 69, Expect::Y},
    {L"Edge3DX", 45, Expect::X},
    {L"Edge3DY", 46, Expect::Y},
    {L"FixedFrameX", 7, Expect::X},
    {L"FixedFrameY", 8, Expect::Y},
    {L"MaximizedX", 61, Expect::X},
    {L"MaximizedY", 62, Expect::Y},
    {L"MaxTrackX", 59, Expect::X},
    {L"MaxTrackY", 60, Expect::Y},
    {L"MenuCheckX", 71, Expect::X},
    {L"MenuCheckY", 72, Expect::Y},
    {L"MenuSizeX", 54, Expect::X},
    {L"MenuSizeY", 55, Expect::Y},
    {L"MinimizedX", 57, Expect::X},
    {L"MinimizedY", 58, Expect::Y},
    {L"MinSpacingX", 47, Expect::Pixels},
    {L"MinSpacingY", 48, Expect::Y},
    {L"SizeFrameX", 32, Expect::X},
    {L"SizeFrameY", 33, Expect::Y},
    {L"SmallIconX", 49, Expect::X},
    {L"SmallIconY", 50, Expect::Y},
    {L"SmallBtnX", 52, Expect::X},
    {L"SmallBtnY", 53, Expect::Y},
    {L"DebugVersion", 22, Expect::Flag},
    {L"SwapButtons", 23, Expect::Flag},
    {L"SingleMenuBarY", 15, Expect::Y},
    {L"VScrollArrowY", 20, Expect::Y},
    {L"HScrollArrowX", 21, Expect::X},
    {L"KanjiWindowY", 18, Expect::Y},
    {L"MousePresent", 19, Expect::Flag},
    {L"CaptionAreaY", 4, Expect::Y},
    {L"SmallCaptionAreaY", 51, Expect::Y},
    {L"MenuDropRightAligned", 40, Expect::Flag},
    {L"PenWindows", 41, Expect::Flag},
    {L"DBCSEnabled", 42, Expect::Flag},
    {L"MouseButtons", 43, Expect::Short},
    {L"Arrange", 56, Expect::Long},
    {L"CleanBoot", 67, Expect::Short},
    {L"MidEastEnabled", 74, Expect::Flag},
    {L"Network", 63, Expect::FirstBit},
    {L"Secure", 44, Expect::Flag},
    {L"SlowMachine", 73, Expect::Flag},
};

int TwipsPerPixel(int axis) {
    const HDC screen = GetDC(nullptr);
    const int twips = MulDiv(1440, 1, GetDeviceCaps(screen, axis));
    ReleaseDC(nullptr, screen);
    return twips;
}

class SysMetricsClass : public ::testing::Test {
protected:
    void SetUp() override {
        mMetrics = Create(L"KWOSysMetrics");
        ASSERT_TRUE(mMetrics);
    }
    ComPtr<IDispatch> mMetrics;
};

TEST_F(SysMetricsClass, TheDisplayHasTheDensityOfThisRun) {
    wchar_t wanted[8] = L"96";
    const bool isTold = GetEnvironmentVariableW(L"KWO_DPI", wanted, 8) != 0;
    if (!isTold && !IsWine()) GTEST_SKIP() << "a user's display may have any density";
    const int dots = static_cast<int>(std::wcstol(wanted, nullptr, 10));
    EXPECT_EQ(TwipsPerPixel(LOGPIXELSX), MulDiv(1440, 1, dots));
    EXPECT_EQ(TwipsPerPixel(LOGPIXELSY), MulDiv(1440, 1, dots));
}

TEST_F(SysMetricsClass, EveryMemberIsWhatTheSystemSays) {
    for (const Row& row : kRows) {
        const int value = GetSystemMetrics(row.index);
        const Outcome outcome = Call(mMetrics.Get(), row.member);
        ASSERT_EQ(Hex(outcome.status), Hex(S_OK)) << Narrow(row.member);
        switch (row.expect) {
            case Expect::Flag:
            case Expect::FirstBit:
                ASSERT_EQ(outcome.result.vt, VT_BOOL) << Narrow(row.member);
                EXPECT_EQ(outcome.result.boolVal == VARIANT_TRUE, (row.expect == Expect::Flag ? value : value & 1) != 0)
                    << Narrow(row.member);
                break;
            case Expect::Short:
                ASSERT_EQ(outcome.result.vt, VT_I2) << Narrow(row.member);
                EXPECT_EQ(outcome.result.iVal, value) << Narrow(row.member);
                break;
            default:
                ASSERT_EQ(outcome.result.vt, VT_I4) << Narrow(row.member);
                EXPECT_EQ(outcome.result.lVal, value) << Narrow(row.member);
                break;
        }
    }
}

TEST_F(SysMetricsClass, DimensionsAreInTwipsByArgumentAndByProperty) {
    const auto expectTwips = [&](const std::vector<Var>& arguments) {
        for (const Row& row : kRows) {
            if (row.expect != Expect::X && row.expect != Expect::Y && row.expect != Expect::Pixels) continue;
            const int factor = row.expect == Expect::X   ? TwipsPerPixel(LOGPIXELSX)
                               : row.expect == Expect::Y ? TwipsPerPixel(LOGPIXELSY)
                                                         : 1;
            EXPECT_EQ(Call(mMetrics.Get(), row.member, arguments).result.lVal, GetSystemMetrics(row.index) * factor)
                << Narrow(row.member);
        }
    };
    expectTwips({1});
    expectTwips({L"1"});
    EXPECT_EQ(Hex(Let(mMetrics.Get(), L"ScaleMode", 1).status), Hex(S_OK));
    expectTwips({});
    expectTwips({Var::Missing()});
    EXPECT_EQ(Call(mMetrics.Get(), L"ScreenX", {3}).result.lVal, GetSystemMetrics(SM_CXSCREEN));
}

TEST_F(SysMetricsClass, ModeThatIsNoneSticks) {
    EXPECT_EQ(Get(mMetrics.Get(), L"ScaleMode").result.iVal, 3);
    Let(mMetrics.Get(), L"ScaleMode", 2);
    Let(mMetrics.Get(), L"ScaleMode", 1);

    EXPECT_EQ(Get(mMetrics.Get(), L"ScaleMode").result.iVal, 2);
}

TEST_F(SysMetricsClass, ArgumentThatIsNoModeIsAnError) {
    Outcome outcome = Call(mMetrics.Get(), L"BorderX", {L"wide"});
    EXPECT_EQ(Hex(outcome.scode), Hex(static_cast<HRESULT>(0x800A000D)));
    EXPECT_EQ(outcome.source, L"KWOSysMetrics.BorderX");
    outcome = Call(mMetrics.Get(), L"BorderX", {40'000});
    EXPECT_EQ(Hex(outcome.scode), Hex(static_cast<HRESULT>(0x800A0006)));
}

}  // namespace
}  // namespace kwo::com_test

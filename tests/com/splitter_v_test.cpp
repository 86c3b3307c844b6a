#include "box_answerer.h"
#include "com_test.h"
#include "host_box.h"
#include "host_pane.h"

namespace kwo::com_test {
namespace {

class SplitterVClass : public ::testing::Test {
protected:
    void SetUp() override {
        mForm.Property(L"WindowState", Var(0));
        mWindow = CreateWindowExW(0, L"STATIC", L"", WS_POPUP | WS_VISIBLE, 100, 100, 400, 200, nullptr, nullptr,
                                  nullptr, nullptr);
        mContainer.Property(L"hWnd", Var(static_cast<long>(reinterpret_cast<INT_PTR>(mWindow))));
        mContainer.Property(L"ScaleMode", Var(1));
        mContainer.Property(L"ScaleWidth", Var(6000.0));
        mContainer.Property(L"ScaleHeight", Var(3000.0));
        for (const wchar_t* const name : {L"ScaleX", L"ScaleY"}) {
            mContainer.Method(name, [](MemberObject::Arguments& given, VARIANT* result) {
                result->vt = VT_R4;
                result->fltVal = NumberIn(*given[1]) == 3 ? 15.0f : 0.0f;
                return S_OK;
            });
        }
        mSplitter = Create(L"KWOSplitterV");
        ASSERT_TRUE(mSplitter);
    }
    void TearDown() override { DestroyWindow(mWindow); }
    bool CreateSplitter(const std::vector<Var>& options = {}) {
        std::vector<Var> arguments = {static_cast<IDispatch*>(&mLeft), static_cast<IDispatch*>(&mRight),
                                      static_cast<IDispatch*>(&mBar)};
        arguments.insert(arguments.end(), options.begin(), options.end());
        const Outcome outcome = Call(mSplitter.Get(), L"Create", arguments);
        EXPECT_EQ(Hex(outcome.status), Hex(S_OK)) << Narrow(outcome.description);
        return outcome.result.boolVal == VARIANT_TRUE;
    }
    void Mouse(const wchar_t* member, double x) {
        EXPECT_EQ(Hex(Call(mSplitter.Get(), member, {1, 0, Var(x), 0}).status), Hex(S_OK));
    }
    /// The black pixels in a row of the window, which is the bar's line while it is inverted.
    int DarkPixels() {
        const HDC screen = GetDC(nullptr);
        int dark = 0;
        for (int x = 100; x < 500; ++x) {
            const COLORREF colour = GetPixel(screen, x, 150);
            dark += GetRValue(colour) + GetGValue(colour) + GetBValue(colour) < 384 ? 1 : 0;
        }
        ReleaseDC(nullptr, screen);
        return dark;
    }

    MemberObject mForm;
    MemberObject mContainer;
    Pane mLeft{&mContainer, &mForm, 0};
    Pane mRight{&mContainer, &mForm, 3000};
    Pane mBar{&mContainer, &mForm, 2000};
    HWND mWindow = nullptr;
    ComPtr<IDispatch> mSplitter;
};

using Place = std::vector<double>;

TEST_F(SplitterVClass, FitsThePanesToTheBar) {
    ASSERT_TRUE(CreateSplitter({6, 60, 30, 90, 120}));
    EXPECT_EQ(mBar.Place(), (Place{2000, 30, 90, 2850}));
    EXPECT_EQ(mLeft.Place(), (Place{60, 30, 1940, 2850}));
    EXPECT_EQ(mRight.Place(), (Place{2090, 30, 3760, 2850}));
    EXPECT_EQ(Get(mSplitter.Get(), L"LeftMargin").result.fltVal, 60.0f);
    Let(mSplitter.Get(), L"BottomMargin", Var(0.0));
    Call(mSplitter.Get(), L"Resize");
    EXPECT_EQ(mLeft.Place(), (Place{60, 30, 1940, 2970}));
}

TEST_F(SplitterVClass, TakesAWindowWithoutASign) {
    mContainer.values[L"hWnd"] = Var::UnsignedLong(0xFFFF0001);
    EXPECT_TRUE(CreateSplitter());
    mContainer.values[L"hWnd"] = Var(0xFFFF0001LL);
    EXPECT_TRUE(CreateSplitter());
}

TEST_F(SplitterVClass, ALineFollowsThePointerAndLeavesNothing) {
    const HDC screen = GetDC(nullptr);
    const RECT area = {100, 100, 500, 300};
    FillRect(screen, &area, static_cast<HBRUSH>(GetStockObject(WHITE_BRUSH)));
    ReleaseDC(nullptr, screen);
    ASSERT_TRUE(CreateSplitter());
    ASSERT_EQ(DarkPixels(), 0);
    Mouse(L"MouseDown", 30);
    EXPECT_GE(DarkPixels(), 1);
    EXPECT_LE(DarkPixels(), 8);
    Mouse(L"MouseMove", 900);
    EXPECT_GE(DarkPixels(), 1);
    EXPECT_LE(DarkPixels(), 8);
    Mouse(L"MouseUp", 900);
    EXPECT_EQ(DarkPixels(), 0);
    EXPECT_EQ(mBar.Place()[0], 2870);
    EXPECT_EQ(mLeft.Place()[2], 2870);
}

TEST_F(SplitterVClass, AFailureIsToldByABoxAndFalse) {
    BoxAnswerer user;
    mContainer.failing = L"ScaleWidth";
    EXPECT_FALSE(CreateSplitter());
    ASSERT_EQ(user.boxes.size(), 1u);
    EXPECT_NE(user.boxes[0].text.find(L"refused"), std::wstring::npos) << Narrow(user.boxes[0].text);
    mContainer.failing.clear();
    MemberObject stranger;
    mLeft.values[L"Container"] = Var(static_cast<IDispatch*>(&stranger));
    EXPECT_FALSE(CreateSplitter());
    EXPECT_EQ(user.boxes.size(), 1u);
    mLeft.values[L"Container"] = Var();
}

TEST_F(SplitterVClass, TheCallersObjectsAreGivenBack) {
    const ULONG before[] = {mForm.references, mContainer.references, mLeft.references, mRight.references,
                            mBar.references};
    ASSERT_TRUE(CreateSplitter());
    Mouse(L"MouseDown", 30);
    Mouse(L"MouseUp", 60);
    mSplitter.Reset();
    const ULONG after[] = {mForm.references, mContainer.references, mLeft.references, mRight.references,
                           mBar.references};
    for (std::size_t at = 0; at < 5; ++at)
        EXPECT_EQ(after[at], before[at]) << at;
}

}  // namespace
}  // namespace kwo::com_test

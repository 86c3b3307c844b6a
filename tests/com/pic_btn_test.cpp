#include "com_test.h"
#include "host_box.h"

namespace kwo::com_test {
namespace {

class PicBtnClass : public ::testing::Test {
protected:
    void SetUp() override {
        mForm.Method(L"OnButtonClick", [this](MemberObject::Arguments& given, VARIANT*) {
            ++mClicks;
            mBoxGiven = given[0]->vt == VT_DISPATCH ? given[0]->pdispVal : nullptr;
            if (mOnClick) mOnClick(*given[0]);
            return S_OK;
        });
        mForm.Property(L"ActiveControl", Var(static_cast<IDispatch*>(&mBox)));
        mButton = Create(L"KWOPicBtn");
        ASSERT_TRUE(mButton);
    }
    void TearDown() override { mForm.values.clear(); }
    void CreateButton(const wchar_t* caption = L"&Save") {
        const Outcome outcome = Call(mButton.Get(), L"Create", {static_cast<IDispatch*>(&mBox), caption});
        EXPECT_EQ(Hex(outcome.status), Hex(S_OK)) << Narrow(outcome.description);
        EXPECT_EQ(outcome.result.boolVal, VARIANT_FALSE) << "in every case";
    }
    Outcome Mouse(const wchar_t* member, int x = 300, int y = 150) {
        return Call(mButton.Get(), member, {1, 0, Var(static_cast<double>(x)), Var(static_cast<double>(y))});
    }

    MemberObject mForm;
    HostBox mBox{80, 30, &mForm};
    ComPtr<IDispatch> mButton;
    int mClicks = 0;
    IDispatch* mBoxGiven = nullptr;
    std::function<void(VARIANT&)> mOnClick;
};

/// A button by the system's own calls.
void DrawExpected(HostBox& box, bool pressed, bool framed) {
    RECT area = {0, 0, 80, 30};
    RECT text = pressed ? RECT{3, 3, 79, 29} : RECT{2, 2, 78, 28};
    box.Fill(area, 0);
    DrawEdge(box.Context(), &area, pressed ? EDGE_SUNKEN : EDGE_RAISED, BF_RECT);
    if (framed) FrameRect(box.Context(), &area, static_cast<HBRUSH>(GetStockObject(BLACK_BRUSH)));
    box.values[L"ForeColor"] = Var(0x00FF00);
    DrawTextA(box.Context(), "&Save", 5, &text, 0x8035);
}

TEST_F(PicBtnClass, ThePictureIsThatOfTheSystemsOwnCalls) {
    mBox.values[L"ForeColor"] = Var(0x00FF00);
    CreateButton();
    HostBox expected(80, 30, &mForm);
    DrawExpected(expected, false, false);
    EXPECT_TRUE(expected.Pixels() == mBox.Pixels());
    Mouse(L"MouseDown");
    DrawExpected(expected, true, true);
    EXPECT_TRUE(expected.Pixels() == mBox.Pixels());
    Mouse(L"MouseUp");
    DrawExpected(expected, false, true);
    EXPECT_TRUE(expected.Pixels() == mBox.Pixels());
    EXPECT_EQ(mClicks, 1);
    EXPECT_EQ(mBoxGiven, &mBox);
}

TEST_F(PicBtnClass, TheButtonIsRaisedWhileThePointerIsOutside) {
    mBox.values[L"ForeColor"] = Var(0x00FF00);
    CreateButton();
    HostBox expected(80, 30, &mForm);
    Mouse(L"MouseDown");
    EXPECT_EQ(Hex(Mouse(L"MouseMove", 3000, 150).status), Hex(S_OK));
    DrawExpected(expected, false, true);
    EXPECT_TRUE(expected.Pixels() == mBox.Pixels());
    Mouse(L"MouseMove");
    DrawExpected(expected, true, true);
    EXPECT_TRUE(expected.Pixels() == mBox.Pixels());
    Mouse(L"MouseUp", 3000, 150);
    EXPECT_EQ(mClicks, 0);
}

TEST_F(PicBtnClass, ADoubleClickPressesAgainAndTheNextMovementReleases) {
    CreateButton();
    Mouse(L"MouseDown");
    Mouse(L"MouseUp");
    EXPECT_EQ(Hex(Call(mButton.Get(), L"DblClick").status), Hex(S_OK));
    EXPECT_EQ(mClicks, 1);
    Mouse(L"MouseMove");
    EXPECT_EQ(mClicks, 2);
}

TEST_F(PicBtnClass, TheFrameShowsTheFocus) {
    mBox.values[L"ForeColor"] = Var(0x00FF00);
    CreateButton();
    HostBox expected(80, 30, &mForm);
    EXPECT_EQ(Hex(Call(mButton.Get(), L"GotFocus").status), Hex(S_OK));
    DrawExpected(expected, false, true);
    EXPECT_TRUE(expected.Pixels() == mBox.Pixels());
    EXPECT_EQ(Hex(Call(mButton.Get(), L"LostFocus").status), Hex(S_OK));
    DrawExpected(expected, false, false);
    EXPECT_TRUE(expected.Pixels() == mBox.Pixels());
}

TEST_F(PicBtnClass, ResizingDrawsTheButtonAnew) {
    mBox.values[L"ForeColor"] = Var(0x00FF00);
    CreateButton();
    HostBox expected(80, 30, &mForm);
    DrawExpected(expected, false, false);
    mBox.Fill({0, 0, 80, 30}, 0x123456);
    EXPECT_EQ(Hex(Call(mButton.Get(), L"Resize").status), Hex(S_OK));
    EXPECT_TRUE(expected.Pixels() == mBox.Pixels());
}

TEST_F(PicBtnClass, PropertiesReadBack) {
    EXPECT_EQ(Hex(Let(mButton.Get(), L"Caption", L"x\u00E4&").status), Hex(S_OK));
    EXPECT_EQ(Get(mButton.Get(), L"Caption").result.Text(), L"x\u00E4&");
    for (const wchar_t* const name : {L"TextAlignment", L"PicAlignment"}) {
        Let(mButton.Get(), name, 3);
        EXPECT_EQ(Get(mButton.Get(), L"TextAlignment").result.iVal, 3);
        EXPECT_EQ(Get(mButton.Get(), L"PicAlignment").result.iVal, 3);
        Let(mButton.Get(), name, 0);
        EXPECT_EQ(Get(mButton.Get(), name).result.iVal, 2);
    }
    EXPECT_EQ(Get(mButton.Get(), L"MultiLine").result.boolVal, VARIANT_TRUE);
    Let(mButton.Get(), L"MultiLine", false);
    EXPECT_EQ(Get(mButton.Get(), L"MultiLine").result.boolVal, VARIANT_FALSE);
}

TEST_F(PicBtnClass, TakesAWindowAndAContextWithoutASign) {
    mBox.values[L"hWnd"] = Var::UnsignedLong(0xFFFF0001);
    CreateButton();
    mBox.Method(L"hDC", [](MemberObject::Arguments&, VARIANT* result) {
        result->vt = VT_R8;
        result->dblVal = 4294901761.0;
        return S_OK;
    });
    EXPECT_EQ(Hex(Call(mButton.Get(), L"LostFocus").status), Hex(S_OK));
}

TEST_F(PicBtnClass, KeysComeBackUsedUp) {
    CreateButton();
    SHORT code = 13;
    EXPECT_EQ(Hex(Call(mButton.Get(), L"KeyDown", {Var::Ref(&code), 0}).status), Hex(S_OK));
    EXPECT_EQ(code, 0);
    EXPECT_EQ(mClicks, 1);
    code = 'S';
    SHORT shift = 4;
    Outcome outcome = Call(mButton.Get(), L"Form_KeyDown", {Var::Ref(&code), Var::Ref(&shift)});
    EXPECT_EQ(outcome.result.boolVal, VARIANT_TRUE);
    EXPECT_EQ(code, 0);
    EXPECT_EQ(shift, 0);
    EXPECT_EQ(mClicks, 2);
    code = 'S';
    shift = 6;
    outcome = Call(mButton.Get(), L"Form_KeyDown", {Var::Ref(&code), Var::Ref(&shift)});
    EXPECT_EQ(outcome.result.boolVal, VARIANT_FALSE);
    EXPECT_EQ(code, 'S');
}

TEST_F(PicBtnClass, AKeyIsUsedUpAlsoIfItsClickFails) {
    CreateButton();
    mForm.failing = L"OnButtonClick";
    SHORT code = 13;
    const Outcome typed = Call(mButton.Get(), L"KeyDown", {Var::Ref(&code), 0});
    EXPECT_EQ(Hex(typed.scode), "0x800A04D2");
    EXPECT_EQ(typed.source, L"KWOPicBtn.MouseUp");
    EXPECT_EQ(code, 0);
    Var variable(13);
    EXPECT_EQ(Hex(Call(mButton.Get(), L"KeyDown", {Var::Ref(&variable), 0}).scode), "0x800A04D2");
    EXPECT_EQ(variable.vt, VT_I2);
    EXPECT_EQ(variable.iVal, 0);
}

TEST_F(PicBtnClass, ErrorsHaveTheMembersName) {
    const Outcome missing = Call(mButton.Get(), L"LostFocus");
    EXPECT_EQ(Hex(missing.scode), "0x800A005B");
    EXPECT_EQ(missing.source, L"KWOPicBtn.LostFocus");
    CreateButton();
    mForm.failing = L"OnButtonClick";
    Mouse(L"MouseDown");
    const Outcome failed = Mouse(L"MouseUp");
    EXPECT_EQ(Hex(failed.scode), "0x800A04D2");
    EXPECT_EQ(failed.source, L"KWOPicBtn.MouseUp");
    EXPECT_EQ(failed.description.find(L"refused\r\n"), 0u) << Narrow(failed.description);
    mForm.failing.clear();
    mBox.failing = L"Cls";
    EXPECT_EQ(Call(mButton.Get(), L"Create", {static_cast<IDispatch*>(&mBox), L"x"}).source, L"KWOPicBtn.Create");
}

TEST_F(PicBtnClass, AHandlerMayReplaceTheBox) {
    CreateButton();
    HostBox other(80, 30, &mForm);
    {
        mOnClick = [&](VARIANT& given) {
            VariantClear(&given);
            given.vt = VT_DISPATCH;
            given.pdispVal = &other;
            other.AddRef();
        };
        Mouse(L"MouseDown");
        EXPECT_EQ(Hex(Mouse(L"MouseUp").status), Hex(S_OK));
        const int before = other.refreshes;
        Call(mButton.Get(), L"LostFocus");
        EXPECT_EQ(other.refreshes, before + 1);
    }
    mButton.Reset();
    EXPECT_EQ(other.references, 0u);
}

TEST_F(PicBtnClass, AHandlerMayLetGoOfTheButton) {
    CreateButton();
    IDispatch* const raw = mButton.Get();
    mOnClick = [this](VARIANT&) { mButton.Reset(); };
    Mouse(L"MouseDown");
    EXPECT_EQ(Hex(Call(raw, L"MouseUp", {1, 0, Var(300.0), Var(150.0)}).status), Hex(S_OK));
    EXPECT_FALSE(mButton);
}

}  // namespace
}  // namespace kwo::com_test

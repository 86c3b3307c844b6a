#include <cmath>
#include <random>

#include "com_test.h"
#include "host_form.h"
#include "replaced_function.h"

namespace kwo::com_test {
namespace {

PropertyObject MakeForm(double left, double top, double width, double height, short state = 0) {
    return PropertyObject({{L"WindowState", Var(state)},
                           {L"Left", Var(left)},
                           {L"Top", Var(top)},
                           {L"Width", Var(width)},
                           {L"Height", Var(height)}});
}

/// Whole twips to a pixel, halves to even.
float TwipsOf(int metric, int axis) {
    const HDC screen = GetDC(nullptr);
    const float factor = std::nearbyint(1440.0f / static_cast<float>(GetDeviceCaps(screen, axis)));
    ReleaseDC(nullptr, screen);
    return static_cast<float>(GetSystemMetrics(metric)) * factor;
}

class FormPlacementMembers : public ::testing::Test {
protected:
    void SetUp() override {
        mUtility = Create(L"KWOUtility");
        ASSERT_TRUE(mUtility);
    }
    void Do(const wchar_t* member, const std::vector<Var>& arguments) {
        const Outcome outcome = Call(mUtility.Get(), member, arguments);
        EXPECT_EQ(Hex(outcome.status), Hex(S_OK)) << Narrow(outcome.description);
        EXPECT_EQ(outcome.result.vt, VT_EMPTY);
    }
    using Names = std::vector<std::wstring>;

    ComPtr<IDispatch> mUtility;
    PropertyObject mForm = MakeForm(100, 200, 5000, 3000);
    const float mScreenWidth = TwipsOf(SM_CXSCREEN, LOGPIXELSX);
    const float mScreenHeight = TwipsOf(SM_CYSCREEN, LOGPIXELSY);
};

// Left + Width of form and parent round to the same single. The 32-bit processor's own format keeps more digits: there
// half of these forms would stick out, and be moved.
TEST_F(FormPlacementMembers, AFormAsLargeAsItsParentStaysInEitherBitness) {
    std::mt19937 random(4);  // the same numbers everywhere
    const auto number = [&random] { return std::ldexp(static_cast<float>(random() >> 8), -10); };
    for (int round = 0; round < 2000; ++round) {
        const float left = number(), top = number(), width = number(), height = number();
        PropertyObject parent = MakeForm(left, top, width, height);
        PropertyObject form = MakeForm(0, 0, 100, 100);

        Do(L"KWO_SetFormPosition", {&form, 0, left, top, width, height, &parent});

        ASSERT_EQ(form.Single(L"Left"), left) << "round " << round;
        ASSERT_EQ(form.Single(L"Top"), top) << "round " << round;
    }
}

TEST_F(FormPlacementMembers, AFormIsCentredOnTheRealScreen) {
    Do(L"KWO_CenterForm", {&mForm});

    EXPECT_EQ(mForm.Single(L"Top"), (mScreenHeight - 3000) / 2);
    EXPECT_EQ(mForm.Single(L"Left"), (mScreenWidth - 5000) / 2);
    EXPECT_EQ(mForm[L"Top"].vt, VT_R4);
    EXPECT_EQ(mForm.told, (Names{L"Top", L"Left"}));
    EXPECT_EQ(mForm.references, 0u);
}

int WINAPI TwoMonitors(int metric) {
    switch (metric) {
        case SM_XVIRTUALSCREEN:
            return -1280;
        case SM_CXVIRTUALSCREEN:
            return 1280 + 1600;
        case SM_CYVIRTUALSCREEN:
            return 1024;
        case SM_CMONITORS:
            return 2;
        case SM_CXSCREEN:
            return 1600;
        case SM_CYSCREEN:
            return 1200;
        default:
            return GetSystemMetrics(metric);
    }
}

TEST_F(FormPlacementMembers, OfSeveralMonitorsTheScreenIsThePrimaryOne) {
    const ReplacedFunction metrics("GetSystemMetrics", &TwoMonitors);
    const float width = mScreenWidth * 1600 / static_cast<float>(GetSystemMetrics(SM_CXSCREEN));
    const float height = mScreenHeight * 1200 / static_cast<float>(GetSystemMetrics(SM_CYSCREEN));
    Do(L"KWO_CenterForm", {&mForm});
    EXPECT_EQ(mForm.Single(L"Top"), (height - 3000) / 2);
    EXPECT_EQ(mForm.Single(L"Left"), (width - 5000) / 2);

    Do(L"KWO_SetFormPosition", {&mForm, Var::Missing(), -9000, 0});
    EXPECT_EQ(mForm.Single(L"Left"), 0);
    Do(L"KWO_SetFormPosition", {&mForm, Var::Missing(), 30'000, 0});
    EXPECT_EQ(mForm.Single(L"Left"), width - 5000);
}

TEST_F(FormPlacementMembers, ValuesAreSingles) {
    // Each of these sums is another number in a wider type.
    PropertyObject parent = MakeForm(16'777'216, 16'777'217, 0, 0);
    mForm[L"Width"] = Var(0.0);
    mForm[L"Height"] = Var(-2.0);
    Do(L"KWO_CenterForm", {&mForm, &parent});
    EXPECT_EQ(mForm.Single(L"Left"), 16'777'216);
    EXPECT_EQ(mForm.Single(L"Top"), 16'777'216);
}

TEST_F(FormPlacementMembers, AFormIsCentredOverAnother) {
    PropertyObject parent = MakeForm(1000, 2000, 8000, 6000);
    Var variable(static_cast<IDispatch*>(&parent));
    Do(L"KWO_CenterForm", {&mForm, Var::Ref(&variable)});

    EXPECT_EQ(mForm.Single(L"Top"), 3500);
    EXPECT_EQ(mForm.Single(L"Left"), 2500);
}

TEST_F(FormPlacementMembers, AnMdiChildIsCentredInItsParent) {
    PropertyObject child({{L"MDIChild", Var(true)}, {L"Left", 1}, {L"Top", 1}, {L"Width", 1000}, {L"Height", 2000}});
    PropertyObject parent({{L"ScaleWidth", Var(8000.0)}, {L"ScaleHeight", Var(6000.0)}});
    Do(L"KWO_CenterForm", {&child});
    EXPECT_EQ(child.told, Names{});

    Do(L"KWO_CenterForm", {&child, &parent});
    EXPECT_EQ(child.Single(L"Top"), 2000);
    EXPECT_EQ(child.Single(L"Left"), 3500);
}

TEST_F(FormPlacementMembers, AStoredPositionIsApplied) {
    Do(L"KWO_SetFormPosition", {&mForm, 2, 10, 20, 3000, 2000});

    EXPECT_EQ(mForm.told, (Names{L"Left", L"Top", L"Width", L"Height", L"WindowState"}));
    EXPECT_EQ(mForm.Single(L"Left"), 10);
    EXPECT_EQ(mForm.Single(L"Top"), 20);
    EXPECT_EQ(mForm.Single(L"Width"), 3000);
    EXPECT_EQ(mForm.Single(L"Height"), 2000);
    EXPECT_EQ(mForm[L"WindowState"].iVal, 2);
}

TEST_F(FormPlacementMembers, ArgumentsMayBeLeftOutOrNamed) {
    Do(L"KWO_SetFormPosition", {&mForm, Var::Missing(), Var::Missing(), -500});
    EXPECT_EQ(mForm.told, (Names{L"Top", L"WindowState"}));
    EXPECT_EQ(mForm.Single(L"Top"), -500);

    PropertyObject parent = MakeForm(1000, 1000, 6000, 4000);
    mForm[L"Top"] = Var(1500);
    mForm[L"Height"] = Var(5000);
    const Outcome outcome = CallNamed(mUtility.Get(), L"KWO_SetFormPosition", {&mForm},
                                      {{L"ParentForm", static_cast<IDispatch*>(&parent)}});
    EXPECT_EQ(Hex(outcome.status), Hex(S_OK));
    EXPECT_EQ(mForm.Single(L"Top"), 1000);
    EXPECT_EQ(mForm.Single(L"Height"), 4000);
    EXPECT_EQ(mForm.Single(L"Left"), 1000);
}

TEST_F(FormPlacementMembers, WhatIsNoFormIsLeftAlone) {
    PropertyObject stranger(std::map<std::wstring, Var>{{L"Name", L"x"}});
    Do(L"KWO_CenterForm", {&stranger});
    Do(L"KWO_SetFormPosition", {&stranger, 2, 1, 2, 3, 4});
    EXPECT_EQ(stranger.told, Names{});
    Do(L"KWO_CenterForm", {static_cast<IDispatch*>(nullptr)});
    Do(L"KWO_SetFormPosition", {static_cast<IDispatch*>(nullptr)});

    const Outcome outcome = Call(mUtility.Get(), L"KWO_CenterForm", {L"no object"});
    EXPECT_EQ(Hex(outcome.status), Hex(DISP_E_TYPEMISMATCH));
}

/// A form that has no memory for any of its members.
class ExhaustedForm final : public PropertyObject {
public:
    ExhaustedForm() : PropertyObject({{L"WindowState", Var(0)}, {L"Top", Var(0)}, {L"Left", Var(0)}}) {}
    STDMETHODIMP Invoke(DISPID, REFIID, LCID, WORD, DISPPARAMS*, VARIANT*, EXCEPINFO*, UINT*) override {
        return E_OUTOFMEMORY;
    }
};

TEST_F(FormPlacementMembers, AFormWithoutMemoryIsNotPassedOver) {
    ExhaustedForm form;

    const Outcome outcome = Call(mUtility.Get(), L"KWO_CenterForm", {&form});

    EXPECT_EQ(Hex(outcome.scode), Hex(E_OUTOFMEMORY));
    EXPECT_EQ(form.references, 0u);
}

TEST_F(FormPlacementMembers, NoReferenceStays) {
    PropertyObject parent = MakeForm(1000, 1000, 6000, 4000);
    Do(L"KWO_SetFormPosition", {&mForm, 1, 1, 1, 1, 1, &parent});
    Do(L"KWO_CenterForm", {&mForm, &parent});
    EXPECT_EQ(mForm.references, 0u);
    EXPECT_EQ(parent.references, 0u);
}

}  // namespace
}  // namespace kwo::com_test

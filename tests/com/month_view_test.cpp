#include <cstdlib>

#include "com_test.h"
#include "host_box.h"
#include "support/american_formats.h"

namespace kwo::com_test {
namespace {

constexpr double kNovember21 = 46347;  // 2026
constexpr int kWidth = 240;
constexpr int kHeight = 200;

class MonthViewClass : public ::testing::Test {
protected:
    void SetUp() override {
        mForm.Method(L"OnChangeMonth", [this](MemberObject::Arguments& given, VARIANT*) {
            mMonths.push_back({static_cast<int>(NumberIn(*given[1])), static_cast<int>(NumberIn(*given[2]))});
            return S_OK;
        });
        mForm.Method(L"OnChangeDate", [this](MemberObject::Arguments& given, VARIANT*) {
            mBoxGiven = given[0]->vt == VT_DISPATCH ? given[0]->pdispVal : nullptr;
            mDates.push_back(given[1]->vt == VT_DATE ? given[1]->date : -1);
            mCancelType = given[2]->vt;
            if (mRefuses) given[2]->boolVal = VARIANT_TRUE;
            if (mOnDate) mOnDate();
            return S_OK;
        });
        mView = Create(L"KWOMonthView");
        ASSERT_TRUE(mView);
    }
    bool CreateView(const std::vector<Var>& options = {}) {
        std::vector<Var> arguments = {static_cast<IDispatch*>(&mBox), Var::Date(kNovember21)};
        arguments.insert(arguments.end(), options.begin(), options.end());
        const Outcome outcome = Call(mView.Get(), L"Create", arguments);
        EXPECT_EQ(Hex(outcome.status), Hex(S_OK)) << Narrow(outcome.description);
        return outcome.result.boolVal == VARIANT_TRUE;
    }
    /// The middle of a day's cell in twips; November 2026 begins on a Sunday.
    std::vector<Var> PressOn(int day) {
        constexpr int kSunday = 6;
        const int place = day - 1 + (kSunday - FirstWeekday()) % 7;
        const int button = mBox.TextHeight() + 6;
        const int cellWidth = (kWidth - 8) / 7;
        const int cellHeight = (kHeight - 8 - (4 + button) - 4) / 7;
        const int x = 4 + place % 7 * cellWidth + cellWidth / 2;
        const int y = 4 + button + 4 + cellHeight + 4 + place / 7 * cellHeight + cellHeight / 2;
        return {1, 0, Var(x * 15.0), Var(y * 15.0)};
    }
    /// The user's: from 0 for Monday to 6 for Sunday.
    static int FirstWeekday() {
        wchar_t first[2] = {};
        GetLocaleInfoW(LOCALE_USER_DEFAULT, LOCALE_IFIRSTDAYOFWEEK, first, 2);
        return first[0] - L'0';
    }
    bool Selected(double date) {
        return Get(mView.Get(), L"IsSelected", {Var::Date(date)}).result.boolVal == VARIANT_TRUE;
    }

    struct Month {
        int month;
        int year;
    };
    MemberObject mForm;
    HostBox mBox{kWidth, kHeight, &mForm};
    ComPtr<IDispatch> mView;
    std::vector<Month> mMonths;
    std::vector<double> mDates;
    IDispatch* mBoxGiven = nullptr;
    VARTYPE mCancelType = VT_EMPTY;
    bool mRefuses = false;
    std::function<void()> mOnDate;
};

TEST_F(MonthViewClass, TheFocusDateComesBack) {
    VARIANT variable;
    VariantInit(&variable);
    variable.vt = VT_DATE;
    variable.date = kNovember21 + 0.75;
    const Outcome outcome = Call(mView.Get(), L"Create", {static_cast<IDispatch*>(&mBox), Var::Ref(&variable)});
    EXPECT_EQ(outcome.result.boolVal, VARIANT_TRUE);
    EXPECT_EQ(variable.vt, VT_DATE);
    EXPECT_EQ(variable.date, kNovember21);
    EXPECT_EQ(Get(mView.Get(), L"VisibleMonth").result.iVal, 11);
    EXPECT_EQ(Get(mView.Get(), L"VisibleYear").result.iVal, 2026);
}

TEST_F(MonthViewClass, PropertiesReadBackWhatWasPut) {
    for (const wchar_t* const name :
         {L"CanSelect", L"MultiSelect", L"CaptionFontBold", L"DayHdrFontBold", L"DayFontBold", L"SelDayFontBold"}) {
        for (const bool value : {true, false}) {
            EXPECT_EQ(Hex(Let(mView.Get(), name, value).status), Hex(S_OK)) << Narrow(name);
            EXPECT_EQ(Get(mView.Get(), name).result.boolVal == VARIANT_TRUE, value) << Narrow(name);
        }
    }
    for (const wchar_t* const name : {L"CaptionFontColor", L"DayHdrFontColor", L"DayFontColor", L"SelDayFontColor"}) {
        const long colour = static_cast<long>(0x8000000D);
        EXPECT_EQ(Hex(Let(mView.Get(), name, colour).status), Hex(S_OK)) << Narrow(name);
        EXPECT_EQ(Get(mView.Get(), name).result.lVal, colour) << Narrow(name);
        // A colour of the system as scripts write it.
        EXPECT_EQ(Hex(Let(mView.Get(), name, 2147483660.0).status), Hex(S_OK)) << Narrow(name);
        EXPECT_EQ(Get(mView.Get(), name).result.lVal, colour - 1) << Narrow(name);
        EXPECT_EQ(Hex(Let(mView.Get(), name, 4294967296.0).status), Hex(DISP_E_OVERFLOW)) << Narrow(name);
    }
    for (const wchar_t* const name : {L"CaptionBevel", L"DayHdrBevel", L"DayBevel"}) {
        for (const int value : {0, 1, 2, 3}) {
            EXPECT_EQ(Hex(Let(mView.Get(), name, value).status), Hex(S_OK)) << Narrow(name);
            EXPECT_EQ(Get(mView.Get(), name).result.iVal, value) << Narrow(name);
        }
        Let(mView.Get(), name, 7);
        EXPECT_EQ(Get(mView.Get(), name).result.iVal, 0) << Narrow(name);
    }
    ASSERT_TRUE(CreateView());
    for (const wchar_t* const name : {L"MinDate", L"MaxDate"}) {
        EXPECT_EQ(Hex(Let(mView.Get(), name, Var::Date(46'400.75)).status), Hex(S_OK)) << Narrow(name);
        EXPECT_EQ(Get(mView.Get(), name).result.vt, VT_DATE);
        EXPECT_EQ(Get(mView.Get(), name).result.date, 46'400.0) << Narrow(name);
    }
}

TEST_F(MonthViewClass, DaysAreClickedAndTheFormIsAsked) {
    ASSERT_TRUE(CreateView({Var::Missing(), Var::Missing(), Var::Missing(), Var::Missing(), Var::Missing(), true}));
    EXPECT_EQ(Hex(Call(mView.Get(), L"MouseDown", PressOn(5)).status), Hex(S_OK));
    EXPECT_EQ(mDates, std::vector<double>{kNovember21 - 16});
    EXPECT_EQ(mBoxGiven, &mBox);
    EXPECT_EQ(mCancelType, VT_BOOL);
    EXPECT_TRUE(Selected(kNovember21 - 16));
    EXPECT_EQ(Get(mView.Get(), L"SelDay").result.date, kNovember21 - 16);
    mRefuses = true;
    Call(mView.Get(), L"MouseDown", PressOn(6));
    EXPECT_FALSE(Selected(kNovember21 - 15));
}

TEST_F(MonthViewClass, ADoubleClickPressesAgainAndTheNextMovementReleases) {
    ASSERT_TRUE(CreateView({Var::Missing(), true}));
    Call(mView.Get(), L"MouseDown", PressOn(5));
    int before = mBox.refreshes;
    EXPECT_EQ(Hex(Call(mView.Get(), L"MouseUp", PressOn(5)).status), Hex(S_OK));
    EXPECT_EQ(mBox.refreshes, before + 1);
    EXPECT_EQ(Hex(Call(mView.Get(), L"DblClick").status), Hex(S_OK));
    EXPECT_EQ(mDates, (std::vector<double>{kNovember21 - 16, kNovember21 - 16}));
    before = mBox.refreshes;
    for (int round = 0; round < 2; ++round) {
        EXPECT_EQ(Hex(Call(mView.Get(), L"MouseMove", PressOn(5)).status), Hex(S_OK));
        EXPECT_EQ(mBox.refreshes, before + 1) << "the first movement alone";
    }
}

TEST_F(MonthViewClass, MembersSelectDays) {
    ASSERT_TRUE(CreateView({Var::Missing(), true}));
    for (const int days : {1, 2})
        EXPECT_EQ(Hex(Call(mView.Get(), L"SelDaysAdd", {Var::Date(kNovember21 + days)}).status), Hex(S_OK));
    EXPECT_TRUE(Selected(kNovember21 + 1));
    EXPECT_TRUE(Selected(kNovember21 + 2));
    EXPECT_EQ(Hex(Call(mView.Get(), L"SelDaysRemove", {Var::Date(kNovember21 + 1)}).status), Hex(S_OK));
    EXPECT_FALSE(Selected(kNovember21 + 1));
    EXPECT_TRUE(Selected(kNovember21 + 2));
    EXPECT_EQ(Hex(Call(mView.Get(), L"SelDaysClear").status), Hex(S_OK));
    EXPECT_FALSE(Selected(kNovember21 + 2));
}

TEST_F(MonthViewClass, AUsedKeyComesBackAsZero) {
    ASSERT_TRUE(CreateView({Var::Missing(), true}));
    SHORT code = 13;
    EXPECT_EQ(Hex(Call(mView.Get(), L"KeyDown", {Var::Ref(&code), 0}).status), Hex(S_OK));
    EXPECT_EQ(code, 0);
    EXPECT_TRUE(Selected(kNovember21));
    code = 40;
    Call(mView.Get(), L"KeyDown", {Var::Ref(&code), 0});
    EXPECT_EQ(code, 40);
}

TEST_F(MonthViewClass, MonthsAreToldOnRequest) {
    ASSERT_TRUE(CreateView({Var::Missing(), Var::Missing(), Var::Missing(), true}));
    Call(mView.Get(), L"ShowMonth", {3, 2027});
    ASSERT_EQ(mMonths.size(), 1u);
    EXPECT_EQ(mMonths[0].month, 3);
    EXPECT_EQ(mMonths[0].year, 2027);
}

TEST_F(MonthViewClass, WhatIsNoPictureBoxIsRefused) {
    MemberObject stranger;
    for (IDispatch* const object : {static_cast<IDispatch*>(&stranger), static_cast<IDispatch*>(nullptr)}) {
        const Outcome outcome = Call(mView.Get(), L"Create", {object, Var::Date(kNovember21)});
        EXPECT_EQ(Hex(outcome.status), Hex(S_OK));
        EXPECT_EQ(outcome.result.boolVal, VARIANT_FALSE);
    }
}

TEST_F(MonthViewClass, WhatTheHostRaisesReachesTheCaller) {
    ASSERT_TRUE(CreateView());
    mBox.failing = L"Line";
    const Outcome outcome = Call(mView.Get(), L"ShowMonth", {3, 2027});
    EXPECT_EQ(Hex(outcome.scode), "0x800A04D2");
    EXPECT_EQ(outcome.source, L"the host");
    EXPECT_EQ(outcome.description, L"refused");
    mBox.failing = L"Parent";
    EXPECT_FALSE(CreateView());
    const ComPtr<IDispatch> fresh = Create(L"KWOMonthView");
    const Outcome missing = Call(fresh.Get(), L"ShowMonth", {3, 2027});
    EXPECT_EQ(Hex(missing.scode), "0x800A005B");
    EXPECT_EQ(missing.source, L"KWOMonthView.ShowMonth");
}

TEST_F(MonthViewClass, NamesOfTheHostsMembersAreResolvedOnce) {
    ASSERT_TRUE(CreateView());
    // The calendar asks for the members that it uses. Whether the object is a picture box is asked before.
    mBox.asked.clear();
    for (int round = 0; round < 5; ++round) {
        Call(mView.Get(), L"Resize");
        Call(mView.Get(), L"ShowMonth", {1 + round, 2027});
    }
    for (const auto& [name, count] : mBox.asked)
        EXPECT_LE(count, 1) << Narrow(name);
    EXPECT_EQ(mBox.asked[L"hDC"], 0) << "known from the first drawing";
}

TEST_F(MonthViewClass, AFormMayLetGoOfTheCalendarWhileItIsAsked) {
    ASSERT_TRUE(CreateView({Var::Missing(), true}));
    IDispatch* const raw = mView.Get();
    mOnDate = [this] { mView.Reset(); };
    const std::vector<Var> press = PressOn(5);
    EXPECT_EQ(Hex(Call(raw, L"MouseDown", press).status), Hex(S_OK));
    EXPECT_FALSE(mView);
}

TEST_F(MonthViewClass, TheCallersObjectsAreGivenBack) {
    const ULONG box = mBox.references;
    const ULONG form = mForm.references;
    ASSERT_TRUE(CreateView({Var::Missing(), true}));
    Call(mView.Get(), L"MouseDown", PressOn(5));
    EXPECT_GT(mBox.references, box);
    mView.Reset();
    EXPECT_EQ(mBox.references, box);
    EXPECT_EQ(mForm.references, form);
}

/// The calendar of November 2026 by the system's own calls and nothing else.
void DrawNovember(HostBox& box, int focusDay, int selectedDay) {
    const auto text = [&](const char* what, RECT area, long colour) {
        box.values[L"ForeColor"] = Var(colour);
        DrawTextA(box.Context(), what, static_cast<int>(strlen(what)), &area, 0x8025);
    };
    const auto edge = [&](RECT area, UINT style, UINT flags) { DrawEdge(box.Context(), &area, style, flags); };
    box.Fill({0, 0, kWidth, kHeight}, static_cast<long>(0x8000000F));
    box.SetBold(false);
    const int button = box.TextHeight() + 6;
    RECT previous = {4, 4, 4 + button, 4 + button};
    RECT next = {kWidth - 4 - button, 4, kWidth - 4, 4 + button};
    DrawFrameControl(box.Context(), &previous, DFC_SCROLL, DFCS_SCROLLLEFT);
    DrawFrameControl(box.Context(), &next, DFC_SCROLL, DFCS_SCROLLRIGHT);
    const RECT caption = {previous.right + 1, 5, next.left - 1, previous.bottom};
    edge(caption, EDGE_BUMP, BF_RECT | BF_MIDDLE | BF_FLAT);
    text("November, 2026", caption, static_cast<long>(0x80000012));
    const int cellWidth = (kWidth - 8) / 7;
    const int cellHeight = (kHeight - 8 - caption.bottom - 4) / 7;
    int spare = kWidth - 8 - 7 * cellWidth;
    std::vector<int> edges = {4};
    for (int column = 0; column < 7; ++column)
        edges.push_back(edges.back() + cellWidth + (spare-- > 0 ? 1 : 0));
    const char* const days[] = {"S", "M", "T", "W", "T", "F", "S"};
    const int header = caption.bottom + 4;
    for (std::size_t column = 0; column < 7; ++column) {
        const RECT cell = {edges[column], header, edges[column + 1], header + cellHeight};
        edge(cell, EDGE_ETCHED, BF_RECT | BF_MIDDLE);
        text(days[column], cell, static_cast<long>(0x80000011));
    }
    for (int place = 0; place < 42; ++place) {
        const auto column = static_cast<std::size_t>(place % 7);
        const int top = header + cellHeight + 4 + place / 7 * cellHeight;
        const RECT cell = {edges[column], top, edges[column + 1], top + cellHeight};
        edge(cell, EDGE_ETCHED, BF_RECT | BF_MIDDLE);
        const int day = place + 1;
        if (day > 30) continue;
        const bool selected = day == selectedDay;
        if (selected)
            box.Fill({cell.left + 2, cell.top + 2, cell.right - 4, cell.bottom - 4}, static_cast<long>(0x8000000D));
        text(std::to_string(day).c_str(), cell, static_cast<long>(selected ? 0x8000000E : 0x80000008));
        RECT focus = {cell.left + 2, cell.top + 2, cell.right - 2, cell.bottom - 2};
        if (day == focusDay) DrawFocusRect(box.Context(), &focus);
    }
}

TEST_F(MonthViewClass, ThePictureIsThatOfTheSystemsOwnCalls) {
    if (!test_support::HasAmericanFormats()) GTEST_SKIP() << "the user's language or week is another";
    ASSERT_TRUE(CreateView({Var::Date(kNovember21 - 10)}));
    Call(mView.Get(), L"Resize");
    HostBox expected(kWidth, kHeight, &mForm);
    DrawNovember(expected, 21, 11);
    EXPECT_TRUE(expected.Pixels() == mBox.Pixels());
    // Different days give different pictures.
    DrawNovember(expected, 22, 11);
    EXPECT_FALSE(expected.Pixels() == mBox.Pixels());
}

}  // namespace
}  // namespace kwo::com_test

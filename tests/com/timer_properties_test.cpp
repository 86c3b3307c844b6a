#include <climits>
#include <cmath>
#include <limits>

#include "timer_client.h"

namespace kwo::com_test {
namespace {

constexpr LONG kTypeMismatch = static_cast<LONG>(0x800A000D);

class TimerProperties : public TimerClient {};

TEST_F(TimerProperties, ItemIsEmptyAtFirst) {
    EXPECT_EQ(VT_EMPTY, Get(mTimer.Get(), L"Item").result.vt);
}

TEST_F(TimerProperties, ItemKeepsValuesOfEveryKind) {
    Var decimal;
    VarDecFromI4(-77, &decimal.decVal);
    decimal.vt = VT_DECIMAL;
    Var array;
    array.vt = VT_ARRAY | VT_I4;
    array.parray = SafeArrayCreateVector(VT_I4, 3, 5);
    const Var values[] = {Var(L"text"), Var(7),          Var(2.5), Var(true), Var(5'000'000'000LL),
                          Var::Null(),  Var::Date(1.25), decimal,  array,     Var::Error(E_FAIL)};
    for (const Var& value : values) {
        ASSERT_EQ(Hex(S_OK), Hex(Let(mTimer.Get(), L"Item", value).status)) << value.vt;
        const Outcome got = Get(mTimer.Get(), L"Item");
        ASSERT_EQ(Hex(S_OK), Hex(got.status)) << value.vt;
        EXPECT_EQ(value.vt, got.result.vt);
        if (value.vt == (VT_ARRAY | VT_I4)) {
            EXPECT_NE(value.parray, got.result.parray);
            EXPECT_EQ(5u, got.result.parray->rgsabound[0].cElements);
        } else if (value.vt != VT_NULL) {
            EXPECT_EQ(VARCMP_EQ, static_cast<int>(value.vt == VT_ERROR
                                                      ? (value.scode == got.result.scode ? VARCMP_EQ : VARCMP_LT)
                                                      : VarCmp(const_cast<Var*>(&value), const_cast<Var*>(&got.result),
                                                               LOCALE_USER_DEFAULT, 0)))
                << value.vt;
        }
    }
}

TEST_F(TimerProperties, ItemFollowsReferences) {
    LONG number = 5;
    ASSERT_EQ(Hex(S_OK), Hex(Let(mTimer.Get(), L"Item", Var::Ref(&number)).status));
    number = 6;

    const Outcome got = Get(mTimer.Get(), L"Item");
    EXPECT_EQ(VT_I4, got.result.vt);
    EXPECT_EQ(5, got.result.lVal);
}

TEST_F(TimerProperties, ItemCountsItsReferenceToAnObject) {
    Sink& object = NewSink();
    ASSERT_EQ(Hex(S_OK), Hex(Set(mTimer.Get(), L"Item", static_cast<IDispatch*>(&object)).status));
    EXPECT_EQ(1u, object.references);
    {
        const Outcome got = Get(mTimer.Get(), L"Item");
        EXPECT_EQ(&object, got.result.pdispVal);
        EXPECT_EQ(2u, object.references);
    }
    ASSERT_EQ(Hex(S_OK), Hex(Let(mTimer.Get(), L"Item", Var()).status));
    EXPECT_EQ(0u, object.references);

    Set(mTimer.Get(), L"Item", static_cast<IDispatch*>(&object));
    mTimer.Reset();
    EXPECT_EQ(0u, object.references);
}

TEST_F(TimerProperties, ItemMayBeTheTimerItselfUntilItIsTakenOut) {
    ASSERT_EQ(Hex(S_OK), Hex(Let(mTimer.Get(), L"Item", mTimer.Get()).status));
    EXPECT_EQ(mTimer.Get(), Get(mTimer.Get(), L"Item").result.pdispVal) << "an object stays one, also without Set";
    ASSERT_EQ(Hex(S_OK), Hex(Let(mTimer.Get(), L"Item", Var()).status));

    EXPECT_EQ(0u, mTimer.Reset());
}

TEST_F(TimerProperties, NumbersOfBothEndsAreKept) {
    for (const int number : {INT_MIN, -1, 0, 1, INT_MAX}) {
        EXPECT_EQ(Hex(S_OK), Hex(Let(mTimer.Get(), L"ItemData", number).status));
        EXPECT_EQ(number, Get(mTimer.Get(), L"ItemData").result.lVal);
        EXPECT_EQ(Hex(S_OK), Hex(Let(mTimer.Get(), L"Interval", number).status));
        EXPECT_EQ(number, Get(mTimer.Get(), L"Interval").result.lVal);
    }
}

TEST_F(TimerProperties, EnabledIsTheSixteenBitValueThatItWasGiven) {
    VARIANT_BOOL value = 1;
    ASSERT_EQ(Hex(S_OK), Hex(Let(mTimer.Get(), L"Enabled", Var::Reference(VT_BOOL, &value)).status));

    EXPECT_EQ(1, Get(mTimer.Get(), L"Enabled").result.boolVal);
}

TEST_F(TimerProperties, CallbacksReadBackAsTheVeryObjectAndAreCounted) {
    struct Case {
        const wchar_t* property;
        const wchar_t* type;
        const wchar_t* member;
    };
    for (const Case& row :
         {Case{L"TimerEvents", L"_IKWOTimer", L"Tick"}, Case{L"AlarmEvents", L"_IKWOAlarm", L"Alarm"}}) {
        EXPECT_EQ(VT_DISPATCH, Get(mTimer.Get(), row.property).result.vt);
        EXPECT_EQ(nullptr, Get(mTimer.Get(), row.property).result.pdispVal);
        Sink& early = NewSink();
        early.interfaceId = IdOfType(row.type);
        Sink& late = NewSink();
        late.member = row.member;
        for (Sink* const object : {&early, &late}) {
            ASSERT_EQ(Hex(S_OK), Hex(Set(mTimer.Get(), row.property, static_cast<IDispatch*>(object)).status));
            EXPECT_EQ(object, Get(mTimer.Get(), row.property).result.pdispVal);
        }
        EXPECT_EQ(0u, early.references) << "the first one was let go";
        ASSERT_EQ(Hex(S_OK), Hex(Set(mTimer.Get(), row.property, static_cast<IDispatch*>(nullptr)).status));
        EXPECT_EQ(0u, late.references);
        EXPECT_EQ(nullptr, Get(mTimer.Get(), row.property).result.pdispVal);
    }
}

TEST_F(TimerProperties, WhatCannotBeCalledBackIsATypeMismatch) {
    Sink& listener = NewSink();
    listener.member = L"Tick";
    ASSERT_EQ(Hex(S_OK), Hex(Set(mTimer.Get(), L"TimerEvents", static_cast<IDispatch*>(&listener)).status));
    Sink& deaf = NewSink();
    for (const wchar_t* const property : {L"TimerEvents", L"AlarmEvents"}) {
        const Outcome outcome = Set(mTimer.Get(), property, static_cast<IDispatch*>(&deaf));
        EXPECT_EQ(kTypeMismatch, outcome.scode);
        EXPECT_EQ(L"KWOTimer." + std::wstring(property) + L" (Set)", outcome.source);
        EXPECT_EQ(0u, deaf.references);
    }
    EXPECT_EQ(&listener, Get(mTimer.Get(), L"TimerEvents").result.pdispVal) << "the one before stays";
}

TEST_F(TimerProperties, EveryKindOfCancellingTreatsTheCallbacksAsItShould) {
    Sink& listener = NewSink();
    listener.member = L"Tick";
    const auto set = [&] { Set(mTimer.Get(), L"TimerEvents", static_cast<IDispatch*>(&listener)); };
    set();
    for (const std::vector<Var>& arguments :
         {std::vector<Var>{1}, std::vector<Var>{2, 5}, std::vector<Var>{3}, std::vector<Var>{-1, 0}}) {
        Call(mTimer.Get(), L"CancelTimers", arguments);
        EXPECT_EQ(&listener, Get(mTimer.Get(), L"TimerEvents").result.pdispVal);
    }
    for (const std::vector<Var>& arguments :
         {std::vector<Var>{}, std::vector<Var>{0}, std::vector<Var>{Var::Missing(), 5}, std::vector<Var>{0, 0}}) {
        set();
        EXPECT_EQ(Hex(S_OK), Hex(Call(mTimer.Get(), L"CancelTimers", arguments).status));
        EXPECT_EQ(nullptr, Get(mTimer.Get(), L"TimerEvents").result.pdispVal);
        EXPECT_EQ(0u, listener.references);
    }
}

class TimerErrorIntended : public TimerClient {};

TEST_F(TimerErrorIntended, DateThatIsNoneIsATypeMismatch) {
    Sink& sink = NewSink();
    std::vector<LONG> tags;
    sink.onInvoke = [&](DISPID, DISPPARAMS& arguments, EXCEPINFO&) {
        tags.push_back(*arguments.rgvarg[1].plVal);
        return S_OK;
    };
    Connect(sink);
    AddRelative(50, 4);
    constexpr double kInfinite = std::numeric_limits<double>::infinity();
    for (const double days : {std::nan(""), kInfinite, -kInfinite, 2'958'466.0, -657'435.0, 1e300, -1e300}) {
        AddRelative(20, 5);
        // A reader would expect "Error creating timer alarm." from "KWOTimer.AddAlarm" with a number of the
        // component's.
        const Outcome outcome = Call(mTimer.Get(), L"AddAlarm", {Var::Date(days), 5});
        EXPECT_EQ(Hex(DISP_E_EXCEPTION), Hex(outcome.status)) << days;
        EXPECT_EQ(kTypeMismatch, outcome.scode) << days;
        EXPECT_EQ(L"Type mismatch", outcome.description) << days;
    }

    EXPECT_TRUE(ProcessUntil([&] { return !tags.empty(); }));
    ProcessFor(100);
    EXPECT_EQ(std::vector<LONG>{4}, tags) << "only the alarm that was to be replaced is lost";
}

}  // namespace
}  // namespace kwo::com_test

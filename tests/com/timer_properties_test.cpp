#include <climits>
#include <cmath>
#include <limits>
#include <vector>

#include "timer_client.h"

namespace kwo::com_test {
namespace {

class TimerProperties : public TimerClient {};

std::vector<LONG> NumbersOf(const VARIANT& array) {
    std::vector<LONG> numbers(array.parray->rgsabound[0].cElements);
    LONG index = array.parray->rgsabound[0].lLbound;
    for (LONG& number : numbers) {
        SafeArrayGetElement(array.parray, &index, &number);
        ++index;
    }
    return numbers;
}

TEST_F(TimerProperties, ItemIsEmptyAtFirst) {
    EXPECT_EQ(Get(mTimer.Get(), L"Item").result.vt, VT_EMPTY);
}

TEST_F(TimerProperties, ItemKeepsValuesOfEveryKind) {
    Var decimal;
    VarDecFromI4(-77, &decimal.decVal);
    decimal.vt = VT_DECIMAL;
    Var array;
    array.vt = VT_ARRAY | VT_I4;
    array.parray = SafeArrayCreateVector(VT_I4, 3, 5);
    for (LONG index = 3; index < 8; ++index) {
        LONG number = index + 7;
        SafeArrayPutElement(array.parray, &index, &number);
    }
    const Var values[] = {Var(L"text"), Var(7),          Var(2.5), Var(true), Var(5'000'000'000LL),
                          Var::Null(),  Var::Date(1.25), decimal,  array,     Var::Error(E_FAIL)};
    for (const Var& value : values) {
        ASSERT_EQ(Hex(Let(mTimer.Get(), L"Item", value).status), Hex(S_OK)) << value.vt;
        const Outcome got = Get(mTimer.Get(), L"Item");
        ASSERT_EQ(Hex(got.status), Hex(S_OK)) << value.vt;
        EXPECT_EQ(got.result.vt, value.vt);
        if (value.vt == (VT_ARRAY | VT_I4)) {
            EXPECT_NE(got.result.parray, value.parray);
            EXPECT_EQ(NumbersOf(got.result), (std::vector<LONG>{10, 11, 12, 13, 14}));
            EXPECT_EQ(got.result.parray->rgsabound[0].lLbound, 3);
        } else if (value.vt != VT_NULL) {
            EXPECT_EQ(
                static_cast<int>(value.vt == VT_ERROR ? (value.scode == got.result.scode ? VARCMP_EQ : VARCMP_LT)
                                                      : VarCmp(const_cast<Var*>(&value), const_cast<Var*>(&got.result),
                                                               LOCALE_USER_DEFAULT, 0)),
                VARCMP_EQ)
                << value.vt;
        }
    }
}

TEST_F(TimerProperties, ItemTakesTheValueBehindAReference) {
    LONG number = 5;
    ASSERT_EQ(Hex(Let(mTimer.Get(), L"Item", Var::Ref(&number)).status), Hex(S_OK));
    number = 6;

    const Outcome got = Get(mTimer.Get(), L"Item");
    EXPECT_EQ(got.result.vt, VT_I4);
    EXPECT_EQ(got.result.lVal, 5);
}

TEST_F(TimerProperties, ItemCountsItsReferenceToAnObject) {
    Sink& object = NewSink();
    ASSERT_EQ(Hex(Set(mTimer.Get(), L"Item", static_cast<IDispatch*>(&object)).status), Hex(S_OK));
    EXPECT_EQ(object.references, 1u);
    {
        const Outcome got = Get(mTimer.Get(), L"Item");
        EXPECT_EQ(got.result.pdispVal, &object);
        EXPECT_EQ(object.references, 2u);
    }
    ASSERT_EQ(Hex(Let(mTimer.Get(), L"Item", Var()).status), Hex(S_OK));
    EXPECT_EQ(object.references, 0u);

    Set(mTimer.Get(), L"Item", static_cast<IDispatch*>(&object));
    mTimer.Reset();
    EXPECT_EQ(object.references, 0u);
}

TEST_F(TimerProperties, ItemMayBeTheTimerItselfUntilItIsTakenOut) {
    ASSERT_EQ(Hex(Let(mTimer.Get(), L"Item", mTimer.Get()).status), Hex(S_OK));
    EXPECT_EQ(Get(mTimer.Get(), L"Item").result.pdispVal, mTimer.Get()) << "an object stays one, also without Set";
    ASSERT_EQ(Hex(Let(mTimer.Get(), L"Item", Var()).status), Hex(S_OK));

    EXPECT_EQ(mTimer.Reset(), 0u);
}

TEST_F(TimerProperties, NumbersOfBothEndsAreKept) {
    for (const int number : {INT_MIN, -1, 0, 1, INT_MAX}) {
        EXPECT_EQ(Hex(Let(mTimer.Get(), L"ItemData", number).status), Hex(S_OK));
        EXPECT_EQ(Get(mTimer.Get(), L"ItemData").result.lVal, number);
        EXPECT_EQ(Hex(Let(mTimer.Get(), L"Interval", number).status), Hex(S_OK));
        EXPECT_EQ(Get(mTimer.Get(), L"Interval").result.lVal, number);
    }
}

TEST_F(TimerProperties, EnabledIsTheSixteenBitValueThatItWasGiven) {
    VARIANT_BOOL value = 1;
    ASSERT_EQ(Hex(Let(mTimer.Get(), L"Enabled", Var::Reference(VT_BOOL, &value)).status), Hex(S_OK));

    EXPECT_EQ(Get(mTimer.Get(), L"Enabled").result.boolVal, 1);
}

TEST_F(TimerProperties, CallbacksReadBackAsTheVeryObjectAndAreCounted) {
    struct Case {
        const wchar_t* property;
        const wchar_t* type;
        const wchar_t* member;
    };
    for (const Case& row :
         {Case{L"TimerEvents", L"_IKWOTimer", L"Tick"}, Case{L"AlarmEvents", L"_IKWOAlarm", L"Alarm"}}) {
        EXPECT_EQ(Get(mTimer.Get(), row.property).result.vt, VT_DISPATCH);
        EXPECT_EQ(Get(mTimer.Get(), row.property).result.pdispVal, nullptr);
        Sink& early = NewSink();
        early.interfaceId = IdOfType(row.type);
        Sink& late = NewSink();
        late.member = row.member;
        for (Sink* const object : {&early, &late}) {
            ASSERT_EQ(Hex(Set(mTimer.Get(), row.property, static_cast<IDispatch*>(object)).status), Hex(S_OK));
            EXPECT_EQ(Get(mTimer.Get(), row.property).result.pdispVal, object);
        }
        EXPECT_EQ(early.references, 0u) << "the first one was let go";
        ASSERT_EQ(Hex(Set(mTimer.Get(), row.property, static_cast<IDispatch*>(nullptr)).status), Hex(S_OK));
        EXPECT_EQ(late.references, 0u);
        EXPECT_EQ(Get(mTimer.Get(), row.property).result.pdispVal, nullptr);
    }
}

TEST_F(TimerProperties, WhatCannotBeCalledBackIsATypeMismatch) {
    Sink& listener = NewSink();
    listener.member = L"Tick";
    ASSERT_EQ(Hex(Set(mTimer.Get(), L"TimerEvents", static_cast<IDispatch*>(&listener)).status), Hex(S_OK));
    Sink& deaf = NewSink();
    for (const wchar_t* const property : {L"TimerEvents", L"AlarmEvents"}) {
        const Outcome outcome = Set(mTimer.Get(), property, static_cast<IDispatch*>(&deaf));
        EXPECT_EQ(outcome.scode, kTypeMismatch);
        EXPECT_EQ(outcome.source, L"KWOTimer." + std::wstring(property) + L" (Set)");
        EXPECT_EQ(deaf.references, 0u);
    }
    EXPECT_EQ(Get(mTimer.Get(), L"TimerEvents").result.pdispVal, &listener) << "the one before stays";
}

TEST_F(TimerProperties, EveryKindOfCancellingTreatsTheCallbacksAsItShould) {
    Sink& listener = NewSink();
    listener.member = L"Tick";
    const auto set = [&] { Set(mTimer.Get(), L"TimerEvents", static_cast<IDispatch*>(&listener)); };
    set();
    for (const std::vector<Var>& arguments :
         {std::vector<Var>{1}, std::vector<Var>{2, 5}, std::vector<Var>{3}, std::vector<Var>{-1, 0}}) {
        Call(mTimer.Get(), L"CancelTimers", arguments);
        EXPECT_EQ(Get(mTimer.Get(), L"TimerEvents").result.pdispVal, &listener);
    }
    for (const std::vector<Var>& arguments :
         {std::vector<Var>{}, std::vector<Var>{0}, std::vector<Var>{Var::Missing(), 5}, std::vector<Var>{0, 0}}) {
        set();
        EXPECT_EQ(Hex(Call(mTimer.Get(), L"CancelTimers", arguments).status), Hex(S_OK));
        EXPECT_EQ(Get(mTimer.Get(), L"TimerEvents").result.pdispVal, nullptr);
        EXPECT_EQ(listener.references, 0u);
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
        EXPECT_EQ(Hex(outcome.status), Hex(DISP_E_EXCEPTION)) << days;
        EXPECT_EQ(outcome.scode, kTypeMismatch) << days;
        EXPECT_EQ(outcome.description, L"Type mismatch") << days;
    }

    EXPECT_TRUE(ProcessUntil([&] { return !tags.empty(); }));
    ProcessFor(100);
    EXPECT_EQ(tags, std::vector<LONG>{4}) << "only the alarm that was to be replaced is lost";
}

}  // namespace
}  // namespace kwo::com_test

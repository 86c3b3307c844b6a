// What a caller's code makes of its variables while a member that they were passed to by reference is running.

#include "host_box.h"
#include "registry_sandbox.h"
#include "timer_client.h"

namespace kwo::com_test {
namespace {

const wchar_t* const kText = L"a text that the caller has put there meanwhile";

class ChangingTimerVariables : public TimerClient {
protected:
    Outcome Force(Var& tag, Var& date) {
        return Call(mTimer.Get(), L"TimerTick", {kAlarmEvent, Var::Ref(&tag), Var::Ref(&date)});
    }
};

TEST_F(ChangingTimerVariables, ReceiveTheDateOfTheAlarmWhateverTheyHoldByThen) {
    Var tag(7);
    Var date = Var::Date(0);
    Sink& sink = NewSink();
    sink.onInvoke = [&](DISPID, DISPPARAMS& arguments, EXCEPINFO&) {
        tag = Var(kText);
        date = Var(kText);
        *arguments.rgvarg[1].plVal = 8;
        *arguments.rgvarg[0].pdate = 2.5;
        return S_OK;
    };
    Connect(sink);

    ASSERT_EQ(Hex(Force(tag, date).status), Hex(S_OK));

    EXPECT_EQ(tag.vt, VT_I4);
    EXPECT_EQ(tag.lVal, 8);
    EXPECT_EQ(date.vt, VT_DATE);
    EXPECT_EQ(date.date, 2.5);
}

TEST_F(ChangingTimerVariables, KeepWhatTheCallerPutThereWhenTheMemberChangesNothing) {
    Var tag(7);
    Var date = Var::Date(0);
    Sink& sink = NewSink();
    sink.onInvoke = [&](DISPID, DISPPARAMS&, EXCEPINFO&) {
        tag = Var(kText);
        date = Var(kText);
        return S_OK;
    };
    Connect(sink);

    ASSERT_EQ(Hex(Force(tag, date).status), Hex(S_OK));

    EXPECT_EQ(tag.Text(), kText);
    EXPECT_EQ(date.Text(), kText);
}

TEST_F(ChangingTimerVariables, MayBecomeReferences) {
    Var tag(7);
    Var date = Var::Date(0);
    SHORT small = 3;
    Bstr text;
    Sink& sink = NewSink();
    sink.onInvoke = [&](DISPID, DISPPARAMS& arguments, EXCEPINFO&) {
        tag = Var();
        static_cast<VARIANT&>(tag) = Var::Reference(VT_I2, &small);
        date = Var();
        static_cast<VARIANT&>(date) = Var::Ref(text.InOut());
        *arguments.rgvarg[1].plVal = 8;
        *arguments.rgvarg[0].pdate = 2;
        return S_OK;
    };
    Connect(sink);

    ASSERT_EQ(Hex(Force(tag, date).status), Hex(S_OK));

    EXPECT_EQ(tag.vt, VT_BYREF | VT_I2);
    EXPECT_EQ(small, 8);
    EXPECT_EQ(date.vt, VT_BYREF | VT_BSTR);
    EXPECT_NE(text.Text(), L"");
}

TEST_F(ChangingTimerVariables, MissingOnesReceiveWhatTheMemberGives) {
    Var tag = Var::Missing();
    Var date = Var::Missing();
    Sink& sink = NewSink();
    sink.onInvoke = [&](DISPID, DISPPARAMS& arguments, EXCEPINFO&) {
        *arguments.rgvarg[0].pdate = 2.5;
        return S_OK;
    };
    Connect(sink);

    ASSERT_EQ(Hex(Force(tag, date).status), Hex(S_OK));

    EXPECT_EQ(tag.vt, VT_ERROR) << "nothing was given";
    EXPECT_EQ(date.vt, VT_DATE);
}

/// Controls in memory, and a form whose notifications change the variables of the running call.
class ChangingControlVariables : public ::testing::Test {
protected:
    void SetUp() override {
        const auto change = [this](MemberObject::Arguments&, VARIANT*) {
            ChangeAll();
            return S_OK;
        };
        for (const wchar_t* const name : {L"OnChangeDate", L"OnChangeMonth", L"OnButtonClick"})
            mForm.Method(name, change);
        mForm.Property(L"ActiveControl", Var(static_cast<IDispatch*>(&mBox)));
    }
    void TearDown() override { mForm.values.clear(); }

    void ChangeAll() {
        ++mChanges;
        for (Var* const variable : mVariables)
            *variable = Var(kText);
    }
    Outcome CallChanging(IDispatch* object, const wchar_t* member, std::vector<Var*> variables) {
        mVariables = variables;
        std::vector<Var> arguments;
        for (Var* const variable : mVariables)
            arguments.push_back(Var::Ref(variable));
        const Outcome outcome = Call(object, member, arguments);
        mVariables.clear();
        return outcome;
    }
    ComPtr<IDispatch> NewView() {
        ComPtr<IDispatch> view = Create(L"KWOMonthView");
        const Var missing = Var::Missing();
        EXPECT_EQ(Call(view.Get(), L"Create",
                       {static_cast<IDispatch*>(&mBox), Var::Date(46347), missing, true, missing, true})
                      .result.boolVal,
                  VARIANT_TRUE);
        return view;
    }
    ComPtr<IDispatch> NewButton() {
        ComPtr<IDispatch> button = Create(L"KWOPicBtn");
        EXPECT_EQ(Hex(Call(button.Get(), L"Create", {static_cast<IDispatch*>(&mBox), L"&Save"}).status), Hex(S_OK));
        return button;
    }

    MemberObject mForm;
    HostBox mBox{240, 200, &mForm};
    std::vector<Var*> mVariables;
    int mChanges = 0;
};

TEST_F(ChangingControlVariables, TheCalendarsUsedKeyIsZero) {
    const ComPtr<IDispatch> view = NewView();
    Var code(SHORT{13});
    Var shift(SHORT{0});

    EXPECT_EQ(Hex(CallChanging(view.Get(), L"KeyDown", {&code, &shift}).status), Hex(S_OK));

    EXPECT_EQ(mChanges, 1);
    EXPECT_EQ(code.vt, VT_I2);
    EXPECT_EQ(code.iVal, 0);
    EXPECT_EQ(shift.Text(), kText);
}

TEST_F(ChangingControlVariables, TheCalendarsFocusDateIsTheOneTaken) {
    const ComPtr<IDispatch> view = Create(L"KWOMonthView");
    Var box(static_cast<IDispatch*>(&mBox));
    Var focus = Var::Date(46347.25);
    mBox.Method(L"Refresh", [this](MemberObject::Arguments&, VARIANT*) {
        ChangeAll();
        return S_OK;
    });

    EXPECT_EQ(CallChanging(view.Get(), L"Create", {&box, &focus}).result.boolVal, VARIANT_TRUE);

    EXPECT_LE(1, mChanges);
    EXPECT_EQ(focus.vt, VT_DATE);
    EXPECT_EQ(focus.date, 46347.0);
    EXPECT_EQ(box.Text(), kText);
}

TEST_F(ChangingControlVariables, OtherMembersOfTheCalendarLeaveThemAlone) {
    const ComPtr<IDispatch> view = NewView();
    struct Row {
        const wchar_t* member;
        std::vector<Var> values;
    };
    const Row rows[] = {
        {L"ShowMonth", {SHORT{3}, SHORT{2027}}},
        {L"MouseDown", {SHORT{1}, SHORT{0}, 1800.0F, 1800.0F}},
        {L"MouseMove", {SHORT{0}, SHORT{0}, 1800.0F, 1800.0F}},
        {L"MouseUp", {SHORT{1}, SHORT{0}, 1800.0F, 1800.0F}},
        {L"SelDaysAdd", {Var::Date(46340)}},
        {L"SelDaysRemove", {Var::Date(46340)}},
    };
    for (const Row& row : rows) {
        std::vector<Var> values = row.values;
        std::vector<Var*> variables;
        for (Var& value : values)
            variables.push_back(&value);
        EXPECT_EQ(Hex(CallChanging(view.Get(), row.member, variables).status), Hex(S_OK)) << Narrow(row.member);
        for (std::size_t at = 0; at < values.size(); ++at)
            EXPECT_TRUE(values[at].vt == VT_BSTR || values[at].vt == row.values[at].vt) << Narrow(row.member);
    }
    EXPECT_LE(2, mChanges);
}

TEST_F(ChangingControlVariables, TheButtonsUsedKeysAreZero) {
    const ComPtr<IDispatch> button = NewButton();
    Var code(SHORT{13});
    Var shift(SHORT{0});
    EXPECT_EQ(Hex(CallChanging(button.Get(), L"KeyDown", {&code, &shift}).status), Hex(S_OK));
    EXPECT_EQ(mChanges, 1);
    EXPECT_EQ(code.vt, VT_I2);
    EXPECT_EQ(code.iVal, 0);

    code = Var(SHORT{'S'});
    shift = Var(SHORT{4});
    EXPECT_EQ(CallChanging(button.Get(), L"Form_KeyDown", {&code, &shift}).result.boolVal, VARIANT_TRUE);
    EXPECT_EQ(mChanges, 2);
    EXPECT_EQ(code.vt, VT_I2);
    EXPECT_EQ(code.iVal, 0);
    EXPECT_EQ(shift.vt, VT_I2);
    EXPECT_EQ(shift.iVal, 0);
}

TEST_F(ChangingControlVariables, TheButtonsClickLeavesThemAlone) {
    const ComPtr<IDispatch> button = NewButton();
    for (const wchar_t* const member : {L"MouseDown", L"MouseMove", L"MouseUp"}) {
        Var pressed(SHORT{1});
        Var shift(SHORT{0});
        Var x(300.0F);
        Var y(150.0F);
        EXPECT_EQ(Hex(CallChanging(button.Get(), member, {&pressed, &shift, &x, &y}).status), Hex(S_OK));
        EXPECT_TRUE(x.vt == VT_R4 || x.Text() == kText);
    }
    EXPECT_EQ(mChanges, 1);
}

/// Has a default value, and code that runs when it is asked for it.
class ValueObject final : public ClientObject<IDispatch> {
public:
    explicit ValueObject(const wchar_t* value) : mValue(value) {}
    STDMETHODIMP Invoke(DISPID id, REFIID, LCID, WORD, DISPPARAMS*, VARIANT* result, EXCEPINFO*, UINT*) override {
        if (id != DISPID_VALUE || result == nullptr) return DISP_E_MEMBERNOTFOUND;
        ++calls;
        if (onValue) onValue();
        return VariantCopy(result, &mValue);
    }
    std::function<void()> onValue;

private:
    Var mValue;
};

class ChangingRegistryVariables : public RegistrySandbox {};

TEST_F(ChangingRegistryVariables, AreReadBeforeALaterArgumentRunsTheCallersCode) {
    PutText(L"word", L"hello");
    Var root(static_cast<long>(kCurrentUser));
    Var key(kSandbox);
    Var value(L"before");
    ValueObject name(L"word");
    name.onValue = [&] {
        root = Var(kText);
        key = Var(5);
    };

    const Outcome outcome = Call(mRegistry.Get(), L"KWO_RegGetValue",
                                 {Var::Ref(&root), Var::Ref(&key), static_cast<IDispatch*>(&name), Var::Ref(&value)});

    EXPECT_EQ(Hex(outcome.status), Hex(S_OK));
    EXPECT_LE(1, name.calls);
    EXPECT_EQ(value.Text(), L"hello");
    EXPECT_EQ(root.Text(), kText);
    EXPECT_EQ(key.lVal, 5);
}

TEST_F(ChangingRegistryVariables, ReceiveTheTextReadWhateverTheyHoldByThen) {
    PutText(L"word", L"hello");
    Var value(L"before");
    // Only the last argument is read after the variable.
    ValueObject key(kSandbox);
    key.onValue = [&] { value = Var(5); };

    const Outcome outcome =
        CallNamed(mRegistry.Get(), L"KWO_RegGetValue", {kCurrentUser},
                  {{L"KeyName", static_cast<IDispatch*>(&key)}, {L"ValueName", L"word"}, {L"Value", Var::Ref(&value)}});

    EXPECT_EQ(Hex(outcome.status), Hex(S_OK));
    EXPECT_EQ(value.Text(), L"hello");
}

TEST(ChangingDirectoryVariables, AMissingOneIsFilledWithFalse) {
    const ComPtr<IDispatch> utility = Create(L"KWOUtility");
    for (const wchar_t* const member : {L"KWO_SystemDir", L"KWO_WindowsDir"}) {
        Var missing = Var::Missing();
        EXPECT_EQ(Hex(Call(utility.Get(), member, {Var::Ref(&missing)}).status), Hex(S_OK));
        EXPECT_EQ(missing.vt, VT_BOOL);
        EXPECT_EQ(missing.boolVal, VARIANT_FALSE);

        Var inner = Var::Missing();
        Var outer;
        static_cast<VARIANT&>(outer) = Var::Ref(&inner);
        EXPECT_EQ(Hex(Call(utility.Get(), member, {Var::Ref(&outer)}).status), Hex(S_OK));
        EXPECT_EQ(outer.vt, VT_BYREF | VT_VARIANT);
        EXPECT_EQ(inner.vt, VT_BOOL) << "the variable that is referred to";
    }
}

}  // namespace
}  // namespace kwo::com_test

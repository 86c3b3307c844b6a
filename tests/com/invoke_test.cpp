#include "registry_sandbox.h"

#include <olectl.h>

#include <algorithm>
#include <limits>

namespace kwo::com_test {
namespace {

class InvokeOnRegistry : public RegistrySandbox {
protected:
    void SetUp() override {
        RegistrySandbox::SetUp();
        PutText(L"number", L"42");
        PutText(L"word", L"hello");
    }

    /// `KWO_RegGetValue` with everything but the output as usual.
    Outcome Read(const wchar_t* valueName, const Var& output) const {
        return Call(mRegistry.Get(), L"KWO_RegGetValue", {kCurrentUser, kSandbox, valueName, output});
    }
};

constexpr DISPID kDeleteKey = 0x6003001C;

// Counts

TEST_F(InvokeOnRegistry, TooFewArgumentsAreABadCount) {
    EXPECT_EQ(Hex(Call(mRegistry.Get(), L"KWO_RegDeleteKey").status), Hex(DISP_E_BADPARAMCOUNT));
    EXPECT_EQ(Hex(Call(mRegistry.Get(), L"KWO_RegDeleteKey", {kCurrentUser}).status), Hex(DISP_E_BADPARAMCOUNT));
    EXPECT_EQ(Hex(Call(mRegistry.Get(), L"KWO_RegGetValue", {kCurrentUser, kSandbox, L"word"}).status),
              Hex(DISP_E_BADPARAMCOUNT));
}

TEST_F(InvokeOnRegistry, TooManyArgumentsAreABadCount) {
    EXPECT_EQ(Hex(Call(mRegistry.Get(), L"KWO_RegDeleteKey", {kCurrentUser, L"x", L"y"}).status),
              Hex(DISP_E_BADPARAMCOUNT));
    EXPECT_EQ(Hex(Call(mRegistry.Get(), L"KWO_RegDeleteKey", std::vector<Var>(1000, Var(1))).status),
              Hex(DISP_E_BADPARAMCOUNT));
}

TEST(InvokeCounts, APropertyWithoutArgumentsTakesNone) {
    const ComPtr<IDispatch> timer = Create(L"KWOTimer");
    ASSERT_TRUE(timer);

    EXPECT_EQ(Hex(Get(timer.Get(), L"Interval", {1}).status), Hex(DISP_E_BADPARAMCOUNT));
}

TEST(InvokeCounts, TrailingOptionalArgumentsMayBeLeftOutOrMissing) {
    const ComPtr<IDispatch> timer = Create(L"KWOTimer");
    ASSERT_TRUE(timer);

    EXPECT_TRUE(Reached(Call(timer.Get(), L"CancelTimers"), L"KWOTimer"));
    EXPECT_TRUE(Reached(Call(timer.Get(), L"CancelTimers", {1}), L"KWOTimer"));
    EXPECT_TRUE(Reached(Call(timer.Get(), L"CancelTimers", {1, 5}), L"KWOTimer"));
    EXPECT_TRUE(Reached(Call(timer.Get(), L"CancelTimers", {Var::Missing(), 5}), L"KWOTimer"));
    EXPECT_TRUE(Reached(CallNamed(timer.Get(), L"CancelTimers", {}, {{L"ItemData", 5}}), L"KWOTimer"));
    EXPECT_EQ(Hex(Call(timer.Get(), L"CancelTimers", {1, 5, 5}).status), Hex(DISP_E_BADPARAMCOUNT));
}

// Missing

TEST_F(InvokeOnRegistry, MissingForARequiredArgumentNamesTheArgument) {
    const std::vector<Var> good = {kCurrentUser, kSandbox, L"word", L""};
    for (UINT i = 0; i < 4; ++i) {
        std::vector<Var> arguments = good;
        arguments[i] = Var::Missing();
        const Outcome outcome = Call(mRegistry.Get(), L"KWO_RegGetValue", arguments);
        EXPECT_EQ(Hex(outcome.status), Hex(DISP_E_PARAMNOTOPTIONAL)) << i;
        EXPECT_EQ(outcome.badArgument, 3 - i) << i;
    }
}

TEST_F(InvokeOnRegistry, MissingInsideAVariableIsMissingToo) {
    Var variable = Var::Missing();

    const Outcome outcome = Call(mRegistry.Get(), L"KWO_RegDeleteKey", {kCurrentUser, Var::Ref(&variable)});

    EXPECT_EQ(Hex(outcome.status), Hex(DISP_E_PARAMNOTOPTIONAL));
    EXPECT_EQ(outcome.badArgument, 0u);
}

TEST_F(InvokeOnRegistry, AnotherErrorValueIsNoMissingArgument) {
    const Outcome outcome = Call(mRegistry.Get(), L"KWO_RegDeleteKey", {kCurrentUser, Var::Error(E_FAIL)});

    EXPECT_EQ(Hex(outcome.status), Hex(DISP_E_TYPEMISMATCH));
    EXPECT_EQ(outcome.badArgument, 0u);
}

TEST_F(InvokeOnRegistry, AnyErrorValueIsAGoodVariantArgument) {
    const Outcome outcome = Call(mRegistry.Get(), L"KWO_RegGetValueEx", {Handle(), L"none", Var::Error(E_FAIL)});

    ASSERT_EQ(Hex(outcome.status), Hex(S_OK));
    EXPECT_EQ(outcome.result.vt, VT_ERROR);
    EXPECT_EQ(outcome.result.scode, E_FAIL);
}

// Named arguments

TEST_F(InvokeOnRegistry, NamedArgumentsComeInAnyOrder) {
    const std::vector<NamedArgument> all = {
        {L"KeyRoot", kCurrentUser}, {L"KeyName", kSandbox}, {L"ValueName", L"named"}, {L"Value", L"stored"}};
    std::vector<std::size_t> order = {0, 1, 2, 3};
    do {
        RegDeleteValueW(mKey, L"named");
        std::vector<NamedArgument> arranged;
        for (const std::size_t i : order)
            arranged.push_back(all[i]);
        const Outcome outcome = CallNamed(mRegistry.Get(), L"KWO_RegSetValue", {}, arranged);
        ASSERT_EQ(Hex(outcome.status), Hex(S_OK));
        EXPECT_EQ(StoredBytes(L"named"), std::string("stored\0", 7));
    } while (std::next_permutation(order.begin(), order.end()));
}

TEST_F(InvokeOnRegistry, PositionalArgumentsComeBeforeNamedOnes) {
    const Outcome outcome = CallNamed(mRegistry.Get(), L"KWO_RegSetValue", {kCurrentUser, kSandbox},
                                      {{L"Value", L"stored"}, {L"ValueName", L"mixed"}});

    EXPECT_EQ(Hex(outcome.status), Hex(S_OK));
    EXPECT_EQ(StoredBytes(L"mixed"), std::string("stored\0", 7));
}

TEST_F(InvokeOnRegistry, NamedArgumentByReferenceIsWrittenBack) {
    Var value;
    const Outcome outcome = CallNamed(mRegistry.Get(), L"KWO_RegGetValue", {kCurrentUser, kSandbox},
                                      {{L"Value", Var::Ref(&value)}, {L"ValueName", L"word"}});

    EXPECT_EQ(Hex(outcome.status), Hex(S_OK));
    EXPECT_EQ(value.Text(), L"hello");
}

TEST_F(InvokeOnRegistry, UnknownNamedIdentifierNamesTheArgument) {
    for (const DISPID unknown : {4, 77, -1, -5}) {
        // Reversed: [0] is the named argument, [1] the positional one.
        const Outcome outcome = InvokeId(mRegistry.Get(), kDeleteKey, DISPATCH_METHOD, {kCurrentUser, L"x"}, {unknown});
        EXPECT_EQ(Hex(outcome.status), Hex(DISP_E_PARAMNOTFOUND)) << unknown;
        EXPECT_EQ(outcome.badArgument, 0u) << unknown;
    }
}

TEST_F(InvokeOnRegistry, SecondUnknownNamedIdentifierIsTheOneNamed) {
    const Outcome outcome = InvokeId(mRegistry.Get(), kDeleteKey, DISPATCH_METHOD, {kCurrentUser, L"x"}, {1, 99});

    EXPECT_EQ(Hex(outcome.status), Hex(DISP_E_PARAMNOTFOUND));
    EXPECT_EQ(outcome.badArgument, 1u);
}

TEST_F(InvokeOnRegistry, AnArgumentGivenTwiceIsRefused) {
    PutText(L"kept", L"kept");
    const Outcome byNames = InvokeId(mRegistry.Get(), kDeleteKey, DISPATCH_METHOD, {kSandbox, kSandbox}, {1, 1});
    const Outcome byPlace = InvokeId(mRegistry.Get(), kDeleteKey, DISPATCH_METHOD, {kCurrentUser, kCurrentUser}, {0});

    EXPECT_TRUE(FAILED(byNames.status)) << Hex(byNames.status);
    EXPECT_TRUE(FAILED(byPlace.status)) << Hex(byPlace.status);
    EXPECT_NE(byNames.status, DISP_E_EXCEPTION);
    EXPECT_NE(byPlace.status, DISP_E_EXCEPTION);
    EXPECT_EQ(StoredBytes(L"kept"), std::string("kept\0", 5));

    // Nothing that is required is missing here.
    const ComPtr<IDispatch> timer = Create(L"KWOTimer");
    const DISPID cancel = IdOf(timer.Get(), L"CancelTimers");
    const Outcome twice = InvokeId(timer.Get(), cancel, DISPATCH_METHOD, {1, 5}, {0});
    EXPECT_EQ(Hex(twice.status), Hex(DISP_E_PARAMNOTFOUND));
    EXPECT_EQ(twice.badArgument, 0u);
}

TEST_F(InvokeOnRegistry, NamesThatLeaveARequiredArgumentOutAreRefused) {
    const Outcome outcome = CallNamed(mRegistry.Get(), L"KWO_RegDeleteKey", {}, {{L"KeyName", L"x"}});

    EXPECT_EQ(Hex(outcome.status), Hex(DISP_E_PARAMNOTOPTIONAL));
}

TEST_F(InvokeOnRegistry, MoreNamesThanArgumentsAreRefused) {
    DISPID names[] = {0, 1, 2, 3};
    VARIANT arguments[1] = {Var(kCurrentUser)};
    DISPPARAMS parameters = {arguments, names, 1, 4};

    EXPECT_TRUE(FAILED(mRegistry->Invoke(kDeleteKey, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_METHOD, &parameters,
                                         nullptr, nullptr, nullptr)));
}

// Types

TEST_F(InvokeOnRegistry, AWrongTypeNamesTheArgument) {
    Probe probe;
    const std::vector<Var> good = {kCurrentUser, kSandbox, L"word", L""};
    for (UINT i = 0; i < 4; ++i) {
        for (const Var& bad : {Var(static_cast<IDispatch*>(&probe)), Var::Null()}) {
            std::vector<Var> arguments = good;
            arguments[i] = bad;
            const Outcome outcome = Call(mRegistry.Get(), L"KWO_RegGetValue", arguments);
            EXPECT_EQ(Hex(outcome.status), Hex(DISP_E_TYPEMISMATCH)) << i << " type " << bad.vt;
            EXPECT_EQ(outcome.badArgument, 3 - i) << i;
        }
    }
    EXPECT_EQ(probe.references, 0u);
}

TEST_F(InvokeOnRegistry, TextThatIsNoNumberNamesTheArgument) {
    const Outcome outcome = Call(mRegistry.Get(), L"KWO_RegDeleteKey", {L"no number", L"x"});

    EXPECT_EQ(Hex(outcome.status), Hex(DISP_E_TYPEMISMATCH));
    EXPECT_EQ(outcome.badArgument, 1u);
}

TEST_F(InvokeOnRegistry, FirstOfTwoBadArgumentsInWritingOrderIsNamed) {
    const Outcome outcome = Call(mRegistry.Get(), L"KWO_RegDeleteKey", {L"no number", Var::Null()});

    EXPECT_EQ(Hex(outcome.status), Hex(DISP_E_TYPEMISMATCH));
    EXPECT_TRUE(outcome.badArgument == 0 || outcome.badArgument == 1) << outcome.badArgument;
}

TEST_F(InvokeOnRegistry, ANumberThatDoesNotFitNamesTheArgument) {
    for (const Var& tooLarge : {Var(1e300), Var(-1e300), Var(L"99999999999999999999999"), Var(1e10), Var(-3e9),
                                Var(0x100000000LL), Var(-0x80000001LL)}) {
        const Outcome outcome = Call(mRegistry.Get(), L"KWO_RegDeleteKey", {tooLarge, L"x"});
        EXPECT_EQ(Hex(outcome.status), Hex(DISP_E_OVERFLOW)) << "type " << tooLarge.vt;
        EXPECT_EQ(outcome.badArgument, 1u);
    }
}

TEST(InvokeTypes, ASixteenBitArgumentTakesSixteenBits) {
    const ComPtr<IDispatch> tray = Create(L"KWOSysTray");
    ASSERT_TRUE(tray);
    for (const long fits : {-32768L, -1L, 0L, 32767L}) {
        EXPECT_TRUE(Reached(Get(tray.Get(), L"MouseUpMsg", {fits}), L"KWOSysTray")) << fits;
    }
    for (const Var& tooLarge : {Var(32768L), Var(-32769L), Var(65536L), Var(32767.5), Var(L"40000")}) {
        const Outcome outcome = Get(tray.Get(), L"MouseUpMsg", {tooLarge});
        EXPECT_EQ(Hex(outcome.status), Hex(DISP_E_OVERFLOW));
        EXPECT_EQ(outcome.badArgument, 0u);
    }
}

TEST(InvokeTypes, AnObjectArgumentTakesObjectsOnly) {
    const ComPtr<IDispatch> button = Create(L"KWOPicBtn");
    ASSERT_TRUE(button);
    for (const Var& bad : {Var(5), Var(L"text"), Var(true)}) {
        const Outcome outcome = Call(button.Get(), L"Create", {bad, L"caption"});
        EXPECT_EQ(Hex(outcome.status), Hex(DISP_E_TYPEMISMATCH)) << "type " << bad.vt;
        EXPECT_EQ(outcome.badArgument, 1u);
    }
}

TEST(InvokeTypes, TheNullObjectIsNothingOrTheNullOfAScript) {
    const ComPtr<IDispatch> timer = Create(L"KWOTimer");
    ASSERT_TRUE(timer);

    EXPECT_TRUE(Reached(Set(timer.Get(), L"TimerEvents", static_cast<IDispatch*>(nullptr)), L"KWOTimer"));
    EXPECT_TRUE(Reached(Set(timer.Get(), L"TimerEvents", Var::Null()), L"KWOTimer"));
}

TEST(InvokeTypes, AnInterfaceArgumentTakesObjectsThatHaveIt) {
    const ComPtr<IDispatch> timer = Create(L"KWOTimer");
    const ComPtr<IDispatch> callback = Create(L"IKWOTimer");
    ASSERT_TRUE(timer && callback);

    EXPECT_TRUE(Reached(Set(timer.Get(), L"TimerEvents", callback.Get()), L"KWOTimer"));
    EXPECT_TRUE(Reached(Set(timer.Get(), L"TimerEvents", static_cast<IDispatch*>(nullptr)), L"KWOTimer"));
}

TEST(InvokeTypes, APictureArgumentTakesPicturesAndTheNullObject) {
    // The system's library names the type by an alias.
    const ComPtr<IDispatch> tray = Create(L"KWOSysTray");
    ASSERT_TRUE(tray);
    PICTDESC description = {};
    description.cbSizeofstruct = sizeof description;
    description.picType = PICTYPE_NONE;
    ComPtr<IDispatch> picture;
    ASSERT_EQ(Hex(OleCreatePictureIndirect(&description, IID_IPictureDisp, TRUE, picture.OutVoid())), Hex(S_OK));

    EXPECT_TRUE(Reached(Set(tray.Get(), L"Icon", picture.Get()), L"KWOSysTray"));
    EXPECT_TRUE(Reached(Call(tray.Get(), L"Create", {0, picture.Get(), L"tip"}), L"KWOSysTray"));
    // Taken, and then no object to be had.
    EXPECT_EQ(Hex(Call(tray.Get(), L"Create", {0, static_cast<IDispatch*>(nullptr), L"tip"}).scode), "0x800A005B");
    const Outcome number = Call(tray.Get(), L"Create", {0, 5, L"tip"});
    EXPECT_EQ(Hex(number.status), Hex(DISP_E_TYPEMISMATCH));
    EXPECT_EQ(number.badArgument, 1u);
}

// Flags and identifiers

TEST_F(InvokeOnRegistry, AMethodIsNoProperty) {
    const std::vector<Var> good = {kCurrentUser, L"Software\\KWOUtilComTest\\none"};
    EXPECT_EQ(Hex(InvokeId(mRegistry.Get(), kDeleteKey, DISPATCH_PROPERTYGET, good).status),
              Hex(DISP_E_MEMBERNOTFOUND));
    EXPECT_EQ(Hex(InvokeId(mRegistry.Get(), kDeleteKey, DISPATCH_PROPERTYPUT, good, {DISPID_PROPERTYPUT}).status),
              Hex(DISP_E_MEMBERNOTFOUND));
    EXPECT_EQ(Hex(InvokeId(mRegistry.Get(), kDeleteKey, DISPATCH_PROPERTYPUTREF, good, {DISPID_PROPERTYPUT}).status),
              Hex(DISP_E_MEMBERNOTFOUND));
    EXPECT_EQ(Hex(InvokeId(mRegistry.Get(), kDeleteKey, DISPATCH_METHOD | DISPATCH_PROPERTYGET, good).status),
              Hex(S_OK));
}

TEST_F(InvokeOnRegistry, NoFlagAtAllIsNoCall) {
    EXPECT_TRUE(FAILED(InvokeId(mRegistry.Get(), kDeleteKey, 0, {kCurrentUser, L"x"}).status));
    EXPECT_TRUE(FAILED(InvokeId(mRegistry.Get(), kDeleteKey, 0x40, {kCurrentUser, L"x"}).status));
}

TEST(InvokeFlags, AReadOnlyPropertyCannotBePut) {
    const ComPtr<IDispatch> utility = Create(L"KWOUtility");
    ASSERT_TRUE(utility);

    EXPECT_EQ(Hex(Let(utility.Get(), L"KWO_IsWinNT", true).status), Hex(DISP_E_MEMBERNOTFOUND));
    EXPECT_EQ(Hex(Set(utility.Get(), L"KWO_IsWinNT", true).status), Hex(DISP_E_MEMBERNOTFOUND));
}

TEST(InvokeFlags, APropertyIsReadWithEitherFlagThatScriptsSend) {
    const ComPtr<IDispatch> timer = Create(L"KWOTimer");
    ASSERT_TRUE(timer);

    EXPECT_TRUE(Reached(Get(timer.Get(), L"Interval"), L"KWOTimer"));
    EXPECT_TRUE(Reached(Invoke(timer.Get(), L"Interval", DISPATCH_METHOD | DISPATCH_PROPERTYGET), L"KWOTimer"));
}

TEST(InvokeFlags, APropertyIsPutWithEitherFlag) {
    const ComPtr<IDispatch> timer = Create(L"KWOTimer");
    ASSERT_TRUE(timer);
    const DISPID interval = IdOf(timer.Get(), L"Interval");
    const WORD both = DISPATCH_PROPERTYPUT | DISPATCH_PROPERTYPUTREF;

    EXPECT_TRUE(Reached(Let(timer.Get(), L"Interval", 0), L"KWOTimer"));
    EXPECT_TRUE(Reached(Set(timer.Get(), L"Interval", 0), L"KWOTimer"));
    EXPECT_TRUE(Reached(InvokeId(timer.Get(), interval, both, {0}, {DISPID_PROPERTYPUT}), L"KWOTimer"));
    EXPECT_TRUE(Reached(Let(timer.Get(), L"AlarmEvents", static_cast<IDispatch*>(nullptr)), L"KWOTimer"));
    EXPECT_TRUE(Reached(Let(timer.Get(), L"Item", L"text"), L"KWOTimer"));
    EXPECT_TRUE(Reached(Set(timer.Get(), L"Item", timer.Get()), L"KWOTimer"));
    // Otherwise it would hold itself for ever.
    EXPECT_TRUE(Reached(Let(timer.Get(), L"Item", Var()), L"KWOTimer"));
}

TEST(InvokeArguments, AValueThatIsNotANumberIsNoWholeNumber) {
    const ComPtr<IDispatch> timer = Create(L"KWOTimer");
    ASSERT_TRUE(timer);
    double number = std::numeric_limits<double>::quiet_NaN();
    float single = std::numeric_limits<float>::quiet_NaN();
    Var variable(number);
    for (const Var& hostile : {Var(number), Var::Date(number), Var::Reference(VT_R8, &number),
                               Var::Reference(VT_R4, &single), Var::Ref(&variable)}) {
        EXPECT_EQ(Hex(Let(timer.Get(), L"Interval", hostile).status), Hex(DISP_E_OVERFLOW)) << "type " << hostile.vt;
        EXPECT_EQ(Hex(Call(timer.Get(), L"AddRelativeAlarm", {hostile, 1}).status), Hex(DISP_E_OVERFLOW))
            << "type " << hostile.vt;
    }
}

TEST(InvokeFlags, APutWithoutItsNameIsRefused) {
    const ComPtr<IDispatch> timer = Create(L"KWOTimer");
    ASSERT_TRUE(timer);
    const Outcome outcome = Invoke(timer.Get(), L"Interval", DISPATCH_PROPERTYPUT, {5});

    EXPECT_EQ(Hex(outcome.status), Hex(DISP_E_PARAMNOTOPTIONAL));
}

TEST(InvokeFlags, APutWithoutAValueIsRefused) {
    const ComPtr<IDispatch> timer = Create(L"KWOTimer");
    ASSERT_TRUE(timer);

    EXPECT_TRUE(FAILED(Invoke(timer.Get(), L"Interval", DISPATCH_PROPERTYPUT).status));
    const Outcome missing = Let(timer.Get(), L"Interval", Var::Missing());
    EXPECT_EQ(Hex(missing.status), Hex(DISP_E_PARAMNOTOPTIONAL));
    EXPECT_EQ(missing.badArgument, 0u);
}

TEST(InvokeFlags, APutOfTheWrongTypeNamesTheValue) {
    const ComPtr<IDispatch> timer = Create(L"KWOTimer");
    ASSERT_TRUE(timer);
    const Outcome text = Let(timer.Get(), L"Interval", L"soon");
    const Outcome large = Let(timer.Get(), L"Interval", 1e100);

    EXPECT_EQ(Hex(text.status), Hex(DISP_E_TYPEMISMATCH));
    EXPECT_EQ(text.badArgument, 0u);
    EXPECT_EQ(Hex(large.status), Hex(DISP_E_OVERFLOW));
    EXPECT_EQ(large.badArgument, 0u);
}

TEST_F(InvokeOnRegistry, UnknownIdentifiersAreNotFound) {
    for (const DISPID id : {0, 1, -1, -2, -3, -4, -5, -500, 0x6003001B, 0x6003001D, 0x7FFFFFFF, -0x7FFFFFFF - 1}) {
        EXPECT_EQ(Hex(InvokeId(mRegistry.Get(), id, DISPATCH_METHOD, {}).status), Hex(DISP_E_MEMBERNOTFOUND)) << id;
        EXPECT_EQ(Hex(InvokeId(mRegistry.Get(), id, DISPATCH_PROPERTYGET, {}).status), Hex(DISP_E_MEMBERNOTFOUND))
            << id;
    }
}

TEST_F(InvokeOnRegistry, TheInterfaceIdentifierMustBeNull) {
    DISPPARAMS none = {};

    EXPECT_EQ(Hex(mRegistry->Invoke(kDeleteKey, IID_IDispatch, LOCALE_USER_DEFAULT, DISPATCH_METHOD, &none, nullptr,
                                    nullptr, nullptr)),
              Hex(DISP_E_UNKNOWNINTERFACE));
}

TEST_F(InvokeOnRegistry, NullArgumentsAreRefused) {
    DISPPARAMS noArray = {nullptr, nullptr, 2, 0};
    VARIANT arguments[2] = {Var(), Var(kCurrentUser)};
    DISPPARAMS noNames = {arguments, nullptr, 2, 1};
    UINT bad = 0;

    EXPECT_TRUE(FAILED(mRegistry->Invoke(kDeleteKey, IID_NULL, 0, DISPATCH_METHOD, nullptr, nullptr, nullptr, &bad)));
    EXPECT_TRUE(FAILED(mRegistry->Invoke(kDeleteKey, IID_NULL, 0, DISPATCH_METHOD, &noArray, nullptr, nullptr, &bad)));
    EXPECT_TRUE(FAILED(mRegistry->Invoke(kDeleteKey, IID_NULL, 0, DISPATCH_METHOD, &noNames, nullptr, nullptr, &bad)));
}

TEST_F(InvokeOnRegistry, NoPlaceForResultErrorOrArgumentIsFine) {
    Var root(kCurrentUser);
    Var name(L"Software\\KWOUtilComTest\\none");
    Var nonsense(L"nonsense");
    VARIANT good[2] = {name, root};
    VARIANT bad[2] = {name, nonsense};
    DISPPARAMS goodParameters = {good, nullptr, 2, 0};
    DISPPARAMS badParameters = {bad, nullptr, 2, 0};

    EXPECT_EQ(
        Hex(mRegistry->Invoke(kDeleteKey, IID_NULL, 0, DISPATCH_METHOD, &goodParameters, nullptr, nullptr, nullptr)),
        Hex(S_OK));
    EXPECT_EQ(
        Hex(mRegistry->Invoke(kDeleteKey, IID_NULL, 0, DISPATCH_METHOD, &badParameters, nullptr, nullptr, nullptr)),
        Hex(DISP_E_TYPEMISMATCH));
}

TEST(InvokeFlags, AnErrorWithoutAPlaceForItIsStillAnError) {
    const ComPtr<IDispatch> timer = Create(L"KWOTimer");
    ASSERT_TRUE(timer);
    Var noDate[] = {Var(1), Var::Date(1e300)};
    DISPPARAMS parameters = {noDate, nullptr, 2, 0};

    const HRESULT status = timer->Invoke(IdOf(timer.Get(), L"AddAlarm"), IID_NULL, 0, DISPATCH_METHOD, &parameters,
                                         nullptr, nullptr, nullptr);

    EXPECT_EQ(Hex(status), Hex(DISP_E_EXCEPTION));
}

// By reference

TEST_F(InvokeOnRegistry, AnEmptyVariableReceivesText) {
    Var variable;

    EXPECT_EQ(Hex(Read(L"word", Var::Ref(&variable)).status), Hex(S_OK));
    EXPECT_EQ(variable.Text(), L"hello");
}

TEST_F(InvokeOnRegistry, ATextVariableReceivesText) {
    Bstr text(L"longer than what comes");
    Bstr null;

    EXPECT_EQ(Hex(Read(L"word", Var::Ref(text.InOut())).status), Hex(S_OK));
    EXPECT_EQ(text.Text(), L"hello");
    EXPECT_EQ(Hex(Read(L"word", Var::Ref(null.InOut())).status), Hex(S_OK));
    EXPECT_EQ(null.Text(), L"hello");
}

TEST_F(InvokeOnRegistry, AVariantThatHoldsAReferenceReceivesTextThroughIt) {
    Bstr text(L"before");
    Var outer = Var::Ref(text.InOut());
    Var inner(L"before");
    Var chain = Var::Ref(&inner);

    EXPECT_EQ(Hex(Read(L"word", Var::Ref(&outer)).status), Hex(S_OK));
    EXPECT_EQ(text.Text(), L"hello");
    EXPECT_EQ(outer.vt, VT_BYREF | VT_BSTR);
    EXPECT_EQ(Hex(Read(L"word", Var::Ref(&chain)).status), Hex(S_OK));
    EXPECT_EQ(inner.Text(), L"hello");
    EXPECT_EQ(chain.vt, VT_BYREF | VT_VARIANT);
}

TEST_F(InvokeOnRegistry, ANumberVariableReceivesNumericTextAsANumber) {
    LONG number = 7;
    SHORT small = 7;
    double real = 7;
    VARIANT_BOOL flag = VARIANT_FALSE;

    EXPECT_EQ(Hex(Read(L"number", Var::Ref(&number)).status), Hex(S_OK));
    EXPECT_EQ(number, 42);
    EXPECT_EQ(Hex(Read(L"number", Var::Ref(&small)).status), Hex(S_OK));
    EXPECT_EQ(small, 42);
    EXPECT_EQ(Hex(Read(L"number", Var::Ref(&real)).status), Hex(S_OK));
    EXPECT_EQ(real, 42.0);
    EXPECT_EQ(Hex(Read(L"number", Var::Reference(VT_BOOL, &flag)).status), Hex(S_OK));
    EXPECT_EQ(flag, VARIANT_TRUE);
}

TEST_F(InvokeOnRegistry, ANumberVariableIsLeftAloneByTextThatIsNoNumber) {
    LONG number = 7;
    SHORT small = 7;
    PutText(L"large", L"70000");

    const Outcome word = Read(L"word", Var::Ref(&number));
    EXPECT_EQ(Hex(word.status), Hex(DISP_E_TYPEMISMATCH));
    EXPECT_EQ(word.badArgument, 0u);
    EXPECT_EQ(number, 7);
    const Outcome large = Read(L"large", Var::Ref(&small));
    EXPECT_EQ(Hex(large.status), Hex(DISP_E_OVERFLOW));
    EXPECT_EQ(large.badArgument, 0u);
    EXPECT_EQ(small, 7);
}

TEST_F(InvokeOnRegistry, AVariableOfAnotherTypeReadsTheNewValue) {
    Var number(7);
    Var date = Var::Date(1);

    EXPECT_EQ(Hex(Read(L"number", Var::Ref(&number)).status), Hex(S_OK));
    EXPECT_EQ(Hex(Read(L"number", Var::Ref(&date)).status), Hex(S_OK));
    Var text;
    EXPECT_EQ(Hex(VariantChangeType(&text, &number, 0, VT_BSTR)), Hex(S_OK));
    EXPECT_EQ(text.Text(), L"42");
    Var real;
    EXPECT_EQ(Hex(VariantChangeType(&real, &date, 0, VT_R8)), Hex(S_OK));
    EXPECT_EQ(real.dblVal, 42.0);
}

TEST_F(InvokeOnRegistry, AnArgumentThatTheMemberDoesNotChangeKeepsItsTypeAndValue) {
    Var root(L"2147483649");
    Var key(kSandbox);
    Bstr rootText(L"2147483649");
    LONG number = kCurrentUser;
    ULONG unsignedNumber = 0x80000001;
    double real = 2147483649.0;

    for (const Var& reference : {Var::Ref(&root), Var::Ref(rootText.InOut()), Var::Ref(&number), Var::Ref(&real),
                                 Var::Reference(VT_UI4, &unsignedNumber)}) {
        std::wstring value;
        Bstr text;
        const Outcome outcome =
            Call(mRegistry.Get(), L"KWO_RegGetValue", {reference, Var::Ref(&key), L"word", Var::Ref(text.InOut())});
        EXPECT_EQ(Hex(outcome.status), Hex(S_OK)) << "type " << reference.vt;
        EXPECT_EQ(text.Text(), L"hello") << "type " << reference.vt;
    }
    EXPECT_EQ(root.Text(), L"2147483649");
    EXPECT_EQ(rootText.Text(), L"2147483649");
    EXPECT_EQ(key.Text(), kSandbox);
    EXPECT_EQ(number, kCurrentUser);
    EXPECT_EQ(unsignedNumber, 0x80000001u);
    EXPECT_EQ(real, 2147483649.0);
}

TEST_F(InvokeOnRegistry, ByValueOutputIsTakenAndTheResultIsLost) {
    EXPECT_EQ(Hex(Read(L"word", L"unchanged").status), Hex(S_OK));
    EXPECT_EQ(Hex(Read(L"word", Var()).status), Hex(S_OK));
    EXPECT_EQ(Hex(Read(L"word", 5).status), Hex(S_OK));
}

TEST_F(InvokeOnRegistry, OneVariableForTwoArgumentsIsReadFirstAndWrittenLast) {
    Var variable(L"word");

    const Outcome outcome =
        Call(mRegistry.Get(), L"KWO_RegGetValue", {kCurrentUser, kSandbox, Var::Ref(&variable), Var::Ref(&variable)});

    EXPECT_EQ(Hex(outcome.status), Hex(S_OK));
    EXPECT_EQ(variable.Text(), L"hello");
}

TEST_F(InvokeOnRegistry, AByteArrayVariableReceivesTheBytesOfTheText) {
    SAFEARRAY* array = SafeArrayCreateVector(VT_UI1, 0, 4);

    EXPECT_EQ(Hex(Read(L"word", Var::Reference(VT_ARRAY | VT_UI1, &array)).status), Hex(S_OK));

    LONG upper = -1;
    EXPECT_EQ(Hex(SafeArrayGetUBound(array, 1, &upper)), Hex(S_OK));
    EXPECT_EQ(upper, static_cast<LONG>(5 * sizeof(wchar_t) - 1));
    EXPECT_EQ(Hex(SafeArrayDestroy(array)), Hex(S_OK));
}

TEST_F(InvokeOnRegistry, NullReferencesAreRefusedAndNamed) {
    for (const VARTYPE type : {VT_VARIANT, VT_BSTR, VT_I4, VT_I2, VT_R8, VT_DISPATCH, VT_DATE, VT_BOOL}) {
        const Outcome outcome = Read(L"word", Var::Reference(type, nullptr));
        EXPECT_TRUE(FAILED(outcome.status)) << type;
        EXPECT_NE(outcome.status, DISP_E_EXCEPTION) << type;
        EXPECT_EQ(outcome.badArgument, 0u) << type;
    }
}

TEST_F(InvokeOnRegistry, AVariantThatRefersToItselfIsRefused) {
    VARIANT circle;
    circle.vt = VT_BYREF | VT_VARIANT;
    circle.pvarVal = &circle;

    const Outcome outcome = Read(L"word", Var::Ref(&circle));

    EXPECT_TRUE(FAILED(outcome.status)) << Hex(outcome.status);
    EXPECT_EQ(outcome.badArgument, 0u);
}

TEST_F(InvokeOnRegistry, EmptyConvertsToZeroAndToEmptyText) {
    PutText(L"", L"the default value");
    Bstr text;

    EXPECT_EQ(
        Hex(Call(mRegistry.Get(), L"KWO_RegGetValue", {kCurrentUser, kSandbox, Var(), Var::Ref(text.InOut())}).status),
        Hex(S_OK));
    EXPECT_EQ(text.Text(), L"the default value");
    const Outcome root = Call(mRegistry.Get(), L"KWO_RegDeleteKey", {Var(), L"x"});
    EXPECT_EQ(Hex(root.status), Hex(S_OK));
    EXPECT_EQ(root.result.lVal, ERROR_INVALID_HANDLE);
}

}  // namespace
}  // namespace kwo::com_test

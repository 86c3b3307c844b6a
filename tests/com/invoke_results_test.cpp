// What a late-bound call returns, and where it is stored.

#include "allocation_count.h"
#include "registry_sandbox.h"
#include "type_library_dump.h"

namespace kwo::com_test {
/// The first slots of the utility class as an early-bound client compiles them. Not in an unnamed namespace: there the
/// compiler concludes that nothing can implement it.
struct DirectorySlots : IDispatch {
    virtual HRESULT STDMETHODCALLTYPE FindInPath(BSTR* fileName, BSTR* found) = 0;
    virtual HRESULT STDMETHODCALLTYPE CenterForm(IDispatch** form, VARIANT* parent) = 0;
    virtual HRESULT STDMETHODCALLTYPE SetFormPosition(IDispatch** form, VARIANT* state, VARIANT* left, VARIANT* top,
                                                      VARIANT* width, VARIANT* height, VARIANT* parent) = 0;
    virtual HRESULT STDMETHODCALLTYPE LoadApp(BSTR* path, BSTR* program, BSTR* parameters, SHORT* mode, BSTR* name,
                                              LONG* task) = 0;
    virtual HRESULT STDMETHODCALLTYPE Pause(SHORT* seconds) = 0;
    virtual HRESULT STDMETHODCALLTYPE SystemDir(VARIANT* slashAtEnd, BSTR* directory) = 0;
    virtual HRESULT STDMETHODCALLTYPE WindowsDir(VARIANT* slashAtEnd, BSTR* directory) = 0;
};

namespace {

class InvokeResults : public RegistrySandbox {
protected:
    void SetUp() override {
        RegistrySandbox::SetUp();
        PutText(L"word", L"hello");
    }
    /// `fallback` as it stands, and the place for the result.
    HRESULT ReadValue(const Var& key, const Var& name, VARIANT& fallback, VARIANT* result) {
        VARIANT arguments[] = {fallback, name, key};
        DISPPARAMS parameters = {arguments, nullptr, 3, 0};
        return mRegistry->Invoke(IdOf(mRegistry.Get(), L"KWO_RegGetValueEx"), IID_NULL, LOCALE_USER_DEFAULT,
                                 DISPATCH_METHOD, &parameters, result, nullptr, nullptr);
    }
    Var Key() const { return Var(Handle()); }
};

TEST_F(InvokeResults, MayGoIntoTheVariableOfAnArgument) {
    const AllocationCount& memory = AllocationCount::Instance();
    const long before = memory.InUse();
    {
        Var variable(L"a fallback");
        Var reference = Var::Ref(&variable);
        ASSERT_EQ(Hex(ReadValue(Key(), L"none", reference, &variable)), Hex(S_OK));
        EXPECT_EQ(variable.Text(), L"a fallback") << "the input was read";
        ASSERT_EQ(Hex(ReadValue(Key(), L"word", reference, &variable)), Hex(S_OK));
        EXPECT_EQ(variable.Text(), L"hello");

        Var outer;
        static_cast<VARIANT&>(outer) = Var::Ref(&variable);
        Var twice = Var::Ref(&outer);
        ASSERT_EQ(Hex(ReadValue(Key(), L"none", twice, &variable)), Hex(S_OK));
        EXPECT_EQ(variable.Text(), L"hello");

        Var text = Var::Ref(&variable.bstrVal);
        ASSERT_EQ(Hex(ReadValue(Key(), L"none", text, &variable)), Hex(S_OK));
        EXPECT_EQ(variable.Text(), L"hello");
    }
    EXPECT_EQ(memory.InUse(), before);
}

TEST_F(InvokeResults, MayGoIntoTheArgumentItself) {
    const AllocationCount& memory = AllocationCount::Instance();
    const long before = memory.InUse();
    for (const wchar_t* const name : {L"none", L"word"}) {
        const Var nameGiven(name);
        VARIANT arguments[] = {Var(), nameGiven, Key()};
        arguments[0].vt = VT_BSTR;
        arguments[0].bstrVal = SysAllocString(L"a fallback");
        DISPPARAMS parameters = {arguments, nullptr, 3, 0};
        ASSERT_EQ(Hex(mRegistry->Invoke(IdOf(mRegistry.Get(), L"KWO_RegGetValueEx"), IID_NULL, 0, DISPATCH_METHOD,
                                        &parameters, &arguments[0], nullptr, nullptr)),
                  Hex(S_OK));
        ASSERT_EQ(arguments[0].vt, VT_BSTR);
        EXPECT_STREQ(arguments[0].bstrVal, name == std::wstring(L"none") ? L"a fallback" : L"hello");
        VariantClear(&arguments[0]);
    }
    EXPECT_EQ(memory.InUse(), before);
}

TEST_F(InvokeResults, OfAFailedCallLeaveTheArgumentAlone) {
    Var variable(L"a fallback");
    Var reference = Var::Ref(&variable);
    EXPECT_EQ(Hex(ReadValue(L"no number", L"word", reference, &variable)), Hex(DISP_E_TYPEMISMATCH));
    EXPECT_EQ(variable.Text(), L"a fallback");
}

TEST_F(InvokeResults, OfAFailedCallAreEmptyElsewhere) {
    Var fallback(1);
    VARIANT result;
    result.vt = 0x7777;
    EXPECT_EQ(Hex(ReadValue(L"no number", L"word", fallback, &result)), Hex(DISP_E_TYPEMISMATCH));
    EXPECT_EQ(result.vt, VT_EMPTY);
    result.vt = 0x7777;
    EXPECT_TRUE(FAILED(mRegistry->Invoke(1, IID_NULL, 0, DISPATCH_METHOD, nullptr, &result, nullptr, nullptr)));
    EXPECT_EQ(result.vt, VT_EMPTY);
}

TEST_F(InvokeResults, ThatNobodyTakesAreFreed) {
    const AllocationCount& memory = AllocationCount::Instance();
    const ComPtr<IDispatch> utility = Create(L"KWOUtility");
    const ComPtr<IDispatch> timer = Create(L"KWOTimer");
    const DISPID directory = IdOf(utility.Get(), L"KWO_SystemDir");
    const DISPID item = IdOf(timer.Get(), L"Item");
    ASSERT_EQ(Hex(Let(timer.Get(), L"Item", L"some text").status), Hex(S_OK));
    Var name(L"word");
    Var fallback(L"a fallback");
    const auto callAll = [&] {
        DISPPARAMS none = {};
        EXPECT_EQ(utility->Invoke(directory, IID_NULL, 0, DISPATCH_METHOD, &none, nullptr, nullptr, nullptr), S_OK);
        EXPECT_EQ(timer->Invoke(item, IID_NULL, 0, DISPATCH_PROPERTYGET, &none, nullptr, nullptr, nullptr), S_OK);
        EXPECT_EQ(ReadValue(Key(), name, fallback, nullptr), S_OK);
    };
    callAll();
    const long before = memory.InUse();
    callAll();
    EXPECT_EQ(memory.InUse(), before);
}

TEST_F(InvokeResults, AreWithheldWhenAnArgumentCannotBeWrittenBack) {
    LONG number = 7;
    const Outcome outcome =
        Call(mRegistry.Get(), L"KWO_RegGetValue", {kCurrentUser, kSandbox, L"word", Var::Ref(&number)});
    EXPECT_EQ(Hex(outcome.status), Hex(DISP_E_TYPEMISMATCH));
    EXPECT_EQ(outcome.result.vt, VT_EMPTY);
    EXPECT_EQ(number, 7);
}

TEST(InvokeLocale, IsTheCallers) {
    const LCID german = MAKELCID(MAKELANGID(LANG_GERMAN, SUBLANG_GERMAN), SORT_DEFAULT);
    const LCID english = MAKELCID(MAKELANGID(LANG_ENGLISH, SUBLANG_ENGLISH_US), SORT_DEFAULT);
    const ComPtr<IDispatch> splitter = Create(L"KWOSplitterV");
    const DISPID margin = IdOf(splitter.Get(), L"LeftMargin");
    const struct {
        LCID locale;
        float read;
    } rows[] = {{german, 1.5F}, {english, 15.0F}};
    for (const auto& row : rows) {
        Var text(L"1,5");
        DISPID put = DISPID_PROPERTYPUT;
        DISPPARAMS parameters = {&text, &put, 1, 1};
        EXPECT_EQ(Hex(splitter->Invoke(margin, IID_NULL, row.locale, DISPATCH_PROPERTYPUT, &parameters, nullptr,
                                       nullptr, nullptr)),
                  Hex(S_OK));
        EXPECT_EQ(Get(splitter.Get(), L"LeftMargin").result.fltVal, row.read);
    }
}

TEST_F(InvokeResults, AreWrittenBackByTheCallersLocale) {
    PutText(L"number", L"1,5");
    const struct {
        WORD language;
        double read;
    } rows[] = {{MAKELANGID(LANG_GERMAN, SUBLANG_GERMAN), 1.5}, {MAKELANGID(LANG_ENGLISH, SUBLANG_ENGLISH_US), 15.0}};
    for (const auto& row : rows) {
        double number = 0;
        const Var sandbox(kSandbox);
        const Var name(L"number");
        VARIANT arguments[] = {Var::Ref(&number), name, sandbox, Var(kCurrentUser)};
        DISPPARAMS parameters = {arguments, nullptr, 4, 0};
        EXPECT_EQ(Hex(mRegistry->Invoke(IdOf(mRegistry.Get(), L"KWO_RegGetValue"), IID_NULL,
                                        MAKELCID(row.language, SORT_DEFAULT), DISPATCH_METHOD, &parameters, nullptr,
                                        nullptr, nullptr)),
                  Hex(S_OK));
        EXPECT_EQ(number, row.read);
    }
}

TEST(InvokeConversions, ABooleanIsTheTextThatItIsEverywhere) {
    const ComPtr<IDispatch> button = Create(L"KWOPicBtn");
    for (const bool value : {true, false}) {
        EXPECT_EQ(Hex(Let(button.Get(), L"Caption", value).status), Hex(S_OK));
        EXPECT_EQ(Get(button.Get(), L"Caption").result.Text(), value ? L"True" : L"False");
        Var variable(value);
        EXPECT_EQ(Hex(Let(button.Get(), L"Caption", Var::Ref(&variable)).status), Hex(S_OK));
        EXPECT_EQ(Get(button.Get(), L"Caption").result.Text(), value ? L"True" : L"False");
        EXPECT_EQ(variable.vt, VT_BOOL);
    }
}

TEST_F(InvokeResults, ABooleanIsStoredAsItsText) {
    EXPECT_EQ(Hex(Call(mRegistry.Get(), L"KWO_RegSetValue", {kCurrentUser, kSandbox, L"flag", true}).status),
              Hex(S_OK));
    EXPECT_EQ(StoredBytes(L"flag"), std::string("True\0", 5));
}

TEST(InvokeConversions, ANullObjectMayArriveAsEmpty) {
    const ComPtr<IDispatch> timer = Create(L"KWOTimer");
    const ComPtr<IDispatch> callback = Create(L"IKWOTimer");
    ASSERT_EQ(Hex(Set(timer.Get(), L"TimerEvents", callback.Get()).status), Hex(S_OK));

    EXPECT_EQ(Hex(Set(timer.Get(), L"TimerEvents", Var()).status), Hex(S_OK));
    EXPECT_EQ(Get(timer.Get(), L"TimerEvents").result.pdispVal, nullptr);

    const ComPtr<IDispatch> tray = Create(L"KWOSysTray");
    Var empty;
    EXPECT_EQ(Hex(Call(tray.Get(), L"Create", {0, Var(), L"x"}).scode), "0x800A005B");
    EXPECT_EQ(Hex(Call(tray.Get(), L"Create", {0, Var::Ref(&empty), L"x"}).scode), "0x800A005B");
    EXPECT_EQ(empty.vt, VT_EMPTY) << "nothing was written";
}

TEST(InvokeConversions, ADateOutOfRangeIsTheMembersToRefuseAsForCompiledCallers) {
    const ComPtr<IDispatch> timer = Create(L"KWOTimer");
    Var unsignedDays = Var::UnsignedLong(4'000'000'000);
    for (const Var& days : {Var(1e300), Var(-1e300), Var::Date(1e300), Var(2'958'466L), Var(5'000'000LL), Var(3e8F),
                            Var(-657'435L), unsignedDays}) {
        const Outcome outcome = Call(timer.Get(), L"AddAlarm", {days, 1});
        EXPECT_EQ(Hex(outcome.status), Hex(DISP_E_EXCEPTION)) << "type " << days.vt;
        EXPECT_EQ(Hex(outcome.scode), "0x800A000D") << "type " << days.vt;
        EXPECT_EQ(outcome.source, L"KWOTimer.AddAlarm") << "type " << days.vt;
        Var variable = days;
        EXPECT_EQ(Hex(Call(timer.Get(), L"AddAlarm", {Var::Ref(&variable), 1}).scode), "0x800A000D");
    }
    EXPECT_EQ(Hex(Call(timer.Get(), L"AddAlarm", {L"1e300", 1}).status), Hex(DISP_E_TYPEMISMATCH)) << "no date at all";
    const ComPtr<IDispatch> view = Create(L"KWOMonthView");
    for (const Var& days : {Var(1e300), Var::Date(1e300)})
        EXPECT_EQ(Hex(Call(view.Get(), L"SelDaysAdd", {days}).status), Hex(S_OK)) << "type " << days.vt;
}

TEST(TypeLibraryDefaults, AreAllZeroWhichIsWhatALeftOutArgumentIs) {
    const ComPtr<ITypeLib> library = TypeLibraryOfTheDll();
    int defaults = 0;
    for (const std::wstring& name : ClassNames()) {
        const ComPtr<ITypeInfo> slots = SlotView(TypeInfoOf(library.Get(), L"_" + name).Get());
        for (UINT f = 0; f < TypeAttributes(*slots)->cFuncs; ++f) {
            const Function function(slots.Get(), f);
            for (SHORT at = 0; at < function->cParams; ++at) {
                const PARAMDESC& parameter = function->lprgelemdescParam[at].paramdesc;
                if ((parameter.wParamFlags & PARAMFLAG_FHASDEFAULT) == 0) continue;
                ++defaults;
                Var number;
                VariantChangeType(&number, &parameter.pparamdescex->varDefaultValue, 0, VT_R8);
                EXPECT_EQ(number.dblVal, 0.0) << Narrow(name) << '.' << function.Names()[0];
            }
        }
    }
    EXPECT_EQ(defaults, 2) << "both arguments of CancelTimers";
}

TEST(EarlyBoundMissing, InsideAReferenceFillsTheVariableThatIsReferredTo) {
    const ComPtr<ITypeLib> library = TypeLibraryOfTheDll();
    const IID id = TypeAttributes(*TypeInfoOf(library.Get(), L"_KWOUtility"))->guid;
    const ComPtr<DirectorySlots> slots = As<DirectorySlots>(Create(L"KWOUtility").Get(), id);
    ASSERT_TRUE(slots);
    for (const auto member : {&DirectorySlots::SystemDir, &DirectorySlots::WindowsDir}) {
        Bstr directory;
        Var missing = Var::Missing();
        ASSERT_EQ(Hex((slots.Get()->*member)(&missing, directory.Out())), Hex(S_OK));
        EXPECT_EQ(missing.vt, VT_BOOL);
        EXPECT_EQ(missing.boolVal, VARIANT_FALSE);

        Var variable = Var::Missing();
        VARIANT reference = Var::Ref(&variable);
        ASSERT_EQ(Hex((slots.Get()->*member)(&reference, directory.Out())), Hex(S_OK));
        EXPECT_EQ(reference.vt, VT_BYREF | VT_VARIANT) << "the reference stays one";
        EXPECT_EQ(variable.vt, VT_BOOL);
        EXPECT_EQ(variable.boolVal, VARIANT_FALSE);

        SCODE code = DISP_E_PARAMNOTFOUND;
        VARIANT error = Var::Reference(VT_ERROR, &code);
        ASSERT_EQ(Hex((slots.Get()->*member)(&error, directory.Out())), Hex(S_OK));
        EXPECT_EQ(error.vt, VT_BYREF | VT_ERROR) << "which has no room for a Boolean";
        EXPECT_EQ(Hex(code), Hex(DISP_E_PARAMNOTFOUND));
    }
}

}  // namespace
}  // namespace kwo::com_test

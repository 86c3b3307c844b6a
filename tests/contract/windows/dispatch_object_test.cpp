#include "platform/windows/dispatch_object.h"

#include <gtest/gtest.h>
#include <objidl.h>

#include <algorithm>
#include <functional>

#include "com_support/com_ptr.h"
#include "recording_dispatch.h"
#include "support/raised.h"

namespace kwo::platform::windows {
namespace {

using com_support::OwnedVariant;
using test_support::kMismatch;
using test_support::Raised;

constexpr WORD kRead = DISPATCH_METHOD | DISPATCH_PROPERTYGET;
constexpr VARTYPE kVariantReference = VT_BYREF | VT_VARIANT;

HRESULT WINAPI FillInLate(EXCEPINFO* late) {
    late->scode = static_cast<SCODE>(0x800A0005);
    late->bstrDescription = ::SysAllocString(L"late");
    return S_OK;
}

/// Counts the blocks of the task's memory, which strings are kept in, that were taken and not given back.
class MemoryCount final : public IMallocSpy {
public:
    MemoryCount() {
        // Strings go back to the memory they came from at once. Not every compiler's libraries know this function.
        const FARPROC noCache = ::GetProcAddress(::GetModuleHandleW(L"oleaut32.dll"), "SetOaNoCache");
        if (noCache != nullptr) reinterpret_cast<void(WINAPI*)()>(reinterpret_cast<void*>(noCache))();
        ::CoRegisterMallocSpy(this);
    }
    ~MemoryCount() { ::CoRevokeMallocSpy(); }
    int Held() const { return mHeld; }

    STDMETHODIMP QueryInterface(REFIID id, void** object) override {
        *object = IsEqualIID(id, IID_IUnknown) || IsEqualIID(id, IID_IMallocSpy) ? this : nullptr;
        if (*object == nullptr) return E_NOINTERFACE;
        AddRef();
        return S_OK;
    }
    STDMETHODIMP_(ULONG) AddRef() override { return 2; }
    STDMETHODIMP_(ULONG) Release() override { return 1; }
    STDMETHODIMP_(SIZE_T) PreAlloc(SIZE_T size) override { return size; }
    STDMETHODIMP_(void*) PostAlloc(void* block) override {
        ++mHeld;
        return block;
    }
    STDMETHODIMP_(void*) PreFree(void* block, WINBOOL spied) override {
        if (spied && block != nullptr) --mHeld;
        return block;
    }
    STDMETHODIMP_(void) PostFree(WINBOOL) override {}
    STDMETHODIMP_(SIZE_T) PreRealloc(void* block, SIZE_T size, void** out, WINBOOL) override {
        *out = block;
        return size;
    }
    STDMETHODIMP_(void*) PostRealloc(void* block, WINBOOL) override { return block; }
    STDMETHODIMP_(void*) PreGetSize(void* block, WINBOOL) override { return block; }
    STDMETHODIMP_(SIZE_T) PostGetSize(SIZE_T size, WINBOOL) override { return size; }
    STDMETHODIMP_(void*) PreDidAlloc(void* block, WINBOOL) override { return block; }
    STDMETHODIMP_(int) PostDidAlloc(void*, WINBOOL, int did) override { return did; }
    STDMETHODIMP_(void) PreHeapMinimize() override {}
    STDMETHODIMP_(void) PostHeapMinimize() override {}

private:
    int mHeld = 0;
};

class DispatchObjectTest : public testing::Test {
protected:
    ~DispatchObjectTest() override {
        object.reset();
        EXPECT_EQ(target.references, 1u) << "references to the object are left";
        EXPECT_EQ(other.references, 1u) << "references to the argument are left";
    }

    void FailWith(HRESULT code) {
        target.body = [code](DISPPARAMS&, VARIANT*, EXCEPINFO*) { return code; };
    }
    ComponentError RaisedByGet() {
        const ComponentError raised = Raised([&] { object->Get(u"First"); });
        EXPECT_NE(raised.number, 0) << "nothing was raised";
        return raised;
    }

    RecordingDispatch target;
    RecordingDispatch other;
    HostObjectRef object = MakeHostObject(&target);
};

TEST_F(DispatchObjectTest, GetReadsWithArgumentsByValueLastOneFirst) {
    target.body = [](DISPPARAMS& parameters, VARIANT* result, EXCEPINFO*) {
        result->vt = VT_I4;
        result->lVal = 10 * parameters.rgvarg[1].iVal + parameters.rgvarg[0].lVal;
        return S_OK;
    };
    const Variant arguments[] = {std::int16_t{4}, std::int32_t{2}};

    EXPECT_EQ(object->Get(u"Second", arguments), Variant(std::int32_t{42}));

    ASSERT_EQ(target.calls.size(), 1u);
    EXPECT_EQ(target.calls[0].id, 2);
    EXPECT_EQ(target.calls[0].flags, kRead);
    EXPECT_EQ(target.calls[0].types, (std::vector<VARTYPE>{VT_I4, VT_I2}));
    EXPECT_TRUE(target.calls[0].names.empty());
}

TEST_F(DispatchObjectTest, ANameIsLookedUpOnce) {
    object->Get(u"First");
    object->Let(u"First", true);
    object->Call(u"First");
    EXPECT_EQ(target.lookups, 1);
    object->Get(u"Second");
    EXPECT_EQ(target.lookups, 2);
    MakeHostObject(&target)->Get(u"First");
    EXPECT_EQ(target.lookups, 3);
}

TEST_F(DispatchObjectTest, AFailedLookupIsNotRemembered) {
    EXPECT_EQ(Raised([&] { object->Get(u"Third"); }).number, 438);
    target.members[L"Third"] = 3;
    object->Get(u"Third");
    EXPECT_EQ(target.calls.at(0).id, 3);
}

TEST_F(DispatchObjectTest, LetPutsTheValueUnderThePropertyPutName) {
    target.body = [](DISPPARAMS& parameters, VARIANT* result, EXCEPINFO*) {
        EXPECT_EQ(parameters.rgvarg[0].dblVal, 1.5);
        EXPECT_EQ(result, nullptr);
        return S_OK;
    };

    object->Let(u"First", 1.5);

    ASSERT_EQ(target.calls.size(), 1u);
    EXPECT_EQ(target.calls[0].flags, DISPATCH_PROPERTYPUT);
    EXPECT_EQ(target.calls[0].types, std::vector<VARTYPE>{VT_R8});
    EXPECT_EQ(target.calls[0].names, std::vector<DISPID>{DISPID_PROPERTYPUT});
}

TEST_F(DispatchObjectTest, SetPutsTheObjectByReference) {
    target.body = [this](DISPPARAMS& parameters, VARIANT*, EXCEPINFO*) {
        EXPECT_EQ(parameters.rgvarg[0].pdispVal, &other);
        return S_OK;
    };

    object->Set(u"First", MakeHostObject(&other));

    ASSERT_EQ(target.calls.size(), 1u);
    EXPECT_EQ(target.calls[0].flags, DISPATCH_PROPERTYPUTREF);
    EXPECT_EQ(target.calls[0].types, std::vector<VARTYPE>{VT_DISPATCH});
    EXPECT_EQ(target.calls[0].names, std::vector<DISPID>{DISPID_PROPERTYPUT});
}

TEST_F(DispatchObjectTest, SetFallsBackToThePropertyPutOfAnObjectThatHasNoOther) {
    target.body = [this](DISPPARAMS&, VARIANT*, EXCEPINFO*) {
        return target.calls.back().flags == DISPATCH_PROPERTYPUTREF ? DISP_E_MEMBERNOTFOUND : S_OK;
    };
    object->Set(u"First", nullptr);
    ASSERT_EQ(target.calls.size(), 2u);
    EXPECT_EQ(target.calls[1].flags, DISPATCH_PROPERTYPUT);

    FailWith(DISP_E_MEMBERNOTFOUND);
    EXPECT_EQ(Raised([&] { object->Set(u"First", nullptr); }).number, 438);
    FailWith(DISP_E_TYPEMISMATCH);
    EXPECT_EQ(Raised([&] { object->Set(u"First", nullptr); }).number, kMismatch);
    EXPECT_EQ(target.calls.size(), 5u);
}

TEST_F(DispatchObjectTest, CallPassesValuesLastOneFirst) {
    target.body = [](DISPPARAMS& parameters, VARIANT* result, EXCEPINFO*) {
        parameters.rgvarg[0].vt = VT_EMPTY;
        result->vt = VT_I2;
        result->iVal = 3;
        return S_OK;
    };
    const Variant arguments[] = {1.5f, std::int16_t{2}, Missing{}};

    EXPECT_EQ(object->Call(u"First", arguments), Variant(std::int16_t{3}));

    ASSERT_EQ(target.calls.size(), 1u);
    EXPECT_EQ(target.calls[0].flags, kRead);
    EXPECT_EQ(target.calls[0].types, (std::vector<VARTYPE>{VT_ERROR, VT_I2, VT_R4}));
    FailWith(DISP_E_TYPEMISMATCH);
    EXPECT_EQ(Raised([&] { object->Call(u"First", arguments); }).number, kMismatch);
    EXPECT_EQ(target.calls.size(), 2u) << "there is no other way to pass a value";
}

constexpr VARTYPE kReference = VT_BYREF;

/// What a form is asked: an object, a number as a value, a number and a truth by reference.
class NotifyTest : public DispatchObjectTest {
protected:
    using Types = std::vector<VARTYPE>;

    std::vector<Argument> Asked() { return {{MakeHostObject(&other)}, {std::int16_t{11}, false}, {Date{2}}, {false}}; }
    /// Calls until the object accepts; the types of each try, the first argument first.
    std::vector<Types> TriesUntil(const std::function<bool(const Types&)>& accepts) {
        target.body = [&](DISPPARAMS& parameters, VARIANT*, EXCEPINFO*) {
            Types types;
            for (UINT at = parameters.cArgs; at > 0; --at)
                types.push_back(parameters.rgvarg[at - 1].vt);
            tries.push_back(types);
            return accepts(types) ? S_OK : DISP_E_TYPEMISMATCH;
        };
        std::vector<Argument> arguments = Asked();
        try {
            object->Notify(u"First", arguments);
        } catch (const ComponentError& error) {
            failure = error.number;
        }
        return tries;
    }

    std::vector<Types> tries;
    std::int32_t failure = 0;
};

TEST_F(NotifyTest, TheArgumentsGoFirstAsTheyAreGiven) {
    TriesUntil([](const Types&) { return true; });
    EXPECT_EQ(tries,
              (std::vector<Types>{{kReference | VT_DISPATCH, VT_I2, kReference | VT_DATE, kReference | VT_BOOL}}));
    EXPECT_EQ(target.calls.at(0).flags, kRead);
}

TEST_F(NotifyTest, ScriptsGetReferencesToVariantsFirst) {
    target.hasExtended = true;
    TriesUntil([](const Types&) { return true; });
    EXPECT_EQ(tries, (std::vector<Types>{Types(4, kVariantReference)}));
}

TEST_F(NotifyTest, WhoRefusesTheTypesGetsOthersUntilThereAreNoMore) {
    TriesUntil([](const Types&) { return false; });
    EXPECT_EQ(failure, kMismatch);
    const VARTYPE form = kReference | VT_DISPATCH;
    const VARTYPE date = kReference | VT_DATE;
    const VARTYPE truth = kReference | VT_BOOL;
    EXPECT_EQ(tries, (std::vector<Types>{{form, VT_I2, date, truth},
                                         Types(4, kVariantReference),
                                         {form, VT_I4, date, truth},
                                         {form, kReference | VT_I2, date, truth},
                                         {form, kReference | VT_I4, date, truth},
                                         {VT_DISPATCH, VT_I2, VT_DATE, VT_BOOL}}));
}

TEST_F(NotifyTest, ATypeThatIsNoneIsRefusedLikeAWrongOne) {
    target.body = [](DISPPARAMS& parameters, VARIANT*, EXCEPINFO*) {
        return parameters.rgvarg[0].vt == kVariantReference ? S_OK : DISP_E_BADVARTYPE;
    };
    std::vector<Argument> arguments = Asked();
    EXPECT_NO_THROW(object->Notify(u"First", arguments));
    EXPECT_EQ(target.calls.size(), 2u);
}

TEST_F(NotifyTest, WhoTakesEachTypeForNoneRaisesAMismatchToo) {
    FailWith(DISP_E_BADVARTYPE);
    std::vector<Argument> arguments = Asked();
    EXPECT_EQ(Raised([&] { object->Notify(u"First", arguments); }).number, kMismatch);
}

TEST_F(NotifyTest, WhatRanIsNotRunAgain) {
    struct Row {
        HRESULT code;
        SCODE scode;
    };
    for (const Row& row : {Row{DISP_E_EXCEPTION, static_cast<SCODE>(0x800A000D)},
                           Row{DISP_E_EXCEPTION, DISP_E_TYPEMISMATCH}, Row{DISP_E_EXCEPTION, DISP_E_BADVARTYPE},
                           Row{DISP_E_OVERFLOW, 0}, Row{DISP_E_BADPARAMCOUNT, 0}, Row{E_FAIL, 0}}) {
        target.calls.clear();
        target.body = [&](DISPPARAMS&, VARIANT*, EXCEPINFO* exception) {
            exception->scode = row.scode;
            return row.code;
        };
        std::vector<Argument> arguments = Asked();
        EXPECT_NE(Raised([&] { object->Notify(u"First", arguments); }).number, 0);
        EXPECT_EQ(target.calls.size(), 1u) << std::hex << row.code << ' ' << row.scode;
    }
}

TEST_F(NotifyTest, WhoLacksTheMemberIsNotAskedAgain) {
    FailWith(DISP_E_MEMBERNOTFOUND);
    std::vector<Argument> arguments = Asked();
    EXPECT_EQ(Raised([&] { object->Notify(u"First", arguments); }).number, 438);
    EXPECT_EQ(target.calls.size(), 1u);
}

TEST_F(NotifyTest, WhatTheObjectWritesComesBackFromReferencesAlone) {
    target.body = [](DISPPARAMS& parameters, VARIANT* result, EXCEPINFO*) {
        *parameters.rgvarg[0].pboolVal = VARIANT_TRUE;
        *parameters.rgvarg[1].pdate = 5;
        parameters.rgvarg[2].iVal = 99;
        (*parameters.rgvarg[3].ppdispVal)->Release();
        *parameters.rgvarg[3].ppdispVal = nullptr;
        result->vt = VT_I2;
        result->iVal = 3;
        return S_OK;
    };
    std::vector<Argument> arguments = Asked();

    EXPECT_EQ(object->Notify(u"First", arguments), Variant(std::int16_t{3}));

    EXPECT_EQ(arguments[0].value, Variant(HostObjectRef()));
    EXPECT_EQ(arguments[1].value, Variant(std::int16_t{11}));
    EXPECT_EQ(arguments[2].value, Variant(Date{5}));
    EXPECT_EQ(arguments[3].value, Variant(true));
}

TEST_F(NotifyTest, WhatScriptsWriteMayHaveAnotherType) {
    target.hasExtended = true;
    target.body = [](DISPPARAMS& parameters, VARIANT*, EXCEPINFO*) {
        VARIANT& truth = *parameters.rgvarg[0].pvarVal;
        truth.vt = VT_BSTR;
        truth.bstrVal = ::SysAllocString(L"new");
        return S_OK;
    };
    std::vector<Argument> arguments = Asked();

    object->Notify(u"First", arguments);

    EXPECT_EQ(arguments[3].value, Variant(Text(u"new")));
}

TEST_F(NotifyTest, AnotherWidthOfANumberComesBackAsTheNumberItWas) {
    target.body = [](DISPPARAMS& parameters, VARIANT*, EXCEPINFO*) {
        if (parameters.rgvarg[0].vt != (VT_BYREF | VT_I4)) return DISP_E_TYPEMISMATCH;
        *parameters.rgvarg[0].plVal += 1;
        return S_OK;
    };
    Argument arguments[] = {{std::int16_t{41}}};

    object->Notify(u"First", arguments);

    EXPECT_EQ(arguments[0].value, Variant(std::int16_t{42}));
}

TEST_F(NotifyTest, RefusedArgumentsStayWhatTheyWere) {
    target.body = [](DISPPARAMS& parameters, VARIANT*, EXCEPINFO*) {
        if (parameters.cArgs == 0) return DISP_E_TYPEMISMATCH;
        if (parameters.rgvarg[0].vt == kVariantReference) parameters.rgvarg[0].pvarVal->lVal = 99;
        return DISP_E_TYPEMISMATCH;
    };
    Argument arguments[] = {{std::int32_t{1}}};

    EXPECT_EQ(Raised([&] { object->Notify(u"First", arguments); }).number, kMismatch);

    EXPECT_EQ(arguments[0].value, Variant(std::int32_t{1}));
    target.calls.clear();
    EXPECT_EQ(Raised([&] { object->Notify(u"First", {}); }).number, kMismatch);
    EXPECT_EQ(target.calls.size(), 1u) << "without arguments there is nothing else to try";
}

TEST_F(NotifyTest, AnObjectThatWasNotReplacedStaysTheVeryReference) {
    const HostObjectRef argument = MakeHostObject(&other);
    Argument arguments[] = {{argument}};

    object->Notify(u"First", arguments);

    EXPECT_EQ(std::get<HostObjectRef>(arguments[0].value), argument);
}

TEST_F(DispatchObjectTest, AnArrayIsFilledThroughATypedReference) {
    VARIANT array = {};
    array.vt = VT_ARRAY | VT_I2;
    array.parray = ::SafeArrayCreateVector(VT_I2, 1, 1);
    Argument arguments[] = {{FromVariant(array)}};
    ::VariantClear(&array);
    target.body = [](DISPPARAMS& parameters, VARIANT*, EXCEPINFO*) {
        if (parameters.rgvarg[0].vt != (VT_BYREF | VT_ARRAY | VT_I2)) return DISP_E_TYPEMISMATCH;
        LONG index = 1;
        SHORT value = 1234;
        return ::SafeArrayPutElement(*parameters.rgvarg[0].pparray, &index, &value);
    };

    object->Notify(u"First", arguments);

    const OwnedVariant filled = OwnedVariant::Adopt(ToVariant(arguments[0].value));
    LONG index = 1;
    SHORT value = 0;
    ASSERT_EQ(::SafeArrayGetElement(filled.parray, &index, &value), S_OK);
    EXPECT_EQ(value, 1234);
}

TEST_F(DispatchObjectTest, NamedArgumentsGoByTheirIdsLastOneFirst) {
    target.members = {{L"Load", 5}, {L"Path", 10}, {L"Size", 11}};
    target.body = [](DISPPARAMS& parameters, VARIANT*, EXCEPINFO*) {
        parameters.rgvarg[0].pvarVal->lVal = 8;
        return S_OK;
    };
    const TextView names[] = {u"Path", u"Size"};
    Variant arguments[] = {Text(u"a"), std::int32_t{0}};

    object->CallNamed(u"Load", names, arguments);
    object->CallNamed(u"Load", names, arguments);

    ASSERT_EQ(target.calls.size(), 2u);
    EXPECT_EQ(target.lookups, 1);
    EXPECT_EQ(target.calls[0].id, 5);
    EXPECT_EQ(target.calls[0].names, (std::vector<DISPID>{11, 10}));
    EXPECT_EQ(target.calls[0].types, (std::vector<VARTYPE>{kVariantReference, kVariantReference}));
    EXPECT_EQ(arguments[1], Variant(std::int32_t{8}));
}

TEST_F(DispatchObjectTest, NamedArgumentsGoToTheirTypesWhereReferencesToVariantsAreRefused) {
    target.body = [](DISPPARAMS& parameters, VARIANT*, EXCEPINFO*) {
        if (parameters.rgvarg[0].vt == kVariantReference) return DISP_E_TYPEMISMATCH;
        ++*parameters.rgvarg[0].plVal;
        return S_OK;
    };
    const TextView names[] = {u"Second"};
    Variant arguments[] = {std::int32_t{41}};

    object->CallNamed(u"First", names, arguments);

    EXPECT_EQ(arguments[0], Variant(std::int32_t{42}));
    EXPECT_EQ(target.calls.size(), 2u);
}

TEST_F(DispatchObjectTest, UnknownNamesOfArgumentsAreTheirOwnError) {
    const TextView names[] = {u"Nowhere"};
    Variant arguments[] = {true};
    EXPECT_EQ(Raised([&] { object->CallNamed(u"First", names, arguments); }).number, 448);
    EXPECT_EQ(Raised([&] { object->CallNamed(u"Third", names, arguments); }).number, 438);
    EXPECT_EQ(Raised([&] { object->CallNamed(u"First", {}, arguments); }).number, 450);
    EXPECT_TRUE(target.calls.empty());
}

TEST_F(DispatchObjectTest, ScriptObjectsAreAskedThroughTheirExtendedInterface) {
    target.extendedOnly = true;
    EXPECT_EQ(RaisedByGet().number, E_NOTIMPL);
    target.hasExtended = true;

    object->Get(u"First");
    object->Get(u"First");

    EXPECT_EQ(target.extendedLookups, std::vector<std::wstring>{L"First"});
    EXPECT_EQ(target.extendedFlags, static_cast<DWORD>(fdexNameCaseInsensitive));
    EXPECT_EQ(target.calls.at(0).id, 1);
    EXPECT_EQ(Raised([&] { object->Get(u"Third"); }).number, 438);
    const TextView names[] = {u"Path"};
    Variant arguments[] = {true};
    EXPECT_EQ(Raised([&] { object->CallNamed(u"First", names, arguments); }).number, 446);
}

TEST_F(DispatchObjectTest, FailuresOfTheCallHaveTheirRuntimeNumbers) {
    struct Row {
        HRESULT code;
        std::int32_t number;
        const char16_t* description;
    };
    for (const Row& row : {Row{DISP_E_UNKNOWNNAME, 438, u"Object doesn't support this property or method"},
                           Row{DISP_E_MEMBERNOTFOUND, 438, u"Object doesn't support this property or method"},
                           Row{DISP_E_TYPEMISMATCH, 13, u"Type mismatch"}, Row{DISP_E_BADVARTYPE, 13, u"Type mismatch"},
                           Row{DISP_E_OVERFLOW, 6, u"Overflow"},
                           Row{DISP_E_BADPARAMCOUNT, 450, u"Wrong number of arguments or invalid property assignment"},
                           Row{DISP_E_PARAMNOTOPTIONAL, 449, u"Argument not optional"},
                           Row{DISP_E_PARAMNOTFOUND, 448, u"Named argument not found"},
                           Row{DISP_E_NONAMEDARGS, 446, u"Object doesn't support named arguments"}}) {
        FailWith(row.code);
        const ComponentError get = RaisedByGet();
        EXPECT_EQ(get.number, row.number) << std::hex << row.code;
        EXPECT_EQ(get.description, row.description) << std::hex << row.code;
        EXPECT_EQ(Raised([&] { object->Let(u"First", true); }).number, row.number) << std::hex << row.code;
        EXPECT_EQ(Raised([&] { object->Call(u"First"); }).number, row.number) << std::hex << row.code;
    }
}

TEST_F(DispatchObjectTest, OtherFailuresKeepTheirCodeWithTheSystemsText) {
    FailWith(E_ACCESSDENIED);
    const ComponentError denied = RaisedByGet();
    EXPECT_EQ(denied.number, E_ACCESSDENIED);
    ASSERT_FALSE(denied.description.empty());
    EXPECT_GT(denied.description.back(), u' ') << "the line end of the text stays out";

    FailWith(static_cast<HRESULT>(0x8004FEDC));
    EXPECT_EQ(RaisedByGet().number, static_cast<std::int32_t>(0x8004FEDC));
    FailWith(static_cast<HRESULT>(0x800A01A8));
    EXPECT_EQ(RaisedByGet().number, 424);
}

/// The thread's error object; null if there is none. It is taken from the thread.
com_support::ComPtr<IErrorInfo> TakenErrorObject() {
    com_support::ComPtr<IErrorInfo> taken;
    ::GetErrorInfo(0, taken.Out());
    return taken;
}

com_support::ComPtr<IErrorInfo> LeftErrorObject() {
    com_support::ComPtr<ICreateErrorInfo> made;
    ::CreateErrorInfo(made.Out());
    const std::wstring texts[] = {L"Listener", L"has had enough", L"listener.hlp"};
    made->SetSource(const_cast<LPOLESTR>(texts[0].c_str()));
    made->SetDescription(const_cast<LPOLESTR>(texts[1].c_str()));
    made->SetHelpFile(const_cast<LPOLESTR>(texts[2].c_str()));
    made->SetHelpContext(12);
    const auto left = made.As<IErrorInfo>();
    ::SetErrorInfo(0, left.Get());
    return left;
}

TEST_F(DispatchObjectTest, AScriptsObjectMayLeaveTheTextsOfItsErrorOnTheThread) {
    constexpr auto kCode = static_cast<HRESULT>(0x800A004D);
    com_support::ComPtr<IErrorInfo> left;
    target.hasExtended = true;
    target.body = [&](DISPPARAMS&, VARIANT*, EXCEPINFO*) {
        left = LeftErrorObject();
        return kCode;
    };

    const ComponentError error = RaisedByGet();

    EXPECT_EQ(error.number, 77);
    EXPECT_EQ(error.source, u"Listener");
    EXPECT_EQ(error.description, u"has had enough");
    EXPECT_EQ(error.helpFile, u"listener.hlp");
    EXPECT_EQ(error.helpContext, 12);
    EXPECT_EQ(TakenErrorObject().Get(), left.Get()) << "it stays where it was left";
}

TEST_F(DispatchObjectTest, AnErrorObjectThatIsAboutSomethingElseIsNotRead) {
    constexpr auto kCode = static_cast<HRESULT>(0x800A004D);
    target.hasExtended = true;
    FailWith(kCode);
    const auto earlier = LeftErrorObject();
    EXPECT_EQ(RaisedByGet().source, u"") << "the thread had it before the call";
    EXPECT_EQ(TakenErrorObject().Get(), earlier.Get());

    target.body = [&](DISPPARAMS&, VARIANT*, EXCEPINFO*) {
        LeftErrorObject();
        return DISP_E_BADPARAMCOUNT;
    };
    EXPECT_EQ(RaisedByGet().number, 450) << "the call itself has failed";

    target.hasExtended = false;
    target.body = [&](DISPPARAMS&, VARIANT*, EXCEPINFO*) {
        LeftErrorObject();
        return kCode;
    };
    EXPECT_EQ(RaisedByGet().source, u"") << "no script's object";
    TakenErrorObject();
}

TEST_F(DispatchObjectTest, AnObjectWithoutMemoryIsNoMemory) {
    FailWith(E_OUTOFMEMORY);
    Argument arguments[] = {{true}};
    EXPECT_THROW(object->Get(u"First"), std::bad_alloc);
    EXPECT_THROW(object->Let(u"First", true), std::bad_alloc);
    EXPECT_THROW(object->Notify(u"First", arguments), std::bad_alloc);

    target.body = [](DISPPARAMS&, VARIANT*, EXCEPINFO* exception) {
        exception->scode = E_OUTOFMEMORY;
        return DISP_E_EXCEPTION;
    };
    EXPECT_THROW(object->Get(u"First"), std::bad_alloc) << "also as an exception";
}

TEST_F(DispatchObjectTest, TheObjectsOwnErrorIsRaisedWhole) {
    target.body = [](DISPPARAMS&, VARIANT*, EXCEPINFO* exception) {
        exception->scode = static_cast<SCODE>(0x80040123);
        exception->wCode = 77;
        exception->bstrSource = ::SysAllocString(L"Form1");
        exception->bstrDescription = ::SysAllocString(L"does not like it");
        exception->bstrHelpFile = ::SysAllocString(L"form.hlp");
        exception->dwHelpContext = 12;
        return DISP_E_EXCEPTION;
    };

    const ComponentError error = RaisedByGet();

    EXPECT_EQ(error.number, static_cast<std::int32_t>(0x80040123));
    EXPECT_EQ(error.source, u"Form1");
    EXPECT_EQ(error.description, u"does not like it");
    EXPECT_EQ(error.helpFile, u"form.hlp");
    EXPECT_EQ(error.helpContext, 12);
}

TEST_F(DispatchObjectTest, TheNumberComesFromTheCodeOrElseFromTheShortOne) {
    struct Row {
        SCODE scode;
        WORD wCode;
        std::int32_t number;
    };
    for (const Row& row : {Row{static_cast<SCODE>(0x800A0009), 0, 9}, Row{static_cast<SCODE>(0x800AFFFF), 1, 0xFFFF},
                           Row{static_cast<SCODE>(0x800A0000), 0, static_cast<std::int32_t>(0x800A0000)},
                           Row{-5, 0, -5}, Row{0, 77, 77}, Row{0, 0xFFFF, 0xFFFF}, Row{0, 0, DISP_E_EXCEPTION}}) {
        target.body = [&row](DISPPARAMS&, VARIANT*, EXCEPINFO* exception) {
            exception->scode = row.scode;
            exception->wCode = row.wCode;
            return DISP_E_EXCEPTION;
        };
        EXPECT_EQ(RaisedByGet().number, row.number) << std::hex << row.scode << ' ' << row.wCode;
    }
}

TEST_F(DispatchObjectTest, AnErrorThatIsFilledInLateIsFilledIn) {
    target.body = [](DISPPARAMS&, VARIANT*, EXCEPINFO* exception) {
        exception->pfnDeferredFillIn = FillInLate;
        return DISP_E_EXCEPTION;
    };
    const ComponentError error = RaisedByGet();
    EXPECT_EQ(error.number, 5);
    EXPECT_EQ(error.description, u"late");
}

TEST_F(DispatchObjectTest, TheTextsOfAnErrorAreFreed) {
    target.body = [](DISPPARAMS&, VARIANT*, EXCEPINFO* exception) {
        exception->bstrSource = ::SysAllocString(L"Form1");
        exception->bstrDescription = ::SysAllocString(L"does not like it");
        exception->bstrHelpFile = ::SysAllocString(L"form.hlp");
        return DISP_E_EXCEPTION;
    };
    const MemoryCount memory;

    RaisedByGet();
    EXPECT_EQ(memory.Held(), 0);

    // A call that fails in another way, or not at all, may have filled them in as well.
    target.body = [body = target.body](DISPPARAMS& parameters, VARIANT* result, EXCEPINFO* exception) {
        body(parameters, result, exception);
        return E_FAIL;
    };
    RaisedByGet();
    EXPECT_EQ(memory.Held(), 0);

    const BSTR kept = ::SysAllocString(L"seen");
    EXPECT_EQ(memory.Held(), 1) << "the count sees strings";
    ::SysFreeString(kept);
}

TEST_F(DispatchObjectTest, AFailingCallLeavesNoReferenceToItsArguments) {
    FailWith(E_FAIL);
    const Variant constant[] = {MakeHostObject(&other)};
    Argument arguments[] = {{constant[0]}};

    Raised([&] { object->Get(u"First", constant); });
    Raised([&] { object->Notify(u"First", arguments); });
    Raised([&] { object->Let(u"First", constant[0]); });

    EXPECT_EQ(other.references, 2u);
}

TEST_F(DispatchObjectTest, ACallMayLetGoOfTheObjectItself) {
    target.body = [this](DISPPARAMS&, VARIANT*, EXCEPINFO*) {
        object.reset();
        EXPECT_GE(target.references, 2u) << "the call itself holds the object";
        return target.calls.back().flags == DISPATCH_PROPERTYPUTREF ? DISP_E_MEMBERNOTFOUND : DISP_E_TYPEMISMATCH;
    };
    Argument arguments[] = {{true}};
    EXPECT_EQ(Raised([&] { object->Notify(u"First", arguments); }).number, kMismatch);
    object = MakeHostObject(&target);
    EXPECT_EQ(Raised([&] { object->Set(u"First", nullptr); }).number, kMismatch);
    object = MakeHostObject(&target);
    EXPECT_EQ(RaisedByGet().number, kMismatch);
}

TEST_F(DispatchObjectTest, IdentityIsTheObjectsNotTheReferences) {
    const HostObjectRef again = MakeHostObject(&target);
    const HostObjectRef stranger = MakeHostObject(&other);
    EXPECT_TRUE(object->IsSameAs(*again));
    EXPECT_FALSE(object->IsSameAs(*stranger));
    other.identity = &target;
    EXPECT_TRUE(object->IsSameAs(*stranger));
}

TEST_F(DispatchObjectTest, TheTypesNameComesFromTheTypeInformation) {
    EXPECT_EQ(object->TypeName(), u"");
    com_support::ComPtr<ICreateTypeLib2> library;
    com_support::ComPtr<ICreateTypeInfo> creator;
    com_support::ComPtr<ITypeInfo> picture;
    ASSERT_EQ(::CreateTypeLib2(SYS_WIN32, L"unsaved.tlb", library.Out()), S_OK);
    std::wstring name = L"PictureBox";
    ASSERT_EQ(library->CreateTypeInfo(name.data(), TKIND_DISPATCH, creator.Out()), S_OK);
    ASSERT_EQ(creator->QueryInterface(IID_ITypeInfo, picture.OutVoid()), S_OK);
    target.typeInfo = picture.Get();

    EXPECT_EQ(object->TypeName(), u"PictureBox");
}

}  // namespace
}  // namespace kwo::platform::windows

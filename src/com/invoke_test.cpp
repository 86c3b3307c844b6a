// Calls members that do what no member of the component does, with the type library's own descriptions.

#include <windows.h>
// after <windows.h>
#include <gtest/gtest.h>

#include <array>
#include <span>
#include <stdexcept>
#include <string>
#include <vector>

#include "com/server/class_info.h"
#include "com/server/error_report.h"
#include "com/server/invoke.h"
#include "com_support/exception_info.h"
#include "com_support/owned_variant.h"
#include "kwoutil.h"
#include "platform/component_error.h"
#include "support/stand_in.h"

namespace kwo::com {
namespace {

/// The last member that was called, by its place in the virtual table.
int theCalled = -1;

template <int Place>
HRESULT Called(void*, void* const*) {
    theCalled = Place;
    return S_OK;
}

/// Members of _KWOTimer that only say that they were called.
constexpr MemberThunk kTimerMembers[] = {
    {&Called<0>, 1, 0},  {&Called<1>, 1, 0},  {&Called<2>, 1, 0},  {&Called<3>, 1, 0},  {&Called<4>, 1, 0},
    {&Called<5>, 1, 0},  {&Called<6>, 1, 0},  {&Called<7>, 1, 0},  {&Called<8>, 1, 0},  {&Called<9>, 1, 0},
    {&Called<10>, 1, 0}, {&Called<11>, 2, 0}, {&Called<12>, 1, 0}, {&Called<13>, 1, 0}, {&Called<14>, 3, 0},
    {&Called<15>, 2, 0}, {&Called<16>, 2, 0},
};

const DispatchTable& Timer() {
    static ClassInfo info(CLSID_KWOTimer, IID__KWOTimer, nullptr, u"KWOTimer", kTimerMembers);
    return info.Table();
}

constexpr DISPID kItem = 0x40030000;

/// The place of the member that a put of `value` reaches.
int PutItem(VARIANT value, WORD flags) {
    DISPID put = DISPID_PROPERTYPUT;
    DISPPARAMS arguments = {&value, &put, 1, 1};
    theCalled = -1;
    EXPECT_EQ(InvokeMember(Timer(), nullptr, kItem, 0, flags, &arguments, nullptr, nullptr, nullptr), S_OK);
    return theCalled;
}

TEST(InvokePut, WithBothFlagsTheValueDecides) {
    constexpr int kLet = 1;
    constexpr int kSet = 2;
    constexpr WORD kBoth = DISPATCH_PROPERTYPUT | DISPATCH_PROPERTYPUTREF;
    test_support::StandIn<> object;
    VARIANT number = {};
    number.vt = VT_I4;
    VARIANT reference = {};
    reference.vt = VT_DISPATCH;
    reference.pdispVal = &object;
    VARIANT unknown = reference;
    unknown.vt = VT_UNKNOWN;
    VARIANT nothing = {};
    nothing.vt = VT_DISPATCH;
    EXPECT_EQ(PutItem(number, kBoth), kLet);
    EXPECT_EQ(PutItem(reference, kBoth), kSet);
    EXPECT_EQ(PutItem(unknown, kBoth), kSet);
    EXPECT_EQ(PutItem(nothing, kBoth), kSet);
    for (VARIANT* const held : {&number, &reference}) {
        VARIANT variable = {};
        variable.vt = VT_BYREF | VT_VARIANT;
        variable.pvarVal = held;
        EXPECT_EQ(PutItem(variable, kBoth), held == &number ? kLet : kSet);
        EXPECT_EQ(PutItem(*held, DISPATCH_PROPERTYPUT), kLet) << "one flag is what the caller means";
        EXPECT_EQ(PutItem(*held, DISPATCH_PROPERTYPUTREF), kSet);
    }
}

/// Describes _KWOSysMetrics, the class with the most members, in the same way.
const DispatchTable& Metrics() {
    static constexpr MemberThunk kMembers[] = {
        {&Called<0>, 1, 0},
        {&Called<1>, 1, 0},
#define DIMENSION(order, member, index, constant, axis) {&Called<1 + (order)>, 2, 0},
#define FLAG(order, member, index, constant) {&Called<1 + (order)>, 1, 0},
#define NUMBER(order, type, member, index, constant) {&Called<1 + (order)>, 1, 0},
#include "platform/metrics.def"
#undef DIMENSION
#undef FLAG
#undef NUMBER
    };
    static ClassInfo info(CLSID_KWOSysMetrics, IID__KWOSysMetrics, nullptr, u"KWOSysMetrics", kMembers);
    return info.Table();
}

TEST(DispatchTable, FindsTheIdsOfTheClassAndNoOthers) {
    constexpr DISPID kScaleMode = 0x6803001C;
    constexpr DISPID kFirstMetric = 0x60030024;
    constexpr DISPID kLastMetric = kFirstMetric + 4 * 70;
    const auto isMetric = [](DISPID id) { return id >= kFirstMetric && id <= kLastMetric && id % 4 == 0; };
    constexpr WORD kAnyUse = DISPATCH_METHOD | DISPATCH_PROPERTYGET | DISPATCH_PROPERTYPUT | DISPATCH_PROPERTYPUTREF;
    constexpr DISPID kMiddles[] = {kScaleMode, kFirstMetric, DISPID_VALUE};
    for (const DISPID middle : kMiddles) {
        for (DISPID id = middle - 0x1000; id < middle + 0x1000; ++id) {
            const DispatchMember* const found = Metrics().Find(id, kAnyUse);
            EXPECT_EQ(found != nullptr, id == kScaleMode || isMetric(id)) << std::hex << id;
            if (found != nullptr) {
                EXPECT_EQ(found->id, id);
            }
        }
    }
}

/// What is raised when the type library does not describe these members.
platform::ComponentError Mismatch(const IID& interfaceId, std::span<const MemberThunk> members) {
    ClassInfo info(CLSID_KWOTimer, interfaceId, nullptr, u"KWOTimer", members);
    try {
        info.Table();
    } catch (const platform::ComponentError& error) {
        return error;
    }
    return {};
}

TEST(DispatchTable, AMismatchWithTheTypeLibrarySaysWhatDiffers) {
    const std::span<const MemberThunk> all = kTimerMembers;
    std::vector<MemberThunk> others(all.begin(), all.end());
    others.back().argumentCount = 3;
    const struct {
        const IID& interfaceId;
        std::span<const MemberThunk> members;
        const char16_t* description;
    } rows[] = {
        {IID__KWOTimer, all.first(all.size() - 1), u"The type library has other members"},
        {IID__KWOTimer, others, u"A member has other arguments in the type library"},
        {DIID___KWOTimer, all, u"An interface is not dual"},
        {IID_IUnknown, all, u"The type library of the component cannot be read"},
    };
    for (const auto& row : rows) {
        const platform::ComponentError error = Mismatch(row.interfaceId, row.members);
        EXPECT_EQ(error.number, TYPE_E_ELEMENTNOTFOUND);
        EXPECT_EQ(error.description, row.description);
    }
}

/// Counts the automation strings in use.
class StringSpy final : public IMallocSpy {
public:
    STDMETHODIMP QueryInterface(REFIID, void** object) override {
        *object = static_cast<IMallocSpy*>(this);
        return S_OK;
    }
    STDMETHODIMP_(ULONG) AddRef() override { return 2; }
    STDMETHODIMP_(ULONG) Release() override { return 1; }
    STDMETHODIMP_(SIZE_T) PreAlloc(SIZE_T size) override { return size; }
    STDMETHODIMP_(void*) PostAlloc(void* block) override {
        ++inUse;
        return block;
    }
    STDMETHODIMP_(void*) PreFree(void* block, BOOL spied) override {
        if (spied && block != nullptr) --inUse;
        return block;
    }
    STDMETHODIMP_(void) PostFree(BOOL) override {}
    STDMETHODIMP_(SIZE_T) PreRealloc(void* block, SIZE_T size, void** newBlock, BOOL) override {
        *newBlock = block;
        return size;
    }
    STDMETHODIMP_(void*) PostRealloc(void* block, BOOL) override { return block; }
    STDMETHODIMP_(void*) PreGetSize(void* block, BOOL) override { return block; }
    STDMETHODIMP_(SIZE_T) PostGetSize(SIZE_T size, BOOL) override { return size; }
    STDMETHODIMP_(void*) PreDidAlloc(void* block, BOOL) override { return block; }
    STDMETHODIMP_(int) PostDidAlloc(void*, BOOL, int answer) override { return answer; }
    STDMETHODIMP_(void) PreHeapMinimize() override {}
    STDMETHODIMP_(void) PostHeapMinimize() override {}

    long inUse = 0;
};

HRESULT NeverCalled(void*, void* const*) {
    return E_UNEXPECTED;
}

/// Fails when it has written its result already.
HRESULT FailsLate(void*, void* const* arguments) {
    VARIANT& result = *static_cast<VARIANT*>(arguments[0]);
    result.vt = VT_I4;
    result.lVal = 7;
    return E_FAIL;
}

/// Changes its argument to something that is not a number, and returns a text.
HRESULT FindsText(void*, void* const* arguments) {
    Replace(*static_cast<BSTR*>(arguments[0]), u"no number");
    *static_cast<BSTR*>(arguments[1]) = NewString(u"the result");
    return S_OK;
}

/// Puts an array of three elements in the place of its argument.
HRESULT PutsAnotherArray(void*, void* const* arguments) {
    VARIANT& array = *static_cast<VARIANT*>(arguments[0]);
    // While the old one is there, so that it is elsewhere.
    SAFEARRAY* const other = ::SafeArrayCreateVector(VT_I2, 0, 3);
    ::VariantClear(&array);
    array.vt = VT_ARRAY | VT_I2;
    array.parray = other;
    return S_OK;
}

/// Describes _KWOUtility with these members in the places of KWO_FindInPath and KWO_SystemDir.
const DispatchTable& Utility() {
    static constexpr MemberThunk kMembers[] = {
        {&FindsText, 2, 0},   {&NeverCalled, 2, 0},      {&NeverCalled, 7, 0}, {&NeverCalled, 6, 0},
        {&NeverCalled, 1, 0}, {&PutsAnotherArray, 2, 0}, {&NeverCalled, 2, 0}, {&NeverCalled, 1, 0},
        {&NeverCalled, 1, 0}, {&NeverCalled, 1, 0},      {&NeverCalled, 1, 0},
    };
    static ClassInfo info(CLSID_KWOUtility, IID__KWOUtility, nullptr, u"KWOUtility", kMembers);
    return info.Table();
}

TEST(InvokeArgument, AVariableReceivesAnotherArray) {
    constexpr DISPID kSystemDir = 0x60030030;
    com_support::OwnedVariant variable;
    variable.vt = VT_ARRAY | VT_I2;
    variable.parray = ::SafeArrayCreateVector(VT_I2, 0, 1);
    VARIANT argument = {};
    argument.vt = VT_BYREF | VT_VARIANT;
    argument.pvarVal = &variable;
    DISPPARAMS arguments = {&argument, nullptr, 1, 0};

    EXPECT_EQ(InvokeMember(Utility(), nullptr, kSystemDir, 0, DISPATCH_METHOD, &arguments, nullptr, nullptr, nullptr),
              S_OK);

    ASSERT_EQ(variable.vt, VT_ARRAY | VT_I2);
    EXPECT_EQ(variable.parray->rgsabound[0].cElements, 3u);
}

TEST(InvokeResult, OfAMemberThatFailsLateIsEmpty) {
    static constexpr auto kMembers = [] {
        auto members = std::to_array(kTimerMembers);
        members[0] = {&FailsLate, 1, 0};
        return members;
    }();
    static ClassInfo info(CLSID_KWOTimer, IID__KWOTimer, nullptr, u"KWOTimer", kMembers);
    DISPPARAMS none = {};
    VARIANT result = {};

    EXPECT_EQ(InvokeMember(info.Table(), nullptr, kItem, 0, DISPATCH_PROPERTYGET, &none, &result, nullptr, nullptr),
              DISP_E_EXCEPTION);

    EXPECT_EQ(result.vt, VT_EMPTY);
}

TEST(InvokeResult, ThatIsWithheldIsFreed) {
    constexpr DISPID kFindInPath = 0x6003001C;
    const DispatchTable& utility = Utility();
    FARPROC noCache = GetProcAddress(LoadLibraryW(L"oleaut32.dll"), "SetOaNoCache");
    if (noCache != nullptr) reinterpret_cast<void(STDAPICALLTYPE*)()>(reinterpret_cast<void*>(noCache))();
    static StringSpy spy;
    ASSERT_EQ(CoRegisterMallocSpy(&spy), S_OK);
    LONG number = 7;
    VARIANT argument = {};
    argument.vt = VT_BYREF | VT_I4;
    argument.plVal = &number;
    DISPPARAMS arguments = {&argument, nullptr, 1, 0};
    VARIANT result = {};
    UINT bad = 99;

    EXPECT_EQ(InvokeMember(utility, nullptr, kFindInPath, 0, DISPATCH_METHOD, &arguments, &result, nullptr, &bad),
              DISP_E_TYPEMISMATCH);

    EXPECT_EQ(spy.inUse, 0);
    EXPECT_EQ(result.vt, VT_EMPTY);
    EXPECT_EQ(number, 7);
    EXPECT_EQ(bad, 0u);
    CoRevokeMallocSpy();
}

TEST(ErrorReport, NumbersOfTheRunTimeAreSixteenBitsAndOthersAreUnexpected) {
    EXPECT_EQ(ToHresult(1), static_cast<HRESULT>(0x800A0001));
    EXPECT_EQ(ToHresult(13), static_cast<HRESULT>(0x800A000D));
    EXPECT_EQ(ToHresult(65'535), static_cast<HRESULT>(0x800AFFFF));
    EXPECT_EQ(ToHresult(65'536), E_UNEXPECTED);
    EXPECT_EQ(ToHresult(INT32_MAX), E_UNEXPECTED);
    EXPECT_EQ(ToHresult(0), E_UNEXPECTED);
    EXPECT_EQ(ToHresult(-5), -5);
    EXPECT_EQ(ToHresult(INT32_MIN), INT32_MIN);
}

/// What a caller gets when a member's body raises `raised`.
template <class Raised>
HRESULT Reported(const Raised& raised) {
    return Guarded([] { return MemberName{u"KWOThing", u".Member", &IID_IDispatch}; }, [&] { throw raised; });
}

struct LeftError {
    Text source;
    Text description;
    Text helpFile;
    DWORD helpContext = 0;
};
LeftError TakeError() {
    com_support::ExceptionInfo info;
    FillExceptionInfo(E_FAIL, info);
    return {ToText(info.bstrSource), ToText(info.bstrDescription), ToText(info.bstrHelpFile), info.dwHelpContext};
}

TEST(ErrorReport, OutOfMemoryAndAnythingUnknownHaveTheirOwnCodesAndTexts) {
    EXPECT_EQ(Reported(std::bad_alloc()), E_OUTOFMEMORY);
    LeftError error = TakeError();
    EXPECT_EQ(error.source, u"KWOThing.Member");
    EXPECT_EQ(error.description, u"Out of memory");

    EXPECT_EQ(Reported(std::logic_error("a fault of our own")), E_UNEXPECTED);
    error = TakeError();
    EXPECT_EQ(error.source, u"KWOThing.Member");
    EXPECT_EQ(error.description, u"Unexpected failure");
    EXPECT_EQ(Reported(5), E_UNEXPECTED);
    TakeError();
}

TEST(ErrorReport, NamesTheInterfaceOfTheMember) {
    EXPECT_EQ(Reported(std::bad_alloc()), E_OUTOFMEMORY);
    com_support::ComPtr<IErrorInfo> error;
    ASSERT_EQ(::GetErrorInfo(0, error.Out()), S_OK);
    GUID interfaceId = {};
    EXPECT_EQ(error->GetGUID(&interfaceId), S_OK);
    EXPECT_TRUE(IsEqualGUID(interfaceId, IID_IDispatch));
}

TEST(ErrorReport, MisuseOfTheLibraryIsUnexpected) {
    const auto reported = [](auto body) {
        const HRESULT result = Guarded([] { return MemberName{u"KWOThing", u".Member", &IID_IDispatch}; }, body);
        TakeError();
        return result;
    };
    const Text text = u"text";

    EXPECT_EQ(reported([&] { static_cast<void>(text.at(text.size())); }), E_UNEXPECTED);
    EXPECT_EQ(reported([&] { static_cast<void>(text.substr(text.size() + 1)); }), E_UNEXPECTED);
    EXPECT_EQ(reported([] { std::vector<int>().reserve(SIZE_MAX); }), E_UNEXPECTED);
    EXPECT_EQ(reported([] { static_cast<void>(std::stoi("no number")); }), E_UNEXPECTED);
}

TEST(ErrorReport, CarriesHelpFileAndContext) {
    EXPECT_EQ(Reported(platform::ComponentError{7, u"a source", u"a text", u"a.hlp", 42}),
              static_cast<HRESULT>(0x800A0007));
    const LeftError error = TakeError();
    EXPECT_EQ(error.source, u"a source");
    EXPECT_EQ(error.description, u"a text");
    EXPECT_EQ(error.helpFile, u"a.hlp");
    EXPECT_EQ(error.helpContext, 42u);
}

}  // namespace
}  // namespace kwo::com

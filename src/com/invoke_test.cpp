// Calls members that do what no member of the component does, with the type library's own descriptions.

#include <windows.h>
// after <windows.h>
#include <gtest/gtest.h>

#include <stdexcept>
#include <vector>

#include "com/server/class_info.h"
#include "com/server/error_report.h"
#include "com/server/invoke.h"
#include "com_support/exception_info.h"
#include "kwoutil.h"
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

/// Describes _KWOTimer with members that only say that they were called.
const DispatchTable& Timer() {
    static constexpr MemberThunk kMembers[] = {
        {&Called<0>, 1, 0},  {&Called<1>, 1, 0},  {&Called<2>, 1, 0},  {&Called<3>, 1, 0},  {&Called<4>, 1, 0},
        {&Called<5>, 1, 0},  {&Called<6>, 1, 0},  {&Called<7>, 1, 0},  {&Called<8>, 1, 0},  {&Called<9>, 1, 0},
        {&Called<10>, 1, 0}, {&Called<11>, 2, 0}, {&Called<12>, 1, 0}, {&Called<13>, 1, 0}, {&Called<14>, 3, 0},
        {&Called<15>, 2, 0}, {&Called<16>, 2, 0},
    };
    static ClassInfo info(CLSID_KWOTimer, IID__KWOTimer, nullptr, u"KWOTimer", kMembers);
    return info.Table();
}

/// The place of the member that a put of `value` reaches.
int PutItem(VARIANT value, WORD flags) {
    constexpr DISPID kItem = 0x40030000;
    DISPID put = DISPID_PROPERTYPUT;
    DISPPARAMS arguments = {&value, &put, 1, 1};
    theCalled = -1;
    EXPECT_EQ(S_OK, InvokeMember(Timer(), nullptr, kItem, 0, flags, &arguments, nullptr, nullptr, nullptr));
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
    EXPECT_EQ(kLet, PutItem(number, kBoth));
    EXPECT_EQ(kSet, PutItem(reference, kBoth));
    EXPECT_EQ(kSet, PutItem(unknown, kBoth));
    EXPECT_EQ(kSet, PutItem(nothing, kBoth));
    for (VARIANT* const held : {&number, &reference}) {
        VARIANT variable = {};
        variable.vt = VT_BYREF | VT_VARIANT;
        variable.pvarVal = held;
        EXPECT_EQ(held == &number ? kLet : kSet, PutItem(variable, kBoth));
        EXPECT_EQ(kLet, PutItem(*held, DISPATCH_PROPERTYPUT)) << "one flag is what the caller means";
        EXPECT_EQ(kSet, PutItem(*held, DISPATCH_PROPERTYPUTREF));
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
    return E_NOTIMPL;
}

/// Changes its argument to something that is not a number, and returns a text.
HRESULT FindsText(void*, void* const* arguments) {
    Replace(*static_cast<BSTR*>(arguments[0]), u"no number");
    *static_cast<BSTR*>(arguments[1]) = NewString(u"the result");
    return S_OK;
}

/// Describes _KWOUtility with that member in the place of KWO_FindInPath.
const DispatchTable& Utility() {
    static constexpr MemberThunk kMembers[] = {
        {&FindsText, 2, 0},   {&NeverCalled, 2, 0}, {&NeverCalled, 7, 0}, {&NeverCalled, 6, 0},
        {&NeverCalled, 1, 0}, {&NeverCalled, 2, 0}, {&NeverCalled, 2, 0}, {&NeverCalled, 1, 0},
        {&NeverCalled, 1, 0}, {&NeverCalled, 1, 0}, {&NeverCalled, 1, 0},
    };
    static ClassInfo info(CLSID_KWOUtility, IID__KWOUtility, nullptr, u"KWOUtility", kMembers);
    return info.Table();
}

TEST(InvokeResult, ThatIsWithheldIsFreed) {
    constexpr DISPID kFindInPath = 0x6003001C;
    const DispatchTable& utility = Utility();
    FARPROC noCache = GetProcAddress(LoadLibraryW(L"oleaut32.dll"), "SetOaNoCache");
    if (noCache != nullptr) reinterpret_cast<void(STDAPICALLTYPE*)()>(reinterpret_cast<void*>(noCache))();
    static StringSpy spy;
    ASSERT_EQ(S_OK, CoRegisterMallocSpy(&spy));
    LONG number = 7;
    VARIANT argument = {};
    argument.vt = VT_BYREF | VT_I4;
    argument.plVal = &number;
    DISPPARAMS arguments = {&argument, nullptr, 1, 0};
    VARIANT result = {};
    UINT bad = 99;

    EXPECT_EQ(DISP_E_TYPEMISMATCH,
              InvokeMember(utility, nullptr, kFindInPath, 0, DISPATCH_METHOD, &arguments, &result, nullptr, &bad));

    EXPECT_EQ(0, spy.inUse);
    EXPECT_EQ(VT_EMPTY, result.vt);
    EXPECT_EQ(7, number);
    EXPECT_EQ(0u, bad);
    CoRevokeMallocSpy();
}

TEST(ErrorReport, NumbersOfTheRunTimeAreSixteenBitsAndOthersAreUnexpected) {
    EXPECT_EQ(static_cast<HRESULT>(0x800A0001), ToHresult(1));
    EXPECT_EQ(static_cast<HRESULT>(0x800A000D), ToHresult(13));
    EXPECT_EQ(static_cast<HRESULT>(0x800AFFFF), ToHresult(65'535));
    EXPECT_EQ(E_UNEXPECTED, ToHresult(65'536));
    EXPECT_EQ(E_UNEXPECTED, ToHresult(INT32_MAX));
    EXPECT_EQ(E_UNEXPECTED, ToHresult(0));
    EXPECT_EQ(-5, ToHresult(-5));
    EXPECT_EQ(INT32_MIN, ToHresult(INT32_MIN));
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
    EXPECT_EQ(E_OUTOFMEMORY, Reported(std::bad_alloc()));
    LeftError error = TakeError();
    EXPECT_EQ(u"KWOThing.Member", error.source);
    EXPECT_EQ(u"Out of memory", error.description);

    EXPECT_EQ(E_UNEXPECTED, Reported(std::logic_error("a fault of our own")));
    error = TakeError();
    EXPECT_EQ(u"KWOThing.Member", error.source);
    EXPECT_EQ(u"Unexpected failure", error.description);
    EXPECT_EQ(E_UNEXPECTED, Reported(5));
    TakeError();
}

TEST(ErrorReport, CarriesHelpFileAndContext) {
    EXPECT_EQ(static_cast<HRESULT>(0x800A0007),
              Reported(platform::ComponentError{7, u"a source", u"a text", u"a.hlp", 42}));
    const LeftError error = TakeError();
    EXPECT_EQ(u"a source", error.source);
    EXPECT_EQ(u"a text", error.description);
    EXPECT_EQ(u"a.hlp", error.helpFile);
    EXPECT_EQ(42u, error.helpContext);
}

}  // namespace
}  // namespace kwo::com

// The owners of variants, arrays, type descriptions and failures, and the path of a module.
#include <windows.h>
// after <windows.h>
#include <gtest/gtest.h>

#include <string>

#include "com_support/bstr.h"
#include "com_support/com_ptr.h"
#include "com_support/exception_info.h"
#include "com_support/module_path.h"
#include "com_support/owned_array.h"
#include "com_support/owned_variant.h"
#include "com_support/type_description.h"
#include "support/stand_in.h"

namespace kwo::com_support {
namespace {

using test_support::StandIn;

VARIANT Holding(IDispatch& object) {
    VARIANT value;
    ::VariantInit(&value);
    value.vt = VT_DISPATCH;
    value.pdispVal = &object;
    object.AddRef();
    return value;
}

TEST(OwnedVariantTest, LetsGoOfWhatItHoldsOnceAndOnlyOnce) {
    StandIn object;
    {
        OwnedVariant first = OwnedVariant::Adopt(Holding(object));
        OwnedVariant second(std::move(first));
        EXPECT_EQ(first.vt, VT_EMPTY);
        first = std::move(second);
        EXPECT_EQ(second.vt, VT_EMPTY);
        EXPECT_EQ(object.references, 1u);
    }
    EXPECT_EQ(object.references, 0u);
}

TEST(OwnedVariantTest, AssignmentLetsGoOfTheOldValue) {
    StandIn before;
    StandIn after;
    OwnedVariant value = OwnedVariant::Adopt(Holding(before));
    OwnedVariant source = OwnedVariant::Adopt(Holding(after));
    value = std::move(source);
    EXPECT_EQ(before.references, 0u);
    EXPECT_EQ(after.references, 1u);
    EXPECT_EQ(value.pdispVal, &after);
}

TEST(OwnedVariantTest, OutLetsGoAndDetachDoesNot) {
    StandIn object;
    OwnedVariant value = OwnedVariant::Adopt(Holding(object));
    EXPECT_EQ(value.Out()->vt, VT_EMPTY);
    EXPECT_EQ(object.references, 0u);

    OwnedVariant other = OwnedVariant::Adopt(Holding(object));
    VARIANT raw = other.Detach();
    EXPECT_EQ(other.vt, VT_EMPTY);
    EXPECT_EQ(object.references, 1u);
    ::VariantClear(&raw);
}

TEST(OwnedVariantTest, WhatItRefersToIsNotItsOwn) {
    StandIn object;
    object.AddRef();
    IDispatch* variable = &object;
    VARIANT reference;
    ::VariantInit(&reference);
    reference.vt = VT_BYREF | VT_DISPATCH;
    reference.ppdispVal = &variable;
    { const OwnedVariant value = OwnedVariant::Adopt(reference); }
    EXPECT_EQ(object.references, 1u);
}

TEST(OwnedArrayTest, HasTheBoundsAndTheTypeThatItWasMadeWith) {
    const OwnedArray array(VT_BSTR, -2, 3);
    VARTYPE type = VT_EMPTY;
    LONG lowest = 0;
    LONG highest = 0;
    EXPECT_EQ(::SafeArrayGetVartype(array.Get(), &type), S_OK);
    EXPECT_EQ(::SafeArrayGetLBound(array.Get(), 1, &lowest), S_OK);
    EXPECT_EQ(::SafeArrayGetUBound(array.Get(), 1, &highest), S_OK);
    EXPECT_EQ(type, VT_BSTR);
    EXPECT_EQ(lowest, -2);
    EXPECT_EQ(highest, 0);
}

TEST(OwnedArrayTest, FreesItsElementsAtTheEnd) {
    StandIn object;
    {
        OwnedArray first(VT_DISPATCH, 0, 1);
        LONG place = 0;
        ASSERT_EQ(::SafeArrayPutElement(first.Get(), &place, &object), S_OK);
        OwnedArray second(std::move(first));
        EXPECT_EQ(first.Get(), nullptr);
        first = std::move(second);
        EXPECT_EQ(object.references, 1u);
    }
    EXPECT_EQ(object.references, 0u);
}

TEST(OwnedArrayTest, RaisesWhenTheSystemMakesNone) {
    EXPECT_THROW(OwnedArray(VT_EMPTY, 0, 1), std::bad_alloc);
}

TEST(ArrayElementsTest, LockTheArrayWhileTheyLive) {
    const OwnedArray array(VT_I2, 5, 2);
    SAFEARRAYBOUND smaller = {1, 5};
    {
        const ArrayElements<SHORT> elements(array.Get());
        ASSERT_EQ(elements.Status(), S_OK);
        elements[1] = 7;
        EXPECT_EQ(elements.First()[1], 7);
        EXPECT_EQ(::SafeArrayRedim(array.Get(), &smaller), DISP_E_ARRAYISLOCKED);
    }
    EXPECT_EQ(::SafeArrayRedim(array.Get(), &smaller), S_OK);
}

TEST(ArrayElementsTest, SayWhenThereIsNoArray) {
    EXPECT_TRUE(FAILED(ArrayElements<SHORT>(nullptr).Status()));
}

/// A type's description that counts what it has lent out. Only the functions that the test calls do anything.
class CountingType final : public ITypeInfo {
public:
    STDMETHODIMP QueryInterface(REFIID, void**) override { return E_NOINTERFACE; }
    STDMETHODIMP_(ULONG) AddRef() override { return 2; }
    STDMETHODIMP_(ULONG) Release() override { return 1; }
    STDMETHODIMP GetTypeAttr(TYPEATTR** attributes) override {
        if (refuses) return TYPE_E_ELEMENTNOTFOUND;
        ++lent;
        *attributes = &mAttributes;
        return S_OK;
    }
    STDMETHODIMP_(void) ReleaseTypeAttr(TYPEATTR*) override { --lent; }
    STDMETHODIMP GetFuncDesc(UINT index, FUNCDESC** function) override {
        if (index != 3) return TYPE_E_ELEMENTNOTFOUND;
        ++lent;
        *function = &mFunction;
        return S_OK;
    }
    STDMETHODIMP_(void) ReleaseFuncDesc(FUNCDESC*) override { --lent; }
    STDMETHODIMP GetTypeComp(ITypeComp**) override { return E_NOTIMPL; }
    STDMETHODIMP GetVarDesc(UINT, VARDESC**) override { return E_NOTIMPL; }
    STDMETHODIMP GetNames(MEMBERID, BSTR*, UINT, UINT*) override { return E_NOTIMPL; }
    STDMETHODIMP GetRefTypeOfImplType(UINT, HREFTYPE*) override { return E_NOTIMPL; }
    STDMETHODIMP GetImplTypeFlags(UINT, INT*) override { return E_NOTIMPL; }
    STDMETHODIMP GetIDsOfNames(LPOLESTR*, UINT, MEMBERID*) override { return E_NOTIMPL; }
    STDMETHODIMP Invoke(PVOID, MEMBERID, WORD, DISPPARAMS*, VARIANT*, EXCEPINFO*, UINT*) override { return E_NOTIMPL; }
    STDMETHODIMP GetDocumentation(MEMBERID, BSTR*, BSTR*, DWORD*, BSTR*) override { return E_NOTIMPL; }
    STDMETHODIMP GetDllEntry(MEMBERID, INVOKEKIND, BSTR*, BSTR*, WORD*) override { return E_NOTIMPL; }
    STDMETHODIMP GetRefTypeInfo(HREFTYPE, ITypeInfo**) override { return E_NOTIMPL; }
    STDMETHODIMP AddressOfMember(MEMBERID, INVOKEKIND, PVOID*) override { return E_NOTIMPL; }
    STDMETHODIMP CreateInstance(IUnknown*, REFIID, PVOID*) override { return E_NOTIMPL; }
    STDMETHODIMP GetMops(MEMBERID, BSTR*) override { return E_NOTIMPL; }
    STDMETHODIMP GetContainingTypeLib(ITypeLib**, UINT*) override { return E_NOTIMPL; }
    STDMETHODIMP_(void) ReleaseVarDesc(VARDESC*) override {}

    bool refuses = false;
    int lent = 0;

private:
    TYPEATTR mAttributes = {};
    FUNCDESC mFunction = {};
};

TEST(TypeDescriptionTest, IsGivenBackAtTheEnd) {
    CountingType type;
    {
        const TypeAttributes attributes(type);
        EXPECT_TRUE(attributes);
        EXPECT_EQ(attributes.Status(), S_OK);
        EXPECT_EQ(attributes->cFuncs, 0);
        const FunctionDescription function(type, 3);
        EXPECT_TRUE(function);
        EXPECT_EQ(type.lent, 2);
    }
    EXPECT_EQ(type.lent, 0);
}

TEST(TypeDescriptionTest, WhatIsNotLentIsNotGivenBack) {
    CountingType type;
    type.refuses = true;
    {
        const TypeAttributes attributes(type);
        EXPECT_FALSE(attributes);
        EXPECT_EQ(attributes.Status(), TYPE_E_ELEMENTNOTFOUND);
        EXPECT_FALSE(FunctionDescription(type, 4));
    }
    EXPECT_EQ(type.lent, 0);
}

HRESULT STDAPICALLTYPE FillInDeferred(EXCEPINFO* asked) {
    ++asked->wReserved;
    asked->bstrSource = ::SysAllocString(L"the object");
    return S_OK;
}

TEST(ExceptionInfoTest, AsksOnceForTextsThatWereDeferred) {
    ExceptionInfo info;
    info.Complete();
    EXPECT_EQ(info.bstrSource, nullptr);
    info.wReserved = 0;
    info.pfnDeferredFillIn = FillInDeferred;
    info.Complete();
    info.Complete();
    EXPECT_EQ(View(info.bstrSource), L"the object");
    EXPECT_EQ(info.wReserved, 1);
}

TEST(ModulePathTest, IsTheProgramsOwnForNull) {
    wchar_t expected[1024] = {};
    ASSERT_NE(::GetModuleFileNameW(nullptr, expected, 1024), 0u);
    EXPECT_EQ(ModulePath(nullptr), expected);
    EXPECT_EQ(ModulePath(::GetModuleHandleW(nullptr)), expected);
}

TEST(ModulePathTest, MayBeLongerThanTheFirstRoomForIt) {
    wchar_t temporary[MAX_PATH] = {};
    ASSERT_NE(::GetTempPathW(MAX_PATH, temporary), 0u);
    const std::wstring outer = L"\\\\?\\" + std::wstring(temporary) + std::wstring(120, L'a');
    const std::wstring inner = outer + L"\\" + std::wstring(120, L'b');
    const std::wstring copy = inner + L"\\copy of this program.dll";
    ASSERT_GT(copy.size(), std::size_t{MAX_PATH});
    ::CreateDirectoryW(outer.c_str(), nullptr);
    ::CreateDirectoryW(inner.c_str(), nullptr);
    EXPECT_TRUE(::CopyFileW(ModulePath(nullptr).c_str(), copy.c_str(), FALSE));

    const HMODULE module = ::LoadLibraryExW(copy.c_str(), nullptr, DONT_RESOLVE_DLL_REFERENCES);
    EXPECT_NE(module, nullptr);
    const std::wstring path = ModulePath(module);
    ::FreeLibrary(module);
    EXPECT_TRUE(::DeleteFileW(copy.c_str()));
    ::RemoveDirectoryW(inner.c_str());
    ::RemoveDirectoryW(outer.c_str());

    EXPECT_GT(path.size(), std::size_t{MAX_PATH});
    EXPECT_TRUE(path.ends_with(L"copy of this program.dll"));
}

TEST(ModulePathTest, IsEmptyForWhatIsNoModule) {
    EXPECT_EQ(ModulePath(reinterpret_cast<HMODULE>(std::uintptr_t{0x10000} * 3)), L"");
}

}  // namespace
}  // namespace kwo::com_support

#include "registry_sandbox.h"
#include "type_library_dump.h"

namespace kwo::com_test {
/// The slots of the registry class as an early-bound client compiles them; typed by hand like the list of members.
/// Not in an unnamed namespace: there the compiler concludes that nothing can implement it.
struct RegistrySlots : IDispatch {
    virtual HRESULT STDMETHODCALLTYPE GetValueEx(LONG* key, BSTR* valueName, VARIANT fallback, VARIANT* result) = 0;
    virtual HRESULT STDMETHODCALLTYPE DeleteKey(LONG* root, BSTR* keyName, LONG* status) = 0;
    virtual HRESULT STDMETHODCALLTYPE DeleteValue(LONG* root, BSTR* keyName, BSTR* valueName, LONG* status) = 0;
    virtual HRESULT STDMETHODCALLTYPE CreateKey(LONG* root, BSTR* keyName, LONG* handle) = 0;
    virtual HRESULT STDMETHODCALLTYPE SetValue(LONG* root, BSTR* keyName, BSTR* valueName, BSTR* value,
                                               LONG* status) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetValue(LONG* root, BSTR* keyName, BSTR* valueName, BSTR* value,
                                               LONG* status) = 0;
};

namespace {

class EarlyBoundRegistry : public RegistrySandbox {
protected:
    void SetUp() override {
        RegistrySandbox::SetUp();
        const ComPtr<ITypeLib> library = TypeLibraryOfTheDll();
        const ComPtr<ITypeInfo> info = TypeInfoOf(library.Get(), L"_KWORegistry");
        ASSERT_TRUE(info);
        ASSERT_EQ(Hex(mRegistry->QueryInterface(TypeAttributes(*info)->guid, mSlots.OutVoid())), Hex(S_OK));
        TakeErrorObject();
    }

    LONG mRoot = kCurrentUser;
    Bstr mKeyName{kSandbox};
    Bstr mValueName{L"name"};
    Bstr mValue{L"value"};
    LONG mStatus = 12345;
    ComPtr<RegistrySlots> mSlots;
};

TEST_F(EarlyBoundRegistry, SetsAndGetsAValue) {
    ASSERT_EQ(Hex(mSlots->SetValue(&mRoot, mKeyName.InOut(), mValueName.InOut(), mValue.InOut(), &mStatus)), Hex(S_OK));
    EXPECT_EQ(mStatus, ERROR_SUCCESS);
    Bstr read(L"before");
    ASSERT_EQ(Hex(mSlots->GetValue(&mRoot, mKeyName.InOut(), mValueName.InOut(), read.InOut(), &mStatus)), Hex(S_OK));
    EXPECT_EQ(mStatus, ERROR_SUCCESS);
    EXPECT_EQ(read.Text(), L"value");
    EXPECT_EQ(mRoot, kCurrentUser);
    EXPECT_EQ(mKeyName.Text(), kSandbox);
    EXPECT_EQ(mValueName.Text(), L"name");
}

TEST_F(EarlyBoundRegistry, CreatesReadsAndDeletes) {
    LONG handle = 0;
    LONG root = Handle();
    Bstr below(L"below");
    ASSERT_EQ(Hex(mSlots->CreateKey(&root, below.InOut(), &handle)), Hex(S_OK));
    ASSERT_NE(handle, 0);
    RegSetValueExW(reinterpret_cast<HKEY>(static_cast<std::intptr_t>(handle)), L"name", 0, REG_SZ,
                   reinterpret_cast<const BYTE*>(L"text"), 10);
    Var result;
    ASSERT_EQ(Hex(mSlots->GetValueEx(&handle, mValueName.InOut(), Var(L"default"), &result)), Hex(S_OK));
    EXPECT_EQ(result.Text(), L"text");
    ASSERT_EQ(Hex(mSlots->DeleteValue(&root, below.InOut(), mValueName.InOut(), &mStatus)), Hex(S_OK));
    EXPECT_EQ(mStatus, ERROR_SUCCESS);
    RegCloseKey(reinterpret_cast<HKEY>(static_cast<std::intptr_t>(handle)));
    ASSERT_EQ(Hex(mSlots->DeleteKey(&root, below.InOut(), &mStatus)), Hex(S_OK));
    EXPECT_EQ(mStatus, ERROR_SUCCESS);
    EXPECT_FALSE(KeyExists(L"below"));
}

TEST_F(EarlyBoundRegistry, ANullStringIsAnEmptyString) {
    Bstr null;
    Bstr read;
    PutText(L"", L"own");

    ASSERT_EQ(Hex(mSlots->GetValue(&mRoot, mKeyName.InOut(), null.InOut(), read.InOut(), &mStatus)), Hex(S_OK));
    EXPECT_EQ(read.Text(), L"own");
}

TEST_F(EarlyBoundRegistry, AFailedReadReplacesTheOutputByEmptyText) {
    Bstr read(L"before");

    ASSERT_EQ(Hex(mSlots->GetValue(&mRoot, mKeyName.InOut(), mValueName.InOut(), read.InOut(), &mStatus)), Hex(S_OK));
    EXPECT_EQ(mStatus, ERROR_FILE_NOT_FOUND);
    EXPECT_EQ(read.Text(), L"");
}

TEST_F(EarlyBoundRegistry, EveryNullPointerIsAnErrorWithADescription) {
    PutText(L"kept", L"kept");
    ASSERT_EQ(Hex(Call(mRegistry.Get(), L"KWO_RegSetValue", {Handle(), L"child", L"n", L"v"}).status), Hex(S_OK));
    Bstr child(std::wstring(kSandbox) + L"\\child");
    Bstr none(std::wstring(kSandbox) + L"\\none");
    Bstr kept(L"kept");
    LONG* const root = &mRoot;
    BSTR* const key = mKeyName.InOut();
    BSTR* const name = mValueName.InOut();
    BSTR* const value = mValue.InOut();
    LONG* const status = &mStatus;
    Var result;
    const Var fallback(1);
    RegistrySlots* const slots = mSlots.Get();
    const auto refused = [](HRESULT outcome, int row) {
        EXPECT_EQ(Hex(outcome), Hex(E_POINTER)) << row;
        const ErrorObject error = TakeErrorObject();
        EXPECT_TRUE(error.present) << row;
        EXPECT_NE(error.description, L"") << row;
        EXPECT_NE(error.source, L"") << row;
    };

    refused(slots->GetValueEx(nullptr, name, fallback, &result), 1);
    refused(slots->GetValueEx(root, nullptr, fallback, &result), 2);
    refused(slots->GetValueEx(root, name, fallback, nullptr), 3);
    refused(slots->DeleteKey(nullptr, child.InOut(), status), 4);
    refused(slots->DeleteKey(root, nullptr, status), 5);
    refused(slots->DeleteKey(root, child.InOut(), nullptr), 6);
    refused(slots->DeleteValue(nullptr, key, name, status), 7);
    refused(slots->DeleteValue(root, nullptr, name, status), 8);
    refused(slots->DeleteValue(root, key, nullptr, status), 9);
    refused(slots->DeleteValue(root, key, kept.InOut(), nullptr), 10);
    refused(slots->CreateKey(nullptr, key, status), 11);
    refused(slots->CreateKey(root, nullptr, status), 12);
    refused(slots->CreateKey(root, none.InOut(), nullptr), 13);
    refused(slots->SetValue(nullptr, key, name, value, status), 14);
    refused(slots->SetValue(root, nullptr, name, value, status), 15);
    refused(slots->SetValue(root, key, nullptr, value, status), 16);
    refused(slots->SetValue(root, key, name, nullptr, status), 17);
    refused(slots->SetValue(root, key, name, value, nullptr), 18);
    refused(slots->GetValue(nullptr, key, name, value, status), 19);
    refused(slots->GetValue(root, nullptr, name, value, status), 20);
    refused(slots->GetValue(root, key, nullptr, value, status), 21);
    refused(slots->GetValue(root, key, name, nullptr, status), 22);
    refused(slots->GetValue(root, key, name, value, nullptr), 23);

    // Nothing may be done before all pointers are known to be good.
    EXPECT_TRUE(KeyExists(L"child"));
    EXPECT_FALSE(KeyExists(L"none"));
    EXPECT_NE(StoredBytes(L"kept"), "");
    EXPECT_EQ(StoredBytes(L"name"), "");
    EXPECT_EQ(mValue.Text(), L"value");
}

TEST_F(EarlyBoundRegistry, ASuccessLeavesNoErrorObject) {
    mSlots->DeleteKey(nullptr, mKeyName.InOut(), &mStatus);
    TakeErrorObject();
    mSlots->GetValue(&mRoot, mKeyName.InOut(), mValueName.InOut(), mValue.InOut(), &mStatus);

    EXPECT_FALSE(TakeErrorObject().present);
}

TEST_F(EarlyBoundRegistry, AFallbackByReferenceIsLookedThrough) {
    Var fallback(L"default");
    Var result;
    LONG handle = Handle();

    ASSERT_EQ(Hex(mSlots->GetValueEx(&handle, mValueName.InOut(), Var::Ref(&fallback), &result)), Hex(S_OK));
    EXPECT_EQ(result.Text(), L"default");
}

/// Arguments for one early-bound call described by the type library: storage for every parameter.
class GenericCall {
public:
    GenericCall(ITypeInfo* slots, UINT index) : mFunction(slots, index) {
        const auto count = static_cast<std::size_t>(mFunction->cParams);
        mStorage.resize(count);
        mArguments.resize(count);
        for (std::size_t i = 0; i < count; ++i) {
            const TYPEDESC& type = mFunction->lprgelemdescParam[i].tdesc;
            VARIANT& argument = mArguments[i];
            if (IsPointer(i)) {
                // A variant is as large as the storage, everything else lies at its start.
                argument.vt = VT_BYREF | VT_UI1;
                argument.byref = &mStorage[i];
            } else if (type.vt == VT_PTR) {
                argument.vt = VT_UNKNOWN;
            } else {
                argument.vt = type.vt;
            }
        }
    }
    std::size_t Count() const { return mArguments.size(); }
    /// By reference, as opposed to a value or an object.
    bool IsPointer(std::size_t i) const {
        const ELEMDESC& parameter = mFunction->lprgelemdescParam[i];
        return parameter.tdesc.vt == VT_PTR && (parameter.paramdesc.wParamFlags & PARAMFLAG_FOUT) != 0;
    }
    bool IsOptional(std::size_t i) const {
        return (mFunction->lprgelemdescParam[i].paramdesc.wParamFlags & PARAMFLAG_FOPT) != 0;
    }
    void MakeNull(std::size_t i) { mArguments[i].byref = nullptr; }

    HRESULT Run(IUnknown* object) {
        std::vector<VARTYPE> types;
        std::vector<VARIANTARG*> pointers;
        for (VARIANT& argument : mArguments) {
            types.push_back(argument.vt);
            pointers.push_back(&argument);
        }
        Var result;
        const HRESULT called = DispCallFunc(object, static_cast<ULONG_PTR>(mFunction->oVft), CC_STDCALL, VT_ERROR,
                                            static_cast<UINT>(types.size()), types.data(), pointers.data(), &result);
        return SUCCEEDED(called) ? result.scode : called;
    }

private:
    Function mFunction;
    std::vector<VARIANT> mStorage;
    std::vector<VARIANT> mArguments;
};

class EveryClassEarlyBound : public ::testing::TestWithParam<std::wstring> {
protected:
    void SetUp() override {
        const ComPtr<ITypeLib> library = TypeLibraryOfTheDll();
        ASSERT_TRUE(library);
        const ComPtr<ITypeInfo> info = TypeInfoOf(library.Get(), L"_" + GetParam());
        ASSERT_TRUE(info);
        mSlots = SlotView(info.Get());
        ASSERT_TRUE(mSlots);
        const ComPtr<IDispatch> object = Create(GetParam());
        mObject = As<IUnknown>(object.Get(), TypeAttributes(*info)->guid);
        ASSERT_TRUE(mObject);
        TakeErrorObject();
    }
    /// The callback classes' methods do nothing, so they look at nothing.
    static bool HasEmptyMembers(const std::wstring& name) { return name == L"IKWOTimer" || name == L"IKWOAlarm"; }
    std::string Name(UINT index) const { return Narrow(GetParam()) + '.' + Function(mSlots.Get(), index).Names()[0]; }
    /// As errors name it: a property says what was done with it.
    std::string Source(UINT index) const {
        switch (Function(mSlots.Get(), index)->invkind) {
            case INVOKE_PROPERTYGET:
                return Name(index) + " (Get)";
            case INVOKE_PROPERTYPUT:
                return Name(index) + " (Let)";
            case INVOKE_PROPERTYPUTREF:
                return Name(index) + " (Set)";
            default:
                return Name(index);
        }
    }

    ComPtr<ITypeInfo> mSlots;
    ComPtr<IUnknown> mObject;
};

INSTANTIATE_TEST_SUITE_P(Classes, EveryClassEarlyBound, ::testing::ValuesIn(ClassNames()),
                         [](const auto& parameter) { return Narrow(parameter.param); });

TEST_P(EveryClassEarlyBound, NullForARequiredArgumentOrResultIsAnError) {
    for (UINT f = 0; f < TypeAttributes(*mSlots)->cFuncs; ++f) {
        for (std::size_t i = 0; i < GenericCall(mSlots.Get(), f).Count(); ++i) {
            GenericCall call(mSlots.Get(), f);
            if (!call.IsPointer(i) || call.IsOptional(i)) continue;
            call.MakeNull(i);
            const HRESULT status = call.Run(mObject.Get());
            const ErrorObject error = TakeErrorObject();
            if (HasEmptyMembers(GetParam())) {
                EXPECT_EQ(Hex(status), Hex(S_OK)) << Name(f);
                continue;
            }
            EXPECT_EQ(Hex(status), Hex(E_POINTER)) << Name(f) << " argument " << i;
            EXPECT_NE(error.description, L"") << Name(f) << " argument " << i;
            EXPECT_EQ(Narrow(error.source), Source(f)) << "argument " << i;
        }
    }
}

}  // namespace
}  // namespace kwo::com_test

#include "com_test.h"
#include "dll_under_test.h"
#include "type_library_dump.h"

namespace kwo::com_test {
namespace {

CLSID ClassId(const std::wstring& className) {
    CLSID id = {};
    CLSIDFromProgID((L"KWOUtil." + className).c_str(), &id);
    return id;
}

/// The identifier that the type library gives to a type; zero when it has none of that name.
GUID IdentifierOf(const std::wstring& typeName) {
    const ComPtr<ITypeLib> library = TypeLibraryOfTheDll();
    const ComPtr<ITypeInfo> info = library ? TypeInfoOf(library.Get(), typeName) : ComPtr<ITypeInfo>();
    if (!info) return {};
    return TypeAttributes(*info)->guid;
}

const GUID kNobodysInterface = {0x1c3f50f1, 0x2b5e, 0x4f3a, {0x9d, 0x0e, 0x51, 0x6a, 0x77, 0x30, 0x2c, 0x11}};

class EveryClass : public ::testing::TestWithParam<std::wstring> {};

INSTANTIATE_TEST_SUITE_P(Classes, EveryClass, ::testing::ValuesIn(ClassNames()),
                         [](const auto& parameter) { return Narrow(parameter.param); });

TEST_P(EveryClass, ProgrammaticIdentifierNamesTheClassOfTheTypeLibrary) {
    EXPECT_TRUE(IdentifierOf(GetParam()) == ClassId(GetParam()));
}

TEST_P(EveryClass, IsCreatedByItsProgrammaticIdentifier) {
    EXPECT_TRUE(Create(GetParam()));
}

TEST_P(EveryClass, EachCreationMakesAnotherObject) {
    const ComPtr<IDispatch> first = Create(GetParam());
    const ComPtr<IDispatch> second = Create(GetParam());

    EXPECT_NE(first.Get(), second.Get());
}

TEST_P(EveryClass, RefusesAggregation) {
    Probe outer;
    ComPtr<IUnknown> inner;

    EXPECT_EQ(Hex(CLASS_E_NOAGGREGATION),
              Hex(CoCreateInstance(ClassId(GetParam()), &outer, CLSCTX_INPROC_SERVER, IID_IUnknown, inner.OutVoid())));
    EXPECT_FALSE(inner);
    EXPECT_EQ(0u, outer.references);
}

TEST_P(EveryClass, CreationForAnUnknownInterfaceLeavesNull) {
    void* object = this;

    EXPECT_EQ(Hex(E_NOINTERFACE),
              Hex(CoCreateInstance(ClassId(GetParam()), nullptr, CLSCTX_INPROC_SERVER, kNobodysInterface, &object)));
    EXPECT_EQ(nullptr, object);
}

TEST_P(EveryClass, ClassObjectChecksItsOutPointers) {
    Library library;
    ComPtr<IClassFactory> factory;
    ASSERT_EQ(Hex(S_OK), Hex(library.GetClassObject(ClassId(GetParam()), IID_IClassFactory, factory.OutVoid())));

    EXPECT_EQ(Hex(E_POINTER), Hex(factory->CreateInstance(nullptr, IID_IUnknown, nullptr)));
    EXPECT_EQ(Hex(E_POINTER), Hex(factory->QueryInterface(IID_IUnknown, nullptr)));
    const HRESULT nullClassObject = library.GetClassObject(ClassId(GetParam()), IID_IClassFactory, nullptr);
    EXPECT_TRUE(nullClassObject == E_POINTER || nullClassObject == E_INVALIDARG) << Hex(nullClassObject);
    void* other = this;
    EXPECT_EQ(Hex(E_NOINTERFACE), Hex(library.GetClassObject(ClassId(GetParam()), kNobodysInterface, &other)));
    EXPECT_EQ(nullptr, other);
}

TEST_P(EveryClass, HasItsDefaultInterface) {
    const ComPtr<IDispatch> object = Create(GetParam());
    ASSERT_TRUE(object);

    EXPECT_TRUE(As<IDispatch>(object.Get(), IdentifierOf(L"_" + GetParam())));
}

TEST_P(EveryClass, HasNoOtherClassesInterface) {
    const ComPtr<IDispatch> object = Create(GetParam());
    ASSERT_TRUE(object);
    for (const std::wstring& other : ClassNames()) {
        if (other == GetParam()) continue;
        void* foreign = this;
        EXPECT_EQ(Hex(E_NOINTERFACE), Hex(object->QueryInterface(IdentifierOf(L"_" + other), &foreign)));
        EXPECT_EQ(nullptr, foreign) << Narrow(other);
    }
}

TEST_P(EveryClass, OnlyTheTimerRaisesEvents) {
    const ComPtr<IDispatch> object = Create(GetParam());
    ASSERT_TRUE(object);

    EXPECT_EQ(GetParam() == L"KWOTimer",
              static_cast<bool>(As<IConnectionPointContainer>(object.Get(), IID_IConnectionPointContainer)));
}

TEST_P(EveryClass, QueryInterfaceKeepsTheIdentityRules) {
    const ComPtr<IDispatch> object = Create(GetParam());
    ASSERT_TRUE(object);
    const GUID interfaces[] = {IID_IDispatch, IdentifierOf(L"_" + GetParam()), IID_ISupportErrorInfo,
                               IID_IProvideClassInfo, IID_IProvideClassInfo2};
    const ComPtr<IUnknown> identity = As<IUnknown>(object.Get(), IID_IUnknown);
    ASSERT_TRUE(identity);

    for (const GUID& from : interfaces) {
        const ComPtr<IUnknown> one = As<IUnknown>(object.Get(), from);
        ASSERT_TRUE(one);
        EXPECT_EQ(identity.Get(), As<IUnknown>(one.Get(), IID_IUnknown).Get());
        // From every interface every interface can be reached, itself too.
        for (const GUID& to : interfaces)
            EXPECT_TRUE(As<IUnknown>(one.Get(), to));
    }
}

TEST_P(EveryClass, QueryInterfaceChecksItsArguments) {
    const ComPtr<IDispatch> object = Create(GetParam());
    ASSERT_TRUE(object);
    void* other = this;

    EXPECT_EQ(Hex(E_POINTER), Hex(object->QueryInterface(IID_IUnknown, nullptr)));
    EXPECT_EQ(Hex(E_NOINTERFACE), Hex(object->QueryInterface(kNobodysInterface, &other)));
    EXPECT_EQ(nullptr, other);
    EXPECT_EQ(Hex(E_NOINTERFACE), Hex(object->QueryInterface(GUID_NULL, &other)));
}

TEST_P(EveryClass, CountsItsReferences) {
    ComPtr<IDispatch> object = Create(GetParam());
    ASSERT_TRUE(object);

    EXPECT_EQ(2u, object->AddRef());
    EXPECT_EQ(1u, object->Release());
    EXPECT_EQ(0u, object.Reset());
}

TEST_P(EveryClass, SupportsErrorInformationOnItsDefaultInterfaceOnly) {
    const ComPtr<IDispatch> object = Create(GetParam());
    ASSERT_TRUE(object);
    const ComPtr<ISupportErrorInfo> support = As<ISupportErrorInfo>(object.Get(), IID_ISupportErrorInfo);
    ASSERT_TRUE(support);

    EXPECT_EQ(Hex(S_OK), Hex(support->InterfaceSupportsErrorInfo(IdentifierOf(L"_" + GetParam()))));
    EXPECT_EQ(Hex(S_FALSE), Hex(support->InterfaceSupportsErrorInfo(kNobodysInterface)));
}

TEST_P(EveryClass, ProvidesTheDescriptionOfItsClass) {
    const ComPtr<IDispatch> object = Create(GetParam());
    ASSERT_TRUE(object);
    const ComPtr<IProvideClassInfo> provider = As<IProvideClassInfo>(object.Get(), IID_IProvideClassInfo);
    ASSERT_TRUE(provider);
    ComPtr<ITypeInfo> info;

    ASSERT_EQ(Hex(S_OK), Hex(provider->GetClassInfo(info.Out())));
    EXPECT_EQ(Narrow(GetParam()), NameOf(info.Get()));
    EXPECT_EQ(TKIND_COCLASS, TypeAttributes(*info)->typekind);
    EXPECT_EQ(Hex(E_POINTER), Hex(provider->GetClassInfo(nullptr)));
}

TEST_P(EveryClass, GivesTheIdentifierOfItsEventInterface) {
    const ComPtr<IDispatch> object = Create(GetParam());
    ASSERT_TRUE(object);
    const ComPtr<IProvideClassInfo2> provider = As<IProvideClassInfo2>(object.Get(), IID_IProvideClassInfo2);
    ASSERT_TRUE(provider);
    GUID identifier = kNobodysInterface;

    const HRESULT status = provider->GetGUID(GUIDKIND_DEFAULT_SOURCE_DISP_IID, &identifier);
    if (GetParam() == L"KWOTimer") {
        EXPECT_EQ(Hex(S_OK), Hex(status));
        EXPECT_TRUE(IdentifierOf(L"__KWOTimer") == identifier);
    } else {
        EXPECT_TRUE(FAILED(status)) << Hex(status);
        EXPECT_TRUE(GUID_NULL == identifier);
    }
    EXPECT_EQ(Hex(E_INVALIDARG), Hex(provider->GetGUID(2, &identifier)));
    EXPECT_EQ(Hex(E_INVALIDARG), Hex(provider->GetGUID(0, &identifier)));
    EXPECT_EQ(Hex(E_POINTER), Hex(provider->GetGUID(GUIDKIND_DEFAULT_SOURCE_DISP_IID, nullptr)));
}

TEST_P(EveryClass, HasOneTypeInformation) {
    const ComPtr<IDispatch> object = Create(GetParam());
    ASSERT_TRUE(object);
    UINT count = 0;
    ComPtr<ITypeInfo> info;

    EXPECT_EQ(Hex(S_OK), Hex(object->GetTypeInfoCount(&count)));
    EXPECT_EQ(1u, count);
    ASSERT_EQ(Hex(S_OK), Hex(object->GetTypeInfo(0, LOCALE_USER_DEFAULT, info.Out())));
    EXPECT_EQ(Narrow(L"_" + GetParam()), NameOf(info.Get()));
}

TEST_P(EveryClass, RefusesOtherTypeInformationIndexesAndNullPointers) {
    const ComPtr<IDispatch> object = Create(GetParam());
    ASSERT_TRUE(object);
    for (const UINT index : {1u, 2u, 0xFFFFFFFFu}) {
        ITypeInfo* info = reinterpret_cast<ITypeInfo*>(this);
        EXPECT_EQ(Hex(DISP_E_BADINDEX), Hex(object->GetTypeInfo(index, LOCALE_USER_DEFAULT, &info))) << index;
        EXPECT_EQ(nullptr, info);
    }
    EXPECT_EQ(Hex(E_POINTER), Hex(object->GetTypeInfoCount(nullptr)));
    EXPECT_EQ(Hex(E_POINTER), Hex(object->GetTypeInfo(0, LOCALE_USER_DEFAULT, nullptr)));
}

TEST(ClassObjects, UnknownClassIsNotAvailable) {
    Library library;
    void* object = &library;

    EXPECT_EQ(Hex(CLASS_E_CLASSNOTAVAILABLE),
              Hex(library.GetClassObject(kNobodysInterface, IID_IClassFactory, &object)));
    EXPECT_EQ(nullptr, object);
}

TEST(ClassObjects, NoFurtherNameOfTheLibraryIsAClass) {
    CLSID id = {};

    EXPECT_TRUE(FAILED(CLSIDFromProgID(L"KWOUtil.KWONothing", &id)));
    EXPECT_TRUE(FAILED(CLSIDFromProgID(L"KWOUtil._KWOTimer", &id)));
}

}  // namespace
}  // namespace kwo::com_test

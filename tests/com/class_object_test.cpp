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

    EXPECT_NE(second.Get(), first.Get());
}

TEST_P(EveryClass, RefusesAggregation) {
    Probe outer;
    ComPtr<IUnknown> inner;

    EXPECT_EQ(Hex(CoCreateInstance(ClassId(GetParam()), &outer, CLSCTX_INPROC_SERVER, IID_IUnknown, inner.OutVoid())),
              Hex(CLASS_E_NOAGGREGATION));
    EXPECT_FALSE(inner);
    EXPECT_EQ(outer.references, 0u);

    // CoCreateInstance clears the place itself. Who asks the class object has nobody else to do so.
    Library library;
    ComPtr<IClassFactory> factory;
    ASSERT_EQ(Hex(library.GetClassObject(ClassId(GetParam()), IID_IClassFactory, factory.OutVoid())), Hex(S_OK));
    void* object = this;
    EXPECT_EQ(Hex(factory->CreateInstance(&outer, IID_IUnknown, &object)), Hex(CLASS_E_NOAGGREGATION));
    EXPECT_EQ(object, nullptr);
}

TEST_P(EveryClass, CreationForAnUnknownInterfaceLeavesNull) {
    void* object = this;

    EXPECT_EQ(Hex(CoCreateInstance(ClassId(GetParam()), nullptr, CLSCTX_INPROC_SERVER, kNobodysInterface, &object)),
              Hex(E_NOINTERFACE));
    EXPECT_EQ(object, nullptr);
}

TEST_P(EveryClass, ClassObjectChecksItsOutPointers) {
    Library library;
    ComPtr<IClassFactory> factory;
    ASSERT_EQ(Hex(library.GetClassObject(ClassId(GetParam()), IID_IClassFactory, factory.OutVoid())), Hex(S_OK));

    EXPECT_EQ(Hex(factory->CreateInstance(nullptr, IID_IUnknown, nullptr)), Hex(E_POINTER));
    EXPECT_EQ(Hex(factory->QueryInterface(IID_IUnknown, nullptr)), Hex(E_POINTER));
    const HRESULT nullClassObject = library.GetClassObject(ClassId(GetParam()), IID_IClassFactory, nullptr);
    EXPECT_TRUE(nullClassObject == E_POINTER || nullClassObject == E_INVALIDARG) << Hex(nullClassObject);
    void* other = this;
    EXPECT_EQ(Hex(library.GetClassObject(ClassId(GetParam()), kNobodysInterface, &other)), Hex(E_NOINTERFACE));
    EXPECT_EQ(other, nullptr);
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
        EXPECT_EQ(Hex(object->QueryInterface(IdentifierOf(L"_" + other), &foreign)), Hex(E_NOINTERFACE));
        EXPECT_EQ(foreign, nullptr) << Narrow(other);
    }
}

TEST_P(EveryClass, OnlyTheTimerRaisesEvents) {
    const ComPtr<IDispatch> object = Create(GetParam());
    ASSERT_TRUE(object);

    EXPECT_EQ(static_cast<bool>(As<IConnectionPointContainer>(object.Get(), IID_IConnectionPointContainer)),
              GetParam() == L"KWOTimer");
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
        EXPECT_EQ(As<IUnknown>(one.Get(), IID_IUnknown).Get(), identity.Get());
        // From every interface every interface can be reached, itself too.
        for (const GUID& to : interfaces)
            EXPECT_TRUE(As<IUnknown>(one.Get(), to));
    }
}

TEST_P(EveryClass, QueryInterfaceChecksItsArguments) {
    const ComPtr<IDispatch> object = Create(GetParam());
    ASSERT_TRUE(object);
    void* other = this;

    EXPECT_EQ(Hex(object->QueryInterface(IID_IUnknown, nullptr)), Hex(E_POINTER));
    EXPECT_EQ(Hex(object->QueryInterface(kNobodysInterface, &other)), Hex(E_NOINTERFACE));
    EXPECT_EQ(other, nullptr);
    EXPECT_EQ(Hex(object->QueryInterface(GUID_NULL, &other)), Hex(E_NOINTERFACE));
}

TEST_P(EveryClass, CountsItsReferences) {
    ComPtr<IDispatch> object = Create(GetParam());
    ASSERT_TRUE(object);

    EXPECT_EQ(object->AddRef(), 2u);
    EXPECT_EQ(object->Release(), 1u);
    EXPECT_EQ(object.Reset(), 0u);
}

TEST_P(EveryClass, SupportsErrorInformationOnItsDefaultInterfaceOnly) {
    const ComPtr<IDispatch> object = Create(GetParam());
    ASSERT_TRUE(object);
    const ComPtr<ISupportErrorInfo> support = As<ISupportErrorInfo>(object.Get(), IID_ISupportErrorInfo);
    ASSERT_TRUE(support);

    EXPECT_EQ(Hex(support->InterfaceSupportsErrorInfo(IdentifierOf(L"_" + GetParam()))), Hex(S_OK));
    EXPECT_EQ(Hex(support->InterfaceSupportsErrorInfo(kNobodysInterface)), Hex(S_FALSE));
}

TEST_P(EveryClass, ProvidesTheDescriptionOfItsClass) {
    const ComPtr<IDispatch> object = Create(GetParam());
    ASSERT_TRUE(object);
    const ComPtr<IProvideClassInfo> provider = As<IProvideClassInfo>(object.Get(), IID_IProvideClassInfo);
    ASSERT_TRUE(provider);
    ComPtr<ITypeInfo> info;

    ASSERT_EQ(Hex(provider->GetClassInfo(info.Out())), Hex(S_OK));
    EXPECT_EQ(NameOf(info.Get()), Narrow(GetParam()));
    EXPECT_EQ(TypeAttributes(*info)->typekind, TKIND_COCLASS);
    EXPECT_EQ(Hex(provider->GetClassInfo(nullptr)), Hex(E_POINTER));
}

TEST_P(EveryClass, GivesTheIdentifierOfItsEventInterface) {
    const ComPtr<IDispatch> object = Create(GetParam());
    ASSERT_TRUE(object);
    const ComPtr<IProvideClassInfo2> provider = As<IProvideClassInfo2>(object.Get(), IID_IProvideClassInfo2);
    ASSERT_TRUE(provider);
    GUID identifier = kNobodysInterface;

    const HRESULT status = provider->GetGUID(GUIDKIND_DEFAULT_SOURCE_DISP_IID, &identifier);
    if (GetParam() == L"KWOTimer") {
        EXPECT_EQ(Hex(status), Hex(S_OK));
        EXPECT_TRUE(IdentifierOf(L"__KWOTimer") == identifier);
    } else {
        EXPECT_TRUE(FAILED(status)) << Hex(status);
        EXPECT_TRUE(GUID_NULL == identifier);
    }
    EXPECT_EQ(Hex(provider->GetGUID(2, &identifier)), Hex(E_INVALIDARG));
    EXPECT_EQ(Hex(provider->GetGUID(0, &identifier)), Hex(E_INVALIDARG));
    EXPECT_EQ(Hex(provider->GetGUID(GUIDKIND_DEFAULT_SOURCE_DISP_IID, nullptr)), Hex(E_POINTER));
}

TEST_P(EveryClass, HasOneTypeInformation) {
    const ComPtr<IDispatch> object = Create(GetParam());
    ASSERT_TRUE(object);
    UINT count = 0;
    ComPtr<ITypeInfo> info;

    EXPECT_EQ(Hex(object->GetTypeInfoCount(&count)), Hex(S_OK));
    EXPECT_EQ(count, 1u);
    ASSERT_EQ(Hex(object->GetTypeInfo(0, LOCALE_USER_DEFAULT, info.Out())), Hex(S_OK));
    EXPECT_EQ(NameOf(info.Get()), Narrow(L"_" + GetParam()));
}

TEST_P(EveryClass, RefusesOtherTypeInformationIndexesAndNullPointers) {
    const ComPtr<IDispatch> object = Create(GetParam());
    ASSERT_TRUE(object);
    for (const UINT index : {1u, 2u, 0xFFFFFFFFu}) {
        ITypeInfo* info = reinterpret_cast<ITypeInfo*>(this);
        EXPECT_EQ(Hex(object->GetTypeInfo(index, LOCALE_USER_DEFAULT, &info)), Hex(DISP_E_BADINDEX)) << index;
        EXPECT_EQ(info, nullptr);
    }
    EXPECT_EQ(Hex(object->GetTypeInfoCount(nullptr)), Hex(E_POINTER));
    EXPECT_EQ(Hex(object->GetTypeInfo(0, LOCALE_USER_DEFAULT, nullptr)), Hex(E_POINTER));
}

TEST(ClassObjects, UnknownClassIsNotAvailable) {
    Library library;
    void* object = &library;

    EXPECT_EQ(Hex(library.GetClassObject(kNobodysInterface, IID_IClassFactory, &object)),
              Hex(CLASS_E_CLASSNOTAVAILABLE));
    EXPECT_EQ(object, nullptr);
}

TEST(ClassObjects, NoFurtherNameOfTheLibraryIsAClass) {
    CLSID id = {};

    EXPECT_TRUE(FAILED(CLSIDFromProgID(L"KWOUtil.KWONothing", &id)));
    EXPECT_TRUE(FAILED(CLSIDFromProgID(L"KWOUtil._KWOTimer", &id)));
}

}  // namespace
}  // namespace kwo::com_test

// The DLL as a server: type library, registration, activation by its manifest, unloading.

#include "com_support/type_description.h"
#include "companion_fixture.h"
#include "dll_under_test.h"
#include "registered_as_allowed.h"
#include "rights.h"
#include "support/registry_snapshot.h"

namespace kwo::com_test {
namespace {

using test_support::Differences;
using test_support::kNoDifference;
using test_support::RegistrySnapshot;

RegistrySnapshot Classes(HKEY root) {
    return test_support::SnapshotOf(root, L"Software\\Classes");
}

/// The registration of the whole run is away for the test.
class CompanionServer : public ::testing::Test {
protected:
    void SetUp() override { ASSERT_EQ(Hex(UnregisterAsAllowed(mDll)), Hex(S_OK)); }
    void TearDown() override { EXPECT_EQ(Hex(RegisterAsAllowed(mDll)), Hex(S_OK)); }

    const Library mDll{CompanionPath()};
};

TEST_F(CompanionServer, RegistrationForAllAndItsRemovalLeaveTheRegistryAsItWas) {
    if (!MayRegisterForAll()) GTEST_SKIP() << kNeedsRights;
    const RegistrySnapshot before = Classes(HKEY_LOCAL_MACHINE);
    ASSERT_EQ(Hex(mDll.RegisterServer()), Hex(S_OK));
    const RegistrySnapshot registered = Classes(HKEY_LOCAL_MACHINE);
    ASSERT_EQ(Hex(mDll.UnregisterServer()), Hex(S_OK));

    EXPECT_TRUE(registered.contains(L"\\KWOInit.KWOInitialize\\CLSID"));
    EXPECT_EQ(Differences(before, Classes(HKEY_LOCAL_MACHINE)), kNoDifference);
    EXPECT_FALSE(before == registered);
}

TEST_F(CompanionServer, RegistrationForOneUserLeavesTheMachineAlone) {
    const RegistrySnapshot machine = Classes(HKEY_LOCAL_MACHINE);
    const RegistrySnapshot before = Classes(HKEY_CURRENT_USER);
    ASSERT_EQ(Hex(mDll.Install(true, L"user")), Hex(S_OK));
    const RegistrySnapshot registered = Classes(HKEY_CURRENT_USER);
    EXPECT_EQ(Differences(machine, Classes(HKEY_LOCAL_MACHINE)), kNoDifference);
    ASSERT_EQ(Hex(mDll.Install(false, L"user")), Hex(S_OK));

    EXPECT_TRUE(registered.contains(L"\\KWOInit.KWOInitialize\\CLSID"));
    EXPECT_EQ(Differences(before, Classes(HKEY_CURRENT_USER)), kNoDifference);
}

TEST_F(CompanionServer, TheManifestActivatesTheClassWithoutRegistration) {
    CLSID id = {};
    ASSERT_TRUE(FAILED(CLSIDFromProgID(L"KWOInit.KWOInitialize", &id)));
    const std::wstring manifest = DistFolder() + L"\\KWOInit.X.manifest";
    ACTCTXW context = {};
    context.cbSize = sizeof context;
    context.lpSource = manifest.c_str();
    const HANDLE handle = CreateActCtxW(&context);
    ASSERT_NE(handle, INVALID_HANDLE_VALUE) << GetLastError();
    ULONG_PTR cookie = 0;
    ASSERT_TRUE(ActivateActCtx(handle, &cookie));

    {
        const ComPtr<IDispatch> companion = CreateCompanion();
        ASSERT_TRUE(companion);
        EXPECT_NE(IdOf(companion.Get(), L"KWO_MsgTableSize"), DISPID_UNKNOWN);
    }

    DeactivateActCtx(0, cookie);
    ReleaseActCtx(handle);
}

TEST_F(CompanionServer, ObjectsAndClassObjectsKeepTheDll) {
    const GUID id = {0xd618a575, 0x30ba, 0x4349, {0x95, 0x03, 0x3f, 0xc2, 0x63, 0x66, 0x31, 0xeb}};
    EXPECT_EQ(Hex(mDll.CanUnloadNow()), Hex(S_OK));
    ComPtr<IClassFactory> factory;
    ASSERT_EQ(Hex(mDll.GetClassObject(id, IID_IClassFactory, factory.OutVoid())), Hex(S_OK));
    EXPECT_EQ(Hex(mDll.CanUnloadNow()), Hex(S_FALSE));
    ComPtr<IDispatch> object;
    ASSERT_EQ(Hex(factory->CreateInstance(nullptr, IID_IDispatch, object.OutVoid())), Hex(S_OK));
    factory.Reset();
    EXPECT_EQ(Hex(mDll.CanUnloadNow()), Hex(S_FALSE));
    object.Reset();
    EXPECT_EQ(Hex(mDll.CanUnloadNow()), Hex(S_OK));
    EXPECT_EQ(Hex(mDll.GetClassObject(IID_IUnknown, IID_IClassFactory, factory.OutVoid())),
              Hex(CLASS_E_CLASSNOTAVAILABLE));
}

TEST(CompanionDll, LeavesTheProcessWhenNobodyUsesIt) {
    CreateCompanion().Reset();
    for (int round = 0; round < 3; ++round)
        CoFreeUnusedLibrariesEx(0, 0);

    EXPECT_EQ(GetModuleHandleW(L"KWOInit.dll"), nullptr);
}

// The second copy of the interface definition, typed by hand.

struct GoldenArgument {
    const wchar_t* name;
    VARTYPE type;     ///< behind the pointer
    VARTYPE element;  ///< of an array
    USHORT flags;
};
constexpr USHORT kInOut = PARAMFLAG_FIN | PARAMFLAG_FOUT;
constexpr USHORT kResult = PARAMFLAG_FOUT | PARAMFLAG_FRETVAL;
const struct {
    const wchar_t* name;
    MEMBERID id;
    std::vector<GoldenArgument> arguments;
} kGolden[] = {
    {L"KWO_MsgTableSize",
     0x60030000,
     {{L"ProgramName", VT_BSTR, 0, kInOut},
      {L"MsgFilePath", VT_BSTR, 0, kInOut},
      {L"IdxArrayStart", VT_I4, 0, kInOut},
      {L"IdxArrayEnd", VT_I4, 0, kInOut},
      {L"TextArraySize", VT_I4, 0, kInOut},
      {L"Found", VT_BOOL, 0, kResult}}},
    {L"KWO_MsgTableLoad",
     0x60030001,
     {{L"Language", VT_I4, 0, kInOut},
      {L"IdxArray", VT_SAFEARRAY, VT_I2, kInOut},
      {L"TextArray", VT_SAFEARRAY, VT_BSTR, kInOut}}},
};

std::wstring GuidText(REFGUID guid) {
    wchar_t text[40] = {};
    StringFromGUID2(guid, text, 40);
    return text;
}

std::wstring IdentifierAndName(ITypeInfo* info) {
    const com_support::TypeAttributes attributes(*info);
    Bstr name;
    info->GetDocumentation(MEMBERID_NIL, name.Out(), nullptr, nullptr, nullptr);
    return GuidText(attributes->guid) + L" " + name.Text();
}

class CompanionLibrary : public ::testing::Test {
protected:
    void SetUp() override {
        ASSERT_EQ(Hex(LoadTypeLibEx(CompanionPath().c_str(), REGKIND_NONE, mLibrary.Out())), Hex(S_OK));
    }
    ComPtr<ITypeLib> mLibrary;
};

TEST_F(CompanionLibrary, HasItsNamesAndIdentifiers) {
    const com_support::LibraryAttributes attributes(*mLibrary.Get());
    Bstr name;
    Bstr help;
    ASSERT_EQ(Hex(attributes.Status()), Hex(S_OK));
    mLibrary->GetDocumentation(-1, name.Out(), help.Out(), nullptr, nullptr);

    EXPECT_EQ(GuidText(attributes->guid), L"{D2F4C74E-598F-436B-9D8F-54A17BB93015}");
    EXPECT_EQ(attributes->wMajorVerNum, 1);
    EXPECT_EQ(attributes->wMinorVerNum, 0);
    EXPECT_EQ(name.Text(), L"KWOInit");
    EXPECT_EQ(help.Text(), L"KWO Message Tables");

    ASSERT_EQ(mLibrary->GetTypeInfoCount(), 2u);
    ComPtr<ITypeInfo> info;
    mLibrary->GetTypeInfo(0, info.Out());
    EXPECT_EQ(IdentifierAndName(info.Get()), L"{53A7E8D8-73B7-4B39-89C4-3000CFB75CDA} _KWOInitialize");
    mLibrary->GetTypeInfo(1, info.Out());
    EXPECT_EQ(IdentifierAndName(info.Get()), L"{D618A575-30BA-4349-9503-3FC2636631EB} KWOInitialize");
}

TEST_F(CompanionLibrary, InTheDllEqualsTheList) {
    ComPtr<ITypeInfo> dispatch;
    ComPtr<ITypeInfo> info;
    HREFTYPE reference = 0;
    mLibrary->GetTypeInfo(0, dispatch.Out());
    ASSERT_EQ(Hex(dispatch->GetRefTypeOfImplType(static_cast<UINT>(-1), &reference)), Hex(S_OK));
    ASSERT_EQ(Hex(dispatch->GetRefTypeInfo(reference, info.Out())), Hex(S_OK));
    for (UINT at = 0; at < std::size(kGolden); ++at) {
        const auto& golden = kGolden[at];
        const com_support::FunctionDescription function(*info.Get(), at);
        ASSERT_EQ(Hex(function.Status()), Hex(S_OK));
        BSTR names[8] = {};
        UINT count = 0;
        info->GetNames(function->memid, names, 8, &count);

        EXPECT_EQ(function->memid, golden.id);
        EXPECT_EQ(function->invkind, INVOKE_FUNC);
        EXPECT_EQ(function->oVft, static_cast<int>((7 + at) * sizeof(void*)));
        EXPECT_EQ(names[0], std::wstring(golden.name));
        ASSERT_EQ(static_cast<std::size_t>(function->cParams), golden.arguments.size());
        for (std::size_t argument = 0; argument < golden.arguments.size(); ++argument) {
            const GoldenArgument& expected = golden.arguments[argument];
            const ELEMDESC& element = function->lprgelemdescParam[argument];
            ASSERT_EQ(element.tdesc.vt, VT_PTR);
            EXPECT_EQ(element.tdesc.lptdesc->vt, expected.type) << Narrow(expected.name);
            if (expected.element != 0) {
                EXPECT_EQ(element.tdesc.lptdesc->lptdesc->vt, expected.element);
            }
            EXPECT_EQ(element.paramdesc.wParamFlags, expected.flags) << Narrow(expected.name);
            if (argument + 1 < count) {
                EXPECT_EQ(names[argument + 1], std::wstring(expected.name));
            }
        }
        for (const BSTR name : names)
            SysFreeString(name);
    }
}

}  // namespace
}  // namespace kwo::com_test

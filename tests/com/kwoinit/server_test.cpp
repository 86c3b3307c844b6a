// The DLL as a server: type library, registration, activation by its manifest, unloading.

#include <map>

#include "com_support/type_description.h"
#include "companion_fixture.h"

namespace kwo::com_test {
namespace {

using Snapshot = std::map<std::wstring, std::wstring>;

void Collect(HKEY root, const std::wstring& path, Snapshot& snapshot) {
    HKEY key = nullptr;
    if (RegOpenKeyExW(root, path.c_str(), 0, KEY_READ, &key) != ERROR_SUCCESS) return;
    snapshot[path];
    std::vector<wchar_t> name(16384);
    std::vector<wchar_t> data(32768);
    for (DWORD at = 0;; ++at) {
        DWORD nameLength = static_cast<DWORD>(name.size());
        DWORD bytes = static_cast<DWORD>(data.size() * sizeof(wchar_t));
        DWORD type = 0;
        if (RegEnumValueW(key, at, name.data(), &nameLength, nullptr, &type, reinterpret_cast<BYTE*>(data.data()),
                          &bytes) != ERROR_SUCCESS) {
            break;
        }
        snapshot[path + L"@" + std::wstring(name.data(), nameLength)] =
            std::to_wstring(type) + L" " + std::wstring(data.data(), bytes / sizeof(wchar_t));
    }
    for (DWORD at = 0;; ++at) {
        DWORD length = static_cast<DWORD>(name.size());
        if (RegEnumKeyExW(key, at, name.data(), &length, nullptr, nullptr, nullptr, nullptr) != ERROR_SUCCESS) break;
        Collect(root, path + L"\\" + std::wstring(name.data(), length), snapshot);
    }
    RegCloseKey(key);
}

Snapshot Classes(HKEY root) {
    Snapshot snapshot;
    Collect(root, L"Software\\Classes", snapshot);
    return snapshot;
}

/// The registration of the whole run is away for the test.
class CompanionServer : public ::testing::Test {
protected:
    void SetUp() override { ASSERT_EQ(Hex(S_OK), Hex(mDll.Call("DllUnregisterServer"))); }
    void TearDown() override { EXPECT_EQ(Hex(S_OK), Hex(mDll.Call("DllRegisterServer"))); }

    Companion mDll;
};

TEST_F(CompanionServer, RegistrationForAllAndItsRemovalLeaveTheRegistryAsItWas) {
    const Snapshot before = Classes(HKEY_LOCAL_MACHINE);
    ASSERT_EQ(Hex(S_OK), Hex(mDll.Call("DllRegisterServer")));
    const Snapshot registered = Classes(HKEY_LOCAL_MACHINE);
    ASSERT_EQ(Hex(S_OK), Hex(mDll.Call("DllUnregisterServer")));

    EXPECT_TRUE(registered.contains(L"Software\\Classes\\KWOInit.KWOInitialize\\CLSID"));
    EXPECT_TRUE(before == Classes(HKEY_LOCAL_MACHINE));
    EXPECT_FALSE(before == registered);
}

TEST_F(CompanionServer, RegistrationForOneUserLeavesTheMachineAlone) {
    const Snapshot machine = Classes(HKEY_LOCAL_MACHINE);
    const Snapshot before = Classes(HKEY_CURRENT_USER);
    ASSERT_EQ(Hex(S_OK), Hex(mDll.Call<BOOL, LPCWSTR>("DllInstall", TRUE, L"user")));
    const Snapshot registered = Classes(HKEY_CURRENT_USER);
    EXPECT_TRUE(machine == Classes(HKEY_LOCAL_MACHINE));
    ASSERT_EQ(Hex(S_OK), Hex(mDll.Call<BOOL, LPCWSTR>("DllInstall", FALSE, L"user")));

    EXPECT_TRUE(registered.contains(L"Software\\Classes\\KWOInit.KWOInitialize\\CLSID"));
    EXPECT_TRUE(before == Classes(HKEY_CURRENT_USER));
}

TEST_F(CompanionServer, TheManifestActivatesTheClassWithoutRegistration) {
    CLSID id = {};
    ASSERT_TRUE(FAILED(CLSIDFromProgID(L"KWOInit.KWOInitialize", &id)));
    const std::wstring manifest = CompanionFolder() + L"KWOInit.X.manifest";
    ACTCTXW context = {};
    context.cbSize = sizeof context;
    context.lpSource = manifest.c_str();
    const HANDLE handle = CreateActCtxW(&context);
    ASSERT_NE(INVALID_HANDLE_VALUE, handle) << GetLastError();
    ULONG_PTR cookie = 0;
    ASSERT_TRUE(ActivateActCtx(handle, &cookie));

    {
        const ComPtr<IDispatch> companion = CreateCompanion();
        ASSERT_TRUE(companion);
        EXPECT_NE(DISPID_UNKNOWN, IdOf(companion.Get(), L"KWO_MsgTableSize"));
    }

    DeactivateActCtx(0, cookie);
    ReleaseActCtx(handle);
}

TEST_F(CompanionServer, ObjectsAndClassObjectsKeepTheDll) {
    const GUID id = {0xd618a575, 0x30ba, 0x4349, {0x95, 0x03, 0x3f, 0xc2, 0x63, 0x66, 0x31, 0xeb}};
    EXPECT_EQ(Hex(S_OK), Hex(mDll.Call("DllCanUnloadNow")));
    ComPtr<IClassFactory> factory;
    ASSERT_EQ(Hex(S_OK),
              Hex(mDll.Call<REFCLSID, REFIID, void**>("DllGetClassObject", id, IID_IClassFactory, factory.OutVoid())));
    EXPECT_EQ(Hex(S_FALSE), Hex(mDll.Call("DllCanUnloadNow")));
    ComPtr<IDispatch> object;
    ASSERT_EQ(Hex(S_OK), Hex(factory->CreateInstance(nullptr, IID_IDispatch, object.OutVoid())));
    factory.Reset();
    EXPECT_EQ(Hex(S_FALSE), Hex(mDll.Call("DllCanUnloadNow")));
    object.Reset();
    EXPECT_EQ(Hex(S_OK), Hex(mDll.Call("DllCanUnloadNow")));
    EXPECT_EQ(Hex(CLASS_E_CLASSNOTAVAILABLE),
              Hex(mDll.Call<REFCLSID, REFIID, void**>("DllGetClassObject", IID_IUnknown, IID_IClassFactory,
                                                      factory.OutVoid())));
}

TEST(CompanionDll, LeavesTheProcessWhenNobodyUsesIt) {
    CreateCompanion().Reset();
    for (int round = 0; round < 3; ++round)
        CoFreeUnusedLibrariesEx(0, 0);

    EXPECT_EQ(nullptr, GetModuleHandleW(L"KWOInit.dll"));
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
        ASSERT_EQ(Hex(S_OK), Hex(LoadTypeLibEx(CompanionPath().c_str(), REGKIND_NONE, mLibrary.Out())));
    }
    ComPtr<ITypeLib> mLibrary;
};

TEST_F(CompanionLibrary, HasItsNamesAndIdentifiers) {
    TLIBATTR* attributes = nullptr;
    Bstr name;
    Bstr help;
    ASSERT_EQ(Hex(S_OK), Hex(mLibrary->GetLibAttr(&attributes)));
    mLibrary->GetDocumentation(-1, name.Out(), help.Out(), nullptr, nullptr);

    EXPECT_EQ(L"{D2F4C74E-598F-436B-9D8F-54A17BB93015}", GuidText(attributes->guid));
    EXPECT_EQ(1, attributes->wMajorVerNum);
    EXPECT_EQ(0, attributes->wMinorVerNum);
    EXPECT_EQ(L"KWOInit", name.Text());
    EXPECT_EQ(L"KWO Message Tables", help.Text());
    mLibrary->ReleaseTLibAttr(attributes);

    ASSERT_EQ(2u, mLibrary->GetTypeInfoCount());
    ComPtr<ITypeInfo> info;
    mLibrary->GetTypeInfo(0, info.Out());
    EXPECT_EQ(L"{53A7E8D8-73B7-4B39-89C4-3000CFB75CDA} _KWOInitialize", IdentifierAndName(info.Get()));
    mLibrary->GetTypeInfo(1, info.Out());
    EXPECT_EQ(L"{D618A575-30BA-4349-9503-3FC2636631EB} KWOInitialize", IdentifierAndName(info.Get()));
}

TEST_F(CompanionLibrary, InTheDllEqualsTheList) {
    ComPtr<ITypeInfo> dispatch;
    ComPtr<ITypeInfo> info;
    HREFTYPE reference = 0;
    mLibrary->GetTypeInfo(0, dispatch.Out());
    ASSERT_EQ(Hex(S_OK), Hex(dispatch->GetRefTypeOfImplType(static_cast<UINT>(-1), &reference)));
    ASSERT_EQ(Hex(S_OK), Hex(dispatch->GetRefTypeInfo(reference, info.Out())));
    for (UINT at = 0; at < std::size(kGolden); ++at) {
        const auto& golden = kGolden[at];
        FUNCDESC* function = nullptr;
        ASSERT_EQ(Hex(S_OK), Hex(info->GetFuncDesc(at, &function)));
        BSTR names[8] = {};
        UINT count = 0;
        info->GetNames(function->memid, names, 8, &count);

        EXPECT_EQ(golden.id, function->memid);
        EXPECT_EQ(INVOKE_FUNC, function->invkind);
        EXPECT_EQ(static_cast<int>((7 + at) * sizeof(void*)), function->oVft);
        EXPECT_EQ(std::wstring(golden.name), names[0]);
        ASSERT_EQ(golden.arguments.size(), static_cast<std::size_t>(function->cParams));
        for (std::size_t argument = 0; argument < golden.arguments.size(); ++argument) {
            const GoldenArgument& expected = golden.arguments[argument];
            const ELEMDESC& element = function->lprgelemdescParam[argument];
            ASSERT_EQ(VT_PTR, element.tdesc.vt);
            EXPECT_EQ(expected.type, element.tdesc.lptdesc->vt) << Narrow(expected.name);
            if (expected.element != 0) {
                EXPECT_EQ(expected.element, element.tdesc.lptdesc->lptdesc->vt);
            }
            EXPECT_EQ(expected.flags, element.paramdesc.wParamFlags) << Narrow(expected.name);
            if (argument + 1 < count) {
                EXPECT_EQ(std::wstring(expected.name), names[argument + 1]);
            }
        }
        for (const BSTR name : names)
            SysFreeString(name);
        info->ReleaseFuncDesc(function);
    }
}

}  // namespace
}  // namespace kwo::com_test

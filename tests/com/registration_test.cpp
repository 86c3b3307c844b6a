#include "com_test.h"
#include "dll_under_test.h"
#include "registered_as_allowed.h"
#include "rights.h"
#include "support/registry_snapshot.h"
#include "type_library_dump.h"

#include <cstdio>
#include <cstdlib>
#include <string>

namespace kwo::com_test {
namespace {

using test_support::Differences;
using test_support::kNoDifference;
using test_support::RegistrySnapshot;
using test_support::SnapshotOf;

RegistrySnapshot MachineClasses() {
    return SnapshotOf(HKEY_LOCAL_MACHINE, L"Software\\Classes");
}
RegistrySnapshot UserClasses() {
    return SnapshotOf(HKEY_CURRENT_USER, L"Software\\Classes");
}

std::wstring MachineText(const std::wstring& path, const wchar_t* name = nullptr) {
    wchar_t text[1024] = {};
    DWORD size = sizeof text;
    const std::wstring full = L"Software\\Classes\\" + path;
    RegGetValueW(HKEY_LOCAL_MACHINE, full.c_str(), name, RRF_RT_REG_SZ | RRF_NOEXPAND, nullptr, text, &size);
    return text;
}

std::wstring GuidText(REFGUID guid) {
    wchar_t text[40] = {};
    StringFromGUID2(guid, text, 40);
    return text;
}

std::wstring IdentifierText(const std::wstring& typeName) {
    const ComPtr<ITypeLib> library = TypeLibraryOfTheDll();
    const ComPtr<ITypeInfo> info = library ? TypeInfoOf(library.Get(), typeName) : ComPtr<ITypeInfo>();
    return info ? GuidText(TypeAttributes(*info)->guid) : L"";
}

bool SamePath(const std::wstring& a, const std::wstring& b) {
    return CompareStringOrdinal(a.c_str(), -1, b.c_str(), -1, TRUE) == CSTR_EQUAL;
}

/// Takes the registration of the whole run away and puts it back.
class Unregistered : public ::testing::Test {
protected:
    void SetUp() override {
        ASSERT_TRUE(mLibrary);
        ASSERT_EQ(Hex(UnregisterAsAllowed(mLibrary)), Hex(S_OK));
    }
    void TearDown() override { EXPECT_EQ(Hex(RegisterAsAllowed(mLibrary)), Hex(S_OK)); }

    Library mLibrary;
};

/// Snapshots of all classes are slow, so the two states that every test starts from are taken once.
class Registration : public Unregistered {
protected:
    void SetUp() override {
        Unregistered::SetUp();
        if (!MayRegisterForAll()) GTEST_SKIP() << kNeedsRights;
        if (theMachine.empty()) {
            theMachine = MachineClasses();
            theUser = UserClasses();
        }
    }
    static void TearDownTestSuite() {
        theMachine.clear();
        theRegisteredMachine.clear();
        theUser.clear();
    }

    /// The machine's classes with ours among them.
    const RegistrySnapshot& RegisteredMachine() {
        if (theRegisteredMachine.empty()) {
            EXPECT_EQ(Hex(mLibrary.RegisterServer()), Hex(S_OK));
            theRegisteredMachine = MachineClasses();
            EXPECT_EQ(Hex(mLibrary.UnregisterServer()), Hex(S_OK));
        }
        return theRegisteredMachine;
    }

    static inline RegistrySnapshot theMachine;
    static inline RegistrySnapshot theRegisteredMachine;
    static inline RegistrySnapshot theUser;
};

TEST_F(Registration, MachineWideAndBackLeavesTheRegistryAsItWas) {
    // Eleven classes, each with more than its identifier.
    EXPECT_GT(Differences(theMachine, RegisteredMachine()).size(), 50u);

    EXPECT_EQ(Differences(theMachine, MachineClasses()), kNoDifference);
    EXPECT_EQ(Differences(theUser, UserClasses()), kNoDifference);
}

TEST_F(Registration, TwiceIsAsOnceAndOneRemovalTakesItAllAway) {
    RegisteredMachine();
    ASSERT_EQ(Hex(mLibrary.RegisterServer()), Hex(S_OK));
    ASSERT_EQ(Hex(mLibrary.RegisterServer()), Hex(S_OK));
    EXPECT_EQ(Differences(theRegisteredMachine, MachineClasses()), kNoDifference);
    ASSERT_EQ(Hex(mLibrary.UnregisterServer()), Hex(S_OK));

    EXPECT_EQ(Differences(theMachine, MachineClasses()), kNoDifference);
}

TEST_F(Registration, TakenAwayThoughNotThereChangesNothing) {
    EXPECT_EQ(Hex(mLibrary.UnregisterServer()), Hex(S_OK));
    EXPECT_EQ(Hex(mLibrary.Install(false, L"user")), Hex(S_OK));

    EXPECT_EQ(Differences(theMachine, MachineClasses()), kNoDifference);
    EXPECT_EQ(Differences(theUser, UserClasses()), kNoDifference);
}

TEST_F(Registration, PerUserStaysOutOfTheMachinesClassesAndGoesAsItCame) {
    ASSERT_EQ(Hex(mLibrary.Install(true, L"user")), Hex(S_OK));
    EXPECT_GT(Differences(theUser, UserClasses()).size(), 50u);
    EXPECT_EQ(Differences(theMachine, MachineClasses()), kNoDifference);
    ASSERT_EQ(Hex(mLibrary.Install(false, L"user")), Hex(S_OK));

    EXPECT_EQ(Differences(theUser, UserClasses()), kNoDifference);
}

TEST_F(Registration, PerUserWritesWhatMachineWideWrites) {
    RegisteredMachine();
    ASSERT_EQ(Hex(mLibrary.Install(true, L"USER")), Hex(S_OK));
    const RegistrySnapshot user = UserClasses();
    ASSERT_EQ(Hex(mLibrary.Install(false, L"user")), Hex(S_OK));

    for (const auto& [path, value] : theRegisteredMachine) {
        // A record of the shared keys that had to be made depends on what was there.
        if (theMachine.contains(path) || path.ends_with(L"|KeysMade")) continue;
        // The system shows some machine-wide keys a second time here.
        if (path.starts_with(L"\\Wow6432Node\\")) continue;
        // A key that the system itself has made keeps its own spelling.
        const bool isLibrary = CompareStringOrdinal(path.c_str(), 9, L"\\TypeLib\\", 9, TRUE) == CSTR_EQUAL;
        const auto found = user.find(isLibrary ? L"\\TypeLib" + path.substr(8) : path);
        ASSERT_NE(found, user.end()) << Narrow(path);
        EXPECT_EQ(found->second, value) << Narrow(path);
    }
}

TEST_F(Registration, AnUnknownWordIsRefusedAndChangesNothing) {
    for (const wchar_t* commandLine : {L"users", L"usr", L"user ", L"/user", L"all", L" "}) {
        EXPECT_EQ(Hex(mLibrary.Install(true, commandLine)), Hex(E_INVALIDARG)) << Narrow(commandLine);
        EXPECT_EQ(Hex(mLibrary.Install(false, commandLine)), Hex(E_INVALIDARG)) << Narrow(commandLine);
    }

    EXPECT_EQ(Differences(theMachine, MachineClasses()), kNoDifference);
    EXPECT_EQ(Differences(theUser, UserClasses()), kNoDifference);
}

TEST_F(Registration, WithoutAWordItIsForTheWholeComputer) {
    for (const wchar_t* commandLine : {L"", L"machine", L"Machine", static_cast<const wchar_t*>(nullptr)}) {
        CLSID id = {};
        EXPECT_EQ(Hex(mLibrary.Install(true, commandLine)), Hex(S_OK));
        EXPECT_EQ(Hex(CLSIDFromProgID(L"KWOUtil.KWOTimer", &id)), Hex(S_OK));
        EXPECT_EQ(Hex(mLibrary.Install(false, commandLine)), Hex(S_OK));
        EXPECT_TRUE(FAILED(CLSIDFromProgID(L"KWOUtil.KWOTimer", &id)));
    }
}

TEST_F(Registration, NamesEveryClassWithItsFileThreadingAndLibrary) {
    ASSERT_EQ(Hex(mLibrary.RegisterServer()), Hex(S_OK));
    for (const std::wstring& name : ClassNames()) {
        const std::wstring progId = L"KWOUtil." + name;
        const std::wstring classKey = L"CLSID\\" + IdentifierText(name);

        EXPECT_EQ(MachineText(progId + L"\\CLSID"), IdentifierText(name)) << Narrow(name);
        EXPECT_TRUE(SamePath(DllPath(), MachineText(classKey + L"\\InprocServer32"))) << Narrow(name);
        EXPECT_EQ(MachineText(classKey + L"\\InprocServer32", L"ThreadingModel"), L"Apartment") << Narrow(name);
        EXPECT_EQ(MachineText(classKey + L"\\ProgID"), progId) << Narrow(name);
        EXPECT_EQ(MachineText(classKey + L"\\TypeLib"), L"{548B7A79-6EC2-4190-8590-E39BA0B37159}") << Narrow(name);
    }
}

TEST_F(Registration, ClassesAreNotMarkedSafeForScripts) {
    ASSERT_EQ(Hex(mLibrary.RegisterServer()), Hex(S_OK));
    for (const std::wstring& name : ClassNames()) {
        HKEY key = nullptr;
        const std::wstring path = L"Software\\Classes\\CLSID\\" + IdentifierText(name) + L"\\Implemented Categories";
        EXPECT_EQ(RegOpenKeyExW(HKEY_LOCAL_MACHINE, path.c_str(), 0, KEY_READ, &key), ERROR_FILE_NOT_FOUND)
            << Narrow(name);
        if (key != nullptr) RegCloseKey(key);
    }
}

TEST_F(Registration, TypeLibraryIsFoundByItsIdentifier) {
    const GUID id = {0x548b7a79, 0x6ec2, 0x4190, {0x85, 0x90, 0xe3, 0x9b, 0xa0, 0xb3, 0x71, 0x59}};
    ComPtr<ITypeLib> library;
    EXPECT_TRUE(FAILED(LoadRegTypeLib(id, 4, 5, 0, library.Out())));

    ASSERT_EQ(Hex(mLibrary.RegisterServer()), Hex(S_OK));

    EXPECT_EQ(Hex(LoadRegTypeLib(id, 4, 5, 0, library.Out())), Hex(S_OK));
}

TEST_F(Registration, WithoutItNoClassIsKnown) {
    CLSID id = {};

    EXPECT_TRUE(FAILED(CLSIDFromProgID(L"KWOUtil.KWORegistry", &id)));
}

/// A key that vanishes with the session takes no lasting subkeys: writing below it fails with error 1021.
class VolatileKey {
public:
    VolatileKey(HKEY root, const std::wstring& path) : mRoot(root), mPath(path) {
        HKEY key = nullptr;
        RegCreateKeyExW(root, path.c_str(), 0, nullptr, REG_OPTION_VOLATILE, KEY_ALL_ACCESS, nullptr, &key, nullptr);
        if (key != nullptr) RegCloseKey(key);
    }
    VolatileKey(const VolatileKey&) = delete;
    VolatileKey& operator=(const VolatileKey&) = delete;
    ~VolatileKey() { RegDeleteKeyW(mRoot, mPath.c_str()); }

    bool IsThere() const {
        HKEY key = nullptr;
        const LSTATUS status = RegOpenKeyExW(mRoot, mPath.c_str(), 0, KEY_READ, &key);
        if (key != nullptr) RegCloseKey(key);
        return status == ERROR_SUCCESS;
    }

private:
    HKEY mRoot;
    std::wstring mPath;
};

TEST_F(Registration, MachineWideThatFailsHalfWayTakesBackWhatItDidAndSaysWhy) {
    for (const std::wstring& stone : {std::wstring(L"KWOUtil.KWOTimer"), L"CLSID\\" + IdentifierText(L"IKWOAlarm"),
                                      L"CLSID\\" + IdentifierText(L"KWORegistry")}) {
        const std::wstring path = L"Software\\Classes\\" + stone;
        const VolatileKey key(HKEY_LOCAL_MACHINE, path);

        EXPECT_EQ(Hex(mLibrary.RegisterServer()), Hex(HRESULT_FROM_WIN32(ERROR_CHILD_MUST_BE_VOLATILE)))
            << Narrow(stone);

        EXPECT_TRUE(key.IsThere()) << Narrow(stone);
    }
    EXPECT_EQ(Differences(theMachine, MachineClasses()), kNoDifference);
}

TEST_F(Registration, PerUserThatFailsHalfWayTakesBackWhatItDidAndSaysWhy) {
    // The shared key is there for good, so that only the class's own key is volatile.
    HKEY classes = nullptr;
    RegCreateKeyExW(HKEY_CURRENT_USER, L"Software\\Classes", 0, nullptr, 0, KEY_READ, nullptr, &classes, nullptr);
    RegCloseKey(classes);
    {
        const VolatileKey key(HKEY_CURRENT_USER, L"Software\\Classes\\KWOUtil.KWOTimer");
        const RegistrySnapshot user = UserClasses();

        EXPECT_EQ(Hex(mLibrary.Install(true, L"user")), Hex(HRESULT_FROM_WIN32(ERROR_CHILD_MUST_BE_VOLATILE)));

        EXPECT_EQ(Differences(user, UserClasses()), kNoDifference);
        EXPECT_TRUE(key.IsThere());
    }
}

// Registration-free activation

class RegistrationFree : public Unregistered {
protected:
    void SetUp() override {
        Unregistered::SetUp();
        const std::wstring manifest = DistFolder() + L"\\KWOUtil.X.manifest";
        ACTCTXW context = {};
        context.cbSize = sizeof context;
        context.lpSource = manifest.c_str();
        mContext = CreateActCtxW(&context);
        ASSERT_NE(mContext, INVALID_HANDLE_VALUE) << Narrow(manifest) << ", error " << GetLastError();
        ASSERT_TRUE(ActivateActCtx(mContext, &mCookie));
    }
    void TearDown() override {
        if (mContext != INVALID_HANDLE_VALUE) {
            DeactivateActCtx(0, mCookie);
            ReleaseActCtx(mContext);
        }
        Unregistered::TearDown();
    }

    HANDLE mContext = INVALID_HANDLE_VALUE;
    ULONG_PTR mCookie = 0;
};

TEST_F(RegistrationFree, EveryClassIsCreatedByItsIdentifier) {
    for (const std::wstring& name : ClassNames()) {
        CLSID id = {};
        ComPtr<IDispatch> object;
        ASSERT_EQ(Hex(CLSIDFromString(IdentifierText(name).c_str(), &id)), Hex(S_OK));
        EXPECT_EQ(Hex(CoCreateInstance(id, nullptr, CLSCTX_INPROC_SERVER, IID_IDispatch, object.OutVoid())), Hex(S_OK))
            << Narrow(name);
    }
}

TEST_F(RegistrationFree, EveryClassIsCreatedByItsProgrammaticIdentifier) {
    for (const std::wstring& name : ClassNames())
        EXPECT_TRUE(Create(name)) << Narrow(name);
}

TEST_F(RegistrationFree, AClassAnswersByName) {
    const ComPtr<IDispatch> registry = Create(L"KWORegistry");
    ASSERT_TRUE(registry);

    EXPECT_EQ(Hex(Call(registry.Get(), L"KWO_RegDeleteKey", {0, L"x"}).status), Hex(S_OK));
}

/// The manifest that the README shows, for this bitness, as a file beside the DLLs.
class ClientManifest {
public:
    ClientManifest() {
        std::string text = ReadReadme();
        text = text.substr(text.find("```xml") + 7);
        text.resize(text.find("```"));
        for (std::size_t at = text.find("amd64"); sizeof(void*) == 4 && at != std::string::npos;
             at = text.find("amd64"))
            text.replace(at, 5, "x86");
        if (FILE* const file = _wfopen(path.c_str(), L"wb")) {
            std::fwrite(text.data(), 1, text.size(), file);
            std::fclose(file);
        }
    }
    ClientManifest(const ClientManifest&) = delete;
    ClientManifest& operator=(const ClientManifest&) = delete;
    ~ClientManifest() { DeleteFileW(path.c_str()); }

    const std::wstring path = DistFolder() + L"\\client.manifest";

private:
    static std::string ReadReadme() {
        std::string text;
        const char* const told = std::getenv("KWO_README");
        const std::string name = told != nullptr ? told : "";
        FILE* const file = std::fopen(name.c_str(), "rb");
        for (int c = file != nullptr ? std::fgetc(file) : EOF; c != EOF; c = std::fgetc(file))
            text += static_cast<char>(c);
        if (file != nullptr) std::fclose(file);
        return text;
    }
};

/// The environment variable KWO_README names the page.
TEST_F(Unregistered, TheReadmesManifestFindsBothAssemblies) {
    const ClientManifest manifest;
    ACTCTXW context = {};
    context.cbSize = sizeof context;
    context.lpSource = manifest.path.c_str();
    const HANDLE handle = CreateActCtxW(&context);
    ASSERT_NE(handle, INVALID_HANDLE_VALUE) << "error " << GetLastError();
    ULONG_PTR cookie = 0;
    ASSERT_TRUE(ActivateActCtx(handle, &cookie));
    ACTCTX_SECTION_KEYED_DATA found = {};
    found.cbSize = sizeof found;
    for (const wchar_t* const name : {L"KWOUtil.KWOTimer", L"KWOInit.KWOInitialize"}) {
        EXPECT_TRUE(
            FindActCtxSectionStringW(0, nullptr, ACTIVATION_CONTEXT_SECTION_COM_PROGID_REDIRECTION, name, &found))
            << Narrow(name);
    }
    EXPECT_TRUE(Create(L"KWOTimer"));
    DeactivateActCtx(0, cookie);
    ReleaseActCtx(handle);
}

}  // namespace
}  // namespace kwo::com_test

#include "com/server/registration.h"

#include <windows.h>
#include <gtest/gtest.h>
#include <oleauto.h>

#include <map>
#include <string>
#include <vector>

#include "com/server/server_description.h"
#include "com_support/bstr.h"
#include "com_support/com_ptr.h"
#include "com_support/module_path.h"
#include "support/registry_snapshot.h"

namespace kwo::com {
namespace {

using test_support::Differences;
using test_support::kNoDifference;
using test_support::RegistrySnapshot;
using test_support::SnapshotOf;

constexpr wchar_t kScratch[] = L"Software\\KWOUtil registration test";
constexpr wchar_t kClasses[] = L"Software\\KWOUtil registration test\\Classes";

const wchar_t* const kClassNames[] = {L"KWORegistry",  L"KWOUtility", L"KWOSplitterV",  L"KWOPicBtn",
                                      L"KWOSysParams", L"KWOSysTray", L"KWOSysMetrics", L"KWOMonthView",
                                      L"KWOTimer",     L"IKWOTimer",  L"IKWOAlarm"};

/// A registry in memory, for tests of many turns. A child key needs its parent, as in the real one.
class MemoryStore final : public RegistrationStore {
public:
    using Values = std::map<std::wstring, std::wstring>;
    std::map<std::wstring, Values> keys{{L"", {}}, {L"Software", {}}, {kScratch, {}}};

    LSTATUS CreateKey(const std::wstring& path, bool& created) override {
        const std::size_t slash = path.find_last_of(L'\\');
        if (!keys.contains(slash == std::wstring::npos ? L"" : path.substr(0, slash))) return ERROR_FILE_NOT_FOUND;
        created = keys.try_emplace(path).second;
        return ERROR_SUCCESS;
    }
    LSTATUS DeleteKey(const std::wstring& path) override {
        if (!keys.contains(path)) return ERROR_FILE_NOT_FOUND;
        if (HasChildren(path)) return ERROR_ACCESS_DENIED;
        keys.erase(path);
        return ERROR_SUCCESS;
    }
    LSTATUS IsEmpty(const std::wstring& path, bool& empty) override {
        if (!keys.contains(path)) return ERROR_FILE_NOT_FOUND;
        empty = keys[path].empty() && !HasChildren(path);
        return ERROR_SUCCESS;
    }
    LSTATUS GetValue(const std::wstring& path, const std::wstring& name, StoredValue& value) override {
        if (!keys.contains(path) || !keys[path].contains(name)) return ERROR_FILE_NOT_FOUND;
        value = StoredValue::OfText(keys[path][name]);
        return ERROR_SUCCESS;
    }
    LSTATUS SetValue(const std::wstring& path, const std::wstring& name, const StoredValue& value) override {
        if (!keys.contains(path)) return ERROR_FILE_NOT_FOUND;
        keys[path][name] = value.Text();
        return ERROR_SUCCESS;
    }
    LSTATUS DeleteValue(const std::wstring& path, const std::wstring& name) override {
        if (!keys.contains(path) || keys[path].erase(name) == 0) return ERROR_FILE_NOT_FOUND;
        return ERROR_SUCCESS;
    }
    bool OtherBitnessHas(const std::wstring&) override { return false; }

private:
    bool HasChildren(const std::wstring& path) const {
        const auto next = keys.upper_bound(path + L"\\");
        return next != keys.end() && next->first.starts_with(path + L"\\");
    }
};

/// Forwards everything and refuses one call of those that change something, or of all.
class FailingStore final : public RegistrationStore {
public:
    explicit FailingStore(RegistrationStore& real) : mReal(real) {}

    int failAt = 0;  ///< 1 is the first call; 0 fails none
    bool otherBitnessHasAll = false;
    int Calls() const { return mCalls; }

    LSTATUS CreateKey(const std::wstring& path, bool& created) override {
        return Fails() ? ERROR_ACCESS_DENIED : mReal.CreateKey(path, created);
    }
    LSTATUS DeleteKey(const std::wstring& path) override {
        return Fails() ? ERROR_ACCESS_DENIED : mReal.DeleteKey(path);
    }
    LSTATUS IsEmpty(const std::wstring& path, bool& empty) override { return mReal.IsEmpty(path, empty); }
    LSTATUS GetValue(const std::wstring& path, const std::wstring& name, StoredValue& value) override {
        return mReal.GetValue(path, name, value);
    }
    LSTATUS SetValue(const std::wstring& path, const std::wstring& name, const StoredValue& value) override {
        return Fails() ? ERROR_ACCESS_DENIED : mReal.SetValue(path, name, value);
    }
    LSTATUS DeleteValue(const std::wstring& path, const std::wstring& name) override {
        return Fails() ? ERROR_ACCESS_DENIED : mReal.DeleteValue(path, name);
    }
    bool OtherBitnessHas(const std::wstring& path) override {
        return otherBitnessHasAll || mReal.OtherBitnessHas(path);
    }

private:
    bool Fails() { return ++mCalls == failAt; }

    RegistrationStore& mReal;
    int mCalls = 0;
};

/// Registers this test program, which bears the type library, below a key of the test's own.
class Registration : public testing::Test {
protected:
    void SetUp() override {
        RegDeleteTreeW(HKEY_CURRENT_USER, kScratch);
        RegDeleteKeyW(HKEY_CURRENT_USER, kScratch);
        Put(L"Other program", L"", L"was here");
    }
    void TearDown() override {
        RegDeleteTreeW(HKEY_CURRENT_USER, kScratch);
        RegDeleteKeyW(HKEY_CURRENT_USER, kScratch);
    }

    static std::wstring Below(const std::wstring& path) { return std::wstring(kClasses) + L"\\" + path; }

    static void MakeKey(const std::wstring& path) {
        HKEY key = nullptr;
        ASSERT_EQ(
            RegCreateKeyExW(HKEY_CURRENT_USER, Below(path).c_str(), 0, nullptr, 0, KEY_WRITE, nullptr, &key, nullptr),
            ERROR_SUCCESS);
        RegCloseKey(key);
    }
    static void Put(const std::wstring& path, const std::wstring& name, const std::wstring& text) {
        MakeKey(path);
        ASSERT_EQ(RegSetKeyValueW(HKEY_CURRENT_USER, Below(path).c_str(), name.c_str(), REG_SZ, text.c_str(),
                                  static_cast<DWORD>((text.size() + 1) * sizeof(wchar_t))),
                  ERROR_SUCCESS);
    }
    static void Drop(const std::wstring& path) {
        ASSERT_EQ(RegDeleteTreeW(HKEY_CURRENT_USER, Below(path).c_str()), ERROR_SUCCESS);
        RegDeleteKeyW(HKEY_CURRENT_USER, Below(path).c_str());
    }
    /// The text of a value; not one that names variables of the environment.
    static std::wstring At(const std::wstring& path, const std::wstring& name = L"") {
        wchar_t text[1024] = L"";
        DWORD size = sizeof(text);
        const LSTATUS status = RegGetValueW(HKEY_CURRENT_USER, Below(path).c_str(), name.c_str(),
                                            RRF_RT_REG_SZ | RRF_NOEXPAND, nullptr, text, &size);
        return status == ERROR_SUCCESS ? text : L"(none)";
    }
    static bool Has(const std::wstring& path) {
        HKEY key = nullptr;
        if (RegOpenKeyExW(HKEY_CURRENT_USER, Below(path).c_str(), 0, KEY_READ, &key) != ERROR_SUCCESS) return false;
        RegCloseKey(key);
        return true;
    }
    static RegistrySnapshot Now() { return SnapshotOf(HKEY_CURRENT_USER, kScratch); }

    static std::wstring ThisProgram() { return com_support::ModulePath(nullptr); }
    static std::wstring ClassIdOf(const std::wstring& name) { return At(L"KWOUtil." + name + L"\\CLSID"); }

    HINSTANCE mModule = GetModuleHandleW(nullptr);
    WindowsRegistrationStore mStore{HKEY_CURRENT_USER};
    const std::wstring mPlatform = sizeof(void*) == 8 ? L"win64" : L"win32";
    const std::wstring mOtherPlatform = sizeof(void*) == 8 ? L"win32" : L"win64";
    const std::wstring mVersionKey = L"TypeLib\\" + DescribeServer(mModule).libraryId + L"\\4.5";
};

TEST_F(Registration, WritesEveryClassUnderItsProgrammaticIdentifier) {
    ASSERT_EQ(Register(mModule, mStore, kClasses), S_OK);

    for (const std::wstring name : kClassNames) {
        SCOPED_TRACE(std::string(name.begin(), name.end()));
        const std::wstring key = L"CLSID\\" + ClassIdOf(name);
        EXPECT_EQ(At(L"KWOUtil." + name), L"KWOUtil." + name);
        EXPECT_EQ(At(key), L"KWOUtil." + name);
        EXPECT_EQ(At(key + L"\\InprocServer32"), ThisProgram());
        EXPECT_EQ(At(key + L"\\InprocServer32", L"ThreadingModel"), L"Apartment");
        EXPECT_EQ(At(key + L"\\ProgID"), L"KWOUtil." + name);
        EXPECT_EQ(At(key + L"\\Version"), L"4.5");
        EXPECT_EQ(L"TypeLib\\" + At(key + L"\\TypeLib") + L"\\4.5", mVersionKey);
        EXPECT_TRUE(Has(key + L"\\Programmable"));
    }
}

TEST_F(Registration, ClassesAreNotMarkedSafe) {
    ASSERT_EQ(Register(mModule, mStore, kClasses), S_OK);

    for (const std::wstring name : kClassNames) {
        EXPECT_FALSE(Has(L"CLSID\\" + ClassIdOf(name) + L"\\Implemented Categories"));
    }
}

TEST_F(Registration, WritesTheTypeLibrary) {
    ASSERT_EQ(Register(mModule, mStore, kClasses), S_OK);

    EXPECT_EQ(At(mVersionKey), L"KWO General and Common Utilities");
    EXPECT_EQ(At(mVersionKey + L"\\0\\" + mPlatform), ThisProgram());
    EXPECT_FALSE(Has(mVersionKey + L"\\0\\" + mOtherPlatform));
    EXPECT_EQ(At(mVersionKey + L"\\FLAGS"), L"0");
    EXPECT_EQ(At(mVersionKey + L"\\HELPDIR"), ThisProgram().substr(0, ThisProgram().find_last_of(L'\\')));
}

TEST_F(Registration, WritesAMarshalerForEveryInterface) {
    ASSERT_EQ(Register(mModule, mStore, kClasses), S_OK);

    std::map<std::wstring, std::wstring> marshalers;
    for (const auto& [path, bytes] : SnapshotOf(HKEY_CURRENT_USER, Below(L"Interface"))) {
        const std::wstring stub = L"\\ProxyStubClsid32";
        if (!path.ends_with(stub)) continue;
        const std::wstring key = L"Interface" + path.substr(0, path.size() - stub.size());
        marshalers[At(key)] = At(key + stub);
        EXPECT_EQ(At(key + L"\\TypeLib", L"Version"), L"4.5");
        EXPECT_EQ(L"TypeLib\\" + At(key + L"\\TypeLib") + L"\\4.5", mVersionKey);
    }

    std::map<std::wstring, std::wstring> expected{{L"__KWOTimer", L"{00020420-0000-0000-C000-000000000046}"}};
    for (const std::wstring name : kClassNames)
        expected[L"_" + name] = L"{00020424-0000-0000-C000-000000000046}";
    EXPECT_EQ(marshalers, expected);
}

TEST_F(Registration, UnregisteringLeavesTheRegistryAsItWas) {
    const RegistrySnapshot before = Now();

    ASSERT_EQ(Register(mModule, mStore, kClasses), S_OK);
    ASSERT_NE(Now(), before);
    ASSERT_EQ(Unregister(mModule, mStore, kClasses), S_OK);

    EXPECT_EQ(Differences(before, Now()), kNoDifference);
}

TEST_F(Registration, SharedKeysThatDidNotExistGoAndThoseThatDidStay) {
    const std::vector<std::vector<std::wstring>> cases{
        {}, {L"CLSID"}, {L"Interface"}, {L"TypeLib"}, {L"CLSID", L"Interface", L"TypeLib"}};
    for (const auto& present : cases) {
        SetUp();
        for (const std::wstring& path : present)
            MakeKey(path);
        const RegistrySnapshot before = Now();

        ASSERT_EQ(Register(mModule, mStore, kClasses), S_OK);
        ASSERT_EQ(Register(mModule, mStore, kClasses), S_OK);
        ASSERT_EQ(Unregister(mModule, mStore, kClasses), S_OK);

        EXPECT_EQ(Differences(before, Now()), kNoDifference) << present.size() << " shared keys were there";
    }
}

TEST_F(Registration, EvenTheKeyOfAllClassesGoesWhenItDidNotExist) {
    RegDeleteTreeW(HKEY_CURRENT_USER, kClasses);
    RegDeleteKeyW(HKEY_CURRENT_USER, kClasses);
    const RegistrySnapshot before = Now();
    ASSERT_TRUE(before.contains(L""));
    ASSERT_FALSE(before.contains(L"\\Classes"));

    ASSERT_EQ(Register(mModule, mStore, kClasses), S_OK);
    ASSERT_EQ(Unregister(mModule, mStore, kClasses), S_OK);

    EXPECT_EQ(Differences(before, Now()), kNoDifference);
}

TEST_F(Registration, UnregisteringTwiceIsNoError) {
    const RegistrySnapshot before = Now();

    EXPECT_EQ(Unregister(mModule, mStore, kClasses), S_OK);
    ASSERT_EQ(Register(mModule, mStore, kClasses), S_OK);
    EXPECT_EQ(Unregister(mModule, mStore, kClasses), S_OK);
    EXPECT_EQ(Unregister(mModule, mStore, kClasses), S_OK);

    EXPECT_EQ(Differences(before, Now()), kNoDifference);
}

TEST_F(Registration, FailureTakesEverythingBackFromTheRealRegistry) {
    const RegistrySnapshot before = Now();

    for (const int call : {1, 7, 40, 150, 200}) {
        FailingStore store(mStore);
        store.failAt = call;
        ASSERT_EQ(Register(mModule, store, kClasses), E_ACCESSDENIED) << "call " << call;
        ASSERT_EQ(Differences(before, Now()), kNoDifference) << "call " << call;
    }
}

TEST_F(Registration, RemovalThatFailsLeavesTheRealRegistryRegistered) {
    ASSERT_EQ(Register(mModule, mStore, kClasses), S_OK);
    const RegistrySnapshot before = Now();

    for (const int call : {1, 7, 40, 150, 200}) {
        FailingStore store(mStore);
        store.failAt = call;
        ASSERT_EQ(Unregister(mModule, store, kClasses), E_ACCESSDENIED) << "call " << call;
        ASSERT_EQ(Differences(before, Now()), kNoDifference) << "call " << call;
    }
}

/// Lets `act` fail at its first changing call, its second, and so on until it succeeds, and compares the store with
/// what it was. Gives the number of calls that could fail.
template <class Act>
int FailAtEveryCall(MemoryStore& memory, Act act) {
    const auto before = memory.keys;
    for (int call = 1;; ++call) {
        FailingStore store(memory);
        store.failAt = call;
        const HRESULT result = act(store);
        if (result == S_OK) return store.Calls();
        EXPECT_EQ(result, E_ACCESSDENIED) << "call " << call;
        EXPECT_TRUE(memory.keys == before) << "call " << call;
        if (testing::Test::HasFailure()) return 0;
    }
}

TEST_F(Registration, FailureAtAnyCallTakesEverythingBackAndSaysWhy) {
    MemoryStore memory;

    EXPECT_GT(FailAtEveryCall(memory, [&](RegistrationStore& store) { return Register(mModule, store, kClasses); }),
              200);

    EXPECT_GT(memory.keys.size(), 100u);
}

TEST_F(Registration, FailureOverAnEarlierRegistrationRestoresIt) {
    MemoryStore memory;
    ASSERT_EQ(Register(mModule, memory, kClasses), S_OK);
    for (auto& [path, values] : memory.keys) {
        for (auto& [name, text] : values)
            text = L"An earlier text that is longer than ours " + text;
    }
    memory.keys[Below(mVersionKey)].erase(L"");
    memory.keys.erase(Below(mVersionKey) + L"\\FLAGS");

    EXPECT_GT(FailAtEveryCall(memory, [&](RegistrationStore& store) { return Register(mModule, store, kClasses); }),
              200);

    EXPECT_EQ(memory.keys[Below(mVersionKey) + L"\\FLAGS"][L""], L"0");
}

TEST_F(Registration, RemovalThatFailsAtAnyCallTakesEverythingBackAndSaysWhy) {
    MemoryStore memory;
    const auto before = memory.keys;
    ASSERT_EQ(Register(mModule, memory, kClasses), S_OK);

    EXPECT_GT(FailAtEveryCall(memory, [&](RegistrationStore& store) { return Unregister(mModule, store, kClasses); }),
              200);

    EXPECT_TRUE(memory.keys == before);
}

TEST_F(Registration, AnotherVersionOfTheLibraryStays) {
    const std::wstring library = mVersionKey.substr(0, mVersionKey.size() - 4);
    Put(library + L"\\4.6", L"", L"A later library");
    Put(library + L"\\4.6\\0\\" + mPlatform, L"", L"C:\\later\\KWOUtil.dll");
    const RegistrySnapshot before = Now();

    ASSERT_EQ(Register(mModule, mStore, kClasses), S_OK);
    ASSERT_EQ(Unregister(mModule, mStore, kClasses), S_OK);

    EXPECT_EQ(Differences(before, Now()), kNoDifference);
}

TEST_F(Registration, InterfacesThatALaterVersionTookOverStay) {
    ASSERT_EQ(Register(mModule, mStore, kClasses), S_OK);
    const std::wstring taken = L"Interface\\" + DescribeServer(mModule).interfaces.front().iid;
    const std::wstring lost = L"Interface\\" + DescribeServer(mModule).interfaces.back().iid;
    Put(taken + L"\\TypeLib", L"Version", L"4.6");

    ASSERT_EQ(Unregister(mModule, mStore, kClasses), S_OK);

    EXPECT_EQ(At(taken + L"\\TypeLib", L"Version"), L"4.6");
    EXPECT_NE(At(taken), L"(none)");
    EXPECT_FALSE(Has(lost));
}

TEST_F(Registration, AnotherCopysRegistrationStays) {
    ASSERT_EQ(Register(mModule, mStore, kClasses), S_OK);
    for (const std::wstring name : kClassNames) {
        Put(L"CLSID\\" + ClassIdOf(name) + L"\\InprocServer32", L"", L"C:\\other\\KWOUtil.dll");
    }
    Put(mVersionKey + L"\\0\\" + mPlatform, L"", L"C:\\other\\KWOUtil.dll");
    const RegistrySnapshot before = Now();

    ASSERT_EQ(Unregister(mModule, mStore, kClasses), S_OK);

    EXPECT_EQ(Differences(before, Now()), kNoDifference);
}

TEST_F(Registration, AClassThatAnotherVendorServesByAProgramStays) {
    ASSERT_EQ(Register(mModule, mStore, kClasses), S_OK);
    const std::wstring timer = L"CLSID\\" + ClassIdOf(L"KWOTimer");
    Drop(timer + L"\\InprocServer32");
    Put(timer + L"\\LocalServer32", L"", L"C:\\other\\server.exe");
    const RegistrySnapshot before = SnapshotOf(HKEY_CURRENT_USER, Below(timer));

    ASSERT_EQ(Unregister(mModule, mStore, kClasses), S_OK);

    EXPECT_EQ(Differences(before, SnapshotOf(HKEY_CURRENT_USER, Below(timer))), kNoDifference);
    EXPECT_EQ(L"CLSID\\" + ClassIdOf(L"KWOTimer"), timer);
}

TEST_F(Registration, WhatAnotherVendorPutInPlaceOfOurValuesStays) {
    ASSERT_EQ(Register(mModule, mStore, kClasses), S_OK);
    const std::wstring marshaler =
        L"Interface\\" + DescribeServer(mModule).interfaces.front().iid + L"\\ProxyStubClsid32";
    const std::wstring timer = L"CLSID\\" + ClassIdOf(L"KWOTimer");
    Put(marshaler, L"", L"{another marshaler}");
    Put(timer + L"\\ProgID", L"", L"Another.Name");

    ASSERT_EQ(Unregister(mModule, mStore, kClasses), S_OK);

    EXPECT_EQ(At(marshaler), L"{another marshaler}");
    EXPECT_EQ(At(timer + L"\\ProgID"), L"Another.Name");
    EXPECT_FALSE(Has(timer + L"\\InprocServer32"));
}

TEST_F(Registration, AProgrammaticIdentifierTakenFromAnotherVendorIsGivenBack) {
    Put(L"KWOUtil.KWOTimer", L"", L"Another timer");
    Put(L"KWOUtil.KWOTimer\\CLSID", L"", L"{another class}");
    Put(L"KWOUtil.KWOTimer\\CurVer", L"", L"KWOUtil.KWOTimer.3");
    Put(L"KWOUtil.KWOPicBtn\\CLSID", L"", L"{a class without a description}");
    const RegistrySnapshot before = Now();

    ASSERT_EQ(Register(mModule, mStore, kClasses), S_OK);
    ASSERT_EQ(Register(mModule, mStore, kClasses), S_OK);
    EXPECT_NE(ClassIdOf(L"KWOTimer"), L"{another class}");
    ASSERT_EQ(Unregister(mModule, mStore, kClasses), S_OK);

    EXPECT_EQ(Differences(before, Now()), kNoDifference);
}

TEST_F(Registration, ADescriptionWithoutAClassIsGivenBack) {
    Put(L"KWOUtil.KWOTimer", L"", L"Another timer");
    Put(L"KWOUtil.KWOTimer\\CurVer", L"", L"KWOUtil.KWOTimer.3");
    const RegistrySnapshot before = Now();

    ASSERT_EQ(Register(mModule, mStore, kClasses), S_OK);
    ASSERT_EQ(Register(mModule, mStore, kClasses), S_OK);
    EXPECT_EQ(At(L"KWOUtil.KWOTimer"), L"KWOUtil.KWOTimer");
    ASSERT_EQ(Unregister(mModule, mStore, kClasses), S_OK);

    EXPECT_EQ(Differences(before, Now()), kNoDifference);
}

TEST_F(Registration, AnExpandableTextIsGivenBackAsOne) {
    for (const std::wstring key : {L"KWOUtil.KWOTimer", L"KWOUtil.KWOTimer\\CLSID"}) {
        MakeKey(key);
        constexpr wchar_t kText[] = L"%another%";
        ASSERT_EQ(RegSetKeyValueW(HKEY_CURRENT_USER, Below(key).c_str(), nullptr, REG_EXPAND_SZ, kText, sizeof(kText)),
                  ERROR_SUCCESS);
    }
    const RegistrySnapshot before = Now();

    ASSERT_EQ(Register(mModule, mStore, kClasses), S_OK);
    ASSERT_EQ(Unregister(mModule, mStore, kClasses), S_OK);

    EXPECT_EQ(Differences(before, Now()), kNoDifference);
}

TEST_F(Registration, AnEmptyDescriptionIsGivenBack) {
    Put(L"KWOUtil.KWOTimer", L"", L"");
    Put(L"KWOUtil.KWOTimer\\CLSID", L"", L"");
    const RegistrySnapshot before = Now();

    ASSERT_EQ(Register(mModule, mStore, kClasses), S_OK);
    ASSERT_EQ(Unregister(mModule, mStore, kClasses), S_OK);

    EXPECT_EQ(Differences(before, Now()), kNoDifference);
}

TEST_F(Registration, ADescriptionThatChangedMeanwhileStays) {
    Put(L"KWOUtil.KWOTimer", L"", L"Another timer");
    ASSERT_EQ(Register(mModule, mStore, kClasses), S_OK);
    Put(L"KWOUtil.KWOTimer", L"", L"A later timer");

    ASSERT_EQ(Unregister(mModule, mStore, kClasses), S_OK);

    EXPECT_EQ(At(L"KWOUtil.KWOTimer"), L"A later timer");
    EXPECT_EQ(At(L"KWOUtil.KWOTimer", L"Replaced"), L"(none)");
    EXPECT_FALSE(Has(L"KWOUtil.KWOTimer\\CLSID"));
}

TEST_F(Registration, UnregisteringWithoutARegistrationLeavesAnotherVendorsClass) {
    Put(L"KWOUtil.KWOTimer", L"", L"KWOUtil.KWOTimer");
    Put(L"KWOUtil.KWOTimer\\CLSID", L"", L"{another class}");
    Put(L"CLSID\\{another class}", L"", L"KWOUtil.KWOTimer");
    Put(L"CLSID\\{another class}\\InprocServer32", L"", ThisProgram());
    const RegistrySnapshot before = Now();

    ASSERT_EQ(Unregister(mModule, mStore, kClasses), S_OK);

    EXPECT_EQ(Differences(before, Now()), kNoDifference);
}

TEST_F(Registration, AProgrammaticIdentifierThatAnotherVendorTookOverStays) {
    Put(L"KWOUtil.KWOTimer", L"", L"Another timer");
    Put(L"KWOUtil.KWOTimer\\CLSID", L"", L"{another class}");
    ASSERT_EQ(Register(mModule, mStore, kClasses), S_OK);
    Put(L"KWOUtil.KWOTimer", L"", L"A later timer");
    Put(L"KWOUtil.KWOTimer\\CLSID", L"", L"{a later class}");

    ASSERT_EQ(Unregister(mModule, mStore, kClasses), S_OK);

    EXPECT_EQ(At(L"KWOUtil.KWOTimer"), L"A later timer");
    EXPECT_EQ(At(L"KWOUtil.KWOTimer\\CLSID"), L"{a later class}");
    EXPECT_EQ(At(L"KWOUtil.KWOTimer\\CLSID", L"Replaced"), L"(none)");
    EXPECT_EQ(At(L"KWOUtil.KWOTimer", L"Replaced"), L"(none)");
}

TEST_F(Registration, FailureWhileTakingAnIdentifierOverOrGivingItBackChangesNothing) {
    MemoryStore memory;
    memory.keys[kClasses];
    memory.keys[Below(L"KWOUtil.KWOTimer")][L""] = L"Another timer";
    memory.keys[Below(L"KWOUtil.KWOTimer\\CLSID")][L""] = L"{another class}";
    const auto before = memory.keys;

    FailAtEveryCall(memory, [&](RegistrationStore& store) { return Register(mModule, store, kClasses); });
    FailAtEveryCall(memory, [&](RegistrationStore& store) { return Unregister(mModule, store, kClasses); });

    EXPECT_TRUE(memory.keys == before);
}

TEST_F(Registration, ThePathIsComparedWithoutCase) {
    const RegistrySnapshot before = Now();
    ASSERT_EQ(Register(mModule, mStore, kClasses), S_OK);
    std::wstring shouted = ThisProgram();
    CharUpperW(shouted.data());
    ASSERT_NE(shouted, ThisProgram());
    Put(mVersionKey + L"\\0\\" + mPlatform, L"", shouted);
    for (const std::wstring name : kClassNames) {
        Put(L"CLSID\\" + ClassIdOf(name) + L"\\InprocServer32", L"", shouted);
    }

    ASSERT_EQ(Unregister(mModule, mStore, kClasses), S_OK);

    EXPECT_EQ(Differences(before, Now()), kNoDifference);
}

TEST_F(Registration, ThePathIsComparedWithoutQuotationMarks) {
    const RegistrySnapshot before = Now();
    ASSERT_EQ(Register(mModule, mStore, kClasses), S_OK);
    for (const std::wstring name : kClassNames) {
        const std::wstring server = L"CLSID\\" + ClassIdOf(name) + L"\\InprocServer32";
        Put(server, L"", L"\"" + At(server) + L"\"");
    }
    Put(mVersionKey + L"\\0\\" + mPlatform, L"", L"\"" + At(mVersionKey + L"\\0\\" + mPlatform) + L"\"");

    ASSERT_EQ(Unregister(mModule, mStore, kClasses), S_OK);

    EXPECT_EQ(Differences(before, Now()), kNoDifference);
}

TEST_F(Registration, ThePathIsComparedWithoutShortNames) {
    const RegistrySnapshot before = Now();
    ASSERT_EQ(Register(mModule, mStore, kClasses), S_OK);
    wchar_t shortPath[MAX_PATH] = {};
    ASSERT_NE(GetShortPathNameW(ThisProgram().c_str(), shortPath, MAX_PATH), 0u);
    ASSERT_NE(std::wstring(shortPath), ThisProgram());
    Put(mVersionKey + L"\\0\\" + mPlatform, L"", shortPath);
    for (const std::wstring name : kClassNames) {
        Put(L"CLSID\\" + ClassIdOf(name) + L"\\InprocServer32", L"", shortPath);
    }

    ASSERT_EQ(Unregister(mModule, mStore, kClasses), S_OK);

    EXPECT_EQ(Differences(before, Now()), kNoDifference);
}

TEST_F(Registration, WhatOthersPutUnderOurKeysStays) {
    ASSERT_EQ(Register(mModule, mStore, kClasses), S_OK);
    const std::wstring timer = L"CLSID\\" + ClassIdOf(L"KWOTimer");
    Put(timer + L"\\TreatAs", L"", L"{somebody}");
    Put(L"KWOUtil.KWOTimer", L"Note", L"of somebody");

    ASSERT_EQ(Unregister(mModule, mStore, kClasses), S_OK);

    EXPECT_EQ(At(timer + L"\\TreatAs"), L"{somebody}");
    EXPECT_FALSE(Has(timer + L"\\InprocServer32"));
    EXPECT_EQ(At(L"KWOUtil.KWOTimer", L"Note"), L"of somebody");
    EXPECT_EQ(At(L"KWOUtil.KWOTimer"), L"(none)");
}

TEST_F(Registration, WhatBothBitnessesShareStaysForTheOther) {
    ASSERT_EQ(Register(mModule, mStore, kClasses), S_OK);
    Put(mVersionKey + L"\\0\\" + mOtherPlatform, L"", L"C:\\other bitness\\KWOUtil.dll");
    const std::wstring timerId = ClassIdOf(L"KWOTimer");
    FailingStore store(mStore);
    store.otherBitnessHasAll = true;

    ASSERT_EQ(Unregister(mModule, store, kClasses), S_OK);

    EXPECT_FALSE(Has(L"CLSID\\" + timerId));
    EXPECT_EQ(ClassIdOf(L"KWOTimer"), timerId);
    EXPECT_FALSE(Has(mVersionKey + L"\\0\\" + mPlatform));
    EXPECT_EQ(At(mVersionKey + L"\\0\\" + mOtherPlatform), L"C:\\other bitness\\KWOUtil.dll");
    EXPECT_EQ(At(mVersionKey), L"KWO General and Common Utilities");
    EXPECT_EQ(At(mVersionKey + L"\\FLAGS"), L"0");
}

TEST_F(Registration, TheLastBitnessTakesTheSharedKeysThatTheFirstMade) {
    const RegistrySnapshot before = Now();
    ASSERT_EQ(Register(mModule, mStore, kClasses), S_OK);
    Put(mVersionKey + L"\\0\\" + mOtherPlatform, L"", L"C:\\other bitness\\KWOUtil.dll");
    ASSERT_EQ(At(mVersionKey, L"KeysMade"), L"CLSID " + mPlatform + L";Interface " + mPlatform + L";TypeLib");

    ASSERT_EQ(Unregister(mModule, mStore, kClasses), S_OK);
    ASSERT_EQ(At(mVersionKey, L"KeysMade"), L"TypeLib");
    ASSERT_EQ(Register(mModule, mStore, kClasses), S_OK);
    Drop(mVersionKey + L"\\0\\" + mOtherPlatform);
    ASSERT_EQ(Unregister(mModule, mStore, kClasses), S_OK);

    EXPECT_EQ(Differences(before, Now()), kNoDifference);
}

TEST_F(Registration, ARestWithoutAFileIsRemoved) {
    const RegistrySnapshot before = Now();
    ASSERT_EQ(Register(mModule, mStore, kClasses), S_OK);
    Drop(mVersionKey + L"\\0");
    for (const std::wstring name : kClassNames)
        Drop(L"CLSID\\" + ClassIdOf(name) + L"\\InprocServer32");

    ASSERT_EQ(Unregister(mModule, mStore, kClasses), S_OK);

    EXPECT_EQ(Differences(before, Now()), kNoDifference);
}

TEST_F(Registration, ModuleWithoutATypeLibraryIsRefused) {
    const RegistrySnapshot before = Now();

    EXPECT_TRUE(FAILED(Register(GetModuleHandleW(L"kernel32.dll"), mStore, kClasses)));
    EXPECT_TRUE(FAILED(Unregister(GetModuleHandleW(L"kernel32.dll"), mStore, kClasses)));

    EXPECT_EQ(Differences(before, Now()), kNoDifference);
}

// On 64-bit Windows each bitness has classes of its own.
TEST(WindowsRegistrationStoreViews, AreToldApart) {
    constexpr REGSAM kOwn = sizeof(void*) == 8 ? KEY_WOW64_64KEY : KEY_WOW64_32KEY;
    constexpr REGSAM kOther = sizeof(void*) == 8 ? KEY_WOW64_32KEY : KEY_WOW64_64KEY;
    constexpr wchar_t kPath[] = L"Software\\Classes\\CLSID\\{6b776f75-0009-4a61-9e2d-30b7c1d25f11}";
    const auto make = [&](REGSAM view) {
        HKEY key = nullptr;
        const LSTATUS made =
            RegCreateKeyExW(HKEY_LOCAL_MACHINE, kPath, 0, nullptr, 0, KEY_WRITE | view, nullptr, &key, nullptr);
        if (made == 0) RegCloseKey(key);
        return made;
    };
    const auto remove = [&](REGSAM view) { EXPECT_EQ(RegDeleteKeyExW(HKEY_LOCAL_MACHINE, kPath, view, 0), 0); };
    WindowsRegistrationStore store(HKEY_LOCAL_MACHINE);
    bool isEmpty = false;

    const LSTATUS made = make(kOther);
    if (made == ERROR_ACCESS_DENIED) GTEST_SKIP() << "this takes an administrator's rights";
    ASSERT_EQ(made, 0);
    const bool isOneView = store.IsEmpty(kPath, isEmpty) == 0;
    const bool otherHasIt = store.OtherBitnessHas(kPath);
    remove(kOther);
    if (isOneView) GTEST_SKIP() << "this system has one view of the registry";
    EXPECT_TRUE(otherHasIt);

    ASSERT_EQ(make(kOwn), 0);
    EXPECT_EQ(store.IsEmpty(kPath, isEmpty), 0);
    EXPECT_FALSE(store.OtherBitnessHas(kPath));
    remove(kOwn);
}

/// The real keys of the machine and of the user, in both views.
class RealRegistration : public testing::TestWithParam<Scope> {
protected:
    static std::vector<RegistrySnapshot> Everything() {
        return {SnapshotOf(HKEY_LOCAL_MACHINE, L"Software\\Classes", KEY_WOW64_64KEY),
                SnapshotOf(HKEY_LOCAL_MACHINE, L"Software\\Classes", KEY_WOW64_32KEY),
                SnapshotOf(HKEY_CURRENT_USER, L"Software\\Classes", KEY_WOW64_64KEY),
                SnapshotOf(HKEY_CURRENT_USER, L"Software\\Classes", KEY_WOW64_32KEY)};
    }
};

TEST_P(RealRegistration, UnregisteringLeavesTheRegistryAsItWas) {
    const HINSTANCE module = GetModuleHandleW(nullptr);
    const std::vector<RegistrySnapshot> before = Everything();

    const HRESULT registered = Register(module, GetParam());
    if (registered == E_ACCESSDENIED && GetParam() == Scope::kMachine) {
        GTEST_SKIP() << "registering for the machine takes an administrator's rights";
    }
    ASSERT_EQ(registered, S_OK);
    const std::vector<RegistrySnapshot> between = Everything();
    ASSERT_EQ(Unregister(module, GetParam()), S_OK);
    const std::vector<RegistrySnapshot> after = Everything();

    const bool machine = GetParam() == Scope::kMachine;
    EXPECT_EQ(before[0] == between[0] && before[1] == between[1], !machine);
    EXPECT_EQ(before[2] == between[2] && before[3] == between[3], machine);
    for (std::size_t view = 0; view < before.size(); ++view) {
        EXPECT_EQ(Differences(before[view], after[view]), kNoDifference) << "view " << view;
    }
}

INSTANTIATE_TEST_SUITE_P(Scopes, RealRegistration, testing::Values(Scope::kMachine, Scope::kUser),
                         [](const auto& tested) { return tested.param == Scope::kUser ? "User" : "Machine"; });

TEST(MachineRegistration, TheSystemFindsClassesAndTypeLibrary) {
    const HINSTANCE module = GetModuleHandleW(nullptr);
    const ServerDescription server = DescribeServer(module);
    CLSID libraryId;
    ASSERT_EQ(CLSIDFromString(server.libraryId.c_str(), &libraryId), S_OK);
    CLSID classId;
    ASSERT_EQ(CLSIDFromProgID(L"KWOUtil.KWOTimer", &classId), CO_E_CLASSSTRING);
    const HRESULT registered = Register(module, Scope::kMachine);
    if (registered == E_ACCESSDENIED) GTEST_SKIP() << "registering for the machine takes an administrator's rights";
    ASSERT_EQ(registered, S_OK);

    com_support::Bstr path;
    const HRESULT pathFound = QueryPathOfRegTypeLib(libraryId, 4, 5, 0, path.Out());
    const HRESULT classFound = CLSIDFromProgID(L"KWOUtil.KWOTimer", &classId);
    com_support::ComPtr<ITypeLib> library;
    const HRESULT loaded = LoadRegTypeLib(libraryId, 4, 5, 0, library.Out());
    EXPECT_EQ(Unregister(module, Scope::kMachine), S_OK);

    EXPECT_EQ(classFound, S_OK);
    EXPECT_EQ(pathFound, S_OK);
    // Windows may count the zero at the end, too.
    EXPECT_STREQ(path.Get(), server.modulePath.c_str());
    EXPECT_EQ(loaded, S_OK);
}

}  // namespace
}  // namespace kwo::com

#include <cstdio>
#include <cstdlib>
#include <functional>
#include <string>
#include <vector>

#include "com_support/owned_array.h"
#include "com_support/type_description.h"
#include "com_test.h"
#include "dll_under_test.h"
#include "process_resources.h"
#include "thread.h"

namespace kwo::com_test {
namespace {

// A host may load and unload a DLL, or start and end a thread, many times a minute for weeks. Whatever one round loses
// is lost again in each round.

/// What a round loads and uses.
struct Subject {
    std::wstring path;
    CLSID classId;
    std::function<void(IDispatch*)> use;
};

void RaiseAndForget(IDispatch* object, const wchar_t* member, const std::vector<Var>& arguments) {
    EXPECT_EQ(Hex(Call(object, member, arguments).status), Hex(DISP_E_EXCEPTION));
    SetErrorInfo(0, nullptr);
}

Subject TimerSubject() {
    return {DllPath(), ClassIdIn(DllPath(), L"KWOTimer"), [](IDispatch* timer) {
                EXPECT_EQ(Hex(Call(timer, L"AddRelativeAlarm", {60'000, 1}).status), Hex(S_OK));
                EXPECT_EQ(Hex(Call(timer, L"CancelTimers").status), Hex(S_OK));
                RaiseAndForget(timer, L"AddAlarm", {Var::Date(1e300), 7});
            }};
}

Subject CompanionSubject() {
    const std::wstring path = DistFolder() + L"\\KWOInit.dll";
    return {path, ClassIdIn(path, L"KWOInitialize"), [](IDispatch* object) {
                LONG language = 0;
                auto index = com_support::OwnedArray::Adopt(SafeArrayCreateVector(VT_I2, 0, 1));
                auto texts = com_support::OwnedArray::Adopt(SafeArrayCreateVector(VT_BSTR, 0, 1));
                RaiseAndForget(object, L"KWO_MsgTableLoad",
                               {Var::Ref(&language), Var::Reference(VT_ARRAY | VT_I2, index.InOut()),
                                Var::Reference(VT_ARRAY | VT_BSTR, texts.InOut())});
            }};
}

Subject DictionarySubject() {
    CLSID id = {};
    EXPECT_EQ(Hex(CLSIDFromProgID(L"Scripting.Dictionary", &id)), Hex(S_OK));
    return {L"scrrun.dll", id, [](IDispatch* object) {
                EXPECT_EQ(Hex(Call(object, L"Add", {L"key", 1}).status), Hex(S_OK));
                EXPECT_NE(Hex(Call(object, L"Add", {L"key", 1}).status), Hex(S_OK));
                SetErrorInfo(0, nullptr);
            }};
}

ComPtr<IDispatch> Make(HMODULE module, REFCLSID id) {
    using GetClassObject = HRESULT(STDAPICALLTYPE*)(REFCLSID, REFIID, void**);
    const auto getClassObject =
        reinterpret_cast<GetClassObject>(reinterpret_cast<void*>(GetProcAddress(module, "DllGetClassObject")));
    ComPtr<IClassFactory> factory;
    ComPtr<IDispatch> object;
    EXPECT_EQ(Hex(getClassObject(id, IID_IClassFactory, factory.OutVoid())), Hex(S_OK));
    EXPECT_EQ(Hex(factory->CreateInstance(nullptr, IID_IDispatch, object.OutVoid())), Hex(S_OK));
    return object;
}

/// Load, create, call, raise an error, release, unload.
void LoadAndUse(const Subject& subject) {
    const HMODULE module = LoadLibraryW(subject.path.c_str());
    ASSERT_NE(module, nullptr);
    {
        const ComPtr<IDispatch> object = Make(module, subject.classId);
        subject.use(object.Get());
    }
    FreeLibrary(module);
    ASSERT_EQ(GetModuleHandleW(subject.path.c_str()), nullptr);
}

/// A thread of a host's that has an apartment of its own, does its work and ends.
void LoadAndUseOnAThread(const Subject& subject) {
    Thread thread([&subject] {
        CoInitialize(nullptr);
        LoadAndUse(subject);
        CoUninitialize();
    });
}

/// The same while the host keeps the DLL.
void UseOnAThread(HMODULE module, const Subject& subject) {
    Thread thread([module, &subject] {
        CoInitialize(nullptr);
        subject.use(Make(module, subject.classId).Get());
        CoUninitialize();
    });
}

Resources Growth(int rounds, const std::function<void()>& round) {
    for (int at = 0; at < 10; ++at)
        round();
    const Resources before = ResourcesInUse();
    for (int at = 0; at < rounds && !::testing::Test::HasFailure(); ++at)
        round();
    return ResourcesInUse() - before;
}

/// Many enough that one slot or one block of memory a round cannot be overlooked. KWO_ROUNDS sets another number:
/// 10,000 rounds of all tests take some five minutes and find nothing more.
int Rounds() {
    wchar_t text[16] = {};
    return GetEnvironmentVariableW(L"KWO_ROUNDS", text, 16) != 0 ? _wtoi(text) : 500;
}

void ExpectNoMoreThan(const Resources& reference, const Resources& growth, int rounds) {
    EXPECT_LE(growth.slots, 0) << "thread-local slots";
    EXPECT_LE(growth.handles, reference.handles) << "handles";
    // The heaps grow and the system keeps books in steps; a round's own loss is more than this.
    EXPECT_LT(growth.heapBytes, reference.heapBytes + rounds * 4) << "bytes in the heaps";
    EXPECT_LT(growth.committedBytes, reference.committedBytes + 256 * 1024) << "committed bytes";
    std::printf("slots %ld, handles %ld, heap %lld, committed %lld (reference: %ld, %ld, %lld, %lld)\n", growth.slots,
                growth.handles, growth.heapBytes, growth.committedBytes, reference.slots, reference.handles,
                reference.heapBytes, reference.committedBytes);
}

class Endurance : public ::testing::Test {
protected:
    /// ./test runs these in a process of their own, whose memory nothing else has grown.
    void SetUp() override { ASSERT_TRUE(LetTheDllGo()) << "an earlier test of this process still holds the DLL"; }

    template <class Round>
    static void ExpectNothingLost(const Subject& subject, Round round) {
        const int rounds = Rounds();
        const Subject known = DictionarySubject();
        const Resources reference = Growth(rounds, [&] { round(known); });
        const Resources growth = Growth(rounds, [&] { round(subject); });
        ExpectNoMoreThan(reference, growth, rounds);
    }
    static void ExpectNothingLostByThreads(const Subject& subject) {
        const HMODULE module = LoadLibraryW(subject.path.c_str());
        const HMODULE known = LoadLibraryW(DictionarySubject().path.c_str());
        ExpectNothingLost(subject,
                          [&](const Subject& one) { UseOnAThread(one.path == subject.path ? module : known, one); });
        FreeLibrary(known);
        FreeLibrary(module);
    }
};

TEST_F(Endurance, LoadingAndUnloadingTheComponentLosesNothing) {
    ExpectNothingLost(TimerSubject(), LoadAndUse);
}

TEST_F(Endurance, LoadingAndUnloadingTheCompanionLosesNothing) {
    ExpectNothingLost(CompanionSubject(), LoadAndUse);
}

TEST_F(Endurance, ThreadsThatLoadAndUnloadTheComponentLoseNothing) {
    ExpectNothingLost(TimerSubject(), LoadAndUseOnAThread);
}

TEST_F(Endurance, ThreadsThatLoadAndUnloadTheCompanionLoseNothing) {
    ExpectNothingLost(CompanionSubject(), LoadAndUseOnAThread);
}

TEST_F(Endurance, ThreadsThatUseATimerLoseNothing) {
    ExpectNothingLostByThreads(TimerSubject());
}

TEST_F(Endurance, ThreadsThatUseTheCompanionLoseNothing) {
    ExpectNothingLostByThreads(CompanionSubject());
}

}  // namespace
}  // namespace kwo::com_test

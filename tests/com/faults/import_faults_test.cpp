// Call n of each function that the DLLs take from Windows fails: once, and from then on. Nothing may crash, hang or be
// left behind, the caller gets what is documented, and the same object works when the failure is over.

#include <algorithm>
#include <atomic>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <set>
#include <stdexcept>
#include <string>
#include <string_view>

#include "allocation_count.h"
#include "dll_under_test.h"
#include "fault_rounds.h"
#include "process_resources.h"
#include "rights.h"
#include "thread.h"
#include "windows_calls/import_table.h"
#include "wine.h"

namespace kwo::com_test {

void ReplaceWhatTheUserWouldSee(windows_calls::WindowsCalls& calls);
/// For the clock that the scenarios have: what falls due within a round falls due in every other one.
void BeginAtAFullSecond();

namespace {

using windows_calls::WindowsCalls;

enum class Repeat { Once, FromThenOn };

/// Which call fails, and whether the object is also released while it does.
struct Fault {
    const windows_calls::Function* function = nullptr;
    long which = 0;
    Repeat repeat = Repeat::Once;
    bool untilReleased = false;
};

std::string TextOf(const Fault& fault) {
    if (fault.function == nullptr) return "no fault";
    return std::string(fault.function->name) + " call " + std::to_string(fault.which) +
           (fault.repeat == Repeat::Once ? "" : " and all later ones") +
           (fault.untilReleased ? ", until the object is released" : "");
}

struct Result {
    bool happened = false;
    std::vector<Answer> during;
    std::vector<Answer> after;
    bool isSameObject = false;
    std::map<std::string, long> balance;
    long automationBlocks = 0;
    ULONG references = 0;
    HRESULT canUnload = S_OK;
    std::map<const windows_calls::Function*, long> calls;
};

/// Ends the program when a round takes too long, and says which round that was.
class Watchdog {
public:
    Watchdog() : mThread([this] { Watch(); }) {}
    ~Watchdog() { mEnds = true; }
    void Begin(const std::string& round) {
        lstrcpynA(mRound, round.c_str(), sizeof mRound);
        mBegin = GetTickCount();
    }
    void End() { mBegin = 0; }
    const char* Round() const { return mRound; }

private:
    static constexpr DWORD kTooLongMs = 20'000;
    void Watch() {
        while (!mEnds) {
            Sleep(100);
            const DWORD begin = mBegin;
            if (begin == 0 || GetTickCount() - begin < kTooLongMs) continue;
            std::printf("[  FAILED  ] hangs: %s\n", mRound);
            std::fflush(stdout);
            TerminateProcess(GetCurrentProcess(), 3);
        }
    }
    char mRound[400] = "";
    std::atomic<DWORD> mBegin = 0;
    std::atomic<bool> mEnds = false;
    Thread mThread;
};

Watchdog* theWatchdog = nullptr;

void SayWhereItCrashed(const char* how) {
    std::printf("[  FAILED  ] %s: %s\n", how, theWatchdog != nullptr ? theWatchdog->Round() : "");
    std::fflush(stdout);
    TerminateProcess(GetCurrentProcess(), 4);
}
LPTOP_LEVEL_EXCEPTION_FILTER thePrintStack = nullptr;
LONG WINAPI OnCrash(EXCEPTION_POINTERS* exception) {
    if (thePrintStack != nullptr) thePrintStack(exception);
    SayWhereItCrashed("crashes");
    return EXCEPTION_EXECUTE_HANDLER;
}
void OnAbort(int) {
    SayWhereItCrashed("aborts");
}

/// A scenario, and the DLLs that it runs in.
class Rounds {
public:
    explicit Rounds(const NamedScenario& scenario) : mScenario(scenario) {
        if (!scenario.loadsAnew) Load();
    }
    ~Rounds() { Unload(); }

    /// One round, on a thread of its own: with the fault, and then without it.
    Result Run(const Fault& fault) {
        if (mScenario.loadsAnew) Load();
        Result result;
        const long blocks = AllocationCount::Instance().InUse();
        theWatchdog->Begin(std::string(mScenario.name) + ", " + TextOf(fault));
        Thread([&] { RunHere(fault, result); }).Join();
        theWatchdog->End();
        result.balance = mCalls->Balance();
        // A DLL keeps some memory until it is unloaded.
        if (mScenario.loadsAnew) result.balance.erase(windows_calls::NameOf(windows_calls::Held::Block));
        mIsIntact = mIsIntact && mCalls->FreedMemoryIsIntact();
        using CanUnload = HRESULT(STDAPICALLTYPE*)();
        result.canUnload =
            reinterpret_cast<CanUnload>(reinterpret_cast<void*>(GetProcAddress(mModule, "DllCanUnloadNow")))();
        if (mScenario.loadsAnew) Unload();
        result.automationBlocks = AllocationCount::Instance().InUse() - blocks;
        return result;
    }
    bool FreedMemoryIsIntact() const { return mIsIntact; }

private:
    void Load() {
        const std::wstring folder = DistFolder() + L"\\";
        mModule = LoadLibraryW((folder + mScenario.module).c_str());
        // The component loads its companion when it needs a text.
        mCompanion = LoadLibraryW((folder + L"KWOInit.dll").c_str());
        std::vector<HMODULE> modules = {mModule};
        if (mCompanion != mModule) modules.push_back(mCompanion);
        mCalls = std::make_unique<WindowsCalls>(modules);
        ReplaceWhatTheUserWouldSee(*mCalls);
        mCalls->OverwriteFreedMemory(true);
    }
    void Unload() {
        if (mModule == nullptr) return;
        mCalls.reset();
        FreeLibrary(std::exchange(mModule, nullptr));
        FreeLibrary(std::exchange(mCompanion, nullptr));
    }

    void RunHere(const Fault& fault, Result& result) {
        CoInitialize(nullptr);
        mCalls->WatchThisThread();
        mCalls->ResetCounts();
        BeginAtAFullSecond();
        {
            const std::unique_ptr<Scenario> scenario = mScenario.make();
            Stage stage(mModule, *mCalls);
            if (fault.function != nullptr) {
                mCalls->Fail(*fault.function, fault.which, fault.repeat == Repeat::FromThenOn);
            }
            scenario->Run(stage);
            if (fault.untilReleased) stage.Release();
            result.happened = mCalls->StopFailing();
            SetErrorInfo(0, nullptr);
            result.during = stage.TakeAnswers();
            for (const windows_calls::Function* const function : windows_calls::AllFunctions())
                result.calls[function] = function->calls;
            result.isSameObject = stage.HasObject();
            scenario->Run(stage);
            result.after = stage.TakeAnswers();
            stage.Release();
            SetErrorInfo(0, nullptr);
            result.references = scenario->References();
        }
        CoUninitialize();
    }

    const NamedScenario& mScenario;
    HMODULE mModule = nullptr;
    HMODULE mCompanion = nullptr;
    std::unique_ptr<WindowsCalls> mCalls;
    bool mIsIntact = true;
};

std::string TextOf(const std::vector<Answer>& answers) {
    std::string text;
    for (const Answer& answer : answers)
        text += "\n  " + answer.Text();
    return text;
}

/// With KWO_ALL_FAULTS=1 every call fails; with 2/5 the second one and every fifth after it, so that 1/5 to 5/5
/// together make every call fail.
struct Share {
    bool ofAll = false;
    long first = 1;
    long step = 1;
};

Share ShareOfFaults() {
    const char* const wanted = std::getenv("KWO_ALL_FAULTS");
    if (wanted == nullptr) return {};
    Share share = {.ofAll = true};
    if (std::sscanf(wanted, "%ld/%ld", &share.first, &share.step) == 1) share.first = 1;
    if (share.step < 1 || share.first < 1 || share.first > share.step)
        throw std::invalid_argument(std::string("KWO_ALL_FAULTS=") + wanted + " is no share");
    return share;
}

bool AllFaults() {
    return ShareOfFaults().ofAll;
}

/// Names each round after which there are other handles than before, if the environment variable KWO_WATCH_HANDLES is
/// set: looking for them takes longer than a round.
class HandleWatch {
public:
    void Look(const std::string& round) {
        if (!mLooks) return;
        const std::map<std::string, long> before = std::exchange(mKinds, HandlesByKind());
        if (before == mKinds || before.empty()) return;
        std::printf("other handles after %s\n", round.c_str());
        for (const auto& [kind, count] : mKinds) {
            const auto known = before.find(kind);
            const long change = count - (known == before.end() ? 0 : known->second);
            if (change != 0) std::printf("  %+ld %s\n", change, kind.c_str());
        }
        std::fflush(stdout);
    }

private:
    const bool mLooks = std::getenv("KWO_WATCH_HANDLES") != nullptr;
    std::map<std::string, long> mKinds;
};

/// The calls that are to fail: those of the share, or in the short version the first one, the last one and some
/// between.
std::vector<long> Chosen(const windows_calls::Function& function, long calls) {
    Share share = ShareOfFaults();
    const long most = std::string_view(function.name) == "malloc" ? 6 : 2;
    if (!share.ofAll && calls > most) share.step = (calls + most - 2) / (most - 1);
    std::vector<long> chosen;
    for (long which = share.first; which <= calls; which += share.step)
        chosen.push_back(which);
    if (!share.ofAll && chosen.back() != calls) chosen.push_back(calls);
    return chosen;
}

/// What a caller of this scenario may be told when calls of these functions fail.
bool IsDocumented(const NamedScenario& scenario, const windows_calls::Function& function, HRESULT status);
/// Whether they fail for want of memory.
bool TakesMemory(const windows_calls::Function& function);

class ImportFaults : public ::testing::TestWithParam<NamedScenario> {
protected:
    static void SetUpTestSuite() {
        if (theWatchdog != nullptr) return;
        theWatchdog = new Watchdog;  // for good
        thePrintStack = SetUnhandledExceptionFilter(&OnCrash);
        std::signal(SIGABRT, &OnAbort);
    }

    /// A round whose result can be compared. The first exception of a 32-bit DLL makes the unwinder's table, which
    /// stays as long as the DLL: what a round leaves behind counts if it leaves it again.
    Result RunFaulty(Rounds& rounds, const Result& reference, const Fault& fault) {
        ++mRounds;
        Result result = rounds.Run(fault);
        if (result.balance != reference.balance) result = rounds.Run(fault);
        mHandles.Look(TextOf(fault));
        return result;
    }

    void Expect(const Result& reference, const Result& result, const Fault& fault) {
        const std::string where = std::string(GetParam().name) + ", " + TextOf(fault);
        EXPECT_EQ(result.balance, reference.balance) << where;
        EXPECT_EQ(result.automationBlocks, reference.automationBlocks) << where;
        EXPECT_EQ(result.references, 0u) << where;
        EXPECT_EQ(Hex(result.canUnload), Hex(S_OK)) << where;
        EXPECT_EQ(TextOf(result.after), TextOf(reference.after)) << where << ", after it";
        for (const Answer& answer : result.during) {
            if (fault.function == nullptr || IsUsual(reference, answer)) continue;
            EXPECT_TRUE(IsDocumented(GetParam(), *fault.function, answer.status)) << where << ": " << answer.Text();
        }
        ExpectNoWrongAnswer(reference, result, fault);
    }

    static bool IsUsual(const Result& reference, const Answer& answer) {
        return std::ranges::any_of(reference.during, [&](const Answer& usual) {
            return usual.step == answer.step && usual.status == answer.status;
        });
    }

    /// Without memory a step fails or does what it always does; it does not succeed with another answer, and does not
    /// fail as always with other texts.
    static void ExpectNoWrongAnswer(const Result& reference, const Result& result, const Fault& fault) {
        if (fault.function == nullptr || !TakesMemory(*fault.function)) return;
        for (std::size_t at = 0; at < std::min(reference.during.size(), result.during.size()); ++at) {
            const Answer& answer = result.during[at];
            // What follows a step that has failed may differ for that reason.
            if (answer.status != reference.during[at].status) return;
            EXPECT_TRUE(answer.IsLike(reference.during[at]))
                << GetParam().name << ", " << TextOf(fault) << ": " << answer.TextWithError()
                << "\nusual: " << reference.during[at].TextWithError();
        }
    }

    long mRounds = 0;
    HandleWatch mHandles;
};

constexpr HRESULT kNoObjectSet = static_cast<HRESULT>(0x800A005B);

struct Documented {
    const char* function;
    HRESULT status;
};
constexpr HRESULT kUnreadable = static_cast<HRESULT>(0x80047601);
constexpr HRESULT kBadArray = static_cast<HRESULT>(0x80047607);
constexpr HRESULT kNoResources = HRESULT_FROM_WIN32(ERROR_NO_SYSTEM_RESOURCES);
constexpr HRESULT kDenied = HRESULT_FROM_WIN32(ERROR_ACCESS_DENIED);
constexpr Documented kDocumented[] = {
    // The type library describes the classes: without it there are no objects.
    {"LoadTypeLibEx", TYPE_E_CANTLOADLIBRARY},
    {"GetModuleFileNameW", TYPE_E_CANTLOADLIBRARY},
    // Fonts, and the arrays in which arguments reach procedures of the host.
    {"OleCreateFontIndirect", E_OUTOFMEMORY},
    {"SafeArrayAccessData", E_OUTOFMEMORY},
    // Registration.
    {"GetModuleFileNameW", HRESULT_FROM_WIN32(ERROR_NOT_ENOUGH_MEMORY)},
    {"RegOpenKeyExW", kNoResources},
    {"RegCreateKeyExW", kNoResources},
    {"RegQueryInfoKeyW", kNoResources},
    {"RegQueryValueExW", kNoResources},
    {"RegSetValueExW", kNoResources},
    {"RegDeleteKeyW", kDenied},
    {"RegDeleteValueW", kDenied},
    // The companion: the message file, and the arrays that it fills.
    {"CreateFileW", kUnreadable},
    {"GetFileSizeEx", kUnreadable},
    {"ReadFile", kUnreadable},
    {"SafeArrayAccessData", kBadArray},
    {"SafeArrayAccessData", DISP_E_TYPEMISMATCH},
    {"SafeArrayGetVartype", kBadArray},
    {"SafeArrayGetVartype", DISP_E_TYPEMISMATCH},
};

/// A control whose Create has failed raises error 91 from then on.
bool HasControls(const NamedScenario& scenario) {
    static const std::set<std::string_view> names = {"Splitter", "Button", "Calendar"};
    return names.contains(scenario.name);
}

bool IsDocumented(const NamedScenario& scenario, const windows_calls::Function& function, HRESULT status) {
    if (status == E_OUTOFMEMORY && TakesMemory(function)) return true;
    if (status == kNoObjectSet && HasControls(scenario)) return true;
    return std::ranges::any_of(kDocumented, [&](const Documented& one) {
        return std::string_view(one.function) == function.name && one.status == status;
    });
}

bool TakesMemory(const windows_calls::Function& function) {
    static const std::set<std::string_view> names = {"malloc",
                                                     "calloc",
                                                     "SysAllocStringLen",
                                                     "SafeArrayCreate",
                                                     "SafeArrayPutElement",
                                                     "SafeArrayRedim",
                                                     "VariantCopy",
                                                     "VariantCopyInd",
                                                     "VariantChangeTypeEx",
                                                     "VarFormat",
                                                     "SafeArrayGetElement",
                                                     "VarDateFromStr",
                                                     "CreateErrorInfo",
                                                     "WideCharToMultiByte",
                                                     "MultiByteToWideChar",
                                                     "CoCreateInstance"};
    return names.contains(function.name);
}

TEST_P(ImportFaults, LeaveNothingBehindAndAreTold) {
    const DWORD begin = GetTickCount();
    Rounds rounds(GetParam());
    // What is kept for the life of the DLL is made by the first round.
    if (!GetParam().loadsAnew) rounds.Run({});
    const Result reference = rounds.Run({});
    const Result again = rounds.Run({});
    ASSERT_EQ(TextOf(reference.during), TextOf(reference.after)) << "the scenario cannot be repeated";
    ASSERT_EQ(TextOf(reference.during), TextOf(again.during)) << "the scenario has no fixed answers";
    Expect(reference, again, {});
    if (!GetParam().loadsAnew) {  // else the DLL still holds something when the round is counted
        EXPECT_TRUE(reference.balance.empty()) << ::testing::PrintToString(reference.balance);
    }
    EXPECT_EQ(reference.automationBlocks, 0);
    CloseKeysLostByWine();
    const long handles = HandlesInUse();
    const std::map<std::string, long> kinds = HandlesByKind();
    mHandles.Look("the usual rounds");

    long functions = 0;
    for (const windows_calls::Function* const function : windows_calls::AllFunctions()) {
        const long calls = reference.calls.at(function);
        if (calls == 0 || !function->canFail) continue;
        ++functions;
        for (const long which : Chosen(*function, calls)) {
            for (const Repeat repeat : {Repeat::Once, Repeat::FromThenOn}) {
                for (const bool untilReleased : {false, true}) {
                    // The short version tries both on one of the two.
                    if (!AllFaults() && untilReleased != (repeat == Repeat::FromThenOn)) continue;
                    const Fault fault = {function, which, repeat, untilReleased};
                    const Result result = RunFaulty(rounds, reference, fault);
                    EXPECT_TRUE(result.happened) << TextOf(fault);
                    Expect(reference, result, fault);
                }
            }
        }
        // What is reached only by the release, or after something else has failed.
        for (long which = calls + 1;; ++which) {
            const Fault fault = {function, which, Repeat::Once, true};
            const Result result = RunFaulty(rounds, reference, fault);
            Expect(reference, result, fault);
            if (!result.happened) break;
        }
    }
    EXPECT_TRUE(rounds.FreedMemoryIsIntact()) << "something was written after it had been freed";
    CloseKeysLostByWine();
    EXPECT_LT(HandlesInUse(), handles + 8)
        << "before: " << ::testing::PrintToString(kinds) << "\nnow: " << ::testing::PrintToString(HandlesByKind());
    std::printf("%s: %ld functions, %ld rounds, %lu ms\n", GetParam().name, functions, mRounds, GetTickCount() - begin);
}

/// Registering the component takes a thousand calls: the short version looks at the companion's alone.
std::vector<NamedScenario> ChosenScenarios() {
    std::vector<NamedScenario> chosen = Scenarios();
    if (!AllFaults())
        std::erase_if(chosen, [](const auto& one) { return std::string_view(one.name) == "Registration"; });
    // They register for everybody.
    if (!MayRegisterForAll())
        std::erase_if(chosen, [](const auto& one) { return std::string_view(one.name).starts_with("Registration"); });
    return chosen;
}

INSTANTIATE_TEST_SUITE_P(Scenarios, ImportFaults, ::testing::ValuesIn(ChosenScenarios()),
                         [](const auto& parameter) { return std::string(parameter.param.name); });

TEST(KeysOfWine, AreLostWhereAnObjectHasNoServer) {
    if (!IsWine()) GTEST_SKIP() << "on Windows no key is lost";
    CoInitialize(nullptr);
    CloseKeysLostByWine();
    ComPtr<IUnknown> object;
    const CLSID nobody = {0x6b776f75, 1, 2, {3, 4, 5, 6, 7, 8, 9, 10}};
    EXPECT_EQ(Hex(CoCreateInstance(nobody, nullptr, CLSCTX_SERVER, IID_IUnknown, object.OutVoid())),
              Hex(REGDB_E_CLASSNOTREG));
    CoUninitialize();
    const bool hasOtherBitness = sizeof(void*) == 8;  // the prefix for 32 bits has nothing else
    EXPECT_EQ(CloseKeysLostByWine() > 0, hasOtherBitness) << "if it loses none, all keys count";
}

/// What a checked build takes besides: to find its guard of the stack, and to say why it ends.
bool IsOfACheckedBuild([[maybe_unused]] const std::string& name) {
#ifdef _GLIBCXX_ASSERTIONS
    static const std::set<std::string> names = {"CryptAcquireContextA",
                                                "CryptGenRandom",
                                                "CryptReleaseContext",
                                                "_assert",
                                                "_exit",
                                                "_open",
                                                "_write",
                                                "getenv",
                                                "isspace",
                                                "sprintf",
                                                "strstr"};
    return names.contains(name);
#else
    return false;
#endif
}

/// What is left out of the list of functions: it computes, or waits, or ends the program, and has nothing to refuse.
bool CannotFail(const std::string& name) {
    static const std::set<std::string> names = {
        // The C run-time.
        "___lc_codepage_func", "___mb_cur_max_func", "__iob_func", "_amsg_exit", "_errno", "_initterm", "_lock",
        "_unlock", "_read", "_close", "abort", "fputc", "fputs", "fputwc", "fwprintf", "fwrite", "localeconv", "memchr",
        "memcmp", "memcpy", "memmove", "memset", "strcmp", "strerror", "strlen", "strncmp", "strchr", "atoi",
        "setlocale", "__mb_cur_max", "_iob", "strtoul", "vfprintf", "wcslen",
        // Locks, threads and the unwinder.
        "AcquireSRWLockExclusive", "ReleaseSRWLockExclusive", "TryAcquireSRWLockExclusive", "InitializeCriticalSection",
        "EnterCriticalSection", "LeaveCriticalSection", "DeleteCriticalSection", "GetCurrentThreadId", "Sleep",
        "TlsGetValue", "RaiseException", "RtlCaptureContext", "RtlLookupFunctionEntry", "RtlUnwindEx",
        "RtlVirtualUnwind", "ReleaseSemaphore", "WaitForSingleObject", "VirtualProtect", "VirtualQuery",
        "InterlockedIncrement",
        // Questions without a failure, and what gives back.
        "GetLastError", "SetLastError", "GetThreadErrorMode", "LocalFree", "FreeLibrary", "IsDBCSLeadByteEx",
        "OutputDebugStringW", "StringFromGUID2", "SysFreeString", "SysStringLen", "SysStringByteLen", "VariantInit",
        "VariantClear", "GetWindowLongPtrW", "GetWindowLongW"};
    return names.contains(name);
}

TEST(ImportList, HasEveryFunctionThatTheDllsTake) {
    for (const wchar_t* const name : {L"KWOUtil.dll", L"KWOInit.dll"}) {
        const HMODULE module = LoadLibraryW((DistFolder() + L"\\" + name).c_str());
        ASSERT_NE(module, nullptr);
        int count = 0;
        windows_calls::ForEachImport(module, [&](const char* import, void**) {
            ++count;
            EXPECT_TRUE(windows_calls::FindFunction(import) != nullptr || CannotFail(import) ||
                        IsOfACheckedBuild(import))
                << import << " is in no list";
        });
        EXPECT_GT(count, 50);
        FreeLibrary(module);
    }
}

}  // namespace
}  // namespace kwo::com_test

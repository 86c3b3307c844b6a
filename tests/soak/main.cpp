// Uses every class of the component in one process for a long time, and says whether anything is lost, late, early,
// or grows.
//     soak SECONDS [SEED] [--plant FAULT,...] [--only WORK,...]
// The exit code is 0 if nothing was wrong, and 3 if the run was too short to tell whether anything grows. FAULT is a
// fault of this program's own, to see that it is found: object, handle, gdi, user, bytes, lost-tick, lost-alarm,
// double-tick or double-alarm. WORK is a part of the work, to find out where a fault comes from: timers, scripts,
// apartments, or one of kActions. KWO_DIST names the folder of KWOUtil.dll and KWOInit.dll.

#include <windows.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <optional>
#include <set>
#include <sstream>
#include <string>

#include "allocation_count.h"
#include "apartment_work.h"
#include "census.h"
#include "findings.h"
#include "flatness.h"
#include "form_work.h"
#include "lateness.h"
#include "member_work.h"
#include "message_loop.h"
#include "pulse.h"
#include "registered_as_allowed.h"
#include "script_work.h"
#include "timer_work.h"

namespace kwo::soak {
namespace {

constexpr int kWrong = 1;
constexpr int kCannotRun = 2;
constexpr int kCannotTell = 3;
constexpr double kWarmUpMs = 60'000;

void Process(int ms) {
    if (kwohost::RunMessages(std::chrono::milliseconds(ms), [] {})) Found("somebody asked the program to quit");
}

constexpr const char* kActions[] = {"forms",   "tray",     "registry", "metrics", "fonts",
                                    "utility", "messages", "patterns", "nothing"};

constexpr const char* kFaults[] = {"object",    "handle",     "gdi",         "user",        "bytes",
                                   "lost-tick", "lost-alarm", "double-tick", "double-alarm"};
constexpr const char* kOtherWork[] = {"timers", "scripts", "apartments"};

/// What the command line asks for.
struct Wanted {
    double seconds = 0;
    std::uint64_t seed = 0;
    std::string plant;  ///< names with commas between them
    std::string only;   ///< the same; empty for everything

    static bool Names(const std::string& list, const std::string& name) {
        return ("," + list + ",").find("," + name + ",") != std::string::npos;
    }
    bool Works(const std::string& name) const { return only.empty() || Names(only, name); }
    /// The first word that nobody knows; empty if all are known.
    std::string Unknown() const {
        std::set<std::string> work(std::begin(kActions), std::end(kActions));
        work.insert(std::begin(kOtherWork), std::end(kOtherWork));
        const std::string fault = FirstBeyond({std::begin(kFaults), std::end(kFaults)}, plant);
        return fault.empty() ? FirstBeyond(work, only) : fault;
    }

private:
    static std::string FirstBeyond(const std::set<std::string>& known, const std::string& list) {
        std::istringstream words(list);
        for (std::string word; std::getline(words, word, ',');)
            if (!known.contains(word)) return word.empty() ? "empty word" : word;
        return {};
    }
};

/// Faults of the program's own, once in each round.
void Plant(const std::string& faults) {
    const auto isWanted = [&](const char* fault) { return Wanted::Names(faults, fault); };
    if (isWanted("object")) static_cast<void>(com_test::Create(L"KWOSysMetrics").Detach());
    if (isWanted("handle")) CreateEventW(nullptr, FALSE, FALSE, nullptr);
    if (isWanted("gdi")) CreatePen(PS_SOLID, 1, 0);
    if (isWanted("user")) CreateMenu();
    if (isWanted("bytes")) HeapAlloc(GetProcessHeap(), 0, 300);
}

/// The companion's registration, beside that of the component.
class Registration {
public:
    Registration()
        : mIsDone(SUCCEEDED(com_test::RegisterAsAllowed(mDll)) && SUCCEEDED(com_test::RegisterAsAllowed(Companion()))) {
    }
    Registration(const Registration&) = delete;
    Registration& operator=(const Registration&) = delete;
    ~Registration() {
        com_test::UnregisterAsAllowed(mDll);
        com_test::UnregisterAsAllowed(Companion());
    }
    bool IsDone() const { return mIsDone; }
    const com_test::Library& Dll() const { return mDll; }

private:
    static com_test::Library Companion() { return com_test::Library(com_test::CompanionPath()); }

    const com_test::Library mDll;
    const bool mIsDone;
};

/// A hidden window of this thread, for tray icons.
class TrayWindow {
public:
    TrayWindow()
        : mWindow(CreateWindowExW(0, L"STATIC", L"KWOUtilSoak", WS_POPUP, 0, 0, 10, 10, nullptr, nullptr,
                                  GetModuleHandleW(nullptr), nullptr)) {}
    TrayWindow(const TrayWindow&) = delete;
    TrayWindow& operator=(const TrayWindow&) = delete;
    ~TrayWindow() { DestroyWindow(mWindow); }
    HWND Get() const { return mWindow; }

private:
    HWND mWindow;
};

class Soak {
public:
    Soak(const Wanted& wanted, const com_test::Library& dll)
        : mLengthMs(wanted.seconds * 1'000),
          mPlant(wanted.plant),
          mDll(dll),
          mRandom(wanted.seed),
          mTimers(mKeeping, wanted.seed + 1),
          mFlatness(static_cast<std::size_t>(wanted.seconds) + Flatness::kFewest) {
        for (std::size_t at = 0; at < std::size(kActions); ++at)
            if (wanted.Works(kActions[at])) mActions.push_back(static_cast<int>(at));
        mWithTimers = wanted.Works("timers");
        mWithScripts = wanted.Works("scripts");
        mWithApartments = wanted.Works("apartments");
    }

    /// False if the run was too short to tell whether anything grows.
    bool Run() {
        const double begin = NowMs();
        std::printf("time       handles    GDI   user   private bytes      heap bytes   objects\n");
        while (NowMs() - begin < mLengthMs) {
            const double left = mLengthMs - (NowMs() - begin);
            Stretch(begin, std::min(left, kStretchMs));
        }
        Judge();
        return mFlatness.Count() >= Flatness::kFewest;
    }

private:
    /// The timers that stay are renewed after each stretch. In between the DLL must find itself unused.
    static constexpr double kStretchMs = 300'000;
    static constexpr double kRoundMs = 10'000;

    void Stretch(double begin, double lengthMs) {
        const double stretchBegin = NowMs();
        if (mWithTimers) mTimers.BeginStanding(static_cast<int>(lengthMs));
        const double roundMs = std::min(kRoundMs, lengthMs / 3);
        while (NowMs() - stretchBegin < lengthMs - roundMs / 2) {
            Round(roundMs);
            const Census census = TakeCensus();
            mKeysLostByWine += census.keysLostByWine;
            const double now = NowMs() - begin;
            if (now > kWarmUpMs || mLengthMs < kWarmUpMs) mFlatness.Add(census);
            std::printf("%6.1f s  %8ld %6ld %6ld %15lld %15lld %9ld\n", now / 1'000, census.handles, census.gdiObjects,
                        census.userObjects, census.privateBytes, census.heapBytes, census.liveObjects);
            std::fflush(stdout);
        }
        mTimers.EndStanding();
        Process(100);
        if (mDll.CanUnloadNow() != S_OK) Found("the DLL says that it is in use, although everything was given back");
        if (LiveObjects() != 0) Found(std::to_string(LiveObjects()) + " objects have not ended");
    }

    void Round(double lengthMs) {
        constexpr double kClosingMs = 1'500;
        constexpr double kPartOfScripts = 0.4;
        const double begin = NowMs();
        const auto isOver = [&](double partMs) { return NowMs() - begin >= partMs; };
        if (mWithTimers) mTimers.BeginRound();
        std::optional<ApartmentWork> apartments;
        if (mWithApartments) apartments.emplace(mRandom.Bits());
        std::optional<FailingScript> basic;
        std::optional<FailingScript> java;
        if (mWithScripts) {  // they end when each of their errors has been raised
            basic.emplace(L"failing.vbs");
            java.emplace(L"failing.js");
        }
        do
            Act();
        while (!isOver(lengthMs * kPartOfScripts));
        basic.reset();
        java.reset();
        while (!isOver(lengthMs - kClosingMs))
            Act();
        Plant(mPlant);
        for (const char* const fault : {"lost-tick", "lost-alarm", "double-tick", "double-alarm"})
            if (Wanted::Names(mPlant, fault)) mTimers.Plant(fault);
        while (apartments && !apartments->HasEnded())
            Process(20);
        apartments.reset();
        mTimers.EndRound(Process);
    }

    void Act() {
        mTimers.Turn();
        switch (mActions.empty() ? static_cast<int>(std::size(kActions)) : mRandom.Of(mActions)) {
            case 0:
                mForms.Use(mRandom);
                break;
            case 1:
                UseTray(mRandom, mWindow.Get());
                break;
            case 2:
                UseRegistry(mRandom);
                break;
            case 3:
                UseMetrics(mRandom);
                break;
            case 4:
                UseFonts(mRandom);
                break;
            case 5:
                UseUtility(mRandom);
                break;
            case 6:
                UseMessages(mRandom);
                break;
            case 7:
                UsePatterns(mRandom);
                break;
            default:
                break;
        }
        Process(30 + mRandom.Below(60));
    }

    void Judge() {
        std::printf("\nforms: %s\n", mForms.Totals().c_str());
        for (const wchar_t* const what : {L"forms", L"months", L"dates", L"clicks", L"drags"})
            if (mActions.size() == std::size(kActions) && mForms.Told(what) == 0 && mLengthMs > kWarmUpMs)
                Found("the forms were told of no " + com_test::Narrow(what));
        if (mKeysLostByWine > 0)
            std::printf("%ld registry keys that Wine's font object had lost were closed\n", mKeysLostByWine);
        std::printf("%ld ticks ended by a failing handler, %ld alarms cancelled or replaced\n\n", mKeeping.refused,
                    mKeeping.cancelled);
        std::printf("lateness (ms)          count    median      99 %%     worst\n");
        Print("ticks", mKeeping.ticks);
        Print("plain, every", mKeeping.plainTicks);
        Print("alarms", mKeeping.alarms);
        Print("plain, once", mKeeping.plainAlarms);
        std::printf("longest time without timers: %.0f ms\n\n", mPulse.LongestGap());
        if (mWithTimers && (mKeeping.ticks.Count() == 0 || mKeeping.alarms.Count() == 0)) Found("nothing ticked");
        if (mFlatness.Count() < Flatness::kFewest) {
            std::printf("%zu states are too few to tell whether anything grows\n", mFlatness.Count());
            return;
        }
        std::vector<std::string> table;
        const auto growing = mFlatness.Growing(table);
        for (const std::string& line : table)
            std::printf("%s\n", line.c_str());
        for (const std::string& line : growing)
            Found("grows: " + line);
    }

    static void Print(const char* name, const Lateness& lateness) {
        std::printf("%-18s %9ld %9.1f %9.1f %9.1f\n", name, lateness.Count(), lateness.Quantile(0.5),
                    lateness.Quantile(0.99), lateness.Worst());
    }

    double mLengthMs;
    std::string mPlant;
    const com_test::Library& mDll;
    Random mRandom;
    Pulse mPulse;
    TimeKeeping mKeeping{mPulse, {}, {}, {}, {}};
    TimerWork mTimers;
    FormWork mForms;
    TrayWindow mWindow;
    Flatness mFlatness;
    std::vector<int> mActions;
    long mKeysLostByWine = 0;
    bool mWithTimers = true;
    bool mWithScripts = true;
    bool mWithApartments = true;
};

int Main(const Wanted& wanted) {
    if (com_test::DistFolder().empty()) {
        std::fprintf(stderr, "soak: set KWO_DIST to the folder that holds KWOUtil.dll\n");
        return kCannotRun;
    }
    com_test::SwitchOffStringCache();
    CoInitialize(nullptr);
    bool canTell = false;
    {
        const Registration registration;
        if (!registration.IsDone()) {
            std::fprintf(stderr, "soak: the component cannot be registered\n");
            return kCannotRun;
        }
        std::printf("seed %llu, %.0f s\n", static_cast<unsigned long long>(wanted.seed), wanted.seconds);
        std::fflush(stdout);
        RemoveRegistryKey();
        canTell = Soak(wanted, registration.Dll()).Run();
        RemoveRegistryKey();
        if (registration.Dll().CanUnloadNow() != S_OK) Found("the DLL says at the end that it is in use");
    }
    CoUninitialize();
    if (FoundCount() == 0) {
        std::printf("nothing found\n");
        return canTell ? 0 : kCannotTell;
    }
    std::printf("%ld found; first: %s\n", FoundCount(), FirstFound().c_str());
    return kWrong;
}

}  // namespace
}  // namespace kwo::soak

int main(int count, char** words) {
    SetProcessDPIAware();
    kwo::soak::Wanted wanted;
    wanted.seed = GetTickCount();
    for (int at = 1; at < count; ++at) {
        if (std::strcmp(words[at], "--plant") == 0 && at + 1 < count) {
            wanted.plant = words[++at];
        } else if (std::strcmp(words[at], "--only") == 0 && at + 1 < count) {
            wanted.only = words[++at];
        } else if (wanted.seconds == 0) {
            wanted.seconds = std::atof(words[at]);
        } else {
            wanted.seed = std::strtoull(words[at], nullptr, 10);
        }
    }
    if (const std::string unknown = wanted.Unknown(); !unknown.empty()) {
        std::fprintf(stderr, "soak: there is no %s\n", unknown.c_str());
        return 2;
    }
    if (wanted.seconds <= 0) {
        std::fprintf(stderr, "usage: soak SECONDS [SEED] [--plant FAULT,...] [--only WORK,...]\n");
        return 2;
    }
    return kwo::soak::Main(wanted);
}

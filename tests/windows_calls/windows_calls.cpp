#include "windows_calls/windows_calls.h"

// Kept in this order.
#include <oleauto.h>
#include <olectl.h>
#include <shellapi.h>
#include <winsock2.h>
#include <winver.h>
// After <windows.h>.
#include <dwmapi.h>
#include <malloc.h>
#include <psapi.h>
#include <wininet.h>
#include <winnetwk.h>

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <deque>
#include <tuple>
#include <type_traits>
#include <utility>

#include "windows_calls/import_table.h"

namespace kwo::windows_calls {

namespace {

constexpr DWORD kNoLastError = 0xFFFFFFFF;

/// What the stand-ins look at. There is one: a stand-in is a plain function and gets nothing but its arguments.
struct State {
    DWORD thread = 0;
    std::vector<Call> recorded;
    const Function* failing = nullptr;
    long which = 0;
    bool fromThenOn = false;
    long callsOfFailing = 0;
    bool hasFailed = false;
    long held[static_cast<std::size_t>(Held::Count)] = {};
    bool overwrites = false;
    bool isIntact = true;
    struct Freed {
        unsigned char* block;
        std::size_t size;
    };
    std::deque<Freed> freed;
};

State& TheState() {
    static State state;
    return state;
}

bool Fails(const Function& function) {
    State& state = TheState();
    if (state.failing != &function) return false;
    const long call = ++state.callsOfFailing;
    if (call != state.which && !(state.fromThenOn && call > state.which)) return false;
    state.hasFailed = true;
    return true;
}

constexpr unsigned char kFreed = 0xDD;
/// As many blocks are kept from being used again.
constexpr std::size_t kFreedBlocks = 4000;

void ReallyFreeOldest() {
    State& state = TheState();
    const State::Freed oldest = state.freed.front();
    state.freed.pop_front();
    state.isIntact = state.isIntact && std::all_of(oldest.block, oldest.block + oldest.size,
                                                   [](unsigned char byte) { return byte == kFreed; });
    std::free(oldest.block);
}

/// What frees a block of the module's: with a delay, if freed memory is to be overwritten.
void FreeLater(void* block) {
    State& state = TheState();
    const std::size_t size = _msize(block);
    std::memset(block, kFreed, size);
    state.freed.push_back({static_cast<unsigned char*>(block), size});
    while (state.freed.size() > kFreedBlocks)
        ReallyFreeOldest();
}

// What the functions of the list are.
#define CALL(name, failure, error, kind, change)         \
    struct Of_##name {                                   \
        using Type = decltype(::name);                   \
        static inline Function function;                 \
        static constexpr std::string_view kName = #name; \
        static constexpr bool kCanFail = true;           \
        static constexpr DWORD kError = error;           \
        static constexpr Held kHeld = Held::kind;        \
        static constexpr int kChange = change;           \
        static auto Failure() { return failure; }        \
    };
#define SURE_GIVES(name, kind, change)                   \
    struct Of_##name {                                   \
        using Type = decltype(::name);                   \
        static inline Function function;                 \
        static constexpr std::string_view kName = #name; \
        static constexpr bool kCanFail = false;          \
        static constexpr Held kHeld = Held::kind;        \
        static constexpr int kChange = change;           \
    };
#define SURE(name) SURE_GIVES(name, Nothing, 0)
#define SURE_GIVES_BACK(name, kind) SURE_GIVES(name, kind, -1)
#include "windows_calls/functions.def"
#undef CALL
#undef SURE
#undef SURE_GIVES
#undef SURE_GIVES_BACK

/// What the record of a call shows beyond its arguments.
template <class Named, class... Arguments>
void AddWhatIsPointedTo(Call& call, const Arguments&... arguments) {
    [[maybe_unused]] const auto given = std::tie(arguments...);
    if constexpr (Named::kName == "RegSetValueExA") {
        call.push_back(TextOfBytes(std::get<4>(given), std::get<5>(given)));
    } else if constexpr (Named::kName == "RegCreateKeyExA") {
        call.push_back(TextOf(static_cast<const char*>(std::get<3>(given))));
    } else if constexpr (Named::kName == "WriteFile") {
        call.push_back(TextOfBytes(std::get<1>(given), std::get<2>(given)));
    } else if constexpr (Named::kName == "CreateProcessW") {
        call.push_back(TextOf(static_cast<const wchar_t*>(std::get<1>(given))));
    } else if constexpr (Named::kName == "SystemParametersInfoA") {
        call.push_back(std::to_string(*static_cast<const UINT*>(std::get<2>(given))));
    } else if constexpr (Named::kName == "ReportEventW") {
        for (WORD at = 0; at < std::get<5>(given); ++at)
            call.push_back(TextOf(std::get<7>(given)[at]));
    } else if constexpr (Named::kName == "SendInput") {
        for (UINT at = 0; at < std::get<0>(given); ++at)
            call.push_back(TextOf(std::get<1>(given) + at));
    }
}

/// A callee that fails leaves null where it would have put an interface.
template <class Argument>
void LeaveNoInterface(Argument argument) {
    if constexpr (std::is_pointer_v<Argument>) {
        using Pointed = std::remove_pointer_t<Argument>;
        if constexpr (std::is_pointer_v<Pointed> && !std::is_const_v<Pointed>) {
            using Target = std::remove_pointer_t<Pointed>;
            if constexpr (std::is_void_v<Target> || std::is_base_of_v<IUnknown, Target>) *argument = nullptr;
        }
    }
}

template <class Result>
bool IsSuccess(Result result, Result failure) {
    // A status code of the registry or an HRESULT.
    if constexpr (std::is_same_v<Result, LONG>) return result == 0;
    return result != failure;
}

/// Adds to the counts what a call has taken or given back.
void Count(const Function& function) {
    TheState().held[static_cast<std::size_t>(function.held)] += function.change;
}

/// What every stand-in does. `real` is the function's type as a pointer.
template <class Named, class Result, class Real, class... Arguments>
Result Answer(Arguments... arguments) {
    Function& function = Named::function;
    const auto real = reinterpret_cast<Real>(function.real);
    State& state = TheState();
    if (::GetCurrentThreadId() != state.thread) return real(arguments...);
    const DWORD before = ::GetLastError();
    ++function.calls;
    if (function.isRecorded) {
        Call call = {std::string(Named::kName), Written(arguments)...};
        AddWhatIsPointedTo<Named>(call, arguments...);
        state.recorded.push_back(std::move(call));
    }
    if constexpr (Named::kCanFail) {
        const auto failure = static_cast<Result>(Named::Failure());
        if (Fails(function)) {
            // What is to be given back is given back in any case: nobody could do so later.
            if constexpr (Named::kChange < 0) {
                if (IsSuccess(real(arguments...), failure)) Count(function);
            }
            if constexpr (std::is_same_v<Result, HRESULT>) (LeaveNoInterface(arguments), ...);
            ::SetLastError(Named::kError == kNoLastError ? before : Named::kError);
            return failure;
        }
        ::SetLastError(before);
        const Result result = real(arguments...);
        if constexpr (Named::kChange != 0) {
            const DWORD after = ::GetLastError();
            if (IsSuccess(result, failure)) Count(function);
            ::SetLastError(after);
        }
        return result;
    } else if constexpr (Named::kName == "free") {
        const bool isBlock = (... || (arguments != nullptr));
        if (isBlock) Count(function);
        if (isBlock && state.overwrites) {
            (FreeLater(arguments), ...);
        } else {
            real(arguments...);
        }
        ::SetLastError(before);
    } else {
        ::SetLastError(before);
        return real(arguments...);
    }
}

template <class Named, class Type = typename Named::Type>
struct StandIn;

template <class Named, class Result, class... Arguments>
struct StandIn<Named, Result WINAPI(Arguments...)> {
    static Result WINAPI Called(Arguments... arguments) {
        return Answer<Named, Result, Result(WINAPI*)(Arguments...), Arguments...>(arguments...);
    }
};
#ifndef _WIN64  // where there is one calling convention only
template <class Named, class Result, class... Arguments>
struct StandIn<Named, Result __cdecl(Arguments...)> {
    static Result __cdecl Called(Arguments... arguments) {
        return Answer<Named, Result, Result(__cdecl*)(Arguments...), Arguments...>(arguments...);
    }
};
#endif

template <class Named>
Function* Described() {
    Named::function.name = Named::kName.data();
    Named::function.standIn = reinterpret_cast<void*>(&StandIn<Named>::Called);
    Named::function.held = Named::kHeld;
    Named::function.change = Named::kChange;
    Named::function.canFail = Named::kCanFail;
    return &Named::function;
}

/// Where functions are looked up that are not imported.
Function& LookUp() {
    static Function function;
    return function;
}

FARPROC WINAPI FindAddress(HMODULE module, const char* name) {
    Function& lookUp = LookUp();
    const bool isWatched = ::GetCurrentThreadId() == TheState().thread;
    if (isWatched) ++lookUp.calls;
    if (isWatched && Fails(lookUp)) {
        ::SetLastError(ERROR_PROC_NOT_FOUND);
        return nullptr;
    }
    // Not the function's own name: the module that is watched may be this program.
    const FARPROC found = reinterpret_cast<decltype(&::GetProcAddress)>(lookUp.real)(module, name);
    const bool isNumber = reinterpret_cast<ULONG_PTR>(name) <= 0xFFFF;
    Function* const function = isNumber ? nullptr : FindFunction(name);
    if (found == nullptr || function == nullptr) return found;
    if (function->real == nullptr) function->real = reinterpret_cast<void*>(found);
    return reinterpret_cast<FARPROC>(function->standIn);
}

std::vector<Function*> Described() {
    LookUp() = {"GetProcAddress", reinterpret_cast<void*>(&FindAddress), Held::Nothing, 0, true};
    return {
        &LookUp(),
#define CALL(name, failure, error, kind, change) Described<Of_##name>(),
#define SURE(name) Described<Of_##name>(),
#define SURE_GIVES_BACK(name, kind) Described<Of_##name>(),
#include "windows_calls/functions.def"
#undef CALL
#undef SURE
#undef SURE_GIVES_BACK
    };
}

}  // namespace

const char* NameOf(Held kind) {
    constexpr const char* kNames[] = {"nothing",
                                      "blocks of memory",
                                      "accesses to arrays",
                                      "apartment spies",
                                      "registry keys",
                                      "handles",
                                      "searches for files",
                                      "event logs",
                                      "thread-local slots",
                                      "windows",
                                      "timers",
                                      "device contexts",
                                      "contexts of the screen",
                                      "pens"};
    static_assert(std::size(kNames) == static_cast<std::size_t>(Held::Count));
    return kNames[static_cast<std::size_t>(kind)];
}

std::string TextOfCall(const Call& call) {
    std::string text = call.empty() ? std::string() : call[0] + '(';
    for (std::size_t at = 1; at < call.size(); ++at)
        text += (at == 1 ? "" : ", ") + call[at];
    return text + ')';
}

::testing::AssertionResult Same(const std::vector<Call>& actual, const std::vector<Call>& expected) {
    const auto isSame = [](const Call& one, const Call& other) {
        return std::equal(one.begin(), one.end(), other.begin(), other.end(),
                          [](const std::string& value, const std::string& wanted) {
                              return value == wanted || wanted == Written(Any());
                          });
    };
    if (std::equal(actual.begin(), actual.end(), expected.begin(), expected.end(), isSame)) {
        return ::testing::AssertionSuccess();
    }
    auto result = ::testing::AssertionFailure() << "called:";
    for (const Call& call : actual)
        result << "\n  " << TextOfCall(call);
    result << "\nexpected:";
    for (const Call& call : expected)
        result << "\n  " << TextOfCall(call);
    return result;
}

std::vector<Function*>& AllFunctions() {
    static std::vector<Function*> functions = Described();
    return functions;
}

Function* FindFunction(const std::string& name) {
    const auto found = std::ranges::find_if(AllFunctions(), [&](const Function* one) { return one->name == name; });
    return found == AllFunctions().end() ? nullptr : *found;
}

WindowsCalls::WindowsCalls(const std::vector<HMODULE>& modules, const std::vector<std::string>& names) {
    TheState() = {};
    TheState().thread = ::GetCurrentThreadId();
    for (Function* const function : AllFunctions()) {
        function->real = nullptr;
        function->calls = 0;
        function->isRecorded = false;
    }
    for (const HMODULE module : modules) {
        ForEachImport(module, [&](const char* name, void** place) {
            Function* const function = FindFunction(name);
            const bool isWanted = names.empty() || std::ranges::find(names, name) != names.end() ||
                                  std::string_view(name) == "GetProcAddress";
            if (function == nullptr || !isWanted) return;
            function->real = *place;
            Watch(place, function->standIn);
        });
    }
    Record(names);
}

WindowsCalls::~WindowsCalls() {
    for (const Place& place : mPlaces)
        Exchange(place.place, place.before);
    OverwriteFreedMemory(false);
}

void WindowsCalls::Watch(void** place, void* standIn) {
    mPlaces.push_back({place, Exchange(place, standIn)});
}

void WindowsCalls::WatchThisThread() {
    TheState().thread = ::GetCurrentThreadId();
}

void WindowsCalls::ReplaceWith(const char* name, void* replacement) {
    Function* const function = FindFunction(name);
    ASSERT_NE(function, nullptr) << name;
    function->real = replacement;
}

void WindowsCalls::Record(const std::vector<std::string>& names) {
    for (const std::string& name : names) {
        Function* const function = FindFunction(name);
        ASSERT_NE(function, nullptr) << name;
        function->isRecorded = true;
    }
}

std::vector<Call> WindowsCalls::Taken() {
    return std::exchange(TheState().recorded, {});
}

void WindowsCalls::Fail(const Function& function, long which, bool fromThenOn) {
    State& state = TheState();
    state.failing = &function;
    state.which = which;
    state.fromThenOn = fromThenOn;
    state.callsOfFailing = 0;
    state.hasFailed = false;
}

bool WindowsCalls::StopFailing() {
    TheState().failing = nullptr;
    return TheState().hasFailed;
}

void WindowsCalls::ResetCounts() {
    for (Function* const function : AllFunctions())
        function->calls = 0;
    std::ranges::fill(TheState().held, 0);
}

std::map<std::string, long> WindowsCalls::Balance() const {
    std::map<std::string, long> balance;
    for (std::size_t at = 1; at < static_cast<std::size_t>(Held::Count); ++at) {
        if (TheState().held[at] != 0) balance[NameOf(static_cast<Held>(at))] = TheState().held[at];
    }
    return balance;
}

void WindowsCalls::OverwriteFreedMemory(bool on) {
    State& state = TheState();
    state.overwrites = on;
    while (!on && !state.freed.empty())
        ReallyFreeOldest();
}

bool WindowsCalls::FreedMemoryIsIntact() {
    State& state = TheState();
    for (const State::Freed& freed : state.freed) {
        state.isIntact = state.isIntact && std::all_of(freed.block, freed.block + freed.size,
                                                       [](unsigned char byte) { return byte == kFreed; });
    }
    return state.isIntact;
}

}  // namespace kwo::windows_calls

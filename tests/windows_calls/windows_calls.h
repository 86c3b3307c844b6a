#pragma once

#include <windows.h>

#include <gtest/gtest.h>

#include <map>
#include <string>
#include <vector>

#include "windows_calls/argument_text.h"

namespace kwo::windows_calls {

/// What must be given back.
enum class Held {
    Nothing,
    Block,
    ArrayAccess,
    Spy,
    Key,
    Handle,
    Search,
    EventLog,
    Slot,
    Window,
    Timer,
    Context,
    ScreenContext,
    Pen,
    Count
};
const char* NameOf(Held kind);

/// A call as it was made: the function's name, and its arguments as they were before it ran. Some functions add what
/// their arguments point to.
using Call = std::vector<std::string>;

/// A call to compare with. `Any()` stands for every value, `Out()` for a pointer to what the callee writes.
template <class... Arguments>
Call MakeCall(const char* function, const Arguments&... arguments) {
    return {function, Written(arguments)...};
}

std::string TextOfCall(const Call& call);
/// True if both are the same calls in the same order.
::testing::AssertionResult Same(const std::vector<Call>& actual, const std::vector<Call>& expected);

/// A function of Windows as a module calls it.
struct Function {
    const char* name = "";
    void* standIn = nullptr;  ///< what the module calls instead while it is watched
    Held held = Held::Nothing;
    int change = 0;  ///< how many of `held` a success takes; negative for what it gives back
    bool canFail = false;
    void* real = nullptr;
    long calls = 0;
    bool isRecorded = false;
};

/// Stands between a module and Windows while it lives: counts the calls, records some of them, lets some fail, and
/// counts what the module holds. Functions that the module looks up later are covered if it looks them up meanwhile.
///
/// It sees the calls of one thread: of the one that made it, or of another that asks for it. At any time there is one.
class WindowsCalls {
public:
    /// Sees the calls of these modules, which must stay loaded: of all functions, or of the named ones alone.
    explicit WindowsCalls(const std::vector<HMODULE>& modules, const std::vector<std::string>& names = {});
    WindowsCalls(const WindowsCalls&) = delete;
    WindowsCalls& operator=(const WindowsCalls&) = delete;
    ~WindowsCalls();

    /// From now on the calls of the thread that calls this are seen, and no others.
    void WatchThisThread();

    /// From now on the modules call `replacement`, a lambda without captures, in place of Windows.
    template <class Replacement>
    void Replace(const char* name, Replacement) {
        ReplaceWith(name, Adapter<Replacement>::Address(&Replacement::operator()));
    }
    template <class Result, class... Arguments>
    void Replace(const char* name, Result(WINAPI* replacement)(Arguments...)) {
        ReplaceWith(name, reinterpret_cast<void*>(replacement));
    }

    /// Records the calls of these functions from now on.
    void Record(const std::vector<std::string>& names);
    /// The calls recorded since the last time.
    std::vector<Call> Taken();

    /// Call `which` of the function fails, counted from 1 and from now; with `fromThenOn` all later ones too.
    void Fail(const Function& function, long which, bool fromThenOn);
    /// No call fails any more. True if one has.
    bool StopFailing();

    void ResetCounts();
    /// What the modules have taken since the counts were reset and not given back: how many of each kind.
    std::map<std::string, long> Balance() const;

    /// Memory that the module frees is filled, and is kept from being used again for a while. False from
    /// `FreedMemoryIsIntact` tells that somebody has written into such memory.
    void OverwriteFreedMemory(bool on);
    bool FreedMemoryIsIntact();

private:
    /// A lambda as a function with the calling convention of Windows.
    template <class Replacement>
    struct Adapter {
        template <class Result, class... Arguments>
        static Result WINAPI Called(Arguments... arguments) {
            return Replacement()(arguments...);
        }
        template <class Result, class... Arguments>
        static void* Address(Result (Replacement::*)(Arguments...) const) {
            return reinterpret_cast<void*>(static_cast<Result(WINAPI*)(Arguments...)>(&Called<Result, Arguments...>));
        }
    };

    void ReplaceWith(const char* name, void* replacement);
    void Watch(void** place, void* standIn);

    struct Place {
        void** place;
        void* before;
    };
    std::vector<Place> mPlaces;
};

/// A stand-in that only says yes: 1 differs from the answers of failures.
template <class Result, class... Arguments>
Result WINAPI Yes(Arguments...) {
    return static_cast<Result>(1);
}

/// A handle or pointer of a test's own, which nothing but stand-ins get.
template <class Native>
Native At(std::intptr_t value) {
    return reinterpret_cast<Native>(value);
}

/// All functions that there are stand-ins for.
std::vector<Function*>& AllFunctions();
Function* FindFunction(const std::string& name);

}  // namespace kwo::windows_calls

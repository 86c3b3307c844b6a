#pragma once

#include <optional>
#include <utility>

#include "error_report.h"
#include "guard.h"
#include "output.h"

namespace kwohost {

/// The errors of a script, on their way to whoever handles them.
/// An error that code of the script may handle, because it waits for the object that has called the failing procedure,
/// is kept. It is shown when it turns out that the object has kept it to itself. Every other error is shown at once.
class RaisedErrors {
public:
    /// The script processes messages while it lives: code below cannot handle what goes wrong above.
    class Loop {
    public:
        explicit Loop(RaisedErrors& errors)
            : mErrors(errors), mBefore(std::exchange(errors.mLoopDepth, errors.mDepth)) {}
        Loop(const Loop&) = delete;
        Loop& operator=(const Loop&) = delete;
        ~Loop() { mErrors.mLoopDepth = mBefore; }

    private:
        RaisedErrors& mErrors;
        int mBefore;
    };

    /// The engine begins and ends a call of code of the script. Calls are inside one another.
    void BeginCall() { ++mDepth; }
    void EndCall() noexcept;

    /// Takes the error of the innermost call, which still runs.
    /// `describe` returns the report, and may fail for lack of memory. Returns whether the engine shall tell its caller
    /// the code of the error.
    template <class Describe>
    bool TakeFromCall(Describe&& describe) noexcept {
        return Take(mDepth - 1, std::forward<Describe>(describe));
    }
    /// Takes the error of a call that has ended, unless the engine has told of it before it ended.
    template <class Describe>
    void TakeAfterCall(Describe&& describe) noexcept {
        if (!mPassed) Take(mDepth, std::forward<Describe>(describe));
    }
    /// Shows an error, or that there is no memory for it.
    template <class Describe>
    void Show(Describe&& describe) noexcept;
    /// Shows a kept error if its object has not passed it on, and forgets it in any case.
    void Settle() noexcept;
    /// Shows a kept error.
    void ShowKept() noexcept;

    /// How many have been shown.
    int Shown() const { return mShown; }
    /// The last one that was taken.
    const ErrorReport& Last() const { return mLast; }

private:
    /// An error that code of the script may still handle.
    struct Passed {
        ErrorReport report;
        /// How many calls are below the one that failed.
        int below;
        /// Left on the thread. It is still there if the object in between has kept the error to itself.
        ComPtr<IErrorInfo> mark;
    };

    template <class Describe>
    bool Take(int below, Describe&& describe) noexcept;
    /// Shows the error or keeps it. The result is that of TakeFromCall.
    bool Keep(int below, ErrorReport report);

    Output mErrors{STD_ERROR_HANDLE};
    int mShown = 0;
    /// Calls into the engine that are in progress.
    int mDepth = 0;
    /// How many of them are below the innermost loop for messages.
    int mLoopDepth = 0;
    ErrorReport mLast;
    std::optional<Passed> mPassed;
};

template <class Describe>
void RaisedErrors::Show(Describe&& describe) noexcept {
    ++mShown;
    const auto show = [&] { return mErrors.Write(Format(describe()) + L"\r\n"); };
    const auto giveUp = [](const ScriptFailure&) { return false; };
    const auto showShortly = [&](const ScriptFailure&) {
        return Guarded([this] { return mErrors.Write(L"kwohost: out of memory\r\n"); }, giveUp);
    };
    Guarded(show, showShortly);
}

template <class Describe>
bool RaisedErrors::Take(int below, Describe&& describe) noexcept {
    return Guarded([&] { return Keep(below, describe()); },
                   [this](const ScriptFailure& failure) {
                       mPassed.reset();
                       mLast = {};
                       mLast.code = failure.code;
                       Show([&]() -> ErrorReport { throw failure; });
                       return false;
                   });
}

}  // namespace kwohost

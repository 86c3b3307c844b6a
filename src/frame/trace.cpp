#include "frame/trace.h"

#include <array>
#include <new>
#include <utility>

#include "frame/duration.h"
#include "frame/fixed_digits.h"
#include "frame/kept_last_error.h"
#include "platform/debug_output.h"

namespace kwo::frame {

namespace {

using platform::Milliseconds;

constexpr std::int64_t kLargestFile = 104'857'600;
constexpr std::int16_t kStopIcon = 16;
constexpr std::int32_t kAskDeleteMessage = 1899;

/// Set for as long as the scope lasts.
class Flag {
public:
    explicit Flag(bool& flag) : mFlag(flag) { mFlag = true; }
    ~Flag() { mFlag = false; }
    Flag(const Flag&) = delete;
    Flag& operator=(const Flag&) = delete;

private:
    bool& mFlag;
};

}  // namespace

Trace::Trace(const platform::Platform& platform, HostIdentity& identity, MillisecondClock& clock, MKWOError& error,
             MessageBoxes& boxes)
    : mPlatform(platform),
      mIdentity(identity),
      mClock(clock),
      mError(error),
      mBoxes(boxes),
      mFile(platform.logFiles, platform.files, platform.conversions),
      mMemory(platform.processMemory, platform.conversions),
      mStamp(platform.clock, clock, platform.conversions) {}

void Trace::KWO_TraceStart(std::int16_t echo, std::int32_t savedEvents, bool trackMemory) {
    if (mFile.IsOpen()) return;
    mOn = true;
    mStack.Create();
    mEcho = echo != 0;
    mStamp.ReadLocale();
    const bool watchMemory = trackMemory && !mMemory.IsOn() && mIdentity.KWO_IsWinNT();
    if (watchMemory) mMemory.Start(mPlatform.host.ProcessId());
    if (savedEvents >= 1) {
        mFile.SetName(Folder(), mPlatform.host.ExecutableName());
        mRing.Create(savedEvents);
        return;
    }
    try {
        StartFile();
    } catch (...) {
        if (watchMemory) mMemory.Stop();
        throw;
    }
}

void Trace::StartFile() {
    platform::HostApplication& host = mPlatform.host;
    if (!mFile.Open(Folder(), host.ExecutableName(), mPlatform.errors)) {
        const std::int32_t code = mPlatform.errors.Last();
        mError.KWO_RaiseError(code, {}, mFile.Name() + u":", {}, true);
    }
    const platform::HostApplication::Version version = host.ProgramVersion();
    Entry(u"Trace Log started for " + host.ExecutableName() + u" " + Decimal(version.major) + u"." +
              Decimal(version.minor) + u"." + Decimal(version.revision) + u" Process ID=" + Decimal(host.ProcessId()) +
              u", UserId=" + mIdentity.KWO_UserName() + u", Machine=" + mIdentity.KWO_ComputerName(),
          true, true);
}

Text Trace::Folder() const {
    return mFolder.empty() ? mPlatform.host.Folder() : mFolder;
}

void Trace::KWO_TraceClose(bool askDelete) {
    const KeptLastError kept(mPlatform.errors);
    Close(askDelete);
}

bool Trace::Close(bool askDelete) {
    if (!Recording()) {
        mMemory.Stop();
        return true;
    }
    mFile.ForgetWritten();
    const bool remove = askDelete && mFile.IsOpen() && !mBoxes.IsUnattended() && UserWantsFileDeleted();
    mMemory.Stop();
    bool complete = Entry(u"Trace closed.", true, true);
    if (mFile.IsOpen()) {
        complete = TryToWrite([this] {
            mStamp.SetNow();
            WriteToFile(mStamp.RuleOfDay());
        });
        mFile.Close();
    }
    if (remove) mFile.Delete();
    return complete;
}

bool Trace::UserWantsFileDeleted() {
    constexpr std::int32_t kYesNo = 4;
    constexpr std::int16_t kYes = 6;

    const std::array values = {mPlatform.host.ExecutableName()};
    const Text question = mError.Message(kAskDeleteMessage, u"Delete call trace log file for %1?", values);
    return mBoxes.KWOMsgBox({.prompt = question, .buttons = kYesNo}) == kYes;
}

std::int32_t Trace::Push(TextView routine, std::int16_t traceMode) {
    const Milliseconds entered = mClock.KWO_TimerMs();
    // The line belongs to the enclosing routine: its depth, and its name in the box if the line cannot be written.
    if (Recording() && mStack.Traced(traceMode)) Entry(u"Push " + Text(routine), true, true);
    mStack.Push(routine, traceMode, entered);
    return mStack.Depth();
}

void Trace::Pop(std::int32_t level) {
    if (mStack.Depth() < 1) {
        mError.KWO_AppError({}, u"KWO_RoutinePop called with nothing on the call stack.", kStopIcon, false, true);
        return;
    }
    if (level > mStack.Depth()) return;
    if (level > 0) mStack.ReturnTo(level);

    const CallStack::Level& left = mStack.Top();
    mStack.ReturnTo(mStack.Depth() - 1);
    if (!left.traced || !Recording()) return;
    const Milliseconds elapsed{mClock.KWO_TimerMs().scaled - left.entered.scaled};
    Entry(u"Pop  " + left.routine + u" Dur=" + DurationText(elapsed), true, true);
}

Text Trace::DurationText(Milliseconds elapsed) const {
    constexpr double kMillisecondsPerDay = 86'400'000;
    constexpr Milliseconds kLongestInMilliseconds = Milliseconds::Whole(1000);

    if (elapsed > kLongestInMilliseconds) {
        return KWO_FormatDuration(mPlatform.conversions, {elapsed.AsDouble() / kMillisecondsPerDay});
    }
    Text text;
    AppendFixedDigits(text, elapsed, 1, 3, mStamp.DecimalPoint());
    return text + u"ms";
}

Text Trace::Top() const {
    return mStack.Depth() < 1 ? Text() : mStack.Top().routine;
}

void Trace::Write(TextView text, bool indent, bool save) {
    Entry(text, indent, save);
}

bool Trace::Entry(TextView text, bool indent, bool save) {
    if (!Recording()) return true;
    const KeptLastError kept(mPlatform.errors);
    return TryToWrite([&] {
        if (mFile.IsOpen() && mFile.Written() > kLargestFile) Split();
        if (Recording()) WriteLine(text, indent, save);
    });
}

template <class Body>
bool Trace::TryToWrite(Body&& body) {
    constexpr std::int32_t kOutOfMemory = 7;
    try {
        body();
        return true;
    } catch (const ComponentError& error) {
        ReportFailure(error.number, error.description);
    } catch (const std::bad_alloc&) {
        ReportFailure(kOutOfMemory, u"Out of memory.");
    }
    return false;
}

void Trace::ReportFailure(std::int32_t number, TextView description) {
    // The box itself enters routines and writes lines.
    const Flag reporting(mReporting);
    try {
        mError.KWO_AppError({number, {}, {}, {}, 0},
                            u"The following error occurred attempting make an entry to the log file\r\n" +
                                mFile.Name() + u":\r\n\r\n" + Text(description),
                            kStopIcon, false, true);
    } catch (...) {
        // The traced routine must not fail because the log cannot be written, not even if nobody can be told.
    }
    mFile.Close();
}

void Trace::WriteLine(TextView text, bool indent, bool save) {
    constexpr std::size_t kMargin = 2;
    constexpr std::size_t kStep = 4;
    constexpr std::size_t kContinued = 13;
    constexpr std::size_t kLargestRoom = 4096;

    mStamp.SetNow();
    if (const Text rule = mStamp.RuleOfNewDay(); !rule.empty()) Emit(rule, save);
    if (const Text change = mMemory.ChangeLine(); !change.empty()) Emit(change, save);

    // Reuses the memory of the last line.
    Text line = std::move(mRoom);
    line.clear();
    mStamp.AppendTime(line);
    line.append(kMargin + (indent ? kStep * static_cast<std::size_t>(mStack.Depth()) : 0), u' ');
    if (text.find(kCrLf) == TextView::npos) {
        line += text;
    } else {
        const Text continued = Text(kCrLf) + line + Text(kContinued, u' ');
        line += ReplaceAll(text, kCrLf, continued);
    }
    line += kCrLf;
    Emit(line, save);
    if (mEcho) mPlatform.debugOutput.Write(TextView(line).substr(0, line.size() - kCrLf.size()));
    if (line.capacity() <= kLargestRoom) mRoom = std::move(line);
}

void Trace::Split() {
    const bool trackMemory = mMemory.IsOn();
    WriteToFile(u"=== Splitting trace due to large size ===\r\n");
    if (!Close(false)) return;
    mStamp.ForgetDay();
    mMemory.Forget();
    // Intended: the new file echoes to the debug output even if the previous one did not.
    KWO_TraceStart(1, 0, trackMemory);
}

void Trace::Emit(TextView piece, bool save) {
    if (mFile.IsOpen()) {
        WriteToFile(piece);
    } else if (save) {
        mRing.Save(piece);
    }
}

void Trace::WriteToFile(TextView piece) {
    if (mFile.Write(piece)) return;
    const std::int32_t code = mPlatform.errors.Last();
    Text description = mError.KWO_SystemErrorText(code);
    if (description.empty()) description = u"Unknown error.";
    // KWO_RaiseError would write a line to the file that has just failed.
    platform::Raise(-code, {}, description);
}

}  // namespace kwo::frame

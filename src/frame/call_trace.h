#pragma once

#include <cstdint>

#include "platform/text.h"

namespace kwo::frame {

using platform::Text;
using platform::TextView;

/// The call trace as routines see it: they mark themselves and write lines, but cannot start it.
///
///     const TracedRoutine traced(mTrace, u"KWOTimer.AddAlarm");
///     if (mTrace.IsRecording()) mTrace.KWO_TraceWrite(u"tag " + Decimal(tag), true, true);
///
/// Until the trace is started, each call costs one branch and does nothing. No call raises anything but lack of
/// memory: a log that cannot be written shows a box and is closed.
/// A call may show that box, and messages are processed while it is shown.
class CallTrace {
public:
    /// The trace mode of a routine that does as the routine around it does; the outermost one is in the log.
    static constexpr std::int16_t kInherit = -2;

    virtual ~CallTrace() = default;

    /// Enters a routine and returns its depth, counted from 1; 0 if the trace has not been started.
    /// `traceMode` is kInherit, 0 to keep this routine out of the log, or any other value to have it in.
    /// A routine that is entered must be left with KWO_RoutinePop; TracedRoutine does both.
    std::int32_t KWO_RoutinePush(TextView routine, std::int16_t traceMode = kInherit) {
        return mOn ? Push(routine, traceMode) : 0;
    }
    /// Leaves a routine: the one on top or, with a positive `level`, the one at that depth.
    /// Its line says how long it took.
    /// Levels above it are dropped without a line in the log. A `level` above the depth does nothing.
    /// An empty stack shows the application-error box.
    void KWO_RoutinePop(std::int32_t level = 0) {
        if (mOn) Pop(level);
    }
    /// The routine on top, "KWOTimer.AddAlarm". Empty if the stack is empty or the trace has not been started.
    Text KWO_CurrentRoutine() const { return mOn ? Top() : Text(); }
    /// Writes one entry to the file or, without a file, to the ring; nothing if there is neither.
    /// Each line of `text` gets the time in front; the lines after the first are indented further.
    /// `indent` indents the entry below the routine on top, four blanks for each depth. `save` false keeps it out of
    /// the ring; a file gets it in any case.
    void KWO_TraceWrite(TextView text, bool indent, bool save) {
        if (mOn) Write(text, indent, save);
    }
    /// True from the first start on, even after the trace is closed.
    bool IsOn() const { return mOn; }
    /// True while a file is open or a ring exists: only then does it pay to compose an entry.
    bool IsRecording() const { return mOn && Recording(); }

protected:
    /// Set by the first start, and never reset.
    bool mOn = false;

private:
    /// What the trace implements. The calls above reach them only while mOn is true.
    virtual std::int32_t Push(TextView routine, std::int16_t traceMode) = 0;
    virtual void Pop(std::int32_t level) = 0;
    virtual Text Top() const = 0;
    virtual void Write(TextView text, bool indent, bool save) = 0;
    virtual bool Recording() const = 0;
};

/// Keeps a routine on the call trace for as long as the scope lasts.
/// The trace must outlive it. Scopes must nest, as local variables do.
class TracedRoutine {
public:
    /// `routine` is class and member: "KWOTimer.AddAlarm".
    TracedRoutine(CallTrace& trace, TextView routine) : mTrace(trace), mLevel(mTrace.KWO_RoutinePush(routine)) {}
    /// Class and member apart: "KWOTimer" and ".AddAlarm". They are joined only if the trace has been started.
    TracedRoutine(CallTrace& trace, TextView className, TextView member)
        : mTrace(trace), mLevel(mTrace.IsOn() ? mTrace.KWO_RoutinePush(Text(className) + Text(member)) : 0) {}
    /// Also leaves the routines above it that were not left.
    /// Does nothing if the trace was started after the routine was entered.
    ~TracedRoutine() {
        if (mLevel == 0) return;
        try {
            mTrace.KWO_RoutinePop(mLevel);
        } catch (...) {
            // The routine may be on its way out with an error of its own.
        }
    }
    TracedRoutine(const TracedRoutine&) = delete;
    TracedRoutine& operator=(const TracedRoutine&) = delete;

private:
    CallTrace& mTrace;
    std::int32_t mLevel;
};

}  // namespace kwo::frame

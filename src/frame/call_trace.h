#pragma once

#include <cstdint>

#include "platform/text.h"

namespace kwo::frame {

using platform::Text;
using platform::TextView;

/// The call trace as the routines see it that leave their marks there. While no trace was started every call costs one
/// branch and does nothing.
class CallTrace {
public:
    static constexpr std::int16_t kInherit = -2;

    virtual ~CallTrace() = default;

    /// Enters a routine; returns the depth reached, 0 when nothing is traced.
    std::int32_t KWO_RoutinePush(TextView routine, std::int16_t traceMode = kInherit) {
        return mOn ? Push(routine, traceMode) : 0;
    }
    /// Leaves the routine on top; a positive `level` goes back to that level.
    void KWO_RoutinePop(std::int32_t level = 0) {
        if (mOn) Pop(level);
    }
    /// The routine on top; empty when nothing is traced.
    Text KWO_CurrentRoutine() const { return mOn ? Top() : Text(); }
    /// Writes one entry to the file or ring, if there is either.
    void KWO_TraceWrite(TextView text, bool indent, bool save) {
        if (mOn) Write(text, indent, save);
    }
    /// True from the first start on.
    bool IsOn() const { return mOn; }
    /// True while a file is open or a ring is kept.
    bool IsRecording() const { return mOn && Recording(); }

protected:
    bool mOn = false;

private:
    virtual std::int32_t Push(TextView routine, std::int16_t traceMode) = 0;
    virtual void Pop(std::int32_t level) = 0;
    virtual Text Top() const = 0;
    virtual void Write(TextView text, bool indent, bool save) = 0;
    virtual bool Recording() const = 0;
};

/// A routine on the call trace for as long as the scope lasts.
class TracedRoutine {
public:
    TracedRoutine(CallTrace& trace, TextView routine) : mTrace(trace), mLevel(mTrace.KWO_RoutinePush(routine)) {}
    /// "KWOTimer" and ".AddAlarm"; they are put together only when a trace was started.
    TracedRoutine(CallTrace& trace, TextView className, TextView member)
        : mTrace(trace), mLevel(mTrace.IsOn() ? mTrace.KWO_RoutinePush(Text(className) + Text(member)) : 0) {}
    /// Leaves what the routine left open as well, and nothing when the trace was started since.
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

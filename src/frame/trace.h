#pragma once

#include <cstdint>

#include "frame/call_stack.h"
#include "frame/call_trace.h"
#include "frame/error.h"
#include "frame/host_identity.h"
#include "frame/line_stamp.h"
#include "frame/log_file.h"
#include "frame/memory_watch.h"
#include "frame/message_box.h"
#include "frame/millisecond_clock.h"
#include "frame/saved_events.h"
#include "platform/platform.h"

namespace kwo::frame {

/// The call trace that can be switched on, with its log. Nothing in the component starts it.
///
/// Writing an entry never raises: what goes wrong is shown in the application-error box, and the file is then closed.
/// The platform's last-error value is the same before and after.
class Trace final : public CallTrace {
public:
    /// What is passed by reference may be constructed later, but before the first call.
    Trace(const platform::Platform& platform, HostIdentity& identity, MillisecondClock& clock, MKWOError& error,
          MessageBoxes& boxes);

    /// Starts a log file, or with `savedEvents` above 0 a ring of that many entries in memory instead. Nothing while a
    /// file is open. `echo` other than 0 also sends every line to the debug output, `trackMemory` writes what changes
    /// in the memory of the process from now on; without it nothing changes in that. A file that cannot be made raises
    /// the platform's error.
    void KWO_TraceStart(std::int16_t echo, std::int32_t savedEvents, bool trackMemory);
    /// Ends the file. With `askDelete` the user is asked whether to delete it, unless nobody is there to ask. A ring
    /// stays and goes on.
    void KWO_TraceClose(bool askDelete);
    /// Where the next file goes; empty for the host's own folder.
    void SetTraceFolder(TextView folder) { mFolder = folder; }

    const Text& FileName() const { return mFile.Name(); }
    const SavedEvents& Ring() const { return mRing; }
    const CallStack& Stack() const { return mStack; }

private:
    std::int32_t Push(TextView routine, std::int16_t traceMode) override;
    void Pop(std::int32_t level) override;
    Text Top() const override;
    void Write(TextView text, bool indent, bool save) override;
    bool Recording() const override { return !mReporting && (mFile.IsOpen() || mRing.Exists()); }

    void StartFile();
    // False when something could not be written; the failure has then been shown.
    bool Close(bool askDelete);
    bool Entry(TextView text, bool indent, bool save);
    void Split();
    void WriteLine(TextView text, bool indent, bool save);

    void Emit(TextView piece, bool save);
    void WriteToFile(TextView piece);
    template <class Body>
    bool Guarded(Body&& body);
    void ReportFailure(std::int32_t number, TextView description);

    Text Folder() const;
    bool UserWantsFileDeleted();
    Text DurationText(platform::Milliseconds elapsed) const;

    platform::Platform mPlatform;
    HostIdentity& mIdentity;
    MillisecondClock& mClock;
    MKWOError& mError;
    MessageBoxes& mBoxes;

    CallStack mStack;
    SavedEvents mRing;
    LogFile mFile;
    MemoryWatch mMemory;
    LineStamp mStamp;
    Text mFolder;
    Text mRoom;
    bool mEcho = false;
    bool mReporting = false;
};

}  // namespace kwo::frame

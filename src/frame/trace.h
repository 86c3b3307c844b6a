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

/// The call trace with its log file and its ring.
/// Only a developer and the diagnostic build start it, see docs/trace.md.
///
/// Writing an entry never raises. If it fails, the application-error box shows the failure and the file is closed; the
/// program goes on. The platform's last-error value is the same before and after.
/// A file that has grown beyond 104,857,600 bytes is closed, and the next one begins.
class Trace final : public CallTrace {
public:
    /// Keeps references to all of these.
    /// They may be constructed later, but before the first call, and must outlive the trace. The trace is off.
    Trace(const platform::Platform& platform, HostIdentity& identity, MillisecondClock& clock, MKWOError& error,
          MessageBoxes& boxes);

    /// Starts the trace.
    /// Does nothing while a file is open.
    ///
    /// With `savedEvents` 0 or less it creates a log file, named after the host's executable, and raises the
    /// platform's error if that fails. With a positive number it makes a ring of that many entries in memory; older
    /// entries are lost.
    /// `echo` other than 0 also sends every line to the debug output. `trackMemory` writes how the memory use of the
    /// process changes, on the NT family only; false leaves that as it is.
    /// Routines that were entered before the start are not on the stack.
    void KWO_TraceStart(std::int16_t echo, std::int32_t savedEvents, bool trackMemory);
    /// Writes the last lines and closes the file.
    /// Does nothing but end the memory watch if there is neither a file nor a ring.
    /// `askDelete` asks the user whether to delete the file, unless in unattended mode. A ring stays, and receives
    /// entries again.
    void KWO_TraceClose(bool askDelete);
    /// Sets the folder of the next file; it must exist. Empty means the folder of the host's executable.
    void SetTraceFolder(TextView folder) { mFolder = folder; }

    /// The name, with its folder, of the file that is open, was open last, or could not be opened.
    /// While there is only a ring, it is the name that a file would begin with.
    /// Empty before the first start.
    const Text& FileName() const { return mFile.Name(); }
    /// The entries in memory, to look at in a debugger.
    const SavedEvents& Ring() const { return mRing; }
    /// The routines that are entered now.
    const CallStack& Stack() const { return mStack; }

private:
    std::int32_t Push(TextView routine, std::int16_t traceMode) override;
    void Pop(std::int32_t level) override;
    Text Top() const override;
    void Write(TextView text, bool indent, bool save) override;
    bool Recording() const override { return !mReporting && (mFile.IsOpen() || mRing.Exists()); }

    /// Creates the file and writes its first line. Raises the platform's error if no file can be created.
    void StartFile();
    // False when something could not be written; the failure has then been shown.
    bool Close(bool askDelete);
    /// False if the entry could not be written; the failure has then been shown and the file is closed.
    bool Entry(TextView text, bool indent, bool save);
    /// Closes a file that is full and begins the next one.
    void Split();
    /// Puts day, memory use and time before the text. Raises what stands in the way.
    void WriteLine(TextView text, bool indent, bool save);

    /// To the file or, without one, to the ring.
    void Emit(TextView piece, bool save);
    void WriteToFile(TextView piece);
    /// Runs `body` and shows its failure; false after one.
    template <class Body>
    bool TryToWrite(Body&& body);
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
    /// Empty for the folder of the host.
    Text mFolder;
    /// The memory of the last line, to be used again.
    Text mRoom;
    bool mEcho = false;
    /// True while a failure is shown: nothing is recorded then.
    bool mReporting = false;
};

}  // namespace kwo::frame

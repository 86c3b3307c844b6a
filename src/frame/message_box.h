#pragma once

#include <cstdint>

#include "frame/call_trace.h"
#include "frame/event_log_writer.h"
#include "frame/message_wait.h"
#include "platform/host_application.h"
#include "platform/screen.h"
#include "platform/window_service.h"

namespace kwo::frame {

/// What a message box says; see MessageBoxes::KWOMsgBox. The texts must live until the call returns.
struct MessageBoxRequest {
    /// The number of the Cancel button.
    static constexpr std::int16_t kCancel = 2;

    /// The question or message. Lines are separated by CR LF.
    TextView prompt = {};
    /// The platform's message-box style (MB_): buttons and icon. 0 or less means an OK button alone.
    std::int32_t buttons = 0;
    /// Empty takes the owner's title, then the host's.
    TextView title = {};
    /// Accepted for callers that have one. The context alone asks for the help button.
    TextView helpFile = {};
    /// The help topic. It counts only with an owner window; 0 is none.
    std::int32_t helpContext = 0;
    /// The window that is blocked meanwhile; 0 takes the host's active form.
    platform::Handle ownerWindow = 0;
    /// The result when nobody is there to answer.
    std::int16_t defaultResult = kCancel;
};

/// The one way in which the component asks or tells the user something.
///
///     const auto answer = boxes.KWOMsgBox({.prompt = question, .buttons = 4});
///     if (answer == 6) ...  // Yes
class MessageBoxes {
public:
    /// Keeps references to all of these; they must outlive it.
    MessageBoxes(platform::WindowService& desktop, platform::Screen& screen, platform::HostApplication& host,
                 MessageWait& wait, EventLogWriter& eventLog, CallTrace& trace)
        : mDesktop(desktop), mScreen(screen), mHost(host), mWait(wait), mEventLog(eventLog), mTrace(trace) {}

    /// Shows a message box and returns the number of the button that was pressed, see WindowService::AskUser; 0 if the
    /// box cannot be shown.
    /// Messages are processed until then, so timers and events run and may call this component again. The pointer is
    /// the default arrow meanwhile. The prompt is written to the call trace.
    /// If the owner is minimised, its taskbar button flashes first until it is restored or the program is asked to
    /// quit.
    ///
    /// In unattended mode no box is shown: the prompt goes to the event log, and the result is `defaultResult`. The
    /// entry is an error with the stop icon or the exclamation mark, a warning with the question mark, else
    /// information.
    std::int16_t KWOMsgBox(const MessageBoxRequest& request);

    /// Says whether nobody is there to see a box; false at first. No member of a public class sets it.
    void SetUnattended(bool unattended) { mUnattended = unattended; }
    /// What SetUnattended set last.
    bool IsUnattended() const { return mUnattended; }

private:
    /// The title to show: the given one, else the owner's, else the host's.
    Text TitleFor(TextView given, platform::Handle owner);
    /// Returns when the user restores the owner, and when the program is asked to quit.
    void FlashWhileMinimised(platform::Handle owner);

    platform::WindowService& mDesktop;
    platform::Screen& mScreen;
    platform::HostApplication& mHost;
    MessageWait& mWait;
    EventLogWriter& mEventLog;
    CallTrace& mTrace;
    bool mUnattended = false;
};

}  // namespace kwo::frame

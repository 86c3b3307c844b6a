#pragma once

#include <cstdint>

#include "frame/call_trace.h"
#include "frame/event_log_writer.h"
#include "frame/message_wait.h"
#include "platform/host_application.h"
#include "platform/screen.h"
#include "platform/window_service.h"

namespace kwo::frame {

/// What a message box says; see MessageBoxes::KWOMsgBox.
struct MessageBoxRequest {
    static constexpr std::int16_t kCancel = 2;  ///< the number of the Cancel button

    TextView prompt = {};
    std::int32_t buttons = 0;  ///< the platform's message-box style: buttons and icon
    TextView title = {};       ///< empty takes the owner's title, then the host's
    TextView helpFile = {};    ///< accepted for callers that have one; the context alone asks for the help button
    std::int32_t helpContext = 0;
    platform::Handle ownerWindow = 0;      ///< 0 takes the host's active form
    std::int16_t defaultResult = kCancel;  ///< the result when nobody is there to answer
};

/// The one way in which the component asks or tells the user something.
class MessageBoxes {
public:
    /// Keeps references to all of these; they must outlive it.
    MessageBoxes(platform::WindowService& desktop, platform::Screen& screen, platform::HostApplication& host,
                 MessageWait& wait, EventLogWriter& eventLog, CallTrace& trace)
        : mDesktop(desktop), mScreen(screen), mHost(host), mWait(wait), mEventLog(eventLog), mTrace(trace) {}

    /// Shows a message box and returns the number of the button that was pressed; 0 if the box cannot be shown.
    /// Messages are processed until then, so timers and events run. If the owner is minimised, its taskbar button
    /// flashes first until it is restored. The prompt is written to the call trace.
    ///
    /// In unattended mode no box is shown: the prompt goes to the event log, and the result is `defaultResult`.
    std::int16_t KWOMsgBox(const MessageBoxRequest& request);

    /// Says whether nobody is there to see a box; false at first. No member of a public class sets it.
    void SetUnattended(bool unattended) { mUnattended = unattended; }
    /// What SetUnattended set last.
    bool IsUnattended() const { return mUnattended; }

private:
    Text TitleFor(TextView given, platform::Handle owner);
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

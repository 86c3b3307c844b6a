#pragma once

#include <cstdint>

#include "frame/call_trace.h"
#include "frame/event_log_writer.h"
#include "frame/message_wait.h"
#include "platform/desktop.h"
#include "platform/host_application.h"

namespace kwo::frame {

/// What a box asks and how; see MessageBoxes::KWOMsgBox.
struct MessageBoxRequest {
    static constexpr std::int16_t kCancel = 2;

    TextView prompt = {};
    std::int32_t buttons = 0;  ///< the platform's message-box style
    TextView title = {};
    TextView helpFile = {};  ///< accepted for callers that have one; the context alone asks for the help button
    std::int32_t helpContext = 0;
    platform::Handle ownerWindow = 0;
    std::int16_t defaultResult = kCancel;  ///< the answer when nobody is there to ask
};

/// The one way the component asks or tells the user something.
class MessageBoxes {
public:
    MessageBoxes(platform::Desktop& desktop, platform::Screen& screen, platform::HostApplication& host,
                 MessageWait& wait, EventLogWriter& eventLog, CallTrace& trace)
        : mDesktop(desktop), mScreen(screen), mHost(host), mWait(wait), mEventLog(eventLog), mTrace(trace) {}

    /// Shows a box and returns the number of the button pressed. Messages are processed meanwhile. Unattended, the
    /// prompt goes to the event log instead and the default result is the answer.
    std::int16_t KWOMsgBox(const MessageBoxRequest& request);

    void SetUnattended(bool unattended) { mUnattended = unattended; }
    bool IsUnattended() const { return mUnattended; }

private:
    Text TitleFor(TextView given, platform::Handle owner);
    void FlashWhileMinimised(platform::Handle owner);

    platform::Desktop& mDesktop;
    platform::Screen& mScreen;
    platform::HostApplication& mHost;
    MessageWait& mWait;
    EventLogWriter& mEventLog;
    CallTrace& mTrace;
    bool mUnattended = false;
};

}  // namespace kwo::frame

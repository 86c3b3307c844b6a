#pragma once

#include <cstdint>

#include "frame/api_result.h"
#include "frame/error.h"
#include "frame/event_log_writer.h"
#include "frame/host_identity.h"
#include "frame/message_box.h"
#include "frame/message_wait.h"
#include "frame/millisecond_clock.h"
#include "frame/routines.h"
#include "frame/trace.h"
#include "messages/locale.h"
#include "messages/message_table.h"
#include "platform/platform.h"
#include "platform/twips.h"
#include "timers/timer_registry.h"

namespace kwo::component {

/// What all objects of one apartment thread share: the platform, the modules and the program name.
///
/// It is created with the first object of the thread and lives until the thread ends and its last object is gone. It is
/// not thread-safe: everything runs on that one thread. The modules keep references to each other; their order here is
/// the order in which they are constructed.
class Component {
public:
    /// The services behind `services` must outlive the component.
    explicit Component(const platform::Platform& services);
    Component(const Component&) = delete;
    Component& operator=(const Component&) = delete;

    /// Sets the program name to "KWOUtil". Every class but the tray icon does so first when an object is created, so
    /// that messages are asked for by this name. If loading the messages failed before, they are loaded again at the
    /// next request.
    void SetProgramName() {
        mProgramName = u"KWOUtil";
        messages.ForgetFailure();
    }
    /// The name by which messages are asked for; empty until somebody sets it.
    const platform::Text& ProgramName() const { return mProgramName; }

    const platform::Platform platform;  ///< the services of the system
    frame::ApiResult apiResult;         ///< the result of the last platform call
    frame::HostIdentity identity;       ///< who the host is
    frame::MillisecondClock clock;      ///< for spans and due times
    frame::MessageWait wait;            ///< waits that process messages
    frame::Trace trace;                 ///< off until a developer starts it
    frame::EventLogWriter eventLog;     ///< the system's event log
    frame::MessageBoxes messageBoxes;   ///< the only way to ask the user
    frame::MKWOError error;             ///< the saved error
    frame::MKWORoutines routines;       ///< checks that report through `error`

    /// The twips per pixel of the screen, as the picture button that was created last found them. All buttons use it.
    platform::TwipsPerPixel buttonTwips;

    messages::MKWOLocale locale;      ///< the user's settings
    messages::MessageTable messages;  ///< the numbered texts
    timers::MKWOTimer timers;         ///< pending ticks and alarms

private:
    platform::Text mProgramName;
};

}  // namespace kwo::component

#pragma once

#include <cstdint>
#include <vector>

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
#include "platform/values.h"
#include "timers/timer_registry.h"

namespace kwo::component {

/// What all objects of one apartment thread share: the platform, the modules and the program name.
///
///     platform::windows::WindowsPlatform windows(module);
///     component::Component component(windows.Services());
///     timer::KWOTimer timer(component, shell);
///
/// It is created with the first object of the thread and lives until the thread ends and its last object is gone. It
/// is not thread-safe: everything runs on that one thread. Two threads have two components and share nothing.
/// The modules keep references to each other; their order here is the order in which they are constructed. A module
/// may refer to a later one, but not call it in its constructor.
class Component {
public:
    /// The services behind `services` must outlive the component. Calls none of them.
    explicit Component(const platform::Platform& services);
    Component(const Component&) = delete;
    Component& operator=(const Component&) = delete;

    /// Sets the program name to "KWOUtil".
    /// Every class but the tray icon does so first when an object is created, so that messages are asked for by this
    /// name.
    /// If loading the messages failed before, they are loaded again at the next request.
    void SetProgramName() {
        mProgramName = u"KWOUtil";
        messages.ForgetFailure();
    }
    /// The name by which messages are asked for; empty until somebody sets it.
    const platform::Text& ProgramName() const { return mProgramName; }

    /// The services of the system.
    const platform::Platform platform;
    /// The result of the last platform call.
    frame::ApiResult apiResult;
    /// Who the host is. Asks the system once.
    frame::HostIdentity identity;
    /// For spans and due times, not for the time of day.
    frame::MillisecondClock clock;
    /// Waits that process messages.
    frame::MessageWait wait;
    /// The call trace. Only the diagnostic build switches it on.
    frame::Trace trace;
    /// The system's event log.
    frame::EventLogWriter eventLog;
    /// The only way to ask or tell the user something.
    frame::MessageBoxes messageBoxes;
    /// The saved error, and how errors are raised.
    frame::MKWOError error;
    /// Checks that report through `error`.
    frame::MKWORoutines routines;

    /// The twips per pixel of the screen, as the picture button that was created last found them. All buttons use it.
    platform::TwipsPerPixel buttonTwips;
    /// The windows that screen readers are told about: where the object that annotates each keeps its handle.
    std::vector<platform::Handle*> annotatedWindows;

    /// The user's locale settings; not read until they are needed.
    messages::MKWOLocale locale;
    /// The numbered texts; not loaded until they are needed.
    messages::MessageTable messages;
    /// Pending ticks and alarms. Constructed last: it uses most of the others.
    timers::MKWOTimer timers;

private:
    /// Shared with the message table, which replaces some names.
    platform::Text mProgramName;
};

}  // namespace kwo::component

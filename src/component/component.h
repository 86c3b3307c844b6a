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
#include "timers/timer_registry.h"

namespace kwo::component {

/// What all objects of one loaded component share: the platform, the modules and the program name. Created with the
/// first object of an apartment and kept until the component is unloaded. Not thread-safe: one user-interface thread.
class Component {
public:
    explicit Component(const platform::Platform& services);
    Component(const Component&) = delete;
    Component& operator=(const Component&) = delete;

    /// What the creation of most classes does before anything else, so that every message is asked for by this name.
    /// Messages that could not be loaded are loaded again when the next one is asked for.
    void SetProgramName() {
        mProgramName = u"KWOUtil";
        messages.ForgetFailure();
    }
    const platform::Text& ProgramName() const { return mProgramName; }

    const platform::Platform platform;
    frame::ApiResult apiResult;
    frame::HostIdentity identity;
    frame::MillisecondClock clock;
    frame::MessageWait wait;
    frame::Trace trace;
    frame::EventLogWriter eventLog;
    frame::MessageBoxes messageBoxes;
    frame::MKWOError error;
    frame::MKWORoutines routines;

    /// Twips in a pixel, as the newest picture button found them.
    struct ButtonScale {
        std::int16_t twipsPerPixelX = 15;
        std::int16_t twipsPerPixelY = 15;
    };
    ButtonScale buttonScale;

    messages::MKWOLocale locale;
    messages::MessageTable messages;
    timers::MKWOTimer timers;

private:
    platform::Text mProgramName;
};

}  // namespace kwo::component

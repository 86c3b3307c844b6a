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
#include "messages/message_table.h"
#include "messages/mkwo_locale.h"
#include "platform/platform.h"
#include "timer/timer_registry.h"

namespace kwo::frame {

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
    const Text& ProgramName() const { return mProgramName; }

    const platform::Platform platform;
    ApiResult apiResult;
    HostIdentity identity;
    MillisecondClock clock;
    MessageWait wait;
    Trace trace;
    EventLogWriter eventLog;
    MessageBoxes messageBoxes;
    MKWOError error;
    MKWORoutines routines;

    /// Twips in a pixel, as the newest picture button found them.
    struct ButtonScale {
        std::int16_t twipsPerPixelX = 15;
        std::int16_t twipsPerPixelY = 15;
    };
    ButtonScale buttonScale;

    messages::MKWOLocale locale;
    messages::MessageTable messages;
    timer::MKWOTimer timers;

private:
    Text mProgramName;
};

}  // namespace kwo::frame

#pragma once

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "frame/error.h"
#include "frame/event_log_writer.h"
#include "frame/message_box.h"
#include "frame/recording_trace.h"
#include "frame/routines.h"
#include "platform/simulated/simulated_desktop.h"
#include "support/raised.h"

namespace kwo::frame {

using test_support::Raised;

/// The frame's modules on a simulated desktop, with every line of the call trace kept.
class FrameTest : public testing::Test {
protected:
    using Lines = std::vector<std::string>;

    platform::simulated::SimulatedDesktop desktop;
    platform::Platform services = desktop.Services();
    RecordingTrace trace;
    ApiResult apiResult;
    HostIdentity identity{services.host};
    MillisecondClock clock{services.clock};
    MessageWait wait{services.messages, clock, identity};
    EventLogWriter eventLog{services.eventLog, identity, trace, apiResult};
    MessageBoxes boxes{services.windows, services.screen, services.host, wait, eventLog, trace};
    MKWOError error{services.errors, services.host, identity, trace, boxes};
    MKWORoutines routines{services.files, services.errors, identity, error};

    static ComponentError Current(std::int32_t number, TextView description, TextView source = {}) {
        return {number, Text(source), Text(description), {}, 0};
    }

    void LeaveTheNtFamily() { desktop.host.platform.platformId = 1; }
};

}  // namespace kwo::frame

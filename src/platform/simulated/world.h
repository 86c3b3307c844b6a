#pragma once

#include <cstdint>
#include <string_view>

#include "platform/component_error.h"
#include "platform/simulated/faults.h"
#include "platform/simulated/log.h"
#include "platform/simulated/text_codec.h"

namespace kwo::platform::simulated {

#define SERVICE(Interface, member) class Simulated##Interface;
#include "platform/services.def"
#undef SERVICE

/// The services of one desktop.
struct SimulatedServices {
#define SERVICE(Interface, member) Simulated##Interface& member;
#include "platform/services.def"
#undef SERVICE
};

/// What the services of one desktop share.
struct World {
    SimulatedServices services;
    Log log{};
    Faults faults{};
    std::int32_t lastError = 0;
    CodePage codePage = CodePage::Windows1252;

    /// Enters a call whose failures show in the last-error value; true when it has to fail.
    bool Fails(std::string_view call) {
        const auto code = faults.Enter(call);
        if (code) lastError = *code;
        return code.has_value();
    }
    /// Enters a call that has nothing but a raised error to show a failure with.
    void MayRaise(std::string_view call) {
        if (const auto code = faults.Enter(call)) Raise(*code, u"", u"Planned failure.");
    }
};

}  // namespace kwo::platform::simulated

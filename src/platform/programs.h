#pragma once

#include <cstdint>

#include "platform/text.h"

namespace kwo::platform {

/// Other programs of the desktop.
class Programs {
public:
    virtual ~Programs() = default;

    /// Brings the window with exactly this title to the front, whatever the case of its letters. Raises
    /// InvalidProcedureCall when there is none.
    virtual void Activate(TextView title) = 0;
    /// The identifier of the task that was started. Raises FileNotFound when the system cannot start it.
    virtual std::int32_t Start(TextView commandLine, std::int16_t windowMode) = 0;
};

}  // namespace kwo::platform

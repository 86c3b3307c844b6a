#pragma once

#include <cstddef>
#include <cstdint>

#include "platform/text.h"

namespace kwo::platform {

/// Activates and starts other programs.
class Programs {
public:
    /// The most characters of a command line that the system accepts.
    static constexpr std::size_t kLongestCommandLine = 32'766;

    virtual ~Programs() = default;

    /// Brings the window with exactly this title to the front; upper and lower case are the same. A minimised window is
    /// restored. Windows that the user cannot see, hidden or cloaked, do not count. Raises InvalidProcedureCall if
    /// there is no such window.
    virtual void Activate(TextView title) = 0;
    /// Starts a program and returns the identifier of the task. `windowMode` is the system's SW_ number. Raises
    /// FileNotFound if the system cannot start it, and for a command line that is too long or contains a zero
    /// character.
    virtual std::int32_t Start(TextView commandLine, std::int16_t windowMode) = 0;
};

}  // namespace kwo::platform

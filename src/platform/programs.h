#pragma once

#include <cstddef>
#include <cstdint>

#include "platform/text.h"

namespace kwo::platform {

/// Other programs of the desktop.
class Programs {
public:
    /// Characters of a command line that the system takes at the most.
    static constexpr std::size_t kLongestCommandLine = 32'766;

    virtual ~Programs() = default;

    /// Brings the window with exactly this title to the front, whatever the case of its letters; a minimised one is
    /// restored. A window that the user cannot see because it is hidden or cloaked does not count. Raises
    /// InvalidProcedureCall when there is none.
    virtual void Activate(TextView title) = 0;
    /// The identifier of the task that was started. Raises FileNotFound when the system cannot start it, and for a
    /// command line that it would not take whole: a longer one, or one with a zero character in it.
    virtual std::int32_t Start(TextView commandLine, std::int16_t windowMode) = 0;
};

}  // namespace kwo::platform

#pragma once

#include <cstddef>
#include <cstdint>

#include "platform/text.h"

namespace kwo::platform {

/// Activates and starts other programs. Neither call waits for the other program.
class Programs {
public:
    /// The most characters of a command line that the system accepts.
    static constexpr std::size_t kLongestCommandLine = 32'766;

    virtual ~Programs() = default;

    /// Brings the window with exactly this title to the front; upper and lower case are the same.
    /// A minimised window is restored. If several windows have the title, it is the one that is topmost.
    /// Windows that the user cannot see, hidden or cloaked, do not count.
    /// Raises InvalidProcedureCall (5) if there is no such window. Whether the system lets the window come to the
    /// front is not reported.
    virtual void Activate(TextView title) = 0;
    /// Starts a program and returns the identifier of its process.
    /// `windowMode` is the system's SW_ number for its first window.
    /// The program is the first part of `commandLine`; quotes keep a path with blanks together. Without a folder it is
    /// looked for as the system does, the folder of the host first.
    /// Raises FileNotFound (53) if the system cannot start it, for whatever reason, and for a command line that is too
    /// long or contains a zero character.
    virtual std::int32_t Start(TextView commandLine, std::int16_t windowMode) = 0;
};

}  // namespace kwo::platform

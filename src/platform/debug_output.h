#pragma once

#include "platform/text.h"

namespace kwo::platform {

/// Where a debugger, or a viewer of debug output, shows lines. The call trace echoes to it.
class DebugOutput {
public:
    virtual ~DebugOutput() = default;

    /// Writes one line, which has no line end of its own (OutputDebugStringA).
    /// The text goes out in the ANSI code page and ends at its first zero character.
    /// Does nothing if nobody listens. Leaves the last-error value alone.
    virtual void Write(TextView line) = 0;
};

}  // namespace kwo::platform

#pragma once

#include "platform/text.h"

namespace kwo::platform {

/// Where a debugger, or a viewer of debug output, shows lines.
class DebugOutput {
public:
    virtual ~DebugOutput() = default;

    /// Writes one line, without a line end (OutputDebugStringA). Does nothing if nobody listens.
    virtual void Write(TextView line) = 0;
};

}  // namespace kwo::platform

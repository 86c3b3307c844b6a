#pragma once

#include "platform/debug_output.h"

namespace kwo::platform::windows {

/// OutputDebugStringA, with the line in the ANSI code page. Leaves the last-error value alone.
class WindowsDebugOutput final : public DebugOutput {
public:
    void Write(TextView line) override;
};

}  // namespace kwo::platform::windows

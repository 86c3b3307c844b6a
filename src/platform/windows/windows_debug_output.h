#pragma once

#include "platform/debug_output.h"

namespace kwo::platform::windows {

/// OutputDebugStringA, with the line in the ANSI code page.
/// Leaves the last-error value alone.
/// A debugger or viewer of the same session sees the line; it costs time even if nobody listens.
class WindowsDebugOutput final : public DebugOutput {
public:
    void Write(TextView line) override;
};

}  // namespace kwo::platform::windows

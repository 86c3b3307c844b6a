#pragma once

#include "platform/debug_output.h"

namespace kwo::platform::windows {

class WindowsDebugOutput final : public DebugOutput {
public:
    void Write(TextView line) override;
};

}  // namespace kwo::platform::windows

#pragma once

#include <vector>

#include "platform/debug_output.h"
#include "platform/simulated/text_codec.h"

namespace kwo::platform::simulated {

/// A debugger that keeps the lines it is shown.
class SimulatedDebugOutput final : public DebugOutput {
public:
    void Write(TextView line) override { lines.push_back(ThroughAnsi(line)); }

    std::vector<Text> lines;  ///< as an ANSI call takes them: up to a zero
};

}  // namespace kwo::platform::simulated

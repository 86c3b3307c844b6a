#pragma once

#include "frame/call_trace.h"

namespace kwo::frame {

/// The call trace of a component that nobody traces: it never switches on.
class Untraced final : public CallTrace {
    std::int32_t Push(TextView, std::int16_t) override { return 0; }
    void Pop(std::int32_t) override {}
    Text Top() const override { return {}; }
    void Write(TextView, bool, bool) override {}
    bool Recording() const override { return false; }
};

}  // namespace kwo::frame

#pragma once

#include <vector>

#include "frame/call_trace.h"

namespace kwo::frame {

/// For tests of what leaves marks on the call trace: keeps the names pushed and the lines written.
/// It is on from the beginning.
class RecordingTrace final : public CallTrace {
public:
    RecordingTrace() { mOn = true; }

    /// The routines that are entered now, the innermost last.
    std::vector<Text> routines;
    /// All routines that were ever entered, in their order.
    std::vector<Text> pushed;
    /// The lines written, as they were given: without time and indent.
    std::vector<Text> lines;

private:
    std::int32_t Push(TextView routine, std::int16_t) override {
        routines.emplace_back(routine);
        pushed.emplace_back(routine);
        return static_cast<std::int32_t>(routines.size());
    }
    void Pop(std::int32_t) override { routines.pop_back(); }
    Text Top() const override { return routines.empty() ? Text() : routines.back(); }
    void Write(TextView text, bool, bool) override { lines.emplace_back(text); }
    bool Recording() const override { return true; }
};

}  // namespace kwo::frame

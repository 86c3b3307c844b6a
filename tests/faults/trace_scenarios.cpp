#include "scenario.h"

namespace kwo::fault_tests {

namespace {

struct TraceStage : Stage {
    /// A member whose entry and exit are traced, and a line of its own.
    std::string Trace(std::int32_t savedEvents) {
        frame::Trace& trace = component->trace;
        Member([&] {
            trace.KWO_TraceStart(1, savedEvents, true);
            const frame::TracedRoutine routine(trace, u"KWOUtility.KWO_SystemDir");
            trace.KWO_TraceWrite(u"a line that is longer than a few characters", true, true);
        });
        Member([&] { trace.KWO_TraceClose(false); });
        return "traced";
    }
    void Release() override { component->trace.KWO_TraceClose(false); }
};

/// A line that cannot be written is shown in a box, and the file is closed.
Expected IsShown() {
    return [](const Failure&, const Reference&) {
        return std::vector{Outcome{"traced", "", kAnything, kAnything, ""}};
    };
}

/// The start of a trace raises the system's error.
Expected RaisesTheSystemsError() {
    return [](const Failure& failure, const Reference& reference) {
        const std::string text = failure.code == 5 ? " Access is denied." : "";
        return std::vector{
            Outcome{"", "-" + std::to_string(failure.code) + " HOSTAPP: C:\\Program Files\\Host\\HOSTAPP.log:" + text,
                    reference.clean.saved, "", ""}};
    };
}

std::vector<Rule> Rules() {
    const Expected starts = Either(IsShown(), IsOutOfMemory());
    return {
        {"CreateFile", RaisesTheSystemsError()},
        {"GetFileAttributes", RaisesTheSystemsError()},
        // A line that cannot be composed is one that cannot be written; the start of the trace asks for the formats.
        {"VarFormat", Either(IsShown(), Raises()), starts},
        {"*", IsShown(), starts},
    };
}

}  // namespace

std::vector<Scenario> TraceScenarios() {
    const Expected onAllocation = Either(IsShown(), IsOutOfMemory());
    return {
        {"ATraceIsWrittenToAFile",
         {},
         Fresh<TraceStage>(),
         On<TraceStage>([](TraceStage& stage) { return stage.Trace(0); }),
         Rules(),
         onAllocation},
        {"ATraceIsDeletedAtItsEnd",
         {},
         Fresh<TraceStage>(),
         On<TraceStage>([](TraceStage& stage) {
             constexpr std::int32_t kYes = 6;
             stage.desktop.windows.answers.push_back(kYes);
             Member([&] { stage.component->trace.KWO_TraceStart(0, 0, false); });
             Member([&] { stage.component->trace.KWO_TraceClose(true); });
             return "traced";
         }),
         Rules(),
         onAllocation},
        {"ATraceIsKeptInMemory",
         {},
         Fresh<TraceStage>(),
         On<TraceStage>([](TraceStage& stage) { return stage.Trace(5); }),
         Rules(),
         onAllocation},
    };
}

}  // namespace kwo::fault_tests

#pragma once

#include <functional>
#include <iosfwd>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "platform/simulated/faults.h"
#include "stage.h"

namespace kwo::fault_tests {

using Failure = platform::simulated::Faults::Failure;

/// Everything that a caller and a user can tell of one run. A field of an expected outcome may be kAnything.
struct Outcome {
    std::string answer;  ///< the result and the arguments by reference; empty if an error was raised
    std::string raised;  ///< "380 Host: Refused.", "out of memory"; empty if nothing was raised
    std::string saved;   ///< the saved error
    std::string boxes;   ///< the message boxes
    std::string state;   ///< what the object's properties tell

    friend bool operator==(const Outcome&, const Outcome&) = default;
};

inline constexpr char kAnything[] = "*";

/// What an outcome is compared with: the state before the run, and the same run without a fault.
struct Reference {
    std::string stateBefore;
    Outcome clean;
};

/// The documented outcomes of a failure.
using Expected = std::function<std::vector<Outcome>(const Failure& failure, const Reference& reference)>;

/// The member does as if nothing had failed.
Expected Unnoticed();
/// The same answer, but the object's properties may tell something else.
Expected SameAnswer();
/// The failure's own error is raised.
Expected Raises(std::string state = kAnything);
Expected RaisesAndStaysAsItWas();
/// E_OUTOFMEMORY at the caller.
Expected IsOutOfMemory(std::string state = kAnything);
Expected IsOutOfMemoryAndStaysAsItWas();
/// The answer, in which "#" stands for the code of the failure.
Expected Answers(std::string answer, std::string state = kAnything);
Expected AnswersAndStaysAsItWas(std::string answer);
/// One of several.
Expected Either(Expected one, Expected other);

/// What is documented for a call that fails.
struct Rule {
    std::string call;                          ///< its name; a "*" at the end stands for any rest
    Expected expected;                         ///< it is refused
    Expected withoutMemory = IsOutOfMemory();  ///< it has no memory
};

/// The name of an allocation of the component among the calls.
inline constexpr char kAllocation[] = "operator new";

/// One use of the component, and what is documented for each call in it that may fail.
struct Scenario {
    std::string name;
    std::vector<std::string> members;  ///< "KWOTimer.get Interval", "KWOTimer.AddAlarm"
    std::function<std::unique_ptr<Stage>()> stage;
    /// Returns the answer; raises what the member raises.
    std::function<std::string(Stage&)> run;
    /// The first rule that fits counts. A call without a rule fails the test.
    std::vector<Rule> rules;
    Expected onAllocation = IsOutOfMemory();
    /// What a caller does, by the pages, before the object is as usual again after a fault; often nothing.
    std::function<void(Stage&)> refresh = {};
};

/// Calls a member: its allocations count, those of the scenario do not.
template <class Body>
decltype(auto) Member(Body&& body) {
    const platform::simulated::CountedMemory counted;
    return std::forward<Body>(body)();
}

/// For GoogleTest.
void PrintTo(const Scenario& scenario, std::ostream* stream);

/// All scenarios, by class.
std::vector<Scenario> RegistryScenarios();
std::vector<Scenario> SysMetricsScenarios();
std::vector<Scenario> SysParamsScenarios();
std::vector<Scenario> UtilityScenarios();
std::vector<Scenario> FormPlacementScenarios();
std::vector<Scenario> SysTrayScenarios();
std::vector<Scenario> TimerScenarios();
std::vector<Scenario> MonthViewScenarios();
std::vector<Scenario> PicBtnScenarios();
std::vector<Scenario> SplitterVScenarios();
std::vector<Scenario> CompanionScenarios();
/// What developers switch on: no class has a member for it.
std::vector<Scenario> TraceScenarios();
/// What members share: error texts, message boxes, questions about files.
std::vector<Scenario> FrameScenarios();
const std::vector<Scenario>& AllScenarios();

/// A run on a stage of a class.
template <class OwnStage, class Body>
std::function<std::string(Stage&)> On(Body body) {
    return [body](Stage& stage) { return std::string(body(static_cast<OwnStage&>(stage))); };
}

template <class OwnStage, class Body>
std::function<void(Stage&)> By(Body body) {
    return [body](Stage& stage) { body(static_cast<OwnStage&>(stage)); };
}

/// Makes a stage of a class and prepares it.
template <class OwnStage, class Prepare>
std::function<std::unique_ptr<Stage>()> Prepared(Prepare prepare) {
    return [prepare] {
        auto stage = std::make_unique<OwnStage>();
        prepare(*stage);
        return stage;
    };
}
template <class OwnStage>
std::function<std::unique_ptr<Stage>()> Fresh() {
    return [] { return std::make_unique<OwnStage>(); };
}

}  // namespace kwo::fault_tests

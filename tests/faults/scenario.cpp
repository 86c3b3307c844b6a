#include "scenario.h"

#include <algorithm>
#include <iterator>
#include <ostream>

namespace kwo::fault_tests {

namespace {

using platform::simulated::Faults;

constexpr char kOutOfMemory[] = "out of memory";

/// How the desktop raises a failure.
std::string ErrorOf(const Failure& failure) {
    if (failure.code == Faults::kNoMemory) return kOutOfMemory;
    if (failure.code == Faults::kRefusedByObject) return "380 Host: Refused.";
    return std::to_string(failure.code) + " : Planned failure.";
}

std::string Filled(std::string text, const Failure& failure) {
    if (const std::size_t at = text.find('#'); at != std::string::npos) {
        text.replace(at, 1, std::to_string(failure.code));
    }
    return text;
}

Outcome Raised(std::string error, std::string state, const Reference& reference) {
    return {"", std::move(error), reference.clean.saved, "", std::move(state)};
}

}  // namespace

Expected Unnoticed() {
    return [](const Failure&, const Reference& reference) { return std::vector{reference.clean}; };
}

Expected SameAnswer() {
    return [](const Failure&, const Reference& reference) {
        Outcome outcome = reference.clean;
        outcome.state = kAnything;
        return std::vector{outcome};
    };
}

Expected Raises(std::string state) {
    return [state](const Failure& failure, const Reference& reference) {
        return std::vector{Raised(ErrorOf(failure), state, reference)};
    };
}

Expected RaisesAndStaysAsItWas() {
    return [](const Failure& failure, const Reference& reference) {
        return std::vector{Raised(ErrorOf(failure), reference.stateBefore, reference)};
    };
}

Expected IsOutOfMemory(std::string state) {
    return [state](const Failure&, const Reference& reference) {
        Outcome outcome = Raised(kOutOfMemory, state, reference);
        // A message box or a saved error may have come before.
        outcome.saved = outcome.boxes = kAnything;
        return std::vector{outcome};
    };
}

Expected IsOutOfMemoryAndStaysAsItWas() {
    return [](const Failure&, const Reference& reference) {
        return std::vector{Raised(kOutOfMemory, reference.stateBefore, reference)};
    };
}

Expected Answers(std::string answer, std::string state) {
    return [answer, state](const Failure& failure, const Reference& reference) {
        return std::vector{Outcome{Filled(answer, failure), "", reference.clean.saved, reference.clean.boxes, state}};
    };
}

Expected AnswersAndStaysAsItWas(std::string answer) {
    return [answer](const Failure& failure, const Reference& reference) {
        return std::vector{
            Outcome{Filled(answer, failure), "", reference.clean.saved, reference.clean.boxes, reference.stateBefore}};
    };
}

Expected Either(Expected one, Expected other) {
    return [one, other](const Failure& failure, const Reference& reference) {
        std::vector<Outcome> outcomes = one(failure, reference);
        std::ranges::copy(other(failure, reference), std::back_inserter(outcomes));
        return outcomes;
    };
}

void PrintTo(const Scenario& scenario, std::ostream* stream) {
    *stream << scenario.name;
}

const std::vector<Scenario>& AllScenarios() {
    static const std::vector<Scenario> all = [] {
        std::vector<Scenario> scenarios;
        for (const auto& list :
             {RegistryScenarios, SysMetricsScenarios, SysParamsScenarios, UtilityScenarios, FormPlacementScenarios,
              SysTrayScenarios, TimerScenarios, MonthViewScenarios, PicBtnScenarios, SplitterVScenarios,
              CompanionScenarios, TraceScenarios, FrameScenarios})
            std::ranges::move(list(), std::back_inserter(scenarios));
        return scenarios;
    }();
    return all;
}

}  // namespace kwo::fault_tests

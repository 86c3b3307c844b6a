#include "rounds.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <map>
#include <new>
#include <stdexcept>

#include "platform/simulated/failing_memory.h"

namespace kwo::fault_tests {

namespace {

using platform::ComponentError;
using platform::simulated::FailingMemory;
using platform::simulated::Faults;

/// A call that a scenario makes over and over, as a calendar does for each of its days, fails the first times and the
/// last time.
constexpr int kFirstTimes = 3;
/// More than any member allocates.
constexpr int kTooManyAllocations = 2'000;

int roundsSoFar = 0;

std::string Told(const ComponentError& error) {
    if (error.number == 0 && error.source.empty() && error.description.empty()) return {};
    return std::to_string(error.number) + ' ' + Shown(TextView(error.source)) + ": " +
           Shown(TextView(error.description));
}

std::string Told(const Outcome& outcome) {
    return "answer <" + outcome.answer + "> raised <" + outcome.raised + "> saved <" + outcome.saved + "> boxes <" +
           outcome.boxes + "> state <" + outcome.state + ">";
}

bool Fits(const std::string& actual, const std::string& expected) {
    return expected == kAnything || actual == expected;
}

bool Fits(const Outcome& actual, const Outcome& expected) {
    return Fits(actual.answer, expected.answer) && Fits(actual.raised, expected.raised) &&
           Fits(actual.saved, expected.saved) && Fits(actual.boxes, expected.boxes) &&
           Fits(actual.state, expected.state);
}

bool Fits(const std::string& name, const Rule& rule) {
    if (rule.call.ends_with('*')) return name.starts_with(std::string_view(rule.call).substr(0, rule.call.size() - 1));
    return name == rule.call;
}

/// The rest of what can be told, after a run.
void Tell(Stage& stage, Outcome& outcome) {
    outcome.saved = Told(stage.component->error.Saved());
    // What the component tells nobody but the host's log counts too.
    for (const char* const kind : {"Ask", "HostLog"}) {
        for (const std::string& line : stage.desktop.log.Starting(kind))
            outcome.boxes += line + "; ";
    }
    outcome.state = stage.State();
    stage.AfterRun();
}

/// The calls to let fail, by their places in the run without a fault. KWO_ALL_FAULTS asks for all of them.
std::vector<int> PlacesToFail(const std::vector<std::string>& made) {
    static const bool all = std::getenv("KWO_ALL_FAULTS") != nullptr;
    std::map<std::string_view, int> last;
    for (std::size_t at = 0; at < made.size(); ++at)
        last[made[at]] = static_cast<int>(at);
    std::map<std::string_view, int> times;
    std::vector<int> places;
    for (std::size_t at = 0; at < made.size(); ++at) {
        const bool isEarly = ++times[made[at]] <= kFirstTimes;
        if (all || isEarly || last[made[at]] == static_cast<int>(at)) places.push_back(static_cast<int>(at) + 1);
    }
    return places;
}

}  // namespace

int Rounds::Count() {
    return roundsSoFar;
}

void Rounds::Run() {
    const Result clean = Try({});
    mReference = {clean.stateBefore, clean.outcome};
    mSecondClean = clean.again;
    EXPECT_EQ(clean.left, "") << "without a fault";
    RunCalls();
    RunAllocations();
}

void Rounds::RunCalls() {
    const Result clean = Try({});
    const std::vector<int> places = PlacesToFail(clean.made);
    for (const bool lasting : {false, true}) {
        for (const int place : places) {
            for (std::size_t way = 0, ways = 1; way < ways; ++way) {
                const Fault fault{place, way, lasting, false};
                const Result result = Try(fault);
                ASSERT_TRUE(result.reached) << "call " << place;
                ways = result.ways;
                Judge(fault, result);
            }
        }
        const Result beyond = Try({static_cast<int>(clean.made.size()) + 1, 0, lasting, false});
        EXPECT_FALSE(beyond.reached) << "the runs differ";
    }
}

void Rounds::RunAllocations() {
    for (const bool lasting : {false, true}) {
        for (int nth = 1;; ++nth) {
            ASSERT_LT(nth, kTooManyAllocations);
            const Fault fault{nth, 0, lasting, true};
            const Result result = Try(fault);
            if (!result.reached) break;
            Judge(fault, result);
        }
    }
}

Rounds::Result Rounds::Try(const Fault& fault) const {
    ++roundsSoFar;
    Result result;
    const std::unique_ptr<Stage> stage = mScenario.stage();
    Faults& faults = stage->desktop.faults;
    result.stateBefore = stage->State();
    stage->desktop.log.Clear();

    faults.FailAnyCall(fault.isAllocation ? 0 : fault.nth, fault.way, fault.lasting);
    if (fault.isAllocation) {
        bool hasFailed = false;
        {
            const auto which = fault.lasting ? FailingMemory::Which::ThatAndAllLater : FailingMemory::Which::One;
            const FailingMemory memory(fault.nth, which);
            RunOnce(*stage, result.outcome);
            hasFailed = memory.HasFailed();
        }
        if (hasFailed) result.failed = {{kAllocation, Faults::kNoMemory}};
    } else {
        RunOnce(*stage, result.outcome);
        result.failed = faults.Failed();
        if (!result.failed.empty()) result.ways = faults.WaysOf(result.failed.front().call);
    }
    result.reached = !result.failed.empty();
    result.made = faults.Made();
    faults.Clear();
    Tell(*stage, result.outcome);

    if (mScenario.refresh) mScenario.refresh(*stage);
    stage->desktop.log.Clear();
    RunOnce(*stage, result.again);
    Tell(*stage, result.again);
    result.left = stage->EndAndLookWhatIsLeft();
    return result;
}

/// The allocations of the scenario's own code do not count: see Member.
void Rounds::RunOnce(Stage& stage, Outcome& outcome) const {
    const platform::simulated::UncountedMemory memory;
    try {
        outcome.answer = mScenario.run(stage);
    } catch (const ComponentError& error) {
        outcome.raised = Told(error);
    } catch (const std::bad_alloc&) {
        outcome.raised = "out of memory";
    } catch (const std::exception& error) {
        outcome.raised = std::string("unexpected: ") + error.what();
    }
}

void Rounds::Judge(const Fault& fault, const Result& result) const {
    const std::string first = result.failed.front().call + " with " + std::to_string(result.failed.front().code) +
                              ", number " + std::to_string(fault.nth) + (fault.lasting ? ", from then on" : ", once");
    std::string documented;
    if (!IsDocumented(result, documented)) {
        ADD_FAILURE() << first << "\n  outcome:    " << Told(result.outcome) << "\n  documented: " << documented;
    }
    if (!IsUsualAgain(result.again)) {
        ADD_FAILURE() << first << ", used again\n  outcome: " << Told(result.again)
                      << "\n  usual:   " << Told(mReference.clean) << "\n  or:      " << Told(mSecondClean);
    }
    if (!result.left.empty()) ADD_FAILURE() << first << ": left at the end: " << result.left;
}

bool Rounds::IsDocumented(const Result& result, std::string& documented) const {
    std::vector<Outcome> all;
    for (const Failure& failure : result.failed) {
        for (const Outcome& outcome : Documented(failure)) {
            if (std::ranges::find(all, outcome) != all.end()) continue;
            if (Fits(result.outcome, outcome)) return true;
            all.push_back(outcome);
        }
    }
    for (const Outcome& outcome : all)
        documented += Told(outcome) + "; ";
    // After several failures each part of the outcome may come from another one.
    const auto isPart = [&](std::string Outcome::*part) {
        return std::ranges::any_of(all,
                                   [&](const Outcome& outcome) { return Fits(result.outcome.*part, outcome.*part); });
    };
    return result.failed.size() > 1 && isPart(&Outcome::answer) && isPart(&Outcome::raised) &&
           isPart(&Outcome::saved) && isPart(&Outcome::boxes) && isPart(&Outcome::state);
}

std::vector<Outcome> Rounds::Documented(const Failure& failure) const {
    if (failure.call == kAllocation) return mScenario.onAllocation(failure, mReference);
    const auto rule = std::ranges::find_if(mScenario.rules, [&](const Rule& each) { return Fits(failure.call, each); });
    if (rule == mScenario.rules.end()) {
        ADD_FAILURE() << "nothing is documented for a failure of " << failure.call;
        return {};
    }
    return (failure.code == Faults::kNoMemory ? rule->withoutMemory : rule->expected)(failure, mReference);
}

bool Rounds::IsUsualAgain(const Outcome& again) const {
    const auto isAs = [&](const Outcome& usual) {
        return again.answer == usual.answer && again.raised == usual.raised && again.boxes == usual.boxes;
    };
    return isAs(mReference.clean) || isAs(mSecondClean);
}

}  // namespace kwo::fault_tests

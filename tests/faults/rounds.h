#pragma once

#include <string>
#include <vector>

#include "scenario.h"

namespace kwo::fault_tests {

/// Runs a scenario again and again: call n fails, n = 1, 2, ..., in each of the ways that it can fail, once only and
/// from then on; then allocation n does. After each round the outcome must be a documented one, the object must be
/// usable, and everything must be given back when it ends.
class Rounds {
public:
    explicit Rounds(const Scenario& scenario) : mScenario(scenario) {}

    /// Reports each round that went wrong as a failure of the running test.
    void Run();

    /// Rounds of all scenarios so far.
    static int Count();

private:
    struct Fault {
        int nth = 0;
        std::size_t way = 0;
        bool lasting = false;
        bool isAllocation = false;
    };
    struct Result {
        bool reached = false;
        std::size_t ways = 1;  ///< in which the first of them can fail
        std::vector<Failure> failed;
        std::vector<std::string> made;
        Outcome outcome;
        Outcome again;
        std::string stateBefore;
        std::string left;
    };

    Result Try(const Fault& fault) const;
    void RunOnce(Stage& stage, Outcome& outcome) const;
    void RunCalls();
    void RunAllocations();
    void Judge(const Fault& fault, const Result& result) const;
    bool IsDocumented(const Result& result, std::string& documented) const;
    std::vector<Outcome> Documented(const Failure& failure) const;
    bool IsUsualAgain(const Outcome& again) const;

    const Scenario& mScenario;
    Outcome mSecondClean;
    Reference mReference;
};

}  // namespace kwo::fault_tests

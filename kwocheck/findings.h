#pragma once

#include <vector>

#include "kwocheck/facts.h"

namespace kwocheck {

/// What follows from the facts, and what the reader can do about it.
struct Finding {
    enum class Severity {
        kProblem,  ///< some program cannot use the component as it should
        kRemark    ///< everything works here, but the reader may want to know
    };
    Severity severity = Severity::kProblem;
    /// Which programs meet it.
    Bitness bitness = Bitness::k64;
    Text what;
    Text nextStep;
    /// The classes concerned, by their programmatic identifiers; empty if it is about none in particular.
    std::vector<Text> classes;
};

/// Pure: the same facts give the same findings, in the order of importance within each bitness.
/// What several classes have in common is one finding.
std::vector<Finding> FindingsOf(const Facts& facts);

}  // namespace kwocheck

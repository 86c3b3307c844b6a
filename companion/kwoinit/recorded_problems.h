#pragma once

#include <string>
#include <vector>

#include "kwoinit/problem_report.h"

namespace kwo::kwoinit {

/// For tests: keeps what was reported.
/// It must outlive the reading.
/// The texts are of plain characters, so each character becomes one byte.
class RecordedProblems final : public ProblemReport {
public:
    void Problem(platform::TextView text) override { lines.emplace_back(text.begin(), text.end()); }

    /// What was reported, the oldest first.
    std::vector<std::string> lines;
};

}  // namespace kwo::kwoinit

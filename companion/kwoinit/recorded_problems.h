#pragma once

#include <string>
#include <vector>

#include "kwoinit/problem_report.h"

namespace kwo::kwoinit {

/// For tests: keeps what was reported; the texts are of plain characters.
class RecordedProblems final : public ProblemReport {
public:
    void Problem(platform::TextView text) override { lines.emplace_back(text.begin(), text.end()); }

    std::vector<std::string> lines;
};

}  // namespace kwo::kwoinit

#pragma once

#include <vector>

#include "kwocheck/facts.h"
#include "kwocheck/findings.h"

namespace kwocheck {

/// The whole report as text for a console; lines end in CR LF.
/// Its last line counts the findings.
Text ReportOf(const Facts& facts, const std::vector<Finding>& findings);

/// The report about one message file.
Text ReportOf(const MessageFileFacts& file);

/// What the program ends with. docs/kwocheck.md lists them.
enum class ExitCode {
    kGood = 0,
    kProblems = 1,
    kCannotCheck = 2  ///< wrong arguments, or a message file that cannot be read
};

ExitCode ExitCodeOf(const std::vector<Finding>& findings);
ExitCode ExitCodeOf(const MessageFileFacts& file);

}  // namespace kwocheck

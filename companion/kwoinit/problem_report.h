#pragma once

#include "platform/text.h"

namespace kwo::kwoinit {

/// Receives the problems in a message file that were skipped, and the reason why a file was refused.
/// The reader of a file only refers to it. DebuggerReport shows problems to a developer, RecordedProblems keeps them
/// for tests.
class ProblemReport {
public:
    virtual ~ProblemReport() = default;
    /// One problem, without a line end: "C:\Host\KWOInit.nls(12): there is no number".
    /// Runs while the file is read, in the order of the lines.
    /// At the end come the number of problems that are not listed, and the reason of a refusal.
    virtual void Problem(platform::TextView text) = 0;
};

}  // namespace kwo::kwoinit

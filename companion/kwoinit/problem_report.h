#pragma once

#include "platform/text.h"

namespace kwo::kwoinit {

/// Receives the problems in a message file that were skipped.
class ProblemReport {
public:
    virtual ~ProblemReport() = default;
    /// One problem: "C:\Host\KWOInit.nls(12): there is no number".
    virtual void Problem(platform::TextView text) = 0;
};

}  // namespace kwo::kwoinit

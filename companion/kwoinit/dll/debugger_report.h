#pragma once

#include <windows.h>

#include "kwoinit/problem_report.h"

namespace kwo::kwoinit {

/// Writes problems to the debug output of the process, one line each, in UTF-16. Does nothing if nobody listens.
class DebuggerReport final : public ProblemReport {
public:
    void Problem(platform::TextView text) override {
        const platform::Text line = platform::Text(text) + u"\r\n";
        ::OutputDebugStringW(reinterpret_cast<const wchar_t*>(line.c_str()));
    }
};

}  // namespace kwo::kwoinit

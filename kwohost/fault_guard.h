#pragma once

#include "source_file.h"

namespace kwohost {

/// If the engine or a component fails with a fault, such as a page fault, writes the script, the place in the module
/// and what is known of the cause to standard error, and ends the process with `exitCode`. Nothing is released. Call it
/// once, before the script runs.
void GuardAgainstFaults(const SourceFile& source, int exitCode);

/// The procedure of the script that the host is calling, for the report of a fault.
/// They are inside one another; the report names the innermost one.
class RunningProcedure {
public:
    /// `name` must outlive the object.
    explicit RunningProcedure(const std::wstring& name);
    RunningProcedure(const RunningProcedure&) = delete;
    RunningProcedure& operator=(const RunningProcedure&) = delete;
    ~RunningProcedure();

private:
    const std::wstring* mBefore;
};

/// The line of the first statement that is known to end an engine of Wine: a ReDim of an array that is declared with
/// empty parentheses. 0 if there is none.
long LineThatEndsTheEngine(const SourceFile& source);

}  // namespace kwohost

#pragma once

#include <string>

#include "com_values.h"

namespace kwohost {

/// An error as it is shown to the author of a script.
struct ErrorReport {
    std::wstring file;
    long line = 0;    ///< from 1; 0 when the place is not known
    long column = 0;  ///< from 1; 0 when not known
    HRESULT code = E_FAIL;
    std::wstring source = {};
    std::wstring description = {};
};

/// `file(line, column): number (0xHRESULT) source: description`. The number is what a script sees in `Err.Number`;
/// a missing description is the system's text for the code.
std::wstring Format(const ErrorReport& report);

/// The system's text for a code, without a line end; empty if it has none.
std::wstring SystemText(DWORD code);

}  // namespace kwohost

#pragma once

#include <string>

#include "com_values.h"

namespace kwohost {

/// An error as it is shown to the author of a script.
struct ErrorReport {
    /// The path of the script.
    std::wstring file;
    /// From 1; 0 if the place is not known.
    long line = 0;
    /// From 1; 0 if it is not known.
    long column = 0;
    /// The failure. A run-time error is 0x800A0000 + its number.
    HRESULT code = E_FAIL;
    /// Who raised it; may be empty.
    std::wstring source = {};
    /// Empty takes the system's text for the code.
    std::wstring description = {};
};

/// `file(line, column): number (0xHRESULT) source: description`, without a line end.
/// Parts that are not known are left out.
/// The number is what a script sees in `Err.Number`; a missing description is the system's text for the code, or
/// "Unknown error".
std::wstring Format(const ErrorReport& report);

/// The system's text for a code, without a line end and with its placeholders as they are; empty if it has none.
std::wstring SystemText(DWORD code);

}  // namespace kwohost

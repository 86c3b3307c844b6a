#pragma once

#include <deque>
#include <optional>
#include <string>

#include "script_object.h"

namespace kwohost {

/// Remembers the numbers of the errors that a script of JScript makes.
/// The engine of Wine tells of an error that nobody catches as E_FAIL if its number is not an HRESULT, and so `throw
/// new Error(77, "x")` would lose its number.
class ErrorNumbers final : public ScriptObject {
public:
    ErrorNumbers();

    /// A script that runs first. It expects this object under the name kwohost_errors, and lets `Error` tell it of
    /// every error with a small number.
    static const wchar_t* Script();
    /// What a script sees as the number of the last error with that description, if there was one.
    std::optional<HRESULT> CodeOf(const std::wstring& description) const;

private:
    struct Made {
        LONG number;
        std::wstring description;
    };
    /// The last ones, the newest first.
    std::deque<Made> mMade;
};

}  // namespace kwohost

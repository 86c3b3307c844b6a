#pragma once

#include "platform/programs.h"
#include "platform/windows/context.h"

namespace kwo::platform::windows {

/// Windows of all programs, in the order in which the system lists them (EnumWindows), and CreateProcessW with the
/// search path of the system.
///
/// A window that does not answer is not waited for: its title is read as the system stores it, and it restores itself.
/// Cloaked windows are found out with dwmapi.dll; without it every visible window counts.
class WindowsPrograms final : public Programs {
public:
    explicit WindowsPrograms(Context& context) : mLastError(context.lastError) {}

    /// EnumWindows, InternalGetWindowText, ShowWindowAsync and SetForegroundWindow.
    /// Titles are compared by CompareStringOrdinal, without regard to case in any language.
    void Activate(TextView title) override;
    /// CreateProcessW. The handles of the new process are closed at once.
    std::int32_t Start(TextView commandLine, std::int16_t windowMode) override;

private:
    LastError& mLastError;
    SystemLibrary mComposition{L"dwmapi.dll"};
};

}  // namespace kwo::platform::windows

#include "modal_scope.h"

#include "guard.h"

namespace kwohost {

namespace {

/// The one in front first.
std::vector<HWND> VisibleWindows() {
    std::vector<HWND> windows;
    const auto add = [](HWND window, LPARAM list) CALLBACK -> BOOL {
        const auto addVisible = [&] {
            if (IsWindowVisible(window)) reinterpret_cast<std::vector<HWND>*>(list)->push_back(window);
            return TRUE;
        };
        return Guarded(addVisible, [](const ScriptFailure&) { return FALSE; });
    };
    EnumThreadWindows(GetCurrentThreadId(), add, reinterpret_cast<LPARAM>(&windows));
    return windows;
}

}  // namespace

ModalScope::ModalScope() {
    const std::vector<HWND> windows = VisibleWindows();
    if (windows.empty()) return;
    mDisabled.reserve(windows.size());
    const HWND active = GetActiveWindow();
    mOwner = active && IsWindowVisible(active) ? active : windows.front();
    // The system disables the owner itself.
    for (const HWND window : windows)
        if (window != mOwner && !EnableWindow(window, FALSE)) mDisabled.push_back(window);
}

ModalScope::~ModalScope() {
    for (const HWND window : mDisabled)
        EnableWindow(window, TRUE);
}

}  // namespace kwohost

#pragma once

#include <windows.h>

#include <vector>

namespace kwohost {

/// The visible windows of this thread take no input while it lives, except for boxes that open meanwhile.
///
///     const ModalScope modal;
///     MessageBoxW(modal.Owner(), ...);
class ModalScope {
public:
    ModalScope();
    ModalScope(const ModalScope&) = delete;
    ModalScope& operator=(const ModalScope&) = delete;
    /// Those that it has disabled and that are still there take input again.
    ~ModalScope();

    /// What a box belongs to: the active window, or else the one in front. Null if none is visible.
    HWND Owner() const { return mOwner; }
    /// Whether the owner has gone meanwhile, and the box with it.
    bool HasLostOwner() const { return mOwner && !IsWindow(mOwner); }

private:
    HWND mOwner = nullptr;
    std::vector<HWND> mDisabled;
};

}  // namespace kwohost

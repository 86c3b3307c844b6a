#pragma once

#include <windows.h>

#include <vector>

namespace kwohost {

struct Forms;

/// All forms, and the visible windows of this thread, take no input while it lives, except for boxes that open
/// meanwhile. `forms` must outlive it.
///
///     const ModalScope modal(forms);
///     MessageBoxW(modal.Owner(), ...);
class ModalScope {
public:
    explicit ModalScope(Forms& forms);
    ModalScope(const ModalScope&) = delete;
    ModalScope& operator=(const ModalScope&) = delete;
    /// Those that it has disabled and that are still there take input again. The form that was shown meanwhile comes to
    /// the front.
    ~ModalScope();

    /// What a box belongs to: the active window, or else the one in front. Null if none is visible.
    HWND Owner() const { return mOwner; }
    /// Whether the owner has gone meanwhile, and the box with it.
    bool HasLostOwner() const { return mOwner && !IsWindow(mOwner); }

private:
    Forms& mForms;
    HWND mOwner = nullptr;
    std::vector<HWND> mDisabled;
};

/// Activates the box that the user has to answer first. Does nothing while none is visible.
void BringBoxToFront();

}  // namespace kwohost

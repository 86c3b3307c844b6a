#include "modal_scope.h"

#include <algorithm>
#include <utility>

#include "form.h"
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

ModalScope::ModalScope(Forms& forms) : mForms(forms) {
    const std::vector<HWND> windows = VisibleWindows();
    mDisabled.reserve(windows.size());
    const HWND active = GetActiveWindow();
    if (!windows.empty()) mOwner = active && IsWindowVisible(active) ? active : windows.front();
    ++mForms.boxes;
    // The system disables the owner itself, and enables it before the box goes: so the owner becomes active then.
    for (Form* const form : mForms.all)
        if (form->Window() != mOwner) form->ApplyEnabled();
    for (const HWND window : windows)
        if (window != mOwner && !EnableWindow(window, FALSE)) mDisabled.push_back(window);
}

ModalScope::~ModalScope() {
    --mForms.boxes;
    for (const HWND window : mDisabled)
        EnableWindow(window, TRUE);
    for (Form* const form : mForms.all)
        form->ApplyEnabled();
    if (mForms.boxes > 0) return;
    // Its Activate may close it.
    const ComPtr<Form> shown(std::exchange(mForms.behindTheBox, nullptr));
    if (shown) shown->ComeForward();
}

void BringBoxToFront() {
    constexpr DWORD kDialogBox = 0x8002;
    const std::vector<HWND> windows = VisibleWindows();
    const auto box = std::find_if(windows.begin(), windows.end(), [](HWND window) {
        return IsWindowEnabled(window) && GetClassLongW(window, GCW_ATOM) == kDialogBox;
    });
    if (box != windows.end()) SetForegroundWindow(*box);
}

}  // namespace kwohost

#pragma once

#include <windows.h>

#include "platform/notification_area.h"

namespace kwo::platform::windows {

/// A hidden window of the calling thread's that hears what the shell tells all programs when it has made a new taskbar:
/// top-level windows alone do.
class TaskbarWindow {
public:
    /// Where no window can be made, nothing is heard. What `listener` does then may destroy this, but must not throw.
    explicit TaskbarWindow(TaskbarListener& listener);
    TaskbarWindow(const TaskbarWindow&) = delete;
    TaskbarWindow& operator=(const TaskbarWindow&) = delete;
    /// On any thread.
    ~TaskbarWindow();

private:
    static LRESULT CALLBACK Procedure(HWND window, UINT message, WPARAM first, LPARAM second);

    TaskbarListener& mListener;
    const UINT mCreated;
    HWND mWindow;
    WNDPROC mInherited = nullptr;
};

}  // namespace kwo::platform::windows
